// A definition is filed under the tag that it has when it is set: whoever changes it afterwards changes a copy.

#include "zu/tag/zu_tag_definition_set.h"

#include "zu/runtime/zu_module.h"
#include "zu/tag/zu_tag_items_internal.h"

#include <utility>

struct ZU_TAG_DEFINITION_SET {
    ZU_OBJ obj;
    ZU_DICT *dict; // from tags to the ZU_TAG_DEFINITION that have them
};

static void definitionSetFree( ZU_OBJ *thisObj );
static ZU_INT definitionSetCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU_TAG_DEFINITION_SET =
    ZU___SORT_INITIALIZER( "ZU_TAG_DEFINITION_SET", &zu___module, definitionSetFree, definitionSetCompare, nullptr );
ZU___STDFUNCS( ZU_TAG_DEFINITION_SET, zuTagDefinitionSet )

static ZU_STRING *definitionSetItemTag( ZU_OBJ *item )
{
    return zuTagDefinitionTag( zuTagDefinitionFrom( item ) );
}
static ZU_STORE *definitionSetItemStore( ZU_OBJ *item )
{
    return zuTagDefinitionStore( zuTagDefinitionFrom( item ) );
}
static ZU_OBJ *definitionSetItemTryRestore( ZU_STORE *stored )
{
    return zuTagDefinitionObj( zuTagDefinitionTryRestore( stored ) );
}
static constexpr ZU___TAG_ITEM_CLASS DEFINITIONS = { definitionSetItemTag, definitionSetItemStore,
                                                     definitionSetItemTryRestore };

// Creation

// Returns a new set, and takes `dict` over.
static ZU_TAG_DEFINITION_SET *definitionSetCreateUse( ZU_DICT *dict )
{
    ZU_TAG_DEFINITION_SET *ds =
        (ZU_TAG_DEFINITION_SET *)zu___ObjCreate( sizeof( ZU_TAG_DEFINITION_SET ), &zu___sort_ZU_TAG_DEFINITION_SET );
    ds->dict = dict;
    return ds;
}
ZU_TAG_DEFINITION_SET *zuTagDefinitionSetCreate( void )
{
    return definitionSetCreateUse( zuDictCreate() );
}
ZU_TAG_DEFINITION_SET *zuTagDefinitionSetCreateFrom( ZU_TAG_DEFINITION_SET *source )
{
    ZU_ASSERT( source );
    return definitionSetCreateUse( zuDictRetain( source->dict ) );
}

