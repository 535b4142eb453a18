// The text passes three stages: decomposing, ordering of marks, composing.  Characters come to rest in two places:
// those that marks may still follow wait as elements in `pending`, and behind the stages there is the string `reorder`,
// or `compose`, which holds the output.
//
// Nearly all text is in the form already, or has a few characters that are not.  Two ways lead through the stages, whose
// words zu_unicode_normalizer_stages_internal.h explains:
//
// - One character at a time, with the state between characters in the object.  It takes what may be continued by the
//   next write, and all that is long or strange.  It is here.
// - Whole stretches of an array, in zu_unicode_normalizer_stretches.cpp.

#include "zu/unicode/zu_unicode_normalizer_internal.h"

#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_mem.h"
#include "zu/unicode/zu_unicode_normalizer_stages_internal.h"

#include <algorithm>

static constexpr ZU_INT RUN_MAX = 4096; // characters that wait for a starter, in either stage
static constexpr ZU_INT ROOM_MIN = 256; // characters by which the output grows
static constexpr ZU_INT BULK_MIN = 8;   // characters; fewer are not worth the search for boundaries

static void normalizerFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_UNICODE_NORMALIZER =
    ZU___SORT_INITIALIZER( "ZU_UNICODE_NORMALIZER", &zu___module, normalizerFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_UNICODE_NORMALIZER, zuUnicodeNormalizer )

// Creation
static inline bool normalFormComposes( ZU_UNICODE_NORMAL_FORM form )
{
    return form == ZU_UNICODE_NORMAL_FORM_NFC || form == ZU_UNICODE_NORMAL_FORM_NFKC;
}
// Sets all fields behind the header; `reorder` and `compose` go over.
static inline void normalizerInitialize( ZU_UNICODE_NORMALIZER *norm, ZU_UNICODE_NORMAL_FORM normalForm,
                                         ZU_STRING *reorder, ZU_STRING *compose )
{
    norm->normalForm = normalForm;
    norm->highSurrogate = 0;
    norm->pendingLength = 0;
    norm->pendingCapacity = ZU___NORM_INLINE_ELEMENTS;
    norm->starter = -1;
    norm->unsorted = false;
    norm->pending = norm->inlinePending;
    norm->reorder = reorder;
    norm->compose = compose;
    norm->composeStart = 0;
    norm->lastStarter = 0;
    norm->lastRank = ZU___NORM_RANK_BEGIN;
}
ZU_UNICODE_NORMALIZER *zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM normalForm )
{
    ZU_ASSERT( ZU_UNICODE_NORMAL_FORM_OK( normalForm ) );
    ZU_UNICODE_NORMALIZER *norm =
        (ZU_UNICODE_NORMALIZER *)zu___ObjCreate( sizeof( ZU_UNICODE_NORMALIZER ), &zu___sort_ZU_UNICODE_NORMALIZER );
    normalizerInitialize( norm, normalForm, zuStringCreate(),
                          normalFormComposes( normalForm ) ? zuStringCreate() : nullptr );
    return norm;
}
static inline void normalizerFreePending( ZU_UNICODE_NORMALIZER *norm )
{
    if ( norm->pending != norm->inlinePending ) {
        zuMemFree( norm->pending );
    }
}
static void normalizerFree( ZU_OBJ *thisObj )
{
    ZU_UNICODE_NORMALIZER *norm = zuUnicodeNormalizerFrom( thisObj );
    ZU_ASSERT( norm );
    normalizerFreePending( norm );
    ZU_REF_RELEASE( norm->reorder );
    ZU_REF_RELEASE_OPT( norm->compose );
    ZU_REF_POISON( norm->pending );
    ZU_REF_POISON( norm->reorder );
    ZU_REF_POISON( norm->compose );
}

// The output
void zu___NormGrowOutput( ZU_STRING **output, ZU_INT count )
{
    if ( ZU_REF_RETAIN_COUNT( *output ) > 1 ) { // the shared empty string
        ZU_REF_RELEASE( *output );
        *output = zu___StringCreateEmpty();
    }
    ZU_STRING *own = *output;
    if ( own->bspace < count ) {
        ZU_INT room = std::max( count, ROOM_MIN );
        zu___StringMakeRoom( own, own->length, room );
        own->length -= room;
        own->bspace += room;
    }
}

