// zu_unicode_cccv_internal.h: the texts of the canonical combining classes.
#pragma once

#include "zu/unicode/zu_unicode_cccv.h"

// The texts stand in the rows themselves: pointers would have to be relocated each time the library is loaded.
struct ZU___UNICODE_CCCV_ROW {
    ZU_UNICODE_CCCV value;
    char description[ 60 ];
    char symName[ 37 ];
};

// ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_NUKTAS, "Nuktas" ) stands for
//
//     { ZU_UNICODE_CCCV_NUKTAS, "Nuktas", "ZU_UNICODE_CCCV_NUKTAS" }
#define ZU___UNICODE_CCCV_ROW( symbol, description ) \
    {                                                \
        symbol, description, #symbol                 \
    }

// In the order of their values; values without a name have no row.
static constexpr ZU___UNICODE_CCCV_ROW zu___unicodeCccvRows[] = {
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_SPACING, "Spacing, split, enclosing, reordrant, and Tibetan subjoined" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_OVERLAYS, "Overlays and interior" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_NUKTAS, "Nuktas" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_HIRAGANA, "Hiragana/Katakana voicing marks" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_VIRAMAS, "Viramas" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_FIXED_POS_START, "Start of fixed position classes" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_FIXED_POS_END, "End of fixed position classes" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_BELOW_LEFT_ATTACHED, "Below left attached" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_BELOW_ATTACHED, "Below attached" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_BELOW_RIGHT_ATTACHED, "Below right attached" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_LEFT_ATTACHED, "Left attached (reordrant around single base character)" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_RIGHT_ATTACHED, "Right attached" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_ABOVE_LEFT_ATTACHED, "Above left attached" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_ABOVE_ATTACHED, "Above attached" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_ABOVE_RIGHT_ATTACHED, "Above right attached" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_BELOW_LEFT, "Below left" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_BELOW, "Below" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_BELOW_RIGHT, "Below right" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_LEFT, "Left (reordrant around single base character)" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_RIGHT, "Right" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_ABOVE_LEFT, "Above left" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_ABOVE, "Above" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_ABOVE_RIGHT, "Above right" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_DOUBLE_BELOW, "Double below" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_DOUBLE_ABOVE, "Double above" ),
    ZU___UNICODE_CCCV_ROW( ZU_UNICODE_CCCV_BELOW_IOTA, "Below (iota subscript)" ),
};
