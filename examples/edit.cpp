// A configuration editor: reads settings, changes them by commands such as "set window.width 640", lays defaults under
// them, and writes them so that nothing gets lost.
//
//     example_edit                    a run on a file of its own, which it prints
//     example_edit FILE [COMMAND...]  applies commands to FILE
//
// A store knows no paths: a way to a value is walked from sub-store to sub-store, and what was changed is set back on the
// way up.
#include "zu/zu.hpp"

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

using namespace zu::literals;

namespace {

using Store = zu::Ref<ZU_STORE>;
using Text = zu::Ref<ZU_STRING>;

// Divides "window.width" into addresses; empty if one of them can be none, since a store aborts over it.
std::vector<Text> addressesOf( const std::string &way )
{
    std::vector<Text> addresses;
    zu::Ref<ZU_VECTOR> parts = zu::adopt( zuStringSplitChar( zu::text( way ).get(), '.', -1 ) );
    for ( ZU_STRING *part : zu::items<ZU_STRING>( parts ) ) {
        if ( !zuStoreAddressOk( part ) ) {
            return {};
        }
        addresses.push_back( zu::share( part ) );
    }
    return addresses;
}
// Sets the value at the way from `depth` on, or deletes it where `value` is empty.
void change( Store &store, const std::vector<Text> &way, std::size_t depth, const Text &value )
{
    ZU_STRING *address = way[ depth ].get();
    if ( depth + 1 < way.size() ) {
        Store inner = zu::adopt( zuStoreStore( store.get(), address ) );
        if ( !inner ) {
            inner = zu::adopt( zuStoreCreate() );
        }
        change( inner, way, depth + 1, value );
        zuStoreSetStore( store.inOut(), address, inner.get() );
    } else if ( value ) {
        zuStoreSetValue( store.inOut(), address, value.get() );
    } else {
        zuStoreDelValue( store.inOut(), address );
    }
}
// Applies one command; false if it makes no sense.
bool apply( Store &store, const std::string &command )
{
    zu::Ref<ZU_VECTOR> words = zu::adopt( zuStringSplitWhitespace( zu::text( command ).get(), 3 ) );
    std::vector<std::string> parts;
    for ( ZU_STRING *word : zu::items<ZU_STRING>( words ) ) {
        parts.push_back( zu::toUtf8( word ) );
    }
    if ( parts.size() < 2 ) {
        return false;
    }
    std::vector<Text> way = addressesOf( parts[ 1 ] );
    if ( way.empty() ) {
        return false;
    }
    if ( parts[ 0 ] == "set" && parts.size() == 3 ) {
        change( store, way, 0, zu::text( parts[ 2 ] ) );
    } else if ( parts[ 0 ] == "delete" && parts.size() == 2 ) {
        change( store, way, 0, nullptr );
    } else {
        return false;
    }
    return true;
}

// What a fresh installation has; settings go before.
Store defaults()
{
    Store store = zu::adopt( zuStoreCreate() );
    for ( const char *command : { "set language en", "set window.width 800", "set window.height 600" } ) {
        apply( store, command );
    }
    return store;
}

Store read( const Text &file )
{
    zu::Ref<ZU_LINE_SOURCE> source = zu::adopt(
        zuFileOpenExactLineSource( file.get(), ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF | ZU_NLF_FLAG_CRLF, nullptr ) );
    Store store = source ? zu::adopt( zuStoreTextTryDecodeFromLineSource( source.get() ) ) : nullptr;
    return store ? store : zu::adopt( zuStoreCreate() );
}
bool write( const Text &file, const Store &store )
{
    zu::Ref<ZU_BUFFER> bytes =
        zu::adopt( zuStoreTextTryEncodeToBuffer( store.get(), ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF ) );
    return bytes && zuFileReplaceBuffer( file.get(), bytes.get() );
}

} // namespace

int main( int argc, char **argv )
{
    zu::Runtime runtime( "edit", "Configuration editor", "1.0" );
    std::vector<std::string> commands( argv + ( argc > 2 ? 2 : argc ), argv + argc );
    Text directory = zu::format( "%s/zu-edit-%o", zu::text( std::filesystem::temp_directory_path().u16string() ),
                                 zu::adopt( zuIdentifierCreate() ) );
    Text file;
    if ( argc > 1 ) {
        file = zu::text( argv[ 1 ] );
    } else if ( zuFileCreateDirectory( directory.get() ) ) {
        file = zu::format( "%s/settings", directory );
        commands = { "set window.width 640", "set title Grüße %", "set a/b 1", "delete language",
                     "set tls.cert.file ca" };
    }

    Store store = read( file );
    for ( const std::string &command : commands ) {
        if ( !apply( store, command ) ) {
            std::cout << "what is: " << command << '\n';
        }
    }
    if ( !write( file, store ) ) {
        std::cout << "cannot write " << file << '\n';
        return 1;
    }
    Store settings = read( file ); // as the next start will find them
    std::cout << ( settings == store ? "written and read back\n" : "the file has other settings\n" );
    zuStoreMerge( settings.inOut(), defaults().get() );
    zu::Ref<ZU_VECTOR> lines = zu::adopt( zuStoreTextEncodeToStringVector( settings.get() ) );
    for ( ZU_STRING *line : zu::items<ZU_STRING>( lines ) ) {
        std::cout << zu::toUtf8( line ) << '\n';
    }
    if ( argc == 1 ) {
        zuFileDeleteDirectoryRecursive( directory.get() );
    }
}
