// zu_tag_set_internal.h: the inside of ZU_TAG_SET, for the files that share it.
#pragma once

#include "zu/base/zu_dict_internal.h"
#include "zu/tag/zu_tag_set.h"

ZU_BEGIN_DECLS

struct ZU_TAG_SET {
    ZU_OBJ obj;
    ZU_DICT *dict; // from each tag to itself
};

ZU_END_DECLS
