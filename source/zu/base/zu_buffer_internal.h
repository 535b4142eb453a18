// zu_buffer_internal.h: the inside of ZU_BUFFER, for the files that share it.
#pragma once

#include "zu/base/zu_buffer.h"

ZU_BEGIN_DECLS

// The content is the `bitLength` bits of `bytes` from bit `bitFspace` on; `bitBspace` free bits follow, and the three
// together are the storage.  Whatever the low bits of a last byte hold that belong to no content, nothing depends on
// it.  Storage of the buffer's own lies anywhere in a block.
struct ZU_BUFFER {
    ZU_OBJ obj;
    ZU___INT_UNSIGNED bitLength; // at most ZU_INT_MAX
    ZU___INT_UNSIGNED bitFspace; // a multiple of 8, but after the one insertion that zu_buffer.h tells of
    ZU___INT_UNSIGNED bitBspace;
    uint8_t *bytes;             // null while there is no storage
    uint8_t *block;             // of zuMemAlloc; null while there is no storage, and if it is foreign
    ZU___INT_UNSIGNED capacity; // bytes that the block has
    ZU_OBJ *ref;                // keeps foreign storage, which is never written, resized or freed; null: it is ours
};

ZU_END_DECLS
