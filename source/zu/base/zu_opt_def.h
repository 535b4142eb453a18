// ZU_OPT_DEF: the options that a command line may have.
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  An option has an identifier, a number of the
// program's choice that is not negative, and any number of names: short ones of a character, "-x", and long ones of
// several, "--name".  Names are set without their hyphens.  ZU_OPT_SEQ walks a command line by a definition.
#pragma once

#include "zu/base/zu_opt_flags.h"
#include "zu/runtime/zu_obj.h"
#include "zu/sys/zu_chars.h"

ZU_BEGIN_DECLS

typedef struct ZU_OPT_DEF ZU_OPT_DEF;
// zuOptDefRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_OPT_DEF, zuOptDef )

// Creation
/// Returns a new definition without options, which disallows arguments that are none.
ZU_API ZU_OPT_DEF *zuOptDefCreate( void );
/// Returns a new object with all that `def` says.
ZU_API ZU_OPT_DEF *zuOptDefCreateFrom( ZU_OPT_DEF *def );

// Names and flags.  What was set before for the same name or identifier is replaced.  An identifier that is negative
// and a name that is empty abort.
/// Gives the short name `optChar` to the option `optId`; a value that is no code point aborts.
ZU_API void zuOptDefSetShortOpt( ZU_OPT_DEF **def, ZU_CHAR optChar, ZU_INT optId );
/// Gives the long name `optString` to the option `optId`.
ZU_API void zuOptDefSetLongOpt( ZU_OPT_DEF **def, ZU_STRING *optString, ZU_INT optId );
/// Gives a long name of `length` bytes of narrow text, -1: terminated, to the option `optId`.
ZU_API void zuOptDefSetLongOptCstr( ZU_OPT_DEF **def, const char *optString, ZU_INT length, ZU_INT optId );
/// Gives a long name of `length` units of UTF-16, -1: terminated, to the option `optId`.
ZU_API void zuOptDefSetLongOptWcstr( ZU_OPT_DEF **def, const char16_t *optString, ZU_INT length, ZU_INT optId );
/// Sets the flags of the option `optId`, see zu_opt_flags.h.
ZU_API void zuOptDefSetFlags( ZU_OPT_DEF **def, ZU_INT optId, ZU_INT flags );

// The walk
/// Lets the walk report arguments that are no options as `optId`, which is not negative.
ZU_API void zuOptDefSetArgOnly( ZU_OPT_DEF **def, ZU_INT optId );
/// Lets the walk look for options behind elements that are no strings, which it hands out after them, or not.
ZU_API void zuOptDefSetReorder( ZU_OPT_DEF **def, ZU_BOOL reorder );
/// Lets a walk begin by turning all elements into their texts, or not.
ZU_API void zuOptDefSetStringize( ZU_OPT_DEF **def, ZU_BOOL stringize );

// Looking up
/// Returns the identifier of the short name `optChar`; -1 if there is none.
ZU_API ZU_INT zuOptDefShortOpt( ZU_OPT_DEF *def, ZU_CHAR optChar );
/// Returns the identifier of the long name `optString`, or with `allowAbbreviation` of the only one that begins with
/// it; -1 if there is none, -2 if several begin with it, even if their identifier is the same.  `*abbreviated` tells
/// whether any did so that is not the same; it may be null.  An empty `optString` aborts.
ZU_API ZU_INT zuOptDefLongOpt( ZU_OPT_DEF *def, ZU_STRING *optString, ZU_BOOL allowAbbreviation, ZU_BOOL *abbreviated );
/// Returns the flags of the option `optId`, which is not negative; 0 if none were set.
ZU_API ZU_INT zuOptDefFlags( ZU_OPT_DEF *def, ZU_INT optId );
/// Returns the identifier of arguments that are no options; -7 if they are disallowed.
ZU_API ZU_INT zuOptDefArgOnly( ZU_OPT_DEF *def );
/// Tells whether the walk looks for options behind elements that are no strings.
ZU_API ZU_BOOL zuOptDefReorder( ZU_OPT_DEF *def );
/// Tells whether a walk begins by turning all elements into their texts.
ZU_API ZU_BOOL zuOptDefStringize( ZU_OPT_DEF *def );

ZU_END_DECLS
