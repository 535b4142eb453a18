// ZU_STORE: settings, or configuration, in a tree: a map from addresses to texts and to further stores.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  A store has two things to hold at each address: a
// value, which is a text, and a sub-store; an address in use has one of them or both.  Numbers and truth values are
// converted on the way in and out.  Positions count the addresses in use, in ascending order of their code points.
// Copying a store costs three references, whatever it holds; later changes copy the nodes that they touch.  Addresses
// are kept as in dicts: a search costs about log2 of their number, none if they are asked for in ascending order; a new
// one moves those behind it or, among many, about the root of their number, so that ascending addresses go in best.
//
// An address is one or more of the letters A to Z and a to z, the digits, "-" and "_"; anything else aborts.  It names
// something in this store alone, there are no paths.  To change what a sub-store holds, read it, change it, and set it
// back:
//
//     ZU_STORE *window = zuStoreStoreCstr( store, "window", -1 ); // null if there is none yet
//     zuStoreSetValueIntCstr( &window, "width", -1, 640 );
//     zuStoreSetStoreCstr( &store, "window", -1, window );
//     zuStoreRelease( window );
//
// A list is a sub-store with the indices for addresses, all of the width of the last one, so that their order is that
// of the list:
//
//     zuStoreSetValueFormatCstr( &list, "%.*A", -1, item, count - 1, i );
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_STORE ZU_STORE;
// zuStoreRetain, Release, From, Obj, Sort, ToString, Compare, Equals
//
// Stores are ordered by their addresses, then by their values, then by their sub-stores, each as dicts are.
ZU_STDFUNCS_DECLARE( ZU_STORE, zuStore )

/// Tells whether `address` can be an address.  Whoever makes addresses of data from outside asks this first.
ZU_API ZU_BOOL zuStoreAddressOk( ZU_STRING *address );

// Whole stores
/// Returns a new, empty store.
ZU_API ZU_STORE *zuStoreCreate( void );
/// Returns a new object that holds what `source` does.
ZU_API ZU_STORE *zuStoreCreateFrom( ZU_STORE *source );
/// Makes `*store` a new, empty store.
ZU_API void zuStoreClear( ZU_STORE **store );
/// Adds what `other` has and `*store` lacks, at every level: where both have a value, that of `*store` stays, and where
/// both have a sub-store, the two are merged.  A shared store is copied even if nothing is added.
ZU_API void zuStoreMerge( ZU_STORE **store, ZU_STORE *other );
/// Returns the number of addresses in use.
ZU_API ZU_INT zuStoreLength( ZU_STORE *store );
/// Returns the addresses in use, in ascending order.
ZU_API ZU_VECTOR *zuStoreAddressesVector( ZU_STORE *store );
/// Returns the addresses of values, in ascending order.
ZU_API ZU_VECTOR *zuStoreValueAddressesVector( ZU_STORE *store );
/// Returns the addresses of sub-stores, in ascending order.
ZU_API ZU_VECTOR *zuStoreStoreAddressesVector( ZU_STORE *store );
/// Returns the address at `idx`; a position outside aborts.
ZU_API ZU_STRING *zuStoreAddressAt( ZU_STORE *store, ZU_INT idx );

// Operations at an address
//
// Each exists in these forms, which differ in how they get the address:
//
//                  `address`, a string
//     At           the address at position `idx`; a position outside aborts
//     Cstr         narrow text of `addressLength` bytes, -1: terminated
//     Wcstr        UTF-16 of `addressLength` units, -1: terminated
//     Format       what a format makes of the arguments at the end; see zu_string_format.h
//     FormatCstr   likewise, with the format in narrow text of `fmtLength` bytes, -1: terminated
//     FormatWcstr  likewise, with the format in UTF-16 of `fmtLength` units, -1: terminated
//
// What is to be set follows the address, or the format.  Deleting what is not there is no error.  Setting and deleting
// copy a shared store, even if they change nothing.

// Addresses
/// Tells whether `address` is in use.
ZU_API ZU_BOOL zuStoreHasAddress( ZU_STORE *store, ZU_STRING *address );
/// Tells whether an address in narrow text is in use.
ZU_API ZU_BOOL zuStoreHasAddressCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Tells whether an address in UTF-16 is in use.
ZU_API ZU_BOOL zuStoreHasAddressWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Tells whether the address that `fmt` makes is in use.
ZU_API ZU_BOOL zuStoreHasAddressFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Tells whether the address that a narrow format makes is in use.
ZU_API ZU_BOOL zuStoreHasAddressFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Tells whether the address that a format in UTF-16 makes is in use.
ZU_API ZU_BOOL zuStoreHasAddressFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

