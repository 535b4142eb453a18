// ZU_TAG_REWRITE: a transformation of tag sets: an operation for each of some tags, and what becomes of all others.
//
// Without `clear`, which is how a rewrite begins, the tags that no operation names stay; with it, they go.  An
// operation sets its tag, deletes it, or passes it through, that is leaves it as it was: so a rewrite with `clear`
// passes through what may stay, and without it passing through changes nothing.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A rewrite has one operation for each tag at most;
// positions count them in ascending order of the tags' code points.  What is no tag by zuTagOk aborts, even where it is
// only asked for.  A function that changes a shared rewrite gives its holder an object of its own even if the rewrite
// stays as it was.
#pragma once

#include "zu/tag/zu_tag_rewrite_operation.h"
#include "zu/tag/zu_tag_set.h"

ZU_BEGIN_DECLS

typedef struct ZU_TAG_REWRITE ZU_TAG_REWRITE;
// zuTagRewriteRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Rewrites are ordered by `clear`, false first, then by their operations, as dicts from tags to operations are.
ZU_STDFUNCS_DECLARE( ZU_TAG_REWRITE, zuTagRewrite )

// Creation
/// Returns a new rewrite without `clear` and without operations.
ZU_API ZU_TAG_REWRITE *zuTagRewriteCreate( void );
/// Returns a new object with what `source` has.
ZU_API ZU_TAG_REWRITE *zuTagRewriteCreateFrom( ZU_TAG_REWRITE *source );

/// Tells whether tags go that no operation names.
ZU_API ZU_BOOL zuTagRewriteClear( ZU_TAG_REWRITE *rewrite );
/// Sets whether tags go that no operation names.
ZU_API void zuTagRewriteSetClear( ZU_TAG_REWRITE **rewrite, ZU_BOOL clear );

// Operations by position; a position outside aborts.
/// Returns the number of operations.
ZU_API ZU_INT zuTagRewriteOperationsLength( ZU_TAG_REWRITE *rewrite );
/// Returns the operation at `idx`.
ZU_API ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperationAt( ZU_TAG_REWRITE *rewrite, ZU_INT idx );
/// Removes the operation at `idx`.
ZU_API void zuTagRewriteDelOperationAt( ZU_TAG_REWRITE **rewrite, ZU_INT idx );

// All operations
/// Returns all operations, in ascending order of their tags.
ZU_API ZU_VECTOR *zuTagRewriteOperationsVector( ZU_TAG_REWRITE *rewrite );
/// Replaces all operations by those of `vec`, in any order; of several on one tag the last stays.  An item that is no
/// operation aborts.  Takes the time of a sort.
ZU_API void zuTagRewriteSetOperationsVector( ZU_TAG_REWRITE **rewrite, ZU_VECTOR *vec );
/// Removes all operations.
ZU_API void zuTagRewriteClearOperations( ZU_TAG_REWRITE **rewrite );

// Operations by tag
/// Returns the operation on `tag`; null if there is none.
ZU_API ZU_TAG_REWRITE_OPERATION *zuTagRewriteOperation( ZU_TAG_REWRITE *rewrite, ZU_STRING *tag );
/// Tells whether there is an operation on `tag`.
ZU_API ZU_BOOL zuTagRewriteHasOperation( ZU_TAG_REWRITE *rewrite, ZU_STRING *tag );
/// Removes the operation on `tag`, if there is one.
ZU_API void zuTagRewriteDelOperation( ZU_TAG_REWRITE **rewrite, ZU_STRING *tag );
/// Adds `op`, in place of another operation on its tag.
ZU_API void zuTagRewriteSetOperation( ZU_TAG_REWRITE **rewrite, ZU_TAG_REWRITE_OPERATION *op );

/// Returns what the rewrite makes of `ts`, which is `ts` itself where that needs no change.
ZU_API ZU_TAG_SET *zuTagRewriteApply( ZU_TAG_REWRITE *rewrite, ZU_TAG_SET *ts );

// Store form: under "clear" a truth value, under "operations" a list of the stores of the operations
/// Returns the rewrite as a new store.
ZU_API ZU_STORE *zuTagRewriteStore( ZU_TAG_REWRITE *rewrite );
/// Returns a new rewrite of what `store` holds.  Any store gives one: `clear` is false if it is missing or no truth
/// value, what is no operation is skipped, and of several on one tag the last stays.
ZU_API ZU_TAG_REWRITE *zuTagRewriteRestore( ZU_STORE *store );

ZU_END_DECLS
