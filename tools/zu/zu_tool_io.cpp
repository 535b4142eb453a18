// The command zu: texts, files and output, which its subcommands share.
//
// Files are read and written by the library.  It says that a call has failed and not why; the system still knows, and so
// messages have both.

#include "zu_tool_platform.h"

#include <cerrno>
#include <cstring>

// Texts
// What the library makes of narrow text may have two halves in place of a character beyond U+FFFF.
std::string toolBytesOfText( ZU_STRING *text )
{
    if ( zuUtfStringFault( text ) < 0 ) {
        return zu::toUtf8( text );
    }
    std::string bytes;
    std::u32string_view chars = zu::view( text );
    for ( size_t i = 0; i < chars.size(); i++ ) {
        char32_t ch = chars[ i ];
        if ( ch >> 10 == 0xD800 >> 10 && i + 1 < chars.size() && chars[ i + 1 ] >> 10 == 0xDC00 >> 10 ) {
            ch = 0x10000 + ( ( ch & 0x3FF ) << 10 ) + ( chars[ ++i ] & 0x3FF );
        }
        bytes += ch >> 7 == ( TOOL_ESCAPED_BYTE + 0x80 ) >> 7 ? std::string( 1, (char)( ch - TOOL_ESCAPED_BYTE ) )
                                                              : zu::toUtf8( zu::text( std::u32string_view( &ch, 1 ) ) );
    }
    return bytes;
}

int toolReadWord( const char *what, ZU_STRING *value, std::span<const char *const> words )
{
    std::string all;
    for ( size_t i = 0; i < words.size(); i++ ) {
        if ( zuStringEqualsCaseFoldCstr( value, words[ i ], -1 ) ) {
            return (int)i;
        }
        all += i == 0 ? "" : i + 1 < words.size() ? ", " : " or ";
        all += words[ i ];
    }
    toolMisuse( "%lc is %s, and not %s", what, all, value );
    return -1;
}
bool toolReadInt( const char *what, ZU_STRING *value, ZU_INT low, ZU_INT high, ZU_INT *result )
{
    ZU_INT consumed;
    if ( zuStringScanInt( value, 0, -1, -1, result, &consumed ) && consumed == zuStringLength( value ) &&
         *result >= low && *result <= high ) {
        return true;
    }
    toolMisuse( "%lc is an integer from %i to %i, and not %s", what, low, high, value );
    return false;
}

// Printing
static bool progressShown = false; // on the terminal's last line
static void wipeProgress()
{
    if ( progressShown ) {
        fputs( "\r\x1B[K", stderr );
        progressShown = false;
    }
}
void toolPrint( FILE *file, ZU_STRING *text )
{
    if ( file == stderr ) {
        fflush( stdout );
        wipeProgress();
    }
    std::string bytes = toolBytesOfText( text );
    fwrite( bytes.data(), 1, bytes.size(), file );
}
TEXT toolBold( FILE *file, TEXT text )
{
    TEXT plain = zu::adopt( zuGetEnvCstr( "NO_COLOR", -1 ) );
    bool shows = toolIsTerminal( file ) && !( plain && zuStringLength( plain.get() ) > 0 );
    return shows ? zu::format( "\x1B[1m%s\x1B[0m", text ) : text;
}
void toolPrintRow( const char *label, int width, ZU_STRING *value )
{
    TEXT padded = zu::format( "%-*lc", width, label );
    toolPrintFormat( "%s%s\n", *label ? toolBold( stdout, padded ) : padded, value );
}

// Output for programs.  The outermost two levels have a line for each value, so that people can read it, too.
static constexpr size_t LEVELS_BROKEN = 2;

