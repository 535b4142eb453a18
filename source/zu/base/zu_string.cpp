// Most texts of a program are short, so an object has room for 64 code points and longer texts alone need the heap.
// Texts mostly grow at the end and are cut at either end, so the storage keeps free space at both; where the text
// stands in it, and when it moves, is in zu_slack_internal.h.
//
// Positions and counts are checked where they enter; from there on all lengths are within the storage.  A string that
// anybody else holds is never changed: an insertion builds its successor in one step, so that each element moves once,
// and every other change works on a copy.

#include "zu/base/zu_string_internal.h"

#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

static constexpr ZU_INT INLINE_CHARS = ZU___STRING_INLINE_CHARS;
using STRING_SLACK = zu___Slack<ZU_STRING, ZU_CHAR, INLINE_CHARS, &ZU_STRING::chars, &ZU_STRING::inlineChars>;
static_assert( ZU_STRING_FSPACE == STRING_SLACK::FRONT && ZU_STRING_BSPACE == STRING_SLACK::BACK );

static ZU_STRING *emptyString = nullptr; // shared by everybody who holds an empty text

static void stringFree( ZU_OBJ *thisObj );
static ZU_INT stringCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *stringToString( ZU_OBJ *thisObj );

ZU_SORT zu___sort_ZU_STRING =
    ZU___SORT_INITIALIZER( "ZU_STRING", &zu___module, stringFree, stringCompare, stringToString );
ZU___STDFUNCS_BUT_ORDER( ZU_STRING, zuString )

// Start-up
void zu___StringStartup( void )
{
    emptyString = nullptr;
    emptyString = zu___StringCreateEmpty();
}
void zu___StringShutdown( void )
{
    ZU_REF_RELEASE( emptyString );
    ZU_REF_POISON( emptyString );
}

static inline ZU_CHAR *stringText( ZU_STRING *zus )
{
    return STRING_SLACK::first( zus );
}

// Storage

ZU_CHAR *zu___StringMakeRoom( ZU_STRING *zus, ZU_INT atIndex, ZU_INT count )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( zus ) == 1 );
    ZU_ASSERT( atIndex >= 0 );
    ZU_ASSERT( atIndex <= zus->length );
    ZU_ASSERT( count >= 0 );
    if ( count > 0 ) {
        ZU_ASSERT( ZU_INT_ADD_OK( zus->length, count ) );
        if ( atIndex == 0 ) {
            if ( !STRING_SLACK::takeAtFront( zus, count ) ) {
                ZU_ASSERT( ZU_INT_ADD_OK( ZU_STRING_FSPACE + ZU_STRING_BSPACE + zus->length, count ) );
                STRING_SLACK::growAtFront( zus, count );
            }
        } else if ( atIndex == zus->length ) {
            if ( !STRING_SLACK::takeAtEnd( zus, count ) ) {
                ZU_ASSERT( ZU_INT_ADD_OK( zus->fspace + zus->length + ZU_STRING_BSPACE, count ) );
                STRING_SLACK::growAtEnd( zus, count );
            }
        } else {
            if ( !STRING_SLACK::takeInside( zus, atIndex, count ) ) {
                ZU_ASSERT( ZU_INT_ADD_OK( ZU_STRING_FSPACE + ZU_STRING_BSPACE + zus->length, count ) );
                STRING_SLACK::growInside( zus, atIndex, count );
            }
        }
        zus->length += count;
    }
    return stringText( zus ) + atIndex;
}

void zu___StringCompact( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    STRING_SLACK::compact( zus );
}

// Standard functions
static void stringFree( ZU_OBJ *thisObj )
{
    ZU_STRING *zus = zuStringFrom( thisObj );
    ZU_ASSERT( zus );
    ZU_ASSERT( zus->chars );
    STRING_SLACK::finalize( zus );
}
static ZU_INT stringCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_STRING *zusA = zuStringFrom( thisObj );
    ZU_STRING *zusB = zuStringFrom( thatObj );
    ZU_ASSERT( zusA );
    ZU_ASSERT( zusB );
    return zu___StringCompareChars( stringText( zusA ), zusA->length, stringText( zusB ), zusB->length );
}
static ZU_STRING *stringToString( ZU_OBJ *thisObj )
{
    return zuStringRetain( zuStringFrom( thisObj ) );
}

