#include "zu/tag/zu_tag_rewrite_operation.h"

#include "zu/runtime/zu_module.h"
#include "zu/tag/zu_tag_items_internal.h"

#include <utility>

struct ZU_TAG_REWRITE_OPERATION {
    ZU_OBJ obj;
    ZU_TAG_REWRITE_OPERATION_TYPE type;
    ZU_STRING *tag; // valid
};

static void operationFree( ZU_OBJ *thisObj );
static ZU_INT operationCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );

static ZU_SORT zu___sort_ZU_TAG_REWRITE_OPERATION =
    ZU___SORT_INITIALIZER( "ZU_TAG_REWRITE_OPERATION", &zu___module, operationFree, operationCompare, nullptr );
ZU___STDFUNCS( ZU_TAG_REWRITE_OPERATION, zuTagRewriteOperation )

// Creation
ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationCreate( ZU_TAG_REWRITE_OPERATION_TYPE type, ZU_STRING *tag )
{
    ZU_ASSERT( ZU_TAG_REWRITE_OPERATION_TYPE_OK( type ) );
    ZU_ASSERT( zuTagOk( tag ) );
    ZU_TAG_REWRITE_OPERATION *op = (ZU_TAG_REWRITE_OPERATION *)zu___ObjCreate( sizeof( ZU_TAG_REWRITE_OPERATION ),
                                                                               &zu___sort_ZU_TAG_REWRITE_OPERATION );
    op->type = type;
    op->tag = zuStringRetain( tag );
    return op;
}
ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationCreateFrom( ZU_TAG_REWRITE_OPERATION *source )
{
    ZU_ASSERT( source );
    return zuTagRewriteOperationCreate( source->type, source->tag );
}

// Replaces a shared operation by a private copy.
static void operationUnshare( ZU_TAG_REWRITE_OPERATION **op )
{
    if ( ZU_REF_RETAIN_COUNT( *op ) > 1 ) {
        ZU_TAG_REWRITE_OPERATION *old = *op;
        *op = zuTagRewriteOperationCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Standard functions
static void operationFree( ZU_OBJ *thisObj )
{
    ZU_TAG_REWRITE_OPERATION *op = zuTagRewriteOperationFrom( thisObj );
    ZU_ASSERT( op );
    ZU_REF_RELEASE( op->tag );
    ZU_REF_POISON( op->tag );
}
static ZU_INT operationCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_TAG_REWRITE_OPERATION *opA = zuTagRewriteOperationFrom( thisObj );
    ZU_TAG_REWRITE_OPERATION *opB = zuTagRewriteOperationFrom( thatObj );
    ZU_ASSERT( opA );
    ZU_ASSERT( opB );
    ZU_INT order = ( opA->type > opB->type ) - ( opA->type < opB->type );
    return order != 0 ? order : zuStringCompare( opA->tag, opB->tag );
}

// Type and tag
ZU_TAG_REWRITE_OPERATION_TYPE zuTagRewriteOperationType( ZU_TAG_REWRITE_OPERATION *op )
{
    ZU_ASSERT( op );
    return op->type;
}
void zuTagRewriteOperationSetType( ZU_TAG_REWRITE_OPERATION **op, ZU_TAG_REWRITE_OPERATION_TYPE type )
{
    ZU_ASSERT( op );
    ZU_ASSERT( *op );
    ZU_ASSERT( ZU_TAG_REWRITE_OPERATION_TYPE_OK( type ) );
    operationUnshare( op );
    ( *op )->type = type;
}
ZU_STRING *zuTagRewriteOperationTag( ZU_TAG_REWRITE_OPERATION *op )
{
    ZU_ASSERT( op );
    return zuStringRetain( op->tag );
}
void zuTagRewriteOperationSetTag( ZU_TAG_REWRITE_OPERATION **op, ZU_STRING *tag )
{
    ZU_ASSERT( op );
    ZU_ASSERT( *op );
    ZU_ASSERT( zuTagOk( tag ) );
    operationUnshare( op );
    ZU_REF_RELEASE( std::exchange( ( *op )->tag, zuStringRetain( tag ) ) );
}

// Store form
ZU_STORE *zuTagRewriteOperationStore( ZU_TAG_REWRITE_OPERATION *op )
{
    ZU_ASSERT( op );
    ZU_STORE *store = zuStoreCreate();
    zu___TagStoreValueUse( &store, "type", zuTagRewriteOperationTypeToString( op->type ) );
    zuStoreSetValueCstr( &store, "tag", -1, op->tag );
    return store;
}
ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationTryRestore( ZU_STORE *store )
{
    ZU_ASSERT( store );
    ZU_INT type = zu___TagRestoreConstant( store, "type", zuTagRewriteOperationTypeFromString );
    ZU_STRING *tag = zu___TagRestoreTag( store, "tag" );
    ZU_TAG_REWRITE_OPERATION *op = type >= 0 && tag ? zuTagRewriteOperationCreate( type, tag ) : nullptr;
    ZU_REF_RELEASE_OPT( tag );
    return op;
}
