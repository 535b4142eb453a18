// Conversions against references that take one unit after the other and know nothing of blocks, buffers or measuring.

#include "zu/sys/zu_chars.h"

#include "zu_test_utf8.h"

using Chars = std::vector<ZU_CHAR>;
using Bytes = std::string;
using Units = std::u16string;

static constexpr ZU_CHAR REPLACEMENT = 0xFFFD;

// Runs a conversion into destinations of all lengths, or of some if there are many, and expects each to hold the
// beginning of `wanted`, nothing to be written behind its end, and the result always to be the length of the whole.
template <typename DEST, typename CONVERT>
static void expectMeasuringCopy( const DEST &wanted, CONVERT convert )
{
    static constexpr typename DEST::value_type GUARD = 0x5A;
    const ZU_INT whole = (ZU_INT)wanted.size();
    ASSERT_EQ( convert( nullptr, ZU_INT{ 0 } ), whole );
    for ( ZU_INT destLength = 0; destLength <= whole + 2; destLength++ ) {
        if ( destLength > 40 && destLength < whole - 8 ) {
            destLength = std::min( destLength + 61, whole - 8 );
        }
        DEST dest( (size_t)destLength + 1, GUARD );
        ASSERT_EQ( convert( dest.data(), destLength ), whole ) << "into " << destLength;
        size_t stored = (size_t)std::min( destLength, whole );
        ASSERT_TRUE( std::equal( wanted.begin(), wanted.begin() + (ptrdiff_t)stored, dest.begin() ) )
            << "into " << destLength;
        ASSERT_EQ( dest.back(), GUARD ) << "into " << destLength;
    }
}

// The same for both forms of a conversion to a text.
template <typename DEST, typename UNIT>
static void expectMeasuringCopyTo( DEST wanted, ZU_INT ( *convert )( UNIT *, ZU_INT, const ZU_CHAR *, ZU_INT, ZU_BOOL ),
                                   const Chars &src )
{
    for ( ZU_BOOL addNul : { ZU_FALSE, ZU_TRUE } ) {
        if ( addNul ) {
            wanted.push_back( 0 );
        }
        expectMeasuringCopy( wanted, [ & ]( UNIT *dest, ZU_INT destLength ) {
            return convert( dest, destLength, src.data(), (ZU_INT)src.size(), addNul );
        } );
    }
}

// UTF-8

static Chars decodedUtf8( const Bytes &src )
{
    std::u32string text = decodeUtf8( src, false );
    std::replace( text.begin(), text.end(), UTF8_FAULT, (char32_t)REPLACEMENT );
    return Chars( text.begin(), text.end() );
}
static Bytes encodedUtf8( const Chars &src )
{
    Bytes result;
    for ( ZU_CHAR ch : src ) {
        ch = ch > 0x10FFFF ? REPLACEMENT : ch;
        int behind = ch < 0x80 ? 0 : ch < 0x800 ? 1 : ch < 0x10000 ? 2 : 3;
        static constexpr int MARKS[] = { 0, 0xC0, 0xE0, 0xF0 };
        result += (char)( MARKS[ behind ] | (int)( ch >> 6 * behind ) );
        while ( behind-- > 0 ) {
            result += (char)( 0x80 | ( ch >> 6 * behind & 0x3F ) );
        }
    }
    return result;
}
// A conversion from a text, by its length and as a terminated one
template <typename SOURCE, typename UNIT>
static void expectMeasuringCopyFrom( const SOURCE &src, ZU_INT ( *convert )( ZU_CHAR *, ZU_INT, const UNIT *, ZU_INT ),
                                     const Chars &wanted )
{
    SCOPED_TRACE( testing::PrintToString( std::vector<int>( src.begin(), src.end() ) ) );
    for ( ZU_INT length : { (ZU_INT)src.size(), ZU_INT{ -1 } } ) {
        if ( length >= 0 || src.find( UNIT{ 0 } ) == SOURCE::npos ) {
            expectMeasuringCopy( wanted, [ & ]( ZU_CHAR *dest, ZU_INT destLength ) {
                return convert( dest, destLength, src.c_str(), length );
            } );
        }
    }
}

