// Names are UTF-8 both ways, and must come back as the same bytes even where they are not: a byte that is no part of a
// valid sequence travels as U+DC00 and the byte, which valid UTF-8 never yields.  U+DC80 to U+DCFF alone become bytes
// again, so that no character can smuggle a delimiter or a terminator in.  Pairs of surrogates, as narrow text brings
// them, are one character.

#include "zu/base/zu_string_case.h"
#include "zu/base/zu_string_search.h"
#include "zu/io/zu_file_posix_internal.h"
#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_mem.h"
#include "zu/sys/zu_surrogate_internal.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

static constexpr ZU_INT PATH_BYTES = 256;          // first guess at the length of what the system tells
static constexpr ZU_INT TRANSFER_BYTES = 1 << 30;  // at a time; some systems refuse 2 GB and more
static constexpr ZU_CHAR ESCAPED_BYTE = 0xDC00;    // plus the byte
static constexpr mode_t FILE_PERMISSIONS = 0666;   // less what the process masks
static constexpr mode_t FOLDER_PERMISSIONS = 0777; // likewise

// Names

char *zu___FilePosixPath( ZU_STRING *fn )
{
    ZU_STRING *name = zu___FileNamePrepare( fn );
    const ZU_CHAR *chars = zuStringBacking( name );
    ZU_INT length = zuStringLength( name );
    uint8_t *path = (uint8_t *)zuMemAlloc( length * ZU___CHARS_UTF8_SEQUENCE_MAX + 1 );
    uint8_t *end = path;
    bool ok = true;
    for ( ZU_INT i = 0; i < length && ok; i++ ) {
        ZU_CHAR ch = chars[ i ];
        if ( zu___IsHighSurrogate( ch ) && i + 1 < length && zu___IsLowSurrogate( chars[ i + 1 ] ) ) {
            ch = zu___SurrogatesJoin( ch, chars[ ++i ] );
        }
        if ( ch >= ESCAPED_BYTE + 0x80 && ch <= ESCAPED_BYTE + 0xFF ) {
            *end++ = (uint8_t)( ch - ESCAPED_BYTE );
        } else if ( ch == 0 || zu___IsSurrogate( ch ) ) {
            ok = false;
        } else {
            end = zu___CharsPutUtf8( end, ch );
        }
    }
    *end = 0;
    zuStringRelease( name );
    if ( !ok ) {
        zuMemFree( path );
        errno = ENOENT;
        return nullptr;
    }
    return (char *)path;
}
void zu___FilePosixAppend( ZU_STRING **name, const char *path, ZU_INT length )
{
    const uint8_t *pos = (const uint8_t *)path;
    const uint8_t *end = pos + zu___CharsMeasureCstr( path, length );
    while ( pos < end ) {
        const uint8_t *begin = pos;
        ZU_CHAR ch = zu___CharsTakeUtf8( &pos, end );
        if ( ch != ZU___CHARS_UTF8_BROKEN ) {
            zuStringAppendChar( name, ch );
            continue;
        }
        for ( ; begin < pos; begin++ ) {
            zuStringAppendChar( name, ESCAPED_BYTE + *begin );
        }
    }
}

ZU_STRING *zu___FileBaseName( ZU_STRING *fn )
{
    ZU_STRING *name = zu___FileNamePrepare( fn );
    zuStringDelLeading( &name, zuStringFindCharFromRight( name, -1, ZU_CHAR_SOLIDUS ) + 1 );
    return name;
}
ZU_STRING *zu___FileDirName( ZU_STRING *fn )
{
    ZU_STRING *name = zu___FileNamePrepare( fn );
    ZU_INT length = zuStringFindCharFromRight( name, -1, ZU_CHAR_SOLIDUS ) + 1;
    zuStringDelTrailing( &name, zuStringLength( name ) - length );
    return name;
}
ZU_CHAR zu___FilePathDelimiter( void )
{
    return ZU_CHAR_SOLIDUS;
}
ZU_BOOL zu___PathIsRelative( ZU_STRING *pn )
{
    ZU_STRING *name = zu___FileNamePrepare( pn );
    ZU_BOOL isRelative = !zuStringBeginsWithChar( name, ZU_CHAR_SOLIDUS );
    zuStringRelease( name );
    return isRelative;
}

// Calls with the path of `fn`; what returns -1 has failed, and so has a name without a path.
template <typename CALL>
static auto filePosixWithPath( ZU_STRING *fn, CALL call ) -> decltype( call( "" ) )
{
    char *path = zu___FilePosixPath( fn );
    if ( !path ) {
        return -1;
    }
    auto result = zu___FilePosixResume( [ & ] { return call( path ); } );
    zuMemFree( path );
    return result;
}

