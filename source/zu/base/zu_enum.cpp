// Two dicts, one for either direction.  They are values themselves, so that copies of an enumeration share them until
// one is changed.

#include "zu/base/zu_enum.h"

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_enum_internal.h"
#include "zu/base/zu_format.h"
#include "zu/base/zu_name.h"
#include "zu/base/zu_text_internal.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_module.h"

#include <cstdio>

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
ZU_DICT *zu___DictCreateFromTable( const ZU___NAMED_TABLE &table, const char *hasFunc )
{
    if ( table.twice >= 0 ) {
        char expression[ 256 ];
        snprintf( expression, sizeof expression, "!%s( *(&%s), \"%s\", -1 )", hasFunc, table.variable,
                  table.rows[ table.twice ].name );
        zu___Abort( nullptr, table.file, table.line, expression );
    }
    ZU_DICT *byName = zu___DictCreateEmpty();
    ZU___DICT_PAIR *pairs = zu___DictMakeRoom( byName, 0, table.count );
    for ( ZU_INT i = 0; i < table.count; i++ ) {
        pairs[ table.places[ i ] ] = { zuStringObj( zuStringCreateFromAscii( table.rows[ i ].name, -1 ) ),
                                       zuBoxedIntObj( zuBoxedIntCreate( table.rows[ i ].value ) ) };
    }
    byName->keySort = zuStringSort();
    return byName;
}
ZU_ENUM *zu___EnumCreateFromTable( const ZU___NAMED_TABLE &table )
{
    ZU_DICT *byName = zu___DictCreateFromTable( table, "zuEnumHasEnumerantCstr" );
    ZU_DICT *byValue = zu___DictCreateEmpty();
    ZU___DICT_PAIR *values = zu___DictMakeRoom( byValue, 0, table.count );
    for ( ZU_INT i = 0; i < table.count; i++ ) {
        ZU_ASSERT( table.rows[ i ].value >= 0 );
        ZU___DICT_PAIR pair = *zu___DictPair( byName, table.places[ i ] );
        values[ i ] = { zuObjRetain( pair.val ), zuObjRetain( pair.key ) };
    }
    byValue->keySort = zuBoxedIntSort();
    if ( !table.ascending ) {
        zu___DictSort( byValue, true );
    }
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
    const ZU___TEXT text = zu___TextTrimmed( zu___TextOf( name ) );
    ZU_INT idx = zu___DictIndexOfChars( en->byName, text.chars, text.length );
    if ( idx >= 0 ) {
        return zu___DictIntAt( en->byName, idx, -1 );
    }
    ZU_INT value;
    ZU_INT consumed;
    if ( zuFormatTryDecodeIntChars( text.chars, text.length, -1, &value, &consumed ) && consumed == text.length &&
         zuDictHasIntKey( en->byValue, value ) ) {
        return value;
    }
    return -1;
}