// Values
/// Tells whether there is a value at `address`.
ZU_API ZU_BOOL zuStoreHasValue( ZU_STORE *store, ZU_STRING *address );
/// Tells whether there is a value at the address at `idx`.
ZU_API ZU_BOOL zuStoreHasValueAt( ZU_STORE *store, ZU_INT idx );
/// Tells whether there is a value at an address in narrow text.
ZU_API ZU_BOOL zuStoreHasValueCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Tells whether there is a value at an address in UTF-16.
ZU_API ZU_BOOL zuStoreHasValueWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Tells whether there is a value at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreHasValueFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Tells whether there is a value at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreHasValueFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Tells whether there is a value at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreHasValueFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Returns the value at `address`; null if there is none.
ZU_API ZU_STRING *zuStoreValue( ZU_STORE *store, ZU_STRING *address );
/// Returns the value at the address at `idx`; null if there is none.
ZU_API ZU_STRING *zuStoreValueAt( ZU_STORE *store, ZU_INT idx );
/// Returns the value at an address in narrow text; null if there is none.
ZU_API ZU_STRING *zuStoreValueCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Returns the value at an address in UTF-16; null if there is none.
ZU_API ZU_STRING *zuStoreValueWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Returns the value at the address that `fmt` makes; null if there is none.
ZU_API ZU_STRING *zuStoreValueFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Returns the value at the address that a narrow format makes; null if there is none.
ZU_API ZU_STRING *zuStoreValueFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Returns the value at the address that a format in UTF-16 makes; null if there is none.
ZU_API ZU_STRING *zuStoreValueFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Sets the value at `address`.
ZU_API void zuStoreSetValue( ZU_STORE **store, ZU_STRING *address, ZU_STRING *value );
/// Sets the value at the address at `idx`.
ZU_API void zuStoreSetValueAt( ZU_STORE **store, ZU_INT idx, ZU_STRING *value );
/// Sets the value at an address in narrow text.
ZU_API void zuStoreSetValueCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_STRING *value );
/// Sets the value at an address in UTF-16.
ZU_API void zuStoreSetValueWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_STRING *value );
/// Sets the value at the address that `fmt` makes.
ZU_API void zuStoreSetValueFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_STRING *value, ... );
/// Sets the value at the address that a narrow format makes.
ZU_API void zuStoreSetValueFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_STRING *value, ... );
/// Sets the value at the address that a format in UTF-16 makes.
ZU_API void zuStoreSetValueFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_STRING *value,
                                        ... );

// Deleting a value leaves a sub-store at the same address alone.
/// Removes the value at `address`.
ZU_API void zuStoreDelValue( ZU_STORE **store, ZU_STRING *address );
/// Removes the value at the address at `idx`.
ZU_API void zuStoreDelValueAt( ZU_STORE **store, ZU_INT idx );
/// Removes the value at an address in narrow text.
ZU_API void zuStoreDelValueCstr( ZU_STORE **store, const char *address, ZU_INT addressLength );
/// Removes the value at an address in UTF-16.
ZU_API void zuStoreDelValueWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength );
/// Removes the value at the address that `fmt` makes.
ZU_API void zuStoreDelValueFormat( ZU_STORE **store, ZU_STRING *fmt, ... );
/// Removes the value at the address that a narrow format makes.
ZU_API void zuStoreDelValueFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ... );
/// Removes the value at the address that a format in UTF-16 makes.
ZU_API void zuStoreDelValueFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ... );

