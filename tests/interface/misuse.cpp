// Each of these must not compile; the build says which by MISUSE, and the test what the compiler is to complain of.
#include "zu/zu.hpp"

void misuse( zu::Ref<ZU_STRING> name, int count )
{
#if MISUSE == 20 // by itself, from C++20 on
    zu::Ref<ZU_STRING> text = zu::format( "%s: %i", count, name );
#elif MISUSE == 17
    zu::Ref<ZU_STRING> text = ZU_FORMAT( "%s: %i", name, count, count );
#else
    zu::Ref<ZU_STRING> text = zu::format( "%s: %i", name, count );
#endif
    zuStringAppend( text.inOut(), name.get() );
}
