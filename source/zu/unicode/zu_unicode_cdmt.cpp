#include "zu/unicode/zu_unicode_cdmt.h"

#include "zu/unicode/zu_unicode_cdmt_internal.h"
#include "zu/unicode/zu_unicode_lookup_internal.h"

// Folded texts are looked for among these as they are, so that "<noBreak>", the only one with a capital, is never
// found.
static constexpr auto TAGS = zu___UnicodeSort( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::tag, false );

// Start-up: the lookups are constant tables.
void zu___UnicodeCdmtStartup( void )
{
}
void zu___UnicodeCdmtShutdown( void )
{
}

// From the value to its texts
ZU_STRING *zuUnicodeCdmtTag( ZU_UNICODE_CDMT cdmt )
{
    ZU_ASSERT( ZU_UNICODE_CDMT_OK( cdmt ) );
    ZU_STRING *zus = zu___UnicodeText( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::tag, cdmt );
    ZU_ASSERT( zus );
    return zus;
}
ZU_STRING *zuUnicodeCdmtDescription( ZU_UNICODE_CDMT cdmt )
{
    ZU_ASSERT( ZU_UNICODE_CDMT_OK( cdmt ) );
    return zu___UnicodeText( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::description, cdmt );
}
ZU_STRING *zuUnicodeCdmtSymName( ZU_UNICODE_CDMT cdmt )
{
    ZU_ASSERT( ZU_UNICODE_CDMT_OK( cdmt ) );
    return zu___UnicodeText( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::symName, cdmt );
}

// From a tag to the value
ZU_UNICODE_CDMT zuUnicodeCdmtFromTag( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeFindValue( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::tag, TAGS, zus );
}
ZU_UNICODE_CDMT zuUnicodeCdmtFromTagCaseFold( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zu___UnicodeFindValueOfFolded( zu___unicodeCdmtRows, &ZU___UNICODE_CDMT_ROW::tag, TAGS, zus );
}
