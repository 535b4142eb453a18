// The command zu: the table of its subcommands, and how a command line becomes the arguments of one.
//
// The library finds the subcommand and walks through the options.  What it says of a wrong word is terse, and so the
// tool has messages of its own for whatever a user can get wrong; only a word that fits goes to the switch.

#include "zu_tool_platform.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

static const TOOL_COMMAND *running = nullptr; // null: none yet
static int runWithArguments( const TOOL_COMMAND &command, ZU_VECTOR *argv );

template <const TOOL_COMMAND &COMMAND>
static ZU_BOOL run( ZU_VECTOR *argv, void *context )
{
    int status = runWithArguments( COMMAND, argv );
    *(int *)context = status;
    return status == TOOL_OK;
}
struct ENTRY {
    const TOOL_COMMAND *command;
    ZU_TOOL_SWITCH_TOOL_FUNC function;
};
template <const TOOL_COMMAND &COMMAND>
static constexpr ENTRY ENTRY_OF = { &COMMAND, run<COMMAND> };
static constexpr ENTRY ENTRIES[] = {
    ENTRY_OF<toolConvertCommand>, ENTRY_OF<toolCrashCommand>,  ENTRY_OF<toolIdCommand>,    ENTRY_OF<toolInfoCommand>,
    ENTRY_OF<toolModuleCommand>,  ENTRY_OF<toolRandomCommand>, ENTRY_OF<toolStoreCommand>, ENTRY_OF<toolTagsCommand>,
    ENTRY_OF<toolTextCommand>,    ENTRY_OF<toolZoneCommand>,
};

// Messages
void toolPrintError( ZU_STRING *message )
{
    TEXT prefix = running ? zu::format( "zu %lc:", running->name ) : zu::text( "zu:" );
    toolPrint( stderr, zu::format( "%s %s\n", toolBold( stderr, prefix ), message ).get() );
}
void toolPrintHint()
{
    fprintf( stderr, "Try \"zu %s%s--help\".\n", running ? running->name : "", running ? " " : "" );
}

// Options.  The option at the place `i` of a table has the identifier `i`.
static constexpr ZU_INT HELP = 1000;
static constexpr ZU_INT OPERAND = 1001;
static constexpr TOOL_OPTION HELP_OPTION = { "help", 'h', nullptr, "prints this" };

static void setOption( ZU_OPT_DEF **def, const TOOL_OPTION &option, ZU_INT id )
{
    zuOptDefSetLongOptCstr( def, option.name, -1, id );
    if ( option.letter ) {
        zuOptDefSetShortOpt( def, (ZU_CHAR)option.letter, id );
    }
    zuOptDefSetFlags( def, id, option.value ? ZU_OPT_FLAG_ARGUMENT : 0 );
}
static zu::Ref<ZU_OPT_DEF> makeDefinition( std::span<const TOOL_OPTION> options )
{
    auto def = zu::adopt( zuOptDefCreate() );
    for ( size_t i = 0; i < options.size(); i++ ) {
        setOption( def.inOut(), options[ i ], (ZU_INT)i );
    }
    setOption( def.inOut(), HELP_OPTION, HELP );
    zuOptDefSetArgOnly( def.inOut(), OPERAND );
    return def;
}
// Reports what the walk has stumbled over.
static int refuse( ZU_OPT_SEQ *seq )
{
    TEXT option = zu::adopt( zuOptSeqOpt( seq ) );
    switch ( zuOptSeqId( seq ) ) {
    case -1:
        return toolMisuse( "unknown option: %s", option );
    case -2:
        return toolMisuse( "several options begin with %s", option );
    default:
        // Only a long option can have a value that it does not take: -xyz is three options.
        return zuOptSeqHasArg( seq ) ? toolMisuse( "%s takes no value", option )
                                     : toolMisuse( "%s needs a value", option );
    }
}

// Help
static constexpr size_t OPTION_COLUMN = 24;
static constexpr size_t COLUMNS = 80;

// Adds `text` to the line that has begun, and begins lines of blanks as wide as `indent` where it gets too long.  What
// stands in brackets stays on one line.
static std::string wrap( std::string line, size_t indent, std::string_view text )
{
    std::string lines;
    while ( !text.empty() ) {
        size_t length = 0;
        for ( int depth = 0; length < text.size() && ( depth > 0 || text[ length ] != ' ' ); length++ ) {
            depth += text[ length ] == '[' ? 1 : text[ length ] == ']' ? -1 : 0;
        }
        if ( line.size() + length > COLUMNS ) {
            lines += line.substr( 0, line.find_last_not_of( ' ' ) + 1 ) + "\n";
            line.assign( indent, ' ' );
        }
        line += std::string( text.substr( 0, length ) ) + " ";
        text.remove_prefix( std::min( length + 1, text.size() ) );
    }
    line.back() = '\n';
    return lines + line;
}
static std::string describeOption( const TOOL_OPTION &option )
{
    std::string line = option.letter ? std::string( "  -" ) + option.letter + ", --" + option.name
                                     : std::string( "  --" ) + option.name;
    line += option.value ? std::string( " " ) + option.value : "";
    ZU_ASSERT( line.size() + 2 <= OPTION_COLUMN );
    line.resize( OPTION_COLUMN, ' ' );
    return wrap( line, OPTION_COLUMN, option.help );
}
static void printHelp( const TOOL_COMMAND &command )
{
    std::string lead = "usage: ";
    std::string_view forms = command.usage;
    while ( !forms.empty() ) {
        std::string_view form = forms.substr( 0, forms.find( '\n' ) );
        lead += std::string( "zu " ) + command.name + " ";
        fputs( wrap( lead, lead.size(), form ).c_str(), stdout );
        forms.remove_prefix( std::min( form.size() + 1, forms.size() ) );
        lead.assign( 7, ' ' );
    }
    printf( "\n%s\n", command.description );
    toolPrintFormat( "%s\n", toolBold( stdout, zu::text( "Options:" ) ) );
    for ( const TOOL_OPTION &option : command.options ) {
        fputs( describeOption( option ).c_str(), stdout );
    }
    printf( "%s\n%s", describeOption( HELP_OPTION ).c_str(), command.statuses );
}

