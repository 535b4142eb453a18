#include "zu_test_string.h"

static ZU_OBJ *boxedInt( ZU_INT value )
{
    return zuBoxedIntObj( zuBoxedIntCreate( value ) );
}
static ZU_OBJ *boxedReal( double value )
{
    return zuBoxedRealObj( zuBoxedRealCreate( value ) );
}
static ZU_OBJ *boxedBool( ZU_BOOL value )
{
    return zuBoxedBoolObj( zuBoxedBoolCreate( value ) );
}

// Boxes in ascending order, the sorts by their names; all are different, and releases them.
static void expectAscending( const std::vector<ZU_OBJ *> &objs )
{
    for ( size_t a = 0; a < objs.size(); a++ ) {
        for ( size_t b = 0; b < objs.size(); b++ ) {
            ZU_INT order = zuObjCompare( objs[ a ], objs[ b ] );
            EXPECT_EQ( ( order > 0 ) - ( order < 0 ), ( a > b ) - ( a < b ) )
                << textOf( objs[ a ] ) << " and " << textOf( objs[ b ] );
        }
    }
    for ( ZU_OBJ *obj : objs ) {
        zuObjRelease( obj );
    }
}
TEST( Boxed, Order )
{
    ZU_BOXED_UNIQUE *uniqueA = zuBoxedUniqueCreate();
    ZU_BOXED_UNIQUE *uniqueB = zuBoxedUniqueCreate();
    zuBoxedUniqueCompare( uniqueA, uniqueB ); // gives both their numbers
    ZU_INT numberA = zu___ObjUnique( zuBoxedUniqueObj( uniqueA ) );
    bool aFirst = numberA < zu___ObjUnique( zuBoxedUniqueObj( uniqueB ) );
    char addresses[ 2 ];
    expectAscending( { boxedBool( ZU_FALSE ), boxedBool( ZU_TRUE ), boxedInt( ZU_INT_MIN ), boxedInt( -1 ),
                       boxedInt( 1 ), boxedInt( ZU_INT_MAX ), zuBoxedNullObj( zuBoxedNullCreate() ),
                       boxedReal( -INFINITY ), boxedReal( 1.0 ), boxedReal( 1.0 + 0x1p-51 ), boxedReal( INFINITY ),
                       zuBoxedUniqueObj( aFirst ? uniqueA : uniqueB ), zuBoxedUniqueObj( aFirst ? uniqueB : uniqueA ),
                       zu___BoxedPointerObj( zu___BoxedPointerCreate( nullptr, nullptr ) ),
                       zu___BoxedPointerObj( zu___BoxedPointerCreate( &addresses[ 0 ], nullptr ) ),
                       zu___BoxedPointerObj( zu___BoxedPointerCreate( &addresses[ 1 ], nullptr ) ),
                       zu___BoxedPointerObj( zu___BoxedPointerCreate( (void *)UINTPTR_MAX, nullptr ) ) } );
}

TEST( Boxed, ValuesAndTexts )
{
    const std::pair<ZU_OBJ *, const char *> rows[] = {
        { boxedBool( -7 ), "true" },
        { boxedBool( 0 ), "false" },
        { boxedInt( ZU_INT_MIN ), "-9223372036854775808" },
        { boxedReal( 1.5 ), "1.500000" },
        { zuBoxedNullObj( zuBoxedNullCreate() ), "null" },
    };
    EXPECT_EQ( zuBoxedBoolValue( zuBoxedBoolFrom( rows[ 0 ].first ) ), ZU_TRUE );
    EXPECT_EQ( zuBoxedBoolValue( zuBoxedBoolFrom( rows[ 1 ].first ) ), ZU_FALSE );
    EXPECT_EQ( zuBoxedIntValue( zuBoxedIntFrom( rows[ 2 ].first ) ), ZU_INT_MIN );
    EXPECT_EQ( zuBoxedRealValue( zuBoxedRealFrom( rows[ 3 ].first ) ), 1.5 );
    for ( const auto &[ obj, text ] : rows ) {
        EXPECT_EQ( textOf( obj ), text );
        zuObjRelease( obj );
    }
    zu::Ref<ZU_BOXED_UNIQUE> unique = zu::adopt( zuBoxedUniqueCreate() );
    EXPECT_EQ( textOf( zuBoxedUniqueObj( unique.get() ) ).rfind( "ZU_BOXED_UNIQUE(", 0 ), 0u );
}

TEST( Boxed, PointerIsDestroyedOnce )
{
    int destroyed = 0;
    ZU___BOXED_POINTER *bptr =
        zu___BoxedPointerCreate( &destroyed, []( void *value ) { ++*static_cast<int *>( value ); } );
    EXPECT_EQ( zu___BoxedPointerValue( bptr ), &destroyed );
    zu___BoxedPointerRelease( zu___BoxedPointerRetain( bptr ) );
    EXPECT_EQ( destroyed, 0 );
    zu___BoxedPointerRelease( bptr );
    EXPECT_EQ( destroyed, 1 );
}
