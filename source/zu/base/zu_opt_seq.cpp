// The walk takes elements off a vector of its own, mostly at the front, where a vector gives them up without moving
// the rest.  Nothing but what a caller may ask for is copied: a long option without an argument is handed out as the
// element that it was, and a cluster of short ones is cut down in place, so that a long one takes no longer than its
// length.
//
// Where the walk begins anew, at "--" and at the end of a round, no options are enabled any more, so that it ends with
// the first element: the number of rounds is small, and they are a loop.

#include "zu/base/zu_opt_seq.h"

#include "zu/base/zu_boxed_bool.h"
#include "zu/base/zu_boxed_int.h"
#include "zu/base/zu_boxed_real.h"
#include "zu/base/zu_opt_def_internal.h"
#include "zu/base/zu_range_map.h"
#include "zu/base/zu_string_format.h"
#include "zu/base/zu_string_scan.h"
#include "zu/base/zu_string_search.h"
#include "zu/base/zu_vector_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/sys/zu_char_names.h"
#include "zu/sys/zu_real.h"

// Results beside those of zu_opt_def_internal.h.
static constexpr ZU_INT LONG_ARGUMENT_MISSING = -3;
static constexpr ZU_INT SHORT_ARGUMENT_MISSING = -4;
static constexpr ZU_INT ARGUMENT_DISALLOWED = -4;
static constexpr ZU_INT ONLY_ONCE = -5;
static constexpr ZU_INT ABBREVIATION_DISALLOWED = -6;

static constexpr ZU_CHAR HYPHEN = ZU_CHAR_HYPHEN_MINUS;
static constexpr ZU_CHAR END_OF_OPTIONS[] = { HYPHEN, HYPHEN };
static constexpr ZU_INT LONG_PREFIX = 2; // hyphens ahead of a long name

struct ZU_OPT_SEQ {
    ZU_OBJ obj;
    ZU_OPT_DEF *def;
    ZU_VECTOR *argv;    // what is left
    ZU_INT id;          // of the last step
    ZU_INT idSecondary; // the same
    ZU_STRING *opt;     // may be null, as may be:
    ZU_OBJ *arg;
    ZU_STRING *error;
    ZU_RANGE_MAP *once; // from the options of ZU_OPT_FLAG_ONCE that have come to ZU_TRUE, boxed
    ZU_BOOL optionsEnabled;
};

static void optSeqFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_OPT_SEQ = ZU___SORT_INITIALIZER( "ZU_OPT_SEQ", &zu___module, optSeqFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_OPT_SEQ, zuOptSeq )

// Ends a step, and the creation too.
static void optSeqClose( ZU_OPT_SEQ *seq, ZU_INT id )
{
    seq->id = id;
    seq->idSecondary = id;
    if ( zuVectorLength( seq->argv ) == 1 && zuVectorSortAt( seq->argv, 0 ) == zuStringSort() &&
         zuStringEqualsChars( zuStringFrom( zuVectorBacking( seq->argv )[ 0 ] ), END_OF_OPTIONS, LONG_PREFIX ) ) {
        zuVectorClear( &seq->argv );
    }
}

// Creation
ZU_OPT_SEQ *zuOptSeqCreate( ZU_OPT_DEF *def, ZU_VECTOR *argv )
{
    ZU_ASSERT( def );
    ZU_ASSERT( argv );
    ZU_OPT_SEQ *seq = (ZU_OPT_SEQ *)zu___ObjCreate( sizeof( ZU_OPT_SEQ ), &zu___sort_ZU_OPT_SEQ );
    seq->def = zuOptDefRetain( def );
    seq->argv = zuVectorRetain( argv );
    seq->opt = nullptr;
    seq->arg = nullptr;
    seq->error = nullptr;
    seq->once = zuRangeMapCreateAutoCollapsing();
    seq->optionsEnabled = ZU_TRUE;
    if ( zuOptDefStringize( def ) ) {
        zuVectorStringize( &seq->argv );
    }
    optSeqClose( seq, ZU___OPT_UNDEFINED );
    return seq;
}

