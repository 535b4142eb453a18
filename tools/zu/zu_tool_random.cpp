// zu random: random numbers and bytes, fit for keys.

#include "zu_tool.h"

#include <algorithm>

static constexpr ZU_INT BLOCK_BYTES = 64 * 1024;

static void printBytes( ZU_INT count, bool hex )
{
    std::vector<uint8_t> block( (size_t)std::min( count, BLOCK_BYTES ) );
    while ( count > 0 && !ferror( stdout ) ) {
        ZU_INT length = std::min( count, BLOCK_BYTES );
        zuRandomBytes( block.data(), length );
        if ( hex ) {
            TEXT digits = zu::adopt( zuStringCreate() );
            for ( ZU_INT i = 0; i < length; i++ ) {
                zu::appendFormat( digits.inOut(), "%02X", block[ (size_t)i ] );
            }
            toolPrint( stdout, digits.get() );
        } else {
            fwrite( block.data(), 1, (size_t)length, stdout );
        }
        count -= length;
    }
}

static int randomRun( ToolArguments &arguments )
{
    std::vector<TEXT> &bounds = arguments.operands;
    bool hex = arguments.has( "hex" );
    bool json = arguments.has( "json" );
    ZU_INT count = 1;
    ZU_INT low = 0;
    ZU_INT high = ZU_INT_MAX;
    TEXT bytes = arguments.value( "bytes" );
    TEXT number = arguments.value( "count" );
    if ( bytes ) {
        if ( number || !bounds.empty() ) {
            return toolMisuse( "%lc goes with --hex and --json alone", "--bytes" );
        }
        if ( !toolReadInt( "--bytes", bytes.get(), 0, ZU_INT_MAX, &count ) ) {
            return TOOL_MISUSE;
        }
        const char *quote = json ? "\"" : "";
        fputs( quote, stdout );
        printBytes( count, hex || json );
        printf( "%s%s", quote, hex || json ? "\n" : "" );
        return TOOL_OK;
    }
    if ( number && !toolReadInt( "--count", number.get(), 0, ZU_INT_MAX, &count ) ) {
        return TOOL_MISUSE;
    }
    if ( !bounds.empty() && bounds.size() != 2 ) {
        return toolMisuse( "takes both bounds or none, not %i operands", bounds.size() );
    }
    if ( !bounds.empty() && ( !toolReadInt( "LOW", bounds[ 0 ].get(), ZU_INT_MIN, ZU_INT_MAX, &low ) ||
                              !toolReadInt( "HIGH", bounds[ 1 ].get(), low, ZU_INT_MAX, &high ) ) ) {
        return TOOL_MISUSE;
    }
    if ( !ZU_INT_SUB_OK( high, low ) ) {
        return toolMisuse( "more than %i numbers", ZU_INT_MAX );
    }
    ToolJson array;
    array.openArray();
    for ( ; count > 0 && !ferror( stdout ); count-- ) {
        ZU_INT drawn = low + zuRandomNonNegativeIntRange( 0, high - low );
        TEXT text = zu::format( zu::runtime( hex ? "%X" : "%i" ), drawn );
        if ( !json ) {
            toolPrintFormat( "%s\n", text );
            continue;
        }
        hex ? array.add( {}, text ) : array.addInt( {}, drawn );
        array.print();
    }
    array.close();
    if ( json ) {
        array.print();
    }
    return TOOL_OK;
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "count", 'n', "N", "prints N numbers, each on a line" },
    { "bytes", 'b', "N", "writes N random bytes instead, as they are" },
    { "hex", 'x', nullptr, "prints numbers and bytes in hexadecimal digits" },
    { "json", 'j', nullptr,
      "prints an array of numbers, with --hex of strings, or the bytes as a string of hexadecimal "
      "digits" },
};
const TOOL_COMMAND toolRandomCommand = {
    "random",
    "makes random numbers and bytes, fit for keys",
    "[--count N] [--hex] [--json] [LOW HIGH]\n--bytes N [--hex] [--json]",
    R"(Prints a random integer from LOW to HIGH, both included, or any that is not
negative.  Numbers come from the system's cryptographic generator.  Bounds that
are negative go behind "--".
)",
    OPTIONS,
    R"(The exit status is 0, 1 if the output cannot be written, or 2 if the use is
wrong.
)",
    randomRun,
};
