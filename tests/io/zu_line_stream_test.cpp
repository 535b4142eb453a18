#include "zu/io/zu_line_sink.h"
#include "zu/io/zu_line_source.h"
#include "zu/io/zu_nlf_line_sink.h"
#include "zu/io/zu_nlf_line_source.h"
#include "zu/io/zu_string_char_sink.h"
#include "zu_test_string.h"

typedef std::vector<std::u32string> LINES;

static ZU_VECTOR *makeVector( const LINES &lines )
{
    ZU_VECTOR *vec = zuVectorCreate();
    for ( const std::u32string &line : lines ) {
        ZU_STRING *zus = makeString( line );
        zuVectorAppendString( &vec, zus );
        zuStringRelease( zus );
    }
    return vec;
}

// What lines are, told without a cache
static LINES splitLines( const std::u32string &text, ZU_NLF_FLAGS flags )
{
    static const std::pair<char32_t, ZU_NLF_FLAGS> ENDS[] = {
        { 0x0A, ZU_NLF_FLAG_LF },  { 0x0B, ZU_NLF_FLAG_VT },   { 0x0C, ZU_NLF_FLAG_FF },   { 0x0D, ZU_NLF_FLAG_CR },
        { 0x85, ZU_NLF_FLAG_NEL }, { 0x2028, ZU_NLF_FLAG_LS }, { 0x2029, ZU_NLF_FLAG_PS },
    };
    LINES lines;
    std::u32string line;
    bool begun = false;
    for ( size_t i = 0; i < text.size(); i++ ) {
        begun = true;
        bool pair = flags & ZU_NLF_FLAG_CRLF && text.compare( i, 2, U"\r\n" ) == 0;
        bool ended = pair;
        for ( const auto &[ ch, flag ] : ENDS ) {
            ended = ended || ( text[ i ] == ch && flags & flag );
        }
        if ( ended ) {
            i += pair;
            lines.push_back( line );
            line.clear();
            begun = false;
        } else {
            line += text[ i ];
        }
    }
    if ( begun ) {
        lines.push_back( line );
    }
    return lines;
}
static LINES drain( ZU_LINE_SOURCE *source )
{
    LINES lines;
    EXPECT_FALSE( zuLineSourceEnd( source ) );
    while ( ZU_STRING *line = zuLineSourceRead( source ) ) {
        lines.push_back( takeChars( line ) );
        EXPECT_FALSE( zuLineSourceEnd( source ) );
    }
    EXPECT_TRUE( zuLineSourceEnd( source ) && !zuLineSourceError( source ) );
    EXPECT_EQ( zuLineSourceLinesRead( source ), (ZU_INT)lines.size() );
    return lines;
}
static LINES readLines( const std::u32string &text, ZU_NLF_FLAGS flags )
{
    ZU_STRING *zus = makeString( text );
    ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceCreateFromString( zus, flags );
    ZU_LINE_SOURCE *source = zuNlfLineSourceLineSource( nls );
    LINES lines = drain( source );
    releaseAll( source, nls, zus );
    return lines;
}

TEST( NlfLineSource, EveryMixtureSplitsAcrossEveryCutOfTheCache )
{
    // All characters that can end a line, alone, doubled and in both orders, with text that looks like them.
    const std::u32string tail = U"\n\r\r\n\n\ra\r\nb\rc\nd\u0085\u0085e\v\f\u2028\u2029f\x09\x0E\x84\x86\u2027\u202A"
                                U"\U0001000A\U0001000D\r";
    for ( ZU_NLF_FLAGS flags = 0; flags < 256; flags++ ) {
        for ( size_t cut = 0; cut <= tail.size() + 1; cut++ ) {
            std::u32string text = std::u32string( 1025 - cut, 'a' ) + tail + ( cut % 2 ? U"\n" : U"" );
            ASSERT_EQ( readLines( text, flags ), splitLines( text, flags ) ) << flags << ", " << cut;
        }
    }
}
TEST( NlfLineSource, RandomTextOverManyCaches )
{
    static const char32_t CHARS[] = U"\r\n\r\nab\u0085\u2028\u2029\v\f";
    for ( unsigned seed = 1; seed <= 200; seed++ ) {
        std::mt19937 random( seed );
        std::u32string text( random() % 6000, 'x' );
        unsigned sparse = 1 + random() % 40;
        for ( char32_t &ch : text ) {
            if ( random() % sparse == 0 ) {
                ch = CHARS[ random() % 11 ];
            }
        }
        ZU_NLF_FLAGS flags = (ZU_NLF_FLAGS)( random() % 256 );
        ASSERT_EQ( readLines( text, flags ), splitLines( text, flags ) ) << "seed " << seed;
    }
}
TEST( NlfLineSource, UnknownFlagsAndLongLines )
{
    EXPECT_EQ( readLines( U"a\r\nb\n", ZU_NLF_FLAG_CR | ZU_NLF_FLAG_LF | 0x100 ), ( LINES{ U"a", U"", U"b" } ) );
    const std::u32string longLine( 100000, 'a' );
    EXPECT_EQ( readLines( longLine + U"\n", ZU_NLF_FLAG_LF ), LINES{ longLine } );
}

