// zu_happens_internal.h: what helgrind is told of the order that atomic words establish.
//
// Helgrind knows the locks of POSIX threads and no others: what any other lock orders looks like a race to it.  A library
// that is built with ZU_HELGRIND says at each of its own what happens before what, in the terms of Lamport, "Time, Clocks,
// and the Ordering of Events in a Distributed System".  In all other builds nothing of this is left.
#pragma once

#include "zu/sys/zu_int.h"

#ifdef ZU_HELGRIND
#include <valgrind/helgrind.h>

// All that this thread has done so far happens before what any thread does that passes ZU___HAPPENS_AFTER for the same
// word later.  Stands ahead of the releasing change of the word.
#define ZU___HAPPENS_BEFORE( word )              ANNOTATE_HAPPENS_BEFORE( word )
// Stands behind the acquiring change, or the reading that has found what it waited for.
#define ZU___HAPPENS_AFTER( word )               ANNOTATE_HAPPENS_AFTER( word )
// Stores to a word that other threads may be reading.  Helgrind takes a plain store for half of a race, and an exchange,
// which is a locked instruction, for none.
#define ZU___HAPPENS_STORE( word, value, order ) ( (void)__atomic_exchange_n( word, value, order ) )
#else
#define ZU___HAPPENS_BEFORE( word )              ( (void)0 )
#define ZU___HAPPENS_AFTER( word )               ( (void)0 )
#define ZU___HAPPENS_STORE( word, value, order ) __atomic_store_n( word, value, order )
#endif
