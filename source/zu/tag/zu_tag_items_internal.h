// zu_tag_items_internal.h: what the store forms of tags have in common, and the dicts from tags to objects that have
// one each, which definition sets and rewrites consist of.
#pragma once

#include "zu/base/zu_dict_internal.h"
#include "zu/base/zu_store.h"
#include "zu/tag/zu_tag_set.h"

ZU_BEGIN_DECLS

// A class of objects that have a tag.
typedef struct ZU___TAG_ITEM_CLASS {
    ZU_STRING *( *tag )( ZU_OBJ *item );         // returns a reference
    ZU_STORE *( *store )( ZU_OBJ *item );        // returns a new store
    ZU_OBJ *( *tryRestore )( ZU_STORE *stored ); // returns a new object; null if the store holds none
} ZU___TAG_ITEM_CLASS;

// Returns the dict from the tags of the items of `vec` to the items.  Of items with one tag the last stays.
ZU_DICT *zu___TagItemsCreate( ZU_VECTOR *vec, const ZU___TAG_ITEM_CLASS *itemClass );
// Returns a list of what the items are stored as, in ascending order of their tags.
ZU_STORE *zu___TagItemsStore( ZU_DICT *items, const ZU___TAG_ITEM_CLASS *itemClass );
// Returns the dict of all items in the list at the address `address` of `store`.  What holds no item is skipped, a
// missing list is an empty one, and of items with one tag the last stays.
ZU_DICT *zu___TagItemsRestore( ZU_STORE *store, const char *address, const ZU___TAG_ITEM_CLASS *itemClass );

// Sets a value, and gives it up.
void zu___TagStoreValueUse( ZU_STORE **store, const char *address, ZU_STRING *value );
// Returns the tag at the address `address` of `store`; null if there is none.
ZU_STRING *zu___TagRestoreTag( ZU_STORE *store, const char *address );
// Returns the constant whose name stands at the address `address` of `store`; -1 if there is none.
ZU_INT zu___TagRestoreConstant( ZU_STORE *store, const char *address, ZU_INT ( *fromString )( ZU_STRING *zus ) );

ZU_END_DECLS
