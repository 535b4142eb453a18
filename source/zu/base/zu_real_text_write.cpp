// The shortest text comes out of one multiplication by a power of ten of 128 bits for each end of the interval that
// rounds to the double, and for the double itself: 30 ns, where trying 15, 16 and 17 digits takes a microsecond.  A given
// number of digits is left to the C library, which rounds the exact value; what it depends on, the locale's point, is
// taken out of its text.

#include "zu/base/zu_real_text.h"

#include "zu/base/zu_real_text_internal.h"

#include <cstdio>
#include <cstring>

static constexpr int SIGNIFICAND_BITS = 52;
static constexpr int EXPONENT_BIAS = 1075; // of the significand as an integer
static constexpr uint64_t HIDDEN_BIT = (uint64_t)1 << SIGNIFICAND_BITS;
static constexpr int EXPONENT_MAX = 0x7FF; // infinities and what is no number

// Decimal digits times a power of ten
struct REAL_DECIMAL {
    uint64_t digits;
    int exponent;
};

// Shortest

// Returns the highest 64 bits of the product, with the lowest of them set if anything below them is.
static uint64_t realRoundToOdd( ZU___REAL_POWER power, uint64_t factor )
{
    unsigned __int128 low = (unsigned __int128)power.low * factor;
    unsigned __int128 high = (unsigned __int128)power.high * factor + (uint64_t)( low >> 64 );
    return (uint64_t)( high >> 64 ) | ( (uint64_t)high > 1 );
}
// Returns the power rounded up, as the interval of the paper needs it; those with no more than 128 bits are exact.
static ZU___REAL_POWER realPowerUp( int exponent )
{
    ZU___REAL_POWER power = zu___RealPowers[ exponent - ZU___REAL_POWER_FIRST ];
    power.low += exponent < 0 || exponent > 55;
    return power;
}
// Section 9 of the paper.  The divisions by logarithms are exact for all exponents of a double.
static REAL_DECIMAL realShortest( uint64_t bits )
{
    const uint64_t fraction = bits & ( HIDDEN_BIT - 1 );
    const int biased = (int)( bits >> SIGNIFICAND_BITS ) & EXPONENT_MAX;
    const uint64_t c = biased ? fraction | HIDDEN_BIT : fraction;
    const int q = ( biased ? biased : 1 ) - EXPONENT_BIAS;
    if ( q <= 0 && q > -SIGNIFICAND_BITS - 1 && ( c & ( ( (uint64_t)1 << -q ) - 1 ) ) == 0 ) {
        return { c >> -q, 0 }; // an integer below 2^53
    }
    const bool isEven = c % 2 == 0; // then both ends round to it
    const bool lowerIsCloser = fraction == 0 && biased > 1;
    const int k = ( q * 1262611 - ( lowerIsCloser ? 524031 : 0 ) ) >> 22; // log10( 2^q ), of 3/4 of it
    const int shift = q + ( ( -k * 1741647 ) >> 19 ) + 1;                 // log2( 10^-k )
    const ZU___REAL_POWER power = realPowerUp( -k );
    const uint64_t lower = realRoundToOdd( power, ( 4 * c - 2 + lowerIsCloser ) << shift ) + !isEven;
    const uint64_t middle = realRoundToOdd( power, ( 4 * c ) << shift );
    const uint64_t upper = realRoundToOdd( power, ( 4 * c + 2 ) << shift ) - !isEven;
    const uint64_t s = middle / 4;
    if ( s >= 10 ) {
        const uint64_t shorter = s / 10;
        const bool downInside = lower <= 40 * shorter;
        const bool upInside = 40 * shorter + 40 <= upper;
        if ( downInside != upInside ) {
            return { shorter + upInside, k + 1 };
        }
    }
    const bool downInside = lower <= 4 * s;
    const bool upInside = 4 * s + 4 <= upper;
    if ( downInside != upInside ) {
        return { s + upInside, k };
    }
    const uint64_t half = 4 * s + 2;
    return { s + ( middle > half || ( middle == half && s % 2 == 1 ) ), k };
}

