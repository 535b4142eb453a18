// zu_name.h: names in the library's two styles, upper case (ZU_FORMAT_FLAG_ZEROPAD) and camel case (zuStringCreate).
//
// A private name has three underscores behind its prefix (ZU___SORT, zu___ObjCreate); it passes only with
// `allowPrivate`.  In upper case at most one underscore may stand ahead of them, or another three; in camel case at
// most one upper-case letter, and one must follow.  All functions are callable from any thread.
#pragma once

#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Tells whether `zus` is a name in upper-case style: words of A to Z and 0 to 9, divided by single underscores, the
/// first character no digit.
ZU_API ZU_BOOL zuNameUpperCaseOk( ZU_STRING *zus, ZU_BOOL allowPrivate );
/// Tells whether `zus` is a name in camel-case style: letters a to z and A to Z and digits, beginning with a to z.
ZU_API ZU_BOOL zuNameCamelCaseOk( ZU_STRING *zus, ZU_BOOL allowPrivate );
/// Tells whether `zus` is a name in either style.
ZU_API ZU_BOOL zuNameOk( ZU_STRING *zus, ZU_BOOL allowPrivate );
/// Tells whether the name `zus` is private; a text that is no name aborts.
ZU_API ZU_BOOL zuNamePrivate( ZU_STRING *zus );

ZU_END_DECLS
