// zu info: what a process knows of itself, for bug reports and for whoever builds modules.

#include "zu_tool.h"

using STORE = zu::Ref<ZU_STORE>;
using STRING = zu::Ref<ZU_STRING>;

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
static constexpr ZU_INT LABEL_WIDTH = 15;

static STRING infoText( const char *narrow )
{
    return zu::adopt( zuStringCreateFromCstr( narrow, -1 ) );
}
static void infoPrintRow( const char *label, ZU_STRING *value )
{
    toolPrint( stdout, zu::format( "%-*lc%s\n", LABEL_WIDTH, label, value ).get() );
}
// Output of the library itself, such as the lines of ZU_RUNTIME_FLAG_MODULE_DEBUG
static void infoPrintFunction( const ZU_CHAR *chs, ZU_INT chsLength )
{
    toolPrint( stderr, zu::adopt( zuStringCreateFromCharsCopy( chs, chsLength ) ).get() );
}

struct INFO_MODULE {
    STRING name;
    STRING version;
    STRING description;
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
        if ( STRING value = zu::adopt( zuStoreValueCstr( info, row.address, -1 ) ) ) {
            infoPrintRow( row.label, value.get() );
        }
    }
    infoPrintRow( "Flags", zuStringLength( flags ) > 0 ? flags : infoText( "none" ).get() );
    const char *label = "Modules";
    for ( const INFO_MODULE &module : infoModules() ) {
        infoPrintRow( label, zu::format( "%s %s: %s", module.name, module.version, module.description ).get() );
        label = "";
    }
}
static void infoPrintJson( ZU_STORE *info, ZU_STRING *flags )
{
    STRING json = zu::format( "{\n%#%" );
    for ( const auto &row : INFO_ROWS ) {
        if ( STRING value = zu::adopt( zuStoreValueCstr( info, row.address, -1 ) ) ) {
            zu::appendFormat( json.inOut(), "  \"%lc\": %s,\n", row.address, toolJsonString( value.get() ) );
        }
    }
    zu::appendFormat( json.inOut(), "  \"flags\": %s,\n  \"modules\": [", toolJsonString( flags ) );
    const char *separator = "\n";
    for ( const INFO_MODULE &module : infoModules() ) {
        zu::appendFormat( json.inOut(), "%lc    { \"name\": %s, \"version\": %s, \"description\": %s }", separator,
                          toolJsonString( module.name.get() ), toolJsonString( module.version.get() ),
                          toolJsonString( module.description.get() ) );
        separator = ",\n";
    }
    zu::appendFormat( json.inOut(), "\n  ]\n}\n%#%" );
    toolPrint( stdout, json.get() );
}

static int infoRun( int argc, char **argv )
{
    bool json = false;
    const char *flagsText = nullptr;
    const char *names = nullptr;
    std::vector<const char *> operands;
    int status;
    if ( !toolReadArguments(
             argc, argv,
             { { "--json", &json, nullptr }, { "--flags", nullptr, &flagsText }, { "--load", nullptr, &names } },
             &operands, &status ) ) {
        return status;
    }
    if ( !operands.empty() ) {
        return toolMisuse( "takes no operand: %lc", operands[ 0 ] );
    }
    // Flags are those of the whole life of the library, which so begins anew.
    ZU_INT flags = flagsText ? zuRuntimeFlagsFromString( infoText( flagsText ).get() ) : 0;
    zuRuntimeShutdown();
    zuRuntimeStartup( flags, -1, infoPrintFunction, "zu", "The companion command of zu", "1.0" );
    if ( names && !zuRuntimeTryLoadModulesCstr( names, -1 ) ) {
        toolError( "cannot load the modules: %lc", names );
        return TOOL_FAILED;
    }
    STORE info = zu::adopt( zuRuntimeInfo() );
    STRING flagNames = zu::adopt( zuRuntimeFlagsToString( zuRuntimeFlags() ) );
    ( json ? infoPrintJson : infoPrintText )( info.get(), flagNames.get() );
    return TOOL_OK;
}

const TOOL_COMMAND toolInfoCommand = {
    "info",
    "tells of the product, the system and the modules",
    R"(usage: zu info [--json] [--flags FLAGS] [--load "NAME..."]

Prints which product the library belongs to, what it was built for and runs on, the flags of the process, and the loaded
modules with their versions.

Options:
  --flags FLAGS      starts the library with these flags, such as
                     "ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH|ZU_RUNTIME_FLAG_MODULE_DEBUG"
  --load "NAME..."   loads these modules first; with the first of the flags above from where the system looks for shared
                     files, with the second telling why one cannot be loaded
  --json             prints an object with the values of zuRuntimeInfo, "flags" and "modules"
  --help             prints this

The exit status is 0 if all went well, 1 if a module cannot be loaded, 2 if the use is wrong.
)",
    infoRun,
};
