// Each encoder knows the length of its text before it opens one gap behind `*dest`, which it then fills from left to
// right.  The functions that return a string append to an empty one.

#include "zu/base/zu_format.h"

#include "zu/base/zu_format_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/sys/zu_real.h"
#include "zu/unicode/zu_unicode_properties.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <type_traits>

static constexpr char LOWER_DIGITS[] = "0123456789abcdefghijklmnopqrstuvwxyz";
static constexpr char UPPER_DIGITS[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
static constexpr ZU_INT BASE_MIN = 2;
static constexpr ZU_INT BASE_MAX = 36;

// What shows the base of a number, in the order in which decoding tries them.  The mnemonics come in pairs of lower and
// upper case; the numbers follow in order, so that each base finds its own.
struct BASE_PREFIX {
    char text[ 4 ];
    ZU_INT base;
};
static constexpr BASE_PREFIX BASE_PREFIXES[] = {
    { "0b", 2 },   { "0B", 2 },   { "0o", 8 },   { "0O", 8 },   { "0d", 10 },  { "0D", 10 },  { "0x", 16 },
    { "0X", 16 },  { "2:", 2 },   { "3:", 3 },   { "4:", 4 },   { "5:", 5 },   { "6:", 6 },   { "7:", 7 },
    { "8:", 8 },   { "9:", 9 },   { "10:", 10 }, { "11:", 11 }, { "12:", 12 }, { "13:", 13 }, { "14:", 14 },
    { "15:", 15 }, { "16:", 16 }, { "17:", 17 }, { "18:", 18 }, { "19:", 19 }, { "20:", 20 }, { "21:", 21 },
    { "22:", 22 }, { "23:", 23 }, { "24:", 24 }, { "25:", 25 }, { "26:", 26 }, { "27:", 27 }, { "28:", 28 },
    { "29:", 29 }, { "30:", 30 }, { "31:", 31 }, { "32:", 32 }, { "33:", 33 }, { "34:", 34 }, { "35:", 35 },
    { "36:", 36 },
};
static constexpr size_t MNEMONIC_PREFIXES = 8;
static_assert( sizeof BASE_PREFIXES / sizeof BASE_PREFIXES[ 0 ] == MNEMONIC_PREFIXES + BASE_MAX - BASE_MIN + 1 );

// Start-up
static ZU_STRING *lowerTrue = nullptr;
static ZU_STRING *lowerFalse = nullptr;
static ZU_STRING *upperTrue = nullptr;
static ZU_STRING *upperFalse = nullptr;

void zu___FormatStartup( void )
{
    lowerTrue = zuStringCreateFromAscii( "true", -1 );
    lowerFalse = zuStringCreateFromAscii( "false", -1 );
    upperTrue = zuStringCreateFromAscii( "TRUE", -1 );
    upperFalse = zuStringCreateFromAscii( "FALSE", -1 );
}
void zu___FormatShutdown( void )
{
    ZU_REF_RELEASE( upperFalse );
    ZU_REF_POISON( upperFalse );
    ZU_REF_RELEASE( upperTrue );
    ZU_REF_POISON( upperTrue );
    ZU_REF_RELEASE( lowerFalse );
    ZU_REF_POISON( lowerFalse );
    ZU_REF_RELEASE( lowerTrue );
    ZU_REF_POISON( lowerTrue );
}

// Opens a gap of `count` elements, which are not 0, behind `*dest`.  A format asks for a gap with each of its parts,
// and nearly always takes free elements behind a text of its own; the front of an empty text is its end, and free
// elements ahead of it would come first.
[[gnu::noinline]] static ZU_CHAR *formatMakeRoom( ZU_STRING **dest, ZU_INT count )
{
    zu___StringUnshare( dest );
    return zu___StringMakeRoom( *dest, ( *dest )->length, count );
}
static inline ZU_CHAR *formatOpenGap( ZU_STRING **dest, ZU_INT count )
{
    ZU_STRING *zus = *dest;
    if ( ZU_REF_RETAIN_COUNT( zus ) != 1 || zus->bspace < count || ( zus->length == 0 && zus->fspace > 0 ) ) {
        return formatMakeRoom( dest, count );
    }
    ZU_CHAR *gap = zus->chars + zus->fspace + zus->length;
    zus->length += count;
    zus->bspace -= count;
    return gap;
}
static ZU_CHAR *formatFill( ZU_CHAR *dest, ZU_CHAR ch, ZU_INT count )
{
    for ( ZU_INT i = 0; i < count; i++ ) {
        dest[ i ] = ch;
    }
    return dest + count;
}

// Text
ZU_CHAR *zu___FormatOpenField( ZU_STRING **dest, ZU_INT length, ZU_INT minWidth, ZU_INT flags )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( minWidth >= 0 );
    ZU_INT padding = minWidth > length ? minWidth - length : 0;
    if ( length + padding == 0 ) {
        return nullptr;
    }
    ZU_CHAR *pos = formatOpenGap( dest, length + padding );
    if ( flags & ZU_FORMAT_FLAG_LEFTALIGN ) {
        formatFill( pos + length, ' ', padding );
    } else {
        pos = formatFill( pos, ' ', padding );
    }
    return pos;
}
void zu___FormatEncodeChars( ZU_STRING **dest, const ZU_CHAR *src, ZU_INT srcLength, ZU_INT minWidth, ZU_INT flags )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src || srcLength == 0 );
    ZU_ASSERT( srcLength >= 0 );
    ZU_ASSERT( zuCharsAllOk( src, srcLength ) );
    ZU_CHAR *text = zu___FormatOpenField( dest, srcLength, minWidth, flags );
    if ( srcLength > 0 ) {
        memcpy( text, src, (size_t)srcLength * sizeof( ZU_CHAR ) );
    }
}
ZU_STRING *zuFormatEncodeChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT minWidth, ZU_INT flags )
{
    ZU_STRING *text = zu___StringCreateEmpty();
    zu___FormatEncodeChars( &text, src, srcLength, minWidth, flags );
    return text;
}