// Inspection
ZU_INT zuStringLength( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zus->length;
}
const ZU_CHAR *zuStringBacking( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return stringText( zus );
}
ZU_CHAR zuStringCharAt( ZU_STRING *zus, ZU_INT idx )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < zus->length );
    return stringText( zus )[ idx ];
}

// Creation
ZU_STRING *zu___StringCreateEmpty( void )
{
    ZU_STRING *zus = (ZU_STRING *)zu___ObjCreate( sizeof( ZU_STRING ), &zu___sort_ZU_STRING );
    STRING_SLACK::initialize( zus, 0 );
    return zus;
}
ZU_STRING *zu___StringCreateOf( const ZU_CHAR *chars, ZU_INT count )
{
    ZU_STRING *zus = zu___StringCreateEmpty();
    if ( count <= INLINE_CHARS ) {
        zus->length = count;
        zus->bspace -= count;
        memcpy( zus->inlineChars, chars, sizeof zus->inlineChars );
    } else {
        memcpy( zu___StringMakeRoom( zus, 0, count ), chars, (size_t)count * sizeof( ZU_CHAR ) );
    }
    return zus;
}
ZU_STRING *zu___StringCreateToFill( ZU_INT length )
{
    static constexpr ZU_INT FREE = 8; // code points that the vectors of the conversions store beyond the last
    ZU_ASSERT( length >= 0 );
    ZU_STRING *zus = zu___StringCreateEmpty();
    if ( length > INLINE_CHARS ) {
        ZU_ASSERT( ZU_INT_ADD_OK( length, FREE ) );
        STRING_SLACK::adopt( zus, (ZU_CHAR *)zuMemAllocN( length + FREE, sizeof( ZU_CHAR ) ), length + FREE );
        zus->length -= FREE;
        zus->bspace = FREE;
    } else {
        zus->length = length;
        zus->bspace -= length;
    }
    return zus;
}
ZU_STRING *zuStringCreate( void )
{
    return emptyString ? zuStringRetain( emptyString ) : nullptr;
}
ZU_STRING *zuStringCreateFrom( ZU_STRING *src )
{
    ZU_ASSERT( src );
    return zuStringCreateFromInner( src, 0, src->length );
}
ZU_STRING *zuStringCreateFromInner( ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( src );
    ZU_STRING *zus = zu___StringCreateEmpty();
    zuStringInsertInner( &zus, 0, src, offset, count );
    return zus;
}
ZU_STRING *zuStringCreateFromLeading( ZU_STRING *src, ZU_INT count )
{
    ZU_ASSERT( src );
    return zuStringCreateFromInner( src, 0, count );
}
ZU_STRING *zuStringCreateFromTrailing( ZU_STRING *src, ZU_INT count )
{
    ZU_ASSERT( src );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= src->length );
    return zuStringCreateFromInner( src, src->length - count, count );
}
ZU_STRING *zuStringCreateFromOuter( ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( src );
    ZU_STRING *zus = zu___StringCreateEmpty();
    zuStringInsertOuter( &zus, 0, src, offset, count );
    return zus;
}
ZU_STRING *zuStringCreateFromCharsCopy( const ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_ASSERT( src || srcLength == 0 );
    ZU_ASSERT( srcLength >= 0 );
    ZU_STRING *zus = zuStringCreate();
    zuStringAppendChars( &zus, src, srcLength );
    return zus;
}
ZU_STRING *zuStringCreateFromCharsUse( ZU_CHAR *src, ZU_INT srcLength )
{
    ZU_ASSERT( src || srcLength == 0 );
    ZU_ASSERT( srcLength >= 0 );
    ZU_ASSERT( zuCharsAllOk( src, srcLength ) );
    if ( srcLength == 0 ) {
        return zuStringCreate();
    }
    ZU_STRING *zus = (ZU_STRING *)zu___ObjCreate( sizeof( ZU_STRING ), &zu___sort_ZU_STRING );
    STRING_SLACK::adopt( zus, src, srcLength );
    return zus;
}

