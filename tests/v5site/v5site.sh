#!/usr/bin/env bash
# v5site as a user runs it: a process whose output and exit status count. For CTest: v5site.sh WIDTH; ./dev has built all and
# registered the components.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. tools/setup/setup.sh
. tools/setup/wine.sh
use_wine "$1"
folder="$BUILD/$1/v5site-test" passed=0 failed=0
rm -rf "$folder"
mkdir -p "$folder"
VANTOR5_SYSTEM_FOLDER=$(windows_path "$folder")
export VANTOR5_SYSTEM_FOLDER
file="$VANTOR5_SYSTEM_FOLDER\\Vantor5.INI"

v5site() { in_wine "$BUILD/$WINEARCH/v5site.exe" "$@" </dev/null | tr -d '\r'; }
# expect STATUS TEXT ARGS…: the status, and text that the output and errors hold, line by line
expect() {
  local wanted=$1 text=$2 output status=0 line missing=
  shift 2
  output=$(v5site "$@" 2>&1) || status=$?
  output=${output//$'\r'/}
  while read -r line; do grep -qF -- "$line" <<<"$output" || missing+="missing: $line"$'\n'; done <<<"$text"
  if [ "$status" = "$wanted" ] && [ -z "$missing" ]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    printf '[  FAILED  ] v5site %s: status %s instead of %s\n%s%s\n' "$*" "$status" "$wanted" "$missing" "$output"
  fi
}
# never TEXT ARGS…: text that the output must not hold
never() {
  if v5site "${@:2}" 2>&1 | grep -qF -- "$1"; then failed=$((failed + 1)); echo "[  FAILED  ] v5site ${*:2} tells $1"; else passed=$((passed + 1)); fi
}
sound() {
  printf '\xEF\xBB\xBF[Dahs1]\nSiteID=ab\nDahsComputerName=far\nDahsDescription=St\xC3\xB6r "1"\nBackupDir=b\nVantorDir=%s\\V\n' "$VANTOR5_SYSTEM_FOLDER"
  printf 'SQLAlarms=Server=s;Password=secret\nSQLConfig=c\nSQLData=d\nSQLDataShortTerm=s\nSQLRealtime=r\n'
}
write() { cat >"$folder/Vantor5.INI"; }

sound | write
expect 0 $'  DAHS 1 (site AB, far)\nNo problems.' check
expect 0 $'ID  SITE  ROLE        COMPUTER  WHERE   DESCRIPTION\n1   AB    Standalone  far       remote  Stör "1"' list
expect 0 '"description": "Stör \"1\""' list --json
expect 0 'Server=s;Password=***' show --site AB --dotnet
never secret show
never secret show --json
expect 0 'Password=secret' show --dahs 1 --show-passwords
expect 2 '' show --dahs 2
# Looking leaves no trace: no folder of the DAHS is made.
expect 0 $'  1  chosen\nremote: its computer \'far\' is not this one' why --file "$file"
expect 0 '  found      ' why
expect 0 'No differences.' diff "$file" "$file"
expect 2 '' diff "$file" none.INI
expect 0 '' check --strict
expect 0 'Vantor5.INI  SiteID=ab' log "$file"
never SiteID log "$file" --grep hdr
if [ -e "$folder/V" ]; then failed=$((failed + 1)) && echo "[  FAILED  ] the DAHS's folder was made"; fi

{ sound; printf '[Dahs2]\nSiteID=12\n'; } | write
expect 1 $'"status": 1,\nDAHS 2: missing or invalid value for \'SiteID\'; may not be a number"' check --json
printf '[Dahs2]\nSiteID=12\n' | write
# The header stands in for a missing key.
expect 2 $'No DAHS is usable.\n\'SiteID\'; may not be a number (line 2)\n\'VantorDir\' (line 1)' check
expect 2 "v5site: STR-031: no DAHS entries found in '" list

# The user security of a site, for an auditor.
for number in 1 2; do
  place="$VANTOR5_SYSTEM_FOLDER\\" site=AB
  [ $number = 1 ] || place+='none\' site=CD
  printf '[Dahs%s]\nSiteID=%s\nDahsComputerName=far\nBackupDir=b\nVantorDir=%sV\nSQLData=d\nSQLDataShortTerm=s\nSQLRealtime=r\n' $number $site "$place"
  printf 'SQL%s=Data Source=%ssite.db;Integrated Security=SSPI\n' Alarms "$place" Config "$place"
done | write
cat >"$folder/site.vbs" <<'SCRIPT'
Set security = CreateObject("V5Strings.NimboSecurity")
login = "Data Source=" & WScript.Arguments(0) & "\site.db;Integrated Security=SSPI"
If Not security.Setup("AB", "EN", login, login, "Test", True) Then WScript.Quit 1
security.EnableSecurity
security.SetMinPrivilegeLevelForRID 301, 52
security.SetMinPrivilegeLevelForPID 9001, 51
security.SetSidsForAllPrivilegeLevels "", "a""b", "", False
security.Teardown
SCRIPT
run_client "$folder/site.vbs" "$VANTOR5_SYSTEM_FOLDER" </dev/null
expect 0 "Site        AB
Security    2  Enabled_Configured
Level 1     (nobody)
Level 2     a\"b
  STR-0105  Vantor security enabled by '
  STR-0139  RID 301: min privilege level changed from '' to '52' by '
  9001  " security
expect 0 $'No such changes in the whole event log\n  no   level 1 list\n  yes  level 2 list: a"b' security --since 2999-01-01 --user nobody --may 301
expect 0 $'"level2": "a\\"b"\n"name": "RID_DBE_EditNewOccurs",\n"levelName": "PrivLevel_2"' security --site AB --json
expect 2 "v5site: Can't setup DBIL [STR-0097]" security --dahs 2

# Wrong command lines are explained.
while read -r -a arguments; do expect 3 "Try 'v5site --help'." "${arguments[@]}"; done <<'LINES'

frobnicate
check --dahs 1
show --dahs
show --dahs 1x
show --dahs 1 --site A
list --dotnet
diff a
log
security --since 2014
show --site --dotnet
LINES
expect 0 'EXIT STATUS' show --help
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
