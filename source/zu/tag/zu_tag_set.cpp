// A dict is a sorted set already, its operations on whole dicts are those on sets, and copies of a set share it until
// they differ.

#include "zu/tag/zu_tag_set_internal.h"

#include "zu/base/zu_name.h"
#include "zu/base/zu_string_delimited.h"
#include "zu/runtime/zu_module.h"

#include <utility>

static ZU_TAG_SET *zu___TagSetEmpty = nullptr; // shared by everybody who holds a set that has never had a tag

static void tagSetFree( ZU_OBJ *thisObj );
static ZU_INT tagSetCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *tagSetToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_TAG_SET =
    ZU___SORT_INITIALIZER( "ZU_TAG_SET", &zu___module, tagSetFree, tagSetCompare, tagSetToString );
ZU___STDFUNCS( ZU_TAG_SET, zuTagSet )

// Returns a new set, and takes `dict` over.
static ZU_TAG_SET *tagSetCreateUse( ZU_DICT *dict )
{
    ZU_TAG_SET *ts = (ZU_TAG_SET *)zu___ObjCreate( sizeof( ZU_TAG_SET ), &zu___sort_ZU_TAG_SET );
    ts->dict = dict;
    return ts;
}

// Start-up
void zu___TagSetStartup( void )
{
    zu___TagSetEmpty = tagSetCreateUse( zuDictCreate() );
}
void zu___TagSetShutdown( void )
{
    ZU_REF_RELEASE( zu___TagSetEmpty );
    zu___TagSetEmpty = nullptr; // not poisoned: zuTagSetCreate tells that the library is down
}

ZU_BOOL zuTagOk( ZU_STRING *tag )
{
    ZU_ASSERT( tag );
    return zuNameCamelCaseOk( tag, ZU_TRUE );
}

// Creation
ZU_TAG_SET *zuTagSetCreate( void )
{
    ZU_ASSERT( zu___TagSetEmpty );
    return zuTagSetRetain( zu___TagSetEmpty );
}
ZU_TAG_SET *zuTagSetCreateFrom( ZU_TAG_SET *source )
{
    ZU_ASSERT( source );
    return tagSetCreateUse( zuDictRetain( source->dict ) );
}

// Replaces a shared set by a private copy.
static void tagSetUnshare( ZU_TAG_SET **ts )
{
    if ( ZU_REF_RETAIN_COUNT( *ts ) > 1 ) {
        ZU_TAG_SET *old = *ts;
        *ts = zuTagSetCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void tagSetFree( ZU_OBJ *thisObj )
{
    ZU_TAG_SET *ts = zuTagSetFrom( thisObj );
    ZU_ASSERT( ts );
    ZU_REF_RELEASE( ts->dict );
    ZU_REF_POISON( ts->dict );
}
static ZU_INT tagSetCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_TAG_SET *tsA = zuTagSetFrom( thisObj );
    ZU_TAG_SET *tsB = zuTagSetFrom( thatObj );
    ZU_ASSERT( tsA );
    ZU_ASSERT( tsB );
    return zuDictCompare( tsA->dict, tsB->dict );
}
static ZU_STRING *tagSetToString( ZU_OBJ *thisObj )
{
    return zuTagSetEncode( zuTagSetFrom( thisObj ) );
}

// Access by position
ZU_INT zuTagSetTagsLength( ZU_TAG_SET *ts )
{
    ZU_ASSERT( ts );
    return zuDictLength( ts->dict );
}
ZU_STRING *zuTagSetTagAt( ZU_TAG_SET *ts, ZU_INT idx )
{
    ZU_ASSERT( ts );
    return zuStringFrom( zuDictKeyAt( ts->dict, idx ) );
}
void zuTagSetDelTagAt( ZU_TAG_SET **ts, ZU_INT idx )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    tagSetUnshare( ts );
    zuDictDelAt( &( *ts )->dict, idx );
}

// All tags
ZU_VECTOR *zuTagSetTagsVector( ZU_TAG_SET *ts )
{
    ZU_ASSERT( ts );
    return zuDictKeysVector( ts->dict );
}
void zuTagSetSetTagsVector( ZU_TAG_SET **ts, ZU_VECTOR *vec )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( vec );
    ZU_ASSERT( zuVectorContainsOnly( vec, zuStringSort() ) );
    for ( ZU_INT i = 0; i < zuVectorLength( vec ); i++ ) {
        ZU_STRING *tag = zuStringFrom( zuVectorBacking( vec )[ i ] );
        ZU_ASSERT( zuTagOk( tag ) );
    }
    tagSetUnshare( ts );
    ZU_REF_RELEASE( std::exchange( ( *ts )->dict, zuDictCreateWithKeysAndValues( vec, vec ) ) );
}
void zuTagSetClearTags( ZU_TAG_SET **ts )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    tagSetUnshare( ts );
    zuDictClear( &( *ts )->dict );
}

