// Vectors serve as lists, stacks and queues, so there is free space at both ends, and a short one needs no array: it
// has room for 64 items, and begins with them in its middle, since nobody knows at which end it will grow.  Where the
// items stand, and when they move, is in zu_slack_internal.h.
//
// Positions and counts are checked where they enter.  A vector that anybody else holds is never changed: an insertion
// builds its successor in one step, so that each item is retained once, and every other change works on a copy.  A
// release can run any code, so that what a change takes out is released when the vector is right again.

#include "zu/base/zu_vector.h"

#include "zu/base/zu_boxed_bool.h"
#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_boxed_null.h"
#include "zu/base/zu_boxed_real.h"
#include "zu/base/zu_nested_internal.h"
#include "zu/base/zu_slack_internal.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_vector_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"

using VECTOR_SLACK =
    zu___Slack<ZU_VECTOR, ZU_OBJ *, ZU___VECTOR_INLINE_ITEMS, &ZU_VECTOR::items, &ZU_VECTOR::inlineItems>;
static_assert( ZU_VECTOR_FSPACE == VECTOR_SLACK::FRONT && ZU_VECTOR_BSPACE == VECTOR_SLACK::BACK );

static ZU_VECTOR *emptyVector = nullptr; // shared by everybody who holds no item

static void vectorFree( ZU_OBJ *thisObj );
static ZU_INT vectorCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj );
static ZU_STRING *vectorToString( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_VECTOR =
    ZU___SORT_INITIALIZER( "ZU_VECTOR", &zu___module, vectorFree, vectorCompare, vectorToString );
ZU___STDFUNCS( ZU_VECTOR, zuVector )

// Returns a new, private, empty vector.
static ZU_VECTOR *vectorCreateEmpty()
{
    ZU_VECTOR *vec = (ZU_VECTOR *)zu___ObjCreate( sizeof( ZU_VECTOR ), &zu___sort_ZU_VECTOR );
    VECTOR_SLACK::initialize( vec, ZU_VECTOR_FSPACE );
    return vec;
}
static inline ZU_OBJ **vectorFirst( ZU_VECTOR *vec )
{
    return VECTOR_SLACK::first( vec );
}

// Start-up
void zu___VectorStartup( void )
{
    emptyVector = nullptr;
    emptyVector = vectorCreateEmpty();
}
void zu___VectorShutdown( void )
{
    ZU_REF_RELEASE( emptyVector );
    ZU_REF_POISON( emptyVector );
}

// Storage

[[gnu::always_inline]] static inline ZU_OBJ **vectorMakeRoom( ZU_VECTOR *vec, ZU_INT atIndex, ZU_INT count )
{
    if ( count > 0 ) {
        ZU_ASSERT( ZU_INT_ADD_OK( vec->length, count ) );
        if ( atIndex == 0 ) {
            if ( !VECTOR_SLACK::takeAtFront( vec, count ) ) {
                ZU_ASSERT( ZU_INT_ADD_OK( ZU_VECTOR_FSPACE + ZU_VECTOR_BSPACE + vec->length, count ) );
                VECTOR_SLACK::growAtFront( vec, count );
            }
        } else if ( atIndex == vec->length ) {
            if ( !VECTOR_SLACK::takeAtEnd( vec, count ) ) {
                ZU_ASSERT( ZU_INT_ADD_OK( vec->fspace + vec->length + ZU_VECTOR_BSPACE, count ) );
                VECTOR_SLACK::growAtEnd( vec, count );
            }
        } else {
            if ( !VECTOR_SLACK::takeInside( vec, atIndex, count ) ) {
                ZU_ASSERT( ZU_INT_ADD_OK( ZU_VECTOR_FSPACE + ZU_VECTOR_BSPACE + vec->length, count ) );
                VECTOR_SLACK::growInside( vec, atIndex, count );
            }
        }
        vec->length += count;
    }
    return vectorFirst( vec ) + atIndex;
}
ZU_OBJ **zu___VectorMakeRoom( ZU_VECTOR *vec, ZU_INT atIndex, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( vec ) == 1 );
    ZU_ASSERT( atIndex >= 0 );
    ZU_ASSERT( atIndex <= vec->length );
    ZU_ASSERT( count >= 0 );
    return vectorMakeRoom( vec, atIndex, count );
}

