#include "zu_test_string.h"

// What each flag needs to be kept beside itself.
static const struct {
    const char *name;
    ZU_INT flag;
    ZU_INT needs;
} FLAGS[] = {
    { "ZU_RUNTIME_FLAG_MINIMAL", 0x0001, 0 },
    { "ZU_RUNTIME_FLAG_SYSTEM", 0x0002, 0 },
    { "ZU_RUNTIME_FLAG_MEMORY_DEBUG", 0x0008, 0 },
    { "ZU_RUNTIME_FLAG_OBJECT_DATABASE", 0x0010, 0 },
    { "ZU_RUNTIME_FLAG_OBJECT_ORIGIN", 0x0020, 0x0010 },
    { "ZU_RUNTIME_FLAG_SNAPSHOT_SORT", 0x0040, 0x0010 },
    { "ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT", 0x0080, 0x0010 },
    { "ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING", 0x0100, 0x0090 },
    { "ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG", 0x0200, 0x0090 },
    { "ZU_RUNTIME_FLAG_NO_EXCEPTION_HANDLERS", 0x0400, 0 },
    { "ZU_RUNTIME_FLAG_IMPLICIT_MODULE_PATH", 0x0800, 0 },
    { "ZU_RUNTIME_FLAG_MODULE_DEBUG", 0x1000, 0 },
};

TEST( RuntimeFlags, EveryCombination )
{
    // Two bits of no meaning, 0x0004 and 0x2000, stand in for all such.
    for ( ZU_INT flags = 0; flags < 0x4000; flags++ ) {
        ZU_INT expected = 0;
        for ( const auto &row : FLAGS ) {
            bool kept = ( flags & row.flag ) && ( flags & row.needs ) == row.needs;
            expected |=
                kept && ( row.flag == ZU_RUNTIME_FLAG_MINIMAL || !( flags & ZU_RUNTIME_FLAG_MINIMAL ) ) ? row.flag : 0;
        }
        ASSERT_EQ( zuRuntimeFlagsNormalize( flags ), expected ) << flags;
        std::string names;
        for ( const auto &row : FLAGS ) {
            names += expected & row.flag ? ( names.empty() ? "" : "|" ) + std::string( row.name ) : "";
        }
        ASSERT_EQ( takeText( zuRuntimeFlagsToString( flags ) ), names );
        ASSERT_EQ( zuRuntimeFlagsFromString( string( names + "|0x2004" ).get() ), expected );
    }
    EXPECT_EQ( zuRuntimeFlagsNormalize( -1 ), ZU_RUNTIME_FLAG_MINIMAL );
    EXPECT_EQ( zuRuntimeFlagsNormalize( -2 ), 0x1FFA );
}
