#include "zu/base/zu_utf.h"
#include "zu/io/zu_arguments.h"

#include <windows.h>

#include <shellapi.h>

// Joins pairs, and keeps what is half of none, since names of files may have it.
static ZU_STRING *argumentsString( const char16_t *units )
{
    ZU_STRING *word = zuStringCreate();
    auto rest = (ZU_INT)wcslen( (const wchar_t *)units );
    ZU_INT fault = 0;
    while ( !zuUtf16TryAppend( &word, units, rest, &fault ) ) {
        zuUtf16Append( &word, units, fault );
        zuStringAppendChar( &word, units[ fault ] );
        units += fault + 1;
        rest -= fault + 1;
    }
    return word;
}
ZU_VECTOR *zuArguments( int, char *const * )
{
    int count = 0;
    wchar_t **wide = CommandLineToArgvW( GetCommandLineW(), &count );
    ZU_ASSERT( wide );
    ZU_VECTOR *words = zuVectorCreate();
    for ( int i = 1; i < count; i++ ) {
        ZU_STRING *word = argumentsString( (const char16_t *)wide[ i ] );
        zuVectorAppendString( &words, word );
        zuStringRelease( word );
    }
    LocalFree( wide );
    return words;
}
