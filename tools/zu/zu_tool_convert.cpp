// zu convert: text from one character set to another.
//
// The streams of the library do the work, a block at a time, so that the size of a file decides on nothing.

#include "zu_tool.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

static constexpr ZU_INT BLOCK_CHARS = 16 * 1024;

// The input as a byte source
class ConvertInput {
public:
    explicit ConvertInput( const char *name ) : reader( name )
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
    explicit ConvertOutput( const char *fileName ) : name( fileName )
    {
        file = name == "-" ? stdout : fopen( fileName, "wb" );
        if ( !file ) {
            fail();
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
        toolError( "cannot write %lc: %lc", name == "-" ? "the standard output" : name.c_str(), strerror( errno ) );
        failed = true;
    }

    std::string name;
    FILE *file;
    bool failed = false;
    zu::Ref<ZU_BYTE_SINK> sink;
};

// Newlines: a line feed, a carriage return, both in this order, a next line, a line and a paragraph separator each become
// the one that was asked for.  Vertical tabs and form feeds are left alone.
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
    explicit NewlineFilter( ZU_NLF_FLAGS flag ) : newline( zu::adopt( zuNlfFlagsNlfString( flag ) ) )
    {
    }
    void apply( const ZU_CHAR *chars, ZU_INT count, std::vector<ZU_CHAR> *out )
    {
        for ( ZU_INT i = 0; i < count; i++ ) {
            ZU_CHAR ch = chars[ i ];
            bool pairs = ch == ZU_CHAR_LINE_FEED && lastWasReturn;
            lastWasReturn = ch == ZU_CHAR_CARRIAGE_RETURN;
            switch ( ch ) {
            case ZU_CHAR_LINE_FEED:
            case ZU_CHAR_CARRIAGE_RETURN:
            case ZU_CHAR_NEXT_LINE:
            case ZU_CHAR_LINE_SEPARATOR:
            case ZU_CHAR_PARAGRAPH_SEPARATOR:
                if ( !pairs ) {
                    const ZU_CHAR *text = zuStringBacking( newline.get() );
                    out->insert( out->end(), text, text + zuStringLength( newline.get() ) );
                }
                break;
            default:
                out->push_back( ch );
            }
        }
    }

private:
    zu::Ref<ZU_STRING> newline;
    bool lastWasReturn = false;
};

// Surrogate pairs, which come from UTF-16 as two characters, become one; halves without a partner go.
class SurrogateFilter {
public:
    // Replaces the `count` characters by what they become, and returns how many these are.  A high half at the end waits
    // for the next block.
    ZU_INT apply( std::vector<ZU_CHAR> *chars, ZU_INT count )
    {
        if ( pending ) {
            chars->insert( chars->begin(), pending );
            count++;
        }
        ZU_CHAR last = count > 0 ? ( *chars )[ (size_t)count - 1 ] : 0;
        pending = last >= 0xD800 && last < 0xDC00 ? last : 0;
        return zuCharsSanitize( chars->data(), count, chars->data(), count - ( pending != 0 ) );
    }

private:
    ZU_CHAR pending = 0;
};

// A conversion
struct CONVERSION {
    ZU_CHARSET from;
    ZU_CHARSET to;
    ZU_CHARSET_FLAGS flags;
    ZU_NLF_FLAGS newlines; // 0: as they are
};
static bool convertIsUtf16( ZU_CHARSET cs )
{
    return cs >= ZU_CHARSET_UTF_16 && cs <= ZU_CHARSET_UTF_16_LE;
}

// The end of the text.  What a single-byte set lacks there goes unreported by its sink, which normalizes: a character that
// may still compose is looked at when the sink is flushed, and a flush fails only where its bytes cannot be written.
class TextEnd {
public:
    void add( const ZU_CHAR *chars, ZU_INT count )
    {
        text.insert( text.end(), chars, chars + count );
        if ( text.size() > 2 * KEPT ) {
            text.erase( text.begin(), text.end() - KEPT );
        }
    }
    // Tells whether the set has all of it.
    bool fits( ZU_CHARSET charset )
    {
        text.insert( text.end(), 2, ZU_CHAR_LATIN_SMALL_LETTER_A ); // settle what is ahead of them
        auto end = zu::adopt( zuStringCreateFromCharsCopy( text.data(), (ZU_INT)text.size() ) );
        return bool( zu::adopt(
            zuCharsetStringToBufferWithFlags( charset, end.get(), ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) ) );
    }

private:
    static constexpr size_t KEPT = 8192; // characters; more than the sink's normalizer ever holds back
    std::vector<ZU_CHAR> text;
};

