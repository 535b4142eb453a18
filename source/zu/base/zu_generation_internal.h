// zu_generation_internal.h: the inside of ZU_GENERATION, for the files that share it.
#pragma once

#include "zu/base/zu_generation.h"
#include "zu/base/zu_monitor.h"
#include "zu/base/zu_vector.h"

ZU_BEGIN_DECLS

struct ZU_GENERATION {
    ZU_OBJ obj;
    ZU_GENERATION *parent;        // null in a root
    ZU_MONITOR *monitor;          // held while a child takes its number
    ZU_INT childGenerationNumber; // of the next child
    ZU_VECTOR *path;              // of ZU_BOXED_INT, from the root down; does not change
};

// The number of the next root.
extern ZU_INT zu___GenerationGenerationNumber;

ZU_END_DECLS
