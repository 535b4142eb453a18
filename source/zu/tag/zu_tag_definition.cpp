// A constant for "none" instead of flags beside the fields: a comment is null, a colour is -1.

#include "zu/tag/zu_tag_definition.h"

#include "zu/runtime/zu_module.h"
#include "zu/tag/zu_tag_items_internal.h"

#include <utility>

struct ZU_TAG_DEFINITION {
    ZU_OBJ obj;
    ZU_STRING *tag;     // valid
    ZU_STRING *comment; // null: none
    ZU_TAG_COLOR color; // -1: none
};

static void definitionFree( ZU_OBJ *thisObj );
static ZU_INT definitionCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU_TAG_DEFINITION =
    ZU___SORT_INITIALIZER( "ZU_TAG_DEFINITION", &zu___module, definitionFree, definitionCompare, nullptr );
ZU___STDFUNCS( ZU_TAG_DEFINITION, zuTagDefinition )

// Creation

// Returns a new definition, and takes `tag` and `commentOpt` over.
static ZU_TAG_DEFINITION *definitionCreateUse( ZU_STRING *tag, ZU_STRING *commentOpt, ZU_TAG_COLOR color )
{
    ZU_TAG_DEFINITION *def =
        (ZU_TAG_DEFINITION *)zu___ObjCreate( sizeof( ZU_TAG_DEFINITION ), &zu___sort_ZU_TAG_DEFINITION );
    def->tag = tag;
    def->comment = commentOpt;
    def->color = color;
    return def;
}
ZU_TAG_DEFINITION *zuTagDefinitionCreate( ZU_STRING *tag )
{
    ZU_ASSERT( zuTagOk( tag ) );
    return definitionCreateUse( zuStringRetain( tag ), nullptr, -1 );
}
ZU_TAG_DEFINITION *zuTagDefinitionCreateFrom( ZU_TAG_DEFINITION *source )
{
    ZU_ASSERT( source );
    return definitionCreateUse( zuStringRetain( source->tag ), zuTagDefinitionComment( source ), source->color );
}

// Replaces a shared definition by a private copy.
static void definitionUnshare( ZU_TAG_DEFINITION **def )
{
    if ( ZU_REF_RETAIN_COUNT( *def ) > 1 ) {
        ZU_TAG_DEFINITION *old = *def;
        *def = zuTagDefinitionCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void definitionFree( ZU_OBJ *thisObj )
{
    ZU_TAG_DEFINITION *def = zuTagDefinitionFrom( thisObj );
    ZU_ASSERT( def );
    ZU_REF_RELEASE( def->tag );
    ZU_REF_POISON( def->tag );
    ZU_REF_RELEASE_OPT( def->comment );
    ZU_REF_POISON( def->comment );
}
static ZU_INT definitionCompareComments( ZU_STRING *commentA, ZU_STRING *commentB )
{
    if ( commentA && commentB ) {
        return zuStringCompare( commentA, commentB );
    }
    return ( commentA != nullptr ) - ( commentB != nullptr );
}
static ZU_INT definitionCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_TAG_DEFINITION *defA = zuTagDefinitionFrom( thisObj );
    ZU_TAG_DEFINITION *defB = zuTagDefinitionFrom( thatObj );
    ZU_ASSERT( defA );
    ZU_ASSERT( defB );
    ZU_INT order = zuStringCompare( defA->tag, defB->tag );
    order = order != 0 ? order : definitionCompareComments( defA->comment, defB->comment );
    return order != 0 ? order : ( defA->color > defB->color ) - ( defA->color < defB->color );
}

// Tag
ZU_STRING *zuTagDefinitionTag( ZU_TAG_DEFINITION *def )
{
    ZU_ASSERT( def );
    return zuStringRetain( def->tag );
}
void zuTagDefinitionSetTag( ZU_TAG_DEFINITION **def, ZU_STRING *tag )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( zuTagOk( tag ) );
    definitionUnshare( def );
    ZU_REF_RELEASE( std::exchange( ( *def )->tag, zuStringRetain( tag ) ) );
}

// Comment
ZU_STRING *zuTagDefinitionComment( ZU_TAG_DEFINITION *def )
{
    ZU_ASSERT( def );
    return def->comment ? zuStringRetain( def->comment ) : nullptr;
}
void zuTagDefinitionSetComment( ZU_TAG_DEFINITION **def, ZU_STRING *comment )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( comment );
    definitionUnshare( def );
    ZU_REF_RELEASE_OPT( std::exchange( ( *def )->comment, zuStringRetain( comment ) ) );
}
ZU_BOOL zuTagDefinitionHasComment( ZU_TAG_DEFINITION *def )
{
    ZU_ASSERT( def );
    return def->comment != nullptr;
}
void zuTagDefinitionDelComment( ZU_TAG_DEFINITION **def )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    definitionUnshare( def );
    ZU_REF_RELEASE_OPT( std::exchange( ( *def )->comment, nullptr ) );
}

// Colour
ZU_TAG_COLOR zuTagDefinitionColor( ZU_TAG_DEFINITION *def )
{
    ZU_ASSERT( def );
    return def->color;
}
void zuTagDefinitionSetColor( ZU_TAG_DEFINITION **def, ZU_TAG_COLOR color )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    ZU_ASSERT( ZU_TAG_COLOR_OK( color ) );
    definitionUnshare( def );
    ( *def )->color = color;
}
ZU_BOOL zuTagDefinitionHasColor( ZU_TAG_DEFINITION *def )
{
    ZU_ASSERT( def );
    return def->color != -1;
}
void zuTagDefinitionDelColor( ZU_TAG_DEFINITION **def )
{
    ZU_ASSERT( def );
    ZU_ASSERT( *def );
    definitionUnshare( def );
    ( *def )->color = -1;
}

// Store form
ZU_STORE *zuTagDefinitionStore( ZU_TAG_DEFINITION *def )
{
    ZU_ASSERT( def );
    ZU_STORE *store = zuStoreCreate();
    zuStoreSetValueCstr( &store, "tag", -1, def->tag );
    if ( def->comment ) {
        zuStoreSetValueCstr( &store, "comment", -1, def->comment );
    }
    if ( def->color != -1 ) {
        zu___TagStoreValueUse( &store, "color", zuTagColorToString( def->color ) );
    }
    return store;
}
ZU_TAG_DEFINITION *zuTagDefinitionTryRestore( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_STRING *tag = zu___TagRestoreTag( store, "tag" );
    if ( !tag ) {
        return nullptr;
    }
    return definitionCreateUse( tag, zuStoreValueCstr( store, "comment", -1 ),
                                zu___TagRestoreConstant( store, "color", zuTagColorFromString ) );
}
