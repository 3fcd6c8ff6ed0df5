#!/usr/bin/env bash
# Screenshots of the log windows only: the companion on the demo game with the demo's log rules and
# module scenario, undocked and docked, in English and Japanese. Uses an existing win64 build;
# writes to <build>/log-screenshots (or VRL_SHOTS), away from the main demo's screenshots/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
out=$(realpath -m "${VRL_BUILD_DIR:-$root/build}")  # Wine wants absolute paths
export VRL_WINEPREFIX=${VRL_WINEPREFIX:-$out/wineprefix} VRL_KEEPALIVE=${VRL_KEEPALIVE:-$out/win64/bin/vrl_keepalive.exe}
bin=$out/win64/bin
demo=$out/log-demo
shots=${VRL_SHOTS:-$out/log-screenshots}
rm -rf "$demo" "$shots"
mkdir -p "$demo/Morva/Vorrel" "$demo/Morva/user/sound" "$demo/handshake" "$shots"
cp "$bin/DemoGame.exe" "$demo/Morva/"
cp "$bin/VrlBoot.exe" "$bin/VrlDLL.dll" "$demo/Morva/Vorrel/"
cp "$bin"/simbass/*.dll "$bin/simtalk/RemoteTalk.exe" "$demo/Morva/Vorrel/"
cp scripts/demo/LogEx.kcsv scripts/demo/VrlDLL.scenario "$demo/Morva/Vorrel/"
python3 scripts/demo/make_wav.py "$demo/Morva/user/sound/alert.wav"

source scripts/wine-session.sh
win() { /usr/lib/wine/wine64 winepath -w "$1" 2>/dev/null; }
game_exe=$(win "$demo/Morva/DemoGame.exe")
for language in en ja; do
  lang_index=0; [[ $language == ja ]] && lang_index=1
  printf '[Vorrel_v5]\r\nwstrMorva=%s\r\niLanguage=%s\r\nenLogExtender=1\r\nenLogExtender_FullLog=1\r\n' \
    "$game_exe" "$lang_index" > "$demo/Morva/Vorrel/Vrl.ini"
  /usr/lib/wine/wine64 "$bin/vrl_demo_driver.exe" "$(win "$demo/Morva/Vorrel")" "$(win "$demo/handshake")" "$language" &
  driver=$!
  while kill -0 "$driver" 2>/dev/null; do
    if [[ -f $demo/handshake/request ]]; then
      name=$(cat "$demo/handshake/request")
      sleep 0.3
      # Only the log views; the driver goes on to the tray menu and the About box.
      case $name in *log*) import -window root "$shots/$language-$name.png"; echo "screenshot: $shots/$language-$name.png" ;; esac
      rm -f "$demo/handshake/request"
    fi
    sleep 0.1
  done
  wait "$driver" || true
done
