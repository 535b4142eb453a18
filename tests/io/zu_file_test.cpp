// The strongest test lets each call that the file layer makes of the system fail in turn; the same points serve to let
// others interfere, and to end the process.

#include "zu_test_string.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;
typedef std::vector<std::string> TEXTS;

// The calls of the file layer, which the linker leads through here (--wrap), so that the library knows nothing of it.
struct FAULTS {
    int at = -1;                       // the call that something happens at, counted from 0 from armFaults on
    int error = 0;                     // its errno, if it is to fail
    int more = 0;                      // so many further ones of the same name fail as well
    std::function<void()> ahead = {};  // what happens ahead of it
    std::function<void()> behind = {}; // and behind it
};
static FAULTS armed;
static bool isArmed = false;
static int callCount = 0;
static std::string failed;                 // the last call that has failed so
static std::map<std::string, int> counted; // all calls that were made while armed

static void armFaults( const FAULTS &faults )
{
    armed = faults;
    failed.clear();
    callCount = 0;
    isArmed = true;
}
// Lets all calls go straight on again, and returns how many there have been.
static int disarmFaults()
{
    isArmed = false;
    return callCount;
}

// Goes through one call.  A call of close is made even if it fails, as the system does.
template <typename RESULT, typename CALL>
static RESULT pass( const char *name, RESULT failure, CALL real )
{
    if ( !isArmed ) {
        return real();
    }
    counted[ name ]++;
    bool isIt = callCount++ == armed.at;
    if ( isIt && armed.ahead ) {
        isArmed = false;
        armed.ahead();
        isArmed = true;
    }
    if ( armed.error != 0 && ( isIt || ( armed.more > 0 && failed == name ) ) ) {
        armed.more -= !isIt;
        failed = name;
        if ( failed == "close" ) {
            real();
        }
        errno = armed.error;
        return failure;
    }
    RESULT result = real();
    if ( isIt && armed.behind ) {
        armed.behind();
    }
    return result;
}