static void optSeqFree( ZU_OBJ *thisObj )
{
    ZU_OPT_SEQ *seq = zuOptSeqFrom( thisObj );
    ZU_ASSERT( seq );
    ZU_REF_RELEASE( seq->def );
    ZU_REF_POISON( seq->def );
    ZU_REF_RELEASE( seq->argv );
    ZU_REF_POISON( seq->argv );
    ZU_REF_RELEASE_OPT( seq->opt );
    ZU_REF_POISON( seq->opt );
    ZU_REF_RELEASE_OPT( seq->arg );
    ZU_REF_POISON( seq->arg );
    ZU_REF_RELEASE_OPT( seq->error );
    ZU_REF_POISON( seq->error );
    ZU_REF_RELEASE( seq->once );
    ZU_REF_POISON( seq->once );
}

// The walk

// Sets an error whose text names the option, and returns its identifier.
static ZU_INT optSeqFail( ZU_OPT_SEQ *seq, ZU_INT id, const char *format )
{
    seq->error = zuStringCreateFromFormatCstr( format, -1, seq->opt );
    return id;
}
static ZU_INT optSeqFailLookup( ZU_OPT_SEQ *seq, ZU_INT id )
{
    switch ( id ) {
    case ZU___OPT_UNDEFINED:
        return optSeqFail( seq, id, "%s: option undefined" );
    case ZU___OPT_AMBIGUOUS:
        return optSeqFail( seq, id, "%s: ambiguous" );
    default:
        return optSeqFail( seq, id, "%s: error" );
    }
}

// Forgets what the last step has found.
static void optSeqForget( ZU_OPT_SEQ *seq )
{
    ZU_STRING *opt = seq->opt;
    ZU_OBJ *arg = seq->arg;
    ZU_STRING *error = seq->error;
    seq->opt = nullptr;
    seq->arg = nullptr;
    seq->error = nullptr;
    ZU_REF_RELEASE_OPT( opt );
    ZU_REF_RELEASE_OPT( arg );
    ZU_REF_RELEASE_OPT( error );
}

// Makes the element at `i` the argument and removes it; returns false if there is none.
static bool optSeqTakeArg( ZU_OPT_SEQ *seq, ZU_INT i )
{
    if ( i >= zuVectorLength( seq->argv ) ) {
        return false;
    }
    seq->arg = zuVectorObjAt( seq->argv, i );
    ZU_ASSERT( seq->arg );
    zuVectorDelAt( &seq->argv, i );
    return true;
}

static ZU_INT optSeqNextArgument( ZU_OPT_SEQ *seq, ZU_INT i )
{
    ZU_INT id = zuOptDefArgOnly( seq->def );
    if ( id < 0 ) {
        zuVectorDelAt( &seq->argv, i );
        seq->error = zuStringCreateFromCstr( "non-option argument disallowed", -1 );
        return ZU___OPT_NO_ARG_ONLY;
    }
    optSeqTakeArg( seq, i );
    return id;
}

// Takes the long option `text` off place `i`, and returns its identifier and stores its flags, or fails.
static ZU_INT optSeqNextLong( ZU_OPT_SEQ *seq, ZU_INT i, ZU_STRING *text, ZU_INT *flags )
{
    ZU_INT equals = zuStringFindChar( text, LONG_PREFIX, ZU_CHAR_EQUALS_SIGN );
    if ( equals == -1 ) {
        seq->opt = zuStringRetain( text );
    } else {
        seq->opt = zuStringCreateFromLeading( text, equals );
        seq->arg = zuStringObj( zuStringCreateFromTrailing( text, zuStringLength( text ) - equals - 1 ) );
    }
    zuVectorDelAt( &seq->argv, i );
    ZU_BOOL abbreviated;
    ZU_INT id = zu___OptDefLongOptChars( seq->def, zuStringBacking( seq->opt ) + LONG_PREFIX,
                                         zuStringLength( seq->opt ) - LONG_PREFIX, &abbreviated );
    if ( id < 0 ) {
        return optSeqFailLookup( seq, id );
    }
    *flags = zuOptDefFlags( seq->def, id );
    if ( ( *flags & ZU_OPT_FLAG_ARGUMENT ) && !seq->arg && !optSeqTakeArg( seq, i ) ) {
        return optSeqFail( seq, LONG_ARGUMENT_MISSING, "%s: argument missing" );
    }
    if ( ( *flags & ZU_OPT_FLAG_NO_ABBREV ) && abbreviated ) {
        return optSeqFail( seq, ABBREVIATION_DISALLOWED, "%s: abbreviated option disallowed" );
    }
    if ( !( *flags & ZU_OPT_FLAG_ARGUMENT ) && seq->arg ) {
        return optSeqFail( seq, ARGUMENT_DISALLOWED, "%s: argument disallowed" );
    }
    return id;
}

