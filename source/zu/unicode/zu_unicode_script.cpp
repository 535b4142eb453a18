#include "zu/unicode/zu_unicode_script.h"

#include "zu/unicode/zu_unicode_lookup_internal.h"
#include "zu/unicode/zu_unicode_script_internal.h"

static constexpr auto NAMES = zu___UnicodeSort( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::name, false );
static constexpr auto FOLDED_NAMES = zu___UnicodeSort( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::name, true );

// Start-up: the lookups are constant tables.
void zu___UnicodeScriptStartup( void )
{
}
void zu___UnicodeScriptShutdown( void )
{
}

// From the value to its texts.  99 has no row.
ZU_STRING *zuUnicodeScriptName( ZU_UNICODE_SCRIPT script )
{
    ZU_ASSERT( ZU_UNICODE_SCRIPT_OK( script ) );
    ZU_STRING *zus = zu___UnicodeText( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::name, script );
    ZU_ASSERT( zus );
    return zus;
}
ZU_STRING *zuUnicodeScriptSymName( ZU_UNICODE_SCRIPT script )
{
    ZU_ASSERT( ZU_UNICODE_SCRIPT_OK( script ) );
    ZU_STRING *zus = zu___UnicodeText( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::symName, script );
    ZU_ASSERT( zus );
    return zus;
}

// From a name to the value
ZU_UNICODE_SCRIPT zuUnicodeScriptFromName( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeFindValue( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::name, NAMES, zus );
}
ZU_UNICODE_SCRIPT zuUnicodeScriptFromNameCaseFold( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeFindValueOfFolded( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::name, FOLDED_NAMES, zus );
}
