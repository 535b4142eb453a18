// Definitions are made once and looked up for every argument.  The names are in dicts, in which the names that a text
// abbreviates stand side by side; flags are few and alike, so that they collapse to few ranges.

#include "zu/base/zu_opt_def_internal.h"

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_range_map.h"
#include "zu/base/zu_string.h"
#include "zu/runtime/zu_module.h"

struct ZU_OPT_DEF {
    ZU_OBJ obj;
    ZU_RANGE_MAP *flagsForId; // of ZU_BOXED_INT
    ZU_DICT *idForShortOpt;   // ZU_BOXED_INT, a code point, to ZU_BOXED_INT
    ZU_DICT *idForLongOpt;    // ZU_STRING, never empty, to ZU_BOXED_INT
    ZU_INT argOnly;           // ZU___OPT_NO_ARG_ONLY or not negative
    ZU_BOOL reorder;
    ZU_BOOL stringize;
};

static void optDefFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_OPT_DEF = ZU___SORT_INITIALIZER( "ZU_OPT_DEF", &zu___module, optDefFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_OPT_DEF, zuOptDef )

// Creation
ZU_OPT_DEF *zuOptDefCreate( void )
{
    ZU_OPT_DEF *def = (ZU_OPT_DEF *)zu___ObjCreate( sizeof( ZU_OPT_DEF ), &zu___sort_ZU_OPT_DEF );
    def->flagsForId = zuRangeMapCreateAutoCollapsing();
    def->idForShortOpt = zuDictCreate();
    def->idForLongOpt = zuDictCreate();
    def->argOnly = ZU___OPT_NO_ARG_ONLY;
    def->reorder = ZU_FALSE;
    def->stringize = ZU_FALSE;
    return def;
}
ZU_OPT_DEF *zuOptDefCreateFrom( ZU_OPT_DEF *def )
{
    ZU_ASSERT( def );
    ZU_OPT_DEF *copy = (ZU_OPT_DEF *)zu___ObjCreate( sizeof( ZU_OPT_DEF ), &zu___sort_ZU_OPT_DEF );
    copy->flagsForId = zuRangeMapRetain( def->flagsForId );
    copy->idForShortOpt = zuDictRetain( def->idForShortOpt );
    copy->idForLongOpt = zuDictRetain( def->idForLongOpt );
    copy->argOnly = def->argOnly;
    copy->reorder = def->reorder;
    copy->stringize = def->stringize;
    return copy;
}
static void optDefUnshare( ZU_OPT_DEF **def )
{
    if ( ZU_REF_RETAIN_COUNT( *def ) > 1 ) {
        ZU_OPT_DEF *old = *def;
        *def = zuOptDefCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

static void optDefFree( ZU_OBJ *thisObj )
{
    ZU_OPT_DEF *def = zuOptDefFrom( thisObj );
    ZU_ASSERT( def );
    ZU_REF_RELEASE( def->flagsForId );
    ZU_REF_POISON( def->flagsForId );
    ZU_REF_RELEASE( def->idForShortOpt );
    ZU_REF_POISON( def->idForShortOpt );
    ZU_REF_RELEASE( def->idForLongOpt );
    ZU_REF_POISON( def->idForLongOpt );
}

// Names and flags
void zuOptDefSetShortOpt( ZU_OPT_DEF **def, ZU_CHAR optChar, ZU_INT optId )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( ZU_CHAR_OK( optChar ) );
    ZU_ASSERT( optId >= 0 );
    optDefUnshare( def );
    ZU_BOXED_INT *boxed = zuBoxedIntCreate( optId );
    zuDictSetIntKey( &( *def )->idForShortOpt, optChar, zuBoxedIntObj( boxed ) );
    ZU_REF_RELEASE( boxed );
}
void zuOptDefSetLongOpt( ZU_OPT_DEF **def, ZU_STRING *optString, ZU_INT optId )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( optString );
    ZU_ASSERT( zuStringLength( optString ) > 0 );
    ZU_ASSERT( optId >= 0 );
    optDefUnshare( def );
    ZU_BOXED_INT *boxed = zuBoxedIntCreate( optId );
    zuDictSetStringKey( &( *def )->idForLongOpt, optString, zuBoxedIntObj( boxed ) );
    ZU_REF_RELEASE( boxed );
}
void zuOptDefSetLongOptCstr( ZU_OPT_DEF **def, const char *optString, ZU_INT length, ZU_INT optId )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( optString );
    ZU_STRING *zus = zuStringCreateFromCstr( optString, length );
    zuOptDefSetLongOpt( def, zus, optId );
    ZU_REF_RELEASE( zus );
}
void zuOptDefSetLongOptWcstr( ZU_OPT_DEF **def, const char16_t *optString, ZU_INT length, ZU_INT optId )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( optString );
    ZU_STRING *zus = zuStringCreateFromWcstr( optString, length );
    zuOptDefSetLongOpt( def, zus, optId );
    ZU_REF_RELEASE( zus );
}
void zuOptDefSetFlags( ZU_OPT_DEF **def, ZU_INT optId, ZU_INT flags )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( optId >= 0 );
    optDefUnshare( def );
    ZU_BOXED_INT *boxed = zuBoxedIntCreate( flags );
    zuRangeMapSetIntKey( &( *def )->flagsForId, optId, zuBoxedIntObj( boxed ) );
    ZU_REF_RELEASE( boxed );
}

