#include "zu/unicode/zu_unicode_genc.h"

#include "zu/unicode/zu_unicode_genc_internal.h"
#include "zu/unicode/zu_unicode_lookup_internal.h"

// Folded texts are looked for among these as they are, so that only an abbreviation without capitals could be found,
// and there is none.
static constexpr auto ABBREVIATIONS =
    zu___UnicodeSort( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::abbreviation, false );

// Start-up: the lookups are constant tables.
void zu___UnicodeGencStartup( void )
{
}
void zu___UnicodeGencShutdown( void )
{
}

// From the value to its texts
ZU_STRING *zuUnicodeGencAbbreviation( ZU_UNICODE_GENC genc )
{
    ZU_ASSERT( ZU_UNICODE_GENC_OK( genc ) );
    return zu___UnicodeText( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::abbreviation, genc );
}
ZU_STRING *zuUnicodeGencDescription( ZU_UNICODE_GENC genc )
{
    ZU_ASSERT( ZU_UNICODE_GENC_OK( genc ) );
    return zu___UnicodeText( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::description, genc );
}
ZU_STRING *zuUnicodeGencSymName( ZU_UNICODE_GENC genc )
{
    ZU_ASSERT( ZU_UNICODE_GENC_OK( genc ) );
    return zu___UnicodeText( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::symName, genc );
}

// From a text to the value
ZU_UNICODE_GENC zuUnicodeGencFromAbbreviation( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeFindValue( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::abbreviation, ABBREVIATIONS, zus );
}
ZU_UNICODE_GENC zuUnicodeGencFromAbbreviationCaseFold( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeFindValueOfFolded( zu___unicodeGencRows, &ZU___UNICODE_GENC_ROW::abbreviation, ABBREVIATIONS,
                                          zus );
}