static inline void vectorCompact( ZU_VECTOR *vec )
{
    if ( ZU___UNLIKELY( vec->length == 0 ) ) {
        VECTOR_SLACK::center( vec ); // nobody knows at which end it will grow next
    } else {
        VECTOR_SLACK::compact( vec );
    }
}
void zu___VectorCompact( ZU_VECTOR *vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( ZU_REF_RETAIN_COUNT( vec ) == 1 );
    vectorCompact( vec );
}

static inline ZU_OBJ *vectorRetainItem( ZU_OBJ *item )
{
    ZU___RETAIN_COUNT_INCREMENT( item->retainCount );
    return item;
}

// Copies references, each of them retained; a null stays null.
static void vectorRetainItems( ZU_OBJ **dest, ZU_OBJ *const *src, ZU_INT count )
{
    for ( ZU_INT i = count; i > 0; i-- ) {
        ZU_OBJ *item = src[ i - 1 ];
        dest[ i - 1 ] = item ? vectorRetainItem( item ) : nullptr;
    }
}

// Standard functions
static void vectorFree( ZU_OBJ *thisObj )
{
    ZU_VECTOR *vec = zuVectorFrom( thisObj );
    ZU_ASSERT( vec );
    ZU_ASSERT( vec->items );
    ZU_OBJ **items = vectorFirst( vec );
    for ( ZU_INT i = 0; i < vec->length; i++ ) {
        ZU_OBJ *item = items[ i ];
        items[ i ] = nullptr;
        ZU_REF_RELEASE( item );
    }
    VECTOR_SLACK::finalize( vec );
}
static ZU_INT vectorCompare( ZU_OBJ *thisObj, ZU_OBJ *thatObj )
{
    ZU_VECTOR *vecA = zuVectorFrom( thisObj );
    ZU_VECTOR *vecB = zuVectorFrom( thatObj );
    ZU_ASSERT( vecA );
    ZU_ASSERT( vecB );
    return zu___NestedCompare( thisObj, thatObj );
}
static ZU_STRING *vectorToString( ZU_OBJ *thisObj )
{
    ZU_VECTOR *vec = zuVectorFrom( thisObj );
    ZU_ASSERT( vec );
    return zu___NestedToString( thisObj );
}

// Inspection
ZU_INT zuVectorLength( ZU_VECTOR *vec )
{
    ZU_ASSERT( vec );
    return vec->length;
}
ZU_OBJ *const *zuVectorBacking( ZU_VECTOR *vec )
{
    ZU_ASSERT( vec );
    return vectorFirst( vec );
}
ZU_OBJ *zuVectorObjAt( ZU_VECTOR *vec, ZU_INT idx )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < vec->length );
    return zuObjRetain( vectorFirst( vec )[ idx ] );
}
ZU_SORT *zuVectorSortAt( ZU_VECTOR *vec, ZU_INT idx )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < vec->length );
    return zuObjSort( vectorFirst( vec )[ idx ] );
}
ZU_BOOL zuVectorContainsOnly( ZU_VECTOR *vec, ZU_SORT *sort )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( sort );
    for ( ZU_INT i = 0; i < vec->length; i++ ) {
        if ( zuObjSort( vectorFirst( vec )[ i ] ) != sort ) {
            return ZU_FALSE;
        }
    }
    return ZU_TRUE;
}
ZU_BOOL zuVectorHasObj( ZU_VECTOR *vec, ZU_OBJ *obj, ZU_BOOL useCompare )
{
    return zuVectorIndexOfObj( vec, obj, useCompare ) != -1;
}
ZU_INT zuVectorIndexOfObj( ZU_VECTOR *vec, ZU_OBJ *obj, ZU_BOOL useCompare )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( obj );
    ZU_OBJ *const *items = vectorFirst( vec );
    for ( ZU_INT i = 0; i < vec->length; i++ ) {
        if ( useCompare ? zuObjCompare( items[ i ], obj ) == 0 : items[ i ] == obj ) {
            return i;
        }
    }
    return -1;
}