// Sub-stores
/// Tells whether there is a sub-store at `address`.
ZU_API ZU_BOOL zuStoreHasStore( ZU_STORE *store, ZU_STRING *address );
/// Tells whether there is a sub-store at the address at `idx`.
ZU_API ZU_BOOL zuStoreHasStoreAt( ZU_STORE *store, ZU_INT idx );
/// Tells whether there is a sub-store at an address in narrow text.
ZU_API ZU_BOOL zuStoreHasStoreCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Tells whether there is a sub-store at an address in UTF-16.
ZU_API ZU_BOOL zuStoreHasStoreWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Tells whether there is a sub-store at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreHasStoreFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Tells whether there is a sub-store at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreHasStoreFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Tells whether there is a sub-store at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreHasStoreFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Returns the sub-store at `address`; null if there is none.
ZU_API ZU_STORE *zuStoreStore( ZU_STORE *store, ZU_STRING *address );
/// Returns the sub-store at the address at `idx`; null if there is none.
ZU_API ZU_STORE *zuStoreStoreAt( ZU_STORE *store, ZU_INT idx );
/// Returns the sub-store at an address in narrow text; null if there is none.
ZU_API ZU_STORE *zuStoreStoreCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Returns the sub-store at an address in UTF-16; null if there is none.
ZU_API ZU_STORE *zuStoreStoreWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Returns the sub-store at the address that `fmt` makes; null if there is none.
ZU_API ZU_STORE *zuStoreStoreFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Returns the sub-store at the address that a narrow format makes; null if there is none.
ZU_API ZU_STORE *zuStoreStoreFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Returns the sub-store at the address that a format in UTF-16 makes; null if there is none.
ZU_API ZU_STORE *zuStoreStoreFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

// The store keeps a reference to `other`: changing it later by way of a variable does not show here.  Where `other` is
// `*store` itself, the sub-store is what it held before.
/// Sets the sub-store at `address`.
ZU_API void zuStoreSetStore( ZU_STORE **store, ZU_STRING *address, ZU_STORE *other );
/// Sets the sub-store at the address at `idx`.
ZU_API void zuStoreSetStoreAt( ZU_STORE **store, ZU_INT idx, ZU_STORE *other );
/// Sets the sub-store at an address in narrow text.
ZU_API void zuStoreSetStoreCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_STORE *other );
/// Sets the sub-store at an address in UTF-16.
ZU_API void zuStoreSetStoreWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_STORE *other );
/// Sets the sub-store at the address that `fmt` makes.
ZU_API void zuStoreSetStoreFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_STORE *other, ... );
/// Sets the sub-store at the address that a narrow format makes.
ZU_API void zuStoreSetStoreFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_STORE *other, ... );
/// Sets the sub-store at the address that a format in UTF-16 makes.
ZU_API void zuStoreSetStoreFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_STORE *other, ... );

// Deleting a sub-store leaves a value at the same address alone.
/// Removes the sub-store at `address`.
ZU_API void zuStoreDelStore( ZU_STORE **store, ZU_STRING *address );
/// Removes the sub-store at the address at `idx`.
ZU_API void zuStoreDelStoreAt( ZU_STORE **store, ZU_INT idx );
/// Removes the sub-store at an address in narrow text.
ZU_API void zuStoreDelStoreCstr( ZU_STORE **store, const char *address, ZU_INT addressLength );
/// Removes the sub-store at an address in UTF-16.
ZU_API void zuStoreDelStoreWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength );
/// Removes the sub-store at the address that `fmt` makes.
ZU_API void zuStoreDelStoreFormat( ZU_STORE **store, ZU_STRING *fmt, ... );
/// Removes the sub-store at the address that a narrow format makes.
ZU_API void zuStoreDelStoreFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ... );
/// Removes the sub-store at the address that a format in UTF-16 makes.
ZU_API void zuStoreDelStoreFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ... );

// Typed values
//
// Reading stores the value behind `value`, which may be null, and returns whether there is a text that is one as a
// whole, white space around it aside; if not, it stores 0 or false.  Texts are read as zu_format.h tells: a truth value
// may be a number, true unless it is 0; numbers may have a prefix that tells their base, such as "0x10".

// Truth values; setting one sets "true" or "false".
/// Tells whether there is a truth value at `address`.
ZU_API ZU_BOOL zuStoreHasValueBool( ZU_STORE *store, ZU_STRING *address );
/// Tells whether there is a truth value at the address at `idx`.
ZU_API ZU_BOOL zuStoreHasValueBoolAt( ZU_STORE *store, ZU_INT idx );
/// Tells whether there is a truth value at an address in narrow text.
ZU_API ZU_BOOL zuStoreHasValueBoolCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Tells whether there is a truth value at an address in UTF-16.
ZU_API ZU_BOOL zuStoreHasValueBoolWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Tells whether there is a truth value at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreHasValueBoolFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Tells whether there is a truth value at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreHasValueBoolFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Tells whether there is a truth value at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreHasValueBoolFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Reads the truth value at `address`.
ZU_API ZU_BOOL zuStoreValueBool( ZU_STORE *store, ZU_BOOL *value, ZU_STRING *address );
/// Reads the truth value at the address at `idx`.
ZU_API ZU_BOOL zuStoreValueBoolAt( ZU_STORE *store, ZU_BOOL *value, ZU_INT idx );
/// Reads the truth value at an address in narrow text.
ZU_API ZU_BOOL zuStoreValueBoolCstr( ZU_STORE *store, ZU_BOOL *value, const char *address, ZU_INT addressLength );
/// Reads the truth value at an address in UTF-16.
ZU_API ZU_BOOL zuStoreValueBoolWcstr( ZU_STORE *store, ZU_BOOL *value, const char16_t *address, ZU_INT addressLength );
/// Reads the truth value at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreValueBoolFormat( ZU_STORE *store, ZU_BOOL *value, ZU_STRING *fmt, ... );
/// Reads the truth value at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreValueBoolFormatCstr( ZU_STORE *store, ZU_BOOL *value, const char *fmt, ZU_INT fmtLength, ... );
/// Reads the truth value at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreValueBoolFormatWcstr( ZU_STORE *store, ZU_BOOL *value, const char16_t *fmt, ZU_INT fmtLength,
                                            ... );

