// The forms of what is done at an address.  Each gets the address and hands it on: to look it up, to the function that
// takes a ZU___STORE_KEY, and narrow and UTF-16 text is made no string for that; to change a store, to the form that
// takes a string.

#include "zu/base/zu_store_internal.h"
#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_ref_internal.h"

// Testing an address
ZU_BOOL zuStoreHasAddress( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreHasAddress( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasAddressCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreHasAddress( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasAddressWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreHasAddress( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasAddressFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreHasAddress( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasAddressFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasAddress( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasAddressFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasAddress( store, ZU___STORE_KEY( address ) );
}

// Testing a value
ZU_BOOL zuStoreHasValue( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreHasValue( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueAt( ZU_STORE *store, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreHasValue( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreHasValue( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreHasValue( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreHasValue( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValue( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValue( store, ZU___STORE_KEY( address ) );
}

// Reading a value
ZU_STRING *zuStoreValue( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreValue( store, ZU___STORE_KEY( address ) );
}
ZU_STRING *zuStoreValueAt( ZU_STORE *store, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreValue( store, ZU___STORE_KEY( address ) );
}
ZU_STRING *zuStoreValueCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreValue( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_STRING *zuStoreValueWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreValue( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_STRING *zuStoreValueFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreValue( store, ZU___STORE_KEY( address ) );
}
ZU_STRING *zuStoreValueFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValue( store, ZU___STORE_KEY( address ) );
}
ZU_STRING *zuStoreValueFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValue( store, ZU___STORE_KEY( address ) );
}

// Setting a value
void zuStoreSetValueAt( ZU_STORE **store, ZU_INT idx, ZU_STRING *value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zu___Owned address( zuStoreAddressAt( *store, idx ) );
    zuStoreSetValue( store, address, value );
}
void zuStoreSetValueCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_STRING *value )
{
    zu___Owned text( zuStringCreateFromCstr( address, addressLength ) );
    zuStoreSetValue( store, text, value );
}
void zuStoreSetValueWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_STRING *value )
{
    zu___Owned text( zuStringCreateFromWcstr( address, addressLength ) );
    zuStoreSetValue( store, text, value );
}
void zuStoreSetValueFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_STRING *value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    zuStoreSetValue( store, address, value );
}
void zuStoreSetValueFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_STRING *value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValue( store, address, value );
}
void zuStoreSetValueFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_STRING *value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValue( store, address, value );
}

// Deleting a value
void zuStoreDelValueAt( ZU_STORE **store, ZU_INT idx )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zu___Owned address( zuStoreAddressAt( *store, idx ) );
    zuStoreDelValue( store, address );
}
void zuStoreDelValueCstr( ZU_STORE **store, const char *address, ZU_INT addressLength )
{
    zu___Owned text( zuStringCreateFromCstr( address, addressLength ) );
    zuStoreDelValue( store, text );
}
void zuStoreDelValueWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength )
{
    zu___Owned text( zuStringCreateFromWcstr( address, addressLength ) );
    zuStoreDelValue( store, text );
}
void zuStoreDelValueFormat( ZU_STORE **store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    zuStoreDelValue( store, address );
}
void zuStoreDelValueFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreDelValue( store, address );
}
void zuStoreDelValueFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreDelValue( store, address );
}

// Testing a sub-store
ZU_BOOL zuStoreHasStore( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreHasStore( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasStoreAt( ZU_STORE *store, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreHasStore( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasStoreCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreHasStore( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasStoreWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreHasStore( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasStoreFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreHasStore( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasStoreFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasStore( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasStoreFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasStore( store, ZU___STORE_KEY( address ) );
}

// Reading a sub-store
ZU_STORE *zuStoreStore( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreStore( store, ZU___STORE_KEY( address ) );
}
ZU_STORE *zuStoreStoreAt( ZU_STORE *store, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreStore( store, ZU___STORE_KEY( address ) );
}
ZU_STORE *zuStoreStoreCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreStore( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_STORE *zuStoreStoreWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreStore( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_STORE *zuStoreStoreFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreStore( store, ZU___STORE_KEY( address ) );
}
ZU_STORE *zuStoreStoreFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreStore( store, ZU___STORE_KEY( address ) );
}
ZU_STORE *zuStoreStoreFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreStore( store, ZU___STORE_KEY( address ) );
}

// Setting a sub-store
void zuStoreSetStoreAt( ZU_STORE **store, ZU_INT idx, ZU_STORE *other )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zu___Owned address( zuStoreAddressAt( *store, idx ) );
    zuStoreSetStore( store, address, other );
}
void zuStoreSetStoreCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_STORE *other )
{
    zu___Owned text( zuStringCreateFromCstr( address, addressLength ) );
    zuStoreSetStore( store, text, other );
}
void zuStoreSetStoreWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_STORE *other )
{
    zu___Owned text( zuStringCreateFromWcstr( address, addressLength ) );
    zuStoreSetStore( store, text, other );
}
void zuStoreSetStoreFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_STORE *other, ... )
{
    va_list args;
    va_start( args, other );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    zuStoreSetStore( store, address, other );
}
void zuStoreSetStoreFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_STORE *other, ... )
{
    va_list args;
    va_start( args, other );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetStore( store, address, other );
}
void zuStoreSetStoreFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_STORE *other, ... )
{
    va_list args;
    va_start( args, other );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetStore( store, address, other );
}

// Deleting a sub-store
void zuStoreDelStoreAt( ZU_STORE **store, ZU_INT idx )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zu___Owned address( zuStoreAddressAt( *store, idx ) );
    zuStoreDelStore( store, address );
}
void zuStoreDelStoreCstr( ZU_STORE **store, const char *address, ZU_INT addressLength )
{
    zu___Owned text( zuStringCreateFromCstr( address, addressLength ) );
    zuStoreDelStore( store, text );
}
void zuStoreDelStoreWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength )
{
    zu___Owned text( zuStringCreateFromWcstr( address, addressLength ) );
    zuStoreDelStore( store, text );
}
void zuStoreDelStoreFormat( ZU_STORE **store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    zuStoreDelStore( store, address );
}
void zuStoreDelStoreFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreDelStore( store, address );
}
void zuStoreDelStoreFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreDelStore( store, address );
}

