#include "zu/base/zu_format.h"

#include "zu/base/zu_format_arg_list.h"
#include "zu/base/zu_string_format.h"
#include "zu/sys/zu_mem.h"
#include "zu_test_support.h"

#include <cmath>
#include <cstdarg>
#include <limits>
#include <vector>

static std::string takeText( ZU_STRING *zus )
{
    char *chars = zuStringConvertToUtf8( zus, ZU_TRUE, nullptr );
    std::string text = chars;
    zuMemFree( chars );
    zuStringRelease( zus );
    return text;
}

// What a format makes of arguments that are in their slots already: ZU_INT, double and pointers.
template <typename... Args>
static std::string formatted( const char *fmt, Args... args )
{
    return takeText( zuStringCreateFromFormatCstr( fmt, -1, args... ) );
}
static ZU_INT operator""_i( unsigned long long value )
{
    return (ZU_INT)value;
}
static ZU_STRING *makeString( const char *text )
{
    return zuStringCreateFromUtf8( text, -1 );
}
static std::vector<ZU_CHAR> makeChars( const std::u32string &text )
{
    return std::vector<ZU_CHAR>( text.begin(), text.end() );
}

TEST( Format, Numbers )
{
    EXPECT_EQ( formatted( "%%%i", 5_i ), "%5" );
    EXPECT_EQ( formatted( "a%#%" ), "a" );
    EXPECT_EQ( formatted( "%i", -42_i ), "-42" );
    EXPECT_EQ( formatted( "%+i", 42_i ), "+42" );
    EXPECT_EQ( formatted( "% i", 42_i ), " 42" );
    EXPECT_EQ( formatted( "% +i", 42_i ), "+42" );
    EXPECT_EQ( formatted( "%_i", -42_i ), "42" );
    EXPECT_EQ( formatted( "%_+i", 42_i ), "42" );
    EXPECT_EQ( formatted( "%05i", -42_i ), "-0042" );
    EXPECT_EQ( formatted( "%-5i|", 42_i ), "42   |" );
    EXPECT_EQ( formatted( "%-05i|", 42_i ), "42   |" );
    EXPECT_EQ( formatted( "%02i", 7_i ), "07" );
    EXPECT_EQ( formatted( "%.3i", 7_i ), "7" );
    EXPECT_EQ( formatted( "%*i", -5_i, 7_i ), "7" );
    EXPECT_EQ( formatted( "%i", ZU_INT_MIN ), "-9223372036854775808" );
    EXPECT_EQ( formatted( "%!2i", ZU_INT_MIN ), "-1" + std::string( 63, '0' ) );
    EXPECT_EQ( formatted( "%_!36i", ZU_INT_MIN ), "1y2p0ij32e8e8" );
    EXPECT_EQ( formatted( "%X", 255_i ), "ff" );
    EXPECT_EQ( formatted( "%08X", 255_i ), "000000ff" );
    EXPECT_EQ( formatted( "%!X %!8X", 255_i, 8_i ), "ff 10" );
}

TEST( Format, Bases )
{
    EXPECT_EQ( formatted( "%!16i", 255_i ), "ff" );
    EXPECT_EQ( formatted( "%^!16i", 255_i ), "FF" );
    EXPECT_EQ( formatted( "%#!16i", 255_i ), "0xff" );
    EXPECT_EQ( formatted( "%#^!16i", 255_i ), "0XFF" );
    EXPECT_EQ( formatted( "%#!8i %#!2i", 8_i, 2_i ), "0o10 0b10" );
    EXPECT_EQ( formatted( "%##!16i", 255_i ), "16:ff" );
    EXPECT_EQ( formatted( "%###!16i %#####!16i", 255_i, 255_i ), "ff ff" );
    EXPECT_EQ( formatted( "%#i", 42_i ), "42" );
    EXPECT_EQ( formatted( "%#'i", 42_i ), "0d42" );
    EXPECT_EQ( formatted( "%##'i", 42_i ), "10:42" );
    EXPECT_EQ( formatted( "%#!7i", 10_i ), "7:13" );
    EXPECT_EQ( formatted( "%##!36i", 35_i ), "36:z" );
    EXPECT_EQ( formatted( "%#08X|%#8X|%-#8X|", 255_i, 255_i, 255_i ), "0x0000ff|    0xff|0xff    |" );
    EXPECT_EQ( formatted( "%#+08.1!16r", 255.5 ), "+0x0ff.8" );
}

