// The queue that a program holds is a handle.  Listeners that write to a queue hold the inside, or a queue and what is
// attached to it would keep each other alive; when the handle ends, the inside is halted, and takes what is still
// written to it without a word.

#include "zu/base/zu_event_queue.h"

#include "zu/base/zu_alertable.h"
#include "zu/base/zu_signalable.h"
#include "zu/runtime/zu_module.h"

struct ZU_EVENT_QUEUE {
    ZU_OBJ obj;
    ZU___EVENT_QUEUE_IMP *imp; // halted when this object ends
};

static void eventQueueFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_EVENT_QUEUE =
    ZU___SORT_INITIALIZER( "ZU_EVENT_QUEUE", &zu___module, eventQueueFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_EVENT_QUEUE, zuEventQueue )

ZU_EVENT_QUEUE *zuEventQueueCreate( void )
{
    ZU_EVENT_QUEUE *eq = (ZU_EVENT_QUEUE *)zu___ObjCreate( sizeof( ZU_EVENT_QUEUE ), &zu___sort_ZU_EVENT_QUEUE );
    eq->imp = zu___EventQueueImpCreate();
    return eq;
}
static void eventQueueFree( ZU_OBJ *thisObj )
{
    ZU_EVENT_QUEUE *eq = zuEventQueueFrom( thisObj );
    ZU_ASSERT( eq );
    zu___EventQueueImpHalt( eq->imp );
    ZU_REF_RELEASE( eq->imp );
    ZU_REF_POISON( eq->imp );
}

void zuEventQueueWriteEvent( ZU_EVENT_QUEUE *eq, ZU_OBJ *event )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( event );
    zu___EventQueueImpWriteEvent( eq->imp, event );
}
ZU_OBJ *zuEventQueueReadEvent( ZU_EVENT_QUEUE *eq )
{
    ZU_ASSERT( eq );
    return zu___EventQueueImpReadEvent( eq->imp );
}
void zuEventQueueReadEventAddAlertable( ZU_EVENT_QUEUE *eq, ZU_ALERTABLE *alb )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( alb );
    zu___EventQueueImpReadEventAddAlertable( eq->imp, alb );
}
void zuEventQueueReadEventDelAlertable( ZU_EVENT_QUEUE *eq, ZU_ALERTABLE *alb )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( alb );
    zu___EventQueueImpReadEventDelAlertable( eq->imp, alb );
}

ZU_ALERTABLE *zuEventQueueCreateAlertable( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( evt );
    return zuAlertableCreateEventQueue( eq, evt );
}
ZU_SIGNALABLE *zuEventQueueCreateSignalable( ZU_EVENT_QUEUE *eq, ZU_OBJ *evt )
{
    ZU_ASSERT( eq );
    ZU_ASSERT( evt );
    return zuSignalableCreateEventQueue( eq, evt );
}

ZU___EVENT_QUEUE_IMP *zu___EventQueueImp( ZU_EVENT_QUEUE *eq )
{
    ZU_ASSERT( eq );
    return zu___EventQueueImpRetain( eq->imp );
}
