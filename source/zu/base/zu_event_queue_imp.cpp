// Listeners run while the alert is being set, and may read then; so nothing is done to the alert with the monitor
// held, but for unsetting, which takes no lock.

#include "zu/base/zu_event_queue_imp.h"

#include "zu/base/zu_alert.h"
#include "zu/base/zu_event_set_internal.h"
#include "zu/base/zu_monitor_internal.h"
#include "zu/base/zu_vector_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU___EVENT_QUEUE_IMP {
    ZU_OBJ obj;
    ZU_MONITOR *monitor; // guards what follows
    ZU_BOOL halted;
    ZU_ALERT *alert;    // set while events wait; null after the halt
    ZU_VECTOR *vector;  // the events in the order in which they came; null after the halt
    ZU___EVENT_SET set; // the same events
};

static void eventQueueImpFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU___EVENT_QUEUE_IMP =
    ZU___SORT_INITIALIZER( "ZU___EVENT_QUEUE_IMP", &zu___module, eventQueueImpFree, nullptr, nullptr );
ZU___STDFUNCS( ZU___EVENT_QUEUE_IMP, zu___EventQueueImp )

ZU___EVENT_QUEUE_IMP *zu___EventQueueImpCreate( void )
{
    ZU___EVENT_QUEUE_IMP *imp =
        (ZU___EVENT_QUEUE_IMP *)zu___ObjCreate( sizeof( ZU___EVENT_QUEUE_IMP ), &zu___sort_ZU___EVENT_QUEUE_IMP );
    imp->monitor = zuMonitorCreate();
    imp->halted = ZU_FALSE;
    imp->alert = zuAlertCreate();
    imp->vector = zuVectorCreate();
    imp->set = {};
    return imp;
}
static void eventQueueImpFree( ZU_OBJ *thisObj )
{
    ZU___EVENT_QUEUE_IMP *imp = zu___EventQueueImpFrom( thisObj );
    ZU_ASSERT( imp );
    ZU_ASSERT( imp->halted );
    ZU_REF_RELEASE( imp->monitor );
    ZU_REF_POISON( imp->monitor );
    ZU_REF_POISON( imp->alert );
    ZU_REF_POISON( imp->vector );
}
void zu___EventQueueImpHalt( ZU___EVENT_QUEUE_IMP *imp )
{
    ZU_ASSERT( imp );
    zuMonitorEnter( imp->monitor );
    ZU_ASSERT( !imp->halted );
    imp->halted = ZU_TRUE;
    ZU_ALERT *alert = imp->alert;
    ZU_VECTOR *vector = imp->vector;
    imp->alert = nullptr;
    imp->vector = nullptr;
    zu___EventSetFree( &imp->set );
    zuMonitorLeave( imp->monitor );
    // Not in the monitor: the end of an event may come round to a listener that writes here.
    ZU_REF_RELEASE( alert );
    ZU_REF_RELEASE( vector );
}

// Events
void zu___EventQueueImpWriteEvent( ZU___EVENT_QUEUE_IMP *imp, ZU_OBJ *event )
{
    ZU_ASSERT( imp );
    ZU_ASSERT( event );
    ZU_ALERT *alert = nullptr;
    zu___MonitorEnterInline( imp->monitor );
    if ( !imp->halted && zu___EventSetInsert( &imp->set, event ) ) {
        if ( imp->vector->length == 0 ) {
            alert = zuAlertRetain( imp->alert );
        }
        zuVectorPush( &imp->vector, event );
    }
    zu___MonitorLeaveInline( imp->monitor );
    if ( alert ) {
        zuAlertSet( alert );
        ZU_REF_RELEASE( alert );
    }
}
ZU_OBJ *zu___EventQueueImpReadEvent( ZU___EVENT_QUEUE_IMP *imp )
{
    ZU_ASSERT( imp );
    ZU_OBJ *event = nullptr;
    zu___MonitorEnterInline( imp->monitor );
    ZU_ASSERT( !imp->halted );
    if ( imp->vector->length > 0 ) {
        event = zuVectorUnshift( &imp->vector );
        zu___EventSetRemove( &imp->set, event );
    }
    if ( imp->vector->length == 0 ) {
        zuAlertUnset( imp->alert );
    }
    zu___MonitorLeaveInline( imp->monitor );
    return event;
}

// Listeners
static ZU_ALERT *eventQueueImpAlert( ZU___EVENT_QUEUE_IMP *imp )
{
    zuMonitorEnter( imp->monitor );
    ZU_ASSERT( !imp->halted );
    ZU_ALERT *alert = zuAlertRetain( imp->alert );
    zuMonitorLeave( imp->monitor );
    return alert;
}
void zu___EventQueueImpReadEventAddAlertable( ZU___EVENT_QUEUE_IMP *imp, ZU_ALERTABLE *alb )
{
    ZU_ASSERT( imp );
    ZU_ASSERT( alb );
    ZU_ALERT *alert = eventQueueImpAlert( imp );
    zuAlertAddAlertable( alert, alb );
    ZU_REF_RELEASE( alert );
}
void zu___EventQueueImpReadEventDelAlertable( ZU___EVENT_QUEUE_IMP *imp, ZU_ALERTABLE *alb )
{
    ZU_ASSERT( imp );
    ZU_ASSERT( alb );
    ZU_ALERT *alert = eventQueueImpAlert( imp );
    zuAlertDelAlertable( alert, alb );
    ZU_REF_RELEASE( alert );
}
