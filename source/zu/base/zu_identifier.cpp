// An identifier is its text: that is what it is compared, sent and shown as.  The text is ASCII throughout, so that a
// digit is its own byte, and converting to and from bytes needs no character set.

#include "zu/base/zu_identifier.h"

#include "zu/base/zu_random.h"
#include "zu/base/zu_string_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_obj_internal.h"

static constexpr ZU_INT IDENTITY_BYTES = 16;
static constexpr ZU_INT TEXT_LENGTH = 2 * IDENTITY_BYTES;
static_assert( TEXT_LENGTH <= ZU___STRING_INLINE_CHARS );

struct ZU_IDENTIFIER {
    ZU_OBJ obj;
    ZU_STRING *string; // TEXT_LENGTH digits
};

static void identifierFree( ZU_OBJ *thisObj );
static ZU_INT identifierCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *identifierToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_IDENTIFIER =
    ZU___SORT_INITIALIZER( "ZU_IDENTIFIER", &zu___module, identifierFree, identifierCompare, identifierToString );
ZU___STDFUNCS( ZU_IDENTIFIER, zuIdentifier )

// Tells whether `length` characters, or bytes, are the text of an identifier.
template <typename UNIT>
static bool identifierTextOk( const UNIT *text, ZU_INT length )
{
    bool ok = length == TEXT_LENGTH;
    for ( ZU_INT i = 0; ok && i < TEXT_LENGTH; i++ ) {
        ok = ( text[ i ] >= '0' && text[ i ] <= '9' ) || ( text[ i ] >= 'A' && text[ i ] <= 'F' );
    }
    return ok;
}

// Creation
static ZU_IDENTIFIER *identifierCreateUse( ZU_STRING *string )
{
    ZU_IDENTIFIER *ident = (ZU_IDENTIFIER *)zu___ObjCreate( sizeof( ZU_IDENTIFIER ), &zu___sort_ZU_IDENTIFIER );
    ident->string = string;
    return ident;
}
ZU_IDENTIFIER *zuIdentifierCreate( void )
{
    static const char DIGITS[] = "0123456789ABCDEF";
    uint8_t bytes[ IDENTITY_BYTES ];
    char text[ TEXT_LENGTH ];
    zuRandomBytes( bytes, IDENTITY_BYTES );
    for ( ZU_INT i = 0; i < IDENTITY_BYTES; i++ ) {
        text[ 2 * i ] = DIGITS[ bytes[ i ] >> 4 ];
        text[ 2 * i + 1 ] = DIGITS[ bytes[ i ] & 15 ];
    }
    return identifierCreateUse( zuStringCreateFromAscii( text, TEXT_LENGTH ) );
}
ZU_IDENTIFIER *zuIdentifierTryCreateFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return identifierTextOk( zuStringBacking( zus ), zuStringLength( zus ) )
               ? identifierCreateUse( zuStringRetain( zus ) )
               : nullptr;
}
ZU_IDENTIFIER *zuIdentifierTryCreateFromBuffer( ZU_BUFFER *buf )
{
    ZU_ASSERT( buf );
    const uint8_t *bytes = zuBufferBacking( buf );
    return identifierTextOk( bytes, zuBufferLength( buf ) )
               ? identifierCreateUse( zuStringCreateFromAscii( (const char *)bytes, TEXT_LENGTH ) )
               : nullptr;
}

// Standard functions
static void identifierFree( ZU_OBJ *thisObj )
{
    ZU_IDENTIFIER *ident = zuIdentifierFrom( thisObj );
    ZU_ASSERT( ident );
    ZU_REF_RELEASE( ident->string );
    ZU_REF_POISON( ident->string );
}
static ZU_INT identifierCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_IDENTIFIER *identA = zuIdentifierFrom( thisObj );
    ZU_IDENTIFIER *identB = zuIdentifierFrom( thatObj );
    ZU_ASSERT( identA );
    ZU_ASSERT( identB );
    return zu___ObjCompareInline( zuStringObj( identA->string ), zuStringObj( identB->string ) );
}
static ZU_STRING *identifierToString( ZU_OBJ *thisObj )
{
    return zuIdentifierString( zuIdentifierFrom( thisObj ) );
}

// Inspection
ZU_STRING *zuIdentifierString( ZU_IDENTIFIER *ident )
{
    ZU_ASSERT( ident );
    return zuStringRetain( ident->string );
}
ZU_BUFFER *zuIdentifierBuffer( ZU_IDENTIFIER *ident )
{
    ZU_ASSERT( ident );
    char text[ TEXT_LENGTH ];
    zuCharsConvertToAscii( text, TEXT_LENGTH, zuStringBacking( ident->string ), TEXT_LENGTH, ZU_FALSE );
    return zuBufferCreateFromBytesCopy( (const uint8_t *)text, TEXT_LENGTH );
}

// Identifiers as keys
ZU_OBJ *zuDictIdentifierKey( ZU_DICT *dict, ZU_IDENTIFIER *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return zuDictObjKey( dict, zuIdentifierObj( key ) );
}
ZU_BOOL zuDictHasIdentifierKey( ZU_DICT *dict, ZU_IDENTIFIER *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return zuDictHasObjKey( dict, zuIdentifierObj( key ) );
}
ZU_INT zuDictIndexOfIdentifierKey( ZU_DICT *dict, ZU_IDENTIFIER *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( key );
    return zuDictIndexOfObjKey( dict, zuIdentifierObj( key ) );
}
void zuDictSetIdentifierKey( ZU_DICT **dict, ZU_IDENTIFIER *key, ZU_OBJ *value )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    ZU_ASSERT( value );
    zuDictSetObjKey( dict, zuIdentifierObj( key ), value );
}
void zuDictDelIdentifierKey( ZU_DICT **dict, ZU_IDENTIFIER *key )
{
    ZU_ASSERT( dict );
    ZU_ASSERT( *dict );
    ZU_ASSERT( key );
    zuDictDelObjKey( dict, zuIdentifierObj( key ) );
}
