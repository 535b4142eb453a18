// Positions are looked at several at a time for the first and the last code point of what is looked for; nearly all
// have neither where it should be, in most texts, and only for the others is all of it compared.

#include "zu/base/zu_string_search.h"

#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_ref_internal.h"

#include <algorithm>
#include <cstring>

typedef uint32_t CHARS_VECTOR __attribute__( ( vector_size( 16 ) ) );
static constexpr ZU_INT STEP = 16; // positions looked at together

static inline CHARS_VECTOR charsLoad( const ZU_CHAR *chs )
{
    CHARS_VECTOR vector;
    memcpy( &vector, chs, sizeof vector );
    return vector;
}
// Returns a bit for each of the STEP positions from `at` on where an occurrence may begin; the last code point of it is
// `reach` positions on from its first.
static inline uint32_t beginsFind( const ZU_CHAR *at, ZU_CHAR first, ZU_INT reach, ZU_CHAR last )
{
    auto four = [ & ]( ZU_INT i ) {
        CHARS_VECTOR begins = (CHARS_VECTOR)( charsLoad( at + i ) == first );
        return reach == 0 ? begins : begins & (CHARS_VECTOR)( charsLoad( at + i + reach ) == last );
    };
    constexpr CHARS_VECTOR BITS = { 1, 2, 4, 8 };
    CHARS_VECTOR begins =
        ( four( 0 ) & BITS ) | ( four( 4 ) & BITS << 4 ) | ( four( 8 ) & BITS << 8 ) | ( four( 12 ) & BITS << 12 );
    uint64_t halves[ 2 ];
    memcpy( halves, &begins, sizeof begins );
    uint64_t both = halves[ 0 ] | halves[ 1 ];
    return (uint32_t)( both | both >> 32 );
}
static inline bool beginsAt( const ZU_CHAR *at, const ZU_CHAR *sub, ZU_INT subLength )
{
    return *at == *sub && ( subLength == 1 || memcmp( at, sub, (size_t)subLength * sizeof( ZU_CHAR ) ) == 0 );
}

// Both look at the positions from `from` to `to`, where the last one has `subLength` code points of the text behind it.
// A single code point is looked for by zu___CharsFind, and from the right by a loop of its own.
static inline ZU_INT charsFindChar( const ZU_CHAR *text, ZU_INT from, ZU_INT length, ZU_CHAR ch )
{
    const ZU_CHAR *found = zu___CharsFind( text + from, ch, length - from );
    return found ? found - text : -1;
}
static ZU_INT charsFind( const ZU_CHAR *text, ZU_INT from, ZU_INT to, const ZU_CHAR *sub, ZU_INT subLength )
{
    for ( ; to - from >= STEP - 1; from += STEP ) {
        uint32_t begins = beginsFind( text + from, sub[ 0 ], subLength - 1, sub[ subLength - 1 ] );
        for ( ; begins; begins &= begins - 1 ) {
            ZU_INT at = from + __builtin_ctz( begins );
            if ( beginsAt( text + at, sub, subLength ) ) {
                return at;
            }
        }
    }
    for ( ; from <= to; from++ ) {
        if ( beginsAt( text + from, sub, subLength ) ) {
            return from;
        }
    }
    return -1;
}
[[gnu::always_inline]] static inline ZU_INT charsFindFromRight( const ZU_CHAR *text, ZU_INT from, ZU_INT to,
                                                                const ZU_CHAR *sub, ZU_INT subLength )
{
    for ( ; to - from >= STEP - 1; to -= STEP ) {
        uint32_t begins = beginsFind( text + to - STEP + 1, sub[ 0 ], subLength - 1, sub[ subLength - 1 ] );
        while ( begins ) {
            int highest = 31 - __builtin_clz( begins );
            ZU_INT at = to - STEP + 1 + highest;
            if ( beginsAt( text + at, sub, subLength ) ) {
                return at;
            }
            begins ^= 1U << highest;
        }
    }
    for ( ; from <= to; to-- ) {
        if ( beginsAt( text + to, sub, subLength ) ) {
            return to;
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
    return charsFindChar( zus->chars + zus->fspace, offset, zus->length, ch );
}
ZU_INT zuStringFindChars( ZU_STRING *zus, ZU_INT offset, const ZU_CHAR *sub, ZU_INT subLength )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( offset <= zus->length );
    ZU_ASSERT( sub );
    ZU_ASSERT( subLength > 0 );
    const ZU_CHAR *text = zus->chars + zus->fspace;
    return subLength == 1 ? charsFindChar( text, offset, zus->length, sub[ 0 ] )
                          : charsFind( text, offset, zus->length - subLength, sub, subLength );
}
ZU_INT zuStringFind( ZU_STRING *zus, ZU_INT offset, ZU_STRING *sub )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( sub );
    return zuStringFindChars( zus, offset, zuStringBacking( sub ), zuStringLength( sub ) );
}
ZU_INT zuStringFindCstr( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength )
{
    zu___Owned subString( zuStringCreateFromCstr( sub, subLength ) );
    return zuStringFind( zus, offset, subString );
}
ZU_INT zuStringFindWcstr( ZU_STRING *zus, ZU_INT offset, const char16_t *sub, ZU_INT subLength )
{
    zu___Owned subString( zuStringCreateFromWcstr( sub, subLength ) );
    return zuStringFind( zus, offset, subString );
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
    const ZU_CHAR *text = zus->chars + zus->fspace;
    return subLength == 1 ? charsFindFromRight( text, 0, start, sub, 1 )
                          : charsFindFromRight( text, 0, start, sub, subLength );
}
ZU_INT zuStringFindFromRight( ZU_STRING *zus, ZU_INT offset, ZU_STRING *sub )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( sub );
    return zuStringFindCharsFromRight( zus, offset, zuStringBacking( sub ), zuStringLength( sub ) );
}
ZU_INT zuStringFindFromRightCstr( ZU_STRING *zus, ZU_INT offset, const char *sub, ZU_INT subLength )
{
    zu___Owned subString( zuStringCreateFromCstr( sub, subLength ) );
    return zuStringFindFromRight( zus, offset, subString );
}
ZU_INT zuStringFindFromRightWcstr( ZU_STRING *zus, ZU_INT offset, const char16_t *sub, ZU_INT subLength )
{
    zu___Owned subString( zuStringCreateFromWcstr( sub, subLength ) );
    return zuStringFindFromRight( zus, offset, subString );
}
