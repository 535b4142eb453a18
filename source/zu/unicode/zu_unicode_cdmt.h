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

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;

// From the value to its texts; a value out of range aborts.
/// Returns the tag that the database uses: "<wide>".  ZU_UNICODE_CDMT_NONE and ZU_UNICODE_CDMT_CANONICAL have none, and
/// abort.
ZU_API ZU_STRING *zuUnicodeCdmtTag( ZU_UNICODE_CDMT cdmt );
/// Returns a sentence on what the tag means: "An encircled form."
ZU_API ZU_STRING *zuUnicodeCdmtDescription( ZU_UNICODE_CDMT cdmt );
/// Returns the name of the constant: "ZU_UNICODE_CDMT_WIDE".
ZU_API ZU_STRING *zuUnicodeCdmtSymName( ZU_UNICODE_CDMT cdmt );

// From a tag to the value
/// Returns the value of a tag, written as it is; -1 if there is none.
ZU_API ZU_UNICODE_CDMT zuUnicodeCdmtFromTag( ZU_STRING *zus );
/// Looks the case-folded text up among the tags as they are; -1 if there is none.  So every tag is found in any case,
/// but "<noBreak>", which has a capital, in none.
ZU_API ZU_UNICODE_CDMT zuUnicodeCdmtFromTagCaseFold( ZU_STRING *zus );

// For authors of classes and modules
/// Makes what the tags are looked up in.
ZU_API void zu___UnicodeCdmtStartup( void );
/// Releases what the tags are looked up in.
ZU_API void zu___UnicodeCdmtShutdown( void );

ZU_END_DECLS
