// zu convert: text from one character set to another.
//
// The streams of the library do the work, a block at a time, so that the size of a file decides on nothing.

#include "zu_tool.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <numeric>
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
};
static bool convertIsUtf16( ZU_CHARSET cs )
{
    return cs >= ZU_CHARSET_UTF_16 && cs <= ZU_CHARSET_UTF_16_LE;
}

// Between source and sink the text passes filters, a block at a time.  Each exchanges a block for what it becomes and
// may hold something back; `atEnd` says that no further block comes.
using BLOCK = std::vector<ZU_CHAR>;

// Surrogate pairs, which come from UTF-16 as two characters, become one; halves without a partner are invalid input.
class SurrogateFilter {
public:
    explicit SurrogateFilter( ZU_CHARSET_FLAGS conversionFlags ) : flags( conversionFlags )
    {
    }
    // Returns false if there is a half alone and such a thing shall fail; the block ends ahead of it.
    bool apply( BLOCK *block, bool atEnd )
    {
        if ( !high && std::count_if( block->begin(), block->end(), isSurrogate ) == 0 ) {
            return true;
        }
        BLOCK in;
        in.swap( *block );
        for ( ZU_CHAR ch : in ) {
            bool isLow = isSurrogate( ch ) && ch >= 0xDC00;
            if ( high && isLow ) {
                block->push_back( 0x10000 + ( high - 0xD800 ) * 0x400 + ( ch - 0xDC00 ) );
                high = 0;
                continue;
            }
            if ( ( high && !takeAlone( block ) ) || ( isLow && !takeAlone( block ) ) ) {
                return false;
            }
            high = isSurrogate( ch ) && !isLow ? ch : 0;
            if ( !isSurrogate( ch ) ) {
                block->push_back( ch );
            }
        }
        return !( high && atEnd ) || takeAlone( block );
    }

private:
    static bool isSurrogate( ZU_CHAR ch )
    {
        return ch >= 0xD800 && ch < 0xE000;
    }
    bool takeAlone( BLOCK *block ) const
    {
        if ( !( flags & ( ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER | ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) ) ) {
            block->push_back( ZU_CHAR_REPLACEMENT_CHARACTER );
        }
        return !( flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER );
    }

    ZU_CHARSET_FLAGS flags;
    ZU_CHAR high = 0; // the first half of what may be a pair; 0: none
};

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

// What a single-byte set lacks, where that shall fail.  The set's sink does not report all of it: it composes, so that
// it may drop a character at its flush, and it goes on if a full cache has gone out before the character.  So the text
// is composed ahead of it, and looked at here.
class LackFilter {
public:
    explicit LackFilter( const CONVERSION &conversion )
    {
        if ( conversion.to >= ZU_CHARSET_UTF_8 || !( conversion.flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) ) {
            return;
        }
        normalizer = zu::adopt( zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM_NFC ) );
        uint8_t bytes[ 256 ];
        std::iota( std::begin( bytes ), std::end( bytes ), (uint8_t)0 );
        auto text = zu::adopt( zuCharsetBufferToStringWithFlags(
            conversion.to, zu::adopt( zuBufferCreateFromBytesCopy( bytes, std::size( bytes ) ) ).get(),
            ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ) );
        for ( ZU_INT i = 0; i < zuStringLength( text.get() ); i++ ) {
            has[ zuStringCharAt( text.get(), i ) ] = true;
        }
    }
    // Returns the first character that the set lacks, ahead of which the block ends; 0 if there is none.
    ZU_CHAR apply( BLOCK *block, bool atEnd )
    {
        if ( !normalizer ) {
            return 0;
        }
        zuUnicodeNormalizerWriteChars( normalizer.get(), block->data(), (ZU_INT)block->size() );
        if ( atEnd ) {
            zuUnicodeNormalizerFlush( normalizer.get() );
        }
        auto text = zu::adopt( zuStringCreate() );
        zuUnicodeNormalizerRead( normalizer.get(), text.inOut(), -1 );
        const ZU_CHAR *begin = zuStringBacking( text.get() );
        const ZU_CHAR *end = begin + zuStringLength( text.get() );
        const ZU_CHAR *found = std::find_if( begin, end, [ & ]( ZU_CHAR ch ) { return !has[ ch ]; } );
        block->assign( begin, found );
        return found < end ? *found : 0;
    }

