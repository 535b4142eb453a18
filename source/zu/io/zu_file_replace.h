// zu_file_replace.h: replacing the content of a file so that nothing of the old and the new is ever mixed.
//
// An addition beside zu_file.h, for settings and whatever else must not get lost: zuFileWriteBuffer empties the file
// before it writes.  Here the new content goes to a file of its own in the same folder first, and to the disk; then it
// takes the old one's name in one step, and the folder goes to the disk.  Whoever opens `fn`, meanwhile or after a
// crash at any moment, finds the old content or the new, whole.  A crash can leave a file ".zu-" with 16 hexadecimal
// digits behind.
//
// Both return true if the new content is there for good.  If they return false, the old content is in place, or the new
// one if only the very last step has failed; nothing else is left.
//
// Permissions, access lists, owner and group of an old file are kept.  The owner alone may become the caller, where the
// system does not let anybody give files away; where anything else cannot be kept, nothing is replaced.  A new file
// gets what zuFileOpenByteSink would give it.  If `fn` is a symbolic link, what it points to is replaced; other hard
// links keep the old content.  What is no file, what the caller may not write to, and what a sink has open, is refused.
#pragma once

#include "zu/base/zu_buffer.h"
#include "zu/base/zu_string.h"

ZU_BEGIN_DECLS

/// Makes the whole bytes of `buf` the content of `fn`.
ZU_API ZU_BOOL zuFileReplaceBuffer( ZU_STRING *fn, ZU_BUFFER *buf );
/// Makes `byteCount` bytes, null only if there are none, the content of `fn`.
ZU_API ZU_BOOL zuFileReplaceBytes( ZU_STRING *fn, const uint8_t *bytes, ZU_INT byteCount );

ZU_END_DECLS
