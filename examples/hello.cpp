// The same library from C++: references that release themselves, formats that widen their arguments.
#include "zu/zu.hpp"

#include <cstdio>
#include <memory>

struct MEM_FREE {
    void operator()( char *block ) const
    {
        zuMemFree( block );
    }
};

static void print( const zu::Ref<ZU_STRING> &line )
{
    std::unique_ptr<char, MEM_FREE> utf8( zuStringConvertToUtf8( line.get(), ZU_TRUE, nullptr ) );
    std::puts( utf8.get() );
}

static void run()
{
    const char *const greetings[] = { "Hello", "Grüß Gott", "Γειά", "Привет", "مرحبا", "नमस्ते", "你好", "👋" };
    int number = 0;
    for ( const char *greeting : greetings ) {
        zu::Ref<ZU_STRING> text = zu::adopt( zuStringCreateFromUtf8( greeting, -1 ) );
        zu::Ref<ZU_STRING> line = zu::format( "%2i  %s", ++number, text );
        // One code point is one element, whatever it takes in UTF-8.
        zu::appendFormat( line.inOut(), " (%i code points)", zuStringLength( text.get() ) );
        print( line );
    }
}

int main()
{
    zuRuntimeStartup( 0, -1, nullptr, "hello", "Greetings", "1.0" );
    run(); // its references are gone before the library stops
    return static_cast<int>( zuRuntimeShutdown() );
}
