#include "zu/base/zu_random_internal.h"

#include <cerrno>
#include <sys/random.h>

bool zu___RandomTryFillStrong( uint8_t *bytes, ZU_INT byteCount )
{
    ssize_t filled;
    do {
        filled = getrandom( bytes, (size_t)byteCount, 0 );
    } while ( filled < 0 && errno == EINTR ); // which happens only until the generator is ready
    return filled == byteCount;
}
