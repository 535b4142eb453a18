// zu_tag_match_type.h: how many of its tags a ZU_TAG_MATCH wants a set to hold, an enumeration of four values.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef ZU_INT ZU_TAG_MATCH_TYPE;

/// At least one.
#define ZU_TAG_MATCH_TYPE_OR  ( (ZU_TAG_MATCH_TYPE)0 )
/// Exactly one, however many there are.
#define ZU_TAG_MATCH_TYPE_XOR ( (ZU_TAG_MATCH_TYPE)1 )
/// All.
#define ZU_TAG_MATCH_TYPE_AND ( (ZU_TAG_MATCH_TYPE)2 )
/// None.
#define ZU_TAG_MATCH_TYPE_NOT ( (ZU_TAG_MATCH_TYPE)3 )

/// Tells whether `type` is a match type.
#define ZU_TAG_MATCH_TYPE_OK( type ) ( ( type ) >= ZU_TAG_MATCH_TYPE_OR && ( type ) <= ZU_TAG_MATCH_TYPE_NOT )

/// Returns the match type with the name or, in digits, the number `zus`, such as "ZU_TAG_MATCH_TYPE_AND", as an
/// enumeration reads it; -1 if there is none.
ZU_API ZU_TAG_MATCH_TYPE zuTagMatchTypeFromString( ZU_STRING *zus );
/// Returns the name of `type`; what is no match type aborts.
ZU_API ZU_STRING *zuTagMatchTypeToString( ZU_TAG_MATCH_TYPE type );

// For authors of classes and modules
/// Makes the enumeration of the names.
ZU_API void zu___TagMatchTypeStartup( void );
/// Releases what zu___TagMatchTypeStartup made.
ZU_API void zu___TagMatchTypeShutdown( void );

ZU_END_DECLS
