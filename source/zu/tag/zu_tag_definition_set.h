// ZU_TAG_DEFINITION_SET: the definitions of tags that belong to one configuration, by tag.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A set has one definition of each tag at most;
// positions count them in ascending order of the tags' code points.  What is no tag by zuTagOk aborts, even where it is
// only asked for.  A function that changes a shared set gives its holder an object of its own even if the set stays as
// it was.
#pragma once

#include "zu/base/zu_vector.h"
#include "zu/tag/zu_tag_definition.h"

ZU_BEGIN_DECLS

typedef struct ZU_TAG_DEFINITION_SET ZU_TAG_DEFINITION_SET;
// zuTagDefinitionSetRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Sets are ordered as dicts from tags to definitions are.
ZU_STDFUNCS_DECLARE( ZU_TAG_DEFINITION_SET, zuTagDefinitionSet )

// Creation
/// Returns a new set without definitions.
ZU_API ZU_TAG_DEFINITION_SET *zuTagDefinitionSetCreate( void );
/// Returns a new object with the definitions of `source`.
ZU_API ZU_TAG_DEFINITION_SET *zuTagDefinitionSetCreateFrom( ZU_TAG_DEFINITION_SET *source );

// Definitions by position; a position outside aborts.
/// Returns the number of definitions.
ZU_API ZU_INT zuTagDefinitionSetDefinitionsLength( ZU_TAG_DEFINITION_SET *ds );
/// Returns the definition at `idx`.
ZU_API ZU_TAG_DEFINITION *zuTagDefinitionSetDefinitionAt( ZU_TAG_DEFINITION_SET *ds, ZU_INT idx );
/// Removes the definition at `idx`.
ZU_API void zuTagDefinitionSetDelDefinitionAt( ZU_TAG_DEFINITION_SET **ds, ZU_INT idx );

// All definitions
/// Returns all definitions, in ascending order of their tags.
ZU_API ZU_VECTOR *zuTagDefinitionSetDefinitionsVector( ZU_TAG_DEFINITION_SET *ds );
/// Replaces all definitions by those of `vec`, in any order; of several of one tag the last stays.  An item that is no
/// definition aborts.  Takes the time of a sort.
ZU_API void zuTagDefinitionSetSetDefinitionsVector( ZU_TAG_DEFINITION_SET **ds, ZU_VECTOR *vec );
/// Removes all definitions.
ZU_API void zuTagDefinitionSetClearDefinitions( ZU_TAG_DEFINITION_SET **ds );

// Definitions by tag
/// Returns the definition of `tag`; null if there is none.
ZU_API ZU_TAG_DEFINITION *zuTagDefinitionSetDefinition( ZU_TAG_DEFINITION_SET *ds, ZU_STRING *tag );
/// Tells whether there is a definition of `tag`.
ZU_API ZU_BOOL zuTagDefinitionSetHasDefinition( ZU_TAG_DEFINITION_SET *ds, ZU_STRING *tag );
/// Removes the definition of `tag`, if there is one.
ZU_API void zuTagDefinitionSetDelDefinition( ZU_TAG_DEFINITION_SET **ds, ZU_STRING *tag );
/// Adds `def`, in place of another definition of its tag.
ZU_API void zuTagDefinitionSetSetDefinition( ZU_TAG_DEFINITION_SET **ds, ZU_TAG_DEFINITION *def );

// Store form: under "definitions" a list of the stores of the definitions
/// Returns the set as a new store.
ZU_API ZU_STORE *zuTagDefinitionSetStore( ZU_TAG_DEFINITION_SET *ds );
/// Returns a new set of what `store` holds.  Any store gives one: what is no definition is skipped, and of several of
/// one tag the last stays.
ZU_API ZU_TAG_DEFINITION_SET *zuTagDefinitionSetRestore( ZU_STORE *store );

ZU_END_DECLS