class CharsUtf8 : public WithVectors {};
INSTANTIATE_TEST_SUITE_P( Shuffle, CharsUtf8, ALL_VECTORS );

TEST_P( CharsUtf8, DecodesWhatNeverEndsWell )
{
    expectMeasuringCopyFrom( Bytes( "\xC0\x80" ), zuCharsConvertFromUtf8, { 0 } );
    expectMeasuringCopyFrom( Bytes( "\xED\xA0\x80" ), zuCharsConvertFromUtf8, { 0xD800 } );
    expectMeasuringCopyFrom( Bytes( "\xF4\x90\x80\x80" ), zuCharsConvertFromUtf8, {} );
    expectMeasuringCopyFrom( Bytes( "\xE2\x41" ), zuCharsConvertFromUtf8, { REPLACEMENT, 'A' } );
    expectMeasuringCopyFrom( Bytes( "\x80\x80\x41" ), zuCharsConvertFromUtf8, { REPLACEMENT, 'A' } );
    expectMeasuringCopyFrom( Bytes( "A\xE2\x82" ), zuCharsConvertFromUtf8, { 'A' } );
}

// Every sequence of up to four of the bytes at which something changes, alone and within text.
TEST_P( CharsUtf8, DecodesEverySequence )
{
    static constexpr uint8_t EDGES[] = { 0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0xA0, 0xBF, 0xC0, 0xC1,
                                         0xDF, 0xE0, 0xED, 0xEF, 0xF0, 0xF3, 0xF4, 0xF7, 0xF8, 0xFF };
    static constexpr size_t COUNT = sizeof EDGES;
    const Bytes ascii( 40, 'x' );
    const Bytes greek = encodedUtf8( Chars( 20, 0x3B1 ) );
    const Bytes chinese = encodedUtf8( Chars( 13, 0x4E00 ) );
    std::array<ZU_CHAR, 128> dest;
    for ( size_t number = 0; number < COUNT * COUNT * COUNT * COUNT; number++ ) {
        Bytes sequence;
        for ( size_t rest = number; rest > 0; rest /= COUNT ) {
            sequence += (char)EDGES[ rest % COUNT ];
        }
        for ( const Bytes &src : { sequence, ascii + sequence + ascii, greek + sequence + chinese } ) {
            Chars wanted = decodedUtf8( src );
            ZU_INT length = zuCharsConvertFromUtf8( dest.data(), dest.size(), src.data(), (ZU_INT)src.size() );
            ASSERT_EQ( Chars( dest.begin(), dest.begin() + length ), wanted ) << "sequence " << number;
            ASSERT_EQ( zuCharsConvertFromUtf8( nullptr, 0, src.data(), (ZU_INT)src.size() ), length );
        }
    }
}

// A text of runs of one kind, such as languages have them, and now and then something that is none.
static Chars randomText( std::mt19937_64 &random, size_t length )
{
    static constexpr ZU_CHAR ENDS[] = { 0x80, 0x800, 0x10000, 0x110000, 0x110000 };
    Chars text;
    while ( text.size() < length ) {
        ZU_CHAR end = ENDS[ random() % 5 ];
        for ( size_t run = random() % 40; run > 0; run-- ) {
            text.push_back( (ZU_CHAR)( random() % end ) );
        }
        if ( random() % 8 == 0 ) {
            static constexpr ZU_CHAR ODD[] = { 0, 0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, 0xFFFFFFFF };
            text.push_back( ODD[ random() % 7 ] );
        }
    }
    text.resize( length );
    return text;
}

TEST_P( CharsUtf8, DecodesAndEncodesRandomText )
{
    SeededRandom random;
    for ( int round = 0; round < 1500 && !HasFatalFailure(); round++ ) {
        Chars text = randomText( random, random() % ( round % 50 ? 120 : 5000 ) );
        Bytes bytes = encodedUtf8( text );
        expectMeasuringCopyTo( bytes, zuCharsConvertToUtf8, text );
        // Damaged, it still decodes as byte by byte.
        for ( size_t i = 0; i < bytes.size(); i += 1 + random() % 100 ) {
            bytes[ i ] = (char)random();
        }
        expectMeasuringCopyFrom( bytes, zuCharsConvertFromUtf8, decodedUtf8( bytes ) );
    }
    Chars all;
    for ( ZU_CHAR ch = 0; ch < 0x110010; ch++ ) {
        all.push_back( ch );
    }
    Bytes bytes( 5000000, 0 );
    bytes.resize(
        (size_t)zuCharsConvertToUtf8( bytes.data(), (ZU_INT)bytes.size(), all.data(), (ZU_INT)all.size(), ZU_FALSE ) );
    EXPECT_TRUE( bytes == encodedUtf8( all ) );
}

