// zu_unicode_cdmt_internal.h: the texts of the decomposition tags.
#pragma once

#include "zu/unicode/zu_unicode_cdmt.h"

#include <iterator>

// The texts stand in the rows themselves: pointers would have to be relocated each time the library is loaded.
struct ZU___UNICODE_CDMT_ROW {
    ZU_UNICODE_CDMT value;
    char tag[ 11 ]; // as the database writes it; empty where it writes none
    char description[ 47 ];
    char symName[ 26 ];
};

// ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_CIRCLE, "<circle>", "An encircled form." ) stands for
//
//     { ZU_UNICODE_CDMT_CIRCLE, "<circle>", "An encircled form.", "ZU_UNICODE_CDMT_CIRCLE" }
#define ZU___UNICODE_CDMT_ROW( symbol, tag, description ) \
    {                                                     \
        symbol, tag, description, #symbol                 \
    }

// In the order of their values, without a gap.
static constexpr ZU___UNICODE_CDMT_ROW zu___unicodeCdmtRows[] = {
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_NONE, "", "No decomposition." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_CANONICAL, "", "Canonical decomposition." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_FONT, "<font>", "A font variant (e.g. a blackletter form)." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_NOBREAK, "<noBreak>", "A no-break version of a space of hyphen." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_INITIAL, "<initial>", "An initial presentation form (Arabic)." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_MEDIAL, "<medial>", "A medial presentation form (Arabic)." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_FINAL, "<final>", "A final presentation form (Arabic)." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_ISOLATED, "<isolated>", "An isolated presentation form (Arabic)." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_CIRCLE, "<circle>", "An encircled form." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_SUPER, "<super>", "A superscript form." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_SUB, "<sub>", "A subscript form." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_VERTICAL, "<vertical>", "A vertical layout presentation form." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_WIDE, "<wide>", "A wide (or zenkaku) compatibility character." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_NARROW, "<narrow>", "A narrow (or hankaku) compatibility character." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_SMALL, "<small>", "A small variant form (CNS compatibility)." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_SQUARE, "<square>", "A CJK squared font variant." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_FRACTION, "<fraction>", "A vulgar fraction form." ),
    ZU___UNICODE_CDMT_ROW( ZU_UNICODE_CDMT_COMPAT, "<compat>", "Otherwise unspecified compatibility character." ),
};
static_assert(
    [] {
        for ( ZU_INT i = 0; i < 18; ++i ) {
            if ( zu___unicodeCdmtRows[ i ].value != i ) {
                return false;
            }
        }
        return std::size( zu___unicodeCdmtRows ) == 18;
    }(),
    "a row stands at its value" );
