// Vectors take many units at a time, and an array may end, or begin, where memory does.

#include "zu_test_utf8.h"

#include <sys/mman.h>
#include <unistd.h>

// A page between two that nobody may touch.
class Fence {
    char *begin;
    size_t size = (size_t)sysconf( _SC_PAGESIZE );

public:
    Fence()
    {
        begin = (char *)mmap( nullptr, 3 * size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0 ) + size;
        mprotect( begin, size, PROT_READ | PROT_WRITE );
    }
    ~Fence()
    {
        munmap( begin - size, 3 * size );
    }
    template <typename UNIT>
    UNIT *place( size_t count, bool atEnd )
    {
        return (UNIT *)( atEnd ? begin + size - count * sizeof( UNIT ) : begin );
    }
    template <typename UNIT>
    UNIT *put( const std::basic_string<UNIT> &text, bool atEnd )
    {
        UNIT *copy = place<UNIT>( text.size(), atEnd );
        std::copy( text.begin(), text.end(), copy );
        return copy;
    }
};

class ArrayEnds : public WithVectors {
protected:
    Fence src, dest;
    bool atEnd;

    void convert( const std::u32string &text )
    {
        const ZU_INT length = (ZU_INT)text.size();
        zu::Ref<ZU_STRING> zus = zu::text( text );
        const std::string utf8 = zu::toUtf8( zus );
        const std::u16string utf16 = zu::toUtf16( zus );
        const ZU_INT bytes = (ZU_INT)utf8.size();
        const ZU_INT units = (ZU_INT)utf16.size();

        const ZU_CHAR *chars = (const ZU_CHAR *)src.put( text, atEnd );
        char *encoded = dest.place<char>( utf8.size(), atEnd );
        EXPECT_TRUE( zuCharsAllOk( chars, length ) );
        EXPECT_EQ( zuCharsConvertToUtf8( encoded, bytes, chars, length, ZU_FALSE ), bytes );
        EXPECT_EQ( std::string( encoded, utf8.size() ), utf8 );
        EXPECT_TRUE( zuStringEqualsChars( zus.get(), chars, length ) );
        EXPECT_TRUE( zuStringEndsWithChars( zus.get(), chars, length ) );
        EXPECT_EQ( zuUtf32Fault( chars, length ), -1 );
        zu::Ref<ZU_UNICODE_NORMALIZER> norm = zu::adopt( zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM_NFKC ) );
        zuUnicodeNormalizerWriteChars( norm.get(), chars, length );
        zu::Ref<ZU_ENCODER> enc = zu::adopt( zuEncoderCreate() );
        zuEncoderEncodeChars( enc.get(), chars, length );

        zu::Ref<ZU_BUFFER> wire = zu::adopt( zuEncoderBuffer( enc.get() ) );
        std::string wireBytes( (const char *)zuBufferBacking( wire.get() ), (size_t)zuBufferLength( wire.get() ) );
        wire = zu::adopt( zuBufferCreateFromBytesUseWithRef( (uint8_t *)src.put( wireBytes, atEnd ),
                                                             (ZU_INT)wireBytes.size(), zuStringObj( zus.get() ) ) );
        zu::Ref<ZU_DECODER> dec = zu::adopt( zuDecoderCreate( wire.get() ) );
        ZU_CHAR *decoded = dest.place<ZU_CHAR>( text.size(), atEnd );
        EXPECT_TRUE( zuDecoderTryDecodeChars( dec.get(), decoded, length ) );
        EXPECT_EQ( std::u32string( (const char32_t *)decoded, text.size() ), text );

        const char *src8 = src.put( utf8, atEnd );
        EXPECT_EQ( zuCharsConvertFromUtf8( decoded, length, src8, bytes ), length );
        EXPECT_EQ( std::u32string( (const char32_t *)decoded, text.size() ), text );
        EXPECT_EQ( zuUtf8Fault( src8, bytes ), -1 );
        EXPECT_EQ( zu::adopt( zuUtf8Decode( src8, bytes ) ), text );

        const char16_t *src16 = src.put( utf16, atEnd );
        EXPECT_EQ( zuUtf16Fault( src16, units ), -1 );
        EXPECT_EQ( zu::adopt( zuUtf16Decode( src16, units ) ), text );

        double value;
        ZU_INT consumed;
        zuRealTextTryReadUtf8( src.put( std::string( text.size(), '7' ), atEnd ), length, &value, &consumed );
        EXPECT_EQ( consumed, length );
    }
};
INSTANTIATE_TEST_SUITE_P( Shuffle, ArrayEnds, ALL_VECTORS );

TEST_P( ArrayEnds, NothingIsTouchedBeyond )
{
    static constexpr char32_t ENDS[] = { 0x80, 0x800, 0xD800, 0x110000 };
    SeededRandom random;
    for ( size_t length = 0; length <= 130; length++ ) {
        for ( char32_t end : ENDS ) {
            std::u32string text;
            while ( text.size() < length ) {
                const char32_t limit = random.below( 16 ) == 0 ? ENDS[ random.below( 4 ) ] : end;
                text += (char32_t)( limit == 0x110000 ? 0x10000 + random.below( 0x100000 ) : random.below( limit ) );
            }
            for ( bool last : { false, true } ) {
                atEnd = last;
                SCOPED_TRACE( std::to_string( length ) + " of " + std::to_string( (int)end ) );
                convert( text );
            }
        }
    }
}
