#include "zu_test_string.h"

#include <cstdarg>
#include <limits>

using Text = std::u32string;

static Text wide( const std::string &ascii )
{
    return Text( ascii.begin(), ascii.end() );
}

// What a format makes of arguments that are in their slots already: ZU_INT, double and pointers.
template <typename... Args>
static std::string formatted( const std::string &fmt, Args... args )
{
    return takeText( zuStringCreateFromFormatCstr( fmt.c_str(), -1, args... ) );
}
static ZU_INT operator""_i( unsigned long long value )
{
    return (ZU_INT)value;
}

// The conversions, as they are defined, in plain steps
static Text modelPad( const Text &text, ZU_INT width, ZU_INT flags )
{
    Text blanks( (size_t)std::max<ZU_INT>( width - (ZU_INT)text.size(), 0 ), U' ' );
    return flags & ZU_FORMAT_FLAG_LEFTALIGN ? text + blanks : blanks + text;
}
static Text modelPrefix( ZU_INT base, ZU_INT flags )
{
    if ( base == 10 && !( flags & ZU_FORMAT_FLAG_BASEDECIMAL ) ) {
        return U"";
    }
    if ( flags & ZU_FORMAT_FLAG_BASEMNEMONIC && ( base == 2 || base == 8 || base == 10 || base == 16 ) ) {
        char32_t letter = base == 2 ? U'b' : base == 8 ? U'o' : base == 10 ? U'd' : U'x';
        return { U'0', flags & ZU_FORMAT_FLAG_UPPERCASE ? letter - 32 : letter };
    }
    bool shown = flags & ( ZU_FORMAT_FLAG_BASEMNEMONIC | ZU_FORMAT_FLAG_BASENUMERIC );
    return shown ? wide( std::to_string( base ) + ":" ) : U"";
}
static Text modelNumber( bool negative, const Text &digits, ZU_INT base, ZU_INT width, ZU_INT flags )
{
    Text head;
    if ( !( flags & ZU_FORMAT_FLAG_NOSIGN ) ) {
        head = negative ? U"-" : flags & ZU_FORMAT_FLAG_PLUSPOS ? U"+" : flags & ZU_FORMAT_FLAG_BLANKPOS ? U" " : U"";
    }
    head += modelPrefix( base, flags );
    if ( flags & ZU_FORMAT_FLAG_ZEROPAD && !( flags & ZU_FORMAT_FLAG_LEFTALIGN ) ) {
        ZU_INT zeros = width - (ZU_INT)( head.size() + digits.size() );
        head += Text( (size_t)std::max<ZU_INT>( zeros, 0 ), U'0' );
    }
    return modelPad( head + digits, width, flags );
}
static char32_t modelDigit( double digit, ZU_INT flags )
{
    int value = (int)std::fabs( digit );
    return (char32_t)( value < 10 ? '0' + value : ( flags & ZU_FORMAT_FLAG_UPPERCASE ? 'A' : 'a' ) + value - 10 );
}
static Text modelInt( ZU_INT value, ZU_INT base, ZU_INT width, ZU_INT flags )
{
    Text digits;
    ZU_INT rest = value;
    do {
        digits.insert( digits.begin(), modelDigit( (double)( rest % base ), flags ) );
        rest /= base;
    } while ( rest != 0 );
    return modelNumber( value < 0, digits, base, width, flags );
}
static Text modelReal( double value, ZU_INT intBase, ZU_INT width, ZU_INT precision, ZU_INT flags )
{
    if ( !std::isfinite( value ) ) {
        return modelPad( std::isnan( value ) ? U"NAN" : U"INF", width, flags );
    }
    double base = (double)intBase, power = 1.0, rest = std::trunc( value / base );
    while ( rest != 0.0 ) {
        power *= base;
        rest = std::trunc( rest / base );
    }
    Text text;
    for ( rest = value; power >= 1.0; power = std::trunc( power / base ) ) {
        double digit = std::trunc( rest / power );
        volatile double product = digit * power; // rounded ahead of the subtraction
        rest -= product;
        text += modelDigit( digit, flags );
    }
    text += precision == 0 ? U"" : U".";
    double integer, scaled = value;
    for ( ZU_INT i = 0; i < ( precision < 0 ? 6 : precision ); i++, scaled *= base ) {
        text += modelDigit( std::trunc( base * std::modf( scaled, &integer ) ), flags );
    }
    return modelNumber( value < 0.0, text, intBase, width, flags );
}

