// Each of these must not compile; the build says which by MISUSE, and the test what the compiler is to complain of.
#include "zu/zu.hpp"

void misuse( zu::Ref<ZU_STRING> name, int count )
{
#if MISUSE == 20 // by itself, from C++20 on
    zu::Ref<ZU_STRING> text = zu::format( "%s: %i", count, name );
#elif MISUSE == 17
    zu::Ref<ZU_STRING> text = ZU_FORMAT( "%s: %i", name, count, count );
#elif MISUSE == 1 // any object is no string
    zu::Ref<ZU_STRING> text = zu::Ref<ZU_OBJ>( name );
#elif MISUSE == 2 // zu::adopt or zu::share says whose the reference is
    zu::Ref<ZU_STRING> text = name.get();
#elif MISUSE == 3 // who is inside leaves once
    zu::Ref<ZU_STRING> text = name;
    zu::MonitorGuard inside( zuMonitorCreate() );
    zu::MonitorGuard again = inside;
#elif MISUSE == 4 // a thread must not end by what its lambda has captured
    struct Throwing {
        Throwing() = default;
        Throwing( const Throwing & ) noexcept( false )
        {
        }
    } captured;
    zu::Ref<ZU_STRING> text = name;
    zu::Ref<ZU_THREAD> thread = zu::spawn( "worker", [ captured ] { (void)captured; } );
#else
    zu::Ref<ZU_STRING> text = zu::format( "%s: %i", name, count );
#endif
    zuStringAppend( text.inOut(), name.get() );
}