// Creation from an encoded text.  The first run of the converter fills the object's own room and measures, so that a
// text that fits is done; one that is too long for that, unless it is all faults, is only measured.  Free room behind
// the text is the converter's as well, which lets vectors go on to the end.
template <typename UNIT>
static ZU_STRING *stringCreateFromEncoded( ZU_INT ( *convert )( ZU_CHAR *, ZU_INT, const UNIT *, ZU_INT ),
                                           const UNIT *src, ZU_INT srcLength )
{
    static constexpr ZU_INT UNITS_MAX = 4; // of an element
    ZU_STRING *zus = zu___StringCreateEmpty();
    const bool isLong = srcLength > UNITS_MAX * INLINE_CHARS;
    const ZU_INT length = convert( zus->inlineChars, isLong ? 0 : INLINE_CHARS, src, srcLength );
    ZU_CHAR *chars = zus->inlineChars;
    if ( length > INLINE_CHARS ) {
        chars = zu___StringMakeRoom( zus, 0, length );
    } else {
        zus->length = length;
        zus->bspace = INLINE_CHARS - length;
    }
    if ( isLong || length > INLINE_CHARS ) {
        convert( chars, length + zus->bspace, src, srcLength );
    }
    return zus;
}
ZU_STRING *zuStringCreateFromAscii( const char *src, ZU_INT srcLength )
{
    return stringCreateFromEncoded( zuCharsConvertFromAscii, src, srcLength );
}
ZU_STRING *zuStringCreateFromUtf8( const char *src, ZU_INT srcLength )
{
    return stringCreateFromEncoded( zuCharsConvertFromUtf8, src, srcLength );
}
ZU_STRING *zuStringCreateFromCstr( const char *src, ZU_INT srcLength )
{
    return stringCreateFromEncoded( zuCharsConvertFromCstr, src, srcLength );
}
ZU_STRING *zuStringCreateFromWcstr( const char16_t *src, ZU_INT srcLength )
{
    return stringCreateFromEncoded( zuCharsConvertFromWcstr, src, srcLength );
}

