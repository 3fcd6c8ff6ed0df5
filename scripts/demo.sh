#!/usr/bin/env bash
# The main job: builds everything and the players' x86_64 package, lays out a game folder with the
# demo game, installs the companion from the package as a player does, and runs VrlBoot.exe under
# Wine on a headless X server while a driver walks through the player's views. Screenshots land in
# screenshots/.
# VRL_SKIP_BUILD=1 uses the build and the package that are there (VRL_BUILD_DIR, default build/;
# dist/) without installing.
# VRL_DEMO_DPI=144 runs the views at that many pixels per inch (screenshots named "-144dpi").
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
out=$(realpath -m "${VRL_BUILD_DIR:-$root/build}")  # Wine wants absolute paths
export VRL_WINEPREFIX=${VRL_WINEPREFIX:-$out/wineprefix} VRL_KEEPALIVE=${VRL_KEEPALIVE:-$out/win64/bin/vrl_keepalive.exe}
if [[ $(id -u) == 0 && -z ${VRL_SKIP_BUILD:-} ]]; then scripts/install-deps.sh; fi
[[ -n ${VRL_SKIP_BUILD:-} ]] || { scripts/build.sh native win64 win32 && scripts/package.sh win64; }
package=$root/dist/VrlBoot-$(scripts/version.sh)-win64.zip

bin=$out/win64/bin
demo=$out/demo
shots=$root/screenshots
rm -rf "$demo" "$shots"
mkdir -p "$demo/Morva/user/sound" "$demo/Morva/user/music" "$demo/Morva/sound" "$demo/handshake" "$shots"
mkdir -p "$demo/Morva/save/hero" && cp "$root/scripts/demo/Vrl_EquipSet.ini" "$demo/Morva/save/hero/"
cp "$bin/DemoGame.exe" "$demo/Morva/"
# The companion as a player installs it: the package's folder unpacked into the game's folder; then
# the programs from outside that the guide sends the player for (the stand-ins here): the module and
# the settings editor, the audio library, the speech program.
python3 -m zipfile -e "$package" "$demo/Morva/"
cp "$bin/VrlDLL.dll" "$bin/VrlConfig.exe" "$demo/Morva/Vorrel/"
cp "$bin"/simbass/*.dll "$bin/simtalk/RemoteTalk.exe" "$demo/Morva/Vorrel/" 2>/dev/null || true
# The demo's own tables take the place of the starter ones: they show more rules.
cp "$root/scripts/demo/LogEx.kcsv" "$root/scripts/demo/QuickSearch.kcsv" "$root/scripts/demo/PetInfo.kcsv" "$root/scripts/demo/VrlDLL.scenario" "$demo/Morva/Vorrel/"
python3 "$root/scripts/demo/make_wav.py" "$demo/Morva/user/sound/alert.wav"
cp "$root/scripts/demo/BGMEx.kcsv" "$demo/Morva/Vorrel/"
printf 'RIFF\0\0\0\0sfbk' >"$demo/Morva/Vorrel/demo.sf2"
for music in town field night raid; do python3 "$root/scripts/demo/make_wav.py" "$demo/Morva/user/music/$music.wav"; done
mkdir -p "$demo/Morva/Vorrel/screenshot" "$demo/Morva/Vorrel/save.bak"
cp "$demo/Morva/user/sound/alert.wav" "$demo/Morva/sound/pray1.wav"

dpi=${VRL_DEMO_DPI:-96}
[[ $dpi == 96 ]] && dpi_tag= || dpi_tag=-${dpi}dpi
VRL_WINE_DPI=$dpi source scripts/wine-session.sh
win() { /usr/lib/wine/wine64 winepath -w "$1" 2>/dev/null; }
game_exe=$(win "$demo/Morva/DemoGame.exe")
# A Japanese player's system: Japanese code page and texts (Wine takes them from the locale).
ja_env=(LANG=ja_JP.UTF-8)
if ! locale -a 2>/dev/null | grep -qi '^ja_JP.utf-\?8$'; then
  mkdir -p "$out/locale"
  [[ -d $out/locale/ja_JP.UTF-8 ]] || localedef -i ja_JP -f UTF-8 "$out/locale/ja_JP.UTF-8" 2>/dev/null || true
  ja_env+=(LOCPATH="$out/locale")
fi
status=0
for language in en ja; do
  lang_index=0; [[ $language == ja ]] && lang_index=1
  printf '[Vorrel_v5]\r\nwstrMorva=%s\r\niLanguage=%s\r\nenLogExtender=1\r\nenLogExtender_FullLog=1\r\nenScreenshot=1\r\nenMusicExtender=1\r\nenPetInfo=1\r\nenItemInfo=1\r\nenQuickSearch=1\r\nenEquipSet=1\r\nenTreasureMap=1\r\n' \
    "$game_exe" "$lang_index" > "$demo/Morva/Vorrel/Vrl.ini"
  # The Japanese game writes its log in Japanese: its lines take the place of the English ones,
  # with rules that match them.
  lang_env=()
  if [[ $language == ja ]]; then
    lang_env=("${ja_env[@]}")
    cp "$root/scripts/demo/ja/LogEx.kcsv" "$demo/Morva/Vorrel/"
    awk 'FNR == NR { lines = lines $0 "\n"; next } /^log / { if (!done) printf "%s", lines; done = 1; next } { print }' \
      "$root/scripts/demo/ja/log.scenario" "$root/scripts/demo/VrlDLL.scenario" > "$demo/Morva/Vorrel/VrlDLL.scenario"
  fi
  env "${lang_env[@]}" /usr/lib/wine/wine64 "$bin/vrl_demo_driver.exe" "$(win "$demo/Morva/Vorrel")" "$(win "$demo/handshake")" "$language" &
  driver=$!
  while kill -0 "$driver" 2>/dev/null; do
    if [[ -f $demo/handshake/request ]]; then
      name=$language-$(cat "$demo/handshake/request")$dpi_tag
      sleep 0.3
      import -window root "$shots/$name.png"
      echo "screenshot: screenshots/$name.png"
      rm -f "$demo/handshake/request"
    fi
    sleep 0.1
  done
  wait "$driver" || status=$?
done
echo "demo finished (driver exit $status); screenshots in $shots"
exit "$status"