// A character source that keeps to a script: pieces of text, the last of which may come with a failure.
static std::vector<std::u32string> pieces;
static bool failsAtTheEnd;
static std::vector<ZU_INT> asked;
static ZU_BOOL readPiece( ZU_OBJ *, ZU_CHAR *chars, ZU_INT maxCharCount, ZU_INT *charsRead )
{
    size_t call = asked.size();
    asked.push_back( maxCharCount );
    if ( call < pieces.size() ) {
        std::copy( pieces[ call ].begin(), pieces[ call ].end(), chars );
        *charsRead = (ZU_INT)pieces[ call ].size();
    }
    return !failsAtTheEnd || call + 1 < pieces.size();
}
static ZU_LINE_SOURCE *makePieces( const std::vector<std::u32string> &newPieces, bool fails )
{
    pieces = newPieces;
    failsAtTheEnd = fails;
    asked.clear();
    ZU_CHAR_SOURCE *chars = zu___CharSourceCreate( readPiece, nullptr );
    ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceCreate( chars, ZU_NLF_FLAG_CRLF | ZU_NLF_FLAG_LF );
    ZU_LINE_SOURCE *source = zuNlfLineSourceLineSource( nls );
    releaseAll( nls, chars );
    return source;
}

TEST( NlfLineSource, FailuresComeUpWithWhatWasRead )
{
    for ( const char32_t *text : { U"one\ntwo", U"one\n" } ) {
        ZU_LINE_SOURCE *source = makePieces( { text }, true );
        EXPECT_EQ( takeChars( zuLineSourceRead( source ) ), U"one" );
        EXPECT_FALSE( zuLineSourceEnd( source ) );
        ZU_STRING *rest = zuLineSourceRead( source );
        EXPECT_EQ( rest ? takeChars( rest ) : U"", std::u32string( text ).substr( 4 ) );
        EXPECT_TRUE( zuLineSourceEnd( source ) && zuLineSourceError( source ) );
        EXPECT_EQ( zuLineSourceRead( source ), nullptr );
        EXPECT_EQ( zuLineSourceLinesRead( source ), rest ? 2 : 1 );
        zuLineSourceRelease( source );
    }
}
TEST( NlfLineSource, AsksAsOftenAsItMust )
{
    struct ROW {
        LINES pieces;
        LINES lines;
        std::vector<ZU_INT> asked;
    };
    const std::u32string as( 1023, 'a' );
    const std::u32string bs( 1022, 'b' );
    const ROW rows[] = {
        // The pair across the cut is asked for with what room is left; a full cache that ends in text is gone on from.
        { { as + U"\r", U"\n" + bs, U"c" }, { as, bs + U"c" }, { 1024, 1023, 1024 } },
        // A carriage return that a line begins with, last in the cache, is looked behind even after a short read.
        { { U"a\n\r", U"\nb" }, { U"a", U"", U"b" }, { 1024, 1023 } },
        { { as + U"b" }, { as + U"b" }, { 1024, 1024 } },
    };
    for ( const ROW &row : rows ) {
        ZU_LINE_SOURCE *source = makePieces( row.pieces, false );
        EXPECT_EQ( drain( source ), row.lines );
        EXPECT_EQ( asked, row.asked );
        zuLineSourceRelease( source );
    }
}

// A line sink that records, and fails when it is told to
static LINES written;
static size_t failingWrite;
static int flushes;
static ZU_BOOL flushResult;
static ZU_LINE_SINK *makeSink()
{
    written.clear();
    failingWrite = SIZE_MAX;
    flushes = 0;
    flushResult = ZU_TRUE;
    return zu___LineSinkCreate(
        []( ZU_OBJ *, ZU_STRING *line ) -> ZU_BOOL {
            written.push_back( takeChars( zuStringRetain( line ) ) );
            return written.size() <= failingWrite;
        },
        []( ZU_OBJ * ) {
            flushes++;
            return flushResult;
        },
        nullptr );
}

TEST( LineSink, WritesLinesOfAllKinds )
{
    ZU_LINE_SINK *sink = makeSink();
    ZU_STRING *zus = makeString( U"abcd" );
    ZU_VECTOR *vec = makeVector( { U"1", U"2", U"3", U"4" } );
    ZU_VECTOR *none = zuVectorCreate();
    EXPECT_TRUE( zuLineSinkWrite( sink, zus ) );
    EXPECT_TRUE( zuLineSinkWriteInner( sink, zus, 1, 2 ) );
    EXPECT_TRUE( zuLineSinkWriteOuter( sink, zus, 1, 2 ) );
    EXPECT_TRUE( zuLineSinkWriteLeading( sink, zus, 0 ) );
    EXPECT_TRUE( zuLineSinkWriteTrailing( sink, zus, 3 ) );
    EXPECT_EQ( written, LINES( { U"abcd", U"bc", U"ad", U"", U"bcd" } ) );
    written.clear();
    EXPECT_TRUE( zuLineSinkWriteLines( sink, none ) );
    EXPECT_TRUE( zuLineSinkWriteLines( sink, vec ) );
    EXPECT_TRUE( zuLineSinkWriteLinesInner( sink, vec, 1, 2 ) );
    EXPECT_TRUE( zuLineSinkWriteLinesOuter( sink, vec, 1, 2 ) );
    EXPECT_TRUE( zuLineSinkWriteLinesLeading( sink, vec, 1 ) );
    EXPECT_TRUE( zuLineSinkWriteLinesTrailing( sink, vec, 1 ) );
    EXPECT_EQ( written, LINES( { U"1", U"2", U"3", U"4", U"2", U"3", U"1", U"4", U"1", U"4" } ) );
    EXPECT_EQ( zuLineSinkLinesWritten( sink ), 15 );
    EXPECT_EQ( zuLineSinkFlush( sink ), ZU_TRUE );
    EXPECT_EQ( flushes, 1 );
    zuLineSinkRelease( sink );
    EXPECT_EQ( flushes, 2 );
    releaseAll( none, vec, zus );
}