// Creation
ZU_VECTOR *zuVectorCreate( void )
{
    return emptyVector ? zuVectorRetain( emptyVector ) : nullptr;
}
ZU_VECTOR *zuVectorCreateFrom( ZU_VECTOR *src )
{
    ZU_ASSERT( src );
    return zuVectorCreateFromInner( src, 0, src->length );
}
ZU_VECTOR *zuVectorCreateFromInner( ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( src );
    ZU_VECTOR *vec = vectorCreateEmpty();
    zuVectorInsertInner( &vec, 0, src, offset, count );
    return vec;
}
ZU_VECTOR *zuVectorCreateFromLeading( ZU_VECTOR *src, ZU_INT count )
{
    ZU_ASSERT( src );
    return zuVectorCreateFromInner( src, 0, count );
}
ZU_VECTOR *zuVectorCreateFromTrailing( ZU_VECTOR *src, ZU_INT count )
{
    ZU_ASSERT( src );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= src->length );
    return zuVectorCreateFromInner( src, src->length - count, count );
}
ZU_VECTOR *zuVectorCreateFromOuter( ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( src );
    ZU_VECTOR *vec = vectorCreateEmpty();
    zuVectorInsertOuter( &vec, 0, src, offset, count );
    return vec;
}
ZU_VECTOR *zuVectorCreateFromObj( ZU_OBJ *obj )
{
    ZU_ASSERT( obj );
    ZU_VECTOR *vec = vectorCreateEmpty();
    zuVectorInsertObj( &vec, 0, obj );
    return vec;
}

// Asserts that `src` has `count` objects.
#define VECTOR_ASSERT_OBJS( src, count )       \
    do {                                       \
        ZU_ASSERT( src || count == 0 );        \
        ZU_ASSERT( count >= 0 );               \
        for ( ZU_INT i = 0; i < count; i++ ) { \
            ZU_ASSERT( src[i] );               \
        }                                      \
    } while ( 0 )

static ZU_VECTOR *vectorCreateAdopting( ZU_OBJ **src, ZU_INT count )
{
    ZU_VECTOR *vec = (ZU_VECTOR *)zu___ObjCreate( sizeof( ZU_VECTOR ), &zu___sort_ZU_VECTOR );
    VECTOR_SLACK::adopt( vec, src, count );
    return vec;
}
ZU_VECTOR *zuVectorCreateFromObjsCopy( ZU_OBJ *const *src, ZU_INT count )
{
    VECTOR_ASSERT_OBJS( src, count );
    if ( count == 0 ) {
        return zuVectorCreate();
    }
    return vectorCreateAdopting( (ZU_OBJ **)zuMemDupN( src, count, sizeof( ZU_OBJ * ) ), count );
}
ZU_VECTOR *zuVectorCreateFromObjsUse( ZU_OBJ **src, ZU_INT count )
{
    VECTOR_ASSERT_OBJS( src, count );
    if ( count == 0 ) {
        return zuVectorCreate();
    }
    return vectorCreateAdopting( src, count );
}

void zu___VectorUnshare( ZU_VECTOR **vec )
{
    if ( ZU_REF_RETAIN_COUNT( *vec ) > 1 ) {
        ZU_VECTOR *old = *vec;
        *vec = zuVectorCreateFrom( old );
        ZU_REF_RELEASE( old );
    }
}
static inline void vectorUnshare( ZU_VECTOR **vec )
{
    if ( ZU___UNLIKELY( ZU_REF_RETAIN_COUNT( *vec ) > 1 ) ) {
        zu___VectorUnshare( vec );
    }
}

// Insertion.  zuVectorInsertInner, zuVectorInsertObj, zuVectorInsertObjs and vectorInsertOwned do the work; the other
// forms check what they read themselves and hand on.

// Asserts that `idx` is a position in `*vec` or its end.
#define VECTOR_ASSERT_POSITION( vec, idx )  \
    do {                                    \
        ZU_ASSERT( vec );                   \
        ZU_ASSERT( *vec );                  \
        ZU_ASSERT( idx >= 0 );              \
        ZU_ASSERT( idx <= (*vec)->length ); \
    } while ( 0 )

// Asserts that the `count` items from `offset` on are in `src`.
#define VECTOR_ASSERT_SOURCE_RANGE( src, offset, count ) \
    do {                                                 \
        ZU_ASSERT( src );                                \
        ZU_ASSERT( offset >= 0 );                        \
        ZU_ASSERT( count >= 0 );                         \
        ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );     \
        ZU_ASSERT( offset + count <= src->length );      \
    } while ( 0 )

