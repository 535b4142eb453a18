// zu id: new identities.

#include "zu_tool.h"

static int idRun( ToolArguments &arguments )
{
    ZU_INT count = 1;
    TEXT number = arguments.value( "count" );
    if ( number && !toolReadInt( "--count", number.get(), 0, ZU_INT_MAX, &count ) ) {
        return TOOL_MISUSE;
    }
    if ( !arguments.operands.empty() ) {
        return toolMisuse( "takes no operand: %s", arguments.operands[ 0 ] );
    }
    ToolJson json;
    json.openArray();
    for ( ; count > 0 && !ferror( stdout ); count-- ) {
        TEXT id = zu::adopt( zuIdentifierToString( zu::adopt( zuIdentifierCreate() ).get() ) );
        if ( arguments.has( "json" ) ) {
            json.add( {}, id );
            json.print();
        } else {
            toolPrintFormat( "%s\n", id );
        }
    }
    json.close();
    if ( arguments.has( "json" ) ) {
        json.print();
    }
    return TOOL_OK;
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "count", 'n', "N", "prints N of them, each on a line" },
    { "json", 'j', nullptr, "prints an array of strings" },
};
const TOOL_COMMAND toolIdCommand = {
    "id",
    "makes identifiers that nothing else has",
    "[--count N] [--json]",
    R"(Prints a new identifier: 128 random bits, in 32 digits of 0 to 9 and A to F.
)",
    OPTIONS,
    R"(The exit status is 0, 1 if the output cannot be written, or 2 if the use is
wrong.
)",
    idRun,
};
