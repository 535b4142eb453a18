// zu_store_real.h: real numbers in stores, kept to the last bit.
//
// zuStoreSetValueReal cuts digits off, and zuStoreValueReal reads back with an error in the last bits.  These write the
// shortest text that keeps the number, as zu_real_text.h tells, and read correctly rounded, also what others have
// written: exponents, "inf" and "nan" included.  The forms are those of zu_store.h.
#pragma once

#include "zu/base/zu_store.h"

ZU_BEGIN_DECLS

// Reading: true if there is a value that is a number and nothing else; `value`, which may be null, is 0 otherwise
/// Reads the real number at `address`.
ZU_API ZU_BOOL zuStoreValueRealExact( ZU_STORE *store, double *value, ZU_STRING *address );
/// Reads the real number at the address at `idx`.
ZU_API ZU_BOOL zuStoreValueRealExactAt( ZU_STORE *store, double *value, ZU_INT idx );
/// Reads the real number at an address in narrow text.
ZU_API ZU_BOOL zuStoreValueRealExactCstr( ZU_STORE *store, double *value, const char *address, ZU_INT addressLength );
/// Reads the real number at an address in UTF-16.
ZU_API ZU_BOOL zuStoreValueRealExactWcstr( ZU_STORE *store, double *value, const char16_t *address,
                                           ZU_INT addressLength );

// Setting
/// Sets a real number at `address`.
ZU_API void zuStoreSetValueRealExact( ZU_STORE **store, ZU_STRING *address, double value );
/// Sets a real number at the address at `idx`.
ZU_API void zuStoreSetValueRealExactAt( ZU_STORE **store, ZU_INT idx, double value );
/// Sets a real number at an address in narrow text.
ZU_API void zuStoreSetValueRealExactCstr( ZU_STORE **store, const char *address, ZU_INT addressLength, double value );
/// Sets a real number at an address in UTF-16.
ZU_API void zuStoreSetValueRealExactWcstr( ZU_STORE **store, const char16_t *address, ZU_INT addressLength,
                                           double value );

ZU_END_DECLS
