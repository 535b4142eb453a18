// Operations stand in a dict by tag, so that they are at hand in the order of the tags of a set.  No operation looks at
// another's tag: instead of applying one after the other, all that add something and all that remove something are
// collected, and sets change in whole, which moves each tag once.

#include "zu/tag/zu_tag_rewrite.h"

#include "zu/runtime/zu_module.h"
#include "zu/tag/zu_tag_items_internal.h"
#include "zu/tag/zu_tag_set_internal.h"

#include <utility>

struct ZU_TAG_REWRITE {
    ZU_OBJ obj;
    ZU_BOOL clear;
    ZU_DICT *operations; // from tags to the ZU_TAG_REWRITE_OPERATION that have them
};

static void rewriteFree( ZU_OBJ *thisObj );
static ZU_INT rewriteCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU_TAG_REWRITE =
    ZU___SORT_INITIALIZER( "ZU_TAG_REWRITE", &zu___module, rewriteFree, rewriteCompare, nullptr );
ZU___STDFUNCS( ZU_TAG_REWRITE, zuTagRewrite )

static ZU_STRING *rewriteItemTag( ZU_OBJ *item )
{
    return zuTagRewriteOperationTag( zuTagRewriteOperationFrom( item ) );
}
static ZU_STORE *rewriteItemStore( ZU_OBJ *item )
{
    return zuTagRewriteOperationStore( zuTagRewriteOperationFrom( item ) );
}
static ZU_OBJ *rewriteItemTryRestore( ZU_STORE *stored )
{
    return zuTagRewriteOperationObj( zuTagRewriteOperationTryRestore( stored ) );
}
static constexpr ZU___TAG_ITEM_CLASS OPERATIONS = { rewriteItemTag, rewriteItemStore, rewriteItemTryRestore };

// Creation

// Returns a new rewrite, and takes `operations` over.
static ZU_TAG_REWRITE *rewriteCreateUse( ZU_BOOL clear, ZU_DICT *operations )
{
    ZU_TAG_REWRITE *rewrite = (ZU_TAG_REWRITE *)zu___ObjCreate( sizeof( ZU_TAG_REWRITE ), &zu___sort_ZU_TAG_REWRITE );
    rewrite->clear = clear;
    rewrite->operations = operations;
    return rewrite;
}
ZU_TAG_REWRITE *zuTagRewriteCreate( void )
{
    return rewriteCreateUse( ZU_FALSE, zuDictCreate() );
}
ZU_TAG_REWRITE *zuTagRewriteCreateFrom( ZU_TAG_REWRITE *source )
{
    ZU_ASSERT( source );
    return rewriteCreateUse( source->clear, zuDictRetain( source->operations ) );
}

// Replaces a shared rewrite by a private copy.
static void rewriteUnshare( ZU_TAG_REWRITE **rewrite )
{
    if ( ZU_REF_RETAIN_COUNT( *rewrite ) > 1 ) {
        ZU_TAG_REWRITE *old = *rewrite;
        *rewrite = zuTagRewriteCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void rewriteFree( ZU_OBJ *thisObj )
{
    ZU_TAG_REWRITE *rewrite = zuTagRewriteFrom( thisObj );
    ZU_ASSERT( rewrite );
    ZU_REF_RELEASE( rewrite->operations );
    ZU_REF_POISON( rewrite->operations );
}
static ZU_INT rewriteCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_TAG_REWRITE *rewriteA = zuTagRewriteFrom( thisObj );
    ZU_TAG_REWRITE *rewriteB = zuTagRewriteFrom( thatObj );
    ZU_ASSERT( rewriteA );
    ZU_ASSERT( rewriteB );
    ZU_INT order = rewriteA->clear - rewriteB->clear;
    return order != 0 ? order : zuDictCompare( rewriteA->operations, rewriteB->operations );
}

ZU_BOOL zuTagRewriteClear( ZU_TAG_REWRITE *rewrite )
{
    ZU_ASSERT( rewrite );
    return rewrite->clear;
}
void zuTagRewriteSetClear( ZU_TAG_REWRITE **rewrite, ZU_BOOL clear )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( *rewrite );
    rewriteUnshare( rewrite );
    ( *rewrite )->clear = clear ? ZU_TRUE : ZU_FALSE;
}

// Operations by position
ZU_INT zuTagRewriteOperationsLength( ZU_TAG_REWRITE *rewrite )
{
    ZU_ASSERT( rewrite );
    return zuDictLength( rewrite->operations );
}
ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationAt( ZU_TAG_REWRITE *rewrite, ZU_INT idx )
{
    ZU_ASSERT( rewrite );
    return zuTagRewriteOperationFrom( zuDictValueAt( rewrite->operations, idx ) );
}
void zuTagRewriteDelOperationAt( ZU_TAG_REWRITE **rewrite, ZU_INT idx )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( *rewrite );
    rewriteUnshare( rewrite );
    zuDictDelAt( &( *rewrite )->operations, idx );
}

