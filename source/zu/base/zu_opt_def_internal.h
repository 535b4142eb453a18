// zu_opt_def_internal.h: what the walk needs of ZU_OPT_DEF beyond its interface.
#pragma once

#include "zu/base/zu_opt_def.h"

ZU_BEGIN_DECLS

// Results of a lookup that are no identifiers.
#define ZU___OPT_UNDEFINED   ( (ZU_INT)-1 )
#define ZU___OPT_AMBIGUOUS   ( (ZU_INT)-2 )
// What a walk reports for an argument that is no option where those are disallowed.
#define ZU___OPT_NO_ARG_ONLY ( (ZU_INT)-7 )

// As zuOptDefLongOpt with abbreviation, for a name of which no string is made.  One that is empty, as a user's may be,
// is undefined.
ZU_INT zu___OptDefLongOptChars( ZU_OPT_DEF *def, const ZU_CHAR *name, ZU_INT length, ZU_BOOL *abbreviated );

ZU_END_DECLS
