// zu_string_compose.h: strings made of several: joined, repeated, with all occurrences of a text replaced.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

/// Returns a new string of the strings in `strings`, with `separator` between each two of them; an item of another class
/// aborts.  Each code point is copied once.
ZU_API ZU_STRING *zuStringCreateFromJoined( ZU_VECTOR *strings, ZU_STRING *separator );
/// Returns a new string of `count` times `src`; a negative count aborts.
ZU_API ZU_STRING *zuStringCreateFromRepeated( ZU_STRING *src, ZU_INT count );
/// Replaces each occurrence of `sub`, from the front on and without overlap, by `replacement`, and returns how many there
/// were.  An empty `sub` aborts.  `sub` and `replacement` may be the changed string.  Takes the time of one search and one
/// copy, and copies nothing if there is none.
ZU_API ZU_INT zuStringReplaceAll( ZU_STRING **zus, ZU_STRING *sub, ZU_STRING *replacement );

ZU_END_DECLS
