// zu_string_internal.h: the inside of ZU_STRING, for the files that share it.
#pragma once

#include "zu/base/zu_slack_internal.h"
#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

// Elements that live in the object.
#define ZU___STRING_INLINE_CHARS ( (ZU_INT)64 )

// The text is the `length` elements of `chars` from `fspace` on; `bspace` free elements follow.
struct ZU_STRING {
    ZU_OBJ obj;
    ZU_INT length;
    ZU_INT fspace;
    ZU_INT bspace;
    ZU_CHAR *chars; // never null: inlineChars, or an array in the block
    union {
        ZU_CHAR inlineChars[ ZU___STRING_INLINE_CHARS ];
        ZU___SLACK_BLOCK block; // while there is an array
    };
};

// Returns a new, private, empty string.
ZU_STRING *zu___StringCreateEmpty( void );

// Opens a gap of `count` elements ahead of `atIndex` in a private string, raises its length by `count` and returns the
// gap, which the caller fills.
ZU_CHAR *zu___StringMakeRoom( ZU_STRING *zus, ZU_INT atIndex, ZU_INT count );

// Gives storage back after a private string has shrunk; its text may move.
void zu___StringCompact( ZU_STRING *zus );

// Replaces a shared string by a private copy.
void zu___StringUnshare( ZU_STRING **zus );

ZU_END_DECLS