static void appendJsonString( ZU_STRING **json, ZU_STRING *text )
{
    zuStringAppendChar( json, '"' );
    for ( char32_t ch : zu::view( text ) ) {
        if ( ch < ZU_CHAR_SPACE || ( ch >= 0xD800 && ch < 0xE000 ) ) {
            zu::appendFormat( json, "\\u%04X", ch );
        } else {
            zu::appendFormat( json, zu::runtime( ch == '"' || ch == '\\' ? "\\%c" : "%c" ), ch );
        }
    }
    zuStringAppendChar( json, '"' );
}
static void appendLine( ZU_STRING **json, size_t level )
{
    zuStringAppendChar( json, '\n' );
    zuStringAppendCharRun( json, ZU_CHAR_SPACE, 2 * (ZU_INT)level );
}
void ToolJson::beginValue( std::string_view key )
{
    if ( levels.empty() ) {
        return;
    }
    if ( !levels.back().empty ) {
        zuStringAppendChar( text.inOut(), ',' );
    }
    levels.back().empty = false;
    if ( levels.size() <= LEVELS_BROKEN ) {
        appendLine( text.inOut(), levels.size() );
    } else {
        zuStringAppendChar( text.inOut(), ' ' );
    }
    if ( levels.back().closing == '}' ) {
        appendJsonString( text.inOut(), zu::text( key ).get() );
        zuStringAppendCstr( text.inOut(), ": ", -1 );
    }
}
void ToolJson::open( std::string_view key, const char *brackets )
{
    beginValue( key );
    zuStringAppendChar( text.inOut(), (ZU_CHAR)brackets[ 0 ] );
    levels.push_back( { brackets[ 1 ], true } );
}
void ToolJson::close()
{
    LEVEL level = levels.back();
    levels.pop_back();
    if ( !level.empty && levels.size() < LEVELS_BROKEN ) {
        appendLine( text.inOut(), levels.size() );
    } else if ( !level.empty ) {
        zuStringAppendChar( text.inOut(), ' ' );
    }
    zuStringAppendChar( text.inOut(), (ZU_CHAR)level.closing );
}
void ToolJson::add( std::string_view key, ZU_STRING *value )
{
    beginValue( key );
    if ( value ) {
        appendJsonString( text.inOut(), value );
    } else {
        zuStringAppendCstr( text.inOut(), "null", -1 );
    }
}
void ToolJson::addInt( std::string_view key, ZU_INT value )
{
    beginValue( key );
    zu::appendFormat( text.inOut(), "%i", value );
}
void ToolJson::addBool( std::string_view key, bool value )
{
    beginValue( key );
    zu::appendFormat( text.inOut(), "%b", value );
}
void ToolJson::print()
{
    if ( levels.empty() ) {
        zuStringAppendChar( text.inOut(), '\n' );
    }
    toolPrint( stdout, text.get() );
    zuStringClear( text.inOut() );
}

// Files
bool toolIsStandard( ZU_STRING *name )
{
    return zuUtf8Equals( name, "-", -1 );
}
void toolReportFile( const char *what, ZU_STRING *name )
{
    TEXT failure = toolLastFailure();
    TEXT why = zuFileIsDirectory( name ) ? zu::text( strerror( EISDIR ) ) : failure;
    toolPrintError( why ? zu::format( "cannot %lc %s: %s", what, name, why ).get()
                        : zu::format( "cannot %lc %s", what, name ).get() );
}

static constexpr size_t BLOCK_SIZE = 256 * 1024;
static constexpr std::chrono::milliseconds SHOW_AFTER( 1000 ); // whatever is done by then needs no progress
static constexpr std::chrono::milliseconds SHOW_EACH( 100 );
static constexpr ZU_INT SHOWN_NAME_LENGTH = 40; // keeps the line of progress on one line of the terminal

