// A file stream has a cache of its own over the plain calls of the platform, and not the stream of the C library: that
// drops bytes when a signal interrupts it, takes locks that nobody needs here, and forgets a failed write when the next
// flush has nothing left to do.  So an interrupted call goes on, and no part of a file passes for the whole.
//
// Whole files are read past the cache, into the one block of memory that becomes the buffer.  What a file says of its
// size is only a hint for that block: it may grow and shrink meanwhile, and some files say 0, or anything.

#include "zu/io/zu_file.h"

#include "zu/base/zu_boxed_pointer.h"
#include "zu/base/zu_string_search.h"
#include "zu/base/zu_string_trim.h"
#include "zu/base/zu_vector.h"
#include "zu/io/zu_file_internal.h"
#include "zu/io/zu_nlf_line_sink.h"
#include "zu/io/zu_nlf_line_source.h"
#include "zu/sys/zu_mem_internal.h"

#include <cstring>

static constexpr ZU_INT CACHE_BYTES = 65536;     // where a call costs little beside the copying
static constexpr ZU_INT BLOCK_MIN = 4096;        // bytes to begin with for a file that tells no size
static constexpr ZU_INT BLOCK_TRUSTED = 1 << 30; // bytes up to which a size is believed ahead of the content

struct FILE_STREAM {
    ZU___FILE_HANDLE handle;
    uint8_t *cache; // null until the first small read or write
    ZU_INT begin;   // the bytes of the cache from here on have been read ahead, or are to be written
    ZU_INT end;
    bool failed; // a write has failed, and its bytes are lost
};

// The stream as the closure of a sink or source

static void fileStreamDestroy( void *value )
{
    FILE_STREAM *stream = (FILE_STREAM *)value;
    zu___FileHandleClose( stream->handle );
    zuMemFree( stream->cache );
    zuMemFree( stream );
}
static ZU_OBJ *fileStreamCreate( ZU___FILE_HANDLE handle )
{
    FILE_STREAM *stream = (FILE_STREAM *)zuMemAlloc( sizeof( FILE_STREAM ) );
    *stream = { handle, nullptr, 0, 0, false };
    return zu___BoxedPointerObj( zu___BoxedPointerCreate( stream, fileStreamDestroy ) );
}
static FILE_STREAM *fileStreamFrom( ZU_OBJ *closure )
{
    return (FILE_STREAM *)zu___BoxedPointerValue( zu___BoxedPointerFrom( closure ) );
}
static void fileStreamNeedCache( FILE_STREAM *stream )
{
    if ( !stream->cache ) {
        stream->cache = (uint8_t *)zuMemAlloc( CACHE_BYTES );
    }
}

// Writing

static ZU_BOOL fileStreamPut( FILE_STREAM *stream, const uint8_t *bytes, ZU_INT byteCount )
{
    if ( !zu___FileHandleWrite( stream->handle, bytes, byteCount ) ) {
        stream->failed = true;
    }
    return !stream->failed;
}
static ZU_BOOL fileStreamFlush( ZU_OBJ *closure )
{
    FILE_STREAM *stream = fileStreamFrom( closure );
    if ( stream->failed ) {
        return ZU_FALSE;
    }
    ZU_INT byteCount = stream->end;
    stream->end = 0;
    return byteCount == 0 || fileStreamPut( stream, stream->cache, byteCount );
}
static ZU_BOOL fileStreamWrite( ZU_OBJ *closure, const uint8_t *bytes, ZU_INT byteCount )
{
    FILE_STREAM *stream = fileStreamFrom( closure );
    ZU_ASSERT( byteCount > 0 );
    if ( stream->failed ) {
        return ZU_FALSE;
    }
    if ( byteCount > CACHE_BYTES - stream->end && !fileStreamFlush( closure ) ) {
        return ZU_FALSE;
    }
    if ( byteCount >= CACHE_BYTES ) {
        return fileStreamPut( stream, bytes, byteCount );
    }
    fileStreamNeedCache( stream );
    memcpy( stream->cache + stream->end, bytes, (size_t)byteCount );
    stream->end += byteCount;
    return ZU_TRUE;
}

// Reading

