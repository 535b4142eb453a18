// zu_bytes.h: buffers, values as bytes, streams, files, and character sets.
//
// Each include has ahead of it the sentence with which the header begins.
#pragma once

// ZU_BUFFER: binary data, a sequence of bits whose number need not be a multiple of 8.
#include "zu/base/zu_buffer.h"

// ZU_ENCODER: appends values to a buffer in the library's own compact binary form, which ZU_DECODER reads back.
#include "zu/base/zu_encoder.h"

// ZU_DECODER: reads values from a buffer in the binary form of ZU_ENCODER, which zu_encoder.h tells.
#include "zu/base/zu_decoder.h"

// zu_random.h: random numbers, fit for keys and identities.
#include "zu/base/zu_random.h"

// ZU_BYTE_SINK: where bytes are written to, such as a file, a buffer in memory or the encoder of a character set.
#include "zu/io/zu_byte_sink.h"

// ZU_BYTE_SOURCE: where bytes are read from, such as a file, a buffer in memory or the bytes ahead of a decoder.
#include "zu/io/zu_byte_source.h"

// ZU_BUFFER_BYTE_SINK: collects what is written to its byte sinks in a buffer.
#include "zu/io/zu_buffer_byte_sink.h"

// ZU_BUFFER_BYTE_SOURCE: a buffer to be read through byte sources, which share one position in it.
#include "zu/io/zu_buffer_byte_source.h"

// ZU_CHAR_SINK: where text is written to, code point by code point, such as an encoder or a string in memory.
#include "zu/io/zu_char_sink.h"

// ZU_CHAR_SOURCE: where text is read from, code point by code point, such as a decoder or a string in memory.
#include "zu/io/zu_char_source.h"

// ZU_STRING_CHAR_SINK: collects what is written to its character sinks in a string.
#include "zu/io/zu_string_char_sink.h"

// ZU_STRING_CHAR_SOURCE: a string to be read through character sources, which share one position in it.
#include "zu/io/zu_string_char_source.h"

// ZU_LINE_SINK: where text is written to line by line.
#include "zu/io/zu_line_sink.h"

// ZU_LINE_SOURCE: where text is read from line by line.
#include "zu/io/zu_line_source.h"

// ZU_NLF_FLAGS: which newline functions end a line, one bit for each.
#include "zu/io/zu_nlf_flags.h"

// ZU_NLF_LINE_SINK: writes lines to a character sink, each with a newline function behind it.
#include "zu/io/zu_nlf_line_sink.h"

// ZU_NLF_LINE_SOURCE: splits what comes from a character source into lines, at newline functions.
#include "zu/io/zu_nlf_line_source.h"

// zu_charset.h: the 51 character sets (encodings), by number, by name and by Windows code page, and conversion from and
// to them.
#include "zu/charset/zu_charset.h"

// zu_charset_flags.h: what streams of a character set do about invalid input and byte order marks, a ZU_INT of bits.
#include "zu/charset/zu_charset_flags.h"

// zu_charset_map.h: the single-byte character sets as functions from bytes to characters and back, and the streams that
// work through such a pair of functions.
#include "zu/charset/zu_charset_map.h"

// zu_charset_utf.h: the streams of UTF-8, UTF-16 and UTF-32.
#include "zu/charset/zu_charset_utf.h"

// ZU_EXACT_CHAR_SOURCE: reads a character set by the letter of its standard.
#include "zu/charset/zu_exact_char_source.h"

// ZU_EXACT_CHAR_SINK: writes a character set by the letter of its standard.
#include "zu/charset/zu_exact_char_sink.h"

// zu_file.h: files as streams and as wholes, the state of files, directories, and names of files.
#include "zu/io/zu_file.h"

// zu_file_exact.h: files as streams of characters and lines, by the letter of the standards.
#include "zu/io/zu_file_exact.h"

// zu_file_replace.h: replacing the content of a file so that nothing of the old and the new is ever mixed.
#include "zu/io/zu_file_replace.h"
