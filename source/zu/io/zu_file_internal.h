// zu_file_internal.h: what a platform must provide for files, beside the functions of zu_file.h that have three
// underscores and are not in zu_file.cpp, and what it is given for that.
//
// A name comes as the caller has told it, never null, and goes through zu___FileNamePrepare before the system sees it.
// No call aborts for anything that a file system does, and none leaves anything open that it does not return.  A call
// that is interrupted is resumed.  Files are not inherited by programs that the process executes.
#pragma once

#include "zu/io/zu_file.h"

ZU_BEGIN_DECLS

// Returns a new string of `name` as the file system gets it: without white space at the ends, and without delimiters of
// any platform at the end.
ZU_STRING *zu___FileNamePrepare( ZU_STRING *name );

// An open file, as the platform tells it.
typedef intptr_t ZU___FILE_HANDLE;
#define ZU___FILE_HANDLE_NONE ( (ZU___FILE_HANDLE)-1 )

// Opens a file for reading from front to back, and keeps nobody off it.  A directory is refused.
ZU___FILE_HANDLE zu___FileHandleOpenSource( ZU_STRING *fn );
// Opens a file for reading and writing; creates it, with permission to read and write, or empties it.  As long as it is
// open, further calls for it fail, in all processes; such a call leaves the content as it is.  A directory is refused.
// A pipe is opened for writing alone, as soon as somebody reads it; once nobody does any more, writing fails.
ZU___FILE_HANDLE zu___FileHandleOpenSink( ZU_STRING *fn );
// Returns how many bytes the file says it has, 0 if it does not tell.
ZU_INT zu___FileHandleSize( ZU___FILE_HANDLE handle );
// Reads up to `maxByteCount` bytes, more than 0, and returns how many came: as many as the system has at hand, 0 at the
// end of the file, -1 on failure.
ZU_INT zu___FileHandleRead( ZU___FILE_HANDLE handle, uint8_t *bytes, ZU_INT maxByteCount );
// Hands all of `byteCount` bytes to the system; false if it does not take some of them, which raises no signal.
ZU_BOOL zu___FileHandleWrite( ZU___FILE_HANDLE handle, const uint8_t *bytes, ZU_INT byteCount );
// Closes the file.
void zu___FileHandleClose( ZU___FILE_HANDLE handle );

// Deletes a directory and all that is in it, as zuFileDeleteDirectoryRecursive tells: what the delete functions cannot
// delete is left; false unless the directory and all within it are gone.  No link out of the tree is followed, even if
// one takes the place of a directory meanwhile.  Neither the stack nor the number of open files grows with the depth.
ZU_BOOL zu___FileDeleteTree( ZU_STRING *fn );

// What stands above an open file; each takes the streams over.
// Returns a sink that writes to `chars`, and whose flush flushes that and then `bytes` below it.
ZU_CHAR_SINK *zu___FileCharSink( ZU_BYTE_SINK *bytes, ZU_CHAR_SINK *chars );
// Returns a source of the lines of `chars`, null for null.
ZU_LINE_SOURCE *zu___FileLineSource( ZU_CHAR_SOURCE *chars, ZU_NLF_FLAGS nlfFlags );
// Returns a sink of lines that go to `chars`, null for null.
ZU_LINE_SINK *zu___FileLineSink( ZU_CHAR_SINK *chars, ZU_NLF_FLAGS nlfFlags );

// Does what zuFileReplaceBytes does.
ZU_BOOL zu___FileReplace( ZU_STRING *fn, const uint8_t *bytes, ZU_INT byteCount );

ZU_END_DECLS