// A conversion put together at random, up to its name
class Directive {
public:
    explicit Directive( uint64_t seed ) : random( seed )
    {
        static constexpr char CHARACTERS[] = "-0_+ ^'#";
        static constexpr ZU_INT FLAGS[] = { 1, 2, 4, 8, 16, 32, 256, 0 }; // as zu_format_flags.h numbers them
        for ( ZU_INT count = below( 5 ); count > 0; count-- ) {
            ZU_INT which = below( 8 );
            fmt += CHARACTERS[ which ];
            flags |= FLAGS[ which ];
            hashes += CHARACTERS[ which ] == '#';
        }
        numberFlags = flags | ( hashes == 1 || hashes == 2 ? hashes * ZU_FORMAT_FLAG_BASEMNEMONIC : 0 );
        width = part( "", 0, 1 + below( 90 ) );
        precision = part( ".", -1, below( 20 ) );
        base = part( "!", 0, below( 2 ) ? ZU_INT{ 2 } << below( 4 ) : 2 + below( 35 ) );
    }
    ZU_INT below( ZU_INT end )
    {
        return (ZU_INT)( random() % (uint64_t)end );
    }
    template <typename... Values>
    void expect( const char *name, const Text &text, Values... values )
    {
        ZU_STRING *wanted = makeString( text );
        const std::string format = fmt + name;
        ASSERT_EQ( stars.size() == 0   ? formatted( format, values... )
                   : stars.size() == 1 ? formatted( format, stars[ 0 ], values... )
                   : stars.size() == 2 ? formatted( format, stars[ 0 ], stars[ 1 ], values... )
                                       : formatted( format, stars[ 0 ], stars[ 1 ], stars[ 2 ], values... ),
                   takeText( wanted ) )
            << format;
    }

    std::mt19937_64 random;
    std::string fmt = "%";
    std::vector<ZU_INT> stars;
    ZU_INT flags = 0, hashes = 0, numberFlags, width, precision, base;

private:
    ZU_INT part( const char *mark, ZU_INT absent, ZU_INT number )
    {
        switch ( below( 4 ) ) {
        case 0:
            stars.push_back( number );
            fmt += mark + std::string( "*" );
            return number;
        case 1:
            fmt += mark + std::to_string( number ) + std::string( (size_t)below( 2 ), ' ' );
            return number;
        default:
            return absent;
        }
    }
};

