// Most characters stay as they are or become one other.  Which of the two is not guessed, as capitals come as they
// like: both ways are computed and joined by a mask.  Latin-1 goes four at a time, without a table.

#include "zu/base/zu_string_case.h"

#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/unicode/zu_unicode_db_internal.h"

#include <algorithm>
#include <cstring>

static constexpr ZU_INT STEP = 8; // characters mapped at a time

typedef uint32_t CHARS_VECTOR __attribute__( ( vector_size( 16 ) ) );

static inline bool vectorIsZero( CHARS_VECTOR vector )
{
    uint64_t halves[ 2 ];
    memcpy( halves, &vector, sizeof vector );
    return ( halves[ 0 ] | halves[ 1 ] ) == 0;
}
static inline CHARS_VECTOR vectorIsWithin( CHARS_VECTOR vector, ZU_CHAR first, ZU_CHAR count )
{
    return (CHARS_VECTOR)( vector - first < count );
}

// The three mappings, by table; zu_unicode_db_internal.h tells what an entry is.  In ASCII and Latin-1 a case mapping
// turns one bit of most letters, those that isLetter tells; isOther tells of those that are mapped otherwise.
struct LOWER {
    static uint32_t entryGet( ZU_CHAR ch )
    {
        return ZU___UNICODE_TABLE_FETCH( Lower, ch );
    }
    static CHARS_VECTOR isLetter( CHARS_VECTOR chs )
    {
        return vectorIsWithin( chs, 'A', 26 ) | ( vectorIsWithin( chs, 0xC0, 31 ) & (CHARS_VECTOR)( chs != 0xD7 ) );
    }
    static CHARS_VECTOR isOther( CHARS_VECTOR )
    {
        return CHARS_VECTOR{};
    }
};
struct UPPER {
    static uint32_t entryGet( ZU_CHAR ch )
    {
        return ZU___UNICODE_TABLE_FETCH( Upper, ch );
    }
    static CHARS_VECTOR isLetter( CHARS_VECTOR chs )
    {
        return vectorIsWithin( chs, 'a', 26 ) | ( vectorIsWithin( chs, 0xE0, 31 ) & (CHARS_VECTOR)( chs != 0xF7 ) );
    }
    static CHARS_VECTOR isOther( CHARS_VECTOR chs ) // micro sign, sharp s, y with diaeresis
    {
        return (CHARS_VECTOR)( chs == 0xB5 ) | (CHARS_VECTOR)( chs == 0xDF ) | (CHARS_VECTOR)( chs == 0xFF );
    }
};
struct FOLD : LOWER {
    static uint32_t entryGet( ZU_CHAR ch )
    {
        return ZU___UNICODE_TABLE_FETCH( Fold, ch );
    }
    static CHARS_VECTOR isOther( CHARS_VECTOR chs ) // micro sign, sharp s
    {
        return (CHARS_VECTOR)( chs == 0xB5 ) | (CHARS_VECTOR)( chs == 0xDF );
    }
};
static inline ZU_INT entryLength( uint32_t entry )
{
    return entry & 3;
}
static inline const ZU_CHAR *entryMapping( uint32_t entry )
{
    return zu___unicodeRuns + ( entry >> 2 );
}
// Returns what a character becomes that becomes one.  The mapping of one that stays as it is is a 0.
static inline ZU_CHAR entryMap( uint32_t entry, ZU_CHAR ch )
{
    return *entryMapping( entry ) | ( ch & ( entry ? 0 : UINT32_MAX ) );
}

// Maps STEP characters; if that takes more than one for each, returns false, and the stored ones mean nothing.
template <typename CASE>
static inline bool charsMapStep( ZU_CHAR *dest, const ZU_CHAR *src )
{
    constexpr ZU_CHAR LATIN_1_END = 0x100;
    constexpr ZU_CHAR CASE_BIT = 'a' - 'A';
    CHARS_VECTOR a;
    CHARS_VECTOR b;
    memcpy( &a, src, sizeof a );
    memcpy( &b, src + 4, sizeof b );
    CHARS_VECTOR all = a | b;
    if ( vectorIsZero( all & ~( LATIN_1_END - 1 ) ) && vectorIsZero( CASE::isOther( a ) | CASE::isOther( b ) ) ) {
        a ^= CASE::isLetter( a ) & CASE_BIT;
        b ^= CASE::isLetter( b ) & CASE_BIT;
        memcpy( dest, &a, sizeof a );
        memcpy( dest + 4, &b, sizeof b );
        return true;
    }
    uint32_t entries = 0;
    for ( ZU_INT i = 0; i < STEP; i++ ) {
        uint32_t entry = CASE::entryGet( src[ i ] );
        entries |= entry;
        dest[ i ] = entryMap( entry, src[ i ] );
    }
    return entryLength( entries ) <= 1;
}

// Returns how many characters at the front stay as they are.
template <typename CASE>
static ZU_INT charsUnmapped( const ZU_CHAR *text, ZU_INT length )
{
    ZU_INT i = 0;
    for ( ; length - i >= STEP; i += STEP ) {
        uint32_t entries = 0;
        for ( ZU_INT j = 0; j < STEP; j++ ) {
            entries |= CASE::entryGet( text[ i + j ] );
        }
        if ( entries ) {
            break;
        }
    }
    while ( i < length && !CASE::entryGet( text[ i ] ) ) {
        i++;
    }
    return i;
}

