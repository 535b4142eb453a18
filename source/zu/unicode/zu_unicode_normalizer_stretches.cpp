// Whole stretches of an array, which is the fast way: characters that the quick check of UAX #15 passes are copied as they
// are.  Others go through all stages on the spot, as long as marks come in order; if not, the few characters between two
// boundaries go through one stage after the other.
//
// As nothing interacts across a boundary, the result is the same as of the other way.  An array leaves its last two
// segments to that, so that what can be read afterwards is also what it would be after one character at a time: two, as
// a C form holds back two starters.

#include "zu/unicode/zu_unicode_normalizer_internal.h"
#include "zu/unicode/zu_unicode_normalizer_stages_internal.h"

#include <algorithm>

static constexpr ZU_INT SINGLES = 16;     // characters looked at one by one, ahead of more at a time
static constexpr ZU_INT SEGMENT_MAX = 64; // characters that are looked at together between two boundaries

// From this character on there may be some that do not pass the quick check on sight, by form.
static constexpr ZU_CHAR FIRST_TO_CHECK[] = { 0x300, 0xA0, 0xC0, 0xA0 };

// Where the way through a text has come to.
struct STRETCH {
    const ZU_CHAR *at;  // all ahead of it is settled, as far as nothing behind it interferes
    const ZU_CHAR *end; // a boundary, or the end of the text
    uint32_t lastRank;  // the rank of the last character ahead of `at`, decomposed
};

static inline bool charsAllBelow( const ZU_CHAR *chs, ZU_CHAR limit )
{
    return zu___NormIsZero( (ZU___CHARS_LANES)( zu___CharsLoadLanes( chs ) >= limit ) |
                            (ZU___CHARS_LANES)( zu___CharsLoadLanes( chs + 4 ) >= limit ) );
}

// Moves over all characters that stay as they are: that the quick check passes, with marks in order.  Where COPIES, the
// output has room for the whole text.
template <bool COPIES>
static inline __attribute__( ( always_inline ) ) void stretchSkipLocal( STRETCH &stretch, ZU_CHAR *&cursor,
                                                                        uint32_t work, ZU_CHAR firstToCheck )
{
    uint32_t marks = stretch.lastRank && stretch.at < stretch.end ? zu___NormRank( zu___NormEntry( *stretch.at ) ) : 0;
    stretch.lastRank = marks ? stretch.lastRank : 0;
    for ( ;; ) {
        // One by one: a few, as the next that needs something is often near.
        const ZU_CHAR *pause = stretch.end - stretch.at < SINGLES ? stretch.end : stretch.at + SINGLES;
        for ( ; stretch.at < pause && !marks; stretch.at++ ) {
            uint32_t entry = zu___NormEntry( *stretch.at );
            if ( entry & ( work | ZU___UNICODE_NORM_RANK ) ) {
                if ( entry & work ) {
                    return;
                }
                marks = 1;
                break;
            }
            if ( COPIES ) {
                *cursor++ = *stretch.at;
            }
        }
        // As long as there are marks, which come as they like, nothing is guessed about them.
        while ( marks && stretch.at < stretch.end ) {
            marks = 0;
            pause = stretch.end - stretch.at < SINGLES ? stretch.end : stretch.at + SINGLES;
            for ( ; stretch.at < pause; stretch.at++ ) {
                uint32_t entry = zu___NormEntry( *stretch.at );
                uint32_t rank = zu___NormRank( entry );
                if ( ( entry & work ) | ( ( rank != 0 ) & ( rank < stretch.lastRank ) ) ) {
                    return;
                }
                if ( COPIES ) {
                    *cursor++ = *stretch.at;
                }
                stretch.lastRank = rank;
                marks |= rank;
            }
        }
        const ZU_CHAR *begin = stretch.at;
        while ( stretch.end - stretch.at >= 8 ) {
            if ( charsAllBelow( stretch.at, firstToCheck ) ) {
                if ( COPIES ) {
                    memcpy( cursor, stretch.at, 8 * sizeof( ZU_CHAR ) );
                    cursor += 8;
                }
                stretch.at += 8;
            } else if ( !( zu___NormEntries( stretch.at ).any() & ( work | ZU___UNICODE_NORM_RANK ) ) ) {
                if ( COPIES ) {
                    memcpy( cursor, stretch.at, 4 * sizeof( ZU_CHAR ) );
                    cursor += 4;
                }
                stretch.at += 4;
            } else {
                break;
            }
        }
        if ( stretch.at != begin ) {
            stretch.lastRank = 0;
        }
        if ( stretch.at == stretch.end ) {
            break;
        }
    }
}
// The same on copies, which stay in registers: to a compiler, what is stored at the cursor may be the stretch.
template <bool COPIES>
static inline __attribute__( ( always_inline ) ) void stretchSkip( STRETCH &stretch, ZU_CHAR **cursor, uint32_t work,
                                                                   ZU_CHAR firstToCheck )
{
    STRETCH local = stretch;
    ZU_CHAR *localCursor = COPIES ? *cursor : nullptr;
    stretchSkipLocal<COPIES>( local, localCursor, work, firstToCheck );
    stretch = local;
    if ( COPIES ) {
        *cursor = localCursor;
    }
}

