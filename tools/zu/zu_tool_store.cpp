// zu store: settings in files.
//
// An argument names a place by a path of addresses, each a store's own.  A file is read and written as a whole, so that
// whoever reads it meanwhile finds the old settings or the new ones; the form that it has, text or binary, it keeps.

#include "zu_tool.h"

#include <cstring>
#include <iterator>
#include <optional>

using STORE = zu::Ref<ZU_STORE>;

static constexpr size_t LEVELS_MAX = 100; // of stores within each other, which all functions here descend into

// Where an argument points: at a value, or at a sub-store if the text ended in a full stop.
struct STORE_PATH {
    TEXT text;
    std::vector<TEXT> addresses; // the last one is that of the value or sub-store
    bool isStore;
};

// Reads a path; one that is none is reported.
static std::optional<STORE_PATH> storeReadPath( const TEXT &text )
{
    STORE_PATH path = { text, {}, (bool)zuStringEndsWithChar( text.get(), '.' ) };
    TEXT rest = text;
    if ( path.isStore ) {
        zuStringDelTrailing( rest.inOut(), 1 );
    }
    auto parts = zu::adopt( zuStringSplitChar( rest.get(), '.', -1 ) );
    for ( ZU_STRING *address : zu::items<ZU_STRING>( parts ) ) {
        if ( !zuStoreAddressOk( address ) ) {
            toolMisuse( "not an address: \"%s\" in \"%s\"", address, text );
            return std::nullopt;
        }
        path.addresses.push_back( zu::share( address ) );
    }
    if ( path.addresses.size() > LEVELS_MAX ) {
        toolMisuse( "an address of more than %i parts", LEVELS_MAX );
        return std::nullopt;
    }
    return path;
}

// Returns the store that holds the last address of a path; none if there is none.
static STORE storeFindHolder( STORE store, const STORE_PATH &path )
{
    for ( size_t level = 0; store && level + 1 < path.addresses.size(); level++ ) {
        store = zu::adopt( zuStoreStore( store.get(), path.addresses[ level ].get() ) );
    }
    return store;
}
// Does `change` to that store.  Those on the way to it are read, changed and set back; missing ones are made.
template <typename CHANGE>
static void storeChangeAt( ZU_STORE **store, const STORE_PATH &path, size_t level, const CHANGE &change )
{
    ZU_STRING *address = path.addresses[ level ].get();
    if ( level + 1 == path.addresses.size() ) {
        change( store, address );
        return;
    }
    STORE sub = zu::adopt( zuStoreStore( *store, address ) );
    if ( !sub ) {
        sub = zu::adopt( zuStoreCreate() );
    }
    storeChangeAt( sub.inOut(), path, level + 1, change );
    zuStoreSetStore( store, address, sub.get() );
}

// Adds an entry, ADDRESS=VALUE or ADDRESS. for an empty sub-store.
static bool storeAddEntry( ZU_STORE **store, const TEXT &entry )
{
    ZU_INT equals = zuStringFindChar( entry.get(), 0, '=' );
    TEXT place = equals < 0 ? entry : zu::adopt( zuStringCreateFromLeading( entry.get(), equals ) );
    std::optional<STORE_PATH> path = storeReadPath( place );
    if ( !path ) {
        return false;
    }
    if ( path->isStore == ( equals >= 0 ) ) {
        toolMisuse( "neither ADDRESS=VALUE nor ADDRESS.: \"%s\"", entry );
        return false;
    }
    storeChangeAt( store, *path, 0, [ & ]( ZU_STORE **node, ZU_STRING *address ) {
        if ( !path->isStore ) {
            ZU_INT length = zuStringLength( entry.get() ) - equals - 1;
            zuStoreSetValue( node, address, zu::adopt( zuStringCreateFromTrailing( entry.get(), length ) ).get() );
        } else if ( !zuStoreHasStore( *node, address ) ) {
            zuStoreSetStore( node, address, zu::adopt( zuStoreCreate() ).get() );
        }
    } );
    return true;
}