TEST( Format, RealsAreCutOff )
{
    EXPECT_EQ( formatted( "%r", 1.5 ), "1.500000" );
    EXPECT_EQ( formatted( "%.2r", 3.14159 ), "3.14" );
    EXPECT_EQ( formatted( "%.0r", 2.9 ), "2" );
    EXPECT_EQ( formatted( "%.2r", 0.125 ), "0.12" );
    EXPECT_EQ( formatted( "%.*r", -1_i, 0.5 ), "0.500000" );
    EXPECT_EQ( formatted( "%8.2r", -1.5 ), "   -1.50" );
    EXPECT_EQ( formatted( "%08.2r|%-8.2r|", -1.5, -1.5 ), "-0001.50|-1.50   |" );
    EXPECT_EQ( formatted( "%.0r %.1r", -0.9, -0.0 ), "-0 0.0" );
    EXPECT_EQ( formatted( "%.3!2r %.2!36r", 5.625, 35.5 ), "101.101 z.i0" );
    EXPECT_EQ( formatted( "%.1r", 9007199254740993.0 ), "9007199254740992.0" );
    EXPECT_EQ( formatted( "%.0!2r", std::numeric_limits<double>::max() ),
               std::string( 53, '1' ) + std::string( 971, '0' ) );
    EXPECT_EQ( formatted( "%.400r", std::numeric_limits<double>::denorm_min() ).substr( 0, 328 ),
               "0." + std::string( 323, '0' ) + "494" );
    EXPECT_EQ( formatted( "%r", std::nan( "" ) ), "NAN" );
    EXPECT_EQ( formatted( "%r", -std::numeric_limits<double>::infinity() ), "INF" );
    EXPECT_EQ( formatted( "%+0#6.1r|%-5r|", std::numeric_limits<double>::infinity(), std::nan( "" ) ),
               "   INF|NAN  |" );
}

TEST( Format, TruthValuesAndCodePoints )
{
    EXPECT_EQ( formatted( "%b %^b", 1_i, 0_i ), "true FALSE" );
    EXPECT_EQ( formatted( "%-6b|%6b|%06b|", 1_i, 0_i, 1_i ), "true  | false|  true|" );
    EXPECT_EQ( formatted( "%3c", 0x41_i ), "  A" );
    EXPECT_EQ( formatted( "%-3c|%c", 0x1F600_i, 0xFFFFFFFF00000041_i ), "\U0001F600  |A" );
    EXPECT_EQ( formatted( "%b", 0x100000000_i ), "false" ) << "32 bits of the slot count";
}

TEST( Format, Texts )
{
    ZU_STRING *ab = makeString( "ab" );
    ZU_STRING *abc = makeString( "abc" );
    EXPECT_EQ( formatted( "%5s|%-5s|%1s|", ab, ab, ab ), "   ab|ab   |ab|" );
    EXPECT_EQ( formatted( "%.2s %.*s %.-1s", abc, 5_i, abc, abc ), "ab abc abc" );
    EXPECT_EQ( formatted( "%-4.1s|%.0s|", abc, abc ), "a   ||" );
    EXPECT_EQ( formatted( "%o %3.1o", zuStringObj( abc ), zuStringObj( abc ) ), "abc   a" );
    EXPECT_EQ( formatted( "%lc %lC %lC", "abc", "abcdef", 3_i, "xy", -1_i ), "abc abc xy" );
    EXPECT_EQ( formatted( "%lw %.1lW %lW", u"\u20AC", u"abc", 2_i, u"xy", -1_i ), "\u20AC a xy" );
    EXPECT_EQ( formatted( "%5lc|%-5.2lw|", "\u00E4\u00F6", u"abc" ), "   \u00E4\u00F6|ab   |" );
    zuStringRelease( ab );
    zuStringRelease( abc );

    std::string longText( 1000, 'x' );
    EXPECT_EQ( formatted( "%lc", longText.c_str() ), longText );
    void *null = nullptr;
    EXPECT_EQ( formatted( "%s %o %lc %lC %lw %lW|", null, null, null, null, 7_i, null, null, -7_i ),
               "null null null null null null|" );
    EXPECT_EQ( formatted( "%#s%#o%#lc%##lC|%#3s|%6.2s|", null, null, null, null, 7_i, null, null ), "|   |    nu|" );
}