// Opens a gap of `count` slots, which are not 0, at `idx` and lets `fill` put references into it.  A shared vector is
// exchanged for a private one that has the gap already, and is held until that is filled: what goes in may be its own.
template <typename FILL>
[[gnu::noinline]] static void vectorInsertItemsShared( ZU_VECTOR **vec, ZU_INT idx, ZU_INT count, FILL fill )
{
    ZU_VECTOR *old = *vec;
    ZU_ASSERT( ZU_INT_ADD_OK( old->length, count ) );
    ZU_VECTOR *copy = vectorCreateEmpty();
    ZU_OBJ **items = vectorMakeRoom( copy, 0, old->length + count );
    vectorRetainItems( items, vectorFirst( old ), idx );
    fill( items + idx );
    vectorRetainItems( items + idx + count, vectorFirst( old ) + idx, old->length - idx );
    *vec = copy;
    ZU_REF_RELEASE( old );
}
template <typename FILL>
static inline void vectorInsertItems( ZU_VECTOR **vec, ZU_INT idx, ZU_INT count, FILL fill )
{
    if ( ZU___LIKELY( ZU_REF_RETAIN_COUNT( *vec ) == 1 ) ) {
        fill( vectorMakeRoom( *vec, idx, count ) );
    } else {
        vectorInsertItemsShared( vec, idx, count, fill );
    }
}

// Inserts an object whose reference goes to the vector.
static inline void vectorInsertOwnedUnchecked( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *src )
{
    vectorInsertItems( vec, idx, 1, [ = ]( ZU_OBJ **gap ) { *gap = src; } );
}
static inline void vectorInsertObj( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *src )
{
    // Retained first: if it is the vector itself, that forces the copy.
    vectorInsertOwnedUnchecked( vec, idx, vectorRetainItem( src ) );
}

void zuVectorInsertInner( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    VECTOR_ASSERT_POSITION( vec, idx );
    VECTOR_ASSERT_SOURCE_RANGE( src, offset, count );
    if ( count == 0 ) {
        return;
    }
    auto held = zu___HeldIf( src == *vec, src );
    vectorInsertItems( vec, idx, count,
                       [ = ]( ZU_OBJ **gap ) { vectorRetainItems( gap, vectorFirst( src ) + offset, count ); } );
}
void zuVectorInsert( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src )
{
    VECTOR_ASSERT_POSITION( vec, idx );
    ZU_ASSERT( src );
    zuVectorInsertInner( vec, idx, src, 0, src->length );
}
void zuVectorInsertLeading( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT count )
{
    zuVectorInsertInner( vec, idx, src, 0, count );
}
void zuVectorInsertTrailing( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT count )
{
    VECTOR_ASSERT_POSITION( vec, idx );
    ZU_ASSERT( src );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= src->length );
    zuVectorInsertInner( vec, idx, src, src->length - count, count );
}
void zuVectorInsertOuter( ZU_VECTOR **vec, ZU_INT idx, ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    VECTOR_ASSERT_POSITION( vec, idx );
    VECTOR_ASSERT_SOURCE_RANGE( src, offset, count );
    auto held = zu___HeldIf( src == *vec, src ); // the first insertion may replace *vec, and with it the source
    zuVectorInsertInner( vec, idx, src, offset + count, src->length - offset - count );
    zuVectorInsertInner( vec, idx, src, 0, offset );
}
void zuVectorInsertObj( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *src )
{
    VECTOR_ASSERT_POSITION( vec, idx );
    ZU_ASSERT( src );
    vectorInsertObj( vec, idx, src );
}
void zuVectorInsertObjs( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *const *src, ZU_INT count )
{
    VECTOR_ASSERT_POSITION( vec, idx );
    ZU_ASSERT( src || count == 0 );
    ZU_ASSERT( count >= 0 );
    bool isOwn = VECTOR_SLACK::holds( *vec, src ); // or one of the objects is the vector
    for ( ZU_INT i = count; i > 0; i-- ) {
        ZU_ASSERT( src[i-1] );
        isOwn |= src[ i - 1 ] == zuVectorObj( *vec );
    }
    if ( count == 0 ) {
        return;
    }
    auto held = zu___HeldIf( isOwn, *vec );
    vectorInsertItems( vec, idx, count, [ = ]( ZU_OBJ **gap ) { vectorRetainItems( gap, src, count ); } );
}

