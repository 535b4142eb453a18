// The two ways through the normalizer against each other, and rows for what a reader of the standard would look up.
// tests/conformance compares with what others make of the standard, and fuzz with a plain model of the three stages.

#include "zu_test_string.h"

#include "zu/base/zu_string_normalize.h"
#include "zu/unicode/zu_unicode_normalizer.h"

static void writeText( ZU_UNICODE_NORMALIZER *norm, const std::u32string &text )
{
    std::vector<ZU_CHAR> chars( text.begin(), text.end() );
    zuUnicodeNormalizerWriteChars( norm, chars.data(), (ZU_INT)chars.size() );
}
static std::u32string readText( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    ZU_STRING *zus = zuStringCreate();
    ZU_INT length = zuUnicodeNormalizerRead( norm, &zus, count );
    EXPECT_EQ( length, zuStringLength( zus ) );
    return takeChars( zus );
}

// Characters that are seldom in texts and always in trouble, with the likelihood of each kind in a text drawn anew.
class Alphabet {
public:
    explicit Alphabet( std::mt19937 &randomNumbers ) : random( randomNumbers )
    {
        for ( size_t i = 0; i < 6; i++ ) {
            kinds.push_back( &KINDS[ pick( KINDS.size() ) ] );
        }
    }
    size_t pick( size_t count )
    {
        return std::uniform_int_distribution<size_t>( 0, count - 1 )( random );
    }
    ZU_CHAR ch()
    {
        const std::u32string &kind = *kinds[ pick( kinds.size() ) ];
        if ( kind.empty() ) {
            ZU_CHAR any = (ZU_CHAR)pick( 0x30000 );
            return any == 0x2FFFF ? 0xFFFFFFFF : any > 0x2FF00 ? any + 0xE0000 : any;
        }
        return kind[ pick( kind.size() ) ];
    }
    std::u32string text( size_t length )
    {
        std::u32string text;
        while ( text.size() < length ) {
            text += pick( 50 ) ? std::u32string( 1, ch() ) : std::u32string( pick( 20 ), ch() );
        }
        return text;
    }

private:
    std::mt19937 &random;
    std::vector<const std::u32string *> kinds;
    static const std::vector<std::u32string> KINDS;
};

const std::vector<std::u32string> Alphabet::KINDS = {
    U"aeiouAEO ,.", // compose with much
    U"\u00E9\u00C5\u1EA1\u1E69\u01D6\u1FB4\u1FED\u0390\u1EBF",
    U"\u0300\u0301\u0302\u0308\u0323\u0327\u0338\u0345\u0316\u031B", // compose, but for one
    U"\u05AE\u05B0\u05B1\u05C1\u064B\u0651\u0670\u093C\u094D\u0E38\u20D2\U0001D165\u0F71\u0F72\u0F74",
    U"\u0340\u0341\u0343\u0344\u0F73\u0F75\u0F81",                                 // marks that decompose
    U"\u212B\u2126\u0958\u09DC\u0F43\uFB1F\u2ADC\U0001D15E\uF900\U0002F800\u1F71", // never come back
    U"\uFB01\uFDFA\uFF9E\uFF76\uFF21\u1E9B\u03D3\u00A8\u3316\u3131\uFFC2\u00BD",
    U"\uAC00\uAC01\uD7A3\uD788",
    U"\u1100\u1112\u1161\u1175\u1176\u11A7\u11A8\u11C2\u11C3\u1113\u1160",
    U"\u09C7\u09BE\u09D7\u0DD9\u0DCA\u0DCF\U00011131\U00011127\u0CC6\u0CC2\u0CD5\u1025\u102E", // starters that compose
    U"\u3042\u304B\u3099\u309A\u4E00\U00020000\U0001F600\u0416",
    { 0xD83D, 0xDE00, 0xD800, 0xDC00, 0xD834, 0xDD5E, 'a', 0x301 },
    { 0x110000, 0xFFFFFFFF, 0x10FFFF, 'e', 0x301 },
    {} // any
};

