#include "zu/base/zu_opt_flags.h"

#include "zu/base/zu_string.h"
#include "zu/sys/zu_char_names.h"

struct OPT_FLAG_ROW {
    ZU_INT flag;
    char text[ 16 ];
};
static constexpr OPT_FLAG_ROW FLAGS[] = {
    { ZU_OPT_FLAG_ARGUMENT, "ARGUMENT" },
    { ZU_OPT_FLAG_IGNORE, "IGNORE" },
    { ZU_OPT_FLAG_ONCE, "ONCE" },
    { ZU_OPT_FLAG_NO_ABBREV, "NO_ABBREV" },
};

ZU_STRING *zuOptFlagsToString( ZU_INT flags )
{
    ZU_STRING *text = zuStringCreate();
    for ( const OPT_FLAG_ROW &row : FLAGS ) {
        if ( flags & row.flag ) {
            if ( zuStringLength( text ) > 0 ) {
                zuStringAppendChar( &text, ZU_CHAR_VERTICAL_LINE );
            }
            zuStringAppendCstr( &text, row.text, -1 );
        }
    }
    return text;
}
