// rename(2) exchanges what a name stands for in one step, but tells nothing of the disk: so the new content has to be
// there before, and the folder behind it.  The file is looked for once, and then worked on in its open folder, so that
// folders may be moved meanwhile.
//
// The old file is opened for writing although nothing is written: the system answers whether the caller may, and the
// lock, a shared one, keeps sinks off both files' name and other replacers on it.

#include "zu/io/zu_file_posix_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

static constexpr int LINKS_MAX = 40;         // in a row, as on Linux
static constexpr int NAMES_MAX = 100;        // that are tried for the new file
static constexpr int PRIVATE = 0600;         // until the new file has the rights of the old one
static constexpr int PUBLIC = 0666;          // less what the process masks
static constexpr int PERMISSIONS = 07777;    // of a mode
static constexpr int ID_PERMISSIONS = 06000; // those that lend the rights of owner and group

struct REPLACE {
    int folder;           // open
    char *path;           // relative to the folder that `folder` was looked for from
    const char *base;     // the file's name in the folder, within `path`
    int old;              // the file that is there, open; -1 if there is none
    struct stat state;    // of it
    char temporary[ 32 ]; // the new file's name; empty while there is none
};

// Opens the folder of `path`, which is relative to the folder `at`, and takes the path over.
static bool replaceOpenFolder( REPLACE *replace, int at, char *path )
{
    zuMemFree( replace->path );
    replace->path = path;
    char *slash = strrchr( path, '/' );
    replace->base = slash ? slash + 1 : path;
    char first = *replace->base;
    if ( slash ) {
        slash[ 1 ] = 0; // the folder alone
    }
    int folder = zu___FilePosixOpen( at, slash ? path : ".", O_RDONLY | O_DIRECTORY, 0 );
    if ( slash ) {
        slash[ 1 ] = first;
    }
    if ( at != AT_FDCWD ) {
        close( at );
    }
    replace->folder = folder;
    return folder >= 0 && *replace->base;
}
// Finds the folder and the name of the file that `path`, which is taken over, leads to.
static bool replaceFind( REPLACE *replace, char *path )
{
    if ( !replaceOpenFolder( replace, AT_FDCWD, path ) ) {
        return false;
    }
    for ( int i = 0; i < LINKS_MAX; i++ ) {
        char *target = zu___FilePosixReadLink( replace->folder, replace->base );
        if ( !target ) {
            return errno == EINVAL || errno == ENOENT; // no link, or nothing yet
        }
        if ( !replaceOpenFolder( replace, replace->folder, target ) ) {
            return false;
        }
    }
    return false;
}
// Opens the file that is there; false unless it is one that may be replaced, or none.
static bool replaceOpenOld( REPLACE *replace )
{
    replace->old = zu___FilePosixOpen( replace->folder, replace->base, O_WRONLY | O_NOFOLLOW | O_NONBLOCK, 0 );
    if ( replace->old < 0 ) {
        return errno == ENOENT;
    }
    return zu___FilePosixResume( [ & ] { return fstat( replace->old, &replace->state ); } ) == 0 &&
           S_ISREG( replace->state.st_mode ) && zu___FilePosixLock( replace->old, LOCK_SH );
}

