#include "zu/sys/zu_wait_internal.h"

#include <cerrno>
#include <climits>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

static constexpr ZU_INT SECOND = 1000;         // milliseconds
static constexpr ZU_INT MILLISECOND = 1000000; // nanoseconds

ZU_BOOL zu___WaitOnWord( const uint32_t *word, uint32_t value, ZU_INT millisec )
{
    // FUTEX_WAIT measures its limit by CLOCK_MONOTONIC.  The call takes two words of the machine and not the timespec
    // of the C library, whose time_t may be longer than a word.
    struct {
        long seconds;
        long nanoseconds;
    } limit = {};
    if ( millisec >= 0 ) {
        limit.seconds = (long)zuIntMin( millisec / SECOND, LONG_MAX );
        limit.nanoseconds = (long)( millisec % SECOND * MILLISECOND );
    }
    if ( syscall( SYS_futex, word, FUTEX_WAIT_PRIVATE, value, millisec >= 0 ? &limit : nullptr, nullptr, 0 ) == 0 ) {
        return ZU_TRUE;
    }
    return errno == EAGAIN || errno == EINTR || errno == ETIMEDOUT;
}
void zu___WaitWakeOne( const uint32_t *word )
{
    syscall( SYS_futex, word, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0 );
}
void zu___WaitWakeAll( const uint32_t *word )
{
    syscall( SYS_futex, word, FUTEX_WAKE_PRIVATE, INT_MAX, nullptr, nullptr, 0 );
}
