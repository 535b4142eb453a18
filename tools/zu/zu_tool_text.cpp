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
                             zu::Ref<ZU_STRING> ( *name )( ZU_INT value ) )
{
    for ( const TEXT_GROUP &group : groups ) {
        double percent = 100.0 * (double)group.count / (double)counts.codePoints;
        zu::appendFormat( report, "    %-28s%12i  %5.1r %%\n", name( group.value ), group.count,
                          percent + 0.05 ); // formats cut digits off
    }
}
static zu::Ref<ZU_STRING> textCategoryName( ZU_INT genc )
{
    return zu::format( "%~s  %~s", zuUnicodeGencAbbreviation( genc ), zuUnicodeGencDescription( genc ) );
}
static zu::Ref<ZU_STRING> textScriptName( ZU_INT script )
{
    return zu::adopt( zuUnicodeScriptName( script ) );
}
static void textPrintReport( const char *name, const TextCounts &counts )
{
    zu::Ref<ZU_STRING> report = zu::format( "%lc\n", name );
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
static void textPrintJsonGroups( ZU_STRING **json, const char *key, const std::vector<TEXT_GROUP> &groups,
                                 zu::Ref<ZU_STRING> ( *name )( ZU_INT value ) )
{
    zu::appendFormat( json, ", \"%lc\": [", key );
    const char *separator = "";
    for ( const TEXT_GROUP &group : groups ) {
        zu::appendFormat( json, "%lc{ %s, \"count\": %i }", separator, name( group.value ), group.count );
        separator = ", ";
    }
    zu::appendFormat( json, "]%#%" );
}
static zu::Ref<ZU_STRING> textCategoryJson( ZU_INT genc )
{
    return zu::format( "\"abbreviation\": \"%~s\", \"name\": \"%~s\"", zuUnicodeGencAbbreviation( genc ),
                       zuUnicodeGencDescription( genc ) );
}
static zu::Ref<ZU_STRING> textScriptJson( ZU_INT script )
{
    return zu::format( "\"name\": \"%~s\"", zuUnicodeScriptName( script ) );
}
static void textPrintJson( const char *name, const TextCounts &counts )
{
    zu::Ref<ZU_STRING> json = zu::format(
        "{ \"file\": %s, \"bytes\": %i, \"codePoints\": %i, \"lines\": %i, \"invalidSequences\": %i, \"longestLine\": ",
        toolJsonString( zu::text( name ).get() ), counts.bytes, counts.codePoints, counts.lines, counts.invalid );
    if ( counts.longestLine > 0 ) {
        zu::appendFormat( json.inOut(), "{ \"line\": %i, \"codePoints\": %i }", counts.longestLine,
                          counts.longestLength );
    } else {
        zuStringAppendCstr( json.inOut(), "null", -1 );
    }
    textPrintJsonGroups( json.inOut(), "generalCategories", textGroups( counts, zuUnicodeGenc, CATEGORIES ),
                         textCategoryJson );
    textPrintJsonGroups( json.inOut(), "scripts", textGroups( counts, zuUnicodeScript, SCRIPTS ), textScriptJson );
    zu::appendFormat( json.inOut(), " }%#%" );
    toolPrint( stdout, json.get() );
}

// Transformation
struct TEXT_CASE {
    const char *name;
    void ( *map )( ZU_STRING **zus );
};
static constexpr TEXT_CASE CASES[] = {
    { "lower", zuStringToLower },
    { "upper", zuStringToUpper },
    { "fold", zuStringToCaseFold },
};

// What is asked for, by the values of the options
struct TEXT_TRANSFORMATION {
    const TEXT_CASE *mapping = nullptr;
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
            mapping->map( text.inOut() );
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

    const TEXT_CASE *mapping;
    zu::Ref<ZU_UNICODE_NORMALIZER> normalizer;
    TextDecoder decoder;
    std::vector<ZU_CHAR> chars; // of the block
};

static int textTransform( const std::vector<const char *> &names, const TEXT_TRANSFORMATION &wanted )
{
    int status = TOOL_OK;
    for ( const char *name : names ) {
        TextTransformer transformer( wanted );
        ToolReader reader( name, true );
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

// Finds what the values of the options stand for, in letters of either case.  Returns an exit status.
static int textFindTransformation( const char *caseName, const char *formName, TEXT_TRANSFORMATION *found )
{
    if ( caseName ) {
        auto name = zu::text( caseName );
        for ( const TEXT_CASE &each : CASES ) {
            if ( zuStringEqualsCaseFoldCstr( name.get(), each.name, -1 ) ) {
                found->mapping = &each;
            }
        }
        if ( !found->mapping ) {
            return toolMisuse( "--case takes lower, upper or fold, and not %lc", caseName );
        }
    }
    if ( formName ) {
        auto name = zu::text( formName );
        for ( ZU_UNICODE_NORMAL_FORM form = 0; ZU_UNICODE_NORMAL_FORM_OK( form ); form++ ) {
            if ( zuStringEqualsCaseFold( name.get(), zu::adopt( zuUnicodeNormalFormToString( form ) ).get() ) ) {
                found->form = form;
            }
        }
        if ( found->form == -1 ) {
            return toolMisuse( "--normalize takes NFC, NFD, NFKC or NFKD, and not %lc", formName );
        }
    }
    return TOOL_OK;
}

// Counting
static int textCount( const std::vector<const char *> &names, bool json )
{
    int status = TOOL_OK;
    const char *separator = json ? "[ " : "";
    for ( const char *name : names ) {
        TextCounts counts;
        ToolReader reader( name );
        while ( size_t length = reader.read() ) {
            counts.take( reader.block(), length );
        }
        counts.end();
        if ( !reader.ok() ) {
            status = TOOL_FAILED;
            continue;
        }
        fputs( separator, stdout );
        separator = json ? ",\n  " : "\n";
        ( json ? textPrintJson : textPrintReport )( name, counts );
        fflush( stdout );
    }
    if ( json ) {
        fputs( *separator == '[' ? "[]\n" : " ]\n", stdout );
    }
    return status;
}

static int textRun( int argc, char **argv )
{
    bool json = false;
    const char *caseName = nullptr;
    const char *formName = nullptr;
    std::vector<const char *> names;
    int status = TOOL_OK;
    if ( !toolReadArguments(
             argc, argv,
             { { "--json", &json, nullptr }, { "--case", nullptr, &caseName }, { "--normalize", nullptr, &formName } },
             &names, &status ) ) {
        return status;
    }
    TEXT_TRANSFORMATION transformation;
    status = textFindTransformation( caseName, formName, &transformation );
    if ( status != TOOL_OK ) {
        return status;
    }
    if ( names.empty() ) {
        names.push_back( "-" );
    }
    if ( !caseName && !formName ) {
        return textCount( names, json );
    }
    if ( json ) {
        return toolMisuse( "%lc is for counts; there are none with --case and --normalize", "--json" );
    }
    return textTransform( names, transformation );
}

const TOOL_COMMAND toolTextCommand = {
    "text",
    "tells what is in text files, and transforms them",
    R"(usage: zu text [--json] [FILE...]
       zu text [--case MAPPING] [--normalize FORM] [FILE...]

Reads each FILE as UTF-8, the standard input where it is "-" or missing, and prints

  bytes              its size
  code points        how many characters it has, without the invalid sequences
  lines              how many lines; a line ends at a line feed, carriage return, both in this order, line tabulation,
                     form feed, next line, line separator, paragraph separator, or the end of the text
  invalid sequences  how many sequences of bytes are no UTF-8, each as long as the beginning of a character or a byte
  longest line       the length of the longest line, and where it is
  general categories, scripts
                     how many code points belong to each, by the Unicode Character Database 14.0, the most first

With --case or --normalize it writes the transformed text of all files to the standard output instead, as UTF-8 again,
with U+FFFD in place of each invalid sequence.

Options:
  --json             prints an array of objects for programs
  --case MAPPING     maps the text to "lower" or "upper" case, or to what it has in common with texts that differ in
                     case alone ("fold"); in full, in no language's own way
  --normalize FORM   brings the text, after mapping, into the normalization form NFC, NFD, NFKC or NFKD, each file by
                     itself
  --help             prints this

The exit status is 0 if every file could be read, 1 if one could not, 2 if an option is wrong.
)",
    textRun,
};