// Printing
static void storeAddJson( ToolJson *json, std::string_view key, ZU_STORE *store )
{
    json->openObject( key );
    json->openObject( "values" );
    for ( auto [ address, value, sub ] : zu::entries( store ) ) {
        if ( value ) {
            json->add( zu::toUtf8( address ), value );
        }
    }
    json->close();
    json->openObject( "stores" );
    for ( auto [ address, value, sub ] : zu::entries( store ) ) {
        if ( sub ) {
            storeAddJson( json, zu::toUtf8( address ), sub.get() );
        }
    }
    json->close();
    json->close();
}
static void storePrint( ZU_STORE *store, bool asJson )
{
    if ( asJson ) {
        ToolJson json;
        storeAddJson( &json, "", store );
        json.print();
        return;
    }
    auto lines = zu::adopt( zuStoreTextEncodeToStringVector( store ) );
    for ( ZU_STRING *line : zu::items<ZU_STRING>( lines ) ) {
        toolPrintFormat( "%s\n", line );
    }
}

// What an action works on
struct STORE_REQUEST {
    ToolArguments &arguments;
    TEXT file;
    std::vector<TEXT> operands; // behind FILE
    STORE store;
    bool isBinary; // the form of the file
};

// Writes the settings to where they belong, in the form that is asked for.
static int storeWrite( const STORE_REQUEST &request )
{
    static constexpr const char *FORMS[] = { "text", "binary" };
    bool isBinary = request.isBinary;
    if ( TEXT form = request.arguments.value( "to" ) ) {
        int found = toolReadWord( "--to", form.get(), FORMS );
        if ( found < 0 ) {
            return TOOL_MISUSE;
        }
        isBinary = found == 1;
    }
    zu::Ref<ZU_BUFFER> content;
    if ( isBinary ) {
        content = zu::adopt( zuStoreBinaryEncodeToBuffer( request.store.get() ) );
    } else {
        content = zu::adopt( zuStoreTextTryEncodeToBuffer(
            request.store.get(), ZU_CHARSET_UTF_8, ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER, ZU_NLF_FLAG_LF ) );
    }
    if ( !content ) {
        toolError( "a value of %s cannot be written as text", request.file );
        return TOOL_FAILED;
    }
    TEXT output = request.arguments.value( "output" );
    return toolWriteFile( ( output ? output : request.file ).get(), content.get() ) ? TOOL_OK : TOOL_FAILED;
}

