// Between two versions that are out, a third can be inserted: 3#1.0 comes behind 3.0 and ahead of 4.0.  As numbers are
// compared one after the other, an insert is one more digit to the base of 1000, and the limit of 999 is what makes of
// major and insert one number that compatibility can be compared by.

#include "zu/runtime/zu_module_version.h"

#include "zu/base/zu_format.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_text_internal.h"
#include "zu/runtime/zu_module.h"

static constexpr ZU_INT INSERT_MAX = 999;
static constexpr ZU_INT INSERT_FACTOR = INSERT_MAX + 1; // what a number counts beside its insert

struct ZU_MODULE_VERSION {
    ZU_OBJ obj;
    ZU_INT major;       // none is negative
    ZU_INT majorInsert; // at most INSERT_MAX, and likewise:
    ZU_INT minor;
    ZU_INT minorInsert;
};

static ZU_INT moduleVersionCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *moduleVersionToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_MODULE_VERSION =
    ZU___SORT_INITIALIZER( "ZU_MODULE_VERSION", &zu___module, nullptr, moduleVersionCompare, moduleVersionToString );
ZU___STDFUNCS( ZU_MODULE_VERSION, zuModuleVersion )

// Creation
ZU_MODULE_VERSION *zuModuleVersionCreate( ZU_INT major, ZU_INT majorInsert, ZU_INT minor, ZU_INT minorInsert )
{
    ZU_ASSERT( major >= 0 );
    ZU_ASSERT( majorInsert >= 0 && majorInsert <= 999 );
    ZU_ASSERT( minor >= 0 );
    ZU_ASSERT( minorInsert >= 0 && minorInsert <= 999 );
    ZU_ASSERT( ZU_INT_MUL_OK( major, 1000 ) );
    ZU_ASSERT( ZU_INT_ADD_OK( major * 1000, majorInsert ) );
    ZU_ASSERT( ZU_INT_MUL_OK( minor, 1000 ) );
    ZU_ASSERT( ZU_INT_ADD_OK( minor * 1000, minorInsert ) );
    ZU_MODULE_VERSION *ver = (ZU_MODULE_VERSION *)zu___ObjCreate( sizeof( ZU_MODULE_VERSION ), zuModuleVersionSort() );
    ver->major = major;
    ver->majorInsert = majorInsert;
    ver->minor = minor;
    ver->minorInsert = minorInsert;
    return ver;
}

static bool moduleVersionTryReadInt( ZU___TEXT text, ZU_INT *value )
{
    ZU_INT consumed = 0;
    return zuFormatTryDecodeIntChars( text.chars, text.length, 10, value, &consumed ) && consumed == text.length;
}
// Reads "number" or "number#insert", which must be all of the text and within the limits.
static bool moduleVersionTryReadNumber( ZU___TEXT text, ZU_INT *number, ZU_INT *insert )
{
    ZU___TEXT parts[ 2 ];
    *insert = 0;
    if ( zu___TextSplitChar( text, ZU_CHAR_NUMBER_SIGN, parts, 2 ) == 2 &&
         !moduleVersionTryReadInt( parts[ 1 ], insert ) ) {
        return false;
    }
    if ( !moduleVersionTryReadInt( parts[ 0 ], number ) ) {
        return false;
    }
    return *number >= 0 && *insert >= 0 && *insert <= INSERT_MAX && ZU_INT_MUL_OK( *number, INSERT_FACTOR ) &&
           ZU_INT_ADD_OK( *number * INSERT_FACTOR, *insert );
}
ZU_MODULE_VERSION *zuModuleVersionTryCreateFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    ZU___TEXT parts[ 2 ];
    ZU_INT major;
    ZU_INT majorInsert;
    ZU_INT minor;
    ZU_INT minorInsert;
    if ( zu___TextSplitChar( zu___TextOf( zus ), ZU_CHAR_FULL_STOP, parts, 2 ) != 2 ||
         !moduleVersionTryReadNumber( parts[ 0 ], &major, &majorInsert ) ||
         !moduleVersionTryReadNumber( parts[ 1 ], &minor, &minorInsert ) ) {
        return nullptr;
    }
    return zuModuleVersionCreate( major, majorInsert, minor, minorInsert );
}
static ZU_MODULE_VERSION *moduleVersionTryCreateAndRelease( ZU_STRING *zus )
{
    ZU_MODULE_VERSION *ver = zuModuleVersionTryCreateFromString( zus );
    zuStringRelease( zus );
    return ver;
}
ZU_MODULE_VERSION *zuModuleVersionTryCreateFromCstr( const char *text, ZU_INT length )
{
    return moduleVersionTryCreateAndRelease( zuStringCreateFromCstr( text, length ) );
}
ZU_MODULE_VERSION *zuModuleVersionTryCreateFromWcstr( const char16_t *text, ZU_INT length )
{
    return moduleVersionTryCreateAndRelease( zuStringCreateFromWcstr( text, length ) );
}

// Order and text
static ZU_INT moduleVersionCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_MODULE_VERSION *verA = zuModuleVersionFrom( thisObj );
    ZU_MODULE_VERSION *verB = zuModuleVersionFrom( thatObj );
    ZU_ASSERT( verA );
    ZU_ASSERT( verB );
    const ZU_INT numbersA[] = { verA->major, verA->majorInsert, verA->minor, verA->minorInsert };
    const ZU_INT numbersB[] = { verB->major, verB->majorInsert, verB->minor, verB->minorInsert };
    for ( size_t i = 0; i < sizeof numbersA / sizeof numbersA[ 0 ]; i++ ) {
        if ( numbersA[ i ] != numbersB[ i ] ) {
            return numbersA[ i ] < numbersB[ i ] ? -1 : 1;
        }
    }
    return 0;
}
static void moduleVersionAppendInsert( ZU_STRING **zus, ZU_INT insert )
{
    if ( insert != 0 ) {
        zuStringAppendFormatCstr( zus, "#%i", -1, insert );
    }
}
static ZU_STRING *moduleVersionToString( ZU_OBJ *thisObj )
{
    ZU_MODULE_VERSION *ver = zuModuleVersionFrom( thisObj );
    ZU_ASSERT( ver );
    ZU_STRING *zus = zuStringCreateFromFormatCstr( "%i", -1, ver->major );
    moduleVersionAppendInsert( &zus, ver->majorInsert );
    zuStringAppendFormatCstr( &zus, ".%i", -1, ver->minor );
    moduleVersionAppendInsert( &zus, ver->minorInsert );
    return zus;
}

// Inspection
ZU_INT zuModuleVersionMajor( ZU_MODULE_VERSION *ver )
{
    ZU_ASSERT( ver );
    return ver->major;
}
ZU_INT zuModuleVersionMajorInsert( ZU_MODULE_VERSION *ver )
{
    ZU_ASSERT( ver );
    return ver->majorInsert;
}
ZU_INT zuModuleVersionMinor( ZU_MODULE_VERSION *ver )
{
    ZU_ASSERT( ver );
    return ver->minor;
}
ZU_INT zuModuleVersionMinorInsert( ZU_MODULE_VERSION *ver )
{
    ZU_ASSERT( ver );
    return ver->minorInsert;
}
ZU_INT zuModuleVersionCompatibility( ZU_MODULE_VERSION *ver )
{
    ZU_ASSERT( ver );
    return ver->major * INSERT_FACTOR + ver->majorInsert;
}