// Cuts the short option in front off a cluster: "-abc" becomes "-bc".
static void optSeqShorten( ZU_OPT_SEQ *seq, ZU_INT i )
{
    zu___VectorUnshare( &seq->argv );
    ZU_OBJ **element = seq->argv->items + seq->argv->fspace + i;
    ZU_STRING *text = zuStringFrom( *element );
    zuStringDelLeading( &text, 1 ); // where it costs nothing, as it would behind the hyphen
    zuStringSetCharAt( &text, 0, HYPHEN );
    *element = zuStringObj( text );
}

// Takes the short option behind the hyphen of `text` off place `i`, and returns its identifier and stores its flags,
// or fails.
static ZU_INT optSeqNextShort( ZU_OPT_SEQ *seq, ZU_INT i, ZU_STRING *text, ZU_INT *flags )
{
    const ZU_CHAR opt[] = { HYPHEN, zuStringCharAt( text, 1 ) };
    bool hasRest = zuStringLength( text ) > 2;
    if ( hasRest ) {
        optSeqShorten( seq, i );
    } else {
        zuVectorDelAt( &seq->argv, i );
    }
    seq->opt = zuStringCreateFromCharsCopy( opt, 2 );
    ZU_INT id = zuOptDefShortOpt( seq->def, opt[ 1 ] );
    if ( id < 0 ) {
        return optSeqFailLookup( seq, id );
    }
    *flags = zuOptDefFlags( seq->def, id );
    if ( *flags & ZU_OPT_FLAG_ARGUMENT ) {
        if ( !optSeqTakeArg( seq, i ) ) {
            return optSeqFail( seq, SHORT_ARGUMENT_MISSING, "%s: argument missing" );
        }
        if ( hasRest ) {
            ZU_STRING *rest = zuStringFrom( seq->arg );
            zuStringDelLeading( &rest, 1 );
            seq->arg = zuStringObj( rest );
        }
    }
    return id;
}

// Notes that a ZU_OPT_FLAG_ONCE option has come; returns false if it had before.
static bool optSeqEnterOnce( ZU_OPT_SEQ *seq, ZU_INT id )
{
    if ( zuRangeMapHasIntKey( seq->once, id ) ) {
        return false;
    }
    ZU_BOXED_BOOL *seen = zuBoxedBoolCreate( ZU_TRUE );
    zuRangeMapSetIntKey( &seq->once, id, zuBoxedBoolObj( seen ) );
    ZU_REF_RELEASE( seen );
    return true;
}

