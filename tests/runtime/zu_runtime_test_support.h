// zu_runtime_test_support.h: strings for the tests of this folder.
#pragma once

#include "zu/zu.hpp"

#include "zu_test_support.h"

inline zu::Ref<ZU_STRING> string( const std::string &utf8 )
{
    return zu::adopt( zuStringCreateFromUtf8( utf8.data(), (ZU_INT)utf8.size() ) );
}
// The text of `zus`, which is released; empty for null.
inline std::string textOf( ZU_STRING *zus )
{
    zu::Ref<ZU_STRING> owner = zu::adopt( zus );
    char *utf8 = zus ? zuStringConvertToUtf8( zus, ZU_TRUE, nullptr ) : nullptr;
    std::string result = utf8 ? utf8 : "";
    zuMemFree( utf8 );
    return result;
}
