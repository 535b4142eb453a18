#include "zu_print_test.h"

#include <windows.h>

std::vector<std::string> logged;

// Where there is no debugger, the system asks the process itself, by an exception: Wine by the one for narrow text.
static LONG CALLBACK listen( EXCEPTION_POINTERS *exception )
{
    const EXCEPTION_RECORD *record = exception->ExceptionRecord;
    size_t length = record->ExceptionInformation[ 0 ] - 1;
    if ( record->ExceptionCode == DBG_PRINTEXCEPTION_WIDE_C ) {
        const wchar_t *text = (const wchar_t *)record->ExceptionInformation[ 1 ];
        logged.emplace_back( text, text + length );
    } else if ( record->ExceptionCode == DBG_PRINTEXCEPTION_C ) {
        logged.emplace_back( (const char *)record->ExceptionInformation[ 1 ], length );
    } else {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    return EXCEPTION_CONTINUE_EXECUTION;
}
static void *const listening = AddVectoredExceptionHandler( 1, listen );
