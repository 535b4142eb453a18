// The character database against Python's and perl's own, which were made from the published files by other hands.

#include "zu_test_support.h"

#include "zu/unicode/zu_unicode_cdmt_internal.h"
#include "zu/unicode/zu_unicode_db.h"
#include "zu/unicode/zu_unicode_genc_internal.h"
#include "zu/unicode/zu_unicode_normalizer.h"
#include "zu/unicode/zu_unicode_properties.h"
#include "zu/unicode/zu_unicode_script_internal.h"

#include <cstdio>

static constexpr ZU_CHAR CODE_POINTS = 0x110000;
static const std::string VERSION = "14.0.0";

static std::string hex( ZU_CHAR ch )
{
    std::array<char, 16> text;
    snprintf( text.data(), text.size(), "%X", ch );
    return text.data();
}

namespace {

// Counts differences and shows the first of them.
class Differences {
public:
    void expectEqual( const std::string &found, const std::string &wanted )
    {
        if ( found != wanted && ++count <= 20 ) {
            ADD_FAILURE() << "zu: " << found << "\nreference: " << wanted;
        }
    }
    ~Differences()
    {
        EXPECT_LE( count, 20 ) << "differences in all";
    }

private:
    int count = 0;
};

} // namespace

// Characters
static std::string mappingText( const ZU_CHAR *mapping, ZU_INT length )
{
    std::string text;
    for ( ZU_INT i = 0; i < length; ++i ) {
        text += ( i ? " " : "" ) + hex( mapping[ i ] );
    }
    return text;
}

// The line that unicode_reference.py prints for `ch`.
static std::string characterLine( ZU_CHAR ch )
{
    ZU_INT decimal = zu___UnicodeDecimalDbLookup( ch );
    ZU_INT length, lowerLength, upperLength, foldLength;
    ZU_UNICODE_CDMT tag;
    const ZU_CHAR *decomposition = zu___UnicodeCdmDbLookup( ch, &length, &tag );
    const ZU_CHAR *lower = zu___UnicodeLowerCaseDbLookup( ch, &lowerLength );
    const ZU_CHAR *upper = zu___UnicodeUpperCaseDbLookup( ch, &upperLength );
    const ZU_CHAR *fold = zu___UnicodeCaseFoldDbLookup( ch, &foldLength );
    std::string line = hex( ch );
    line += ";" + std::string( zu___unicodeGencRows[ zu___UnicodeGencDbLookup( ch ) ].abbreviation );
    line += ";" + std::to_string( zu___UnicodeCccvDbLookup( ch ) );
    line += ";" + ( decimal == -1 ? "" : std::to_string( decimal ) );
    line += ";" + std::string( zu___unicodeCdmtRows[ tag ].tag );
    line += ";" + mappingText( decomposition, length );
    line += ";" + mappingText( lower, lowerLength );
    line += ";" + mappingText( upper, upperLength );
    line += ";" + mappingText( fold, foldLength );
    // Neither a decomposition without a kind nor a pointer without a length would show in the text.
    if ( ( decomposition != nullptr ) != ( tag != ZU_UNICODE_CDMT_NONE ) ||
         ( lower != nullptr ) != ( lowerLength != 0 ) || ( upper != nullptr ) != ( upperLength != 0 ) ||
         ( fold != nullptr ) != ( foldLength != 0 ) || ( decomposition != nullptr ) != ( length != 0 ) ) {
        line += " (null, length and tag disagree)";
    }
    return line;
}

// Against the first Python whose database has our version.
class UnicodeConformance : public testing::Test {
protected:
    std::string python;

    void SetUp() override
    {
        for ( std::string command : { "python3", "/usr/bin/python3" } ) {
            std::string version =
                runProgram( command + " -c 'import unicodedata; print( unicodedata.unidata_version )' || true" );
            python = version == VERSION + "\n" ? command : python;
        }
        if ( python.empty() ) {
            GTEST_SKIP() << "no Python of Unicode " << VERSION;
        }
    }
    std::string ask( const std::string &argument ) const
    {
        return runProgram( python + " " ZU_TEST_SOURCE_DIR "/unicode_reference.py " + argument );
    }
};

