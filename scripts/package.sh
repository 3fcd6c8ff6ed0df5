#!/usr/bin/env bash
# Builds the package players download: dist/VrlBoot-<version>.zip from the shipping i686 build, or
# with "win64" dist/VrlBoot-<version>-win64.zip from the x86_64 build, and dist/SHA256SUMS. The zip
# holds one folder, Vorrel/, which the player drops into the game's folder. The executables go in
# without debug information; copies with it stay in dist/VrlBoot-<version>[-win64]-debug/, so that a
# crash address from a player can be read (addr2line -e VrlBoot.exe ADDRESS).
# Release trees: build/release-win32, build/release-win64 (VRL_BUILD_DIR), apart from the test trees.
# VRL_DIST_DIR puts the package elsewhere.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=$(realpath -m "${VRL_BUILD_DIR:-$root/build}")
dist=$(realpath -m "${VRL_DIST_DIR:-$root/dist}")
jobs=${VRL_JOBS:-$(nproc)}
arch=${1:-win32}
case $arch in
  win32) toolchain=mingw-i686 tools=i686-w64-mingw32 suffix= ;;
  win64) toolchain=mingw-x86_64 tools=x86_64-w64-mingw32 suffix=-win64 ;;
  *) echo "usage: scripts/package.sh [win32|win64]" >&2; exit 2 ;;
esac
version=$("$root/scripts/version.sh")
name=VrlBoot-$version$suffix
tree=$out/release-$arch

launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}
fi
if [[ ! -f $tree/CMakeCache.txt ]]; then
  cmake -S "$root" -B "$tree" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVRL_RELEASE=ON -DVRL_BUILD_TESTS=OFF \
    -DCMAKE_TOOLCHAIN_FILE="$root/cmake/$toolchain.cmake" "${launcher[@]}" >/dev/null
fi
echo "== building $name"
cmake --build "$tree" -j "$jobs" --target VrlBoot vrltables

# The folder as the player gets it. Tables and the guide are taken as far as they exist.
stage=$tree/package
rm -rf "$stage" "$dist/$name-debug"
mkdir -p "$stage/Vorrel" "$dist/$name-debug"
for exe in VrlBoot.exe vrltables.exe; do
  cp "$tree/bin/$exe" "$dist/$name-debug/$exe"
  # strip writes the time into the PE header unless told a date: 0, as the linker leaves it.
  SOURCE_DATE_EPOCH=0 "$tools-strip" --strip-all -o "$stage/Vorrel/$exe" "$tree/bin/$exe"
done
copy_all() {  # destination folder, files...
  local to=$1; shift
  (($#)) || return 0
  mkdir -p "$to" && cp "$@" "$to/"
}
shopt -s nullglob
copy_all "$stage/Vorrel" "$root"/settings/starter/en/*.kcsv
copy_all "$stage/Vorrel/ja" "$root"/settings/starter/ja/*.kcsv
copy_all "$stage/Vorrel/guide" "$root"/docs/guide/guide-*.md
copy_all "$stage/Vorrel/guide/images" "$root"/docs/guide/images/*.png
cp "$root/LICENSE" "$stage/Vorrel/LICENSE.txt"
cp "$root/NOTICES.txt" "$stage/Vorrel/NOTICES.txt"

mkdir -p "$dist"
rm -f "$dist/$name.zip"
# shellcheck disable=SC2046
python3 "$root/scripts/make_zip.py" "$stage/Vorrel" "$dist/$name.zip" $("$root/scripts/version.sh" date)
(cd "$dist" && sha256sum VrlBoot-*.zip > SHA256SUMS)
echo "package: $dist/$name.zip ($(stat -c %s "$dist/$name.zip") bytes)"