// Truth values
static ZU_STRING *formatBoolNoRetain( ZU_BOOL value, ZU_INT flags )
{
    if ( flags & ZU_FORMAT_FLAG_UPPERCASE ) {
        return value ? upperTrue : upperFalse;
    }
    return value ? lowerTrue : lowerFalse;
}
void zu___FormatEncodeBool( ZU_STRING **dest, ZU_BOOL value, ZU_INT minWidth, ZU_INT flags )
{
    ZU_STRING *word = formatBoolNoRetain( value, flags );
    zu___FormatEncodeChars( dest, zuStringBacking( word ), word->length, minWidth, flags );
}
ZU_STRING *zuFormatEncodeBool( ZU_BOOL value, ZU_INT minWidth, ZU_INT flags )
{
    ZU_ASSERT( minWidth >= 0 );
    ZU_STRING *word = formatBoolNoRetain( value, flags );
    if ( minWidth <= word->length ) {
        return zuStringRetain( word );
    }
    return zuFormatEncodeChars( zuStringBacking( word ), word->length, minWidth, flags );
}

// Numbers in general

static const char *formatDigits( ZU_INT flags )
{
    return flags & ZU_FORMAT_FLAG_UPPERCASE ? UPPER_DIGITS : LOWER_DIGITS;
}

// Returns what shows `base` under `flags`, null for nothing.
static const BASE_PREFIX *formatBasePrefix( ZU_INT base, ZU_INT flags )
{
    if ( !( flags & ( ZU_FORMAT_FLAG_BASEMNEMONIC | ZU_FORMAT_FLAG_BASENUMERIC ) ) ||
         ( base == 10 && !( flags & ZU_FORMAT_FLAG_BASEDECIMAL ) ) ) {
        return nullptr;
    }
    if ( flags & ZU_FORMAT_FLAG_BASEMNEMONIC ) {
        for ( size_t i = flags & ZU_FORMAT_FLAG_UPPERCASE ? 1 : 0; i < MNEMONIC_PREFIXES; i += 2 ) {
            if ( BASE_PREFIXES[ i ].base == base ) {
                return &BASE_PREFIXES[ i ];
            }
        }
    }
    return &BASE_PREFIXES[ MNEMONIC_PREFIXES + (size_t)( base - BASE_MIN ) ];
}
// Returns the sign that is shown, 0 for none.
static ZU_CHAR formatSign( bool negative, ZU_INT flags )
{
    if ( negative ) {
        return flags & ZU_FORMAT_FLAG_NOSIGN ? 0 : '-';
    }
    return flags & ZU_FORMAT_FLAG_PLUSPOS ? '+' : flags & ZU_FORMAT_FLAG_BLANKPOS ? ' ' : 0;
}

// The number of code points of sign and prefix.
static ZU_INT formatMeasureHead( ZU_CHAR sign, const BASE_PREFIX *prefix )
{
    return ( sign ? 1 : 0 ) + ( prefix ? (ZU_INT)strlen( prefix->text ) : 0 );
}

