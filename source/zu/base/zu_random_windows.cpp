#include "zu/base/zu_random_internal.h"

#include <windows.h>

#include <wincrypt.h>

// The provider, opened by the first call and kept as long as the process lives; 0: none.
static HCRYPTPROV provider = 0;

static HCRYPTPROV randomProvider()
{
    HCRYPTPROV opened = __atomic_load_n( &provider, __ATOMIC_ACQUIRE );
    if ( opened ) {
        return opened;
    }
    if ( !CryptAcquireContextW( &opened, nullptr, nullptr, PROV_RSA_FULL,
                                CRYPT_VERIFYCONTEXT | CRYPT_SILENT | CRYPT_MACHINE_KEYSET ) ) {
        return 0;
    }
    HCRYPTPROV other = 0;
    if ( !__atomic_compare_exchange_n( &provider, &other, opened, false, __ATOMIC_RELEASE, __ATOMIC_ACQUIRE ) ) {
        CryptReleaseContext( opened, 0 );
        return other;
    }
    return opened;
}
bool zu___RandomTryFillStrong( uint8_t *bytes, ZU_INT byteCount )
{
    HCRYPTPROV opened = randomProvider();
    return opened && CryptGenRandom( opened, (DWORD)byteCount, bytes );
}
