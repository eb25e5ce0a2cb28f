#!/usr/bin/env bash
# Builds the libFuzzer targets (preset "fuzz": clang, AddressSanitizer and
# UndefinedBehaviorSanitizer) and runs each of them, one after another, for a
# given time; fails when any target reports a finding (crash, sanitizer
# report, leak, timeout or an allocation above the memory limit).
#
# Usage: scripts/fuzz.sh [-t SECONDS] [-m RSS_MB] [-a MALLOC_MB] [TARGET...]
#   -t  seconds per target (default 60)
#   -m  resident memory limit per target in MB (default 2048)
#   -a  largest single allocation in MB (default 256: the inputs are at most
#       4096 bytes, nothing may justify more)
#   TARGET  names such as binaryfile or png (default: every target)
#
# The committed seeds (tests/fuzz/corpus/<name>/) are only read; the inputs a
# run finds go to build/fuzz/corpus/<name>/ and are kept for the next run.
# Findings land in build/fuzz/findings/<name>/: reproduce one with
#   build/fuzz/tests/fuzz/zk_<name>_fuzz <file>
# and add the input to the committed corpus once it is fixed.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=60
rss_mb=2048
malloc_mb=256
while getopts "t:m:a:h" opt; do
    case $opt in
    t) seconds=$OPTARG ;;
    m) rss_mb=$OPTARG ;;
    a) malloc_mb=$OPTARG ;;
    *) sed -n '2,19p' "$0"; exit 2 ;;
    esac
done
shift $((OPTIND - 1))

scripts/deps.sh fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

build=build/fuzz
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for src in tests/fuzz/*_fuzz.cpp; do
        name=$(basename "$src" _fuzz.cpp)
        targets+=("$name")
    done
fi

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp"
export QT_QPA_PLATFORM=offscreen
# The targets write every input to a scratch file: on a memory file system
# they run many times faster than on disk.
if [ -z "${TMPDIR:-}" ] && [ -d /dev/shm ] && [ -w /dev/shm ]; then
    export TMPDIR=/dev/shm
fi

failed=()
summary=()
for name in "${targets[@]}"; do
    exe=$build/tests/fuzz/zk_${name}_fuzz
    if [ ! -x "$exe" ]; then
        echo "no fuzz target named $name" >&2
        exit 2
    fi
    work=$build/corpus/$name
    findings=$build/findings/$name
    mkdir -p "$work" "$findings"
    seeds=()
    [ -d "tests/fuzz/corpus/$name" ] && seeds=("tests/fuzz/corpus/$name")
    log=$build/findings/$name.log
    echo "== $name: ${seconds}s"
    status=0
    "$exe" -max_total_time="$seconds" -rss_limit_mb="$rss_mb" -malloc_limit_mb="$malloc_mb" \
        -timeout=25 -print_final_stats=1 -artifact_prefix="$findings/" \
        "$work" "${seeds[@]}" >"$log" 2>&1 || status=$?
    execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
    summary+=("$name: ${seconds}s, ${execs:-?} executions (${rate:-?}/s), exit $status")
    if [ $status -ne 0 ]; then
        failed+=("$name")
        echo "!! $name found a problem; log: $log" >&2
        grep -m1 -E 'ERROR|runtime error|fuzz property failed|Test unit written' "$log" >&2 || true
    fi
done

echo
printf '%s\n' "${summary[@]}"
if [ ${#failed[@]} -ne 0 ]; then
    echo "findings in: ${failed[*]} (see $build/findings/)" >&2
    exit 1
fi
echo "no findings"
