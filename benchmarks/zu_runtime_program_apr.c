// The least that a program does with APR; zu_runtime_benchmark.cpp runs it.

#include <apr_general.h>
#include <apr_pools.h>

int main( void )
{
    apr_pool_t *pool;
    if ( apr_initialize() != APR_SUCCESS || apr_pool_create( &pool, NULL ) != APR_SUCCESS ) {
        return 1;
    }
    apr_pool_destroy( pool );
    apr_terminate();
    return 0;
}
