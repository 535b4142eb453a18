#include "zu/sys/zu_real.h"

#include <cmath>
#include <limits>

static constexpr double TOLERANCE = std::numeric_limits<double>::epsilon(); // 2^-52, used as it is, not scaled
static constexpr double INT_RANGE_END = 9223372036854775808.0;              // 2^63, the first value that is too large

static bool realIsEqual( double a, double b )
{
    return a >= b - TOLERANCE && b + TOLERANCE >= a;
}
ZU_INT zuRealCompare( double a, double b )
{
    if ( realIsEqual( a, b ) ) {
        return 0;
    }
    return b > a ? -1 : 1;
}
ZU_INT zuRealCompareInt( double a, ZU_INT b )
{
    return zuRealCompare( a, (double)b );
}
ZU_BOOL zuRealEquals( double a, double b )
{
    return realIsEqual( a, b );
}
ZU_BOOL zuRealEqualsInt( double a, ZU_INT b )
{
    return zuRealEquals( a, (double)b );
}
ZU_BOOL zuRealIsFinite( double a )
{
    return std::isfinite( a );
}
ZU_BOOL zuRealIsNan( double a )
{
    return std::isnan( a );
}
ZU_BOOL zuRealOk( double a )
{
    return std::isfinite( a );
}
ZU_INT zuRealToInt( double a )
{
    if ( a > INT_RANGE_END ) {
        return ZU_INT_MAX;
    }
    // 2^63 itself and NaN give the value that the processor's conversion gives for what it cannot convert.
    if ( !( a >= -INT_RANGE_END && a < INT_RANGE_END ) ) {
        return ZU_INT_MIN;
    }
    return (ZU_INT)a;
}
double zuRealTrunc( double a )
{
    return a < 0.0 ? std::ceil( a ) : std::floor( a );
}
