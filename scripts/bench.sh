#!/usr/bin/env bash
# Installs what is missing, builds the "release" preset, runs every benchmark
# program with JSON output and prints one table of the library against its
# peers: operation, size, ZKUtils time, peer, peer time, ratio ZKUtils/peer
# (then the memory table).
#
# Usage: scripts/bench.sh [regex]     only the benchmarks whose name matches
# Environment:
#   ZKUTILS_BENCH_MIN_TIME     seconds each measurement runs at least (0.05)
#   ZKUTILS_BENCH_REPETITIONS  repetitions per benchmark, interleaved at random
#                              with the others of the program; the median is
#                              shown (5)
#   ZKUTILS_BENCH_TIME         cpu (default: CPU time of the process, the least
#                              disturbed by other load) or real (wall time)
# The JSON and console output of each program are kept in
# build/release/bench-results/.
set -euo pipefail
cd "$(dirname "$0")/.."
filter=${1:-}
min_time=${ZKUTILS_BENCH_MIN_TIME:-0.05}
repetitions=${ZKUTILS_BENCH_REPETITIONS:-5}
time_kind=${ZKUTILS_BENCH_TIME:-cpu}

scripts/deps.sh
cmake --preset release >/dev/null
cmake --build --preset release

bin=build/release/bench
out=build/release/bench-results
rm -rf "$out"
mkdir -p "$out"

status=0
for program in "$bin"/zk_*_bench; do
    name=$(basename "$program")
    echo "running $name" >&2
    args=(--benchmark_out="$out/$name.json" --benchmark_out_format=json
          --benchmark_min_time="$min_time" --benchmark_repetitions="$repetitions"
          --benchmark_report_aggregates_only=true
          --benchmark_enable_random_interleaving=true)
    if [ -n "$filter" ]; then
        args+=(--benchmark_filter="$filter")
    fi
    if ! "$program" "${args[@]}" >"$out/$name.txt" 2>&1; then
        echo "$name failed, see $out/$name.txt" >&2
        status=1
    fi
done

echo >&2
jsons=("$out"/*.json)
if [ ! -e "${jsons[0]}" ]; then
    echo "no benchmark output" >&2
    exit 1
fi
"$bin"/zk_bench_report --time="$time_kind" "${jsons[@]}" || status=1
exit $status