// Pairs of decimal digits, as they are stored
struct REAL_PAIRS {
    char of[ 100 ][ 2 ] = {};
};
static constexpr REAL_PAIRS PAIRS = [] {
    REAL_PAIRS pairs;
    for ( int i = 0; i < 100; i++ ) {
        pairs.of[ i ][ 0 ] = (char)( '0' + i / 10 );
        pairs.of[ i ][ 1 ] = (char)( '0' + i % 10 );
    }
    return pairs;
}();
static char *realPutPair( char *end, uint32_t pair )
{
    memcpy( end - 2, PAIRS.of[ pair ], 2 );
    return end - 2;
}
// Stores an integer ahead of `end` and returns where it begins.  Each division waits for the one before, so that eight
// digits at a time wait less.
static char *realPutInteger( char *end, uint64_t integer )
{
    while ( integer >= 100000000 ) {
        const uint32_t eight = (uint32_t)( integer % 100000000 );
        integer /= 100000000;
        end = realPutPair( end, eight % 100 );
        end = realPutPair( end, eight / 100 % 100 );
        end = realPutPair( end, eight / 10000 % 100 );
        end = realPutPair( end, eight / 1000000 );
    }
    uint32_t rest = (uint32_t)integer;
    for ( ; rest >= 100; rest /= 100 ) {
        end = realPutPair( end, rest % 100 );
    }
    if ( rest >= 10 ) {
        return realPutPair( end, rest );
    }
    *--end = (char)( '0' + rest );
    return end;
}

static char *realPutDigits( char *dest, const char *digits, int count )
{
    memcpy( dest, digits, (size_t)count );
    return dest + count;
}
static char *realPutZeros( char *dest, int count )
{
    memset( dest, '0', (size_t)count );
    return dest + count;
}
static char *realPutExponent( char *dest, int exponent )
{
    *dest++ = 'e';
    if ( exponent < 0 ) {
        *dest++ = '-';
        exponent = -exponent;
    }
    if ( exponent >= 100 ) {
        *dest++ = (char)( '0' + exponent / 100 );
    }
    if ( exponent >= 10 ) {
        *dest++ = (char)( '0' + exponent / 10 % 10 );
    }
    *dest++ = (char)( '0' + exponent % 10 );
    return dest;
}
// Stores `count` digits with the point behind the first `point` of them, which may be none, or more than there are.
static char *realPutFixed( char *dest, const char *digits, int count, int point )
{
    if ( point <= 0 ) {
        dest = realPutDigits( dest, "0.", 2 );
        dest = realPutZeros( dest, -point );
        return realPutDigits( dest, digits, count );
    }
    if ( point >= count ) {
        dest = realPutDigits( dest, digits, count );
        return realPutZeros( dest, point - count );
    }
    dest = realPutDigits( dest, digits, point );
    *dest++ = '.';
    return realPutDigits( dest, digits + point, count - point );
}
static char *realPutScientific( char *dest, const char *digits, int count, int point )
{
    *dest++ = *digits;
    if ( count > 1 ) {
        *dest++ = '.';
        dest = realPutDigits( dest, digits + 1, count - 1 );
    }
    return realPutExponent( dest, point - 1 );
}
// How many characters the two make
static int realFixedLength( int count, int point )
{
    return point <= 0 ? 2 - point + count : point >= count ? point : count + 1;
}
// With an exponent of a sign and two digits, as the C library writes them: 1000 and 0.001 stay what people write.
static int realScientificLength( int count, int point )
{
    return count + ( count > 1 ) + 4 + ( point > 100 || point < -98 );
}

// Stores the text of what has no digits; null for what has.
static char *realPutSpecial( char *dest, double value )
{
    if ( value != value ) {
        return realPutDigits( dest, "nan", 3 );
    }
    return value - value != 0 ? realPutDigits( dest, "inf", 3 ) : nullptr;
}

