#!/bin/bash
# Builds the benchmarks with every peer library and prints how zu compares.
set -euo pipefail
source "$( dirname "${BASH_SOURCE[ 0 ]}" )/common.sh"
usage "$@" <<'TEXT'
usage: scripts/bench.sh

Installs the peer libraries that are missing, builds the preset "benchmark", runs every benchmark and prints a table of
ratios.  The results stay in build/benchmark/results.  These variables change a run:

    ZU_BENCH_FILTER       a regular expression that the names must match (all)
    ZU_BENCH_MIN_TIME     seconds for each measurement (0.1)
    ZU_BENCH_REPETITIONS  measurements of each benchmark, of which the median counts (5)
TEXT

ensure_packages build bench
configure benchmark
build benchmark
results="$ZU_ROOT/build/benchmark/results"
rm -rf "$results"
mkdir -p "$results"
for program in "$ZU_ROOT"/build/benchmark/benchmarks/*_benchmark; do
    name="$( basename "$program" )"
    say "Measuring: $name"
    "$program" --benchmark_filter="${ZU_BENCH_FILTER:-.}" --benchmark_min_time="${ZU_BENCH_MIN_TIME:-0.1}" \
        --benchmark_repetitions="${ZU_BENCH_REPETITIONS:-5}" --benchmark_report_aggregates_only=true \
        --benchmark_out_format=json --benchmark_out="$results/$name.json"
done
say "zu compared with its peers"
python3 "$ZU_ROOT/scripts/compare_benchmarks.py" "$results"/*.json
