#include "zu/base/zu_string.h"

#include "zu/base/zu_string_internal.h"
#include "zu/sys/zu_mem.h"
#include "zu_test_support.h"

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

using Text = std::u32string;

static ZU_STRING *makeString( const Text &text )
{
    return zuStringCreateFromCharsCopy( (const ZU_CHAR *)text.data(), (ZU_INT)text.size() );
}
static Text textOf( ZU_STRING *zus )
{
    const ZU_CHAR *chars = zuStringBacking( zus );
    return Text( chars, chars + zuStringLength( zus ) );
}

// The model: what a string holds, how much is free at both ends of its storage, and where that is.  A shared_ptr stands
// for a reference, so that its count is the retain count.  Every rule of the storage is written out plainly here once
// more.
struct STRING_MODEL {
    Text text;
    ZU_INT fspace = 0;
    ZU_INT bspace = 64;
    bool onHeap = false;

    ZU_INT length() const
    {
        return (ZU_INT)text.size();
    }
};
using MODEL_REF = std::shared_ptr<STRING_MODEL>;
static MODEL_REF emptyModel; // the shared empty string

static void modelMakeRoom( STRING_MODEL &model, ZU_INT at, ZU_INT count )
{
    bool atFront = at == 0, atEnd = !atFront && at == model.length();
    ZU_INT &nearest = atFront ? model.fspace : model.bspace;
    ZU_INT rest = model.fspace + model.bspace - count;
    if ( nearest >= count ) {
        nearest -= count;
    } else if ( rest >= 0 && !( atEnd && model.onHeap ) ) {
        bool inside = !atFront && !atEnd;
        model.fspace = inside ? rest : 0;
        model.bspace = inside ? 0 : rest;
    } else {
        model.fspace = atEnd ? model.fspace : 32;
        model.bspace = 32;
        model.onHeap = true;
    }
}
static void modelCompact( STRING_MODEL &model )
{
    if ( model.fspace <= 64 && model.bspace <= 64 ) {
        return;
    }
    if ( model.length() <= 64 ) {
        model.onHeap = false;
        model.fspace = 0;
        model.bspace = 64 - model.length();
    } else {
        model.fspace = model.bspace = 32;
    }
}
static void modelInsert( MODEL_REF &dest, ZU_INT idx, const Text &text )
{
    if ( text.empty() ) {
        return;
    }
    if ( dest.use_count() > 1 ) {
        MODEL_REF copy = std::make_shared<STRING_MODEL>();
        copy->text = dest->text;
        copy->text.insert( (size_t)idx, text );
        modelMakeRoom( *copy, 0, copy->length() );
        dest = copy;
    } else {
        modelMakeRoom( *dest, idx, (ZU_INT)text.size() );
        dest->text.insert( (size_t)idx, text );
    }
}
static void modelUnshare( MODEL_REF &dest )
{
    if ( dest.use_count() > 1 ) {
        MODEL_REF copy = std::make_shared<STRING_MODEL>();
        modelInsert( copy, 0, dest->text );
        dest = copy;
    }
}
static void modelDelInner( MODEL_REF &dest, ZU_INT offset, ZU_INT count )
{
    if ( count == 0 ) {
        return;
    }
    if ( count == dest->length() ) {
        dest = emptyModel;
        return;
    }
    modelUnshare( dest );
    ( offset == 0 ? dest->fspace : dest->bspace ) += count;
    dest->text.erase( (size_t)offset, (size_t)count );
    modelCompact( *dest );
}
static void modelDelOuter( MODEL_REF &dest, ZU_INT offset, ZU_INT count )
{
    if ( count == dest->length() ) {
        return;
    }
    if ( count == 0 ) {
        dest = emptyModel;
        return;
    }
    modelUnshare( dest );
    dest->fspace += offset;
    dest->bspace += dest->length() - offset - count;
    dest->text = dest->text.substr( (size_t)offset, (size_t)count );
    modelCompact( *dest );
}

