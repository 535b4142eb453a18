// zu convert: text from one character set to another.
//
// The streams of the library do the work, a block at a time, so that the size of a file decides on nothing.

#include "zu_tool.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

static constexpr ZU_INT BLOCK_CHARS = 16 * 1024;

// The input as a byte source
class ConvertInput {
public:
    ConvertInput( const char *name, bool printsMeanwhile ) : reader( name, printsMeanwhile )
    {
        auto read = []( ZU_OBJ *closure, uint8_t *bytes, ZU_INT maxByteCount, ZU_INT *bytesRead ) -> ZU_BOOL {
            auto *input = (ConvertInput *)zu___BoxedPointerValue( zu___BoxedPointerFrom( closure ) );
            *bytesRead = input->take( bytes, maxByteCount );
            return input->ok();
        };
        auto closure = zu::adopt( zu___BoxedPointerCreate( this, nullptr ) );
        source = zu::adopt( zu___ByteSourceCreate( read, nullptr, zu___BoxedPointerObj( closure.get() ) ) );
    }
    ZU_BYTE_SOURCE *byteSource() const
    {
        return source.get();
    }
    bool ok() const
    {
        return reader.ok();
    }
    bool reads( const struct stat &other ) const
    {
        return reader.reads( other );
    }

private:
    ZU_INT take( uint8_t *bytes, ZU_INT count )
    {
        ZU_INT taken = 0;
        while ( taken < count ) {
            if ( pos == length ) {
                pos = 0;
                length = reader.read();
                if ( length == 0 ) {
                    break;
                }
            }
            size_t part = std::min( length - pos, (size_t)( count - taken ) );
            memcpy( bytes + taken, reader.block() + pos, part );
            pos += part;
            taken += (ZU_INT)part;
        }
        return taken;
    }

    ToolReader reader;
    size_t pos = 0;
    size_t length = 0;
    zu::Ref<ZU_BYTE_SOURCE> source;
};

// The output as a byte sink
class ConvertOutput {
public:
    ConvertOutput( const char *fileName, const ConvertInput &input ) : name( fileName )
    {
        // Opening a file empties it, so the input is kept from that; appended to itself it would have no end.
        struct stat info;
        if ( ( name == "-" ? fstat( STDOUT_FILENO, &info ) : stat( fileName, &info ) ) == 0 && input.reads( info ) ) {
            toolError( "%lc is the input, too", shownName() );
            failed = true;
        } else {
            file = name == "-" ? stdout : fopen( fileName, "wb" );
            if ( !file ) {
                fail();
            }
        }
        auto write = []( ZU_OBJ *closure, const uint8_t *bytes, ZU_INT byteCount ) -> ZU_BOOL {
            return of( closure )->write( bytes, (size_t)byteCount );
        };
        auto flush = []( ZU_OBJ * ) -> ZU_BOOL { return ZU_TRUE; }; // close tells
        auto closure = zu::adopt( zu___BoxedPointerCreate( this, nullptr ) );
        sink = zu::adopt( zu___ByteSinkCreate( write, flush, zu___BoxedPointerObj( closure.get() ) ) );
    }
    ~ConvertOutput()
    {
        close();
    }
    ConvertOutput( const ConvertOutput & ) = delete;
    ConvertOutput &operator=( const ConvertOutput & ) = delete;

    ZU_BYTE_SINK *byteSink() const
    {
        return sink.get();
    }
    bool ok() const
    {
        return !failed;
    }
    // Writes out what the system still holds back.  The standard output is looked at when the command ends.
    void close()
    {
        if ( file && file != stdout && fclose( file ) != 0 && !failed ) {
            fail();
        }
        file = nullptr;
    }

private:
    static ConvertOutput *of( ZU_OBJ *closure )
    {
        return (ConvertOutput *)zu___BoxedPointerValue( zu___BoxedPointerFrom( closure ) );
    }
    bool write( const uint8_t *bytes, size_t count )
    {
        if ( !failed && fwrite( bytes, 1, count, file ) != count ) {
            fail();
        }
        return !failed;
    }
    void fail()
    {
        toolError( "cannot write %lc: %lc", shownName(), strerror( errno ) );
        failed = true;
    }
    const char *shownName() const
    {
        return name == "-" ? "the standard output" : name.c_str();
    }

    std::string name;
    FILE *file = nullptr;
    bool failed = false;
    zu::Ref<ZU_BYTE_SINK> sink;
};

// A conversion
struct CONVERSION {
    ZU_CHARSET from;
    ZU_CHARSET to;
    ZU_CHARSET_FLAGS flags;
    ZU_NLF_FLAGS newlines; // 0: as they are
    bool contract;         // by the streams of the library that are lenient by contract
};

