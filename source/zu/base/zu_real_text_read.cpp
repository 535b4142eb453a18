// Nearly all texts have up to 19 digits, which are an integer of 64 bits: one multiplication by a power of ten tells the
// double, 20 to 30 ns in all.  What is left open by that, longer texts among them, goes to the C library in a form that
// has no point, and so means the same in every locale.

#include "zu/base/zu_real_text.h"

#include "zu/base/zu_real_text_internal.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>

static constexpr int SIGNIFICAND_BITS = 52;
static constexpr int EXPONENT_MAX = 0x7FF;
static constexpr ZU_INT INTEGER_DIGITS = 19;             // that any integer of 64 bits has room for
static constexpr ZU_INT EXACT_DIGITS = 800;              // more than a double and the halves between doubles have: 767
static constexpr ZU_INT EXPONENT_LIMIT = ZU_INT_MAX / 4; // text cannot have as many digits
static constexpr ZU_INT EXPONENT_SURE = 100000;          // either way: no digits that the C library gets bring it back

// The digits of a number and where they stand
struct REAL_SCAN {
    uint64_t digits;    // the first 19 from the first one that is not 0
    ZU_INT count;       // all digits from that one on
    ZU_INT first, last; // where that one stands in the text, and behind the last
    ZU_INT leading;     // the power of ten that it is the digit of
    bool more;          // digits other than 0 follow the 19
};

static bool realIsDigit( ZU_CHAR ch )
{
    return ch >= '0' && ch <= '9';
}
template <typename CHAR>
static ZU_CHAR realLower( CHAR ch )
{
    ZU_CHAR plain = (std::make_unsigned_t<CHAR>)ch;
    return plain >= 'A' && plain <= 'Z' ? plain - 'A' + 'a' : plain;
}
template <typename CHAR>
static bool realBeginsWith( const CHAR *text, ZU_INT length, const char *word )
{
    ZU_INT i = 0;
    while ( word[ i ] && i < length && realLower( text[ i ] ) == (ZU_CHAR)word[ i ] ) {
        i++;
    }
    return !word[ i ];
}
static double realFromBits( uint64_t bits )
{
    double value;
    memcpy( &value, &bits, sizeof value );
    return value;
}
static double realInfinity()
{
    return realFromBits( (uint64_t)EXPONENT_MAX << SIGNIFICAND_BITS );
}

// The double nearest to `digits` times the power of ten; `digits` is not 0.  Sections 5 to 8 of the paper, with the
// simpler test that Noble Mushtak and Daniel Lemire have proven in "Fast number parsing without fallback" (2023).
static double realNearest( uint64_t digits, ZU_INT exponent )
{
    if ( exponent < ZU___REAL_POWER_FIRST ) {
        return 0;
    }
    if ( exponent > 308 ) {
        return realInfinity();
    }
    const int zeros = __builtin_clzll( digits );
    digits <<= zeros;
    ZU___REAL_POWER power = zu___RealPowers[ exponent - ZU___REAL_POWER_FIRST ];
    power.low += exponent < 0 && exponent >= -27; // where rounding down might look exact
    unsigned __int128 product = (unsigned __int128)digits * power.high;
    if ( ( (uint64_t)( product >> 64 ) & 0x1FF ) == 0x1FF ) {
        product += (uint64_t)( (unsigned __int128)digits * power.low >> 64 );
    }
    const uint64_t high = (uint64_t)( product >> 64 ), low = (uint64_t)product;
    const int top = (int)( high >> 63 );
    const int shift = top + 64 - SIGNIFICAND_BITS - 3;
    uint64_t significand = high >> shift;
    int binary = (int)( ( ( 152170 + 65536 ) * exponent ) >> 16 ) + 63 + top - zeros + 1023;
    if ( binary <= 0 ) { // below the normal ones
        if ( binary <= -63 ) {
            return 0;
        }
        significand >>= 1 - binary;
        significand = ( significand + ( significand & 1 ) ) >> 1;
        return realFromBits( significand ); // its highest bit makes it normal
    }
    // Halfway between two doubles, which only these powers can give: to the even one.
    if ( low <= 1 && exponent >= -4 && exponent <= 23 && ( significand & 3 ) == 1 && significand << shift == high ) {
        significand &= ~(uint64_t)1;
    }
    significand = ( significand + ( significand & 1 ) ) >> 1;
    if ( significand >> ( SIGNIFICAND_BITS + 1 ) ) {
        significand >>= 1;
        binary++;
    }
    if ( binary >= EXPONENT_MAX ) {
        return realInfinity();
    }
    return realFromBits( ( significand & ~( (uint64_t)1 << SIGNIFICAND_BITS ) ) | (uint64_t)binary
                                                                                      << SIGNIFICAND_BITS );
}
// By the C library: all digits that can matter, one more that stands for the rest, and an exponent.
template <typename CHAR>
static double realByLibrary( const CHAR *text, const REAL_SCAN &scan )
{
    char plain[ EXACT_DIGITS + 32 ];
    ZU_INT count = 0;
    bool more = false;
    for ( ZU_INT i = scan.first; i < scan.last; i++ ) {
        if ( text[ i ] == '.' ) {
            continue;
        }
        if ( count < EXACT_DIGITS ) {
            plain[ count++ ] = (char)text[ i ];
        } else {
            more = more || text[ i ] != '0';
        }
    }
    if ( more ) {
        plain[ count++ ] = '1';
    }
    ZU_INT exponent = zuIntConstrain( scan.leading, -EXPONENT_SURE, EXPONENT_SURE ) - ( count - 1 );
    snprintf( plain + count, sizeof plain - (size_t)count, "e%lld", (long long)exponent );
    return strtod( plain, nullptr );
}
// The double nearest to the digits.
template <typename CHAR>
static double realFromScan( const CHAR *text, const REAL_SCAN &scan )
{
    if ( scan.count == 0 ) {
        return 0;
    }
    const ZU_INT exponent = scan.leading - ( zuIntMin( scan.count, INTEGER_DIGITS ) - 1 );
    const double value = realNearest( scan.digits, exponent );
    // With digits cut off, the number lies between this one and the next; where both are the same, that is it.
    return !scan.more || value == realNearest( scan.digits + 1, exponent ) ? value : realByLibrary( text, scan );
}

