#include "zu_test_support.h"

#include <memory>
#include <unordered_set>

using namespace zu::literals;

static_assert( sizeof( zu::Ref<ZU_STRING> ) == sizeof( ZU_STRING * ) );

enum class Colour : uint8_t { red = 3 };

static bool equals( const zu::Ref<ZU_STRING> &text, const char *expected )
{
    return zuStringEqualsCstr( text.get(), expected, -1 );
}

TEST( Ref, CountsReferences )
{
    ZU_STRING *string = zuStringCreateFromAscii( "a", -1 );
    {
        zu::Ref<ZU_STRING> owner = zu::adopt( string );
        zu::Ref<ZU_STRING> copy = owner;
        zu::Ref<ZU_STRING> shared = zu::share( string );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 3u );
        zu::Ref<ZU_STRING> moved = std::move( copy );
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 3u );
        moved = nullptr;
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 2u );
        shared = *&shared;
        EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 2u );
        zuStringAppendChar( shared.inOut(), 'b' );
        EXPECT_TRUE( equals( shared, "ab" ) );
        EXPECT_EQ( owner.release(), string );
        EXPECT_FALSE( owner );
    }
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( string ), 1u );
    EXPECT_FALSE( zu::share<ZU_STRING>( nullptr ) );
    zuStringRelease( string );
}

TEST( HppFormat, WidensArguments )
{
    EXPECT_TRUE( equals( zu::format( "%i %i %i %i %i", (int8_t)-1, (uint16_t)65535, -2147483647 - 1, 7u, INT64_MIN ),
                         "-1 65535 -2147483648 7 -9223372036854775808" ) );
    EXPECT_TRUE( equals( zu::format( "%b %i %c %*i", true, Colour::red, U'x', 3, 'A' ), "true 3 x  65" ) );
    EXPECT_TRUE( equals( zu::format( "%r %.1r", 0.5f, 2.5L ), "0.500000 2.5" ) );
}
TEST( HppFormat, PassesPointersAsTheyAre )
{
    zu::Ref<ZU_STRING> text = zu::format( "%lc%lw", "ab", u"cd" );
    char array[] = "ef";
    EXPECT_TRUE(
        equals( zu::format( "%s %o %s %lc", text, zuStringObj( text.get() ), nullptr, array ), "abcd abcd null ef" ) );
    EXPECT_TRUE(
        equals( zu::format( "%~s%~s", zu::share( text.get() ).release(), zu::format( "%i", 1 ).release() ), "abcd1" ) );
    EXPECT_EQ( ZU_REF_RETAIN_COUNT( text.get() ), 1u );
}
TEST( HppFormat, ChangesStrings )
{
    zu::Ref<ZU_STRING> fmt = zu::adopt( zuStringCreateFromAscii( "<%i>", -1 ) );
    zu::Ref<ZU_STRING> text = zu::format( fmt.get(), 0 );
    zu::appendFormat( text.inOut(), "%i", 1 );
    zu::appendFormat( text.inOut(), fmt.get(), 2 );
    zu::insertFormat( text.inOut(), 3, "%i", 3 );
    zu::insertFormat( text.inOut(), 3, fmt.get(), 4 );
    zu::prependFormat( text.inOut(), "%i", 5 );
    zu::prependFormat( text.inOut(), fmt.get(), 6 );
    EXPECT_TRUE( equals( text, "<6>5<0><4>31<2>" ) );
}

