// The report comes out of a process that is broken in ways that nobody knows, so it uses nothing that may be part of the
// breakage: static buffers, texts that were made at start-up, and a formatting of its own, since the C library's takes
// locks and memory.  One thread writes it; what others run into meanwhile they tell by a count, and sleep.
//
// A line is on the error stream before the next one is made.  The file and the debugger's channel may hang, on a disk
// that is gone for instance, and get the same text later, so that the error stream has all of it by then.

#include "zu/sys/zu_abort.h"

#include "zu/base/zu_stack_trace_internal.h"
#include "zu/runtime/zu_module.h"
#include "zu/runtime/zu_runtime_hardware.h"
#include "zu/runtime/zu_runtime_os.h"
#include "zu/runtime/zu_runtime_variant.h"
#include "zu/runtime/zu_runtime_version.h"
#include "zu/sys/zu_abort_internal.h"

static constexpr ZU_INT REPORT_TIME = 5000;       // milliseconds; a report takes a few hundred at most
static constexpr size_t LINE_SIZE = 4095;         // of text and line end; longer lines are cut
static constexpr size_t PENDING_SIZE = 64 * 1024; // a dozen reports: only very deep stacks are handed on in parts
static constexpr size_t FILE_NAME_SIZE = 4096;    // as long as the system takes names
static constexpr ZU_INT FRAMES_MAX = 4000;        // as in a ZU_STACK_TRACE; a deeper stack is cut
static constexpr char DUMP_ENDING[] = ".dmp";     // in place of the report file's, which is as long
static constexpr uint32_t ERROR_DUMP_EXISTS = 80; // of the systems that write dumps
static constexpr size_t COMMENT_OUTDENT = 2;      // blanks that a dump's comments have less of
static constexpr const char *STARS = "  **********************************************************************";

static uint32_t abortingThread = 0; // the first to enter the report; 0: none
static uint32_t secondaryAborts = 0;
static uint32_t secondaryExceptions = 0;

static char reportFileName[ FILE_NAME_SIZE ]; // empty: none
ZU___ABORT_FILE *zu___AbortReportFile = nullptr;

// For the thread that reports
static uint32_t failures; // of the report itself
static char line[ LINE_SIZE ];
static size_t lineLength;
static char pending[ PENDING_SIZE ]; // what the error stream has, and file and debugger have not
static size_t pendingLength;
static bool handingOn; // to file and debugger, right now
static bool fileTried;
static bool commenting; // lines go into the dump

// The state changes in steps that a second fault of the same thread may come between.
static void abortOrder()
{
    __atomic_signal_fence( __ATOMIC_SEQ_CST );
}

static void abortCloseFile()
{
    if ( zu___AbortReportFile ) {
        zu___AbortFileClose( zu___AbortReportFile );
        zu___AbortReportFile = nullptr;
    }
}
static void abortForget()
{
    zu___AbortReportFile = nullptr;
    abortingThread = 0;
    secondaryAborts = 0;
    secondaryExceptions = 0;
    failures = 0;
    lineLength = 0;
    pendingLength = 0;
    handingOn = false;
    fileTried = false;
    commenting = false;
}
void zu___AbortReset( const char *name )
{
    reportFileName[ 0 ] = 0;
    size_t length = name ? __builtin_strlen( name ) : 0;
    if ( length < FILE_NAME_SIZE ) {
        __builtin_memcpy( reportFileName, name ? name : "", length + 1 );
    }
    abortForget();
}
ZU_BOOL zu___AbortReporting( void )
{
    return __atomic_load_n( &abortingThread, __ATOMIC_RELAXED ) != 0;
}
// The thread that was reporting is not in the child, whose own failures would wait for it for ever.
void zu___AbortFork( ZU___FORK_STEP step )
{
    if ( step == ZU___FORK_CHILD && zu___AbortReporting() ) {
        abortCloseFile();
        abortForget();
    }
}

