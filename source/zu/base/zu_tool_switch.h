// ZU_TOOL_SWITCH: the tools that one program carries, chosen by the first word of its command line.
//
//     prog compress -9 file     runs the tool "compress" with "-9" and "file"
//     prog comp -9 file         the same, if no other name begins with "comp"
//
// A copy-on-write value; zu_obj.h tells what holds for all of them.  What is wrong with a command line is printed, as
// zu_print.h tells, without line ends.
//
// `Cstr` forms take `toolLength` bytes of narrow text, `Wcstr` forms as many units of UTF-16, -1 for terminated text.
#pragma once

#include "zu/base/zu_string.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

typedef struct ZU_TOOL_SWITCH ZU_TOOL_SWITCH;
// zuToolSwitchRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_TOOL_SWITCH, zuToolSwitch )

/// A tool: gets the command line behind its own name and what zuToolSwitchRunTool was given, and tells whether it has
/// succeeded.
typedef ZU_BOOL ( *ZU_TOOL_SWITCH_TOOL_FUNC )( ZU_VECTOR *argv, void *context );

// Creation
/// Returns a new switch without tools.
ZU_API ZU_TOOL_SWITCH *zuToolSwitchCreate( void );
/// Returns a new object with the tools of `ts`.
ZU_API ZU_TOOL_SWITCH *zuToolSwitchCreateFrom( ZU_TOOL_SWITCH *ts );

// Setting a tool; null in place of a function does nothing and succeeds
/// Enters or replaces the tool `tool`.
ZU_API void zuToolSwitchSetTool( ZU_TOOL_SWITCH **ts, ZU_STRING *tool, ZU_TOOL_SWITCH_TOOL_FUNC toolFunc );
/// Enters or replaces a tool of a narrow name.
ZU_API void zuToolSwitchSetToolCstr( ZU_TOOL_SWITCH **ts, const char *tool, ZU_INT toolLength,
                                     ZU_TOOL_SWITCH_TOOL_FUNC toolFunc );
/// Enters or replaces a tool of a UTF-16 name.
ZU_API void zuToolSwitchSetToolWcstr( ZU_TOOL_SWITCH **ts, const char16_t *tool, ZU_INT toolLength,
                                      ZU_TOOL_SWITCH_TOOL_FUNC toolFunc );

// Deletion.  A shared switch is copied even if it does not have the tool.
/// Removes the tool `tool`, if it is there.
ZU_API void zuToolSwitchDelTool( ZU_TOOL_SWITCH **ts, ZU_STRING *tool );
/// Removes the tool of a narrow name, if it is there.
ZU_API void zuToolSwitchDelToolCstr( ZU_TOOL_SWITCH **ts, const char *tool, ZU_INT toolLength );
/// Removes the tool of a UTF-16 name, if it is there.
ZU_API void zuToolSwitchDelToolWcstr( ZU_TOOL_SWITCH **ts, const char16_t *tool, ZU_INT toolLength );

// Looking tools up
/// Tells whether there is the tool `tool`.
ZU_API ZU_BOOL zuToolSwitchHasTool( ZU_TOOL_SWITCH *ts, ZU_STRING *tool );
/// Tells whether there is a tool of a narrow name.
ZU_API ZU_BOOL zuToolSwitchHasToolCstr( ZU_TOOL_SWITCH *ts, const char *tool, ZU_INT toolLength );
/// Tells whether there is a tool of a UTF-16 name.
ZU_API ZU_BOOL zuToolSwitchHasToolWcstr( ZU_TOOL_SWITCH *ts, const char16_t *tool, ZU_INT toolLength );
/// Returns the names of all tools as strings, in ascending order.
ZU_API ZU_VECTOR *zuToolSwitchToolsVector( ZU_TOOL_SWITCH *ts );

// Running
/// Runs the tool that the text of the first element of `argv` names, or is the beginning of, with the elements behind
/// it and `context`, and returns what the tool returned.  Where the element is missing, or names none or several, it
/// prints that and the names, and returns false.  `argv` itself stays as it is.
ZU_API ZU_BOOL zuToolSwitchRunTool( ZU_TOOL_SWITCH *ts, ZU_VECTOR *argv, void *context );

// For authors of classes and modules
/// ZU___TOOL_SWITCH_TOOL: what a switch knows of a tool.
typedef struct ZU___TOOL_SWITCH_TOOL ZU___TOOL_SWITCH_TOOL;
// zu___ToolSwitchToolRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU___TOOL_SWITCH_TOOL, zu___ToolSwitchTool )

ZU_END_DECLS
