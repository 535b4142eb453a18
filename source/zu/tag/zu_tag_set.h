// ZU_TAG_SET: a set of tags, which are names that programs attach to things.
//
// The library gives no tag a meaning.  A tag is a string that zuTagOk accepts; there is no class of tags, and where a
// function takes one, any other string aborts.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A set holds each tag once; positions count its
// tags in ascending order of their code points.  Looking a tag up takes about log2 of the number of tags in
// comparisons.  A function that changes a shared set gives its holder an object of its own even if the tags stay as
// they were; objects share their tags until they differ.
//
// What a set can be tested for and turned into beyond this is in zu_tag_match.h and zu_tag_rewrite.h.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_TAG_SET ZU_TAG_SET;
// zuTagSetRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Sets are ordered tag by tag, and a set ahead of its continuation.  The text is that of zuTagSetEncode.
ZU_STDFUNCS_DECLARE( ZU_TAG_SET, zuTagSet )

/// Tells whether `tag` can be a tag: a name in camel-case style, private names included, as zuNameCamelCaseOk tells.
/// Whoever takes tags from outside asks this first.
ZU_API ZU_BOOL zuTagOk( ZU_STRING *tag );

// Creation
/// Returns the empty set, which all callers share.  Aborts while the library is not started.
ZU_API ZU_TAG_SET *zuTagSetCreate( void );
/// Returns a new object with the tags of `source`.
ZU_API ZU_TAG_SET *zuTagSetCreateFrom( ZU_TAG_SET *source );

// Access by position; a position outside aborts.
/// Returns the number of tags.
ZU_API ZU_INT zuTagSetTagsLength( ZU_TAG_SET *ts );
/// Returns the tag at `idx`.
ZU_API ZU_STRING *zuTagSetTagAt( ZU_TAG_SET *ts, ZU_INT idx );
/// Removes the tag at `idx`.
ZU_API void zuTagSetDelTagAt( ZU_TAG_SET **ts, ZU_INT idx );

// All tags
/// Returns all tags, in ascending order.
ZU_API ZU_VECTOR *zuTagSetTagsVector( ZU_TAG_SET *ts );
/// Replaces all tags by those of `vec`, in any order, some of them perhaps twice.  An item that is no string or no tag
/// aborts.  Takes the time of a sort.
ZU_API void zuTagSetSetTagsVector( ZU_TAG_SET **ts, ZU_VECTOR *vec );
/// Removes all tags.
ZU_API void zuTagSetClearTags( ZU_TAG_SET **ts );

// Single tags.  What is no tag aborts, even where it is only asked for.
/// Tells whether `tag` is in the set.
ZU_API ZU_BOOL zuTagSetHasTag( ZU_TAG_SET *ts, ZU_STRING *tag );
/// Adds `tag`, if it is not there yet.
ZU_API void zuTagSetSetTag( ZU_TAG_SET **ts, ZU_STRING *tag );
/// Removes `tag`, if it is there.
ZU_API void zuTagSetDelTag( ZU_TAG_SET **ts, ZU_STRING *tag );

// Two sets.  `src` may be the changed set itself.
/// Tells whether `tsA` and `tsB` have no tag in common.
ZU_API ZU_BOOL zuTagSetDisjoint( ZU_TAG_SET *tsA, ZU_TAG_SET *tsB );
/// Adds the tags of `src`.
ZU_API void zuTagSetInclude( ZU_TAG_SET **ts, ZU_TAG_SET *src );
/// Removes the tags of `src`.
ZU_API void zuTagSetExclude( ZU_TAG_SET **ts, ZU_TAG_SET *src );
/// Removes all tags but those of `src`.
ZU_API void zuTagSetIntersect( ZU_TAG_SET **ts, ZU_TAG_SET *src );

// Text, such as "apple zebra"
/// Returns the tags in ascending order, divided by single spaces; of an empty set the empty string.  Stores hold sets
/// in this form.
ZU_API ZU_STRING *zuTagSetEncode( ZU_TAG_SET *ts );
/// Returns the set of all tags in a text that is divided by spaces, U+0020 and no others.  What is no tag is dropped,
/// so that any text gives a set, if only an empty one.
ZU_API ZU_TAG_SET *zuTagSetDecode( ZU_STRING *zus );

// For authors of classes and modules
/// Makes the empty set.
ZU_API void zu___TagSetStartup( void );
/// Releases what zu___TagSetStartup made.
ZU_API void zu___TagSetShutdown( void );

ZU_END_DECLS
