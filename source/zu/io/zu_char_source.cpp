// A source adds three things to the function of its backend: it remembers the end and a failure, and checks the count
// that it is told.  It keeps no text; what is read into a string goes through a piece of the stack.

#include "zu/io/zu_char_source.h"

#include "zu/io/zu_stream_internal.h"
#include "zu/runtime/zu_module.h"

static constexpr ZU_INT CHUNK_CHARS = 1024; // what a backend is asked for at a time; 4 KiB of stack

struct ZU_CHAR_SOURCE {
    ZU_OBJ obj;
    ZU_CHAR_SOURCE_READ_FUNC readFunc; // never null
    ZU_OBJ *closure;                   // the backend; may be null
    ZU_BOOL end;                       // never cleared
    ZU_BOOL error;                     // never cleared; implies end
};

static void charSourceFree( ZU_OBJ *thisObj );

static ZU_SORT zu___sort_ZU_CHAR_SOURCE =
    ZU___SORT_INITIALIZER( "ZU_CHAR_SOURCE", &zu___module, charSourceFree, nullptr, nullptr );
ZU___STDFUNCS( ZU_CHAR_SOURCE, zuCharSource )

// Creation
ZU_CHAR_SOURCE *zu___CharSourceCreate( ZU_CHAR_SOURCE_READ_FUNC readFunc, ZU_OBJ *closure )
{
    ZU_ASSERT( readFunc );
    return zu___SourceCreate<ZU_CHAR_SOURCE>( &zu___sort_ZU_CHAR_SOURCE, readFunc, closure );
}
static void charSourceFree( ZU_OBJ *thisObj )
{
    ZU_CHAR_SOURCE *cs = zuCharSourceFrom( thisObj );
    ZU_ASSERT( cs );
    zu___SourceFinish( cs );
}

// State
ZU_BOOL zuCharSourceEnd( ZU_CHAR_SOURCE *cs )
{
    ZU_ASSERT( cs );
    return cs->end;
}
ZU_BOOL zuCharSourceError( ZU_CHAR_SOURCE *cs )
{
    ZU_ASSERT( cs );
    return cs->error;
}

// Reading
ZU_INT zuCharSourceRead( ZU_CHAR_SOURCE *cs, ZU_STRING **zus, ZU_INT maxCharCount )
{
    ZU_ASSERT( cs );
    ZU_ASSERT( zus );
    ZU_ASSERT( *zus );
    ZU_ASSERT( maxCharCount >= -1 );
    ZU_INT remaining = maxCharCount == -1 ? ZU_INT_MAX : maxCharCount;
    ZU_INT total = 0;
    while ( remaining > 0 && !cs->end ) {
        ZU_CHAR chunk[ CHUNK_CHARS ];
        ZU_INT charsToRead = zuIntMin( remaining, CHUNK_CHARS );
        ZU_INT charsRead = 0;
        ZU_BOOL ok = cs->readFunc( cs->closure, chunk, charsToRead, &charsRead );
        ZU_ASSERT( charsRead >= 0 );
        ZU_ASSERT( charsRead <= charsToRead );
        zuStringAppendChars( zus, chunk, charsRead );
        zu___SourceNote( cs, ok, charsRead == charsToRead );
        total += charsRead;
        remaining -= charsRead;
    }
    return total;
}
ZU_INT zuCharSourceReadChars( ZU_CHAR_SOURCE *cs, ZU_CHAR *chars, ZU_INT maxCharCount )
{
    ZU_ASSERT( cs );
    ZU_ASSERT( maxCharCount >= -1 );
    ZU_ASSERT( maxCharCount == 0 || chars );
    if ( maxCharCount == -1 ) {
        maxCharCount = ZU_INT_MAX;
    }
    ZU_INT charsRead = 0;
    ZU_BOOL ok = cs->readFunc( cs->closure, chars, maxCharCount, &charsRead );
    ZU_ASSERT( charsRead >= 0 );
    ZU_ASSERT( charsRead <= maxCharCount );
    zu___SourceNote( cs, ok, charsRead == maxCharCount );
    return charsRead;
}
