// zu_reserve.h: room for what is going to be added.
//
// Strings, vectors, buffers and dicts grow by themselves, in steps that are in proportion to what they hold.  Whoever
// knows how much will come spares them the steps: what is reserved is appended without memory being asked for, or
// anything moved.  The content stays as it is; a shared value is exchanged for a private copy, as for any change.  The
// room lasts until something is deleted, which gives back what there is too much of, or the value is copied.  A sum of
// lengths beyond ZU_INT_MAX aborts.
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_dict.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

/// Makes room for `count` more elements behind the text.
ZU_API void zuStringReserve( ZU_STRING **zus, ZU_INT count );
/// Makes room for `count` more items behind the last one.
ZU_API void zuVectorReserve( ZU_VECTOR **vec, ZU_INT count );
/// Makes room for `byteCount` more bytes behind the content.
ZU_API void zuBufferReserve( ZU_BUFFER **buf, ZU_INT byteCount );
/// Makes room for `count` more pairs, wherever their keys belong.  Pairs behind a new one move still, and once the dict
/// lays them out anew, when the first one goes in ahead of more than a thousand; that takes over what is reserved.
ZU_API void zuDictReserve( ZU_DICT **dict, ZU_INT count );

ZU_END_DECLS