// Texts, of which most is taken in whole stretches, and the same character by character, with nothing to tell the two
// apart at any time.
TEST( UnicodeNormalizer, TakesTextsAsTheirCharacters )
{
    for ( unsigned seed = 0; seed < 800; seed++ ) {
        std::mt19937 random( seed );
        Alphabet alphabet( random );
        SCOPED_TRACE( "seed " + std::to_string( seed ) );
        zu::Ref<ZU_UNICODE_NORMALIZER> fast = zu::adopt( zuUnicodeNormalizerCreate( seed % 4 ) );
        zu::Ref<ZU_UNICODE_NORMALIZER> slow = zu::adopt( zuUnicodeNormalizerCreate( seed % 4 ) );
        for ( int step = 0; step < 40; step++ ) {
            size_t what = alphabet.pick( 20 );
            if ( what < 14 ) {
                std::u32string text = alphabet.text( what < 4 ? 1 : alphabet.pick( what == 4 ? 400 : 40 ) );
                if ( what == 5 && seed % 7 == 0 && !text.empty() ) {
                    // A long run of few different marks, or of one.
                    std::u32string marks = text.substr( 0, 1 + alphabet.pick( 4 ) );
                    for ( size_t length = alphabet.pick( 2 ) ? 9000 : alphabet.pick( 5000 ); text.size() < length; ) {
                        text += marks[ alphabet.pick( marks.size() ) ];
                    }
                }
                writeText( fast.get(), text );
                for ( ZU_CHAR ch : text ) {
                    zuUnicodeNormalizerWriteChar( slow.get(), ch );
                }
            } else if ( what < 18 ) {
                std::vector<ZU_CHAR> chars( alphabet.pick( 2 ) ? alphabet.pick( 10 ) : 20000 );
                ZU_INT count = zuUnicodeNormalizerReadChars( slow.get(), chars.data(), (ZU_INT)chars.size() );
                ASSERT_EQ( readText( fast.get(), (ZU_INT)chars.size() ),
                           std::u32string( chars.begin(), chars.begin() + count ) );
            } else if ( what == 18 && alphabet.pick( 3 ) == 0 ) {
                zuUnicodeNormalizerFlush( fast.get() );
                zuUnicodeNormalizerFlush( slow.get() );
            }
            ASSERT_EQ( zuUnicodeNormalizerReadable( fast.get() ), zuUnicodeNormalizerReadable( slow.get() ) )
                << "step " << step;
        }
        zuUnicodeNormalizerFlush( fast.get() );
        zuUnicodeNormalizerFlush( slow.get() );
        ASSERT_EQ( readText( fast.get(), -1 ), readText( slow.get(), -1 ) );
        ASSERT_EQ( zuUnicodeNormalizerReadable( fast.get() ), 0 );
    }
}

// Strings as a whole, most of them so short that they are normalized at once
TEST( UnicodeNormalizer, MakesOfStringsWhatItMakesOfTheirCharacters )
{
    static constexpr void ( *NORMALIZE[] )( ZU_STRING ** ) = { zuStringNormalizeNFC, zuStringNormalizeNFKC,
                                                               zuStringNormalizeNFD, zuStringNormalizeNFKD };
    for ( unsigned seed = 0; seed < 4000; seed++ ) {
        std::mt19937 random( seed );
        Alphabet alphabet( random );
        std::u32string text = alphabet.text( alphabet.pick( 70 ) );
        std::erase_if( text, []( ZU_CHAR ch ) { return !ZU_CHAR_OK( ch ); } );
        zu::Ref<ZU_UNICODE_NORMALIZER> slow = zu::adopt( zuUnicodeNormalizerCreate( seed % 4 ) );
        for ( ZU_CHAR ch : text ) {
            zuUnicodeNormalizerWriteChar( slow.get(), ch );
        }
        zuUnicodeNormalizerFlush( slow.get() );
        ZU_STRING *zus = makeString( text );
        NORMALIZE[ seed % 4 ]( &zus );
        ASSERT_EQ( takeChars( zus ), readText( slow.get(), -1 ) ) << "seed " << seed;
    }
}

// Rows: what goes in, in one write for each string, and what has come out ahead of the flush and behind it
static constexpr ZU_UNICODE_NORMAL_FORM NFC = ZU_UNICODE_NORMAL_FORM_NFC, NFKC = ZU_UNICODE_NORMAL_FORM_NFKC;
static constexpr ZU_UNICODE_NORMAL_FORM NFD = ZU_UNICODE_NORMAL_FORM_NFD, NFKD = ZU_UNICODE_NORMAL_FORM_NFKD;

