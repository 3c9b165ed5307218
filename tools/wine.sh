#!/bin/sh
# wine.sh run PROGRAM.exe ARGS... | start | stop      one Wine prefix, screen and server per build folder
# wine.sh open PROGRAM.exe ARGS...                    the same on the user's own display
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${WINEPREFIX:-$here/build/wineprefix}" LC_ALL=C.UTF-8 WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
S=$WINEPREFIX.screen
q() { "$@" </dev/null >/dev/null 2>&1 9>&-; }      # nothing of Wine may inherit our pipes or our lock
make_prefix() {
  [ -e "$WINEPREFIX" ] && return
  final=$WINEPREFIX; WINEPREFIX=$final.new; rm -rf "$WINEPREFIX"
  q wineboot -i
  ln -sf /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/"
  { printf 'REGEDIT4\n\n[HKEY_CURRENT_USER\\Software\\Wine\\Fonts\\Replacements]\n'
    printf '"MS Gothic"="IPAGothic"\n"MS PGothic"="IPAPGothic"\n"MS UI Gothic"="IPAPGothic"\n\n'
    printf '[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion\\AeDebug]\n"Debugger"=""\n'; } >"$WINEPREFIX/setup.reg"
  q wine regedit /S "$WINEPREFIX/setup.reg"
  q wineserver -k; q wineserver -w
  mv "$WINEPREFIX" "$final"; WINEPREFIX=$final       # whole or not at all
}
start() {
  mkdir -p "$(dirname "$WINEPREFIX")"; exec 9>"$WINEPREFIX.lock"; flock 9
  make_prefix
  if ! { [ -e "$S" ] && . "$S" && kill -0 "$XPID" 2>/dev/null && q wineserver -k0; }; then
    q wineserver -k; q wineserver -w; rm -f "$S.fd"
    Xvfb -displayfd 8 -screen 0 1920x1200x24 -nolisten tcp </dev/null >/dev/null 2>&1 8>"$S.fd" 9>&- & XPID=$!
    until [ -s "$S.fd" ]; do kill -0 $XPID || exit 125; sleep 0.05; done
    export DISPLAY=:$(cat "$S.fd")
    [ -x "$here/build/tinywm" ] || q cc -O1 -o "$here/build/tinywm" "$here/tools/tinywm.c" -lX11
    "$here/build/tinywm" </dev/null >/dev/null 2>&1 9>&- &
    echo "export DISPLAY=$DISPLAY XPID=$XPID" >"$S"
    q wineserver -p; q wine cmd /c exit
  fi
  exec 9>&-
}
case $1 in
  start) start ;;
  stop) [ -e "$S" ] && . "$S"; q wineserver -k; [ -n "$XPID" ] && kill "$XPID"; rm -f "$S" "$S.fd" ;;
  run) shift; start; . "$S"; exec wine "$@" ;;
  open) shift; mkdir -p "$(dirname "$WINEPREFIX")"; make_prefix; exec wine "$@" ;;
  *) echo "usage: wine.sh run PROGRAM ARGS | start | stop | open PROGRAM ARGS" >&2; exit 2
esac