// What a look at an element has led to.
enum OUTCOME {
    OUTCOME_RESULT,
    OUTCOME_PASS,      // nothing for the caller: look at the next place
    OUTCOME_START_OVER // begin anew
};
// Looks at the element at `i`.
static OUTCOME optSeqLook( ZU_OPT_SEQ *seq, ZU_INT i, ZU_INT *id )
{
    bool isString = zuVectorSortAt( seq->argv, i ) == zuStringSort();
    if ( !isString ) {
        if ( zuOptDefReorder( seq->def ) && seq->optionsEnabled ) {
            return OUTCOME_PASS;
        }
        *id = optSeqNextArgument( seq, i );
        return OUTCOME_RESULT;
    }
    ZU_STRING *text = zuStringFrom( zuVectorBacking( seq->argv )[ i ] );
    ZU_INT length = zuStringLength( text );
    if ( length < 2 || zuStringCharAt( text, 0 ) != HYPHEN || !seq->optionsEnabled ) {
        *id = optSeqNextArgument( seq, i );
        return OUTCOME_RESULT;
    }
    bool isLong = zuStringCharAt( text, 1 ) == HYPHEN;
    if ( isLong && length == LONG_PREFIX ) {
        seq->optionsEnabled = ZU_FALSE;
        zuVectorDelAt( &seq->argv, i );
        return OUTCOME_START_OVER;
    }
    ZU_INT flags = 0;
    *id = isLong ? optSeqNextLong( seq, i, text, &flags ) : optSeqNextShort( seq, i, text, &flags );
    if ( *id < 0 ) {
        return OUTCOME_RESULT;
    }
    if ( ( flags & ZU_OPT_FLAG_ONCE ) && !optSeqEnterOnce( seq, *id ) ) {
        *id = optSeqFail( seq, ONLY_ONCE, "%s: multiple options disallowed" );
        return OUTCOME_RESULT;
    }
    if ( flags & ZU_OPT_FLAG_IGNORE ) {
        optSeqForget( seq );
        return OUTCOME_PASS;
    }
    return OUTCOME_RESULT;
}
static ZU_INT optSeqStep( ZU_OPT_SEQ *seq )
{
    for ( ;; ) {
        optSeqForget( seq );
        ZU_INT length = zuVectorLength( seq->argv );
        ZU_ASSERT( length );
        OUTCOME outcome = OUTCOME_PASS;
        // By the length at the beginning of the round, though a swallowed option has shortened the vector since: the
        // contract, with all that follows from it, is in the header.
        for ( ZU_INT i = 0; outcome == OUTCOME_PASS && i < length; i++ ) {
            ZU_INT id;
            outcome = optSeqLook( seq, i, &id );
            if ( outcome == OUTCOME_RESULT ) {
                return id;
            }
        }
        seq->optionsEnabled = ZU_FALSE;
    }
}
ZU_INT zuOptSeqNext( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    ZU_INT id = optSeqStep( seq );
    optSeqClose( seq, id );
    return id;
}
ZU_BOOL zuOptSeqHasNext( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return zuVectorLength( seq->argv ) > 0 ? ZU_TRUE : ZU_FALSE;
}
ZU_VECTOR *zuOptSeqRemainingArgv( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    ZU_ASSERT( seq->argv );
    return zuVectorRetain( seq->argv );
}

// What the last step has found
ZU_INT zuOptSeqId( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->id;
}
ZU_INT zuOptSeqIdSecondary( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->idSecondary;
}
ZU_BOOL zuOptSeqHasOpt( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->opt ? ZU_TRUE : ZU_FALSE;
}
ZU_STRING *zuOptSeqOpt( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->opt ? zuStringRetain( seq->opt ) : nullptr;
}
ZU_BOOL zuOptSeqHasError( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->error ? ZU_TRUE : ZU_FALSE;
}
ZU_STRING *zuOptSeqError( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->error ? zuStringRetain( seq->error ) : nullptr;
}