// ASCII
TEST( CharsAscii, BothWays )
{
    Bytes bytes;
    Chars chars, decoded;
    for ( int round = 0; round < 300; round++ ) {
        bytes += (char)round;
        decoded.push_back( round % 256 < 0x80 ? (ZU_CHAR)round % 256 : REPLACEMENT );
        chars.push_back( (ZU_CHAR)round * 0x10001 );
    }
    Bytes encoded;
    for ( ZU_CHAR ch : chars ) {
        encoded += ch < 0x80 ? (char)ch : '?';
    }
    expectMeasuringCopyFrom( bytes, zuCharsConvertFromAscii, decoded );
    expectMeasuringCopyFrom( bytes.substr( 1, 255 ), zuCharsConvertFromAscii, Chars( &decoded[ 1 ], &decoded[ 256 ] ) );
    expectMeasuringCopyTo( encoded, zuCharsConvertToAscii, chars );
}

// UTF-16 and the narrow encoding

static Units encodedWide( const Chars &src )
{
    Units units;
    for ( ZU_CHAR ch : src ) {
        ch = ch == 0 || ch > 0x10FFFF ? REPLACEMENT : ch;
        if ( ch > 0xFFFF ) {
            units += (char16_t)( 0xD7C0 + ( ch >> 10 ) );
            ch = 0xDC00 + ch % 0x400;
        }
        units += (char16_t)ch;
    }
    return units;
}
static bool isHalf( ZU_CHAR ch, ZU_CHAR first )
{
    return ch >= first && ch < first + 0x400;
}
// Joins the pairs; what is left of surrogates is replaced.
static Chars joined( const Units &src )
{
    Chars chars;
    for ( size_t i = 0; i < src.size(); i++ ) {
        ZU_CHAR ch = src[ i ];
        if ( isHalf( ch, 0xD800 ) && i + 1 < src.size() && isHalf( src[ i + 1 ], 0xDC00 ) ) {
            ch = ( ch - 0xD7C0 ) * 0x400 + ( src[ ++i ] - 0xDC00 );
        } else if ( isHalf( ch, 0xD800 ) || isHalf( ch, 0xDC00 ) ) {
            ch = REPLACEMENT;
        }
        chars.push_back( ch );
    }
    return chars;
}
TEST( CharsWide, WidensUnitsAndMakesPairs )
{
    SeededRandom random;
    for ( int round = 0; round < 100 && !HasFatalFailure(); round++ ) {
        Chars text = randomText( random, random() % 200 );
        Units units = encodedWide( text );
        expectMeasuringCopyTo( units, zuCharsConvertToWcstr, text );
        expectMeasuringCopyFrom( units, zuCharsConvertFromWcstr, Chars( units.begin(), units.end() ) );
    }
}

TEST( CharsNarrow, TravelThroughUtf16 )
{
    SeededRandom random;
    for ( int round = 0; round < 600 && !HasFatalFailure(); round++ ) {
        // Around the 96 units that need no heap, and shorter; a third is ASCII
        Chars text = randomText( random, round % 2 ? 90 + random() % 12 : random() % 12 );
        if ( round % 3 == 0 ) {
            std::transform( text.begin(), text.end(), text.begin(), []( ZU_CHAR ch ) { return ch % 0x7F + 1; } );
        }
        Bytes bytes = encodedUtf8( joined( encodedWide( text ) ) );
        expectMeasuringCopyTo( bytes, zuCharsConvertToCstr, text );
        Units wide = encodedWide( decodedUtf8( bytes ) );
        expectMeasuringCopyFrom( bytes, zuCharsConvertFromCstr, Chars( wide.begin(), wide.end() ) );
    }
}

