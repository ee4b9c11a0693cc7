#!/usr/bin/env bash
# vexa utf against iconv(1): UTF-8 to UTF-16LE and to UTF-32LE on a ~200 MB
# file built from the multilingual texts in bench-data/unicode. Prints the
# median wall time of five runs and the peak resident set of each program.
#   run_cli_bench.sh VEXA BENCH_DATA_DIR [WORK_DIR]
set -euo pipefail
vexa=$1
data=$2
work=${3:-$(mktemp -d)}
mkdir -p "$work"
trap 'rm -f "$work/in.txt" "$work/out"' EXIT

cat "$data"/unicode/*.txt > "$work/one.txt"
copies=$(( 200 * 1024 * 1024 / $(stat -c %s "$work/one.txt") + 1 ))
for _ in $(seq "$copies"); do cat "$work/one.txt"; done > "$work/in.txt"
rm -f "$work/one.txt"
echo "input: $(stat -c %s "$work/in.txt") bytes"

# median of five: wall seconds and peak kilobytes
measure() {
  local times=() kb=0 line
  for _ in 1 2 3 4 5; do
    line=$( { /usr/bin/time -f '%e %M' "$@" > /dev/null; } 2>&1 | tail -n 1)
    times+=("${line% *}")
    kb=${line#* }
  done
  printf '%s %s\n' "$(printf '%s\n' "${times[@]}" | sort -n | sed -n 3p)" "$kb"
}

for to in UTF-16LE UTF-32LE; do
  read -r v_time v_kb < <(measure "$vexa" utf --to "$to" -o "$work/out" "$work/in.txt")
  read -r i_time i_kb < <(measure iconv -f UTF-8 -t "$to" -o "$work/out" "$work/in.txt")
  ratio=$(awk -v v="$v_time" -v i="$i_time" 'BEGIN { printf "%.2f", v / i }')
  printf '%-9s vexa utf %6.2f s %7d KB   iconv %6.2f s %7d KB   time ratio vexa/iconv %s\n' \
         "$to" "$v_time" "$v_kb" "$i_time" "$i_kb" "$ratio"
done