void zu___NormAssertSettled( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_ASSERT( norm->highSurrogate == 0 );
    ZU_ASSERT( norm->pendingLength == 0 );
    ZU_ASSERT( norm->starter == -1 );
    ZU_ASSERT( !norm->unsorted );
    ZU_ASSERT( !norm->compose || norm->composeStart == norm->compose->length );
    ZU_ASSERT( norm->lastRank == ZU___NORM_RANK_BEGIN );
}

// One character at a time

// Sends the first `count` elements that wait through the other stages.
static void normalizerSettle( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    if ( norm->unsorted ) {
        uint32_t scratch[ ZU___NORM_INLINE_ELEMENTS ];
        zu___NormSort( norm->pending, count,
                       norm->pending == norm->inlinePending ? scratch : norm->pending + norm->pendingCapacity );
        norm->unsorted = false;
    }
    zu___NormOutput output( norm );
    ZU_CHAR *cursor = output.reserve( count );
    if ( norm->compose ) {
        ZU_CHAR *text = output.text();
        ZU___NORM_COMPOSER composer = { cursor, text + norm->composeStart, norm->lastStarter, norm->lastRank };
        zu___NormComposeAll( composer, norm->pending, count );
        cursor = composer.cursor;
        bool full = cursor - composer.starter >= RUN_MAX;
        norm->composeStart = ( full ? cursor : composer.starter ) - text;
        norm->lastStarter = composer.lastStarter;
        norm->lastRank = composer.lastRank;
    } else {
        cursor = zu___NormCopy( norm->pending, count, cursor );
    }
    output.take( cursor );
    norm->pendingLength -= count;
    if ( norm->pendingLength > 0 ) {
        memmove( norm->pending, norm->pending + count, (size_t)norm->pendingLength * sizeof( uint32_t ) );
    }
    norm->starter = norm->pendingLength > 0 ? 0 : -1;
}

static void normalizerGrowPending( ZU_UNICODE_NORMALIZER *norm )
{
    constexpr ZU_INT CAPACITY = RUN_MAX + ZU___NORM_DECOMPOSITION_MAX; // no run comes to more
    uint32_t *pending = (uint32_t *)zuMemAllocN( 2 * CAPACITY, sizeof( uint32_t ) );
    memcpy( pending, norm->pending, (size_t)norm->pendingLength * sizeof( uint32_t ) );
    norm->pending = pending;
    norm->pendingCapacity = CAPACITY;
    zu___ObjDbgSetAllocationSizeN( &norm->obj, 2 * CAPACITY, sizeof( uint32_t ) );
}

// Takes a character that is not strange.
static inline void normalizerPut( ZU_UNICODE_NORMALIZER *norm, const ZU___NORM_BITS &bits, ZU_CHAR ch, uint32_t entry )
{
    if ( ZU___UNLIKELY( norm->pendingLength > norm->pendingCapacity - ZU___NORM_DECOMPOSITION_MAX ) ) {
        normalizerGrowPending( norm );
    }
    uint32_t scratch[ ZU___NORM_QUICK ];
    ZU___NORM_DECOMPOSITION decomposition = zu___NormDecompose( ch, entry, bits, scratch );
    for ( ZU_INT i = 0; i < decomposition.length; i++ ) {
        uint32_t element = decomposition.elements[ i ];
        ZU_INT length = norm->pendingLength;
        uint32_t rank = zu___NormRank( element );
        if ( rank == 0 ) {
            norm->starter = length;
        } else if ( length > 0 && zu___NormRank( norm->pending[ length - 1 ] ) > rank ) {
            norm->unsorted = true;
        }
        norm->pending[ length ] = element;
        norm->pendingLength = length + 1;
    }
    if ( norm->starter > 0 ) {
        normalizerSettle( norm, norm->starter );
    } else if ( norm->pendingLength >= RUN_MAX ) {
        normalizerSettle( norm, norm->pendingLength );
    }
}

