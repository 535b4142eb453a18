// zu_ref_internal.h: references that are given up by themselves.
//
// A body that makes a temporary, calls and releases owns that by a zu___Owned.  A body that takes references out of a
// container collects them in a zu___Taken.  A release can run any code, which may look at the very container; so what
// a change takes out is released when the container is right again, and never amid the change.
#pragma once

#include "zu/runtime/zu_obj.h"
#include "zu/sys/zu_mem.h"

#include <cstring>

// Owns a reference, or none if it is null, until the end of its scope.
template <typename T>
class zu___Owned {
public:
    explicit zu___Owned( T *taken ) : obj( taken )
    {
    }
    zu___Owned( const zu___Owned & ) = delete;
    zu___Owned &operator=( const zu___Owned & ) = delete;
    ~zu___Owned()
    {
        ZU_REF_RELEASE_OPT( obj );
    }
    operator T *() const
    {
        return obj;
    }
    T *operator->() const
    {
        return obj;
    }

private:
    T *obj;
};

// Holds an object until the end of the scope if `condition` is true.  A value that is changed by way of a part of its
// own is held so: that forces the copy, and keeps what is read in place.
template <typename T>
static inline zu___Owned<T> zu___HeldIf( bool condition, T *obj )
{
    if ( condition ) {
        ZU___RETAIN_COUNT_INCREMENT( ( (ZU_OBJ *)obj )->retainCount );
    }
    return zu___Owned<T>( condition ? obj : nullptr );
}

// Collects references, and releases them at the end of its scope in the order in which they came.
class zu___Taken {
public:
    zu___Taken() = default;
    zu___Taken( const zu___Taken & ) = delete;
    zu___Taken &operator=( const zu___Taken & ) = delete;
    ~zu___Taken()
    {
        for ( ZU_INT i = 0; i < count; i++ ) {
            ZU_REF_RELEASE( objs[ i ] );
        }
        if ( objs != local ) {
            zuMemFree( objs );
        }
    }
    void add( ZU_OBJ *const *taken, ZU_INT takenCount )
    {
        if ( takenCount > room - count ) {
            grow( takenCount );
        }
        memcpy( objs + count, taken, (size_t)takenCount * sizeof( ZU_OBJ * ) );
        count += takenCount;
    }
    void add( ZU_OBJ *taken )
    {
        add( &taken, 1 );
    }

private:
    static constexpr ZU_INT LOCAL = 16; // most changes take out one or two
    ZU_INT count = 0;
    ZU_INT room = LOCAL;
    ZU_OBJ **objs = local;
    ZU_OBJ *local[ LOCAL ];

    [[gnu::noinline]] void grow( ZU_INT more )
    {
        room = zuIntAddSaturating( count, zuIntMax( count, more ) );
        if ( objs == local ) {
            objs = (ZU_OBJ **)zuMemAllocN( room, sizeof( ZU_OBJ * ) );
            memcpy( objs, local, (size_t)count * sizeof( ZU_OBJ * ) );
        } else {
            objs = (ZU_OBJ **)zuMemReallocN( objs, room, sizeof( ZU_OBJ * ) );
        }
    }
};
