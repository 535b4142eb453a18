// zu_slack_internal.h: the storage of sequences that grow and shrink at both ends, for the classes that consist of one.
//
// Such a class keeps its elements with free space ahead of and behind them, in a room inside the object or in an array
// on the heap.  How much free space there is after each change is part of the class's contract, and goes by constants.
// If the array were exchanged whenever that says so, a queue or a stack of n elements would cost some n * n / 64 moves;
// so the block that it lies in may be larger, by a reserve in proportion to the length, and the array mostly moves
// within the block by moving its bounds alone.
#pragma once

#include "zu/runtime/zu_obj_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

// The block on the heap that an array lies in.
struct ZU___SLACK_BLOCK {
    void *start;  // of zuMemAllocN
    ZU_INT slots; // elements that it has room for
};

// Operations on an object of the class OWNER, which has these fields:
//
//     ZU_INT length, fspace, bspace            elements in use, and free ones ahead of and behind them
//     ELEMENT *elements                        the first free element: inlineElements, or an array in the block
//     union {
//         ELEMENT inlineElements[ n ]          the room inside the object
//         ZU___SLACK_BLOCK block               while there is an array
//     }
//
// Elements are plain data, and what they refer to is the class's.  The object is private to the caller.  Nothing is
// checked here: sums of lengths are the class's to check, so that the failed expression is one of its own.
template <typename OWNER, typename ELEMENT, ZU_INT INLINE, ELEMENT *OWNER::*ELEMENTS,
          ELEMENT ( OWNER::*INLINE_ELEMENTS )[ INLINE ]>
struct zu___Slack {
    static constexpr ZU_INT FRONT = 32; // free elements at both ends of an array that has been replaced
    static constexpr ZU_INT BACK = 32;
    static constexpr ZU_INT FREE_MAX = FRONT + BACK; // free elements at one end that a deletion leaves
    static constexpr ZU_INT RESERVE_DIVISOR = 2;     // of the length: what a block that is too small grows by
    static constexpr ZU_INT BLOCK_MAX = 3;           // times the array's size: what a deletion leaves of the block
    static_assert( sizeof( ZU___SLACK_BLOCK ) <= INLINE * sizeof( ELEMENT ) );

    static ELEMENT *first( OWNER *owner )
    {
        return owner->*ELEMENTS + owner->fspace;
    }
    // Tells whether the memory at `place` is that of an element in use.
    static bool holds( OWNER *owner, const ELEMENT *place )
    {
        return (uintptr_t)place - (uintptr_t)first( owner ) < (uintptr_t)owner->length * sizeof( ELEMENT );
    }
    static bool isInline( OWNER *owner )
    {
        return owner->*ELEMENTS == owner->*INLINE_ELEMENTS;
    }
    static void copy( ELEMENT *dest, const ELEMENT *src, ZU_INT count )
    {
        if ( count > 0 ) {
            memcpy( dest, src, (size_t)count * sizeof( ELEMENT ) );
        }
    }
    static void move( ELEMENT *dest, const ELEMENT *src, ZU_INT count )
    {
        if ( count > 0 && dest != src ) {
            memmove( dest, src, (size_t)count * sizeof( ELEMENT ) );
        }
    }

    // Makes an empty sequence of a new object.
    static void initialize( OWNER *owner, ZU_INT fspace )
    {
        owner->length = 0;
        owner->fspace = fspace;
        owner->bspace = INLINE - fspace;
        owner->*ELEMENTS = owner->*INLINE_ELEMENTS;
    }
    // Makes a sequence that takes over an array of zuMemAllocN without free elements.
    static void adopt( OWNER *owner, ELEMENT *elements, ZU_INT length )
    {
        owner->length = length;
        owner->fspace = 0;
        owner->bspace = 0;
        owner->*ELEMENTS = elements;
        owner->block = { elements, length };
        declareSize( owner, length );
    }
    // Frees the storage.
    static void finalize( OWNER *owner )
    {
        if ( !isInline( owner ) ) {
            zuMemFree( owner->block.start );
            declareSize( owner, 0 );
        }
        ZU_REF_POISON( owner->*ELEMENTS );
    }