void zu___StringUnshare( ZU_STRING **zus )
{
    if ( ZU_REF_RETAIN_COUNT( *zus ) > 1 ) {
        ZU_STRING *old = *zus;
        *zus = zuStringCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Insertion.  zuStringInsertInner, zuStringInsertChars, zuStringInsertChar and zuStringInsertCharRun do the work; the
// other forms check what they read themselves and hand on.

// Asserts that `idx` is a position of the text of `*dest`, or its end.
#define STRING_ASSERT_PLACE( dest, idx )     \
    do {                                     \
        ZU_ASSERT( dest );                   \
        ZU_ASSERT( *dest );                  \
        ZU_ASSERT( idx >= 0 );               \
        ZU_ASSERT( idx <= (*dest)->length ); \
    } while ( 0 )

// Opens a gap of `count` elements, which are not 0, at `idx` and returns it for the caller to fill.  A shared string is
// exchanged for a private one that has the gap already.
static ZU_CHAR *stringOpenGap( ZU_STRING **zus, ZU_INT idx, ZU_INT count )
{
    ZU_STRING *old = *zus;
    if ( ZU_REF_RETAIN_COUNT( old ) == 1 ) {
        return zu___StringMakeRoom( old, idx, count );
    }
    ZU_ASSERT( ZU_INT_ADD_OK( old->length, count ) );
    ZU_STRING *copy = zu___StringCreateEmpty();
    ZU_CHAR *text = zu___StringMakeRoom( copy, 0, old->length + count );
    STRING_SLACK::copy( text, stringText( old ), idx );
    STRING_SLACK::copy( text + idx + count, stringText( old ) + idx, old->length - idx );
    *zus = copy;
    ZU_REF_RELEASE( old );
    return text + idx;
}

void zuStringInsertInner( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    STRING_ASSERT_PLACE( dest, idx );
    ZU_ASSERT( src );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );
    ZU_ASSERT( offset + count <= src->length );
    if ( count == 0 ) {
        return;
    }
    auto held = zu___HeldIf( src == *dest, src );
    ZU_CHAR *gap = stringOpenGap( dest, idx, count );
    STRING_SLACK::copy( gap, stringText( src ) + offset, count );
}
void zuStringInsert( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src )
{
    STRING_ASSERT_PLACE( dest, idx );
    ZU_ASSERT( src );
    zuStringInsertInner( dest, idx, src, 0, src->length );
}
void zuStringInsertLeading( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT count )
{
    zuStringInsertInner( dest, idx, src, 0, count );
}
void zuStringInsertTrailing( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT count )
{
    STRING_ASSERT_PLACE( dest, idx );
    ZU_ASSERT( src );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= src->length );
    zuStringInsertInner( dest, idx, src, src->length - count, count );
}
void zuStringInsertOuter( ZU_STRING **dest, ZU_INT idx, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    STRING_ASSERT_PLACE( dest, idx );
    ZU_ASSERT( src );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );
    ZU_ASSERT( offset + count <= src->length );
    auto held = zu___HeldIf( src == *dest, src ); // the first insertion may replace *dest, and with it the source
    zuStringInsertInner( dest, idx, src, offset + count, src->length - offset - count );
    zuStringInsertInner( dest, idx, src, 0, offset );
}
void zuStringInsertChar( ZU_STRING **zus, ZU_INT idx, ZU_CHAR ch )
{
    STRING_ASSERT_PLACE( zus, idx );
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    *stringOpenGap( zus, idx, 1 ) = ch;
}
void zuStringInsertCharRun( ZU_STRING **zus, ZU_INT idx, ZU_CHAR ch, ZU_INT count )
{
    STRING_ASSERT_PLACE( zus, idx );
    ZU_ASSERT( count >= 0 );
    if ( count == 0 ) {
        return;
    }
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    ZU_CHAR *gap = stringOpenGap( zus, idx, count );
    for ( ZU_INT i = 0; i < count; i++ ) {
        gap[ i ] = ch;
    }
}
void zuStringInsertChars( ZU_STRING **zus, ZU_INT idx, const ZU_CHAR *chs, ZU_INT chsLength )
{
    STRING_ASSERT_PLACE( zus, idx );
    ZU_ASSERT( chsLength >= 0 );
    ZU_ASSERT( chs || chsLength == 0 );
    ZU_ASSERT( zuCharsAllOk( chs, chsLength ) );
    if ( chsLength == 0 ) {
        return;
    }
    auto held = zu___HeldIf( STRING_SLACK::holds( *zus, chs ), *zus );
    STRING_SLACK::copy( stringOpenGap( zus, idx, chsLength ), chs, chsLength );
}
void zuStringInsertCstr( ZU_STRING **dest, ZU_INT idx, const char *src, ZU_INT srcLength )
{
    zu___Owned text( zuStringCreateFromCstr( src, srcLength ) );
    zuStringInsert( dest, idx, text );
}
void zuStringInsertWcstr( ZU_STRING **dest, ZU_INT idx, const char16_t *src, ZU_INT srcLength )
{
    zu___Owned text( zuStringCreateFromWcstr( src, srcLength ) );
    zuStringInsert( dest, idx, text );
}
void zuStringInsertObj( ZU_STRING **dest, ZU_INT idx, ZU_OBJ *obj )
{
    zu___Owned text( zuObjToString( obj ) );
    zuStringInsert( dest, idx, text );
}

// Appending: insertion behind the last code point.

