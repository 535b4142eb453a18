// zu_file_posix_internal.h: what the files of the POSIX platforms share, and what each of these systems must add.
//
// Paths are terminated bytes.  What fails says why in errno.
#pragma once

#include "zu/io/zu_file_internal.h"

#include <cerrno>
#include <dirent.h>
#include <sys/types.h>

// Makes a call that returns -1 on failure until it is not interrupted, which may take any number of times: a read that
// waits for input is interrupted as often as a timer of the program's ticks meanwhile.
template <typename CALL>
static inline auto zu___FilePosixResume( CALL call )
{
    auto result = call();
    while ( result == -1 && errno == EINTR ) {
        result = call();
    }
    return result;
}

ZU_BEGIN_DECLS

// Returns the prepared name `fn` as a path, in memory of zuMemAlloc; null, with ENOENT, if no path can stand for it.
char *zu___FilePosixPath( ZU_STRING *fn );
// Appends the name that a system has given, `length` bytes of it, or all with -1.
void zu___FilePosixAppend( ZU_STRING **name, const char *path, ZU_INT length );

// Opens `path`, which is relative to the directory `at`; -1 on failure.
int zu___FilePosixOpen( int at, const char *path, int flags, unsigned mode );
// Returns the handle of a file that is open for writing and has the mode `mode`.
ZU___FILE_HANDLE zu___FilePosixSinkHandle( int file, mode_t mode );
// Opens a directory for its entries; null on failure.  With O_NOFOLLOW in `flags` a link is refused.
DIR *zu___FilePosixOpenDirectory( int at, const char *path, int flags );
// Returns the next entry but "." and ".."; null at the end and, with errno other than 0, on failure.
struct dirent *zu___FilePosixNextEntry( DIR *dir );
// Tells whether an entry is a directory, or with `follow` a link to one; false also if that cannot be found out.
bool zu___FilePosixIsDirectory( DIR *dir, const struct dirent *entry, bool follow );
// Takes the lock `operation` of flock(2), without waiting; a file system that has no locks gives any.
bool zu___FilePosixLock( int file, int operation );
// Returns the target of a link, in memory of zuMemAlloc; null if that fails.
char *zu___FilePosixReadLink( int at, const char *path );

// What each system must add

// Gives `path` the name `newPath`, unless that exists.
bool zu___FilePosixRenameNew( const char *path, const char *newPath );
// Gives the open file `to` the access list of `from`, or none if that has none beside its permissions.
bool zu___FilePosixCopyAccessList( int from, int to );

ZU_END_DECLS