// Single tags
ZU_BOOL zuTagSetHasTag( ZU_TAG_SET *ts, ZU_STRING *tag )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( zuTagOk( tag ) );
    return zuDictHasStringKey( ts->dict, tag );
}
void zuTagSetSetTag( ZU_TAG_SET **ts, ZU_STRING *tag )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( zuTagOk( tag ) );
    tagSetUnshare( ts );
    zuDictSetStringKey( &( *ts )->dict, tag, zuStringObj( tag ) );
}
void zuTagSetDelTag( ZU_TAG_SET **ts, ZU_STRING *tag )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( zuTagOk( tag ) );
    tagSetUnshare( ts );
    zuDictDelStringKey( &( *ts )->dict, tag );
}

// Two sets.  `src` is held over the change: if it is the changed set, that forces the copy, and the dict, which both
// share then, tells what becomes of a dict and itself.
ZU_BOOL zuTagSetDisjoint( ZU_TAG_SET *tsA, ZU_TAG_SET *tsB )
{
    ZU_ASSERT( tsA );
    ZU_ASSERT( tsB );
    return zuDictDisjoint( tsA->dict, tsB->dict );
}
void zuTagSetInclude( ZU_TAG_SET **ts, ZU_TAG_SET *src )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( src );
    ZU_TAG_SET *held = zuTagSetRetain( src );
    tagSetUnshare( ts );
    zuDictInclude( &( *ts )->dict, src->dict, ZU_FALSE );
    ZU_REF_RELEASE( held );
}
void zuTagSetExclude( ZU_TAG_SET **ts, ZU_TAG_SET *src )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( src );
    ZU_TAG_SET *held = zuTagSetRetain( src );
    tagSetUnshare( ts );
    zuDictExclude( &( *ts )->dict, src->dict );
    ZU_REF_RELEASE( held );
}
void zuTagSetIntersect( ZU_TAG_SET **ts, ZU_TAG_SET *src )
{
    ZU_ASSERT( ts );
    ZU_ASSERT( *ts );
    ZU_ASSERT( src );
    ZU_TAG_SET *held = zuTagSetRetain( src );
    tagSetUnshare( ts );
    zuDictIntersect( &( *ts )->dict, src->dict, ZU_FALSE );
    ZU_REF_RELEASE( held );
}

// Text
ZU_STRING *zuTagSetEncode( ZU_TAG_SET *ts )
{
    ZU_ASSERT( ts );
    ZU_STRING *zus = zuStringCreate();
    for ( ZU_INT i = 0; i < ts->dict->length; i++ ) {
        zuStringDelimitedAppendCharDelimiter( &zus, zuStringFrom( zu___DictPair( ts->dict, i )->key ), ZU_CHAR_SPACE );
    }
    return zus;
}
// The tags are sorted when all are there, since text from outside has them in any order and number.
ZU_TAG_SET *zuTagSetDecode( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    const ZU_CHAR *chars = zuStringBacking( zus );
    ZU_INT length = zuStringLength( zus );
    ZU_DICT *dict = zu___DictCreateEmpty();
    ZU_INT begin = 0;
    for ( ZU_INT end = 0; end <= length; end++ ) {
        if ( end < length && chars[ end ] != ZU_CHAR_SPACE ) {
            continue;
        }
        ZU_STRING *tag = zuStringCreateFromInner( zus, begin, end - begin );
        if ( zuTagOk( tag ) ) {
            ZU___DICT_PAIR pair = { zuStringObj( tag ), zuStringObj( zuStringRetain( tag ) ) };
            *zu___DictMakeRoom( dict, dict->length, 1 ) = pair;
        } else {
            ZU_REF_RELEASE( tag );
        }
        begin = end + 1;
    }
    zu___DictSort( dict, false );
    if ( dict->length == 0 ) {
        ZU_REF_RELEASE( dict );
        return zuTagSetCreate();
    }
    return tagSetCreateUse( dict );
}
