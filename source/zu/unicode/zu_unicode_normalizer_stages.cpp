// Runs of marks are short in texts and of any length in what somebody has thought up: neither an unlucky guess of the
// processor for each mark of a short one, nor a square of the length of a long one, is paid for the order.

#include "zu/unicode/zu_unicode_normalizer_stages_internal.h"

static constexpr ZU_INT SORT_FEW_MAX = 16; // marks; for more, comparing each with each takes longer

// A few: by counting, for each, how many go ahead of it.  That takes no branch that could be guessed wrong.
static inline void marksSortFew( uint32_t *run, ZU_INT length, uint32_t *scratch )
{
    uint32_t places[ SORT_FEW_MAX ] = {};
    for ( ZU_INT i = 1; i < length; i++ ) {
        uint32_t place = 0;
        for ( ZU_INT j = 0; j < i; j++ ) {
            uint32_t stays = zu___NormRank( run[ j ] ) <= zu___NormRank( run[ i ] );
            place += stays;
            places[ j ] += 1 - stays;
        }
        places[ i ] = place;
    }
    for ( ZU_INT i = 0; i < length; i++ ) {
        scratch[ places[ i ] ] = run[ i ];
    }
}

// Many: by counting the marks of each rank, so that no order takes longer than others.  Both halves are counted and
// moved side by side: the next mark of a rank has to wait for the count that has just been stored.
static void marksSortMany( uint32_t *run, ZU_INT length, uint32_t *scratch )
{
    struct {
        uint32_t first, second; // how many there are of a rank in each half, then where the next one goes
    } places[ ZU___NORM_RANKS ] = {};
    const uint32_t *middle = run + length / 2;
    const uint32_t *end = run + length;
    const uint32_t *second = middle;
    for ( const uint32_t *first = run; first < middle; first++, second++ ) {
        places[ zu___NormRank( *first ) ].first++;
        places[ zu___NormRank( *second ) ].second++;
    }
    if ( second < end ) {
        places[ zu___NormRank( *second ) ].second++;
    }
    uint32_t place = 0;
    for ( auto &each : places ) {
        uint32_t begin = place;
        place += each.first;
        each.first = begin;
        begin = place;
        place += each.second;
        each.second = begin;
    }
    second = middle;
    for ( const uint32_t *first = run; first < middle; first++, second++ ) {
        scratch[ places[ zu___NormRank( *first ) ].first++ ] = *first;
        scratch[ places[ zu___NormRank( *second ) ].second++ ] = *second;
    }
    if ( second < end ) {
        scratch[ places[ zu___NormRank( *second ) ].second ] = *second;
    }
}

void zu___NormSort( uint32_t *elements, ZU_INT length, uint32_t *scratch )
{
    for ( ZU_INT i = 0; i < length; i++ ) {
        uint32_t *run = elements + i;
        while ( length - i >= 4 && zu___NormHaveRanks( elements + i, ZU___NORM_RANKS ) ) {
            i += 4;
        }
        while ( i < length && zu___NormRank( elements[ i ] ) ) {
            i++;
        }
        ZU_INT marks = elements + i - run;
        if ( marks > 1 ) {
            ( marks <= SORT_FEW_MAX ? marksSortFew : marksSortMany )( run, marks, scratch );
            memcpy( run, scratch, (size_t)marks * sizeof( uint32_t ) );
        }
    }
}

ZU_CHAR *zu___NormCopy( const uint32_t *elements, ZU_INT length, ZU_CHAR *dest )
{
    for ( ZU_INT i = 0; i < length; i++ ) {
        dest[ i ] = zu___NormChar( elements[ i ] );
    }
    return dest + length;
}
