#include "zu/unicode/zu_unicode_cdmt.h"

#include "zu/unicode/zu_unicode_cdmt_internal.h"
#include "zu/unicode/zu_unicode_lookup_internal.h"

static ZU_DICT *cdmtToTag = nullptr; // of the values that have one
static ZU_DICT *cdmtToDescr = nullptr;
static ZU_DICT *cdmtToSymName = nullptr;
static ZU_DICT *tagToCdmt = nullptr;
// Its keys are not folded, so that "<noBreak>", the only one with a capital, is never found in it.
static ZU_DICT *tagCaseFoldToCdmt = nullptr;

// Start-up
void zu___UnicodeCdmtStartup( void )
{
    cdmtToTag = zu___UnicodeLookupTexts( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::tag );
    cdmtToDescr = zu___UnicodeLookupTexts( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::description );
    cdmtToSymName = zu___UnicodeLookupTexts( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::symName, cdmtToDescr );
    tagToCdmt = zu___UnicodeLookupValues( cdmtToTag, false );
    tagCaseFoldToCdmt = zuDictRetain( tagToCdmt );
}
void zu___UnicodeCdmtShutdown( void )
{
    ZU___UNICODE_LOOKUP_RELEASE( cdmtToTag );
    ZU___UNICODE_LOOKUP_RELEASE( cdmtToDescr );
    ZU___UNICODE_LOOKUP_RELEASE( cdmtToSymName );
    ZU___UNICODE_LOOKUP_RELEASE( tagToCdmt );
    ZU___UNICODE_LOOKUP_RELEASE( tagCaseFoldToCdmt );
}

// From the value to its texts
ZU_STRING *zuUnicodeCdmtTag( ZU_UNICODE_CDMT cdmt )
{
    ZU_ASSERT( ZU_UNICODE_CDMT_OK( cdmt ) );
    ZU_STRING *zus = zu___UnicodeLookupText( cdmtToTag, cdmt );
    ZU_ASSERT( zus );
    return zus;
}
ZU_STRING *zuUnicodeCdmtDescription( ZU_UNICODE_CDMT cdmt )
{
    ZU_ASSERT( ZU_UNICODE_CDMT_OK( cdmt ) );
    return zu___UnicodeLookupText( cdmtToDescr, cdmt );
}
ZU_STRING *zuUnicodeCdmtSymName( ZU_UNICODE_CDMT cdmt )
{
    ZU_ASSERT( ZU_UNICODE_CDMT_OK( cdmt ) );
    return zu___UnicodeLookupText( cdmtToSymName, cdmt );
}

// From a tag to the value
ZU_UNICODE_CDMT zuUnicodeCdmtFromTag( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeLookupValue( tagToCdmt, zus );
}
ZU_UNICODE_CDMT zuUnicodeCdmtFromTagCaseFold( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeLookupValueOfFolded( tagCaseFoldToCdmt, zus );
}
