// Parts are made where they go: a string with room for just its text, whose reference the vector takes over.

#include "zu/base/zu_string_split.h"

#include "zu/base/zu_string_internal.h"
#include "zu/base/zu_string_search.h"
#include "zu/base/zu_string_trim_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_mem.h"

// Appends the code points of `zus` from `begin` to `end` as a part.
static void partsAppend( ZU_VECTOR **parts, ZU_STRING *zus, ZU_INT begin, ZU_INT end )
{
    ZU_STRING *part = zu___StringCreateEmpty();
    ZU_CHAR *text = zu___StringMakeRoom( part, 0, end - begin );
    zuMemCopyN( text, zuStringBacking( zus ) + begin, end - begin, sizeof( ZU_CHAR ) );
    ZU_OBJ *obj = zuStringObj( part );
    zu___VectorPushNoRetain( parts, &obj, 1 );
}

// At a separator; the other forms make a string of theirs.
static ZU_VECTOR *stringSplit( ZU_STRING *zus, const ZU_CHAR *sep, ZU_INT sepLength, ZU_INT maxParts )
{
    ZU_VECTOR *parts = zuVectorCreate();
    ZU_INT pos = 0;
    while ( pos < zus->length && zuVectorLength( parts ) != maxParts - 1 ) {
        ZU_INT found = zuStringFindChars( zus, pos, sep, sepLength );
        if ( found == -1 ) {
            break;
        }
        partsAppend( &parts, zus, pos, found );
        pos = found + sepLength;
    }
    partsAppend( &parts, zus, pos, zus->length );
    return parts;
}
ZU_VECTOR *zuStringSplit( ZU_STRING *zus, ZU_STRING *sep, ZU_INT maxParts )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( sep );
    ZU_ASSERT( sep->length > 0 );
    ZU_ASSERT( maxParts == -1 || maxParts > 0 );
    return stringSplit( zus, zuStringBacking( sep ), sep->length, maxParts );
}
ZU_VECTOR *zuStringSplitChar( ZU_STRING *zus, ZU_CHAR sep, ZU_INT maxParts )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( ZU_CHAR_OK( sep ) );
    ZU_ASSERT( maxParts == -1 || maxParts > 0 );
    return stringSplit( zus, &sep, 1, maxParts );
}
ZU_VECTOR *zuStringSplitChars( ZU_STRING *zus, const ZU_CHAR *sep, ZU_INT sepLength, ZU_INT maxParts )
{
    zu___Owned sepString( zuStringCreateFromCharsCopy( sep, sepLength ) );
    return zuStringSplit( zus, sepString, maxParts );
}
ZU_VECTOR *zuStringSplitCstr( ZU_STRING *zus, const char *sep, ZU_INT sepLength, ZU_INT maxParts )
{
    zu___Owned sepString( zuStringCreateFromCstr( sep, sepLength ) );
    return zuStringSplit( zus, sepString, maxParts );
}
ZU_VECTOR *zuStringSplitWcstr( ZU_STRING *zus, const char16_t *sep, ZU_INT sepLength, ZU_INT maxParts )
{
    zu___Owned sepString( zuStringCreateFromWcstr( sep, sepLength ) );
    return zuStringSplit( zus, sepString, maxParts );
}

// At white space
ZU_VECTOR *zuStringSplitWhitespace( ZU_STRING *zus, ZU_INT maxParts )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( maxParts == -1 || maxParts > 0 );
    const ZU_CHAR *text = zuStringBacking( zus );
    ZU_INT begin = zu___StringLeadingBlanks( zus );
    ZU_INT end = zus->length - zu___StringTrailingBlanks( zus, begin );
    ZU_VECTOR *parts = zuVectorCreate();
    ZU_INT word = -1; // where the current word begins; -1: there is none
    for ( ZU_INT pos = begin; pos < end; pos++ ) {
        bool ends =
            zuUnicodeIsWhiteSpace( text[ pos ] ) && ( maxParts == -1 || zuVectorLength( parts ) < maxParts - 1 );
        if ( !ends ) {
            word = word == -1 ? pos : word;
        } else if ( word != -1 ) {
            partsAppend( &parts, zus, word, pos );
            word = -1;
        }
    }
    if ( word != -1 || zuVectorLength( parts ) == 0 ) {
        partsAppend( &parts, zus, word == -1 ? end : word, end );
    }
    return parts;
}
