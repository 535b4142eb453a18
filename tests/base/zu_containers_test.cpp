// What holds for containers of every class.

#include "zu_test_string.h"

// An object that looks at a container when it dies.
typedef struct WITNESS WITNESS;
struct WITNESS {
    ZU_OBJ obj;
    ZU_INT number;
};
static ZU_OBJ *watched = nullptr;
static std::vector<std::string> seen;
static std::function<void()> onText; // what the next text does beside

static void witnessFree( ZU_OBJ * )
{
    if ( watched ) {
        seen.push_back( textOf( watched ) );
    }
}
static ZU_INT witnessCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    return ( (WITNESS *)thisObj )->number - ( (WITNESS *)thatObj )->number;
}
static ZU_STRING *witnessToString( ZU_OBJ *thisObj )
{
    if ( onText ) {
        std::exchange( onText, nullptr )();
    }
    return zuStringCreateFromFormatCstr( "w%i", -1, ( (WITNESS *)thisObj )->number );
}
static ZU_SORT zu___sort_WITNESS =
    ZU___SORT_INITIALIZER( "WITNESS", nullptr, witnessFree, witnessCompare, witnessToString );

static zu::Ref<ZU_OBJ> witness( ZU_INT number )
{
    ZU_OBJ *obj = zu___ObjCreate( sizeof( WITNESS ), &zu___sort_WITNESS );
    ( (WITNESS *)obj )->number = number;
    return zu::adopt( obj );
}

// Containers of witnesses, two of each two neighbours equal
template <auto create, auto put>
static ZU_OBJ *make()
{
    auto *container = create();
    for ( ZU_INT i = 0; i < 40; i++ ) {
        put( &container, i, witness( i / 2 ).get() );
    }
    return zu::upcast( container );
}
static constexpr auto makeDict = make<zuDictCreate, zuDictSetIntKey>;
static constexpr auto makeVector = make<zuVectorCreate, zuVectorInsertObj>;
static constexpr auto makeRangeMap = make<zuRangeMapCreate, zuRangeMapSetIntKey>;

// What dies by a change finds the container as the change leaves it.
TEST( Containers, AreRightWhenTheirObjectsDie )
{
    static const struct {
        const char *name;
        ZU_OBJ *( *make )();
        size_t deaths;
        void ( *change )( void *container );
    } ROWS[] = {
        { "dict, value", makeDict, 2,
          []( void *dict ) { zuDictDelValue( (ZU_DICT **)dict, witness( 3 ).get(), ZU_TRUE ); } },
        { "dict, exclude", makeDict, 39,
          []( void *dict ) {
              zu::Ref<ZU_DICT> other = zu::adopt( zuDictCreate() );
              for ( ZU_INT i = 1; i < 40; i++ ) {
                  zuDictSetIntKey( other.inOut(), i, zu::adopt( zuBoxedNullObj( zuBoxedNullCreate() ) ).get() );
              }
              zuDictExclude( (ZU_DICT **)dict, other.get() );
          } },
        { "dict, include", makeDict, 40,
          []( void *dict ) {
              zuDictInclude( (ZU_DICT **)dict, zu::adopt( zuDictFrom( makeDict() ) ).get(), ZU_TRUE );
          } },
        { "dict, clear", makeDict, 40, []( void *dict ) { zu___DictClear( (ZU_DICT **)dict ); } },
        { "vector, inner", makeVector, 20, []( void *vec ) { zuVectorDelInner( (ZU_VECTOR **)vec, 7, 20 ); } },
        { "vector, outer", makeVector, 20, []( void *vec ) { zuVectorDelOuter( (ZU_VECTOR **)vec, 7, 20 ); } },
        { "vector, texts", makeVector, 40, []( void *vec ) { zuVectorStringize( (ZU_VECTOR **)vec ); } },
        { "range map, del", makeRangeMap, 20,
          []( void *map ) { zuRangeMapDelRangeKey( (ZU_RANGE_MAP **)map, 7, 26 ); } },
        { "range map, set", makeRangeMap, 20,
          []( void *map ) { zuRangeMapSetRangeKey( (ZU_RANGE_MAP **)map, 7, 26, witness( 7 ).get() ); } },
        { "range map, collapse", makeRangeMap, 20, []( void *map ) { zuRangeMapCollapse( (ZU_RANGE_MAP **)map ); } },
    };
    for ( const auto &row : ROWS ) {
        SCOPED_TRACE( row.name );
        ZU_OBJ *container = row.make();
        seen.clear();
        watched = container;
        row.change( &container );
        watched = nullptr;
        EXPECT_GE( seen.size(), row.deaths ); // those that the change brought along may be among them
        for ( const std::string &text : seen ) {
            EXPECT_EQ( text, textOf( container ) );
        }
        zuObjRelease( container );
    }
}

