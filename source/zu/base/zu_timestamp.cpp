#include "zu/base/zu_timestamp_internal.h"

static constexpr double MILLISECONDS_PER_SECOND = 1000.0;

static double ticksPerMillisecond = 0.0;

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

ZU_INT zuTimestamp( void )
{
    // A double loses whole ticks of a large count, never a millisecond, and keeps the order.
    return (ZU_INT)( (double)zu___TimestampCounter() / ticksPerMillisecond );
}
