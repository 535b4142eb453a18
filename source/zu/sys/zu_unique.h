// zu_unique.h: small numbers that are unique as long as they are out.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// For authors of classes and modules
#define ZU___UNIQUE_INVALID ( (ZU_INT)-1 ) // no number
#define ZU___UNIQUE_MAX     ZU_INT_MAX

/// Returns a number that is not in use: the one given back last, else the lowest that was never out.  Takes constant
/// time apart from growth.
ZU_API ZU_INT zu___UniqueGet( void );
/// Gives `uni` back; a number that is not out aborts.
ZU_API void zu___UniquePut( ZU_INT uni );
/// Makes the allocator ready; it holds no numbers yet.
ZU_API void zu___UniqueStartup( void );
/// Forgets all numbers.
ZU_API void zu___UniqueShutdown( void );

ZU_END_DECLS