// Takes `count` elements behind the text of a string, if nobody else holds it and nothing has to move; tells whether it
// did.  An append comes to this nearly always, and asks for it first.  The front of an empty text is its end, and has
// its own rule.
static inline bool stringTakeAtEnd( ZU_STRING *zus, ZU_INT count, ZU_CHAR **gap )
{
    ZU_INT length = zus->length;
    if ( ZU___UNLIKELY( length == 0 || ZU_REF_RETAIN_COUNT( zus ) != 1 ) ) {
        return false;
    }
    if ( ZU___LIKELY( zus->bspace >= count ) ) {
        zus->bspace -= count;
    } else if ( !STRING_SLACK::growInBlock( zus, count ) ) {
        return false;
    }
    *gap = stringText( zus ) + length;
    zus->length = length + count;
    return true;
}
void zuStringAppend( ZU_STRING **dest, ZU_STRING *src )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( src );
    if ( ZU___LIKELY( src != *dest ) ) {
        ZU_INT count = src->length;
        ZU_CHAR *gap;
        if ( ZU___LIKELY( stringTakeAtEnd( *dest, count, &gap ) ) ) {
            STRING_SLACK::copy( gap, stringText( src ), count );
            return;
        }
    }
    zuStringInsert( dest, ( *dest )->length, src );
}
void zuStringAppendInner( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    zuStringInsertInner( dest, ( *dest )->length, src, offset, count );
}
void zuStringAppendLeading( ZU_STRING **dest, ZU_STRING *src, ZU_INT count )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    zuStringInsertLeading( dest, ( *dest )->length, src, count );
}
void zuStringAppendTrailing( ZU_STRING **dest, ZU_STRING *src, ZU_INT count )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    zuStringInsertTrailing( dest, ( *dest )->length, src, count );
}
void zuStringAppendOuter( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    zuStringInsertOuter( dest, ( *dest )->length, src, offset, count );
}
// What is left to an append of one code point that has failed a check or needs more than a store.
[[gnu::noinline]] static void stringAppendCharChecked( ZU_STRING **zus, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    zuStringInsertChar( zus, ( *zus )->length, ch );
}
void zuStringAppendChar( ZU_STRING **zus, ZU_CHAR ch )
{
    ZU_CHAR *gap;
    if ( ZU___LIKELY( zus && *zus && ZU_CHAR_OK( ch ) && stringTakeAtEnd( *zus, 1, &gap ) ) ) {
        *gap = ch;
        return;
    }
    stringAppendCharChecked( zus, ch );
}
void zuStringAppendCharRun( ZU_STRING **zus, ZU_CHAR ch, ZU_INT count )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    zuStringInsertCharRun( zus, ( *zus )->length, ch, count );
}
void zuStringAppendChars( ZU_STRING **zus, const ZU_CHAR *chs, ZU_INT chsLength )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    zuStringInsertChars( zus, ( *zus )->length, chs, chsLength );
}
void zuStringAppendCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    zuStringInsertCstr( dest, ( *dest )->length, src, srcLength );
}
void zuStringAppendWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    zuStringInsertWcstr( dest, ( *dest )->length, src, srcLength );
}
void zuStringAppendObj( ZU_STRING **dest, ZU_OBJ *obj )
{
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    zuStringInsertObj( dest, ( *dest )->length, obj );
}

