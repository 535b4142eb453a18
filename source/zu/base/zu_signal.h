// ZU_SIGNAL: something that happens once, with threads that wait for it and others to be told of it.
//
// A signal is asserted once and stays so: nothing clears it.  Four kinds of object can be attached, each of which is
// told once: listeners, further signals, which are asserted, alerts, which are set, and barriers, which are opened.
// Whatever is attached to an asserted signal is told at once, on the calling thread, and not kept.
//
// Objects are told on the thread that asserts, one after the other, with the signal locked.  So signals must not be
// chained in a circle, and no listener may come back to a signal that fires it: both would wait for ever; and a
// chain takes a piece of the stack for each of its signals: about a thousand fit a stack of 128 KiB.  Any number of
// threads may use one signal.  Signals are ordered by identity.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_ALERT ZU_ALERT;
typedef struct ZU_BARRIER ZU_BARRIER;
typedef struct ZU_SIGNALABLE ZU_SIGNALABLE;

typedef struct ZU_SIGNAL ZU_SIGNAL;
// zuSignalRetain, Release, From, Obj, Sort, ToString, Compare, Equals.  The last release tells nobody.
ZU_STDFUNCS_DECLARE( ZU_SIGNAL, zuSignal )

/// Returns a new signal that is not asserted and has nothing attached.
ZU_API ZU_SIGNAL *zuSignalCreate( void );
/// Tells whether the signal is asserted; takes no lock.
ZU_API ZU_BOOL zuSignalAsserted( ZU_SIGNAL *sig );
/// Asserts the signal.  The first time, wakes the threads that wait, then tells signalables, signals, alerts and
/// barriers, kind by kind, before it returns.
ZU_API void zuSignalAssert( ZU_SIGNAL *sig );

/// Returns as soon as the signal is asserted.
ZU_API void zuSignalWait( ZU_SIGNAL *sig );
/// Returns true as soon as the signal is asserted, false if that is not so within `millisec` milliseconds; -1 is no
/// limit, and 0 only looks.  Less aborts unless the signal is asserted.
ZU_API ZU_BOOL zuSignalWaitTimed( ZU_SIGNAL *sig, ZU_INT millisec );

// Attaching and detaching
//
// An object that is attached already is not attached twice; but one that is, and not as the first of its kind, gets a
// second place if that first has been detached, and is told twice then.  Detaching removes it from both, and one that
// is not attached is no error.
/// Attaches the listener `sigb`.
ZU_API void zuSignalAddSignalable( ZU_SIGNAL *sig, ZU_SIGNALABLE *sigb );
/// Detaches the listener `sigb`.
ZU_API void zuSignalDelSignalable( ZU_SIGNAL *sig, ZU_SIGNALABLE *sigb );
/// Attaches the signal `chainedSignal`, which must not be `sig`.
ZU_API void zuSignalAddSignal( ZU_SIGNAL *sig, ZU_SIGNAL *chainedSignal );
/// Detaches the signal `chainedSignal`.
ZU_API void zuSignalDelSignal( ZU_SIGNAL *sig, ZU_SIGNAL *chainedSignal );
/// Attaches the alert `al`.
ZU_API void zuSignalAddAlert( ZU_SIGNAL *sig, ZU_ALERT *al );
/// Detaches the alert `al`.
ZU_API void zuSignalDelAlert( ZU_SIGNAL *sig, ZU_ALERT *al );
/// Attaches the barrier `waitBarrier`.
ZU_API void zuSignalAddBarrier( ZU_SIGNAL *sig, ZU_BARRIER *waitBarrier );
/// Detaches the barrier `waitBarrier`.
ZU_API void zuSignalDelBarrier( ZU_SIGNAL *sig, ZU_BARRIER *waitBarrier );
/// Tells whether anything of the four kinds is attached; never so once the signal is asserted.  Threads that wait do
/// not count.
ZU_API ZU_BOOL zuSignalHasSignalables( ZU_SIGNAL *sig );

ZU_END_DECLS