// Reads digits and a point from `pos` on; returns the position behind them, or -1 if there is no digit.
template <typename CHAR>
static ZU_INT realScanDigits( const CHAR *text, ZU_INT length, ZU_INT pos, REAL_SCAN *scan )
{
    bool anyDigit = false, behindPoint = false;
    ZU_INT zeros = 0, integers = 0; // zeros behind the point ahead of the first digit, and digits from it to the point
    for ( ; pos < length; pos++ ) {
        if ( text[ pos ] == '.' && !behindPoint ) {
            behindPoint = true;
            continue;
        }
        if ( !realIsDigit( (ZU_CHAR)text[ pos ] ) ) {
            break;
        }
        anyDigit = true;
        const uint64_t digit = (uint64_t)text[ pos ] - '0';
        if ( scan->count == 0 && digit == 0 ) {
            zeros += behindPoint;
            continue;
        }
        if ( scan->count == 0 ) {
            scan->first = pos;
        }
        if ( scan->count < INTEGER_DIGITS ) {
            scan->digits = scan->digits * 10 + digit;
        } else {
            scan->more = scan->more || digit != 0;
        }
        scan->count++;
        integers += !behindPoint;
    }
    scan->last = pos;
    scan->leading = integers > 0 ? integers - 1 : -zeros - 1;
    return anyDigit ? pos : -1;
}
// Adds an exponent, if one stands at `pos`, to `*power` and returns the position behind it.
template <typename CHAR>
static ZU_INT realScanExponent( const CHAR *text, ZU_INT length, ZU_INT pos, ZU_INT *power )
{
    if ( pos == length || realLower( text[ pos ] ) != 'e' ) {
        return pos;
    }
    ZU_INT next = pos + 1;
    const bool negative = next < length && text[ next ] == '-';
    next += negative || ( next < length && text[ next ] == '+' );
    if ( next == length || !realIsDigit( (ZU_CHAR)text[ next ] ) ) {
        return pos; // the "e" is not the number's
    }
    ZU_INT exponent = 0;
    for ( ; next < length && realIsDigit( (ZU_CHAR)text[ next ] ); next++ ) {
        exponent = zuIntMin( exponent * 10 + (ZU_INT)text[ next ] - '0', EXPONENT_LIMIT / 10 );
    }
    *power += negative ? -exponent : exponent;
    return next;
}

// Takes eight digits at a time, as long as bytes have so many.  The sums and products within a word join neighbours:
// digits to pairs, these to fours, and these to eight.
template <typename CHAR>
[[gnu::always_inline]] static inline ZU_INT realScanEights( const CHAR *text, ZU_INT length, ZU_INT pos, uint64_t *all )
{
    if constexpr ( sizeof( CHAR ) == 1 && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ) {
        for ( ; length - pos >= 8; pos += 8 ) {
            uint64_t eight;
            memcpy( &eight, text + pos, sizeof eight );
            const uint64_t digits = eight - 0x3030303030303030;
            if ( ( ( digits + 0x7676767676767676 ) | digits ) & 0x8080808080808080 ) {
                break;
            }
            eight = digits * 10 + ( digits >> 8 );
            eight = ( ( eight & 0x000000FF000000FF ) * 0x000F424000000064 +
                      ( eight >> 16 & 0x000000FF000000FF ) * 0x0000271000000001 ) >>
                    32;
            *all = *all * 100000000 + eight;
        }
    }
    return pos;
}