TEST( Format, AlignedTexts )
{
    EXPECT_EQ( formatted( "%.*A", 11_i, 3_i ), "03" );
    EXPECT_EQ( formatted( "%.*A", 100_i, 7_i ), "007" );
    EXPECT_EQ( formatted( "%A", 5_i ), "0000000000000000005" );
    EXPECT_EQ( formatted( "%-6.100A|", 7_i ), "000007|" ) << "the greater of both widths, and never on the left";
    EXPECT_EQ( formatted( "%+#.*!16A", 255_i, 1_i ), "+0x01" ) << "sign and base count on both sides";
    EXPECT_EQ( formatted( "%*.*A", -9_i, 0_i, 0_i ), "0" );
}

TEST( Format, Runs )
{
    EXPECT_EQ( formatted( "%1m" ), "\t" );
    EXPECT_EQ( formatted( "%3.45m" ), "---" );
    EXPECT_EQ( formatted( "%-~#*.*m|%m", 2_i, 0x20AC_i ), "\u20AC\u20AC|" );
    EXPECT_EQ( formatted( "%100000m" ), std::string( 100000, '\t' ) );
}

TEST( Format, PartsAndTheirOrder )
{
    EXPECT_EQ( formatted( "%*.*!*r", 9_i, 2_i, 8_i, 9.125 ), "    11.10" ) << "width, precision, base, value";
    EXPECT_EQ( formatted( "%5 i|%.2 r|%!16 i", 7_i, 0.5, 255_i ), "    7|0.50|ff" ) << "white space behind a number";
    EXPECT_EQ( formatted( "%\u0663i", 7_i ), "  7" ) << "any decimal digit";
    EXPECT_EQ( formatted( "%.r", 0.5 ), "0.500000" ) << "no precision behind the point";
    EXPECT_EQ( formatted( "%*%%i", 3_i, 7_i ), "%7" );
    EXPECT_EQ( formatted( "%00+00 ^5i", 7_i ), "+0007" ) << "flags come in any order and any number";
}

TEST( Format, LongResults )
{
    std::string expected;
    std::string fmt;
    for ( int i = 0; i < 50; i++ ) {
        fmt += "literal %#%";
        expected += "literal ";
    }
    EXPECT_EQ( formatted( ( fmt + "%200i|%-200i|%0200i" ).c_str(), 1_i, 2_i, 3_i ),
               expected + std::string( 199, ' ' ) + "1|2" + std::string( 199, ' ' ) + "|" + std::string( 199, '0' ) +
                   "3" );
}

