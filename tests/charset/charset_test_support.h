// charset_test_support.h: text through the streams of a character set, in pieces of any size.
#pragma once

#include "zu_test_support.h"

using Bytes = std::vector<uint8_t>;

// Hands out sizes of pieces; without a seed everything goes in one.
class Cuts {
public:
    Cuts() = default;
    explicit Cuts( unsigned seed ) : random( seed ), whole( false )
    {
    }
    ZU_INT next( size_t left )
    {
        ZU_INT size = whole ? (ZU_INT)left : std::uniform_int_distribution<ZU_INT>( 1, 1 << random() % 12 )( random );
        return std::min( size, (ZU_INT)left );
    }

private:
    std::mt19937 random;
    bool whole = true;
};

struct Decoded {
    std::u32string text;
    bool error;
    bool operator==( const Decoded & ) const = default;
};

// Reads all that `source` delivers.
inline Decoded readAllChars( ZU_CHAR_SOURCE *source, Cuts cuts )
{
    Decoded result = {};
    while ( !zuCharSourceEnd( source ) ) {
        ZU_CHAR chars[ 4096 ];
        ZU_INT count = zuCharSourceReadChars( source, chars, cuts.next( std::size( chars ) ) );
        result.text.append( chars, chars + count );
    }
    result.error = zuCharSourceError( source );
    return result;
}

inline Decoded decode( ZU_CHARSET charset, const Bytes &bytes, ZU_CHARSET_FLAGS flags = 0, Cuts cuts = {} )
{
    auto buffer = zu::adopt( zuBufferCreateFromBytesCopy( bytes.data(), (ZU_INT)bytes.size() ) );
    auto backend = zu::adopt( zuBufferByteSourceCreate( buffer.get() ) );
    auto byteSource = zu::adopt( zuBufferByteSourceByteSource( backend.get() ) );
    auto source = zu::adopt( zuCharsetCreateCharSource( byteSource.get(), charset, flags ) );
    return readAllChars( source.get(), cuts );
}

struct Encoded {
    Bytes bytes;
    bool error;
    bool operator==( const Encoded & ) const = default;
};

// Writes the text and flushes.
inline Encoded encode( ZU_CHARSET charset, const std::u32string &text, ZU_CHARSET_FLAGS flags = 0, Cuts cuts = {} )
{
    auto backend = zu::adopt( zuBufferByteSinkCreate() );
    auto byteSink = zu::adopt( zuBufferByteSinkByteSink( backend.get() ) );
    auto sink = zu::adopt( zuCharsetCreateCharSink( byteSink.get(), charset, flags ) );
    std::vector<ZU_CHAR> chars( text.begin(), text.end() );
    for ( size_t pos = 0; pos < chars.size(); ) {
        ZU_INT count = cuts.next( chars.size() - pos );
        zuCharSinkWriteChars( sink.get(), chars.data() + pos, count );
        pos += (size_t)count;
    }
    zuCharSinkFlush( sink.get() );
    auto buffer = zu::adopt( zuBufferByteSinkBuffer( backend.get() ) );
    const uint8_t *begin = zuBufferBacking( buffer.get() );
    return { Bytes( begin, begin + zuBufferLength( buffer.get() ) ), zuCharSinkError( sink.get() ) != 0 };
}
