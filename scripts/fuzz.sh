#!/usr/bin/env bash
# Builds the libFuzzer targets with clang in their own build directory and runs each one,
# one after the other, for the given number of seconds (default 300), then prints how many
# inputs each executed. Crash inputs land in <build>/fuzz-artifacts/<target>/.
#
#   scripts/fuzz.sh [seconds]
#   BUILD_DIR=/tmp/build-fuzz TARGETS="fuzz_parse" scripts/fuzz.sh 60
#   KEEP_GOING=1 scripts/fuzz.sh     # fork mode: keep fuzzing after a crash, collect them all
set -euo pipefail

seconds=${1:-300}
root=$(cd "$(dirname "$0")/.." && pwd)
build=${BUILD_DIR:-$root/build-fuzz}
targets=${TARGETS:-"fuzz_parse fuzz_events_paste fuzz_scan fuzz_formula fuzz_timetables_paste fuzz_actions_paste fuzz_rename fuzz_sheet_import fuzz_templates fuzz_timeline fuzz_language fuzz_check_lines fuzz_findings_json"}

CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZO_BUILD_FUZZ=ON -DZO_BUILD_TESTS=OFF -DZO_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j2 --target $targets

export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
# Qt and the system libraries are not instrumented; their allocations at exit are not ours.
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}

keep_going=()
if [ -n "${KEEP_GOING:-}" ]; then
  keep_going=(-fork=1 -ignore_crashes=1 -ignore_timeouts=1 -ignore_ooms=1)
fi

summary=()
status=0
for target in $targets; do
  corpus="$build/fuzz-corpus/$target"      # grows as the fuzzer finds new paths
  artifacts="$build/fuzz-artifacts/$target/"
  log="$build/fuzz-logs/$target.log"
  mkdir -p "$corpus" "$artifacts" "$(dirname "$log")"
  echo "== $target for ${seconds}s (log: $log)"
  set +e
  seeds=("$root/fuzz/corpus/$target")
  # The scanner reads the documents the parser reads: it starts from the parser's seeds too.
  if [ "$target" = fuzz_scan ]; then seeds+=("$root/fuzz/corpus/fuzz_parse"); fi
  "$build/fuzz/$target" "$corpus" "${seeds[@]}" \
    -max_total_time="$seconds" -max_len=32768 -timeout=10 -rss_limit_mb=4096 \
    -print_final_stats=1 -artifact_prefix="$artifacts" "${keep_going[@]}" >"$log" 2>&1
  rc=$?
  set -e
  execs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' | tail -1 || true)
  if [ -z "$execs" ]; then  # fork mode reports progress lines only
    execs=$(grep -o '^#[0-9]*' "$log" | tail -1 | tr -d '#' || true)
  fi
  crashes=$(find "$artifacts" -type f | wc -l)
  line="$target: ${execs:-?} executions in ${seconds}s, exit $rc, $crashes artifact(s) in $artifacts"
  echo "$line"
  summary+=("$line")
  if [ "$rc" -ne 0 ]; then
    status=1
    grep -m1 -E 'ERROR: (AddressSanitizer|libFuzzer)|runtime error|fuzz_[a-z_]+: ' "$log" || true
  fi
done

echo "== summary"
printf '%s\n' "${summary[@]}"
exit $status