// Replaces a shared set by a private copy.
static void definitionSetUnshare( ZU_TAG_DEFINITION_SET **ds )
{
    if ( ZU_REF_RETAIN_COUNT( *ds ) > 1 ) {
        ZU_TAG_DEFINITION_SET *old = *ds;
        *ds = zuTagDefinitionSetCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void definitionSetFree( ZU_OBJ *thisObj )
{
    ZU_TAG_DEFINITION_SET *ds = zuTagDefinitionSetFrom( thisObj );
    ZU_ASSERT( ds );
    ZU_REF_RELEASE( ds->dict );
    ZU_REF_POISON( ds->dict );
}
static ZU_INT definitionSetCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_TAG_DEFINITION_SET *dsA = zuTagDefinitionSetFrom( thisObj );
    ZU_TAG_DEFINITION_SET *dsB = zuTagDefinitionSetFrom( thatObj );
    ZU_ASSERT( dsA );
    ZU_ASSERT( dsB );
    return zuDictCompare( dsA->dict, dsB->dict );
}

// Definitions by position
ZU_INT zuTagDefinitionSetDefinitionsLength( ZU_TAG_DEFINITION_SET *ds )
{
    ZU_ASSERT( ds );
    return zuDictLength( ds->dict );
}
ZU_TAG_DEFINITION *zuTagDefinitionSetDefinitionAt( ZU_TAG_DEFINITION_SET *ds, ZU_INT idx )
{
    ZU_ASSERT( ds );
    return zuTagDefinitionFrom( zuDictValueAt( ds->dict, idx ) );
}
void zuTagDefinitionSetDelDefinitionAt( ZU_TAG_DEFINITION_SET **ds, ZU_INT idx )
{
    ZU_ASSERT( ds );
    ZU_ASSERT( *ds );
    definitionSetUnshare( ds );
    zuDictDelAt( &( *ds )->dict, idx );
}

// All definitions
ZU_VECTOR *zuTagDefinitionSetDefinitionsVector( ZU_TAG_DEFINITION_SET *ds )
{
    ZU_ASSERT( ds );
    return zuDictValuesVector( ds->dict );
}
void zuTagDefinitionSetSetDefinitionsVector( ZU_TAG_DEFINITION_SET **ds, ZU_VECTOR *vec )
{
    ZU_ASSERT( ds );
    ZU_ASSERT( *ds );
    ZU_ASSERT( vec );
    ZU_ASSERT( zuVectorContainsOnly( vec, zuTagDefinitionSort() ) );
    definitionSetUnshare( ds );
    ZU_REF_RELEASE( std::exchange( ( *ds )->dict, zu___TagItemsCreate( vec, &DEFINITIONS ) ) );
}
void zuTagDefinitionSetClearDefinitions( ZU_TAG_DEFINITION_SET **ds )
{
    ZU_ASSERT( ds );
    ZU_ASSERT( *ds );
    definitionSetUnshare( ds );
    zuDictClear( &( *ds )->dict );
}

// Definitions by tag
ZU_TAG_DEFINITION *zuTagDefinitionSetDefinition( ZU_TAG_DEFINITION_SET *ds, ZU_STRING *tag )
{
    ZU_ASSERT( ds );
    ZU_ASSERT( zuTagOk( tag ) );
    return zuTagDefinitionFrom( zuDictStringKey( ds->dict, tag ) );
}
ZU_BOOL zuTagDefinitionSetHasDefinition( ZU_TAG_DEFINITION_SET *ds, ZU_STRING *tag )
{
    ZU_ASSERT( ds );
    ZU_ASSERT( zuTagOk( tag ) );
    return zuDictHasStringKey( ds->dict, tag );
}
void zuTagDefinitionSetDelDefinition( ZU_TAG_DEFINITION_SET **ds, ZU_STRING *tag )
{
    ZU_ASSERT( ds );
    ZU_ASSERT( *ds );
    ZU_ASSERT( zuTagOk( tag ) );
    definitionSetUnshare( ds );
    zuDictDelStringKey( &( *ds )->dict, tag );
}
void zuTagDefinitionSetSetDefinition( ZU_TAG_DEFINITION_SET **ds, ZU_TAG_DEFINITION *def )
{
    ZU_ASSERT( ds );
    ZU_ASSERT( *ds );
    ZU_ASSERT( def );
    definitionSetUnshare( ds );
    ZU_STRING *tag = zuTagDefinitionTag( def );
    zuDictSetStringKey( &( *ds )->dict, tag, zuTagDefinitionObj( def ) );
    ZU_REF_RELEASE( tag );
}

// Store form
ZU_STORE *zuTagDefinitionSetStore( ZU_TAG_DEFINITION_SET *ds )
{
    ZU_ASSERT( ds );
    ZU_STORE *store = zuStoreCreate();
    ZU_STORE *definitions = zu___TagItemsStore( ds->dict, &DEFINITIONS );
    zuStoreSetStoreCstr( &store, "definitions", -1, definitions );
    ZU_REF_RELEASE( definitions );
    return store;
}
ZU_TAG_DEFINITION_SET *zuTagDefinitionSetRestore( ZU_STORE *store )
{
    ZU_ASSERT( store );
    return definitionSetCreateUse( zu___TagItemsRestore( store, "definitions", &DEFINITIONS ) );
}
