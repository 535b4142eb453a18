// ZU_ALERT: something that is so or not so, and listeners to be told when it becomes so.
//
// An alert is set and unset any number of times.  A listener hears one setting and is dropped: to hear the next, it
// is attached again.  Nothing gets lost by that, since attaching to an alert that is set fires the listener at once.
// There is no waiting for an alert; a listener can open a barrier.  zu_alertable.h tells what listeners do, and what
// they must not do.  Any number of threads may set an alert, unset it, attach and detach.  Attaching and detaching take
// the time of a change of a dict with the listeners as keys; there may be many thousands.  Alerts are ordered by
// identity.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

typedef struct ZU_ALERTABLE ZU_ALERTABLE;

typedef struct ZU_ALERT ZU_ALERT;
// zuAlertRetain, Release, From, Obj, Sort, ToString, Compare, Equals.  The last release fires nothing.
ZU_STDFUNCS_DECLARE( ZU_ALERT, zuAlert )

/// Returns a new alert that is not set and has no listeners.
ZU_API ZU_ALERT *zuAlertCreate( void );
/// Tells whether the alert is set; takes no lock.
ZU_API ZU_BOOL zuAlertIsSet( ZU_ALERT *al );
/// Sets the alert.  If it was not set, fires all listeners on the calling thread before it returns, the one that was
/// attached to an alert without listeners first, the others in no order that callers can know, and drops them.
ZU_API void zuAlertSet( ZU_ALERT *al );
/// Unsets the alert and tells whether it was set; takes no lock, and may come while listeners are being fired.
ZU_API ZU_BOOL zuAlertUnset( ZU_ALERT *al );

/// Attaches `alb` or, if the alert is set, fires it at once on the calling thread and keeps nothing.  A listener that
/// is attached already is not attached twice; but one that is, and not as the first, gets a second place if the first
/// has been detached, and is fired twice then.
ZU_API void zuAlertAddAlertable( ZU_ALERT *al, ZU_ALERTABLE *alb );
/// Detaches `alb`, wherever it stands; one that is not attached is no error.
ZU_API void zuAlertDelAlertable( ZU_ALERT *al, ZU_ALERTABLE *alb );

ZU_END_DECLS
