#include "zu/runtime/zu_runtime_computer_name.h"

#include "zu/runtime/zu_runtime_computer_internal.h"

// UTF-16 units, and a terminator: the room that names of computers have had since they were on networks at all.
static constexpr ZU_INT NAME_ROOM = 16;

static ZU_STRING *computerName = nullptr; // null: not known

void zu___RuntimeComputerNameStartup( void )
{
    computerName = zu___RuntimeQueryComputerName();
    // Made from narrow text, which travels through UTF-16, a string has an element for each unit.
    if ( computerName && zuStringLength( computerName ) >= NAME_ROOM ) {
        zuStringRelease( computerName );
        computerName = nullptr;
    }
}
void zu___RuntimeComputerNameShutdown( void )
{
    ZU_REF_RELEASE_OPT( computerName );
    ZU_REF_POISON( computerName );
}

ZU_BOOL zuRuntimeHasComputerName( void )
{
    return computerName != nullptr;
}
ZU_STRING *zuRuntimeComputerName( void )
{
    return computerName ? zuStringRetain( computerName ) : nullptr;
}
