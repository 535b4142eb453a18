// ZU_TAG_DEFINITION: what is known of a tag beside its name: a comment and a colour, for those who show it.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A function that changes a shared definition gives
// its holder an object of its own even if the definition stays as it was.  What is no tag by zuTagOk aborts.
#pragma once

#include "zu/base/zu_store.h"
#include "zu/tag/zu_tag_color.h"

ZU_BEGIN_DECLS

typedef struct ZU_TAG_DEFINITION ZU_TAG_DEFINITION;
// zuTagDefinitionRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Definitions are ordered by tag, comment and colour; one without comes first.
ZU_STDFUNCS_DECLARE( ZU_TAG_DEFINITION, zuTagDefinition )

// Creation
/// Returns a new definition of `tag` without comment and colour.
ZU_API ZU_TAG_DEFINITION *zuTagDefinitionCreate( ZU_STRING *tag );
/// Returns a new object with what `source` has.
ZU_API ZU_TAG_DEFINITION *zuTagDefinitionCreateFrom( ZU_TAG_DEFINITION *source );

// Tag
/// Returns the tag.
ZU_API ZU_STRING *zuTagDefinitionTag( ZU_TAG_DEFINITION *def );
/// Sets the tag.
ZU_API void zuTagDefinitionSetTag( ZU_TAG_DEFINITION **def, ZU_STRING *tag );

// Comment
/// Returns the comment; null if there is none.
ZU_API ZU_STRING *zuTagDefinitionComment( ZU_TAG_DEFINITION *def );
/// Sets the comment, which may be empty.
ZU_API void zuTagDefinitionSetComment( ZU_TAG_DEFINITION **def, ZU_STRING *comment );
/// Tells whether there is a comment.
ZU_API ZU_BOOL zuTagDefinitionHasComment( ZU_TAG_DEFINITION *def );
/// Removes the comment, if there is one.
ZU_API void zuTagDefinitionDelComment( ZU_TAG_DEFINITION **def );

// Colour
/// Returns the colour; -1 if there is none.
ZU_API ZU_TAG_COLOR zuTagDefinitionColor( ZU_TAG_DEFINITION *def );
/// Sets the colour; what is no colour aborts.
ZU_API void zuTagDefinitionSetColor( ZU_TAG_DEFINITION **def, ZU_TAG_COLOR color );
/// Tells whether there is a colour.
ZU_API ZU_BOOL zuTagDefinitionHasColor( ZU_TAG_DEFINITION *def );
/// Removes the colour, if there is one.
ZU_API void zuTagDefinitionDelColor( ZU_TAG_DEFINITION **def );

// Store form: under "tag" the tag, and where there are such, under "comment" the comment and under "color" the name of
// the colour
/// Returns the definition as a new store.
ZU_API ZU_STORE *zuTagDefinitionStore( ZU_TAG_DEFINITION *def );
/// Returns a new definition of what `store` holds, without a colour if that is unknown; null if the tag is missing or
/// none.
ZU_API ZU_TAG_DEFINITION *zuTagDefinitionTryRestore( ZU_STORE *store );

ZU_END_DECLS
