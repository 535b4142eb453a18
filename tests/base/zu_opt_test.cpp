#include "zu_test_string.h"

#include <optional>

using DEF = zu::Ref<ZU_OPT_DEF>;
using SEQ = zu::Ref<ZU_OPT_SEQ>;
using VECTOR = zu::Ref<ZU_VECTOR>;
using STRING = zu::Ref<ZU_STRING>;

namespace {

// A command line: strings, and with a # ahead what is none.
using ARGV = std::vector<std::string>;
static bool isString( const std::string &element )
{
    return element.empty() || element[ 0 ] != '#';
}

// What a walk is to do, by the rules one by one and with nothing but the standard library.
struct MODEL {
    std::map<std::string, ZU_INT> longNames;
    std::map<char, ZU_INT> shortNames;
    std::map<ZU_INT, ZU_INT> flags;
    ZU_INT argOnly = -7;
    bool reorder = false;

    ARGV argv;
    std::map<ZU_INT, bool> once;
    bool enabled = true;
    std::string opt, error, aborts; // empty: none
    std::optional<std::string> arg;

    ZU_INT fail( ZU_INT id, const std::string &text )
    {
        error = opt + ": " + text;
        return id;
    }
    std::string take( size_t i )
    {
        std::string element = argv[ i ];
        argv.erase( argv.begin() + (ptrdiff_t)i );
        return element;
    }
    ZU_INT lookUp( const std::string &name, bool *abbreviated )
    {
        *abbreviated = false;
        if ( longNames.count( name ) != 0 ) {
            return longNames[ name ];
        }
        ZU_INT id = -1;
        for ( const auto &[ longName, longId ] : longNames ) {
            if ( !name.empty() && longName.compare( 0, name.size(), name ) == 0 ) {
                id = *abbreviated ? -2 : longId;
                *abbreviated = true;
            }
        }
        return id;
    }
    ZU_INT argument( size_t i )
    {
        std::string element = take( i );
        if ( argOnly < 0 ) {
            error = "non-option argument disallowed";
            return -7;
        }
        arg = element;
        return argOnly;
    }
    ZU_INT longOption( size_t i )
    {
        opt = take( i );
        if ( size_t equals = opt.find( '=' ); equals != std::string::npos ) {
            arg = opt.substr( equals + 1 );
            opt.resize( equals );
        }
        bool abbreviated;
        ZU_INT id = lookUp( opt.substr( 2 ), &abbreviated );
        if ( id < 0 ) {
            return fail( id, id == -1 ? "option undefined" : "ambiguous" );
        }
        if ( ( flags[ id ] & ZU_OPT_FLAG_ARGUMENT ) && !arg ) {
            if ( i >= argv.size() ) {
                return fail( -3, "argument missing" );
            }
            arg = take( i );
        }
        if ( ( flags[ id ] & ZU_OPT_FLAG_NO_ABBREV ) && abbreviated ) {
            return fail( -6, "abbreviated option disallowed" );
        }
        if ( !( flags[ id ] & ZU_OPT_FLAG_ARGUMENT ) && arg ) {
            return fail( -4, "argument disallowed" );
        }
        return id;
    }
    ZU_INT shortOption( size_t i )
    {
        std::string text = argv[ i ];
        bool rest = text.size() > 2;
        opt = text.substr( 0, 2 );
        if ( rest ) {
            argv[ i ] = "-" + text.substr( 2 );
        } else {
            take( i );
        }
        if ( shortNames.count( text[ 1 ] ) == 0 ) {
            return fail( -1, "option undefined" );
        }
        ZU_INT id = shortNames[ text[ 1 ] ];
        if ( flags[ id ] & ZU_OPT_FLAG_ARGUMENT ) {
            if ( i >= argv.size() ) {
                return fail( -4, "argument missing" );
            }
            arg = take( i );
            if ( rest ) {
                arg->erase( 0, 1 );
            }
        }
        return id;
    }
    ZU_INT step()
    {
        opt.clear();
        error.clear();
        arg.reset();
        size_t length = argv.size();
        if ( length == 0 ) {
            aborts = "length";
            return 0;
        }
        for ( size_t i = 0; i < length; i++ ) {
            if ( i >= argv.size() ) {
                aborts = "idx < vec->length";
                return 0;
            }
            const std::string element = argv[ i ];
            if ( !enabled || ( isString( element ) ? element.size() < 2 || element[ 0 ] != '-' : !reorder ) ) {
                return argument( i );
            }
            if ( !isString( element ) ) {
                continue;
            }
            if ( element == "--" ) {
                enabled = false;
                take( i );
                return step();
            }
            ZU_INT id = element[ 1 ] == '-' ? longOption( i ) : shortOption( i );
            if ( id < 0 ) {
                return id;
            }
            if ( flags[ id ] & ZU_OPT_FLAG_ONCE ) {
                if ( once[ id ] ) {
                    return fail( -5, "multiple options disallowed" );
                }
                once[ id ] = true;
            }
            if ( !( flags[ id ] & ZU_OPT_FLAG_IGNORE ) ) {
                return id;
            }
            opt.clear();
            arg.reset();
        }
        enabled = false;
        return step();
    }
    void close()
    {
        if ( argv == ARGV{ "--" } ) {
            argv.clear();
        }
    }
};

} // namespace