template <typename CASE>
static void stringMap( ZU_STRING **zus )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_STRING *old = *zus;
    const ZU_CHAR *src = zuStringBacking( old );
    const ZU_CHAR *end = src + old->length;
    ZU_INT unmapped = charsUnmapped<CASE>( src, old->length );
    if ( unmapped == old->length ) {
        return;
    }
    // There is always room for one code point of each that remains.
    ZU_STRING *result = zu___StringCreateEmpty();
    ZU_INT room = old->length;
    ZU_CHAR *dest = zu___StringMakeRoom( result, 0, room );
    memcpy( dest, src, (size_t)unmapped * sizeof( ZU_CHAR ) );
    ZU_INT at = unmapped; // in the result, whose length counts the room meanwhile
    for ( src += unmapped; src < end; ) {
        if ( end - src >= STEP && charsMapStep<CASE>( dest + at, src ) ) {
            src += STEP;
            at += STEP;
            continue;
        }
        for ( const ZU_CHAR *pause = end - src > STEP ? src + STEP : end; src < pause; src++ ) {
            uint32_t entry = CASE::entryGet( *src );
            if ( entryLength( entry ) <= 1 ) {
                dest[ at++ ] = entryMap( entry, *src );
                continue;
            }
            const ZU_CHAR *map = entryMapping( entry );
            ZU_INT mapLength = entryLength( entry );
            ZU_ASSERT( map || mapLength == 0 );
            ZU_INT needed = at + mapLength + ( end - src - 1 );
            if ( needed > room ) {
                ZU_INT more = std::max( needed - room, room / 8 );
                zu___StringMakeRoom( result, room, more );
                room += more;
                dest = result->chars + result->fspace;
            }
            for ( ZU_INT i = 0; i < mapLength; i++ ) {
                dest[ at++ ] = map[ i ];
            }
        }
    }
    result->bspace += room - at;
    result->length = at;
    zu___StringCompact( result );
    *zus = result;
    ZU_REF_RELEASE( old );
}
void zuStringToLower( ZU_STRING **zus )
{
    stringMap<LOWER>( zus );
}
void zuStringToUpper( ZU_STRING **zus )
{
    stringMap<UPPER>( zus );
}
void zuStringToCaseFold( ZU_STRING **zus )
{
    stringMap<FOLD>( zus );
}

// Comparison

// A text that is folded as it is read.
struct FOLDER {
    const ZU_CHAR *at;
    const ZU_CHAR *end;
    const ZU_CHAR *map; // what is left of the last character's mapping
    ZU_INT mapLength;

    FOLDER( const ZU_CHAR *text, ZU_INT length ) : at( text ), end( text + length ), map( nullptr ), mapLength( 0 )
    {
    }
    // Returns the next code point, and at the end -1, which goes ahead of all.
    ZU_INT next()
    {
        if ( mapLength == 0 ) {
            if ( at == end ) {
                return -1;
            }
            ZU_CHAR ch = *at++;
            uint32_t entry = FOLD::entryGet( ch );
            if ( !entry ) {
                return ch;
            }
            map = entryMapping( entry );
            mapLength = entryLength( entry );
            ZU_ASSERT( map || mapLength == 0 );
        }
        mapLength--;
        return *map++;
    }
};
static ZU_INT charsCompareCaseFold( const ZU_CHAR *charsA, ZU_INT lengthA, const ZU_CHAR *charsB, ZU_INT lengthB )
{
    FOLDER a( charsA, lengthA );
    FOLDER b( charsB, lengthB );
    for ( ;; ) {
        if ( a.mapLength == 0 && b.mapLength == 0 ) {
            // What is equal stays so.
            while ( a.at < a.end && b.at < b.end && *a.at == *b.at ) {
                a.at++;
                b.at++;
            }
        }
        ZU_INT chA = a.next();
        ZU_INT chB = b.next();
        if ( chA != chB ) {
            return chA < chB ? -1 : 1;
        }
        if ( chA == -1 ) {
            return 0;
        }
    }
}
ZU_INT zuStringCompareCaseFold( ZU_STRING *zusA, ZU_STRING *zusB )
{
    ZU_ASSERT( zusA );
    ZU_ASSERT( zusB );
    return charsCompareCaseFold( zuStringBacking( zusA ), zusA->length, zuStringBacking( zusB ), zusB->length );
}
ZU_BOOL zuStringEqualsCaseFold( ZU_STRING *zusA, ZU_STRING *zusB )
{
    return zuStringCompareCaseFold( zusA, zusB ) == 0;
}
ZU_BOOL zuStringEqualsCharCaseFold( ZU_STRING *zus, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return charsCompareCaseFold( zuStringBacking( zus ), zus->length, &ch, 1 ) == 0;
}
ZU_BOOL zuStringEqualsCharsCaseFold( ZU_STRING *zus, const ZU_CHAR *chs, ZU_INT chsLen )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( chsLen >= 0 );
    ZU_ASSERT( chs || chsLen == 0 );
    ZU_ASSERT( zuCharsAllOk( chs, chsLen ) );
    return charsCompareCaseFold( zuStringBacking( zus ), zus->length, chs, chsLen ) == 0;
}
ZU_BOOL zuStringEqualsCaseFoldCstr( ZU_STRING *zus, const char *src, ZU_INT srcLength )
{
    zu___Owned other( zuStringCreateFromCstr( src, srcLength ) );
    return zuStringEqualsCaseFold( zus, other );
}
ZU_BOOL zuStringEqualsCaseFoldWcstr( ZU_STRING *zus, const char16_t *src, ZU_INT srcLength )
{
    zu___Owned other( zuStringCreateFromWcstr( src, srcLength ) );
    return zuStringEqualsCaseFold( zus, other );
}
