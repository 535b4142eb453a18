// zu_charset_closure_internal.h: the caches between a codec and its byte stream.
//
// The byte stream sees large writes and reads only; how large is part of the contract of each codec.
#pragma once

#include "zu/charset/zu_charset_flags.h"
#include "zu/io/zu_byte_sink.h"
#include "zu/io/zu_byte_source.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_sort.h"

// Defines the sort of a closure, which nobody outside its source file meets, and its checked downcast <prefix>From;
// <prefix>Free stands ahead of it.
#define ZU___CHARSET_CLOSURE( type, prefix )                                                                        \
    static ZU_SORT zu___sort_##type = ZU___SORT_INITIALIZER( #type, &zu___module, prefix##Free, nullptr, nullptr ); \
    ZU___STDFUNCS_PRIVATE( type, prefix )

// Bytes on their way to a byte sink
static constexpr ZU_INT ZU___CHARSET_OUTPUT_BYTES = 1024; // the most that a codec collects,
static constexpr ZU_INT ZU___CHARSET_OUTPUT_SLACK = 4;    // and a character that it may put in before it looks
struct ZU___CHARSET_OUTPUT {
    ZU_BYTE_SINK *byteSink; // retained
    ZU_INT used;            // bytes that wait
    uint8_t bytes[ ZU___CHARSET_OUTPUT_BYTES + ZU___CHARSET_OUTPUT_SLACK ];
};

static inline void zu___CharsetOutputBegin( ZU___CHARSET_OUTPUT *output, ZU_BYTE_SINK *byteSink )
{
    output->byteSink = nullptr;
    output->byteSink = zuByteSinkRetain( byteSink );
    output->used = 0;
}
static inline void zu___CharsetOutputEnd( ZU___CHARSET_OUTPUT *output )
{
    ZU_REF_RELEASE( output->byteSink );
    ZU_REF_POISON( output->byteSink );
}
// Hands over what waits; it is gone also if the sink fails.
static inline ZU_BOOL zu___CharsetOutputFlush( ZU___CHARSET_OUTPUT *output )
{
    if ( output->used < 1 ) {
        return ZU_TRUE;
    }
    ZU_BOOL ok = zuByteSinkWriteBytes( output->byteSink, output->bytes, output->used );
    output->used = 0;
    return ok;
}

// Bytes on their way from a byte source
static constexpr ZU_INT ZU___CHARSET_INPUT_BYTES = 1024; // the size of each read
struct ZU___CHARSET_INPUT {
    ZU_BYTE_SOURCE *byteSource; // retained
    ZU_INT length;              // bytes in the cache,
    ZU_INT pos;                 // of which so many are taken
    uint8_t bytes[ ZU___CHARSET_INPUT_BYTES ];
};

static inline void zu___CharsetInputBegin( ZU___CHARSET_INPUT *input, ZU_BYTE_SOURCE *byteSource )
{
    input->byteSource = nullptr;
    input->byteSource = zuByteSourceRetain( byteSource );
    input->length = 0;
    input->pos = 0;
}
static inline void zu___CharsetInputEnd( ZU___CHARSET_INPUT *input )
{
    ZU_REF_RELEASE( input->byteSource );
    ZU_REF_POISON( input->byteSource );
}
// Reads on if the cache is used up; false if nothing came.
static inline bool zu___CharsetInputReady( ZU___CHARSET_INPUT *input )
{
    if ( input->pos == input->length ) {
        input->pos = 0;
        input->length = zuByteSourceReadBytes( input->byteSource, input->bytes, ZU___CHARSET_INPUT_BYTES );
    }
    return input->length > 0;
}
