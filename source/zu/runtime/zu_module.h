// ZU_MODULE: a unit of code with an identity, a plug-in; the library itself is the module "zu".
//
// Further modules are shared files, loaded by name while the process runs: zu_runtime.h has the functions.  Modules are
// static objects: they are never freed, and need not be retained.  They are ordered by name, and print as it.
#pragma once

#include "zu/runtime/zu_module_version.h"
#include "zu/runtime/zu_sort.h"

ZU_BEGIN_DECLS

// zuModuleRetain, Release, From, Obj, Sort, ToString, Compare, Equals
ZU_STDFUNCS_DECLARE( ZU_MODULE, zuModule )

/// Returns the library's own module, not retained.
ZU_API ZU_MODULE *zuModule( void );
/// Returns the module's name.
ZU_API ZU_STRING *zuModuleName( ZU_MODULE *module );
/// Returns one line that tells a human reader what the module is.
ZU_API ZU_STRING *zuModuleDescription( ZU_MODULE *module );
/// Returns the module's version; one that is written wrongly in the module aborts.
ZU_API ZU_MODULE_VERSION *zuModuleVersion( ZU_MODULE *module );
/// Tells whether `moduleName` may name a module: 1 to 32 lower-case letters and digits of ASCII, a letter first, and at
/// most one underscore among them, neither first nor last.
ZU_API ZU_BOOL zuModuleNameOk( ZU_STRING *moduleName );
/// Tells whether the module can act as a main program.
ZU_API ZU_BOOL zuModuleHasPersonality( ZU_MODULE *module );
/// Lets the module act as a main program and returns what it returns.  The two arguments mean what module and caller
/// have agreed on.  The module must have a personality; that is not checked.
ZU_API void *zuModuleRunPersonality( ZU_MODULE *module, void *argument1, void *argument2 );
/// Returns a new vector of the module's sorts that have live objects, in the order in which they came to have some;
/// null unless the process keeps the object database.
ZU_API ZU_VECTOR *zuModuleSnapshotSorts( ZU_MODULE *module );
/// Returns a new vector of the live objects of all these sorts, as zuSortSnapshot does for one.
ZU_API ZU_VECTOR *zuModuleSnapshotObjects( ZU_MODULE *module );

// For authors of classes and modules
//
// A module is a shared file named "<product>-<module>.so".  With these three lines in one of its sources, in C or C++,
//
//     static ZU_BOOL gaugeLoad( void ) { ... }
//     ZU___MODULE_DECLARE( gauge )
//     ZU___MODULE_DEFINE( gauge, ZU___MODULE_ANY_PRODUCT, "Measured values", "1.0", "", "", "zelkaratr (Linux)",
//                         gaugeLoad, NULL, NULL, NULL, NULL )
//
// it is the module "gauge"; sources that define sorts repeat the declaration, and give &gauge___module as their module.

