// A word counter over files: each file is read line by line, the words are brought to one form, and a dict counts them.
//
//     example_word_count [FILE...]     without files, those of examples/texts that the build knows
#include "zu/zu.hpp"

#include <iostream>
#include <vector>

#ifndef TEXTS
#define TEXTS "texts"
#endif

int main( int argc, char **argv )
{
    zu::Runtime runtime( "word_count", "Word counter", "1.0" );
    std::vector<std::string> files( argv + 1, argv + argc );
    if ( files.empty() ) {
        files = { TEXTS "/latin.txt", TEXTS "/greek.txt" };
    }
    zu::Ref<ZU_DICT> counts = zu::adopt( zuDictCreate() );
    for ( const std::string &file : files ) {
        zu::Ref<ZU_LINE_SOURCE> source = zu::adopt(
            zuFileOpenExactLineSource( zu::text( file ).get(), ZU_CHARSET_UTF_8, 0, ZU_NLF_FLAG_LF, nullptr ) );
        if ( !source ) {
            std::cerr << "cannot read " << file << '\n';
            return 1;
        }
        for ( zu::Ref<ZU_STRING> &line : zu::lines( source ) ) {
            zuStringNormalizeNFC( line.inOut() );
            zuStringToCaseFold( line.inOut() );
            zu::Ref<ZU_VECTOR> words = zu::adopt( zuStringSplitWhitespace( line.get(), -1 ) );
            for ( ZU_OBJ *word : words ) {
                zu::Ref<ZU_OBJ> seen = zu::adopt( zuDictObjKey( counts.get(), word ) );
                zuDictSetObjKey(
                    counts.inOut(), word,
                    zu::upcast(
                        zu::adopt( zuBoxedIntCreate( seen ? zuBoxedIntValue( zuBoxedIntFrom( seen.get() ) ) + 1 : 1 ) )
                            .get() ) );
            }
        }
    }
    ZU_INT total = 0;
    for ( auto [ word, count ] : zu::pairs<ZU_STRING, ZU_BOXED_INT>( counts ) ) {
        total += zuBoxedIntValue( count.get() );
        if ( zuBoxedIntValue( count.get() ) > 1 ) {
            std::cout << zu::format( "%-12s %3i", word, zuBoxedIntValue( count.get() ) ) << '\n';
        }
    }
    std::cout << zu::format( "%i words, %i of them different", total, zuDictLength( counts.get() ) ) << '\n';
}
