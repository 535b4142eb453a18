// The encoder and the decoder beside models of them, written as plainly as the forms are told: a string of bytes, and a
// reader that calls itself for what nests.

#include "zu_test_utf8.h"

typedef std::string BYTES;

static zu::Ref<ZU_BUFFER> makeBuffer( const BYTES &bytes )
{
    return zu::adopt( zuBufferCreateFromBytesCopy( (const uint8_t *)bytes.data(), (ZU_INT)bytes.size() ) );
}
static BYTES bytesOf( ZU_BUFFER *buf )
{
    return BYTES( (const char *)zuBufferBacking( buf ), (size_t)zuBufferLength( buf ) );
}
static BYTES takeBytes( ZU_BUFFER *buf )
{
    return bytesOf( zu::adopt( buf ).get() );
}

// Model of the encoder
static BYTES modelInt( ZU_INT value )
{
    BYTES magnitude;
    for ( ZU_INT rest = value; rest != 0; rest /= 256 ) {
        magnitude.insert( 0, 1, (char)std::abs( rest % 256 ) );
    }
    return (char)( ( value < 0 ? 0x80 : 0 ) | (int)magnitude.size() ) + magnitude;
}
static BYTES modelChars( std::u32string_view chars )
{
    BYTES bytes;
    for ( char32_t ch : chars ) {
        bytes += ch < 0x80 ? BYTES( 1, (char)ch )
                           : BYTES{ (char)( 0x80 | ch >> 16 ), (char)( ch >> 8 & 0xFF ), (char)( ch & 0xFF ) };
    }
    return bytes;
}
static BYTES modelString( std::u32string_view chars )
{
    return modelInt( (ZU_INT)chars.size() ) + modelChars( chars );
}
static BYTES modelBuffer( const BYTES &bytes )
{
    return modelInt( (ZU_INT)bytes.size() ) + bytes;
}

// Model of the decoder: what is wrong throws, for good.
struct FAILED {};
struct DECODER_MODEL {
    BYTES bytes;
    size_t offset = 0;
    bool error = false;

    uint8_t byte()
    {
        if ( offset == bytes.size() ) {
            throw FAILED();
        }
        return (uint8_t)bytes[ offset++ ];
    }
    void checkLeft( ZU_INT count ) const
    {
        if ( count < 0 || (uint64_t)count > bytes.size() - offset ) {
            throw FAILED();
        }
    }
    ZU_INT integer()
    {
        uint8_t header = byte();
        ZU_INT count = ( header & 127 ) == 127 ? integer() : header & 127;
        checkLeft( count );
        ZU_INT value = 0;
        while ( count-- > 0 ) {
            ZU_INT digit = byte();
            if ( __builtin_mul_overflow( value, 256, &value ) ||
                 __builtin_add_overflow( value, header & 128 ? -digit : digit, &value ) ) {
                throw FAILED();
            }
        }
        return value;
    }
    char32_t character()
    {
        char32_t ch = byte();
        if ( ch < 0x80 ) {
            return ch;
        }
        if ( ch & 0x60 ) {
            throw FAILED();
        }
        ch = ( ch & 0x1F ) << 16 | (char32_t)byte() << 8;
        return ch | byte();
    }
    bool boolean()
    {
        uint8_t value = byte();
        if ( value > 1 ) {
            throw FAILED();
        }
        return value;
    }
    std::u32string string()
    {
        ZU_INT count = integer();
        checkLeft( count );
        std::u32string chars;
        while ( count-- > 0 ) {
            chars += character();
            if ( chars.back() > 0x10FFFF ) {
                throw FAILED();
            }
        }
        return chars;
    }
    BYTES raw( ZU_INT count )
    {
        checkLeft( count );
        offset += (size_t)count;
        return bytes.substr( offset - (size_t)count, (size_t)count );
    }
    BYTES buffer()
    {
        return raw( integer() );
    }
};

// What a value is told as, to be compared: its canonical form, "-" for null.
static BYTES tell( ZU_STRING *zus )
{
    return zus ? modelString( zu::view( zus ) ) : "-";
}
static BYTES tell( ZU_BUFFER *buf )
{
    return buf ? modelBuffer( bytesOf( buf ) ) : "-";
}
static BYTES tell( ZU_IDENTIFIER *ident )
{
    return ident ? takeBytes( zuIdentifierBuffer( ident ) ) : "-";
}
static BYTES tell( ZU_VECTOR *vec )
{
    BYTES told = vec ? "v" : "-";
    for ( ZU_INT i = 0; vec && i < zuVectorLength( vec ); i++ ) {
        told += tell( (ZU_STRING *)zuVectorBacking( vec )[ i ] );
    }
    return told;
}

