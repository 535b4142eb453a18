// The narrow encoding is the code page of the thread, as the functions of the system that take narrow text have it.

#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>
#include <windows.h>

static_assert( sizeof( wchar_t ) == sizeof( char16_t ) );

static constexpr int BUFFER_UNITS = 96; // as many do without the heap

ZU_INT zu___CharsEcsToUnits( ZU_CHAR *dest, ZU_INT destLength, const char *src, ZU_INT srcLength )
{
    int units = MultiByteToWideChar( CP_THREAD_ACP, 0, src, (int)srcLength, nullptr, 0 );
    if ( units <= 0 ) {
        return 0;
    }
    wchar_t buffer[ BUFFER_UNITS ];
    wchar_t *wide = units <= BUFFER_UNITS ? buffer : (wchar_t *)zuMemAllocN( units, sizeof( wchar_t ) );
    units = MultiByteToWideChar( CP_THREAD_ACP, 0, src, (int)srcLength, wide, units );
    ZU_INT length = zuCharsConvertFromWcstr( dest, destLength, (const char16_t *)wide, units );
    if ( wide != buffer ) {
        zuMemFree( wide );
    }
    return length;
}

// Where the code page is UTF-8, the system refuses the flag that keeps it from putting what looks alike in place of a
// character; there is no such character then.
static int ecsNarrow( char *dest, int destLength, const wchar_t *wide, int units )
{
    int length =
        WideCharToMultiByte( CP_THREAD_ACP, WC_NO_BEST_FIT_CHARS, wide, units, dest, destLength, nullptr, nullptr );
    if ( length == 0 && GetLastError() == ERROR_INVALID_FLAGS ) {
        length = WideCharToMultiByte( CP_THREAD_ACP, 0, wide, units, dest, destLength, nullptr, nullptr );
    }
    return length;
}
ZU_INT zu___CharsEcsFromChars( char *dest, ZU_INT destLength, const ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_INT units = zuCharsConvertToWcstr( nullptr, 0, src, srcLength, ZU_FALSE );
    if ( units == 0 || units > INT32_MAX ) {
        return 0;
    }
    wchar_t *wide = (wchar_t *)zuMemAllocN( units, sizeof( wchar_t ) );
    zuCharsConvertToWcstr( (char16_t *)wide, units, src, srcLength, ZU_FALSE );
    int length = ecsNarrow( nullptr, 0, wide, (int)units );
    if ( length > 0 && destLength >= length ) {
        length = ecsNarrow( dest, length, wide, (int)units );
    } else if ( length > 0 && destLength > 0 ) {
        char *narrow = (char *)zuMemAlloc( length );
        length = ecsNarrow( narrow, length, wide, (int)units );
        memcpy( dest, narrow, (size_t)zuIntMin( destLength, length ) );
        zuMemFree( narrow );
    }
    zuMemFree( wide );
    return length;
}