// Prepending: insertion ahead of the first code point.
void zuStringPrepend( ZU_STRING **dest, ZU_STRING *src )
{
    zuStringInsert( dest, 0, src );
}
void zuStringPrependInner( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    zuStringInsertInner( dest, 0, src, offset, count );
}
void zuStringPrependLeading( ZU_STRING **dest, ZU_STRING *src, ZU_INT count )
{
    zuStringInsertLeading( dest, 0, src, count );
}
void zuStringPrependTrailing( ZU_STRING **dest, ZU_STRING *src, ZU_INT count )
{
    zuStringInsertTrailing( dest, 0, src, count );
}
void zuStringPrependOuter( ZU_STRING **dest, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    zuStringInsertOuter( dest, 0, src, offset, count );
}
void zuStringPrependChar( ZU_STRING **zus, ZU_CHAR ch )
{
    zuStringInsertChar( zus, 0, ch );
}
void zuStringPrependCharRun( ZU_STRING **zus, ZU_CHAR ch, ZU_INT count )
{
    zuStringInsertCharRun( zus, 0, ch, count );
}
void zuStringPrependChars( ZU_STRING **zus, const ZU_CHAR *chs, ZU_INT chsLength )
{
    zuStringInsertChars( zus, 0, chs, chsLength );
}
void zuStringPrependCstr( ZU_STRING **dest, const char *src, ZU_INT srcLength )
{
    zuStringInsertCstr( dest, 0, src, srcLength );
}
void zuStringPrependWcstr( ZU_STRING **dest, const char16_t *src, ZU_INT srcLength )
{
    zuStringInsertWcstr( dest, 0, src, srcLength );
}
void zuStringPrependObj( ZU_STRING **dest, ZU_OBJ *obj )
{
    zuStringInsertObj( dest, 0, obj );
}

// Deletion.  A range at either end gives its elements to the free space there, and nothing moves but by compacting.

// Asserts that the `count` code points from `offset` on are within the text of `*zus`.
#define STRING_ASSERT_RANGE( zus, offset, count )      \
    do {                                               \
        ZU_ASSERT( zus );                              \
        ZU_ASSERT( *zus );                             \
        ZU_ASSERT( offset >= 0 );                      \
        ZU_ASSERT( count >= 0 );                       \
        ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );   \
        ZU_ASSERT( offset + count <= (*zus)->length ); \
    } while ( 0 )

void zuStringDelInner( ZU_STRING **zus, ZU_INT offset, ZU_INT count )
{
    STRING_ASSERT_RANGE( zus, offset, count );
    if ( count == 0 ) {
        return;
    }
    if ( count == ( *zus )->length ) {
        zuStringClear( zus );
        return;
    }
    zu___StringUnshare( zus );
    ZU_STRING *own = *zus;
    if ( offset == 0 ) {
        own->fspace += count;
    } else {
        ZU_CHAR *range = stringText( own ) + offset;
        STRING_SLACK::move( range, range + count, own->length - offset - count );
        own->bspace += count;
    }
    own->length -= count;
    zu___StringCompact( own );
}
void zuStringDelLeading( ZU_STRING **zus, ZU_INT count )
{
    zuStringDelInner( zus, 0, count );
}
void zuStringDelTrailing( ZU_STRING **zus, ZU_INT count )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= (*zus)->length );
    zuStringDelInner( zus, ( *zus )->length - count, count );
}
void zuStringDelOuter( ZU_STRING **zus, ZU_INT offset, ZU_INT count )
{
    STRING_ASSERT_RANGE( zus, offset, count );
    if ( count == ( *zus )->length ) {
        return;
    }
    if ( count == 0 ) {
        zuStringClear( zus );
        return;
    }
    zu___StringUnshare( zus );
    ZU_STRING *own = *zus;
    own->fspace += offset;
    own->bspace += own->length - offset - count;
    own->length = count;
    zu___StringCompact( own );
}
void zuStringClear( ZU_STRING **zus )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_STRING *old = *zus;
    *zus = zuStringCreate();
    ZU_REF_RELEASE( old );
}
void zuStringSetCharAt( ZU_STRING **zus, ZU_INT idx, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_ASSERT( idx >= -1 );
    ZU_ASSERT( idx <= (*zus)->length );
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    if ( idx == -1 ) {
        zuStringPrependChar( zus, ch );
    } else if ( idx == ( *zus )->length ) {
        zuStringAppendChar( zus, ch );
    } else {
        zu___StringUnshare( zus );
        stringText( *zus )[ idx ] = ch;
    }
}