static std::string elementOf( ZU_OBJ *obj )
{
    return ( zuObjSort( obj ) == zuStringSort() ? "" : "#" ) + textOf( obj );
}
static ARGV argvOf( ZU_VECTOR *vec )
{
    ARGV argv;
    for ( ZU_OBJ *item : zu::items<ZU_OBJ>( vec ) ) {
        argv.push_back( elementOf( item ) );
    }
    return argv;
}
static VECTOR vectorOf( const ARGV &argv )
{
    VECTOR vec = zu::adopt( zuVectorCreate() );
    for ( const std::string &element : argv ) {
        isString( element ) ? zuVectorAppendString( vec.inOut(), string( element ).get() )
                            : zuVectorAppendInt( vec.inOut(), std::stoll( element.substr( 1 ) ) );
    }
    return vec;
}
static DEF defOf( const MODEL &model )
{
    DEF def = zu::adopt( zuOptDefCreate() );
    for ( const auto &[ name, id ] : model.longNames ) {
        zuOptDefSetLongOptCstr( def.inOut(), name.data(), (ZU_INT)name.size(), id );
    }
    for ( const auto &[ name, id ] : model.shortNames ) {
        zuOptDefSetShortOpt( def.inOut(), (ZU_CHAR)name, id );
    }
    for ( const auto &[ id, flags ] : model.flags ) {
        zuOptDefSetFlags( def.inOut(), id, flags );
    }
    if ( model.argOnly >= 0 ) {
        zuOptDefSetArgOnly( def.inOut(), model.argOnly );
    }
    zuOptDefSetReorder( def.inOut(), model.reorder );
    return def;
}

static const std::vector<std::string> NAMES = { "foo", "foobar", "verbose", "version", "v", "output" };
static const std::string LETTERS = "abcv";

