// The length is known ahead, so that the result is written once into an array of its size.

#include "zu/base/zu_string_compose.h"

#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_string_search.h"
#include "zu/sys/zu_mem.h"

// Returns an array for `length` code points, null for none.
static ZU_CHAR *composeAlloc( ZU_INT length )
{
    return length > 0 ? (ZU_CHAR *)zuMemAllocN( length, sizeof( ZU_CHAR ) ) : nullptr;
}
// Copies a part of a string and returns where the next goes.
static ZU_CHAR *composePut( ZU_CHAR *dest, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    zuMemCopyN( dest, zuStringBacking( src ) + offset, count, sizeof( ZU_CHAR ) );
    return dest + count;
}

ZU_STRING *zuStringCreateFromJoined( ZU_VECTOR *strings, ZU_STRING *separator )
{
    ZU_ASSERT( strings );
    ZU_ASSERT( separator );
    ZU_ASSERT( zuVectorContainsOnly( strings, zuStringSort() ) );
    const ZU_INT count = zuVectorLength( strings );
    ZU_OBJ *const *items = zuVectorBacking( strings );
    ZU_INT length = 0;
    for ( ZU_INT i = 0; i < count; i++ ) {
        const ZU_INT added = zuStringLength( zuStringFrom( items[ i ] ) ) + ( i > 0 ? separator->length : 0 );
        ZU_ASSERT( ZU_INT_ADD_OK( length, added ) );
        length += added;
    }
    ZU_CHAR *chars = composeAlloc( length );
    ZU_CHAR *next = chars;
    for ( ZU_INT i = 0; i < count; i++ ) {
        next = i > 0 ? composePut( next, separator, 0, separator->length ) : next;
        ZU_STRING *item = zuStringFrom( items[ i ] );
        next = composePut( next, item, 0, item->length );
    }
    return zuStringCreateFromCharsUse( chars, length );
}
ZU_STRING *zuStringCreateFromRepeated( ZU_STRING *src, ZU_INT count )
{
    ZU_ASSERT( src );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( ZU_INT_MUL_OK( src->length, count ) );
    const ZU_INT length = src->length * count;
    ZU_CHAR *chars = composeAlloc( length );
    ZU_CHAR *next = chars;
    for ( ZU_INT i = 0; i < count && length > 0; i++ ) {
        next = composePut( next, src, 0, src->length );
    }
    return zuStringCreateFromCharsUse( chars, length );
}

// Counts the occurrences first: they are found again faster than their places could be kept.
ZU_INT zuStringReplaceAll( ZU_STRING **zus, ZU_STRING *sub, ZU_STRING *replacement )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_ASSERT( sub );
    ZU_ASSERT( sub->length > 0 );
    ZU_ASSERT( replacement );
    ZU_STRING *old = *zus;
    ZU_INT count = 0;
    for ( ZU_INT at = 0; ( at = zuStringFind( old, at, sub ) ) >= 0; at += sub->length ) {
        count++;
    }
    if ( count == 0 ) {
        return 0;
    }
    ZU_ASSERT( ZU_INT_MUL_OK( replacement->length, count ) );
    const ZU_INT kept = old->length - sub->length * count;
    ZU_ASSERT( ZU_INT_ADD_OK( kept, replacement->length * count ) );
    const ZU_INT length = kept + replacement->length * count;
    ZU_CHAR *chars = composeAlloc( length );
    ZU_CHAR *next = chars;
    ZU_INT from = 0;
    for ( ZU_INT at; ( at = zuStringFind( old, from, sub ) ) >= 0; from = at + sub->length ) {
        next = composePut( next, old, from, at - from );
        next = composePut( next, replacement, 0, replacement->length );
    }
    composePut( next, old, from, old->length - from );
    *zus = zuStringCreateFromCharsUse( chars, length );
    ZU_REF_RELEASE( old );
    return count;
}
