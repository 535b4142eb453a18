// zu_debug_print.h: text for developers, on the channel of the debugger.
//
// That is a channel which many programs share, and so the product's name, a colon and a blank stand ahead of each text.
// On Linux it is the system log, at its debug level.  No line end is added and nothing is buffered; callable from any
// thread.
//
//     zuDebugPrint                    a string
//     zuDebugPrintCstr                narrow text of `length` bytes, -1: terminated
//     zuDebugPrintWcstr               UTF-16 text of `length` units, -1: terminated
//     zuDebugPrintFormat              text by a format and further arguments, as zu_string_format.h tells
//     zuDebugPrintFormatArgList       text by a format and a cursor
//     zuDebugPrintFormatCstr          text by a narrow format of `length` bytes, -1: terminated, and further arguments
//     zuDebugPrintFormatCstrArgList   text by the same and a cursor
//     zuDebugPrintFormatWcstr         text by a UTF-16 format of `length` units, -1: terminated, and further arguments
//     zuDebugPrintFormatWcstrArgList  text by the same and a cursor
//     zuDebugPrintLines               each element of a vector, by a call with its text
//     zuDebugPrintStackTrace          a stack trace, whose first line is this function, on the print function
//
// A format must never come from outside; text from there goes through "%s".
#pragma once

#include "zu/base/zu_stack_trace.h"

#include <stdarg.h>

ZU_BEGIN_DECLS

/// Sends `zus`.
ZU_API void zuDebugPrint( ZU_STRING *zus );
/// Sends narrow text.
ZU_API void zuDebugPrintCstr( const char *cstr, ZU_INT length );
/// Sends UTF-16 text.
ZU_API void zuDebugPrintWcstr( const char16_t *wcstr, ZU_INT length );
/// Sends text made by `format` and further arguments.
ZU_API void zuDebugPrintFormat( ZU_STRING *format, ... );
/// Sends text made by `format` and a cursor.
ZU_API void zuDebugPrintFormatArgList( ZU_STRING *format, va_list args );
/// Sends text made by a narrow `format` and further arguments.
ZU_API void zuDebugPrintFormatCstr( const char *format, ZU_INT length, ... );
/// Sends text made by a narrow `format` and a cursor.
ZU_API void zuDebugPrintFormatCstrArgList( const char *format, ZU_INT length, va_list args );
/// Sends text made by a UTF-16 `format` and further arguments.
ZU_API void zuDebugPrintFormatWcstr( const char16_t *format, ZU_INT length, ... );
/// Sends text made by a UTF-16 `format` and a cursor.
ZU_API void zuDebugPrintFormatWcstrArgList( const char16_t *format, ZU_INT length, va_list args );
/// Sends the text of each element of `lines`, as zuObjToString makes it.
ZU_API void zuDebugPrintLines( ZU_VECTOR *lines );
/// Prints a stack trace of the calling thread as zuPrintStackTrace does: on the print function, not to the debugger.
ZU_API void zuDebugPrintStackTrace( void );

// For authors of classes and modules

/// Has nothing to do; the channel is open at any time.
ZU_API void zu___DebugPrintStartup( void );
/// Has nothing to do.
ZU_API void zu___DebugPrintShutdown( void );

ZU_END_DECLS