/// Sets a truth value at `address`.
ZU_API void zuStoreSetValueBool( ZU_STORE **store, ZU_STRING *address, ZU_BOOL value );
/// Sets a truth value at the address at `idx`.
ZU_API void zuStoreSetValueBoolAt( ZU_STORE **store, ZU_INT idx, ZU_BOOL value );
/// Sets a truth value at an address in narrow text.
ZU_API void zuStoreSetValueBoolCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_BOOL value );
/// Sets a truth value at an address in UTF-16.
ZU_API void zuStoreSetValueBoolWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_BOOL value );
/// Sets a truth value at the address that `fmt` makes.
ZU_API void zuStoreSetValueBoolFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_BOOL value, ... );
/// Sets a truth value at the address that a narrow format makes.
ZU_API void zuStoreSetValueBoolFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_BOOL value, ... );
/// Sets a truth value at the address that a format in UTF-16 makes.
ZU_API void zuStoreSetValueBoolFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_BOOL value,
                                            ... );

// Integers; setting one sets its decimal digits.
/// Tells whether there is an integer at `address`.
ZU_API ZU_BOOL zuStoreHasValueInt( ZU_STORE *store, ZU_STRING *address );
/// Tells whether there is an integer at the address at `idx`.
ZU_API ZU_BOOL zuStoreHasValueIntAt( ZU_STORE *store, ZU_INT idx );
/// Tells whether there is an integer at an address in narrow text.
ZU_API ZU_BOOL zuStoreHasValueIntCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Tells whether there is an integer at an address in UTF-16.
ZU_API ZU_BOOL zuStoreHasValueIntWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Tells whether there is an integer at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreHasValueIntFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Tells whether there is an integer at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreHasValueIntFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Tells whether there is an integer at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreHasValueIntFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Reads the integer at `address`.
ZU_API ZU_BOOL zuStoreValueInt( ZU_STORE *store, ZU_INT *value, ZU_STRING *address );
/// Reads the integer at the address at `idx`.
ZU_API ZU_BOOL zuStoreValueIntAt( ZU_STORE *store, ZU_INT *value, ZU_INT idx );
/// Reads the integer at an address in narrow text.
ZU_API ZU_BOOL zuStoreValueIntCstr( ZU_STORE *store, ZU_INT *value, const char *address, ZU_INT addressLength );
/// Reads the integer at an address in UTF-16.
ZU_API ZU_BOOL zuStoreValueIntWcstr( ZU_STORE *store, ZU_INT *value, const char16_t *address, ZU_INT addressLength );
/// Reads the integer at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreValueIntFormat( ZU_STORE *store, ZU_INT *value, ZU_STRING *fmt, ... );
/// Reads the integer at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreValueIntFormatCstr( ZU_STORE *store, ZU_INT *value, const char *fmt, ZU_INT fmtLength, ... );
/// Reads the integer at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreValueIntFormatWcstr( ZU_STORE *store, ZU_INT *value, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Sets an integer at `address`.
ZU_API void zuStoreSetValueInt( ZU_STORE **store, ZU_STRING *address, ZU_INT value );
/// Sets an integer at the address at `idx`.
ZU_API void zuStoreSetValueIntAt( ZU_STORE **store, ZU_INT idx, ZU_INT value );
/// Sets an integer at an address in narrow text.
ZU_API void zuStoreSetValueIntCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, ZU_INT value );
/// Sets an integer at an address in UTF-16.
ZU_API void zuStoreSetValueIntWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, ZU_INT value );
/// Sets an integer at the address that `fmt` makes.
ZU_API void zuStoreSetValueIntFormat( ZU_STORE **store, ZU_STRING *fmt, ZU_INT value, ... );
/// Sets an integer at the address that a narrow format makes.
ZU_API void zuStoreSetValueIntFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, ZU_INT value, ... );
/// Sets an integer at the address that a format in UTF-16 makes.
ZU_API void zuStoreSetValueIntFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, ZU_INT value, ... );

