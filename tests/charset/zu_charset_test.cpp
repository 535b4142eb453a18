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
    const std::pair<ZU_CHARSET, std::string> rows[] = {
        { ZU_CHARSET_UTF_8, "Utf-8|65001" },
        { ZU_CHARSET_ASCII, "CSASCII|ISO_646.irv:1991" },
        { ZU_CHARSET_ISO_8859_1, "ISO-10646" },
        { ZU_CHARSET_UTF_16_BE, "iso-10646-ucs-2" },
        { ZU_CHARSET_UTF_32_BE, "csUCS4" },
        { ZU_CHARSET_ISO_8859_14, "iso-celtic" },
        { ZU_CHARSET_KOI_8R, "\xE2\x84\xAAoi8-r" }, // by the sign of the kelvin, which folds
        { -1, "UTF8||37" },
    };
    for ( const auto &[ charset, names ] : rows ) {
        for ( const std::string &name : divided( names ) ) {
            EXPECT_EQ( zuCharsetFromIanaName( zu::text( name ).get() ), charset ) << name;
        }
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