// Appends the field of a number but for the `length` code points of its digits and point, and returns their place.  The
// flags are normalized; a negative `minWidth` counts as none.
static ZU_CHAR *formatOpenNumber( ZU_STRING **dest, bool negative, ZU_INT length, ZU_INT base, ZU_INT minWidth,
                                  ZU_INT flags )
{
    ZU_CHAR sign = formatSign( negative, flags );
    const BASE_PREFIX *prefix = formatBasePrefix( base, flags );
    ZU_INT ahead = formatMeasureHead( sign, prefix );
    ZU_ASSERT( ZU_INT_ADD_OK( length, ahead ) );
    ZU_INT padding = minWidth > length + ahead ? minWidth - ( length + ahead ) : 0;
    ZU_CHAR *pos = formatOpenGap( dest, ahead + length + padding );
    if ( !( flags & ( ZU_FORMAT_FLAG_LEFTALIGN | ZU_FORMAT_FLAG_ZEROPAD ) ) ) {
        pos = formatFill( pos, ' ', padding );
    }
    if ( sign ) {
        *pos++ = sign;
    }
    for ( const char *text = prefix ? prefix->text : ""; *text; text++ ) {
        *pos++ = (uint8_t)*text;
    }
    if ( flags & ZU_FORMAT_FLAG_ZEROPAD ) {
        pos = formatFill( pos, '0', padding );
    } else if ( flags & ZU_FORMAT_FLAG_LEFTALIGN ) {
        formatFill( pos + length, ' ', padding );
    }
    return pos;
}

// Integers.  Digits come from the last to the first; they are counted ahead, so that they are written where they stay.
// Division by a constant is a multiplication, and by a power of two a shift.

// Powers of 10 that an unsigned 64-bit integer holds, by their exponent; the first is made 0, so that 0 has one digit.
struct POWERS_OF_TEN {
    uint64_t of[ 20 ] = {};
};
static constexpr POWERS_OF_TEN POWERS = [] {
    POWERS_OF_TEN powers;
    for ( uint64_t i = 1, power = 10; i < 20; i++, power *= 10 ) {
        powers.of[ i ] = power;
    }
    return powers;
}();

// std::has_single_bit counts bits, by a function of the compiler's where the processor need not know how.
static inline bool formatIsPowerOfTwo( ZU_INT base )
{
    return ( base & ( base - 1 ) ) == 0;
}
static inline ZU_INT formatCountDigits( uint64_t magnitude, ZU_INT base )
{
    ZU_INT bits = ZU_INT_BITS - std::countl_zero( magnitude | 1 );
    if ( base == 10 ) {
        ZU_INT below = bits * 1233 >> 12; // bits * log10( 2 ) rounded down, which is exact for up to 64 bits
        return below + ( magnitude >= POWERS.of[ below ] );
    }
    if ( formatIsPowerOfTwo( base ) ) {
        ZU_INT digitBits = std::countr_zero( (uint64_t)base );
        return ( bits + digitBits - 1 ) / digitBits;
    }
    ZU_INT digits = 1;
    while ( ( magnitude /= (uint64_t)base ) > 0 ) {
        digits++;
    }
    return digits;
}
// Pairs of decimal digits, as they are stored.
struct DECIMAL_PAIRS {
    ZU_CHAR of[ 100 ][ 2 ] = {};
};
static constexpr DECIMAL_PAIRS PAIRS = [] {
    DECIMAL_PAIRS pairs;
    for ( ZU_CHAR i = 0; i < 100; i++ ) {
        pairs.of[ i ][ 0 ] = '0' + i / 10;
        pairs.of[ i ][ 1 ] = '0' + i % 10;
    }
    return pairs;
}();
static inline ZU_CHAR *formatWritePair( ZU_CHAR *end, uint32_t pair )
{
    memcpy( end - 2, PAIRS.of[ pair ], sizeof PAIRS.of[ pair ] );
    return end - 2;
}
// Writes decimal digits ahead of `end`.  Each division waits for the one before, so that four digits at a time wait
// less, and a pair is one store: a number of 64 bits takes 5 ns instead of 9.
static inline void formatWriteDecimals( ZU_CHAR *end, uint64_t magnitude )
{
    for ( ; magnitude >= 10000; magnitude /= 10000 ) {
        uint32_t four = (uint32_t)( magnitude % 10000 );
        end = formatWritePair( end, four % 100 );
        end = formatWritePair( end, four / 100 );
    }
    uint32_t rest = (uint32_t)magnitude;
    if ( rest >= 100 ) {
        end = formatWritePair( end, rest % 100 );
        rest /= 100;
    }
    if ( rest >= 10 ) {
        formatWritePair( end, rest );
    } else {
        end[ -1 ] = '0' + rest;
    }
}
// Writes the digits ahead of `end`.
static void formatWriteDigits( ZU_CHAR *end, uint64_t magnitude, ZU_INT base, const char *alphabet )
{
    if ( base == 10 ) {
        formatWriteDecimals( end, magnitude );
    } else if ( formatIsPowerOfTwo( base ) ) {
        int digitBits = std::countr_zero( (uint64_t)base );
        do {
            *--end = (uint8_t)alphabet[ magnitude & (uint64_t)( base - 1 ) ];
            magnitude >>= digitBits;
        } while ( magnitude > 0 );
    } else {
        do {
            *--end = (uint8_t)alphabet[ magnitude % (uint64_t)base ];
            magnitude /= (uint64_t)base;
        } while ( magnitude > 0 );
    }
}

