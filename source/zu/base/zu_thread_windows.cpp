// A thread of the C runtime begins suspended; its handle counts how often, which is what a resume returns.

#include "zu/base/zu_thread_internal.h"

#include "zu/sys/zu_mem.h"

#include <process.h>
#include <windows.h>

#include <objbase.h>

static constexpr DWORD NAMING_EXCEPTION = 0x406D1388; // that debuggers take a thread's name from
static constexpr DWORD NAMING_TYPE = 0x1000;

static constexpr int PRIORITIES[] = {
    THREAD_PRIORITY_IDLE,         THREAD_PRIORITY_LOWEST,  THREAD_PRIORITY_BELOW_NORMAL,  THREAD_PRIORITY_NORMAL,
    THREAD_PRIORITY_ABOVE_NORMAL, THREAD_PRIORITY_HIGHEST, THREAD_PRIORITY_TIME_CRITICAL,
};
static_assert( sizeof PRIORITIES / sizeof PRIORITIES[ 0 ] == ZU_THREAD_PRIORITY_CRITICAL + 1 );

struct ZU___THREAD_HANDLE {
    HANDLE thread;
    void ( *entry )( void *argument );
    void *argument;
};

static unsigned __stdcall threadRun( void *argument )
{
    ZU___THREAD_HANDLE *handle = (ZU___THREAD_HANDLE *)argument;
    handle->entry( handle->argument ); // the handle may be closed by now
    return 0;
}
// What the system sends to the process as a whole comes on a thread that the system makes for it: all others are deaf.
ZU___THREAD_HANDLE *zu___ThreadHandleTryCreate( void ( *entry )( void *argument ), void *argument, ZU_BOOL )
{
    ZU___THREAD_HANDLE *handle = (ZU___THREAD_HANDLE *)zuMemAlloc( sizeof( ZU___THREAD_HANDLE ) );
    handle->entry = entry;
    handle->argument = argument;
    handle->thread = (HANDLE)_beginthreadex( nullptr, 0, threadRun, handle, CREATE_SUSPENDED, nullptr );
    if ( !handle->thread ) {
        zuMemFree( handle );
        return nullptr;
    }
    return handle;
}
static int threadSystemPriority( ZU_THREAD_PRIORITY prio )
{
    if ( !ZU_THREAD_PRIORITY_OK( prio ) ) {
        zu___Abort( "invalid thread priority", __FILE__, __LINE__, nullptr );
    }
    return PRIORITIES[ prio ];
}
ZU_BOOL zu___ThreadHandleTrySetPriority( ZU___THREAD_HANDLE *handle, ZU_THREAD_PRIORITY prio )
{
    return SetThreadPriority( handle->thread, threadSystemPriority( prio ) ) != FALSE;
}
void zu___ThreadApplyPriority( ZU_THREAD_PRIORITY prio )
{
    SetThreadPriority( GetCurrentThread(), threadSystemPriority( prio ) );
}
ZU_INT zu___ThreadHandleResume( ZU___THREAD_HANDLE *handle )
{
    return (int)ResumeThread( handle->thread ); // -1 if it fails
}
ZU_BOOL zu___ThreadHandleTrySuspend( ZU___THREAD_HANDLE *handle )
{
    return handle && SuspendThread( handle->thread ) != (DWORD)-1;
}
ZU_BOOL zu___ThreadHandleWait( ZU___THREAD_HANDLE *handle )
{
    if ( !handle ) {
        Sleep( 1000 ); // there is nothing to wait for, and the caller asks again
        return ZU_FALSE;
    }
    return WaitForSingleObject( handle->thread, INFINITE ) == WAIT_OBJECT_0;
}
ZU_BOOL zu___ThreadHandleIsLost( ZU___THREAD_HANDLE * )
{
    return ZU_FALSE;
}
void zu___ThreadHandleClose( ZU___THREAD_HANDLE *handle )
{
    CloseHandle( handle->thread );
    zuMemFree( handle );
}

// A name is told by an exception that a debugger sees first, and that otherwise has to be caught.
struct THREAD_NAMING {
    DWORD type;
    const char *name;
    DWORD thread; // -1: the calling one
    DWORD flags;
};
static LONG CALLBACK threadIgnoreNaming( EXCEPTION_POINTERS *exception )
{
    return exception->ExceptionRecord->ExceptionCode == NAMING_EXCEPTION ? EXCEPTION_CONTINUE_EXECUTION
                                                                         : EXCEPTION_CONTINUE_SEARCH;
}
void zu___ThreadSetSystemName( const char *name )
{
    THREAD_NAMING naming = { NAMING_TYPE, name, (DWORD)-1, 0 };
    void *handler = AddVectoredExceptionHandler( 1, threadIgnoreNaming );
    if ( handler ) {
        RaiseException( NAMING_EXCEPTION, 0, sizeof naming / sizeof( ULONG_PTR ), (const ULONG_PTR *)&naming );
        RemoveVectoredExceptionHandler( handler );
    }
}

void zu___ThreadSystemBegin( void )
{
    ZU_ASSERT( SUCCEEDED( CoInitializeEx( NULL, COINIT_MULTITHREADED ) ) );
}
void zu___ThreadSystemEnd( void )
{
    CoUninitialize();
}

void zuThreadYield( void )
{
    SwitchToThread();
}
