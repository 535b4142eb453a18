#include "zu_test_string.h"

#include <filesystem>
#include <fstream>

class FileWindows : public testing::Test {
protected:
    std::filesystem::path root = std::filesystem::temp_directory_path() / L"zu-file-\u03B1";

    void SetUp() override
    {
        std::filesystem::remove_all( root );
        std::filesystem::create_directory( root );
    }
    void TearDown() override
    {
        std::filesystem::remove_all( root );
    }
    zu::Ref<ZU_STRING> in( const std::u16string &name )
    {
        std::u16string path = root.u16string() + u"\\" + name;
        return zu::adopt( zuStringCreateFromWcstr( path.data(), (ZU_INT)path.size() ) );
    }
    zu::Ref<ZU_BUFFER> bytes( const std::string &text )
    {
        return zu::adopt( zuBufferCreateFromBytesCopy( (const uint8_t *)text.data(), (ZU_INT)text.size() ) );
    }
    std::string read( const std::u16string &name )
    {
        std::ifstream stream( root / name, std::ios::binary );
        return { std::istreambuf_iterator<char>( stream ), {} };
    }
    std::set<std::string> content( ZU_BOOL noDirectories, const char *suffix )
    {
        auto end = suffix ? string( suffix ) : zu::Ref<ZU_STRING>();
        auto names = zu::adopt( zuDirectoryContent( in( u"" ).get(), noDirectories, end.get() ) );
        std::set<std::string> found;
        for ( ZU_INT i = 0; i < zuVectorLength( names.get() ); i++ ) {
            found.insert( takeText( zuFileBaseName( zuStringFrom( zuVectorBacking( names.get() )[ i ] ) ) ) );
        }
        return found;
    }
};

TEST_F( FileWindows, BytesStayAsTheyAre )
{
    const std::string text = "a\nb\r\n\x1A\0c";
    EXPECT_TRUE( zuFileWriteBuffer( in( u"\u03B2.Txt" ).get(), bytes( text ).get() ) );
    EXPECT_EQ( read( u"\u03B2.Txt" ), text );
    auto whole = zu::adopt( zuFileReadBuffer( in( u"\u03B2.Txt  " ).get(), (ZU_INT)text.size() ) );
    ASSERT_TRUE( whole );
    EXPECT_TRUE( zuBufferEquals( whole.get(), bytes( text ).get() ) );
    EXPECT_FALSE( zu::adopt( zuFileReadBuffer( in( u"\u03B2.Txt" ).get(), (ZU_INT)text.size() - 1 ) ) );
    EXPECT_EQ( zuFileSize( in( u"\u03B2.Txt" ).get() ), (ZU_INT)text.size() );
    EXPECT_EQ( zuFileSize( in( u"absent" ).get() ), -1 );
    EXPECT_TRUE( zuFileCreateDirectory( in( u"folder.txt" ).get() ) );
    EXPECT_FALSE( zuFileCreateDirectory( in( u"folder.txt" ).get() ) );
    EXPECT_FALSE( zu::adopt( zuFileReadBuffer( in( u"folder.txt" ).get(), -1 ) ) );
    EXPECT_EQ( content( ZU_TRUE, ".TXT" ), ( std::set<std::string>{ "\u03B2.Txt" } ) );
    EXPECT_EQ( content( ZU_FALSE, ".TXT" ), ( std::set<std::string>{ "\u03B2.Txt", "folder.txt" } ) );
    EXPECT_FALSE( zuFileRename( in( u"\u03B2.Txt" ).get(), in( u"folder.txt" ).get() ) );
    EXPECT_TRUE( zuFileRename( in( u"\u03B2.Txt" ).get(), in( u"c" ).get() ) );
    EXPECT_FALSE( zuFileDeleteDirectory( in( u"c" ).get() ) );
    EXPECT_TRUE( zuFileDelete( in( u"c" ).get() ) );
}
TEST_F( FileWindows, OneSinkAtATime )
{
    auto first = zu::adopt( zuFileOpenByteSink( in( u"a" ).get() ) );
    ASSERT_TRUE( first );
    zuByteSinkWriteBytes( first.get(), (const uint8_t *)"x", 1 );
    EXPECT_FALSE( zu::adopt( zuFileOpenByteSink( in( u"a" ).get() ) ) );
    EXPECT_FALSE( zuFileReplaceBuffer( in( u"a" ).get(), bytes( "y" ).get() ) );
    first = nullptr;
    EXPECT_EQ( read( u"a" ), "x" );
    EXPECT_TRUE( zuFileReplaceBuffer( in( u"a" ).get(), bytes( "new" ).get() ) );
    EXPECT_TRUE( zuFileReplaceBuffer( in( u"b" ).get(), bytes( "too" ).get() ) );
    EXPECT_EQ( read( u"a" ) + read( u"b" ), "newtoo" );
    EXPECT_EQ( content( ZU_FALSE, nullptr ), ( std::set<std::string>{ "a", "b" } ) );
}
TEST_F( FileWindows, TreesGoAsAWhole )
{
    std::filesystem::create_directories( root / "tree" / "b" / "c" );
    std::ofstream( root / "tree" / "b" / "file" ) << "x";
    EXPECT_FALSE( zuFileDeleteDirectory( in( u"tree" ).get() ) );
    EXPECT_TRUE( zuFileDeleteDirectoryRecursive( in( u"tree" ).get() ) );
    EXPECT_FALSE( zuFileExists( in( u"tree" ).get() ) );
}
TEST_F( FileWindows, NamesInParts )
{
    const struct {
        const char *name;
        const char *folder;
        const char *base;
        bool relative;
    } rows[] = {
        { "C:\\x\\a.tar.gz", "C:\\x\\", "a.tar.gz", false },
        { "C:/x/y/ ", "C:/x/", "y", false },
        { "a", "", "a", true },
        { "dir.d\\a", "dir.d\\", "a", true },
        { "\\\\server\\share\\a", "\\\\server\\share\\", "a", false },
    };
    for ( const auto &row : rows ) {
        EXPECT_EQ( takeText( zuFileDirName( string( row.name ).get() ) ), row.folder );
        EXPECT_EQ( takeText( zuFileBaseName( string( row.name ).get() ) ), row.base );
        EXPECT_EQ( zuPathIsRelative( string( row.name ).get() ) != ZU_FALSE, row.relative ) << row.name;
    }
    EXPECT_EQ( zuFilePathDelimiter(), ZU_CHAR_REVERSE_SOLIDUS );
    EXPECT_TRUE( zuFileIsDirectory( zu::adopt( zuCurrentDirectory() ).get() ) );
    EXPECT_TRUE( zuFileExists( zu::adopt( zuGetExecutablePath() ).get() ) );
    ZU_INT total, free, used;
    EXPECT_TRUE( zuFileSystemStats( in( u"" ).get(), &total, &free, &used ) );
    EXPECT_EQ( total, free + used );
}
