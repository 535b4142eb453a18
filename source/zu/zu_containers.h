// zu_containers.h: sequences, maps, and sets of tags.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// ZU_VECTOR: an ordered sequence of objects, of any classes, mixed as well: an array, list, stack or queue.
#include "zu/base/zu_vector.h"

// zu_vector_sort.h: bringing the items of a vector in order.
#include "zu/base/zu_vector_sort.h"

// zu_vector_cursor.h: walking over a vector without a reference for each item.
#include "zu/base/zu_vector_cursor.h"

// ZU_DICT: a map, or dictionary, from objects to objects, sorted by key.
#include "zu/base/zu_dict.h"

// zu_dict_cursor.h: walking over a dict without a reference for each key and value.
#include "zu/base/zu_dict_cursor.h"

// ZU_RANGE_MAP: a map from ranges of integers to objects.
#include "zu/base/zu_range_map.h"

// ZU_PRIORITY_MAP: objects in the order of priorities that are given to them.
#include "zu/base/zu_priority_map.h"

// ZU_TAG_SET: a set of tags, which are names that programs attach to things.
#include "zu/tag/zu_tag_set.h"

// ZU_TAG_MATCH: a condition on a tag set: tags to look for, and how many of them the set is to hold.
#include "zu/tag/zu_tag_match.h"

// zu_tag_match_type.h: how many of its tags a ZU_TAG_MATCH wants a set to hold, an enumeration of four values.
#include "zu/tag/zu_tag_match_type.h"

// ZU_TAG_REWRITE: a transformation of tag sets: an operation for each of some tags, and what becomes of all others.
#include "zu/tag/zu_tag_rewrite.h"

// ZU_TAG_REWRITE_OPERATION: what a ZU_TAG_REWRITE does with one tag.
#include "zu/tag/zu_tag_rewrite_operation.h"

// zu_tag_rewrite_operation_type.h: what a ZU_TAG_REWRITE_OPERATION does to its tag, an enumeration of three values.
#include "zu/tag/zu_tag_rewrite_operation_type.h"

// zu_tag_color.h: the colours in which tags are shown, an enumeration of ten values.
#include "zu/tag/zu_tag_color.h"

// ZU_TAG_DEFINITION: what is known of a tag beside its name: a comment and a colour, for those who show it.
#include "zu/tag/zu_tag_definition.h"

// ZU_TAG_DEFINITION_SET: the definitions of tags that belong to one configuration, by tag.
#include "zu/tag/zu_tag_definition_set.h"

// zu_reserve.h: room for what is going to be added.
#include "zu/base/zu_reserve.h"
