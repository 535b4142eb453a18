#include "zu_test_module.h"

#define ZU_HPP_MODULE &TEST_OBJECT
#include "zu/zu.hpp"

#include <thread>

// A sort of the module's own.  The personality stores one of its objects, or prints where it is called if there is no
// place to store it.
#ifdef TEST_SORT
static void pinFree( ZU_OBJ * )
{
    TEST_PRINT( "free" );
}
static ZU_SORT pinSort = ZU___SORT_INITIALIZER( "TEST_PIN", &TEST_OBJECT, pinFree, nullptr, nullptr );
static void *testPersonality( void *argument1, void *argument2 )
{
    if ( argument1 ) {
        *(ZU_OBJ **)argument1 = zu___ObjCreate( sizeof( ZU_OBJ ), &pinSort );
    } else {
        zuPrintStackTrace();
    }
    return argument2;
}
#else
static void *( *const testPersonality )( void *, void * ) = nullptr;
#endif

#ifdef TEST_TRACING
__attribute__( ( constructor ) ) static void testTrace()
{
    std::thread( [] { zuStackTraceRelease( zuStackTraceCreate( 0, -1 ) ); } ).join();
}
#endif

// What the module's code sees of its own record, under the names that the library has too.
static ZU_BOOL testLoad()
{
    ZU_MODULE *own = &TEST_OBJECT;
    zu::Ref<ZU_TIMER> timer = zu::timer( [] {} );
    ZU_ASSERT( own->sorts == 1 ); // the lambda's, although other modules have the same
    zuPrintFormatCstr( "%lc load\n", -1, own->moduleRecord->name );
    return ZU_TRUE;
}

ZU___MODULE_DEFINE( TEST_DEFINED_AS, TEST_PRODUCT, "Written in C++", "3#1.2", TEST_DEPS, TEST_EXTS, "any product",
                    testLoad, nullptr, nullptr, nullptr, testPersonality )
