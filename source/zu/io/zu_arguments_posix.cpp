#include "zu/io/zu_arguments.h"
#include "zu/io/zu_file_posix_internal.h"

ZU_VECTOR *zuArguments( int argc, char *const *argv )
{
    ZU_ASSERT( argc <= 0 || argv );
    ZU_VECTOR *words = zuVectorCreate();
    for ( int i = 1; i < argc; i++ ) {
        ZU_STRING *word = zuStringCreate();
        zu___FilePosixAppend( &word, argv[ i ], -1 );
        zuVectorAppendString( &words, word );
        zuStringRelease( word );
    }
    return words;
}
