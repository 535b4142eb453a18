// zu convert: text from one character set to another.
//
// The streams of the library do the work, a block at a time, so that the size of a file decides on nothing.

#include "zu_tool_platform.h"

#include <algorithm>
#include <cstring>

static constexpr ZU_INT BLOCK_CHARS = 16 * 1024;

// The input as a byte source
static zu::Ref<ZU_BYTE_SOURCE> convertByteSource( ToolReader *reader )
{
    return zu::byteSource( [ reader, pos = (size_t)0, length = (size_t)0 ]( uint8_t *bytes, ZU_INT count ) mutable {
        ZU_INT taken = 0;
        while ( taken < count ) {
            if ( pos == length ) {
                pos = 0;
                length = reader->read();
                if ( length == 0 ) {
                    return reader->ok() ? taken : -1;
                }
            }
            size_t part = std::min( length - pos, (size_t)( count - taken ) );
            memcpy( bytes + taken, reader->block() + pos, part );
            pos += part;
            taken += (ZU_INT)part;
        }
        return taken;
    } );
}

// The output as a byte sink.  What goes wrong is reported, once; with the standard output, when the command ends.
class ConvertOutput {
public:
    ConvertOutput( ZU_STRING *fileName, const ToolReader &input ) : name( zu::share( fileName ) )
    {
        // Opening a file empties it, so the input is kept from that; appended to itself it would have no end.
        bool isStandard = toolIsStandard( fileName );
        if ( input.reads( isStandard ? toolFindFile( stdout ) : toolFindFile( fileName ) ) ) {
            toolError( "%s is the input, too", isStandard ? zu::text( "the standard output" ) : name );
            return;
        }
        toolForgetFailure();
        sink = isStandard ? standardOutput() : zu::adopt( zuFileOpenByteSink( fileName ) );
        if ( !sink ) {
            toolReportFile( "write", fileName );
        }
    }
    ZU_BYTE_SINK *byteSink() const
    {
        return sink.get();
    }
    bool ok() const
    {
        return sink && !zuByteSinkError( sink.get() );
    }
    // Hands out what is still held back, and tells whether all has arrived.
    bool finish()
    {
        if ( zuByteSinkFlush( sink.get() ) || toolIsStandard( name.get() ) ) {
            return ok();
        }
        toolReportFile( "write", name.get() );
        return false;
    }

private:
    static zu::Ref<ZU_BYTE_SINK> standardOutput()
    {
        return zu::byteSink( []( const uint8_t *bytes, ZU_INT count ) {
            return fwrite( bytes, 1, (size_t)count, stdout ) == (size_t)count;
        } );
    }

    TEXT name;
    zu::Ref<ZU_BYTE_SINK> sink; // empty: there is none
};

// A conversion
struct CONVERSION {
    ZU_CHARSET from;
    ZU_CHARSET to;
    ZU_CHARSET_FLAGS flags;
    ZU_NLF_FLAGS newlines; // 0: as they are
    bool contract;         // by the streams of the library that are lenient by contract
    bool json;             // tells what was lost
};

// Between source and sink the text passes a filter, a block at a time, which exchanges a block for what it becomes.
using BLOCK = std::vector<ZU_CHAR>;

// Newlines: a line feed, a carriage return, both in this order, a next line, a line and a paragraph separator each
// become the one that was asked for.  Vertical tabs and form feeds are left alone.
class NewlineFilter {
public:
    explicit NewlineFilter( ZU_NLF_FLAGS form )
        : active( form != 0 ), newline( zu::adopt( zuNlfFlagsNlfString( form ) ) )
    {
    }
    void apply( BLOCK *block )
    {
        if ( !active ) {
            return;
        }
        BLOCK in;
        in.swap( *block );
        const ZU_CHAR *text = zuStringBacking( newline.get() );
        for ( ZU_CHAR ch : in ) {
            bool pairs = ch == ZU_CHAR_LINE_FEED && lastWasReturn;
            lastWasReturn = ch == ZU_CHAR_CARRIAGE_RETURN;
            switch ( ch ) {
            case ZU_CHAR_LINE_FEED:
            case ZU_CHAR_CARRIAGE_RETURN:
            case ZU_CHAR_NEXT_LINE:
            case ZU_CHAR_LINE_SEPARATOR:
            case ZU_CHAR_PARAGRAPH_SEPARATOR:
                if ( !pairs ) {
                    block->insert( block->end(), text, text + zuStringLength( newline.get() ) );
                }
                break;
            default:
                block->push_back( ch );
            }
        }
    }

private:
    bool active;
    zu::Ref<ZU_STRING> newline;
    bool lastWasReturn = false;
};

