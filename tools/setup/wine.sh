# Wine as the tests and examples need it: for each width a display and a prefix of this checkout, with the built
# components registered. 32-bit programs run in a 32-bit system of their own (systems.sh), 64-bit ones on this one.
# Sourced in the project's folder, after setup.sh.

. tools/setup/systems.sh

# Locks: 8 and 7 are held by all who use the 64-bit and the 32-bit Wine, 9 by who sets one up. Not those of who started us.
exec 7>&- 8>&- 9>&-
export WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="mscoree,mshtml="

# use_wine WIDTH: what follows runs in the Wine of that width, which is set up and started. The last command that uses
# it ends it. Fails, having said why, when there is none.
use_wine() {
  [ "$1" = win64 ] || need_system32 || return 1
  mkdir -p "$BUILD"
  # Locks that the shell which started this one holds are not ours to end.
  [ "${WINE_SHELL:-}" = $$ ] || exec 7>&- 8>&-
  WINE_SHELL=$$
  choose_wine "$1"
  trap end_wine EXIT
  if [ "$1" = win64 ]; then exec 8>"$WINEPREFIX.users"; flock --shared 8; else exec 7>"$WINEPREFIX.users"; flock --shared 7; fi
  exec 9>"$WINEPREFIX.setup"
  flock 9
  start_display
  [ -e "$WINEPREFIX/ready.$WOW64" ] || make_prefix
  keep_wine_up
  exec 9>&-
}
choose_wine() {
  export WINEARCH=$1 WINEPREFIX="$BUILD/wine-$1" WOW64=0
  # The 64-bit Wine runs 32-bit programs beside, without graphics, where the 32-bit system is of the same release: so it
  # is seen that the two widths share a machine.
  if [ "$1" = win64 ] && [ -e "$SYSTEM32/ready" ] && grep -q "^VERSION_CODENAME=$SYSTEM32_RELEASE$" /etc/os-release; then
    export WOW64=1 WINEDLLPATH="$SYSTEM32/usr/lib/i386-linux-gnu/wine"
  else
    unset WINEDLLPATH
  fi
}

# wine_command COMMAND…: one of Wine's own. Neither it nor the server that it may start keeps our locks.
wine_command() {
  if [ "$WINEARCH" = win64 ]; then "$@" 7>&- 8>&- 9>&-; else in_system32 "$@" 7>&- 8>&- 9>&-; fi
}
in_wine() { wine_command wine "$@"; }
windows_path() { printf 'Z:%s' "$(realpath "$1" | tr / '\\')"; }

runs() { kill -0 "$(cat "$1" 2>/dev/null)" 2>/dev/null; }

start_display() {
  local tries
  if ! runs "$WINEPREFIX.xvfb"; then
    rm -f "$WINEPREFIX.display"  # the number of an earlier display
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$WINEPREFIX.display" >/dev/null 2>&1 7>&- 8>&- 9>&- &
    echo $! >"$WINEPREFIX.xvfb"
    for tries in {1..300}; do [ -s "$WINEPREFIX.display" ] && break; sleep 0.1; done
    [ -s "$WINEPREFIX.display" ] || fail "cannot start the virtual display (Xvfb)"
  fi
  DISPLAY=":$(cat "$WINEPREFIX.display")"
  export DISPLAY
}

make_prefix() {
  say "Creating the Wine prefix ($WINEARCH)"
  rm -rf "$WINEPREFIX"
  in_wine wineboot --init >"$WINEPREFIX.log" 2>&1 || fail "cannot create the Wine prefix: $(reason "$WINEPREFIX.log")"
  # The display has no window manager; Wine would wait two seconds for one whenever a window closes.
  in_wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
  # A program that crashes ends at once: Wine's own debugger would keep it for minutes.
  in_wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /d 'cmd /c exit' /f \
    >/dev/null 2>&1 || true
  touch "$WINEPREFIX/ready.$WOW64"
}

# A program that waits for input until the end: while any runs, others start in a tenth of a second instead of three.
keep_wine_up() {
  runs "$WINEPREFIX.pid" && return 0
  [ -p "$WINEPREFIX.input" ] || mkfifo "$WINEPREFIX.input"
  in_wine cmd /c pause <>"$WINEPREFIX.input" >/dev/null 2>&1 7>&- 8>&- 9>&- &
  echo $! >"$WINEPREFIX.pid"
  # Wine's services keep the output of the program that makes them start: none that somebody reads to its end.
  in_wine cmd /c exit >/dev/null 2>&1
}

end_wine() {
  if flock --nonblock 8; then end_wine_of win64 && flock --unlock 8; fi 2>/dev/null
  if flock --nonblock 7; then end_wine_of win32 && flock --unlock 7; fi 2>/dev/null
}
end_wine_of() {
  choose_wine "$1"
  wine_command wineserver -k >/dev/null 2>&1 || true
  kill "$(cat "$WINEPREFIX.xvfb")" 2>/dev/null || true
  rm -f "$WINEPREFIX.xvfb" "$WINEPREFIX.pid"
}

# need_registered: registers the freshly built components of the width in use.
need_registered() {
  local dll mark
  for dll in V5Strings.dll devkit/V5Msgs.dll devkit/V5NetUtil.dll devkit/V5DBIL.dll; do
    mark="$WINEPREFIX/registered.${dll##*/}"
    dll="$BUILD/$WINEARCH/$dll"
    [ -e "$dll" ] && [ "$dll" -nt "$mark" ] || continue
    in_wine 'C:\windows\system32\regsvr32.exe' /s "$(windows_path "$dll")" || fail "cannot register $dll"
    touch "$mark"
  done
}

# run_client CLIENT [ARGS…]: runs a program, or a script by the script host of the width in use.
run_client() {
  local client=$1
  shift
  [ -e "$client" ] || fail "there is no file $client"
  case $client in
    *.vbs | *.js) in_wine 'C:\windows\system32\cscript.exe' //nologo "$(windows_path "$client")" "$@" ;;
    *.exe) in_wine "$client" "$@" ;;
    *) fail "$client is not a .vbs, .js or .exe file" ;;
  esac
}