// A variable with a string, and the model of it.
struct STRING_HOLDER {
    ZU_STRING *zus;
    MODEL_REF model;
};

static void expectHolders( const std::vector<STRING_HOLDER> &holders )
{
    ZU_STRING *empty = zuStringCreate();
    for ( const STRING_HOLDER &holder : holders ) {
        ZU_STRING *zus = holder.zus;
        const STRING_MODEL &model = *holder.model;
        ASSERT_EQ( textOf( zus ), model.text );
        ASSERT_EQ( zus == empty, holder.model == emptyModel );
        ASSERT_EQ( zus->fspace, model.fspace );
        ASSERT_EQ( zus->bspace, model.bspace );
        ASSERT_EQ( zus->chars != zus->inlineChars, model.onHeap );
        ASSERT_EQ( zu___ObjDbgAllocationSize( &zus->obj ),
                   model.onHeap ? 4 * ( model.fspace + model.length() + model.bspace ) : 0 );
        if ( zus != empty ) {
            ASSERT_EQ( ZU_REF_RETAIN_COUNT( zus ), (ZU___RETAIN_COUNT)holder.model.use_count() );
        }
        for ( const STRING_HOLDER &other : holders ) {
            ASSERT_EQ( zus == other.zus, holder.model == other.model );
        }
    }
    zuStringRelease( empty );
}

// Random operations, each on a string and on its model
class Operations {
public:
    Operations( uint64_t seed, ZU_INT longest ) : random( seed ), lengthMost( longest )
    {
    }
    void step( STRING_HOLDER &dest, STRING_HOLDER &src );

private:
    ZU_INT below( ZU_INT end )
    {
        return (ZU_INT)( random() % (uint64_t)end );
    }
    ZU_INT upTo( ZU_INT most )
    {
        return below( most + 1 );
    }
    Text someText()
    {
        static constexpr ZU_INT LENGTHS[] = { 0, 1, 1, 1, 2, 3, 7, 20, 32, 33, 63, 64, 65, 100 };
        Text text( (size_t)LENGTHS[ below( 14 ) ], U'?' );
        std::generate( text.begin(), text.end(), [ & ] { return U'a' + (char32_t)below( 26 ); } );
        return text;
    }
    // Calls one of the three forms of an insertion, and returns where it inserts.
    template <typename INSERT, typename APPEND, typename PREPEND, typename... ARGS>
    ZU_INT place( STRING_HOLDER &dest, INSERT insert, APPEND append, PREPEND prepend, ARGS... args )
    {
        ZU_INT length = zuStringLength( dest.zus );
        ZU_INT idx = upTo( length );
        switch ( below( 4 ) ) {
        case 0:
            prepend( &dest.zus, args... );
            return 0;
        case 1:
            insert( &dest.zus, idx, args... );
            return idx;
        default:
            append( &dest.zus, args... );
            return length;
        }
    }
    void replace( STRING_HOLDER &dest, ZU_STRING *zus, MODEL_REF model )
    {
        zuStringRelease( dest.zus );
        dest.zus = zus;
        dest.model = std::move( model );
    }
    void create( STRING_HOLDER &dest, const STRING_HOLDER &src );

    std::mt19937_64 random;
    ZU_INT lengthMost; // of texts that may still grow
};

