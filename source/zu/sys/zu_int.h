// zu_int.h: the integer and truth types of the interface, and arithmetic that cannot overflow unseen.
//
// All functions are pure unless they take pointers, and callable from any thread.
#pragma once

#include "zu/sys/zu_abort.h"

ZU_BEGIN_DECLS

/// Every length, index, count, size, offset and time-out of the interface.  A negative value is never a size.
typedef int64_t ZU_INT;
#define ZU_INT_BITS 64
#define ZU_INT_MAX  INT64_MAX
#define ZU_INT_MIN  INT64_MIN

/// The unsigned twin of ZU_INT, for counts of bits that exceed what a ZU_INT of bytes would allow.
typedef uint64_t ZU___INT_UNSIGNED;

/// A truth value; functions return exactly ZU_TRUE or ZU_FALSE.
typedef int32_t ZU_BOOL;
#define ZU_TRUE  ( (ZU_BOOL)1 )
#define ZU_FALSE ( (ZU_BOOL)0 )

// Checked arithmetic
//
// True when the operation has a result in range.  Each evaluates its arguments once and has no side effect, so that it
// can stand in an assertion ahead of the operation itself.
static inline ZU_BOOL zu___IntAddOk( ZU_INT a, ZU_INT b )
{
    ZU_INT sum;
    return !__builtin_add_overflow( a, b, &sum );
}
static inline ZU_BOOL zu___IntSubOk( ZU_INT a, ZU_INT b )
{
    ZU_INT difference;
    return !__builtin_sub_overflow( a, b, &difference );
}
static inline ZU_BOOL zu___IntMulOk( ZU_INT a, ZU_INT b )
{
    ZU_INT product;
    return !__builtin_mul_overflow( a, b, &product );
}
#define ZU_INT_ADD_OK( a, b )            zu___IntAddOk( ( a ), ( b ) )
#define ZU_INT_SUB_OK( a, b )            zu___IntSubOk( ( a ), ( b ) )
#define ZU_INT_MUL_OK( a, b )            zu___IntMulOk( ( a ), ( b ) )
#define ZU___INT_UNSIGNED_ADD_OK( a, b ) ( (ZU___INT_UNSIGNED)( a ) <= UINT64_MAX - (ZU___INT_UNSIGNED)( b ) )

// Conversions that keep the value
#define ZU___INT_UNSIGNED_FROM_ZU_INT_CONV_OK( x ) ( ( x ) >= 0 )
#define ZU___INT_UNSIGNED_TO_ZU_INT_CONV_OK( x )   ( (ZU___INT_UNSIGNED)( x ) <= (ZU___INT_UNSIGNED)ZU_INT_MAX )
#define ZU_INT_FROM_SIZET_CONV_OK( x )             ( (uint64_t)( x ) <= (uint64_t)ZU_INT_MAX )
#define ZU_INT_TO_SIGNED_INT_CONV_OK( x )          ( ( x ) >= INT32_MIN && ( x ) <= INT32_MAX )

/// Tells whether a + b is in range.
ZU_API ZU_BOOL zuIntAddOk( ZU_INT a, ZU_INT b );
/// Tells whether a - b is in range.
ZU_API ZU_BOOL zuIntSubOk( ZU_INT a, ZU_INT b );
/// Tells whether a * b is in range.
ZU_API ZU_BOOL zuIntMulOk( ZU_INT a, ZU_INT b );
/// Tells whether a / b is defined: `b` is not 0, and the quotient is in range.
ZU_API ZU_BOOL zuIntDivOk( ZU_INT a, ZU_INT b );

// Saturating arithmetic: the exact result, or the end of the range that lies on its side
/// Returns a + b, saturated.
ZU_API ZU_INT zuIntAddSaturating( ZU_INT a, ZU_INT b );
/// Returns a - b, saturated.
ZU_API ZU_INT zuIntSubSaturating( ZU_INT a, ZU_INT b );
/// Returns a * b, saturated.
ZU_API ZU_INT zuIntMulSaturating( ZU_INT a, ZU_INT b );
/// Returns a / b truncated toward zero, saturated; `b` of 0 aborts.
ZU_API ZU_INT zuIntDivSaturating( ZU_INT a, ZU_INT b );
/// Returns the absolute value, ZU_INT_MAX for ZU_INT_MIN.
ZU_API ZU_INT zuIntAbsSaturating( ZU_INT value );
/// Returns the absolute value; ZU_INT_MIN aborts.
ZU_API ZU_INT zuIntAbs( ZU_INT value );

// Order
/// Returns the smaller of `a` and `b`.
ZU_API ZU_INT zuIntMin( ZU_INT a, ZU_INT b );
/// Returns the larger of `a` and `b`.
ZU_API ZU_INT zuIntMax( ZU_INT a, ZU_INT b );
/// Returns `value` moved into the closed interval between `a` and `b`, which may come in either order.
ZU_API ZU_INT zuIntConstrain( ZU_INT value, ZU_INT a, ZU_INT b );
/// Returns the midpoint of `a` and `b`, which may come in either order.  It is rounded down between numbers that are
/// not negative, toward zero between negative ones, and up where the signs differ.
ZU_API ZU_INT zuIntMid( ZU_INT a, ZU_INT b );
/// Swaps the values behind `a` and `b` and returns the new value behind `a`.
ZU_API ZU_INT zuIntExchange( ZU_INT *a, ZU_INT *b );
/// Swaps the values behind `a` and `b` if the one behind `a` is the greater.
ZU_API void zuIntSortPair( ZU_INT *a, ZU_INT *b );

// Bits, counted from 0 for the least significant to 63
//
// Ranges include both ends, which may come in either order.  A bit outside aborts.
/// Tells whether `bit` of `value` is set.
ZU_API ZU_BOOL zuIntBitIsSet( ZU_INT value, ZU_INT bit );
/// Returns `value` with `bit` set.
ZU_API ZU_INT zuIntBitSet( ZU_INT value, ZU_INT bit );
/// Returns `value` with `bit` clear.
ZU_API ZU_INT zuIntBitClear( ZU_INT value, ZU_INT bit );
/// Returns `value` with the bits from `a` to `b` set.
ZU_API ZU_INT zuIntBitSetRange( ZU_INT value, ZU_INT a, ZU_INT b );
/// Returns `value` with the bits from `a` to `b` clear.
ZU_API ZU_INT zuIntBitClearRange( ZU_INT value, ZU_INT a, ZU_INT b );
/// Returns `value` with its `lowest` lowest bits set, 0 to 64 of them.
ZU_API ZU_INT zuIntBitSetLowest( ZU_INT value, ZU_INT lowest );
/// Returns `value` with its `lowest` lowest bits clear, 0 to 64 of them.
ZU_API ZU_INT zuIntBitClearLowest( ZU_INT value, ZU_INT lowest );
/// Returns `value` with its `highest` highest bits set, 1 to 64 of them; unlike with the lowest, 0 aborts.
ZU_API ZU_INT zuIntBitSetHighest( ZU_INT value, ZU_INT highest );
/// Returns `value` with its `highest` highest bits clear, 1 to 64 of them; unlike with the lowest, 0 aborts.
ZU_API ZU_INT zuIntBitClearHighest( ZU_INT value, ZU_INT highest );
/// Returns the number of set bits.
ZU_API ZU_INT zuIntBitCount( ZU_INT value );
/// Returns the index of the highest set bit, -1 for 0.
ZU_API ZU_INT zuIntBitHighest( ZU_INT value );
/// Returns the index of the lowest set bit, -1 for 0.
ZU_API ZU_INT zuIntBitLowest( ZU_INT value );

ZU_END_DECLS
