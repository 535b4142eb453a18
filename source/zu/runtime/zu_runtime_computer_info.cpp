#include "zu/runtime/zu_runtime_computer_info.h"

#include "zu/base/zu_string_format.h"
#include "zu/runtime/zu_runtime_computer_internal.h"

#if defined( __x86_64__ ) || defined( __i386__ )
#include <cpuid.h>
#endif

static ZU_STRING *operatingSystemInfo = nullptr; // each null: not known
static ZU_STRING *cpuInfo = nullptr;

// Processor
#if defined( __x86_64__ ) || defined( __i386__ )

// The leaves of the instruction CPUID
static constexpr uint32_t LEAF_VENDOR = 0; // and the highest leaf
static constexpr uint32_t LEAF_MODEL = 1;
static constexpr uint32_t LEAF_FREQUENCY = 22;

struct COMPUTER_INFO_LEAF {
    uint32_t eax;
    uint32_t ebx;
    uint32_t ecx;
    uint32_t edx;
};
static COMPUTER_INFO_LEAF computerInfoLeaf( uint32_t number )
{
    COMPUTER_INFO_LEAF leaf;
    __cpuid_count( number, 0, leaf.eax, leaf.ebx, leaf.ecx, leaf.edx );
    return leaf;
}
static ZU_STRING *computerInfoCpu()
{
    COMPUTER_INFO_LEAF vendor = computerInfoLeaf( LEAF_VENDOR );
    const uint32_t vendorText[] = { vendor.ebx, vendor.edx, vendor.ecx };
    uint32_t eax = computerInfoLeaf( LEAF_MODEL ).eax;
    ZU_INT family = ( ( eax & 0xF00 ) | ( ( eax >> 8 ) & 0xFF000 ) ) >> 8;
    ZU_INT model = ( ( ( eax >> 8 ) & 0xF00 ) | ( eax & 0xF0 ) ) >> 4;
    ZU_STRING *info =
        zuStringCreateFromFormatCstr( "%lC, family:%!16i, model:%!16i, cores:%i", -1, (const char *)vendorText,
                                      (ZU_INT)sizeof vendorText, family, model, zu___RuntimeQueryProcessors() );
    if ( vendor.eax >= LEAF_FREQUENCY ) {
        COMPUTER_INFO_LEAF frequency = computerInfoLeaf( LEAF_FREQUENCY );
        if ( (int32_t)frequency.eax >= 0 && (int32_t)frequency.ebx >= 0 ) {
            zuStringAppendFormatCstr( &info, ", base:%i MHz, max: %i MHz", -1, (ZU_INT)frequency.eax,
                                      (ZU_INT)frequency.ebx );
        }
    }
    return info;
}

#else

static ZU_STRING *computerInfoCpu()
{
    return nullptr;
}

#endif

// Start-up
void zu___RuntimeComputerInfoStartup( void )
{
    operatingSystemInfo = zu___RuntimeQueryOperatingSystem();
    cpuInfo = computerInfoCpu();
}
void zu___RuntimeComputerInfoShutdown( void )
{
    ZU_REF_RELEASE_OPT( cpuInfo );
    ZU_REF_POISON( cpuInfo );
    ZU_REF_RELEASE_OPT( operatingSystemInfo );
    ZU_REF_POISON( operatingSystemInfo );
}

ZU_BOOL zuRuntimeHasOperatingSystemInfo( void )
{
    return operatingSystemInfo != nullptr;
}
ZU_STRING *zuRuntimeOperatingSystemInfo( void )
{
    return operatingSystemInfo ? zuStringRetain( operatingSystemInfo ) : nullptr;
}
ZU_BOOL zuRuntimeHasCpuInfo( void )
{
    return cpuInfo != nullptr;
}
ZU_STRING *zuRuntimeCpuInfo( void )
{
    return cpuInfo ? zuStringRetain( cpuInfo ) : nullptr;
}
