#!/usr/bin/env bash
# v5site as a user runs it: a process whose output and exit status count. For CTest: v5site.sh WIDTH; ./dev has built all and
# registered the components.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. tools/setup/setup.sh
. tools/setup/wine.sh
. tests/checks.sh
use_wine "$1"
folder="$BUILD/$1/v5site-test" passed=0 failed=0
rm -rf "$folder"
mkdir -p "$folder"
VANTOR5_SYSTEM_FOLDER=$(windows_path "$folder")
export VANTOR5_SYSTEM_FOLDER
file="$VANTOR5_SYSTEM_FOLDER\\Vantor5.INI"

# try ARGS…: runs the tool
try() {
  tried="v5site $*" status=0
  in_wine "$BUILD/$WINEARCH/v5site.exe" "$@" </dev/null >"$folder/output" 2>"$folder/errors" || status=$?
  out=$(tr -d '\r' <"$folder/output") err=$(tr -d '\r' <"$folder/errors")
}
# says STATUS PART…: the status, and pieces of the output
says() {
  local part
  is "$status" "$1" || { echo "$err"; return 1; }
  for part in "${@:2}"; do [[ $out$'\n' == *"$part"* ]] || { printf 'missing: %s\nin:\n%s\n' "$part" "$out"; return 1; }; done
}
# refuses STATUS PART: the status, a piece of the errors, and no output
refuses() { is "$status" "$1" && is "$out" '' && { [[ $err == *"$2"* ]] || { echo "$err"; return 1; }; }; }
hides() { says 0 && [ -n "$out" ] && [[ $out$err != *"$1"* ]]; }
said() { check "$tried" says "$@"; }
refused() { check "$tried" refuses "$@"; }
exactly() { check "$tried" says 0 && check "$tried" is "$out" "$1"; }
# A site file without faults.
sound() {
  printf '\xEF\xBB\xBF[Dahs1]\nSiteID=ab\nDahsComputerName=far\nDahsDescription=St\xC3\xB6r "1"\nBackupDir=b\nVantorDir=%s\\V\n' "$VANTOR5_SYSTEM_FOLDER"
  printf 'SQLAlarms=Server=s;Password=secret\nSQLConfig=c\nSQLData=d\nSQLDataShortTerm=s\nSQLRealtime=r\n'
}
write() { cat >"$folder/Vantor5.INI"; }

sound | write
try check; said 0 $'Usable:\n  DAHS 1 (site AB, far)\nNo problems.'
try list; exactly $'ID  SITE  ROLE        COMPUTER  WHERE   DESCRIPTION\n1   AB    Standalone  far       remote  Stör "1"'
try list --json; said 0 '"description": "Stör \"1\""'
try show --site AB --dotnet; said 0 $'Server=s;Password=***\n'; check "$tried" hides secret
try show --json; check "$tried" hides secret
try show --dahs 1 --show-passwords; said 0 'Password=secret'
try show --dahs 2; said 2
# Looking leaves no trace: no folder of the DAHS is made.
try why --file "$file"; said 0 $'  1  chosen\n       remote: its computer \'far\' is not this one\n'
try why; said 0 '  found      '
try diff "$file" "$file"; exactly 'No differences.'
try diff "$file" none.INI; said 2
for command in 'check --strict' list show 'show --json'; do try $command; said 0; done
try log "$file"; said 0 'Vantor5.INI  SiteID=ab'
try log "$file" --grep hdr; exactly ''
check "no folder of the DAHS" test ! -e "$folder/V"

{ sound; printf '[Dahs2]\nSiteID=12\n'; } | write
try check --json; said 1 $'"status": 1,\n' "DAHS 2: missing or invalid value for 'SiteID'; may not be a number\""
printf '[Dahs2]\nSiteID=12\n' | write
# The header stands in for a missing key.
try check; said 2 'No DAHS is usable.' $'\'SiteID\'; may not be a number (line 2)\n' $'\'VantorDir\' (line 1)\n'
try list; refused 2 "v5site: STR-031: no DAHS entries found in '"

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
try security
said 0 $'Site        AB\n' $'Security    2  Enabled_Configured\n' $'Level 1     (nobody)\n' $'Level 2     a"b\n' \
  "  STR-0105  Vantor security enabled by '" "  STR-0139  RID 301: min privilege level changed from '' to '52' by '" '  9001  '
try security --since 2999-01-01 --user nobody --may 301
said 0 $'No such changes in the whole event log\n' $'  no   level 1 list\n  yes  level 2 list: a"b\n'
try security --site AB --json
said 0 '"level2": "a\"b"' $'"name": "RID_DBE_EditNewOccurs",\n      "level": 52,\n      "levelName": "PrivLevel_2"'
try security --dahs 2; refused 2 "v5site: Can't setup DBIL [STR-0097]"

# Wrong command lines are explained.
while read -r -a arguments; do try "${arguments[@]}"; refused 3 "Try 'v5site --help'."; done <<'LINES'

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
try show --help; said 0 'EXIT STATUS'
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
