#include "zu/base/zu_event_queue_wait.h"

#include "zu/base/zu_alertable.h"
#include "zu/base/zu_barrier.h"
#include "zu/base/zu_timestamp.h"

// Waits by a listener that opens a gate.  It fires once for each time that it is attached; another reader may have been
// quicker then, and so the gate is closed and the listener attached anew.
static ZU_OBJ *eventQueueWait( ZU_EVENT_QUEUE *eq, ZU_INT millisec )
{
    const ZU_INT begin = zuTimestamp();
    ZU_BARRIER *gate = zuBarrierCreate( ZU_TRUE );
    ZU_ALERTABLE *listener = zuAlertableCreateBarrier( gate );
    ZU_OBJ *event = nullptr;
    ZU_INT left = millisec;
    bool open = true;
    while ( !event && open ) {
        zuBarrierBlock( gate );
        zuEventQueueReadEventAddAlertable( eq, listener );
        open = zuBarrierPassTimed( gate, left );
        event = zuEventQueueReadEvent( eq );
        left = millisec < 0 ? -1 : zuIntMax( millisec - ( zuTimestamp() - begin ), 0 );
    }
    zuEventQueueReadEventDelAlertable( eq, listener );
    zuAlertableRelease( listener );
    zuBarrierRelease( gate );
    return event;
}
ZU_OBJ *zuEventQueueReadEventTimed( ZU_EVENT_QUEUE *eq, ZU_INT millisec )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( millisec >= -1 );
    ZU_OBJ *event = zuEventQueueReadEvent( eq );
    return event || millisec == 0 ? event : eventQueueWait( eq, millisec );
}
