#include "zu/unicode/zu_unicode_cccv.h"

#include "zu/base/zu_string_format.h"
#include "zu/unicode/zu_unicode_cccv_internal.h"
#include "zu/unicode/zu_unicode_lookup_internal.h"

// Start-up: the lookups are constant tables.
void zu___UnicodeCccvStartup( void )
{
}
void zu___UnicodeCccvShutdown( void )
{
}

ZU_STRING *zuUnicodeCccvDescription( ZU_UNICODE_CCCV cccv )
{
    ZU_ASSERT( ZU_UNICODE_CCCV_OK( cccv ) );
    ZU_STRING *zus = zu___UnicodeText( zu___unicodeCccvRows, &ZU___UNICODE_CCCV_ROW::description, cccv );
    return zus ? zus : zuStringCreateFromFormatCstr( "Canonical Combining Class Value %i", -1, cccv );
}
ZU_STRING *zuUnicodeCccvSymName( ZU_UNICODE_CCCV cccv )
{
    ZU_ASSERT( ZU_UNICODE_CCCV_OK( cccv ) );
    return zu___UnicodeText( zu___unicodeCccvRows, &ZU___UNICODE_CCCV_ROW::symName, cccv );
}