// Handing on
static void abortSendLines()
{
    size_t begin = 0;
    for ( size_t end = 0; end < pendingLength; end++ ) {
        if ( pending[ end ] == '\n' ) {
            zu___AbortWriteDebugger( pending + begin, end - begin );
            begin = end + 1;
        }
    }
}
static void abortHandOn()
{
    handingOn = true;
    abortOrder();
    if ( !fileTried && reportFileName[ 0 ] ) {
        zu___AbortReportFile = zu___AbortFileTryCreate( reportFileName );
    }
    fileTried = true;
    if ( zu___AbortReportFile ) {
        zu___AbortFileWrite( zu___AbortReportFile, pending, pendingLength );
    }
    abortSendLines();
    pendingLength = 0;
    abortOrder();
    handingOn = false;
}

// Lines
static void abortChar( char ch )
{
    if ( lineLength < LINE_SIZE - 1 ) {
        line[ lineLength++ ] = ch;
    }
}
static void abortText( const char *text )
{
    for ( ; *text && lineLength < LINE_SIZE - 1; text++ ) {
        abortChar( *text );
    }
}
// A text that may be missing, as the C library prints it.
static void abortOptionalText( const char *text )
{
    abortText( text ? text : "(null)" );
}
static void abortNumber( uint64_t value, unsigned base, int digitsMin, const char *digits )
{
    char text[ 20 ];
    int length = 0;
    while ( value > 0 || length < digitsMin ) {
        text[ length++ ] = digits[ value % base ];
        value /= base;
    }
    while ( length > 0 ) {
        abortChar( text[ --length ] );
    }
}
static void abortDecimal( ZU_INT value, int digitsMin = 1 )
{
    if ( value < 0 ) {
        abortChar( '-' );
    }
    abortNumber( value < 0 ? 0 - (uint64_t)value : (uint64_t)value, 10, digitsMin, "0123456789" );
}
static void abortHex( uint64_t value, int digitsMin = 1 )
{
    abortNumber( value, 16, digitsMin, "0123456789abcdef" );
}
static void abortUpperHex( uint64_t value, int digitsMin )
{
    abortNumber( value, 16, digitsMin, "0123456789ABCDEF" );
}
static void abortPointer( uintptr_t value )
{
    abortUpperHex( value, 2 * sizeof value );
}
static void abortEndLine()
{
    if ( commenting ) {
        size_t outdent = lineLength < COMMENT_OUTDENT ? lineLength : COMMENT_OUTDENT;
        zu___AbortDumps->addLine( line + outdent, lineLength - outdent );
        lineLength = 0;
        return;
    }
    line[ lineLength++ ] = '\n';
    zu___AbortWriteError( line, lineLength );
    if ( pendingLength + lineLength > PENDING_SIZE && !handingOn ) {
        abortHandOn();
    }
    if ( pendingLength + lineLength <= PENDING_SIZE ) {
        __builtin_memcpy( pending + pendingLength, line, lineLength );
        abortOrder();
        pendingLength += lineLength;
    }
    lineLength = 0;
}
static void abortLine( const char *text )
{
    abortText( text );
    abortEndLine();
}
static void abortEmptyLines( int count )
{
    for ( int i = 0; i < count; i++ ) {
        abortEndLine();
    }
}
static void abortLabelled( const char *label, const char *text )
{
    abortText( label );
    abortOptionalText( text );
    abortEndLine();
}
static void abortSection( const char *heading )
{
    abortEmptyLines( 1 );
    abortLine( heading );
}
static void abortBanner( const char *text )
{
    abortLine( STARS );
    abortLine( text );
    abortLine( STARS );
}