// Between source and sink the text passes a filter, a block at a time, which exchanges a block for what it becomes.
using BLOCK = std::vector<ZU_CHAR>;

// Newlines: a line feed, a carriage return, both in this order, a next line, a line and a paragraph separator each
// become the one that was asked for.  Vertical tabs and form feeds are left alone.
struct NewlineForm {
    const char *name;
    ZU_NLF_FLAGS flag;
};
static constexpr NewlineForm NEWLINE_FORMS[] = {
    { "lf", ZU_NLF_FLAG_LF },   { "crlf", ZU_NLF_FLAG_CRLF }, { "cr", ZU_NLF_FLAG_CR },
    { "nel", ZU_NLF_FLAG_NEL }, { "ls", ZU_NLF_FLAG_LS },     { "ps", ZU_NLF_FLAG_PS },
};

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

static int convert( const CONVERSION &conversion, ConvertInput *input, ConvertOutput *output )
{
    zu::Ref<ZU_EXACT_CHAR_SOURCE> exactSource;
    zu::Ref<ZU_EXACT_CHAR_SINK> exactSink;
    zu::Ref<ZU_CHAR_SOURCE> source;
    zu::Ref<ZU_CHAR_SINK> sink;
    if ( conversion.contract ) {
        source = zu::adopt( zuCharsetCreateCharSource( input->byteSource(), conversion.from, conversion.flags ) );
        sink = zu::adopt( zuCharsetCreateCharSink( output->byteSink(), conversion.to, conversion.flags ) );
    } else {
        exactSource = zu::adopt( zuExactCharSourceCreate( input->byteSource(), conversion.from, conversion.flags ) );
        exactSink = zu::adopt( zuExactCharSinkCreate( output->byteSink(), conversion.to, conversion.flags ) );
        source = zu::adopt( zuExactCharSourceCharSource( exactSource.get() ) );
        sink = zu::adopt( zuExactCharSinkCharSink( exactSink.get() ) );
    }
    NewlineFilter newlines( conversion.newlines );
    BLOCK block;
    ZU_INT done = 0; // characters written ahead of the block
    ZU_CHAR lack = 0;
    while ( !zuCharSourceEnd( source.get() ) && !zuCharSinkError( sink.get() ) ) {
        block.resize( BLOCK_CHARS );
        block.resize( (size_t)zuCharSourceReadChars( source.get(), block.data(), BLOCK_CHARS ) );
        newlines.apply( &block );
        zuCharSinkWriteChars( sink.get(), block.data(), (ZU_INT)block.size() );
        if ( exactSink && zuCharSinkError( sink.get() ) && zuExactCharSinkFault( exactSink.get() ) >= 0 ) {
            lack = block[ (size_t)( zuExactCharSinkFault( exactSink.get() ) - done ) ];
        }
        done += (ZU_INT)block.size();
    }
    zuCharSinkFlush( sink.get() );
    if ( !input->ok() || !output->ok() ) {
        return TOOL_FAILED;
    }
    if ( lack ) {
        toolError( "the input has U+%^04X, which %~s lacks", lack, zuCharsetToIanaName( conversion.to ) );
        return TOOL_FAILED;
    }
    if ( zuCharSinkError( sink.get() ) ) {
        toolError( "the input has what %~s lacks", zuCharsetToIanaName( conversion.to ) );
        return TOOL_FAILED;
    }
    if ( zuCharSourceError( source.get() ) ) {
        ZU_INT fault = exactSource ? zuExactCharSourceFault( exactSource.get() ) : -1;
        if ( fault >= 0 ) {
            toolError( "the input is no %~s from byte %i on", zuCharsetToIanaName( conversion.from ), fault );
        } else {
            toolError( "the input is no %~s", zuCharsetToIanaName( conversion.from ) );
        }
        return TOOL_FAILED;
    }
    return TOOL_OK;
}

