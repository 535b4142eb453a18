// zu_random_internal.h: what a platform must provide for random numbers.
#pragma once

#include "zu/base/zu_random.h"

ZU_BEGIN_DECLS

// Fills `byteCount` bytes, at most 256, from the system's cryptographic generator, as a whole: returns false if it has
// not done so, and may be asked again.  Waits for nothing but a generator that the system has not got ready yet, and
// allocates nothing.
bool zu___RandomTryFillStrong( uint8_t *bytes, ZU_INT byteCount );

// Has `prepare` called ahead of each fork of the process from now on, and behind it `parent` in the process that has
// forked and `child` in the new one, all on the thread that forks.  A platform whose processes do not fork does nothing.
void zu___RandomRegisterFork( void ( *prepare )( void ), void ( *parent )( void ), void ( *child )( void ) );

ZU_END_DECLS