// Reads ahead into the empty cache; false at the end and on failure, which `*ok` tells apart.
static bool fileStreamFill( FILE_STREAM *stream, bool *ok )
{
    fileStreamNeedCache( stream );
    ZU_INT byteCount = zu___FileHandleRead( stream->handle, stream->cache, CACHE_BYTES );
    stream->begin = 0;
    stream->end = zuIntMax( byteCount, 0 );
    *ok = byteCount >= 0;
    return byteCount > 0;
}
static ZU_BOOL fileStreamRead( ZU_OBJ *closure, uint8_t *bytes, ZU_INT maxByteCount, ZU_INT *bytesRead )
{
    FILE_STREAM *stream = fileStreamFrom( closure );
    ZU_ASSERT( *bytesRead == 0 );
    ZU_INT count = 0;
    bool ok = true;
    while ( count < maxByteCount ) {
        ZU_INT missing = maxByteCount - count;
        ZU_INT cached = zuIntMin( missing, stream->end - stream->begin );
        if ( cached > 0 ) {
            memcpy( bytes + count, stream->cache + stream->begin, (size_t)cached );
            stream->begin += cached;
            count += cached;
        } else if ( missing >= CACHE_BYTES ) {
            ZU_INT direct = zu___FileHandleRead( stream->handle, bytes + count, missing );
            if ( direct <= 0 ) {
                ok = direct == 0;
                break;
            }
            count += direct;
        } else if ( !fileStreamFill( stream, &ok ) ) {
            break;
        }
    }
    *bytesRead = count;
    return ok;
}
// There is no seeking: not every file can, and none would tell its end.
static ZU_BOOL fileStreamSkip( ZU_OBJ *closure, ZU_INT maxByteCount, ZU_INT *bytesSkipped )
{
    FILE_STREAM *stream = fileStreamFrom( closure );
    ZU_ASSERT( *bytesSkipped == 0 );
    ZU_INT count = 0;
    bool ok = true;
    while ( count < maxByteCount && ( stream->begin < stream->end || fileStreamFill( stream, &ok ) ) ) {
        ZU_INT cached = zuIntMin( maxByteCount - count, stream->end - stream->begin );
        stream->begin += cached;
        count += cached;
    }
    *bytesSkipped = count;
    return ok;
}

// Opening
ZU_BYTE_SINK *zu___FileOpenByteSink( ZU_STRING *fn )
{
    ZU___FILE_HANDLE handle = zu___FileHandleOpenSink( fn );
    if ( handle == ZU___FILE_HANDLE_NONE ) {
        return nullptr;
    }
    ZU_OBJ *closure = fileStreamCreate( handle );
    ZU_BYTE_SINK *sink = zu___ByteSinkCreate( fileStreamWrite, fileStreamFlush, closure );
    zuObjRelease( closure );
    return sink;
}
ZU_BYTE_SOURCE *zu___FileOpenByteSource( ZU_STRING *fn )
{
    ZU___FILE_HANDLE handle = zu___FileHandleOpenSource( fn );
    if ( handle == ZU___FILE_HANDLE_NONE ) {
        return nullptr;
    }
    ZU_OBJ *closure = fileStreamCreate( handle );
    ZU_BYTE_SOURCE *source = zu___ByteSourceCreate( fileStreamRead, fileStreamSkip, closure );
    zuObjRelease( closure );
    return source;
}

ZU_BYTE_SOURCE *zuFileOpenByteSource( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileOpenByteSource( fn );
}
ZU_BYTE_SINK *zuFileOpenByteSink( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileOpenByteSink( fn );
}
ZU_CHAR_SOURCE *zuFileOpenCharSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags )
{
    ZU_BYTE_SOURCE *bytes = zuFileOpenByteSource( fn );
    if ( !bytes ) {
        return nullptr;
    }
    ZU_CHAR_SOURCE *chars = zuCharsetCreateCharSource( bytes, charset, flags );
    zuByteSourceRelease( bytes );
    return chars;
}
// A sink of characters does not flush the sink of bytes below it, which nobody but the file layer has here: whether the
// end of a text has reached the system could not be found out.  So another sink stands above both.  Its closure is a
// vector of the two.
static constexpr ZU_INT SINK_OF_BYTES = 0;
static constexpr ZU_INT SINK_OF_CHARS = 1;