static bool filePosixState( ZU_STRING *fn, struct stat *state )
{
    return filePosixWithPath( fn, [ & ]( const char *path ) { return fstatat( AT_FDCWD, path, state, 0 ); } ) == 0;
}

// Open files

// What a handle has beside the descriptor, which is never that large, if a write that fails may raise a signal.
static constexpr ZU___FILE_HANDLE RAISES = (ZU___FILE_HANDLE)1 << 30;

static int filePosixDescriptor( ZU___FILE_HANDLE handle )
{
    return (int)( handle & ~RAISES );
}
ZU___FILE_HANDLE zu___FilePosixSinkHandle( int file, mode_t mode )
{
    struct rlimit size;
    bool raises = S_ISFIFO( mode ) || getrlimit( RLIMIT_FSIZE, &size ) != 0 || size.rlim_cur != RLIM_INFINITY;
    return raises ? file | RAISES : file;
}
int zu___FilePosixOpen( int at, const char *path, int flags, unsigned mode )
{
    return zu___FilePosixResume( [ & ] { return openat( at, path, flags | O_CLOEXEC | O_NOCTTY, mode ); } );
}
bool zu___FilePosixLock( int file, int operation )
{
    int result = zu___FilePosixResume( [ & ] { return flock( file, operation | LOCK_NB ); } );
    return result == 0 || errno == EOPNOTSUPP || errno == ENOSYS || errno == ENOLCK; // the last from NFS
}
// Returns the descriptor of an open file, and its state; -1 on failure.
static int filePosixOpenName( ZU_STRING *fn, int flags, struct stat *state )
{
    char *path = zu___FilePosixPath( fn );
    if ( !path ) {
        return -1;
    }
    int file = zu___FilePosixOpen( AT_FDCWD, path, flags, FILE_PERMISSIONS );
    zuMemFree( path );
    if ( file < 0 ) {
        return -1;
    }
    if ( zu___FilePosixResume( [ & ] { return fstat( file, state ); } ) != 0 || S_ISDIR( state->st_mode ) ) {
        close( file );
        return -1;
    }
    return file;
}
ZU___FILE_HANDLE zu___FileHandleOpenSource( ZU_STRING *fn )
{
    struct stat state;
    return filePosixOpenName( fn, O_RDONLY, &state );
}
ZU___FILE_HANDLE zu___FileHandleOpenSink( ZU_STRING *fn )
{
    // Who has a pipe open for reading too is a reader of its own: what it writes goes nowhere, and stops for ever when
    // the pipe is full.
    struct stat state;
    int access = filePosixState( fn, &state ) && S_ISFIFO( state.st_mode ) ? O_WRONLY : O_RDWR;
    int file = filePosixOpenName( fn, access | O_CREAT, &state );
    if ( file < 0 ) {
        return ZU___FILE_HANDLE_NONE;
    }
    // A device has nothing to empty, and is everybody's: a lock on the null device would stop the whole machine.  A
    // file is emptied behind its lock, so that who is refused has done no harm.
    if ( S_ISREG( state.st_mode ) && ( !zu___FilePosixLock( file, LOCK_EX ) ||
                                       zu___FilePosixResume( [ & ] { return ftruncate( file, 0 ); } ) != 0 ) ) {
        close( file );
        return ZU___FILE_HANDLE_NONE;
    }
    return zu___FilePosixSinkHandle( file, state.st_mode );
}
ZU_INT zu___FileHandleSize( ZU___FILE_HANDLE handle )
{
    struct stat state;
    int file = filePosixDescriptor( handle );
    return zu___FilePosixResume( [ & ] { return fstat( file, &state ); } ) == 0 ? state.st_size : 0;
}
ZU_INT zu___FileHandleRead( ZU___FILE_HANDLE handle, uint8_t *bytes, ZU_INT maxByteCount )
{
    size_t count = (size_t)zuIntMin( maxByteCount, TRANSFER_BYTES );
    return zu___FilePosixResume( [ & ] { return read( filePosixDescriptor( handle ), bytes, count ); } );
}
// Writes where a failure may raise a signal: to a pipe that nobody reads any more, or to a file at the limit that the
// process has for files.  Either is a failure like any other: the signal, which may come with a part that was written,
// is taken off the thread, unless one was waiting there before.
static ssize_t filePosixWriteQuietly( int file, const uint8_t *bytes, size_t count )
{
    static constexpr int SIGNALS[] = { SIGPIPE, SIGXFSZ };
    sigset_t ahead;
    sigset_t blocked;
    sigset_t before;
    sigpending( &ahead );
    sigemptyset( &blocked );
    for ( int signal : SIGNALS ) {
        sigaddset( &blocked, signal );
    }
    pthread_sigmask( SIG_BLOCK, &blocked, &before );
    ssize_t written = write( file, bytes, count );
    int reason = errno;
    sigset_t behind;
    sigpending( &behind );
    for ( int signal : SIGNALS ) {
        if ( sigismember( &behind, signal ) == 1 && sigismember( &ahead, signal ) == 0 ) {
            sigset_t raised;
            sigemptyset( &raised );
            sigaddset( &raised, signal );
            sigwait( &raised, &signal );
        }
    }
    pthread_sigmask( SIG_SETMASK, &before, nullptr );
    errno = reason;
    return written;
}
ZU_BOOL zu___FileHandleWrite( ZU___FILE_HANDLE handle, const uint8_t *bytes, ZU_INT byteCount )
{
    int file = filePosixDescriptor( handle );
    while ( byteCount > 0 ) {
        size_t count = (size_t)zuIntMin( byteCount, TRANSFER_BYTES );
        ssize_t written = zu___FilePosixResume( [ & ] {
            return handle & RAISES ? filePosixWriteQuietly( file, bytes, count ) : write( file, bytes, count );
        } );
        if ( written <= 0 ) {
            return ZU_FALSE;
        }
        bytes += written;
        byteCount -= written;
    }
    return ZU_TRUE;
}
// Whatever close(2) says, the descriptor is gone, and may be another thread's already: it is not called twice.
void zu___FileHandleClose( ZU___FILE_HANDLE handle )
{
    close( filePosixDescriptor( handle ) );
}

