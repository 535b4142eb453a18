// The report on a module works on snapshots, since other threads go on; what it prints can go at any time.  The report
// on leaks walks the chains themselves: nothing runs beside it, and what is left of containers is not to be trusted.

#include "zu/base/zu_string_format.h"
#include "zu/io/zu_print.h"
#include "zu/runtime/zu_runtime_internal.h"

#include <cstring>

static void reportWiden( ZU_INT *width, ZU_SORT *sort )
{
    ZU_INT length = (ZU_INT)strlen( sort->name );
    *width = length > *width ? length : *width;
}
static void reportPrintSort( ZU_SORT *sort, ZU_INT width, ZU_INT objects )
{
    zuPrintFormatCstr( "%~-*s %i\n", -1, width, zuSortName( sort ), objects );
}
static void reportEndSorts( ZU_INT flags )
{
    if ( flags & ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT ) {
        zuPrintCstr( "\n", -1 );
    }
}
// `textFormat` is for an object that shows its text: of the name of its sort, the references and the object.
static void reportPrintObject( ZU_OBJ *obj, ZU_INT references, const char *textFormat, ZU_INT flags )
{
    ZU_SORT *sort = zuObjSort( obj );
    if ( ( flags & ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_TOSTRING ) && sort->toStringFunc ) {
        zuPrintFormatCstr( textFormat, -1, zuSortName( sort ), references, obj );
    } else {
        zuPrintFormatCstr( "%~s (%i)\n", -1, zuSortName( sort ), references );
    }
    ZU_VECTOR *log = flags & ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT_LOG ? zu___ObjLog( obj ) : nullptr;
    if ( !log ) {
        return;
    }
    for ( ZU_INT i = 0; i < zuVectorLength( log ); i++ ) {
        zuPrintFormatCstr( "%1m%~o\n", -1, zuVectorObjAt( log, i ) );
    }
    zuVectorRelease( log );
}

// The report on a module
static void reportPrintModuleSorts( ZU_MODULE *module, ZU_INT flags )
{
    ZU_VECTOR *vec = zuModuleSnapshotSorts( module );
    ZU_ASSERT( vec );
    ZU_INT width = 0;
    for ( ZU_INT i = 0; i < zuVectorLength( vec ); i++ ) {
        reportWiden( &width, zuSortFrom( zuVectorBacking( vec )[ i ] ) );
    }
    for ( ZU_INT i = 0; i < zuVectorLength( vec ); i++ ) {
        ZU_SORT *sort = zuSortFrom( zuVectorBacking( vec )[ i ] );
        reportPrintSort( sort, width, zuSortObjects( sort ) );
    }
    zuVectorRelease( vec );
    reportEndSorts( flags );
}
static void reportPrintModuleObjects( ZU_MODULE *module, ZU_INT flags )
{
    ZU_VECTOR *vec = zuModuleSnapshotObjects( module );
    ZU_ASSERT( vec );
    for ( ZU_INT i = 0; i < zuVectorLength( vec ); i++ ) {
        ZU_OBJ *obj = zuVectorObjAt( vec, i );
        ZU_INT references = (ZU_INT)ZU_REF_RETAIN_COUNT( obj ) - 2; // without the vector's and the one here
        reportPrintObject( obj, references, "%~s (%i) %o\n", flags );
        zuObjRelease( obj );
    }
    zuVectorRelease( vec );
}
void zu___RuntimePrintModuleReport( ZU_MODULE *module, ZU_INT flags )
{
    ZU_ASSERT( module );
    zuPrintCstr( ZU___RUNTIME_REPORT_LINE, -1 );
    if ( flags & ZU_RUNTIME_FLAG_SNAPSHOT_SORT ) {
        reportPrintModuleSorts( module, flags );
    }
    if ( flags & ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT ) {
        reportPrintModuleObjects( module, flags );
    }
}

// The report on leaks
static void reportPrintLeakedSorts( ZU_MODULE *module, ZU_INT flags )
{
    ZU_INT width = 0;
    for ( ZU_SORT *sort = module->sortsFirst; sort; sort = sort->sortsNext ) {
        reportWiden( &width, sort );
    }
    for ( ZU_SORT *sort = module->sortsFirst; sort; sort = sort->sortsNext ) {
        ZU_INT objects = 0; // the sort's own count has objects of the bare library in it
        for ( ZU_OBJ *obj = sort->objectsFirst; obj; obj = obj->objectsNext ) {
            objects++;
        }
        reportPrintSort( sort, width, objects );
    }
    reportEndSorts( flags );
}
static void reportPrintLeakedObjects( ZU_MODULE *module, ZU_INT flags )
{
    for ( ZU_SORT *sort = module->sortsFirst; sort; sort = sort->sortsNext ) {
        for ( ZU_OBJ *obj = sort->objectsFirst; obj; obj = obj->objectsNext ) {
            ZU_ASSERT( ZU___RETAIN_COUNT_VALUE( obj->retainCount ) );
            reportPrintObject( obj, (ZU_INT)ZU_REF_RETAIN_COUNT( obj ), "%~s (%i) \"%o\"\n", flags );
        }
    }
}
void zu___RuntimePrintLeakReport( ZU_MODULE *module, ZU_INT flags )
{
    ZU_ASSERT( module );
    zuPrintCstr( ZU___RUNTIME_REPORT_LINE, -1 );
    if ( flags & ZU_RUNTIME_FLAG_SNAPSHOT_SORT ) {
        reportPrintLeakedSorts( module, flags );
    }
    if ( flags & ZU_RUNTIME_FLAG_SNAPSHOT_OBJECT ) {
        reportPrintLeakedObjects( module, flags );
    }
}