// Takes any value, and joins surrogates.
static inline void normalizerPutAny( ZU_UNICODE_NORMALIZER *norm, const ZU___NORM_BITS &bits, ZU_CHAR ch )
{
    uint32_t entry = zu___NormEntry( ch );
    ZU_CHAR high = norm->highSurrogate;
    norm->highSurrogate = 0;
    if ( zu___NormIsStrange( ch, entry ) ) {
        if ( ch >> 10 == 0x36 ) {
            norm->highSurrogate = ch;
            return;
        }
        if ( ch >> 10 != 0x37 || !high ) {
            return;
        }
        ch = ( high << 10 ) + ch - 0x35FDC00;
        entry = zu___NormEntry( ch );
    }
    normalizerPut( norm, bits, ch, entry );
}

// Marks on their way from a text to `pending`.
struct MARKS {
    const ZU_CHAR *at;
    uint32_t *cursor;
    uint32_t last;     // the element ahead of the cursor; 0: there is none
    uint32_t descents; // the highest bit tells whether marks were out of order

    void put( ZU_CHAR ch, uint32_t entry )
    {
        *cursor++ = zu___NormElement( ch, entry );
        descents |= zu___NormRank( entry ) - zu___NormRank( last );
        last = entry;
    }
    // A mark may decompose, to one or two marks.  Whether it does is not guessed: both ways are computed and joined by
    // a mask, and two elements are stored.
    void putDecomposed( ZU_CHAR ch, uint32_t entry, uint32_t decomposes )
    {
        const uint32_t *run = zu___unicodeNormRuns + ( entry & ZU___UNICODE_NORM_PLACE );
        uint32_t itself = zu___NormElement( ch, entry ) | 1 << ZU___UNICODE_ELEMENT_LEFT_SHIFT;
        uint32_t mask = -(uint32_t)( ( entry & decomposes ) != 0 );
        uint32_t first = ( run[ 0 ] & mask ) | ( itself & ~mask );
        cursor[ 0 ] = first;
        cursor[ 1 ] = run[ 1 ];
        cursor += zu___NormLeft( first );
        descents |= zu___NormRank( first ) - zu___NormRank( last );
        last = cursor[ -1 ];
    }
};

// Moves marks as long as there are any, up to the end of the text or to about `limit`.
static inline MARKS marksGather( MARKS marks, const ZU_CHAR *end, const uint32_t *limit, uint32_t decomposes )
{
    while ( marks.at < end && marks.cursor < limit ) {
        while ( end - marks.at >= 4 && limit - marks.cursor >= 4 ) {
            ZU___NORM_FOUR four = zu___NormEntries( marks.at );
            if ( !four.haveRanks() || ( four.any() & decomposes ) ) {
                break;
            }
            marks.put( marks.at[ 0 ], four.a );
            marks.put( marks.at[ 1 ], four.b );
            marks.put( marks.at[ 2 ], four.c );
            marks.put( marks.at[ 3 ], four.d );
            marks.at += 4;
        }
        const ZU_CHAR *pause = end - marks.at > 4 ? marks.at + 4 : end;
        for ( ; marks.at < pause && marks.cursor < limit; marks.at++ ) {
            uint32_t entry = zu___NormEntry( *marks.at );
            if ( zu___NormRank( entry ) == 0 ) {
                return marks;
            }
            marks.putDecomposed( *marks.at, entry, decomposes );
        }
    }
    return marks;
}

