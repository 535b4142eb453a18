// zu_test_string.h: strings of the library as those of the C++ library, which tests write down, compare and print.
#pragma once

#include "zu_test_support.h"

// Elements as they are, code points or not.
inline ZU_STRING *makeString( const std::u32string &chars )
{
    return zuStringCreateFromCharsCopy( (const ZU_CHAR *)chars.data(), (ZU_INT)chars.size() );
}
inline std::u32string charsOf( ZU_STRING *zus )
{
    return std::u32string( zuStringBacking( zus ), zuStringBacking( zus ) + zuStringLength( zus ) );
}
// UTF-8
inline zu::Ref<ZU_STRING> string( const std::string &utf8 )
{
    return zu::adopt( zuStringCreateFromUtf8( utf8.data(), (ZU_INT)utf8.size() ) );
}
inline std::string textOf( ZU_STRING *zus )
{
    ZU_INT length;
    char *utf8 = zuStringConvertToUtf8( zus, ZU_FALSE, &length );
    std::string text( utf8 ? utf8 : "", (size_t)length );
    zuMemFree( utf8 );
    return text;
}

// These release what they are given; for no string there is no text.
inline std::u32string takeChars( ZU_STRING *zus )
{
    return charsOf( zu::adopt( zus ).get() );
}
inline std::string takeText( ZU_STRING *zus )
{
    zu::Ref<ZU_STRING> taken = zu::adopt( zus );
    return taken ? textOf( taken.get() ) : "";
}

// What an object prints
inline std::string textOf( ZU_OBJ *obj )
{
    return takeText( zuObjToString( obj ) );
}
// What the items of a vector print
inline std::vector<std::string> takeTexts( ZU_VECTOR *vec )
{
    std::vector<std::string> texts;
    for ( ZU_OBJ *item : zu::items<ZU_OBJ>( zu::adopt( vec ) ) ) {
        texts.push_back( textOf( item ) );
    }
    return texts;
}

inline zu::Ref<ZU_OBJ> boxed( ZU_INT value )
{
    return zu::adopt( zuBoxedIntObj( zuBoxedIntCreate( value ) ) );
}

template <typename... OBJECTS>
inline void releaseAll( OBJECTS *...objects )
{
    ( zuObjRelease( (ZU_OBJ *)objects ), ... );
}
