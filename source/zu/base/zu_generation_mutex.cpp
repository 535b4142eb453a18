// At most one generation of a line, from a parent to its children, may be admitted.  The way up is short and is walked
// each time: kept counts of admitted ancestors would have to be corrected in all descendants, which nobody knows.

#include "zu/base/zu_generation_mutex.h"

#include "zu/base/zu_dict.h"
#include "zu/base/zu_generation_internal.h"
#include "zu/runtime/zu_module.h"

struct ZU_GENERATION_MUTEX {
    ZU_OBJ obj;
    ZU_MONITOR *monitor; // held for every look at what follows
    ZU_DICT *registered; // each admitted generation to itself
};

static void generationMutexFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_GENERATION_MUTEX =
    ZU___SORT_INITIALIZER( "ZU_GENERATION_MUTEX", &zu___module, generationMutexFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_GENERATION_MUTEX, zuGenerationMutex )

ZU_GENERATION_MUTEX *zuGenerationMutexCreate( void )
{
    ZU_GENERATION_MUTEX *mutex =
        (ZU_GENERATION_MUTEX *)zu___ObjCreate( sizeof( ZU_GENERATION_MUTEX ), &zu___sort_ZU_GENERATION_MUTEX );
    mutex->monitor = zuMonitorCreate();
    mutex->registered = zuDictCreate();
    return mutex;
}
static void generationMutexFree( ZU_OBJ *thisObj )
{
    ZU_GENERATION_MUTEX *mutex = zuGenerationMutexFrom( thisObj );
    ZU_ASSERT( mutex );
    ZU_REF_RELEASE( mutex->monitor );
    ZU_REF_POISON( mutex->monitor );
    ZU_REF_RELEASE( mutex->registered );
    ZU_REF_POISON( mutex->registered );
}

ZU_BOOL zuGenerationMutexTryRegister( ZU_GENERATION_MUTEX *mutex, ZU_GENERATION *generation )
{
    ZU_ASSERT( mutex );
    ZU_ASSERT( generation );
    zuMonitorEnter( mutex->monitor );
    ZU_GENERATION *admitted = generation;
    while ( admitted && !zuDictHasObjKey( mutex->registered, zuGenerationObj( admitted ) ) ) {
        admitted = admitted->parent;
    }
    if ( !admitted ) {
        zuDictSetObjKey( &mutex->registered, zuGenerationObj( generation ), zuGenerationObj( generation ) );
    }
    zuMonitorLeave( mutex->monitor );
    return !admitted;
}
void zuGenerationMutexUnregister( ZU_GENERATION_MUTEX *mutex, ZU_GENERATION *generation )
{
    ZU_ASSERT( mutex );
    ZU_ASSERT( generation );
    zuMonitorEnter( mutex->monitor );
    zuDictDelObjKey( &mutex->registered, zuGenerationObj( generation ) );
    zuMonitorLeave( mutex->monitor );
}
