// zu_vector_internal.h: the inside of ZU_VECTOR, for the files that share it.
#pragma once

#include "zu/base/zu_slack_internal.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

// Items that live in the object.
#define ZU___VECTOR_INLINE_ITEMS ( (ZU_INT)64 )

// The items are the `length` elements of `items` from `fspace` on, none of them null; `bspace` free slots follow.
struct ZU_VECTOR {
    ZU_OBJ obj;
    ZU_INT length;
    ZU_INT fspace;
    ZU_INT bspace;
    ZU_OBJ **items; // never null: inlineItems, or an array in the block
    union {
        ZU_OBJ *inlineItems[ ZU___VECTOR_INLINE_ITEMS ];
        ZU___SLACK_BLOCK block; // while there is an array
    };
};

// Opens a gap of `count` slots ahead of `atIndex` in a private vector, raises its length by `count` and returns the
// gap, which the caller fills with references.
ZU_OBJ **zu___VectorMakeRoom( ZU_VECTOR *vec, ZU_INT atIndex, ZU_INT count );

// Gives storage back after a private vector has shrunk; its items may move.
void zu___VectorCompact( ZU_VECTOR *vec );

// Replaces a shared vector by a private copy.
void zu___VectorUnshare( ZU_VECTOR **vec );

ZU_END_DECLS
