#!/usr/bin/env bash
# Installs what the build, the tests and the demo need on a fresh Debian machine (run as root).
set -euo pipefail
packages=(cmake ninja-build g++ clang libclang-rt-14-dev googletest
          g++-mingw-w64-i686 g++-mingw-w64-x86-64 wine64 xvfb xauth imagemagick
          fonts-ipafont-gothic valgrind python3 ccache)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
