// zu_runtime_hardware.h: the kinds of hardware that products are built for, a ZU_INT each.
//
// Each has a name, such as "ZU_RUNTIME_HARDWARE_X64", an identifier for file names, "x64", and a name for human
// readers, "x86 (64 bit)".  A value that is none of the constants aborts everywhere.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

#define ZU_RUNTIME_HARDWARE_X32     ( (ZU_INT)0 )
#define ZU_RUNTIME_HARDWARE_X64     ( (ZU_INT)1 )
#define ZU_RUNTIME_HARDWARE_RPI2    ( (ZU_INT)2 )
#define ZU_RUNTIME_HARDWARE_RPI3    ( (ZU_INT)3 )
#define ZU_RUNTIME_HARDWARE_ARMHF   ( (ZU_INT)4 )
#define ZU_RUNTIME_HARDWARE_ARM64   ( (ZU_INT)5 )
#define ZU_RUNTIME_HARDWARE_RISCV64 ( (ZU_INT)6 )

/// Tells whether `hw` is one of the constants.
#define ZU_RUNTIME_HARDWARE_OK( hw ) ( ( hw ) >= ZU_RUNTIME_HARDWARE_X32 && ( hw ) <= ZU_RUNTIME_HARDWARE_RISCV64 )

/// Returns the hardware that the library was built for.
ZU_API ZU_INT zuRuntimeHardware( void );
/// Returns the value of a name, or of a number that is one of the constants; -1 for other texts.
ZU_API ZU_INT zuRuntimeHardwareFromString( ZU_STRING *zus );
/// Returns the name.
ZU_API ZU_STRING *zuRuntimeHardwareToString( ZU_INT hw );
/// Returns the value of an identifier, -1 for other texts.
ZU_API ZU_INT zuRuntimeHardwareFromIdentifier( ZU_STRING *identifier );
/// Returns the identifier.
ZU_API ZU_STRING *zuRuntimeHardwareToIdentifier( ZU_INT hw );
/// Returns the name for human readers.
ZU_API ZU_STRING *zuRuntimeHardwareFriendlyName( ZU_INT hw );

// Families
/// Tells whether `hw` is an x86, of 32 or 64 bits.
ZU_API ZU_BOOL zuRuntimeHardwareIsIntel( ZU_INT hw );
/// Tells whether `hw` is one of the four kinds of ARM.
ZU_API ZU_BOOL zuRuntimeHardwareIsArm( ZU_INT hw );
/// Tells whether `hw` is a RISC-V.
ZU_API ZU_BOOL zuRuntimeHardwareIsRiscv( ZU_INT hw );
/// Tells whether numbers have their lowest byte first: all kinds do.
ZU_API ZU_BOOL zuRuntimeHardwareIsLittleEndian( ZU_INT hw );
/// Tells whether numbers have their highest byte first: no kind does.
ZU_API ZU_BOOL zuRuntimeHardwareIsBigEndian( ZU_INT hw );

// For authors of classes and modules

/// Returns the name for human readers as a static text; usable without start-up.
ZU_API const char *zu___RuntimeHardwareFriendlyNameCstr( ZU_INT hw );
/// Makes the names ready.
ZU_API void zu___RuntimeHardwareStartup( void );
/// Releases the names.
ZU_API void zu___RuntimeHardwareShutdown( void );

ZU_END_DECLS
