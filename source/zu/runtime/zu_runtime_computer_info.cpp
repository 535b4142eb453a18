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

// The processor is asked when the library starts for the first time: in a virtual machine each answer takes some 5 us,
// a tenth of what another start takes as a whole.
struct COMPUTER_INFO_PROCESSOR {
    bool known;
    COMPUTER_INFO_LEAF vendor;
    COMPUTER_INFO_LEAF model;
    COMPUTER_INFO_LEAF frequency; // all negative if the processor has no such leaf
};
static COMPUTER_INFO_PROCESSOR processor;

static void computerInfoAskProcessor()
{
    processor.known = true;
    processor.vendor = computerInfoLeaf( LEAF_VENDOR );
    processor.model = computerInfoLeaf( LEAF_MODEL );
    processor.frequency = processor.vendor.eax >= LEAF_FREQUENCY
                              ? computerInfoLeaf( LEAF_FREQUENCY )
                              : COMPUTER_INFO_LEAF{ UINT32_MAX, UINT32_MAX, UINT32_MAX, UINT32_MAX };
}
static ZU_STRING *computerInfoCpu()
{
    if ( !processor.known ) {
        computerInfoAskProcessor();
    }
    const uint32_t vendorText[] = { processor.vendor.ebx, processor.vendor.edx, processor.vendor.ecx };
    uint32_t eax = processor.model.eax;
    ZU_INT family = ( ( eax & 0xF00 ) | ( ( eax >> 8 ) & 0xFF000 ) ) >> 8;
    ZU_INT model = ( ( ( eax >> 8 ) & 0xF00 ) | ( eax & 0xF0 ) ) >> 4;
    ZU_STRING *info =
        zuStringCreateFromFormatCstr( "%lC, family:%!16i, model:%!16i, cores:%i", -1, (const char *)vendorText,
                                      (ZU_INT)sizeof vendorText, family, model, zu___RuntimeQueryProcessors() );
    int32_t base = (int32_t)processor.frequency.eax;
    int32_t most = (int32_t)processor.frequency.ebx;
    if ( base >= 0 && most >= 0 ) {
        zuStringAppendFormatCstr( &info, ", base:%i MHz, max: %i MHz", -1, (ZU_INT)base, (ZU_INT)most );
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
