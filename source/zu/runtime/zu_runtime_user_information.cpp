#include "zu/runtime/zu_runtime_user_information.h"

#include "zu/base/zu_dict.h"
#include "zu/base/zu_threading_fork_internal.h"
#include "zu/runtime/zu_runtime_internal.h"

static ZU_REGION *userInformationRegion = nullptr; // guards the dict
static ZU_DICT *userInformationDict = nullptr;     // stores by keys

// Start-up
void zu___RuntimeUserInformationStartup( void )
{
    userInformationRegion = zuRegionCreate();
    userInformationDict = zuDictCreate();
}
void zu___RuntimeUserInformationShutdown( void )
{
    ZU_REF_RELEASE( userInformationDict );
    ZU_REF_POISON( userInformationDict );
    ZU_REF_RELEASE( userInformationRegion );
    ZU_REF_POISON( userInformationRegion );
}

void zu___RuntimeUserInformationFork( ZU___FORK_STEP step )
{
    zu___RegionFork( userInformationRegion, step );
}

void zuRuntimeSetUserInformationKey( ZU_STRING *key, ZU_STORE *store )
{
    ZU_ASSERT( key );
    ZU_ASSERT( store );
    zuRegionEnterExclusive( userInformationRegion );
    zuDictSetObjKey( &userInformationDict, zuStringObj( key ), zuStoreObj( store ) );
    zuRegionLeave( userInformationRegion );
}
void zuRuntimeDelUserInformationKey( ZU_STRING *key )
{
    ZU_ASSERT( key );
    zuRegionEnterExclusive( userInformationRegion );
    zuDictDelObjKey( &userInformationDict, zuStringObj( key ) );
    zuRegionLeave( userInformationRegion );
}

// Reading works on the dict as it stands, retained, so that the region is held for an instant only.
static ZU_DICT *userInformationSnapshot()
{
    zuRegionEnterShared( userInformationRegion );
    ZU_DICT *dict = zuDictRetain( userInformationDict );
    zuRegionLeave( userInformationRegion );
    return dict;
}
ZU_BOOL zuRuntimeHasUserInformationKey( ZU_STRING *key )
{
    ZU_ASSERT( key );
    ZU_DICT *dict = userInformationSnapshot();
    ZU_BOOL has = zuDictHasObjKey( dict, zuStringObj( key ) );
    zuDictRelease( dict );
    return has;
}
ZU_STORE *zuRuntimeUserInformationKey( ZU_STRING *key )
{
    ZU_ASSERT( key );
    ZU_DICT *dict = userInformationSnapshot();
    ZU_STORE *store = zuStoreFrom( zuDictObjKey( dict, zuStringObj( key ) ) );
    zuDictRelease( dict );
    return store;
}
ZU_STORE *zuRuntimeUserInformation( void )
{
    ZU_STORE *list = zuStoreCreate();
    ZU_DICT *dict = userInformationSnapshot();
    ZU_INT length = zuDictLength( dict );
    for ( ZU_INT i = 0; i < length; i++ ) {
        ZU_STRING *key = zuStringFrom( zuDictKeyAt( dict, i ) );
        ZU_STORE *store = zuStoreFrom( zuDictValueAt( dict, i ) );
        ZU_STORE *entry = zuStoreCreate();
        zuStoreSetValueCstr( &entry, "key", -1, key );
        zuStoreSetStoreCstr( &entry, "store", -1, store );
        zuStoreSetStoreFormatCstr( &list, "%.*A", -1, entry, length - 1, i );
        zuStoreRelease( entry );
        zuStoreRelease( store );
        zuStringRelease( key );
    }
    zuDictRelease( dict );
    return list;
}
