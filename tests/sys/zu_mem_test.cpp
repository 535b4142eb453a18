#include "zu/sys/zu_mem.h"

#include "zu/runtime/zu_runtime_flags.h"
#include "zu_test_support.h"

TEST( Mem, BlocksKeepTheirContents )
{
    std::string bytes;
    char *block = nullptr;
    for ( ZU_INT size : { 1, 20, 5000, 300000, 100, 1 } ) {
        block = (char *)zuMemRealloc( block, size );
        size_t kept = std::min( bytes.size(), (size_t)size );
        EXPECT_EQ( std::string( block, kept ), bytes.substr( 0, kept ) );
        for ( ZU_INT i = (ZU_INT)kept; i < size; i++ ) {
            block[ i ] = (char)( i * 7 );
        }
        bytes.assign( block, (size_t)size );
    }
    zuMemFree( block );
    zuMemFree( nullptr );
    int *array = (int *)zuMemReallocN( zuMemAllocN( 3, sizeof( int ) ), 100, sizeof( int ) );
    zuMemSetN( array, 0x11, 100, sizeof( int ) );
    EXPECT_EQ( std::count( array, array + 100, 0x11111111 ), 100 );
    zuMemFree( array );
}

TEST( Mem, Copies )
{
    const char text[] = "0123456789";
    char *copy = (char *)zuMemDupN( text, 5, 2 );
    EXPECT_EQ( std::string( copy, 10 ), "0123456789" );
    zuMemMove( copy + 1, copy, 9 );
    EXPECT_EQ( std::string( copy, 10 ), "0012345678" );
    zuMemMoveN( copy, copy + 2, 4, 2 );
    EXPECT_EQ( std::string( copy, 10 ), "1234567878" );
    zuMemCopyN( copy, text, 2, 3 );
    EXPECT_EQ( std::string( copy, 10 ), "0123457878" );
    zuMemSet( copy, 0xFF, 2 );
    EXPECT_EQ( std::string( copy, 3 ), "\xFF\xFF"
                                       "2" );
    zuMemFree( copy );
    for ( ZU_INT length : { -1, 10 } ) {
        copy = zuMemDupCstr( text, length );
        EXPECT_STREQ( copy, text );
        zuMemFree( copy );
    }
    copy = zuMemDupCstr( nullptr, 0 );
    EXPECT_STREQ( copy, "" );
    zuMemFree( copy );
    EXPECT_EQ( zuMemCompare( "a\x7F", "a\x80", 2 ), -1 ); // as unsigned bytes
    EXPECT_EQ( zuMemCompare( "a\x80", "a\x7F", 2 ), 1 );
    EXPECT_EQ( zuMemCompareN( "abc", "abd", 2, 1 ) + zuMemCompare( nullptr, nullptr, 0 ), 0 );
    zuMemCopy( nullptr, nullptr, 0 );
    zuMemMove( nullptr, nullptr, 0 );
    zuMemSet( nullptr, 1, 0 );
}

TEST( Mem, FreshBlocksAreFilledOnDemand )
{
    runRestarted( ZU_RUNTIME_FLAG_MEMORY_DEBUG, [] {
        unsigned char *block = (unsigned char *)zuMemAlloc( 1000 );
        EXPECT_EQ( std::count( block, block + 1000, 0xFF ), 1000 );
        zuMemSet( block, 1, 1000 );
        block = (unsigned char *)zuMemRealloc( block, 500 );
        EXPECT_EQ( std::count( block, block + 500, 1 ), 500 );
        zuMemFree( block );
    } );
}

TEST( MemAborts, ChecksItsArguments )
{
    char bytes[ 8 ] = "";
    const ZU_INT huge = ZU_INT_MAX / 2;
    expectAbort( "size > 0", [] { zuMemAlloc( 0 ); } );
    expectAbort( "res", [ & ] { zuMemAlloc( huge ); } );
    expectAbort( "ZU_INT_ADD_OK( srcLength, 1 )", [ & ] { zuMemDupCstr( bytes, ZU_INT_MAX ); } );
    expectAbort( "ZU_INT_MUL_OK( count, size )", [ & ] { zuMemAllocN( huge, 4 ); } );
    expectAbort( "ZU_INT_MUL_OK( count, size )", [ & ] { zuMemReallocN( nullptr, 4, huge ); } );
    expectAbort( "ZU_INT_MUL_OK( count, size )", [ & ] { zuMemDupN( bytes, huge, huge ); } );
    expectAbort( "ZU_INT_MUL_OK( count, size )", [ & ] { zuMemCopyN( bytes, bytes, huge, 4 ); } );
    expectAbort( "ZU_INT_MUL_OK( count, size )", [ & ] { zuMemSetN( bytes, 0, huge, 4 ); } );
    expectAbort( "ZU_INT_MUL_OK( count, size )", [ & ] { zuMemCompareN( bytes, bytes, huge, 4 ); } );
}
