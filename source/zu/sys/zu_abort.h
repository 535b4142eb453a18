// zu_abort.h: the one failure path.
//
// A broken precondition, an impossible state and an exhausted heap all end in zu___Abort, which says what failed and
// ends the process.  Assertions are part of the contract: they stand in place of error returns and are compiled into
// every build of the library.
#pragma once

#include "zu/sys/zu_api.h"

ZU_BEGIN_DECLS

/// Reports a failed check and ends the process by abort().
///
/// `message` is a short word on what failed, null for an ordinary assertion; `file` and `line` tell where the check
/// stands; `expression` is the failed condition as written there, null for a check that has none.  Callable from any
/// thread at any time, before start-up and after shut-down too; an attached debugger gets control first.
ZU_API ZU_NORETURN void zu___Abort( const char *message, const char *file, int32_t line, const char *expression );

ZU_END_DECLS

/// Ends the process unless `expr` is true, and reports the text of `expr` as it stands in the source.
#define ZU_ASSERT( expr )                                  \
    do {                                                   \
        if ( ZU___UNLIKELY( !( expr ) ) ) {                \
            zu___Abort( NULL, __FILE__, __LINE__, #expr ); \
        }                                                  \
    } while ( 0 )

/// Ends the process unless `condition` is true, and reports `text`.
///
/// For a check whose reported text is fixed and differs from what the code has to evaluate, such as
/// `ZU___ASSERT_AS( zu___GaugeReady( gauge ), "gauge->state == READY" )`.
#define ZU___ASSERT_AS( condition, text )                 \
    do {                                                  \
        if ( ZU___UNLIKELY( !( condition ) ) ) {          \
            zu___Abort( NULL, __FILE__, __LINE__, text ); \
        }                                                 \
    } while ( 0 )

/// Ends the process: closes a branch that cannot be reached.
#define ZU_ABORT() zu___Abort( NULL, __FILE__, __LINE__, NULL )