// Takes the marks that the text begins with, and returns where it goes on.
static const ZU_CHAR *normalizerPutMarks( ZU_UNICODE_NORMALIZER *norm, const ZU___NORM_BITS &bits, const ZU_CHAR *at,
                                          const ZU_CHAR *end )
{
    for ( ;; ) {
        uint32_t *first = norm->pending + norm->pendingLength;
        const uint32_t *limit = norm->pending + norm->pendingCapacity - ZU___NORM_DECOMPOSITION_MAX;
        uint32_t last = norm->pendingLength > 0 ? first[ -1 ] : 0;
        MARKS marks = marksGather( { at, first, last, 0 }, end, limit, bits.decomposes );
        norm->highSurrogate = marks.cursor > first ? 0 : norm->highSurrogate;
        norm->unsorted |= marks.descents >> 31 != 0;
        norm->pendingLength = marks.cursor - norm->pending;
        at = marks.at;
        if ( norm->pendingLength >= RUN_MAX ) {
            normalizerSettle( norm, norm->pendingLength );
        } else if ( marks.cursor >= limit ) {
            normalizerGrowPending( norm );
        } else {
            return at;
        }
    }
}
void zu___NormPutChars( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *at, const ZU_CHAR *end )
{
    ZU___NORM_BITS bits( norm->normalForm );
    while ( at < end ) {
        normalizerPutAny( norm, bits, *at++ );
        at = normalizerPutMarks( norm, bits, at, end );
    }
}

void zu___NormFinish( ZU_UNICODE_NORMALIZER *norm )
{
    norm->highSurrogate = 0;
    if ( norm->pendingLength > 0 ) {
        normalizerSettle( norm, norm->pendingLength );
    }
    if ( norm->compose ) {
        norm->composeStart = norm->compose->length;
        norm->lastStarter = 0;
        norm->lastRank = ZU___NORM_RANK_BEGIN;
    }
}

// A short text at once.  Normalizer and output are on the stack, and the whole text is taken in stretches, since nothing
// comes behind it: 12 characters take 78 ns instead of 185.
ZU_INT zu___UnicodeNormalizerApply( ZU_UNICODE_NORMAL_FORM form, ZU_CHAR *dest, const ZU_CHAR *chs, ZU_INT chsLength )
{
    // Stretches ask for as much ahead of the first one; what is on the stack cannot grow.
    static_assert( ZU___NORM_SHORT_CHARS * ( 1 + ZU___NORM_DECOMPOSITION_MAX ) + ZU___NORM_SHORT_CHARS / 2 <=
                   ZU___NORM_SHORT_ROOM );
    ZU_ASSERT( chsLength <= ZU___NORM_SHORT_CHARS );
    ZU_STRING output; // the array of the caller, and no more of an object than what writes there looks at
    output.obj.retainCount = 1;
    output.length = 0;
    output.fspace = 0;
    output.bspace = ZU___NORM_SHORT_ROOM;
    output.chars = dest;
    ZU_UNICODE_NORMALIZER norm;
    norm.obj.dbgAllocationSize = 0;
    normalizerInitialize( &norm, form, &output, normalFormComposes( form ) ? &output : nullptr );
    zu___NormPutWhole( &norm, chs, chs + chsLength );
    zu___NormFinish( &norm );
    normalizerFreePending( &norm );
    ZU_ASSERT( output.chars == dest );
    return output.length;
}