TEST( Format, GivesArgumentsUp )
{
    ZU_STRING *string = makeString( "text" );
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

static std::string formattedTwice( const char *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    ZU_STRING *zus = makeString( fmt );
    ZU_STRING *first = zu___FormatArgList( zus, &args );
    ZU_STRING *second = zu___FormatArgList( zus, &args );
    va_end( args );
    zuStringRelease( zus );
    return takeText( zuStringCreateFromFormatCstr( "%~s %~s", -1, first, second ) );
}
TEST( Format, CursorIsHandedOn )
{
    EXPECT_EQ( formattedTwice( "%i:%r", 1_i, 0.5, 2_i, 0.25 ), "1:0.500000 2:0.250000" );
}

TEST( StringFormat, AllForms )
{
    ZU_STRING *fmt = makeString( "<%s%i>" );
    ZU_STRING *text = makeString( "x" );
    zuStringAppendFormat( &text, fmt, text, 1_i );
    zuStringInsertFormat( &text, 1, fmt, text, 2_i );
    zuStringPrependFormat( &text, fmt, fmt, 3_i );
    zuStringAppendFormatCstr( &text, "%i?", 2, 4_i );
    zuStringInsertFormatCstr( &text, 0, "%i", -1, 5_i );
    zuStringPrependFormatCstr( &text, "%i?", 2, 6_i );
    zuStringAppendFormatWcstr( &text, u"%i?", 2, 7_i );
    zuStringInsertFormatWcstr( &text, 0, u"%i", -1, 8_i );
    zuStringPrependFormatWcstr( &text, u"%i?", 2, 9_i );
    EXPECT_EQ( takeText( text ), "9865<<%s%i>3>x<x<x1>2><x1>47" );
    EXPECT_EQ( takeText( zuStringCreateFromFormat( fmt, fmt, 1_i ) ), "<<%s%i>1>" );
    EXPECT_EQ( takeText( zuStringCreateFromFormatWcstr( u"%i?", 2, 1_i ) ), "1" );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( fmt ), 1u );
    zuStringRelease( fmt );
}

TEST( FormatAborts, Formats )
{
    const char *none = "A format string must contain at least a single conversion.";
    for ( const char *fmt : { "", "plain text", "100%%" } ) {
        expectAbort( "fmtContainsConversion", [ & ] { formatted( fmt ); }, none );
    }
    for ( const char *fmt : { "%", "%i%", "%-", "%5", "%5.", "%.3", "%!", "%!16" } ) {
        expectAbort( "pos < fmtLength", [ & ] { formatted( fmt, 1_i ); }, "missing conversion" );
    }
    for ( const char *fmt : { "%q", "%l", "%lx", "%.5.5i", "%5-i" } ) {
        expectAbort( nullptr, [ & ] { formatted( fmt, 1_i ); }, "invalid conversion" );
    }
}
TEST( FormatAborts, Arguments )
{
    ZU_STRING *s = zuStringCreate();
    for ( const char *fmt : { "%*b", "%*c" } ) {
        expectAbort( "minWidth >= 0", [ & ] { formatted( fmt, -1_i, 1_i ); } );
    }
    expectAbort( "minWidth >= 0", [ & ] { formatted( "%*r", -1_i, 1.0 ); } );
    expectAbort( "minWidth >= 0", [ & ] { formatted( "%*s", -1_i, s ); } );
    expectAbort( "precision >= -1", [ & ] { formatted( "%.*r", -2_i, 1.0 ); } );
    expectAbort( "base >= 2", [ & ] { formatted( "%!1i", 1_i ); } );
    expectAbort( "base <= 36", [ & ] { formatted( "%!37X", 1_i ); } );
    expectAbort( "base <= 36", [ & ] { formatted( "%!37A", 1_i ); } );
    expectAbort( "base >= 2", [ & ] { formatted( "%!0r", 1.0 ); } );
    expectAbort( "value >= 0", [ & ] { formatted( "%A", -1_i ); } );
    expectAbort( "precision >= 0", [ & ] { formatted( "%.*A", -1_i, 0_i ); } );
    expectAbort( "value <= precision", [ & ] { formatted( "%.9A", 10_i ); } );
    expectAbort( "width >= 0", [ & ] { formatted( "%*m", -1_i ); } );
    expectAbort( "ZU_CHAR_OK( precision )", [ & ] { formatted( "%1.*m", 0x110000_i ); } );
    expectAbort( "ZU_CHAR_OK( precision )", [ & ] { formatted( "%1.*m", -1_i ); } );
    expectAbort( "zuCharsAllOk( src, srcLength )", [ & ] { formatted( "%c", 0x110000_i ); } );
    expectAbort( "fmt", [ & ] { zuStringCreateFromFormat( nullptr ); } );
    zuStringRelease( s );
}

