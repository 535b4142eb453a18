// zu_format_arg_list.h: the engine behind every function with Format in its name.
//
// zu_string_format.h tells what a format may hold, and has the functions to call.
#pragma once

#include "zu/base/zu_string.h"

#include <stdarg.h>

ZU_BEGIN_DECLS

// For authors of classes and modules
/// Returns a new string: the text of `fmt` with each conversion replaced by what it makes of its arguments.
///
/// `argList` stands behind the last argument that was read when the function returns, so that a cursor can be handed
/// on. In a function that has a `va_list` as a parameter, its address is not that of a cursor: copy it with va_copy
/// first.
ZU_API ZU_STRING *zu___FormatArgList( ZU_STRING *fmt, va_list *argList );

ZU_END_DECLS