// The magnitude of ZU_INT_MIN is no ZU_INT.
static uint64_t formatMagnitude( ZU_INT value )
{
    return value < 0 ? 0 - (uint64_t)value : (uint64_t)value;
}
// A decimal number that is as wide as it is and has no flags, as most are: as a text of its own in 22 ns instead of 34.
static inline bool formatIsPlain( ZU_INT base, ZU_INT minWidth, ZU_INT flags )
{
    return base == 10 && minWidth <= 0 && flags == 0;
}
static inline void formatAppendPlainInt( ZU_STRING **dest, ZU_INT value )
{
    uint64_t magnitude = formatMagnitude( value );
    ZU_INT length = formatCountDigits( magnitude, 10 );
    ZU_CHAR *pos = formatOpenGap( dest, length + ( value < 0 ) );
    if ( value < 0 ) {
        *pos++ = '-';
    }
    formatWriteDecimals( pos + length, magnitude );
}
void zu___FormatEncodeInt( ZU_STRING **dest, ZU_INT value, ZU_INT base, ZU_INT minWidth, ZU_INT flags )
{
    ZU_ASSERT( base >= 2 );
    ZU_ASSERT( base <= 36 );
    if ( formatIsPlain( base, minWidth, flags ) ) {
        formatAppendPlainInt( dest, value );
        return;
    }
    flags = zuFormatFlagsNormalize( flags );
    uint64_t magnitude = formatMagnitude( value );
    ZU_INT length = formatCountDigits( magnitude, base );
    ZU_CHAR *digits = formatOpenNumber( dest, value < 0, length, base, minWidth, flags );
    formatWriteDigits( digits + length, magnitude, base, formatDigits( flags ) );
}
ZU_INT zu___FormatMeasureInt( ZU_INT value, ZU_INT base, ZU_INT flags )
{
    ZU_ASSERT( base >= 2 );
    ZU_ASSERT( base <= 36 );
    flags = zuFormatFlagsNormalize( flags );
    return formatMeasureHead( formatSign( value < 0, flags ), formatBasePrefix( base, flags ) ) +
           formatCountDigits( formatMagnitude( value ), base );
}
ZU_STRING *zuFormatEncodeInt( ZU_INT value, ZU_INT base, ZU_INT minWidth, ZU_INT flags )
{
    ZU_STRING *text = zu___StringCreateEmpty();
    if ( formatIsPlain( base, minWidth, flags ) ) {
        formatAppendPlainInt( &text, value );
        return text;
    }
    zu___FormatEncodeInt( &text, value, base, minWidth, flags );
    return text;
}

// Real numbers
//
// The digits are defined by arithmetic on doubles, each step rounded to a double, and are the same on every platform.
// So the build keeps the compiler from fusing a product with a sum (-ffp-contract=off), which rounds once for both.
//
//     integer   `power` is the greatest power of the base that is not above the number, found by dividing the truncated
//               number by the base until it is 0.  digit = trunc( rest / power ), rest -= digit * power,
//               power = trunc( power / base ), as long as power is at least 1
//     fraction  digit = trunc( base * ( number - trunc( number ) ) ), number *= base
//
// The sign has no influence, since rounding to nearest is symmetric.
//
// Below 2^53 the integer part can be done in integers.  All of power, digit * power and rest are multiples of an ulp of
// the number that need no more bits than it has, so they are exact, and a quotient of doubles x / y is never rounded up
// to an integer n that it is below: with n * y a double too, x is an ulp or more below it, and the quotient more than
// half an ulp below n.  So each truncated quotient is that of the integers.
//
// In the fraction, base * ( 1 - 2^-53 ) rounds below base for every base, so that the digit is always one of the base.

