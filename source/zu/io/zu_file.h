// zu_file.h: files as streams and as wholes, the state of files, directories, and names of files.
//
// A thin, blocking layer over the file system.  Nothing that a file system does is fatal: what fails returns null,
// false, -1 or an empty vector, with no detail, and leaves nothing open.  Calls that a signal interrupts are resumed.
// A file that is opened here is closed in programs that the process executes.
//
// Names are strings.  Of each, white space at both ends is dropped, and then any number of "/" and "\" at the end, with
// the white space ahead of them; one character is always left.  So "dir/" is "dir", and a file whose name ends in one
// of these cannot be told.  Names are otherwise taken as they are.  On POSIX systems a name is UTF-8, and "\" is an
// ordinary character in it; a byte 0xNN that is no part of valid UTF-8 is the character U+DCNN, so that whatever a
// directory lists can be opened.  A name that nothing can stand for, with U+0000 or another half of a surrogate pair in
// it, belongs to no file.
//
// All functions are callable from any thread.  The safe way to write a file is in zu_file_replace.h, the exact way to
// read and write its text in zu_file_exact.h.
#pragma once

#include "zu/base/zu_time.h"
#include "zu/base/zu_vector.h"
#include "zu/charset/zu_charset.h"
#include "zu/io/zu_byte_sink.h"
#include "zu/io/zu_byte_source.h"
#include "zu/io/zu_line_sink.h"
#include "zu/io/zu_line_source.h"
#include "zu/io/zu_nlf_flags.h"

ZU_BEGIN_DECLS

// Files as streams; each returns a new stream, or null if the file cannot be opened
//
// The file closes with the last reference to the stream.  A source reads ahead, and never seeks.  A sink creates the
// file or empties it, and keeps other sinks off it while it is open: opening a second one fails, and leaves the content
// alone.  It collects what is written; flushing it, as a sink of characters or lines too, hands that to the system.  A
// write that has failed makes each later write and flush fail, since its bytes are lost.  A directory cannot be opened.
// Opening a named pipe waits for its other end, and writing to one that nobody reads any more fails.  No failure raises
// a signal.
/// Opens `fn` for reading bytes.
ZU_API ZU_BYTE_SOURCE *zuFileOpenByteSource( ZU_STRING *fn );
/// Opens `fn` for writing bytes.
ZU_API ZU_BYTE_SINK *zuFileOpenByteSink( ZU_STRING *fn );
/// Opens `fn` for reading characters, which zuCharsetCreateCharSource decodes.
ZU_API ZU_CHAR_SOURCE *zuFileOpenCharSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags );
/// Opens `fn` for writing characters, which zuCharsetCreateCharSink encodes.
ZU_API ZU_CHAR_SINK *zuFileOpenCharSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags );
/// Opens `fn` for reading lines, which end at the newline functions of `nlfFlags`.
ZU_API ZU_LINE_SOURCE *zuFileOpenLineSource( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                             ZU_NLF_FLAGS nlfFlags );
/// Opens `fn` for writing lines, with the newline function that zuNlfFlagsNlfString tells of.
ZU_API ZU_LINE_SINK *zuFileOpenLineSink( ZU_STRING *fn, ZU_CHARSET charset, ZU_CHARSET_FLAGS flags,
                                         ZU_NLF_FLAGS nlfFlags );

// Whole files
/// Returns the content of `fn`, all of it or null: also if it is longer than `maxBytes`, where -1 means no limit and
/// less aborts, and if memory is short of it.
ZU_API ZU_BUFFER *zuFileReadBuffer( ZU_STRING *fn, ZU_INT maxBytes );
/// Makes the whole bytes of `buf` the content of `fn`, and tells whether all of them were handed to the system.  The
/// file is emptied first, so that a failure leaves a part.
ZU_API ZU_BOOL zuFileWriteBuffer( ZU_STRING *fn, ZU_BUFFER *buf );

// State; a symbolic link counts as what it points to
/// Tells whether the state of `fn` can be read; it may be a directory.
ZU_API ZU_BOOL zuFileExists( ZU_STRING *fn );
/// Tells whether `fn` is a directory; false also if that cannot be found out.
ZU_API ZU_BOOL zuFileIsDirectory( ZU_STRING *fn );
/// Returns the size of `fn` in bytes, or -1.
ZU_API ZU_INT zuFileSize( ZU_STRING *fn );
/// Returns when the content of `fn` was changed last, or null.
ZU_API ZU_TIME *zuFileModificationTime( ZU_STRING *fn );

// Changing directories; each tells whether it succeeded
/// Deletes the file `fn`, or a symbolic link and not what it points to; no directory.
ZU_API ZU_BOOL zuFileDelete( ZU_STRING *fn );
/// Moves the file or directory `fn` to the name `newFn`, which must not exist, on the same file system.
ZU_API ZU_BOOL zuFileRename( ZU_STRING *fn, ZU_STRING *newFn );
/// Creates the directory `fn` in one that exists; false also if it exists itself.
ZU_API ZU_BOOL zuFileCreateDirectory( ZU_STRING *fn );
/// Deletes the empty directory `fn`.
ZU_API ZU_BOOL zuFileDeleteDirectory( ZU_STRING *fn );
/// Deletes the directory `fn` with all that is in it, as far as it can.  Symbolic links are deleted and never followed,
/// whatever others do to the tree meanwhile; `fn` itself must not be one.  The tree may be of any depth.
ZU_API ZU_BOOL zuFileDeleteDirectoryRecursive( ZU_STRING *fn );