// Reads what nearly all numbers are, up to 19 digits in all, with nothing counted but these: 22 ns in place of 59.
// Returns the position behind the digits, or -1 for all others.
template <typename CHAR>
[[gnu::always_inline]] static inline ZU_INT realScanShort( const CHAR *text, ZU_INT length, ZU_INT begin,
                                                           uint64_t *digits, ZU_INT *exponent )
{
    uint64_t all = 0;
    ZU_INT pos = realScanEights( text, length, begin, &all );
    for ( ; pos < length && realIsDigit( (ZU_CHAR)text[ pos ] ); pos++ ) {
        all = all * 10 + ( (uint64_t)text[ pos ] - '0' );
    }
    ZU_INT count = pos - begin;
    if ( pos < length && text[ pos ] == '.' ) {
        const ZU_INT point = ++pos;
        for ( pos = realScanEights( text, length, pos, &all ); pos < length && realIsDigit( (ZU_CHAR)text[ pos ] );
              pos++ ) {
            all = all * 10 + ( (uint64_t)text[ pos ] - '0' );
        }
        *exponent = point - pos;
        count += pos - point;
    }
    *digits = all;
    return count > 0 && count <= INTEGER_DIGITS ? pos : -1;
}

// Reads what is left to realRead: a number of more digits, and what has none.
template <typename CHAR>
[[gnu::noinline]] static ZU_INT realReadOther( const CHAR *text, ZU_INT length, ZU_INT begin, double *value )
{
    REAL_SCAN scan = {};
    ZU_INT end = realScanDigits( text, length, begin, &scan );
    if ( end >= 0 ) {
        end = realScanExponent( text, length, end, &scan.leading );
        *value = realFromScan( text, scan );
    } else if ( realBeginsWith( text + begin, length - begin, "nan" ) ) {
        end = begin + 3;
        *value = __builtin_nan( "" );
    } else if ( realBeginsWith( text + begin, length - begin, "inf" ) ) {
        end = begin + ( realBeginsWith( text + begin, length - begin, "infinity" ) ? 8 : 3 );
        *value = realInfinity();
    } else {
        return 0;
    }
    return end;
}
// Reads a number at the front and returns how many characters it has, 0 if there is none.
template <typename CHAR>
static ZU_INT realRead( const CHAR *text, ZU_INT length, double *value )
{
    const bool negative = length > 0 && text[ 0 ] == '-';
    const ZU_INT begin = negative || ( length > 0 && text[ 0 ] == '+' );
    uint64_t digits = 0;
    ZU_INT exponent = 0;
    double read = 0;
    ZU_INT end = realScanShort( text, length, begin, &digits, &exponent );
    if ( ZU___LIKELY( end >= 0 ) ) {
        if ( end < length ) {
            end = realScanExponent( text, length, end, &exponent );
        }
        read = digits == 0 ? 0 : realNearest( digits, exponent );
    } else {
        end = realReadOther( text, length, begin, &read );
    }
    *value = negative && end > 0 ? -read : read;
    return end;
}
template <typename CHAR>
static ZU_BOOL realTryRead( const CHAR *text, ZU_INT length, double *value, ZU_INT *consumed )
{
    double read = 0;
    const ZU_INT count = realRead( text, length, &read );
    if ( value ) {
        *value = read;
    }
    if ( consumed ) {
        *consumed = count;
    }
    return count > 0;
}

ZU_BOOL zuRealTextTryRead( ZU_STRING *zus, double *value )
{
    ZU_ASSERT( zus );
    double read = 0;
    const bool whole = realRead( zuStringBacking( zus ), zuStringLength( zus ), &read ) == zuStringLength( zus ) &&
                       zuStringLength( zus ) > 0;
    if ( value ) {
        *value = whole ? read : 0;
    }
    return whole;
}
ZU_BOOL zuRealTextTryReadChars( const ZU_CHAR *chars, ZU_INT length, double *value, ZU_INT *consumed )
{
    ZU_ASSERT( length >= 0 );
    ZU_ASSERT( chars || length == 0 );
    return realTryRead( chars, length, value, consumed );
}
ZU_BOOL zuRealTextTryReadUtf8( const char *utf8, ZU_INT length, double *value, ZU_INT *consumed )
{
    ZU_ASSERT( length >= -1 );
    ZU_ASSERT( utf8 || length == 0 );
    return realTryRead( utf8, length < 0 ? (ZU_INT)strlen( utf8 ) : length, value, consumed );
}
