// Positions are passed over several at a time where neither the first nor the last code point of what is looked for
// stands where it should: nearly all of them, in most texts.

#include "zu/base/zu_string_search.h"

#include "zu/base/zu_string_internal.h"

#include <algorithm>
#include <cstring>

typedef uint32_t CHARS_VECTOR __attribute__( ( vector_size( 16 ) ) );
static constexpr ZU_INT STEP = 16; // positions passed over at a time

static inline CHARS_VECTOR charsLoad( const ZU_CHAR *chs )
{
    CHARS_VECTOR vector;
    memcpy( &vector, chs, sizeof vector );
    return vector;
}
// Tells whether an occurrence may begin at one of the STEP positions from `at` on; the last code point of it is `reach`
// positions on from its first.
static inline bool mayBeginWithin( const ZU_CHAR *at, ZU_CHAR first, ZU_INT reach, ZU_CHAR last )
{
    CHARS_VECTOR hits = {};
    for ( ZU_INT i = 0; i < STEP; i += 4 ) {
        CHARS_VECTOR begins = (CHARS_VECTOR)( charsLoad( at + i ) == first );
        hits |= reach == 0 ? begins : begins & (CHARS_VECTOR)( charsLoad( at + reach + i ) == last );
    }
    uint64_t halves[ 2 ];
    memcpy( halves, &hits, sizeof hits );
    return ( halves[ 0 ] | halves[ 1 ] ) != 0;
}
static inline bool beginsAt( const ZU_CHAR *at, const ZU_CHAR *sub, ZU_INT subLength )
{
    return *at == *sub && memcmp( at, sub, (size_t)subLength * sizeof( ZU_CHAR ) ) == 0;
}

// Both look at the positions from `from` to `to`, where the last one has `subLength` code points of the text behind it.
static ZU_INT charsFind( const ZU_CHAR *text, ZU_INT from, ZU_INT to, const ZU_CHAR *sub, ZU_INT subLength )
{
    ZU_CHAR first = sub[ 0 ];
    ZU_CHAR last = sub[ subLength - 1 ];
    while ( from <= to ) {
        if ( to - from >= STEP - 1 && !mayBeginWithin( text + from, first, subLength - 1, last ) ) {
            from += STEP;
            continue;
        }
        for ( ZU_INT end = std::min( from + STEP - 1, to ); from <= end; from++ ) {
            if ( beginsAt( text + from, sub, subLength ) ) {
                return from;
            }
        }
    }
    return -1;
}
static ZU_INT charsFindFromRight( const ZU_CHAR *text, ZU_INT from, ZU_INT to, const ZU_CHAR *sub, ZU_INT subLength )
{
    ZU_CHAR first = sub[ 0 ];
    ZU_CHAR last = sub[ subLength - 1 ];
    while ( from <= to ) {
        if ( to - from >= STEP - 1 && !mayBeginWithin( text + to - STEP + 1, first, subLength - 1, last ) ) {
            to -= STEP;
            continue;
        }
        for ( ZU_INT end = std::max( to - STEP + 1, from ); to >= end; to-- ) {
            if ( beginsAt( text + to, sub, subLength ) ) {
                return to;
            }
        }
    }
    return -1;
}

// Forward
ZU_INT zuStringFindChar( ZU_STRING *zus, ZU_INT offset, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( offset <= zus->length );
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return charsFind( zus->chars + zus->fspace, offset, zus->length - 1, &ch, 1 );
}
ZU_INT zuStringFindChars( ZU_STRING *zus, ZU_INT offset, const ZU_CHAR *sub, ZU_INT subLength )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( offset <= zus->length );
    ZU_ASSERT( sub );
    ZU_ASSERT( subLength > 0 );
    return charsFind( zus->chars + zus->fspace, offset, zus->length - subLength, sub, subLength );
}
ZU_INT zuStringFind( ZU_STRING *zus, ZU_INT offset, ZU_STRING *sub )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( sub );
    return zuStringFindChars( zus, offset, zuStringBacking( sub ), zuStringLength( sub ) );
}
ZU_INT zuStringFindCstr( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength )
{
    ZU_STRING *subString = zuStringCreateFromCstr( sub, subLength );
    ZU_INT found = zuStringFind( zus, offset, subString );
    ZU_REF_RELEASE( subString );
    return found;
}
ZU_INT zuStringFindWcstr( ZU_STRING *zus, ZU_INT offset, const char16_t *sub, ZU_INT subLength )
{
    ZU_STRING *subString = zuStringCreateFromWcstr( sub, subLength );
    ZU_INT found = zuStringFind( zus, offset, subString );
    ZU_REF_RELEASE( subString );
    return found;
}

// From the right
ZU_INT zuStringFindCharFromRight( ZU_STRING *zus, ZU_INT offset, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( offset >= -1 );
    ZU_ASSERT( offset <= zus->length );
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_INT end = offset == -1 ? zus->length : offset;
    return charsFindFromRight( zus->chars + zus->fspace, 0, end - 1, &ch, 1 );
}
ZU_INT zuStringFindCharsFromRight( ZU_STRING *zus, ZU_INT offset, const ZU_CHAR *sub, ZU_INT subLength )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( offset >= -1 );
    ZU_ASSERT( offset <= zus->length );
    ZU_ASSERT( sub );
    ZU_ASSERT( subLength > 0 );
    ZU_INT last = zus->length - subLength;
    ZU_INT start = offset == -1 ? last : std::min( offset, last );
    return charsFindFromRight( zus->chars + zus->fspace, 0, start, sub, subLength );
}
ZU_INT zuStringFindFromRight( ZU_STRING *zus, ZU_INT offset, ZU_STRING *sub )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( sub );
    return zuStringFindCharsFromRight( zus, offset, zuStringBacking( sub ), zuStringLength( sub ) );
}
ZU_INT zuStringFindFromRightCstr( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength )
{
    ZU_STRING *subString = zuStringCreateFromCstr( sub, subLength );
    ZU_INT found = zuStringFindFromRight( zus, offset, subString );
    ZU_REF_RELEASE( subString );
    return found;
}
ZU_INT zuStringFindFromRightWcstr( ZU_STRING *zus, ZU_INT offset, const char16_t *sub, ZU_INT subLength )
{
    ZU_STRING *subString = zuStringCreateFromWcstr( sub, subLength );
    ZU_INT found = zuStringFindFromRight( zus, offset, subString );
    ZU_REF_RELEASE( subString );
    return found;
}
