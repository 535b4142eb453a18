// zu_abort_posix_internal.h: what the files of the failure path for POSIX systems need of each other.
#pragma once

#include "zu/sys/zu_abort_internal.h"

ZU_BEGIN_DECLS

// In zu_abort_posix.cpp

// Learns what local time will be.
void zu___AbortLearnZone( void );

// For each system

// The name of the program, without its folder.
const char *zu___AbortProgramName( void );

// What of a thread's registers counts here.
typedef struct ZU___ABORT_REGISTERS {
    uintptr_t instruction;
    uintptr_t stack;
    uintptr_t access; // one of ZU___ABORT_ACCESS_..., or:
} ZU___ABORT_REGISTERS;
#define ZU___ABORT_ACCESS_UNKNOWN UINTPTR_MAX

// Reads the registers that a handler has been given; the access is that of a signal for an invalid one to `address`.
ZU___ABORT_REGISTERS zu___AbortReadRegisters( const void *registers, uintptr_t address );
// Changes the registers to what they would be had the function returned at whose first instruction they are.  Returns
// the address of the instruction that comes then.
uintptr_t zu___AbortReturnToCaller( void *registers );

ZU_END_DECLS
