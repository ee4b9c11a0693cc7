#!/usr/bin/env bash
# Fuzzes one target, or all of them one after the other, with libFuzzer.
#
#   fuzz/run.sh [TARGET|all] [SECONDS]        defaults: all 60
#   fuzz/run.sh str_to_x 600                  ten minutes on the number parsers
#
# Builds the `fuzz` preset (clang++, ASan + UBSan) in build/fuzz when needed,
# then runs each target for SECONDS with its seed corpus fuzz/corpus/TARGET
# and its dictionary fuzz/dict/TARGET.dict. New inputs go to
# build/fuzz/work/TARGET/corpus, findings (crash-*, leak-*, timeout-*) to
# build/fuzz/findings/TARGET/. One line per target sums the run up:
#   str_to_x: 1843211 runs in 600 s, 3072 exec/s, cov 412 ft 1533, no finding
# The exit status is 1 when any target found something.
#
# Environment:
#   VEXA_BUILD_LOCK=/tmp/vexa-build.lock  hold this lock while building
#   VEXA_FUZZ_MERGE=1                     afterwards, add the new inputs that
#                                         reach new coverage to the seed corpus
#   VEXA_FUZZ_FLAGS="-max_len=1024"       more libFuzzer flags
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
which=${1:-all}
seconds=${2:-60}
build="$root/build/fuzz"
lock=()
[ -n "${VEXA_BUILD_LOCK:-}" ] && lock=(flock "$VEXA_BUILD_LOCK")

if [ "$which" = all ]; then
  names=()
  for source in "$root"/fuzz/*_fuzz.cpp; do
    name=$(basename "$source" _fuzz.cpp)
    names+=("$name")
  done
else
  [ -f "$root/fuzz/${which}_fuzz.cpp" ] || { echo "no target '$which' (fuzz/${which}_fuzz.cpp)" >&2; exit 2; }
  names=("$which")
fi

[ -f "$build/CMakeCache.txt" ] || (cd "$root" && cmake --preset fuzz >/dev/null)
"${lock[@]}" cmake --build "$build" -j2 --target "${names[@]/%/_fuzz}" >/dev/null

status=0
for name in "${names[@]}"; do
  work="$build/work/$name"
  findings="$build/findings/$name"
  mkdir -p "$work/corpus" "$findings"
  flags=(-max_total_time="$seconds" -jobs=1 -workers=1 -print_final_stats=1
         -artifact_prefix="$findings/")
  [ -f "$root/fuzz/dict/$name.dict" ] && flags+=(-dict="$root/fuzz/dict/$name.dict")
  # shellcheck disable=SC2206
  flags+=(${VEXA_FUZZ_FLAGS:-})
  before=$(find "$findings" -type f | wc -l)
  # With -jobs the fuzzer writes its log to fuzz-0.log in the current folder.
  (cd "$work" && rm -f fuzz-0.log &&
   nice -n 10 "$build/bin/${name}_fuzz" "${flags[@]}" "$work/corpus" "$root/fuzz/corpus/$name" \
     >/dev/null 2>&1) || true
  log="$work/fuzz-0.log"
  cp "$log" "$work/last.log" 2>/dev/null || true
  stats=$(grep -E '^#[0-9]+' "$log" 2>/dev/null | tail -n 1 || true)
  runs=$(sed -nE 's/^#([0-9]+).*/\1/p' <<<"$stats")
  cov=$(sed -nE 's/.* cov: ([0-9]+).*/\1/p' <<<"$stats")
  ft=$(sed -nE 's/.* ft: ([0-9]+).*/\1/p' <<<"$stats")
  speed=$(sed -nE 's/^stat::average_exec_per_sec: *([0-9]+).*/\1/p' "$log" 2>/dev/null | tail -n 1)
  [ -n "$speed" ] || speed=$(sed -nE 's/.* exec\/s: ([0-9]+).*/\1/p' <<<"$stats")
  after=$(find "$findings" -type f | wc -l)
  if [ "$after" -gt "$before" ]; then
    verdict="FINDINGS in $findings"
    status=1
    grep -E 'ERROR|check failed|SUMMARY' "$log" | head -n 5 >&2 || true
  else
    verdict="no finding"
  fi
  echo "$name: ${runs:-?} runs in $seconds s, ${speed:-?} exec/s, cov ${cov:-?} ft ${ft:-?}, $verdict"
  if [ "${VEXA_FUZZ_MERGE:-0}" = 1 ]; then
    nice -n 10 "$build/bin/${name}_fuzz" -merge=1 "$root/fuzz/corpus/$name" "$work/corpus" >/dev/null 2>&1
  fi
done
exit "$status"