// The actions
static int storeRunShow( STORE_REQUEST &request )
{
    storePrint( request.store.get(), request.arguments.has( "json" ) );
    return TOOL_OK;
}
static int storeRunSet( STORE_REQUEST &request )
{
    for ( const TEXT &entry : request.operands ) {
        if ( !storeAddEntry( request.store.inOut(), entry ) ) {
            return TOOL_MISUSE;
        }
    }
    return storeWrite( request );
}
// Returns a value as one of a type, in its own form; none if it is not.
static TEXT storeTypedText( ZU_STORE *store, ZU_STRING *address, int type )
{
    ZU_BOOL b;
    ZU_INT i;
    double r;
    switch ( type ) {
    case 0:
        return zuStoreValueBool( store, &b, address ) ? zu::format( "%b", b ) : TEXT();
    case 1:
        return zuStoreValueInt( store, &i, address ) ? zu::format( "%i", i ) : TEXT();
    default:
        return zuStoreValueReal( store, &r, address ) ? zu::format( "%r", r ) : TEXT();
    }
}
static int storePrintValue( const STORE_REQUEST &request, ZU_STORE *holder, const STORE_PATH &path, ZU_STRING *value )
{
    static constexpr const char *TYPES[] = { "bool", "int", "real" };
    TEXT shown = zu::share( value );
    bool asJson = request.arguments.has( "json" );
    if ( TEXT type = request.arguments.value( "type" ) ) {
        int found = toolReadWord( "--type", type.get(), TYPES );
        if ( found < 0 ) {
            return TOOL_MISUSE;
        }
        shown = storeTypedText( holder, path.addresses.back().get(), found );
        if ( !shown ) {
            toolError( "no %lc at %s: %s", TYPES[ found ], path.text, value );
            return TOOL_FAILED;
        }
        asJson = false; // as it is, it is a value of JSON
    }
    if ( asJson ) {
        ToolJson json;
        json.add( "", shown );
        json.print();
    } else {
        toolPrintFormat( "%s\n", shown );
    }
    return TOOL_OK;
}
static int storeRunGet( STORE_REQUEST &request )
{
    std::optional<STORE_PATH> path = storeReadPath( request.operands[ 0 ] );
    if ( !path ) {
        return TOOL_MISUSE;
    }
    if ( path->isStore && request.arguments.has( "type" ) ) {
        return toolMisuse( "--type does not go with a sub-store: %s", path->text );
    }
    ZU_STRING *address = path->addresses.back().get();
    STORE holder = storeFindHolder( request.store, *path );
    STORE sub = zu::adopt( holder && path->isStore ? zuStoreStore( holder.get(), address ) : nullptr );
    TEXT value = zu::adopt( holder && !path->isStore ? zuStoreValue( holder.get(), address ) : nullptr );
    if ( !sub && !value ) {
        toolError( "no %lc at %s", path->isStore ? "sub-store" : "value", path->text );
        return TOOL_FAILED;
    }
    if ( value ) {
        return storePrintValue( request, holder.get(), *path, value.get() );
    }
    storePrint( sub.get(), request.arguments.has( "json" ) );
    return TOOL_OK;
}
static int storeRunDel( STORE_REQUEST &request )
{
    for ( const TEXT &place : request.operands ) {
        std::optional<STORE_PATH> path = storeReadPath( place );
        if ( !path ) {
            return TOOL_MISUSE;
        }
        if ( storeFindHolder( request.store, *path ) ) {
            storeChangeAt( request.store.inOut(), *path, 0, path->isStore ? zuStoreDelStore : zuStoreDelValue );
        }
    }
    return storeWrite( request );
}
static int storeRunMerge( STORE_REQUEST &request )
{
    for ( const TEXT &file : request.operands ) {
        STORE other = toolReadStore( file.get(), nullptr );
        if ( !other ) {
            return TOOL_FAILED;
        }
        zuStoreMerge( request.store.inOut(), other.get() );
    }
    return storeWrite( request );
}
static int storeRunConvert( STORE_REQUEST &request )
{
    return request.arguments.has( "to" ) ? storeWrite( request ) : toolMisuse( "convert needs %lc", "--to" );
}

struct STORE_ACTION {
    const char *name;
    const char *operand; // what the operands behind FILE are; null: there are none
    size_t operandsMin;
    size_t operandsMax;
    const char *options; // that go with it, each with a blank on either side
    int ( *run )( STORE_REQUEST &request );
};
static constexpr STORE_ACTION ACTIONS[] = {
    { "show", nullptr, 0, 0, " json ", storeRunShow },
    { "get", "ADDRESS", 1, 1, " json type ", storeRunGet },
    { "set", "ENTRY", 1, SIZE_MAX, " to output ", storeRunSet },
    { "del", "ADDRESS", 1, SIZE_MAX, " to output ", storeRunDel },
    { "merge", "OTHER", 1, SIZE_MAX, " to output ", storeRunMerge },
    { "convert", nullptr, 0, 0, " to output ", storeRunConvert },
};

