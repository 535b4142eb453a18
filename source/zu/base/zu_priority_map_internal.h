// zu_priority_map_internal.h: the inside of ZU_PRIORITY_MAP.
#pragma once

#include "zu/base/zu_dict.h"
#include "zu/base/zu_priority_map.h"

ZU_BEGIN_DECLS

// Both dicts hold the same entries.
struct ZU_PRIORITY_MAP {
    ZU_OBJ obj;
    ZU_DICT *entryDict; // from the entry to the object
    ZU_DICT *objDict;   // from the object to the entry
};

// The place of an object: ordered by priority, then by object.  Immutable if several maps have it.
typedef struct ZU___PRIORITY_MAP_ENTRY {
    ZU_OBJ obj;
    ZU_INT priority;
    ZU_OBJ *value;
} ZU___PRIORITY_MAP_ENTRY;

ZU_END_DECLS
