// Counting the words of a text: the text is brought to one form and divided, a dict counts, and a format prints a line
// for each word.
#include "zu/zu.h"
#include <stdio.h>

int main( void )
{
    zuRuntimeStartup( 0, -1, NULL, "words", "Counting words", "1.0" );
    // The same word in capitals, and with its accent as a code point of its own
    ZU_STRING *text = zuStringCreateFromUtf8( "Café olé  CAFÉ au lait, cafe\u0301 noir, au revoir", -1 );
    zuStringNormalizeNFC( &text );
    zuStringToCaseFold( &text );
    ZU_VECTOR *words = zuStringSplitWhitespace( text, -1 );

    ZU_DICT *counts = zuDictCreate();
    for ( ZU_INT i = 0; i < zuVectorLength( words ); i++ ) {
        ZU_OBJ *word = zuVectorObjAt( words, i );
        ZU_OBJ *seen = zuDictObjKey( counts, word ); // null: not yet
        ZU_BOXED_INT *count = zuBoxedIntCreate( seen ? zuBoxedIntValue( zuBoxedIntFrom( seen ) ) + 1 : 1 );
        zuDictSetObjKey( &counts, word, zuBoxedIntObj( count ) );
        zuBoxedIntRelease( count );
        if ( seen ) {
            zuObjRelease( seen );
        }
        zuObjRelease( word );
    }

    ZU_STRING *report = zuStringCreate();
    for ( ZU_INT i = 0; i < zuDictLength( counts ); i++ ) {
        // "~" has the format release what was made for it.
        zuStringAppendFormatCstr( &report, "%~-8o %~o\n", -1, zuDictKeyAt( counts, i ), zuDictValueAt( counts, i ) );
    }
    char *utf8 = zuStringConvertToUtf8( report, ZU_TRUE, NULL );
    fputs( utf8, stdout );

    zuMemFree( utf8 );
    zuStringRelease( report );
    zuDictRelease( counts );
    zuVectorRelease( words );
    zuStringRelease( text );
    return (int)zuRuntimeShutdown();
}