// Comparison of the whole text
ZU_INT zu___StringCompareCharsAny( const ZU_CHAR *charsA, ZU_INT lengthA, const ZU_CHAR *charsB, ZU_INT lengthB )
{
    ZU_INT common = zuIntMin( lengthA, lengthB );
    int order = common > 0 ? zu___CharsCompare( charsA, charsB, common ) : 0;
    return order == 0 ? ( lengthA > lengthB ) - ( lengthA < lengthB ) : order < 0 ? -1 : 1;
}
// The standard operations of the order.  Two strings, as the arguments are unless somebody has cast, take no detour by
// way of the class's record: at 20 code points zuStringCompare takes 4 ns instead of 8, zuStringEquals 4 instead of 10.
static inline bool stringsAre( ZU_STRING *zusA, ZU_STRING *zusB )
{
    return zusA->obj.sort == &zu___sort_ZU_STRING && zusB->obj.sort == &zu___sort_ZU_STRING;
}
ZU_INT zuStringCompare( ZU_STRING *objA, ZU_STRING *objB )
{
    ZU___STDFUNCS_CHECK( objA, "stdfunc compare a", "objA" );
    ZU___STDFUNCS_CHECK( objB, "stdfunc compare b", "objB" );
    if ( ZU___LIKELY( objA != objB && stringsAre( objA, objB ) ) ) {
        return zu___StringCompareChars( stringText( objA ), objA->length, stringText( objB ), objB->length );
    }
    return zuObjCompare( &objA->obj, &objB->obj );
}
[[gnu::noinline]] static ZU_BOOL stringEqualsAny( ZU_STRING *objA, ZU_STRING *objB )
{
    return zuObjCompare( (ZU_OBJ *)objA, (ZU_OBJ *)objB ) == 0;
}
ZU_BOOL zuStringEquals( ZU_STRING *objA, ZU_STRING *objB )
{
    if ( ZU___LIKELY( objA && objB && objA != objB && stringsAre( objA, objB ) ) ) {
        return objA->length == objB->length && zu___CharsEqual( stringText( objA ), stringText( objB ), objA->length );
    }
    return stringEqualsAny( objA, objB );
}
ZU_BOOL zuStringEqualsChar( ZU_STRING *zus, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    return zus->length == 1 && stringText( zus )[ 0 ] == ch;
}
ZU_BOOL zuStringEqualsChars( ZU_STRING *zus, const ZU_CHAR *chs, ZU_INT chsLen )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( chsLen >= 0 );
    ZU_ASSERT( chs || chsLen == 0 );
    return zus->length == chsLen && zu___CharsEqual( stringText( zus ), chs, chsLen );
}
ZU_BOOL zuStringEqualsCstr( ZU_STRING *zus, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( zus );
    return zuStringEquals( zus, zu___Owned( zuStringCreateFromCstr( src, srcLength ) ) );
}
ZU_BOOL zuStringEqualsWcstr( ZU_STRING *zus, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( zus );
    return zuStringEquals( zus, zu___Owned( zuStringCreateFromWcstr( src, srcLength ) ) );
}

// Beginning; zuStringBeginsWithChars does the work.
ZU_BOOL zuStringBeginsWith( ZU_STRING *zus, ZU_STRING *sub )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( sub );
    return zuStringBeginsWithChars( zus, stringText( sub ), sub->length );
}
ZU_BOOL zuStringBeginsWithChar( ZU_STRING *zus, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zuStringBeginsWithChars( zus, &ch, 1 );
}
ZU_BOOL zuStringBeginsWithChars( ZU_STRING *zus, const ZU_CHAR *sub, ZU_INT subLen )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( subLen >= 0 );
    ZU_ASSERT( sub || subLen == 0 );
    ZU_ASSERT( zuCharsAllOk( sub, subLen ) );
    return subLen <= zus->length && zu___CharsEqual( stringText( zus ), sub, subLen );
}
ZU_BOOL zuStringBeginsWithCstr( ZU_STRING *zus, const char *sub, ZU_INT subLen )
{
    ZU_ASSERT( zus );
    return zuStringBeginsWith( zus, zu___Owned( zuStringCreateFromCstr( sub, subLen ) ) );
}
ZU_BOOL zuStringBeginsWithWcstr( ZU_STRING *zus, const char16_t *sub, ZU_INT subLen )
{
    ZU_ASSERT( zus );
    return zuStringBeginsWith( zus, zu___Owned( zuStringCreateFromWcstr( sub, subLen ) ) );
}

