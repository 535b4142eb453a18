// The registers of a thread, as each processor and its system know them.

#include "zu/sys/zu_abort_posix_internal.h"

#include <csignal>
#include <cstring>
#include <ucontext.h>

#if defined( __x86_64__ ) || defined( __i386__ )

#ifdef __x86_64__
static constexpr int INSTRUCTION = REG_RIP;
static constexpr int STACK = REG_RSP;
#else
static constexpr int INSTRUCTION = REG_EIP;
static constexpr int STACK = REG_ESP;
#endif
static constexpr greg_t PAGE_FAULT = 14; // other faults tell neither an address nor an access
static constexpr greg_t PAGE_FAULT_WRITE = 2;
static constexpr greg_t PAGE_FAULT_FETCH = 16;

ZU___ABORT_REGISTERS zu___AbortReadRegisters( const void *registers, uintptr_t )
{
    const greg_t *machine = ( (const ucontext_t *)registers )->uc_mcontext.gregs;
    ZU___ABORT_REGISTERS result = { (uintptr_t)machine[ INSTRUCTION ], (uintptr_t)machine[ STACK ],
                                    ZU___ABORT_ACCESS_UNKNOWN };
    if ( machine[ REG_TRAPNO ] == PAGE_FAULT ) {
        greg_t error = machine[ REG_ERR ];
        result.access = ( error & PAGE_FAULT_FETCH ) != 0   ? ZU___ABORT_ACCESS_EXECUTE
                        : ( error & PAGE_FAULT_WRITE ) != 0 ? ZU___ABORT_ACCESS_WRITE
                                                            : ZU___ABORT_ACCESS_READ;
    }
    return result;
}
uintptr_t zu___AbortReturnToCaller( void *registers )
{
    greg_t *machine = ( (ucontext_t *)registers )->uc_mcontext.gregs;
    machine[ INSTRUCTION ] = *(greg_t *)machine[ STACK ];
    machine[ STACK ] += (greg_t)sizeof( greg_t );
    return (uintptr_t)machine[ INSTRUCTION ];
}

#elif defined( __aarch64__ )

static constexpr uint32_t SYNDROME_MAGIC = 0x45535201;
static constexpr uint64_t SYNDROME_WRITE = 1 << 6;
static constexpr uint64_t FETCH_BY_PROGRAM = 0x20; // classes of exceptions
static constexpr uint64_t DATA_BY_PROGRAM = 0x24;

struct ABORT_SYNDROME {
    uint32_t magic;
    uint32_t size;
    uint64_t syndrome;
};
ZU___ABORT_REGISTERS zu___AbortReadRegisters( const void *registers, uintptr_t )
{
    const mcontext_t *machine = &( (const ucontext_t *)registers )->uc_mcontext;
    ZU___ABORT_REGISTERS result = { (uintptr_t)machine->pc, (uintptr_t)machine->sp, ZU___ABORT_ACCESS_UNKNOWN };
    // Records of various kinds, each with its size, up to one of no size
    ABORT_SYNDROME record;
    for ( size_t offset = 0; offset + sizeof record <= sizeof machine->__reserved; offset += record.size ) {
        memcpy( &record, machine->__reserved + offset, sizeof record );
        if ( record.size == 0 ) {
            break;
        }
        uint64_t kind = record.syndrome >> 26 & 0x3F;
        if ( record.magic == SYNDROME_MAGIC && kind == FETCH_BY_PROGRAM ) {
            result.access = ZU___ABORT_ACCESS_EXECUTE;
        } else if ( record.magic == SYNDROME_MAGIC && kind == DATA_BY_PROGRAM ) {
            result.access = record.syndrome & SYNDROME_WRITE ? ZU___ABORT_ACCESS_WRITE : ZU___ABORT_ACCESS_READ;
        }
    }
    return result;
}
uintptr_t zu___AbortReturnToCaller( void *registers )
{
    mcontext_t *machine = &( (ucontext_t *)registers )->uc_mcontext;
    machine->pc = machine->regs[ 30 ];
    return (uintptr_t)machine->pc;
}

#elif defined( __riscv )

// The system does not tell what was tried, and so the instruction has to.
static constexpr uint32_t OPCODE_STORE = 0x23;
static constexpr uint32_t OPCODE_STORE_REAL = 0x27;
static constexpr uint32_t OPCODE_ATOMIC = 0x2F;
static constexpr int COMPRESSED_STORE = 5; // and above

ZU___ABORT_REGISTERS zu___AbortReadRegisters( const void *registers, uintptr_t address )
{
    const __riscv_mc_gp_state &machine = ( (const ucontext_t *)registers )->uc_mcontext.__gregs;
    uintptr_t instruction = machine[ REG_PC ];
    uintptr_t stack = machine[ REG_SP ];
    if ( address == instruction ) {
        return { instruction, stack, ZU___ABORT_ACCESS_EXECUTE }; // there is none to read
    }
    uint16_t half;
    memcpy( &half, (const void *)instruction, sizeof half );
    uint32_t opcode = half & 0x7F;
    // Those of 16 bits are loads and stores where the bits 0 and 13 to 15 say so.
    bool writes = ( half & 3 ) == 3 ? opcode == OPCODE_STORE || opcode == OPCODE_STORE_REAL || opcode == OPCODE_ATOMIC
                                    : ( half & 1 ) == 0 && half >> 13 >= COMPRESSED_STORE;
    return { instruction, stack, writes ? ZU___ABORT_ACCESS_WRITE : ZU___ABORT_ACCESS_READ };
}
uintptr_t zu___AbortReturnToCaller( void *registers )
{
    __riscv_mc_gp_state *machine = &( (ucontext_t *)registers )->uc_mcontext.__gregs;
    ( *machine )[ REG_PC ] = ( *machine )[ REG_RA ];
    return ( *machine )[ REG_PC ];
}

#elif defined( __arm__ )

static constexpr unsigned long FAULT_STATUS_WRITE = 1 << 11;

ZU___ABORT_REGISTERS zu___AbortReadRegisters( const void *registers, uintptr_t )
{
    const mcontext_t *machine = &( (const ucontext_t *)registers )->uc_mcontext;
    return { machine->arm_pc, machine->arm_sp,
             machine->error_code & FAULT_STATUS_WRITE ? ZU___ABORT_ACCESS_WRITE : ZU___ABORT_ACCESS_READ };
}
uintptr_t zu___AbortReturnToCaller( void *registers )
{
    mcontext_t *machine = &( (ucontext_t *)registers )->uc_mcontext;
    machine->arm_pc = machine->arm_lr;
    return machine->arm_pc;
}

#endif
