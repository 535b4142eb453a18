// zu_dict_cursor.h: walking over a dict without a reference for each key and value.
//
//     ZU_DICT_CURSOR cursor = zuDictCursor( dict );
//     while ( zuDictCursorNext( &cursor ) ) {
//         ... cursor.key, cursor.value ...
//     }
//
// A cursor holds nothing and needs no end.  The dict must live, and must not be changed through the variable that the
// cursor was made of, as long as the walk goes on; who wants to change it walks over a retained copy.  A step from a pair
// that does not stand there any more aborts.
#pragma once

#include "zu/base/zu_dict.h"

ZU_BEGIN_DECLS

typedef struct ZU_DICT_CURSOR {
    ZU_OBJ *key;   // of the pair that the last step has come to, borrowed
    ZU_OBJ *value; // likewise
    ZU_INT idx;    // the position of the pair, -1 ahead of the first step
    ZU_DICT *dict;
} ZU_DICT_CURSOR;

/// Returns a cursor ahead of the first pair.
ZU_API ZU_DICT_CURSOR zuDictCursor( ZU_DICT *dict );
/// Returns a cursor ahead of the first pair whose key is not less than `key`.
ZU_API ZU_DICT_CURSOR zuDictCursorFrom( ZU_DICT *dict, ZU_OBJ *key );
/// Goes on to the next pair, in ascending order of the keys; false, and null for key and value, if there is none.
ZU_API ZU_BOOL zuDictCursorNext( ZU_DICT_CURSOR *cursor );

ZU_END_DECLS
