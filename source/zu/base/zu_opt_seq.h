// ZU_OPT_SEQ: the walk over a command line, option by option, by a ZU_OPT_DEF.
//
//     ZU_OPT_SEQ *seq = zuOptSeqCreate( def, argv );
//     while ( zuOptSeqHasNext( seq ) ) {
//         switch ( zuOptSeqNext( seq ) ) {
//         case OPT_OUTPUT: ... zuOptSeqArgString( seq ) ...
//         default: ... zuOptSeqError( seq ) ...
//         }
//     }
//
// A sequence belongs to one thread.  The arguments are a vector of any objects, without the name of the program, such as
// zuArguments returns; what is no string is never taken for an option, but may be the argument of one.  The caller's
// vector stays as it is.
//
//     --name           a long option; also by the beginning of a name that no other name begins with
//     --name=value     the same with its argument, which may be empty
//     --name value     the same, if the option takes an argument: whatever follows is it
//     -x -x value      a short option, without and with an argument
//     -xyz -xvalue     several short options, and one with its argument
//     --               ends the options: everything behind it is an argument of the command
//     -, anything else an argument of the command
//
// An option that is swallowed costs the walk a place: it goes on not with the element behind it but with the one after
// that, which comes ahead of the one passed over.  With exactly one element behind it the walk aborts; with none, it
// aborts as it does at the end.  Whoever sets ZU_OPT_FLAG_IGNORE for options of users handles them in the program
// instead, or makes sure of what follows.  "--" as the last element is dropped unseen, after "--" too.
#pragma once

#include "zu/base/zu_opt_def.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_OPT_SEQ ZU_OPT_SEQ;
// zuOptSeqRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_OPT_SEQ, zuOptSeq )

// The walk
/// Returns a new walk over `argv` by `def`.  Both are kept as they are now, with the elements of `argv` replaced by
/// their texts if `def` says so.
ZU_API ZU_OPT_SEQ *zuOptSeqCreate( ZU_OPT_DEF *def, ZU_VECTOR *argv );
/// Tells whether anything is left.
ZU_API ZU_BOOL zuOptSeqHasNext( ZU_OPT_SEQ *seq );
/// Takes the next option, or argument that is none, off what is left, and returns its identifier, or a negative one
/// that tells what is wrong with it.  The walk can go on after an error.  Aborts if nothing is left.
///
///     -1  "%s: option undefined"
///     -2  "%s: ambiguous"                      several names begin with it
///     -3  "%s: argument missing"               of a long option
///     -4  "%s: argument missing"               of a short option
///     -4  "%s: argument disallowed"            "=value" behind an option that takes none
///     -5  "%s: multiple options disallowed"    ZU_OPT_FLAG_ONCE, with its argument consumed
///     -6  "%s: abbreviated option disallowed"  ZU_OPT_FLAG_NO_ABBREV, with its argument consumed
///     -7  "non-option argument disallowed"     no zuOptDefSetArgOnly; the argument is dropped
///
/// are the errors and their texts, with the option as zuOptSeqOpt gives it.
ZU_API ZU_INT zuOptSeqNext( ZU_OPT_SEQ *seq );
/// Returns what is left.
ZU_API ZU_VECTOR *zuOptSeqRemainingArgv( ZU_OPT_SEQ *seq );

// What the last call of zuOptSeqNext has found
/// Returns what it returned; -1 ahead of the first call.
ZU_API ZU_INT zuOptSeqId( ZU_OPT_SEQ *seq );
/// Returns the same.
ZU_API ZU_INT zuOptSeqIdSecondary( ZU_OPT_SEQ *seq );
/// Tells whether it was an option, known or not.
ZU_API ZU_BOOL zuOptSeqHasOpt( ZU_OPT_SEQ *seq );
/// Returns the option as the user wrote it, with its hyphens and without its argument; null if it was none.
ZU_API ZU_STRING *zuOptSeqOpt( ZU_OPT_SEQ *seq );
/// Tells whether there is an error text.
ZU_API ZU_BOOL zuOptSeqHasError( ZU_OPT_SEQ *seq );
/// Returns the text of the error; null if there was none.
ZU_API ZU_STRING *zuOptSeqError( ZU_OPT_SEQ *seq );

// Its argument: that of the option, or the argument that is no option.  A value that its text stands for must be all
// of the text, but for white space; zu_format.h tells how it is read, with a prefix for the base.
/// Tells whether there is an argument.
ZU_API ZU_BOOL zuOptSeqHasArg( ZU_OPT_SEQ *seq );
/// Returns the argument; null if there is none.
ZU_API ZU_OBJ *zuOptSeqArgObj( ZU_OPT_SEQ *seq );
/// Returns the text of the argument; null if there is none.
ZU_API ZU_STRING *zuOptSeqArgString( ZU_OPT_SEQ *seq );
/// Tells whether the argument is a boxed integer, a boxed real number that is a whole one and in range, or the text of
/// an integer.
ZU_API ZU_BOOL zuOptSeqArgIsInt( ZU_OPT_SEQ *seq );
/// Returns that integer; 0 for anything else.
ZU_API ZU_INT zuOptSeqArgInt( ZU_OPT_SEQ *seq );
/// Tells whether the argument is a boxed real number or integer, or the text of a real number.
ZU_API ZU_BOOL zuOptSeqArgIsReal( ZU_OPT_SEQ *seq );
/// Returns that number; 0.0 for anything else.
ZU_API double zuOptSeqArgReal( ZU_OPT_SEQ *seq );
/// Tells whether the argument is a boxed truth value or the text of one, or with `numbers` what zuOptSeqArgIsReal
/// accepts.
ZU_API ZU_BOOL zuOptSeqArgIsBool( ZU_OPT_SEQ *seq, ZU_BOOL numbers );
/// Returns that truth value, of a number whether it is not 0; false for anything else.
ZU_API ZU_BOOL zuOptSeqArgBool( ZU_OPT_SEQ *seq, ZU_BOOL numbers );

ZU_END_DECLS
