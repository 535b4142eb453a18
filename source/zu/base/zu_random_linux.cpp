#include "zu/base/zu_random_internal.h"

#include <cerrno>
#include <pthread.h>
#include <sys/random.h>

bool zu___RandomTryFillStrong( uint8_t *bytes, ZU_INT byteCount )
{
    ssize_t filled;
    do {
        filled = getrandom( bytes, (size_t)byteCount, 0 );
    } while ( filled < 0 && errno == EINTR ); // which happens only until the generator is ready
    return filled == byteCount;
}

void zu___RandomRegisterFork( void ( *prepare )( void ), void ( *parent )( void ), void ( *child )( void ) )
{
    ZU_ASSERT( pthread_atfork( prepare, parent, child ) == 0 );
}
