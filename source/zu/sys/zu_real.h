// zu_real.h: comparison and conversion of real numbers, which are IEEE 754 doubles.
//
// Two numbers count as equal when they differ by at most 2^-52, taken as an absolute tolerance: it has no effect on
// numbers of large magnitude.  NaN equals nothing.  All functions are pure and callable from any thread.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

/// Returns 0 if `a` and `b` are equal within the tolerance, -1 if `b` is the greater, else 1, also if either is NaN.
ZU_API ZU_INT zuRealCompare( double a, double b );
/// Returns the same for `b` converted to a real number.
ZU_API ZU_INT zuRealCompareInt( double a, ZU_INT b );
/// Tells whether `a` and `b` are equal within the tolerance.
ZU_API ZU_BOOL zuRealEquals( double a, double b );
/// Tells the same for `b` converted to a real number.
ZU_API ZU_BOOL zuRealEqualsInt( double a, ZU_INT b );
/// Tells whether `a` is neither infinite nor NaN.
ZU_API ZU_BOOL zuRealIsFinite( double a );
/// Tells whether `a` is NaN.
ZU_API ZU_BOOL zuRealIsNan( double a );
/// Tells whether `a` is an ordinary number: neither infinite nor NaN.
ZU_API ZU_BOOL zuRealOk( double a );
/// Returns `a` truncated toward zero.  Below -2^63 it is ZU_INT_MIN, above 2^63 ZU_INT_MAX; 2^63 itself and NaN yield
/// ZU_INT_MIN.
ZU_API ZU_INT zuRealToInt( double a );
/// Returns `a` rounded toward zero.
ZU_API double zuRealTrunc( double a );

ZU_END_DECLS