static void expectNormalized( ZU_UNICODE_NORMAL_FORM form, const std::vector<std::u32string> &writes,
                              const std::u32string &early, const std::u32string &late )
{
    zu::Ref<ZU_UNICODE_NORMALIZER> norm = zu::adopt( zuUnicodeNormalizerCreate( form ) );
    for ( const std::u32string &text : writes ) {
        writeText( norm.get(), text );
    }
    EXPECT_EQ( readText( norm.get(), -1 ), early );
    zuUnicodeNormalizerFlush( norm.get() );
    EXPECT_EQ( readText( norm.get(), -1 ), late );
}
TEST( UnicodeNormalizer, HoldsBackWhatMayChange )
{
    expectNormalized( NFC, { U"e", U"\u0301" }, U"", U"\u00E9" );
    expectNormalized( NFC, { U"abcde" }, U"abc", U"de" );
    expectNormalized( NFC, { U"abcdefghijklm", U"\u0327n" }, U"abcdefghijkl", U"m\u0327n" );
    expectNormalized( NFC, { U"abcdefghijq", U"\u0327", U"lm" }, U"abcdefghijq\u0327", U"lm" );
    expectNormalized( NFD, { U"\u00E9" }, U"", U"e\u0301" );
    expectNormalized( NFD, { U"abcdefghijk\u00E9" }, U"abcdefghijk", U"e\u0301" );
    expectNormalized( NFD, { U"\u1E0B\u0323" }, U"", U"d\u0323\u0307" );
    expectNormalized( NFC, { U"\u1E0B\u0323" }, U"", U"\u1E0D\u0307" );
    // The last mark is of the next higher class, and composes over those that are blocked.
    expectNormalized( NFC, { U"e\u05AE\u05AE\u05AE\u05AE\u0301" }, U"", U"\u00E9\u05AE\u05AE\u05AE\u05AE" );
    expectNormalized( NFD, { U"\uAC00" }, U"\u1100", U"\u1161" );
    expectNormalized( NFC, { U"\u1100\u1161\u11A8" }, U"", U"\uAC01" );
    expectNormalized( NFC, { U"\uFB01" }, U"", U"\uFB01" );
    expectNormalized( NFKC, { U"\uFB01" }, U"", U"fi" );
    expectNormalized( NFKD, { U"\uFB01" }, U"f", U"i" );
    expectNormalized( NFC, { { 0xD83D }, { 0xDE00 } }, U"", U"\U0001F600" );
    expectNormalized( NFC, { { 0xDE00 } }, U"", U"" );
    expectNormalized( NFC, { { 0xD83D, 'a' } }, U"", U"a" );
    expectNormalized( NFC, { { 'a', 0xD83D } }, U"", U"a" );
}
TEST( UnicodeNormalizer, LetsLongRunsGo )
{
    for ( ZU_UNICODE_NORMAL_FORM form : { NFC, NFKC, NFD, NFKD } ) {
        std::u32string marks( 4096, U'\u0301' );
        expectNormalized( form, { marks.substr( 1 ) }, U"", marks.substr( 1 ) );
        expectNormalized( form, { marks + marks.substr( 3192 ) }, marks, marks.substr( 3192 ) );
        // Ordered on either side of the cut alone.
        expectNormalized( form, { marks + U"\u0323" }, marks, U"\u0323" );
        expectNormalized( form, { marks.substr( 1 ) + U"\u0323" }, U"\u0323" + marks.substr( 1 ), U"" );
    }
}
TEST( UnicodeNormalizer, ComposesNothingAcrossFlushAndClear )
{
    zu::Ref<ZU_UNICODE_NORMALIZER> norm = zu::adopt( zuUnicodeNormalizerCreate( NFC ) );
    writeText( norm.get(), U"e" );
    zuUnicodeNormalizerFlush( norm.get() );
    writeText( norm.get(), U"\u0301" );
    zuUnicodeNormalizerFlush( norm.get() );
    EXPECT_EQ( readText( norm.get(), 1 ), U"e" );
    writeText( norm.get(), { 'a', 'b', 'c', 0xD83D } );
    zuUnicodeNormalizerClear( norm.get() );
    EXPECT_EQ( zuUnicodeNormalizerReadable( norm.get() ), 0 );
    writeText( norm.get(), { 0xDE00, 0x301 } );
    zuUnicodeNormalizerFlush( norm.get() );
    EXPECT_EQ( readText( norm.get(), -1 ), U"\u0301" );
}
TEST( UnicodeNormalizer, TakesPartsOfStrings )
{
    zu::Ref<ZU_UNICODE_NORMALIZER> norm = zu::adopt( zuUnicodeNormalizerCreate( NFC ) );
    zu::Ref<ZU_STRING> src = zu::adopt( zuStringCreateFromUtf8( "ae\u0301b", -1 ) );
    ZU_STRING *dest = zuStringCreateFromAscii( ">", -1 );
    zuUnicodeNormalizerWrite( norm.get(), src.get() );
    zuUnicodeNormalizerWriteInner( norm.get(), src.get(), 1, 3 );
    zuUnicodeNormalizerWriteOuter( norm.get(), src.get(), 0, 2 );
    zuUnicodeNormalizerWriteOuter( norm.get(), src.get(), 2, 1 );
    zuUnicodeNormalizerWriteLeading( norm.get(), src.get(), 2 );
    zuUnicodeNormalizerWriteTrailing( norm.get(), src.get(), 2 );
    zuUnicodeNormalizerFlush( norm.get() );
    EXPECT_EQ( zuUnicodeNormalizerRead( norm.get(), &dest, 3 ), 3 );
    EXPECT_EQ( zuUnicodeNormalizerRead( norm.get(), &dest, 0 ), 0 );
    EXPECT_EQ( zuUnicodeNormalizerRead( norm.get(), &dest, -1 ), 10 );
    EXPECT_EQ( takeChars( dest ), U">a\u00E9b\u00E9b\u0301baeba\u00E9b" );
}
