// zu text: what is in a text file, and the text in another form.
//
// A file is read in blocks, so that its size does not decide on the memory.  Each code point is only counted; in the
// end the database is asked about each that there was, once.  A text that is transformed is written a block at a time,
// too: the normalizer holds back what the next block may change.

#include "zu_tool.h"

#include <algorithm>

static constexpr ZU_CHAR CODE_POINTS = 0x110000;
static constexpr ZU_INT CATEGORIES = 30;
static constexpr ZU_INT SCRIPTS = 163;

// UTF-8 as it comes, in blocks.  It goes to a sink with takeCodePoint( ch ) and takeInvalid().
//
// What is well formed, and how the rest is divided, is told by section 3.9 of the Unicode Standard (table 3-7, and
// "U+FFFD Substitution of Maximal Subparts"): a sequence that breaks off is one invalid sequence, and so is each byte
// that begins none.
class TextDecoder {
public:
    template <typename SINK>
    void take( const unsigned char *block, size_t length, SINK *sink )
    {
        for ( const unsigned char *pos = block, *end = block + length; pos < end; pos++ ) {
            unsigned char byte = *pos;
            if ( missing > 0 ) {
                if ( byte >= lowest && byte <= highest ) {
                    value = value << 6 | ( byte & 0x3Fu );
                    lowest = 0x80;
                    highest = 0xBF;
                    if ( --missing == 0 ) {
                        sink->takeCodePoint( value );
                    }
                    continue;
                }
                missing = 0;
                sink->takeInvalid();
            }
            if ( byte < 0x80 ) {
                sink->takeCodePoint( byte );
            } else if ( byte < 0xC2 || byte > 0xF4 ) {
                sink->takeInvalid();
            } else {
                missing = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
                value = byte & ( 0x3Fu >> missing );
                // No overlong forms, no surrogates, nothing above U+10FFFF
                lowest = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
                highest = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
            }
        }
    }
    template <typename SINK>
    void end( SINK *sink )
    {
        if ( missing > 0 ) {
            missing = 0;
            sink->takeInvalid();
        }
    }

private:
    // The sequence that has begun: what it yields so far, the bytes that it lacks, and the range of the next of them
    ZU_CHAR value = 0;
    int missing = 0;
    unsigned char lowest = 0;
    unsigned char highest = 0;
};

// The counts of one text
class TextCounts {
public:
    ZU_INT bytes = 0;
    ZU_INT codePoints = 0; // well-formed sequences
    ZU_INT invalid = 0;    // sequences that are not
    ZU_INT lines = 0;
    ZU_INT longestLine = 0; // number of the first of the longest lines; 0: there is no line
    ZU_INT longestLength = 0;
    std::vector<ZU_INT> perCodePoint = std::vector<ZU_INT>( CODE_POINTS );

    void take( const unsigned char *block, size_t length );
    void end();
    void takeCodePoint( ZU_CHAR ch );
    void takeInvalid();

private:
    void endLine();

    TextDecoder decoder;
    // The line that has begun
    bool lineOpen = false;
    bool afterCarriageReturn = false;
    ZU_INT lineLength = 0;
};

void TextCounts::take( const unsigned char *block, size_t length )
{
    bytes += (ZU_INT)length;
    decoder.take( block, length, this );
}
void TextCounts::end()
{
    decoder.end( this );
    if ( lineOpen ) {
        endLine();
    }
}
void TextCounts::takeCodePoint( ZU_CHAR ch )
{
    codePoints++;
    perCodePoint[ ch ]++;
    bool behindCarriageReturn = afterCarriageReturn;
    afterCarriageReturn = ch == ZU_CHAR_CARRIAGE_RETURN;
    if ( !zuUnicodeIsNlf( ch ) ) {
        lineOpen = true;
        lineLength++;
    } else if ( ch != ZU_CHAR_LINE_FEED || !behindCarriageReturn ) {
        endLine();
    }
}
void TextCounts::takeInvalid()
{
    invalid++;
    lineOpen = true;
    afterCarriageReturn = false;
}
void TextCounts::endLine()
{
    lines++;
    if ( lineLength > longestLength || longestLine == 0 ) {
        longestLength = lineLength;
        longestLine = lines;
    }
    lineOpen = false;
    lineLength = 0;
}

