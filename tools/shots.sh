# Pictures of the dialogs as they stand on the screen, for ./dev shots. Sourced by it. The close box shows a letter where the
# font of its cross is missing.

# take_shots DPI: PNG files of every dialog at that display density, in build/shots/DPI.
take_shots() {
  local folder="$BUILD/shots/$1" name
  rm -rf "$folder"
  sample_site "$folder" 12
  local -x VANTOR5_SYSTEM_FOLDER; VANTOR5_SYSTEM_FOLDER=$(windows_path "$folder")
  in_wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null
  for name in $(run_client tools/shots.vbs | tr -d '\r'); do take_shot "$folder" "$name"; done
  in_wine reg delete 'HKCU\Control Panel\Desktop' /v LogPixels /f >/dev/null
  ls "$folder"/*.png
}
# take_shot FOLDER NAME: the picture of one, which is then closed by the keys that cancel.
take_shot() {
  run_client tools/shots.vbs "$2" "$(windows_path "$1")" &
  when_shown . import -window root -trim "$1/$2.png"
  dismiss Escape n a || fail "$2 was not shown"
}