class CodecModel : public WithVectors {
protected:
    SeededRandom random;

    size_t below( size_t end )
    {
        return random.below( end );
    }
    ZU_INT anyInt()
    {
        // Unsigned, so that what lies past the greatest is the least.
        uint64_t end = below( 2 ) ? (uint64_t)ZU_INT_MIN : (uint64_t)ZU_INT_MAX;
        return below( 8 ) == 0 ? (ZU_INT)( end + below( 3 ) ) : (ZU_INT)random() >> below( 64 );
    }
    std::u32string anyText()
    {
        static const char32_t ENDS[] = { 0x7F, 0x7F, 0x7F, 0x80, 0x7FF, 0xD800, 0xFFFF, 0x10FFFF };
        std::u32string text( below( below( 6 ) ? 20 : below( 20 ) ? 300 : 4000 ), U' ' );
        char32_t end = ENDS[ below( 8 ) ];
        size_t ascii = below( 5 ); // characters of four
        for ( char32_t &ch : text ) {
            ch = below( 4 ) < ascii ? (char32_t)below( 128 ) : below( 9 ) ? (char32_t)below( end + 1 ) : end;
        }
        return text;
    }
    BYTES anyBytes()
    {
        BYTES bytes( below( 20 ), 0 );
        for ( char &byte : bytes ) {
            byte = (char)random();
        }
        return bytes;
    }

    // Hostile bytes, of which most mean something somewhere
    BYTES hostileBytes()
    {
        static const uint8_t OFTEN[] = { 0, 0, 1, 1, 2, 3, 8, 9, 0x20, 0x41, 0x7F, 0x7F, 0x80, 0x81, 0x88, 0x9F, 0xFF };
        BYTES bytes;
        while ( below( 30 ) ) {
            switch ( below( 12 ) ) {
            case 0:
                bytes += (char)random();
                break;
            case 1:
                bytes += modelString( anyText() );
                bytes[ bytes.size() - 1 - below( below( 4 ) ? 1 : 20 ) % bytes.size() ] ^=
                    (char)( below( 4 ) ? 0 : random() );
                break;
            case 2:
                bytes += modelInt( anyInt() );
                break;
            case 3:
                bytes += BYTES( below( 20 ), (char)( below( 2 ) ? 0x7F : 0xFF ) );
                break;
            case 4:
                bytes += modelBuffer( takeBytes( zuIdentifierBuffer( zu::adopt( zuIdentifierCreate() ).get() ) ) );
                break;
            default:
                bytes += (char)OFTEN[ below( sizeof OFTEN ) ];
            }
        }
        return bytes;
    }

    ZU_DECODER *dec = nullptr;
    DECODER_MODEL model;