// Groups
struct TEXT_GROUP {
    ZU_INT value; // of the category or script
    ZU_INT count;
};

// Sums the counts of the code points by what `classify` says of each; the largest group comes first.
static std::vector<TEXT_GROUP> textGroups( const TextCounts &counts, ZU_INT ( *classify )( ZU_CHAR ), ZU_INT values )
{
    std::vector<TEXT_GROUP> groups;
    for ( ZU_INT value = 0; value < values; value++ ) {
        groups.push_back( { value, 0 } );
    }
    for ( ZU_CHAR ch = 0; ch < CODE_POINTS; ch++ ) {
        if ( counts.perCodePoint[ ch ] > 0 ) {
            groups[ (size_t)classify( ch ) ].count += counts.perCodePoint[ ch ];
        }
    }
    std::stable_sort( groups.begin(), groups.end(),
                      []( const TEXT_GROUP &a, const TEXT_GROUP &b ) { return a.count > b.count; } );
    while ( !groups.empty() && groups.back().count == 0 ) {
        groups.pop_back();
    }
    return groups;
}

// For a reader
static void textPrintGroups( ZU_STRING **report, const TextCounts &counts, const std::vector<TEXT_GROUP> &groups,
                             TEXT ( *name )( ZU_INT value ) )
{
    for ( const TEXT_GROUP &group : groups ) {
        double percent = 100.0 * (double)group.count / (double)counts.codePoints;
        zu::appendFormat( report, "    %-28s%12i  %5.1r %%\n", name( group.value ), group.count,
                          percent + 0.05 ); // formats cut digits off
    }
}
static TEXT textCategoryName( ZU_INT genc )
{
    return zu::format( "%~s  %~s", zuUnicodeGencAbbreviation( genc ), zuUnicodeGencDescription( genc ) );
}
static TEXT textScriptName( ZU_INT script )
{
    return zu::adopt( zuUnicodeScriptName( script ) );
}
static void textPrintReport( const TEXT &name, const TextCounts &counts )
{
    TEXT report = zu::format( "%s\n", toolBold( stdout, name ) );
    zu::appendFormat( report.inOut(), "  bytes                       %14i\n", counts.bytes );
    zu::appendFormat( report.inOut(), "  code points                 %14i\n", counts.codePoints );
    zu::appendFormat( report.inOut(), "  lines                       %14i\n", counts.lines );
    zu::appendFormat( report.inOut(), "  invalid sequences           %14i\n", counts.invalid );
    if ( counts.longestLine > 0 ) {
        zu::appendFormat( report.inOut(), "  longest line                %14i  code points, in line %i\n",
                          counts.longestLength, counts.longestLine );
    }
    if ( counts.codePoints > 0 ) {
        zu::appendFormat( report.inOut(), "%#%  general categories\n" );
        textPrintGroups( report.inOut(), counts, textGroups( counts, zuUnicodeGenc, CATEGORIES ), textCategoryName );
        zu::appendFormat( report.inOut(), "%#%  scripts\n" );
        textPrintGroups( report.inOut(), counts, textGroups( counts, zuUnicodeScript, SCRIPTS ), textScriptName );
    }
    toolPrint( stdout, report.get() );
}