ZU_INT zu___UnicodeNormalizerSettledLength( ZU_UNICODE_NORMAL_FORM form, const ZU_CHAR *chs, ZU_INT chsLength )
{
    STRETCH stretch = { chs, chs + chsLength, 0 };
    stretchSkip<false>( stretch, nullptr, ZU___UNICODE_NORM_WORK << form, FIRST_TO_CHECK[ form ] );
    return stretch.at - chs;
}

// Returns the boundary behind the one at `at`, or `end`.
static inline const ZU_CHAR *boundaryBehind( const ZU_CHAR *at, const ZU_CHAR *end, uint32_t inner )
{
    do {
        at++;
    } while ( at < end && ( zu___NormEntry( *at ) & inner ) );
    return at;
}
// Returns the boundary ahead of `at`, where all in between are marks that are settled.
static inline const ZU_CHAR *boundaryAhead( const ZU_CHAR *at )
{
    do {
        at--;
    } while ( zu___NormEntry( *at ) & ZU___UNICODE_NORM_RANK );
    return at;
}

// Sends the characters from `boundary` to `next`, which are in trouble, through the stages in turn.
static void normalizerPutSegment( ZU_UNICODE_NORMALIZER *norm, const ZU___NORM_BITS &bits, const ZU_CHAR *boundary,
                                  const ZU_CHAR *next )
{
    uint32_t elements[ SEGMENT_MAX + ZU___NORM_DECOMPOSITION_MAX ];
    uint32_t scratch[ SEGMENT_MAX + ZU___NORM_DECOMPOSITION_MAX ];
    ZU_INT length = next - boundary <= SEGMENT_MAX ? 0 : -1; // -1: takes the other way
    for ( const ZU_CHAR *at = boundary; at < next && length >= 0; at++ ) {
        uint32_t entry = zu___NormEntry( *at );
        if ( length > SEGMENT_MAX || zu___NormIsStrange( *at, entry ) ) {
            length = -1;
            break;
        }
        uint32_t quick[ ZU___NORM_QUICK ];
        ZU___NORM_DECOMPOSITION decomposition = zu___NormDecompose( *at, entry, bits, quick );
        for ( ZU_INT i = 0; i < decomposition.length; i++ ) {
            elements[ length++ ] = decomposition.elements[ i ];
        }
    }
    if ( length >= 0 ) {
        zu___NormSort( elements, length, scratch );
        zu___NormOutput output( norm );
        ZU_CHAR *cursor = output.reserve( length );
        if ( norm->compose ) {
            ZU___NORM_COMPOSER composer = { cursor, cursor, 0, ZU___NORM_RANK_BEGIN };
            zu___NormComposeAll( composer, elements, length );
            output.take( composer.cursor );
        } else {
            output.take( zu___NormCopy( elements, length, cursor ) );
        }
        return;
    }
    if ( norm->compose ) {
        norm->composeStart = norm->compose->length;
    }
    zu___NormAssertSettled( norm );
    zu___NormPutChars( norm, boundary, next );
    zu___NormFinish( norm );
}

// Composes Hangul syllables, the first of which has its vowel at `at`.  Returns false if there are none.
static inline bool stretchComposeHangul( STRETCH &stretch, ZU_CHAR **output, uint32_t inner )
{
    const ZU_CHAR *at = stretch.at - 1;
    ZU_CHAR *cursor = *output - 1;
    while ( stretch.end - at > 3 && at[ 0 ] - ZU___NORM_HANGUL_L < ZU___NORM_HANGUL_LS &&
            at[ 1 ] - ZU___NORM_HANGUL_V < ZU___NORM_HANGUL_VS ) {
        ZU_CHAR t = at[ 2 ] - ZU___NORM_HANGUL_T;
        ZU_INT length = 2 + ( t < ZU___NORM_HANGUL_TS );
        if ( zu___NormEntry( at[ length ] ) & inner ) {
            break; // more than a syllable
        }
        *cursor++ = ZU___NORM_HANGUL_S +
                    ( ( at[ 0 ] - ZU___NORM_HANGUL_L ) * ZU___NORM_HANGUL_VS + ( at[ 1 ] - ZU___NORM_HANGUL_V ) ) *
                        ZU___NORM_HANGUL_TS +
                    ( length == 3 ? t : 0 );
        at += length;
    }
    if ( at < stretch.at ) {
        return false;
    }
    stretch.at = at;
    *output = cursor;
    return true;
}