// End; zuStringEndsWithChars does the work.
ZU_BOOL zuStringEndsWith( ZU_STRING *zus, ZU_STRING *sub )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( sub );
    return zuStringEndsWithChars( zus, stringText( sub ), sub->length );
}
ZU_BOOL zuStringEndsWithChar( ZU_STRING *zus, ZU_CHAR ch )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zuStringEndsWithChars( zus, &ch, 1 );
}
ZU_BOOL zuStringEndsWithChars( ZU_STRING *zus, const ZU_CHAR *sub, ZU_INT subLen )
{
    ZU_ASSERT( zus );
    ZU_ASSERT( subLen >= 0 );
    ZU_ASSERT( sub || subLen == 0 );
    ZU_ASSERT( zuCharsAllOk( sub, subLen ) );
    return subLen <= zus->length && zu___CharsEqual( stringText( zus ) + zus->length - subLen, sub, subLen );
}
ZU_BOOL zuStringEndsWithCstr( ZU_STRING *zus, const char *sub, ZU_INT subLen )
{
    ZU_ASSERT( zus );
    return zuStringEndsWith( zus, zu___Owned( zuStringCreateFromCstr( sub, subLen ) ) );
}
ZU_BOOL zuStringEndsWithWcstr( ZU_STRING *zus, const char16_t *sub, ZU_INT subLen )
{
    ZU_ASSERT( zus );
    return zuStringEndsWith( zus, zu___Owned( zuStringCreateFromWcstr( sub, subLen ) ) );
}

// Conversion: one run of the converter to measure, one to fill an array of just that size.  What a short string becomes
// is made on the stack, in one run.
template <typename UNIT>
static UNIT *stringConvert( ZU_INT ( *convert )( UNIT *, ZU_INT, const ZU_CHAR *, ZU_INT, ZU_BOOL ), ZU_STRING *zus,
                            ZU_BOOL nulTerminate, ZU_INT *outLength )
{
    if ( outLength ) {
        *outLength = 0;
    }
    static constexpr ZU_INT SHORT_CHARS = 256;
    static constexpr ZU_INT SLACK = 64; // what lets vectors go on to the end
    UNIT made[ SHORT_CHARS * ZU___CHARS_UTF8_SEQUENCE_MAX + SLACK ];
    const bool isShort = zus->length <= SHORT_CHARS;
    const ZU_INT room = isShort ? (ZU_INT)( sizeof made / sizeof made[ 0 ] ) : 0;
    ZU_INT length = convert( isShort ? made : nullptr, room, stringText( zus ), zus->length, nulTerminate );
    if ( length == 0 ) {
        return nullptr;
    }
    UNIT *units = (UNIT *)zuMemAllocN( length, sizeof( UNIT ) );
    if ( length <= room ) {
        zuMemCopyN( units, made, length, sizeof( UNIT ) );
    } else {
        convert( units, length, stringText( zus ), zus->length, nulTerminate );
    }
    if ( outLength ) {
        *outLength = length;
    }
    return units;
}
char *zuStringConvertToAscii( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength )
{
    ZU_ASSERT( zus );
    return stringConvert( zuCharsConvertToAscii, zus, nulTerminate, outLength );
}
char *zuStringConvertToUtf8( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength )
{
    ZU_ASSERT( zus );
    return stringConvert( zuCharsConvertToUtf8, zus, nulTerminate, outLength );
}
char *zuStringConvertToCstr( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength )
{
    ZU_ASSERT( zus );
    return stringConvert( zuCharsConvertToCstr, zus, nulTerminate, outLength );
}
char16_t *zuStringConvertToWcstr( ZU_STRING *zus, ZU_BOOL nulTerminate, ZU_INT *outLength )
{
    ZU_ASSERT( zus );
    return stringConvert( zuCharsConvertToWcstr, zus, nulTerminate, outLength );
}