static int storeRun( ToolArguments &arguments )
{
    std::vector<TEXT> &operands = arguments.operands;
    const char *names[ std::size( ACTIONS ) ];
    for ( size_t i = 0; i < std::size( ACTIONS ); i++ ) {
        names[ i ] = ACTIONS[ i ].name;
    }
    if ( operands.empty() ) {
        return toolMisuse( "an action is missing: %lc", "show, get, set, del, merge or convert" );
    }
    int found = toolReadWord( "the action", operands[ 0 ].get(), names );
    if ( found < 0 ) {
        return TOOL_MISUSE;
    }
    const STORE_ACTION &action = ACTIONS[ found ];
    for ( const char *option : { "json", "type", "to", "output" } ) {
        if ( arguments.has( option ) && !strstr( action.options, ( std::string( " " ) + option + " " ).c_str() ) ) {
            return toolMisuse( "--%lc does not go with %lc", option, action.name );
        }
    }
    if ( operands.size() < 2 ) {
        return toolMisuse( "%lc needs a FILE", action.name );
    }
    STORE_REQUEST request = { arguments, operands[ 1 ], { operands.begin() + 2, operands.end() }, nullptr, false };
    if ( request.operands.size() < action.operandsMin ) {
        return toolMisuse( "%lc needs an %lc", action.name, action.operand );
    }
    if ( request.operands.size() > action.operandsMax ) {
        return toolMisuse( "too much for %lc: %s", action.name, request.operands[ action.operandsMax ] );
    }
    bool isNew =
        action.run == storeRunSet && !toolIsStandard( request.file.get() ) && !zuFileExists( request.file.get() );
    request.store = isNew ? zu::adopt( zuStoreCreate() ) : toolReadStore( request.file.get(), &request.isBinary );
    return request.store ? action.run( request ) : TOOL_FAILED;
}

static constexpr TOOL_OPTION OPTIONS[] = {
    { "to", 't', "FORM",
      "writes the settings as \"text\" or in \"binary\"; otherwise they keep the form of FILE, and a "
      "new one is text" },
    { "output", 'o', "OUT", "leaves FILE as it is and writes to the file OUT, to the standard output for \"-\"" },
    { "type", 'T', "TYPE",
      "get: takes the value as a \"bool\", an \"int\" or a \"real\", such as 0x10, and prints it in "
      "its usual form" },
    { "json", 'j', nullptr,
      "show, get: prints a string or, for settings, an object of two: \"values\", and \"stores\" "
      "of the same form" },
};
const TOOL_COMMAND toolStoreCommand = {
    "store",
    "shows, edits, merges and converts settings in files",
    "show [--json] FILE\n"
    "get [--type TYPE] [--json] FILE ADDRESS\n"
    "set [--to FORM] [--output OUT] FILE ENTRY...\n"
    "del [--to FORM] [--output OUT] FILE ADDRESS...\n"
    "merge [--to FORM] [--output OUT] FILE OTHER...\n"
    "convert --to FORM [--output OUT] FILE",
    R"(Reads the settings in FILE, whichever form they have, and

  show       prints them
  get        prints the value at ADDRESS; the sub-store there if ADDRESS ends in
             a full stop
  set        adds entries, or replaces their values; FILE need not exist
  del        removes values and sub-stores; what is not there is no failure
  merge      adds what the files OTHER have and FILE has not; of several that
             have a value, the first counts
  convert    changes nothing but the form

The last four write FILE back, as a whole: whoever reads it meanwhile finds the
old settings or the new ones.  For FILE "-" settings come from the standard
input and go to the standard output.

An ENTRY is ADDRESS=VALUE, or ADDRESS. for an empty sub-store.  An ADDRESS
consists of letters, digits, "-" and "_", and names a place in a sub-store by
full stops: "window.width".  An operand that begins with "-" goes behind "--".

Text is UTF-8, a line for each entry, all values of a store ahead of its
sub-stores, in the order of the addresses; "%%" stands for "%" there, and "%"
with six hexadecimal digits for a control character.  A single value is printed
as it is.  Comments and other lines that are no entries are not written back.
)",
    OPTIONS,
    R"(The exit status is 0 if all went well, 1 if a file cannot be read or written,
there is nothing at ADDRESS, or no value of the TYPE, 2 if the use is wrong.
)",
    storeRun,
};
