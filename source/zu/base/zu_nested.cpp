// A walk goes through the items of a container, and into each that is a container of the two kinds itself.  A dict is
// taken for a sequence of keys and values in turn: with that both orders are the same one.

#include "zu/base/zu_nested_internal.h"

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_vector_internal.h"
#include "zu/runtime/zu_obj_internal.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

namespace {

// A container on the way, and the one that it is compared with, if any
struct NESTED_LEVEL {
    ZU_OBJ *obj;
    ZU_OBJ *other;
    ZU_INT idx; // the item that comes next
};

// The way from the outermost container to where the walk is; short ones need no heap.
class NESTED_PATH {
public:
    NESTED_PATH() = default;
    NESTED_PATH( const NESTED_PATH & ) = delete;
    NESTED_PATH &operator=( const NESTED_PATH & ) = delete;
    ~NESTED_PATH()
    {
        if ( levels != local ) {
            zuMemFree( levels );
        }
    }
    // The innermost level, null at the end of the walk
    NESTED_LEVEL *current()
    {
        return depth > 0 ? &levels[ depth - 1 ] : nullptr;
    }
    void enter( ZU_OBJ *obj, ZU_OBJ *other )
    {
        if ( depth == room ) {
            grow();
        }
        levels[ depth++ ] = { obj, other, 0 };
    }
    void leave()
    {
        depth--;
    }

private:
    static constexpr ZU_INT LOCAL = 16;
    ZU_INT depth = 0;
    ZU_INT room = LOCAL;
    NESTED_LEVEL *levels = local;
    NESTED_LEVEL local[ LOCAL ];

    [[gnu::noinline]] void grow()
    {
        NESTED_LEVEL *old = levels != local ? levels : nullptr;
        room *= 2;
        levels = (NESTED_LEVEL *)zuMemReallocN( old, room, sizeof( NESTED_LEVEL ) );
        if ( !old ) {
            memcpy( levels, local, sizeof local );
        }
    }
};

// The classes that are walked through
struct NESTED_SORTS {
    ZU_SORT *vector = zuVectorSort();
    ZU_SORT *dict = zuDictSort();

    bool have( ZU_OBJ *obj ) const
    {
        return obj && ( obj->sort == vector || obj->sort == dict );
    }
    ZU_INT count( ZU_OBJ *obj ) const
    {
        return obj->sort == dict ? 2 * ( (ZU_DICT *)obj )->length : ( (ZU_VECTOR *)obj )->length;
    }
    ZU_OBJ *item( ZU_OBJ *obj, ZU_INT idx ) const
    {
        if ( obj->sort == dict ) {
            const ZU___DICT_PAIR &pair = *zu___DictPair( (ZU_DICT *)obj, idx / 2 );
            return idx % 2 == 0 ? pair.key : pair.val;
        }
        ZU_VECTOR *vec = (ZU_VECTOR *)obj;
        return vec->items[ vec->fspace + idx ];
    }
};

} // namespace

ZU_INT zu___NestedCompare( ZU_OBJ *objA, ZU_OBJ *objB )
{
    const NESTED_SORTS sorts;
    NESTED_PATH path;
    path.enter( objA, objB );
    while ( NESTED_LEVEL *level = path.current() ) {
        ZU_OBJ *a = level->obj;
        ZU_OBJ *b = level->other;
        ZU_INT countA = sorts.count( a );
        ZU_INT countB = sorts.count( b );
        ZU_INT common = zuIntMin( countA, countB );
        bool enters = false;
        for ( ZU_INT idx = level->idx; idx < common && !enters; idx++ ) {
            ZU_OBJ *itemA = sorts.item( a, idx );
            ZU_OBJ *itemB = sorts.item( b, idx );
            if ( itemA == itemB ) {
                continue;
            }
            enters = itemA && itemB && itemA->sort == itemB->sort && sorts.have( itemA );
            if ( enters ) {
                level->idx = idx + 1;
                path.enter( itemA, itemB );
                continue;
            }
            ZU_INT order =
                itemA && itemB ? zu___ObjCompareInline( itemA, itemB ) : ( itemA != nullptr ) - ( itemB != nullptr );
            if ( order != 0 ) {
                return order;
            }
        }
        if ( !enters ) {
            if ( countA != countB ) {
                return countA < countB ? -1 : 1;
            }
            path.leave();
        }
    }
    return 0;
}

ZU_STRING *zu___NestedToString( ZU_OBJ *obj )
{
    const NESTED_SORTS sorts;
    NESTED_PATH path;
    ZU_STRING *text = zuStringCreate();
    // An item's text is a class's own code, and may change what it is in: on the way containers are held, so that such a
    // change goes to a copy.
    auto enter = [ & ]( ZU_OBJ *container ) {
        zuStringAppendChar( &text, container->sort == sorts.dict ? '{' : '<' );
        path.enter( zuObjRetain( container ), nullptr );
    };
    enter( obj );
    while ( NESTED_LEVEL *level = path.current() ) {
        bool isDict = level->obj->sort == sorts.dict;
        if ( level->idx == sorts.count( level->obj ) ) {
            zuStringAppendChar( &text, isDict ? '}' : '>' );
            zu___Owned held( level->obj );
            path.leave();
            continue;
        }
        ZU_OBJ *item = sorts.item( level->obj, level->idx );
        if ( isDict && level->idx % 2 == 1 ) {
            zuStringAppendChar( &text, '=' );
        } else if ( level->idx > 0 ) {
            zuStringAppendCstr( &text, ", ", 2 );
        }
        level->idx++;
        if ( sorts.have( item ) ) {
            enter( item );
        } else {
            zuStringAppendObj( &text, item );
        }
    }
    return text;
}
