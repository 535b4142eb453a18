#include "zu/runtime/zu_runtime_path.h"

#include "zu/base/zu_enum_internal.h"

static constexpr ZU___NAMED_VALUE NAMES[] = {
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_INSTALL ),     ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_PRODUCT ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_PRODUCT_BIN ), ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_PRODUCT_RES ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_DATA ),        ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_DATA_STORAGE ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_DATA_TRACE ),  ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_DATA_ABORT ),
    ZU___NAMED_VALUE_OF( ZU_RUNTIME_PATH_DATA_TEMP ),
};

// Start-up
static ZU_ENUM *zu___RuntimePathEnum = nullptr;

void zu___RuntimePathStartup( void )
{
    zu___RuntimePathEnum = ZU___ENUM_CREATE( zu___RuntimePathEnum, NAMES );
}
void zu___RuntimePathShutdown( void )
{
    ZU_REF_RELEASE( zu___RuntimePathEnum );
    ZU_REF_POISON( zu___RuntimePathEnum );
}

// Texts
ZU_INT zuRuntimePathFromString( ZU_STRING *zus )
{
    ZU_ASSERT( zus );
    return zuEnumParse( zu___RuntimePathEnum, zus );
}
ZU_STRING *zuRuntimePathToString( ZU_INT path )
{
    ZU_ASSERT( ZU_RUNTIME_PATH_OK( path ) );
    return zuEnumGenerate( zu___RuntimePathEnum, path );
}