// Its argument.  Each of the three below returns whether the argument has a value of the type, and stores it.
static bool optSeqTryInt( ZU_OPT_SEQ *seq, ZU_INT *value )
{
    static constexpr double LIMIT = 0x1p63; // the first number above ZU_INT_MAX; its negative is ZU_INT_MIN
    if ( !seq->arg ) {
        return false;
    }
    ZU_SORT *sort = zuObjSort( seq->arg );
    if ( sort == zuBoxedRealSort() ) {
        double real = zuBoxedRealValue( zuBoxedRealFrom( seq->arg ) );
        *value = zuRealToInt( real );
        return zuRealEquals( real, zuRealTrunc( real ) ) && real >= -LIMIT && real < LIMIT;
    }
    if ( sort == zuBoxedIntSort() ) {
        *value = zuBoxedIntValue( zuBoxedIntFrom( seq->arg ) );
        return true;
    }
    ZU_STRING *text = zuObjToString( seq->arg );
    ZU_INT consumed;
    bool found = zuStringScanInt( text, 0, -1, -1, value, &consumed ) && consumed == zuStringLength( text );
    ZU_REF_RELEASE( text );
    return found;
}
static bool optSeqTryReal( ZU_OPT_SEQ *seq, double *value )
{
    if ( !seq->arg ) {
        return false;
    }
    ZU_SORT *sort = zuObjSort( seq->arg );
    if ( sort == zuBoxedRealSort() ) {
        *value = zuBoxedRealValue( zuBoxedRealFrom( seq->arg ) );
        return true;
    }
    if ( sort == zuBoxedIntSort() ) {
        *value = (double)zuBoxedIntValue( zuBoxedIntFrom( seq->arg ) );
        return true;
    }
    ZU_STRING *text = zuObjToString( seq->arg );
    ZU_INT consumed;
    bool found = zuStringScanReal( text, 0, -1, -1, value, &consumed ) && consumed == zuStringLength( text );
    ZU_REF_RELEASE( text );
    return found;
}
static bool optSeqTryBool( ZU_OPT_SEQ *seq, ZU_BOOL numbers, ZU_BOOL *value )
{
    double real;
    if ( numbers && optSeqTryReal( seq, &real ) ) {
        *value = zuRealEquals( real, 0.0 ) ? ZU_FALSE : ZU_TRUE;
        return true;
    }
    if ( !seq->arg ) {
        return false;
    }
    if ( zuObjSort( seq->arg ) == zuBoxedBoolSort() ) {
        *value = zuBoxedBoolValue( zuBoxedBoolFrom( seq->arg ) );
        return true;
    }
    ZU_STRING *text = zuObjToString( seq->arg );
    ZU_INT consumed;
    bool found = zuStringScanBool( text, 0, -1, numbers, value, &consumed ) && consumed == zuStringLength( text );
    ZU_REF_RELEASE( text );
    return found;
}
ZU_BOOL zuOptSeqHasArg( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->arg ? ZU_TRUE : ZU_FALSE;
}
ZU_OBJ *zuOptSeqArgObj( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->arg ? zuObjRetain( seq->arg ) : nullptr;
}
ZU_STRING *zuOptSeqArgString( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    return seq->arg ? zuObjToString( seq->arg ) : nullptr;
}
ZU_BOOL zuOptSeqArgIsInt( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    ZU_INT value;
    return optSeqTryInt( seq, &value ) ? ZU_TRUE : ZU_FALSE;
}
ZU_INT zuOptSeqArgInt( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    ZU_INT value;
    return optSeqTryInt( seq, &value ) ? value : 0;
}
ZU_BOOL zuOptSeqArgIsReal( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    double value;
    return optSeqTryReal( seq, &value ) ? ZU_TRUE : ZU_FALSE;
}
double zuOptSeqArgReal( ZU_OPT_SEQ *seq )
{
    ZU_ASSERT( seq );
    double value;
    return optSeqTryReal( seq, &value ) ? value : 0.0;
}
ZU_BOOL zuOptSeqArgIsBool( ZU_OPT_SEQ *seq, ZU_BOOL numbers )
{
    ZU_ASSERT( seq );
    ZU_BOOL value;
    return optSeqTryBool( seq, numbers, &value ) ? ZU_TRUE : ZU_FALSE;
}
ZU_BOOL zuOptSeqArgBool( ZU_OPT_SEQ *seq, ZU_BOOL numbers )
{
    ZU_ASSERT( seq );
    ZU_BOOL value;
    return optSeqTryBool( seq, numbers, &value ) ? value : ZU_FALSE;
}