// Sections
static void abortWriteSystem()
{
    ZU___TIME_FIELDS fields;
    zu___AbortLocalTime( &fields );
    abortSection( "  SYSTEM" );
    abortText( "    Local Time: " );
    abortDecimal( fields.year, 4 );
    abortChar( '-' );
    abortDecimal( fields.month, 2 );
    abortChar( '-' );
    abortDecimal( fields.day, 2 );
    abortChar( ' ' );
    abortDecimal( fields.hour, 2 );
    abortChar( ':' );
    abortDecimal( fields.minute, 2 );
    abortChar( ':' );
    abortDecimal( fields.second, 2 );
    abortEndLine();
}
static void abortWriteProduct()
{
    abortSection( "  PRODUCT" );
    abortLabelled( "    Name      : ", zu___RuntimeVersionProductNameCstr() );
    abortLabelled( "    Friendly  : ", zu___RuntimeVersionProductFriendlyNameCstr() );
    abortText( "    Version   : " );
    abortDecimal( zuRuntimeVersionProductVersionMajor() );
    abortChar( '.' );
    abortDecimal( zuRuntimeVersionProductVersionMinor() );
    abortChar( '.' );
    abortDecimal( zuRuntimeVersionProductVersionRelease() );
    abortEndLine();
    abortLabelled( "    OS        : ", zu___RuntimeOsFriendlyNameCstr( zuRuntimeOs() ) );
    abortLabelled( "    Hardware  : ", zu___RuntimeHardwareFriendlyNameCstr( zuRuntimeHardware() ) );
    abortLabelled( "    Variant   : ", zu___RuntimeVariantFriendlyNameCstr( zuRuntimeVariant() ) );
    abortLabelled( "    Build Time: ", zu___RuntimeVersionProductBuildTimeCstr() );
}
static void abortWriteApplication()
{
    abortSection( "  APPLICATION" );
    abortLabelled( "    Identifier: ", zu___RuntimeVersionApplicationIdentifierCstr() );
    abortLabelled( "    Friendly  : ", zu___RuntimeVersionApplicationFriendlyNameCstr() );
    abortLabelled( "    Version   : ", zu___RuntimeVersionApplicationVersionCstr() );
}
static void abortWriteAbort( const ZU___ABORT_RECORD *record )
{
    if ( !record->message && !record->file && !record->expression ) {
        return;
    }
    abortSection( "  ABORT" );
    if ( record->message ) {
        abortLabelled( "    Message   : ", record->message );
    }
    if ( record->file ) {
        abortLabelled( "    File      : ", record->file );
        abortText( "    Line      : " );
        abortDecimal( record->line );
        abortEndLine();
    }
    if ( record->expression ) {
        abortLabelled( "    Expression: ", record->expression );
    }
}
static void abortWriteAccess( const ZU___ABORT_EXCEPTION *exception )
{
    if ( exception->parameterCount != 2 ) {
        return;
    }
    const char *access;
    switch ( exception->parameters[ 0 ] ) {
    case ZU___ABORT_ACCESS_READ:
        access = "    read from address 0x";
        break;
    case ZU___ABORT_ACCESS_WRITE:
        access = "    write to address 0x";
        break;
    case ZU___ABORT_ACCESS_EXECUTE:
        access = "    execute data (DEP) at address 0x";
        break;
    default:
        return;
    }
    abortText( access );
    abortPointer( exception->parameters[ 1 ] );
    abortEndLine();
}
static void abortWriteException( const ZU___ABORT_EXCEPTION *exception )
{
    abortSection( "  EXCEPTION" );
    if ( commenting ) {
        abortText( "    ExceptionCode: 0x" );
        abortUpperHex( exception->code, 8 );
        abortEndLine();
        return;
    }
    switch ( exception->fault ) {
    case ZU___ABORT_FAULT_ACCESS_VIOLATION:
        abortLine( "    EXCEPTION_ACCESS_VIOLATION" );
        abortWriteAccess( exception );
        return;
    case ZU___ABORT_FAULT_INT_DIVIDE_BY_ZERO:
        abortLine( "    EXCEPTION_INT_DIVIDE_BY_ZERO" );
        break;
    case ZU___ABORT_FAULT_STACK_OVERFLOW:
        abortLine( "    EXCEPTION_STACK_OVERFLOW" );
        break;
    case ZU___ABORT_FAULT_OTHER:
        abortText( "    ExceptionCode: 0x" );
        abortUpperHex( exception->code, 8 );
        abortEndLine();
        break;
    }
    for ( int i = 0; i < exception->parameterCount; i++ ) {
        abortText( "    ExceptionInformation[" );
        abortDecimal( i );
        abortText( "]: 0x" );
        abortPointer( exception->parameters[ i ] );
        abortEndLine();
    }
}
static void abortWriteCause( const ZU___ABORT_RECORD *record, const ZU___ABORT_EXCEPTION *exception )
{
    if ( record ) {
        abortWriteAbort( record );
    } else {
        abortWriteException( exception );
    }
}

