// zu.h: the whole interface, by subject.
#pragma once

// zu_objects.h: what all classes share, the classes themselves, modules, start and stop, and the one failure path.
#include "zu/zu_objects.h"

// zu_text.h: strings, formats, numbers as text, and the character data behind them.
#include "zu/zu_text.h"

// zu_containers.h: sequences, maps, and sets of tags.
#include "zu/zu_containers.h"

// zu_settings.h: stores, named constants, and the command line.
#include "zu/zu_settings.h"

// zu_bytes.h: buffers, values as bytes, streams, files, and character sets.
#include "zu/zu_bytes.h"

// zu_clock.h: moments of the calendar, time zones, spans of time, and timers.
#include "zu/zu_clock.h"

// zu_threads.h: what runs, what waits, and what tells whom.
#include "zu/zu_threads.h"

// zu_platform.h: product and machine, environment, and printing.
#include "zu/zu_platform.h"
