// Text is encoded piece by piece on the stack: the report of what is left comes when there are no strings any more.

#include "zu/io/zu_print_stdio.h"

#include "zu/sys/zu_abort.h"
#include "zu/sys/zu_chars_internal.h"
#include "zu/sys/zu_surrogate_internal.h"

#include <cstdio>

static constexpr size_t PIECE_BYTES = 1024;

static void printTo( FILE *stream, const ZU_CHAR *chs, ZU_INT chsLength )
{
    ZU_ASSERT( chsLength >= 0 );
    ZU_ASSERT( chsLength == 0 || chs );
    uint8_t piece[ PIECE_BYTES + ZU___CHARS_UTF8_SEQUENCE_MAX ];
    uint8_t *end = piece;
    for ( ZU_INT i = 0; i < chsLength; i++ ) {
        ZU_CHAR ch = chs[ i ];
        if ( zu___IsHighSurrogate( ch ) && i + 1 < chsLength && zu___IsLowSurrogate( chs[ i + 1 ] ) ) {
            ch = zu___SurrogatesJoin( ch, chs[ ++i ] );
        }
        end = zu___CharsPutUtf8( end, zu___IsSurrogate( ch ) ? ZU_CHAR_REPLACEMENT_CHARACTER : ch );
        if ( end >= piece + PIECE_BYTES ) {
            fwrite( piece, 1, (size_t)( end - piece ), stream );
            end = piece;
        }
    }
    fwrite( piece, 1, (size_t)( end - piece ), stream );
}
void zuPrintToStdout( const ZU_CHAR *chs, ZU_INT chsLength )
{
    printTo( stdout, chs, chsLength );
}
void zuPrintToStderr( const ZU_CHAR *chs, ZU_INT chsLength )
{
    printTo( stderr, chs, chsLength );
}
