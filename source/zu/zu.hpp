// zu.hpp: the whole interface for C++17 and later, with references that release themselves and formats that widen their
// arguments.
//
//     zu::Ref< ZU_STRING > text = zu::format( "%s: %i of %i", name, done, total );
//     zu::appendFormat( text.inOut(), " (%.1r %%)", 100.0 * done / total );
//
// Everything here is inline, needs neither exceptions nor RTTI, and compiles to the calls of the C interface.
#pragma once

#include "zu/zu.h"

#include <cstddef>
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

namespace internal {

template <typename T>
inline constexpr bool isText =
    std::is_same_v<std::remove_cv_t<T>, char> || std::is_same_v<std::remove_cv_t<T>, char16_t>;
template <typename T>
inline constexpr bool isObject = std::is_class_v<T> && !std::is_const_v<T>;

// Makes of an argument what a format reads: a ZU_INT, a double or a pointer.
template <typename T>
constexpr auto formatArgument( T value ) noexcept
{
    if constexpr ( std::is_enum_v<T> || std::is_integral_v<T> ) {
        static_assert( sizeof( T ) <= sizeof( ZU_INT ), "a format takes integers of up to 64 bits" );
        return static_cast<ZU_INT>( value );
    } else if constexpr ( std::is_floating_point_v<T> ) {
        return static_cast<double>( value );
    } else if constexpr ( std::is_null_pointer_v<T> ) {
        return static_cast<void *>( nullptr );
    } else {
        using Target = std::remove_pointer_t<T>;
        static_assert( std::is_pointer_v<T> && (isText<Target> || isObject<Target>),
                       "a format takes numbers, objects, and terminated text of char or char16_t" );
        return value;
    }
}
template <typename T>
constexpr T *formatArgument( const Ref<T> &ref ) noexcept
{
    return ref.get();
}

} // namespace internal

// Formatted text, as zu_string_format.h tells
//
// Integers of any size, bool and enumerations are widened to ZU_INT, float to double; strings, objects of any class,
// Refs to them, null, and terminated text are passed as they are, and stay the caller's unless the format says "~".
// Whether the arguments suit the conversions nobody checks.  `fmt` is narrow and terminated, or a string.
/// Returns a new string.
template <typename... Args>
[[nodiscard]] Ref<ZU_STRING> format( const char *fmt, const Args &...args )
{
    return adopt( zuStringCreateFromFormatCstr( fmt, -1, internal::formatArgument( args )... ) );
}
template <typename... Args>
[[nodiscard]] Ref<ZU_STRING> format( ZU_STRING *fmt, const Args &...args )
{
    return adopt( zuStringCreateFromFormat( fmt, internal::formatArgument( args )... ) );
}
/// Inserts the text ahead of position `idx`.
template <typename... Args>
void insertFormat( ZU_STRING **dest, ZU_INT idx, const char *fmt, const Args &...args )
{
    zuStringInsertFormatCstr( dest, idx, fmt, -1, internal::formatArgument( args )... );
}
template <typename... Args>
void insertFormat( ZU_STRING **dest, ZU_INT idx, ZU_STRING *fmt, const Args &...args )
{
    zuStringInsertFormat( dest, idx, fmt, internal::formatArgument( args )... );
}
/// Appends the text.
template <typename... Args>
void appendFormat( ZU_STRING **dest, const char *fmt, const Args &...args )
{
    zuStringAppendFormatCstr( dest, fmt, -1, internal::formatArgument( args )... );
}
template <typename... Args>
void appendFormat( ZU_STRING **dest, ZU_STRING *fmt, const Args &...args )
{
    zuStringAppendFormat( dest, fmt, internal::formatArgument( args )... );
}
/// Inserts the text at the front.
template <typename... Args>
void prependFormat( ZU_STRING **dest, const char *fmt, const Args &...args )
{
    zuStringPrependFormatCstr( dest, fmt, -1, internal::formatArgument( args )... );
}
template <typename... Args>
void prependFormat( ZU_STRING **dest, ZU_STRING *fmt, const Args &...args )
{
    zuStringPrependFormat( dest, fmt, internal::formatArgument( args )... );
}

} // namespace zu