// Creates a file of a new name in the folder; -1 on failure.
static int replaceCreate( REPLACE *replace )
{
    static unsigned counter;
    int mode = replace->old >= 0 ? PRIVATE : PUBLIC;
    int file = -1;
    errno = EEXIST;
    for ( int i = 0; i < NAMES_MAX && file < 0 && errno == EEXIST; i++ ) {
        // Unlike every other of the moment; that nobody else has it the system sees to.
        struct timespec now;
        clock_gettime( CLOCK_REALTIME, &now );
        uint64_t number = (uint64_t)now.tv_sec * 1000000000 + (uint64_t)now.tv_nsec;
        number ^= (uint64_t)getpid() << 40;
        number += __atomic_fetch_add( &counter, 1, __ATOMIC_RELAXED ) * 0x9E3779B97F4A7C15;
        snprintf( replace->temporary, sizeof replace->temporary, ".zu-%016llx", (unsigned long long)number );
        file = zu___FilePosixOpen( replace->folder, replace->temporary, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW,
                                   (unsigned)mode );
    }
    if ( file < 0 ) {
        replace->temporary[ 0 ] = 0;
    }
    return file;
}
static bool replaceOwner( int file, uid_t owner, gid_t group )
{
    return zu___FilePosixResume( [ & ] { return fchown( file, owner, group ); } ) == 0;
}
// Gives the new file the rights of the old one.
static bool replaceCopyRights( const REPLACE *replace, int file )
{
    const struct stat *old = &replace->state;
    struct stat state;
    if ( zu___FilePosixResume( [ & ] { return fstat( file, &state ); } ) != 0 ) {
        return false;
    }
    mode_t mode = old->st_mode & PERMISSIONS;
    if ( ( state.st_uid != old->st_uid || state.st_gid != old->st_gid ) &&
         !replaceOwner( file, old->st_uid, old->st_gid ) ) {
        if ( state.st_gid != old->st_gid && !replaceOwner( file, (uid_t)-1, old->st_gid ) ) {
            return false;
        }
        mode &= (mode_t)~ID_PERMISSIONS; // they would lend the rights of somebody else
    }
    // Changing the owner takes permissions away, and the list has some of its own: so they come last.
    return zu___FilePosixCopyAccessList( replace->old, file ) &&
           zu___FilePosixResume( [ & ] { return fchmod( file, mode ); } ) == 0;
}
// Forces to the disk what the system has of a file or folder.
static bool replaceSync( int file )
{
    return zu___FilePosixResume( [ & ] { return fsync( file ); } ) == 0;
}
// Makes the new file, complete and on the disk.
static bool replaceMakeNew( REPLACE *replace, const uint8_t *bytes, ZU_INT byteCount )
{
    int file = replaceCreate( replace );
    if ( file < 0 ) {
        return false;
    }
    bool ok = ( replace->old < 0 || replaceCopyRights( replace, file ) ) &&
              zu___FileHandleWrite( zu___FilePosixSinkHandle( file, S_IFREG ), bytes, byteCount ) &&
              replaceSync( file );
    // Interrupted, the file is closed like any other, and its content is on the disk already.
    return ( close( file ) == 0 || errno == EINTR ) && ok;
}

// The step that counts, and the folder behind it; some file systems have no way to force a folder to the disk.
static bool replaceExchange( REPLACE *replace )
{
    int folder = replace->folder;
    if ( zu___FilePosixResume( [ & ] { return renameat( folder, replace->temporary, folder, replace->base ); } ) !=
         0 ) {
        return false;
    }
    replace->temporary[ 0 ] = 0;
    return replaceSync( folder ) || errno == EINVAL || errno == EOPNOTSUPP;
}

ZU_BOOL zu___FileReplace( ZU_STRING *fn, const uint8_t *bytes, ZU_INT byteCount )
{
    char *path = zu___FilePosixPath( fn );
    if ( !path ) {
        return ZU_FALSE;
    }
    REPLACE replace = {};
    replace.folder = -1;
    replace.old = -1;
    ZU_BOOL ok = replaceFind( &replace, path ) && replaceOpenOld( &replace ) &&
                 replaceMakeNew( &replace, bytes, byteCount ) && replaceExchange( &replace );
    if ( replace.temporary[ 0 ] ) {
        zu___FilePosixResume( [ & ] { return unlinkat( replace.folder, replace.temporary, 0 ); } );
    }
    if ( replace.old >= 0 ) {
        close( replace.old );
    }
    if ( replace.folder >= 0 ) {
        close( replace.folder );
    }
    zuMemFree( replace.path );
    return ok;
}
