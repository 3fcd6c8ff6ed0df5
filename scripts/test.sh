#!/usr/bin/env bash
# Runs every test: installs what is missing, builds the three trees, runs the native tests (with
# sanitizers), a bounded fuzzing pass, builds and checks the players' packages, then the Win32 and
# end-to-end tests under Wine on Xvfb, and the captures once more on a screen of 144 DPI.
# Ends with one line "N passed, N failed".
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
out=$(realpath -m "${VRL_BUILD_DIR:-$root/build}")  # Wine wants absolute paths
export VRL_WINEPREFIX=${VRL_WINEPREFIX:-$out/wineprefix} VRL_KEEPALIVE=${VRL_KEEPALIVE:-$out/win64/bin/vrl_keepalive.exe}
if [[ $(id -u) == 0 ]]; then scripts/install-deps.sh || exit 1; fi
scripts/build.sh native win64 win32 fuzz || exit 1

passed=0; failed=0
tally() {  # log file of one ctest run
  local line; line=$(grep -E "tests passed, [0-9]+ tests failed out of [0-9]+" "$1" | tail -1)
  [[ -n $line ]] || { failed=$((failed + 1)); return; }
  local f t; f=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+).*/\1/' <<<"$line")
  t=$(sed -E 's/.* ([0-9]+) tests failed out of ([0-9]+).*/\2/' <<<"$line")
  passed=$((passed + t - f)); failed=$((failed + f))
}
logs=$out/test-logs; mkdir -p "$logs"

echo "== native tests"
ctest --test-dir "$out/native" -j "$(nproc)" --output-on-failure 2>&1 | tee "$logs/native.log"
tally "$logs/native.log"

if [[ -x scripts/fuzz.sh ]]; then
  echo "== fuzzing (bounded)"
  if scripts/fuzz.sh "${VRL_FUZZ_SECONDS:-20}" 2>&1 | tee "$logs/fuzz.log"; then passed=$((passed + 1)); else failed=$((failed + 1)); fi
fi

echo "== the players' packages"
# The x86_64 one is what the end-to-end test below unpacks and starts.
if scripts/package.sh win32 && scripts/package.sh win64; then passed=$((passed + 1)); else failed=$((failed + 1)); fi
if scripts/check-package.sh 2>&1 | tee "$logs/package.log"; then passed=$((passed + 1)); else failed=$((failed + 1)); fi

echo "== Windows tests under Wine"
(
  source scripts/wine-session.sh
  # One at a time: several tests own the one frame window or the stand-ins of a shared folder.
  ctest --test-dir "$out/win64" -j 1 --output-on-failure 2>&1 | tee "$logs/win64.log"
)
tally "$logs/win64.log"

echo "== captures, placement and the pet panel at 144 DPI (a 1920 x 1440 screen at 150 %)"
(
  VRL_WINE_DPI=144 VRL_WINE_SCREEN=1920x1440 source scripts/wine-session.sh
  ctest --test-dir "$out/win64" -j 1 -R "^(Screenshots|TreasureMap|WindowPlacement|PetPanel)\." --output-on-failure 2>&1 |
    tee "$logs/win64-144dpi.log"
)
tally "$logs/win64-144dpi.log"

echo
echo "tests: $passed passed, $failed failed"
[[ $failed == 0 ]]
