// Lookups in the character database.  Each is a few dependent loads from constant data, which zu_unicode_db_internal.h
// describes: the normalizer and the case conversions ask for every character of a text.

#include "zu/unicode/zu_unicode_db.h"

#include "zu/unicode/zu_unicode_db_internal.h"

// Properties
ZU_UNICODE_GENC zu___UnicodeGencDbLookup( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeGencDbFetch( ch );
}
ZU_UNICODE_CCCV zu___UnicodeCccvDbLookup( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeCccvDbFetch( ch );
}
ZU_UNICODE_SCRIPT zu___UnicodeScriptDbLookup( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeScriptDbFetch( ch );
}
ZU_INT zu___UnicodeDecimalDbLookup( ZU_CHAR ch )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return zu___UnicodeDecimalDbFetch( ch );
}

// Decomposition and composition
const ZU_CHAR *zu___UnicodeCdmDbLookup( ZU_CHAR ch, ZU_INT *length, ZU_UNICODE_CDMT *tag )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    uint32_t entry = ZU___UNICODE_TABLE_FETCH( Cdm, ch );
    if ( length ) {
        *length = entry >> 16 & 0xFF;
    }
    if ( tag ) {
        *tag = entry >> 24;
    }
    return entry ? zu___unicodeRuns + ( entry & 0xFFFF ) : nullptr;
}
ZU_BOOL zu___UnicodeCompDbLookup( ZU_CHAR ch1, ZU_CHAR ch2, ZU_CHAR *composeTo )
{
    ZU_ASSERT( ZU_CHAR_OK( ch1 ) );
    ZU_ASSERT( ZU_CHAR_OK( ch2 ) );
    ZU_CHAR composite = zu___UnicodeCompDbFetch( ch1, ch2 );
    if ( composeTo ) {
        *composeTo = composite;
    }
    return composite != 0;
}

// Case

// Returns the mapping that an entry of one of the three tables stands for.
static inline const ZU_CHAR *caseMappingGet( uint16_t entry, ZU_INT *length )
{
    if ( length ) {
        *length = entry & 3;
    }
    return entry ? zu___unicodeRuns + ( entry >> 2 ) : nullptr;
}

const ZU_CHAR *zu___UnicodeLowerCaseDbLookup( ZU_CHAR ch, ZU_INT *length )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return caseMappingGet( ZU___UNICODE_TABLE_FETCH( Lower, ch ), length );
}
const ZU_CHAR *zu___UnicodeUpperCaseDbLookup( ZU_CHAR ch, ZU_INT *length )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return caseMappingGet( ZU___UNICODE_TABLE_FETCH( Upper, ch ), length );
}
const ZU_CHAR *zu___UnicodeCaseFoldDbLookup( ZU_CHAR ch, ZU_INT *length )
{
    ZU_ASSERT( ZU_CHAR_OK( ch ) );
    return caseMappingGet( ZU___UNICODE_TABLE_FETCH( Fold, ch ), length );
}
