#include "zu/io/zu_string_char_sink.h"

#include "zu/runtime/zu_module.h"

struct ZU_STRING_CHAR_SINK {
    ZU_OBJ obj;
    ZU_STRING *dest; // what has been written since it was handed over last; never null
};

static void stringCharSinkFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_STRING_CHAR_SINK =
    ZU___SORT_INITIALIZER( "ZU_STRING_CHAR_SINK", &zu___module, stringCharSinkFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_STRING_CHAR_SINK, zuStringCharSink )

ZU_STRING_CHAR_SINK *zuStringCharSinkCreate( void )
{
    ZU_STRING_CHAR_SINK *scs =
        (ZU_STRING_CHAR_SINK *)zu___ObjCreate( sizeof( ZU_STRING_CHAR_SINK ), &zu___sort_ZU_STRING_CHAR_SINK );
    scs->dest = zuStringCreate();
    return scs;
}
static void stringCharSinkFree( ZU_OBJ *thisObj )
{
    ZU_STRING_CHAR_SINK *scs = zuStringCharSinkFrom( thisObj );
    ZU_ASSERT( scs );
    ZU_REF_RELEASE( scs->dest );
    ZU_REF_POISON( scs->dest );
}

// The functions of the sinks
static ZU_BOOL stringCharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    ZU_STRING_CHAR_SINK *scs = zuStringCharSinkFrom( closure );
    ZU_ASSERT( scs );
    zuStringAppendChars( &scs->dest, chars, charCount );
    return ZU_TRUE;
}
static ZU_BOOL stringCharSinkFlush( ZU_OBJ *closure )
{
    (void)closure;
    return ZU_TRUE;
}

ZU_CHAR_SINK *zuStringCharSinkCharSink( ZU_STRING_CHAR_SINK *scs )
{
    ZU_ASSERT( scs );
    return zu___CharSinkCreate( stringCharSinkWrite, stringCharSinkFlush, zuStringCharSinkObj( scs ) );
}
ZU_STRING *zuStringCharSinkString( ZU_STRING_CHAR_SINK *scs )
{
    ZU_ASSERT( scs );
    ZU_STRING *collected = scs->dest;
    scs->dest = zuStringCreate();
    return collected;
}
