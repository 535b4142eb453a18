#include "zu_test_module.h"

#include <stdlib.h>

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

#ifdef TEST_CHANGING
static void testForgetProduct( ZU___MODULE_RECORD *record )
{
    record->productName = NULL;
    record->productVersionMajor = record->productVersionMinor = record->productVersionRelease = -1;
}
static void testChange( int number )
{
    ZU_MODULE *own = &TEST_OBJECT;
    ZU___MODULE_RECORD *record = own->moduleRecord;
    ZU___MODULE_RECORD process = *zuModule()->moduleRecord;
    process.name = record->name;
    process.description = record->description;
    process.version = record->version;
    *record = process;
#define TEST_MISFIT( change, text ) \
    if ( number-- == 0 ) {          \
        change;                     \
    }
#include "zu_test_module_misfits.h"
}
__attribute__( ( constructor ) ) static void testChangeByEnvironment( void )
{
    const char *number = getenv( TEST_MISFIT_VARIABLE );
    testChange( number ? atoi( number ) : -1 );
}
#endif

#ifdef TEST_NULL_MODULE
__asm__( ".globl null___module\n.set null___module, 0" );
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
