# Sourced (not run): starts a headless X server and keeps one Wine process alive for the session,
# so that every Windows program started afterwards costs milliseconds instead of a second.
# Everything it starts is ended when the sourcing shell exits.
#   VRL_WINEPREFIX  prefix folder (default: build/wineprefix)
#   VRL_WINE_DPI    pixels per logical inch of the session's screen (default: 96)
#   VRL_WINE_SCREEN the screen's size in pixels (default: 1280x1024)
_vrl_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX=${VRL_WINEPREFIX:-$_vrl_root/build/wineprefix}
export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
export WINEARCH=win64
mkdir -p "$WINEPREFIX"
# Without any X resource database, Xlib looks for ~/.Xdefaults again on every lookup, which Wine
# makes several times for each device context: give it a database of one harmless line.
printf 'vrl.testSession: 1\n' >"$WINEPREFIX/vrl.Xresources"
export XENVIRONMENT=$WINEPREFIX/vrl.Xresources

_vrl_display=99
while [[ -e /tmp/.X${_vrl_display}-lock || -e /tmp/.X11-unix/X${_vrl_display} ]]; do _vrl_display=$((_vrl_display + 1)); done
_vrl_screen=${VRL_WINE_SCREEN:-1280x1024}
Xvfb ":$_vrl_display" -screen 0 "${_vrl_screen}x24" -nolisten tcp >/dev/null 2>&1 &
_vrl_xvfb_pid=$!
export DISPLAY=":$_vrl_display"
for _ in $(seq 50); do [[ -e /tmp/.X11-unix/X${_vrl_display} ]] && break; sleep 0.1; done

vrl_wine_session_end() {
  [[ -n ${_vrl_keepalive_pid:-} ]] && kill "$_vrl_keepalive_pid" 2>/dev/null
  WINEPREFIX=$WINEPREFIX /usr/lib/wine/wineserver -k 2>/dev/null || true
  WINEPREFIX=$WINEPREFIX /usr/lib/wine/wineserver -w 2>/dev/null || true
  kill "$_vrl_xvfb_pid" 2>/dev/null || true
}
trap vrl_wine_session_end EXIT

# Whether the desktop process of this prefix runs (other sessions may have theirs).
vrl_desktop_up() {
  local pid
  for pid in $(pgrep -f 'explorer.exe /desktop'); do
    tr '\0' '\n' <"/proc/$pid/environ" 2>/dev/null | grep -qx "WINEPREFIX=$WINEPREFIX" && return 0
  done
  return 1
}

# First start creates the prefix (about ten seconds); afterwards a sleeper keeps the server warm.
/usr/lib/wine/wine64 wineboot -i >/dev/null 2>&1 || true
# Every program runs inside one virtual desktop: windows get their frames (X11 without a window
# manager draws none), and the notification area lives inside the desktop instead of waiting on
# X11 map and unmap events that never come (hiding a tray icon would otherwise take two seconds).
if ! /usr/lib/wine/wine64 reg query 'HKCU\Software\Wine\Explorer' /v Desktop >/dev/null 2>&1; then
  /usr/lib/wine/wine64 reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
  # Japanese text: this machine has no Meiryo UI, and the title bar and menu font has no Japanese
  # glyphs. Map the panel face to IPA Gothic and link it behind the system faces.
  /usr/lib/wine/wine64 reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Meiryo UI' /d 'IPAPGothic' /f >/dev/null 2>&1
  for face in Tahoma 'Microsoft Sans Serif' 'MS Shell Dlg' 'MS Shell Dlg 2' 'Segoe UI'; do
    /usr/lib/wine/wine64 reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' \
      /v "$face" /t REG_MULTI_SZ /d 'ipagp.ttf,IPAPGothic' /f >/dev/null 2>&1
  done
fi
# Every session states its size and resolution: the prefix keeps whatever an earlier one set.
/usr/lib/wine/wine64 reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d "$_vrl_screen" /f >/dev/null 2>&1
/usr/lib/wine/wine64 reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "${VRL_WINE_DPI:-96}" /f >/dev/null 2>&1
# Start afresh, so that nothing of the set-up is still closing when the session begins: the
# desktop process ends a few seconds after the last program with a window has gone, and a program
# started while it goes away is handed a desktop that no longer exists (it dies of an X error, or
# never gets its window). The sleeper below keeps a hidden window, and so the desktop, for the whole
# session.
/usr/lib/wine/wineserver -k 2>/dev/null; /usr/lib/wine/wineserver -w 2>/dev/null
_vrl_keepalive=${VRL_KEEPALIVE:-$_vrl_root/build/win64/bin/vrl_keepalive.exe}
if [[ -f $_vrl_keepalive ]]; then
  # Its output goes nowhere: a desktop process first started by a test program would inherit that
  # test's output pipe and keep CTest waiting after the test ended.
  /usr/lib/wine/wine64 "$_vrl_keepalive" >/dev/null 2>&1 </dev/null &
  _vrl_keepalive_pid=$!
  for _ in $(seq 150); do vrl_desktop_up && break; sleep 0.1; done
else
  /usr/lib/wine/wine64 cmd /c exit >/dev/null 2>&1 </dev/null || true
fi
