// zu_normalizer_model.h: the three stages of a normalizer, plainly, one character after the other.
#pragma once

#include "zu/unicode/zu_unicode_db.h"
#include "zu/unicode/zu_unicode_normal_form.h"

#include <algorithm>
#include <string>

class NormalizerModel {
public:
    explicit NormalizerModel( ZU_UNICODE_NORMAL_FORM normalForm )
        : form( normalForm ),
          composes( normalForm == ZU_UNICODE_NORMAL_FORM_NFC || normalForm == ZU_UNICODE_NORMAL_FORM_NFKC )
    {
    }
    void write( ZU_CHAR ch )
    {
        ZU_CHAR high = 0;
        std::swap( high, highSurrogate );
        if ( ch >= 0xD800 && ch < 0xDC00 ) {
            highSurrogate = ch;
        } else if ( ch >= 0xDC00 && ch < 0xE000 ) {
            if ( high ) {
                decompose( 0x10000 + ( ( high - 0xD800 ) << 10 ) + ( ch - 0xDC00 ) );
            }
        } else if ( ch < 0x110000 ) {
            decompose( ch );
        }
        reorder( false );
    }
    void flush()
    {
        highSurrogate = 0;
        reorder( true );
        composeStart = composed.size();
        lastStarter = 0;
        lastClass = 255;
    }
    size_t readable() const
    {
        return composes ? composeStart : composed.size();
    }
    std::u32string read( size_t count )
    {
        count = std::min( count, readable() );
        std::u32string text = composed.substr( 0, count );
        composed.erase( 0, count );
        composeStart -= composes ? count : 0;
        return text;
    }

private:
    ZU_UNICODE_NORMAL_FORM form;
    bool composes;
    ZU_CHAR highSurrogate = 0;
    std::u32string waiting, composed; // the latter is plain output in the forms that do not compose
    size_t composeStart = 0;
    ZU_CHAR lastStarter = 0;
    ZU_INT lastClass = 255;

    void decompose( ZU_CHAR ch )
    {
        ZU_INT length, tag;
        const ZU_CHAR *mapping = zu___UnicodeCdmDbLookup( ch, &length, &tag );
        bool compatible = form == ZU_UNICODE_NORMAL_FORM_NFKC || form == ZU_UNICODE_NORMAL_FORM_NFKD;
        if ( ch >= 0xAC00 && ch <= 0xD7A3 ) {
            ZU_CHAR syllable = ch - 0xAC00;
            waiting += { 0x1100 + syllable / 588, 0x1161 + syllable % 588 / 28 };
            waiting += std::u32string( syllable % 28 != 0, 0x11A7 + syllable % 28 );
        } else if ( mapping && ( compatible || tag == ZU_UNICODE_CDMT_CANONICAL ) ) {
            std::for_each( mapping, mapping + length, [ this ]( ZU_CHAR each ) { decompose( each ); } );
        } else {
            waiting += ch;
        }
    }
    void reorder( bool flush )
    {
        size_t n = waiting.size();
        if ( !flush ) {
            while ( n > 0 && zu___UnicodeCccvDbLookup( waiting[ n - 1 ] ) != 0 ) {
                n--;
            }
            n -= n > 0;
            if ( n == 0 && waiting.size() < 4096 ) {
                return;
            }
            n = n ? n : waiting.size();
        }
        for ( size_t begin = 0; begin < n; begin++ ) {
            size_t end = begin;
            while ( end < n && zu___UnicodeCccvDbLookup( waiting[ end ] ) != 0 ) {
                end++;
            }
            std::stable_sort(
                waiting.begin() + (ptrdiff_t)begin, waiting.begin() + (ptrdiff_t)end,
                []( ZU_CHAR a, ZU_CHAR b ) { return zu___UnicodeCccvDbLookup( a ) < zu___UnicodeCccvDbLookup( b ); } );
            begin = end;
        }
        std::u32string ordered = waiting.substr( 0, n );
        waiting.erase( 0, n );
        if ( !composes ) {
            composed += ordered;
            return;
        }
        for ( ZU_CHAR ch : ordered ) {
            compose( ch );
        }
        if ( composed.size() - composeStart >= 4096 ) {
            composeStart = composed.size();
        }
    }
    void compose( ZU_CHAR ch )
    {
        ZU_INT cccv = zu___UnicodeCccvDbLookup( ch );
        if ( composeStart < composed.size() && ( lastClass < cccv || ( lastClass == 0 && cccv == 0 ) ) ) {
            ZU_CHAR composite = 0;
            if ( lastClass == 0 && lastStarter >= 0x1100 && lastStarter <= 0x1112 && ch >= 0x1161 && ch <= 0x1175 ) {
                composite = ( lastStarter * 21 + ch ) * 28 - 2639516;
            } else if ( lastClass == 0 && lastStarter >= 0xAC00 && lastStarter <= 0xD7A3 &&
                        ( lastStarter - 0xAC00 ) % 28 == 0 && ch >= 0x11A7 && ch <= 0x11C2 ) {
                composite = lastStarter + ch - 0x11A7;
            } else {
                zu___UnicodeCompDbLookup( lastStarter, ch, &composite );
            }
            if ( composite ) {
                composed[ composeStart ] = composite;
                lastStarter = composite;
                return;
            }
        }
        composed += ch;
        if ( cccv == 0 ) {
            lastStarter = ch;
            composeStart = composed.size() - 1;
        }
        lastClass = cccv == 0 ? 0 : std::max( cccv, lastClass );
    }
};
