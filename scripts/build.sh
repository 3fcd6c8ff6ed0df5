#!/usr/bin/env bash
# Configures and builds the three trees: build/native, build/win64 (run under Wine), build/win32 (shipping).
# Usage: scripts/build.sh [native|win64|win32|fuzz ...]   (default: native win64 win32)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${VRL_BUILD_DIR:-$root/build}
jobs=${VRL_JOBS:-$(nproc)}
trees=("$@"); ((${#trees[@]})) || trees=(native win64 win32)

# With ccache on the machine, trees of several checkouts share their objects: paths are hashed
# relative to the checkout.
launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}
fi

configure() {  # dir, cmake args...
  local dir=$1; shift
  if [[ ! -f $dir/CMakeCache.txt ]]; then
    cmake -S "$root" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" "$@" >/dev/null
  fi
}

for t in "${trees[@]}"; do
  case $t in
    native) configure "$out/native" -DVRL_SANITIZE=ON ;;
    fuzz)   configure "$out/fuzz" -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang -DVRL_FUZZ=ON -DVRL_SANITIZE=OFF ;;
    win64)  configure "$out/win64" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-x86_64.cmake" ;;
    win32)  configure "$out/win32" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-i686.cmake" -DVRL_BUILD_TESTS=OFF ;;
    *) echo "unknown tree: $t" >&2; exit 2 ;;
  esac
  echo "== building $t"
  cmake --build "$out/$t" -j "$jobs"
done
