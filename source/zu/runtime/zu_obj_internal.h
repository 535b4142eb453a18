// zu_obj_internal.h: the object database and the object logs, for the files that keep and show them.
#pragma once

#include "zu/runtime/zu_obj.h"

ZU_BEGIN_DECLS

// A line of an object's log.  It holds characters, not a string: a log refers to no object and keeps none alive.
struct ZU___OBJ_LOG_ENTRY {
    ZU_INT              length; // code points
    ZU_CHAR            *chars;  // null if the line is empty
    ZU___OBJ_LOG_ENTRY *next;
};

ZU_END_DECLS
