// The command zu: the table of its subcommands, and what they share.

#include "zu_tool.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

static const TOOL_COMMAND *const COMMANDS[] = {
    &toolConvertCommand,
    &toolInfoCommand,
    &toolStoreCommand,
    &toolTextCommand,
};

static const TOOL_COMMAND *running = nullptr; // null: none yet

static bool progressShown = false; // on the terminal's last line
static void toolWipeProgress()
{
    if ( progressShown ) {
        fputs( "\r\x1B[K", stderr );
        progressShown = false;
    }
}

// Messages
void toolPrint( FILE *file, ZU_STRING *text )
{
    ZU_INT length;
    char *narrow = zuStringConvertToCstr( text, ZU_FALSE, &length );
    if ( narrow ) {
        fwrite( narrow, 1, (size_t)length, file );
        zuMemFree( narrow );
    }
}
void toolPrintError( ZU_STRING *message )
{
    fflush( stdout );
    toolWipeProgress();
    toolPrint( stderr, zu::format( zu::runtime( running ? "zu %lc: %s\n" : "zu: %#lc%s\n" ),
                                   running ? running->name : nullptr, message )
                           .get() );
}
void toolPrintHint()
{
    fprintf( stderr, "Try \"zu %s%s--help\".\n", running ? running->name : "", running ? " " : "" );
}

zu::Ref<ZU_STRING> toolJsonString( ZU_STRING *text )
{
    zu::Ref<ZU_STRING> json = zu::format( "\"%#%" );
    for ( ZU_INT i = 0; i < zuStringLength( text ); i++ ) {
        ZU_CHAR ch = zuStringCharAt( text, i );
        if ( ch < ZU_CHAR_SPACE || ( ch >= 0xD800 && ch < 0xE000 ) ) {
            zu::appendFormat( json.inOut(), "\\u%04X", ch );
        } else {
            zu::appendFormat( json.inOut(), zu::runtime( ch == '"' || ch == '\\' ? "\\%c" : "%c" ), ch );
        }
    }
    zuStringAppendChar( json.inOut(), '"' );
    return json;
}

// Options
static const TOOL_OPTION *toolFindOption( std::initializer_list<TOOL_OPTION> options, const char *argument,
                                          size_t nameLength )
{
    for ( const TOOL_OPTION &option : options ) {
        if ( strlen( option.name ) == nameLength && strncmp( option.name, argument, nameLength ) == 0 ) {
            return &option;
        }
    }
    return nullptr;
}
static bool toolIsHelp( const char *argument )
{
    return strcmp( argument, "--help" ) == 0 || strcmp( argument, "-h" ) == 0;
}
bool toolReadArguments( int argc, char **argv, std::initializer_list<TOOL_OPTION> options,
                        std::vector<const char *> *operands, int *status )
{
    for ( int i = 0; i < argc; i++ ) {
        const char *argument = argv[ i ];
        if ( argument[ 0 ] != '-' || strcmp( argument, "-" ) == 0 ) {
            operands->push_back( argument );
            continue;
        }
        if ( strcmp( argument, "--" ) == 0 ) {
            operands->insert( operands->end(), argv + i + 1, argv + argc );
            return true;
        }
        if ( toolIsHelp( argument ) ) {
            fputs( running->help, stdout );
            *status = TOOL_OK;
            return false;
        }
        const char *equals = strchr( argument, '=' );
        const TOOL_OPTION *option =
            toolFindOption( options, argument, equals ? (size_t)( equals - argument ) : strlen( argument ) );
        if ( !option ) {
            *status = toolMisuse( "unknown option: %lc", argument );
            return false;
        }
        bool isFlag = option->flag != nullptr;
        if ( isFlag && equals ) {
            *status = toolMisuse( "%lc takes no value", option->name );
            return false;
        }
        if ( isFlag ) {
            *option->flag = true;
        } else if ( equals ) {
            *option->value = equals + 1;
        } else if ( i + 1 < argc ) {
            *option->value = argv[ ++i ];
        } else {
            *status = toolMisuse( "%lc needs a value", option->name );
            return false;
        }
    }
    return true;
}