static int runWithArguments( const TOOL_COMMAND &command, ZU_VECTOR *argv )
{
    running = &command;
    ToolArguments arguments( command.options );
    auto seq = zu::adopt( zuOptSeqCreate( makeDefinition( command.options ).get(), argv ) );
    while ( zuOptSeqHasNext( seq.get() ) ) {
        ZU_INT id = zuOptSeqNext( seq.get() );
        if ( id < 0 ) {
            return refuse( seq.get() );
        }
        if ( id == HELP ) {
            printHelp( command );
            return TOOL_OK;
        }
        TEXT argument = zu::adopt( zuOptSeqArgString( seq.get() ) );
        if ( id == OPERAND ) {
            arguments.operands.push_back( argument );
        } else {
            arguments.set( (size_t)id, argument );
        }
    }
    return command.run( arguments );
}

// The command itself
static void printUsage( FILE *file )
{
    toolPrint( file, zu::format( "usage: zu COMMAND [ARGUMENT...]\n       zu --help | --version\n\n%s\n",
                                 toolBold( file, zu::text( "Commands:" ) ) )
                         .get() );
    for ( const ENTRY &entry : ENTRIES ) {
        if ( entry.command->summary ) {
            fprintf( file, "  %-10s  %s\n", entry.command->name, entry.command->summary );
        }
    }
    fputs( "\n\"zu COMMAND --help\" tells about one of them.  Commands and long options may be\n"
           "shortened as long as no other begins so.\n",
           file );
}
static void printVersion()
{
    toolPrintFormat( "zu %lc, the library\n%~s %~s by %~s, the product that it was built for\n", zuVersion(),
                     zuRuntimeVersionProductFriendlyName(), zuRuntimeVersionProductVersion(),
                     zuRuntimeVersionProductVendorName() );
}
// A command that is not on the list goes by its full name only.
static zu::Ref<ZU_TOOL_SWITCH> makeSwitch( ZU_STRING *word )
{
    auto tools = zu::adopt( zuToolSwitchCreate() );
    for ( const ENTRY &entry : ENTRIES ) {
        if ( entry.command->summary || zuUtf8Equals( word, entry.command->name, -1 ) ) {
            zuToolSwitchSetToolCstr( tools.inOut(), entry.command->name, -1, entry.function );
        }
    }
    return tools;
}
static int runCommand( ZU_VECTOR *argv )
{
    if ( zuVectorLength( argv ) == 0 ) {
        printUsage( stderr );
        return TOOL_MISUSE;
    }
    TEXT word = zu::share( zuStringFrom( zuVectorBacking( argv )[ 0 ] ) );
    if ( word == "--help" || word == "-h" ) {
        printUsage( stdout );
        return TOOL_OK;
    }
    if ( word == "--version" || word == "-V" ) {
        printVersion();
        return TOOL_OK;
    }
    if ( zuStringBeginsWithChar( word.get(), '-' ) ) {
        return toolMisuse( "unknown option: %s", word );
    }
    auto tools = makeSwitch( word.get() );
    TEXT fitting = zu::adopt( zuStringCreate() );
    ZU_INT count = 0;
    for ( ZU_STRING *name : zu::items<ZU_STRING>( zu::adopt( zuToolSwitchToolsVector( tools.get() ) ) ) ) {
        if ( zuStringBeginsWith( name, word.get() ) ) {
            count++;
            zu::appendFormat( fitting.inOut(), " %s", name );
        }
    }
    if ( count != 1 && !zuToolSwitchHasTool( tools.get(), word.get() ) ) {
        return count == 0 ? toolMisuse( "unknown command: %s", word )
                          : toolMisuse( "several commands begin with \"%s\":%s", word, fitting );
    }
    int status = TOOL_MISUSE;
    zuToolSwitchRunTool( tools.get(), argv, &status );
    return status;
}

static void start( ZU_INT flags, ZU_RUNTIME_PRINT_FUNC printFunc )
{
    zuRuntimeStartup( flags, -1, printFunc, "zu", "The companion command of zu", zuVersion() );
}
static std::function<int()> secondLife; // of the library; empty: all is done in the first one
int toolRestart( ZU_INT flags, ZU_RUNTIME_PRINT_FUNC printFunc, std::function<int()> rest )
{
    secondLife = [ =, rest = std::move( rest ) ] {
        zuRuntimeShutdown();
        start( flags, printFunc );
        return rest();
    };
    return TOOL_OK;
}
int main( int argc, char **argv )
{
    start( 0, nullptr );
    toolPrepareStreams();
    int status = runCommand( zu::adopt( zuArguments( argc, argv ) ).get() );
    if ( secondLife ) {
        status = secondLife();
    }
    // What has not arrived is no result, as on a full disk.
    if ( ( fflush( stdout ) != 0 || ferror( stdout ) ) && status == TOOL_OK ) {
        toolError( "cannot write the standard output: %lc", strerror( errno ) );
        status = TOOL_FAILED;
    }
    zuRuntimeShutdown();
    return status;
}
