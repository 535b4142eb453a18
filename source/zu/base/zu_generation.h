// ZU_GENERATION: a node in a tree of creation order, which tells which of two is older and whether they are related.
//
// A generation is a root or has a parent, which it keeps alive; a parent does not know its children.  Roots are
// numbered from 0 on in the order of their creation, and so are the children of each parent.  The numbers from the
// root down are the generation's path.  Paths are the order of generations, and their text: "1:3:0" is the first
// child of the fourth child of the second root.  So a later root is younger than all that an earlier root leads to, a
// child is younger than its parent, and a later child is younger than an earlier one with all that leads from it.
//
// A generation does not change once it is made.  Children of one parent may be created by any number of threads.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_GENERATION ZU_GENERATION;
// zuGenerationRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_GENERATION, zuGeneration )

// Creation
/// Returns a new root.
ZU_API ZU_GENERATION *zuGenerationCreate( void );
/// Returns a new child of `parentGeneration`.
ZU_API ZU_GENERATION *zuGenerationCreateWithParent( ZU_GENERATION *parentGeneration );

// Relations; they go by identity
/// Tells whether `generation` is no root.
ZU_API ZU_BOOL zuGenerationHasParent( ZU_GENERATION *generation );
/// Returns the parent; null if `generation` is a root.
ZU_API ZU_GENERATION *zuGenerationParent( ZU_GENERATION *generation );
/// Tells whether `generation` is the parent of `otherGeneration`.
ZU_API ZU_BOOL zuGenerationIsParent( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration );
/// Tells whether `generation` is a child of `otherGeneration`.
ZU_API ZU_BOOL zuGenerationIsChild( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration );
/// Tells whether `generation` is the parent of `otherGeneration`, or the parent of that, and so on; none is its own.
ZU_API ZU_BOOL zuGenerationIsAncestor( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration );
/// Tells whether `otherGeneration` is an ancestor of `generation`.
ZU_API ZU_BOOL zuGenerationIsDescendant( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration );

// Age
/// Tells whether the path of `generation` is ahead of that of `otherGeneration`.
ZU_API ZU_BOOL zuGenerationIsOlder( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration );
/// Tells whether the path of `generation` is behind that of `otherGeneration`.
ZU_API ZU_BOOL zuGenerationIsYounger( ZU_GENERATION *generation, ZU_GENERATION *otherGeneration );

// For authors of classes and modules
/// Makes what numbers the roots.
ZU_API void zu___GenerationStartup( void );
/// Releases what numbers the roots.
ZU_API void zu___GenerationShutdown( void );

ZU_END_DECLS
