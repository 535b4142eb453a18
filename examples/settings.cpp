// Settings with defaults: what a file says goes before, what it does not say comes from the program, and reading a value
// tells whether there was one.
#include "zu/zu.hpp"

#include <iostream>

using namespace zu::literals;

int main()
{
    zu::Runtime runtime( "settings", "Settings with defaults", "1.0" );
    // As a file of settings has it
    zu::Ref<ZU_VECTOR> lines =
        zu::adopt( zuStringSplitChar( "volume=11\nname=Ada\nwindow.width=640"_zs.get(), '\n', -1 ) );
    zu::Ref<ZU_STORE> settings = zu::adopt( zuStoreTextDecodeFromStringVector( lines.get() ) );
    const zu::Ref<ZU_STORE> read = settings;

    zu::Ref<ZU_STORE> defaults = zu::adopt( zuStoreCreate() );
    zuStoreSetValueIntCstr( defaults.inOut(), "volume", -1, 5 );
    zuStoreSetValueBoolCstr( defaults.inOut(), "loop", -1, ZU_TRUE );
    zuStoreMerge( settings.inOut(), defaults.get() );

    ZU_INT volume, speed;
    ZU_BOOL loop;
    zuStoreValueIntCstr( settings.get(), &volume, "volume", -1 );
    zuStoreValueBoolCstr( settings.get(), &loop, "loop", -1 );
    if ( !zuStoreValueIntCstr( settings.get(), &speed, "speed", -1 ) ) {
        speed = 100; // where there is no such number, 0 has been stored
    }
    std::cout << zu::format( "volume %i, loop %b, speed %i\n", volume, loop, speed );

    for ( const zu::StoreEntry &entry : zu::entries( settings ) ) {
        if ( entry.store ) {
            std::cout << entry.address << " has settings of its own: " << zuStoreLength( entry.store.get() ) << '\n';
        } else {
            std::cout << entry.address << " is " << entry.value << '\n';
        }
    }
    std::cout << ( settings == read ? "nothing was added\n" : "the defaults have added something\n" );
}