// The list of sets
static int convertPrintList()
{
    for ( ZU_CHARSET cs = 0; ZU_CHARSET_OK( cs ); cs++ ) {
        auto names = zu::adopt( zuCharsetIanaNamesVector( cs ) );
        zu::Ref<ZU_STRING> line = zu::format( "%-~14o", zuVectorObjAt( names.get(), 0 ) );
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
static bool convertReadCharset( const char *option, const char *name, ZU_CHARSET *charset )
{
    if ( !name ) {
        toolMisuse( "%lc is missing", option );
        return false;
    }
    *charset = zuCharsetFromIanaName( zu::adopt( zuStringCreateFromCstr( name, -1 ) ).get() );
    if ( *charset < 0 ) {
        toolMisuse( "unknown character set: %lc (\"zu convert --list\" shows all)", name );
        return false;
    }
    return true;
}
static bool convertReadErrors( const char *name, ZU_CHARSET_FLAGS *flags )
{
    if ( !name || strcmp( name, "replace" ) == 0 ) {
        return true;
    }
    if ( strcmp( name, "skip" ) == 0 || strcmp( name, "ignore" ) == 0 ) {
        *flags |= ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS;
        return true;
    }
    if ( strcmp( name, "fail" ) == 0 ) {
        *flags |= ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
        return true;
    }
    toolMisuse( "--errors is replace, skip or fail, not %lc", name );
    return false;
}
static bool convertReadNewlines( const char *name, ZU_NLF_FLAGS *flags )
{
    if ( !name ) {
        return true;
    }
    for ( const NewlineForm &form : NEWLINE_FORMS ) {
        if ( strcmp( form.name, name ) == 0 ) {
            *flags = form.flag;
            return true;
        }
    }
    toolMisuse( "--newlines is lf, crlf, cr, nel, ls or ps, not %lc", name );
    return false;
}

static int convertRun( int argc, char **argv )
{
    bool list = false;
    bool bom = false;
    bool contract = false;
    const char *from = nullptr;
    const char *to = nullptr;
    const char *errors = nullptr;
    const char *newlines = nullptr;
    std::vector<const char *> operands;
    int status;
    if ( !toolReadArguments( argc, argv,
                             { { "--list", &list, nullptr },
                               { "--bom", &bom, nullptr },
                               { "--contract", &contract, nullptr },
                               { "--from", nullptr, &from },
                               { "--to", nullptr, &to },
                               { "--errors", nullptr, &errors },
                               { "--newlines", nullptr, &newlines } },
                             &operands, &status ) ) {
        return status;
    }
    if ( list ) {
        return argc == 1 ? convertPrintList() : toolMisuse( "%lc stands alone", "--list" );
    }
    CONVERSION conversion = { -1, -1, bom ? ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK : 0, 0, contract };
    if ( !convertReadCharset( "--from", from, &conversion.from ) || !convertReadCharset( "--to", to, &conversion.to ) ||
         !convertReadErrors( errors, &conversion.flags ) || !convertReadNewlines( newlines, &conversion.newlines ) ) {
        return TOOL_MISUSE;
    }
    if ( operands.size() > 2 ) {
        return toolMisuse( "one input and one output at most, not %i files", operands.size() );
    }
    operands.resize( 2, "-" );
    ConvertInput input( operands[ 0 ], operands[ 1 ] == std::string( "-" ) );
    if ( !input.ok() ) {
        return TOOL_FAILED;
    }
    ConvertOutput output( operands[ 1 ], input );
    if ( !output.ok() ) {
        return TOOL_FAILED;
    }
    status = convert( conversion, &input, &output );
    output.close();
    return output.ok() ? status : TOOL_FAILED;
}

const TOOL_COMMAND toolConvertCommand = {
    "convert",
    "converts text from one character set to another",
    R"(usage: zu convert --from SET --to SET [--errors WHAT] [--bom] [--newlines FORM] [--contract] [IN [OUT]]
       zu convert --list

Converts text from one character set to another, from the file IN or the standard input to the file OUT or the standard
output; "-" stands for either.  SET is a name such as UTF-8, ISO-8859-2, windows-1252, cp437 or KOI8-R, in letters of
either case.  What the input is by its standard is converted, and nothing else.  In single-byte sets a letter and a mark
are composed, or come apart, where the set has the text in no other form.

Options:
  --from SET         the set of the input; in UTF-8, UTF-16 and UTF-32 without BE or LE a byte order mark is dropped
  --to SET           the set of the output
  --errors WHAT      what becomes of invalid input, and of characters that the output's set lacks: "replace" them, which
                     is what happens without this option, "skip" them, or "fail" at the first and tell where it is
  --bom              begins output in a set of the UTF family with a byte order mark
  --newlines FORM    turns all line ends into one form: lf, crlf, cr, nel, ls or ps
  --contract         converts by the lenient streams of the library, oddities included: overlong forms and surrogates
                     pass, UTF-16 is written up to U+00FF only, ISO-8859-8 is read as Greek
  --list             lists all sets, each with its Windows code page and its other names
  --help             prints this

The exit status is 0 if all went well, 1 if a file cannot be read or written or the text cannot be converted, 2 if an
option is wrong.
)",
    convertRun,
};