    // Does a step to both: `real` reads and tells what, `wanted` does so on the model.  A null instead of a value that
    // has nothing to do with the decoder's state comes as `REFUSED`.
    static constexpr const char *REFUSED = "refused";
    void compare( const char *what, const std::function<bool( BYTES * )> &real, const std::function<BYTES()> &wanted,
                  const BYTES &cleared )
    {
        BYTES told = "untold";
        BYTES expected = cleared;
        bool ok = real( &told );
        bool wantedOk = false;
        if ( !model.error ) {
            try {
                expected = wanted();
                wantedOk = expected != REFUSED;
                expected = wantedOk ? expected : cleared;
            } catch ( FAILED ) {
                model.error = true;
            }
        }
        ASSERT_EQ( ok, wantedOk ) << what;
        ASSERT_EQ( zuDecoderError( dec ), model.error ) << what;
        ASSERT_TRUE( told == expected || told == "unasked" ) << what << ": " << testing::PrintToString( told );
        ZU_INT length = (ZU_INT)model.bytes.size();
        ASSERT_EQ( zuDecoderOffset( dec ), model.error ? length : (ZU_INT)model.offset ) << what;
        ASSERT_EQ( zuDecoderRemaining( dec ), model.error ? 0 : length - (ZU_INT)model.offset ) << what;
    }
    template <typename OBJECT>
    void compareObject( ZU_BOOL ( *decode )( ZU_DECODER *, OBJECT ** ),
                        ZU_BOOL ( *decodeOptional )( ZU_DECODER *, OBJECT ** ), OBJECT *old,
                        const std::function<BYTES()> &wanted )
    {
        const bool optional = below( 2 );
        const bool asked = below( 4 ) > 0;
        OBJECT *value = below( 2 ) ? old : ( zuObjRelease( zu::upcast( old ) ), nullptr );
        auto real = [ & ]( BYTES *told ) {
            bool ok = ( optional ? decodeOptional : decode )( dec, asked ? &value : nullptr );
            *told = asked ? tell( value ) : "unasked";
            return ok;
        };
        compare(
            optional ? "optional" : "object", real, [ & ] { return optional && !model.boolean() ? "-" : wanted(); },
            "-" );
        ZU_REF_RELEASE_OPT( value );
    }
    template <typename VALUE>
    void compareValue( ZU_BOOL ( *decode )( ZU_DECODER *, VALUE * ), const std::function<ZU_INT()> &wanted )
    {
        VALUE value = 77;
        auto real = [ & ]( BYTES *told ) {
            bool asked = below( 4 ) > 0;
            bool ok = decode( dec, asked ? &value : nullptr );
            *told = asked ? modelInt( (ZU_INT)value ) : "unasked";
            return ok;
        };
        compare(
            "value", real, [ & ] { return modelInt( wanted() ); }, modelInt( 0 ) );
    }
    void step()
    {
        const ZU_INT length = (ZU_INT)below( 6 );
        switch ( below( 12 ) ) {
        case 0:
            return compareValue<ZU_BOOL>( zuDecoderTryDecodeBool, [ & ] { return model.boolean(); } );
        case 1:
            return compareValue<ZU_INT>( zuDecoderTryDecodeInt, [ & ] { return model.integer(); } );
        case 2:
            return compareValue<ZU_CHAR>( zuDecoderTryDecodeChar, [ & ] { return model.character(); } );
        case 3:
            return compareValue<uint8_t>( zuDecoderTryReadByte, [ & ] { return model.byte(); } );
        case 4:
            return compareObject( zuDecoderTryDecodeString, zuDecoderTryDecodeOptionalString, zuStringCreate(),
                                  [ & ] { return modelString( model.string() ); } );
        case 5:
            return compareObject( zuDecoderTryDecodeBuffer, zuDecoderTryDecodeOptionalBuffer, zuBufferCreate(),
                                  [ & ] { return modelBuffer( model.buffer() ); } );
        case 6:
            return compareObject(
                zuDecoderTryDecodeIdentifier, zuDecoderTryDecodeOptionalIdentifier, zuIdentifierCreate(), [ & ] {
                    BYTES text = model.buffer();
                    bool ok = text.size() == 32 && text.find_first_not_of( "0123456789ABCDEF" ) == BYTES::npos;
                    return ok ? text : REFUSED;
                } );
        case 7:
            return compareObject( zuDecoderTryDecodeStringVector, zuDecoderTryDecodeOptionalStringVector,
                                  zuVectorCreate(), [ & ] {
                                      BYTES told = "v";
                                      for ( ZU_INT count = model.integer(); count > 0; count-- ) {
                                          told += modelString( model.string() );
                                      }
                                      return told;
                                  } );
        case 8:
            return compare(
                "chars",
                [ & ]( BYTES *told ) {
                    std::u32string chars( (size_t)length, U'x' );
                    bool ok = zuDecoderTryDecodeChars( dec, (ZU_CHAR *)chars.data(), length );
                    *told = modelChars( chars );
                    return ok;
                },
                [ & ] {
                    std::u32string chars;
                    for ( ZU_INT i = 0; i < length; i++ ) {
                        chars += model.character();
                    }
                    return modelChars( chars );
                },
                BYTES( (size_t)length, 0 ) );
        case 9:
            return compare(
                "bytes",
                [ & ]( BYTES *told ) {
                    BYTES bytes( (size_t)length, 'x' );
                    bool ok = zuDecoderTryReadBytes( dec, (uint8_t *)bytes.data(), length );
                    *told = bytes;
                    return ok;
                },
                [ & ] { return model.raw( length ); }, BYTES( (size_t)length, 0 ) );
        case 10:
            return compare(
                "read",
                [ & ]( BYTES *told ) {
                    zu::Ref<ZU_BUFFER> dest = makeBuffer( "ahead" );
                    bool ok = zuDecoderTryRead( dec, dest.inOut(), length );
                    *told = bytesOf( dest.get() );
                    return ok;
                },
                [ & ] { return "ahead" + model.raw( length ); }, "ahead" );
        default:
            return compare(
                "skip",
                [ & ]( BYTES *told ) {
                    *told = "";
                    return zuDecoderTrySkip( dec, length );
                },
                [ & ] { return model.raw( length ).substr( 0, 0 ); }, "" );
        }
    }
    void readAll( const BYTES &bytes )
    {
        zu::Ref<ZU_BUFFER> buf = makeBuffer( bytes );
        zuBufferBitAppendBits( buf.inOut(), 1, (ZU_INT)below( 8 ) );
        zu::Ref<ZU_DECODER> owner = zu::adopt( zuDecoderCreate( buf.get() ) );
        dec = owner.get();
        model = { bytes };
        EXPECT_EQ( zu::adopt( zuDecoderBuffer( dec ) ).get(), buf.get() );
        EXPECT_EQ( zuDecoderLength( dec ), (ZU_INT)bytes.size() );
        for ( int i = 0; i < 40 && !HasFatalFailure(); i++ ) {
            if ( below( 100 ) == 0 ) {
                zuDecoderSetError( dec );
                model.error = true;
            }
            step();
        }
    }
};