// Real numbers; setting one sets decimal digits, six of them behind the point and those behind cut off.
/// Tells whether there is a real number at `address`.
ZU_API ZU_BOOL zuStoreHasValueReal( ZU_STORE *store, ZU_STRING *address );
/// Tells whether there is a real number at the address at `idx`.
ZU_API ZU_BOOL zuStoreHasValueRealAt( ZU_STORE *store, ZU_INT idx );
/// Tells whether there is a real number at an address in narrow text.
ZU_API ZU_BOOL zuStoreHasValueRealCstr( ZU_STORE *store, const char *address, ZU_INT addressLength );
/// Tells whether there is a real number at an address in UTF-16.
ZU_API ZU_BOOL zuStoreHasValueRealWcstr( ZU_STORE *store, const char16_t *address, ZU_INT addressLength );
/// Tells whether there is a real number at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreHasValueRealFormat( ZU_STORE *store, ZU_STRING *fmt, ... );
/// Tells whether there is a real number at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreHasValueRealFormatCstr( ZU_STORE *store, const char *fmt, ZU_INT fmtLength, ... );
/// Tells whether there is a real number at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreHasValueRealFormatWcstr( ZU_STORE *store, const char16_t *fmt, ZU_INT fmtLength, ... );

/// Reads the real number at `address`.
ZU_API ZU_BOOL zuStoreValueReal( ZU_STORE *store, double *value, ZU_STRING *address );
/// Reads the real number at the address at `idx`.
ZU_API ZU_BOOL zuStoreValueRealAt( ZU_STORE *store, double *value, ZU_INT idx );
/// Reads the real number at an address in narrow text.
ZU_API ZU_BOOL zuStoreValueRealCstr( ZU_STORE *store, double *value, const char *address, ZU_INT addressLength );
/// Reads the real number at an address in UTF-16.
ZU_API ZU_BOOL zuStoreValueRealWcstr( ZU_STORE *store, double *value, const char16_t *address, ZU_INT addressLength );
/// Reads the real number at the address that `fmt` makes.
ZU_API ZU_BOOL zuStoreValueRealFormat( ZU_STORE *store, double *value, ZU_STRING *fmt, ... );
/// Reads the real number at the address that a narrow format makes.
ZU_API ZU_BOOL zuStoreValueRealFormatCstr( ZU_STORE *store, double *value, const char *fmt, ZU_INT fmtLength, ... );
/// Reads the real number at the address that a format in UTF-16 makes.
ZU_API ZU_BOOL zuStoreValueRealFormatWcstr( ZU_STORE *store, double *value, const char16_t *fmt, ZU_INT fmtLength,
                                            ... );

/// Sets a real number at `address`.
ZU_API void zuStoreSetValueReal( ZU_STORE **store, ZU_STRING *address, double value );
/// Sets a real number at the address at `idx`.
ZU_API void zuStoreSetValueRealAt( ZU_STORE **store, ZU_INT idx, double value );
/// Sets a real number at an address in narrow text.
ZU_API void zuStoreSetValueRealCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, double value );
/// Sets a real number at an address in UTF-16.
ZU_API void zuStoreSetValueRealWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength, double value );
/// Sets a real number at the address that `fmt` makes.
ZU_API void zuStoreSetValueRealFormat( ZU_STORE **store, ZU_STRING *fmt, double value, ... );
/// Sets a real number at the address that a narrow format makes.
ZU_API void zuStoreSetValueRealFormatCstr( ZU_STORE **store, const char *fmt, ZU_INT fmtLength, double value, ... );
/// Sets a real number at the address that a format in UTF-16 makes.
ZU_API void zuStoreSetValueRealFormatWcstr( ZU_STORE **store, const char16_t *fmt, ZU_INT fmtLength, double value,
                                            ... );

// For authors of classes and modules
/// Does nothing.
ZU_API void zu___StoreStartup( void );
/// Does nothing.
ZU_API void zu___StoreShutdown( void );

ZU_END_DECLS