// Stack
struct ABORT_STACK_SECTION {
    ZU_INT frames;
    bool exact;        // the next frame is the instruction that failed
    uintptr_t address; // what `place` is of
    ZU___STACK_TRACE_PLACE place;
};
static ZU_BOOL abortWriteFrame( uintptr_t address, void *closure )
{
    ABORT_STACK_SECTION *section = (ABORT_STACK_SECTION *)closure;
    ZU___STACK_TRACE_PLACE *place = &section->place;
    if ( section->frames == 0 ) {
        abortSection( "  STACK" );
    }
    // A function that has called itself till the end of the stack goes on at the same address in each frame.
    if ( section->frames == 0 || section->exact || address != section->address ) {
        *place = {};
        // What is asked for is where functions go on, which is one behind an instruction of theirs.
        zu___StackTraceReportFind( address + section->exact, place );
        place->symbolOffset -= section->exact && place->symbolOffset > 0;
        place->lineOffset -= section->exact && place->lineOffset > 0;
    }
    section->address = section->exact ? 0 : address;
    section->exact = false;
    abortText( "    " );
    if ( place->file ) {
        abortText( place->file );
        abortChar( '(' );
        abortDecimal( (ZU_INT)place->line );
        abortText( "+0x" );
        abortHex( place->lineOffset );
        abortText( ") " );
    }
    if ( place->symbol ) {
        abortText( *place->symbol ? place->symbol : "???" );
    } else {
        abortChar( '[' );
        abortUpperHex( address, 16 );
        abortChar( ']' );
        place->symbolOffset = 0;
    }
    abortText( "+0x" );
    abortHex( place->symbolOffset );
    abortEndLine();
    return ++section->frames < FRAMES_MAX;
}
static void abortWriteStack( const ZU___ABORT_CONTEXT *context )
{
    if ( !zu___StackTraceReportStart() ) {
        abortSection( "  STACK" );
        abortLine( "    <stack trace not available>" );
        return;
    }
    ABORT_STACK_SECTION section = {};
    section.exact = context->exact;
    zu___AbortWalk( context, abortWriteFrame, &section );
}

// Dump
static void abortWriteComments( const ZU___ABORT_RECORD *record, const ZU___ABORT_EXCEPTION *exception,
                                const ZU___ABORT_CONTEXT *context )
{
    commenting = true;
    abortWriteSystem();
    abortWriteProduct();
    abortWriteApplication();
    abortWriteCause( record, exception );
    abortWriteStack( context );
    abortEmptyLines( 1 );
    commenting = false;
}
static void abortWriteDump( const ZU___ABORT_RECORD *record, const ZU___ABORT_EXCEPTION *exception,
                            const ZU___ABORT_CONTEXT *context )
{
    static char name[ FILE_NAME_SIZE ];
    size_t length = __builtin_strlen( reportFileName );
    abortSection( "  MINIDUMP" );
    if ( length < sizeof DUMP_ENDING ) {
        abortLabelled( "    ", nullptr );
        return;
    }
    __builtin_memcpy( name, reportFileName, length + 1 );
    __builtin_memcpy( name + length + 1 - sizeof DUMP_ENDING, DUMP_ENDING, sizeof DUMP_ENDING );
    abortLabelled( "    ", name );
    abortHandOn();
    uint32_t error = 0;
    if ( zu___AbortDumps->begin( name, &error ) ) {
        abortWriteComments( record, exception, context );
        zu___AbortDumps->end( context, &error );
    }
    if ( error == ERROR_DUMP_EXISTS ) {
        abortLine( "    <failed, GetLastError(): ERROR_FILE_EXISTS>" );
    } else if ( error != 0 ) {
        abortText( "    <failed, GetLastError(): 0x" );
        abortHex( error );
        abortLine( ">" );
    }
}

