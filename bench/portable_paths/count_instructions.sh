#!/usr/bin/env bash
# Instructions per operation of each portable path under callgrind: the count of N operations
# less the count of the set-up alone, divided by N. Builds its own tree without sanitizers
# (build/plain), since callgrind cannot run sanitized programs.
# Usage: bench/portable_paths/count_instructions.sh [N]
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
tree=${VRL_BUILD_DIR:-$root/build}/plain
n=${1:-1000}
if [[ ! -f $tree/CMakeCache.txt ]]; then
  cmake -S "$root" -B "$tree" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build "$tree" -j "${VRL_JOBS:-2}" --target portable_paths_bench >/dev/null
bench=$tree/bin/portable_paths_bench
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

count() {  # path, operations -> instructions of the whole run
  valgrind --tool=callgrind --callgrind-out-file="$scratch/out" "$bench" "$1" "$2" >/dev/null 2>&1
  sed -n 's/^summary: //p' "$scratch/out"
}

echo "instructions per operation (callgrind, $n operations less the set-up):"
for path in line pets music kcsv; do
  base=$(count "$path" 0)
  full=$(count "$path" "$n")
  printf '  %-6s %12d\n' "$path" $(( (full - base) / n ))
done