void Operations::create( STRING_HOLDER &dest, const STRING_HOLDER &src )
{
    const Text from = src.model->text;
    const size_t length = from.size(), offset = (size_t)upTo( (ZU_INT)length );
    const size_t count = (size_t)upTo( (ZU_INT)( length - offset ) );
    const Text text = someText();
    const std::string ascii( text.begin(), text.end() );
    const std::u16string wide( text.begin(), text.end() );
    const ZU_INT textLength = (ZU_INT)text.size(), unitsLength = below( 2 ) ? -1 : textLength;
    MODEL_REF model = std::make_shared<STRING_MODEL>();
    auto make = [ & ]( ZU_STRING *zus, const Text &wanted ) {
        modelInsert( model, 0, wanted );
        replace( dest, zus, model );
    };
    switch ( below( 12 ) ) {
    case 0:
        return make( zuStringCreateFrom( src.zus ), from );
    case 1:
        return make( zuStringCreateFromInner( src.zus, (ZU_INT)offset, (ZU_INT)count ), from.substr( offset, count ) );
    case 2:
        return make( zuStringCreateFromLeading( src.zus, (ZU_INT)offset ), from.substr( 0, offset ) );
    case 3:
        return make( zuStringCreateFromTrailing( src.zus, (ZU_INT)offset ), from.substr( length - offset ) );
    case 4:
        modelInsert( model, 0, from.substr( offset + count ) );
        return make( zuStringCreateFromOuter( src.zus, (ZU_INT)offset, (ZU_INT)count ), from.substr( 0, offset ) );
    case 5:
        model = text.empty() ? emptyModel : model;
        return make( makeString( text ), text );
    case 6: {
        if ( text.empty() ) {
            return replace( dest, zuStringCreateFromCharsUse( nullptr, 0 ), emptyModel );
        }
        ZU_CHAR *chars = (ZU_CHAR *)zuMemDupN( text.data(), textLength, sizeof( ZU_CHAR ) );
        *model = { text, 0, 0, true };
        replace( dest, zuStringCreateFromCharsUse( chars, textLength ), model );
        EXPECT_EQ( zuStringBacking( dest.zus ), chars );
        return;
    }
    case 7:
        return make( zuStringCreateFromAscii( ascii.c_str(), unitsLength ), text );
    case 8:
        return make( zuStringCreateFromUtf8( ascii.c_str(), unitsLength ), text );
    case 9:
        return make( zuStringCreateFromCstr( ascii.c_str(), unitsLength ), text );
    case 10:
        return make( zuStringCreateFromWcstr( wide.c_str(), unitsLength ), text );
    default:
        return replace( dest, zuStringRetain( src.zus ), src.model );
    }
}