// State

ZU_BOOL zu___FileExists( ZU_STRING *fn )
{
    struct stat state;
    return filePosixState( fn, &state );
}
ZU_BOOL zu___FileIsDirectory( ZU_STRING *fn )
{
    struct stat state;
    return filePosixState( fn, &state ) && S_ISDIR( state.st_mode );
}
ZU_INT zu___FileSize( ZU_STRING *fn )
{
    struct stat state;
    return filePosixState( fn, &state ) ? state.st_size : -1;
}
ZU_TIME *zu___FileModificationTime( ZU_STRING *fn )
{
    struct stat state;
    return filePosixState( fn, &state ) ? zuTimeTryCreateFromTimeT( state.st_mtime ) : nullptr;
}

// Changing directories

ZU_BOOL zu___FileDelete( ZU_STRING *fn )
{
    return filePosixWithPath( fn, []( const char *path ) { return unlinkat( AT_FDCWD, path, 0 ); } ) == 0;
}
ZU_BOOL zu___FileRename( ZU_STRING *fn, ZU_STRING *newFn )
{
    char *path = zu___FilePosixPath( fn );
    char *newPath = zu___FilePosixPath( newFn );
    ZU_BOOL ok = path && newPath && zu___FilePosixRenameNew( path, newPath );
    zuMemFree( path );
    zuMemFree( newPath );
    return ok;
}
ZU_BOOL zu___FileCreateDirectory( ZU_STRING *fn )
{
    return filePosixWithPath( fn, []( const char *path ) { return mkdir( path, FOLDER_PERMISSIONS ); } ) == 0;
}
ZU_BOOL zu___FileDeleteDirectory( ZU_STRING *fn )
{
    return filePosixWithPath( fn, []( const char *path ) { return unlinkat( AT_FDCWD, path, AT_REMOVEDIR ); } ) == 0;
}

// Places

ZU_BOOL zu___FileSystemStats( ZU_STRING *pn, ZU_INT *total, ZU_INT *free, ZU_INT *used )
{
    struct statvfs stats;
    ZU_INT totalBytes;
    ZU_INT freeBytes;
    if ( filePosixWithPath( pn, [ & ]( const char *path ) { return statvfs( path, &stats ); } ) != 0 ||
         __builtin_mul_overflow( stats.f_blocks, stats.f_frsize, &totalBytes ) ||
         __builtin_mul_overflow( stats.f_bfree, stats.f_frsize, &freeBytes ) ) {
        return ZU_FALSE;
    }
    if ( total ) {
        *total = totalBytes;
    }
    if ( free ) {
        *free = freeBytes;
    }
    if ( used ) {
        *used = totalBytes - freeBytes;
    }
    return ZU_TRUE;
}
ZU_STRING *zu___CurrentDirectory( void )
{
    ZU_INT size = PATH_BYTES;
    char *path = (char *)zuMemAlloc( size );
    while ( !getcwd( path, (size_t)size ) ) {
        ZU___ASSERT_AS( errno == ERANGE, "count" );
        size *= 2;
        path = (char *)zuMemRealloc( path, size );
    }
    ZU_STRING *name = zuStringCreate();
    zu___FilePosixAppend( &name, path, -1 );
    zuMemFree( path );
    return name;
}
char *zu___FilePosixReadLink( int at, const char *path )
{
    // A target that fills the room may have been cut off.
    ssize_t length;
    ZU_INT size = PATH_BYTES;
    char *target = nullptr;
    do {
        size *= 2;
        target = (char *)zuMemRealloc( target, size );
        length = zu___FilePosixResume( [ & ] { return readlinkat( at, path, target, (size_t)size ); } );
    } while ( length == size );
    if ( length < 0 ) {
        int reason = errno;
        zuMemFree( target );
        errno = reason;
        return nullptr;
    }
    target[ length ] = 0;
    return target;
}