// For a program
static void textAddGroups( ToolJson *json, const char *key, const std::vector<TEXT_GROUP> &groups,
                           void ( *addName )( ToolJson *json, ZU_INT value ) )
{
    json->openArray( key );
    for ( const TEXT_GROUP &group : groups ) {
        json->openObject();
        addName( json, group.value );
        json->addInt( "count", group.count );
        json->close();
    }
    json->close();
}
static void textAddCategory( ToolJson *json, ZU_INT genc )
{
    json->add( "abbreviation", zu::adopt( zuUnicodeGencAbbreviation( genc ) ) );
    json->add( "name", zu::adopt( zuUnicodeGencDescription( genc ) ) );
}
static void textAddScript( ToolJson *json, ZU_INT script )
{
    json->add( "name", textScriptName( script ) );
}
static void textAddJson( ToolJson *json, const TEXT &name, const TextCounts &counts )
{
    json->openObject();
    json->add( "file", name );
    json->addInt( "bytes", counts.bytes );
    json->addInt( "codePoints", counts.codePoints );
    json->addInt( "lines", counts.lines );
    json->addInt( "invalidSequences", counts.invalid );
    if ( counts.longestLine > 0 ) {
        json->openObject( "longestLine" );
        json->addInt( "line", counts.longestLine );
        json->addInt( "codePoints", counts.longestLength );
        json->close();
    } else {
        json->add( "longestLine", nullptr );
    }
    textAddGroups( json, "generalCategories", textGroups( counts, zuUnicodeGenc, CATEGORIES ), textAddCategory );
    textAddGroups( json, "scripts", textGroups( counts, zuUnicodeScript, SCRIPTS ), textAddScript );
    json->close();
}

// Transformation
using TEXT_MAPPING = void ( * )( ZU_STRING **zus );
static constexpr const char *CASE_NAMES[] = { "lower", "upper", "fold" };
static constexpr TEXT_MAPPING CASES[] = { zuStringToLower, zuStringToUpper, zuStringToCaseFold };
static constexpr const char *FORM_NAMES[] = { "NFC", "NFKC", "NFD", "NFKD" }; // by their values

// What is asked for, by the values of the options
struct TEXT_TRANSFORMATION {
    TEXT_MAPPING mapping = nullptr;   // null: none
    ZU_UNICODE_NORMAL_FORM form = -1; // -1: none
};

// A text on its way to the standard output
class TextTransformer {
public:
    explicit TextTransformer( const TEXT_TRANSFORMATION &wanted ) : mapping( wanted.mapping )
    {
        if ( wanted.form != -1 ) {
            normalizer = zu::adopt( zuUnicodeNormalizerCreate( wanted.form ) );
        }
    }
    void take( const unsigned char *block, size_t length )
    {
        decoder.take( block, length, this );
        write( false );
    }
    void end()
    {
        decoder.end( this );
        write( true );
    }
    void takeCodePoint( ZU_CHAR ch )
    {
        chars.push_back( ch );
    }
    void takeInvalid()
    {
        chars.push_back( ZU_CHAR_REPLACEMENT_CHARACTER );
    }

private:
    void write( bool atEnd )
    {
        auto text = zu::adopt( zuStringCreateFromCharsCopy( chars.data(), (ZU_INT)chars.size() ) );
        chars.clear();
        if ( mapping ) {
            mapping( text.inOut() );
        }
        if ( normalizer.get() ) {
            zuUnicodeNormalizerWrite( normalizer.get(), text.get() );
            if ( atEnd ) {
                zuUnicodeNormalizerFlush( normalizer.get() );
            }
            zuStringClear( text.inOut() );
            zuUnicodeNormalizerRead( normalizer.get(), text.inOut(), -1 );
        }
        ZU_INT length = 0;
        char *bytes = zuUtf8Encode( text.get(), &length );
        fwrite( bytes, 1, (size_t)length, stdout );
        zuMemFree( bytes );
    }

    TEXT_MAPPING mapping;
    zu::Ref<ZU_UNICODE_NORMALIZER> normalizer;
    TextDecoder decoder;
    std::vector<ZU_CHAR> chars; // of the block
};

static int textTransform( const std::vector<TEXT> &names, const TEXT_TRANSFORMATION &wanted )
{
    int status = TOOL_OK;
    for ( const TEXT &name : names ) {
        TextTransformer transformer( wanted );
        ToolReader reader( name.get(), true );
        while ( size_t length = reader.read() ) {
            transformer.take( reader.block(), length );
            if ( ferror( stdout ) ) {
                return status; // which is reported by who ends the command
            }
        }
        transformer.end();
        status = reader.ok() ? status : TOOL_FAILED;
    }
    return status;
}

