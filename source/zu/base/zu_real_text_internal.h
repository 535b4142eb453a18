// zu_real_text_internal.h: the powers of ten that writing and reading of real numbers share.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

// The highest 128 bits of a power of ten, cut off; the highest of them is set.
typedef struct ZU___REAL_POWER {
    uint64_t high;
    uint64_t low;
} ZU___REAL_POWER;

#define ZU___REAL_POWER_FIRST ( -342 )
#define ZU___REAL_POWER_LAST  324
extern const ZU___REAL_POWER zu___RealPowers[ ZU___REAL_POWER_LAST - ZU___REAL_POWER_FIRST + 1 ];

ZU_END_DECLS
