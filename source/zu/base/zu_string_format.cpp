// The forms with a cursor do the work, and those with further arguments open one for them.  A format in another
// encoding lives no longer than the call and is short as a rule, so that it is converted on the stack rather than to a
// string.

#include "zu/base/zu_string_format.h"

#include "zu/base/zu_format_arg_list.h"
#include "zu/base/zu_format_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_mem.h"

static constexpr ZU_INT STACK_CHARS = 128; // 512 bytes; longer formats go through the heap

template <typename UNIT>
static ZU_STRING *stringCreateFromEncodedFormat( const UNIT *fmt, ZU_INT fmtLength, va_list args,
                                                 ZU_INT ( *convert )( ZU_CHAR *, ZU_INT, const UNIT *, ZU_INT ) )
{
    ZU_CHAR stackChars[ STACK_CHARS ];
    ZU_CHAR *chars = stackChars;
    ZU_INT length = convert( stackChars, STACK_CHARS, fmt, fmtLength );
    if ( length > STACK_CHARS ) {
        chars = (ZU_CHAR *)zuMemAllocN( length, sizeof( ZU_CHAR ) );
        convert( chars, length, fmt, fmtLength );
    }
    va_list cursor;
    va_copy( cursor, args );
    ZU_STRING *text = zu___FormatCharsArgList( chars, length, &cursor );
    va_end( cursor );
    if ( chars != stackChars ) {
        zuMemFree( chars );
    }
    return text;
}

// Creation
ZU_STRING *zuStringCreateFromFormat( ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    ZU_STRING *text = zuStringCreateFromFormatArgList( fmt, args );
    va_end( args );
    return text;
}
ZU_STRING *zuStringCreateFromFormatArgList( ZU_STRING *fmt, va_list args )
{
    va_list cursor;
    va_copy( cursor, args );
    ZU_STRING *text = zu___FormatArgList( fmt, &cursor );
    va_end( cursor );
    return text;
}
ZU_STRING *zuStringCreateFromFormatCstr( const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    ZU_STRING *text = zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args );
    va_end( args );
    return text;
}
ZU_STRING *zuStringCreateFromFormatCstrArgList( const char *fmt, ZU_INT fmtLength, va_list args )
{
    return stringCreateFromEncodedFormat( fmt, fmtLength, args, zuCharsConvertFromCstr );
}
ZU_STRING *zuStringCreateFromFormatWcstr( const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    ZU_STRING *text = zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args );
    va_end( args );
    return text;
}
ZU_STRING *zuStringCreateFromFormatWcstrArgList( const char16_t *fmt, ZU_INT fmtLength, va_list args )
{
    return stringCreateFromEncodedFormat( fmt, fmtLength, args, zuCharsConvertFromWcstr );
}

// Insertion
void zuStringInsertFormat( ZU_STRING **dest, ZU_INT idx, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zuStringInsertFormatArgList( dest, idx, fmt, args );
    va_end( args );
}
void zuStringInsertFormatArgList( ZU_STRING **dest, ZU_INT idx, ZU_STRING *fmt, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatArgList( fmt, args ) );
    zuStringInsert( dest, idx, text );
}
void zuStringInsertFormatCstr( ZU_STRING **dest, ZU_INT idx, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zuStringInsertFormatCstrArgList( dest, idx, fmt, fmtLength, args );
    va_end( args );
}
void zuStringInsertFormatCstrArgList( ZU_STRING **dest, ZU_INT idx, const char *fmt, ZU_INT fmtLength, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStringInsert( dest, idx, text );
}
void zuStringInsertFormatWcstr( ZU_STRING **dest, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zuStringInsertFormatWcstrArgList( dest, idx, fmt, fmtLength, args );
    va_end( args );
}
void zuStringInsertFormatWcstrArgList( ZU_STRING **dest, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength,
                                       va_list args )
{
    zu___Owned text( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStringInsert( dest, idx, text );
}

// Appending
void zuStringAppendFormat( ZU_STRING **dest, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zuStringAppendFormatArgList( dest, fmt, args );
    va_end( args );
}
void zuStringAppendFormatArgList( ZU_STRING **dest, ZU_STRING *fmt, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatArgList( fmt, args ) );
    zuStringAppend( dest, text );
}
void zuStringAppendFormatCstr( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zuStringAppendFormatCstrArgList( dest, fmt, fmtLength, args );
    va_end( args );
}
void zuStringAppendFormatCstrArgList( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStringAppend( dest, text );
}
void zuStringAppendFormatWcstr( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zuStringAppendFormatWcstrArgList( dest, fmt, fmtLength, args );
    va_end( args );
}
void zuStringAppendFormatWcstrArgList( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStringAppend( dest, text );
}

// Prepending
void zuStringPrependFormat( ZU_STRING **dest, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zuStringPrependFormatArgList( dest, fmt, args );
    va_end( args );
}
void zuStringPrependFormatArgList( ZU_STRING **dest, ZU_STRING *fmt, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatArgList( fmt, args ) );
    zuStringPrepend( dest, text );
}
void zuStringPrependFormatCstr( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zuStringPrependFormatCstrArgList( dest, fmt, fmtLength, args );
    va_end( args );
}
void zuStringPrependFormatCstrArgList( ZU_STRING **dest, const char *fmt, ZU_INT fmtLength, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    zuStringPrepend( dest, text );
}
void zuStringPrependFormatWcstr( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zuStringPrependFormatWcstrArgList( dest, fmt, fmtLength, args );
    va_end( args );
}
void zuStringPrependFormatWcstrArgList( ZU_STRING **dest, const char16_t *fmt, ZU_INT fmtLength, va_list args )
{
    zu___Owned text( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    zuStringPrepend( dest, text );
}