TEST( FormatEncode, BoolSharesItsWords )
{
    ZU_STRING *word = zuFormatEncodeBool( ZU_TRUE, 4, 0 );
    ZU_STRING *same = zuFormatEncodeBool( 7, 0, 0 );
    ZU_STRING *wider = zuFormatEncodeBool( ZU_TRUE, 5, 0 );
    EXPECT_EQ( word, same );
    EXPECT_NE( word, wider );
    zuStringAppendChar( &same, '!' );
    EXPECT_EQ( takeText( same ), "true!" );
    EXPECT_EQ( takeText( word ), "true" );
    EXPECT_EQ( takeText( wider ), " true" );
}
TEST( FormatEncode, AppendsToASharedString )
{
    const ZU_CHAR ab[] = { 'a', 'b' };
    ZU_STRING *text = zuFormatEncodeInt( -5, 10, 4, ZU_FORMAT_FLAG_LEFTALIGN );
    ZU_STRING *holder = zuStringRetain( text );
    zu___FormatEncodeChars( &text, nullptr, 0, 0, 0 );
    EXPECT_EQ( text, holder ) << "nothing to append";
    zu___FormatEncodeChars( &text, ab, 2, 3, 0 );
    EXPECT_EQ( takeText( text ), "-5   ab" );
    EXPECT_EQ( takeText( holder ), "-5  " );
    EXPECT_EQ( takeText( zuFormatEncodeChars( ab, 2, 3, ZU_FORMAT_FLAG_LEFTALIGN | ZU_FORMAT_FLAG_ZEROPAD ) ), "ab " );
    EXPECT_EQ( takeText( zuFormatEncodeReal( 0.75, 4, 6, 1, ZU_FORMAT_FLAG_BASENUMERIC ) ), " 4:0.3" );
}
TEST( FormatEncode, FlagsSettleTheirConflicts )
{
    const ZU_INT align = ZU_FORMAT_FLAG_LEFTALIGN;
    const ZU_INT zero = ZU_FORMAT_FLAG_ZEROPAD;
    const ZU_INT nosign = ZU_FORMAT_FLAG_NOSIGN;
    const ZU_INT plus = ZU_FORMAT_FLAG_PLUSPOS;
    const ZU_INT blank = ZU_FORMAT_FLAG_BLANKPOS;
    EXPECT_EQ( zuFormatFlagsNormalize( align | zero ), align );
    EXPECT_EQ( zuFormatFlagsNormalize( nosign | plus | blank ), nosign );
    EXPECT_EQ( zuFormatFlagsNormalize( plus | blank ), plus );
    EXPECT_EQ( zuFormatFlagsNormalize( zero | blank ), zero | blank );
    EXPECT_EQ( zuFormatFlagsNormalize( ZU_FORMAT_FLAG_BASEMNEMONIC | ZU_FORMAT_FLAG_BASENUMERIC ),
               ZU_FORMAT_FLAG_BASEMNEMONIC );
    EXPECT_EQ( zuFormatFlagsNormalize( -1 ), 1 | 4 | 32 | 64 | 256 );
}

