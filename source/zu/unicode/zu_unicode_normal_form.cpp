#include "zu/unicode/zu_unicode_normal_form.h"

ZU_STRING *zuUnicodeNormalFormToString( ZU_UNICODE_NORMAL_FORM nf )
{
    ZU_ASSERT( ZU_UNICODE_NORMAL_FORM_OK( nf ) );
    switch ( nf ) {
    case ZU_UNICODE_NORMAL_FORM_NFC:
        return zuStringCreateFromAscii( "NFC", -1 );
    case ZU_UNICODE_NORMAL_FORM_NFKC:
        return zuStringCreateFromAscii( "NFKC", -1 );
    case ZU_UNICODE_NORMAL_FORM_NFD:
        return zuStringCreateFromAscii( "NFD", -1 );
    case ZU_UNICODE_NORMAL_FORM_NFKD:
        return zuStringCreateFromAscii( "NFKD", -1 );
    default: // a form that came later
        zu___Abort( "ZU_UNICODE_NORMAL_FORM not implemented", __FILE__, __LINE__, nullptr );
    }
}