static_assert( FLT_EVAL_METHOD == 0, "each step must round to double" );

static constexpr double EXACT_END = 9007199254740992.0;    // 2^53: below it integer digits can be done in integers
static constexpr double FRACTION_END = 4503599627370496.0; // 2^52: from here on doubles have no fraction
static constexpr ZU_INT DEFAULT_PRECISION = 6;
static constexpr ZU_CHAR NAN_TEXT[] = { 'N', 'A', 'N' };
static constexpr ZU_CHAR INF_TEXT[] = { 'I', 'N', 'F' };

// The integer part of a number: the count of its digits and, from EXACT_END on, the power of the base of the first.
struct INTEGER_PART {
    ZU_INT digits;
    double power;
};
static INTEGER_PART formatMeasureLarge( double magnitude, double base )
{
    INTEGER_PART part = { 1, 1.0 };
    double rest = zuRealTrunc( magnitude / base );
    while ( rest >= 1.0 ) {
        part.digits++;
        part.power *= base;
        rest = zuRealTrunc( rest / base );
    }
    return part;
}

// Powers above 2^53 are not exact.  In bases other than 10 and powers of two they may come down to 1 a place early, and
// a quotient may reach the base.  Both happen behind the digits that a double holds; the field still gets its count of
// digits, and each is one of the base.
static void formatWriteLarge( ZU_CHAR *dest, double magnitude, INTEGER_PART part, double base, const char *alphabet )
{
    double rest = magnitude;
    double power = part.power;
    for ( ZU_INT i = 0; i < part.digits; i++ ) {
        double digit = power >= 1.0 ? zuRealTrunc( rest / power ) : 0.0;
        rest -= digit * power;
        power = zuRealTrunc( power / base );
        digit = std::fabs( digit );
        dest[ i ] = (uint8_t)alphabet[ (ZU_INT)( digit < base - 1.0 ? digit : base - 1.0 ) ];
    }
}

// Not inlined: among all that its caller holds, the number would go through memory from digit to digit.
[[gnu::noinline]] static void formatWriteFraction( ZU_CHAR *dest, ZU_INT precision, double magnitude, double base,
                                                   const char *alphabet )
{
    ZU_INT i = 0;
    for ( ; i < precision && magnitude < FRACTION_END; i++ ) {
        double fraction = magnitude - (double)(ZU_INT)magnitude;
        dest[ i ] = (uint8_t)alphabet[ (ZU_INT)( base * fraction ) ];
        magnitude *= base;
    }
    formatFill( dest + i, '0', precision - i );
}

void zu___FormatEncodeReal( ZU_STRING **dest, double value, ZU_INT base, ZU_INT minWidth, ZU_INT precision,
                            ZU_INT flags )
{
    ZU_ASSERT( base >= 2 );
    ZU_ASSERT( base <= 36 );
    ZU_ASSERT( minWidth >= 0 );
    ZU_ASSERT( precision >= -1 );
    if ( !std::isfinite( value ) ) {
        zu___FormatEncodeChars( dest, std::isnan( value ) ? NAN_TEXT : INF_TEXT, 3, minWidth, flags );
        return;
    }
    flags = zuFormatFlagsNormalize( flags );
    if ( precision < 0 ) {
        precision = DEFAULT_PRECISION;
    }
    const char *alphabet = formatDigits( flags );
    double magnitude = std::fabs( value );
    double realBase = (double)base;
    bool large = magnitude >= EXACT_END;
    INTEGER_PART part = { 0, 0.0 };
    if ( large ) {
        part = formatMeasureLarge( magnitude, realBase );
    } else {
        part.digits = formatCountDigits( (uint64_t)magnitude, base );
    }
    ZU_INT length = part.digits;
    if ( precision != 0 ) {
        ZU_ASSERT( ZU_INT_ADD_OK( precision, 1 ) );
        ZU_ASSERT( ZU_INT_ADD_OK( length, precision + 1 ) );
        length += precision + 1;
    }
    ZU_CHAR *text = formatOpenNumber( dest, value < 0.0, length, base, minWidth, flags );
    if ( large ) {
        formatWriteLarge( text, magnitude, part, realBase, alphabet );
    } else {
        formatWriteDigits( text + part.digits, (uint64_t)magnitude, base, alphabet );
    }
    if ( precision != 0 ) {
        text[ part.digits ] = '.';
        formatWriteFraction( text + part.digits + 1, precision, magnitude, realBase, alphabet );
    }
}
ZU_STRING *zuFormatEncodeReal( double value, ZU_INT base, ZU_INT minWidth, ZU_INT precision, ZU_INT flags )
{
    ZU_STRING *text = zu___StringCreateEmpty();
    zu___FormatEncodeReal( &text, value, base, minWidth, precision, flags );
    return text;
}