static int convert( const CONVERSION &conversion, ConvertInput *input, ConvertOutput *output )
{
    auto source = zu::adopt( zuCharsetCreateCharSource( input->byteSource(), conversion.from, conversion.flags ) );
    auto sink = zu::adopt( zuCharsetCreateCharSink( output->byteSink(), conversion.to, conversion.flags ) );
    std::vector<ZU_CHAR> chars( BLOCK_CHARS );
    std::vector<ZU_CHAR> lines;
    NewlineFilter newlines( conversion.newlines );
    SurrogateFilter surrogates;
    TextEnd end;
    ZU_INT done = 0;    // characters read
    ZU_INT damaged = 0; // characters that UTF-16 sinks do not write as they are
    while ( !zuCharSourceEnd( source.get() ) && !zuCharSinkError( sink.get() ) ) {
        chars.resize( BLOCK_CHARS );
        ZU_INT count = zuCharSourceReadChars( source.get(), chars.data(), BLOCK_CHARS );
        done += count;
        if ( convertIsUtf16( conversion.from ) ) {
            count = surrogates.apply( &chars, count );
        }
        const ZU_CHAR *begin = chars.data();
        if ( conversion.newlines ) {
            lines.clear();
            newlines.apply( begin, count, &lines );
            begin = lines.data();
            count = (ZU_INT)lines.size();
        }
        if ( convertIsUtf16( conversion.to ) ) {
            damaged += std::count_if( begin, begin + count, []( ZU_CHAR ch ) { return ch > 0xFF; } );
        }
        zuCharSinkWriteChars( sink.get(), begin, count );
        if ( conversion.flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
            end.add( begin, count );
        }
    }
    zuCharSinkFlush( sink.get() );
    if ( !input->ok() || !output->ok() ) {
        return TOOL_FAILED;
    }
    if ( zuCharSourceError( source.get() ) ) {
        toolError( "the input is no %~s behind the first %i characters", zuCharsetToIanaName( conversion.from ), done );
        return TOOL_FAILED;
    }
    bool fits = !zuCharSinkError( sink.get() ) &&
                ( !( conversion.flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) || end.fits( conversion.to ) );
    if ( !fits ) {
        toolError( "the input has a character that %~s lacks", zuCharsetToIanaName( conversion.to ) );
        return TOOL_FAILED;
    }
    if ( damaged > 0 ) {
        toolError( "%~s keeps characters up to U+00FF only; %i others are damaged",
                   zuCharsetToIanaName( conversion.to ), damaged );
        return TOOL_FAILED;
    }
    return TOOL_OK;
}

// The list of sets
static int convertPrintList()
{
    for ( ZU_CHARSET cs = 0; ZU_CHARSET_OK( cs ); cs++ ) {
        auto names = zu::adopt( zuCharsetIanaNamesVector( cs ) );
        zu::Ref<ZU_STRING> line = zu::format( "%-~14s", zuVectorObjAt( names.get(), 0 ) );
        ZU_INT codePage = zuCharsetToWindowsCodePage( cs );
        if ( codePage >= 0 ) {
            zu::appendFormat( line.inOut(), " %6i ", codePage );
        } else {
            zuStringAppendCharRun( line.inOut(), U' ', 8 );
        }
        for ( ZU_INT i = 1; i < zuVectorLength( names.get() ); i++ ) {
            zu::appendFormat( line.inOut(), " %~s", zuVectorObjAt( names.get(), i ) );
        }
        zuStringAppendChar( line.inOut(), '\n' );
        toolPrint( stdout, line.get() );
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
    if ( strcmp( name, "ignore" ) == 0 ) {
        *flags |= ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS;
        return true;
    }
    if ( strcmp( name, "fail" ) == 0 ) {
        *flags |= ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
        return true;
    }
    toolMisuse( "--errors is replace, ignore or fail, not %lc", name );
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
    const char *from = nullptr;
    const char *to = nullptr;
    const char *errors = nullptr;
    const char *newlines = nullptr;
    std::vector<const char *> operands;
    int status;
    if ( !toolReadArguments( argc, argv,
                             { { "--list", &list, nullptr },
                               { "--bom", &bom, nullptr },
                               { "--from", nullptr, &from },
                               { "--to", nullptr, &to },
                               { "--errors", nullptr, &errors },
                               { "--newlines", nullptr, &newlines } },
                             &operands, &status ) ) {
        return status;
    }
    if ( list ) {
        return convertPrintList();
    }
    CONVERSION conversion = { -1, -1, bom ? ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK : 0, 0 };
    if ( !convertReadCharset( "--from", from, &conversion.from ) || !convertReadCharset( "--to", to, &conversion.to ) ||
         !convertReadErrors( errors, &conversion.flags ) || !convertReadNewlines( newlines, &conversion.newlines ) ) {
        return TOOL_MISUSE;
    }
    if ( operands.size() > 2 ) {
        return toolMisuse( "one input and one output at most, not %i files", operands.size() );
    }
    ConvertInput input( operands.size() > 0 ? operands[ 0 ] : "-" );
    if ( !input.ok() ) {
        return TOOL_FAILED;
    }
    ConvertOutput output( operands.size() > 1 ? operands[ 1 ] : "-" );
    if ( !output.ok() ) {
        return TOOL_FAILED;
    }
    status = convert( conversion, &input, &output );
    output.close();
    return output.ok() ? status : TOOL_FAILED;
}

const TOOL_COMMAND toolConvertCommand = {
    "convert",
    "Convert text from one character set to another",
    R"(usage: zu convert --from SET --to SET [OPTION...] [IN [OUT]]
       zu convert --list

Converts text from one character set to another, from the file IN or the standard input to the file OUT or the standard
output; "-" stands for either.  SET is a name such as UTF-8, ISO-8859-2, windows-1252, cp437 or KOI8-R, in letters of
either case.

  --from SET        the set of the input
  --to SET          the set of the output
  --errors WHAT     what becomes of invalid input, and of characters that the output's set lacks: "replace" them, which
                    is what happens without this option, "ignore" them, or "fail"
  --bom             begin output in a set of the UTF family with a byte order mark
  --newlines FORM   turn all line ends into one form: lf, crlf, cr, nel, ls or ps
  --list            list all sets, each with its Windows code page and its other names

Single-byte sets get composed text (NFC).  UTF-16 output keeps characters up to U+00FF only; UTF-8 and UTF-32 keep all.

The exit status is 0 if all went well, 1 if a file cannot be read or written or the text cannot be converted, and 2 for
an option that is not there.
)",
    convertRun,
};
