// figures.h: what the program and its two modules have agreed on: a module hands out figures, by its personality.
#pragma once

#include "zu/zu.h"

ZU_BEGIN_DECLS

// The first argument of zuModuleRunPersonality is a FIGURE_REQUEST; the result is a string to be released, which tells of
// the figure.
typedef struct FIGURE_REQUEST {
    const char *name; // of the figure
    ZU_INT size;
} FIGURE_REQUEST;

ZU_END_DECLS
