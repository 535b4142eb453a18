#include "zu/base/zu_timestamp_internal.h"
#include "zu/sys/zu_real.h"

static constexpr double MILLISECONDS_PER_SECOND = 1000.0;

static double ticksPerMillisecond = 0.0; // 0: ahead of start-up

void zu___TimestampStartup( void )
{
    // A report of the failure names the frequency alike on every platform.
    const struct {
        ZU_INT QuadPart;
    } li = { zu___TimestampFrequency() };
    ZU_ASSERT( li.QuadPart );
    ticksPerMillisecond = (double)li.QuadPart / MILLISECONDS_PER_SECOND;
}
void zu___TimestampShutdown( void )
{
}

// Constructors of static objects may ask ahead of start-up, each time anew: there is nothing yet that threads could
// share.
[[gnu::noinline]] static double timestampAskTicks()
{
    return (double)zu___TimestampFrequency() / MILLISECONDS_PER_SECOND;
}
ZU_INT zuTimestamp( void )
{
    double ticks = ticksPerMillisecond;
    if ( ZU___UNLIKELY( ticks == 0.0 ) ) {
        ticks = timestampAskTicks();
    }
    // A double loses whole ticks of a large count, never a millisecond, and keeps the order.  Without a counter the
    // quotient is no number that fits.
    return zuRealToInt( (double)zu___TimestampCounter() / ticks );
}