TEST( Format, RandomConversionsFollowTheModel )
{
    SeededRandom random;
    for ( int round = 0; round < 20000 && !HasFatalFailure(); round++ ) {
        Directive d( random() );
        ZU_INT base = d.base ? d.base : 10;
        ZU_INT integer = (ZU_INT)random() >> random() % 64;
        d.expect( "i", modelInt( integer, base, d.width, d.numberFlags ), integer );
        d.expect( "X", modelInt( integer, d.base ? d.base : 16, d.width, d.numberFlags ), integer );
        // From 2^53 on the digits are sound in these bases only.
        bool anySize = base == 10 || ( base & ( base - 1 ) ) == 0;
        double real = std::ldexp( (double)integer, (int)( random() % ( anySize ? 990 : 80 ) ) - 90 );
        d.expect( "r", modelReal( real, base, d.width, d.precision, d.numberFlags ), real );
        ZU_INT most = d.precision < 0 ? ZU_INT_MAX : d.precision;
        ZU_INT aligned = (ZU_INT)( random() % ( (uint64_t)most + 1 ) );
        ZU_INT flags = ( d.numberFlags & ~ZU_FORMAT_FLAG_LEFTALIGN ) | ZU_FORMAT_FLAG_ZEROPAD;
        ZU_INT width = (ZU_INT)modelInt( most, base, 0, flags ).size();
        d.expect( "A", modelInt( aligned, base, std::max( d.width, width ), flags ), aligned );
        const char *words[] = { "true", "false", "TRUE", "FALSE" };
        Text word = wide( words[ ( integer & 1 ) + ( d.flags & ZU_FORMAT_FLAG_UPPERCASE ? 2 : 0 ) ] );
        d.expect( "b", modelPad( word, d.width, d.flags ), ~integer & 1 );
        d.expect( "c", modelPad( U"\u20AC", d.width, d.flags ), 0x20AC_i );
        if ( d.precision != 0 ) {
            d.expect( "m", Text( (size_t)d.width, d.precision < 0 ? U'\t' : (char32_t)d.precision ) );
        }
        std::u16string units( random() % 30, u'\u00E4' );
        zu::Ref<ZU_STRING> zus = zu::adopt( zuStringCreateFromWcstr( units.c_str(), -1 ) );
        char *narrow = zuStringConvertToCstr( zus.get(), ZU_TRUE, nullptr );
        void *null = nullptr;
        Text text = modelPad( Text( units.begin(), units.end() ).substr( 0, (size_t)d.precision ), d.width, d.flags );
        Text nothing = modelPad( Text( d.hashes ? U"" : U"null" ).substr( 0, (size_t)d.precision ), d.width, d.flags );
        d.expect( "s", text, zus.get() );
        d.expect( "o", text, zuStringObj( zus.get() ) );
        d.expect( "lc", text, narrow );
        d.expect( "lC", text, narrow, 2 * (ZU_INT)units.size() );
        d.expect( "lw", text, units.c_str() );
        d.expect( "lW", text, units.c_str(), -1_i );
        d.expect( "s", nothing, null );
        d.expect( "lC", nothing, null, 7_i );
        zuMemFree( narrow );
    }
}

TEST( Format, Examples )
{
    const double infinity = std::numeric_limits<double>::infinity();
    void *null = nullptr;
    EXPECT_EQ( formatted( "%%%i", 5_i ), "%5" );
    EXPECT_EQ( formatted( "a%#%" ), "a" );
    EXPECT_EQ( formatted( "%*%%i", 3_i, 7_i ), "%7" );
    EXPECT_EQ( formatted( "%05i %-05i| % +_i", -42_i, -42_i, -42_i ), "-0042 -42  | 42" );
    EXPECT_EQ( formatted( "%*i %*A %*.*A", -5_i, 7_i, -9_i, 5_i, -9_i, 0_i, 0_i ), "7 0000000000000000005 0" );
    EXPECT_EQ( formatted( "%_!36i %!2i", ZU_INT_MIN, ZU_INT_MIN ), "1y2p0ij32e8e8 -1" + std::string( 63, '0' ) );
    EXPECT_EQ( formatted( "%#i %#'i %##'i %#!7i %###!16i", 42_i, 42_i, 42_i, 10_i, 255_i ), "42 0d42 10:42 7:13 ff" );
    EXPECT_EQ( formatted( "%.2r %.0r %.2r %.0r", 3.14159, 2.9, 0.125, -0.9 ), "3.14 2 0.12 -0" );
    EXPECT_EQ( formatted( "%.*r %.r %.1r", -1_i, 0.5, 0.5, -0.0 ), "0.500000 0.500000 0.0" );
    EXPECT_EQ( formatted( "%+0#6.1r|%-5r|%r", infinity, std::nan( "" ), -infinity ), "   INF|NAN  |INF" );
    EXPECT_EQ( formatted( "%.400r", std::numeric_limits<double>::denorm_min() ).substr( 0, 328 ),
               "0." + std::string( 323, '0' ) + "494" );
    EXPECT_EQ( formatted( "%b%c", 0x100000000_i, 0xFFFFFFFF00000041_i ), "falseA" ) << "32 bits of the slot count";
    EXPECT_EQ( formatted( "%.*A %.*A", 11_i, 3_i, 100_i, 7_i ), "03 007" );
    EXPECT_EQ( formatted( "%1m%3.45m%-~#*.*m|%m", 2_i, 0x20AC_i ), "\t---\u20AC\u20AC|" );
    EXPECT_EQ( formatted( "%.-1lc%lC%#s%o", "abc", "xy", -1_i, null, null ), "abcxynull" );
    EXPECT_EQ( formatted( "%*.*!*r", 9_i, 2_i, 8_i, 9.125 ), "    11.10" ) << "width, precision, base, value";
    EXPECT_EQ( formatted( "%\u0663i%\t2i%0000000000000000000000003i", 7_i, 7_i, 7_i ), "  7 7007" );
    EXPECT_EQ( formatted( "%100000m" ), std::string( 100000, '\t' ) );
    EXPECT_EQ( formatted( "%80m%3i%200i", 1_i, 2_i ), std::string( 80, '\t' ) + "  1" + std::string( 199, ' ' ) + "2" );
}