// Names; the files need not exist
/// Returns the last component of `fn`, with its extension.
ZU_API ZU_STRING *zuFileBaseName( ZU_STRING *fn );
/// Returns what is ahead of the last component of `fn`, with the delimiter; empty if there is nothing.
ZU_API ZU_STRING *zuFileDirName( ZU_STRING *fn );
/// Returns the base name from its last "." on; empty if it has none.
ZU_API ZU_STRING *zuFileExtensionName( ZU_STRING *fn );
/// Returns the platform's delimiter of components: "/", or "\" on Windows.
ZU_API ZU_CHAR zuFilePathDelimiter( void );
/// Appends the delimiter, unless `*pn` ends in "/" or "\" already.
ZU_API void zuFilePathAppendDelimiter( ZU_STRING **pn );
/// Tells whether what `pn` names depends on the current directory.
ZU_API ZU_BOOL zuPathIsRelative( ZU_STRING *pn );

// Places
/// Stores how many bytes the file system that `pn` is on has in all, how many of them are free, and the difference;
/// each pointer may be null.  Returns false, and stores nothing, if that cannot be found out.
ZU_API ZU_BOOL zuFileSystemStats( ZU_STRING *pn, ZU_INT *total, ZU_INT *free, ZU_INT *used );
/// Returns the current directory; one that has been deleted aborts.
ZU_API ZU_STRING *zuCurrentDirectory( void );
/// Returns the file that the process executes; it aborts if the system does not tell.
ZU_API ZU_STRING *zuGetExecutablePath( void );
/// Returns what is in the directory `path`, in the order that the system gives, as strings of the path, a delimiter and
/// the name.
///
/// With `noDirectories` directories, and links to them, are left out.  Of a `suffix`, which may be null, case does not
/// count.  A directory that cannot be opened, or not be read to its end, gives an empty vector.
ZU_API ZU_VECTOR *zuDirectoryContent( ZU_STRING *path, ZU_BOOL noDirectories, ZU_STRING *suffix );

// For authors of classes and modules: what differs between platforms.  Each does what the function above does that has
// the same name, and takes no null where that takes none.
/// Opens a file for writing.
ZU_API ZU_BYTE_SINK *zu___FileOpenByteSink( ZU_STRING *fn );
/// Opens a file for reading.
ZU_API ZU_BYTE_SOURCE *zu___FileOpenByteSource( ZU_STRING *fn );
/// Returns the last component.
ZU_API ZU_STRING *zu___FileBaseName( ZU_STRING *fn );
/// Returns what is ahead of the last component.
ZU_API ZU_STRING *zu___FileDirName( ZU_STRING *fn );
/// Tells whether the state can be read.
ZU_API ZU_BOOL zu___FileExists( ZU_STRING *fn );
/// Tells whether it is a directory.
ZU_API ZU_BOOL zu___FileIsDirectory( ZU_STRING *fn );
/// Returns when the content was changed last.
ZU_API ZU_TIME *zu___FileModificationTime( ZU_STRING *fn );
/// Returns the size in bytes.
ZU_API ZU_INT zu___FileSize( ZU_STRING *fn );
/// Deletes a file.
ZU_API ZU_BOOL zu___FileDelete( ZU_STRING *fn );
/// Moves a file or directory.
ZU_API ZU_BOOL zu___FileRename( ZU_STRING *fn, ZU_STRING *newFn );
/// Creates a directory.
ZU_API ZU_BOOL zu___FileCreateDirectory( ZU_STRING *fn );
/// Deletes an empty directory.
ZU_API ZU_BOOL zu___FileDeleteDirectory( ZU_STRING *fn );
/// Returns the delimiter.
ZU_API ZU_CHAR zu___FilePathDelimiter( void );
/// Appends the delimiter.
ZU_API void zu___FilePathAppendDelimiter( ZU_STRING **pn );
/// Stores the sizes of a file system.
ZU_API ZU_BOOL zu___FileSystemStats( ZU_STRING *pn, ZU_INT *total, ZU_INT *free, ZU_INT *used );
/// Returns the current directory.
ZU_API ZU_STRING *zu___CurrentDirectory( void );
/// Returns what is in a directory.
ZU_API ZU_VECTOR *zu___DirectoryContent( ZU_STRING *path, ZU_BOOL noDirectories, ZU_STRING *suffix );
/// Returns the file that the process executes.
ZU_API ZU_STRING *zu___GetExecutablePath( void );
/// Tells whether a path depends on the current directory.
ZU_API ZU_BOOL zu___PathIsRelative( ZU_STRING *pn );

ZU_END_DECLS