// The text of an item is anybody's code.
TEST( Containers, BecomeTextsWhileTheirItemsChangeThem )
{
    static const std::pair<std::string, void ( * )( ZU_VECTOR ** )> ROWS[] = {
        { "<>", []( ZU_VECTOR **vec ) { zuVectorClear( vec ); } },
        { "<w0>", []( ZU_VECTOR **vec ) { zuVectorDelTrailing( vec, 39 ); } },
        { "<w0, w0, w1, w0>",
          []( ZU_VECTOR **vec ) {
              ZU_VECTOR *first = zuVectorCreateFromLeading( *vec, 3 );
              zuVectorAppendLeading( &first, *vec, 1 );
              zuVectorRelease( std::exchange( *vec, first ) );
          } },
    };
    for ( const auto &[ expected, change ] : ROWS ) {
        zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorFrom( makeVector() ) );
        zu::Ref<ZU_VECTOR> shared;
        onText = [ &, apply = change ] {
            apply( vec.inOut() );
            shared = vec; // so that the texts go to a copy
        };
        zuVectorStringize( vec.inOut() );
        EXPECT_EQ( textOf( zu::upcast( vec.get() ) ), expected );
        EXPECT_TRUE( zuVectorContainsOnly( vec.get(), zuStringSort() ) );
        EXPECT_EQ( zuVectorContainsOnly( shared.get(), zuStringSort() ), zuVectorLength( shared.get() ) == 0 );
    }
}

TEST( Containers, PrintWhatTheyWereWhileTheirItemsLetThemGo )
{
    for ( auto makeIt : { makeVector, makeDict, makeRangeMap } ) {
        ZU_OBJ *container = makeIt();
        const std::string expected = textOf( container );
        onText = [ & ] { zuObjRelease( std::exchange( container, nullptr ) ); };
        EXPECT_EQ( textOf( container ), expected );
        EXPECT_EQ( container, nullptr );
    }
    zu::Ref<ZU_ENCODER> encoder = zu::adopt( zuEncoderCreate() );
    ZU_VECTOR *vec = zuVectorFrom( makeVector() );
    onText = [ & ] { zuVectorClear( &vec ); };
    zuEncoderEncodeStringVector( encoder.get(), vec );
    EXPECT_EQ( zuEncoderLength( encoder.get() ), 2 + 20 * 4 + 20 * 5 ) << "texts as \"w9\" and as \"w10\"";
    zuVectorRelease( vec );
}

// Whoever decodes data has as much nesting as the data says.
TEST( Containers, AreComparedAndPrintedHoweverDeep )
{
    runOnSmallStack( [] {
        static constexpr ZU_INT DEPTH = 1000000;
        zu::Ref<ZU_OBJ> levels[ 3 ]; // the last, the one in it, and the one in that
        levels[ 0 ] = zu::adopt( zuVectorObj( zuVectorCreate() ) );
        for ( ZU_INT i = 1; i <= DEPTH; i++ ) {
            levels[ 2 ] = levels[ 1 ];
            levels[ 1 ] = levels[ 0 ];
            if ( i % 2 == 1 ) {
                zu::Ref<ZU_DICT> dict = zu::adopt( zuDictCreate() );
                zuDictSetIntKey( dict.inOut(), 7, levels[ 1 ].get() );
                levels[ 0 ] = zu::share( zuDictObj( dict.get() ) );
            } else {
                levels[ 0 ] = zu::adopt( zuVectorObj( zuVectorCreateFromObj( levels[ 1 ].get() ) ) );
            }
        }
        EXPECT_EQ( zuObjCompare( levels[ 0 ].get(), levels[ 2 ].get() ), 1 ) << "in the end the length decides";
        EXPECT_EQ( zuObjCompare( levels[ 2 ].get(), levels[ 0 ].get() ), -1 );
        std::string text = textOf( levels[ 0 ].get() );
        EXPECT_EQ( text.size(), ( DEPTH + 1 ) * 2 + DEPTH );
        EXPECT_EQ( text.substr( 0, 9 ), "<{7=<{7=<" );
    } );
}
