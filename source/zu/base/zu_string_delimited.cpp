// The first form of each does the work; the others make strings of what they are given, and hand them on.

#include "zu/base/zu_string_delimited.h"

#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_ref_internal.h"

// Adds the delimiter, if there is any text, and then `src`.
static void stringDelimitedAdd( ZU_STRING **dest, ZU_STRING *src, ZU_STRING *delimiter,
                                void ( *add )( ZU_STRING **dest, ZU_STRING *src ) )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    ZU_ASSERT( delimiter );
    // Held over the change if it is the same string, what is added is read as it stood.
    auto held = zu___HeldIf( src == *dest || delimiter == *dest, *dest );
    if ( ( *dest )->length > 0 ) {
        add( dest, delimiter );
    }
    add( dest, src );
}

// Appending
void zuStringDelimitedAppend( ZU_STRING **dest, ZU_STRING *src, ZU_STRING *delimiter )
{
    stringDelimitedAdd( dest, src, delimiter, zuStringAppend );
}
void zuStringDelimitedAppendCharDelimiter( ZU_STRING **dest, ZU_STRING *src, ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    zuStringDelimitedAppendCharsDelimiter( dest, src, &ch, 1 );
}
void zuStringDelimitedAppendCharsDelimiter( ZU_STRING **dest, ZU_STRING *src, const ZU_CHAR *chs, ZU_INT chsLength )
{
    zu___Owned delimiter( zuStringCreateFromCharsCopy( chs, chsLength ) );
    zuStringDelimitedAppend( dest, src, delimiter );
}
void zuStringDelimitedAppendCstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char *delimiter,
                                           ZU_INT delimiterLength )
{
    zu___Owned delimiterString( zuStringCreateFromCstr( delimiter, delimiterLength ) );
    zuStringDelimitedAppend( dest, src, delimiterString );
}
void zuStringDelimitedAppendWcstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char16_t *delimiter,
                                            ZU_INT delimiterLength )
{
    zu___Owned delimiterString( zuStringCreateFromWcstr( delimiter, delimiterLength ) );
    zuStringDelimitedAppend( dest, src, delimiterString );
}
void zuStringDelimitedAppendCstrSource( ZU_STRING **dest, const char *src, ZU_INT srcLength, ZU_STRING *delimiter )
{
    zu___Owned srcString( zuStringCreateFromCstr( src, srcLength ) );
    zuStringDelimitedAppend( dest, srcString, delimiter );
}
void zuStringDelimitedAppendWcstrSource( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength, ZU_STRING *delimiter )
{
    zu___Owned srcString( zuStringCreateFromWcstr( src, srcLength ) );
    zuStringDelimitedAppend( dest, srcString, delimiter );
}
void zuStringDelimitedAppendCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength, const char *delimiter,
                                  ZU_INT delimiterLength )
{
    zu___Owned srcString( zuStringCreateFromCstr( src, srcLength ) );
    zuStringDelimitedAppendCstrDelimiter( dest, srcString, delimiter, delimiterLength );
}
void zuStringDelimitedAppendWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength, const char16_t *delimiter,
                                   ZU_INT delimiterLength )
{
    zu___Owned srcString( zuStringCreateFromWcstr( src, srcLength ) );
    zuStringDelimitedAppendWcstrDelimiter( dest, srcString, delimiter, delimiterLength );
}

// Prepending
void zuStringDelimitedPrepend( ZU_STRING **dest, ZU_STRING *src, ZU_STRING *delimiter )
{
    stringDelimitedAdd( dest, src, delimiter, zuStringPrepend );
}
void zuStringDelimitedPrependCharDelimiter( ZU_STRING **dest, ZU_STRING *src, ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    zuStringDelimitedPrependCharsDelimiter( dest, src, &ch, 1 );
}
void zuStringDelimitedPrependCharsDelimiter( ZU_STRING **dest, ZU_STRING *src, const ZU_CHAR *chs, ZU_INT chsLength )
{
    zu___Owned delimiter( zuStringCreateFromCharsCopy( chs, chsLength ) );
    zuStringDelimitedPrepend( dest, src, delimiter );
}
void zuStringDelimitedPrependCstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char *delimiter,
                                            ZU_INT delimiterLength )
{
    zu___Owned delimiterString( zuStringCreateFromCstr( delimiter, delimiterLength ) );
    zuStringDelimitedPrepend( dest, src, delimiterString );
}
void zuStringDelimitedPrependWcstrDelimiter( ZU_STRING **dest, ZU_STRING *src, const char16_t *delimiter,
                                             ZU_INT delimiterLength )
{
    zu___Owned delimiterString( zuStringCreateFromWcstr( delimiter, delimiterLength ) );
    zuStringDelimitedPrepend( dest, src, delimiterString );
}
void zuStringDelimitedPrependCstrSource( ZU_STRING **dest, const char *src, ZU_INT srcLength, ZU_STRING *delimiter )
{
    zu___Owned srcString( zuStringCreateFromCstr( src, srcLength ) );
    zuStringDelimitedPrepend( dest, srcString, delimiter );
}
void zuStringDelimitedPrependWcstrSource( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength,
                                          ZU_STRING *delimiter )
{
    zu___Owned srcString( zuStringCreateFromWcstr( src, srcLength ) );
    zuStringDelimitedPrepend( dest, srcString, delimiter );
}
void zuStringDelimitedPrependCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength, const char *delimiter,
                                   ZU_INT delimiterLength )
{
    zu___Owned srcString( zuStringCreateFromCstr( src, srcLength ) );
    zuStringDelimitedPrependCstrDelimiter( dest, srcString, delimiter, delimiterLength );
}
void zuStringDelimitedPrependWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength, const char16_t *delimiter,
                                    ZU_INT delimiterLength )
{
    zu___Owned srcString( zuStringCreateFromWcstr( src, srcLength ) );
    zuStringDelimitedPrependWcstrDelimiter( dest, srcString, delimiter, delimiterLength );
}
