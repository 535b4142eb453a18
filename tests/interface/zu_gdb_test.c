// What gdb_test.py looks at: an object of every class, and some in the variables of a function.

#include "zu/zu.h"

// A class of the program's own
typedef struct PROBE {
    ZU_OBJ obj;
    ZU_INT reading;
} PROBE;
static ZU_SORT zu___sort_PROBE = ZU___SORT_INITIALIZER( "PROBE", NULL, NULL, NULL, NULL );
static PROBE *probe;

void makeReferences( ZU_STRING *text ); // in zu_gdb_test_ref.cpp

static void call( void *barrier )
{
    zuBarrierPass( (ZU_BARRIER *)barrier );
}
static void fire( ZU_OBJ *arg )
{
    zuObjRelease( arg );
}
static ZU_BOOL run( ZU_VECTOR *argv, void *context )
{
    return argv != context;
}
static ZU_STRING *text( const char *utf8 )
{
    return zuStringCreateFromUtf8( utf8, -1 );
}

void look( ZU_OBJ *any, ZU_DICT *many, ZU_STORE *settings, ZU_TIMER *timer, ZU_LINE_SOURCE *lines, ZU_VECTOR *all );
void look( ZU_OBJ *any, ZU_DICT *many, ZU_STORE *settings, ZU_TIMER *timer, ZU_LINE_SOURCE *lines, ZU_VECTOR *all )
{
    zuObjRelease( any );
    zuDictRelease( many );
    zuStoreRelease( settings );
    zuTimerRelease( timer );
    zuLineSourceRelease( lines );
    zuVectorRelease( all );
}

static void makeWaited( ZU_OBJ *seven )
{
    ZU_BARRIER *barrier = zuBarrierCreate( ZU_TRUE );
    zuThreadTrySpawnCallCstr( "worker", -1, call, barrier, ZU_THREAD_PRIORITY_NORMAL );
    ZU_EVENT_QUEUE *queue = zuEventQueueCreate();
    zuEventQueueWriteEvent( queue, seven );
    zuAlertAddAlertable( zuAlertCreate(), zuAlertableCreateEventQueue( queue, seven ) );
    zuSignalAddSignalable( zuSignalCreate(), zuSignalableCreate( fire, seven ) );
    zuCounterCreate();
    zuRegionEnterShared( zuRegionCreate() );
    ZU_GENERATION *root = zuGenerationCreate();
    zuGenerationMutexTryRegister( zuGenerationMutexCreate(), zuGenerationCreateWithParent( root ) );
}
static void makeStreams( void )
{
    static const ZU_CHARSET SETS[] = { ZU_CHARSET_UTF_8, ZU_CHARSET_UTF_16, ZU_CHARSET_UTF_32, ZU_CHARSET_ISO_8859_1 };
    ZU_BYTE_SINK *sink = zuBufferByteSinkByteSink( zuBufferByteSinkCreate() );
    ZU_BUFFER *bytes = zuBufferCreateFromBytesCopy( (const uint8_t *)"hello", 5 );
    ZU_BYTE_SOURCE *source = zuBufferByteSourceByteSource( zuBufferByteSourceCreate( bytes ) );
    for ( int i = 0; i < 4; i++ ) {
        zuCharsetCreateCharSink( sink, SETS[ i ], 0 );
        zuCharsetCreateCharSource( source, SETS[ i ], 0 );
    }
    zuExactCharSinkCreate( sink, ZU_CHARSET_UTF_8, 0 );
    zuExactCharSourceCreate( source, ZU_CHARSET_UTF_8, 0 );
    zuFileOpenLineSink( text( "/dev/null" ), ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
    zuStringCharSinkCreate();
    zuStringCharSourceCreate( text( "abc" ) );
    zuDecoderCreate( bytes );
    zuEncoderEncodeInt( zuEncoderCreate(), 7 );
}
static void makeTags( void )
{
    ZU_STRING *tag = text( "draft" );
    ZU_TAG_DEFINITION_SET *definitions = zuTagDefinitionSetCreate();
    zuTagDefinitionSetSetDefinition( &definitions, zuTagDefinitionCreate( tag ) );
    zuTagMatchCreate();
    ZU_TAG_REWRITE *rewrite = zuTagRewriteCreate();
    zuTagRewriteSetOperation( &rewrite, zuTagRewriteOperationCreate( ZU_TAG_REWRITE_OPERATION_TYPE_DELETE, tag ) );
}
static void makeValues( ZU_OBJ *seven )
{
    zuBoxedRealCreate( 0.5 );
    zuBoxedUniqueCreate();
    zuIdentifierCreate();
    zuModuleVersionCreate( 1, 2, 3, 0 );
    zuOptSeqCreate( zuOptDefCreate(), zuVectorCreate() );
    ZU_PRIORITY_MAP *priorities = zuPriorityMapCreate();
    zuPriorityMapSet( &priorities, 5, seven );
    zuRuntimePathsCreate();
    ZU_RANGE_MAP *ranges = zuRangeMapCreate();
    zuRangeMapSetRangeKey( &ranges, 1, 3, seven );
    ZU_STRING *name = text( "name" );
    zu___RuntimeInstallInfoCreate( 0, 0, 0, name, name, text( "1.2.3" ), name, name );
    zuStackTraceCreate( 0, -1 );
    ZU_TOOL_SWITCH *tools = zuToolSwitchCreate();
    zuToolSwitchSetToolCstr( &tools, "run", -1, run );
    zuUnicodeNormalizerCreate( ZU_UNICODE_NORMAL_FORM_NFKC );
}

int main( int argc, char **argv )
{
    zuRuntimeStartup( ZU_RUNTIME_FLAG_OBJECT_DATABASE, -1, NULL, "looked-at", "Looked at", "1.0" );
    ZU_DICT *dict = zuDictCreate();
    zuDictSetStringKey( &dict, text( "κόσμε \"😀\"" ), zuBoxedBoolObj( zuBoxedBoolCreate( ZU_TRUE ) ) );
    ZU_DICT *many = zuDictCreate();
    for ( ZU_INT i = 5000; i > 0; i-- ) {
        zuDictSetIntKey( &many, i, zuBoxedIntObj( zuBoxedIntCreate( i ) ) );
    }
    ZU_STORE *inner = zuStoreCreate();
    zuStoreSetValueCstr( &inner, "depth", -1, text( "two" ) );
    ZU_STORE *store = zuStoreCreate();
    zuStoreSetStoreCstr( &store, "inner", -1, inner );
    ZU_OBJ *seven = zuBoxedIntObj( zuBoxedIntCreate( 7 ) );
    probe = (PROBE *)zu___ObjCreate( sizeof( PROBE ), &zu___sort_PROBE );
    probe->reading = 7;
    makeWaited( seven );
    makeStreams();
    makeTags();
    makeReferences( text( "jobs" ) );
    makeValues( seven );
    ZU_TIMER *timer = zuTimerCreate( fire, seven );
    zuTimerScheduleAtTime( timer, zuTimeTryCreateFromSystemTime( 2999, 12, 31, 23, 59, 59 ) );
    ZU_LINE_SOURCE *lines = zuFileOpenLineSource( text( argv[ argc - 1 ] ), ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF );
    zuLineSourceRead( lines );
    look( zuDictObj( dict ), many, store, timer, lines, zuModuleSnapshotObjects( zuModule() ) );
    return 0;
}