// Decoding

// Asserts that the `srcLength` code points from `srcOffset` on are within the text of `src`.
#define DECODE_ASSERT_RANGE( src, srcOffset, srcLength )    \
    do {                                                    \
        ZU_ASSERT( src );                                   \
        ZU_ASSERT( srcOffset >= 0 );                        \
        ZU_ASSERT( srcLength >= 0 );                        \
        ZU_ASSERT( ZU_INT_ADD_OK( srcOffset, srcLength ) ); \
        ZU_ASSERT( srcOffset + srcLength <= src->length );  \
    } while ( 0 )

// Stores results where they are asked for.
template <typename VALUE>
static void decodeStore( VALUE *value, std::type_identity_t<VALUE> newValue, ZU_INT *consumed, ZU_INT newConsumed )
{
    if ( value ) {
        *value = newValue;
    }
    if ( consumed ) {
        *consumed = newConsumed;
    }
}

struct DECODE_CURSOR {
    const ZU_CHAR *pos;
    const ZU_CHAR *end;
    ZU_INT base;   // -1 until it is known
    bool negative; // by the sign that was read
};

// White space and digits are ASCII nearly always, and are told without the character database; that knows code points
// only, while a source may hold anything.
static constexpr ZU_CHAR ASCII_END = 0x80;

static bool decodeIsWhiteSpace( ZU_CHAR ch )
{
    if ( ch < ASCII_END ) {
        return ch == ' ' || ( ch >= '\t' && ch <= '\r' );
    }
    return ZU_CHAR_OK( ch ) && zuUnicodeIsWhiteSpace( ch );
}
static void decodeSkipWhiteSpace( DECODE_CURSOR *cursor )
{
    while ( cursor->pos < cursor->end && decodeIsWhiteSpace( *cursor->pos ) ) {
        cursor->pos++;
    }
}
// The value of the digit at the cursor, which stays where it is; -1 if there is none.
static ZU_INT decodeDigit( const DECODE_CURSOR *cursor )
{
    if ( cursor->pos == cursor->end ) {
        return -1;
    }
    ZU_CHAR ch = *cursor->pos;
    if ( ch >= ASCII_END ) {
        return ZU_CHAR_OK( ch ) ? zuUnicodeBaseNDigitValue( ch, cursor->base ) : -1;
    }
    ZU_INT value = ch - '0' < 10 ? ch - '0' : ( ch | 0x20 ) - 'a' < 26 ? ( ch | 0x20 ) - 'a' + 10 : BASE_MAX;
    return value < cursor->base ? value : -1;
}
static bool decodeTakeSign( DECODE_CURSOR *cursor, bool plusToo )
{
    if ( cursor->pos == cursor->end || !( *cursor->pos == '-' || ( plusToo && *cursor->pos == '+' ) ) ) {
        return false;
    }
    cursor->negative = *cursor->pos == '-';
    cursor->pos++;
    return true;
}
// Whether a prefix may stand at the cursor: each is one or two digits and then a letter or a colon.  Most numbers have
// none, and shall not be compared with all of them.
static bool decodeMayBePrefix( const DECODE_CURSOR *cursor )
{
    ZU_INT length = cursor->end - cursor->pos;
    return length >= 2 && cursor->pos[ 0 ] - '0' < 10 &&
           ( cursor->pos[ 1 ] >= ':' || ( length >= 3 && cursor->pos[ 2 ] == ':' ) );
}
static void decodeTakePrefix( DECODE_CURSOR *cursor )
{
    cursor->base = 10;
    if ( !decodeMayBePrefix( cursor ) ) {
        return;
    }
    for ( const BASE_PREFIX &prefix : BASE_PREFIXES ) {
        ZU_INT length = (ZU_INT)strlen( prefix.text );
        ZU_INT i = 0;
        while ( i < length && i < cursor->end - cursor->pos && cursor->pos[ i ] == (ZU_CHAR)prefix.text[ i ] ) {
            i++;
        }
        if ( i == length ) {
            cursor->base = prefix.base;
            cursor->pos += length;
            return;
        }
    }
}
// Takes all that stands ahead of the digits; false if the source ends within white space and the first sign.
static bool decodeTakeHead( DECODE_CURSOR *cursor, bool plusFirst )
{
    decodeSkipWhiteSpace( cursor );
    bool hasSign = decodeTakeSign( cursor, plusFirst );
    decodeSkipWhiteSpace( cursor );
    if ( cursor->pos == cursor->end ) {
        return false;
    }
    if ( cursor->base == -1 ) {
        decodeTakePrefix( cursor );
        decodeSkipWhiteSpace( cursor );
        if ( !hasSign && decodeTakeSign( cursor, true ) ) {
            decodeSkipWhiteSpace( cursor );
        }
    }
    return true;
}

