# Registration and back, for the machine and for one user, by regsvr32 as an installer runs it; and that nothing else is ever
# written to the registry. Sourced by run.sh; in a prefix with nothing registered.

REGISTRY="$BUILD/package/test/registry"

# registry: all software's keys and values, of the machine and of the user, but what Wine notes for itself and of networks.
# Those of the other width stand in the same places (on a 64-bit system they are seen in two).
registry() {
  local root
  for root in HKLM HKCU; do
    in_wine reg export "$root\\Software" "$(windows_path "$BUILD/package/test")\\exported.reg" /y >/dev/null &&
      iconv -f UTF-16 -t UTF-8 "$BUILD/package/test/exported.reg" | tr -d '\r' | sed 's/Wow6432Node\\//' |
      awk '/^\[/ { key = $0; skip = /\\Software\\Wine[]\\]|\\CurrentVersion\\Network/ }
           NF && !skip { print key ($0 == key ? "" : " " $0) }'
  done | sort -u
}
server() { register "$1" "$(windows_path "$BUILD/$1/V5Strings.dll")" "${@:2}"; }

# Whether registering has changed nothing that was there, and added keys of the library below ROOT only, in plenty.
only_own_keys_added() {
  local root=$1 own
  own=$(grep -oiE '[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}' src/surface/V5Strings.idl | paste -sd '|')
  diff "$REGISTRY.before" "$REGISTRY.registered" | grep '^[<>]' >"$REGISTRY.added"
  [ "$(grep -c . "$REGISTRY.added")" -gt "$2" ] &&
    fails grep -viE "^> \[$root\\\\Software\\\\Classes\\\\(CLSID|Interface|TypeLib)\]\$|^> \[$root\\\\Software\\\\Classes\\\\.*(V5Strings|$own)" "$REGISTRY.added"
}
# What clients, compilers and the marshaller look up, at one class. The case of names is the system's.
clients_find() {
  local line dll; dll=$(windows_path "$BUILD/$2/V5Strings.dll")
  while read -r line; do
    grep -qiF "[$1\\Software\\Classes\\$line" "$REGISTRY.registered" || { echo "missing: $line"; return 1; }
  done <<ENTRIES
V5Strings.NimboErrorNumbers\\CLSID] @="{EF37909B-0DB1-40EA-A973-21E1EE5B9996}"
CLSID\\{EF37909B-0DB1-40EA-A973-21E1EE5B9996}\\InprocServer32] @="${dll//\\/\\\\}"
CLSID\\{EF37909B-0DB1-40EA-A973-21E1EE5B9996}\\InprocServer32] "ThreadingModel"="Apartment"
CLSID\\{EF37909B-0DB1-40EA-A973-21E1EE5B9996}\\ProgID] @="V5Strings.NimboErrorNumbers"
CLSID\\{EF37909B-0DB1-40EA-A973-21E1EE5B9996}\\TypeLib] @="{B6B7CCD4-75B3-4C21-AD67-7B97EFB0F7DB}"
Interface\\{0533C17D-5A5C-4B00-A19F-5C5C2D740FBF}] @="_NimboErrorNumbers"
Interface\\{0533C17D-5A5C-4B00-A19F-5C5C2D740FBF}\\TypeLib] @="{B6B7CCD4-75B3-4C21-AD67-7B97EFB0F7DB}"
Interface\\{0533C17D-5A5C-4B00-A19F-5C5C2D740FBF}\\ProxyStubClsid32] @="{00020424-0000-0000-C000-000000000046}"
TypeLib\\{B6B7CCD4-75B3-4C21-AD67-7B97EFB0F7DB}\\1.0\\0\\$2] @="${dll//\\/\\\\}"
ENTRIES
}

# registration_tests WIDTH LEAST: on the registry as it is; at least that many entries are added
registration_tests() {
  local width=$1 options root
  registry >"$REGISTRY.before"
  for options in '' '/n /i:user'; do
    root=HKEY_LOCAL_MACHINE
    [ -z "$options" ] || root=HKEY_CURRENT_USER
    check "register $width $options" server "$width" $options
    check "register again $width $options" server "$width" $options
    registry >"$REGISTRY.registered"
    check "only its own keys are added $width $options" only_own_keys_added "$root" "$2"
    check "what clients look up $width $options" clients_find "$root" "$width"
    check "unregister $width $options" server "$width" /u $options
    check "no trace is left $width $options" diff "$REGISTRY.before" <(registry)
    check "unregister what is not there $width $options" server "$width" /u $options
  done
}

# The message sink's interface belongs to the messages component; the other width shares keys.
registration_suite() {
  local width dll
  for width in "$@"; do
    for dll in V5Msgs V5NetUtil V5DBIL; do register "$width" "$(windows_path "$BUILD/$width/devkit/$dll.dll")"; done
  done
  in_wine reg add 'HKCU\Software\Classes' /f >/dev/null
  registration_tests "$1" 100
  server "$1"
  [ $# = 1 ] || registration_tests "$2" 10
  registry >"$REGISTRY.before"
  check "every member is called, a site, a log and a database are used $1" in_wine "$BUILD/$1/tests/v5component.exe" \
    --gtest_brief=1 --gtest_filter=Abuse.EveryMember*:DahsIni.LateBound*:LogFileTest.LinesAre*:SecurityComponent.AnAdministrator*
  check "objects write nothing $1" diff "$REGISTRY.before" <(registry)
  server "$1" /u
}