// The texts of this section are in the language of a debugger that offers links by them.
static void abortWriteDebugger()
{
    uint32_t thread = abortingThread;
    abortEmptyLines( 2 );
    abortLine( "<?dml?>  The system has halted and will now enter the debugger. <exec cmd=\"g\">Running</exec> the "
               "debuggee" );
    abortLine( "<?dml?>  will terminate the process immediately. This is your last chance to debug a" );
    abortText( "<?dml?>  live system. The thread ID of the faulting thread is 0x" );
    abortHex( thread, 4 );
    abortLine( ". If this thread" );
    abortText( "<?dml?>  was not selected automatically, you should <exec cmd=\"~~[0x" );
    abortHex( thread );
    abortLine( "] s\">activate</exec> it now." );
    abortEmptyLines( 1 );
    abortText( "<?dml?>  While aborting, " );
    abortDecimal( (ZU_INT)__atomic_load_n( &secondaryAborts, __ATOMIC_RELAXED ) +
                  (ZU_INT)__atomic_load_n( &secondaryExceptions, __ATOMIC_RELAXED ) );
    abortLine( " different threads have tried to abort the system in parallel." );
    abortLine( "<?dml?>  These threads have been trapped while executing <i>zu___AbortSecondary()</i>. Check" );
    abortLine( "<?dml?>  the call stack of all threads to identify these threads." );
}

static void abortWriteReport( const ZU___ABORT_RECORD *record, const ZU___ABORT_EXCEPTION *exception,
                              const ZU___ABORT_CONTEXT *context )
{
    ZU_ASSERT( !zu___AbortReportFile );
    abortEmptyLines( 2 );
    abortBanner( record ? "  * ABNORMAL PROGRAM TERMINATION                                       *"
                        : "  * EXCEPTION                                                          *" );
    abortWriteSystem();
    abortWriteProduct();
    abortWriteApplication();
    abortWriteCause( record, exception );
    abortWriteStack( context );
    if ( zu___AbortDumps ) {
        abortWriteDump( record, exception, context );
    }
    if ( zu___AbortDebuggerPresent() ) {
        abortWriteDebugger();
    }
    abortEmptyLines( 3 );
    abortHandOn();
    abortCloseFile();
    zu___AbortFlushStreams( context );
}
// What was being written when the report failed may be anything; a whole line begins anew.
static void abortWriteDoubleFault( const ZU___ABORT_RECORD *record, const ZU___ABORT_EXCEPTION *exception )
{
    lineLength = 0;
    commenting = false;
    abortEmptyLines( 1 );
    abortBanner( "  * DOUBLE FAULT                                                       *" );
    abortWriteCause( record, exception );
    if ( !handingOn ) {
        abortHandOn();
    }
    abortCloseFile();
}

// Entry
void zu___AbortSecondary( void )
{
    if ( zu___AbortDebuggerPresent() ) {
        zu___AbortBreak();
    }
    zu___AbortSleep();
}
void zu___AbortEnter( const ZU___ABORT_RECORD *record, const ZU___ABORT_EXCEPTION *exception,
                      const ZU___ABORT_CONTEXT *context )
{
    zu___AbortHoldThread();
    uint32_t self = zu___AbortThreadIdentifier();
    uint32_t first = 0;
    if ( __atomic_compare_exchange_n( &abortingThread, &first, self, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED ) ) {
        zu___AbortBegin( context, REPORT_TIME );
        abortWriteReport( record, exception, context );
        return;
    }
    if ( first != self ) {
        __atomic_add_fetch( record ? &secondaryAborts : &secondaryExceptions, 1, __ATOMIC_RELAXED );
        zu___AbortSecondary();
    }
    failures++;
    abortOrder();
    if ( failures > 1 ) {
        zu___AbortEnd();
    }
    abortWriteDoubleFault( record, exception );
}
void zu___AbortGiveUp( void )
{
    if ( !handingOn ) {
        abortHandOn();
    }
    zu___AbortEnd();
}
void zu___AbortLeave( void )
{
    if ( zu___AbortDebuggerPresent() ) {
        zu___AbortBreak();
    }
    zu___AbortEnd();
}

void zu___Abort( const char *message, const char *file, int32_t sourceLine, const char *expression )
{
    const ZU___ABORT_RECORD record = { message, file, expression, sourceLine };
    ZU___ABORT_CONTEXT context = {};
    context.begin = (uintptr_t)__builtin_extract_return_addr( __builtin_return_address( 0 ) );
    zu___AbortEnter( &record, nullptr, &context );
    zu___AbortLeave();
}
