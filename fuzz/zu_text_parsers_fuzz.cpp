// What is read from a short text (identifiers, times, months and weekdays, versions of modules) has a text of its own,
// and is read from that as the same.
//
// The first byte tells how wide the characters are that follow.

#include "zu_fuzz_support.h"

#include "zu/base/zu_identifier.h"
#include "zu/base/zu_time.h"
#include "zu/runtime/zu_module_version.h"
#include "zu/runtime/zu_runtime.h"

#include <algorithm>

int LLVMFuzzerInitialize( int *, char *** )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-fuzz", "Fuzzing of zu", "1.0" );
    return 0;
}

// Has `parse` read what `print` prints; it must come back.
template <typename OBJECT>
static void checkObject( ZU_STRING *text, OBJECT *( *parse )(ZU_STRING *), ZU_STRING *( *print )(OBJECT *))
{
    OBJECT *value = parse( text );
    if ( !value ) {
        return;
    }
    ZU_STRING *printed = print( value );
    OBJECT *again = parse( printed );
    require( again && zuObjCompare( (ZU_OBJ *)value, (ZU_OBJ *)again ) == 0 );
    ZU_STRING *printedAgain = print( again );
    require( zuStringEquals( printed, printedAgain ) );
    zuStringRelease( printedAgain );
    ZU_REF_RELEASE( again );
    zuStringRelease( printed );
    ZU_REF_RELEASE( value );
}
static void checkNumber( ZU_STRING *text, ZU_INT ( *parse )( ZU_STRING * ), ZU_STRING *( *print )( ZU_INT ) )
{
    ZU_INT value = parse( text );
    if ( value < 0 ) {
        return;
    }
    ZU_STRING *printed = print( value );
    require( parse( printed ) == value );
    zuStringRelease( printed );
}

int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size )
{
    if ( size < 1 ) {
        return 0;
    }
    std::vector<ZU_CHAR> chars = charsOf( data, size, 1, 1 + data[ 0 ] % 3 );
    std::replace_if(
        chars.begin(), chars.end(), []( ZU_CHAR ch ) { return !ZU_CHAR_OK( ch ); }, ZU_CHAR( 0xFFFD ) );
    ZU_STRING *text = zuStringCreateFromCharsCopy( chars.data(), (ZU_INT)chars.size() );
    checkObject( text, zuIdentifierTryCreateFromString, zuIdentifierString );
    checkObject( text, zuModuleVersionTryCreateFromString, zuModuleVersionToString );
    checkObject( text, zuTimeTryCreateFromString, zuTimeToString );
    checkNumber( text, zuMonthFromString, zuMonthToString );
    checkNumber( text, zuWeekdayFromString, zuWeekdayToString );
    ZU_BUFFER *bytes = zuBufferCreateFromBytesCopy( data, (ZU_INT)size );
    ZU_IDENTIFIER *ident = zuIdentifierTryCreateFromBuffer( bytes );
    if ( ident ) {
        ZU_BUFFER *back = zuIdentifierBuffer( ident );
        require( zuBufferEquals( back, bytes ) );
        zuBufferRelease( back );
        zuIdentifierRelease( ident );
    }
    zuBufferRelease( bytes );
    zuStringRelease( text );
    return 0;
}