// Reads a decimal number in ASCII of so few digits that they fit, blanks around it and a "-" ahead of it included: most
// are so, and take 8 ns instead of 18.  False for all others, and nothing is stored.
static constexpr ZU_INT PLAIN_DIGITS_MAX = 18; // which are within a ZU_INT for sure
[[gnu::noinline]] static bool decodeStoreBehindBlanks( const ZU_CHAR *src, const ZU_CHAR *pos, const ZU_CHAR *end,
                                                       ZU_INT total, ZU_INT *value, ZU_INT *consumed )
{
    while ( pos < end && decodeIsWhiteSpace( *pos ) ) {
        pos++;
    }
    decodeStore( value, total, consumed, pos - src );
    return true;
}
[[gnu::always_inline]] static inline bool decodePlainInt( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT *value,
                                                          ZU_INT *consumed )
{
    const ZU_CHAR *pos = src;
    const ZU_CHAR *end = src + srcLength;
    while ( pos < end && *pos == ' ' ) {
        pos++;
    }
    bool negative = pos < end && *pos == '-';
    pos += negative;
    const ZU_CHAR *digits = pos;
    ZU_INT total = 0;
    for ( ; pos < end && *pos - '0' < 10; pos++ ) {
        total = (ZU_INT)( (uint64_t)total * 10 + ( *pos - '0' ) ); // which may be nonsense if there are too many
    }
    if ( pos == digits || pos - digits > PLAIN_DIGITS_MAX || ( pos < end && *pos >= ASCII_END ) ) {
        return false; // perhaps there are digits of another script
    }
    total = negative ? -total : total;
    if ( pos < end ) {
        return decodeStoreBehindBlanks( src, pos, end, total, value, consumed );
    }
    decodeStore( value, total, consumed, srcLength );
    return true;
}
[[gnu::noinline]] static ZU_BOOL decodeAnyInt( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT base, ZU_INT *value,
                                               ZU_INT *consumed )
{
    decodeStore( value, 0, consumed, 0 );
    DECODE_CURSOR cursor = { src, src + srcLength, base, false };
    if ( !decodeTakeHead( &cursor, true ) ) {
        return false;
    }
    // The sign goes with each digit, since ZU_INT_MIN has no positive twin.
    ZU_INT total = 0;
    const ZU_CHAR *digits = cursor.pos;
    for ( ZU_INT digit; ( digit = decodeDigit( &cursor ) ) >= 0; cursor.pos++ ) {
        ZU_INT next;
        if ( __builtin_mul_overflow( total, cursor.base, &next ) ||
             __builtin_add_overflow( next, cursor.negative ? -digit : digit, &next ) ) {
            break;
        }
        total = next;
    }
    bool found = cursor.pos > digits;
    decodeSkipWhiteSpace( &cursor );
    decodeStore( value, total, consumed, cursor.pos - src );
    return found;
}
[[gnu::always_inline]] static inline ZU_BOOL decodeInt( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT base,
                                                        ZU_INT *value, ZU_INT *consumed )
{
    if ( base == 10 && decodePlainInt( src, srcLength, value, consumed ) ) {
        return ZU_TRUE;
    }
    ZU_ASSERT( base == -1 || base >= 2 );
    ZU_ASSERT( base <= 36 );
    return decodeAnyInt( src, srcLength, base, value, consumed );
}
ZU_BOOL zuFormatTryDecodeIntChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT base, ZU_INT *value, ZU_INT *consumed )
{
    ZU_ASSERT( src || srcLength == 0 );
    ZU_ASSERT( srcLength >= 0 );
    return decodeInt( src, srcLength, base, value, consumed );
}
ZU_BOOL zuFormatTryDecodeInt( ZU_STRING *src, ZU_INT srcOffset, ZU_INT srcLength, ZU_INT base, ZU_INT *value,
                              ZU_INT *consumed )
{
    DECODE_ASSERT_RANGE( src, srcOffset, srcLength );
    return decodeInt( src->chars + src->fspace + srcOffset, srcLength, base, value, consumed );
}

