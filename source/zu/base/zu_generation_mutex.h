// ZU_GENERATION_MUTEX: a registry that admits a generation only while neither it nor one of its ancestors is admitted.
//
// Descendants do not matter: a generation is admitted although one of them is.  What is admitted stays alive until it
// is unregistered or the registry is freed.  Any number of threads may use a registry.
#pragma once

#include "zu/base/zu_generation.h"

ZU_BEGIN_DECLS

typedef struct ZU_GENERATION_MUTEX ZU_GENERATION_MUTEX;
// zuGenerationMutexRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_GENERATION_MUTEX, zuGenerationMutex )

/// Returns a new registry that has admitted nothing.
ZU_API ZU_GENERATION_MUTEX *zuGenerationMutexCreate( void );
/// Admits `generation` and returns true; false if it or an ancestor is admitted already.  Never waits for that to end.
ZU_API ZU_BOOL zuGenerationMutexTryRegister( ZU_GENERATION_MUTEX *mutex, ZU_GENERATION *generation );
/// Ends the admission of `generation`, if there is one.
ZU_API void zuGenerationMutexUnregister( ZU_GENERATION_MUTEX *mutex, ZU_GENERATION *generation );

ZU_END_DECLS
