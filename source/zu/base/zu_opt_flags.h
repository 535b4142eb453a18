// zu_opt_flags.h: how an option of a command line is to be treated, a ZU_INT of bits.
//
// zu_opt_def.h tells which option has which.  Callable from any thread.
#pragma once

#include "zu/sys/zu_int.h"

ZU_BEGIN_DECLS

typedef struct ZU_STRING ZU_STRING;

/// The option takes an argument.
#define ZU_OPT_FLAG_ARGUMENT  ( (ZU_INT)1 )
/// The option is recognized and swallowed, with its argument: the walk goes on behind it.
#define ZU_OPT_FLAG_IGNORE    ( (ZU_INT)2 )
/// The option may be given only once.
#define ZU_OPT_FLAG_ONCE      ( (ZU_INT)4 )
/// Long names of the option may not be abbreviated.
#define ZU_OPT_FLAG_NO_ABBREV ( (ZU_INT)8 )

/// Returns the names of the flags that are set, without what they all begin with, as in "ARGUMENT|ONCE".
ZU_API ZU_STRING *zuOptFlagsToString( ZU_INT flags );

ZU_END_DECLS
