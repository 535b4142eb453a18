// The tree comes from outside, and so does its depth: there is no recursion but a stack on the heap, with one list of
// names for each directory on the way, and no directory stays open.  A link to a directory, of whatever kind, is an
// entry to remove.  What a name stands for is found out when the turn comes to it, not when it was listed.

#include "zu/io/zu_file_windows_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>
#include <cwchar>
#include <direct.h>
#include <io.h>
#include <windows.h>

struct TREE_LEVEL {
    wchar_t *entries; // the names that were in it, each terminated; null if there was none
    ZU_INT length;    // units of `entries`
    ZU_INT next;      // the entry that is to go next; while the level above is there, its directory
    ZU_INT pathEnd;   // units of the path of the directory
};
struct TREE {
    wchar_t *path; // of what is looked at, terminated
    ZU_INT pathRoom;
    TREE_LEVEL *levels; // the directories on the way, from the top
    ZU_INT depth;       // of them; 0 when all is done
    ZU_INT levelRoom;
    bool ok; // all directories but the first that should have gone are gone
};

// Makes the path that of `name` in the directory whose path has `pathEnd` units.
static void treeSetPath( TREE *tree, ZU_INT pathEnd, const wchar_t *name )
{
    ZU_INT length = (ZU_INT)wcslen( name );
    ZU_INT needed = pathEnd + length + 2;
    if ( needed > tree->pathRoom ) {
        tree->pathRoom = needed * 2;
        tree->path = (wchar_t *)zuMemReallocN( tree->path, tree->pathRoom, sizeof( wchar_t ) );
    }
    tree->path[ pathEnd ] = '\\';
    memcpy( tree->path + pathEnd + 1, name, (size_t)( length + 1 ) * sizeof( wchar_t ) );
}
static void treeListEntries( TREE *tree, TREE_LEVEL *level )
{
    treeSetPath( tree, level->pathEnd, L"*" );
    WIN32_FIND_DATAW entry;
    HANDLE search = FindFirstFileW( tree->path, &entry );
    if ( search == INVALID_HANDLE_VALUE ) {
        return;
    }
    ZU_INT room = 0;
    do {
        if ( wcscmp( entry.cFileName, L"." ) == 0 || wcscmp( entry.cFileName, L".." ) == 0 ) {
            continue;
        }
        ZU_INT size = (ZU_INT)wcslen( entry.cFileName ) + 1;
        if ( room - level->length < size ) {
            room = room * 2 + size;
            level->entries = (wchar_t *)zuMemReallocN( level->entries, room, sizeof( wchar_t ) );
        }
        memcpy( level->entries + level->length, entry.cFileName, (size_t)size * sizeof( wchar_t ) );
        level->length += size;
    } while ( FindNextFileW( search, &entry ) );
    FindClose( search );
}
// Goes down to the directory that the path names.
static void treeEnter( TREE *tree )
{
    if ( tree->depth == tree->levelRoom ) {
        tree->levelRoom = tree->levelRoom * 2 + 16;
        tree->levels = (TREE_LEVEL *)zuMemReallocN( tree->levels, tree->levelRoom, sizeof( TREE_LEVEL ) );
    }
    TREE_LEVEL *level = &tree->levels[ tree->depth++ ];
    *level = { nullptr, 0, 0, (ZU_INT)wcslen( tree->path ) };
    treeListEntries( tree, level );
}
// Leaves a directory of which nothing is left to do, and deletes it; the first one is the caller's.
static void treeLeave( TREE *tree )
{
    TREE_LEVEL *level = &tree->levels[ --tree->depth ];
    zuMemFree( level->entries );
    tree->path[ level->pathEnd ] = 0;
    if ( tree->depth > 0 && _wrmdir( tree->path ) != 0 ) {
        tree->ok = false;
    }
}
// Does what there is to do with the entry that is next, and passes on.
static void treeStep( TREE *tree )
{
    TREE_LEVEL *level = &tree->levels[ tree->depth - 1 ];
    const wchar_t *name = level->entries + level->next;
    treeSetPath( tree, level->pathEnd, name );
    level->next += (ZU_INT)wcslen( name ) + 1;
    DWORD attributes = GetFileAttributesW( tree->path );
    if ( attributes == INVALID_FILE_ATTRIBUTES || !( attributes & FILE_ATTRIBUTE_DIRECTORY ) ) {
        _wunlink( tree->path ); // what stays keeps its directory, and that is noticed
    } else if ( attributes & FILE_ATTRIBUTE_REPARSE_POINT ) {
        _wrmdir( tree->path );
    } else {
        treeEnter( tree );
    }
}

ZU_BOOL zu___FileDeleteTree( ZU_STRING *fn )
{
    TREE tree = {};
    tree.ok = true;
    tree.path = zu___FileWindowsPath( fn );
    tree.pathRoom = (ZU_INT)wcslen( tree.path ) + 1;
    DWORD attributes = GetFileAttributesW( tree.path );
    if ( attributes != INVALID_FILE_ATTRIBUTES && ( attributes & FILE_ATTRIBUTE_DIRECTORY ) &&
         !( attributes & FILE_ATTRIBUTE_REPARSE_POINT ) ) {
        treeEnter( &tree );
    }
    while ( tree.depth > 0 ) {
        TREE_LEVEL *level = &tree.levels[ tree.depth - 1 ];
        if ( level->next == level->length ) {
            treeLeave( &tree );
        } else {
            treeStep( &tree );
        }
    }
    zuMemFree( tree.levels );
    zuMemFree( tree.path );
    return zu___FileDeleteDirectory( fn ) && tree.ok;
}