// What does not compile, by the judgement that decides so
template <typename... Args>
constexpr bool refused( const char *fmt, zu::internal::Fault fault, int argument )
{
    zu::internal::Verdict verdict = zu::internal::judgeFormat<Args...>( fmt );
    return verdict.fault == fault && verdict.argument == argument;
}
using Fault = zu::internal::Fault;
using STRING_REF = zu::Ref<ZU_STRING>;
static_assert( refused<int, int, double, bool, char *>( "%%%#5.3!*i|%r|%b|%^~lc%3.95m", Fault::none, 0 ) );
static_assert( refused<int, int, int, int>( "%*.*!*A", Fault::none, 0 ) );
static_assert( refused<const char *, int, STRING_REF>( "%lC%s", Fault::none, 0 ) );
static_assert( refused<>( "100%%", Fault::formatWithoutConversion, 0 ) );
static_assert( refused<>( "%#%", Fault::none, 0 ) );
static_assert( refused<int>( "%i %", Fault::unknownConversion, 2 ) );
static_assert( refused<int>( "%5d", Fault::unknownConversion, 1 ) );
static_assert( refused<const char *>( "%lx", Fault::unknownConversion, 1 ) );
static_assert( refused<int>( "%i %i", Fault::tooFewArguments, 2 ) );
static_assert( refused<const char *>( "%lC", Fault::tooFewArguments, 2 ) );
static_assert( refused<int, int>( "%i", Fault::tooManyArguments, 2 ) );
static_assert( refused<double>( "%i", Fault::argumentMustBeAnInteger, 1 ) );
static_assert( refused<STRING_REF, int>( "%*i", Fault::argumentMustBeAnInteger, 1 ) );
static_assert( refused<const char *, STRING_REF>( "%lC", Fault::argumentMustBeAnInteger, 2 ) );
static_assert( refused<int>( "%r", Fault::argumentMustBeAReal, 1 ) );
static_assert( refused<zu::Ref<ZU_VECTOR>>( "%s", Fault::argumentMustBeAString, 1 ) );
static_assert( refused<int>( "%o", Fault::argumentMustBeAnObject, 1 ) );
static_assert( refused<STRING_REF>( "%lc", Fault::argumentMustBeNarrowText, 1 ) );
static_assert( refused<const char *>( "%lw", Fault::argumentMustBeWideText, 1 ) );
static_assert( refused<STRING_REF>( "%~s", Fault::argumentIsReleasedTwice, 1 ) );
static_assert( refused<std::string>( "%~o", Fault::argumentIsReleasedTwice, 1 ) );
static_assert( refused<ZU_STRING *>( "%~s", Fault::none, 0 ) );
static_assert( !std::is_convertible_v<zu::Ref<ZU_OBJ>, STRING_REF> && !std::is_convertible_v<ZU_STRING *, STRING_REF> );

