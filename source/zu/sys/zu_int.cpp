#include "zu/sys/zu_int.h"

#include <bit>

// Checked arithmetic
ZU_BOOL zuIntAddOk( ZU_INT a, ZU_INT b )
{
    return ZU_INT_ADD_OK( a, b );
}
ZU_BOOL zuIntSubOk( ZU_INT a, ZU_INT b )
{
    return ZU_INT_SUB_OK( a, b );
}
ZU_BOOL zuIntMulOk( ZU_INT a, ZU_INT b )
{
    return ZU_INT_MUL_OK( a, b );
}
ZU_BOOL zuIntDivOk( ZU_INT a, ZU_INT b )
{
    return b != 0 && !( a == ZU_INT_MIN && b == -1 );
}

// Saturating arithmetic.  An overflow leaves no doubt about the sign of the true result.
ZU_INT zuIntAddSaturating( ZU_INT a, ZU_INT b )
{
    ZU_INT sum;
    if ( __builtin_add_overflow( a, b, &sum ) ) {
        return a < 0 ? ZU_INT_MIN : ZU_INT_MAX;
    }
    return sum;
}
ZU_INT zuIntSubSaturating( ZU_INT a, ZU_INT b )
{
    ZU_INT difference;
    if ( __builtin_sub_overflow( a, b, &difference ) ) {
        return a < 0 ? ZU_INT_MIN : ZU_INT_MAX;
    }
    return difference;
}
ZU_INT zuIntMulSaturating( ZU_INT a, ZU_INT b )
{
    ZU_INT product;
    if ( __builtin_mul_overflow( a, b, &product ) ) {
        return ( a < 0 ) != ( b < 0 ) ? ZU_INT_MIN : ZU_INT_MAX;
    }
    return product;
}
ZU_INT zuIntDivSaturating( ZU_INT a, ZU_INT b )
{
    if ( b == 0 ) {
        ZU_ABORT();
    }
    return zuIntDivOk( a, b ) ? a / b : ZU_INT_MAX;
}
ZU_INT zuIntAbsSaturating( ZU_INT value )
{
    return value == ZU_INT_MIN ? ZU_INT_MAX : value < 0 ? -value : value;
}
ZU_INT zuIntAbs( ZU_INT value )
{
    ZU_ASSERT( zuIntMulOk( value, -1 ) );
    return value < 0 ? -value : value;
}

// Order
ZU_INT zuIntMin( ZU_INT a, ZU_INT b )
{
    return a < b ? a : b;
}
ZU_INT zuIntMax( ZU_INT a, ZU_INT b )
{
    return a > b ? a : b;
}
ZU_INT zuIntConstrain( ZU_INT value, ZU_INT a, ZU_INT b )
{
    zuIntSortPair( &a, &b );
    return value < a ? a : value > b ? b : value;
}
ZU_INT zuIntMid( ZU_INT a, ZU_INT b )
{
    zuIntSortPair( &a, &b );
    if ( a >= 0 ) {
        return a + ( b - a ) / 2;
    }
    if ( b < 0 ) {
        return b - ( b - a ) / 2;
    }
    // The signs differ, so the sum is in range.  Division truncates, which rounds a negative odd sum up already.
    ZU_INT sum = a + b;
    return sum / 2 + ( sum > 0 ? sum % 2 : 0 );
}
ZU_INT zuIntExchange( ZU_INT *a, ZU_INT *b )
{
    ZU_ASSERT( a );
    ZU_ASSERT( b );
    ZU_INT oldA = *a;
    *a = *b;
    *b = oldA;
    return *a;
}
void zuIntSortPair( ZU_INT *a, ZU_INT *b )
{
    ZU_ASSERT( a );
    ZU_ASSERT( b );
    if ( *a > *b ) {
        zuIntExchange( a, b );
    }
}

// Bits
ZU_BOOL zuIntBitIsSet( ZU_INT value, ZU_INT bit )
{
    ZU_ASSERT( bit >= 0 );
    ZU_ASSERT( bit < ZU_INT_BITS );
    return (ZU_BOOL)( ( (uint64_t)value >> bit ) & 1 );
}
ZU_INT zuIntBitSet( ZU_INT value, ZU_INT bit )
{
    ZU_ASSERT( bit >= 0 );
    ZU_ASSERT( bit < ZU_INT_BITS );
    return (ZU_INT)( (uint64_t)value | (uint64_t)1 << bit );
}
ZU_INT zuIntBitClear( ZU_INT value, ZU_INT bit )
{
    ZU_ASSERT( bit >= 0 );
    ZU_ASSERT( bit < ZU_INT_BITS );
    return (ZU_INT)( (uint64_t)value & ~( (uint64_t)1 << bit ) );
}

// Ranges go bit by bit, so that each bit is checked where it is reached: a range that begins inside and ends outside
// aborts at bit 64.
ZU_INT zuIntBitSetRange( ZU_INT value, ZU_INT a, ZU_INT b )
{
    zuIntSortPair( &a, &b );
    ZU_ASSERT( b < ZU_INT_MAX );
    for ( ZU_INT bit = a; bit <= b; bit++ ) {
        value = zuIntBitSet( value, bit );
    }
    return value;
}
ZU_INT zuIntBitClearRange( ZU_INT value, ZU_INT a, ZU_INT b )
{
    zuIntSortPair( &a, &b );
    ZU_ASSERT( b < ZU_INT_MAX );
    for ( ZU_INT bit = a; bit <= b; bit++ ) {
        value = zuIntBitClear( value, bit );
    }
    return value;
}
ZU_INT zuIntBitSetLowest( ZU_INT value, ZU_INT lowest )
{
    ZU_ASSERT( lowest >= 0 );
    ZU_ASSERT( lowest <= ZU_INT_BITS );
    return lowest == 0 ? value : zuIntBitSetRange( value, 0, lowest - 1 );
}
ZU_INT zuIntBitClearLowest( ZU_INT value, ZU_INT lowest )
{
    ZU_ASSERT( lowest >= 0 );
    ZU_ASSERT( lowest <= ZU_INT_BITS );
    return lowest == 0 ? value : zuIntBitClearRange( value, 0, lowest - 1 );
}
// No case for 0 here, and no limits: the range is checked bit by bit.  From 64 to 63 it is put in order, and aborts at
// bit 64.
ZU_INT zuIntBitSetHighest( ZU_INT value, ZU_INT highest )
{
    ZU_ASSERT( ZU_INT_SUB_OK( ZU_INT_BITS, highest ) );
    return zuIntBitSetRange( value, ZU_INT_BITS - highest, ZU_INT_BITS - 1 );
}
ZU_INT zuIntBitClearHighest( ZU_INT value, ZU_INT highest )
{
    ZU_ASSERT( ZU_INT_SUB_OK( ZU_INT_BITS, highest ) );
    return zuIntBitClearRange( value, ZU_INT_BITS - highest, ZU_INT_BITS - 1 );
}
ZU_INT zuIntBitCount( ZU_INT value )
{
    return std::popcount( (uint64_t)value );
}
ZU_INT zuIntBitHighest( ZU_INT value )
{
    return ZU_INT_BITS - 1 - std::countl_zero( (uint64_t)value );
}
ZU_INT zuIntBitLowest( ZU_INT value )
{
    return value == 0 ? -1 : std::countr_zero( (uint64_t)value );
}