// Sends the characters from `at` on through the stages on the spot, until there are two that need nothing.  Returns
// false if there are marks out of order, or anything else that wants more than that; `at` goes back to the boundary
// then.
static bool stretchCompose( STRETCH &stretch, ZU_CHAR **output, const ZU___NORM_BITS &bits )
{
    const ZU_CHAR *at = stretch.at;
    uint32_t needs = bits.work | bits.inner;
    uint32_t next = zu___NormEntry( *at );
    const ZU_CHAR *boundary = next & bits.inner ? boundaryAhead( at ) : at;
    uint32_t entry = zu___NormEntry( *boundary );
    ZU___NORM_COMPOSER composer = { *output, *output, 0, ZU___NORM_RANK_BEGIN };
    uint32_t lastRank = stretch.lastRank;
    ZU_CHAR *cursorAtBoundary = *output - ( at - boundary );
    bool inOrder = true;
    if ( next & bits.inner ) {
        composer = { *output, cursorAtBoundary, *boundary, lastRank };
        inOrder = !( entry & bits.decomposes ) || ( entry & ZU___UNICODE_NORM_HANGUL );
    }
    while ( inOrder ) {
        entry = next;
        ZU_CHAR ch = *at;
        if ( !( entry & bits.inner ) ) {
            boundary = at;
            cursorAtBoundary = composer.cursor;
            lastRank = 0;
        } else if ( zu___NormIsStrange( ch, entry ) || at - boundary >= SEGMENT_MAX ) {
            inOrder = false;
            break;
        }
        uint32_t quick[ ZU___NORM_QUICK ] = { zu___NormElement( ch, entry ) };
        ZU___NORM_DECOMPOSITION decomposition = { quick, 1 };
        if ( entry & bits.work ) {
            decomposition = zu___NormDecompose( ch, entry, bits, quick );
        }
        for ( ZU_INT i = 0; i < decomposition.length; i++ ) {
            uint32_t element = decomposition.elements[ i ];
            uint32_t rank = zu___NormRank( element );
            inOrder = inOrder && ( rank == 0 || rank >= lastRank );
            lastRank = rank;
            zu___NormCompose( composer, element );
        }
        // What passes the quick check is not decomposed, but may have marks that others would go ahead of.
        if ( ( entry & ( bits.work | bits.decomposes | ZU___UNICODE_NORM_HANGUL ) ) == bits.decomposes ) {
            lastRank = ZU___NORM_RANK_BEGIN;
        }
        at++;
        next = at < stretch.end ? zu___NormEntry( *at ) : 0;
        if ( at == stretch.end ||
             ( !( next & bits.inner ) && ( at - stretch.at >= SEGMENT_MAX || !( ( entry | next ) & needs ) ) ) ) {
            break;
        }
    }
    stretch.at = inOrder ? at : boundary;
    *output = inOrder ? composer.cursor : cursorAtBoundary;
    stretch.lastRank = 0;
    return inOrder;
}

// Returns how many characters `count` ones need room for: as many, and what two segments may add meanwhile.
static inline ZU_INT stretchRoom( ZU_INT count )
{
    return count + std::min( count, 2 * SEGMENT_MAX ) * ZU___NORM_DECOMPOSITION_MAX;
}

