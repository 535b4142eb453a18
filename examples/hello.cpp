// The same library from C++: references that release themselves, formats that the compiler checks.
#include "zu/zu.hpp"

#include <iostream>

int main()
{
    zu::Runtime runtime( "hello", "Greetings", "1.0" );
    const char *const greetings[] = { "Hello", "Grüß Gott", "Γειά", "Привет", "مرحبا", "नमस्ते", "你好", "👋" };
    int number = 0;
    for ( const char *greeting : greetings ) {
        zu::Ref<ZU_STRING> text = zu::text( greeting );
        zu::Ref<ZU_STRING> line = zu::format( "%2i  %s", ++number, text );
        // One code point is one element, whatever it takes in UTF-8.
        zu::appendFormat( line.inOut(), " (%i code points)", zuStringLength( text.get() ) );
        std::cout << line << '\n';
    }
}
