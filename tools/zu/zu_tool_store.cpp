// zu store: settings that are given on the command line.
//
// An argument names a place by a path of addresses, each a store's own; the store is built from the entries in their
// order, and what an action leaves of it is printed.

#include "zu_tool.h"

#include <optional>

using STORE = zu::Ref<ZU_STORE>;
using STRING = zu::Ref<ZU_STRING>;

static constexpr size_t LEVELS_MAX = 100; // of stores within each other, which all functions here descend into

// Where an argument points: at a value, or at a sub-store if the text ended in a full stop.
struct STORE_PATH {
    std::string text;
    std::vector<STRING> addresses; // the last one is that of the value or sub-store
    bool isStore;
};

static STRING storeText( const std::string &text )
{
    return zu::text( text );
}
// Reads a path; one that is none is reported.
static std::optional<STORE_PATH> storeReadPath( std::string text, int *status )
{
    STORE_PATH path = { text, {}, false };
    if ( !text.empty() && text.back() == '.' ) {
        path.isStore = true;
        text.pop_back();
    }
    for ( size_t begin = 0; begin <= text.size(); ) {
        size_t end = std::min( text.find( '.', begin ), text.size() );
        path.addresses.push_back( storeText( text.substr( begin, end - begin ) ) );
        if ( !zuStoreAddressOk( path.addresses.back().get() ) ) {
            *status = toolMisuse( "not an address: \"%s\" in \"%lc\"", path.addresses.back(), path.text.c_str() );
            return std::nullopt;
        }
        begin = end + 1;
    }
    if ( path.addresses.size() > LEVELS_MAX ) {
        *status = toolMisuse( "an address of more than %i parts", LEVELS_MAX );
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
static bool storeAddEntry( ZU_STORE **store, const std::string &entry, int *status )
{
    size_t equals = entry.find( '=' );
    std::optional<STORE_PATH> path = storeReadPath( entry.substr( 0, equals ), status );
    if ( !path ) {
        return false;
    }
    if ( path->isStore == ( equals != std::string::npos ) ) {
        *status = toolMisuse( "neither ADDRESS=VALUE nor ADDRESS.: \"%lc\"", entry.c_str() );
        return false;
    }
    storeChangeAt( store, *path, 0, [ & ]( ZU_STORE **node, ZU_STRING *address ) {
        if ( !path->isStore ) {
            zuStoreSetValue( node, address, storeText( entry.substr( equals + 1 ) ).get() );
        } else if ( !zuStoreHasStore( *node, address ) ) {
            zuStoreSetStore( node, address, zu::adopt( zuStoreCreate() ).get() );
        }
    } );
    return true;
}

// For a reader: a line for each value and each empty sub-store, in the form of an entry
static STRING storeEscaped( ZU_STRING *value )
{
    STRING escaped = zu::adopt( zuStringCreate() );
    for ( ZU_INT i = 0; i < zuStringLength( value ); i++ ) {
        ZU_CHAR ch = zuStringCharAt( value, i );
        if ( zuUnicodeIsOtherControl( ch ) ) {
            zu::appendFormat( escaped.inOut(), "%%%06X", ch );
        } else if ( ch == '%' ) {
            zu::appendFormat( escaped.inOut(), "%%%%%#%" );
        } else {
            zuStringAppendChar( escaped.inOut(), ch );
        }
    }
    return escaped;
}
static void storeAppendLines( ZU_STRING **lines, ZU_STORE *store, ZU_STRING *prefix )
{
    for ( ZU_INT i = 0; i < zuStoreLength( store ); i++ ) {
        if ( STRING value = zu::adopt( zuStoreValueAt( store, i ) ) ) {
            STRING address = zu::adopt( zuStoreAddressAt( store, i ) );
            zu::appendFormat( lines, "%s%s=%s\n", prefix, address, storeEscaped( value.get() ) );
        }
    }
    for ( ZU_INT i = 0; i < zuStoreLength( store ); i++ ) {
        if ( STORE sub = zu::adopt( zuStoreStoreAt( store, i ) ) ) {
            STRING path = zu::format( "%s%s.", prefix, zu::adopt( zuStoreAddressAt( store, i ) ) );
            if ( zuStoreLength( sub.get() ) == 0 ) {
                zu::appendFormat( lines, "%s\n", path );
            }
            storeAppendLines( lines, sub.get(), path.get() );
        }
    }
}

// For a program
static void storeAppendJson( ZU_STRING **json, ZU_STORE *store )
{
    zu::appendFormat( json, "{ \"values\": {%#%" );
    const char *separator = " ";
    for ( ZU_INT i = 0; i < zuStoreLength( store ); i++ ) {
        if ( STRING value = zu::adopt( zuStoreValueAt( store, i ) ) ) {
            STRING address = zu::adopt( zuStoreAddressAt( store, i ) );
            zu::appendFormat( json, "%lc\"%s\": %s", separator, address, toolJsonString( value.get() ) );
            separator = ", ";
        }
    }
    zu::appendFormat( json, " }, \"stores\": {%#%" );
    separator = " ";
    for ( ZU_INT i = 0; i < zuStoreLength( store ); i++ ) {
        if ( STORE sub = zu::adopt( zuStoreStoreAt( store, i ) ) ) {
            zu::appendFormat( json, "%lc\"%s\": ", separator, zu::adopt( zuStoreAddressAt( store, i ) ) );
            storeAppendJson( json, sub.get() );
            separator = ", ";
        }
    }
    zu::appendFormat( json, " } }%#%" );
}
static void storePrint( ZU_STORE *store, bool json )
{
    STRING text = zu::adopt( zuStringCreate() );
    if ( json ) {
        storeAppendJson( text.inOut(), store );
        zuStringAppendChar( text.inOut(), '\n' );
    } else {
        storeAppendLines( text.inOut(), store, zu::adopt( zuStringCreate() ).get() );
    }
    toolPrint( stdout, text.get() );
}

// The actions
struct STORE_REQUEST {
    std::optional<STORE_PATH> path; // of the actions that take one
    std::vector<STORE> stores;      // at least one
    bool json;
    const char *type; // null: any text
};

static int storeRunSet( const STORE_REQUEST &request )
{
    storePrint( request.stores[ 0 ].get(), request.json );
    return TOOL_OK;
}
// Returns a value as one of a type, in its own form; none if it is not.
static STRING storeTypedText( ZU_STORE *store, ZU_STRING *address, const std::string &type )
{
    ZU_BOOL b;
    ZU_INT i;
    double r;
    if ( type == "bool" ) {
        return zuStoreValueBool( store, &b, address ) ? zu::format( "%b", b ) : STRING();
    }
    if ( type == "int" ) {
        return zuStoreValueInt( store, &i, address ) ? zu::format( "%i", i ) : STRING();
    }
    return zuStoreValueReal( store, &r, address ) ? zu::format( "%r", r ) : STRING();
}
static int storeRunGet( const STORE_REQUEST &request )
{
    const STORE_PATH &path = *request.path;
    ZU_STRING *address = path.addresses.back().get();
    STORE holder = storeFindHolder( request.stores[ 0 ], path );
    if ( path.isStore ) {
        STORE sub = zu::adopt( holder ? zuStoreStore( holder.get(), address ) : nullptr );
        if ( !sub ) {
            toolError( "no sub-store at %lc", path.text.c_str() );
            return TOOL_FAILED;
        }
        storePrint( sub.get(), request.json );
        return TOOL_OK;
    }
    STRING value = zu::adopt( holder ? zuStoreValue( holder.get(), address ) : nullptr );
    if ( !value ) {
        toolError( "no value at %lc", path.text.c_str() );
        return TOOL_FAILED;
    }
    STRING shown = request.type   ? storeTypedText( holder.get(), address, request.type )
                   : request.json ? toolJsonString( value.get() )
                                  : value;
    if ( !shown ) {
        toolError( "no %lc at %lc: %s", request.type, path.text.c_str(), value );
        return TOOL_FAILED;
    }
    toolPrint( stdout, zu::format( "%s\n", shown ).get() );
    return TOOL_OK;
}
static int storeRunDel( const STORE_REQUEST &request )
{
    STORE store = request.stores[ 0 ];
    if ( storeFindHolder( store, *request.path ) ) {
        storeChangeAt( store.inOut(), *request.path, 0, request.path->isStore ? zuStoreDelStore : zuStoreDelValue );
    }
    storePrint( store.get(), request.json );
    return TOOL_OK;
}
static int storeRunMerge( const STORE_REQUEST &request )
{
    STORE store = request.stores[ 0 ];
    for ( size_t i = 1; i < request.stores.size(); i++ ) {
        zuStoreMerge( store.inOut(), request.stores[ i ].get() );
    }
    storePrint( store.get(), request.json );
    return TOOL_OK;
}

struct STORE_ACTION {
    const char *name;
    bool takesPath;
    bool takesStores; // several, and not one
    bool takesType;
    int ( *run )( const STORE_REQUEST &request );
};
static constexpr STORE_ACTION ACTIONS[] = {
    { "set", false, false, false, storeRunSet },
    { "get", true, false, true, storeRunGet },
    { "del", true, false, false, storeRunDel },
    { "merge", false, true, false, storeRunMerge },
};
static const STORE_ACTION *storeFindAction( const std::string &name )
{
    for ( const STORE_ACTION &action : ACTIONS ) {
        if ( name == action.name ) {
            return &action;
        }
    }
    return nullptr;
}
static bool storeTypeOk( const std::string &type )
{
    return type == "bool" || type == "int" || type == "real";
}

static int storeRun( int argc, char **argv )
{
    STORE_REQUEST request = { std::nullopt, { zu::adopt( zuStoreCreate() ) }, false, nullptr };
    std::vector<const char *> operands;
    int status = TOOL_OK;
    if ( !toolReadArguments( argc, argv, { { "--json", &request.json, nullptr }, { "--type", nullptr, &request.type } },
                             &operands, &status ) ) {
        return status;
    }
    if ( operands.empty() ) {
        return toolMisuse( "an action is missing: %lc", "set, get, del or merge" );
    }
    const STORE_ACTION *action = storeFindAction( operands[ 0 ] );
    if ( !action ) {
        return toolMisuse( "unknown action: %lc", operands[ 0 ] );
    }
    if ( request.type && !action->takesType ) {
        return toolMisuse( "--type does not go with %lc", action->name );
    }
    if ( request.type && !storeTypeOk( request.type ) ) {
        return toolMisuse( "unknown type: %lc", request.type );
    }
    size_t next = 1;
    if ( action->takesPath ) {
        if ( next == operands.size() ) {
            return toolMisuse( "%lc needs an address", action->name );
        }
        request.path = storeReadPath( operands[ next++ ], &status );
        if ( !request.path ) {
            return status;
        }
        if ( request.type && request.path->isStore ) {
            return toolMisuse( "--type does not go with a sub-store: %lc", operands[ next - 1 ] );
        }
    }
    for ( ; next < operands.size(); next++ ) {
        if ( action->takesStores && operands[ next ] == std::string( "+" ) ) {
            request.stores.push_back( zu::adopt( zuStoreCreate() ) );
        } else if ( !storeAddEntry( request.stores.back().inOut(), operands[ next ], &status ) ) {
            return status;
        }
    }
    return action->run( request );
}

const TOOL_COMMAND toolStoreCommand = {
    "store",
    "shows, edits and merges settings",
    R"(usage: zu store set ENTRY...
       zu store get [--type TYPE] ADDRESS ENTRY...
       zu store del ADDRESS ENTRY...
       zu store merge ENTRY... [+ ENTRY...]...

Makes a store of the entries, later ones over earlier ones, and prints

  set                all of it
  get                the value at ADDRESS; the sub-store there if ADDRESS ends in a full stop
  del                all but that value or sub-store
  merge              the stores on either side of each "+" in one; where several have a value, the first has it

An ENTRY is ADDRESS=VALUE, or ADDRESS. for an empty sub-store.  An ADDRESS consists of letters, digits, "-" and "_", and
names a place in a sub-store by full stops: "window.width".  An operand that begins with "-" goes behind "--".

Stores are printed as entries, all values of a store ahead of its sub-stores, in the order of the addresses; "%%" stands
for "%" there, and "%" with six hexadecimal digits for a control character.  A single value is printed as it is.

Options:
  --type TYPE        takes the value as a bool, an int or a real, such as "0x10", and prints it in its usual form
  --json             prints a string or, for a store, an object of two: "values", and "stores" of the same form
  --help             prints this

The exit status is 0 if all went well, 1 if there is nothing at ADDRESS or no value of the TYPE, 2 if the use is wrong.
)",
    storeRun,
};