// The walk
void zuOptDefSetArgOnly( ZU_OPT_DEF **def, ZU_INT optId )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( optId >= 0 );
    if ( optId != ( *def )->argOnly ) {
        optDefUnshare( def );
        ( *def )->argOnly = optId;
    }
}
void zuOptDefSetReorder( ZU_OPT_DEF **def, ZU_BOOL reorder )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_BOOL value = reorder ? ZU_TRUE : ZU_FALSE;
    if ( value != ( *def )->reorder ) {
        optDefUnshare( def );
        ( *def )->reorder = value;
    }
}
void zuOptDefSetStringize( ZU_OPT_DEF **def, ZU_BOOL stringize )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_BOOL value = stringize ? ZU_TRUE : ZU_FALSE;
    if ( value != ( *def )->stringize ) {
        optDefUnshare( def );
        ( *def )->stringize = value;
    }
}

// Looking up
ZU_INT zuOptDefShortOpt( ZU_OPT_DEF *def, ZU_CHAR optChar )
{
    ZU_ASSERT( def );
    return zu___DictIntAt( def->idForShortOpt, zuDictIndexOfIntKey( def->idForShortOpt, optChar ), ZU___OPT_UNDEFINED );
}
ZU_INT zu___OptDefLongOptChars( ZU_OPT_DEF *def, const ZU_CHAR *name, ZU_INT length, ZU_BOOL *abbreviated )
{
    *abbreviated = ZU_FALSE;
    if ( length == 0 ) {
        return ZU___OPT_UNDEFINED;
    }
    bool exact;
    ZU_INT idx = zu___DictIndexOfAbbreviation( def->idForLongOpt, name, length, &exact );
    if ( idx == -1 ) {
        return ZU___OPT_UNDEFINED;
    }
    *abbreviated = exact ? ZU_FALSE : ZU_TRUE;
    return idx < 0 ? ZU___OPT_AMBIGUOUS : zu___DictIntAt( def->idForLongOpt, idx, ZU___OPT_UNDEFINED );
}
ZU_INT zuOptDefLongOpt( ZU_OPT_DEF *def, ZU_STRING *optString, ZU_BOOL allowAbbreviation, ZU_BOOL *abbreviated )
{
    ZU_ASSERT( def );
    ZU_ASSERT( optString );
    ZU_ASSERT( zuStringLength( optString ) > 0 );
    ZU_BOOL local;
    ZU_INT optId = zu___OptDefLongOptChars( def, zuStringBacking( optString ), zuStringLength( optString ), &local );
    if ( local && !allowAbbreviation ) {
        optId = ZU___OPT_UNDEFINED;
        local = ZU_FALSE;
    }
    if ( abbreviated ) {
        *abbreviated = local;
    }
    return optId;
}
ZU_INT zuOptDefFlags( ZU_OPT_DEF *def, ZU_INT optId )
{
    ZU_ASSERT( def );
    ZU_ASSERT( optId >= 0 );
    ZU_OBJ *boxed = zuRangeMapIntKey( def->flagsForId, optId );
    if ( !boxed ) {
        return 0;
    }
    ZU_INT flags = zuBoxedIntValue( zuBoxedIntFrom( boxed ) );
    ZU_REF_RELEASE( boxed );
    return flags;
}
ZU_INT zuOptDefArgOnly( ZU_OPT_DEF *def )
{
    ZU_ASSERT( def );
    return def->argOnly;
}
ZU_BOOL zuOptDefReorder( ZU_OPT_DEF *def )
{
    ZU_ASSERT( def );
    return def->reorder;
}
ZU_BOOL zuOptDefStringize( ZU_OPT_DEF *def )
{
    ZU_ASSERT( def );
    return def->stringize;
}
