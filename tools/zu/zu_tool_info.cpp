// zu info: what a process knows of itself, for bug reports and for whoever builds modules.

#include "zu_tool.h"

using STORE = zu::Ref<ZU_STORE>;

// The values of zuRuntimeInfo in the order in which a reader wants them
static const struct {
    const char *address;
    const char *label;
} INFO_ROWS[] = {
    { "friendlyName", "Product" },
    { "product", "Product name" },
    { "version", "Version" },
    { "buildTime", "Built" },
    { "os", "Built for" },
    { "hardware", "Hardware" },
    { "variant", "Variant" },
    { "compatibility", "Compatibility" },
    { "applicationFriendlyName", "Application" },
    { "applicationIdentifier", "Identifier" },
    { "applicationVersion", "Version" },
    { "computerName", "Computer" },
    { "operatingSystemInfo", "System" },
    { "cpuInfo", "Processor" },
    { "startTime", "Started" },
};
static constexpr int LABEL_WIDTH = 15;

// Output of the library itself, such as the lines of ZU_RUNTIME_FLAG_MODULE_DEBUG
static void infoPrintFunction( const ZU_CHAR *chs, ZU_INT chsLength )
{
    toolPrint( stderr, zu::adopt( zuStringCreateFromCharsCopy( chs, chsLength ) ).get() );
}

struct INFO_MODULE {
    TEXT name;
    TEXT version;
    TEXT description;
};
static std::vector<INFO_MODULE> infoModules()
{
    std::vector<INFO_MODULE> modules;
    zu::Ref<ZU_VECTOR> vec = zu::adopt( zuRuntimeModulesVector() );
    for ( ZU_INT i = 0; i < zuVectorLength( vec.get() ); i++ ) {
        ZU_MODULE *module = zuModuleFrom( zuVectorBacking( vec.get() )[ i ] );
        zu::Ref<ZU_MODULE_VERSION> version = zu::adopt( zuModuleVersion( module ) );
        modules.push_back( { zu::adopt( zuModuleName( module ) ), zu::adopt( zuModuleVersionToString( version.get() ) ),
                             zu::adopt( zuModuleDescription( module ) ) } );
    }
    return modules;
}

static void infoPrintText( ZU_STORE *info, ZU_STRING *flags )
{
    for ( const auto &row : INFO_ROWS ) {
        if ( TEXT value = zu::adopt( zuStoreValueCstr( info, row.address, -1 ) ) ) {
            toolPrintRow( row.label, LABEL_WIDTH, value.get() );
        }
    }
    toolPrintRow( "Flags", LABEL_WIDTH, zuStringLength( flags ) > 0 ? flags : zu::text( "none" ).get() );
    const char *label = "Modules";
    for ( const INFO_MODULE &module : infoModules() ) {
        toolPrintRow( label, LABEL_WIDTH,
                      zu::format( "%s %s: %s", module.name, module.version, module.description ).get() );
        label = "";
    }
}
static void infoPrintJson( ZU_STORE *info, ZU_STRING *flags )
{
    ToolJson json;
    json.openObject();
    for ( const auto &row : INFO_ROWS ) {
        if ( TEXT value = zu::adopt( zuStoreValueCstr( info, row.address, -1 ) ) ) {
            json.add( row.address, value );
        }
    }
    json.add( "flags", flags );
    json.openArray( "modules" );
    for ( const INFO_MODULE &module : infoModules() ) {
        json.openObject();
        json.add( "name", module.name );
        json.add( "version", module.version );
        json.add( "description", module.description );
        json.close();
    }
    json.close();
    json.close();
    json.print();
}

// The directories of the product
static const char *const PATH_LABELS[] = { "Installed in", "Product", "Programs", "Resources", "Data",
                                           "Storage",      "Traces",  "Reports",  "Temporary" };
static void infoPrintPaths( bool asJson )
{
    auto paths = zu::adopt( zuRuntimePaths() );
    ToolJson json;
    json.openObject();
    for ( ZU_INT kind = 0; ZU_RUNTIME_PATH_OK( kind ); kind++ ) {
        TEXT path = zu::adopt( zuRuntimePathsPath( paths.get(), kind ) );
        if ( asJson ) {
            json.add( zu::toUtf8( zu::adopt( zuRuntimePathToString( kind ) ) ), path );
        } else {
            toolPrintRow( PATH_LABELS[ kind ], LABEL_WIDTH, path ? path.get() : zu::text( "none" ).get() );
        }
    }
    json.close();
    if ( asJson ) {
        json.print();
    }
}

static void infoPrintAll( bool asJson )
{
    STORE info = zu::adopt( zuRuntimeInfo() );
    TEXT flags = zu::adopt( zuRuntimeFlagsToString( zuRuntimeFlags() ) );
    ( asJson ? infoPrintJson : infoPrintText )( info.get(), flags.get() );
}

static int infoRun( ToolArguments &arguments )
{
    if ( !arguments.operands.empty() ) {
        return toolMisuse( "takes no operand: %s", arguments.operands[ 0 ] );
    }
    // Flags are those of the whole life of the library, which so begins anew.
    TEXT flagsText = arguments.value( "flags" );
    TEXT names = arguments.value( "load" );
    return toolRestart( flagsText ? zuRuntimeFlagsFromString( flagsText.get() ) : 0, infoPrintFunction,
                        [ loads = !!names, names = names ? toolBytesOfText( names.get() ) : "",
                          paths = arguments.has( "paths" ), json = arguments.has( "json" ) ] {
                            if ( loads && !zuRuntimeTryLoadModulesCstr( names.c_str(), -1 ) ) {
                                toolError( "cannot load the modules: %lc", names.c_str() );
                                return TOOL_FAILED;
                            }
                            ( paths ? infoPrintPaths : infoPrintAll )( json );
                            return TOOL_OK;
                        } );
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "paths", 'p', nullptr,
      "prints the directories of the product instead, and \"none\" for those that it does not "
      "have here" },
    { "flags", 'f', "FLAGS",
      "starts the library with these flags, by their names in zu_runtime_flags.h, with \"|\" "
      "between them" },
    { "load", 'l', "NAMES",
      "loads these modules first, with blanks between their names; with "
      "ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH from where the system looks for shared files, with "
      "ZU_RUNTIME_FLAG_MODULE_DEBUG telling why one cannot be loaded" },
    { "json", 'j', nullptr,
      "prints an object with the values of zuRuntimeInfo, \"flags\" and \"modules\", or the "
      "directories by the names of their kinds, null for those that there are not" },
};
const TOOL_COMMAND toolInfoCommand = {
    "info",
    "tells of the product, the system and the modules",
    "[--paths] [--json] [--flags FLAGS] [--load NAMES]",
    R"(Prints which product the library belongs to, what it was built for and runs on,
the flags of the process, and the loaded modules with their versions.
)",
    OPTIONS,
    R"(The exit status is 0 if all went well, 1 if a module cannot be loaded, 2 if the
use is wrong.
)",
    infoRun,
};