INSTANTIATE_TEST_SUITE_P( Shuffling, CodecModel, ALL_VECTORS );

TEST_P( CodecModel, DecodesHostileBytes )
{
    for ( int round = 0; round < 10000 && !HasFatalFailure(); round++ ) {
        readAll( hostileBytes() );
    }
}

// Appends any value to the encoder and to `bytes`.
TEST_P( CodecModel, Encodes )
{
    for ( int round = 0; round < 300; round++ ) {
        zu::Ref<ZU_ENCODER> enc = zu::adopt( zuEncoderCreate() );
        BYTES bytes;
        zu::Ref<ZU_BUFFER> held, plain;
        BYTES heldBytes;
        const ZU_INT shift = below( 4 ) ? 0 : (ZU_INT)below( 8 ); // bits that everything is off the bytes' boundaries
        zuEncoderWrite( enc.get(), zu::adopt( zuBufferCreateFromBits( 0, shift ) ).get() );
        for ( size_t i = below( 60 ); i > 0; i-- ) {
            const std::u32string chars = anyText();
            const BYTES raw = anyBytes();
            const ZU_INT rawLength = (ZU_INT)raw.size();
            const ZU_INT number = anyInt();
            zu::Ref<ZU_STRING> text = below( 4 ) ? zu::text( chars ) : nullptr;
            zu::Ref<ZU_BUFFER> buf = below( 4 ) ? makeBuffer( raw ) : nullptr;
            zu::Ref<ZU_IDENTIFIER> ident = below( 4 ) ? zu::adopt( zuIdentifierCreate() ) : nullptr;
            zu::Ref<ZU_VECTOR> vec = zu::adopt( zuVectorCreate() );
            zuVectorAppendString( vec.inOut(), zu::text( chars ).get() );
            zuVectorAppendInt( vec.inOut(), number );
            BYTES vecBytes = "\x01\x02" + modelString( chars );
            std::string digits = std::to_string( number );
            vecBytes += modelString( std::u32string( digits.begin(), digits.end() ) );
            const size_t kind = below( 12 );
            SCOPED_TRACE( kind );
            switch ( kind ) {
            case 0:
                zuEncoderEncodeBool( enc.get(), (ZU_BOOL)( number % 3 ) );
                bytes += number % 3 ? '\1' : '\0';
                break;
            case 1:
                zuEncoderEncodeInt( enc.get(), number );
                bytes += modelInt( number );
                break;
            case 2:
                zuEncoderEncodeChars( enc.get(), (const ZU_CHAR *)chars.data(), (ZU_INT)chars.size() );
                bytes += modelChars( chars );
                break;
            case 3:
                zuEncoderEncodeChar( enc.get(), chars.empty() ? 0 : chars[ 0 ] );
                bytes += modelChars( chars.empty() ? std::u32string( 1, 0 ) : chars.substr( 0, 1 ) );
                break;
            case 4:
                zuEncoderEncodeOptionalString( enc.get(), text.get() );
                bytes += text ? '\1' + modelString( chars ) : BYTES( 1, 0 );
                break;
            case 5:
                zuEncoderEncodeOptionalBuffer( enc.get(), buf.get() );
                bytes += buf ? '\1' + modelBuffer( raw ) : BYTES( 1, 0 );
                break;
            case 6:
                zuEncoderEncodeOptionalIdentifier( enc.get(), ident.get() );
                bytes += ident ? '\1' + modelBuffer( takeBytes( zuIdentifierBuffer( ident.get() ) ) ) : BYTES( 1, 0 );
                break;
            case 7:
                zuEncoderEncodeOptionalStringVector( enc.get(), nullptr );
                zuEncoderEncodeOptionalStringVector( enc.get(), vec.get() );
                bytes += BYTES( 1, 0 ) + '\1' + vecBytes;
                break;
            case 8:
                zuEncoderWriteBytes( enc.get(), (const uint8_t *)raw.data(), rawLength );
                zuEncoderWriteZero( enc.get(), 2 );
                zuEncoderWriteOne( enc.get(), 1 );
                zuEncoderWriteByte( enc.get(), 0x5A );
                bytes += raw + BYTES( 2, 0 ) + "\xFF\x5A";
                break;
            case 9:
                plain = makeBuffer( raw + "abcd" );
                zuEncoderWriteInner( enc.get(), plain.get(), 1, rawLength + 1 );
                zuEncoderWriteOuter( enc.get(), plain.get(), 1, rawLength + 1 );
                zuEncoderWriteLeading( enc.get(), plain.get(), 2 );
                zuEncoderWriteTrailing( enc.get(), plain.get(), 2 );
                bytes += ( raw + "abcd" ).substr( 1, raw.size() + 1 ) + ( raw + "abcd" )[ 0 ] + "cd" +
                         ( raw + "abcd" ).substr( 0, 2 ) + "cd";
                break;
            case 10:
                held = zu::adopt( zuEncoderBuffer( enc.get() ) );
                heldBytes = takeBytes( zuBufferBitRead( held.get(), shift, 8 * zuEncoderLength( enc.get() ) ) );
                break;
            default:
                if ( shift == 0 && bytes.size() < 1000 ) {
                    zuEncoderWriteEncoder( enc.get(), enc.get() );
                    bytes += bytes;
                }
            }
            ASSERT_EQ( zuEncoderLength( enc.get() ), (ZU_INT)bytes.size() );
            zu::Ref<ZU_BUFFER> whole = zu::adopt( zuEncoderBuffer( enc.get() ) );
            ASSERT_EQ( zuBufferBitLength( whole.get() ), shift + 8 * (ZU_INT)bytes.size() );
            ASSERT_EQ( takeBytes( zuBufferBitRead( whole.get(), shift, 8 * (ZU_INT)bytes.size() ) ), bytes );
            ASSERT_TRUE( !held ||
                         takeBytes( zuBufferBitRead( held.get(), shift, 8 * (ZU_INT)heldBytes.size() ) ) == heldBytes );
        }
        if ( shift == 0 ) {
            readAll( bytes );
        }
        zuEncoderClear( enc.get() );
        EXPECT_EQ( zuEncoderLength( enc.get() ), 0 );
    }
}