// Input
static constexpr size_t BLOCK_SIZE = 256 * 1024;
static constexpr std::chrono::milliseconds SHOW_AFTER( 1000 ); // whatever is done by then needs no progress
static constexpr std::chrono::milliseconds SHOW_EACH( 100 );
static constexpr ZU_INT SHOWN_NAME_LENGTH = 40; // keeps the line of progress on one line of the terminal

ToolReader::ToolReader( const char *fileName, bool printsMeanwhile )
    : name( fileName ), buffer( BLOCK_SIZE ), nextShow( std::chrono::steady_clock::now() + SHOW_AFTER ),
      shows( isatty( STDERR_FILENO ) && !( printsMeanwhile && isatty( STDOUT_FILENO ) ) )
{
    file = name == "-" ? stdin : fopen( fileName, "rb" );
    if ( !file ) {
        fail();
    } else if ( fstat( fileno( file ), &info ) != 0 ) {
        info = {};
    }
}
ToolReader::~ToolReader()
{
    toolWipeProgress();
    if ( file && file != stdin ) {
        fclose( file );
    }
}
size_t ToolReader::read()
{
    if ( failed ) {
        return 0;
    }
    size_t length = fread( buffer.data(), 1, buffer.size(), file );
    if ( length < buffer.size() && ferror( file ) ) {
        fail();
        return 0;
    }
    done += (ZU_INT)length;
    if ( length == 0 ) {
        toolWipeProgress();
    } else if ( shows && std::chrono::steady_clock::now() >= nextShow ) {
        showProgress();
    }
    return length;
}
bool ToolReader::reads( const struct stat &other ) const
{
    return S_ISREG( info.st_mode ) && info.st_dev == other.st_dev && info.st_ino == other.st_ino;
}
void ToolReader::fail()
{
    toolError( "cannot read %lc: %lc", name.c_str(), strerror( errno ) );
    failed = true;
}
void ToolReader::showProgress()
{
    nextShow = std::chrono::steady_clock::now() + SHOW_EACH;
    zu::Ref<ZU_STRING> line = zu::format( "\r\x1B[K%.*lc: ", SHOWN_NAME_LENGTH, name.c_str() );
    if ( S_ISREG( info.st_mode ) && info.st_size > 0 ) {
        zu::appendFormat( line.inOut(), "%i %%", zuIntMin( done * 100 / info.st_size, 100 ) );
    } else {
        zu::appendFormat( line.inOut(), "%i MB", done / 1000000 );
    }
    toolPrint( stderr, line.get() );
    progressShown = true;
}

// The command itself
static const TOOL_COMMAND *toolFindCommand( const char *name )
{
    for ( const TOOL_COMMAND *command : COMMANDS ) {
        if ( strcmp( command->name, name ) == 0 ) {
            return command;
        }
    }
    return nullptr;
}
static void toolPrintUsage( FILE *file )
{
    fputs( "usage: zu COMMAND [ARGUMENT...]\n\nCommands:\n", file );
    for ( const TOOL_COMMAND *command : COMMANDS ) {
        fprintf( file, "  %-10s  %s\n", command->name, command->summary );
    }
    fputs( "\n\"zu COMMAND --help\" tells about one of them.\n", file );
}
static int toolRun( int argc, char **argv )
{
    if ( argc < 2 ) {
        toolPrintUsage( stderr );
        return TOOL_MISUSE;
    }
    if ( toolIsHelp( argv[ 1 ] ) ) {
        toolPrintUsage( stdout );
        return TOOL_OK;
    }
    const TOOL_COMMAND *command = toolFindCommand( argv[ 1 ] );
    if ( !command ) {
        return toolMisuse( zu::runtime( argv[ 1 ][ 0 ] == '-' ? "unknown option: %lc" : "unknown command: %lc" ),
                           argv[ 1 ] );
    }
    running = command;
    return command->run( argc - 2, argv + 2 );
}
int main( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu", "The companion command of zu", "1.0" );
    int status = toolRun( argc, argv );
    // What has not arrived is no result, as on a full disk.
    if ( ( fflush( stdout ) != 0 || ferror( stdout ) ) && status == TOOL_OK ) {
        toolError( "cannot write the standard output: %lc", strerror( errno ) );
        status = TOOL_FAILED;
    }
    zuRuntimeShutdown();
    return status;
}
