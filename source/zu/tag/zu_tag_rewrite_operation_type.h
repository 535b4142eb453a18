// zu_tag_rewrite_operation_type.h: what a ZU_TAG_REWRITE_OPERATION does to its tag, an enumeration of three values.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef ZU_INT ZU_TAG_REWRITE_OPERATION_TYPE;

/// The result has the tag.
#define ZU_TAG_REWRITE_OPERATION_TYPE_SET         ( (ZU_TAG_REWRITE_OPERATION_TYPE)0 )
/// The result does not have the tag.
#define ZU_TAG_REWRITE_OPERATION_TYPE_DELETE      ( (ZU_TAG_REWRITE_OPERATION_TYPE)1 )
/// The result has the tag if the rewritten set does.
#define ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH ( (ZU_TAG_REWRITE_OPERATION_TYPE)2 )

/// Tells whether `type` is an operation type.
#define ZU_TAG_REWRITE_OPERATION_TYPE_OK( type ) \
    ( ( type ) >= ZU_TAG_REWRITE_OPERATION_TYPE_SET && ( type ) <= ZU_TAG_REWRITE_OPERATION_TYPE_PASSTHROUGH )

/// Returns the operation type with the name or, in digits, the number `zus`, such as
/// "ZU_TAG_REWRITE_OPERATION_TYPE_SET", as an enumeration reads it; -1 if there is none.
ZU_API ZU_TAG_REWRITE_OPERATION_TYPE zuTagRewriteOperationTypeFromString( ZU_STRING *zus );
/// Returns the name of `type`; what is no operation type aborts.
ZU_API ZU_STRING *zuTagRewriteOperationTypeToString( ZU_TAG_REWRITE_OPERATION_TYPE type );

// For authors of classes and modules
/// Makes the enumeration of the names.
ZU_API void zu___TagRewriteOperationTypeStartup( void );
/// Releases what zu___TagRewriteOperationTypeStartup made.
ZU_API void zu___TagRewriteOperationTypeShutdown( void );

ZU_END_DECLS
