// The tree comes from outside, and so do its depth and whoever else works in it.  So there is no recursion but a stack
// on the heap; each step goes from an open directory to an entry of it and never by a path, so that a link that takes a
// directory's place is not followed; and only the directories near the top stay open.  Deeper ones are left on the way
// down and come back by "..", which must be the same directory as before.

#include "zu/io/zu_file_posix_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static constexpr ZU_INT OPEN_LEVELS = 16; // directories that stay open; nearly all trees are no deeper
static constexpr char FOLDER = 'd';       // what stands ahead of a name
static constexpr char OTHER = 'f';

struct TREE_LEVEL {
    DIR *dir;     // null while it is left
    dev_t device; // with `number`, which directory it is
    ino_t number;
    char *entries; // what was in it: each a letter and a terminated name; null if nothing was
    ZU_INT length; // bytes of `entries`
    ZU_INT next;   // the entry that is to go next; while the level above is there, its directory
};
struct TREE {
    TREE_LEVEL *levels; // the directories on the way, from the top
    ZU_INT depth;       // of them; 0 when all is done
    ZU_INT room;        // for levels
    bool ok;            // all directories but the first that should have gone are gone
};

// Everything is listed before anything goes: not every file system lists the rest of a directory that changes.
static void treeListEntries( TREE_LEVEL *level )
{
    ZU_INT room = 0;
    while ( struct dirent *entry = zu___FilePosixNextEntry( level->dir ) ) {
        ZU_INT size = (ZU_INT)strlen( entry->d_name ) + 2;
        if ( room - level->length < size ) {
            room = room * 2 + size;
            level->entries = (char *)zuMemRealloc( level->entries, room );
        }
        char *pos = level->entries + level->length;
        pos[ 0 ] = zu___FilePosixIsDirectory( level->dir, entry, false ) ? FOLDER : OTHER;
        memcpy( pos + 1, entry->d_name, (size_t)size - 1 );
        level->length += size;
    }
}

static bool treeState( DIR *dir, struct stat *state )
{
    return zu___FilePosixResume( [ & ] { return fstat( dirfd( dir ), state ); } ) == 0;
}
// Goes down to a directory; false if it cannot be read.
static bool treeEnter( TREE *tree, int at, const char *path )
{
    DIR *dir = zu___FilePosixOpenDirectory( at, path, O_NOFOLLOW );
    struct stat state;
    if ( !dir || !treeState( dir, &state ) ) {
        if ( dir ) {
            closedir( dir );
        }
        return false;
    }
    if ( tree->depth == tree->room ) {
        tree->room = tree->room * 2 + OPEN_LEVELS;
        tree->levels = (TREE_LEVEL *)zuMemReallocN( tree->levels, tree->room, sizeof( TREE_LEVEL ) );
    }
    if ( tree->depth >= OPEN_LEVELS ) {
        closedir( tree->levels[ tree->depth - 1 ].dir );
        tree->levels[ tree->depth - 1 ].dir = nullptr;
    }
    TREE_LEVEL *level = &tree->levels[ tree->depth++ ];
    *level = { dir, state.st_dev, state.st_ino, nullptr, 0, 0 };
    treeListEntries( level );
    return true;
}

static const char *treeNextName( const TREE_LEVEL *level )
{
    return level->entries + level->next + 1;
}
// Deletes the entry that is next, an empty directory if `flags` say so, and passes on.
static bool treeDeleteNext( TREE_LEVEL *level, int flags )
{
    const char *name = treeNextName( level );
    bool ok = zu___FilePosixResume( [ & ] { return unlinkat( dirfd( level->dir ), name, flags ); } ) == 0;
    level->next += (ZU_INT)strlen( name ) + 2;
    return ok;
}

static void treeDropLevel( TREE *tree )
{
    TREE_LEVEL *level = &tree->levels[ --tree->depth ];
    if ( level->dir ) {
        closedir( level->dir );
    }
    zuMemFree( level->entries );
}
// Sees to it that the level above the last one is open; false if there is no way back.
static bool treeReturn( TREE *tree )
{
    TREE_LEVEL *above = &tree->levels[ tree->depth - 2 ];
    if ( above->dir ) {
        return true;
    }
    above->dir = zu___FilePosixOpenDirectory( dirfd( above[ 1 ].dir ), "..", O_NOFOLLOW );
    struct stat state;
    return above->dir && treeState( above->dir, &state ) && state.st_dev == above->device &&
           state.st_ino == above->number;
}
// Leaves a directory of which nothing is left to do, and deletes it.  Without a way back the rest of the tree stays.
static void treeLeave( TREE *tree )
{
    if ( tree->depth > 1 && !treeReturn( tree ) ) {
        tree->ok = false;
        while ( tree->depth > 0 ) {
            treeDropLevel( tree );
        }
        return;
    }
    treeDropLevel( tree );
    if ( tree->depth > 0 && !treeDeleteNext( &tree->levels[ tree->depth - 1 ], AT_REMOVEDIR ) ) {
        tree->ok = false;
    }
}

ZU_BOOL zu___FileDeleteTree( ZU_STRING *fn )
{
    char *path = zu___FilePosixPath( fn );
    if ( !path ) {
        return ZU_FALSE;
    }
    TREE tree = { nullptr, 0, 0, true };
    treeEnter( &tree, AT_FDCWD, path );
    while ( tree.depth > 0 ) {
        TREE_LEVEL *level = &tree.levels[ tree.depth - 1 ];
        if ( level->next == level->length ) {
            treeLeave( &tree );
        } else if ( level->entries[ level->next ] == OTHER ) {
            treeDeleteNext( level, 0 ); // what stays keeps its directory, and that is noticed
        } else if ( !treeEnter( &tree, dirfd( level->dir ), treeNextName( level ) ) &&
                    !treeDeleteNext( level, AT_REMOVEDIR ) ) {
            tree.ok = false;
        }
    }
    zuMemFree( tree.levels );
    zuMemFree( path );
    return zu___FileDeleteDirectory( fn ) && tree.ok;
}
