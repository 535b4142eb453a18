// zu module: whether module files fit to the library and its product.

#include "zu_tool.h"

// A name without a folder is a file of the current one here, and none that the system looks for.
static TEXT fileOf( const TEXT &name )
{
    TEXT folder = zu::adopt( zuFileDirName( name.get() ) );
    return zuStringLength( folder.get() ) == 0 ? zu::format( "./%s", name ) : name;
}
static int moduleRun( ToolArguments &arguments )
{
    std::vector<TEXT> &operands = arguments.operands;
    static constexpr const char *ACTIONS[] = { "check" };
    if ( operands.empty() ) {
        return toolMisuse( "an action is missing: %lc", ACTIONS[ 0 ] );
    }
    if ( toolReadWord( "the action", operands[ 0 ].get(), ACTIONS ) < 0 ) {
        return TOOL_MISUSE;
    }
    if ( operands.size() < 2 ) {
        return toolMisuse( "%lc needs a file", ACTIONS[ 0 ] );
    }
    int status = TOOL_OK;
    ToolJson json;
    json.openArray();
    for ( size_t i = 1; i < operands.size(); i++ ) {
        TEXT failure = zu::adopt( zuModuleCheckFile( fileOf( operands[ i ] ).get() ) );
        status = failure ? TOOL_FAILED : status;
        if ( arguments.has( "json" ) ) {
            json.openObject();
            json.add( "file", operands[ i ] );
            json.addBool( "fits", !failure );
            json.add( "failure", failure );
            json.close();
        } else {
            toolPrintFormat( "%s: %s\n", operands[ i ], failure ? failure : zu::text( "fits" ) );
        }
    }
    json.close();
    if ( arguments.has( "json" ) ) {
        json.print();
    }
    return status;
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "json", 'j', nullptr, "prints an array of objects with \"file\", \"fits\" and \"failure\"" },
};
const TOOL_COMMAND toolModuleCommand = {
    "module",
    "tells whether module files fit, and why not",
    "check [--json] FILE...",
    R"(Looks at each FILE as the library does when it loads it as a module, and prints
"fits" or the first rule that it fails, with the field of the module's record
that is at fault, such as

    productVersionMajor: not the process's

The rules, in their order: the file is called <product>-<module>.so, .dll on
Windows, and can be loaded; it has an object of the module; the object and its
record are whole; the product that it names, and the fields on that product
which are not left open, are those of this library ("zu info" shows them); name,
description and version are there and in order; so are the lists of modules that
it needs and extends; its name is the one in that of the file.

Loading runs the initialisers of the file.  Modules that it needs are not
looked at: "zu info --load" loads it together with them.
)",
    OPTIONS,
    R"(The exit status is 0 if all files fit, 1 if one does not, 2 if the use is wrong.
)",
    moduleRun,
};
