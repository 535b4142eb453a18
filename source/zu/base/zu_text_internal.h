// zu_text_internal.h: a part of a text that is read where it stands, for readers of names, versions and times.  A text
// that is none of these costs no more than the look at it.
#pragma once

#include "zu/base/zu_ascii_internal.h"
#include "zu/base/zu_string_trim_internal.h"

struct ZU___TEXT {
    const ZU_CHAR *chars;
    ZU_INT length;
};
static inline ZU___TEXT zu___TextOf( ZU_STRING *zus )
{
    return { zuStringBacking( zus ), zuStringLength( zus ) };
}
// Returns what is left without the white space at both ends.
static inline ZU___TEXT zu___TextTrimmed( ZU___TEXT text )
{
    while ( text.length > 0 && zuUnicodeIsWhiteSpace( text.chars[ text.length - 1 ] ) ) {
        text.length--;
    }
    while ( text.length > 0 && zuUnicodeIsWhiteSpace( text.chars[ 0 ] ) ) {
        text = { text.chars + 1, text.length - 1 };
    }
    return text;
}
// Takes what stands ahead of the first separator off the front of `*rest`, and the separator too.
template <typename IS_SEPARATOR>
static inline ZU___TEXT zu___TextTakePiece( ZU___TEXT *rest, IS_SEPARATOR isSeparator )
{
    ZU___TEXT piece = { rest->chars, 0 };
    while ( piece.length < rest->length && !isSeparator( rest->chars[ piece.length ] ) ) {
        piece.length++;
    }
    ZU_INT taken = zuIntMin( piece.length + 1, rest->length );
    *rest = { rest->chars + taken, rest->length - taken };
    return piece;
}
// Splits at `separator`, and returns the number of pieces, at least 1; the last may hold further separators.
static inline ZU_INT zu___TextSplitChar( ZU___TEXT text, ZU_CHAR separator, ZU___TEXT *pieces, ZU_INT maxPieces )
{
    ZU_INT count = 0;
    while ( count < maxPieces - 1 ) {
        ZU___TEXT before = text;
        pieces[ count++ ] = zu___TextTakePiece( &text, [ separator ]( ZU_CHAR ch ) { return ch == separator; } );
        if ( pieces[ count - 1 ].length == before.length ) {
            return count;
        }
    }
    pieces[ count++ ] = text;
    return count;
}
// Tells whether a text is the first `length` letters of `word`, in either case; no letters outside ASCII are those of
// a word in another case.
static inline bool zu___TextIsWord( ZU___TEXT text, const char *word, size_t length )
{
    return zu___AsciiCompare( text.chars, text.length, word, (ZU_INT)length, true ) == 0;
}