// Testing a truth value
ZU_BOOL zuStoreHasValueBool( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreHasValueBool( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueBoolAt( ZU_STORE *store, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreHasValueBool( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueBoolCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreHasValueBool( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueBoolWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreHasValueBool( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueBoolFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreHasValueBool( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueBoolFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValueBool( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueBoolFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValueBool( store, ZU___STORE_KEY( address ) );
}

// Reading a truth value
ZU_BOOL zuStoreValueBool( ZU_STORE *store, ZU_BOOL *value, ZU_STRING *address )
{
    return zu___StoreValueBool( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueBoolAt( ZU_STORE *store, ZU_BOOL *value, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreValueBool( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueBoolCstr( ZU_STORE *store, ZU_BOOL *value, const char *address, ZU_INT addressLength )
{
    return zu___StoreValueBool( store, value, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueBoolWcstr( ZU_STORE *store, ZU_BOOL *value, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreValueBool( store, value, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueBoolFormat( ZU_STORE *store, ZU_BOOL *value, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreValueBool( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueBoolFormatCstr( ZU_STORE *store, ZU_BOOL *value, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValueBool( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueBoolFormatWcstr( ZU_STORE *store, ZU_BOOL *value, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValueBool( store, value, ZU___STORE_KEY( address ) );
}

// Setting a truth value
void zuStoreSetValueBoolAt( ZU_STORE **store, ZU_INT idx, ZU_BOOL value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zu___Owned address( zuStoreAddressAt( *store, idx ) );
    zuStoreSetValueBool( store, address, value );
}
void zuStoreSetValueBoolCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_BOOL value )
{
    zu___Owned text( zuStringCreateFromCstr( address, addressLength ) );
    zuStoreSetValueBool( store, text, value );
}
void zuStoreSetValueBoolWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_BOOL value )
{
    zu___Owned text( zuStringCreateFromWcstr( address, addressLength ) );
    zuStoreSetValueBool( store, text, value );
}
void zuStoreSetValueBoolFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_BOOL value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    zuStoreSetValueBool( store, address, value );
}
void zuStoreSetValueBoolFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_BOOL value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValueBool( store, address, value );
}
void zuStoreSetValueBoolFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_BOOL value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValueBool( store, address, value );
}

// Testing an integer
ZU_BOOL zuStoreHasValueInt( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreHasValueInt( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueIntAt( ZU_STORE *store, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreHasValueInt( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueIntCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreHasValueInt( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueIntWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreHasValueInt( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueIntFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreHasValueInt( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueIntFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValueInt( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueIntFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValueInt( store, ZU___STORE_KEY( address ) );
}

// Reading an integer
ZU_BOOL zuStoreValueInt( ZU_STORE *store, ZU_INT *value, ZU_STRING *address )
{
    return zu___StoreValueInt( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueIntAt( ZU_STORE *store, ZU_INT *value, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreValueInt( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueIntCstr( ZU_STORE *store, ZU_INT *value, const char *address, ZU_INT addressLength )
{
    return zu___StoreValueInt( store, value, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueIntWcstr( ZU_STORE *store, ZU_INT *value, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreValueInt( store, value, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueIntFormat( ZU_STORE *store, ZU_INT *value, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreValueInt( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueIntFormatCstr( ZU_STORE *store, ZU_INT *value, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValueInt( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueIntFormatWcstr( ZU_STORE *store, ZU_INT *value, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValueInt( store, value, ZU___STORE_KEY( address ) );
}

// Setting an integer
void zuStoreSetValueIntAt( ZU_STORE **store, ZU_INT idx, ZU_INT value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zu___Owned address( zuStoreAddressAt( *store, idx ) );
    zuStoreSetValueInt( store, address, value );
}
void zuStoreSetValueIntCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_INT value )
{
    zu___Owned text( zuStringCreateFromCstr( address, addressLength ) );
    zuStoreSetValueInt( store, text, value );
}
void zuStoreSetValueIntWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_INT value )
{
    zu___Owned text( zuStringCreateFromWcstr( address, addressLength ) );
    zuStoreSetValueInt( store, text, value );
}
void zuStoreSetValueIntFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_INT value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    zuStoreSetValueInt( store, address, value );
}
void zuStoreSetValueIntFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_INT value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValueInt( store, address, value );
}
void zuStoreSetValueIntFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_INT value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValueInt( store, address, value );
}

// Testing a real number
ZU_BOOL zuStoreHasValueReal( ZU_STORE *store, ZU_STRING *address )
{
    return zu___StoreHasValueReal( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueRealAt( ZU_STORE *store, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreHasValueReal( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueRealCstr( ZU_STORE *store, const char *address, ZU_INT addressLength )
{
    return zu___StoreHasValueReal( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueRealWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreHasValueReal( store, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreHasValueRealFormat( ZU_STORE *store, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreHasValueReal( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueRealFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValueReal( store, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreHasValueRealFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreHasValueReal( store, ZU___STORE_KEY( address ) );
}

// Reading a real number
ZU_BOOL zuStoreValueReal( ZU_STORE *store, double *value, ZU_STRING *address )
{
    return zu___StoreValueReal( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueRealAt( ZU_STORE *store, double *value, ZU_INT idx )
{
    zu___Owned address( zuStoreAddressAt( store, idx ) );
    return zu___StoreValueReal( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueRealCstr( ZU_STORE *store, double *value, const char *address, ZU_INT addressLength )
{
    return zu___StoreValueReal( store, value, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueRealWcstr( ZU_STORE *store, double *value, const char16_t *address, ZU_INT addressLength )
{
    return zu___StoreValueReal( store, value, ZU___STORE_TEXT( address, addressLength ) );
}
ZU_BOOL zuStoreValueRealFormat( ZU_STORE *store, double *value, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    return zu___StoreValueReal( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueRealFormatCstr( ZU_STORE *store, double *value, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValueReal( store, value, ZU___STORE_KEY( address ) );
}
ZU_BOOL zuStoreValueRealFormatWcstr( ZU_STORE *store, double *value, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    return zu___StoreValueReal( store, value, ZU___STORE_KEY( address ) );
}

// Setting a real number
void zuStoreSetValueRealAt( ZU_STORE **store, ZU_INT idx, double value )
{
    ZU_ASSERT( store );
    ZU_ASSERT( *store );
    zu___Owned address( zuStoreAddressAt( *store, idx ) );
    zuStoreSetValueReal( store, address, value );
}
void zuStoreSetValueRealCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, double value )
{
    zu___Owned text( zuStringCreateFromCstr( address, addressLength ) );
    zuStoreSetValueReal( store, text, value );
}
void zuStoreSetValueRealWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, double value )
{
    zu___Owned text( zuStringCreateFromWcstr( address, addressLength ) );
    zuStoreSetValueReal( store, text, value );
}
void zuStoreSetValueRealFormat( ZU_STORE **store, ZU_STRING *fmt, double value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatArgList( fmt, args ) );
    va_end( args );
    zuStoreSetValueReal( store, address, value );
}
void zuStoreSetValueRealFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, double value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValueReal( store, address, value );
}
void zuStoreSetValueRealFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, double value, ... )
{
    va_list args;
    va_start( args, value );
    zu___Owned address( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) );
    va_end( args );
    zuStoreSetValueReal( store, address, value );
}
