// zu_ranges.hpp: range-for over vectors, dicts, stores and lines.
//
//     for ( ZU_STRING *word : zu::items<ZU_STRING>( words ) ) { ... }
//     for ( auto [ key, value ] : zu::pairs<ZU_STRING, ZU_BOXED_INT>( counts ) ) { ... }
//     for ( auto &entry : zu::entries( settings ) ) { ... entry.address, entry.value, entry.store ... }
//     for ( zu::Ref<ZU_STRING> &line : zu::lines( source ) ) { ... }
//
// A range holds what it walks over, so that it may be changed in the loop through any variable: the loop sees what stood
// there when it began.  A class that is named is what all elements must be of; that is checked as zuXFrom does.
#pragma once

#include "zu/base/zu_dict.h"
#include "zu/base/zu_store.h"
#include "zu/base/zu_vector.h"
#include "zu/hpp/zu_ref.hpp"
#include "zu/io/zu_line_source.h"

namespace zu {
namespace internal {

// Casts to the class T, as its zuXFrom does, and to any object.
template <typename T>
T *cast( ZU_OBJ *obj )
{
    if constexpr ( std::is_same_v<T, ZU_OBJ> ) {
        return obj;
    } else {
        return zu___From( obj, static_cast<const T *>( nullptr ) );
    }
}

// Walks by position; DEREFERENCE makes an element of one.
template <typename DEREFERENCE>
class PositionIterator {
public:
    PositionIterator( const DEREFERENCE *whole, ZU_INT position ) noexcept : all( whole ), idx( position )
    {
    }
    decltype( auto ) operator*() const
    {
        return ( *all )( idx );
    }
    PositionIterator &operator++() noexcept
    {
        idx++;
        return *this;
    }
    bool operator!=( const PositionIterator &other ) const noexcept
    {
        return idx != other.idx;
    }

private:
    const DEREFERENCE *all;
    ZU_INT idx;
};
template <typename DEREFERENCE>
struct PositionRange {
    DEREFERENCE all;

    PositionIterator<DEREFERENCE> begin() const noexcept
    {
        return { &all, 0 };
    }
    PositionIterator<DEREFERENCE> end() const noexcept
    {
        return { &all, all.length() };
    }
};

template <typename T>
struct Items {
    Ref<ZU_VECTOR> vec;
    ZU_OBJ *const *backing; // stays, since what is held here is changed by nobody

    explicit Items( Ref<ZU_VECTOR> held ) : vec( std::move( held ) ), backing( zuVectorBacking( vec.get() ) )
    {
    }
    ZU_INT length() const
    {
        return zuVectorLength( vec.get() );
    }
    T *operator()( ZU_INT idx ) const
    {
        return cast<T>( backing[ idx ] );
    }
};
template <typename K, typename V>
struct Pairs {
    Ref<ZU_DICT> dict;

    ZU_INT length() const
    {
        return zuDictLength( dict.get() );
    }
    std::pair<Ref<K>, Ref<V>> operator()( ZU_INT idx ) const
    {
        return { adopt( cast<K>( zuDictKeyAt( dict.get(), idx ) ) ),
                 adopt( cast<V>( zuDictValueAt( dict.get(), idx ) ) ) };
    }
};

} // namespace internal

/// What a store has at one address: a value, a sub-store or both; what there is not is an empty Ref.
struct StoreEntry {
    Ref<ZU_STRING> address;
    Ref<ZU_STRING> value;
    Ref<ZU_STORE> store;
};

namespace internal {
struct Entries {
    Ref<ZU_STORE> store;

    ZU_INT length() const
    {
        return zuStoreLength( store.get() );
    }
    StoreEntry operator()( ZU_INT idx ) const
    {
        return { adopt( zuStoreAddressAt( store.get(), idx ) ), adopt( zuStoreValueAt( store.get(), idx ) ),
                 adopt( zuStoreStoreAt( store.get(), idx ) ) };
    }
};

class Lines {
public:
    class Iterator {
    public:
        explicit Iterator( ZU_LINE_SOURCE *from ) : source( from )
        {
            ++*this;
        }
        Iterator() = default;
        Ref<ZU_STRING> &operator*() noexcept
        {
            return line;
        }
        Iterator &operator++()
        {
            line = adopt( zuLineSourceRead( source ) );
            return *this;
        }
        bool operator!=( const Iterator & ) const noexcept
        {
            return line != nullptr;
        }

    private:
        ZU_LINE_SOURCE *source = nullptr;
        Ref<ZU_STRING> line;
    };
    explicit Lines( Ref<ZU_LINE_SOURCE> from ) noexcept : source( std::move( from ) )
    {
    }
    Iterator begin() const
    {
        return Iterator( source.get() );
    }
    Iterator end() const
    {
        return Iterator();
    }

private:
    Ref<ZU_LINE_SOURCE> source;
};
} // namespace internal

/// The items of a vector, as T *; any object as ZU_OBJ *.
template <typename T = ZU_OBJ>
[[nodiscard]] auto items( Ref<ZU_VECTOR> vec )
{
    return internal::PositionRange<internal::Items<T>>{ internal::Items<T>( std::move( vec ) ) };
}
template <typename T = ZU_OBJ>
[[nodiscard]] auto items( ZU_VECTOR *vec )
{
    return items<T>( share( vec ) );
}
/// The pairs of a dict, in ascending order of the keys, each as a pair of Refs.
template <typename K = ZU_OBJ, typename V = ZU_OBJ>
[[nodiscard]] auto pairs( Ref<ZU_DICT> dict )
{
    return internal::PositionRange<internal::Pairs<K, V>>{ { std::move( dict ) } };
}
template <typename K = ZU_OBJ, typename V = ZU_OBJ>
[[nodiscard]] auto pairs( ZU_DICT *dict )
{
    return pairs<K, V>( share( dict ) );
}
/// What a store holds, in ascending order of the addresses, each as a StoreEntry.
[[nodiscard]] inline auto entries( Ref<ZU_STORE> store )
{
    return internal::PositionRange<internal::Entries>{ { std::move( store ) } };
}
[[nodiscard]] inline auto entries( ZU_STORE *store )
{
    return entries( share( store ) );
}
/// The lines that a source still has, which the walk takes; a line may be moved out.  Whether reading has failed,
/// zuLineSourceError tells afterwards.
[[nodiscard]] inline internal::Lines lines( Ref<ZU_LINE_SOURCE> source )
{
    return internal::Lines( std::move( source ) );
}
[[nodiscard]] inline internal::Lines lines( ZU_LINE_SOURCE *source )
{
    return lines( share( source ) );
}

// Range-for over a Ref itself; the objects come as ZU_OBJ.  These do not hold the vector: it must not be changed meanwhile.
[[nodiscard]] inline ZU_OBJ *const *begin( const Ref<ZU_VECTOR> &vec )
{
    return zuVectorBacking( vec.get() );
}
[[nodiscard]] inline ZU_OBJ *const *end( const Ref<ZU_VECTOR> &vec )
{
    return zuVectorBacking( vec.get() ) + zuVectorLength( vec.get() );
}

} // namespace zu
