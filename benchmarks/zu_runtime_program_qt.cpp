// The least that a program does with the peer; zu_runtime_benchmark.cpp runs it.

#include <QCoreApplication>

int main( int argc, char **argv )
{
    QCoreApplication application( argc, argv );
    QCoreApplication::setApplicationName( "Benchmark" );
    QCoreApplication::setApplicationVersion( "1.0" );
    return 0;
}
