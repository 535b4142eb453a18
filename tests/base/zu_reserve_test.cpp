// What is reserved is appended without a move; what was there, and copies of it, stay as they are.

#include "zu/base/zu_reserve.h"

#include "zu/base/zu_dict_internal.h"
#include "zu_test_support.h"

static constexpr ZU_INT MORE = 10000;

template <typename T, typename RESERVE, typename APPEND, typename PLACE, typename LENGTH>
static void expectRoom( zu::Ref<T> value, RESERVE reserve, APPEND append, PLACE place, LENGTH length )
{
    for ( ZU_INT grown : { 0, 1, 63, 65, 200 } ) {
        while ( length( value.get() ) < grown ) {
            append( value.inOut() );
        }
        zu::Ref<T> copy = value;
        reserve( value.inOut(), MORE );
        EXPECT_EQ( zuObjCompare( zu::upcast( value.get() ), zu::upcast( copy.get() ) ), 0 );
        append( value.inOut() ); // what is empty may have no place yet
        const void *before = place( value.get() );
        for ( ZU_INT i = 1; i < MORE; i++ ) {
            append( value.inOut() );
        }
        EXPECT_EQ( place( value.get() ), before ) << grown;
        EXPECT_EQ( length( value.get() ), length( copy.get() ) + MORE );
        value = copy;
    }
}
TEST( Reserve, AppendsInPlace )
{
    expectRoom(
        zu::adopt( zuStringCreate() ), zuStringReserve, []( ZU_STRING **zus ) { zuStringAppendChar( zus, 'x' ); },
        zuStringBacking, zuStringLength );
    auto item = zu::text( "x" );
    expectRoom(
        zu::adopt( zuVectorCreate() ), zuVectorReserve,
        [ & ]( ZU_VECTOR **vec ) { zuVectorAppendString( vec, item.get() ); }, zuVectorBacking, zuVectorLength );
    expectRoom(
        zu::adopt( zuBufferCreate() ), zuBufferReserve, []( ZU_BUFFER **buf ) { zuBufferAppendBits( buf, 1, 8 ); },
        zuBufferBacking, zuBufferLength );
    // Keys that ascend stay in an array; in the other order they come into rings, which take over the room.
    for ( ZU_INT sign : { 1, -1 } ) {
        expectRoom(
            zu::adopt( zuDictCreate() ), zuDictReserve,
            [ & ]( ZU_DICT **dict ) {
                zuDictSetIntKey( dict, sign * zuDictLength( *dict ), zu::upcast( item.get() ) );
            },
            [ & ]( ZU_DICT *dict ) {
                EXPECT_TRUE( dict->items || dict->rings.count << dict->rings.shift >= MORE );
                return sign > 0 ? (const void *)dict->items : nullptr;
            },
            zuDictLength );
    }
    expectAbort( "count >= 0", [ & ] { zuStringReserve( item.inOut(), -1 ); } );
}
