// zu_env.h: variables of the environment.
//
// Names and values are narrow text, as zuStringCreateFromCstr reads it: what is no valid UTF-8 in a value becomes
// U+FFFD.  All functions are callable from any thread, as long as none changes the environment meanwhile.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Returns the value of `variable`, or null if it is not set.
ZU_API ZU_STRING *zuGetEnv( ZU_STRING *variable );
/// Returns the value of the variable whose name has `length` bytes, -1: terminated; null if it is not set.
ZU_API ZU_STRING *zuGetEnvCstr( const char *cstr, ZU_INT length );

ZU_END_DECLS