// The examples of the Unicode Standard, tables 3-8 to 3-11: one replacement for each longest beginning of a sequence
TEST( CharsNarrow, BrokenSequencesAreReplaced )
{
    static constexpr struct {
        const char *bytes;
        const char32_t *chars;
    } ROWS[] = {
        { "\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41", U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA" },
        { "\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41", U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA" },
        { "\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB" },
        { "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", U"\uFFFD\uFFFD\uFFFD\uFFFDA" },
        { "\xED\x9F\xBF\xEE\x80\x80\xE0\xA0\x80\xC2\x80\xC3", U"\uD7FF\uE000\u0800\u0080\uFFFD" },
    };
    for ( const auto &row : ROWS ) {
        const std::u32string wanted = row.chars;
        expectMeasuringCopyFrom( Bytes( row.bytes ), zuCharsConvertFromCstr, Chars( wanted.begin(), wanted.end() ) );
    }
    // The same amid sound text of any length
    SeededRandom random;
    Bytes bytes;
    Chars chars;
    for ( int i = 0; i < 300; i++ ) {
        Bytes sound = encodedUtf8( joined( encodedWide( randomText( random, random() % ( i % 3 ? 20 : 700 ) ) ) ) );
        Units units = encodedWide( decodedUtf8( sound ) );
        const auto &row = ROWS[ random() % std::size( ROWS ) ];
        const std::u32string wanted = row.chars;
        bytes += sound + row.bytes;
        chars.insert( chars.end(), units.begin(), units.end() );
        chars.insert( chars.end(), wanted.begin(), wanted.end() );
    }
    Chars dest( chars.size() );
    EXPECT_EQ( zuCharsConvertFromCstr( nullptr, 0, bytes.data(), (ZU_INT)bytes.size() ), (ZU_INT)chars.size() );
    zuCharsConvertFromCstr( dest.data(), (ZU_INT)dest.size(), bytes.data(), (ZU_INT)bytes.size() );
    EXPECT_EQ( dest, chars );
}

TEST( Chars, SanitizeJoinsPairsAndDropsTheRest )
{
    SeededRandom random;
    static constexpr ZU_CHAR ALPHABET[] = { 'a',    0xD800, 0xDBFF,   0xDC00,   0xDFFF,
                                            0xD83D, 0xDE00, 0x10FFFF, 0x110000, 0xFFFFFFFF };
    for ( int round = 0; round < 2000 && !HasFatalFailure(); round++ ) {
        Chars src( random() % 12 );
        std::generate( src.begin(), src.end(), [ & ] { return ALPHABET[ random() % 10 ]; } );
        Chars wanted;
        for ( size_t i = 0; i < src.size(); i++ ) {
            if ( isHalf( src[ i ], 0xDC00 ) && i > 0 && isHalf( src[ i - 1 ], 0xD800 ) ) {
                wanted.push_back( ( src[ i - 1 ] - 0xD7C0 ) * 0x400 + ( src[ i ] - 0xDC00 ) );
            } else if ( src[ i ] <= 0x10FFFF && !isHalf( src[ i ], 0xD800 ) && !isHalf( src[ i ], 0xDC00 ) ) {
                wanted.push_back( src[ i ] );
            }
        }
        expectMeasuringCopy( wanted, [ & ]( ZU_CHAR *dest, ZU_INT destLength ) {
            return zuCharsSanitize( dest, destLength, src.data(), (ZU_INT)src.size() );
        } );
        EXPECT_EQ( zuCharsAllOk( src.data(), (ZU_INT)src.size() ),
                   std::all_of( src.begin(), src.end(), []( ZU_CHAR ch ) { return ch < 0x110000; } ) );
        zuCharsSanitize( src.data(), (ZU_INT)src.size(), src.data(), (ZU_INT)src.size() );
        EXPECT_TRUE( std::equal( wanted.begin(), wanted.end(), src.begin() ) ) << "in place";
    }
    EXPECT_EQ( zuCharsAllOk( nullptr, 0 ), ZU_TRUE );
}