    // Room for `count` elements ahead of the first, behind the last, and ahead of the one at `atIndex`.  The take forms
    // use free elements and tell whether there were enough; if not, the grow forms get more.  Fspace and bspace are
    // set, and the length is not yet raised.
    static bool takeAtFront( OWNER *owner, ZU_INT count )
    {
        if ( ZU___LIKELY( owner->fspace >= count ) ) {
            owner->fspace -= count;
            return true;
        }
        if ( owner->fspace + owner->bspace < count ) {
            return false;
        }
        if ( isInline( owner ) ) {
            move( owner->*ELEMENTS + count, first( owner ), owner->length );
        } else {
            place( owner, owner->fspace + owner->length + owner->bspace, count );
        }
        owner->bspace = owner->fspace + owner->bspace - count;
        owner->fspace = 0;
        return true;
    }
    [[gnu::noinline]] static void growAtFront( OWNER *owner, ZU_INT count )
    {
        replace( owner, FRONT + owner->length + count + BACK, count + FRONT );
        owner->fspace = FRONT;
        owner->bspace = BACK;
    }
    // Only elements inside the object move to the front for room behind them: an array keeps the free space ahead of
    // its elements for who prepends.
    static bool takeAtEnd( OWNER *owner, ZU_INT count )
    {
        if ( ZU___LIKELY( owner->bspace >= count ) ) {
            owner->bspace -= count;
            return true;
        }
        if ( owner->fspace + owner->bspace < count || !isInline( owner ) ) {
            return false;
        }
        move( owner->*ELEMENTS, first( owner ), owner->length );
        owner->bspace = owner->fspace + owner->bspace - count;
        owner->fspace = 0;
        return true;
    }
    [[gnu::noinline]] static void growAtEnd( OWNER *owner, ZU_INT count )
    {
        replace( owner, owner->fspace + owner->length + count + BACK, owner->fspace );
        owner->bspace = BACK;
    }
    // Does what growAtEnd would do, if it takes no more than moving a bound within the block; tells whether it does.
    static bool growInBlock( OWNER *owner, ZU_INT count )
    {
        if ( isInline( owner ) ) {
            return false;
        }
        ZU_INT ahead = first( owner ) - (ELEMENT *)owner->block.start;
        if ( count > owner->block.slots - ahead - owner->length - BACK ) {
            return false;
        }
        owner->bspace = BACK;
        declareSize( owner, owner->fspace + owner->length + count + BACK );
        return true;
    }
    [[gnu::noinline]] static bool takeInside( OWNER *owner, ZU_INT atIndex, ZU_INT count )
    {
        ELEMENT *head = first( owner );
        ELEMENT *tail = head + atIndex;
        ZU_INT tailLength = owner->length - atIndex;
        if ( owner->bspace >= count ) {
            move( tail + count, tail, tailLength );
            owner->bspace -= count;
            return true;
        }
        if ( owner->fspace + owner->bspace < count ) {
            return false;
        }
        owner->fspace = owner->fspace + owner->bspace - count;
        move( first( owner ), head, atIndex );
        move( tail + owner->bspace, tail, tailLength );
        owner->bspace = 0;
        return true;
    }
    [[gnu::noinline]] static void growInside( OWNER *owner, ZU_INT atIndex, ZU_INT count )
    {
        replace( owner, FRONT + owner->length + count + BACK, FRONT );
        owner->fspace = FRONT;
        owner->bspace = BACK;
        ELEMENT *tail = first( owner ) + atIndex;
        move( tail + count, tail, owner->length - atIndex );
    }

    // Divides the free elements of an empty sequence between both ends, and keeps the storage.
    static void center( OWNER *owner )
    {
        ZU_INT all = owner->fspace + owner->bspace;
        owner->fspace = all / 2;
        owner->bspace = all - owner->fspace;
    }