// What was lost, each by the place of the first
struct LOSS {
    ZU_INT characters = 0; // written so far
    ZU_INT invalidAt = -1; // byte of the input; -1: all is valid
    ZU_INT lackingAt = -1; // character of the output; -1: the set has all
    ZU_CHAR lacking = 0;
};
static void convertPrintLoss( const LOSS &loss )
{
    ToolJson json;
    json.openObject();
    json.addInt( "characters", loss.characters );
    json.addIntOpt( "invalidAt", loss.invalidAt );
    json.addIntOpt( "lackingAt", loss.lackingAt );
    json.add( "lacking", loss.lacking ? zu::format( "U+%^04X", loss.lacking ) : TEXT() );
    json.close();
    json.print();
}

static int convert( const CONVERSION &conversion, ToolReader *input, ConvertOutput *output )
{
    auto bytes = convertByteSource( input );
    zu::Ref<ZU_EXACT_CHAR_SOURCE> exactSource;
    zu::Ref<ZU_EXACT_CHAR_SINK> exactSink;
    zu::Ref<ZU_CHAR_SOURCE> source;
    zu::Ref<ZU_CHAR_SINK> sink;
    if ( conversion.contract ) {
        source = zu::adopt( zuCharsetCreateCharSource( bytes.get(), conversion.from, conversion.flags ) );
        sink = zu::adopt( zuCharsetCreateCharSink( output->byteSink(), conversion.to, conversion.flags ) );
    } else {
        exactSource = zu::adopt( zuExactCharSourceCreate( bytes.get(), conversion.from, conversion.flags ) );
        exactSink = zu::adopt( zuExactCharSinkCreate( output->byteSink(), conversion.to, conversion.flags ) );
        source = zu::adopt( zuExactCharSourceCharSource( exactSource.get() ) );
        sink = zu::adopt( zuExactCharSinkCharSink( exactSink.get() ) );
    }
    NewlineFilter newlines( conversion.newlines );
    BLOCK block;
    LOSS loss;
    while ( !zuCharSourceEnd( source.get() ) && !zuCharSinkError( sink.get() ) ) {
        block.resize( BLOCK_CHARS );
        block.resize( (size_t)zuCharSourceReadChars( source.get(), block.data(), BLOCK_CHARS ) );
        newlines.apply( &block );
        zuCharSinkWriteChars( sink.get(), block.data(), (ZU_INT)block.size() );
        if ( exactSink && loss.lackingAt < 0 && zuExactCharSinkFault( exactSink.get() ) >= 0 ) {
            loss.lackingAt = zuExactCharSinkFault( exactSink.get() );
            loss.lacking = block[ (size_t)( loss.lackingAt - loss.characters ) ];
        }
        loss.characters += (ZU_INT)block.size();
    }
    loss.invalidAt = exactSource ? zuExactCharSourceFault( exactSource.get() ) : -1;
    zuCharSinkFlush( sink.get() );
    if ( ferror( stdout ) ) {
        return TOOL_OK; // which is reported when the command ends
    }
    if ( !output->finish() || !input->ok() ) {
        return TOOL_FAILED;
    }
    if ( conversion.json ) {
        convertPrintLoss( loss );
    }
    if ( zuCharSinkError( sink.get() ) && loss.lacking ) {
        toolError( "the input has U+%^04X, which %~s lacks", loss.lacking, zuCharsetToIanaName( conversion.to ) );
        return TOOL_FAILED;
    }
    if ( zuCharSinkError( sink.get() ) ) {
        toolError( "the input has what %~s lacks", zuCharsetToIanaName( conversion.to ) );
        return TOOL_FAILED;
    }
    if ( zuCharSourceError( source.get() ) ) {
        if ( loss.invalidAt >= 0 ) {
            toolError( "the input is no %~s from byte %i on", zuCharsetToIanaName( conversion.from ), loss.invalidAt );
        } else {
            toolError( "the input is no %~s", zuCharsetToIanaName( conversion.from ) );
        }
        return TOOL_FAILED;
    }
    return TOOL_OK;
}

