#include "zu_test_support.h"

using IDENTIFIER = zu::Ref<ZU_IDENTIFIER>;

// Texts one step away from an identifier's, or none, as a string and as bytes.
TEST( Identifier, TakesItsTextAndNoOther )
{
    SeededRandom random;
    static const std::string ODD = "/:@GaFf09AF \xC3\xFF\x80\0";
    int taken = 0;
    for ( int round = 0; round < 3000; round++ ) {
        IDENTIFIER fresh = zu::adopt( zuIdentifierCreate() );
        std::string text = zu::toUtf8( zu::adopt( zuIdentifierString( fresh.get() ) ) );
        ASSERT_EQ( text.size(), 32u );
        size_t at = random() % 32;
        switch ( random() % 4 ) {
        case 0:
            text[ at ] = ODD[ random() % ODD.size() ];
            break;
        case 1:
            text.insert( at, 1, ODD[ random() % ODD.size() ] );
            break;
        case 2:
            text.erase( at, 1 );
        }
        bool wanted = text.size() == 32 && text.find_first_not_of( "0123456789ABCDEF" ) == std::string::npos;
        zu::Ref<ZU_BUFFER> buf =
            zu::adopt( zuBufferCreateFromBytesCopy( (const uint8_t *)text.data(), (ZU_INT)text.size() ) );
        zuBufferBitAppendBits( buf.inOut(), 1, (ZU_INT)( random() % 8 ) ); // which is no byte
        zu::Ref<ZU_STRING> zus = zu::adopt( zuStringCreate() );
        for ( char ch : text ) {
            zuStringAppendChar( zus.inOut(), (uint8_t)ch );
        }
        IDENTIFIER fromString = zu::adopt( zuIdentifierTryCreateFromString( zus.get() ) );
        IDENTIFIER fromBuffer = zu::adopt( zuIdentifierTryCreateFromBuffer( buf.get() ) );
        ASSERT_EQ( bool( fromString ), wanted ) << text;
        ASSERT_EQ( bool( fromBuffer ), wanted ) << text;
        if ( wanted ) {
            taken++;
            EXPECT_EQ( zu::adopt( zuIdentifierString( fromString.get() ) ).get(), zus.get() );
            EXPECT_EQ( fromString, fromBuffer );
            EXPECT_EQ( zu::toUtf8( zu::adopt( zuIdentifierToString( fromBuffer.get() ) ) ), text );
            zuBufferBitDelTrailing( buf.inOut(), zuBufferBitLength( buf.get() ) % 8 );
            EXPECT_EQ( zu::adopt( zuIdentifierBuffer( fromString.get() ) ), buf );
            EXPECT_EQ( zuIdentifierCompare( fromString.get(), fresh.get() ),
                       zuStringCompare( zus.get(), zu::adopt( zuIdentifierString( fresh.get() ) ).get() ) );
        }
    }
    EXPECT_GT( taken, 700 );
}

TEST( Identifier, IsAKey )
{
    zu::Ref<ZU_DICT> dict = zu::adopt( zuDictCreate() );
    std::map<std::string, IDENTIFIER> model;
    for ( int i = 0; i < 200; i++ ) {
        IDENTIFIER key = zu::adopt( zuIdentifierCreate() );
        model[ zu::toUtf8( zu::adopt( zuIdentifierString( key.get() ) ) ) ] = key;
        zuDictSetIdentifierKey( dict.inOut(), key.get(), zu::upcast( key.get() ) );
        EXPECT_EQ( zuDictIndexOfIdentifierKey( dict.get(), zu::adopt( zuIdentifierCreate() ).get() ), -1 );
    }
    ZU_INT position = 0;
    for ( const auto &[ text, key ] : model ) {
        IDENTIFIER equal = zu::adopt( zuIdentifierTryCreateFromString( zu::text( text ).get() ) );
        EXPECT_EQ( zuDictIndexOfIdentifierKey( dict.get(), equal.get() ), position++ );
        EXPECT_EQ( zu::adopt( zuDictIdentifierKey( dict.get(), equal.get() ) ).get(), zu::upcast( key.get() ) );
    }
    for ( const auto &[ text, key ] : model ) {
        EXPECT_TRUE( zuDictHasIdentifierKey( dict.get(), key.get() ) );
        zuDictDelIdentifierKey( dict.inOut(), key.get() );
        EXPECT_FALSE( zuDictHasIdentifierKey( dict.get(), key.get() ) );
    }
    EXPECT_EQ( zuDictLength( dict.get() ), 0 );
}