    // Gives storage back after a deletion, if there is much of it; the elements may move.
    static void compact( OWNER *owner )
    {
        if ( ZU___UNLIKELY( owner->fspace > FREE_MAX || owner->bspace > FREE_MAX ) ) {
            compactArray( owner );
        }
    }

private:
    [[gnu::noinline]] static void compactArray( OWNER *owner )
    {
        if ( isInline( owner ) ) {
            return; // only ever with free space within the bound
        }
        if ( owner->length <= INLINE ) {
            void *start = owner->block.start; // which the elements overwrite
            copy( owner->*INLINE_ELEMENTS, first( owner ), owner->length );
            zuMemFree( start );
            owner->*ELEMENTS = owner->*INLINE_ELEMENTS;
            owner->fspace = 0;
            owner->bspace = INLINE - owner->length;
            declareSize( owner, 0 );
            return;
        }
        ZU_INT capacity = FRONT + owner->length + BACK;
        if ( owner->block.slots / BLOCK_MAX > capacity ) {
            exchangeBlock( owner, capacity, 0, FRONT );
        } else {
            place( owner, capacity, FRONT );
        }
        owner->fspace = FRONT;
        owner->bspace = BACK;
        declareSize( owner, capacity );
    }

    static void declareSize( OWNER *owner, ZU_INT capacity )
    {
        zu___ObjDeclareAllocationSizePrivate( &owner->obj, capacity * (ZU_INT)sizeof( ELEMENT ) ); // which is there
    }

    // Replaces the room or the array by an array of `capacity` elements, and moves the elements to element `at` of it.
    static void replace( OWNER *owner, ZU_INT capacity, ZU_INT at )
    {
        if ( isInline( owner ) ) {
            ELEMENT *elements = (ELEMENT *)zuMemAllocN( capacity, sizeof( ELEMENT ) );
            copy( elements + at, first( owner ), owner->length );
            owner->*ELEMENTS = elements;
            owner->block = { elements, capacity };
        } else {
            place( owner, capacity, at );
        }
        declareSize( owner, capacity );
    }

    // Lays the array anew, with `capacity` elements in all and those in use from element `at` of it on.  None of them
    // moves if the block has room around them; otherwise so much is gained that moving them all pays.
    [[gnu::noinline]] static void place( OWNER *owner, ZU_INT capacity, ZU_INT at )
    {
        ELEMENT *start = (ELEMENT *)owner->block.start;
        ZU_INT ahead = first( owner ) - start;      // slots of the block ahead of the first element
        ZU_INT behind = owner->block.slots - ahead; // slots from the first element on
        ZU_INT spare = owner->block.slots - capacity;
        ZU_INT reserve = owner->length / RESERVE_DIVISOR;
        bool frontFits = ahead >= at;
        if ( frontFits && behind >= capacity - at ) {
            owner->*ELEMENTS = first( owner ) - at;
        } else if ( spare >= reserve || capacity < owner->fspace + owner->length + owner->bspace ) {
            // A queue that has walked to the end of its block starts again, not quite at the other end: not every user
            // of both ends is a queue.
            ELEMENT *elements = start + ( frontFits ? spare / 4 : spare - spare / 4 );
            move( elements + at, first( owner ), owner->length );
            owner->*ELEMENTS = elements;
        } else if ( frontFits ) {
            ZU_INT slots = zuIntAddSaturating( ahead - at, zuIntAddSaturating( capacity, reserve ) );
            owner->block = { zuMemReallocN( start, slots, sizeof( ELEMENT ) ), slots };
            owner->*ELEMENTS = (ELEMENT *)owner->block.start + ( ahead - at );
        } else {
            exchangeBlock( owner, zuIntAddSaturating( capacity, reserve ), reserve, at );
        }
    }

    // Exchanges the block for one of `slots` elements, and moves the array to slot `arrayAt` of it and the elements in
    // use to element `at` of that.
    static void exchangeBlock( OWNER *owner, ZU_INT slots, ZU_INT arrayAt, ZU_INT at )
    {
        ELEMENT *start = (ELEMENT *)zuMemAllocN( slots, sizeof( ELEMENT ) );
        copy( start + arrayAt + at, first( owner ), owner->length );
        zuMemFree( owner->block.start );
        owner->block = { start, slots };
        owner->*ELEMENTS = start + arrayAt;
    }
};
