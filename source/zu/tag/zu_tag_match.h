// ZU_TAG_MATCH: a condition on a tag set: tags to look for, and how many of them the set is to hold.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A function that changes a shared match gives its
// holder an object of its own even if the match stays as it was.
#pragma once

#include "zu/base/zu_store.h"
#include "zu/tag/zu_tag_match_type.h"
#include "zu/tag/zu_tag_set.h"

ZU_BEGIN_DECLS

typedef struct ZU_TAG_MATCH ZU_TAG_MATCH;
// zuTagMatchRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Matches are ordered by their types, then by their sets.
ZU_STDFUNCS_DECLARE( ZU_TAG_MATCH, zuTagMatch )

// Creation
/// Returns a new match of the type ZU_TAG_MATCH_TYPE_OR with the empty set.
ZU_API ZU_TAG_MATCH *zuTagMatchCreate( void );
/// Returns a new object with the type and the set of `source`.
ZU_API ZU_TAG_MATCH *zuTagMatchCreateFrom( ZU_TAG_MATCH *source );

// Type and tags
/// Returns the type.
ZU_API ZU_TAG_MATCH_TYPE zuTagMatchType( ZU_TAG_MATCH *match );
/// Sets the type; what is no match type aborts.
ZU_API void zuTagMatchSetType( ZU_TAG_MATCH **match, ZU_TAG_MATCH_TYPE type );
/// Returns the tags to look for.
ZU_API ZU_TAG_SET *zuTagMatchTagSet( ZU_TAG_MATCH *match );
/// Sets the tags to look for.
ZU_API void zuTagMatchSetTagSet( ZU_TAG_MATCH **match, ZU_TAG_SET *ts );

/// Tells whether `ts` holds as many of the match's tags as its type wants.  A match without tags matches every set,
/// whatever its type, ZU_TAG_MATCH_TYPE_NOT and ZU_TAG_MATCH_TYPE_XOR included.
ZU_API ZU_BOOL zuTagMatchTryMatch( ZU_TAG_MATCH *match, ZU_TAG_SET *ts );

// Store form: under "type" the name of the type, under "tagSet" the tags as zuTagSetEncode writes them
/// Returns the match as a new store.
ZU_API ZU_STORE *zuTagMatchStore( ZU_TAG_MATCH *match );
/// Returns a new match of what `store` holds.  Any store gives one: a type that is missing or unknown is
/// ZU_TAG_MATCH_TYPE_OR, missing tags are none, and what is no tag is dropped.
ZU_API ZU_TAG_MATCH *zuTagMatchRestore( ZU_STORE *store );

ZU_END_DECLS
