#include "zu/unicode/zu_unicode_genc.h"

#include "zu/unicode/zu_unicode_genc_internal.h"
#include "zu/unicode/zu_unicode_lookup_internal.h"

static ZU_DICT *gencToAbbreviation = nullptr;
static ZU_DICT *gencToDescr = nullptr;
static ZU_DICT *gencToSymName = nullptr;
static ZU_DICT *abbreviationToGenc = nullptr;
// Its keys are not folded, so that only an abbreviation without capitals could be found in it, and there is none.
static ZU_DICT *abbreviationCaseFoldToGenc = nullptr;

// Start-up
void zu___UnicodeGencStartup( void )
{
    gencToAbbreviation = zu___UnicodeLookupTexts( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::abbreviation );
    gencToDescr =
        zu___UnicodeLookupTexts( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::description, gencToAbbreviation );
    gencToSymName =
        zu___UnicodeLookupTexts( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::symName, gencToAbbreviation );
    abbreviationToGenc = zu___UnicodeLookupValues( gencToAbbreviation, false );
    abbreviationCaseFoldToGenc = zuDictRetain( abbreviationToGenc );
}
void zu___UnicodeGencShutdown( void )
{
    ZU___UNICODE_LOOKUP_RELEASE( gencToAbbreviation );
    ZU___UNICODE_LOOKUP_RELEASE( gencToDescr );
    ZU___UNICODE_LOOKUP_RELEASE( gencToSymName );
    ZU___UNICODE_LOOKUP_RELEASE( abbreviationToGenc );
    ZU___UNICODE_LOOKUP_RELEASE( abbreviationCaseFoldToGenc );
}

// From the value to its texts
ZU_STRING *zuUnicodeGencAbbreviation( ZU_UNICODE_GENC genc )
{
    ZU_ASSERT( ZU_UNICODE_GENC_OK( genc ) );
    return zu___UnicodeLookupText( gencToAbbreviation, genc );
}
ZU_STRING *zuUnicodeGencDescription( ZU_UNICODE_GENC genc )
{
    ZU_ASSERT( ZU_UNICODE_GENC_OK( genc ) );
    return zu___UnicodeLookupText( gencToDescr, genc );
}
ZU_STRING *zuUnicodeGencSymName( ZU_UNICODE_GENC genc )
{
    ZU_ASSERT( ZU_UNICODE_GENC_OK( genc ) );
    return zu___UnicodeLookupText( gencToSymName, genc );
}

// From a text to the value
ZU_UNICODE_GENC zuUnicodeGencFromAbbreviation( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeLookupValue( abbreviationToGenc, zus );
}
ZU_UNICODE_GENC zuUnicodeGencFromAbbreviationCaseFold( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeLookupValueOfFolded( abbreviationCaseFoldToGenc, zus );
}
