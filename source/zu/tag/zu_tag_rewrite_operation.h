// ZU_TAG_REWRITE_OPERATION: what a ZU_TAG_REWRITE does with one tag.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A function that changes a shared operation gives
// its holder an object of its own even if the operation stays as it was.  What is no operation type and, by zuTagOk, no
// tag aborts.
#pragma once

#include "zu/base/zu_store.h"
#include "zu/tag/zu_tag_rewrite_operation_type.h"

ZU_BEGIN_DECLS

typedef struct ZU_TAG_REWRITE_OPERATION ZU_TAG_REWRITE_OPERATION;
// zuTagRewriteOperationRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Operations are ordered by their types, then by their tags.
ZU_STDFUNCS_DECLARE( ZU_TAG_REWRITE_OPERATION, zuTagRewriteOperation )

// Creation
/// Returns a new operation of the type `type` on `tag`.
ZU_API ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationCreate( ZU_TAG_REWRITE_OPERATION_TYPE type, ZU_STRING *tag );
/// Returns a new object with the type and the tag of `source`.
ZU_API ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationCreateFrom( ZU_TAG_REWRITE_OPERATION *source );

// Type and tag
/// Returns the type.
ZU_API ZU_TAG_REWRITE_OPERATION_TYPE zuTagRewriteOperationType( ZU_TAG_REWRITE_OPERATION *op );
/// Sets the type.
ZU_API void zuTagRewriteOperationSetType( ZU_TAG_REWRITE_OPERATION **op, ZU_TAG_REWRITE_OPERATION_TYPE type );
/// Returns the tag.
ZU_API ZU_STRING *zuTagRewriteOperationTag( ZU_TAG_REWRITE_OPERATION *op );
/// Sets the tag.
ZU_API void zuTagRewriteOperationSetTag( ZU_TAG_REWRITE_OPERATION **op, ZU_STRING *tag );

// Store form: under "type" the name of the type, under "tag" the tag
/// Returns the operation as a new store.
ZU_API ZU_STORE *zuTagRewriteOperationStore( ZU_TAG_REWRITE_OPERATION *op );
/// Returns a new operation of what `store` holds; null if type or tag are missing or invalid.
ZU_API ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationTryRestore( ZU_STORE *store );

ZU_END_DECLS
