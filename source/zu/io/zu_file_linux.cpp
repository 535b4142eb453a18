#include "zu/io/zu_file_posix_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

static constexpr char ACCESS_LIST[] = "system.posix_acl_access"; // acl(5), as the system stores it
static constexpr ZU_INT ACCESS_LIST_MAX = 65536;                 // bytes of any extended attribute

ZU_STRING *zu___GetExecutablePath( void )
{
    char *path = zu___FilePosixReadLink( AT_FDCWD, "/proc/self/exe" );
    ZU___ASSERT_AS( path && *path, "ret > 0" );
    ZU_STRING *name = zuStringCreate();
    zu___FilePosixAppend( &name, path, -1 );
    zuMemFree( path );
    return name;
}

bool zu___FilePosixRenameNew( const char *path, const char *newPath )
{
    if ( zu___FilePosixResume( [ & ] { return renameat2( AT_FDCWD, path, AT_FDCWD, newPath, RENAME_NOREPLACE ); } ) ==
         0 ) {
        return true;
    }
    // Where the file system does not know of that, two steps have to do.
    struct stat state;
    return ( errno == EINVAL || errno == ENOSYS ) &&
           zu___FilePosixResume( [ & ] { return fstatat( AT_FDCWD, newPath, &state, AT_SYMLINK_NOFOLLOW ); } ) != 0 &&
           errno == ENOENT &&
           zu___FilePosixResume( [ & ] { return renameat( AT_FDCWD, path, AT_FDCWD, newPath ); } ) == 0;
}

// Without a list there is nothing to read, and no list is a list too: a file gets one from its folder.
bool zu___FilePosixCopyAccessList( int from, int to )
{
    char *list = (char *)zuMemAlloc( ACCESS_LIST_MAX );
    ssize_t length =
        zu___FilePosixResume( [ & ] { return fgetxattr( from, ACCESS_LIST, list, (size_t)ACCESS_LIST_MAX ); } );
    int result = -1;
    if ( length >= 0 ) {
        result = zu___FilePosixResume( [ & ] { return fsetxattr( to, ACCESS_LIST, list, (size_t)length, 0 ); } );
    } else if ( errno == EOPNOTSUPP ) {
        result = 0;
    } else if ( errno == ENODATA ) {
        result = zu___FilePosixResume( [ & ] { return fremovexattr( to, ACCESS_LIST ); } );
        if ( result != 0 && errno == ENODATA ) {
            result = 0;
        }
    }
    zuMemFree( list );
    return result == 0;
}