TEST_F( UnicodeConformance, PropertiesOfAllCharactersAreThoseOfPython )
{
    std::istringstream reference( ask( "characters" ) );
    Differences differences;
    ZU_CHAR ch = 0;
    for ( std::string line; std::getline( reference, line ); ++ch ) {
        differences.expectEqual( characterLine( ch ), line );
    }
    EXPECT_EQ( ch, CODE_POINTS );
}

// Compositions
static void expectComposition( Differences &differences, const std::map<std::pair<ZU_CHAR, ZU_CHAR>, ZU_CHAR> &pairs,
                               ZU_CHAR first, ZU_CHAR second )
{
    ZU_CHAR composite = 1;
    ZU_BOOL composes = zu___UnicodeCompDbLookup( first, second, &composite );
    auto wanted = pairs.find( { first, second } );
    ZU_CHAR wantedComposite = wanted == pairs.end() ? 0 : wanted->second;
    if ( composite != wantedComposite || composes != ( wantedComposite ? ZU_TRUE : ZU_FALSE ) ) {
        differences.expectEqual( hex( first ) + " " + hex( second ) + " " + hex( composite ), hex( wantedComposite ) );
    }
}

TEST_F( UnicodeConformance, PairsComposeAsInPython )
{
    std::istringstream reference( ask( "compositions" ) );
    std::map<std::pair<ZU_CHAR, ZU_CHAR>, ZU_CHAR> pairs;
    std::set<ZU_CHAR> seconds;
    ZU_CHAR first, second, composite;
    for ( reference >> std::hex; reference >> first >> second >> composite; ) {
        pairs[ { first, second } ] = composite;
        seconds.insert( second );
    }
    ASSERT_EQ( pairs.size(), 941u );
    Differences differences;
    for ( ZU_CHAR each : seconds ) {
        for ( ZU_CHAR ch = 0; ch < CODE_POINTS; ++ch ) {
            ZU_CHAR found;
            // Nearly all do not compose, and a search for each would take minutes.
            if ( zu___UnicodeCompDbLookup( ch, each, &found ) || found ) {
                expectComposition( differences, pairs, ch, each );
            }
        }
    }
    for ( const auto &[ pair, _ ] : pairs ) {
        expectComposition( differences, pairs, pair.first, pair.second );
    }
    // Characters that compose with many others, with all that may stand behind them.
    for ( ZU_CHAR each : { 0x41u, 0x6Fu, 0x3B1u, 0x11131u } ) {
        for ( ZU_CHAR ch = 0; ch < CODE_POINTS; ++ch ) {
            expectComposition( differences, pairs, each, ch );
        }
    }
}

// Normalization
static const std::vector<std::pair<std::string, ZU_UNICODE_NORMAL_FORM>> FORMS = {
    { "NFC", ZU_UNICODE_NORMAL_FORM_NFC },
    { "NFD", ZU_UNICODE_NORMAL_FORM_NFD },
    { "NFKC", ZU_UNICODE_NORMAL_FORM_NFKC },
    { "NFKD", ZU_UNICODE_NORMAL_FORM_NFKD },
};

static std::vector<ZU_CHAR> parseText( const std::string &text )
{
    std::vector<ZU_CHAR> chars;
    std::istringstream stream( text );
    ZU_CHAR ch;
    for ( stream >> std::hex; stream >> ch; ) {
        chars.push_back( ch );
    }
    return chars;
}
// The text in the form, written in pieces of random lengths.
static std::string normalizedText( ZU_UNICODE_NORMAL_FORM form, const std::vector<ZU_CHAR> &chars,
                                   std::minstd_rand &random )
{
    ZU_UNICODE_NORMALIZER *norm = zuUnicodeNormalizerCreate( form );
    ZU_STRING *result = zuStringCreate();
    for ( size_t at = 0; at < chars.size(); ) {
        size_t length = std::min<size_t>( chars.size() - at, 1 + random() % ( 1 + random() % 200 ) );
        zuUnicodeNormalizerWriteChars( norm, &chars[ at ], (ZU_INT)length );
        zuUnicodeNormalizerRead( norm, &result, (ZU_INT)( random() % 100 ) );
        at += length;
    }
    zuUnicodeNormalizerFlush( norm );
    zuUnicodeNormalizerRead( norm, &result, -1 );
    std::string text = mappingText( zuStringBacking( result ), zuStringLength( result ) );
    zuStringRelease( result );
    zuUnicodeNormalizerRelease( norm );
    return text;
}

