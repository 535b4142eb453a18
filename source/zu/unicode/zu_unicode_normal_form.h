// zu_unicode_normal_form.h: the normalization forms of the Unicode Standard (UAX #15).
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// A normalization form.  C forms compose what can be composed, D forms decompose all; K forms also replace characters
/// by what they are compatible with, which loses distinctions.
typedef ZU_INT ZU_UNICODE_NORMAL_FORM;

/// Tells whether `nf` is a normalization form.
#define ZU_UNICODE_NORMAL_FORM_OK( nf ) ( (uint64_t)( nf ) <= 3 )

#define ZU_UNICODE_NORMAL_FORM_NFC  ( (ZU_INT)0 )
#define ZU_UNICODE_NORMAL_FORM_NFKC ( (ZU_INT)1 )
#define ZU_UNICODE_NORMAL_FORM_NFD  ( (ZU_INT)2 )
#define ZU_UNICODE_NORMAL_FORM_NFKD ( (ZU_INT)3 )

/// Returns "NFC", "NFKC", "NFD" or "NFKD".
ZU_API ZU_STRING *zuUnicodeNormalFormToString( ZU_UNICODE_NORMAL_FORM nf );

ZU_END_DECLS
