#include "zu/base/zu_name_internal.h"

static constexpr ZU_INT CAMEL_HUMPS_AHEAD = 1; // upper-case letters that may stand ahead of a private mark

ZU_BOOL zuNameUpperCaseOk( ZU_STRING *zus, ZU_BOOL allowPrivate )
{
    ZU_ASSERT( zus );
    return zu___NameUpperCaseOk( zuStringBacking( zus ), zuStringLength( zus ), allowPrivate );
}

ZU_BOOL zuNameCamelCaseOk( ZU_STRING *zus, ZU_BOOL allowPrivate )
{
    ZU_ASSERT( zus );
    const ZU_CHAR *name = zuStringBacking( zus );
    ZU_INT length = zuStringLength( zus );
    ZU_INT humps = 0;
    bool marked = false;
    bool behindMark = false; // only an upper-case letter may stand here
    for ( ZU_INT pos = 0; pos < length; pos++ ) {
        ZU_CHAR ch = name[ pos ];
        if ( zu___NameIsLower( ch ) && !behindMark ) {
            continue; // first, since nearly all characters of names are these
        }
        if ( zu___NameIsUpper( ch ) && pos > 0 ) {
            humps++;
            behindMark = false;
        } else if ( behindMark ) {
            return ZU_FALSE;
        } else if ( allowPrivate && !marked && humps <= CAMEL_HUMPS_AHEAD && zu___NameHasMarkAt( name, length, pos ) ) {
            pos += ZU___NAME_PRIVATE_MARK - 1;
            marked = true;
            behindMark = true;
        } else if ( !( zu___NameIsDigit( ch ) && pos > 0 ) ) {
            return ZU_FALSE;
        }
    }
    return length > 0;
}

ZU_BOOL zuNameOk( ZU_STRING *zus, ZU_BOOL allowPrivate )
{
    return zuNameUpperCaseOk( zus, allowPrivate ) || zuNameCamelCaseOk( zus, allowPrivate );
}
ZU_BOOL zuNamePrivate( ZU_STRING *zus )
{
    ZU_ASSERT( zuNameOk( zus, ZU_TRUE ) );
    return !zuNameOk( zus, ZU_FALSE );
}
