// zu_threads.h: what runs, what waits, and what tells whom.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// ZU_THREAD: a thread, as the library sees it.
#include "zu/base/zu_thread.h"

// zu_thread_call.h: threads whose function takes an argument of the caller's, which need not be an object.
#include "zu/base/zu_thread_call.h"

// zu_thread_priority.h: how much of the processor a thread gets beside others, an enumeration of seven values.
#include "zu/base/zu_thread_priority.h"

// ZU_MONITOR: mutual exclusion of threads, a mutex.
#include "zu/base/zu_monitor.h"

// ZU_REGION: a reader/writer lock, which any number of threads share, or one has to itself.
#include "zu/base/zu_region.h"

// ZU_BARRIER: a gate at which threads wait until it is opened, an event that stays set until it is reset.
#include "zu/base/zu_barrier.h"

// ZU_COUNTER: a count of what is going on, and a wait for it to end: a latch that can be raised again.
#include "zu/base/zu_counter.h"

// ZU_SIGNAL: something that happens once, with threads that wait for it and others to be told of it.
#include "zu/base/zu_signal.h"

// ZU_SIGNALABLE: a listener to be attached to signals.
#include "zu/base/zu_signalable.h"

// ZU___SIGNALABLE_IMP: the inside of a ZU_SIGNALABLE, which sources keep.
#include "zu/base/zu_signalable_imp.h"

// ZU_ALERT: something that is so or not so, and listeners to be told when it becomes so.
#include "zu/base/zu_alert.h"

// ZU_ALERTABLE: a listener to be attached to alerts.
#include "zu/base/zu_alertable.h"

// ZU___ALERTABLE_IMP: the inside of a ZU_ALERTABLE, which sources keep.
#include "zu/base/zu_alertable_imp.h"

// ZU_EVENT_QUEUE: hands objects from any number of writers to a reader, first in, first out.
#include "zu/base/zu_event_queue.h"

// ZU___EVENT_QUEUE_IMP: the inside of a ZU_EVENT_QUEUE, which listeners keep.
#include "zu/base/zu_event_queue_imp.h"

// zu_event_queue_wait.h: reading an event queue that may be empty, in one call.
#include "zu/base/zu_event_queue_wait.h"
