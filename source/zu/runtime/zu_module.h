// ZU_MODULE: a unit of code with an identity; the library itself is the module "zu".
//
// Modules are static objects: they are never freed, and need not be retained.  They are ordered by name, and print as it.
#pragma once

#include "zu/runtime/zu_sort.h"

ZU_BEGIN_DECLS

// zuModuleRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_MODULE, zuModule )

/// Returns the library's own module, not retained.
ZU_API ZU_MODULE *zuModule( void );

// For authors of classes and modules

// What a module says of itself: the stable contract between the library and a module that was built elsewhere.  All
// texts are terminated and static.  A product field that is null or -1 places no condition on the process.
typedef struct ZU___MODULE_RECORD {
    ZU_INT      recordVersion; // ZU___MODULE_RECORD_VERSION
    const char *productName;
    const char *productFriendlyName;
    ZU_INT      productVersionMajor;
    ZU_INT      productVersionMinor;
    ZU_INT      productVersionRelease;
    const char *productBuildTime;
    const char *productVendorName;
    const char *productCopyright;
    const char *name;        // such as "zu"
    const char *description; // one line for a human reader
    const char *version;     // such as "1.0"
    const char *deps;        // modules that must be loaded before this one, separated by single blanks
    const char *exts;        // modules that are loaded behind it where they exist, likewise
} ZU___MODULE_RECORD;

#define ZU___MODULE_RECORD_VERSION ( (ZU_INT)2 )

struct ZU_MODULE {
    ZU_OBJ              obj;
    ZU___MODULE_RECORD *moduleRecord;
    ZU_BOOL ( *loadFunc )( void );        // each of the five functions may be null
    void ( *prepareUnloadFunc )( void );
    void ( *beginUnloadFunc )( void );
    void ( *endUnloadFunc )( void );
    void *( *personalityFunc )( void *argument1, void *argument2 );
    uint32_t sorts;      // the module's sorts that have live objects; atomic
    ZU_SORT *sortsFirst; // those sorts, kept with the object database
    ZU_SORT *sortsLast;
};

ZU_API extern ZU_MODULE zu___module;
ZU_API extern ZU___MODULE_RECORD zu___module_record;
/// A text that tells a person who looks into the file what it was built from.
ZU_API extern const char *const zu___module_version_string;

ZU_END_DECLS
