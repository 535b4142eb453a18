#include "zu_test_module.h"

static ZU_BOOL testLoad( void )
{
    TEST_PRINT( "load" );
#ifdef TEST_UNWILLING
    return ZU_FALSE;
#else
    return ZU_TRUE;
#endif
}
static void testPrepareUnload( void )
{
    TEST_PRINT( "prepare" );
}
static void testBeginUnload( void )
{
    TEST_PRINT( "begin" );
}
static void testEndUnload( void )
{
    TEST_PRINT( "end" );
}

#ifdef TEST_RENAMED
__attribute__( ( constructor ) ) static void testRename( void )
{
    TEST_OBJECT.moduleRecord->name = "unit";
}
#endif

#ifdef TEST_NO_MODULE
ZU_API_DATA ZU_SORT sort___module;
ZU_SORT sort___module = ZU___SORT_INITIALIZER( "TEST_NO_MODULE", NULL, NULL, NULL, NULL );
void *const testUnused[] = { (void *)testLoad, (void *)testPrepareUnload, (void *)testBeginUnload,
                             (void *)testEndUnload };
#else
ZU___MODULE_DEFINE( TEST_DEFINED_AS, TEST_PRODUCT, "Written in C", "1.2", TEST_DEPS, TEST_EXTS, "any product", testLoad,
                    testPrepareUnload, testBeginUnload, testEndUnload, NULL )
#endif