static zu::Ref<ZU_BYTE_SOURCE> standardInput()
{
    return zu::byteSource( []( uint8_t *bytes, ZU_INT count ) {
        size_t length = fread( bytes, 1, (size_t)count, stdin );
        return ferror( stdin ) ? (ZU_INT)-1 : (ZU_INT)length;
    } );
}
ToolReader::ToolReader( ZU_STRING *fileName, bool printsMeanwhile )
    : name( zu::share( fileName ) ), buffer( BLOCK_SIZE ), nextShow( std::chrono::steady_clock::now() + SHOW_AFTER ),
      shows( toolIsTerminal( stderr ) && !( printsMeanwhile && toolIsTerminal( stdout ) ) )
{
    toolForgetFailure();
    bool isStandard = toolIsStandard( fileName );
    source = isStandard ? standardInput() : zu::adopt( zuFileOpenByteSource( fileName ) );
    if ( !source ) {
        fail();
    } else {
        info = isStandard ? toolFindFile( stdin ) : toolFindFile( fileName );
    }
}
ToolReader::~ToolReader()
{
    wipeProgress();
}
size_t ToolReader::read()
{
    if ( failed ) {
        return 0;
    }
    ZU_INT length = zuByteSourceReadBytes( source.get(), buffer.data(), (ZU_INT)buffer.size() );
    if ( zuByteSourceError( source.get() ) ) {
        fail();
        return 0;
    }
    done += length;
    if ( length == 0 ) {
        wipeProgress();
    } else if ( shows && std::chrono::steady_clock::now() >= nextShow ) {
        showProgress();
    }
    return (size_t)length;
}
bool ToolReader::reads( const TOOL_FILE &other ) const
{
    return info.isOrdinary && other.isOrdinary && info.identity == other.identity;
}
void ToolReader::fail()
{
    toolReportFile( "read", name.get() );
    failed = true;
}
void ToolReader::showProgress()
{
    nextShow = std::chrono::steady_clock::now() + SHOW_EACH;
    TEXT line = zu::format( "\r\x1B[K%.*s: ", SHOWN_NAME_LENGTH, name );
    if ( info.isOrdinary && info.size > 0 ) {
        zu::appendFormat( line.inOut(), "%i %%", zuIntMin( done * 100 / info.size, 100 ) );
    } else {
        zu::appendFormat( line.inOut(), "%i MB", done / 1000000 );
    }
    toolPrint( stderr, line.get() );
    progressShown = true;
}

zu::Ref<ZU_BUFFER> toolReadFile( ZU_STRING *name )
{
    zu::Ref<ZU_BUFFER> content;
    toolForgetFailure();
    if ( toolIsStandard( name ) ) {
        auto input = standardInput();
        content = zu::adopt( zuBufferCreate() );
        zuByteSourceRead( input.get(), content.inOut(), -1 );
        content = zuByteSourceError( input.get() ) ? nullptr : content;
    } else {
        content = zu::adopt( zuFileReadBuffer( name, -1 ) );
    }
    if ( !content ) {
        toolReportFile( "read", name );
    }
    return content;
}
bool toolWriteFile( ZU_STRING *name, ZU_BUFFER *content )
{
    if ( toolIsStandard( name ) ) {
        fwrite( zuBufferBacking( content ), 1, (size_t)zuBufferLength( content ), stdout );
        return true; // which is looked at when the command ends
    }
    toolForgetFailure();
    if ( !zuFileReplaceBuffer( name, content ) ) {
        toolReportFile( "write", name );
        return false;
    }
    return true;
}

// Stores.  Both forms are told apart by themselves: the binary one must be whole to the byte.
zu::Ref<ZU_STORE> toolReadStore( ZU_STRING *name, bool *isBinary )
{
    zu::Ref<ZU_BUFFER> content = toolReadFile( name );
    if ( !content ) {
        return nullptr;
    }
    auto store = zu::adopt( zuStoreBinaryTryDecodeFromBuffer( content.get() ) );
    if ( isBinary ) {
        *isBinary = !!store;
    }
    if ( !store &&
         zuUtf8Fault( (const char *)zuBufferBacking( content.get() ), zuBufferLength( content.get() ) ) < 0 ) {
        store = zu::adopt( zuStoreTextTryDecodeFromBuffer( content.get(), ZU_CHARSET_UTF_8,
                                                           ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER,
                                                           ZU_NLF_FLAG_LF | ZU_NLF_FLAG_CRLF | ZU_NLF_FLAG_CR ) );
    }
    if ( !store ) {
        toolError( "%s holds settings neither as text nor in binary", name );
    }
    return store;
}
