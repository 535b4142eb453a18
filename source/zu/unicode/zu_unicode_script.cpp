#include "zu/unicode/zu_unicode_script.h"

#include "zu/unicode/zu_unicode_lookup_internal.h"
#include "zu/unicode/zu_unicode_script_internal.h"

static ZU_DICT *scriptToName = nullptr;
static ZU_DICT *scriptToSymName = nullptr;
static ZU_DICT *nameToScript = nullptr;
static ZU_DICT *nameCaseFoldToScript = nullptr;

// Start-up
void zu___UnicodeScriptStartup( void )
{
    scriptToName = zu___UnicodeLookupTexts( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::name );
    scriptToSymName =
        zu___UnicodeLookupTexts( zu___unicodeScriptRows, &ZU___UNICODE_SCRIPT_ROW::symName, scriptToName );
    nameToScript = zu___UnicodeLookupValues( scriptToName, false );
    nameCaseFoldToScript = zu___UnicodeLookupValues( scriptToName, true );
}
void zu___UnicodeScriptShutdown( void )
{
    ZU___UNICODE_LOOKUP_RELEASE( scriptToName );
    ZU___UNICODE_LOOKUP_RELEASE( scriptToSymName );
    ZU___UNICODE_LOOKUP_RELEASE( nameToScript );
    ZU___UNICODE_LOOKUP_RELEASE( nameCaseFoldToScript );
}

// From the value to its texts.  99 has no row.
ZU_STRING *zuUnicodeScriptName( ZU_UNICODE_SCRIPT script )
{
    ZU_ASSERT( ZU_UNICODE_SCRIPT_OK( script ) );
    ZU_STRING *zus = zu___UnicodeLookupText( scriptToName, script );
    ZU_ASSERT( zus );
    return zus;
}
ZU_STRING *zuUnicodeScriptSymName( ZU_UNICODE_SCRIPT script )
{
    ZU_ASSERT( ZU_UNICODE_SCRIPT_OK( script ) );
    ZU_STRING *zus = zu___UnicodeLookupText( scriptToSymName, script );
    ZU_ASSERT( zus );
    return zus;
}

// From a name to the value
ZU_UNICODE_SCRIPT zuUnicodeScriptFromName( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeLookupValue( nameToScript, zus );
}
ZU_UNICODE_SCRIPT zuUnicodeScriptFromNameCaseFold( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeLookupValueOfFolded( nameCaseFoldToScript, zus );
}
