# What ./dev demo and ./dev shots do with the dialogs on the screen, and the plant that they show. Sourced by them.

# when_shown TITLE COMMAND…: waits for a window of this title and then does what a user would.
when_shown() {
  { timeout 60 xdotool search --sync --onlyvisible --name "$1" >/dev/null && sleep 1 && "${@:2}"; } 7>&- 8>&-
}
# dismiss KEY…: presses these keys until the program that was started last in the background has ended; its status.
dismiss() {
  local key keys=()
  for key in "$@"; do keys+=(key "$key"); done
  while kill -0 $! 2>/dev/null; do
    xdotool "${keys[@]}" 7>&- 8>&-
    sleep 0.5
  done
  wait $!
}
# sample_site FOLDER NUMBERS: a copy of the sample plant's site file there, since reading a site makes folders beside it. The DAHSes
# of these numbers are moved to this computer.
sample_site() {
  mkdir -p "$1"
  sed "s/^DahsComputerName=BRENN-DAS-[$2]\r*$/DahsComputerName=$(uname -n | cut -d. -f1)/" devkit/site/Vantor5.INI >"$1/Vantor5.INI"
}
