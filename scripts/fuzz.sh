#!/usr/bin/env bash
# Runs every fuzzer of the fuzz tree (build it first: scripts/build.sh fuzz) for a bounded time.
# Usage: scripts/fuzz.sh [SECONDS]   (per fuzzer, default 20; honours VRL_BUILD_DIR)
# Each fuzzer keeps its corpus in <build>/fuzz/corpus/NAME and uses tests/fuzz/NAME.dict when
# present; a finding is kept in <build>/fuzz/findings/ and makes the script exit 1.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${VRL_BUILD_DIR:-$root/build}
seconds=${1:-20}
bin=$out/fuzz/bin

shopt -s nullglob
fuzzers=("$bin"/*_fuzz)
if ((${#fuzzers[@]} == 0)); then
  echo "no fuzzers in $bin (run scripts/build.sh fuzz first)" >&2
  exit 1
fi

status=0
for fuzzer in "${fuzzers[@]}"; do
  [[ -x $fuzzer ]] || continue
  name=$(basename "$fuzzer")
  corpus=$out/fuzz/corpus/$name
  findings=$out/fuzz/findings
  log=$out/fuzz/logs/$name.log
  mkdir -p "$corpus" "$findings" "$(dirname "$log")"
  args=(-max_total_time="$seconds" -print_final_stats=1 -artifact_prefix="$findings/$name-")
  [[ -f $root/tests/fuzz/$name.dict ]] && args+=(-dict="$root/tests/fuzz/$name.dict")
  # A hung input is a finding too; the outer limit only guards against the fuzzer itself hanging.
  timeout -k 10 $((seconds + 120)) "$fuzzer" "${args[@]}" "$corpus" >"$log" 2>&1
  rc=$?
  runs=$(grep -oE '^Done [0-9]+ runs' "$log" | tail -1 | grep -oE '[0-9]+')
  if ((rc == 0)); then
    echo "$name: ${runs:-?} executions in ${seconds} s, nothing found"
  else
    echo "$name: FAILED (exit $rc), see $log" >&2
    tail -n 30 "$log" >&2
    status=1
  fi
done
exit $status
