// There are no more flags than bits in a ZU_INT, so that the way from a bit to its name is an array of 64 strings,
// found by the position of the bit, and not a second dict of boxed numbers.  From names to bits there is a dict, which
// copies of a flag set share until one of them changes.

#include "zu/base/zu_flagset.h"

#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_flagset_internal.h"
#include "zu/base/zu_format.h"
#include "zu/base/zu_name.h"
#include "zu/base/zu_string_delimited.h"
#include "zu/base/zu_text_internal.h"
#include "zu/base/zu_vector.h"
#include "zu/runtime/zu_module.h"

struct ZU_FLAGSET {
    ZU_OBJ obj;
    ZU_DICT *byName;                 // ZU_STRING to ZU_BOXED_INT
    ZU_STRING *names[ ZU_INT_BITS ]; // by bit; each may be null
};

static void flagsetFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_FLAGSET =
    ZU___SORT_INITIALIZER( "ZU_FLAGSET", &zu___module, flagsetFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_FLAGSET, zuFlagset )

// Creation
static ZU_FLAGSET *flagsetCreateUse( ZU_DICT *byName )
{
    ZU_FLAGSET *fs = (ZU_FLAGSET *)zu___ObjCreate( sizeof( ZU_FLAGSET ), &zu___sort_ZU_FLAGSET );
    fs->byName = byName;
    for ( ZU_STRING *&name : fs->names ) {
        name = nullptr;
    }
    return fs;
}
ZU_FLAGSET *zuFlagsetCreate( void )
{
    return flagsetCreateUse( zuDictCreate() );
}
ZU_FLAGSET *zuFlagsetCreateFrom( ZU_FLAGSET *source )
{
    ZU_ASSERT( source );
    ZU_FLAGSET *fs = flagsetCreateUse( zuDictRetain( source->byName ) );
    for ( ZU_INT bit = 0; bit < ZU_INT_BITS; bit++ ) {
        fs->names[ bit ] = source->names[ bit ] ? zuStringRetain( source->names[ bit ] ) : nullptr;
    }
    return fs;
}

