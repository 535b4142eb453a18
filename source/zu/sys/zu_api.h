// zu_api.h: linkage of the interface, and the few words that C and C++ spell differently.
//
// Every public header includes this one first.  Nothing here knows the library's types.
#pragma once

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <uchar.h> // char16_t
#endif

#ifdef __cplusplus
#define ZU_BEGIN_DECLS extern "C" {
#define ZU_END_DECLS   }
#else
#define ZU_BEGIN_DECLS
#define ZU_END_DECLS
#endif

/// Marks a function that the shared library exports; everything else is hidden.  Callers take its address from the
/// table that the loader fills and jump once, not by way of a stub that jumps again; clang does so by -fno-plt only.
#if __has_attribute( noplt )
#define ZU_API __attribute__( ( visibility( "default" ), noplt ) )
#else
#define ZU_API ZU_API_DATA
#endif
/// Marks a datum that the shared library exports.
#define ZU_API_DATA __attribute__( ( visibility( "default" ) ) )

/// Marks a function that never returns; the compiler moves the paths that lead to it out of the way.
#define ZU_NORETURN __attribute__( ( noreturn, cold ) )

// Conditions that nearly always have one value.
#define ZU___LIKELY( condition )   __builtin_expect( !!( condition ), 1 )
#define ZU___UNLIKELY( condition ) __builtin_expect( !!( condition ), 0 )

// ZU___INLINE_TWIN gives an exported function a second body that is only ever inlined: the exported one serves calls
// through pointers, other languages, and the rare path of the twin, which reaches it as `outlined`.  Both names mean
// one symbol; the header writes
//
//     ZU_API ZU_X *zuXRetain( ZU_X *obj );
//     ZU_API ZU_X *zu___outlined_zuXRetain( ZU_X *obj ) ZU___SYMBOL( zuXRetain );
//     ZU___INLINE_TWIN ZU_X *zuXRetain( ZU_X *obj ) { ... return zu___outlined_zuXRetain( obj ); }
//
// and the source file defines zu___outlined_zuXRetain.
#define ZU___INLINE_TWIN                extern inline __attribute__( ( gnu_inline, always_inline ) )
#define ZU___STRINGIFY_EXPANDED( text ) #text
#define ZU___STRINGIFY( text )          ZU___STRINGIFY_EXPANDED( text )
#define ZU___SYMBOL( name )             __asm__( ZU___STRINGIFY( __USER_LABEL_PREFIX__ ) #name )
