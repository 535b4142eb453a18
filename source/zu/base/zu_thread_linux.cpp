#include "zu/base/zu_thread_internal.h"

#include <cstring>
#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

static constexpr size_t NAME_BYTES = 16; // that the system keeps of a thread's name, terminator included

// Nice values by priority, relative to the process's; the lowest is a policy of its own.
static constexpr int NICE[] = { 0, 10, 5, 0, -5, -10, -20 };
static_assert( sizeof NICE / sizeof NICE[ 0 ] == ZU_THREAD_PRIORITY_CRITICAL + 1 );

void zu___ThreadApplyPriority( ZU_THREAD_PRIORITY prio )
{
    // A new thread comes with the policy and nice value of the one that has made it.
    int policy = sched_getscheduler( 0 );
    int wanted = prio == ZU_THREAD_PRIORITY_IDLE ? SCHED_IDLE : policy == SCHED_IDLE ? SCHED_OTHER : policy;
    if ( policy != wanted ) {
        struct sched_param param = {};
        sched_setscheduler( 0, wanted, &param );
    }
    // Of tasks: the first thread, whose nice value is the process's, and the caller itself.
    int nice = getpriority( PRIO_PROCESS, (id_t)getpid() ) + NICE[ prio ];
    if ( getpriority( PRIO_PROCESS, 0 ) != nice ) {
        setpriority( PRIO_PROCESS, 0, nice );
    }
}

void zu___ThreadSetSystemName( const char *name )
{
    char cut[ NAME_BYTES ];
    size_t length = strnlen( name, NAME_BYTES - 1 );
    // Not within a character
    while ( length > 0 && name[ length ] && ( name[ length ] & 0xC0 ) == 0x80 ) {
        length--;
    }
    memcpy( cut, name, length );
    cut[ length ] = 0;
    pthread_setname_np( pthread_self(), cut );
}
