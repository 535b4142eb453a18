#include "zu/sys/zu_wait_internal.h"

// So few reservations are waited for at a time that these hardly ever meet.
static uint32_t reservedWords[ 64 ];

uint32_t *zu___WaitReservedWord( const void *lock )
{
    // The high bits of a product depend on all bits of the address (Knuth, TAOCP volume 3, 6.4).
    return &reservedWords[ ( (uint64_t)(uintptr_t)lock * UINT64_C( 0x9E3779B97F4A7C15 ) ) >> 58 ];
}
void zu___WaitWakeReserved( const void *lock )
{
    uint32_t *word = zu___WaitReservedWord( lock );
    // Pairs with the sleeper's look at the word, which is ahead of that at its lock.
    __atomic_add_fetch( word, 1, __ATOMIC_RELEASE );
    zu___WaitWakeAll( word );
}
