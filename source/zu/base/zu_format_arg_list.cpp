// A conversion is read into a FORMAT_DIRECTIVE and handed to the function that its name selects, which takes its
// arguments and appends to the result.  Nothing is made aside but the texts of objects.

#include "zu/base/zu_format_arg_list.h"

#include "zu/base/zu_format_internal.h"
#include "zu/base/zu_string_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

// What stands between "%" and the name.
struct FORMAT_DIRECTIVE {
    ZU_INT flags;  // ZU_FORMAT_FLAG_..., but for those that "#" selects
    ZU_INT hashes; // number of "#"
    bool giveUp;   // "~": the argument's reference or block goes over to the format
    bool hasPrecision;
    bool hasBase;
    ZU_INT width;     // 0 if there is none
    ZU_INT precision; // -1 if there is none
    ZU_INT base;      // 10 if there is none
};
typedef void FORMAT_FUNC( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args );

// A check that has a message beside its expression.
#define FORMAT_CHECK( expr, message )                         \
    do {                                                      \
        if ( ZU___UNLIKELY( !( expr ) ) ) {                   \
            zu___Abort( message, __FILE__, __LINE__, #expr ); \
        }                                                     \
    } while ( 0 )

static void formatPercent( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list * )
{
    if ( directive->hashes == 0 ) {
        *zu___FormatOpenField( dest, 1, 0, 0 ) = '%';
    }
}
static void formatRun( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list * )
{
    ZU_INT width = directive->width;
    ZU_INT precision = directive->hasPrecision ? directive->precision : '\t';
    ZU_ASSERT( width >= 0 );
    ZU_ASSERT( ZU_CHAR_OK( precision ) );
    ZU_CHAR *run = zu___FormatOpenField( dest, width, 0, 0 );
    for ( ZU_INT i = 0; i < width; i++ ) {
        run[ i ] = (ZU_CHAR)precision;
    }
}

// Values that are narrower than the slot they come in
static void formatBool( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    ZU_BOOL value = (ZU_BOOL)va_arg( *args, ZU_INT );
    zu___FormatEncodeBool( dest, value, directive->width, directive->flags );
}
static void formatChar( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    ZU_CHAR ch = (ZU_CHAR)va_arg( *args, ZU_INT );
    zu___FormatEncodeChars( dest, &ch, 1, directive->width, directive->flags );
}

// Numbers
static ZU_INT formatNumberFlags( const FORMAT_DIRECTIVE *directive )
{
    switch ( directive->hashes ) {
    case 1:
        return directive->flags | ZU_FORMAT_FLAG_BASEMNEMONIC;
    case 2:
        return directive->flags | ZU_FORMAT_FLAG_BASENUMERIC;
    default:
        return directive->flags;
    }
}
static void formatInt( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    ZU_INT value = va_arg( *args, ZU_INT );
    zu___FormatEncodeInt( dest, value, directive->base, directive->width, formatNumberFlags( directive ) );
}
static void formatHexadecimal( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    ZU_INT value = va_arg( *args, ZU_INT );
    ZU_INT base = directive->hasBase ? directive->base : 16;
    zu___FormatEncodeInt( dest, value, base, directive->width, formatNumberFlags( directive ) );
}
static void formatReal( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    double value = va_arg( *args, double );
    zu___FormatEncodeReal( dest, value, directive->base, directive->width, directive->precision,
                           formatNumberFlags( directive ) );
}
// As many digits as the greatest value has, so that texts are in the order of their numbers.
static void formatAligned( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    ZU_INT value = va_arg( *args, ZU_INT );
    ZU_INT precision = directive->precision;
    ZU_ASSERT( value >= 0 );
    if ( directive->hasPrecision ) {
        ZU_ASSERT( precision >= 0 );
        ZU_ASSERT( value <= precision );
    } else {
        precision = ZU_INT_MAX;
    }
    ZU_INT flags = ( formatNumberFlags( directive ) & ~ZU_FORMAT_FLAG_LEFTALIGN ) | ZU_FORMAT_FLAG_ZEROPAD;
    ZU_INT width = zuIntMax( directive->width, zu___FormatMeasureInt( precision, directive->base, flags ) );
    zu___FormatEncodeInt( dest, value, directive->base, width, flags );
}

// Texts

// Opens the field of a text of `length` code points, lowers `*length` to the number of those that the precision leaves,
// and returns their place.
static ZU_CHAR *formatOpenText( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, ZU_INT *length )
{
    if ( directive->precision >= 0 && directive->precision < *length ) {
        *length = directive->precision;
    }
    return zu___FormatOpenField( dest, *length, directive->width, directive->flags );
}
static void formatAppendString( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, ZU_STRING *src )
{
    ZU_INT length = src->length;
    ZU_CHAR *text = formatOpenText( dest, directive, &length );
    if ( length > 0 ) {
        memcpy( text, src->chars + src->fspace, (size_t)length * sizeof( ZU_CHAR ) );
    }
}
// Text in an encoding is measured first and then converted in its place.
template <typename UNIT>
static void formatAppendEncoded( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, const UNIT *src, ZU_INT srcLength,
                                 ZU_INT ( *convert )( ZU_CHAR *, ZU_INT, const UNIT *, ZU_INT ) )
{
    ZU_INT length = convert( nullptr, 0, src, srcLength );
    ZU_CHAR *text = formatOpenText( dest, directive, &length );
    if ( length > 0 ) {
        convert( text, length, src, srcLength );
    }
}
static void formatAppendNull( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive )
{
    formatAppendEncoded( dest, directive, "null", directive->hashes == 0 ? 4 : 0, zuCharsConvertFromAscii );
}

static void formatObj( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    ZU_OBJ *obj = va_arg( *args, ZU_OBJ * );
    if ( !obj ) {
        formatAppendNull( dest, directive );
        return;
    }
    ZU_STRING *text = zuObjToString( obj );
    formatAppendString( dest, directive, text );
    ZU_REF_RELEASE( text );
    if ( directive->giveUp ) {
        ZU_REF_RELEASE( obj );
    }
}
static void formatString( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    ZU_STRING *zus = va_arg( *args, ZU_STRING * );
    if ( !zus ) {
        formatAppendNull( dest, directive );
        return;
    }
    formatAppendString( dest, directive, zus );
    if ( directive->giveUp ) {
        ZU_REF_RELEASE( zus );
    }
}
template <typename UNIT>
static void formatEncoded( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, UNIT *src, ZU_INT srcLength,
                           ZU_INT ( *convert )( ZU_CHAR *, ZU_INT, const UNIT *, ZU_INT ) )
{
    if ( !src ) {
        formatAppendNull( dest, directive );
        return;
    }
    formatAppendEncoded( dest, directive, (const UNIT *)src, srcLength, convert );
    if ( directive->giveUp ) {
        zuMemFree( src );
    }
}
static void formatCstr( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    char *src = va_arg( *args, char * );
    formatEncoded( dest, directive, src, -1, zuCharsConvertFromCstr );
}
static void formatCstrLength( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    char *src = va_arg( *args, char * );
    ZU_INT srcLength = va_arg( *args, ZU_INT );
    formatEncoded( dest, directive, src, srcLength, zuCharsConvertFromCstr );
}
static void formatWcstr( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    char16_t *src = va_arg( *args, char16_t * );
    formatEncoded( dest, directive, src, -1, zuCharsConvertFromWcstr );
}
static void formatWcstrLength( ZU_STRING **dest, const FORMAT_DIRECTIVE *directive, va_list *args )
{
    char16_t *src = va_arg( *args, char16_t * );
    ZU_INT srcLength = va_arg( *args, ZU_INT );
    formatEncoded( dest, directive, src, srcLength, zuCharsConvertFromWcstr );
}

// The names, in the order in which they are tried.
struct FORMAT_CONVERSION {
    char name[ 3 ];
    FORMAT_FUNC *func;
};
static constexpr FORMAT_CONVERSION CONVERSIONS[] = {
    { "%", formatPercent },      { "b", formatBool },        { "c", formatChar },        { "i", formatInt },
    { "A", formatAligned },      { "X", formatHexadecimal }, { "r", formatReal },        { "o", formatObj },
    { "s", formatString },       { "lc", formatCstr },       { "lC", formatCstrLength }, { "lw", formatWcstr },
    { "lW", formatWcstrLength }, { "m", formatRun },
};

static constexpr ZU_INT CONVERSION_COUNT = sizeof CONVERSIONS / sizeof CONVERSIONS[ 0 ];

// Where in the table the names begin that begin with an ASCII character; its end if none does.
struct FIRST_NAMES {
    uint8_t of[ 0x80 ];
};
static constexpr FIRST_NAMES FIRST = [] {
    FIRST_NAMES first = {};
    for ( uint8_t &index : first.of ) {
        index = CONVERSION_COUNT;
    }
    for ( ZU_INT i = CONVERSION_COUNT - 1; i >= 0; i-- ) {
        first.of[ (uint8_t)CONVERSIONS[ i ].name[ 0 ] ] = (uint8_t)i;
    }
    return first;
}();

// Finds the name at the front of `src`, which is not empty, and stores its length; null for none.
static const FORMAT_CONVERSION *formatFindConversion( const ZU_CHAR *src, ZU_INT srcLength, ZU_INT *nameLength )
{
    for ( ZU_INT i = src[ 0 ] < 0x80 ? FIRST.of[ src[ 0 ] ] : CONVERSION_COUNT; i < CONVERSION_COUNT; i++ ) {
        const FORMAT_CONVERSION *conversion = &CONVERSIONS[ i ];
        if ( src[ 0 ] != (ZU_CHAR)conversion->name[ 0 ] ) {
            break;
        }
        if ( conversion->name[ 1 ] == 0 ) {
            *nameLength = 1;
            return conversion;
        }
        if ( srcLength > 1 && src[ 1 ] == (ZU_CHAR)conversion->name[ 1 ] ) {
            *nameLength = 2;
            return conversion;
        }
    }
    return nullptr;
}

static bool formatTakeFlag( FORMAT_DIRECTIVE *directive, ZU_CHAR ch )
{
    switch ( ch ) {
    case '-':
        directive->flags |= ZU_FORMAT_FLAG_LEFTALIGN;
        return true;
    case '_':
        directive->flags |= ZU_FORMAT_FLAG_NOSIGN;
        return true;
    case '+':
        directive->flags |= ZU_FORMAT_FLAG_PLUSPOS;
        return true;
    case ' ':
        directive->flags |= ZU_FORMAT_FLAG_BLANKPOS;
        return true;
    case '0':
        directive->flags |= ZU_FORMAT_FLAG_ZEROPAD;
        return true;
    case '^':
        directive->flags |= ZU_FORMAT_FLAG_UPPERCASE;
        return true;
    case '\'':
        directive->flags |= ZU_FORMAT_FLAG_BASEDECIMAL;
        return true;
    case '#':
        directive->hashes++;
        return true;
    case '~':
        directive->giveUp = true;
        return true;
    default:
        return false;
    }
}

// Tells of some characters that neither numbers nor the white space around them have them.
static bool formatEndsNumber( ZU_CHAR ch )
{
    return ( ch >= 'A' && ch <= 'z' ) || ch == '.' || ch == '!';
}
// Takes a number from the arguments for a "*", else from the format, and moves `*pos` behind it; without a number
// nothing changes.  The decoder takes white space around the number too.
static bool formatTakeNumber( const ZU_CHAR *chars, ZU_INT length, ZU_INT *pos, va_list *args, ZU_INT *number )
{
    if ( *pos < length && chars[ *pos ] == '*' ) {
        ( *pos )++;
        *number = va_arg( *args, ZU_INT );
        return true;
    }
    // Most often the name or the next part follows, and the decoder has nothing to find.
    if ( *pos < length && formatEndsNumber( chars[ *pos ] ) ) {
        return false;
    }
    ZU_INT value;
    ZU_INT consumed;
    if ( !zuFormatTryDecodeIntChars( chars + *pos, length - *pos, 10, &value, &consumed ) ) {
        return false;
    }
    *pos += consumed;
    *number = value;
    return true;
}

// Reads flags, width, precision and base from `pos` on and returns the position behind them.
static ZU_INT formatReadDirective( FORMAT_DIRECTIVE *directive, const ZU_CHAR *chars, ZU_INT length, ZU_INT pos,
                                   va_list *args )
{
    *directive = { 0, 0, false, false, false, 0, -1, 10 };
    if ( pos < length && ( chars[ pos ] | 0x20 ) - 'a' < 26 ) {
        return pos; // the name already, as most often
    }
    while ( pos < length && formatTakeFlag( directive, chars[ pos ] ) ) {
        pos++;
    }
    formatTakeNumber( chars, length, &pos, args, &directive->width );
    if ( pos < length && chars[ pos ] == '.' ) {
        pos++;
        directive->hasPrecision = formatTakeNumber( chars, length, &pos, args, &directive->precision );
    }
    if ( pos < length && chars[ pos ] == '!' ) {
        pos++;
        directive->hasBase = formatTakeNumber( chars, length, &pos, args, &directive->base );
    }
    return pos;
}

ZU_STRING *zu___FormatCharsArgList( const ZU_CHAR *fmt, ZU_INT fmtLength, va_list *argList )
{
    ZU_ASSERT( argList );
    ZU_STRING *result = zu___StringCreateEmpty();
    bool fmtContainsConversion = false;
    for ( ZU_INT pos = 0; pos < fmtLength; ) {
        ZU_INT literal = pos;
        while ( pos < fmtLength && fmt[ pos ] != '%' ) {
            pos++;
        }
        if ( pos > literal ) {
            memcpy( zu___FormatOpenField( &result, pos - literal, 0, 0 ), fmt + literal,
                    (size_t)( pos - literal ) * sizeof( ZU_CHAR ) );
        }
        if ( pos == fmtLength ) {
            break;
        }
        FORMAT_DIRECTIVE directive;
        pos = formatReadDirective( &directive, fmt, fmtLength, pos + 1, argList );
        FORMAT_CHECK( pos < fmtLength, "missing conversion" );
        ZU_INT nameLength;
        const FORMAT_CONVERSION *conversion = formatFindConversion( fmt + pos, fmtLength - pos, &nameLength );
        if ( !conversion ) {
            zu___Abort( "invalid conversion", __FILE__, __LINE__, nullptr );
        }
        conversion->func( &result, &directive, argList );
        // A mere "%%" is no conversion: text without one belongs into no format.
        if ( conversion->func != formatPercent || directive.hashes > 0 ) {
            fmtContainsConversion = true;
        }
        pos += nameLength;
    }
    FORMAT_CHECK( fmtContainsConversion, "A format string must contain at least a single conversion." );
    return result;
}
ZU_STRING *zu___FormatArgList( ZU_STRING *fmt, va_list *argList )
{
    ZU_ASSERT( fmt );
    return zu___FormatCharsArgList( fmt->chars + fmt->fspace, fmt->length, argList );
}
