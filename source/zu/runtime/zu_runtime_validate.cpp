// What is checked here becomes part of file names, of variables of the environment and of records that other products
// read.  So the rules are told in ASCII, and by hand: they must not change with the locale, nor with the version of the
// character database.

#include "zu/runtime/zu_runtime_validate.h"

#include "zu/base/zu_format.h"
#include "zu/base/zu_text_internal.h"
#include "zu/runtime/zu_module.h"

static constexpr ZU_INT PRODUCT_NAME_MAX = 32; // characters
static constexpr ZU_INT TEXT_MAX = 100;        // characters of the texts for human readers
static constexpr ZU_INT VERSION_PARTS = 3;

static bool validateIsLower( ZU_CHAR ch )
{
    return ch >= 'a' && ch <= 'z';
}
static bool validateIsDigit( ZU_CHAR ch )
{
    return ch >= '0' && ch <= '9';
}
static bool validateIsWord( ZU_CHAR ch )
{
    return validateIsLower( ch ) || ( ch >= 'A' && ch <= 'Z' ) || validateIsDigit( ch );
}
static bool validateIsOneOf( ZU_CHAR ch, const char *ascii )
{
    while ( *ascii && (ZU_CHAR)*ascii != ch ) {
        ascii++;
    }
    return *ascii != 0;
}

ZU_BOOL zuRuntimeValidateModuleName( ZU_STRING *name )
{
    ZU_ASSERT( name );
    return zuModuleNameOk( name );
}
ZU_BOOL zuRuntimeValidateProductName( ZU_STRING *productName )
{
    ZU_ASSERT( productName );
    const ZU_CHAR *chs = zuStringBacking( productName );
    ZU_INT length = zuStringLength( productName );
    if ( length < 1 || length > PRODUCT_NAME_MAX || validateIsDigit( chs[ 0 ] ) ) {
        return ZU_FALSE;
    }
    for ( ZU_INT i = 0; i < length; i++ ) {
        if ( !validateIsLower( chs[ i ] ) && !validateIsDigit( chs[ i ] ) ) {
            return ZU_FALSE;
        }
    }
    return ZU_TRUE;
}

// Whether a text for human readers holds letters, digits and characters out of `others`, and single blanks.
static ZU_BOOL validateText( ZU_STRING *zus, const char *others )
{
    const ZU_CHAR *chs = zuStringBacking( zus );
    ZU_INT length = zuStringLength( zus );
    if ( length < 1 || length > TEXT_MAX ) {
        return ZU_FALSE;
    }
    bool blankMayFollow = false;
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_CHAR ch = chs[ i ];
        bool blank = ch == ZU_CHAR_SPACE;
        if ( blank ? !blankMayFollow : !validateIsWord( ch ) && !validateIsOneOf( ch, others ) ) {
            return ZU_FALSE;
        }
        blankMayFollow = !blank;
    }
    return blankMayFollow; // no blank at the end
}
ZU_BOOL zuRuntimeValidateProductFriendlyName( ZU_STRING *productFriendlyName )
{
    ZU_ASSERT( productFriendlyName );
    return validateText( productFriendlyName, "" );
}
ZU_BOOL zuRuntimeValidateProductVendorName( ZU_STRING *productVendorName )
{
    ZU_ASSERT( productVendorName );
    return validateText( productVendorName, "-" );
}
ZU_BOOL zuRuntimeValidateProductCopyright( ZU_STRING *productCopyright )
{
    ZU_ASSERT( productCopyright );
    return validateText( productCopyright, "(),-.:;@" );
}

ZU_BOOL zuRuntimeValidateProductVersion( ZU_STRING *productVersion )
{
    ZU_ASSERT( productVersion );
    ZU___TEXT parts[ VERSION_PARTS + 1 ];
    ZU_INT count = zu___TextSplitChar( zu___TextOf( productVersion ), ZU_CHAR_FULL_STOP, parts, VERSION_PARTS + 1 );
    for ( ZU_INT i = 0; i < count; i++ ) {
        ZU_INT value = 0;
        ZU_INT consumed = 0;
        if ( !zuFormatTryDecodeIntChars( parts[ i ].chars, parts[ i ].length, -1, &value, &consumed ) || value < 0 ||
             consumed != parts[ i ].length ) {
            return ZU_FALSE;
        }
    }
    return count == VERSION_PARTS;
}