TEST( Format, GivesArgumentsUp )
{
    ZU_STRING *string = makeString( U"text" );
    EXPECT_EQ( formatted( "%s%o", string, zuStringObj( string ) ), "texttext" );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 1u ) << "borrowed without ~";
    zuStringRetain( string );
    zuStringRetain( string );
    EXPECT_EQ( formatted( "%~s%~.1o", string, zuStringObj( string ) ), "textt" );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 1u );
    zuStringRelease( string );
    // The leak checker sees what is not freed, and the heap what is freed twice.
    void *null = nullptr;
    EXPECT_EQ( formatted( "%~lc%~lC%~lc%~s", zuMemDupCstr( "ab", -1 ), zuMemDupCstr( "cd", -1 ), 1_i, null, null ),
               "abcnullnull" );
    EXPECT_EQ( formatted( "%~lw%~lW", zuMemDup( u"ab", 6 ), zuMemDup( u"cd", 4 ), 2_i ), "abcd" );
    EXPECT_EQ( formatted( "%~i%~b%~%", 1_i, 1_i ), "1true%" );
}

static std::string formattedTwice( ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    std::string text = takeText( zu___FormatArgList( fmt, &args ) );
    text += takeText( zu___FormatArgList( fmt, &args ) );
    va_end( args );
    return text;
}
TEST( StringFormat, HandsACursorOn )
{
    zu::Ref<ZU_STRING> fmt = zu::adopt( makeString( U"<%s%i>" ) );
    EXPECT_EQ( formattedTwice( fmt.get(), fmt.get(), 1_i, fmt.get(), 2_i ), "<<%s%i>1><<%s%i>2>" );
}

TEST( FormatAborts, FormatsAndArguments )
{
    for ( const char *fmt : { "", "plain text", "100%%" } ) {
        expectAbort( "fmtContainsConversion", [ & ] { formatted( fmt ); },
                     "A format string must contain at least a single conversion." );
    }
    for ( const char *fmt : { "%", "%i%", "%-", "%5", "%5.", "%!16" } ) {
        expectAbort( "pos < fmtLength", [ & ] { formatted( fmt, 1_i ); }, "missing conversion" );
    }
    for ( const char *fmt : { "%q", "%l", "%lx", "%.5.5i", "%5-i", "%\u20AC" } ) {
        expectAbort( nullptr, [ & ] { formatted( fmt, 1_i ); }, "invalid conversion" );
    }
    expectAbort( "minWidth >= 0", [] { formatted( "%*c", -1_i, 1_i ); } );
    expectAbort( "value <= precision", [] { formatted( "%.9A", 10_i ); } );
    expectAbort( "ZU_CHAR_OK( precision )", [] { formatted( "%1.*m", 0x110000_i ); } );
    expectAbort( "base >= 2", [] { formatted( "%!0r", 1.0 ); } );
}