void Operations::step( STRING_HOLDER &dest, STRING_HOLDER &src )
{
    const Text from = src.model->text;
    const ZU_INT offset = upTo( src.model->length() );
    const ZU_INT count = upTo( src.model->length() - offset );
    const ZU_INT length = dest.model->length();
    const ZU_INT destOffset = below( 3 ) ? upTo( length ) : 0;
    const ZU_INT destCount = below( 2 ) ? upTo( length - destOffset ) : zuIntMin( 3, length - destOffset );
    const Text text = someText();
    const std::string ascii( text.begin(), text.end() );
    const std::u16string wide( text.begin(), text.end() );
    const ZU_INT textLength = (ZU_INT)text.size();
    // A source that is the changed string itself is held over the change.
    MODEL_REF held;
    auto hold = [ & ] { held = src.model == dest.model ? src.model : nullptr; };
    ZU_INT idx;
    switch ( length > lengthMost ? 11 + below( 4 ) : below( 22 ) ) {
    case 0:
        hold();
        idx = place( dest, zuStringInsert, zuStringAppend, zuStringPrepend, src.zus );
        return modelInsert( dest.model, idx, from );
    case 1:
        hold();
        idx = place( dest, zuStringInsertInner, zuStringAppendInner, zuStringPrependInner, src.zus, offset, count );
        return modelInsert( dest.model, idx, from.substr( (size_t)offset, (size_t)count ) );
    case 2:
        hold();
        idx = place( dest, zuStringInsertLeading, zuStringAppendLeading, zuStringPrependLeading, src.zus, offset );
        return modelInsert( dest.model, idx, from.substr( 0, (size_t)offset ) );
    case 3:
        hold();
        idx = place( dest, zuStringInsertTrailing, zuStringAppendTrailing, zuStringPrependTrailing, src.zus, offset );
        return modelInsert( dest.model, idx, from.substr( from.size() - (size_t)offset ) );
    case 4:
        hold();
        idx = place( dest, zuStringInsertOuter, zuStringAppendOuter, zuStringPrependOuter, src.zus, offset, count );
        modelInsert( dest.model, idx, from.substr( (size_t)( offset + count ) ) );
        return modelInsert( dest.model, idx, from.substr( 0, (size_t)offset ) );
    case 5:
        hold();
        idx = place( dest, zuStringInsertObj, zuStringAppendObj, zuStringPrependObj, zuStringObj( src.zus ) );
        return modelInsert( dest.model, idx, from );
    case 6:
        idx = place( dest, zuStringInsertChar, zuStringAppendChar, zuStringPrependChar, ZU_CHAR{ 'x' } );
        return modelInsert( dest.model, idx, U"x" );
    case 7:
        idx = place( dest, zuStringInsertCharRun, zuStringAppendCharRun, zuStringPrependCharRun, ZU_CHAR{ 'y' },
                     textLength );
        return modelInsert( dest.model, idx, Text( text.size(), U'y' ) );
    case 8:
        idx = place( dest, zuStringInsertChars, zuStringAppendChars, zuStringPrependChars, (const ZU_CHAR *)text.data(),
                     textLength );
        return modelInsert( dest.model, idx, text );
    case 9:
        idx = place( dest, zuStringInsertCstr, zuStringAppendCstr, zuStringPrependCstr, ascii.c_str(), textLength );
        return modelInsert( dest.model, idx, text );
    case 10:
        idx = place( dest, zuStringInsertWcstr, zuStringAppendWcstr, zuStringPrependWcstr, wide.c_str(), ZU_INT{ -1 } );
        return modelInsert( dest.model, idx, text );
    case 11:
        zuStringDelInner( &dest.zus, destOffset, destCount );
        return modelDelInner( dest.model, destOffset, destCount );
    case 12:
        zuStringDelLeading( &dest.zus, destCount );
        return modelDelInner( dest.model, 0, destCount );
    case 13:
        zuStringDelTrailing( &dest.zus, destCount );
        return modelDelInner( dest.model, length - destCount, destCount );
    case 14:
        zuStringDelOuter( &dest.zus, destOffset, destCount );
        return modelDelOuter( dest.model, destOffset, destCount );
    case 15:
        zuStringClear( &dest.zus );
        dest.model = emptyModel;
        return;
    case 16:
    case 17:
        idx = upTo( length + 1 ) - 1;
        zuStringSetCharAt( &dest.zus, idx, 'z' );
        if ( idx == -1 || idx == length ) {
            return modelInsert( dest.model, idx == -1 ? 0 : length, U"z" );
        }
        modelUnshare( dest.model );
        dest.model->text[ (size_t)idx ] = U'z';
        return;
    default:
        return create( dest, src );
    }
}

TEST( String, RandomOperationsFollowTheModel )
{
    uint64_t seed = testSeed();
    SCOPED_TRACE( seed );
    std::mt19937_64 random( seed );
    emptyModel = std::make_shared<STRING_MODEL>();
    for ( int round = 0; round < 20 && !HasFatalFailure(); round++ ) {
        Operations operations( random(), round % 4 ? 500 : 6000 );
        std::vector<STRING_HOLDER> holders;
        for ( int i = 0; i < 1 + round % 5; i++ ) {
            holders.push_back( { zuStringCreate(), emptyModel } );
        }
        for ( int step = 0; step < 3000 && !HasFatalFailure(); step++ ) {
            SCOPED_TRACE( testing::Message() << "round " << round << ", step " << step );
            operations.step( holders[ random() % holders.size() ], holders[ random() % holders.size() ] );
            expectHolders( holders );
        }
        for ( STRING_HOLDER &holder : holders ) {
            zuStringRelease( holder.zus );
        }
    }
    emptyModel = nullptr;
}

