// zu_name_internal.h: what makes a name well-formed, for text of any type of character and for the compiler.
#pragma once

#include "zu/base/zu_name.h"

#include <type_traits>

static constexpr ZU_INT ZU___NAME_PRIVATE_MARK = 3;      // underscores that make a name private
static constexpr ZU_INT ZU___NAME_UPPER_WORDS_AHEAD = 2; // separators that may stand ahead of them: fewer than these

constexpr bool zu___NameIsUpper( ZU_CHAR ch )
{
    return ch >= 'A' && ch <= 'Z';
}
constexpr bool zu___NameIsLower( ZU_CHAR ch )
{
    return ch >= 'a' && ch <= 'z';
}
constexpr bool zu___NameIsDigit( ZU_CHAR ch )
{
    return ch >= '0' && ch <= '9';
}
// Whether three underscores stand at `pos`, with anything behind them.
template <typename CHAR>
constexpr bool zu___NameHasMarkAt( const CHAR *name, ZU_INT length, ZU_INT pos )
{
    return pos + ZU___NAME_PRIVATE_MARK < length && name[ pos ] == '_' && name[ pos + 1 ] == '_' &&
           name[ pos + 2 ] == '_';
}

// As zuNameUpperCaseOk.
template <typename CHAR>
constexpr bool zu___NameUpperCaseOk( const CHAR *name, ZU_INT length, bool allowPrivate )
{
    ZU_INT separators = 0;
    bool wordEnds = false; // the character ahead may be followed by a separator
    for ( ZU_INT pos = 0; pos < length; pos++ ) {
        ZU_CHAR ch = (std::make_unsigned_t<CHAR>)name[ pos ];
        if ( zu___NameIsUpper( ch ) || ( zu___NameIsDigit( ch ) && pos > 0 ) ) {
            wordEnds = true;
        } else if ( ch == '_' && wordEnds ) {
            if ( allowPrivate && separators < ZU___NAME_UPPER_WORDS_AHEAD && zu___NameHasMarkAt( name, length, pos ) ) {
                pos += ZU___NAME_PRIVATE_MARK - 1;
            }
            separators++;
            wordEnds = false;
        } else {
            return false;
        }
    }
    return wordEnds; // neither empty nor ending in a separator
}