// What a module says of itself: the stable contract between the library and a module that was built elsewhere.  All
// texts are terminated and static.  A product field that is null or -1 places no condition on the process.
typedef struct ZU___MODULE_RECORD {
    ZU_INT recordVersion; // ZU___MODULE_RECORD_VERSION
    const char *productName;
    const char *productFriendlyName;
    ZU_INT productVersionMajor;
    ZU_INT productVersionMinor;
    ZU_INT productVersionRelease;
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
#define ZU___MODULE_ANY_NUMBER     ( (ZU_INT)-1 )

struct ZU_MODULE {
    ZU_OBJ obj;
    ZU___MODULE_RECORD *moduleRecord;
    // Each of the five functions may be null.  The first four run while modules are loaded and unloaded, and must not
    // load modules themselves.
    ZU_BOOL ( *loadFunc )( void );       // what it depends on is loaded; false fails the load
    void ( *prepareUnloadFunc )( void ); // all modules are still there, and their activity ends now
    void ( *beginUnloadFunc )( void );   // its turn has come; ahead of the wait for its objects
    void ( *endUnloadFunc )( void );     // no object of its sorts is left
    void *( *personalityFunc )( void *argument1, void *argument2 );
    uint32_t sorts;      // the module's sorts that have live objects; atomic
    ZU_SORT *sortsFirst; // those sorts, kept with the object database
    ZU_SORT *sortsLast;
};

ZU_API_DATA extern ZU_MODULE zu___module;
ZU_API_DATA extern ZU___MODULE_RECORD zu___module_record;
/// A text that tells a person who looks into the file what it was built from.
ZU_API_DATA extern const char *const zu___module_version_string;

/// Tells whether a module that was built elsewhere fits into this process: whether object and record are whole, and
/// what it says of the product is true of the process's.
ZU_API ZU_BOOL zu___ModuleCheckCompatibility( ZU_MODULE *module );

// Declares the object of the module `name`, as gauge___module; for a header of the module.
//
// A module exports its record and its stamp by names that the library exports too, and the dynamic linker would bind
// every use of them to the library's.  So what the module's own code refers to are symbols that are hidden, and the
// exported ones are further names of the same data.
#define ZU___MODULE_DECLARE( name ) ZU___MODULE_DECLARE_EXPANDED( name )
#define ZU___MODULE_DECLARE_EXPANDED( name )                                                 \
    ZU_BEGIN_DECLS                                                                           \
    extern ZU_MODULE name##___module ZU___SYMBOL( name##___module_here ) ZU___MODULE_HIDDEN; \
    ZU_END_DECLS

// Defines the module `name` and what its file exports.  `product` is what the record says of products:
// ZU___MODULE_ANY_PRODUCT, or a macro for name, friendly name, major, minor and release number, build time, vendor and
// copyright in this order, of which those that are not null or -1 must be those of the process.  A number can be left
// open only if those behind it are; without a name all else is left open.  `description`, `version`, `deps` and `exts`
// are those of the record, `built` is what the stamp says of product and platform.  The five functions are those of
// ZU_MODULE and may be null.
//
// In both macros `name` may be a macro itself, so that the build can name the module.
#define ZU___MODULE_DEFINE( name, product, description, version, deps, exts, built, load, prepareUnload, beginUnload, \
                            endUnload, personality )                                                                  \
    ZU___MODULE_DEFINE_EXPANDED( name, ( product ), description, version, deps, exts, built, load, prepareUnload,     \
                                 beginUnload, endUnload, personality )
#define ZU___MODULE_DEFINE_EXPANDED( name, product, description, version, deps, exts, built, load, prepareUnload, \
                                     beginUnload, endUnload, personality )                                        \
    ZU_BEGIN_DECLS                                                                                                \
    extern ZU___MODULE_RECORD name##___module_record ZU___MODULE_HIDDEN;                                          \
    extern const char *const name##___module_version_string ZU___MODULE_HIDDEN;                                   \
    ZU___MODULE_RECORD name##___module_record = {                                                                 \
        ZU___MODULE_RECORD_VERSION, ZU___MODULE_UNWRAP product, #name, description, version, deps, exts,          \
    };                                                                                                            \
    const char *const name##___module_version_string = "###RQ_VERSION### " built ", " #name " " version;          \
    ZU_MODULE name##___module = {                                                                                 \
        ZU___OBJ_STATIC_INITIALIZER( ZU___OBJ_TYPE_MODULE ),                                                      \
        &name##___module_record,                                                                                  \
        load,                                                                                                     \
        prepareUnload,                                                                                            \
        beginUnload,                                                                                              \
        endUnload,                                                                                                \
        personality,                                                                                              \
        0,                                                                                                        \
        NULL,                                                                                                     \
        NULL,                                                                                                     \
    };                                                                                                            \
    extern ZU_MODULE name##___module_export ZU___SYMBOL( name##___module )                                        \
        ZU___MODULE_EXPORT_AS( name##___module_here );                                                            \
    extern ZU___MODULE_RECORD name##___module_record_export ZU___SYMBOL( zu___module_record )                     \
        ZU___MODULE_EXPORT_AS( name##___module_record );                                                          \
    extern const char *const name##___module_version_string_export ZU___SYMBOL( zu___module_version_string )      \
        ZU___MODULE_EXPORT_AS( name##___module_version_string );                                                  \
    ZU_END_DECLS

#define ZU___MODULE_UNWRAP( ... ) __VA_ARGS__
#define ZU___MODULE_ANY_PRODUCT   NULL, NULL, -1, -1, -1, NULL, NULL, NULL

#define ZU___MODULE_HIDDEN              __attribute__( ( visibility( "hidden" ) ) )
#define ZU___MODULE_EXPORT_AS( symbol ) __attribute__( ( alias( #symbol ), visibility( "default" ) ) )

ZU_END_DECLS
