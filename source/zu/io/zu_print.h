// zu_print.h: text to the print function that the process has given at start-up.
//
// Where no print function was given, nothing is printed.  No line end is added and nothing is buffered; each call is
// one call of the print function, and calls of several threads come one after the other.
//
//     zuPrint                    a string
//     zuPrintCstr                narrow text of `length` bytes, -1: terminated
//     zuPrintWcstr               UTF-16 text of `length` units, -1: terminated
//     zuPrintFormat              text by a format and further arguments, as zu_string_format.h tells
//     zuPrintFormatArgList       text by a format and a cursor
//     zuPrintFormatCstr          text by a narrow format of `length` bytes, -1: terminated, and further arguments
//     zuPrintFormatCstrArgList   text by the same and a cursor
//     zuPrintFormatWcstr         text by a UTF-16 format of `length` units, -1: terminated, and further arguments
//     zuPrintFormatWcstrArgList  text by the same and a cursor
//     zuPrintLines               each element of a vector, by a call with its text
//     zuPrintStackTrace          a stack trace, whose first line is this function, by a call for each line
//
// A format must never come from outside; text from there goes through "%s".
#pragma once

#include "zu/base/zu_stack_trace.h"

#include <stdarg.h>

ZU_BEGIN_DECLS

/// Prints `zus`.
ZU_API void zuPrint( ZU_STRING *zus );
/// Prints narrow text.
ZU_API void zuPrintCstr( const char *cstr, ZU_INT length );
/// Prints UTF-16 text.
ZU_API void zuPrintWcstr( const char16_t *wcstr, ZU_INT length );
/// Prints text made by `format` and further arguments.
ZU_API void zuPrintFormat( ZU_STRING *format, ... );
/// Prints text made by `format` and a cursor.
ZU_API void zuPrintFormatArgList( ZU_STRING *format, va_list args );
/// Prints text made by a narrow `format` and further arguments.
ZU_API void zuPrintFormatCstr( const char *format, ZU_INT length, ... );
/// Prints text made by a narrow `format` and a cursor.
ZU_API void zuPrintFormatCstrArgList( const char *format, ZU_INT length, va_list args );
/// Prints text made by a UTF-16 `format` and further arguments.
ZU_API void zuPrintFormatWcstr( const char16_t *format, ZU_INT length, ... );
/// Prints text made by a UTF-16 `format` and a cursor.
ZU_API void zuPrintFormatWcstrArgList( const char16_t *format, ZU_INT length, va_list args );
/// Prints the text of each element of `lines`, as zuObjToString makes it.
ZU_API void zuPrintLines( ZU_VECTOR *lines );
/// Prints a stack trace of the calling thread.
ZU_API void zuPrintStackTrace( void );
/// Prints the lines of `st`.
ZU_API void zuStackTracePrint( ZU_STACK_TRACE *st );

ZU_END_DECLS
