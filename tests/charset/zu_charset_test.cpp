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

TEST( Charset, Flags )
{
    EXPECT_EQ( zuCharsetFlagsNormalize( 3 ), 2 );
    EXPECT_EQ( zuCharsetFlagsNormalize( 16 ), 0 );
    EXPECT_EQ( zuCharsetFlagsNormalize( -1 ), 14 );
    auto names = zu::adopt( zuCharsetFlagsToString( 1 | 8 ) );
    EXPECT_TRUE( zuStringEqualsCstr(
        names.get(), "ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER|ZU_CHARSET_FLAG_INSERT_BYTE_ORDER_MARK", -1 ) );
    EXPECT_EQ( zuCharsetFlagsFromString( names.get() ), 9 );
    EXPECT_EQ( zuCharsetFlagsFromString( zu::format( "ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS | 1%#%" ).get() ), 2 );
}

TEST( Charset, ConvertsWholeTexts )
{
    static constexpr ZU_CHARSET_FLAGS FAIL = ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER;
    auto text = zu::adopt( zuStringCreateFromUtf8( "\xC3\xA9\xE2\x82\xAC!", -1 ) );
    auto bytes = zu::adopt( zuCharsetStringToBuffer( ZU_CHARSET_MSFT_CP1252, text.get() ) );
    const uint8_t *begin = zuBufferBacking( bytes.get() );
    EXPECT_EQ( Bytes( begin, begin + zuBufferLength( bytes.get() ) ), ( Bytes{ 0xE9, 0x80, '!' } ) );
    auto back = zu::adopt( zuCharsetBufferToString( ZU_CHARSET_MSFT_CP1252, bytes.get() ) );
    EXPECT_TRUE( zuStringEquals( back.get(), text.get() ) );
    EXPECT_EQ( zuCharsetStringToBufferWithFlags( ZU_CHARSET_ASCII, text.get(), FAIL ), nullptr );
    EXPECT_EQ( zuCharsetBufferToStringWithFlags( ZU_CHARSET_ASCII, bytes.get(), FAIL ), nullptr );
    auto empty = zu::adopt( zuBufferCreate() );
    EXPECT_EQ( zuStringLength( zu::adopt( zuCharsetBufferToString( ZU_CHARSET_UTF_16, empty.get() ) ).get() ), 0 );
}

TEST( CharsetAborts, WhatIsNoSet )
{
    expectAbort( "ZU_CHARSET_OK( cs )", [] { zuCharsetToIanaName( 51 ); } );
    expectAbort( "ZU_CHARSET_OK( cs )", [] { zuCharsetToString( -1 ); } );
    expectAbort( "cp >= 0", [] { zuCharsetFromWindowsCodePage( -1 ); } );
    expectAbort( "ZU_CHARSET_OK( charset )", [] {
        auto buffer = zu::adopt( zuBufferCreate() );
        zuCharsetBufferToString( 51, buffer.get() );
    } );
}