static MODEL randomModel( SeededRandom &random )
{
    MODEL model;
    for ( const std::string &name : NAMES ) {
        if ( random() % 4 != 0 ) {
            model.longNames[ name ] = (ZU_INT)( random() % 5 );
        }
    }
    for ( char name : LETTERS ) {
        if ( random() % 4 != 0 ) {
            model.shortNames[ name ] = (ZU_INT)( random() % 5 );
        }
    }
    for ( ZU_INT id = 0; id < 5; id++ ) {
        // Few are ignored, since that seldom ends well.
        ZU_INT flags = (ZU_INT)( random() % 16 );
        model.flags[ id ] = random() % 4 == 0 ? flags : flags & ~ZU_OPT_FLAG_IGNORE;
    }
    model.argOnly = random() % 4 == 0 ? -7 : 77;
    model.reorder = random() % 2 == 0;
    return model;
}
static std::string randomElement( SeededRandom &random )
{
    const std::string &name = NAMES[ random.below( NAMES.size() ) ];
    std::string text;
    switch ( random.below( 10 ) ) {
    case 0:
        return "#" + std::to_string( random.below( 100 ) );
    case 1:
        return divided( "--|-||x|--=x|---" )[ random.below( 6 ) ];
    case 2:
    case 3:
    case 4:
        text = "-";
        for ( size_t i = 0; i <= random.below( 4 ); i++ ) {
            text += LETTERS[ random.below( LETTERS.size() ) ];
        }
        return text;
    default:
        text = "--" + name.substr( 0, random.below( 2 ) ? name.size() : 1 + random.below( name.size() ) );
        return text + ( random.below( 4 ) == 0 ? "=a=b" : random.below( 8 ) == 0 ? "=" : "" );
    }
}
// Of lines that abort, each a process of its own, `abortsLeft` are tried.
static void expectWalk( MODEL model, int *abortsLeft )
{
    VECTOR argv = vectorOf( model.argv );
    ARGV before = model.argv;
    SEQ seq = zu::adopt( zuOptSeqCreate( defOf( model ).get(), argv.get() ) );
    model.close();
    EXPECT_EQ( zuOptSeqId( seq.get() ), -1 );
    while ( !model.argv.empty() ) {
        ASSERT_TRUE( zuOptSeqHasNext( seq.get() ) );
        ZU_INT id = model.step();
        if ( !model.aborts.empty() ) {
            if ( --*abortsLeft >= 0 ) {
                expectAbort( model.aborts.c_str(), [ & ] { zuOptSeqNext( seq.get() ); } );
            }
            return;
        }
        model.close();
        ASSERT_EQ( zuOptSeqNext( seq.get() ), id );
        ASSERT_EQ( zuOptSeqId( seq.get() ), id );
        STRING opt = zu::adopt( zuOptSeqOpt( seq.get() ) );
        STRING error = zu::adopt( zuOptSeqError( seq.get() ) );
        zu::Ref<ZU_OBJ> arg = zu::adopt( zuOptSeqArgObj( seq.get() ) );
        ASSERT_EQ( opt ? textOf( opt.get() ) : "", model.opt );
        ASSERT_EQ( error ? textOf( error.get() ) : "", model.error );
        ASSERT_EQ( arg ? std::optional( elementOf( arg.get() ) ) : std::nullopt, model.arg );
        ASSERT_EQ( zuOptSeqHasOpt( seq.get() ), (bool)opt );
        ASSERT_EQ( zuOptSeqHasError( seq.get() ), (bool)error );
        ASSERT_EQ( zuOptSeqHasArg( seq.get() ), (bool)arg );
        ASSERT_EQ( argvOf( zu::adopt( zuOptSeqRemainingArgv( seq.get() ) ).get() ), model.argv );
    }
    ASSERT_FALSE( zuOptSeqHasNext( seq.get() ) );
    ASSERT_EQ( argvOf( argv.get() ), before );
}
TEST( OptSeq, WalksLikeItsModel )
{
    SeededRandom random;
    int abortsLeft = 50;
    for ( int i = 0; i < 4000 && !HasFailure(); i++ ) {
        MODEL model = randomModel( random );
        for ( size_t length = random() % 8; length > 0; length-- ) {
            model.argv.push_back( randomElement( random ) );
        }
        SCOPED_TRACE( testing::Message() << "line " << i << ": " << testing::PrintToString( model.argv ) );
        expectWalk( model, &abortsLeft );
    }
}
// The only argument of a command line that has nothing else.
static SEQ seqOfArgument( ZU_OBJ *arg )
{
    MODEL model;
    model.argOnly = 7;
    SEQ seq = zu::adopt( zuOptSeqCreate( defOf( model ).get(), zu::adopt( zuVectorCreateFromObj( arg ) ).get() ) );
    EXPECT_EQ( zuOptSeqNext( seq.get() ), 7 );
    return seq;
}
TEST( OptSeq, ReadsArguments )
{
    const auto text = []( const char *chars ) { return zuStringObj( zuStringCreateFromAscii( chars, -1 ) ); };
    const auto real = []( double value ) { return zuBoxedRealObj( zuBoxedRealCreate( value ) ); };
    struct ROW {
        ZU_OBJ *arg;
        std::optional<ZU_INT> asInt;
        std::optional<double> asReal;
        std::optional<bool> asBool, asBoolOrNumber;
    };
    const ROW rows[] = {
        { text( "12" ), 12, 12.0, {}, true },
        { text( " -0x10 " ), -16, -16.0, {}, true },
        { text( "12x" ), {}, {}, {}, {} },
        { text( "" ), {}, {}, {}, {} },
        { text( "0.5" ), {}, 0.5, {}, true },
        { text( "0.0" ), {}, 0.0, {}, false },
        { text( "99999999999999999999" ), {}, 1e20, {}, true },
        { text( " True " ), {}, {}, true, true },
        { text( "falsehood" ), {}, {}, {}, {} },
        { real( 3.0 ), 3, 3.0, {}, true },
        { real( -2.5 ), {}, -2.5, {}, true },
        { real( -0x1p63 ), ZU_INT_MIN, -0x1p63, {}, true },
        { real( 0x1p63 ), {}, 0x1p63, {}, true },
        { zuBoxedIntObj( zuBoxedIntCreate( 0 ) ), 0, 0.0, {}, false },
        { zuBoxedBoolObj( zuBoxedBoolCreate( ZU_TRUE ) ), {}, {}, true, true },
        { zuBoxedNullObj( zuBoxedNullCreate() ), {}, {}, {}, {} },
    };
    for ( const ROW &row : rows ) {
        SEQ seq = seqOfArgument( zu::adopt( row.arg ).get() );
        SCOPED_TRACE( textOf( zu::adopt( zuOptSeqArgString( seq.get() ) ).get() ) );
        EXPECT_EQ( zuOptSeqArgIsInt( seq.get() ), row.asInt.has_value() );
        EXPECT_EQ( zuOptSeqArgInt( seq.get() ), row.asInt.value_or( 0 ) );
        EXPECT_EQ( zuOptSeqArgIsReal( seq.get() ), row.asReal.has_value() );
        EXPECT_DOUBLE_EQ( zuOptSeqArgReal( seq.get() ), row.asReal.value_or( 0.0 ) );
        EXPECT_EQ( zuOptSeqArgIsBool( seq.get(), ZU_FALSE ), row.asBool.has_value() );
        EXPECT_EQ( zuOptSeqArgBool( seq.get(), ZU_FALSE ), row.asBool.value_or( false ) );
        EXPECT_EQ( zuOptSeqArgIsBool( seq.get(), ZU_TRUE ), row.asBoolOrNumber.has_value() );
        EXPECT_EQ( zuOptSeqArgBool( seq.get(), ZU_TRUE ), row.asBoolOrNumber.value_or( false ) );
    }
}
TEST( OptDef, IsAValueThatLooksUp )
{
    DEF def = zu::adopt( zuOptDefCreate() );
    zuOptDefSetLongOptCstr( def.inOut(), "version", 4, 1 );
    zuOptDefSetLongOptWcstr( def.inOut(), u"verbose", -1, 1 );
    zuOptDefSetFlags( def.inOut(), 1, 5 );
    DEF copy = def;
    zuOptDefSetLongOpt( copy.inOut(), string( "verb" ).get(), 2 );
    zuOptDefSetStringize( copy.inOut(), 2 );
    ZU_BOOL abbreviated = 7;
    EXPECT_EQ( zuOptDefLongOpt( def.get(), string( "vers" ).get(), ZU_TRUE, &abbreviated ), 1 );
    EXPECT_FALSE( abbreviated );
    EXPECT_EQ( zuOptDefLongOpt( def.get(), string( "ver" ).get(), ZU_TRUE, &abbreviated ), -2 );
    EXPECT_TRUE( abbreviated );
    EXPECT_EQ( zuOptDefLongOpt( def.get(), string( "verbo" ).get(), ZU_FALSE, &abbreviated ), -1 );
    EXPECT_FALSE( abbreviated );
    EXPECT_EQ( zuOptDefLongOpt( copy.get(), string( "verb" ).get(), ZU_FALSE, nullptr ), 2 );
    EXPECT_EQ( zuOptDefFlags( copy.get(), 1 ), 5 );
    EXPECT_EQ( zuOptDefFlags( copy.get(), 2 ), 0 );
    EXPECT_EQ( zuOptDefArgOnly( copy.get() ), -7 );
    EXPECT_FALSE( zuOptDefStringize( def.get() ) );
    SEQ seq = zu::adopt( zuOptSeqCreate( copy.get(), vectorOf( { "#-5", "--" } ).get() ) );
    EXPECT_EQ( zuOptSeqNext( seq.get() ), -1 ); // the number has become an option
    EXPECT_EQ( textOf( zu::adopt( zuOptFlagsToString( 5 ) ).get() ), "ARGUMENT|ONCE" );
    EXPECT_EQ( textOf( zu::adopt( zuOptFlagsToString( 16 ) ).get() ), "" );
}