private:
    zu::Ref<ZU_UNICODE_NORMALIZER> normalizer; // null: nothing shall fail
    std::vector<bool> has = std::vector<bool>( 0x110000 );
};

static int convert( const CONVERSION &conversion, ConvertInput *input, ConvertOutput *output )
{
    auto source = zu::adopt( zuCharsetCreateCharSource( input->byteSource(), conversion.from, conversion.flags ) );
    auto sink = zu::adopt( zuCharsetCreateCharSink( output->byteSink(), conversion.to, conversion.flags ) );
    SurrogateFilter surrogates( conversion.flags );
    NewlineFilter newlines( conversion.newlines );
    LackFilter lacks( conversion );
    BLOCK block;
    ZU_INT done = 0;    // valid characters read
    ZU_INT damaged = 0; // characters that UTF-16 sinks do not write as they are
    bool valid = true;
    ZU_CHAR lack = 0;
    while ( valid && !lack && !zuCharSourceEnd( source.get() ) && !zuCharSinkError( sink.get() ) ) {
        block.resize( BLOCK_CHARS );
        block.resize( (size_t)zuCharSourceReadChars( source.get(), block.data(), BLOCK_CHARS ) );
        bool atEnd = zuCharSourceEnd( source.get() );
        valid = surrogates.apply( &block, atEnd ) && !zuCharSourceError( source.get() );
        done += (ZU_INT)block.size();
        newlines.apply( &block );
        lack = lacks.apply( &block, atEnd || !valid );
        if ( convertIsUtf16( conversion.to ) ) {
            damaged += std::count_if( block.begin(), block.end(), []( ZU_CHAR ch ) { return ch > 0xFF; } );
        }
        zuCharSinkWriteChars( sink.get(), block.data(), (ZU_INT)block.size() );
    }
    zuCharSinkFlush( sink.get() );
    if ( !input->ok() || !output->ok() ) {
        return TOOL_FAILED;
    }
    if ( lack ) {
        toolError( "the input has U+%^04X, which %~s lacks", lack, zuCharsetToIanaName( conversion.to ) );
        return TOOL_FAILED;
    }
    if ( !valid ) {
        toolError( "the input is no %~s behind the first %i characters", zuCharsetToIanaName( conversion.from ), done );
        return TOOL_FAILED;
    }
    if ( damaged > 0 ) {
        toolError( "%~s keeps characters up to U+00FF only; damaged: %i", zuCharsetToIanaName( conversion.to ),
                   damaged );
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
        return argc == 1 ? convertPrintList() : toolMisuse( "%lc stands alone", "--list" );
    }
    CONVERSION conversion = { -1, -1, bom ? ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK : 0, 0 };
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
    R"(usage: zu convert --from SET --to SET [--errors WHAT] [--bom] [--newlines FORM] [IN [OUT]]
       zu convert --list

Converts text from one character set to another, from the file IN or the standard input to the file OUT or the standard
output; "-" stands for either.  SET is a name such as UTF-8, ISO-8859-2, windows-1252, cp437 or KOI8-R, in letters of
either case.  Single-byte sets get composed text (NFC).  UTF-16 output keeps characters up to U+00FF only; UTF-8 and
UTF-32 keep all.

Options:
  --from SET         the set of the input; in UTF-8, UTF-16 and UTF-32 without BE or LE a byte order mark is dropped
  --to SET           the set of the output
  --errors WHAT      what becomes of invalid input, and of characters that the output's set lacks: "replace" them, which
                     is what happens without this option, "ignore" them, or "fail" at the first
  --bom              begins output in a set of the UTF family with a byte order mark
  --newlines FORM    turns all line ends into one form: lf, crlf, cr, nel, ls or ps
  --list             lists all sets, each with its Windows code page and its other names
  --help             prints this

The exit status is 0 if all went well, 1 if a file cannot be read or written or the text cannot be converted, 2 if an
option is wrong.
)",
    convertRun,
};
