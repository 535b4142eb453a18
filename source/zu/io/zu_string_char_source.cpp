#include "zu/io/zu_string_char_source.h"

#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_mem.h"

struct ZU_STRING_CHAR_SOURCE {
    ZU_OBJ obj;
    ZU_STRING *src;
    ZU_INT offset; // of the next code point, 0 <= offset <= length of src
};

static void stringCharSourceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_STRING_CHAR_SOURCE =
    ZU___SORT_INITIALIZER( "ZU_STRING_CHAR_SOURCE", &zu___module, stringCharSourceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_STRING_CHAR_SOURCE, zuStringCharSource )

ZU_STRING_CHAR_SOURCE *zuStringCharSourceCreate( ZU_STRING *src )
{
    ZU_ASSERT( src );
    ZU_STRING_CHAR_SOURCE *scs =
        (ZU_STRING_CHAR_SOURCE *)zu___ObjCreate( sizeof( ZU_STRING_CHAR_SOURCE ), &zu___sort_ZU_STRING_CHAR_SOURCE );
    scs->src = zuStringRetain( src );
    scs->offset = 0;
    return scs;
}
static void stringCharSourceFree( ZU_OBJ *thisObj )
{
    ZU_STRING_CHAR_SOURCE *scs = zuStringCharSourceFrom( thisObj );
    ZU_ASSERT( scs );
    ZU_REF_RELEASE( scs->src );
    ZU_REF_POISON( scs->src );
}

// The function of the sources
static ZU_BOOL stringCharSourceRead( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT maxCharCount, ZU_INT *charsRead )
{
    ZU_STRING_CHAR_SOURCE *scs = zuStringCharSourceFrom( closure );
    ZU_ASSERT( scs );
    ZU_ASSERT( *charsRead == 0 );
    ZU_INT count = zuIntMin( maxCharCount, zuStringLength( scs->src ) - scs->offset );
    zuMemCopyN( chars, zuStringBacking( scs->src ) + scs->offset, count, sizeof( ZU_CHAR ) );
    scs->offset += count;
    *charsRead = count;
    return ZU_TRUE;
}

ZU_CHAR_SOURCE *zuStringCharSourceCharSource( ZU_STRING_CHAR_SOURCE *scs )
{
    ZU_ASSERT( scs );
    return zu___CharSourceCreate( stringCharSourceRead, zuStringCharSourceObj( scs ) );
}
ZU_STRING *zuStringCharSourceString( ZU_STRING_CHAR_SOURCE *scs )
{
    ZU_ASSERT( scs );
    return zuStringRetain( scs->src );
}