// Storage, by examples
static void expectStorage( ZU_STRING *zus, ZU_INT fspace, ZU_INT length, ZU_INT bspace, bool onHeap )
{
    EXPECT_EQ( zus->fspace, fspace );
    EXPECT_EQ( zus->length, length );
    EXPECT_EQ( zus->bspace, bspace );
    EXPECT_EQ( zus->chars != zus->inlineChars, onHeap );
}
TEST( String, GrowsByAConstantSlack )
{
    ZU_STRING *empty = zuStringCreate(), *zus = zuStringCreate();
    for ( int i = 0; i < 64; i++ ) {
        zuStringAppendChar( &zus, 'a' );
    }
    expectStorage( empty, 0, 0, 64, false );
    expectStorage( zus, 0, 64, 0, false );
    zuStringAppendChar( &zus, 'a' );
    expectStorage( zus, 0, 65, 32, true ); // of 97
    zuStringDelOuter( &zus, 0, 0 );
    EXPECT_EQ( zus, empty );
    zuStringInsertCharRun( &zus, 0, 'a', 70 );
    expectStorage( zus, 32, 70, 32, true ); // of 134
    const ZU_CHAR *text = zuStringBacking( zus );
    for ( int i = 0; i < 32; i++ ) {
        zuStringPrependChar( &zus, 'b' );
    }
    EXPECT_EQ( zuStringBacking( zus ), text - 32 ) << "nothing moves";
    for ( int i = 0; i < 32; i++ ) {
        zuStringPrependChar( &zus, 'c' );
    }
    expectStorage( zus, 0, 134, 0, true );
    zuStringPrependChar( &zus, 'd' );
    expectStorage( zus, 32, 135, 32, true );
    zuStringDelInner( &zus, 0, 50 );
    expectStorage( zus, 32, 85, 32, true );
    zuStringRelease( zus );
    zuStringRelease( empty );
}

TEST( String, ChangesThatChangeNothingAndThemselves )
{
    ZU_STRING *zus = makeString( U"ab" ), *copy = zuStringRetain( zus ), *text = zuStringToString( zus );
    EXPECT_EQ( text, zus );
    zuStringRelease( text );
    zuStringInsertCharRun( &copy, 1, 0x110000, 0 ); // not looked at
    EXPECT_EQ( copy, zus );
    zuStringRelease( copy );
    zuStringInsert( &zus, 1, zus );
    zuStringInsertOuter( &zus, 2, zus, 1, 2 );
    EXPECT_EQ( textOf( zus ), U"aaabbb" );
    zuStringInsertChars( &zus, 1, zuStringBacking( zus ) + 3, 3 );
    EXPECT_EQ( textOf( zus ), U"abbbaabbb" );
    while ( zuStringLength( zus ) < 10000 ) { // each way leaves the old storage
        zuStringAppendChars( &zus, zuStringBacking( zus ), zuStringLength( zus ) );
        zuStringPrependChars( &zus, zuStringBacking( zus ), 9 );
    }
    for ( ZU_INT i = 0; i < zuStringLength( zus ); i++ ) {
        EXPECT_EQ( zuStringCharAt( zus, i ), U"abbbaabbb"[ i % 9 ] ) << i;
    }
    zuStringRelease( zus );
}