TEST( HppFormat, TakesTextOfTheStandardLibrary )
{
    const std::string narrow = "\U0001F600", copied = "x";
    STRING_REF text = ZU_FORMAT( "\U0001F600%s%o%lc%lw%s|%s|%-3s|%lC|%s", narrow, narrow.c_str(), "\U0001F600",
                                 u"\U0001F600", u"\U0001F600"_zs, std::u16string_view( u"\U0001F600" ), U"ab", "cde", 2,
                                 static_cast<const char *>( nullptr ) );
    EXPECT_EQ( zu::view( text ),
               U"\U0001F600\U0001F600\U0001F600\U0001F600\U0001F600\U0001F600|\U0001F600|ab |cd|null" );
    EXPECT_EQ( zu::format( zu::runtime( "%~lc%i" ), (char *)zuMemDupCstr( "ab", -1 ), 1 ), "ab1" );
}
TEST( HppText, ConvertsBothWays )
{
    STRING_REF text = "a\U0001F600"_zs;
    EXPECT_EQ( zu::toUtf8( text ), "a\U0001F600" );
    EXPECT_EQ( zu::toUtf16( text ), u"a\U0001F600" );
    for ( const STRING_REF &same :
          { u8"a\U0001F600"_zs, u"a\U0001F600"_zs, U"a\U0001F600"_zs, zu::text( zu::view( text ) ) } ) {
        EXPECT_EQ( same, text );
        EXPECT_EQ( std::hash<STRING_REF>()( same ), std::hash<STRING_REF>()( text ) );
    }
    EXPECT_EQ( zu::text( std::u16string{ 0xD83D, u'b', 0xDE00 } ), std::u32string_view( U"\uFFFDb\uFFFD" ) );
    EXPECT_EQ( zu::text( "x\xE9\"\xC0\x80" ), std::u32string_view( U"x\uFFFD\"\uFFFD\uFFFD" ) );
    std::ostringstream stream;
    stream << text << STRING_REF() << zu::adopt( zuBoxedIntCreate( 7 ) ) << text.get() << zu::upcast( text );
    EXPECT_EQ( stream.str(), "a\U0001F6007a\U0001F600a\U0001F600" );
    EXPECT_TRUE( text == "a\U0001F600" && text != "b" && text < "b"_zs && STRING_REF() < text && text != nullptr );
    EXPECT_TRUE( "a\U0001F600" == text && u"a\U0001F600" == text && U"a\U0001F600" == text && u"b" != text );
}
TEST( HppRanges, WalkWhatStoodThere )
{
    zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorCreate() );
    zu::Ref<ZU_DICT> dict = zu::adopt( zuDictCreate() );
    zu::Ref<ZU_STORE> store = zu::adopt( zuStoreCreate() );
    for ( const char *word : { "b", "a" } ) {
        zuVectorAppendString( vec.inOut(), zu::text( word ).get() );
        zuDictSetStringKey( dict.inOut(), zu::text( word ).get(), zu::upcast( vec.get() ) );
        zuStoreSetValue( store.inOut(), zu::text( word ).get(), zu::text( word ).get() );
    }
    zuStoreSetStore( store.inOut(), zu::text( "a" ).get(), zu::adopt( zuStoreCreate() ).get() );
    std::string seen;
    for ( ZU_STRING *word : zu::items<ZU_STRING>( vec ) ) {
        zuVectorClear( vec.inOut() );
        seen += zu::toUtf8( word );
    }
    for ( auto [ key, words ] : zu::pairs<ZU_STRING, ZU_VECTOR>( dict ) ) {
        seen += zu::toUtf8( key ) + zu::toUtf8( zu::toText( words ) );
    }
    for ( const zu::StoreEntry &entry : zu::entries( store ) ) {
        seen += zu::toUtf8( entry.address ) + zu::toUtf8( entry.value ) + ( entry.store ? "+" : "" );
    }
    int left = 2;
    for ( STRING_REF &line : zu::lines( zu::lineSource( [ & ] { return left-- ? "l"_zs : nullptr; } ) ) ) {
        seen += zu::toUtf8( line );
    }
    EXPECT_EQ( seen, "baa<b, a>b<b>aa+bbll" );
}
TEST( HppCalls, LambdasLiveAsLongAsTheyMayBeCalled )
{
    std::shared_ptr<std::string> log = std::make_shared<std::string>();
    auto note = [ log ]( const char *word ) { *log += word; };
    {
        zuThreadJoin( zu::spawn( "noting", [ note ] { note( "thread " ); } ).get() );
        zu::Ref<ZU_SIGNAL> signal = zu::adopt( zuSignalCreate() );
        zu::Ref<ZU_SIGNALABLE> listener = zu::signalable( [ note ] { note( "signal " ); } );
        zuSignalAddSignalable( signal.get(), listener.get() );
        zuSignalAssert( signal.get() );
        zu::Ref<ZU_SIGNAL> fired = zu::adopt( zuSignalCreate() );
        zu::Ref<ZU_TIMER> timer = zu::timer( [ note, fired ] {
            note( "timer " );
            zuSignalAssert( fired.get() );
        } );
        zuTimerSchedule( timer.get(), 0 );
        zuSignalWait( fired.get() );
        zu::Ref<ZU_BYTE_SINK> sink =
            zu::byteSink( [ note ]( const uint8_t *bytes, ZU_INT ) { return note( (const char *)bytes ), true; },
                          [ note ] { return note( "flushed" ), true; } );
        zuByteSinkWriteBytes( sink.get(), (const uint8_t *)"bytes ", 7 );
        zu::Ref<ZU_MONITOR> monitor = zu::adopt( zuMonitorCreate() );
        {
            zu::MonitorGuard inside( monitor );
        }
        zu::MonitorGuard again( monitor );
    }
    EXPECT_EQ( *log, "thread signal timer bytes flushed" );
    while ( log.use_count() > 2 ) {
        zuThreadYield(); // the timer's thread gives its lambda up when it has been called
    }
}
