#include "zu/base/zu_flagset_internal.h"

#include "zu_test_string.h"

using FLAGSET = zu::Ref<ZU_FLAGSET>;

static ZU_INT bitOf( ZU_INT bit )
{
    return (ZU_INT)( (uint64_t)1 << bit );
}

// The bits of three names, and the names of all bits that have one.
static std::string contents( ZU_FLAGSET *fs )
{
    std::string result;
    for ( const char *name : { "ZU_A", "ZU_B", "ZU_C" } ) {
        ZU_INT flag = zuFlagsetFlagCstr( fs, name, -1 );
        EXPECT_EQ( zuFlagsetHasFlagCstr( fs, name, -1 ), flag != 0 );
        result += flag == 0 ? "-" : std::to_string( zuIntBitLowest( flag ) ) + ",";
    }
    return result + ":" + takeText( zuFlagsetGenerate( fs, zuFlagsetParse( fs, string( "-1" ).get() ) ) );
}
TEST( Flagset, KeepsBothDirectionsInStep )
{
    const struct {
        const char *name;
        ZU_INT bit; // -1: deleted
        const char *contents;
    } rows[] = {
        { "ZU_A", 1, "1,--:ZU_A" },
        { "ZU_B", 63, "1,63,-:ZU_A|ZU_B" },
        { "ZU_A", 32, "32,63,-:ZU_A|ZU_A|ZU_B" }, // its old bit keeps the name
        { "ZU_C", 63, "32,63,63,:ZU_A|ZU_A|ZU_C" },
        { "ZU_B", -1, "32,-63,:ZU_A|ZU_A" },
        { "ZU_B", 31, "32,31,63,:ZU_A|ZU_B|ZU_A" },
        { "ZU_A", -1, "-31,63,:ZU_A|ZU_B" },
        { "ZU_A", -1, "-31,63,:ZU_A|ZU_B" },
        { "ZU_C", -1, "-31,-:ZU_A|ZU_B" },
        { "ZU_B", -1, "---:ZU_A" },
    };
    for ( int sharing = 0; sharing < 3; sharing++ ) {
        FLAGSET fs = zu::adopt( zuFlagsetCreate() );
        for ( const auto &row : rows ) {
            // Nobody else, one object, or one content
            FLAGSET kept = sharing == 0 ? nullptr : sharing == 1 ? fs : zu::adopt( zuFlagsetCreateFrom( fs.get() ) );
            std::string before = contents( fs.get() );
            row.bit < 0 ? zuFlagsetDelFlagCstr( fs.inOut(), row.name, -1 )
                        : zuFlagsetSetFlagCstr( fs.inOut(), row.name, -1, bitOf( row.bit ) );
            EXPECT_EQ( contents( fs.get() ), row.contents ) << "row " << &row - rows << ", " << sharing;
            EXPECT_TRUE( !kept || contents( kept.get() ) == before ) << "row " << &row - rows << ", " << sharing;
        }
    }
}

static FLAGSET someFlags()
{
    FLAGSET fs = zu::adopt( zuFlagsetCreate() );
    zuFlagsetSetFlag( fs.inOut(), string( "ZU_A" ).get(), 1 );
    zuFlagsetSetFlagCstr( fs.inOut(), "ZU_BC", 4, 2 );
    zuFlagsetSetFlagWcstr( fs.inOut(), u"ZU___TOP", -1, ZU_INT_MIN );
    return fs;
}
TEST( Flagset, ReadsNamesAndNumbers )
{
    FLAGSET fs = someFlags();
    const std::pair<ZU_INT, std::vector<std::string>> rows[] = {
        { 0, { "", "ZU_UNKNOWN_FLAG", "ZU_A ZU_B", "zu_a" } },
        { 1, { "||ZU_A|" } },
        { 2, { "ZU_UNKNOWN_FLAG|ZU_B", " 6 " } },
        { 3, { "ZU_A|ZU_B", " ZU_B |\tZU_A\n", "0xff", "ZU_A|0b110" } },
        { 12, { "12abc", "12 ZU_A" } },
        { ZU_INT_MIN + 1, { "ZU___TOP|ZU_A" } },
    };
    for ( const auto &[ flags, texts ] : rows ) {
        for ( const std::string &text : texts ) {
            EXPECT_EQ( zuFlagsetParse( fs.get(), string( text ).get() ), flags ) << text;
        }
    }
}
TEST( Flagset, AnUnknownNameCopiesNothing )
{
    FLAGSET fs = someFlags();
    FLAGSET kept = fs;
    zuFlagsetDelFlagWcstr( fs.inOut(), u"ZU_C", -1 );
    EXPECT_EQ( fs.get(), kept.get() );
    EXPECT_EQ( zuVectorLength( zu::adopt( zuFlagsetFlagsVector( kept.get() ) ).get() ), 3 );
    EXPECT_FALSE( zuFlagsetEquals( kept.get(), zu::adopt( zuFlagsetCreateFrom( kept.get() ) ).get() ) );
}
