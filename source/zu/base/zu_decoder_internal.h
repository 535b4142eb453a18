// zu_decoder_internal.h: how values that are objects leave a decoder, for the files that read such.
#pragma once

#include "zu/base/zu_decoder.h"

// Releases the reference in `*value` and makes it null; `value` may be null.
template <typename OBJECT>
static inline void zu___DecoderClear( OBJECT **value )
{
    if ( value && *value ) {
        OBJECT *old = *value;
        *value = nullptr;
        ZU_REF_RELEASE( old );
    }
}
// Stores the reference `taken`, which may be null, or gives it up if `value` is null; tells whether there was one.
template <typename OBJECT>
static inline ZU_BOOL zu___DecoderDeliver( OBJECT **value, OBJECT *taken )
{
    if ( taken && value ) {
        *value = taken;
    } else {
        ZU_REF_RELEASE_OPT( taken );
    }
    return taken != nullptr;
}
