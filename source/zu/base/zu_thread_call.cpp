#include "zu/base/zu_thread_call.h"

#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_ref_internal.h"
#include "zu/runtime/zu_sort.h"

// What the thread unlatches
struct ZU___THREAD_CALL {
    ZU_OBJ obj;
    ZU_THREAD_CALL_FUNC func;
    void *argument;
};
static ZU_SORT zu___sort_ZU___THREAD_CALL =
    ZU___SORT_INITIALIZER( "ZU___THREAD_CALL", &zu___module, nullptr, nullptr, nullptr );

static void threadCallRun( void )
{
    ZU_OBJ *latched = zuThreadUnlatchArgument();
    const ZU___THREAD_CALL call = *(ZU___THREAD_CALL *)latched;
    ZU_REF_RELEASE( latched );
    call.func( call.argument );
}
ZU_THREAD *zuThreadTrySpawnCall( ZU_STRING *threadName, ZU_THREAD_CALL_FUNC threadFunc, void *argument,
                                 ZU_THREAD_PRIORITY prio )
{
    ZU_ASSERT( threadName );
    ZU_ASSERT( threadFunc );
    ZU___THREAD_CALL *call =
        (ZU___THREAD_CALL *)zu___ObjCreate( sizeof( ZU___THREAD_CALL ), &zu___sort_ZU___THREAD_CALL );
    call->func = threadFunc;
    call->argument = argument;
    ZU_THREAD *thread = zuThreadTrySpawn( threadName, threadCallRun, &call->obj, prio );
    ZU_REF_RELEASE( call );
    return thread;
}
ZU_THREAD *zuThreadTrySpawnCallCstr( const char *threadName, ZU_INT threadNameLength, ZU_THREAD_CALL_FUNC threadFunc,
                                     void *argument, ZU_THREAD_PRIORITY prio )
{
    zu___Owned name( zuStringCreateFromCstr( threadName, threadNameLength ) );
    return zuThreadTrySpawnCall( name, threadFunc, argument, prio );
}
