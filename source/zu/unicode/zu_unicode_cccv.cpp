#include "zu/unicode/zu_unicode_cccv.h"

#include "zu/base/zu_string_format.h"
#include "zu/unicode/zu_unicode_cccv_internal.h"
#include "zu/unicode/zu_unicode_lookup_internal.h"

static ZU_DICT *cccvToDescr = nullptr;
static ZU_DICT *cccvToSymName = nullptr;

// Start-up
void zu___UnicodeCccvStartup( void )
{
    cccvToDescr = zu___UnicodeLookupTexts( zu___unicodeCccvRows, &ZU___UNICODE_CCCV_ROW::description );
    cccvToSymName = zu___UnicodeLookupTexts( zu___unicodeCccvRows, &ZU___UNICODE_CCCV_ROW::symName, cccvToDescr );
}
void zu___UnicodeCccvShutdown( void )
{
    ZU___UNICODE_LOOKUP_RELEASE( cccvToDescr );
    ZU___UNICODE_LOOKUP_RELEASE( cccvToSymName );
}

ZU_STRING *zuUnicodeCccvDescription( ZU_UNICODE_CCCV cccv )
{
    ZU_ASSERT( ZU_UNICODE_CCCV_OK( cccv ) );
    ZU_STRING *zus = zu___UnicodeLookupText( cccvToDescr, cccv );
    return zus ? zus : zuStringCreateFromFormatCstr( "Canonical Combining Class Value %i", -1, cccv );
}
ZU_STRING *zuUnicodeCccvSymName( ZU_UNICODE_CCCV cccv )
{
    ZU_ASSERT( ZU_UNICODE_CCCV_OK( cccv ) );
    return zu___UnicodeLookupText( cccvToSymName, cccv );
}