ZU_BOOL zuFormatTryDecodeRealChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT base, double *value, ZU_INT *consumed )
{
    ZU_ASSERT( src || srcLength == 0 );
    ZU_ASSERT( srcLength >= 0 );
    ZU_ASSERT( base == -1 || base >= 2 );
    ZU_ASSERT( base <= 36 );
    decodeStore( value, 0.0, consumed, 0 );
    DECODE_CURSOR cursor = { src, src + srcLength, base, false };
    if ( !decodeTakeHead( &cursor, false ) ) {
        return ZU_FALSE;
    }
    double realBase = (double)cursor.base;
    double total = 0.0;
    double scale = 0.0; // of the digit in turn, 0.0 ahead of the separator
    bool inFraction = false;
    const ZU_CHAR *digits = cursor.pos;
    for ( ; cursor.pos < cursor.end; cursor.pos++ ) {
        if ( !inFraction && ( *cursor.pos == '.' || *cursor.pos == ',' ) ) {
            inFraction = true;
            scale = 1.0 / realBase;
            continue;
        }
        ZU_INT digit = decodeDigit( &cursor );
        if ( digit < 0 ) {
            break;
        }
        double term = (double)( cursor.negative ? -digit : digit );
        if ( inFraction ) {
            total += term * scale;
            scale /= realBase;
        } else {
            total = realBase * total + term;
        }
    }
    bool found = cursor.pos > digits;
    decodeSkipWhiteSpace( &cursor );
    decodeStore( value, total, consumed, cursor.pos - src );
    return found;
}
ZU_BOOL zuFormatTryDecodeReal( ZU_STRING *src, ZU_INT srcOffset, ZU_INT srcLength, ZU_INT base, double *value,
                               ZU_INT *consumed )
{
    DECODE_ASSERT_RANGE( src, srcOffset, srcLength );
    return zuFormatTryDecodeRealChars( zuStringBacking( src ) + srcOffset, srcLength, base, value, consumed );
}

// Takes `word`, which is in upper case; letters of the source are of either case, 32 apart in ASCII.
static bool decodeTakeWord( DECODE_CURSOR *cursor, const char *word )
{
    ZU_INT length = (ZU_INT)strlen( word );
    if ( cursor->end - cursor->pos < length ) {
        return false;
    }
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_CHAR upper = (uint8_t)word[ i ];
        if ( cursor->pos[ i ] != upper && cursor->pos[ i ] != upper + 32 ) {
            return false;
        }
    }
    cursor->pos += length;
    return true;
}
ZU_BOOL zuFormatTryDecodeBoolChars( const ZU_CHAR *src, ZU_INT srcLength, ZU_BOOL numeric, ZU_BOOL *value,
                                    ZU_INT *consumed )
{
    ZU_ASSERT( src || srcLength == 0 );
    ZU_ASSERT( srcLength >= 0 );
    decodeStore( value, ZU_FALSE, consumed, 0 );
    double real;
    if ( numeric && zuFormatTryDecodeRealChars( src, srcLength, -1, &real, consumed ) ) {
        if ( value ) {
            *value = !zuRealEquals( real, 0.0 );
        }
        return ZU_TRUE;
    }
    DECODE_CURSOR cursor = { src, src + srcLength, 0, false };
    decodeSkipWhiteSpace( &cursor );
    bool isTrue = decodeTakeWord( &cursor, "TRUE" );
    bool found = isTrue || decodeTakeWord( &cursor, "FALSE" );
    if ( found ) {
        decodeSkipWhiteSpace( &cursor );
    }
    decodeStore( value, isTrue, consumed, cursor.pos - src );
    return found;
}
ZU_BOOL zuFormatTryDecodeBool( ZU_STRING *src, ZU_INT srcOffset, ZU_INT srcLength, ZU_BOOL numeric, ZU_BOOL *value,
                               ZU_INT *consumed )
{
    DECODE_ASSERT_RANGE( src, srcOffset, srcLength );
    return zuFormatTryDecodeBoolChars( zuStringBacking( src ) + srcOffset, srcLength, numeric, value, consumed );
}
