// zu_random_internal.h: what a platform must provide for random numbers.
#pragma once

#include "zu/base/zu_random.h"

ZU_BEGIN_DECLS

// Fills `byteCount` bytes, at most 256, from the system's cryptographic generator, as a whole: returns false if it has
// not done so, and may be asked again.  Waits for nothing but a generator that the system has not got ready yet, and
// allocates nothing.
bool zu___RandomTryFillStrong( uint8_t *bytes, ZU_INT byteCount );

ZU_END_DECLS