// Comparison
TEST( String, ComparesByCodePoint )
{
    uint64_t seed = testSeed();
    SCOPED_TRACE( seed );
    std::mt19937_64 random( seed );
    static constexpr char32_t ALPHABET[] = { U'a', U'A', 0xFFFF, 0x10000, 0x10FFFF, 0xD800, 0 };
    for ( int round = 0; round < 5000 && !HasFatalFailure(); round++ ) {
        Text a( random() % 5, 0 ), b( random() % 5, 0 );
        size_t letters = 1 + random() % 7;
        std::generate( a.begin(), a.end(), [ & ] { return ALPHABET[ random() % letters ]; } );
        std::generate( b.begin(), b.end(), [ & ] { return ALPHABET[ random() % letters ]; } );
        ZU_STRING *zusA = makeString( a ), *zusB = makeString( b );
        const ZU_CHAR *charsB = (const ZU_CHAR *)b.data();
        ZU_INT lengthB = (ZU_INT)b.size();
        ASSERT_EQ( zuStringCompare( zusA, zusB ), a < b ? -1 : a > b );
        using ANSWERS = std::array<ZU_BOOL, 3>;
        bool begins = a.compare( 0, b.size(), b ) == 0;
        bool ends = a.size() >= b.size() && a.compare( a.size() - b.size(), b.size(), b ) == 0;
        std::vector<ANSWERS> answers = {
            { zuStringEquals( zusA, zusB ), zuStringBeginsWith( zusA, zusB ), zuStringEndsWith( zusA, zusB ) },
            { zuStringEqualsChars( zusA, charsB, lengthB ), zuStringBeginsWithChars( zusA, charsB, lengthB ),
              zuStringEndsWithChars( zusA, charsB, lengthB ) }
        };
        if ( lengthB == 1 ) {
            answers.push_back( { zuStringEqualsChar( zusA, b[ 0 ] ), zuStringBeginsWithChar( zusA, b[ 0 ] ),
                                 zuStringEndsWithChar( zusA, b[ 0 ] ) } );
        }
        if ( letters <= 2 ) {
            std::string narrow( b.begin(), b.end() );
            std::u16string wide( b.begin(), b.end() );
            answers.push_back( { zuStringEqualsCstr( zusA, narrow.c_str(), -1 ),
                                 zuStringBeginsWithCstr( zusA, narrow.c_str(), lengthB ),
                                 zuStringEndsWithCstr( zusA, narrow.c_str(), -1 ) } );
            answers.push_back( { zuStringEqualsWcstr( zusA, wide.c_str(), lengthB ),
                                 zuStringBeginsWithWcstr( zusA, wide.c_str(), -1 ),
                                 zuStringEndsWithWcstr( zusA, wide.c_str(), lengthB ) } );
        }
        ASSERT_EQ( answers, std::vector<ANSWERS>( answers.size(), { a == b, begins, ends } ) );
        zuStringRelease( zusA );
        zuStringRelease( zusB );
    }
    ZU_STRING *zus = makeString( U"a" );
    EXPECT_EQ( zuStringEqualsChar( zus, 0x110000 ), ZU_FALSE ); // any value may be asked for
    zuStringRelease( zus );
}

// Conversion
template <typename UNIT>
static void expectConverted( UNIT *( *convert )(ZU_STRING *, ZU_BOOL, ZU_INT *), const Text &text,
                             std::basic_string<UNIT> wanted )
{
    ZU_STRING *zus = makeString( text );
    for ( ZU_BOOL nulTerminate : { ZU_FALSE, ZU_TRUE } ) {
        if ( nulTerminate ) {
            wanted.push_back( 0 );
        }
        ZU_INT length = -1;
        UNIT *units = convert( zus, nulTerminate, &length );
        EXPECT_EQ( length, (ZU_INT)wanted.size() );
        EXPECT_EQ( units == nullptr, wanted.empty() );
        EXPECT_EQ( std::basic_string<UNIT>( units, units + length ), wanted );
        zuMemFree( units );
        units = convert( zus, nulTerminate, nullptr );
        EXPECT_EQ( units == nullptr, wanted.empty() );
        zuMemFree( units );
    }
    zuStringRelease( zus );
}