TEST( FormatEncode, SharesWhatItCan )
{
    ZU_STRING *word = zuFormatEncodeBool( ZU_TRUE, 4, 0 ), *same = zuFormatEncodeBool( 7, 0, 0 );
    EXPECT_EQ( word, same );
    zuStringAppendChar( &same, '!' );
    EXPECT_EQ( takeText( same ) + takeText( word ), "true!true" );
    EXPECT_EQ( takeText( zuFormatEncodeBool( ZU_TRUE, 5, 0 ) ), " true" );
    const ZU_CHAR ab[] = { 'a', 'b' };
    ZU_STRING *text = zuFormatEncodeInt( -5, 10, 4, ZU_FORMAT_FLAG_LEFTALIGN ), *holder = zuStringRetain( text );
    zu___FormatEncodeChars( &text, nullptr, 0, 0, 0 );
    EXPECT_EQ( text, holder ) << "nothing to append";
    zu___FormatEncodeChars( &text, ab, 2, 3, 0 );
    EXPECT_EQ( takeText( text ) + takeText( holder ), "-5   ab-5  " );
    EXPECT_EQ( takeText( zuFormatEncodeChars( ab, 2, 3, ZU_FORMAT_FLAG_LEFTALIGN | ZU_FORMAT_FLAG_ZEROPAD ) ), "ab " );
    EXPECT_EQ( takeText( zuFormatEncodeReal( 0.75, 4, 6, 1, ZU_FORMAT_FLAG_BASENUMERIC ) ), " 4:0.3" );
    EXPECT_EQ( zuFormatFlagsNormalize( -1 ), 1 | 4 | 32 | 64 | 256 );
    EXPECT_EQ( zuFormatFlagsNormalize( ZU_FORMAT_FLAG_PLUSPOS | ZU_FORMAT_FLAG_BLANKPOS ), ZU_FORMAT_FLAG_PLUSPOS );
    EXPECT_EQ( zuFormatFlagsNormalize( 2 | 16 | 128 ), 2 | 16 | 128 );
}