// Replaces a shared flag set by a private copy.
static void flagsetUnshare( ZU_FLAGSET **fs )
{
    if ( ZU_REF_RETAIN_COUNT( *fs ) > 1 ) {
        ZU_FLAGSET *old = *fs;
        *fs = zuFlagsetCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}

// Replaces the printed name of a bit; null: by none.
static void flagsetSetName( ZU_FLAGSET *fs, ZU_INT bit, ZU_STRING *name )
{
    ZU_STRING *old = fs->names[ bit ];
    fs->names[ bit ] = name ? zuStringRetain( name ) : nullptr;
    ZU_REF_RELEASE_OPT( old );
}

ZU_FLAGSET *zu___FlagsetCreateFromTable( const ZU___NAMED_TABLE &table )
{
    ZU_FLAGSET *fs = flagsetCreateUse( zu___DictCreateFromTable( table, "zuFlagsetHasFlagCstr" ) );
    for ( ZU_INT i = 0; i < table.count; i++ ) {
        ZU_INT value = table.rows[ i ].value;
        ZU_ASSERT( value && zuIntBitHighest( value ) == zuIntBitLowest( value ) );
        flagsetSetName( fs, zuIntBitLowest( value ),
                        zuStringFrom( zu___DictPair( fs->byName, table.places[ i ] )->key ) );
    }
    return fs;
}

static void flagsetFree( ZU_OBJ *thisObj )
{
    ZU_FLAGSET *fs = zuFlagsetFrom( thisObj );
    ZU_ASSERT( fs );
    ZU_REF_RELEASE( fs->byName );
    ZU_REF_POISON( fs->byName );
    for ( ZU_STRING *&name : fs->names ) {
        ZU_REF_RELEASE_OPT( name );
        ZU_REF_POISON( name );
    }
}

// Setting a name
void zuFlagsetSetFlag( ZU_FLAGSET **fs, ZU_STRING *name, ZU_INT value )
{
    ZU_ASSERT( fs );
    ZU_ASSERT( *fs );
    ZU_ASSERT( zuNameUpperCaseOk( name, ZU_TRUE ) );
    ZU_ASSERT( value && zuIntBitHighest( value ) == zuIntBitLowest( value ) );
    flagsetUnshare( fs );
    ZU_BOXED_INT *boxed = zuBoxedIntCreate( value );
    zuDictSetStringKey( &( *fs )->byName, name, zuBoxedIntObj( boxed ) );
    ZU_REF_RELEASE( boxed );
    flagsetSetName( *fs, zuIntBitLowest( value ), name );
}
void zuFlagsetSetFlagCstr( ZU_FLAGSET **fs, const char *name, ZU_INT nameLength, ZU_INT value )
{
    ZU_STRING *zus = zuStringCreateFromCstr( name, nameLength );
    zuFlagsetSetFlag( fs, zus, value );
    ZU_REF_RELEASE( zus );
}
void zuFlagsetSetFlagWcstr( ZU_FLAGSET **fs, const char16_t *name, ZU_INT nameLength, ZU_INT value )
{
    ZU_STRING *zus = zuStringCreateFromWcstr( name, nameLength );
    zuFlagsetSetFlag( fs, zus, value );
    ZU_REF_RELEASE( zus );
}

// Deletion
void zuFlagsetDelFlag( ZU_FLAGSET **fs, ZU_STRING *name )
{
    ZU_ASSERT( fs );
    ZU_ASSERT( *fs );
    ZU_ASSERT( name );
    ZU_INT value = zuFlagsetFlag( *fs, name );
    if ( value == 0 ) {
        return;
    }
    flagsetUnshare( fs );
    zuDictDelStringKey( &( *fs )->byName, name );
    flagsetSetName( *fs, zuIntBitLowest( value ), nullptr );
}
void zuFlagsetDelFlagCstr( ZU_FLAGSET **fs, const char *name, ZU_INT nameLength )
{
    ZU_STRING *zus = zuStringCreateFromCstr( name, nameLength );
    zuFlagsetDelFlag( fs, zus );
    ZU_REF_RELEASE( zus );
}
void zuFlagsetDelFlagWcstr( ZU_FLAGSET **fs, const char16_t *name, ZU_INT nameLength )
{
    ZU_STRING *zus = zuStringCreateFromWcstr( name, nameLength );
    zuFlagsetDelFlag( fs, zus );
    ZU_REF_RELEASE( zus );
}

// Looking names up
ZU_INT zuFlagsetFlag( ZU_FLAGSET *fs, ZU_STRING *name )
{
    ZU_ASSERT( fs );
    ZU_ASSERT( name );
    return zu___DictIntAt( fs->byName, zuDictIndexOfStringKey( fs->byName, name ), 0 );
}
ZU_INT zuFlagsetFlagCstr( ZU_FLAGSET *fs, const char *name, ZU_INT nameLength )
{
    ZU_ASSERT( fs );
    return zu___DictIntAt( fs->byName, zuDictIndexOfStringKeyCstr( fs->byName, name, nameLength ), 0 );
}
ZU_INT zuFlagsetFlagWcstr( ZU_FLAGSET *fs, const char16_t *name, ZU_INT nameLength )
{
    ZU_ASSERT( fs );
    return zu___DictIntAt( fs->byName, zuDictIndexOfStringKeyWcstr( fs->byName, name, nameLength ), 0 );
}
ZU_BOOL zuFlagsetHasFlag( ZU_FLAGSET *fs, ZU_STRING *name )
{
    ZU_ASSERT( fs );
    ZU_ASSERT( name );
    return zuDictHasStringKey( fs->byName, name );
}
ZU_BOOL zuFlagsetHasFlagCstr( ZU_FLAGSET *fs, const char *name, ZU_INT nameLength )
{
    ZU_ASSERT( fs );
    return zuDictHasStringKeyCstr( fs->byName, name, nameLength );
}
ZU_BOOL zuFlagsetHasFlagWcstr( ZU_FLAGSET *fs, const char16_t *name, ZU_INT nameLength )
{
    ZU_ASSERT( fs );
    return zuDictHasStringKeyWcstr( fs->byName, name, nameLength );
}
ZU_VECTOR *zuFlagsetFlagsVector( ZU_FLAGSET *fs )
{
    ZU_ASSERT( fs );
    return zuDictKeysVector( fs->byName );
}

// Printing and reading
static constexpr ZU_CHAR DELIMITER = ZU_CHAR_VERTICAL_LINE;

ZU_STRING *zuFlagsetGenerate( ZU_FLAGSET *fs, ZU_INT flags )
{
    ZU_ASSERT( fs );
    ZU_STRING *text = zuStringCreate();
    for ( uint64_t rest = (uint64_t)flags; rest != 0; rest &= rest - 1 ) {
        ZU_STRING *name = fs->names[ zuIntBitLowest( (ZU_INT)rest ) ];
        ZU_ASSERT( name );
        zuStringDelimitedAppendCharDelimiter( &text, name, DELIMITER );
    }
    return text;
}
// Returns the value of one element.
static ZU_INT flagsetParseElement( ZU_FLAGSET *fs, ZU___TEXT element )
{
    const ZU___TEXT text = zu___TextTrimmed( element );
    ZU_INT idx = zu___DictIndexOfChars( fs->byName, text.chars, text.length );
    if ( idx >= 0 ) {
        return zu___DictIntAt( fs->byName, idx, 0 );
    }
    ZU_INT value;
    ZU_INT consumed;
    if ( !zuFormatTryDecodeIntChars( text.chars, text.length, -1, &value, &consumed ) ) {
        return 0;
    }
    if ( consumed == text.length ) {
        for ( ZU_INT bit = 0; bit < ZU_INT_BITS; bit++ ) {
            if ( !fs->names[ bit ] ) {
                value &= ( ZU_INT ) ~( (uint64_t)1 << bit );
            }
        }
    }
    return value;
}
ZU_INT zuFlagsetParse( ZU_FLAGSET *fs, ZU_STRING *flags )
{
    ZU_ASSERT( fs );
    ZU_ASSERT( flags );
    ZU___TEXT rest = zu___TextOf( flags );
    ZU_INT result = 0;
    while ( rest.length > 0 ) {
        result |= flagsetParseElement( fs, zu___TextTakePiece( &rest, []( ZU_CHAR ch ) { return ch == DELIMITER; } ) );
    }
    return result;
}