// Finds what the values of the options stand for.
static bool textReadTransformation( const ToolArguments &arguments, TEXT_TRANSFORMATION *wanted )
{
    if ( TEXT name = arguments.value( "case" ) ) {
        int found = toolReadWord( "--case", name.get(), CASE_NAMES );
        if ( found < 0 ) {
            return false;
        }
        wanted->mapping = CASES[ found ];
    }
    if ( TEXT name = arguments.value( "normalize" ) ) {
        wanted->form = toolReadWord( "--normalize", name.get(), FORM_NAMES );
        return wanted->form >= 0;
    }
    return true;
}

// Counting
static int textCount( const std::vector<TEXT> &names, bool asJson )
{
    int status = TOOL_OK;
    bool isFirst = true;
    ToolJson json;
    json.openArray();
    for ( const TEXT &name : names ) {
        TextCounts counts;
        ToolReader reader( name.get() );
        while ( size_t length = reader.read() ) {
            counts.take( reader.block(), length );
        }
        counts.end();
        if ( !reader.ok() ) {
            status = TOOL_FAILED;
        } else if ( asJson ) {
            textAddJson( &json, name, counts );
            json.print();
        } else {
            fputs( isFirst ? "" : "\n", stdout );
            textPrintReport( name, counts );
            isFirst = false;
        }
        fflush( stdout );
    }
    json.close();
    if ( asJson ) {
        json.print();
    }
    return status;
}

static int textRun( ToolArguments &arguments )
{
    bool transforms = arguments.has( "case" ) || arguments.has( "normalize" );
    bool describes = arguments.has( "char" );
    if ( transforms && ( describes || arguments.has( "json" ) ) ) {
        return toolMisuse( "--%lc does not go with --case and --normalize", describes ? "char" : "json" );
    }
    if ( describes ) {
        return arguments.operands.empty() ? toolDescribe( arguments.value( "char" ).get(), arguments.has( "json" ) )
                                          : toolMisuse( "%lc takes no FILE", "--char" );
    }
    TEXT_TRANSFORMATION wanted;
    if ( !textReadTransformation( arguments, &wanted ) ) {
        return TOOL_MISUSE;
    }
    if ( arguments.operands.empty() ) {
        arguments.operands.push_back( zu::text( "-" ) );
    }
    return transforms ? textTransform( arguments.operands, wanted )
                      : textCount( arguments.operands, arguments.has( "json" ) );
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "json", 'j', nullptr, "prints an array of objects for programs" },
    { "case", 'c', "MAPPING",
      "maps the text to \"lower\" or \"upper\" case, or to what it has in common with texts "
      "that differ in case alone (\"fold\"); in full, in no language's own way" },
    { "normalize", 'n', "FORM",
      "brings the text, after mapping, into the normalization form NFC, NFD, NFKC or NFKD, "
      "each file by itself" },
    { "char", 'u', "CHAR",
      "describes a code point, U+ and 1 to 6 hexadecimal digits, or each in a text: all that the "
      "Unicode Character Database 14.0 says of it, and how it is encoded" },
};
const TOOL_COMMAND toolTextCommand = {
    "text",
    "tells what is in text files, transforms them, describes characters",
    "[--json] [FILE...]\n"
    "[--case MAPPING] [--normalize FORM] [FILE...]\n"
    "--char CHAR [--json]",
    R"(Reads each FILE as UTF-8, the standard input where it is "-" or missing, and
prints

  bytes              its size
  code points        how many characters it has, without the invalid sequences
  lines              how many lines; a line ends at a line feed, a carriage
                     return, both in the order CR LF, a line tabulation, a form
                     feed, a next line, a line or paragraph separator, or the
                     end of the text
  invalid sequences  how many sequences of bytes are no UTF-8, each as long as
                     the beginning of a character or a byte
  longest line       the length of the longest line, and where it is
  general categories, scripts
                     how many code points belong to each, by the Unicode
                     Character Database 14.0, the most first

With --case or --normalize it writes the transformed text of all files to the
standard output instead, as UTF-8 again, with U+FFFD in place of each invalid
sequence.
)",
    OPTIONS,
    R"(The exit status is 0 if every file could be read, 1 if one could not, 2 if the
use is wrong.
)",
    textRun,
};