// Decoding.  A row tells what is read from `src`; a base of NUMERIC or WORDS reads a truth value.
static constexpr ZU_INT NUMERIC = -2, WORDS = -3;
template <typename VALUE>
struct DECODE_ROW {
    const char32_t *src;
    ZU_INT base;
    ZU_BOOL found;
    VALUE value;
    ZU_INT consumed;
};
template <typename VALUE, size_t COUNT, typename DECODE>
static void expectDecoded( const DECODE_ROW<VALUE> ( &rows )[ COUNT ], DECODE decode )
{
    for ( const DECODE_ROW<VALUE> &row : rows ) {
        SCOPED_TRACE( &row - rows );
        const Text src = row.src;
        const ZU_CHAR *chars = (const ZU_CHAR *)src.data();
        VALUE value = 7;
        ZU_INT consumed = -7;
        EXPECT_EQ( decode( chars, (ZU_INT)src.size(), row.base, &value, &consumed ), row.found );
        EXPECT_EQ( value, row.value );
        EXPECT_EQ( consumed, row.consumed );
        EXPECT_EQ( decode( chars, (ZU_INT)src.size(), row.base, nullptr, nullptr ), row.found );
    }
}
TEST( FormatDecode, Integers )
{
    static constexpr DECODE_ROW<ZU_INT> ROWS[] = {
        { U"", 10, 0, 0, 0 },
        { U" - ", 10, 0, 0, 0 },
        { U" -ab", 10, 0, 0, 2 },
        { U"12ab", 10, 1, 12, 2 },
        { U"\u00A0+ 12 \u3000x", 10, 1, 12, 7 },
        { U" -0x10 ", -1, 1, -16, 7 },
        { U"0X- 1F", -1, 1, -31, 6 },
        { U"-0x-1", -1, 0, 0, 3 },
        { U"0x", -1, 0, 0, 2 },
        { U"0b12", -1, 1, 1, 3 },
        { U"0B1", 16, 1, 0xB1, 3 },
        { U"0O17 0d9", -1, 1, 15, 5 },
        { U"36: -Zz", -1, 1, -1295, 7 },
        { U"1:1", -1, 1, 1, 1 },
        { U"37:1", -1, 1, 37, 2 },
        { U"7z", 7, 0, 0, 0 },
        { U"\u0663\u0664", 10, 1, 34, 2 },
        { U"\uFF21", 16, 1, 10, 1 },
        { U"9223372036854775807", 10, 1, ZU_INT_MAX, 19 },
        { U"-9223372036854775808", 10, 1, ZU_INT_MIN, 20 },
        { U"9223372036854775808", 10, 1, 922337203685477580, 18 },
        { U"-9223372036854775809", 10, 1, -922337203685477580, 19 },
    };
    expectDecoded( ROWS, zuFormatTryDecodeIntChars );
    // What is no code point ends the reading.
    const ZU_CHAR chars[] = { '5', 0xFFFFFFFF, '5' };
    ZU_INT value, consumed;
    EXPECT_TRUE( zuFormatTryDecodeIntChars( chars, 3, 36, &value, &consumed ) && value == 5 && consumed == 1 );
}
TEST( FormatDecode, PlainIntegersAsAllOthers )
{
    SeededRandom random;
    for ( int round = 0; round < 20000 && !HasFatalFailure(); round++ ) {
        Text text( random() % 24, U'7' );
        for ( size_t odd = random() % 5; odd > 0 && !text.empty(); odd-- ) {
            text[ random() % text.size() ] = U" -+0,\t\u0663\u2003"[ random() % 8 ];
        }
        // Without a prefix to find, a base that is looked for is 10 too.
        ZU_INT values[ 2 ], consumed[ 2 ];
        ZU_BOOL found[ 2 ];
        for ( int i = 0; i < 2; i++ ) {
            found[ i ] = zuFormatTryDecodeIntChars( (const ZU_CHAR *)text.data(), (ZU_INT)text.size(), i == 0 ? 10 : -1,
                                                    &values[ i ], &consumed[ i ] );
        }
        ASSERT_TRUE( found[ 0 ] == found[ 1 ] && values[ 0 ] == values[ 1 ] && consumed[ 0 ] == consumed[ 1 ] );
    }
}
TEST( FormatDecode, Reals )
{
    static constexpr DECODE_ROW<double> ROWS[] = {
        { U"", 10, 0, 0.0, 0 },          { U" -", 10, 0, 0.0, 0 },
        { U"1.5", 10, 1, 1.5, 3 },       { U" - 1,25 x", 10, 1, -1.25, 8 },
        { U"1.5.5", 10, 1, 1.5, 3 },     { U"1,5.5", 10, 1, 1.5, 3 },
        { U".", 10, 1, 0.0, 1 },         { U"-,5", 10, 1, -0.5, 3 },
        { U"5.", 10, 1, 5.0, 2 },        { U"1e5", 10, 1, 1.0, 1 },
        { U"+1", 10, 0, 0.0, 0 },        { U"+1", -1, 1, 1.0, 2 },
        { U"- +1", -1, 0, 0.0, 2 },      { U"0x+f.8", -1, 1, 15.5, 6 },
        { U"2:0.011", -1, 1, 0.375, 7 },
    };
    expectDecoded( ROWS, zuFormatTryDecodeRealChars );
    const Text nines( 400, U'9' );
    double value;
    EXPECT_TRUE( zuFormatTryDecodeRealChars( (const ZU_CHAR *)nines.data(), 400, 10, &value, nullptr ) );
    EXPECT_EQ( value, std::numeric_limits<double>::infinity() );
}
TEST( FormatDecode, TruthValues )
{
    static constexpr DECODE_ROW<ZU_BOOL> ROWS[] = {
        { U"", NUMERIC, 0, 0, 0 },         { U"tRuE ", WORDS, 1, 1, 5 },
        { U"  FALSEx", NUMERIC, 1, 0, 7 }, { U" tru", NUMERIC, 0, 0, 1 },
        { U"1", WORDS, 0, 0, 0 },          { U"0.0", NUMERIC, 1, 0, 3 },
        { U"-0x0.8 ", NUMERIC, 1, 1, 7 },  { U"0,0000000000000001", NUMERIC, 1, 0, 18 },
    };
    expectDecoded( ROWS, []( const ZU_CHAR *src, ZU_INT length, ZU_INT how, ZU_BOOL *value, ZU_INT *consumed ) {
        return zuFormatTryDecodeBoolChars( src, length, how == NUMERIC, value, consumed );
    } );
}
