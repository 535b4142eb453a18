#include "zu_test_support.h"

using namespace zu::literals;

TEST( StringCompose, JoinsAndRepeats )
{
    zu::Ref<ZU_VECTOR> words = zu::adopt( zuVectorCreate() );
    zu::Ref<ZU_STRING> comma = ", "_zs;
    EXPECT_EQ( zu::adopt( zuStringCreateFromJoined( words.get(), comma.get() ) ), "" );
    std::string expected;
    for ( int i = 0; i < 100; i++ ) {
        zuVectorAppendString( words.inOut(), zu::format( "%i", i * i ).get() );
        expected += ( i ? ", " : "" ) + std::to_string( i * i );
        EXPECT_EQ( zu::adopt( zuStringCreateFromJoined( words.get(), comma.get() ) ), expected );
    }
    EXPECT_EQ( zu::adopt( zuStringCreateFromRepeated( "ab"_zs.get(), 3 ) ), "ababab" );
    EXPECT_EQ( zu::adopt( zuStringCreateFromRepeated( "ab"_zs.get(), 0 ) ), "" );
    EXPECT_EQ( zu::adopt( zuStringCreateFromRepeated( ""_zs.get(), ZU_INT_MAX ) ), "" );
    expectAbort( "ZU_INT_MUL_OK( src->length, count )", [] { zuStringCreateFromRepeated( "ab"_zs.get(), ZU_INT_MAX ); } );
    zuVectorAppendInt( words.inOut(), 1 );
    expectAbort( "zuVectorContainsOnly( strings, zuStringSort() )",
                 [ & ] { zuStringCreateFromJoined( words.get(), comma.get() ); } );
}
TEST( StringCompose, ReplacesAll )
{
    SeededRandom random;
    auto some = [ & ]( size_t most ) {
        std::string text( random() % ( most + 1 ), 'a' );
        for ( char &ch : text ) {
            ch = random() % 3 ? 'a' : 'b';
        }
        return text;
    };
    for ( int round = 0; round < 2000 && !HasFailure(); round++ ) {
        std::string model = some( 200 ), sub = some( 3 ) + "a", replacement = some( 5 );
        zu::Ref<ZU_STRING> text = zu::text( model ), copy = text;
        ZU_INT count = 0;
        for ( size_t at = 0; ( at = model.find( sub, at ) ) != std::string::npos; at += replacement.size() ) {
            model.replace( at, sub.size(), replacement );
            count++;
        }
        zu::Ref<ZU_STRING> before = text;
        EXPECT_EQ( zuStringReplaceAll( text.inOut(), zu::text( sub ).get(), zu::text( replacement ).get() ), count );
        EXPECT_EQ( text, model );
        EXPECT_EQ( text.get() == before.get(), count == 0 );
    }
    zu::Ref<ZU_STRING> own = "ab"_zs;
    zuStringReplaceAll( own.inOut(), own.get(), own.get() );
    EXPECT_EQ( own, "ab" );
    expectAbort( "sub->length > 0", [ & ] { zuStringReplaceAll( own.inOut(), ""_zs.get(), own.get() ); } );
}
