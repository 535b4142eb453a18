// zu_unicode_cccv.h: the canonical combining classes of the Unicode Character Database.
#pragma once

#include "zu/sys/zu_int.h"

/// A canonical combining class: tells where a mark stands at its base character.  Marks of different classes can be
/// exchanged; class 0 is that of base characters, and nothing is moved over one.
typedef ZU_INT ZU_UNICODE_CCCV;

/// Tells whether `cccv` can be a combining class; of the 256 values the database uses 56.
#define ZU_UNICODE_CCCV_OK( cccv ) ( (uint64_t)( cccv ) <= 255 )

// The classes with names.  Those from 10 to 199, the fixed position classes, belong to marks of single scripts.
#define ZU_UNICODE_CCCV_SPACING              ( (ZU_INT)0 )
#define ZU_UNICODE_CCCV_OVERLAYS             ( (ZU_INT)1 )
#define ZU_UNICODE_CCCV_NUKTAS               ( (ZU_INT)7 )
#define ZU_UNICODE_CCCV_HIRAGANA             ( (ZU_INT)8 )
#define ZU_UNICODE_CCCV_VIRAMAS              ( (ZU_INT)9 )
#define ZU_UNICODE_CCCV_FIXED_POS_START      ( (ZU_INT)10 )
#define ZU_UNICODE_CCCV_FIXED_POS_END        ( (ZU_INT)199 )
#define ZU_UNICODE_CCCV_BELOW_LEFT_ATTACHED  ( (ZU_INT)200 )
#define ZU_UNICODE_CCCV_BELOW_ATTACHED       ( (ZU_INT)202 )
#define ZU_UNICODE_CCCV_BELOW_RIGHT_ATTACHED ( (ZU_INT)204 )
#define ZU_UNICODE_CCCV_LEFT_ATTACHED        ( (ZU_INT)208 )
#define ZU_UNICODE_CCCV_RIGHT_ATTACHED       ( (ZU_INT)210 )
#define ZU_UNICODE_CCCV_ABOVE_LEFT_ATTACHED  ( (ZU_INT)212 )
#define ZU_UNICODE_CCCV_ABOVE_ATTACHED       ( (ZU_INT)214 )
#define ZU_UNICODE_CCCV_ABOVE_RIGHT_ATTACHED ( (ZU_INT)216 )
#define ZU_UNICODE_CCCV_BELOW_LEFT           ( (ZU_INT)218 )
#define ZU_UNICODE_CCCV_BELOW                ( (ZU_INT)220 )
#define ZU_UNICODE_CCCV_BELOW_RIGHT          ( (ZU_INT)222 )
#define ZU_UNICODE_CCCV_LEFT                 ( (ZU_INT)224 )
#define ZU_UNICODE_CCCV_RIGHT                ( (ZU_INT)226 )
#define ZU_UNICODE_CCCV_ABOVE_LEFT           ( (ZU_INT)228 )
#define ZU_UNICODE_CCCV_ABOVE                ( (ZU_INT)230 )
#define ZU_UNICODE_CCCV_ABOVE_RIGHT          ( (ZU_INT)232 )
#define ZU_UNICODE_CCCV_DOUBLE_BELOW         ( (ZU_INT)233 )
#define ZU_UNICODE_CCCV_DOUBLE_ABOVE         ( (ZU_INT)234 )
#define ZU_UNICODE_CCCV_BELOW_IOTA           ( (ZU_INT)240 )

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;

// From the value to its texts; a value out of range aborts.
/// Returns the name in words: "Above left attached"; for a class without a name "Canonical Combining Class Value 11".
ZU_API ZU_STRING *zuUnicodeCccvDescription( ZU_UNICODE_CCCV cccv );
/// Returns the name of the constant: "ZU_UNICODE_CCCV_ABOVE_LEFT_ATTACHED"; null for a class without one.
ZU_API ZU_STRING *zuUnicodeCccvSymName( ZU_UNICODE_CCCV cccv );

// For authors of classes and modules
/// Makes what the classes are looked up in.
ZU_API void zu___UnicodeCccvStartup( void );
/// Releases what the classes are looked up in.
ZU_API void zu___UnicodeCccvShutdown( void );

ZU_END_DECLS