// The list of sets
static int convertPrintJsonList()
{
    ToolJson json;
    json.openArray();
    for ( ZU_CHARSET cs = 0; ZU_CHARSET_OK( cs ); cs++ ) {
        auto names = zu::adopt( zuCharsetIanaNamesVector( cs ) );
        json.openObject();
        json.add( "name", zuStringFrom( zuVectorBacking( names.get() )[ 0 ] ) );
        json.addIntOpt( "codePage", zuCharsetToWindowsCodePage( cs ) );
        json.openArray( "aliases" );
        for ( ZU_INT i = 1; i < zuVectorLength( names.get() ); i++ ) {
            json.add( {}, zuStringFrom( zuVectorBacking( names.get() )[ i ] ) );
        }
        json.close();
        json.close();
    }
    json.close();
    json.print();
    return TOOL_OK;
}
static int convertPrintList()
{
    for ( ZU_CHARSET cs = 0; ZU_CHARSET_OK( cs ); cs++ ) {
        auto names = zu::adopt( zuCharsetIanaNamesVector( cs ) );
        TEXT line = zu::format( "%-~14o", zuVectorObjAt( names.get(), 0 ) );
        ZU_INT codePage = zuCharsetToWindowsCodePage( cs );
        if ( codePage >= 0 ) {
            zu::appendFormat( line.inOut(), " %6i ", codePage );
        } else {
            zuStringAppendCharRun( line.inOut(), U' ', 8 );
        }
        for ( ZU_INT i = 1; i < zuVectorLength( names.get() ); i++ ) {
            zu::appendFormat( line.inOut(), " %~o", zuVectorObjAt( names.get(), i ) );
        }
        zuStringTrimTrailing( line.inOut() );
        toolPrint( stdout, zu::format( "%s\n", line ).get() );
    }
    return TOOL_OK;
}

// Options
static bool convertReadCharset( const char *option, const TEXT &name, ZU_CHARSET *charset )
{
    if ( !name ) {
        toolMisuse( "%lc is missing", option );
        return false;
    }
    *charset = zuCharsetFromIanaName( name.get() );
    if ( *charset < 0 ) {
        toolMisuse( "unknown character set: %s (\"zu convert --list\" shows all)", name );
        return false;
    }
    return true;
}
static bool convertReadErrors( const TEXT &name, ZU_CHARSET_FLAGS *flags )
{
    static constexpr const char *NAMES[] = { "replace", "skip", "fail", "ignore" };
    static constexpr ZU_CHARSET_FLAGS FLAGS[] = { 0, ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS,
                                                  ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER,
                                                  ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS };
    int found = name ? toolReadWord( "--errors", name.get(), NAMES ) : 0;
    *flags |= found >= 0 ? FLAGS[ found ] : 0;
    return found >= 0;
}
static bool convertReadNewlines( const TEXT &name, ZU_NLF_FLAGS *flags )
{
    static constexpr const char *NAMES[] = { "lf", "crlf", "cr", "nel", "ls", "ps" };
    static constexpr ZU_NLF_FLAGS FLAGS[] = { ZU_NLF_FLAG_LF,  ZU_NLF_FLAG_CRLF, ZU_NLF_FLAG_CR,
                                              ZU_NLF_FLAG_NEL, ZU_NLF_FLAG_LS,   ZU_NLF_FLAG_PS };
    int found = name ? toolReadWord( "--newlines", name.get(), NAMES ) : 0;
    *flags = name && found >= 0 ? FLAGS[ found ] : 0;
    return found >= 0;
}

