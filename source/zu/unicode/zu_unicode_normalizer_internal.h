// zu_unicode_normalizer_internal.h: the quick check, for who has whole texts; and what the two ways through the stages
// have in common.
#pragma once

#include "zu/base/zu_string_internal.h"
#include "zu/unicode/zu_unicode_normalizer.h"

ZU_BEGIN_DECLS

// Returns how many characters at the front are found to be in the form without changing anything.  If that is
// `chsLength`, the text is in the form; a text that is may get less.
ZU_INT zu___UnicodeNormalizerSettledLength( ZU_UNICODE_NORMAL_FORM form, const ZU_CHAR *chs, ZU_INT chsLength );

// Normalizes a text of at most ZU___NORM_SHORT_CHARS characters, stores the result at `dest`, which has room for
// ZU___NORM_SHORT_ROOM, and returns its length.
ZU_INT zu___UnicodeNormalizerApply( ZU_UNICODE_NORMAL_FORM form, ZU_CHAR *dest, const ZU_CHAR *chs, ZU_INT chsLength );

ZU_END_DECLS

static constexpr ZU_INT ZU___NORM_INLINE_ELEMENTS = 64; // more than any text has that means something
static constexpr ZU_INT ZU___NORM_SHORT_CHARS = 64;
static constexpr ZU_INT ZU___NORM_SHORT_ROOM = 20 * ZU___NORM_SHORT_CHARS; // more than is ever reserved; 5 KiB

struct ZU_UNICODE_NORMALIZER {
    ZU_OBJ obj;
    ZU_UNICODE_NORMAL_FORM normalForm;
    ZU_CHAR highSurrogate; // waits for its partner; 0: none

    // The last starter and what is behind it, or marks alone.  `starter` is not 0 only within the writing of a
    // character.
    ZU_INT pendingLength;
    ZU_INT pendingCapacity; // the array on the heap is twice as long, with room for sorting behind
    ZU_INT starter;         // where the last starter stands in `pending`; -1: there is none
    bool unsorted;          // `pending` may have marks out of order
    uint32_t *pending;      // inlinePending, or an array of zuMemAllocN
    uint32_t inlinePending[ ZU___NORM_INLINE_ELEMENTS ];

    ZU_STRING *reorder;  // the output of the D forms
    ZU_STRING *compose;  // the output of the C forms, whose part from composeStart on may still compose; else null
    ZU_INT composeStart; // where the current starter stands in `compose`, if it is below its length
    ZU_CHAR lastStarter; // the character there; 0 at the beginning
    uint32_t lastRank;   // the highest rank behind the starter
};

// Makes `*output` a string of the normalizer alone, with room for `count` characters at the end.
void zu___NormGrowOutput( ZU_STRING **output, ZU_INT count );
// Asserts that nothing waits: what comes next is not joined to anything that has been written.
void zu___NormAssertSettled( ZU_UNICODE_NORMALIZER *norm );

// The room behind a normalizer's output.  Whoever writes there has the cursor in hand, in a register where it matters,
// and gives it back: what has been written beyond the room is found out then.
class zu___NormOutput {
public:
    explicit zu___NormOutput( ZU_UNICODE_NORMALIZER *norm ) : string( norm->compose ? &norm->compose : &norm->reorder )
    {
    }
    // Returns the end of the output, where there is room for `count` characters.
    ZU_CHAR *reserve( ZU_INT count )
    {
        if ( ZU___UNLIKELY( ( *string )->length == 0 || ( *string )->bspace < count ) ) {
            zu___NormGrowOutput( string, count );
        }
        ZU_CHAR *end = text() + ( *string )->length;
        limit = end + ( *string )->bspace;
        return end;
    }
    // Tells whether there is room for `count` characters at the cursor.
    bool fits( const ZU_CHAR *cursor, ZU_INT count ) const
    {
        return limit - cursor >= count;
    }
    // Takes what has been written up to the cursor.
    void take( const ZU_CHAR *cursor )
    {
        ZU_ASSERT( cursor <= limit );
        ZU_INT count = cursor - ( text() + ( *string )->length );
        ( *string )->length += count;
        ( *string )->bspace -= count;
    }
    ZU_CHAR *text() const
    {
        return ( *string )->chars + ( *string )->fspace;
    }

private:
    ZU_STRING **string;
    const ZU_CHAR *limit = nullptr;
};

// One character at a time: takes those from `at` to `end`.
void zu___NormPutChars( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *at, const ZU_CHAR *end );
// Settles all that has been written.
void zu___NormFinish( ZU_UNICODE_NORMALIZER *norm );

// Whole stretches: takes characters from `at` on, as many as can be taken so, and returns where it goes on.
const ZU_CHAR *zu___NormPutStretches( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *at, const ZU_CHAR *end );
// Whole stretches up to the end, behind which nothing comes that is joined to them.
void zu___NormPutWhole( ZU_UNICODE_NORMALIZER *norm, const ZU_CHAR *at, const ZU_CHAR *end );
