#include "zu/base/zu_dict_cursor.h"

#include "zu/base/zu_dict_internal.h"
#include "zu/runtime/zu_obj_internal.h"

ZU_DICT_CURSOR zuDictCursor( ZU_DICT *dict )
{
    ZU_ASSERT( dict );
    return { nullptr, nullptr, -1, dict };
}
ZU_DICT_CURSOR zuDictCursorFrom( ZU_DICT *dict, ZU_OBJ *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    ZU_INT begin = 0;
    for ( ZU_INT end = dict->length; begin < end; ) {
        const ZU_INT middle = begin + ( end - begin ) / 2;
        if ( zu___ObjCompareInline( zu___DictPair( dict, middle )->key, key ) < 0 ) {
            begin = middle + 1;
        } else {
            end = middle;
        }
    }
    return { nullptr, nullptr, begin - 1, dict };
}
ZU_BOOL zuDictCursorNext( ZU_DICT_CURSOR *cursor )
{
    ZU_ASSERT( cursor );
    ZU_ASSERT( cursor->dict );
    if ( cursor->key ) {
        ZU_ASSERT( cursor->idx < cursor->dict->length );
        ZU_ASSERT( zu___DictPair( cursor->dict, cursor->idx )->key == cursor->key );
        ZU_ASSERT( zu___DictPair( cursor->dict, cursor->idx )->val == cursor->value );
    }
    const bool more = cursor->idx + 1 < cursor->dict->length;
    cursor->idx += more;
    cursor->key = more ? zu___DictPair( cursor->dict, cursor->idx )->key : nullptr;
    cursor->value = more ? zu___DictPair( cursor->dict, cursor->idx )->val : nullptr;
    return more;
}
