#include "zu/base/zu_name.h"

static constexpr ZU_CHAR UNDERSCORE = ZU_CHAR_LOW_LINE;
static constexpr ZU_INT PRIVATE_MARK = 3;      // underscores that make a name private
static constexpr ZU_INT UPPER_WORDS_AHEAD = 2; // separators that may stand ahead of them: fewer than these
static constexpr ZU_INT CAMEL_HUMPS_AHEAD = 1; // upper-case letters that may stand ahead of them

static bool nameIsUpper( ZU_CHAR ch )
{
    return ch >= 'A' && ch <= 'Z';
}
static bool nameIsLower( ZU_CHAR ch )
{
    return ch >= 'a' && ch <= 'z';
}
static bool nameIsDigit( ZU_CHAR ch )
{
    return ch >= '0' && ch <= '9';
}
// Whether three underscores stand at `pos`, with anything behind them.
static bool nameHasMarkAt( const ZU_CHAR *name, ZU_INT length, ZU_INT pos )
{
    return pos + PRIVATE_MARK < length && name[ pos ] == UNDERSCORE && name[ pos + 1 ] == UNDERSCORE &&
           name[ pos + 2 ] == UNDERSCORE;
}

ZU_BOOL zuNameUpperCaseOk( ZU_STRING *zus, ZU_BOOL allowPrivate )
{
    ZU_ASSERT( zus );
    const ZU_CHAR *name = zuStringBacking( zus );
    ZU_INT length = zuStringLength( zus );
    ZU_INT separators = 0;
    bool wordEnds = false; // the character ahead may be followed by a separator
    for ( ZU_INT pos = 0; pos < length; pos++ ) {
        ZU_CHAR ch = name[ pos ];
        if ( nameIsUpper( ch ) || ( nameIsDigit( ch ) && pos > 0 ) ) {
            wordEnds = true;
        } else if ( ch == UNDERSCORE && wordEnds ) {
            if ( allowPrivate && separators < UPPER_WORDS_AHEAD && nameHasMarkAt( name, length, pos ) ) {
                pos += PRIVATE_MARK - 1;
            }
            separators++;
            wordEnds = false;
        } else {
            return ZU_FALSE;
        }
    }
    return wordEnds; // neither empty nor ending in a separator
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
        if ( nameIsUpper( ch ) && pos > 0 ) {
            humps++;
            behindMark = false;
        } else if ( behindMark ) {
            return ZU_FALSE;
        } else if ( allowPrivate && !marked && humps <= CAMEL_HUMPS_AHEAD && nameHasMarkAt( name, length, pos ) ) {
            pos += PRIVATE_MARK - 1;
            marked = true;
            behindMark = true;
        } else if ( !nameIsLower( ch ) && !( nameIsDigit( ch ) && pos > 0 ) ) {
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