// Takes the characters from the boundary `begin` to the boundary `end`; nothing waits.
template <bool COMPOSES>
static void normalizerPutSettled( ZU_UNICODE_NORMALIZER *norm, const ZU___NORM_BITS &bits, const ZU_CHAR *begin,
                                  const ZU_CHAR *end )
{
    zu___NormAssertSettled( norm );
    const ZU_CHAR firstToCheck = FIRST_TO_CHECK[ norm->normalForm ];
    ZU_INT growth = COMPOSES ? 0 : ( end - begin ) / 2; // as much as most decomposed texts need
    STRETCH stretch = { begin, end, 0 };
    zu___NormOutput output( norm );
    ZU_CHAR *cursor = output.reserve( stretchRoom( end - begin ) + growth );
    for ( ;; ) {
        stretchSkip<true>( stretch, &cursor, bits.work, firstToCheck );
        if ( stretch.at == end ) {
            break;
        }
        bool done = true;
        if ( COMPOSES ) {
            done = ( *stretch.at - ZU___NORM_HANGUL_V < ZU___NORM_HANGUL_VS &&
                     stretchComposeHangul( stretch, &cursor, bits.inner ) ) ||
                   stretchCompose( stretch, &cursor, bits );
        } else {
            uint32_t entry = zu___NormEntry( *stretch.at );
            uint32_t quick[ ZU___NORM_QUICK ];
            if ( entry & bits.inner ) {
                const ZU_CHAR *boundary = boundaryAhead( stretch.at );
                cursor -= stretch.at - boundary - 1;
                cursor -= zu___NormDecompose( *boundary, zu___NormEntry( *boundary ), bits, quick ).length;
                stretch.at = boundary;
                done = false;
            } else {
                ZU___NORM_DECOMPOSITION decomposition = zu___NormDecompose( *stretch.at, entry, bits, quick );
                for ( ZU_INT i = 0; i < ZU___NORM_QUICK; i++ ) {
                    cursor[ i ] = zu___NormChar( decomposition.elements[ i ] );
                }
                if ( decomposition.length > ZU___NORM_QUICK ) {
                    zu___NormCopy( decomposition.elements, decomposition.length, cursor );
                }
                cursor += decomposition.length;
                stretch.lastRank = zu___NormRank( decomposition.elements[ decomposition.length - 1 ] );
                stretch.at++;
            }
        }
        if ( !done ) {
            output.take( cursor );
            const ZU_CHAR *boundary = stretch.at;
            stretch.at = boundaryBehind( boundary, end, bits.inner );
            normalizerPutSegment( norm, bits, boundary, stretch.at );
            stretch.lastRank = 0;
            cursor = output.reserve( 0 );
        }
        // A round writes what it skips, and of the rest at most two segments, each of which decomposes: for them there
        // was room ahead of the round, and here there is for the next.
        if ( ZU___UNLIKELY( !output.fits( cursor, stretchRoom( end - stretch.at ) ) ) ) {
            output.take( cursor );
            cursor = output.reserve( 2 * stretchRoom( end - stretch.at ) );
        }
    }
    output.take( cursor );
    if ( COMPOSES ) {
        norm->composeStart = norm->compose->length;
    }
}

// Returns the boundary behind which there is only one more; `begin` if there is none.
static const ZU_CHAR *lastBoundaryButOne( const ZU_CHAR *begin, const ZU_CHAR *end, uint32_t inner )
{
    for ( int boundaries = 0; end > begin; ) {
        end--;
        if ( !( zu___NormEntry( *end ) & inner ) && ++boundaries == 2 ) {
            return end;
        }
        while ( end - begin >= 4 && ( zu___NormEntries( end - 4 ).all() & inner ) ) {
            end -= 4;
        }
    }
    return begin;
}

// Takes the characters up to `settled`, a boundary or where the text ends for good.  Returns `at` if no boundary is ahead
// of that.
static const ZU_CHAR *normalizerPutUpTo( ZU_UNICODE_NORMALIZER *norm, const ZU___NORM_BITS &bits, const ZU_CHAR *at,
                                         const ZU_CHAR *settled )
{
    const ZU_CHAR *boundary = at;
    while ( boundary < settled && ( zu___NormEntry( *boundary ) & bits.inner ) ) {
        boundary++;
    }
    if ( boundary == settled ) {
        return at;
    }
    zu___NormPutChars( norm, at, boundary );
    zu___NormFinish( norm );
    (norm->compose ? normalizerPutSettled<true> : normalizerPutSettled<false>)( norm, bits, boundary, settled );
    return settled;
}
const ZU_CHAR *zu___NormPutStretches( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *at, const ZU_CHAR *end )
{
    ZU___NORM_BITS bits( norm->normalForm );
    return normalizerPutUpTo( norm, bits, at, lastBoundaryButOne( at, end, bits.inner ) );
}
void zu___NormPutWhole( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *at, const ZU_CHAR *end )
{
    zu___NormPutChars( norm, normalizerPutUpTo( norm, ZU___NORM_BITS( norm->normalForm ), at, end ), end );
}
