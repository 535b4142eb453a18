#include "zu/base/zu_nanoseconds.h"

static constexpr ZU_INT NANOSECONDS_PER_MILLISECOND = 1000000;

ZU_INT zuNanosecondsTryConvertFromMilliseconds( ZU_INT milliseconds )
{
    ZU_ASSERT( milliseconds >= 0 );
    return ZU_INT_MUL_OK( milliseconds, NANOSECONDS_PER_MILLISECOND ) ? milliseconds * NANOSECONDS_PER_MILLISECOND : -1;
}
ZU_INT zuNanosecondsConvertFromMillisecondsSaturating( ZU_INT milliseconds )
{
    ZU_ASSERT( milliseconds >= 0 );
    return zuIntMulSaturating( milliseconds, NANOSECONDS_PER_MILLISECOND );
}
ZU_INT zuNanosecondsConvertToMillisecondsTruncate( ZU_INT nanoseconds )
{
    ZU_ASSERT( ZU_NANOSECONDS_OK( nanoseconds ) );
    return nanoseconds / NANOSECONDS_PER_MILLISECOND;
}
ZU_INT zuNanosecondsConvertToMillisecondsExtend( ZU_INT nanoseconds )
{
    ZU_ASSERT( ZU_NANOSECONDS_OK( nanoseconds ) );
    return nanoseconds / NANOSECONDS_PER_MILLISECOND + ( nanoseconds % NANOSECONDS_PER_MILLISECOND > 0 );
}