TEST( NlfLineSink, WritesTheFirstNewlineFunction )
{
    struct ROW {
        ZU_NLF_FLAGS flags;
        std::u32string nlf;
    };
    const ROW rows[] = {
        { 0, U"" },
        { 255, U"\n" },
        { ZU_NLF_FLAG_CR | ZU_NLF_FLAG_CRLF, U"\r" },
        { ZU_NLF_FLAG_CRLF | ZU_NLF_FLAG_PS, U"\r\n" },
        { ZU_NLF_FLAG_NEL | ZU_NLF_FLAG_VT, U"\u0085" },
        { ZU_NLF_FLAG_VT | ZU_NLF_FLAG_FF, U"\v" },
        { ZU_NLF_FLAG_FF | ZU_NLF_FLAG_LS, U"\f" },
        { ZU_NLF_FLAG_LS | ZU_NLF_FLAG_PS, U"\u2028" },
        { ZU_NLF_FLAG_PS | 0x100, U"\u2029" },
    };
    for ( const ROW &row : rows ) {
        ZU_STRING_CHAR_SINK *collector = zuStringCharSinkCreate();
        ZU_CHAR_SINK *chars = zuStringCharSinkCharSink( collector );
        ZU_NLF_LINE_SINK *nls = zuNlfLineSinkCreate( chars, row.flags );
        ZU_LINE_SINK *sink = zuNlfLineSinkLineSink( nls );
        EXPECT_EQ( zuNlfLineSinkNlfFlags( nls ), row.flags & 255 );
        EXPECT_TRUE( zuLineSinkWriteCstr( sink, "a", -1 ) );
        EXPECT_TRUE( zuLineSinkWriteCstr( sink, "", -1 ) );
        EXPECT_TRUE( zuLineSinkWriteCstr( sink, "b\n", -1 ) );
        EXPECT_EQ( takeChars( zuStringCharSinkString( collector ) ), U"a" + row.nlf + row.nlf + U"b\n" + row.nlf );
        EXPECT_EQ( takeChars( zuNlfFlagsNlfString( row.flags ) ), row.nlf );
        releaseAll( sink, nls, chars, collector );
    }
}
TEST( NlfLineSink, PassesFailuresAndFlushesOn )
{
    static std::vector<ZU_INT> counts;
    static int charFlushes;
    ZU_CHAR_SINK *chars = zu___CharSinkCreate(
        []( ZU_OBJ *, const ZU_CHAR *, ZU_INT count ) -> ZU_BOOL {
            counts.push_back( count );
            return counts.size() < 5;
        },
        []( ZU_OBJ * ) {
            charFlushes++;
            return ZU_TRUE;
        },
        nullptr );
    ZU_NLF_LINE_SINK *nls = zuNlfLineSinkCreate( chars, ZU_NLF_FLAG_CRLF );
    ZU_LINE_SINK *sink = zuNlfLineSinkLineSink( nls );
    EXPECT_TRUE( zuLineSinkWriteCstr( sink, "ab", -1 ) );
    EXPECT_TRUE( zuLineSinkFlush( sink ) );
    EXPECT_EQ( charFlushes, 1 );
    EXPECT_FALSE( zuLineSinkWriteCstr( sink, "c", -1 ) ) << "its carriage return fails";
    EXPECT_EQ( counts, std::vector<ZU_INT>( { 2, 1, 1, 1, 1 } ) );
    EXPECT_TRUE( zuLineSinkError( sink ) );
    releaseAll( sink, nls, chars );
    EXPECT_EQ( charFlushes, 1 );
}

TEST( LineAborts, InvalidCharacters )
{
    ZU_LINE_SOURCE *invalid = makePieces( { U"a\U00100000\nb" + std::u32string( 1, 0x110000 ) }, false );
    EXPECT_EQ( takeChars( zuLineSourceRead( invalid ) ), U"a\U00100000" ) << "as long as it stands in no line";
    expectAbort( "zuCharsAllOk( chs, chsLength )", [ & ] { zuLineSourceRead( invalid ); } );
    zuLineSourceRelease( invalid );
}
