#!/usr/bin/env bash
# Builds and runs every test: the core and its tests under AddressSanitizer
# and UndefinedBehaviorSanitizer, each fuzz target for a short fixed time, and
# the release build with all tests, the Debian package (built, installed,
# run and removed again), and finally the Windows leg: the core, its
# tests and ttltool cross-built for Windows, the tests run under Wine, and
# ttltool.exe compared with the Linux ttltool on every sample.
#   FUZZ_SECONDS  seconds per fuzz target (default 60; 0 skips fuzzing)
set -euo pipefail
cd "$(dirname "$0")/.."

jobs=$(nproc 2>/dev/null || echo 2)
fuzz_seconds=${FUZZ_SECONDS:-60}

bash scripts/install-deps.sh

echo "== Sanitizer build and tests"
cmake --preset sanitize >/dev/null
cmake --build --preset sanitize -j "$jobs"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --preset sanitize -j "$jobs"

if [ "$fuzz_seconds" -gt 0 ]; then
    echo "== Fuzzing, ${fuzz_seconds} s per target"
    cmake --preset fuzz >/dev/null
    cmake --build --preset fuzz -j "$jobs"
    for fuzzer in build/fuzz/bin/*_fuzzer; do
        [ -x "$fuzzer" ] || continue
        name=$(basename "$fuzzer")
        corpus=build/fuzz/corpus/$name
        mkdir -p "$corpus"
        case "$name" in
            reader_fuzzer) cp data/samples/* "$corpus"/ ;;
            catalogue_fuzzer) cp data/QORTool.msg "$corpus"/ ;;
            profile_fuzzer) cp fuzz/seeds/*.ini "$corpus"/ ;;
            command_line_fuzzer) cp fuzz/seeds/*.args "$corpus"/ ;;
            recovery_fuzzer) cp fuzz/seeds/*.recovery "$corpus"/ ;;
            csv_fuzzer) cp fuzz/seeds/*.csv "$corpus"/ ;;
        esac
        log=build/fuzz/$name.log
        echo "-- $name"
        if ! "$fuzzer" -max_total_time="$fuzz_seconds" -max_len=65536 -timeout=10 \
            -rss_limit_mb=2048 -artifact_prefix=build/fuzz/ "$corpus" >"$log" 2>&1; then
            tail -n 60 "$log"
            echo "$name found a fault; the input is in build/fuzz/ (crash-*, leak-*, timeout-*)"
            exit 1
        fi
        grep -E '^#[0-9]+ *DONE' "$log" || tail -n 2 "$log"
    done
fi

echo "== Release build and tests"
cmake --preset release >/dev/null
cmake --build --preset release -j "$jobs"
ctest --preset release -j "$jobs"

echo "== Debian package: build, install, run, remove"
bash scripts/package-check.sh

echo "== Windows cross build, tests under Wine"
windows_start=$(date +%s)
cmake --preset windows-cross >/dev/null
cmake --build --preset windows-cross -j "$jobs"
ctest --preset windows-cross -j "$jobs"
bash scripts/compare-windows-ttltool.sh build/release/bin/ttltool build/windows-cross/bin/ttltool.exe
echo "Windows leg: $(( $(date +%s) - windows_start )) s"
