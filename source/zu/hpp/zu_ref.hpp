// zu_ref.hpp: references that release themselves, and that compare and print as the objects do.
#pragma once

#include "zu/base/zu_string.h"

#include <cstddef>
#include <iosfwd>
#include <type_traits>
#include <utility>

namespace zu {

/// Owns one reference to an object of class `T`, or none; as large as a pointer.  zu::adopt and zu::share make one.
///
/// Copying retains, and so costs an atomic increment; moving leaves nothing behind and costs nothing.
template <typename T>
class Ref {
    static_assert( std::is_class_v<T>, "T is the class of an object, such as ZU_STRING" );

public:
    constexpr Ref() noexcept = default;
    constexpr Ref( std::nullptr_t ) noexcept
    {
    }
    Ref( const Ref &other ) noexcept : obj( other.obj )
    {
        if ( obj ) {
            ZU___RETAIN_COUNT_INCREMENT( reinterpret_cast<ZU_OBJ *>( obj )->retainCount );
        }
    }
    Ref( Ref &&other ) noexcept : obj( other.release() )
    {
    }
    /// A reference to an object of some class is one to an object of any class.
    template <typename U, typename = std::enable_if_t<std::is_same_v<T, ZU_OBJ> && !std::is_same_v<U, ZU_OBJ>>>
    Ref( Ref<U> other ) noexcept : obj( reinterpret_cast<ZU_OBJ *>( other.release() ) )
    {
    }
    Ref &operator=( Ref other ) noexcept
    {
        std::swap( obj, other.obj );
        return *this;
    }
    ~Ref()
    {
        if ( obj ) {
            zu___RefRelease( reinterpret_cast<ZU_OBJ *>( obj ) );
        }
    }

    /// Returns the object, which stays owned; null if there is none.
    constexpr T *get() const noexcept
    {
        return obj;
    }
    /// Gets at the fields of an object of a class of one's own; the library's classes show none.
    constexpr T *operator->() const noexcept
    {
        return obj;
    }
    /// Returns the object and leaves its reference to the caller.
    constexpr T *release() noexcept
    {
        return std::exchange( obj, nullptr );
    }
    /// Returns the address of the reference, for functions that change a value and may exchange it for another object.
    constexpr T **inOut() noexcept
    {
        return &obj;
    }
    /// Tells whether there is an object.
    constexpr explicit operator bool() const noexcept
    {
        return obj != nullptr;
    }

    template <typename U>
    friend Ref<U> adopt( U *obj ) noexcept;

private:
    T *obj = nullptr;
};

/// Returns a Ref that takes over the caller's reference, such as the one that a function has returned; null makes an
/// empty one.
template <typename T>
[[nodiscard]] Ref<T> adopt( T *obj ) noexcept
{
    Ref<T> ref;
    ref.obj = obj;
    return ref;
}
/// Returns a Ref with a reference of its own to an object that stays the caller's; null makes an empty one.
template <typename T>
[[nodiscard]] Ref<T> share( T *obj ) noexcept
{
    if ( obj ) {
        ZU___RETAIN_COUNT_INCREMENT( reinterpret_cast<ZU_OBJ *>( obj )->retainCount );
    }
    return adopt( obj );
}

/// Returns the object as one of any class, which adds no reference.
template <typename T>
[[nodiscard]] ZU_OBJ *upcast( T *obj ) noexcept
{
    static_assert( std::is_class_v<T>, "T is the class of an object, such as ZU_STRING" );
    return reinterpret_cast<ZU_OBJ *>( obj );
}
template <typename T>
[[nodiscard]] ZU_OBJ *upcast( const Ref<T> &ref ) noexcept
{
    return upcast( ref.get() );
}

// Order
//
// Refs compare as zuObjCompare has their objects, whatever the classes; an empty one comes ahead of all others.
namespace internal {
inline ZU_INT compare( ZU_OBJ *a, ZU_OBJ *b ) noexcept
{
    return a && b ? zuObjCompare( a, b ) : ( a != nullptr ) - ( b != nullptr );
}
} // namespace internal
template <typename A, typename B>
[[nodiscard]] bool operator==( const Ref<A> &a, const Ref<B> &b ) noexcept
{
    return internal::compare( upcast( a.get() ), upcast( b.get() ) ) == 0;
}
template <typename A, typename B>
[[nodiscard]] bool operator!=( const Ref<A> &a, const Ref<B> &b ) noexcept
{
    return !( a == b );
}
template <typename A, typename B>
[[nodiscard]] bool operator<( const Ref<A> &a, const Ref<B> &b ) noexcept
{
    return internal::compare( upcast( a.get() ), upcast( b.get() ) ) < 0;
}
template <typename A, typename B>
[[nodiscard]] bool operator>( const Ref<A> &a, const Ref<B> &b ) noexcept
{
    return b < a;
}
template <typename A, typename B>
[[nodiscard]] bool operator<=( const Ref<A> &a, const Ref<B> &b ) noexcept
{
    return !( b < a );
}
template <typename A, typename B>
[[nodiscard]] bool operator>=( const Ref<A> &a, const Ref<B> &b ) noexcept
{
    return !( a < b );
}
template <typename T>
[[nodiscard]] bool operator==( const Ref<T> &ref, std::nullptr_t ) noexcept
{
    return !ref;
}
template <typename T>
[[nodiscard]] bool operator!=( const Ref<T> &ref, std::nullptr_t ) noexcept
{
    return !!ref;
}

} // namespace zu