static ZU_CHAR_SINK *fileCharSinkInner( ZU_OBJ *closure )
{
    return zuCharSinkFrom( zuVectorBacking( zuVectorFrom( closure ) )[ SINK_OF_CHARS ] );
}
static ZU_BOOL fileCharSinkWrite( ZU_OBJ *closure, const ZU_CHAR *chars, ZU_INT charCount )
{
    return zuCharSinkWriteChars( fileCharSinkInner( closure ), chars, charCount );
}
static ZU_BOOL fileCharSinkFlush( ZU_OBJ *closure )
{
    ZU_BYTE_SINK *bytes = zuByteSinkFrom( zuVectorBacking( zuVectorFrom( closure ) )[ SINK_OF_BYTES ] );
    return zuCharSinkFlush( fileCharSinkInner( closure ) ) && zuByteSinkFlush( bytes );
}
ZU_CHAR_SINK *zu___FileCharSink( ZU_BYTE_SINK *bytes, ZU_CHAR_SINK *chars )
{
    ZU_OBJ *sinks[] = { zuByteSinkObj( bytes ), zuCharSinkObj( chars ) };
    ZU_VECTOR *closure = zuVectorCreateFromObjsCopy( sinks, 2 ); // takes both over
    ZU_CHAR_SINK *sink = zu___CharSinkCreate( fileCharSinkWrite, fileCharSinkFlush, zuVectorObj( closure ) );
    zuVectorRelease( closure );
    return sink;
}
ZU_CHAR_SINK *zuFileOpenCharSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags )
{
    ZU_BYTE_SINK *bytes = zuFileOpenByteSink( fn );
    return bytes ? zu___FileCharSink( bytes, zuCharsetCreateCharSink( bytes, charset, flags ) ) : nullptr;
}
ZU_LINE_SOURCE *zu___FileLineSource( ZU_CHAR_SOURCE *chars, ZU_NLF_FLAGS nlfFlags )
{
    if ( !chars ) {
        return nullptr;
    }
    ZU_NLF_LINE_SOURCE *nls = zuNlfLineSourceCreate( chars, nlfFlags );
    ZU_LINE_SOURCE *lines = zuNlfLineSourceLineSource( nls );
    zuNlfLineSourceRelease( nls );
    zuCharSourceRelease( chars );
    return lines;
}
ZU_LINE_SOURCE *zuFileOpenLineSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags, ZU_NLF_FLAGS nlfFlags )
{
    return zu___FileLineSource( zuFileOpenCharSource( fn, charset, flags ), nlfFlags );
}
ZU_LINE_SINK *zu___FileLineSink( ZU_CHAR_SINK *chars, ZU_NLF_FLAGS nlfFlags )
{
    if ( !chars ) {
        return nullptr;
    }
    ZU_NLF_LINE_SINK *nls = zuNlfLineSinkCreate( chars, nlfFlags );
    ZU_LINE_SINK *lines = zuNlfLineSinkLineSink( nls );
    zuNlfLineSinkRelease( nls );
    zuCharSinkRelease( chars );
    return lines;
}
ZU_LINE_SINK *zuFileOpenLineSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags, ZU_NLF_FLAGS nlfFlags )
{
    return zu___FileLineSink( zuFileOpenCharSink( fn, charset, flags ), nlfFlags );
}

// Whole files

// Reads on until the end into a block of zuMemAlloc, which is returned, and stores the length.  Returns null if reading
// fails, there are `limit` bytes or more, or the memory is short.
static uint8_t *fileReadBlock( ZU___FILE_HANDLE handle, ZU_INT limit, ZU_INT *length )
{
    // One byte more than there should be, so that the end shows without another block
    ZU_INT room =
        zuIntMin( limit, zuIntMax( zuIntMin( zu___FileHandleSize( handle ), BLOCK_TRUSTED ) + 1, BLOCK_MIN ) );
    uint8_t *bytes = (uint8_t *)zu___MemTryRealloc( nullptr, room );
    ZU_INT count = bytes ? 0 : -1;
    *length = 0;
    while ( count >= 0 && ( count = zu___FileHandleRead( handle, bytes + *length, room - *length ) ) > 0 ) {
        *length += count;
        if ( *length == limit ) {
            count = -1;
        } else if ( *length == room ) {
            room = zuIntMin( limit, room * 2 );
            uint8_t *larger = (uint8_t *)zu___MemTryRealloc( bytes, room );
            bytes = larger ? larger : bytes;
            count = larger ? count : -1;
        }
    }
    if ( count < 0 ) {
        zuMemFree( bytes );
        return nullptr;
    }
    // A file that shrank, or had to be guessed at, does not keep its room.
    if ( *length > 0 && room - *length > 1 ) {
        bytes = (uint8_t *)zuMemRealloc( bytes, *length );
    }
    return bytes;
}

