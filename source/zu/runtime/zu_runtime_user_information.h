// zu_runtime_user_information.h: facts that a running system hangs on the process, for zuRuntimeInfo to tell.
//
// Each is a store under a key, which is any text.  Callable from any thread.
#pragma once

#include "zu/base/zu_store.h"

ZU_BEGIN_DECLS

/// Keeps `store` under `key`, in place of what was there.
ZU_API void zuRuntimeSetUserInformationKey( ZU_STRING *key, ZU_STORE *store );
/// Removes what is under `key`, if anything is.
ZU_API void zuRuntimeDelUserInformationKey( ZU_STRING *key );
/// Tells whether there is a store under `key`.
ZU_API ZU_BOOL zuRuntimeHasUserInformationKey( ZU_STRING *key );
/// Returns the store under `key`, null if there is none.
ZU_API ZU_STORE *zuRuntimeUserInformationKey( ZU_STRING *key );
/// Returns a new store of all, as a list in ascending order of the keys: under "0", "1" and so on, in equal width, a
/// store each with the value "key" and the sub-store "store".
ZU_API ZU_STORE *zuRuntimeUserInformation( void );

// For authors of classes and modules

/// Begins without any facts.
ZU_API void zu___RuntimeUserInformationStartup( void );
/// Releases all facts.
ZU_API void zu___RuntimeUserInformationShutdown( void );

ZU_END_DECLS
