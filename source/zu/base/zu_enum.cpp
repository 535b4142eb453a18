// Two dicts, one for either direction.  They are values themselves, so that copies of an enumeration share them until
// one is changed.

#include "zu/base/zu_enum.h"

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_enum_internal.h"
#include "zu/base/zu_format.h"
#include "zu/base/zu_name.h"
#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_module.h"

#include <cstdio>
#include <cstring>

struct ZU_ENUM {
    ZU_OBJ obj;
    ZU_DICT *byName;  // ZU_STRING to ZU_BOXED_INT
    ZU_DICT *byValue; // ZU_BOXED_INT to ZU_STRING
};

static void enumFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_ENUM = ZU___SORT_INITIALIZER( "ZU_ENUM", &zu___module, enumFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_ENUM, zuEnum )

// Creation
static ZU_ENUM *enumCreateUse( ZU_DICT *byName, ZU_DICT *byValue )
{
    ZU_ENUM *en = (ZU_ENUM *)zu___ObjCreate( sizeof( ZU_ENUM ), &zu___sort_ZU_ENUM );
    en->byName = byName;
    en->byValue = byValue;
    return en;
}
ZU_ENUM *zuEnumCreate( void )
{
    return enumCreateUse( zuDictCreate(), zuDictCreate() );
}
ZU_ENUM *zuEnumCreateFrom( ZU_ENUM *source )
{
    ZU_ASSERT( source );
    return enumCreateUse( zuDictRetain( source->byName ), zuDictRetain( source->byValue ) );
}

// Tables of the library's own constants
void zu___NamedValuesFill( ZU___DICT_PAIR *pairs, const ZU___NAMED_VALUE *rows, ZU_INT count )
{
    for ( ZU_INT i = 0; i < count; i++ ) {
        ZU_STRING *name = zuStringCreateFromAscii( rows[ i ].name, -1 );
        ZU_ASSERT( zuNameUpperCaseOk( name, ZU_TRUE ) );
        pairs[ i ] = { zuStringObj( name ), zuBoxedIntObj( zuBoxedIntCreate( rows[ i ].value ) ) };
    }
}
void zu___NamedValuesSort( ZU_DICT *byName, const ZU___NAMED_VALUE *rows, const char *hasFunc, const char *variable,
                           const char *file, int32_t line )
{
    ZU_INT count = byName->length;
    zu___DictSort( byName, false );
    if ( byName->length == count ) {
        return;
    }
    for ( ZU_INT second = 1; second < count; second++ ) {
        for ( ZU_INT first = 0; first < second; first++ ) {
            if ( strcmp( rows[ first ].name, rows[ second ].name ) == 0 ) {
                char expression[ 256 ];
                snprintf( expression, sizeof expression, "!%s( *(&%s), \"%s\", -1 )", hasFunc, variable,
                          rows[ second ].name );
                zu___Abort( nullptr, file, line, expression );
            }
        }
    }
    ZU_ABORT();
}
ZU_ENUM *zu___EnumCreateFromRows( const ZU___NAMED_VALUE *rows, ZU_INT count, const char *variable, const char *file,
                                  int32_t line )
{
    ZU_DICT *byName = zu___DictCreateEmpty();
    ZU_DICT *byValue = zu___DictCreateEmpty();
    ZU___DICT_PAIR *names = zu___DictMakeRoom( byName, 0, count );
    ZU___DICT_PAIR *values = zu___DictMakeRoom( byValue, 0, count );
    zu___NamedValuesFill( names, rows, count );
    for ( ZU_INT i = 0; i < count; i++ ) {
        ZU_ASSERT( rows[ i ].value >= 0 );
        values[ i ] = { zuObjRetain( names[ i ].val ), zuObjRetain( names[ i ].key ) };
    }
    zu___NamedValuesSort( byName, rows, "zuEnumHasEnumerantCstr", variable, file, line );
    zu___DictSort( byValue, true );
    return enumCreateUse( byName, byValue );
}