ZU_BUFFER *zuFileReadBuffer( ZU_STRING *fn, ZU_INT maxBytes )
{
    ZU_ASSERT( fn );
    ZU_ASSERT( maxBytes >= -1 );
    ZU___FILE_HANDLE handle = zu___FileHandleOpenSource( fn );
    if ( handle == ZU___FILE_HANDLE_NONE ) {
        return nullptr;
    }
    ZU_INT limit = maxBytes == -1 || maxBytes == ZU_INT_MAX ? ZU_INT_MAX : maxBytes + 1;
    ZU_INT length;
    uint8_t *bytes = fileReadBlock( handle, limit, &length );
    zu___FileHandleClose( handle );
    if ( bytes && length == 0 ) {
        zuMemFree( bytes );
        return zuBufferCreate();
    }
    return bytes ? zuBufferCreateFromBytesUse( bytes, length ) : nullptr;
}
ZU_BOOL zuFileWriteBuffer( ZU_STRING *fn, ZU_BUFFER *buf )
{
    ZU_ASSERT( fn );
    ZU_ASSERT( buf );
    ZU_BYTE_SINK *sink = zuFileOpenByteSink( fn );
    if ( !sink ) {
        return ZU_FALSE;
    }
    zuByteSinkWrite( sink, buf );
    zuByteSinkFlush( sink );
    ZU_BOOL ok = !zuByteSinkError( sink );
    zuByteSinkRelease( sink );
    return ok;
}

// State
ZU_BOOL zuFileExists( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileExists( fn );
}
ZU_BOOL zuFileIsDirectory( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileIsDirectory( fn );
}
ZU_INT zuFileSize( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileSize( fn );
}
ZU_TIME *zuFileModificationTime( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileModificationTime( fn );
}

// Changing directories
ZU_BOOL zuFileDelete( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileDelete( fn );
}
ZU_BOOL zuFileRename( ZU_STRING *fn, ZU_STRING *newFn )
{
    ZU_ASSERT( fn );
    ZU_ASSERT( newFn );
    return zu___FileRename( fn, newFn );
}
ZU_BOOL zuFileCreateDirectory( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileCreateDirectory( fn );
}
ZU_BOOL zuFileDeleteDirectory( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileDeleteDirectory( fn );
}
ZU_BOOL zuFileDeleteDirectoryRecursive( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileDeleteTree( fn );
}

// Names
static bool fileEndsWithDelimiter( ZU_STRING *name )
{
    return zuStringEndsWithChar( name, ZU_CHAR_SOLIDUS ) || zuStringEndsWithChar( name, ZU_CHAR_REVERSE_SOLIDUS );
}
ZU_STRING *zu___FileNamePrepare( ZU_STRING *name )
{
    ZU_STRING *prepared = zuStringRetain( name );
    zuStringTrim( &prepared );
    while ( zuStringLength( prepared ) > 1 && fileEndsWithDelimiter( prepared ) ) {
        zuStringDelTrailing( &prepared, 1 );
        zuStringTrim( &prepared );
    }
    return prepared;
}

ZU_STRING *zuFileBaseName( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileBaseName( fn );
}
ZU_STRING *zuFileDirName( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    return zu___FileDirName( fn );
}
ZU_STRING *zuFileExtensionName( ZU_STRING *fn )
{
    ZU_ASSERT( fn );
    ZU_STRING *name = zuFileBaseName( fn );
    ZU_INT dot = zuStringFindCharFromRight( name, -1, ZU_CHAR_FULL_STOP );
    zuStringDelLeading( &name, dot >= 0 ? dot : zuStringLength( name ) );
    return name;
}
ZU_CHAR zuFilePathDelimiter( void )
{
    return zu___FilePathDelimiter();
}
void zu___FilePathAppendDelimiter( ZU_STRING **pn )
{
    if ( !fileEndsWithDelimiter( *pn ) ) {
        zuStringAppendChar( pn, zu___FilePathDelimiter() );
    }
}
void zuFilePathAppendDelimiter( ZU_STRING **pn )
{
    ZU_ASSERT( pn );
    ZU_ASSERT( *pn );
    zu___FilePathAppendDelimiter( pn );
}
ZU_BOOL zuPathIsRelative( ZU_STRING *pn )
{
    ZU_ASSERT( pn );
    return zu___PathIsRelative( pn );
}

// Places
ZU_BOOL zuFileSystemStats( ZU_STRING *pn, ZU_INT *total, ZU_INT *free, ZU_INT *used )
{
    ZU_ASSERT( pn );
    return zu___FileSystemStats( pn, total, free, used );
}
ZU_STRING *zuCurrentDirectory( void )
{
    return zu___CurrentDirectory();
}
ZU_STRING *zuGetExecutablePath( void )
{
    return zu___GetExecutablePath();
}
ZU_VECTOR *zuDirectoryContent( ZU_STRING *path, ZU_BOOL noDirectories, ZU_STRING *suffix )
{
    ZU_ASSERT( path );
    return zu___DirectoryContent( path, noDirectories, suffix );
}