// What is in a directory

DIR *zu___FilePosixOpenDirectory( int at, const char *path, int flags )
{
    int folder = zu___FilePosixOpen( at, path, O_RDONLY | O_DIRECTORY | flags, 0 );
    if ( folder < 0 ) {
        return nullptr;
    }
    DIR *dir = fdopendir( folder );
    if ( !dir ) {
        close( folder );
    }
    return dir;
}
struct dirent *zu___FilePosixNextEntry( DIR *dir )
{
    struct dirent *entry;
    do {
        errno = 0;
        entry = readdir( dir );
    } while ( entry ? strcmp( entry->d_name, "." ) == 0 || strcmp( entry->d_name, ".." ) == 0 : errno == EINTR );
    return entry;
}
bool zu___FilePosixIsDirectory( DIR *dir, const struct dirent *entry, bool follow )
{
    if ( entry->d_type != DT_UNKNOWN && !( follow && entry->d_type == DT_LNK ) ) {
        return entry->d_type == DT_DIR;
    }
    struct stat state;
    int flags = follow ? 0 : AT_SYMLINK_NOFOLLOW;
    return zu___FilePosixResume( [ & ] { return fstatat( dirfd( dir ), entry->d_name, &state, flags ); } ) == 0 &&
           S_ISDIR( state.st_mode );
}

static bool filePosixHasSuffix( ZU_STRING *name, ZU_STRING *foldedSuffix )
{
    ZU_STRING *folded = zuStringRetain( name );
    zuStringToCaseFold( &folded );
    bool has = zuStringEndsWith( folded, foldedSuffix );
    zuStringRelease( folded );
    return has;
}
// Appends what is in `dir` to `content`, each with `prefix`; false if not all of it could be read.
static bool filePosixListDirectory( ZU_VECTOR **content, DIR *dir, ZU_STRING *prefix, ZU_BOOL noDirectories,
                                    ZU_STRING *foldedSuffix )
{
    while ( struct dirent *entry = zu___FilePosixNextEntry( dir ) ) {
        if ( noDirectories && zu___FilePosixIsDirectory( dir, entry, true ) ) {
            continue;
        }
        ZU_STRING *name = zuStringCreate();
        zu___FilePosixAppend( &name, entry->d_name, -1 );
        if ( !foldedSuffix || filePosixHasSuffix( name, foldedSuffix ) ) {
            zuStringPrepend( &name, prefix );
            zuVectorAppendString( content, name );
        }
        zuStringRelease( name );
    }
    return errno == 0;
}
ZU_VECTOR *zu___DirectoryContent( ZU_STRING *path, ZU_BOOL noDirectories, ZU_STRING *suffix )
{
    ZU_VECTOR *content = zuVectorCreate();
    char *folder = zu___FilePosixPath( path );
    DIR *dir = folder ? zu___FilePosixOpenDirectory( AT_FDCWD, folder, 0 ) : nullptr;
    zuMemFree( folder );
    if ( !dir ) {
        return content;
    }
    ZU_STRING *prefix = zu___FileNamePrepare( path );
    if ( !zuStringEndsWithChar( prefix, ZU_CHAR_SOLIDUS ) ) {
        zuStringAppendChar( &prefix, ZU_CHAR_SOLIDUS );
    }
    ZU_STRING *foldedSuffix = suffix ? zuStringRetain( suffix ) : nullptr;
    if ( foldedSuffix ) {
        zuStringToCaseFold( &foldedSuffix );
    }
    if ( !filePosixListDirectory( &content, dir, prefix, noDirectories, foldedSuffix ) ) {
        zuVectorClear( &content );
    }
    closedir( dir );
    ZU_REF_RELEASE_OPT( foldedSuffix );
    zuStringRelease( prefix );
    return content;
}