// Replaces a shared enumeration by a private copy.
static void enumUnshare( ZU_ENUM **en )
{
    if ( ZU_REF_RETAIN_COUNT( *en ) > 1 ) {
        ZU_ENUM *old = *en;
        *en = zuEnumCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

static void enumFree( ZU_OBJ *thisObj )
{
    ZU_ENUM *en = zuEnumFrom( thisObj );
    ZU_ASSERT( en );
    ZU_REF_RELEASE( en->byName );
    ZU_REF_POISON( en->byName );
    ZU_REF_RELEASE( en->byValue );
    ZU_REF_POISON( en->byValue );
}

// Setting a name
void zuEnumSetEnumerant( ZU_ENUM **en, ZU_STRING *name, ZU_INT value )
{
    ZU_ASSERT( en );
    ZU_ASSERT( *en );
    ZU_ASSERT( zuNameUpperCaseOk( name, ZU_TRUE ) );
    ZU_ASSERT( value >= 0 );
    enumUnshare( en );
    zuEnumDelEnumerant( en, name );
    ZU_OBJ *boxed = zuBoxedIntObj( zuBoxedIntCreate( value ) );
    zuDictSetStringKey( &( *en )->byName, name, boxed );
    zuDictSetObjKey( &( *en )->byValue, boxed, zuStringObj( name ) );
    ZU_REF_RELEASE( boxed );
}
void zuEnumSetEnumerantCstr( ZU_ENUM **en, const char *name, ZU_INT nameLength, ZU_INT value )
{
    ZU_STRING *zus = zuStringCreateFromCstr( name, nameLength );
    zuEnumSetEnumerant( en, zus, value );
    ZU_REF_RELEASE( zus );
}
void zuEnumSetEnumerantWcstr( ZU_ENUM **en, const char16_t *name, ZU_INT nameLength, ZU_INT value )
{
    ZU_STRING *zus = zuStringCreateFromWcstr( name, nameLength );
    zuEnumSetEnumerant( en, zus, value );
    ZU_REF_RELEASE( zus );
}

// Deletion
void zuEnumDelEnumerant( ZU_ENUM **en, ZU_STRING *name )
{
    ZU_ASSERT( en );
    ZU_ASSERT( *en );
    ZU_ASSERT( name );
    ZU_OBJ *boxed = zuDictStringKey( ( *en )->byName, name );
    if ( !boxed ) {
        return;
    }
    enumUnshare( en );
    zuDictDelStringKey( &( *en )->byName, name );
    zuDictDelObjKey( &( *en )->byValue, boxed );
    ZU_REF_RELEASE( boxed );
}
void zuEnumDelEnumerantCstr( ZU_ENUM **en, const char *name, ZU_INT nameLength )
{
    ZU_STRING *zus = zuStringCreateFromCstr( name, nameLength );
    zuEnumDelEnumerant( en, zus );
    ZU_REF_RELEASE( zus );
}
void zuEnumDelEnumerantWcstr( ZU_ENUM **en, const char16_t *name, ZU_INT nameLength )
{
    ZU_STRING *zus = zuStringCreateFromWcstr( name, nameLength );
    zuEnumDelEnumerant( en, zus );
    ZU_REF_RELEASE( zus );
}

// Looking names up
ZU_INT zuEnumEnumerant( ZU_ENUM *en, ZU_STRING *name )
{
    ZU_ASSERT( en );
    ZU_ASSERT( name );
    return zu___DictIntAt( en->byName, zuDictIndexOfStringKey( en->byName, name ), -1 );
}
ZU_INT zuEnumEnumerantCstr( ZU_ENUM *en, const char *name, ZU_INT nameLength )
{
    ZU_ASSERT( en );
    return zu___DictIntAt( en->byName, zuDictIndexOfStringKeyCstr( en->byName, name, nameLength ), -1 );
}
ZU_INT zuEnumEnumerantWcstr( ZU_ENUM *en, const char16_t *name, ZU_INT nameLength )
{
    ZU_ASSERT( en );
    return zu___DictIntAt( en->byName, zuDictIndexOfStringKeyWcstr( en->byName, name, nameLength ), -1 );
}
ZU_BOOL zuEnumHasEnumerant( ZU_ENUM *en, ZU_STRING *name )
{
    ZU_ASSERT( en );
    ZU_ASSERT( name );
    return zuDictHasStringKey( en->byName, name );
}
ZU_BOOL zuEnumHasEnumerantCstr( ZU_ENUM *en, const char *name, ZU_INT nameLength )
{
    ZU_ASSERT( en );
    return zuDictHasStringKeyCstr( en->byName, name, nameLength );
}
ZU_BOOL zuEnumHasEnumerantWcstr( ZU_ENUM *en, const char16_t *name, ZU_INT nameLength )
{
    ZU_ASSERT( en );
    return zuDictHasStringKeyWcstr( en->byName, name, nameLength );
}
ZU_VECTOR *zuEnumEnumerantsVector( ZU_ENUM *en )
{
    ZU_ASSERT( en );
    return zuDictKeysVector( en->byName );
}

// Printing and reading
ZU_STRING *zuEnumGenerate( ZU_ENUM *en, ZU_INT value )
{
    ZU_ASSERT( en );
    return zuStringFrom( zuDictIntKey( en->byValue, value ) );
}
ZU_INT zuEnumParse( ZU_ENUM *en, ZU_STRING *name )
{
    ZU_ASSERT( en );
    ZU_ASSERT( name );
    const ZU_CHAR *chars = zuStringBacking( name );
    ZU_INT length = zuStringLength( name );
    zu___EnumTrim( &chars, &length );
    ZU_INT idx = zu___DictIndexOfChars( en->byName, chars, length );
    if ( idx >= 0 ) {
        return zu___DictIntAt( en->byName, idx, -1 );
    }
    ZU_INT value;
    ZU_INT consumed;
    if ( zuFormatTryDecodeIntChars( chars, length, -1, &value, &consumed ) && consumed == length &&
         zuDictHasIntKey( en->byValue, value ) ) {
        return value;
    }
    return -1;
}