// Compares with lines of a text and its NFC, NFD, NFKC and NFKD.  Returns the texts of one character.
static std::set<ZU_CHAR> expectNormalizations( const std::string &lines )
{
    std::istringstream reference( lines );
    std::minstd_rand random;
    Differences differences;
    std::set<ZU_CHAR> singles;
    for ( std::string line; std::getline( reference, line ); ) {
        std::vector<std::string> fields;
        std::istringstream stream( line );
        for ( std::string field; std::getline( stream, field, ';' ); ) {
            fields.push_back( field );
        }
        if ( fields.size() != 5 ) {
            ADD_FAILURE() << line;
            return singles;
        }
        std::vector<ZU_CHAR> source = parseText( fields[ 0 ] );
        if ( source.size() == 1 ) {
            singles.insert( source[ 0 ] );
        }
        for ( size_t form = 0; form < 4; form++ ) {
            // NFC and NFD of a K form are the K form's.
            for ( size_t i = 0; i < 5; i++ ) {
                const std::string &wanted = fields[ i < 3 || form > 1 ? form + 1 : form + 3 ];
                std::string found = normalizedText( FORMS[ form ].second, parseText( fields[ i ] ), random );
                differences.expectEqual( FORMS[ form ].first + " of " + fields[ i ] + ": " + found,
                                         FORMS[ form ].first + " of " + fields[ i ] + ": " + wanted );
            }
        }
    }
    return singles;
}

TEST_F( UnicodeConformance, NormalizesAsTheConsortiumTests )
{
    std::set<ZU_CHAR> singles = expectNormalizations( ask( "normalization-test" ) );
    EXPECT_GT( singles.size(), 16000u );
    // What the file does not list by itself stays as it is.
    std::minstd_rand random;
    Differences differences;
    for ( ZU_CHAR ch = 0; ch < CODE_POINTS; ++ch ) {
        if ( ( ch < 0xD800 || ch > 0xDFFF ) && !singles.count( ch ) ) {
            for ( const auto &form : FORMS ) {
                differences.expectEqual( normalizedText( form.second, { ch }, random ), hex( ch ) );
            }
        }
    }
}

TEST_F( UnicodeConformance, NormalizesRandomTextsAsPython )
{
    expectNormalizations( ask( "normalizations" ) );
}

// Scripts and white space
class UnicodePerlConformance : public testing::Test {
protected:
    void SetUp() override
    {
        if ( runProgram( "perl -MUnicode::UCD -e 'print Unicode::UCD::UnicodeVersion()' || true" ) != VERSION ) {
            GTEST_SKIP() << "no perl of Unicode " << VERSION;
        }
    }
    // Compares each code point of each range that unicode_reference.pl prints with what `property` gives for it.
    static void expectRanges( const std::string &argument, std::string ( *property )( ZU_CHAR ch ) )
    {
        std::istringstream reference( runProgram( "perl " ZU_TEST_SOURCE_DIR "/unicode_reference.pl " + argument ) );
        Differences differences;
        ZU_CHAR ch = 0, start, end;
        for ( std::string value; reference >> std::hex >> start >> end >> value; ) {
            ASSERT_EQ( start, ch );
            for ( ; ch < end; ++ch ) {
                differences.expectEqual( hex( ch ) + " " + property( ch ), hex( ch ) + " " + value );
            }
        }
        EXPECT_EQ( ch, CODE_POINTS );
    }
};

TEST_F( UnicodePerlConformance, ScriptsOfAllCharacters )
{
    expectRanges( "scripts", []( ZU_CHAR ch ) {
        ZU_UNICODE_SCRIPT script = zuUnicodeScript( ch );
        return std::string( zu___unicodeScriptRows[ script - ( script > 98 ) ].name );
    } );
}

TEST_F( UnicodePerlConformance, WhiteSpaceOfAllCharacters )
{
    expectRanges( "white-space", []( ZU_CHAR ch ) { return std::to_string( zuUnicodeIsWhiteSpace( ch ) ); } );
}
