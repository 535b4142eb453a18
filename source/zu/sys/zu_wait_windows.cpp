#include "zu/sys/zu_wait_internal.h"

#include <windows.h>

// A longer limit, which takes 49 days to come, expires early, as the contract lets any wait.
static constexpr ZU_INT LIMIT_MAX = INFINITE - 1;

ZU_BOOL zu___WaitOnWord( const uint32_t *word, uint32_t value, ZU_INT millisec )
{
    DWORD limit = millisec < 0 ? INFINITE : (DWORD)zuIntMin( millisec, LIMIT_MAX );
    return WaitOnAddress( const_cast<uint32_t *>( word ), &value, sizeof value, limit ) ||
           GetLastError() == ERROR_TIMEOUT;
}
void zu___WaitWakeOne( const uint32_t *word )
{
    WakeByAddressSingle( const_cast<uint32_t *>( word ) );
}
void zu___WaitWakeAll( const uint32_t *word )
{
    WakeByAddressAll( const_cast<uint32_t *>( word ) );
}