TEST( String, Converts )
{
    expectConverted<char>( zuStringConvertToUtf8, U"", "" );
    expectConverted<char16_t>( zuStringConvertToWcstr, U"", u"" );
    for ( size_t length : { 3u, 64u, 65u, 1000u } ) {
        Text text( length, U'é' );
        std::string utf8;
        while ( utf8.size() < 2 * length ) {
            utf8 += "\xC3\xA9";
        }
        expectConverted<char>( zuStringConvertToAscii, text, std::string( length, '?' ) );
        expectConverted<char>( zuStringConvertToUtf8, text, utf8 );
        expectConverted<char>( zuStringConvertToCstr, text, utf8 );
        expectConverted<char16_t>( zuStringConvertToWcstr, text, std::u16string( length, u'é' ) );
        for ( ZU_STRING *zus : { zuStringCreateFromUtf8( utf8.c_str(), -1 ), zuStringCreateFromCstr( utf8.c_str(), -1 ),
                                 zuStringCreateFromWcstr( std::u16string( length, u'é' ).c_str(), -1 ) } ) {
            EXPECT_EQ( textOf( zus ), text );
            zuStringRelease( zus );
        }
    }
    // A character beyond U+FFFF: whole by way of UTF-8, in two elements by the others
    for ( auto [ zus, text ] : { std::pair{ zuStringCreateFromUtf8( "\U0001F600", -1 ), Text( U"\U0001F600" ) },
                                 std::pair{ zuStringCreateFromCstr( "\U0001F600", -1 ), Text{ 0xD83D, 0xDE00 } },
                                 std::pair{ zuStringCreateFromWcstr( u"\U0001F600", -1 ), Text{ 0xD83D, 0xDE00 } },
                                 std::pair{ zuStringCreateFromAscii( "a\xFF", -1 ), Text{ 'a', 0xFFFD } } } ) {
        EXPECT_EQ( textOf( zus ), text );
        zuStringRelease( zus );
    }
    expectConverted<char>( zuStringConvertToCstr, Text{ 0xD83D, 0xDE00 }, "\U0001F600" );
}

