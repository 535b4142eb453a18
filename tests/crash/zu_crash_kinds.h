// zu_crash_kinds.h: ways for a process to end that lead to a report.
#pragma once

#include "zu/zu.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

// Each fails in a function of its own, which the report has to name; none is inlined, and no call is a jump.
#define CRASH_UNCHECKED        __attribute__( ( noinline, no_sanitize( "undefined", "address" ) ) )
#define CRASH_FUNCTION( name ) CRASH_UNCHECKED static void name()
#define CRASH_HERE             __asm__ volatile( "" ::: "memory" )

static int volatile crashSink;

CRASH_FUNCTION( crashByCheck )
{
    zuStringLength( nullptr );
    CRASH_HERE;
}
CRASH_FUNCTION( crashByRetain )
{
    zuStringRetain( nullptr );
    CRASH_HERE;
}
CRASH_FUNCTION( crashSilently )
{
    zu___Abort( nullptr, nullptr, 0, nullptr );
}
CRASH_FUNCTION( crashByRead )
{
    crashSink = *(int volatile *)nullptr;
}
CRASH_FUNCTION( crashByWrite )
{
    *(char volatile *)( uintptr_t ) "constant" = 0;
}
CRASH_FUNCTION( crashByExecute )
{
    static uintptr_t volatile target = 0;
    ( (void ( * )())target )();
    CRASH_HERE;
}
#if defined( __x86_64__ ) || defined( __i386__ ) // elsewhere the result is 0
CRASH_FUNCTION( crashByDivision )
{
    static int volatile zero = 0;
    crashSink = crashSink / zero;
}
#endif
CRASH_FUNCTION( crashByCutMapping )
{
    int file = memfd_create( "cut", 0 );
    if ( ftruncate( file, 64 ) == 0 ) {
        char *mapped = (char *)mmap( nullptr, 64, PROT_READ, MAP_SHARED, file, 0 );
        if ( ftruncate( file, 0 ) == 0 ) {
            crashSink = *(char volatile *)mapped;
        }
    }
}
CRASH_FUNCTION( crashByInstruction )
{
#if defined( __x86_64__ ) || defined( __i386__ )
    __asm__ volatile( "ud2" );
#else
    __asm__ volatile( ".word 0" );
#endif
    CRASH_HERE;
}
CRASH_FUNCTION( crashByAbort )
{
    abort();
}
CRASH_UNCHECKED static int crashRecurse( char volatile *text )
{
    char volatile frame[ 64 ];
    frame[ 0 ] = *text;
    return frame[ 0 ] == 'x' ? 0 : crashRecurse( frame ) + frame[ 0 ]; // without an end, as the compiler cannot see
}
CRASH_FUNCTION( crashByRecursion )
{
    char volatile text[] = "";
    crashSink = crashRecurse( text );
}
CRASH_FUNCTION( crashByExhaustion )
{
    zuMemAlloc( (ZU_INT)1 << 60 );
    CRASH_HERE;
}
#if !defined( __SANITIZE_ADDRESS__ ) && !defined( __SANITIZE_THREAD__ ) // which have heaps of their own
// What the C library finds there when it is next asked for memory makes it call abort(), within its own lock.
CRASH_FUNCTION( crashByBrokenHeap )
{
    void *blocks[ 16 ];
    for ( void *&block : blocks ) {
        block = malloc( 2000 );
    }
    for ( void *block : blocks ) {
        memset( block, 0xFF, 2000 + 64 );
    }
    free( blocks[ 3 ] );
    free( malloc( 3000 ) );
    CRASH_HERE;
}
#endif

// What the process ends by, and the lines between APPLICATION and STACK, blank ones
// included; # stands for any hexadecimal digits.
struct CRASH_KIND {
    const char *name;
    void ( *run )();
    const char *function; // that the stack names
    int signalNumber;
    const char *lines;
};
static const CRASH_KIND CRASH_KINDS[] = {
    { "check", crashByCheck, "crashByCheck", SIGABRT,
      "\n  ABORT\n    File      : source/zu/base/zu_string.cpp\n    Line      : #\n    Expression: zus\n" },
    { "retain", crashByRetain, "crashByRetain", SIGABRT,
      "\n  ABORT\n    Message   : stdfunc retain\n    File      : source/zu/base/zu_string.cpp\n    Line      : #\n"
      "    Expression: obj\n" },
    { "silence", crashSilently, "crashSilently", SIGABRT, "" },
    { "read", crashByRead, "crashByRead", SIGSEGV,
      "\n  EXCEPTION\n    EXCEPTION_ACCESS_VIOLATION\n    read from address 0x0000000000000000\n" },
    { "write", crashByWrite, "crashByWrite", SIGSEGV,
      "\n  EXCEPTION\n    EXCEPTION_ACCESS_VIOLATION\n    write to address 0x#\n" },
    { "execute", crashByExecute, "crashByExecute", SIGSEGV,
      "\n  EXCEPTION\n    EXCEPTION_ACCESS_VIOLATION\n    execute data (DEP) at address 0x0000000000000000\n" },
#if defined( __x86_64__ ) || defined( __i386__ )
    { "divide", crashByDivision, "crashByDivision", SIGFPE, "\n  EXCEPTION\n    EXCEPTION_INT_DIVIDE_BY_ZERO\n" },
#endif
    { "bus", crashByCutMapping, "crashByCutMapping", SIGBUS,
      "\n  EXCEPTION\n    EXCEPTION_ACCESS_VIOLATION\n    read from address 0x#\n" },
    { "illegal", crashByInstruction, "crashByInstruction", SIGILL,
      "\n  EXCEPTION\n    ExceptionCode: 0x00000004\n    ExceptionInformation[#]: 0x#\n    ExceptionInformation[#]: 0x#\n" },
    { "abort", crashByAbort, "crashByAbort", SIGABRT,
      "\n  EXCEPTION\n    ExceptionCode: 0x00000006\n    ExceptionInformation[#]: 0x#\n    ExceptionInformation[#]: 0x#\n" },
    { "recursion", crashByRecursion, "crashRecurse", SIGSEGV,
      "\n  EXCEPTION\n    EXCEPTION_STACK_OVERFLOW\n    ExceptionInformation[#]: 0x0000000000000001\n"
      "    ExceptionInformation[#]: 0x#\n" },
    { "exhaustion", crashByExhaustion, "crashByExhaustion", SIGABRT,
      "\n  ABORT\n    File      : source/zu/sys/zu_mem.cpp\n    Line      : #\n    Expression: res\n" },
#if !defined( __SANITIZE_ADDRESS__ ) && !defined( __SANITIZE_THREAD__ )
    { "heap", crashByBrokenHeap, "crashByBrokenHeap", SIGABRT,
      "\n  EXCEPTION\n    ExceptionCode: 0x00000006\n    ExceptionInformation[#]: 0x#\n    ExceptionInformation[#]: 0x#\n" },
#endif
};
