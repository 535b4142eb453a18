// A match asks only for a number of tags in common, and stops counting where the number is decided.

#include "zu/tag/zu_tag_match.h"

#include "zu/runtime/zu_module.h"
#include "zu/tag/zu_tag_items_internal.h"
#include "zu/tag/zu_tag_set_internal.h"

#include <utility>

struct ZU_TAG_MATCH {
    ZU_OBJ obj;
    ZU_TAG_MATCH_TYPE type;
    ZU_TAG_SET *tagSet; // never null
};

static void matchFree( ZU_OBJ *thisObj );
static ZU_INT matchCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU_TAG_MATCH =
    ZU___SORT_INITIALIZER( "ZU_TAG_MATCH", &zu___module, matchFree, matchCompare, nullptr );
ZU___STDFUNCS( ZU_TAG_MATCH, zuTagMatch )

// Creation

// Returns a new match, and takes `tagSet` over.
static ZU_TAG_MATCH *matchCreateUse( ZU_TAG_MATCH_TYPE type, ZU_TAG_SET *tagSet )
{
    ZU_TAG_MATCH *match = (ZU_TAG_MATCH *)zu___ObjCreate( sizeof( ZU_TAG_MATCH ), &zu___sort_ZU_TAG_MATCH );
    match->type = type;
    match->tagSet = tagSet;
    return match;
}
ZU_TAG_MATCH *zuTagMatchCreate( void )
{
    return matchCreateUse( ZU_TAG_MATCH_TYPE_OR, zuTagSetCreate() );
}
ZU_TAG_MATCH *zuTagMatchCreateFrom( ZU_TAG_MATCH *source )
{
    ZU_ASSERT( source );
    return matchCreateUse( source->type, zuTagSetRetain( source->tagSet ) );
}

// Replaces a shared match by a private copy.
static void matchUnshare( ZU_TAG_MATCH **match )
{
    if ( ZU_REF_RETAIN_COUNT( *match ) > 1 ) {
        ZU_TAG_MATCH *old = *match;
        *match = zuTagMatchCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void matchFree( ZU_OBJ *thisObj )
{
    ZU_TAG_MATCH *match = zuTagMatchFrom( thisObj );
    ZU_ASSERT( match );
    ZU_REF_RELEASE( match->tagSet );
    ZU_REF_POISON( match->tagSet );
}
static ZU_INT matchCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_TAG_MATCH *matchA = zuTagMatchFrom( thisObj );
    ZU_TAG_MATCH *matchB = zuTagMatchFrom( thatObj );
    ZU_ASSERT( matchA );
    ZU_ASSERT( matchB );
    ZU_INT order = ( matchA->type > matchB->type ) - ( matchA->type < matchB->type );
    return order != 0 ? order : zuTagSetCompare( matchA->tagSet, matchB->tagSet );
}

// Type and tags
ZU_TAG_MATCH_TYPE zuTagMatchType( ZU_TAG_MATCH *match )
{
    ZU_ASSERT( match );
    return match->type;
}
void zuTagMatchSetType( ZU_TAG_MATCH **match, ZU_TAG_MATCH_TYPE type )
{
    ZU_ASSERT( match );
    ZU_ASSERT( *match );
    ZU_ASSERT( ZU_TAG_MATCH_TYPE_OK( type ) );
    matchUnshare( match );
    ( *match )->type = type;
}
ZU_TAG_SET *zuTagMatchTagSet( ZU_TAG_MATCH *match )
{
    ZU_ASSERT( match );
    return zuTagSetRetain( match->tagSet );
}
void zuTagMatchSetTagSet( ZU_TAG_MATCH **match, ZU_TAG_SET *ts )
{
    ZU_ASSERT( match );
    ZU_ASSERT( *match );
    ZU_ASSERT( ts );
    matchUnshare( match );
    ZU_REF_RELEASE( std::exchange( ( *match )->tagSet, zuTagSetRetain( ts ) ) );
}

ZU_BOOL zuTagMatchTryMatch( ZU_TAG_MATCH *match, ZU_TAG_SET *ts )
{
    ZU_ASSERT( match );
    ZU_ASSERT( ts );
    ZU_DICT *wanted = match->tagSet->dict;
    if ( wanted->length == 0 ) {
        return ZU_TRUE;
    }
    switch ( match->type ) {
    case ZU_TAG_MATCH_TYPE_OR:
        return zu___DictCommonKeys( wanted, ts->dict, 1 ) == 1;
    case ZU_TAG_MATCH_TYPE_XOR:
        return zu___DictCommonKeys( wanted, ts->dict, 2 ) == 1;
    case ZU_TAG_MATCH_TYPE_AND:
        return wanted->length <= ts->dict->length &&
               zu___DictCommonKeys( wanted, ts->dict, wanted->length ) == wanted->length;
    case ZU_TAG_MATCH_TYPE_NOT:
        return zu___DictCommonKeys( wanted, ts->dict, 1 ) == 0;
    default:
        ZU_ABORT();
    }
}

// Store form
ZU_STORE *zuTagMatchStore( ZU_TAG_MATCH *match )
{
    ZU_ASSERT( match );
    ZU_STORE *store = zuStoreCreate();
    zu___TagStoreValueUse( &store, "type", zuTagMatchTypeToString( match->type ) );
    zu___TagStoreValueUse( &store, "tagSet", zuTagSetEncode( match->tagSet ) );
    return store;
}
ZU_TAG_MATCH *zuTagMatchRestore( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_INT type = zu___TagRestoreConstant( store, "type", zuTagMatchTypeFromString );
    ZU_STRING *tags = zuStoreValueCstr( store, "tagSet", -1 );
    ZU_TAG_SET *tagSet = tags ? zuTagSetDecode( tags ) : zuTagSetCreate();
    ZU_REF_RELEASE_OPT( tags );
    return matchCreateUse( type < 0 ? ZU_TAG_MATCH_TYPE_OR : type, tagSet );
}