static int convertRun( ToolArguments &arguments )
{
    std::vector<TEXT> &operands = arguments.operands;
    if ( arguments.has( "list" ) ) {
        bool alone = operands.empty() && !arguments.has( "from" ) && !arguments.has( "to" );
        return !alone                    ? toolMisuse( "%lc goes with --json alone", "--list" )
               : arguments.has( "json" ) ? convertPrintJsonList()
                                         : convertPrintList();
    }
    CONVERSION conversion = { -1,
                              -1,
                              arguments.has( "bom" ) ? ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK : 0,
                              0,
                              arguments.has( "contract" ),
                              arguments.has( "json" ) };
    if ( !convertReadCharset( "--from", arguments.value( "from" ), &conversion.from ) ||
         !convertReadCharset( "--to", arguments.value( "to" ), &conversion.to ) ||
         !convertReadErrors( arguments.value( "errors" ), &conversion.flags ) ||
         !convertReadNewlines( arguments.value( "newlines" ), &conversion.newlines ) ) {
        return TOOL_MISUSE;
    }
    if ( operands.size() > 2 ) {
        return toolMisuse( "one input and one output at most, not %i files", operands.size() );
    }
    operands.resize( 2, zu::text( "-" ) );
    if ( conversion.json && ( conversion.contract || toolIsStandard( operands[ 1 ].get() ) ) ) {
        return conversion.contract ? toolMisuse( "%lc does not go with %lc", "--json", "--contract" )
                                   : toolMisuse( "%lc needs a file OUT", "--json" );
    }
    ToolReader input( operands[ 0 ].get(), toolIsStandard( operands[ 1 ].get() ) );
    if ( !input.ok() ) {
        return TOOL_FAILED;
    }
    ConvertOutput output( operands[ 1 ].get(), input );
    return output.ok() ? convert( conversion, &input, &output ) : TOOL_FAILED;
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "from", 'f', "SET",
      "the set of the input; in UTF-8, UTF-16 and UTF-32 without BE or LE a byte order mark is "
      "dropped" },
    { "to", 't', "SET", "the set of the output" },
    { "errors", 'e', "WHAT",
      "what becomes of invalid input, and of characters that the output's set lacks: \"replace\" "
      "them, which is what happens without this option, \"skip\" them, or \"fail\" at the "
      "first" },
    { "bom", 'b', nullptr, "begins output in a set of the UTF family with a byte order mark" },
    { "newlines", 'n', "FORM", "turns all line ends into one form: lf, crlf, cr, nel, ls or ps" },
    { "contract", 'c', nullptr,
      "converts by the lenient streams of the library, oddities included: overlong forms and "
      "surrogates pass, UTF-16 is written up to U+00FF only, ISO-8859-8 is read as Greek" },
    { "list", 'l', nullptr, "lists all sets, each with its Windows code page and its other names" },
    { "json", 'j', nullptr,
      "with --list prints an array of objects with \"name\", \"codePage\" and \"aliases\"; "
      "otherwise, once OUT is written, an object that tells what was lost: the number of "
      "\"characters\", and null or where the first was, \"invalidAt\" in bytes of the input, "
      "\"lackingAt\" in characters of the output, and which one was \"lacking\"" },
};
const TOOL_COMMAND toolConvertCommand = {
    "convert",
    "converts text from one character set to another",
    "--from SET --to SET [--errors WHAT] [--bom] [--newlines FORM] [--contract] [IN [OUT]]\n"
    "--json --from SET --to SET [--errors WHAT] [--bom] [--newlines FORM] IN OUT\n--list [--json]",
    R"(Converts text from one character set to another, from the file IN or the
standard input to the file OUT or the standard output; "-" stands for either.
SET is a name such as UTF-8, ISO-8859-2, windows-1252, cp437 or KOI8-R, in
letters of either case.  What the input is by its standard is converted, and
nothing else.  In single-byte sets a letter and a mark are composed, or come
apart, where the set has the text in no other form.
)",
    OPTIONS,
    R"(The exit status is 0 if all went well, 1 if a file cannot be read or written or
the text cannot be converted, 2 if the use is wrong.
)",
    convertRun,
};
