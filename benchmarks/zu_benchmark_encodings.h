// zu_benchmark_encodings.h: texts that differ in the lengths of their sequences in UTF-8, and the same texts in the
// forms that contestants take.
#pragma once

#include "zu/zu.h"
#include "zu_benchmark_texts.h"

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

struct BENCHMARK_TEXT {
    const char *name;
    std::string utf8;
    std::vector<ZU_CHAR> chars;
    std::u16string utf16;
};

static BENCHMARK_TEXT benchmarkEncodings( const BENCHMARK_SCRIPT &script )
{
    BENCHMARK_TEXT text{ script.name, benchmarkText( script, 1000000 ), {}, u"" };
    text.chars.resize( text.utf8.size() );
    text.chars.resize( (size_t)zuCharsConvertFromUtf8( text.chars.data(), (ZU_INT)text.chars.size(), text.utf8.data(),
                                                       (ZU_INT)text.utf8.size() ) );
    text.utf16.resize( 2 * text.chars.size() );
    text.utf16.resize( (size_t)zuCharsConvertToWcstr( text.utf16.data(), (ZU_INT)text.utf16.size(), text.chars.data(),
                                                      (ZU_INT)text.chars.size(), ZU_FALSE ) );
    return text;
}

static const BENCHMARK_SCRIPT BENCHMARK_CHINESE = {
    "chinese",
    "渡轮在六点一刻开出， 码头上的 咖啡馆 刚好提前一点 开门。 谁也不着急： 渡海要两个小时， "
    "咖啡 比天气 好得多。 晚到的人 就在岸边 等下一班。",
    ""
};
static const BENCHMARK_SCRIPT BENCHMARK_EMOJI = {
    "emoji",
    "😀😃😄 ⛴☕ 🌊🌊 👩‍👧‍👦 ❤️ 🇨🇭🇳🇴 👍🏽 🐕🦮 🎶🎺🎻 ✨ 🚢 ok! 🙂",
    " "
};
static const BENCHMARK_TEXT BENCHMARK_TEXTS[] = {
    benchmarkEncodings(
        { "ascii",
          "The ferry leaves at a quarter past six, and the coffee on the pier opens just before it. Nobody "
          "is in a hurry: the crossing takes two hours, as it did in 1974.",
          " " } ),
    benchmarkEncodings( { "latin",
                          "Die Fähre legt um Viertel nach sechs ab; wer zu spät kommt, wartet am Kai. Le café du port "
                          "ouvre à six heures, la traversée est agréable jusqu'au bout. Größere Hunde fahren für den "
                          "halben Preis.",
                          " " } ),
    benchmarkEncodings(
        { "cyrillic",
          "Паром отходит в четверть седьмого, а кофейня на пристани открывается чуть раньше. Никто никуда "
          "не спешит: переправа занимает два часа, и кофе лучше погоды.",
          " " } ),
    benchmarkEncodings( BENCHMARK_CHINESE ),
    benchmarkEncodings( BENCHMARK_EMOJI ),
};

// Runs a contestant on each of the texts: `topic`/<text>/`contestant`, with the throughput in bytes of UTF-8.
template <typename FUNC>
static void benchmarkOnTexts( const std::string &topic, const std::string &contestant, FUNC func )
{
    for ( const BENCHMARK_TEXT &text : BENCHMARK_TEXTS ) {
        std::string name = topic + "/" + text.name + "/" + contestant;
        benchmark::RegisterBenchmark( name.c_str(), [ &text, func ]( benchmark::State &state ) {
            func( state, text );
            state.SetBytesProcessed( (int64_t)state.iterations() * (int64_t)text.utf8.size() );
        } );
    }
}

// Runs what has been registered; the library is up meanwhile.
static int benchmarkRun( int argc, char **argv )
{
    zuRuntimeStartup( 0, -1, nullptr, "zu-benchmark", "Benchmarks of zu", "1.0" );
    benchmark::Initialize( &argc, argv );
    benchmark::RunSpecifiedBenchmarks();
    return (int)zuRuntimeShutdown();
}