// Aborts
TEST( StringAborts, NullAndRanges )
{
    ZU_STRING *zus = makeString( U"abc" ), *none = nullptr;
    ZU_STRING **nowhere = nullptr;
    ZU_CHAR chars[ 2 ] = { 'a', 0x110000 };
    const struct {
        const char *expression;
        std::function<void()> statement;
    } ROWS[] = {
        { "zus", [ & ] { zuStringBacking( none ); } },
        { "idx >= 0", [ & ] { zuStringCharAt( zus, -1 ); } },
        { "idx < zus->length", [ & ] { zuStringCharAt( zus, 3 ); } },
        { "offset >= 0", [ & ] { zuStringCreateFromInner( zus, -1, -1 ); } },
        { "count <= src->length", [ & ] { zuStringCreateFromTrailing( zus, 4 ); } },
        { "offset + count <= src->length", [ & ] { zuStringCreateFromOuter( zus, 1, 3 ); } },
        { "src || srcLength == 0", [ & ] { zuStringCreateFromCharsUse( nullptr, 1 ); } },
        { "zuCharsAllOk( src, srcLength )", [ & ] { zuStringCreateFromCharsUse( chars, 2 ); } },
        { "zuCharsAllOk( chs, chsLength )", [ & ] { zuStringCreateFromCharsCopy( chars, 2 ); } },
        { "dest", [ & ] { zuStringInsertInner( nowhere, 0, zus, 0, 0 ); } },
        { "*dest", [ & ] { zuStringInsertInner( &none, 0, zus, 0, 0 ); } },
        { "idx <= (*dest)->length", [ & ] { zuStringInsertInner( &zus, 4, none, 0, 0 ); } },
        { "src", [ & ] { zuStringInsertInner( &zus, 0, none, -1, 0 ); } },
        { "offset >= 0", [ & ] { zuStringInsertInner( &zus, 0, zus, -1, -1 ); } },
        { "count >= 0", [ & ] { zuStringInsertInner( &zus, 0, zus, 4, -1 ); } },
        { "ZU_INT_ADD_OK( offset, count )", [ & ] { zuStringInsertInner( &zus, 0, zus, 1, ZU_INT_MAX ); } },
        { "offset + count <= src->length", [ & ] { zuStringInsertInner( &zus, 0, zus, 1, 3 ); } },
        { "idx <= (*dest)->length", [ & ] { zuStringInsertTrailing( &zus, 4, none, 4 ); } },
        { "count <= src->length", [ & ] { zuStringInsertTrailing( &zus, 0, zus, 4 ); } },
        { "zus", [ & ] { zuStringAppendChar( nowhere, 0x110000 ); } },
        { "*zus", [ & ] { zuStringAppendChar( &none, 0x110000 ); } },
        { "ZU_CHAR_OK( ch )", [ & ] { zuStringAppendChar( &zus, 0x110000 ); } },
        { "ZU_INT_ADD_OK( zus->length, count )", [ & ] { zuStringAppendCharRun( &zus, 'a', ZU_INT_MAX ); } },
        { "ZU_INT_ADD_OK( ZU_STRING_FSPACE + ZU_STRING_BSPACE + zus->length, count )",
          [ & ] { zuStringPrependCharRun( &zus, 'a', ZU_INT_MAX - 10 ); } },
        { "ZU_INT_ADD_OK( zus->fspace + zus->length + ZU_STRING_BSPACE, count )",
          [ & ] { zuStringAppendCharRun( &zus, 'a', ZU_INT_MAX - 10 ); } },
        { "ZU_INT_MUL_OK( count, size )", [ & ] { zuStringAppendCharRun( &zus, 'a', ZU_INT_MAX / 4 ); } },
        { "chs || chsLength == 0", [ & ] { zuStringPrependChars( &zus, nullptr, 1 ); } },
        { "thisObj", [ & ] { zuStringAppendObj( &zus, nullptr ); } },
        { "*zus", [ & ] { zuStringDelOuter( &none, 0, 0 ); } },
        { "ZU_INT_ADD_OK( offset, count )", [ & ] { zuStringDelInner( &zus, 1, ZU_INT_MAX ); } },
        { "offset + count <= (*zus)->length", [ & ] { zuStringDelInner( &zus, 1, 3 ); } },
        { "count <= (*zus)->length", [ & ] { zuStringDelTrailing( &zus, 4 ); } },
        { "idx >= -1", [ & ] { zuStringSetCharAt( &zus, -2, 'a' ); } },
        { "idx <= (*zus)->length", [ & ] { zuStringSetCharAt( &zus, 4, 'a' ); } },
        { "ZU_CHAR_OK( ch )", [ & ] { zuStringSetCharAt( &zus, 0, 0x110000 ); } },
        { "zus", [ & ] { zuStringEqualsCstr( none, nullptr, 0 ); } },
        { "sub", [ & ] { zuStringBeginsWith( zus, none ); } },
        { "zus", [ & ] { zuStringEndsWith( none, none ); } },
        { "ZU_CHAR_OK( ch )", [ & ] { zuStringBeginsWithChar( zus, 0x110000 ); } },
        { "subLen >= 0", [ & ] { zuStringBeginsWithChars( zus, chars, -1 ); } },
        { "sub || subLen == 0", [ & ] { zuStringEndsWithChars( zus, nullptr, 1 ); } },
        { "zuCharsAllOk( sub, subLen )", [ & ] { zuStringEndsWithChars( zus, chars, 2 ); } },
        { "zus", [ & ] { zuStringConvertToUtf8( none, ZU_TRUE, nullptr ); } },
    };
    for ( const auto &row : ROWS ) {
        SCOPED_TRACE( testing::Message() << "row " << &row - ROWS );
        expectAbort( row.expression, row.statement );
    }
    zuStringRelease( zus );
}
