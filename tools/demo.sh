# What ./dev demo shows. Sourced by it.

# The dialogs of the example: the first is answered, of the second a picture is taken, and the others are closed.
demo_dialogs() {
  local -x VANTOR5_SYSTEM_FOLDER; VANTOR5_SYSTEM_FOLDER=$(windows_path "$BUILD/demo")
  say "The dialogs: examples/dialogs.vbs"
  run_client examples/dialogs.vbs &
  when_shown "Dialogs of Vantor 5" xdotool key y
  when_shown "When did the outage end" import -window root -trim "$BUILD/date-dialog.png"
  dismiss Escape
  say "A picture of the date dialog"
  echo "$BUILD/date-dialog.png"
}

# The sample plant, seen through the support engineer's tool and through a script.
demo_site() {
  local site="$BUILD/demo" tool="$BUILD/win64/v5site.exe"
  sample_site "$site" 1
  local -x VANTOR5_SYSTEM_FOLDER
  VANTOR5_SYSTEM_FOLDER=$(windows_path "$site")
  say "A plant's site file, and what is wrong with it: v5site check"
  in_wine "$tool" check || true  # problems are what it shows
  say "The plant's computers: v5site list"
  in_wine "$tool" list
  say "What a program gets that works on the first of them: v5site show"
  in_wine "$tool" show
  say "The same from a script: examples/show_site.vbs"
  run_client examples/show_site.vbs
}

# A log run with header, prefixes and a gap, written and shown by the example.
demo_log() {
  say "A log file"
  rm -f "$BUILD/demo.log"
  run_client examples/log.vbs "$(windows_path "$BUILD")\demo.log"
}

# The user security of the sample plant's first site, from its first start to the audit trail, and the report on it.
demo_security() {
  say "The user security of a site"
  [ -e "$BUILD/win64/devkit/V5DBIL.dll" ] || { echo "SKIPPED: the devkit's database is not built"; return 0; }
  local folder="$BUILD/demo"
  mkdir -p "$folder"
  rm -f "$folder"/BRENN-*
  cp devkit/site/Vantor5.INI "$folder"
  # The example asks for a password, which is typed here as by a user.
  { when_shown "Confirm alarms" xdotool type reset2014 && xdotool key Return; } 7>&- 8>&- &
  (cd "$folder" && run_client ../../examples/security.vbs BRENN-DAS-2)
  wait $!
  say "v5site security"
  (cd "$folder" && VANTOR5_SYSTEM_FOLDER="$(windows_path "$folder")" in_wine ../win64/v5site.exe security --dahs 2)
}

