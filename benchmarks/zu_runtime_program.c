// The least that a program does with the library; zu_runtime_benchmark.cpp runs it.

#include "zu/zu.h"

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "benchmark", "Benchmark", "1.0" );
    return (int)zuRuntimeShutdown();
}
