#include "charset_test_support.h"

TEST( Charset, NamesAndCodePagesLeadBack )
{
    for ( ZU_CHARSET cs = 0; ZU_CHARSET_OK( cs ); cs++ ) {
        EXPECT_EQ( zuCharsetFromString( zu::adopt( zuCharsetToString( cs ) ).get() ), cs );
        EXPECT_EQ( zuCharsetFromIanaName( zu::adopt( zuCharsetToIanaName( cs ) ).get() ), cs );
        zu::Ref<ZU_VECTOR> names = zu::adopt( zuCharsetIanaNamesVector( cs ) );
        for ( ZU_INT i = 0; i < zuVectorLength( names.get() ); i++ ) {
            zu::Ref<ZU_STRING> upper = zu::adopt( zuStringFrom( zuVectorObjAt( names.get(), i ) ) );
            zuStringToUpper( upper.inOut() );
            EXPECT_EQ( zuCharsetFromIanaName( upper.get() ), cs ) << cs << " " << i;
        }
        ZU_INT codePage = zuCharsetToWindowsCodePage( cs );
        if ( codePage != -1 ) {
            EXPECT_EQ( zuCharsetFromWindowsCodePage( codePage ), cs );
            EXPECT_EQ( zuCharsetFromIanaName( zu::format( "CP%03i", codePage ).get() ), cs ) << codePage;
        }
    }
}

TEST( Charset, LooksUp )
{
    struct {
        const char *name;
        ZU_CHARSET charset;
    } rows[] = {
        { "Utf-8", ZU_CHARSET_UTF_8 },
        { "65001", ZU_CHARSET_UTF_8 },
        { "UTF8", -1 },
        { "", -1 },
        { "37", -1 },
        { "CSASCII", ZU_CHARSET_ASCII },
        { "ISO_646.irv:1991", ZU_CHARSET_ASCII },
        { "ISO-10646", ZU_CHARSET_ISO_8859_1 },
        { "iso-10646-ucs-2", ZU_CHARSET_UTF_16_BE },
        { "csUCS4", ZU_CHARSET_UTF_32_BE },
        { "iso-celtic", ZU_CHARSET_ISO_8859_14 },
        { "\xE2\x84\xAAoi8-r", ZU_CHARSET_KOI_8R }, // by the sign of the kelvin, which folds
    };
    for ( auto &row : rows ) {
        auto name = zu::adopt( zuStringCreateFromUtf8( row.name, -1 ) );
        EXPECT_EQ( zuCharsetFromIanaName( name.get() ), row.charset ) << row.name;
    }
    EXPECT_TRUE( zuStringEqualsCstr( zu::adopt( zuCharsetToIanaName( ZU_CHARSET_ASCII ) ).get(), "US-ASCII", -1 ) );
    EXPECT_EQ( zuCharsetFromWindowsCodePage( 1200 ), ZU_CHARSET_UTF_16_LE );
    EXPECT_EQ( zuCharsetFromWindowsCodePage( 1201 ), ZU_CHARSET_UTF_16_BE );
    EXPECT_EQ( zuCharsetFromWindowsCodePage( 37 ), ZU_CHARSET_MSFT_CP037 );
    EXPECT_EQ( zuCharsetFromWindowsCodePage( 0 ), -1 );
    for ( ZU_CHARSET cs : { ZU_CHARSET_UTF_16, ZU_CHARSET_UTF_32, ZU_CHARSET_UTF_32_LE, ZU_CHARSET_ISO_8859_10 } ) {
        EXPECT_EQ( zuCharsetToWindowsCodePage( cs ), -1 ) << cs;
    }
}
