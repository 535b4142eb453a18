// zu_tag_color.h: the colours in which tags are shown, an enumeration of ten values.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef ZU_INT ZU_TAG_COLOR;

#define ZU_TAG_COLOR_RED    ( (ZU_TAG_COLOR)0 )
#define ZU_TAG_COLOR_ORANGE ( (ZU_TAG_COLOR)1 )
#define ZU_TAG_COLOR_YELLOW ( (ZU_TAG_COLOR)2 )
#define ZU_TAG_COLOR_GREEN  ( (ZU_TAG_COLOR)3 )
#define ZU_TAG_COLOR_BLUE   ( (ZU_TAG_COLOR)4 )
#define ZU_TAG_COLOR_INDIGO ( (ZU_TAG_COLOR)5 )
#define ZU_TAG_COLOR_VIOLET ( (ZU_TAG_COLOR)6 )
#define ZU_TAG_COLOR_WHITE  ( (ZU_TAG_COLOR)7 )
#define ZU_TAG_COLOR_GREY   ( (ZU_TAG_COLOR)8 )
#define ZU_TAG_COLOR_BLACK  ( (ZU_TAG_COLOR)9 )

/// Tells whether `color` is a colour.
#define ZU_TAG_COLOR_OK( color ) ( ( color ) >= ZU_TAG_COLOR_RED && ( color ) <= ZU_TAG_COLOR_BLACK )

/// Returns the colour with the name or, in digits, the number `zus`, such as "ZU_TAG_COLOR_GREEN", as an enumeration
/// reads it; -1 if there is none.
ZU_API ZU_TAG_COLOR zuTagColorFromString( ZU_STRING *zus );
/// Returns the name of `color`; what is no colour aborts.
ZU_API ZU_STRING *zuTagColorToString( ZU_TAG_COLOR color );

// For authors of classes and modules
/// Makes the enumeration of the names.
ZU_API void zu___TagColorStartup( void );
/// Releases what zu___TagColorStartup made.
ZU_API void zu___TagColorShutdown( void );

ZU_END_DECLS