struct INT_ROW {
    const char32_t *src;
    ZU_INT base;
    ZU_BOOL found;
    ZU_INT value;
    ZU_INT consumed;
};
static const INT_ROW INT_ROWS[] = {
    { U"", 10, ZU_FALSE, 0, 0 },
    { U" \t ", 10, ZU_FALSE, 0, 0 },
    { U" - ", 10, ZU_FALSE, 0, 0 },
    { U"ab", 10, ZU_FALSE, 0, 0 },
    { U" -ab", 10, ZU_FALSE, 0, 2 },
    { U"--1", 10, ZU_FALSE, 0, 1 },
    { U"12ab", 10, ZU_TRUE, 12, 2 },
    { U"\u00A0+ 12 \u3000x", 10, ZU_TRUE, 12, 7 },
    { U" -0x10 ", -1, ZU_TRUE, -16, 7 },
    { U"0X- 1F", -1, ZU_TRUE, -31, 6 },
    { U"0x+1", -1, ZU_TRUE, 1, 4 },
    { U"-0x-1", -1, ZU_FALSE, 0, 3 },
    { U"0x", -1, ZU_FALSE, 0, 2 },
    { U"0b12", -1, ZU_TRUE, 1, 3 },
    { U"0B1", 16, ZU_TRUE, 0xB1, 3 },
    { U"0O17 0d9", -1, ZU_TRUE, 15, 5 },
    { U"0D09", -1, ZU_TRUE, 9, 4 },
    { U"2:101", -1, ZU_TRUE, 5, 5 },
    { U"36: -Zz", -1, ZU_TRUE, -1295, 7 },
    { U"1:1", -1, ZU_TRUE, 1, 1 },
    { U"37:1", -1, ZU_TRUE, 37, 2 },
    { U"+ 5", -1, ZU_TRUE, 5, 3 },
    { U"7z", 7, ZU_FALSE, 0, 0 },
    { U"\u0663\u0664", 10, ZU_TRUE, 34, 2 },
    { U"\uFF21", 16, ZU_TRUE, 10, 1 },
    { U"9223372036854775807", 10, ZU_TRUE, ZU_INT_MAX, 19 },
    { U"-9223372036854775808", 10, ZU_TRUE, ZU_INT_MIN, 20 },
    { U"9223372036854775808", 10, ZU_TRUE, 922337203685477580, 18 },
    { U"-9223372036854775809", 10, ZU_TRUE, -922337203685477580, 19 },
};
TEST( FormatDecode, Integers )
{
    for ( const INT_ROW &row : INT_ROWS ) {
        SCOPED_TRACE( &row - INT_ROWS );
        std::vector<ZU_CHAR> chars = makeChars( row.src );
        ZU_INT value = -7;
        ZU_INT consumed = -7;
        EXPECT_EQ( zuFormatTryDecodeIntChars( chars.data(), (ZU_INT)chars.size(), row.base, &value, &consumed ),
                   row.found );
        EXPECT_EQ( value, row.value );
        EXPECT_EQ( consumed, row.consumed );
        EXPECT_EQ( zuFormatTryDecodeIntChars( chars.data(), (ZU_INT)chars.size(), row.base, nullptr, nullptr ),
                   row.found );
    }
}

struct REAL_ROW {
    const char32_t *src;
    ZU_INT base;
    ZU_BOOL found;
    double value;
    ZU_INT consumed;
};
static const REAL_ROW REAL_ROWS[] = {
    { U"", 10, ZU_FALSE, 0.0, 0 },           { U" -", 10, ZU_FALSE, 0.0, 0 },     { U"1.5", 10, ZU_TRUE, 1.5, 3 },
    { U" - 1,25 x", 10, ZU_TRUE, -1.25, 8 }, { U"1.5.5", 10, ZU_TRUE, 1.5, 3 },   { U"1,5.5", 10, ZU_TRUE, 1.5, 3 },
    { U".", 10, ZU_TRUE, 0.0, 1 },           { U"-,5", 10, ZU_TRUE, -0.5, 3 },    { U"5.", 10, ZU_TRUE, 5.0, 2 },
    { U"1e5", 10, ZU_TRUE, 1.0, 1 },         { U"+1", 10, ZU_FALSE, 0.0, 0 },     { U"+1", -1, ZU_TRUE, 1.0, 2 },
    { U"- +1", -1, ZU_FALSE, 0.0, 2 },       { U"0x+f.8", -1, ZU_TRUE, 15.5, 6 }, { U"2:0.011", -1, ZU_TRUE, 0.375, 7 },
    { U"INF", 10, ZU_FALSE, 0.0, 0 },
};
TEST( FormatDecode, Reals )
{
    for ( const REAL_ROW &row : REAL_ROWS ) {
        SCOPED_TRACE( &row - REAL_ROWS );
        std::vector<ZU_CHAR> chars = makeChars( row.src );
        double value = -7.0;
        ZU_INT consumed = -7;
        EXPECT_EQ( zuFormatTryDecodeRealChars( chars.data(), (ZU_INT)chars.size(), row.base, &value, &consumed ),
                   row.found );
        EXPECT_EQ( value, row.value );
        EXPECT_EQ( consumed, row.consumed );
    }
    std::vector<ZU_CHAR> nines( 400, '9' );
    double value = 0.0;
    EXPECT_TRUE( zuFormatTryDecodeRealChars( nines.data(), 400, 10, &value, nullptr ) );
    EXPECT_EQ( value, std::numeric_limits<double>::infinity() );
}

