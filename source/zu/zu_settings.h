// zu_settings.h: stores, named constants, and the command line.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// ZU_STORE: settings, or configuration, in a tree: a map from addresses to texts and to further stores.
#include "zu/base/zu_store.h"

// zu_store_binary.h: stores in the binary form of ZU_ENCODER and ZU_DECODER, for machines.
#include "zu/base/zu_store_binary.h"

// zu_store_real.h: real numbers in stores, kept to the last bit.
#include "zu/base/zu_store_real.h"

// zu_store_text.h: stores as lines of text, for files and people.
#include "zu/base/zu_store_text.h"

// ZU_ENUM: names of values that are not negative, to print them and to read them.
#include "zu/base/zu_enum.h"

// ZU_FLAGSET: names of the single bits of a ZU_INT, to print and to read words of flags: "ZU_A|ZU_B".
#include "zu/base/zu_flagset.h"

// ZU_OPT_DEF: the options that a command line may have.
#include "zu/base/zu_opt_def.h"

// zu_opt_flags.h: how an option of a command line is to be treated, a ZU_INT of bits.
#include "zu/base/zu_opt_flags.h"

// ZU_OPT_SEQ: the walk over a command line, option by option, by a ZU_OPT_DEF.
#include "zu/base/zu_opt_seq.h"

// ZU_TOOL_SWITCH: the tools that one program carries, chosen by the first word of its command line.
#include "zu/base/zu_tool_switch.h"
