#include "zu/sys/zu_fork_internal.h"

// Processes do not fork here.
void zu___ForkRegister( void ( * )( ZU___FORK_STEP step ) )
{
}