// Inserts an object that was made for it.
static void vectorInsertOwned( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *src )
{
    VECTOR_ASSERT_POSITION( vec, idx );
    vectorInsertOwnedUnchecked( vec, idx, src );
}
void zuVectorInsertBool( ZU_VECTOR **vec, ZU_INT idx, ZU_BOOL value )
{
    vectorInsertOwned( vec, idx, zuBoxedBoolObj( zuBoxedBoolCreate( value ) ) );
}
void zuVectorInsertInt( ZU_VECTOR **vec, ZU_INT idx, ZU_INT value )
{
    vectorInsertOwned( vec, idx, zuBoxedIntObj( zuBoxedIntCreate( value ) ) );
}
void zuVectorInsertReal( ZU_VECTOR **vec, ZU_INT idx, double value )
{
    vectorInsertOwned( vec, idx, zuBoxedRealObj( zuBoxedRealCreate( value ) ) );
}
void zuVectorInsertNull( ZU_VECTOR **vec, ZU_INT idx )
{
    vectorInsertOwned( vec, idx, zuBoxedNullObj( zuBoxedNullCreate() ) );
}
void zuVectorInsertString( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *zus )
{
    zuVectorInsertObj( vec, idx, zuStringObj( zus ) );
}
void zuVectorInsertStringCstr( ZU_VECTOR **vec, ZU_INT idx, const char *src, ZU_INT srcLength )
{
    vectorInsertOwned( vec, idx, zuStringObj( zuStringCreateFromCstr( src, srcLength ) ) );
}
void zuVectorInsertStringWcstr( ZU_VECTOR **vec, ZU_INT idx, const char16_t *src, ZU_INT srcLength )
{
    vectorInsertOwned( vec, idx, zuStringObj( zuStringCreateFromWcstr( src, srcLength ) ) );
}
void zuVectorInsertStringFormat( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    vectorInsertOwned( vec, idx, zuStringObj( zuStringCreateFromFormatArgList( fmt, args ) ) );
    va_end( args );
}
void zuVectorInsertStringFormatCstr( ZU_VECTOR **vec, ZU_INT idx, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    vectorInsertOwned( vec, idx, zuStringObj( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}
void zuVectorInsertStringFormatWcstr( ZU_VECTOR **vec, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    vectorInsertOwned( vec, idx, zuStringObj( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}

// Appending: insertion behind the last item.
void zuVectorAppend( ZU_VECTOR **vec, ZU_VECTOR *src )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsert( vec, ( *vec )->length, src );
}
void zuVectorAppendInner( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertInner( vec, ( *vec )->length, src, offset, count );
}
void zuVectorAppendLeading( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertLeading( vec, ( *vec )->length, src, count );
}
void zuVectorAppendTrailing( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertTrailing( vec, ( *vec )->length, src, count );
}
void zuVectorAppendOuter( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertOuter( vec, ( *vec )->length, src, offset, count );
}
void zuVectorAppendObj( ZU_VECTOR **vec, ZU_OBJ *src )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertObj( vec, ( *vec )->length, src );
}
void zuVectorAppendObjs( ZU_VECTOR **vec, ZU_OBJ *const *src, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertObjs( vec, ( *vec )->length, src, count );
}
void zuVectorAppendBool( ZU_VECTOR **vec, ZU_BOOL value )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertBool( vec, ( *vec )->length, value );
}
void zuVectorAppendInt( ZU_VECTOR **vec, ZU_INT value )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertInt( vec, ( *vec )->length, value );
}
void zuVectorAppendReal( ZU_VECTOR **vec, double value )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertReal( vec, ( *vec )->length, value );
}
void zuVectorAppendNull( ZU_VECTOR **vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertNull( vec, ( *vec )->length );
}
void zuVectorAppendString( ZU_VECTOR **vec, ZU_STRING *zus )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertString( vec, ( *vec )->length, zus );
}
void zuVectorAppendStringCstr( ZU_VECTOR **vec, const char *src, ZU_INT srcLength )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertStringCstr( vec, ( *vec )->length, src, srcLength );
}
void zuVectorAppendStringWcstr( ZU_VECTOR **vec, const char16_t *src, ZU_INT srcLength )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    zuVectorInsertStringWcstr( vec, ( *vec )->length, src, srcLength );
}
void zuVectorAppendStringFormat( ZU_VECTOR **vec, ZU_STRING *fmt, ... )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    va_list args;
    va_start( args, fmt );
    vectorInsertOwned( vec, ( *vec )->length, zuStringObj( zuStringCreateFromFormatArgList( fmt, args ) ) );
    va_end( args );
}
void zuVectorAppendStringFormatCstr( ZU_VECTOR **vec, const char *fmt, ZU_INT fmtLength, ... )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    va_list args;
    va_start( args, fmtLength );
    vectorInsertOwned( vec, ( *vec )->length,
                       zuStringObj( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}
void zuVectorAppendStringFormatWcstr( ZU_VECTOR **vec, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    va_list args;
    va_start( args, fmtLength );
    vectorInsertOwned( vec, ( *vec )->length,
                       zuStringObj( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}

// Prepending: insertion ahead of the first item.
void zuVectorPrepend( ZU_VECTOR **vec, ZU_VECTOR *src )
{
    zuVectorInsert( vec, 0, src );
}
void zuVectorPrependInner( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    zuVectorInsertInner( vec, 0, src, offset, count );
}
void zuVectorPrependLeading( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count )
{
    zuVectorInsertLeading( vec, 0, src, count );
}
void zuVectorPrependTrailing( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT count )
{
    zuVectorInsertTrailing( vec, 0, src, count );
}
void zuVectorPrependOuter( ZU_VECTOR **vec, ZU_VECTOR *src, ZU_INT offset, ZU_INT count )
{
    zuVectorInsertOuter( vec, 0, src, offset, count );
}
void zuVectorPrependObj( ZU_VECTOR **vec, ZU_OBJ *src )
{
    zuVectorInsertObj( vec, 0, src );
}
void zuVectorPrependObjs( ZU_VECTOR **vec, ZU_OBJ *const *src, ZU_INT count )
{
    zuVectorInsertObjs( vec, 0, src, count );
}
void zuVectorPrependBool( ZU_VECTOR **vec, ZU_BOOL value )
{
    zuVectorInsertBool( vec, 0, value );
}
void zuVectorPrependInt( ZU_VECTOR **vec, ZU_INT value )
{
    zuVectorInsertInt( vec, 0, value );
}
void zuVectorPrependReal( ZU_VECTOR **vec, double value )
{
    zuVectorInsertReal( vec, 0, value );
}
void zuVectorPrependNull( ZU_VECTOR **vec )
{
    zuVectorInsertNull( vec, 0 );
}
void zuVectorPrependString( ZU_VECTOR **vec, ZU_STRING *zus )
{
    zuVectorInsertString( vec, 0, zus );
}
void zuVectorPrependStringCstr( ZU_VECTOR **vec, const char *src, ZU_INT srcLength )
{
    zuVectorInsertStringCstr( vec, 0, src, srcLength );
}
void zuVectorPrependStringWcstr( ZU_VECTOR **vec, const char16_t *src, ZU_INT srcLength )
{
    zuVectorInsertStringWcstr( vec, 0, src, srcLength );
}
void zuVectorPrependStringFormat( ZU_VECTOR **vec, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    vectorInsertOwned( vec, 0, zuStringObj( zuStringCreateFromFormatArgList( fmt, args ) ) );
    va_end( args );
}
void zuVectorPrependStringFormatCstr( ZU_VECTOR **vec, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    vectorInsertOwned( vec, 0, zuStringObj( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}
void zuVectorPrependStringFormatWcstr( ZU_VECTOR **vec, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    vectorInsertOwned( vec, 0, zuStringObj( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}

// Replacement

// Puts `item`, whose reference goes to the vector.
static void vectorSetOwnedAt( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *item )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( idx >= -1 );
    ZU_ASSERT( idx <= (*vec)->length );
    if ( idx == -1 ) {
        vectorInsertOwned( vec, 0, item );
    } else if ( idx == ( *vec )->length ) {
        vectorInsertOwned( vec, idx, item );
    } else {
        vectorUnshare( vec );
        ZU_OBJ **slot = vectorFirst( *vec ) + idx;
        ZU_OBJ *old = *slot;
        *slot = item;
        ZU_REF_RELEASE( old );
    }
}
void zuVectorSetObjAt( ZU_VECTOR **vec, ZU_INT idx, ZU_OBJ *item )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( idx >= -1 );
    ZU_ASSERT( idx <= (*vec)->length );
    ZU_ASSERT( item );
    // Retained first: if it is the vector itself, that forces the copy.
    vectorSetOwnedAt( vec, idx, zuObjRetain( item ) );
}
void zuVectorSetBoolAt( ZU_VECTOR **vec, ZU_INT idx, ZU_BOOL value )
{
    vectorSetOwnedAt( vec, idx, zuBoxedBoolObj( zuBoxedBoolCreate( value ) ) );
}
void zuVectorSetIntAt( ZU_VECTOR **vec, ZU_INT idx, ZU_INT value )
{
    vectorSetOwnedAt( vec, idx, zuBoxedIntObj( zuBoxedIntCreate( value ) ) );
}
void zuVectorSetRealAt( ZU_VECTOR **vec, ZU_INT idx, double value )
{
    vectorSetOwnedAt( vec, idx, zuBoxedRealObj( zuBoxedRealCreate( value ) ) );
}
void zuVectorSetNullAt( ZU_VECTOR **vec, ZU_INT idx )
{
    vectorSetOwnedAt( vec, idx, zuBoxedNullObj( zuBoxedNullCreate() ) );
}
void zuVectorSetStringAt( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *zus )
{
    zuVectorSetObjAt( vec, idx, zuStringObj( zus ) );
}
void zuVectorSetStringCstrAt( ZU_VECTOR **vec, ZU_INT idx, const char *src, ZU_INT srcLength )
{
    vectorSetOwnedAt( vec, idx, zuStringObj( zuStringCreateFromCstr( src, srcLength ) ) );
}
void zuVectorSetStringWcstrAt( ZU_VECTOR **vec, ZU_INT idx, const char16_t *src, ZU_INT srcLength )
{
    vectorSetOwnedAt( vec, idx, zuStringObj( zuStringCreateFromWcstr( src, srcLength ) ) );
}
void zuVectorSetStringFormatAt( ZU_VECTOR **vec, ZU_INT idx, ZU_STRING *fmt, ... )
{
    va_list args;
    va_start( args, fmt );
    vectorSetOwnedAt( vec, idx, zuStringObj( zuStringCreateFromFormatArgList( fmt, args ) ) );
    va_end( args );
}
void zuVectorSetStringFormatCstrAt( ZU_VECTOR **vec, ZU_INT idx, const char *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    vectorSetOwnedAt( vec, idx, zuStringObj( zuStringCreateFromFormatCstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}
void zuVectorSetStringFormatWcstrAt( ZU_VECTOR **vec, ZU_INT idx, const char16_t *fmt, ZU_INT fmtLength, ... )
{
    va_list args;
    va_start( args, fmtLength );
    vectorSetOwnedAt( vec, idx, zuStringObj( zuStringCreateFromFormatWcstrArgList( fmt, fmtLength, args ) ) );
    va_end( args );
}

// Deletion.  A range at the front gives its slots to the free space there, any other one to that at the end.

// Asserts that the `count` items from `offset` on are in `*vec`.
#define VECTOR_ASSERT_RANGE( vec, offset, count )      \
    do {                                               \
        ZU_ASSERT( vec );                              \
        ZU_ASSERT( *vec );                             \
        ZU_ASSERT( offset >= 0 );                      \
        ZU_ASSERT( count >= 0 );                       \
        ZU_ASSERT( ZU_INT_ADD_OK( offset, count ) );   \
        ZU_ASSERT( offset + count <= (*vec)->length ); \
    } while ( 0 )

void zuVectorDelAt( ZU_VECTOR **vec, ZU_INT idx )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( idx >= 0 );
    ZU_ASSERT( idx < (*vec)->length );
    zuVectorDelInner( vec, idx, 1 );
}
void zuVectorDelInner( ZU_VECTOR **vec, ZU_INT offset, ZU_INT count )
{
    VECTOR_ASSERT_RANGE( vec, offset, count );
    if ( count == 0 ) {
        return;
    }
    if ( count == ( *vec )->length ) {
        zuVectorClear( vec );
        return;
    }
    vectorUnshare( vec );
    ZU_VECTOR *own = *vec;
    ZU_OBJ **range = vectorFirst( own ) + offset;
    zu___Taken taken;
    taken.add( range, count );
    if ( offset == 0 ) {
        own->fspace += count;
    } else {
        VECTOR_SLACK::move( range, range + count, own->length - offset - count );
        own->bspace += count;
    }
    own->length -= count;
    vectorCompact( own );
}
void zuVectorDelLeading( ZU_VECTOR **vec, ZU_INT count )
{
    zuVectorDelInner( vec, 0, count );
}
void zuVectorDelTrailing( ZU_VECTOR **vec, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( count >= 0 );
    ZU_ASSERT( count <= (*vec)->length );
    zuVectorDelInner( vec, ( *vec )->length - count, count );
}
void zuVectorDelOuter( ZU_VECTOR **vec, ZU_INT offset, ZU_INT count )
{
    VECTOR_ASSERT_RANGE( vec, offset, count );
    if ( count == ( *vec )->length ) {
        return;
    }
    if ( count == 0 ) {
        zuVectorClear( vec );
        return;
    }
    vectorUnshare( vec );
    ZU_VECTOR *own = *vec;
    ZU_INT tailLength = own->length - offset - count;
    zu___Taken taken;
    taken.add( vectorFirst( own ), offset );
    taken.add( vectorFirst( own ) + offset + count, tailLength );
    own->fspace += offset;
    own->bspace += tailLength;
    own->length = count;
    vectorCompact( own );
}
void zuVectorClear( ZU_VECTOR **vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_VECTOR *old = *vec;
    *vec = zuVectorCreate();
    ZU_REF_RELEASE( old );
}

// Stack and queue.  A vector that has been emptied by these keeps its storage for what comes next.
void zuVectorPush( ZU_VECTOR **vec, ZU_OBJ *obj )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( obj );
    vectorInsertObj( vec, ( *vec )->length, obj );
}
ZU_OBJ *zuVectorPop( ZU_VECTOR **vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( (*vec)->length );
    vectorUnshare( vec );
    ZU_VECTOR *own = *vec;
    own->bspace++;
    own->length--;
    ZU_OBJ **slot = vectorFirst( own ) + own->length;
    ZU_OBJ *obj = *slot;
    *slot = nullptr;
    vectorCompact( own );
    return obj;
}
void zuVectorShift( ZU_VECTOR **vec, ZU_OBJ *obj )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( obj );
    vectorInsertObj( vec, 0, obj );
}
ZU_OBJ *zuVectorUnshift( ZU_VECTOR **vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( zuVectorLength( *vec ) );
    vectorUnshare( vec );
    ZU_VECTOR *own = *vec;
    ZU_OBJ **slot = vectorFirst( own );
    ZU_OBJ *obj = *slot;
    *slot = nullptr;
    own->fspace++;
    own->length--;
    vectorCompact( own );
    return obj;
}

// The whole vector
void zuVectorReverse( ZU_VECTOR **vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    if ( ( *vec )->length < 2 ) {
        return;
    }
    vectorUnshare( vec );
    ZU_OBJ **items = vectorFirst( *vec );
    for ( ZU_INT low = 0, high = ( *vec )->length - 1; low < high; low++, high-- ) {
        ZU_OBJ *item = items[ low ];
        items[ low ] = items[ high ];
        items[ high ] = item;
    }
}
void zuVectorStringize( ZU_VECTOR **vec )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    if ( ( *vec )->length == 0 ) {
        return;
    }
    vectorUnshare( vec );
    // An item's text is a class's own code, and may change the very vector: only the item is held over it.
    for ( ZU_INT i = 0; i < ( *vec )->length; i++ ) {
        zu___Owned item( zuObjRetain( vectorFirst( *vec )[ i ] ) );
        ZU_OBJ *text = zuStringObj( zuObjToString( item ) );
        if ( i < ( *vec )->length ) {
            vectorSetOwnedAt( vec, i, text );
        } else {
            ZU_REF_RELEASE( text );
        }
    }
}

void zu___VectorPushNoRetain( ZU_VECTOR **vec, ZU_OBJ *const *src, ZU_INT count )
{
    ZU_ASSERT( vec );
    ZU_ASSERT( *vec );
    ZU_ASSERT( src || count == 0 );
    ZU_ASSERT( count >= 0 );
    if ( count == 0 ) {
        return;
    }
    ZU_VECTOR *old = *vec;
    if ( ZU_REF_RETAIN_COUNT( old ) == 1 ) {
        VECTOR_SLACK::copy( vectorMakeRoom( old, old->length, count ), src, count );
        return;
    }
    ZU_ASSERT( ZU_INT_ADD_OK( old->length, count ) );
    ZU_VECTOR *copy = vectorCreateEmpty();
    ZU_OBJ **items = vectorMakeRoom( copy, 0, old->length + count );
    VECTOR_SLACK::copy( items, vectorFirst( old ), old->length );
    VECTOR_SLACK::copy( items + old->length, src, count );
    *vec = copy;
    ZU_REF_RELEASE( old );
}