ZU_INT zuRealTextWriteShortest( char dest[ ZU_REAL_TEXT_SHORTEST_MAX ], double value )
{
    ZU_ASSERT( dest );
    uint64_t bits;
    memcpy( &bits, &value, sizeof bits );
    char *end = dest;
    if ( bits >> 63 && value == value ) {
        *end++ = '-';
    }
    if ( char *special = realPutSpecial( end, value ) ) {
        return special - dest;
    }
    REAL_DECIMAL decimal = value == 0 ? REAL_DECIMAL{ 0, 0 } : realShortest( bits & UINT64_MAX >> 1 );
    while ( decimal.digits != 0 && decimal.digits % 10 == 0 ) {
        decimal.digits /= 10;
        decimal.exponent++;
    }
    char digits[ 20 ];
    const int begin = (int)( realPutInteger( digits + sizeof digits, decimal.digits ) - digits );
    const int count = (int)sizeof digits - begin;
    const int point = count + decimal.exponent;
    end = realFixedLength( count, point ) <= realScientificLength( count, point )
              ? realPutFixed( end, digits + begin, count, point )
              : realPutScientific( end, digits + begin, count, point );
    return end - dest;
}
ZU_STRING *zuRealTextShortest( double value )
{
    char text[ ZU_REAL_TEXT_SHORTEST_MAX ];
    return zuStringCreateFromAscii( text, zuRealTextWriteShortest( text, value ) );
}

// A given number of digits

// Makes text by the C library and puts "." in place of the locale's point, whatever that is.
static ZU_STRING *realTextByLibrary( bool scientific, ZU_INT digits, double value )
{
    char text[ 1 + 309 + 8 + ZU_REAL_TEXT_DIGITS_MAX + 8 ]; // sign, digits, point, digits, exponent
    if ( char *special = realPutSpecial( text + 1, value ) ) {
        text[ 0 ] = '-';
        const bool hasSign = value < 0;
        return zuStringCreateFromAscii( text + !hasSign, special - text - !hasSign );
    }
    const int length = scientific ? snprintf( text, sizeof text, "%.*e", (int)digits, value )
                                  : snprintf( text, sizeof text, "%.*f", (int)digits, value );
    ZU_ASSERT( length > 0 && length < (int)sizeof text );
    char *end = text;
    bool inPoint = false;
    for ( const char *ch = text; *ch; ch++ ) {
        const bool known = ( *ch >= '0' && *ch <= '9' ) || *ch == 'e' || *ch == '-' || *ch == '+';
        if ( known || !inPoint ) {
            *end++ = known ? *ch : '.';
        }
        inPoint = !known;
    }
    return zuStringCreateFromAscii( text, end - text );
}
ZU_STRING *zuRealTextFixed( double value, ZU_INT decimals )
{
    ZU_ASSERT( decimals >= 0 );
    ZU_ASSERT( decimals <= ZU_REAL_TEXT_DIGITS_MAX );
    return realTextByLibrary( false, decimals, value );
}
ZU_STRING *zuRealTextScientific( double value, ZU_INT digits )
{
    ZU_ASSERT( digits >= 1 );
    ZU_ASSERT( digits <= ZU_REAL_TEXT_DIGITS_MAX );
    ZU_STRING *text = realTextByLibrary( true, digits - 1, value );
    // The library writes "e-09" and "e+22"; zuRealTextShortest does without what says nothing.
    ZU_INT idx = zuStringLength( text ) - 1;
    while ( idx >= 0 && zuStringBacking( text )[ idx ] != 'e' ) {
        idx--;
    }
    if ( idx < 0 ) {
        return text; // no number, or none that ends
    }
    idx++;
    if ( zuStringBacking( text )[ idx ] == '+' ) {
        zuStringDelInner( &text, idx, 1 );
    } else if ( zuStringBacking( text )[ idx ] == '-' ) {
        idx++;
    }
    while ( idx + 1 < zuStringLength( text ) && zuStringBacking( text )[ idx ] == '0' ) {
        zuStringDelInner( &text, idx, 1 );
    }
    return text;
}
