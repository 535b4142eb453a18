// zu_text.hpp: strings from and to the text of the standard library.
//
//     using namespace zu::literals;
//     zu::Ref<ZU_STRING> text = "κόσμε"_zs;
//     std::string utf8 = zu::toUtf8( text );
//     for ( char32_t ch : text ) { ... }
//
// Narrow text is UTF-8 here, whatever the system's encoding is.  What is ill-formed, and a surrogate of a string,
// becomes U+FFFD; zu_utf.h has the forms that tell.
#pragma once

#include "zu/base/zu_utf.h"
#include "zu/hpp/zu_ref.hpp"
#include "zu/sys/zu_mem.h"

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace zu {

// Into strings
/// Returns a new string of UTF-8.
[[nodiscard]] inline Ref<ZU_STRING> text( std::string_view utf8 )
{
    return adopt( zuUtf8Decode( utf8.data(), static_cast<ZU_INT>( utf8.size() ) ) );
}
#if defined( __cpp_char8_t )
/// Returns a new string of UTF-8, as u8"κόσμε" is it from C++20 on.
[[nodiscard]] inline Ref<ZU_STRING> text( std::u8string_view utf8 )
{
    return text( std::string_view( reinterpret_cast<const char *>( utf8.data() ), utf8.size() ) );
}
#endif
/// Returns a new string of code points; one beyond U+10FFFF aborts.
[[nodiscard]] inline Ref<ZU_STRING> text( std::u32string_view chars )
{
    static_assert( sizeof( char32_t ) == sizeof( ZU_CHAR ) );
    return adopt( zuStringCreateFromCharsCopy( reinterpret_cast<const ZU_CHAR *>( chars.data() ),
                                               static_cast<ZU_INT>( chars.size() ) ) );
}
/// Returns a new string of UTF-16, with pairs of surrogates joined.
[[nodiscard]] inline Ref<ZU_STRING> text( std::u16string_view utf16 )
{
    return adopt( zuUtf16Decode( utf16.data(), static_cast<ZU_INT>( utf16.size() ) ) );
}

// Out of strings
/// Returns the code points of a string, without a copy: for as long as the string is neither changed nor released.
[[nodiscard]] inline std::u32string_view view( ZU_STRING *zus )
{
    return { reinterpret_cast<const char32_t *>( zuStringBacking( zus ) ),
             static_cast<std::size_t>( zuStringLength( zus ) ) };
}
[[nodiscard]] inline std::u32string_view view( const Ref<ZU_STRING> &zus )
{
    return view( zus.get() );
}
/// Returns a string as UTF-8.
[[nodiscard]] inline std::string toUtf8( ZU_STRING *zus )
{
    ZU_INT length = 0;
    char *bytes = zuUtf8Encode( zus, &length );
    std::string utf8( bytes, static_cast<std::size_t>( length ) );
    zuMemFree( bytes );
    return utf8;
}
[[nodiscard]] inline std::string toUtf8( const Ref<ZU_STRING> &zus )
{
    return toUtf8( zus.get() );
}
/// Returns a string as UTF-16.
[[nodiscard]] inline std::u16string toUtf16( ZU_STRING *zus )
{
    ZU_INT length = 0;
    char16_t *units = zuUtf16Encode( zus, &length );
    std::u16string utf16( units, static_cast<std::size_t>( length ) );
    zuMemFree( units );
    return utf16;
}
[[nodiscard]] inline std::u16string toUtf16( const Ref<ZU_STRING> &zus )
{
    return toUtf16( zus.get() );
}
/// Returns the text of an object of any class.
template <typename T>
[[nodiscard]] Ref<ZU_STRING> toText( const Ref<T> &ref )
{
    return adopt( zuObjToString( upcast( ref.get() ) ) );
}

namespace literals {
/// "κόσμε"_zs is a new string.
[[nodiscard]] inline Ref<ZU_STRING> operator""_zs( const char *utf8, std::size_t length )
{
    return text( std::string_view( utf8, length ) );
}
#if defined( __cpp_char8_t )
[[nodiscard]] inline Ref<ZU_STRING> operator""_zs( const char8_t *utf8, std::size_t length )
{
    return text( std::u8string_view( utf8, length ) );
}
#endif
[[nodiscard]] inline Ref<ZU_STRING> operator""_zs( const char16_t *utf16, std::size_t length )
{
    return text( std::u16string_view( utf16, length ) );
}
[[nodiscard]] inline Ref<ZU_STRING> operator""_zs( const char32_t *chars, std::size_t length )
{
    return text( std::u32string_view( chars, length ) );
}
} // namespace literals

// A string against text of the standard library; an empty Ref equals none.
[[nodiscard]] inline bool operator==( const Ref<ZU_STRING> &zus, std::u32string_view chars )
{
    return zus && view( zus ) == chars;
}
[[nodiscard]] inline bool operator==( const Ref<ZU_STRING> &zus, std::u16string_view utf16 )
{
    return zus && zuStringEquals( zus.get(), text( utf16 ).get() );
}
[[nodiscard]] inline bool operator==( const Ref<ZU_STRING> &zus, std::string_view utf8 )
{
    return zus && zuStringEquals( zus.get(), text( utf8 ).get() );
}
[[nodiscard]] inline bool operator!=( const Ref<ZU_STRING> &zus, std::u32string_view chars )
{
    return !( zus == chars );
}
[[nodiscard]] inline bool operator!=( const Ref<ZU_STRING> &zus, std::u16string_view utf16 )
{
    return !( zus == utf16 );
}
[[nodiscard]] inline bool operator!=( const Ref<ZU_STRING> &zus, std::string_view utf8 )
{
    return !( zus == utf8 );
}
// The other way round, which C++17 does not find by itself
[[nodiscard]] inline bool operator==( std::u32string_view chars, const Ref<ZU_STRING> &zus )
{
    return zus == chars;
}
[[nodiscard]] inline bool operator==( std::u16string_view utf16, const Ref<ZU_STRING> &zus )
{
    return zus == utf16;
}
[[nodiscard]] inline bool operator==( std::string_view utf8, const Ref<ZU_STRING> &zus )
{
    return zus == utf8;
}
[[nodiscard]] inline bool operator!=( std::u32string_view chars, const Ref<ZU_STRING> &zus )
{
    return zus != chars;
}
[[nodiscard]] inline bool operator!=( std::u16string_view utf16, const Ref<ZU_STRING> &zus )
{
    return zus != utf16;
}
[[nodiscard]] inline bool operator!=( std::string_view utf8, const Ref<ZU_STRING> &zus )
{
    return zus != utf8;
}

// Range-for over the code points of a string
[[nodiscard]] inline const char32_t *begin( const Ref<ZU_STRING> &zus )
{
    return view( zus ).data();
}
[[nodiscard]] inline const char32_t *end( const Ref<ZU_STRING> &zus )
{
    return view( zus ).data() + zuStringLength( zus.get() );
}

/// Writes the text of the object as UTF-8, nothing for an empty Ref.
template <typename T>
std::ostream &operator<<( std::ostream &stream, const Ref<T> &ref )
{
    return ref ? stream << toUtf8( toText( ref ) ) : stream;
}

} // namespace zu

/// Writes what a Ref to the object would, not its address: so ranges print what they hand out.
inline std::ostream &operator<<( std::ostream &stream, ZU_OBJ *obj )
{
    return stream << zu::share( obj );
}
template <typename T, typename = decltype( zu___From( nullptr, static_cast<const T *>( nullptr ) ) )>
std::ostream &operator<<( std::ostream &stream, T *obj )
{
    return stream << zu::share( obj );
}

/// Strings that are equal have equal hashes, so that they can be keys of unordered containers.
template <>
struct std::hash<zu::Ref<ZU_STRING>> {
    std::size_t operator()( const zu::Ref<ZU_STRING> &zus ) const noexcept
    {
        return zus ? std::hash<std::u32string_view>()( zu::view( zus ) ) : 0;
    }
};
