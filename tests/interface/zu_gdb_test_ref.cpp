// What gdb_test.py looks at in C++: references, in variables of their own, and a lambda.

#include "zu/zu.hpp"

static zu::Ref<ZU_STRING> named;
static zu::Ref<ZU_OBJ> empty;
static zu::Ref<ZU_BYTE_SINK> sink;

extern "C" void makeReferences( ZU_STRING *text );
void makeReferences( ZU_STRING *text )
{
    named = zu::share( text );
    empty = nullptr;
    sink = zu::byteSink( []( const uint8_t *, ZU_INT ) { return true; } );
}
