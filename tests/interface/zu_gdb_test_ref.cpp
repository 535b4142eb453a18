// What gdb_test.py looks at in C++: references, in variables of their own.

#include "zu/zu.hpp"

static zu::Ref<ZU_STRING> named;
static zu::Ref<ZU_OBJ> empty;

extern "C" void makeReferences( ZU_STRING *text );
void makeReferences( ZU_STRING *text )
{
    named = zu::share( text );
    empty = nullptr;
}