// Writing
void zuUnicodeNormalizerWriteChar( ZU_UNICODE_NORMALIZER *norm, ZU_CHAR ch )
{
    ZU_ASSERT( norm );
    normalizerPutAny( norm, ZU___NORM_BITS( norm->normalForm ), ch );
}
void zuUnicodeNormalizerWriteChars( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *chs, ZU_INT chsLength )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( chsLength >= 0 );
    ZU_ASSERT( chs || chsLength == 0 );
    const ZU_CHAR *end = chs + chsLength;
    const ZU_CHAR *at = chsLength >= BULK_MIN ? zu___NormPutStretches( norm, chs, end ) : chs;
    if ( at < end ) {
        zu___NormOutput( norm ).reserve( end - at ); // all the room at once
        zu___NormPutChars( norm, at, end );
    }
}
void zuUnicodeNormalizerWrite( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( src );
    zuUnicodeNormalizerWriteInner( norm, src, 0, zuStringLength( src ) );
}
void zuUnicodeNormalizerWriteInner( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( src );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );
    ZU_ASSERT( offset + count <= zuStringLength( src ) );
    zuUnicodeNormalizerWriteChars( norm, zuStringBacking( src ) + offset, count );
}
void zuUnicodeNormalizerWriteOuter( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( src );
    ZU_ASSERT( offset >= 0 );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );
    ZU_ASSERT( offset + count <= zuStringLength( src ) );
    zuUnicodeNormalizerWriteInner( norm, src, 0, offset );
    zuUnicodeNormalizerWriteInner( norm, src, offset + count, zuStringLength( src ) - offset - count );
}
void zuUnicodeNormalizerWriteLeading( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT count )
{
    zuUnicodeNormalizerWriteInner( norm, src, 0, count );
}
void zuUnicodeNormalizerWriteTrailing( ZU_UNICODE_NORMALIZER *norm, ZU_STRING *src, ZU_INT count )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( src );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= zuStringLength( src ) );
    zuUnicodeNormalizerWriteInner( norm, src, zuStringLength( src ) - count, count );
}
void zuUnicodeNormalizerFlush( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_ASSERT( norm );
    zu___NormFinish( norm );
}
void zuUnicodeNormalizerClear( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_ASSERT( norm );
    norm->highSurrogate = 0;
    norm->pendingLength = 0;
    norm->starter = -1;
    norm->unsorted = false;
    norm->composeStart = 0;
    norm->lastStarter = 0;
    norm->lastRank = ZU___NORM_RANK_BEGIN;
    zuStringClear( &norm->reorder );
    zuStringClear( &norm->compose ); // null in the D forms, where this ends the process
}

// Reading

static inline ZU_STRING **normalizerOutput( ZU_UNICODE_NORMALIZER *norm )
{
    return norm->compose ? &norm->compose : &norm->reorder;
}
// Removes the first `count` characters of the output.  What is left is moved once as much has been read: that keeps the
// cost of a character constant, however small the reads are.
static void normalizerDropRead( ZU_UNICODE_NORMALIZER *norm, ZU_INT count )
{
    ZU_STRING *output = *normalizerOutput( norm );
    if ( count == 0 ) {
        return;
    }
    output->length -= count;
    output->fspace += count;
    if ( norm->compose ) {
        norm->composeStart -= count;
    }
    if ( output->fspace > output->length ) {
        zu___StringCompact( output );
    }
}

ZU_INT zuUnicodeNormalizerReadable( ZU_UNICODE_NORMALIZER *norm )
{
    ZU_ASSERT( norm );
    return norm->compose ? norm->composeStart : norm->reorder->length;
}
ZU_INT zuUnicodeNormalizerRead( ZU_UNICODE_NORMALIZER *norm, ZU_STRING **dest, ZU_INT maxLen )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( dest );
    ZU_ASSERT( *dest );
    ZU_ASSERT( maxLen == -1 || maxLen >= 0 );
    ZU_INT readable = zuUnicodeNormalizerReadable( norm );
    ZU_INT count = maxLen == -1 ? readable : std::min( readable, maxLen );
    ZU_STRING **output = normalizerOutput( norm );
    if ( ( *dest )->length == 0 && count == ( *output )->length && count > ZU___STRING_INLINE_CHARS ) {
        // All of a long text: the string itself goes.
        ZU_REF_RELEASE( *dest );
        *dest = *output;
        *output = zuStringCreate();
        norm->composeStart = 0;
        zu___StringCompact( *dest );
        return count;
    }
    zuStringAppendInner( dest, *output, 0, count );
    normalizerDropRead( norm, count );
    return count;
}
ZU_INT zuUnicodeNormalizerReadChars( ZU_UNICODE_NORMALIZER *norm, ZU_CHAR *dest, ZU_INT destLen )
{
    ZU_ASSERT( norm );
    ZU_ASSERT( destLen >= 0 );
    ZU_ASSERT( dest || destLen == 0 );
    ZU_INT count = std::min( zuUnicodeNormalizerReadable( norm ), destLen );
    if ( count > 0 ) {
        memcpy( dest, zuStringBacking( *normalizerOutput( norm ) ), (size_t)count * sizeof( ZU_CHAR ) );
    }
    normalizerDropRead( norm, count );
    return count;
}
