// A state machine over single bytes tells what every input means.  Well-formed sequences that lie whole in the cache
// are taken in blocks ahead of it, as soon as no byte order mark can follow any more.

#include "zu/charset/zu_charset_closure_internal.h"
#include "zu/charset/zu_charset_utf.h"
#include "zu/sys/zu_chars_internal.h"

enum UTF8_STATE : ZU_INT {
    STATE_START,
    STATE_IN_SEQUENCE,
    STATE_RESYNCHRONIZING, // until a byte that can begin a sequence
};

struct ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE {
    ZU_OBJ obj;
    ZU_CHARSET_FLAGS flags; // normalised
    ZU_BOOL bomChecked;     // a character has gone out
    ZU_INT state;           // one of UTF8_STATE
    ZU___CHARSET_INPUT input;
};

static void utf8CharSourceFree( ZU_OBJ *thisObj );

ZU___CHARSET_CLOSURE( ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE, utf8CharSource )

static void utf8CharSourceFree( ZU_OBJ *thisObj )
{
    ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE *csc = utf8CharSourceFrom( thisObj );
    ZU_ASSERT( csc );
    zu___CharsetInputEnd( &csc->input );
}

// Tells by the flags what becomes of invalid input.
enum UTF8_VERDICT { FAIL, DROP, REPLACE };
static UTF8_VERDICT utf8CharSourceVerdict( const ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE *csc )
{
    if ( csc->flags & ZU_CHARSET_FLAG_ABORT_ON_INVALID_CHARACTER ) {
        return FAIL;
    }
    return csc->flags & ZU_CHARSET_FLAG_IGNORE_INVALID_CHARACTERS ? DROP : REPLACE;
}

static ZU_BOOL utf8CharSourceRead( ZU_OBJ *closure, ZU_CHAR *chars, ZU_INT charCount, ZU_INT *charsRead )
{
    ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE *csc = utf8CharSourceFrom( closure );
    ZU_ASSERT( csc );
    ZU_ASSERT( charCount >= 0 );
    ZU_ASSERT( chars || charCount == 0 );
    ZU_ASSERT( charsRead );
    ZU_ASSERT( *charsRead == 0 );
    ZU___CHARSET_INPUT *input = &csc->input;
    UTF8_VERDICT verdict = utf8CharSourceVerdict( csc );
    // A call ends between characters, or at the end of the input, so the rest of a sequence need not outlive it.
    ZU_CHAR value = 0;
    ZU_INT missing = 0; // continuations
    ZU_INT i = 0;
    auto deliver = [ & ]( ZU_CHAR ch ) {
        chars[ i++ ] = ch;
        csc->bomChecked = ZU_TRUE;
    };
    while ( i < charCount ) {
        if ( !zu___CharsetInputReady( input ) ) {
            if ( zuByteSourceError( input->byteSource ) ) {
                *charsRead = i;
                return ZU_FALSE;
            }
            if ( csc->state == STATE_IN_SEQUENCE && verdict == REPLACE ) {
                deliver( ZU_CHAR_REPLACEMENT_CHARACTER );
            }
            *charsRead = i;
            return csc->state != STATE_IN_SEQUENCE || verdict != FAIL;
        }
        if ( csc->state == STATE_START && csc->bomChecked ) {
            const uint8_t *src = input->bytes + input->pos;
            i += zu___CharsDecodeUtf8( chars + i, charCount - i, &src, input->bytes + input->length );
            input->pos = src - input->bytes;
            if ( i == charCount || input->pos == input->length ) {
                continue;
            }
        }
        bool invalid = false;
        uint8_t byte = input->bytes[ input->pos ];
        if ( csc->state == STATE_RESYNCHRONIZING ) {
            if ( zu___CharsIsUtf8Continuation( byte ) ) {
                input->pos++;
            } else {
                csc->state = STATE_START;
            }
            continue;
        }
        input->pos++;
        if ( csc->state == STATE_START ) {
            if ( byte < 0x80 ) {
                deliver( byte );
                continue;
            }
            csc->state = STATE_IN_SEQUENCE;
            invalid = byte < 0xC0 || byte > 0xF7;
            missing = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
            value = byte & ( 0x3Fu >> missing );
        } else if ( zu___CharsIsUtf8Continuation( byte ) ) {
            value = value << 6 | ( byte & 0x3Fu );
            if ( --missing == 0 ) {
                csc->state = STATE_START;
                if ( !ZU_CHAR_OK( value ) ) {
                    if ( verdict == FAIL ) {
                        *charsRead = i;
                        return ZU_FALSE;
                    }
                    if ( verdict == REPLACE ) {
                        deliver( ZU_CHAR_REPLACEMENT_CHARACTER );
                    }
                } else if ( value != ZU_CHAR_ZERO_WIDTH_NO_BREAK_SPACE || csc->bomChecked ||
                            ( csc->flags & ZU_CHARSET_FLAG_IGNORE_BYTE_ORDER_MARK ) ) {
                    deliver( value );
                }
            }
        } else {
            invalid = true; // and taken: what breaks a sequence is not looked at again
        }
        if ( invalid ) {
            if ( verdict == FAIL ) {
                *charsRead = i;
                return ZU_FALSE;
            }
            if ( verdict == REPLACE ) {
                deliver( ZU_CHAR_REPLACEMENT_CHARACTER );
            }
            csc->state = STATE_RESYNCHRONIZING;
        }
    }
    ZU_ASSERT( i == charCount );
    *charsRead = i;
    return ZU_TRUE;
}

ZU_CHAR_SOURCE *zu___CharsetUtf8CharSourceCreate( ZU_BYTE_SOURCE *byteSource, ZU_CHARSET_FLAGS flags )
{
    ZU_ASSERT( byteSource );
    ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE *csc = (ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE *)zu___ObjCreate(
        sizeof( ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE ), &zu___sort_ZU___CHARSET_UTF8_CHAR_SOURCE_CLOSURE );
    csc->flags = flags;
    csc->bomChecked = ZU_FALSE;
    csc->state = STATE_START;
    zu___CharsetInputBegin( &csc->input, byteSource );
    ZU_CHAR_SOURCE *result = zu___CharSourceCreate( utf8CharSourceRead, &csc->obj );
    ZU_REF_RELEASE( csc );
    return result;
}