#define FAULT_CALL( RESULT, name, failure, parameters, arguments )                        \
    extern "C" RESULT __real_##name parameters;                                           \
    extern "C" RESULT __wrap_##name parameters;                                           \
    extern "C" RESULT __wrap_##name parameters                                            \
    {                                                                                     \
        return pass<RESULT>( #name, failure, [ & ] { return __real_##name arguments; } ); \
    }
FAULT_CALL( int, openat, -1, ( int at, const char *path, int flags, mode_t mode ), ( at, path, flags, mode ) )
FAULT_CALL( int, close, -1, ( int file ), ( file ) )
FAULT_CALL( int, fstat, -1, ( int file, struct stat *state ), ( file, state ) )
FAULT_CALL( int, fstatat, -1, ( int at, const char *path, struct stat *state, int flags ), ( at, path, state, flags ) )
FAULT_CALL( int, flock, -1, ( int file, int operation ), ( file, operation ) )
FAULT_CALL( int, ftruncate, -1, ( int file, off_t size ), ( file, size ) )
FAULT_CALL( ssize_t, read, -1, ( int file, void *bytes, size_t count ), ( file, bytes, count ) )
FAULT_CALL( ssize_t, write, -1, ( int file, const void *bytes, size_t count ), ( file, bytes, count ) )
FAULT_CALL( int, fsync, -1, ( int file ), ( file ) )
FAULT_CALL( int, fchmod, -1, ( int file, mode_t mode ), ( file, mode ) )
FAULT_CALL( int, fchown, -1, ( int file, uid_t owner, gid_t group ), ( file, owner, group ) )
FAULT_CALL( ssize_t, fgetxattr, -1, ( int file, const char *name, void *value, size_t size ),
            ( file, name, value, size ) )
FAULT_CALL( int, fsetxattr, -1, ( int file, const char *name, const void *value, size_t size, int flags ),
            ( file, name, value, size, flags ) )
FAULT_CALL( int, fremovexattr, -1, ( int file, const char *name ), ( file, name ) )
FAULT_CALL( int, mkdir, -1, ( const char *path, mode_t mode ), ( path, mode ) )
FAULT_CALL( int, unlinkat, -1, ( int at, const char *path, int flags ), ( at, path, flags ) )
FAULT_CALL( int, renameat, -1, ( int at, const char *path, int newAt, const char *newPath ),
            ( at, path, newAt, newPath ) )
FAULT_CALL( int, renameat2, -1, ( int at, const char *path, int newAt, const char *newPath, unsigned flags ),
            ( at, path, newAt, newPath, flags ) )
FAULT_CALL( ssize_t, readlinkat, -1, ( int at, const char *path, char *target, size_t size ),
            ( at, path, target, size ) )
FAULT_CALL( int, statvfs, -1, ( const char *path, struct statvfs *stats ), ( path, stats ) )
FAULT_CALL( DIR *, fdopendir, nullptr, ( int folder ), ( folder ) )
FAULT_CALL( struct dirent *, readdir, nullptr, ( DIR * dir ), ( dir ) )
FAULT_CALL( char *, getcwd, nullptr, ( char *path, size_t size ), ( path, size ) )

// A string of UTF-8 that lives as long as the expression it stands in.
struct NAME : zu::Ref<ZU_STRING> {
    NAME( const std::string &utf8 ) : zu::Ref<ZU_STRING>( string( utf8 ) )
    {
    }
    operator ZU_STRING *() const
    {
        return get();
    }
};
static TEXTS takeSorted( ZU_VECTOR *vec )
{
    TEXTS texts = takeTexts( vec );
    std::sort( texts.begin(), texts.end() );
    return texts;
}
// Writes a whole file in either way.
static bool writeBytes( ZU_BOOL write( ZU_STRING *, ZU_BUFFER * ), ZU_STRING *fn, const std::string &bytes )
{
    return write(
        fn, zu::adopt( zuBufferCreateFromBytesCopy( (const uint8_t *)bytes.data(), (ZU_INT)bytes.size() ) ).get() );
}
// The content, or "null"
static std::string readBytes( ZU_STRING *fn, ZU_INT maxBytes = -1 )
{
    zu::Ref<ZU_BUFFER> buf = zu::adopt( zuFileReadBuffer( fn, maxBytes ) );
    return buf ? std::string( (const char *)zuBufferBacking( buf.get() ), (size_t)zuBufferLength( buf.get() ) )
               : "null";
}

// Files as the standard library sees them
static void put( const fs::path &path, const std::string &bytes )
{
    std::ofstream( path, std::ios::binary ) << bytes;
}
static std::string get( const fs::path &path )
{
    std::ifstream file( path, std::ios::binary );
    return { std::istreambuf_iterator<char>( file ), {} };
}
static ptrdiff_t entries( const fs::path &path )
{
    return std::distance( fs::directory_iterator( path ), fs::directory_iterator() );
}
// Bytes that tell where they stand
static std::string pattern( size_t size )
{
    std::string bytes( size, 0 );
    for ( size_t i = 0; i < size; i++ ) {
        bytes[ i ] = (char)( i * 7 + i / 251 );
    }
    return bytes;
}
static int ended( pid_t child )
{
    int status = 0;
    waitpid( child, &status, 0 );
    return status;
}

static const std::string OLD = "one\ntwo\n" + std::string( 70000, 'o' ); // more than a cache
static const std::string NEW = "new\n" + std::string( 140000, 'n' );
static constexpr int TREE_DEPTH = 19; // more levels than stay open

// A folder in memory, where the disk does not slow the sweeps down.
class File : public testing::Test {
protected:
    fs::path folder;
    ptrdiff_t openBefore = entries( "/proc/self/fd" );

    File()
    {
        std::string name = fs::is_directory( "/dev/shm" ) ? "/dev/shm" : fs::temp_directory_path().string();
        name += "/zu-file-test-XXXXXX";
        folder = mkdtemp( name.data() );
    }
    ~File() override
    {
        EXPECT_EQ( entries( "/proc/self/fd" ), openBefore );
        fs::remove_all( folder );
    }
    std::string path( const std::string &name ) const
    {
        return folder / name;
    }
    void reset() const
    {
        fs::remove_all( folder );
        fs::create_directories( folder / "list" );
        put( folder / "file", OLD );
        fs::create_symlink( "file", folder / "link" );
        fs::create_symlink( "../file", folder / "list/b.txt" );
        put( folder / "list/a.TXT", "" );
        // With an access list as acl(5) tells it: version 2; owner, a user, group, mask, others.
        const uint16_t list[] = { 2, 0,      1,      6,    0xFFFF, 0xFFFF, 2,      4,    1234, 0,      4,
                                  4, 0xFFFF, 0xFFFF, 0x10, 4,      0xFFFF, 0xFFFF, 0x20, 0,    0xFFFF, 0xFFFF };
        put( folder / "guarded", OLD );
        setxattr( path( "guarded" ).c_str(), "system.posix_acl_access", list, sizeof list, 0 );
    }
    void makeTree() const
    {
        reset();
        fs::path deep = folder / "tree";
        for ( int i = 0; i < TREE_DEPTH; i++ ) {
            deep /= "d";
        }
        fs::create_directories( deep );
        put( deep / "leaf", "" );
        fs::create_directory_symlink( "../list", folder / "tree/link" );
    }
};

TEST_F( File, EveryCallFailsInEveryWay )
{
    const NAME file( path( "file" ) ), link( path( "link" ) ), fresh( path( "fresh" ) ), tree( path( "tree" ) ),
        list( path( "list" ) ), guarded( path( "guarded" ) ), suffix( ".txt" );
    std::string seen;
    auto readLines = [ & ] {
        auto source = zu::adopt( zuFileOpenLineSource( file, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF ) );
        seen.clear();
        while ( ZU_STRING *line = source ? zuLineSourceRead( source.get() ) : nullptr ) {
            seen += ( seen.empty() ? "" : "\n" ) + takeText( line );
        }
        return source && !zuLineSourceError( source.get() );
    };
    auto writeLines = [ & ] {
        auto sink = zu::adopt( zuFileOpenLineSink( file, ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF ) );
        return sink && zuLineSinkWrite( sink.get(), NAME( NEW ) ) && zuLineSinkFlush( sink.get() );
    };
    auto content = [ & ] {
        seen.clear();
        for ( const std::string &text : takeSorted( zuDirectoryContent( list, ZU_TRUE, suffix ) ) ) {
            seen += text.substr( folder.string().size() );
        }
        return !seen.empty();
    };
    auto modified = [ & ] { return bool( zu::adopt( zuFileModificationTime( file ) ) ); };
    auto sees = [ & ]( const std::string &what ) { return [ &seen, what ] { return seen == what; }; };
    auto has = [ & ]( const char *name, const std::string &what ) {
        return [ =, this ] { return get( folder / name ) == what; };
    };
    auto gone = [ & ]( const char *name ) { return [ =, this ] { return !fs::exists( folder / name ); }; };
    const struct {
        const char *name;
        std::function<bool()> run;      // whether the function says that all went well
        std::function<bool()> complete; // whether it did
    } rows[] = {
        { "read lines", readLines, sees( OLD ) },
        { "write lines", writeLines, has( "file", NEW + "\n" ) },
        { "read", [ & ] { return ( seen = readBytes( file ) ) != "null"; }, sees( OLD ) },
        { "write", [ & ] { return writeBytes( zuFileWriteBuffer, file, NEW ); }, has( "file", NEW ) },
        { "state", [ & ] { return zuFileExists( file ) && zuFileIsDirectory( list ) && zuFileSize( file ) != -1; },
          nullptr },
        { "modified", modified, nullptr },
        { "stats", [ & ] { return zuFileSystemStats( file, nullptr, nullptr, nullptr ); }, nullptr },
        { "delete", [ & ] { return zuFileDelete( file ); }, gone( "file" ) },
        { "rename", [ & ] { return zuFileRename( file, fresh ); }, has( "fresh", OLD ) },
        { "create", [ & ] { return zuFileCreateDirectory( fresh ); },
          [ & ] { return fs::is_directory( folder / "fresh" ); } },
        { "content", content, sees( "/list/a.TXT/list/b.txt" ) },
        { "replace", [ & ] { return writeBytes( zuFileReplaceBuffer, link, NEW ); }, has( "file", NEW ) },
        { "replace guarded", [ & ] { return writeBytes( zuFileReplaceBuffer, guarded, NEW ); }, has( "guarded", NEW ) },
        { "replace nothing", [ & ] { return writeBytes( zuFileReplaceBuffer, fresh, NEW ); }, has( "fresh", NEW ) },
        { "delete tree", [ & ] { return zuFileDeleteDirectoryRecursive( tree ); }, gone( "tree" ) },
    };
    for ( const auto &row : rows ) {
        bool replaces = strncmp( row.name, "replace", 7 ) == 0;
        auto prepare = [ & ] { strcmp( row.name, "delete tree" ) == 0 ? makeTree() : reset(); };
        auto isComplete = [ & ] { return !row.complete || row.complete(); };
        prepare();
        armFaults( {} );
        bool ok = row.run();
        int calls = disarmFaults();
        EXPECT_TRUE( ok && isComplete() ) << row.name;
        for ( int at = 0; at < calls; at++ ) {
            for ( int error : { EIO, ENOSPC, EACCES, EINTR, EMFILE, ENOENT } ) {
                for ( int more : { 0, error == EINTR ? 100 : INT_MAX } ) {
                    prepare();
                    armFaults( { at, error, more } );
                    ok = row.run();
                    disarmFaults();
                    SCOPED_TRACE( std::string( row.name ) + ", call " + std::to_string( at ) + " " + failed + ", " +
                                  strerror( error ) + ( more > 0 ? ", and again" : "" ) );
                    ASSERT_TRUE( !ok || isComplete() );
                    ASSERT_TRUE( ok || error != EINTR || failed == "fdopendir" );
                    ASSERT_EQ( entries( "/proc/self/fd" ), openBefore );
                    if ( replaces ) {
                        bool made = fs::exists( folder / "fresh" );
                        for ( const char *name : { "file", "guarded", made ? "fresh" : "file" } ) {
                            std::string now = get( folder / name );
                            ASSERT_TRUE( now == OLD || now == NEW );
                        }
                        ASSERT_EQ( entries( folder ), 4 + made );
                    }
                }
            }
        }
    }
    for ( const char *name : { "openat", "close", "fstat", "fstatat", "flock", "ftruncate", "read", "write", "fsync",
                               "fchmod", "fgetxattr", "mkdir", "unlinkat", "renameat", "renameat2", "readlinkat",
                               "statvfs", "fdopendir", "readdir" } ) {
        EXPECT_GT( counted[ name ], 0 ) << name;
    }
    auto failing = []( ZU_STRING *call( void ) ) {
        return [ = ] {
            armFaults( { 0, EACCES } );
            zuStringRelease( call() );
        };
    };
    expectAbort( "count", failing( zuCurrentDirectory ) );
    expectAbort( "ret > 0", failing( zuGetExecutablePath ) );
}

// At each call on the way somebody puts a link to a folder outside in the place of one of the tree.
TEST_F( File, DeletionFollowsNoLinkThatComesMeanwhile )
{
    const NAME tree( path( "tree" ) );
    makeTree();
    armFaults( {} );
    EXPECT_TRUE( zuFileDeleteDirectoryRecursive( tree ) );
    int calls = disarmFaults();
    for ( const char *victim : { "tree", "tree/d", "tree/d/d/d/d" } ) {
        for ( int at = 0; at < calls; at++ ) {
            makeTree();
            fs::create_directories( folder / "kept/d/d/d/d" );
            put( folder / "kept/d/file", OLD );
            put( folder / "kept/leaf", OLD );
            auto exchange = [ & ] {
                std::error_code missing;
                fs::rename( folder / victim, folder / "away", missing );
                if ( !missing ) {
                    fs::create_directory_symlink( folder / "kept", folder / victim );
                }
            };
            armFaults( { at, 0, 0, exchange } );
            zuFileDeleteDirectoryRecursive( tree );
            disarmFaults();
            ASSERT_EQ( get( folder / "kept/d/file" ) + get( folder / "kept/leaf" ), OLD + OLD ) << victim << ' ' << at;
            ASSERT_TRUE( fs::exists( folder / "kept/d/d/d/d" ) ) << victim << ' ' << at;
        }
    }
}

TEST_F( File, AWriterThatDiesLeavesTheOldOrTheNew )
{
    const NAME file( path( "file" ) );
    bool finished = false;
    for ( int at = 0; !finished; at++ ) {
        reset();
        pid_t writer = fork();
        if ( writer == 0 ) {
            armFaults( { at, 0, 0, {}, [] { _exit( 1 ); } } );
            _exit( !writeBytes( zuFileReplaceBuffer, file, NEW ) );
        }
        finished = ended( writer ) == 0;
        std::string now = get( folder / "file" );
        ASSERT_TRUE( now == NEW || ( now == OLD && !finished ) ) << at << ": " << now.size();
    }
    // At any moment: whole is what consists of one letter, as often as belongs to it.
    SeededRandom random;
    auto content = []( unsigned i ) { return std::string( 1000 + i % 26 * 5000, (char)( 'a' + i % 26 ) ); };
    put( folder / "file", content( 0 ) );
    for ( int round = 0; round < 30; round++ ) {
        pid_t writer = fork();
        if ( writer == 0 ) {
            for ( unsigned i = 0;; i++ ) {
                writeBytes( zuFileReplaceBuffer, file, content( i ) );
            }
        }
        std::string now;
        for ( uint64_t reads = random() % 256; reads > 0; reads-- ) {
            now = readBytes( file );
            ASSERT_TRUE( now == content( (unsigned)( now[ 0 ] - 'a' ) ) );
        }
        kill( writer, SIGKILL );
        ended( writer );
        now = get( folder / "file" );
        ASSERT_TRUE( !now.empty() && now == content( (unsigned)( now[ 0 ] - 'a' ) ) );
    }
}

// A file written and read in random pieces is what a string holds, on both sides of every border of the cache.
TEST_F( File, StreamsCarryEveryByte )
{
    SeededRandom random;
    const NAME file( path( "file" ) );
    auto size = [ & ] {
        const size_t around[] = { 1, 1024, 65536, 131072, 1 + random() % 200000 };
        return around[ random() % 5 ] + random() % 3 - 1;
    };
    const std::string bytes = pattern( 1000000 );
    ZU_BYTE_SINK *sink = zuFileOpenByteSink( file );
    for ( size_t at = 0, count; at < bytes.size(); at += count ) {
        count = std::min( size(), bytes.size() - at );
        ASSERT_TRUE( zuByteSinkWriteBytes( sink, (const uint8_t *)bytes.data() + at, (ZU_INT)count ) );
        if ( random() % 4 == 0 ) {
            ASSERT_TRUE( zuByteSinkFlush( sink ) );
            ASSERT_EQ( fs::file_size( folder / "file" ), at + count );
        }
    }
    // Only a lock that somebody has keeps a sink off, not that a file system has none.
    for ( int error : { EOPNOTSUPP, ENOSYS, ENOLCK, EWOULDBLOCK } ) {
        armFaults( { 3, error } );
        EXPECT_EQ( writeBytes( zuFileWriteBuffer, NAME( path( "other" ) ), "x" ), error != EWOULDBLOCK );
        disarmFaults();
        EXPECT_EQ( failed, "flock" );
    }
    // Others are kept off the file as long as the sink is there, and change nothing.
    EXPECT_FALSE( zuFileOpenByteSink( file ) || writeBytes( zuFileReplaceBuffer, file, "no" ) );
    ZU_BYTE_SOURCE *source = zuFileOpenByteSource( file );
    for ( const fs::directory_entry &entry : fs::directory_iterator( "/proc/self/fd" ) ) {
        std::error_code gone;
        EXPECT_TRUE( fs::read_symlink( entry, gone ) != folder / "file" ||
                     fcntl( std::stoi( entry.path().filename() ), F_GETFD ) == FD_CLOEXEC );
    }
    zuByteSinkRelease( sink );
    EXPECT_TRUE( get( folder / "file" ) == bytes );
    size_t at = 0;
    while ( !zuByteSourceEnd( source ) ) {
        std::string piece( size(), 0 );
        auto *to = (uint8_t *)piece.data();
        bool skips = random() % 3 == 0;
        size_t count = (size_t)( skips ? zuByteSourceSkip( source, (ZU_INT)piece.size() )
                                       : zuByteSourceReadBytes( source, to, (ZU_INT)piece.size() ) );
        ASSERT_EQ( count, std::min( piece.size(), bytes.size() - at ) );
        ASSERT_TRUE( skips || bytes.compare( at, count, piece, 0, count ) == 0 );
        at += count;
    }
    std::ofstream( folder / "file", std::ios::app ) << "more";
    uint8_t more[ 5 ];
    EXPECT_EQ( zuByteSourceReadBytes( source, more, 5 ), 4 ); // at the end it looks again
    zuByteSourceRelease( source );
}

TEST_F( File, APipeWithoutReadersAndAFileAtItsLimitFail )
{
    const NAME pipe( path( "pipe" ) ), file( path( "file" ) );
    ASSERT_EQ( mkfifo( path( "pipe" ).c_str(), 0600 ), 0 );
    const std::string all = pattern( 1000000 );
    for ( size_t wanted : { all.size(), (size_t)1 } ) {
        std::string got( wanted, 0 );
        std::thread reader( [ & ] { std::ifstream( folder / "pipe" ).read( got.data(), (std::streamsize)wanted ); } );
        EXPECT_EQ( writeBytes( zuFileWriteBuffer, pipe, all ), wanted == all.size() );
        reader.join();
        EXPECT_TRUE( all.compare( 0, wanted, got ) == 0 );
    }
    struct rlimit before;
    getrlimit( RLIMIT_FSIZE, &before );
    const struct rlimit limited = { 100000, before.rlim_max };
    setrlimit( RLIMIT_FSIZE, &limited );
    EXPECT_FALSE( writeBytes( zuFileWriteBuffer, file, all ) || writeBytes( zuFileReplaceBuffer, file, all ) );
    setrlimit( RLIMIT_FSIZE, &before );
    EXPECT_TRUE( get( folder / "file" ) == all.substr( 0, 100000 ) );
}

TEST_F( File, WholeFilesAreWholeOrNull )
{
    reset();
    const NAME file( path( "file" ) );
    for ( size_t size : { 0, 10, 11, 4096, 70007, 500000 } ) {
        armFaults( { 3, 0, 0, [ & ] { put( folder / "file", pattern( size ) ); } } ); // ahead of the first read
        std::string changed = readBytes( file );
        disarmFaults();
        EXPECT_TRUE( changed == pattern( size ) ) << size << ": " << changed.size();
        EXPECT_EQ( readBytes( file, 10 ), size <= 10 ? pattern( size ) : "null" );
        EXPECT_EQ( zuFileSize( file ), (ZU_INT)size );
    }
    armFaults( { 3, EINTR, 200000 } ); // a read that waits while a timer ticks
    EXPECT_TRUE( readBytes( file ) == pattern( 500000 ) );
    disarmFaults();
    EXPECT_NE( readBytes( NAME( "/proc/self/status" ) ).find( "Umask" ), std::string::npos ); // says it has 0 bytes
    fs::resize_file( folder / "file", (uintmax_t)4 << 40 );
    EXPECT_EQ( readBytes( file, 1 << 20 ), "null" );
    const NAME dir( path( "list" ) );
    EXPECT_EQ( readBytes( dir ), "null" );
    EXPECT_FALSE( writeBytes( zuFileReplaceBuffer, dir, "" ) || zuFileOpenByteSink( dir ) || zuFileDelete( dir ) );
    EXPECT_FALSE( zuFileExists( NAME( path( std::string( "file\0", 5 ) ) ) ) ); // not cut off there
    EXPECT_FALSE( zuFileRename( dir, file ) || zuFileCreateDirectory( dir ) || zuFileDeleteDirectory( dir ) );
}

TEST_F( File, DirectoriesAreListedAndTheirNamesOpened )
{
    fs::create_directories( folder / "sub/in" );
    const TEXTS names = { "\xFF\xC3.txt", "\xC3\xA9.Txt", "\xED\xA0\x80.tXt", "\xF0\x9F\x98\x80.TXT", "plain" };
    for ( const std::string &name : names ) {
        put( folder / "sub" / name, name );
    }
    fs::create_directory_symlink( "in", folder / "sub/to-dir.txt" );
    auto list = [ & ]( ZU_BOOL noDirectories, const std::string &suffix ) {
        return zuDirectoryContent( NAME( path( "sub/" ) ), noDirectories, NAME( suffix ) );
    };
    TEXTS contents;
    for ( ZU_STRING *each : zu::items<ZU_STRING>( zu::adopt( list( ZU_TRUE, ".TXT" ) ) ) ) {
        contents.push_back( readBytes( each ) );
    }
    EXPECT_TRUE( std::is_permutation( contents.begin(), contents.end(), names.begin(), names.end() - 1 ) );
    EXPECT_EQ( takeSorted( list( ZU_FALSE, "in" ) ), TEXTS( { path( "sub/in" ), path( "sub/plain" ) } ) );
    EXPECT_EQ( takeSorted( list( ZU_FALSE, "" ) ).size(), 7u );
    // Narrow text brings a character beyond the BMP as a pair; both are the same name.
    auto pair = zu::adopt( zuStringCreateFromCstr( path( "sub/" + names[ 3 ] ).c_str(), -1 ) );
    EXPECT_EQ( readBytes( pair.get() ), names[ 3 ] );
    EXPECT_FALSE( zuFileRename( NAME( path( "sub/plain" ) ), pair.get() ) ); // nothing is overwritten
}

TEST_F( File, TreesGoWhateverTheirDepth )
{
    reset();
    fs::create_directory( folder / "tree" );
    int at = open( path( "tree" ).c_str(), O_DIRECTORY );
    for ( int i = 0; i < 3000; i++ ) { // the path has more bytes than any call takes
        ASSERT_EQ( mkdirat( at, "dddd", 0700 ), 0 );
        int below = openat( at, "dddd", O_DIRECTORY );
        close( at );
        at = below;
    }
    close( at );
    fs::create_directory_symlink( "tree", folder / "to-tree" );
    for ( const char *name : { "to-tree", "file", "missing" } ) {
        EXPECT_FALSE( zuFileDeleteDirectoryRecursive( NAME( path( name ) ) ) ) << name;
    }
    EXPECT_FALSE( zuFileDeleteDirectoryRecursive( NAME( " " ) ) );
    EXPECT_TRUE( zuFileIsDirectory( NAME( path( "tree/dddd/ " ) ) ) );
    EXPECT_TRUE( zuFileDeleteDirectoryRecursive( NAME( path( "tree" ) ) ) );
    EXPECT_EQ( entries( folder ), 5 );
}

TEST_F( File, ReplacingKeepsTheRights )
{
    reset();
    fs::create_directory( folder / "links" );
    fs::create_symlink( "../file", folder / "links/one" );
    fs::create_symlink( path( "links/one" ), folder / "two" );
    fs::create_symlink( "fresh", folder / "dangling" );
    fs::create_symlink( "loop", folder / "loop" );
    bool isRoot = geteuid() == 0;
    ASSERT_TRUE( !isRoot || chown( path( "file" ).c_str(), 1234, 5678 ) == 0 );
    fs::permissions( folder / "file", (fs::perms)04751 );
    EXPECT_TRUE( writeBytes( zuFileReplaceBuffer, NAME( path( "two" ) ), "new" ) );
    EXPECT_TRUE( writeBytes( zuFileReplaceBuffer, NAME( path( "dangling" ) ), "" ) );
    EXPECT_FALSE( writeBytes( zuFileReplaceBuffer, NAME( path( "loop" ) ), "new" ) );
    EXPECT_FALSE( writeBytes( zuFileReplaceBuffer, NAME( "/dev/null" ), "new" ) );
    EXPECT_TRUE( writeBytes( zuFileReplaceBuffer, NAME( path( "guarded" ) ), "new" ) );
    struct stat state;
    ASSERT_EQ( stat( path( "file" ).c_str(), &state ), 0 );
    EXPECT_EQ( state.st_mode & 07777, 04751u );
    EXPECT_TRUE( !isRoot || ( state.st_uid == 1234 && state.st_gid == 5678 ) );
    EXPECT_EQ( get( folder / "file" ), "new" );
    EXPECT_TRUE( fs::is_symlink( folder / "two" ) && fs::is_regular_file( folder / "fresh" ) );
    EXPECT_TRUE( getxattr( path( "guarded" ).c_str(), "system.posix_acl_access", nullptr, 0 ) == 44 ||
                 errno == EOPNOTSUPP );
}

TEST_F( File, OthersMayNot )
{
    if ( geteuid() != 0 ) {
        GTEST_SKIP() << "only root can be somebody else";
    }
    reset();
    fs::permissions( folder, (fs::perms)0777 );
    fs::permissions( folder / "list", (fs::perms)0700 );
    fs::permissions( folder / "guarded", (fs::perms)0600 );
    pid_t child = fork();
    if ( child == 0 ) {
        const NAME file( path( "file" ) ), guarded( path( "guarded" ) ), list( path( "list" ) );
        bool ok = setgroups( 0, nullptr ) == 0 && setgid( 65534 ) == 0 && setuid( 65534 ) == 0;
        ok = ok && readBytes( guarded ) == "null" && readBytes( file ) == OLD;
        ok = ok && !zuFileOpenByteSink( file ) && !writeBytes( zuFileReplaceBuffer, file, "x" );
        ok = ok && !zuFileExists( NAME( path( "list/a.TXT" ) ) ) && !zuFileDeleteDirectoryRecursive( list );
        ok = ok && zuFileIsDirectory( list ) && takeSorted( zuDirectoryContent( list, ZU_FALSE, nullptr ) ).empty();
        ok = ok && writeBytes( zuFileReplaceBuffer, NAME( path( "mine" ) ), "x" ) && get( folder / "file" ) == OLD;
        _exit( ok ? 0 : 1 );
    }
    EXPECT_EQ( ended( child ), 0 );
}

TEST_F( File, ADiskRunsFull )
{
    if ( mount( "tmpfs", folder.c_str(), "tmpfs", 0, "size=64k" ) != 0 ) {
        GTEST_SKIP() << "a file system cannot be mounted here";
    }
    const NAME file( path( "file" ) );
    const std::string large = pattern( 1000000 );
    ZU_INT sizes[ 3 ];
    EXPECT_TRUE( zuFileSystemStats( NAME( folder ), &sizes[ 0 ], &sizes[ 1 ], &sizes[ 2 ] ) );
    EXPECT_TRUE( sizes[ 0 ] == 65536 && sizes[ 1 ] == 65536 && sizes[ 2 ] == 0 );
    EXPECT_TRUE( writeBytes( zuFileWriteBuffer, file, "old" ) );
    EXPECT_FALSE( writeBytes( zuFileReplaceBuffer, file, large ) );
    EXPECT_EQ( entries( folder ), 1 );
    EXPECT_EQ( readBytes( file ), "old" );
    EXPECT_FALSE( writeBytes( zuFileWriteBuffer, file, large ) );
    // The flush has nothing left to write, and fails all the same.
    ZU_BYTE_SINK *sink = zuFileOpenByteSink( file );
    EXPECT_FALSE( zuByteSinkWriteBytes( sink, (const uint8_t *)large.data(), (ZU_INT)large.size() ) );
    EXPECT_FALSE( zuByteSinkError( sink ) || zuByteSinkFlush( sink ) );
    zuByteSinkRelease( sink );
    EXPECT_EQ( umount( folder.c_str() ), 0 );
}

TEST( FileName, IsTakenApart )
{
    const struct {
        const char *name, *dir, *base, *extension, *appended;
        bool isRelative;
    } rows[] = {
        { "a.tar.gz", "", "a.tar.gz", ".gz", "a.tar.gz/", true },
        { "dir.d/a", "dir.d/", "a", "", "dir.d/a/", true },
        { " \t//x / .y. / \\ / ", "//x /", " .y.", ".", " \t//x / .y. / \\ / /", false },
        { "a\\b\\", "", "a\\b", "", "a\\b\\", true },
        { " // ", "/", "", "", " // /", false },
        { "", "", "", "", "/", true },
    };
    for ( const auto &row : rows ) {
        const NAME name( row.name );
        ZU_STRING *appended = zuStringRetain( name );
        zuFilePathAppendDelimiter( &appended );
        EXPECT_EQ( takeText( zuFileDirName( name ) ), row.dir ) << row.name;
        EXPECT_EQ( takeText( zuFileBaseName( name ) ), row.base ) << row.name;
        EXPECT_EQ( takeText( zuFileExtensionName( name ) ), row.extension ) << row.name;
        EXPECT_EQ( takeText( appended ), row.appended ) << row.name;
        EXPECT_EQ( zuPathIsRelative( name ), row.isRelative ) << row.name;
    }
    EXPECT_EQ( takeText( zuCurrentDirectory() ), fs::current_path().string() );
    EXPECT_EQ( takeText( zuGetExecutablePath() ), fs::read_symlink( "/proc/self/exe" ).string() );
    expectAbort( "fn", [] { zuFileExtensionName( nullptr ); } );
    expectAbort( "pn", [] { zuPathIsRelative( nullptr ); } );
    expectAbort( "path", [] { zuDirectoryContent( nullptr, ZU_FALSE, nullptr ); } );
    expectAbort( "maxBytes >= -1", [] { zuFileReadBuffer( NAME( "a" ), -2 ); } );
}

TEST_F( File, ExactStreamsTellWhere )
{
    const NAME file( path( "file" ) ), none( path( "none/file" ) );
    const ZU_CHARSET_FLAGS strict = ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
    zu::Ref<ZU_EXACT_CHAR_SINK> written;
    auto sink =
        zu::adopt( zuFileOpenExactLineSink( file, ZU_CHARSET_UTF_16_LE, strict, ZU_NLF_FLAG_LF, written.inOut() ) );
    EXPECT_TRUE( zuLineSinkWrite( sink.get(), zu::text( "\u20AC" ).get() ) && zuLineSinkFlush( sink.get() ) );
    EXPECT_EQ( get( folder / "file" ), std::string( "\xAC\x20\n\0", 4 ) ) << "flushed down to the system";
    EXPECT_FALSE( zuLineSinkWrite( sink.get(), zu::text( U"ab\xD800" ).get() ) && zuLineSinkFlush( sink.get() ) );
    EXPECT_EQ( zuExactCharSinkFault( written.get() ), 4 );
    put( folder / "file", "one\r\ntwo \xFF\nthree" );
    zu::Ref<ZU_EXACT_CHAR_SOURCE> read;
    auto source =
        zu::adopt( zuFileOpenExactLineSource( file, ZU_CHARSET_UTF_8, strict, ZU_NLF_FLAG_CRLF, read.inOut() ) );
    auto lines = zu::adopt( zuLineSourceReadLines( source.get(), -1 ) );
    EXPECT_EQ( takeText( zuVectorToString( lines.get() ) ), "<one, two >" );
    EXPECT_TRUE( zuLineSourceError( source.get() ) );
    EXPECT_EQ( zuExactCharSourceFault( read.get() ), 9 );
    auto lax = zu::adopt( zuFileOpenExactCharSource( file, ZU_CHARSET_UTF_8, 0, nullptr ) );
    auto text = zu::adopt( zuStringCreate() );
    EXPECT_EQ( zuCharSourceRead( lax.get(), text.inOut(), -1 ), 16 );
    EXPECT_TRUE( text == "one\r\ntwo \uFFFD\nthree" );
    ZU_EXACT_CHAR_SINK *nothing = written.get();
    EXPECT_EQ( zuFileOpenExactCharSink( none, ZU_CHARSET_UTF_8, 0, &nothing ), nullptr );
    EXPECT_EQ( nothing, nullptr );
    EXPECT_EQ( zuFileOpenExactLineSource( none, ZU_CHARSET_UTF_8, 0, 0, nullptr ), nullptr );
}
TEST_F( File, NamesComeFromCommandLines )
{
    std::string words[] = { "program", path( "\xF0\x9F\x98\x80" ), path( "\xC3\xFF" ), "" };
    char *argv[] = { words[ 0 ].data(), words[ 1 ].data(), words[ 2 ].data(), words[ 3 ].data() };
    auto read = zu::adopt( zuArguments( 4, argv ) );
    ASSERT_EQ( zuVectorLength( read.get() ), 3 );
    for ( ZU_INT i = 0; i < 2; i++ ) {
        put( words[ i + 1 ], "found" );
        EXPECT_EQ( readBytes( zuStringFrom( zuVectorBacking( read.get() )[ i ] ) ), "found" );
    }
    EXPECT_EQ( zuVectorLength( zu::adopt( zuArguments( 0, nullptr ) ).get() ), 0 );
}
TEST( Env, IsRead )
{
    setenv( "ZU_TEST_VARIABLE", "caf\xC3\xA9 \xFF", 1 );
    EXPECT_EQ( takeText( zuGetEnvCstr( "ZU_TEST_VARIABLE_", 16 ) ), "café \uFFFD" );
    EXPECT_EQ( zuGetEnvCstr( "ZU_TEST_VARIABLE_", -1 ), nullptr );
    expectAbort( "variable", [] { zuGetEnv( nullptr ); } );
    expectAbort( "cstr", [] { zuGetEnvCstr( nullptr, 0 ); } );
}
