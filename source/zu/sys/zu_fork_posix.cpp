#include "zu/sys/zu_fork_internal.h"

#include <pthread.h>

static void ( *forkFunc )( ZU___FORK_STEP step ) = nullptr;

static void forkPrepare()
{
    forkFunc( ZU___FORK_PREPARE );
}
static void forkParent()
{
    forkFunc( ZU___FORK_PARENT );
}
static void forkChild()
{
    forkFunc( ZU___FORK_CHILD );
}

void zu___ForkRegister( void ( *func )( ZU___FORK_STEP step ) )
{
    forkFunc = func;
    ZU_ASSERT( pthread_atfork( forkPrepare, forkParent, forkChild ) == 0 );
}