// On a small stack: headers that all tell that the number of bytes follows, with and without an end to that, and counts
// that nothing could hold.
TEST( Decoder, SurvivesBombs )
{
    runOnSmallStack( [] {
        for ( int end = -1; end <= 1; end++ ) {
            BYTES bytes( end < 0 ? 100'000'000 : 1'000'000, 0x7F );
            if ( end >= 0 ) {
                bytes += (char)end; // 0 bytes that tell 0 bytes..., or one that tells a number that is not there
            }
            zu::Ref<ZU_DECODER> dec = zu::adopt( zuDecoderCreate( makeBuffer( bytes ).get() ) );
            ZU_INT value = 77;
            EXPECT_EQ( zuDecoderTryDecodeInt( dec.get(), &value ), end == 0 );
            EXPECT_EQ( value, 0 );
            EXPECT_EQ( zuDecoderError( dec.get() ), end != 0 );
            EXPECT_EQ( zuDecoderRemaining( dec.get() ), 0 );
        }
        for ( ZU_INT count : { ZU_INT_MAX, (ZU_INT)1 << 61, (ZU_INT)1 << 40, (ZU_INT)4 } ) {
            BYTES bytes = modelInt( count ) + "abc";
            zu::Ref<ZU_BUFFER> buf = makeBuffer( bytes );
            zu::Ref<ZU_STRING> text;
            zu::Ref<ZU_BUFFER> plain;
            zu::Ref<ZU_VECTOR> vec;
            EXPECT_FALSE( zuDecoderTryDecodeString( zu::adopt( zuDecoderCreate( buf.get() ) ).get(), text.inOut() ) );
            EXPECT_FALSE( zuDecoderTryDecodeBuffer( zu::adopt( zuDecoderCreate( buf.get() ) ).get(), plain.inOut() ) );
            EXPECT_FALSE(
                zuDecoderTryDecodeStringVector( zu::adopt( zuDecoderCreate( buf.get() ) ).get(), vec.inOut() ) );
            EXPECT_TRUE( !text && !plain && !vec );
        }
    } );
}
