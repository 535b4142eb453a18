#include "zu/base/zu_store_real.h"

#include "zu/base/zu_real_text.h"

// Reads the number in `text`, which may be null, and gives the text up.
static ZU_BOOL storeRealReadUse( ZU_STRING *text, double *value )
{
    double read = 0;
    const ZU_BOOL ok = text && zuRealTextTryRead( text, &read );
    ZU_REF_RELEASE_OPT( text );
    if ( value ) {
        *value = read;
    }
    return ok;
}
ZU_BOOL zuStoreValueRealExact( ZU_STORE *store, double *value, ZU_STRING *address )
{
    return storeRealReadUse( zuStoreValue( store, address ), value );
}
ZU_BOOL zuStoreValueRealExactAt( ZU_STORE *store, double *value, ZU_INT idx )
{
    return storeRealReadUse( zuStoreValueAt( store, idx ), value );
}
ZU_BOOL zuStoreValueRealExactCstr( ZU_STORE *store, double *value, const char *address, ZU_INT addressLength )
{
    return storeRealReadUse( zuStoreValueCstr( store, address, addressLength ), value );
}
ZU_BOOL zuStoreValueRealExactWcstr( ZU_STORE *store, double *value, const char16_t *address, ZU_INT addressLength )
{
    return storeRealReadUse( zuStoreValueWcstr( store, address, addressLength ), value );
}

void zuStoreSetValueRealExact( ZU_STORE **store, ZU_STRING *address, double value )
{
    ZU_STRING *text = zuRealTextShortest( value );
    zuStoreSetValue( store, address, text );
    ZU_REF_RELEASE( text );
}
void zuStoreSetValueRealExactAt( ZU_STORE **store, ZU_INT idx, double value )
{
    ZU_STRING *text = zuRealTextShortest( value );
    zuStoreSetValueAt( store, idx, text );
    ZU_REF_RELEASE( text );
}
void zuStoreSetValueRealExactCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, double value )
{
    ZU_STRING *text = zuRealTextShortest( value );
    zuStoreSetValueCstr( store, address, addressLength, text );
    ZU_REF_RELEASE( text );
}
void zuStoreSetValueRealExactWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, double value )
{
    ZU_STRING *text = zuRealTextShortest( value );
    zuStoreSetValueWcstr( store, address, addressLength, text );
    ZU_REF_RELEASE( text );
}