struct BOOL_ROW {
    const char32_t *src;
    ZU_BOOL numeric;
    ZU_BOOL found;
    ZU_BOOL value;
    ZU_INT consumed;
};
static const BOOL_ROW BOOL_ROWS[] = {
    { U"", ZU_TRUE, ZU_FALSE, ZU_FALSE, 0 },        { U"tRuE ", ZU_FALSE, ZU_TRUE, ZU_TRUE, 5 },
    { U"  FALSEx", ZU_TRUE, ZU_TRUE, ZU_FALSE, 7 }, { U" tru", ZU_TRUE, ZU_FALSE, ZU_FALSE, 1 },
    { U"1", ZU_FALSE, ZU_FALSE, ZU_FALSE, 0 },      { U"0.0", ZU_TRUE, ZU_TRUE, ZU_FALSE, 3 },
    { U"-0x0.8 ", ZU_TRUE, ZU_TRUE, ZU_TRUE, 7 },   { U"0,0000000000000001", ZU_TRUE, ZU_TRUE, ZU_FALSE, 18 },
};
TEST( FormatDecode, TruthValues )
{
    for ( const BOOL_ROW &row : BOOL_ROWS ) {
        SCOPED_TRACE( &row - BOOL_ROWS );
        std::vector<ZU_CHAR> chars = makeChars( row.src );
        ZU_BOOL value = 7;
        ZU_INT consumed = -7;
        EXPECT_EQ( zuFormatTryDecodeBoolChars( chars.data(), (ZU_INT)chars.size(), row.numeric, &value, &consumed ),
                   row.found );
        EXPECT_EQ( value, row.value );
        EXPECT_EQ( consumed, row.consumed );
    }
}
TEST( FormatDecode, RangesOfStrings )
{
    ZU_STRING *src = makeString( "12 true 3.5" );
    ZU_INT i;
    double r;
    ZU_BOOL b;
    ZU_INT consumed;
    EXPECT_TRUE( zuFormatTryDecodeInt( src, 1, 10, 10, &i, &consumed ) );
    EXPECT_EQ( i, 2 );
    EXPECT_EQ( consumed, 2 );
    EXPECT_TRUE( zuFormatTryDecodeBool( src, 3, 4, ZU_FALSE, &b, &consumed ) );
    EXPECT_EQ( b, ZU_TRUE );
    EXPECT_TRUE( zuFormatTryDecodeReal( src, 8, 2, 10, &r, &consumed ) );
    EXPECT_EQ( r, 3.0 );
    EXPECT_EQ( consumed, 2 );
    EXPECT_FALSE( zuFormatTryDecodeInt( src, 11, 0, 10, &i, &consumed ) );
    expectAbort( "srcOffset + srcLength <= src->length",
                 [ & ] { zuFormatTryDecodeInt( src, 1, 11, 10, &i, nullptr ); } );
    expectAbort( "srcLength >= 0", [ & ] { zuFormatTryDecodeReal( src, 1, -1, 10, &r, nullptr ); } );
    expectAbort( "base <= 36", [ & ] { zuFormatTryDecodeInt( src, 1, 0, 37, &i, nullptr ); } );
    expectAbort( "src || srcLength == 0", [ & ] { zuFormatTryDecodeBoolChars( nullptr, 1, 0, &b, nullptr ); } );
    zuStringRelease( src );
}
TEST( FormatDecode, OutOfRangeValuesEndTheReading )
{
    const ZU_CHAR chars[] = { '5', 0xFFFFFFFF, '5' };
    ZU_INT value;
    ZU_INT consumed;
    EXPECT_TRUE( zuFormatTryDecodeIntChars( chars, 3, 10, &value, &consumed ) );
    EXPECT_EQ( consumed, 1 );
    EXPECT_FALSE( zuFormatTryDecodeIntChars( chars + 1, 2, 36, &value, &consumed ) );
}
