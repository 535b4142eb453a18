// zu_unicode_cdmt.h: the tags of the decomposition mappings of the Unicode Character Database.
#pragma once

#include "zu/sys/zu_int.h"

/// What a decomposition keeps of its character: all (canonical), or its meaning without a way of showing it, which the
/// tag tells.
typedef ZU_INT ZU_UNICODE_CDMT;

/// Tells whether `cdmt` is a decomposition tag.
#define ZU_UNICODE_CDMT_OK( cdmt ) ( (uint64_t)( cdmt ) <= 17 )

#define ZU_UNICODE_CDMT_NONE      ( (ZU_INT)0 )
#define ZU_UNICODE_CDMT_CANONICAL ( (ZU_INT)1 )
#define ZU_UNICODE_CDMT_FONT      ( (ZU_INT)2 )
#define ZU_UNICODE_CDMT_NOBREAK   ( (ZU_INT)3 )
#define ZU_UNICODE_CDMT_INITIAL   ( (ZU_INT)4 )
#define ZU_UNICODE_CDMT_MEDIAL    ( (ZU_INT)5 )
#define ZU_UNICODE_CDMT_FINAL     ( (ZU_INT)6 )
#define ZU_UNICODE_CDMT_ISOLATED  ( (ZU_INT)7 )
#define ZU_UNICODE_CDMT_CIRCLE    ( (ZU_INT)8 )
#define ZU_UNICODE_CDMT_SUPER     ( (ZU_INT)9 )
#define ZU_UNICODE_CDMT_SUB       ( (ZU_INT)10 )
#define ZU_UNICODE_CDMT_VERTICAL  ( (ZU_INT)11 )
#define ZU_UNICODE_CDMT_WIDE      ( (ZU_INT)12 )
#define ZU_UNICODE_CDMT_NARROW    ( (ZU_INT)13 )
#define ZU_UNICODE_CDMT_SMALL     ( (ZU_INT)14 )
#define ZU_UNICODE_CDMT_SQUARE    ( (ZU_INT)15 )
#define ZU_UNICODE_CDMT_FRACTION  ( (ZU_INT)16 )
#define ZU_UNICODE_CDMT_COMPAT    ( (ZU_INT)17 )
