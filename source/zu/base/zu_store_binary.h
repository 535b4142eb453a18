// zu_store_binary.h: stores in the binary form of ZU_ENCODER and ZU_DECODER, for machines.
//
//     Store            how many addresses there are as Int, then for each of them, in ascending order: the address as
//                      String, the value as Optional String, the sub-store as Optional Store
//     Optional Store   00 for null, 01 and the store for any other
//
// Reading is strict: an address that is none, or more than 100 levels of sub-stores, fails as a whole.  It takes entries
// in any order, of equal addresses the last, and drops one that has neither value nor sub-store.
#pragma once

#include "zu/base/zu_decoder.h"
#include "zu/base/zu_encoder.h"
#include "zu/base/zu_store.h"

ZU_BEGIN_DECLS

// Writing; any depth
/// Appends `store` to what `enc` has.
ZU_API void zuStoreBinaryEncodeToEncoder( ZU_STORE *store, ZU_ENCODER *enc );
/// Returns `store` as bytes.
ZU_API ZU_BUFFER *zuStoreBinaryEncodeToBuffer( ZU_STORE *store );

// Reading
/// Returns the store that comes next in `dec`; if that fails, null, with the decoder in the error state.
ZU_API ZU_STORE *zuStoreBinaryTryDecodeFromDecoder( ZU_DECODER *dec );
/// Returns the store that `buf` is; null if it is none, or none alone.
ZU_API ZU_STORE *zuStoreBinaryTryDecodeFromBuffer( ZU_BUFFER *buf );

// Stores as values beside those of zu_encoder.h and zu_decoder.h
/// Appends a store.
ZU_API void zuEncoderEncodeStore( ZU_ENCODER *enc, ZU_STORE *value );
/// Appends a store or null.
ZU_API void zuEncoderEncodeOptionalStore( ZU_ENCODER *enc, ZU_STORE *value );
/// Reads a store.
ZU_API ZU_BOOL zuDecoderTryDecodeStore( ZU_DECODER *dec, ZU_STORE **value );
/// Reads a store or null.
ZU_API ZU_BOOL zuDecoderTryDecodeOptionalStore( ZU_DECODER *dec, ZU_STORE **value );

ZU_END_DECLS
