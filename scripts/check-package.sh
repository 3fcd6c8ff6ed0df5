#!/usr/bin/env bash
# Checks the players' packages in dist/ (scripts/package.sh and scripts/package.sh win64 first):
#  - each holds exactly the files of scripts/package-files.txt, so nothing is added or dropped by
#    accident (a file meant to come or go is a change of that list);
#  - the shipping package comes out the same byte for byte when it is built again from a copy of
#    the sources in another folder, into another build folder, later. The compiler cache keys on
#    the folder (it is in the path mapping), so the second build's objects are compiled in that
#    folder, not taken from the first.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=$(realpath -m "${VRL_BUILD_DIR:-$root/build}")
dist=$(realpath -m "${VRL_DIST_DIR:-$root/dist}")
version=$("$root/scripts/version.sh")
status=0

zip_files() { python3 -c 'import sys, zipfile
print("\n".join(n for n in zipfile.ZipFile(sys.argv[1]).namelist() if not n.endswith("/")))' "$1"; }

for zip in "$dist/VrlBoot-$version.zip" "$dist/VrlBoot-$version-win64.zip"; do
  if ! diff -u --label scripts/package-files.txt --label "${zip##*/}" "$root/scripts/package-files.txt" <(zip_files "$zip"); then
    echo "FAIL: ${zip##*/} does not hold the files of scripts/package-files.txt (change the list if that is meant)"
    status=1
  fi
done

again=$out/package-again
rm -rf "$again" && mkdir -p "$again/src"
(cd "$root" && git ls-files -z --cached --others --exclude-standard | tar --null --ignore-failed-read -T - -cf -) |
  tar -xf - -C "$again/src"
VRL_BUILD_DIR="$again/build" VRL_DIST_DIR="$again/dist" "$again/src/scripts/package.sh" >"$again/build.log" 2>&1 ||
  { echo "FAIL: the second build failed (see $again/build.log)"; exit 1; }
first=$(sha256sum <"$dist/VrlBoot-$version.zip" | cut -d' ' -f1)
second=$(sha256sum <"$again/dist/VrlBoot-$version.zip" | cut -d' ' -f1)
echo "VrlBoot-$version.zip: $first ($dist)"
echo "VrlBoot-$version.zip: $second ($again/dist)"
if [[ $first != "$second" ]]; then
  echo "FAIL: the two packages differ; both are kept for comparison"
  status=1
else
  rm -rf "$again"
fi
exit "$status"