// All operations
ZU_VECTOR *zuTagRewriteOperationsVector( ZU_TAG_REWRITE *rewrite )
{
    ZU_ASSERT( rewrite );
    return zuDictValuesVector( rewrite->operations );
}
void zuTagRewriteSetOperationsVector( ZU_TAG_REWRITE **rewrite, ZU_VECTOR *vec )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( *rewrite );
    ZU_ASSERT( vec );
    ZU_ASSERT( zuVectorContainsOnly( vec, zuTagRewriteOperationSort() ) );
    rewriteUnshare( rewrite );
    ZU_REF_RELEASE( std::exchange( ( *rewrite )->operations, zu___TagItemsCreate( vec, &OPERATIONS ) ) );
}
void zuTagRewriteClearOperations( ZU_TAG_REWRITE **rewrite )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( *rewrite );
    rewriteUnshare( rewrite );
    zuDictClear( &( *rewrite )->operations );
}

// Operations by tag
ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperation( ZU_TAG_REWRITE *rewrite, ZU_STRING *tag )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( zuTagOk( tag ) );
    return zuTagRewriteOperationFrom( zuDictStringKey( rewrite->operations, tag ) );
}
ZU_BOOL zuTagRewriteHasOperation( ZU_TAG_REWRITE *rewrite, ZU_STRING *tag )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( zuTagOk( tag ) );
    return zuDictHasStringKey( rewrite->operations, tag );
}
void zuTagRewriteDelOperation( ZU_TAG_REWRITE **rewrite, ZU_STRING *tag )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( *rewrite );
    ZU_ASSERT( zuTagOk( tag ) );
    rewriteUnshare( rewrite );
    zuDictDelStringKey( &( *rewrite )->operations, tag );
}
void zuTagRewriteSetOperation( ZU_TAG_REWRITE **rewrite, ZU_TAG_REWRITE_OPERATION *op )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( *rewrite );
    ZU_ASSERT( op );
    rewriteUnshare( rewrite );
    ZU_STRING *tag = zuTagRewriteOperationTag( op );
    zuDictSetStringKey( &( *rewrite )->operations, tag, zuTagRewriteOperationObj( op ) );
    ZU_REF_RELEASE( tag );
}

// Applying

// Tells whether the result has a tag that is or is not `present` in the input.
static bool rewriteWants( ZU_TAG_REWRITE_OPERATION_TYPE type, bool present )
{
    switch ( type ) {
    case ZU_TAG_REWRITE_OPERATION_TYPE_SET:
        return true;
    case ZU_TAG_REWRITE_OPERATION_TYPE_DELETE:
        return false;
    case ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH:
        return present;
    default:
        ZU_ABORT();
    }
}
// Includes or excludes `src`, and gives it up.  A set that stays as it is is not copied.
static void rewriteChangeUse( ZU_TAG_SET **ts, void ( *change )( ZU_TAG_SET **ts, ZU_TAG_SET *src ), ZU_TAG_SET *src )
{
    if ( src->dict->length > 0 ) {
        change( ts, src );
    }
    ZU_REF_RELEASE( src );
}
ZU_TAG_SET *zuTagRewriteApply( ZU_TAG_REWRITE *rewrite, ZU_TAG_SET *ts )
{
    ZU_ASSERT( rewrite );
    ZU_ASSERT( ts );
    ZU_TAG_SET *result = rewrite->clear ? zuTagSetCreate() : zuTagSetRetain( ts );
    ZU_TAG_SET *added = zuTagSetCreate();
    ZU_TAG_SET *removed = zuTagSetCreate();
    for ( ZU_INT i = 0; i < rewrite->operations->length; i++ ) {
        ZU___DICT_PAIR pair = *zu___DictPair( rewrite->operations, i );
        ZU_STRING *tag = zuStringFrom( pair.key );
        bool present = zuDictHasStringKey( ts->dict, tag );
        bool wanted = rewriteWants( zuTagRewriteOperationType( zuTagRewriteOperationFrom( pair.val ) ), present );
        if ( wanted != ( present && !rewrite->clear ) ) {
            zuTagSetSetTag( wanted ? &added : &removed, tag );
        }
    }
    rewriteChangeUse( &result, zuTagSetExclude, removed );
    rewriteChangeUse( &result, zuTagSetInclude, added );
    return result;
}

// Store form
ZU_STORE *zuTagRewriteStore( ZU_TAG_REWRITE *rewrite )
{
    ZU_ASSERT( rewrite );
    ZU_STORE *store = zuStoreCreate();
    ZU_STORE *operations = zu___TagItemsStore( rewrite->operations, &OPERATIONS );
    zuStoreSetValueBoolCstr( &store, "clear", -1, rewrite->clear );
    zuStoreSetStoreCstr( &store, "operations", -1, operations );
    ZU_REF_RELEASE( operations );
    return store;
}
ZU_TAG_REWRITE *zuTagRewriteRestore( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_BOOL clear; // false where none is found
    zuStoreValueBoolCstr( store, &clear, "clear", -1 );
    return rewriteCreateUse( clear, zu___TagItemsRestore( store, "operations", &OPERATIONS ) );
}
