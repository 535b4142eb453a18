#include "zu/io/zu_nlf_flags.h"

#include "zu/base/zu_flagset_internal.h"
#include "zu/base/zu_string.h"
#include "zu/io/zu_nlf_flags_internal.h"
#include "zu/sys/zu_char_names.h"

static constexpr ZU_NLF_FLAGS ALL_FLAGS = ZU_NLF_FLAG_LF | ZU_NLF_FLAG_CR | ZU_NLF_FLAG_CRLF | ZU_NLF_FLAG_NEL |
                                          ZU_NLF_FLAG_VT | ZU_NLF_FLAG_FF | ZU_NLF_FLAG_LS | ZU_NLF_FLAG_PS;

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_LF ),   ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_CR ),
    ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_CRLF ), ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_NEL ),
    ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_VT ),   ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_FF ),
    ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_LS ),   ZU___NAMED_VALUE_OF( ZU_NLF_FLAG_PS ),
};
static ZU_FLAGSET *zu___NlfFlagsFlagset = nullptr;

// Start-up
void zu___NlfFlagsStartup( void )
{
    zu___NlfFlagsFlagset = ZU___FLAGSET_CREATE( zu___NlfFlagsFlagset, NAMES );
}
void zu___NlfFlagsShutdown( void )
{
    ZU_REF_RELEASE( zu___NlfFlagsFlagset );
    ZU_REF_POISON( zu___NlfFlagsFlagset );
}

ZU_NLF_FLAGS zuNlfFlagsNormalize( ZU_NLF_FLAGS flags )
{
    return flags & ALL_FLAGS;
}
ZU_NLF_FLAGS zuNlfFlagsFromString( ZU_STRING *zus )
{
    return zuNlfFlagsNormalize( zuFlagsetParse( zu___NlfFlagsFlagset, zus ) );
}
ZU_STRING *zuNlfFlagsToString( ZU_NLF_FLAGS flags )
{
    return zuFlagsetGenerate( zu___NlfFlagsFlagset, flags );
}

// What is written: the first row whose flag is set
struct NLF_ROW {
    ZU_NLF_FLAGS flag;
    ZU_INT length;
    ZU_CHAR chars[ 2 ];
};
static constexpr NLF_ROW NLFS[] = {
    { ZU_NLF_FLAG_LF, 1, { ZU_CHAR_LINE_FEED } },
    { ZU_NLF_FLAG_CR, 1, { ZU_CHAR_CARRIAGE_RETURN } },
    { ZU_NLF_FLAG_CRLF, 2, { ZU_CHAR_CARRIAGE_RETURN, ZU_CHAR_LINE_FEED } },
    { ZU_NLF_FLAG_NEL, 1, { ZU_CHAR_NEXT_LINE } },
    { ZU_NLF_FLAG_VT, 1, { ZU_CHAR_LINE_TABULATION } },
    { ZU_NLF_FLAG_FF, 1, { ZU_CHAR_FORM_FEED } },
    { ZU_NLF_FLAG_LS, 1, { ZU_CHAR_LINE_SEPARATOR } },
    { ZU_NLF_FLAG_PS, 1, { ZU_CHAR_PARAGRAPH_SEPARATOR } },
};
ZU_INT zu___NlfFlagsNlf( ZU_NLF_FLAGS flags, ZU_CHAR nlf[ 2 ] )
{
    for ( const NLF_ROW &row : NLFS ) {
        if ( flags & row.flag ) {
            nlf[ 0 ] = row.chars[ 0 ];
            nlf[ 1 ] = row.chars[ 1 ];
            return row.length;
        }
    }
    return 0;
}
ZU_STRING *zuNlfFlagsNlfString( ZU_NLF_FLAGS flags )
{
    ZU_CHAR nlf[ 2 ];
    ZU_INT length = zu___NlfFlagsNlf( flags, nlf );
    return zuStringCreateFromCharsCopy( nlf, length );
}
