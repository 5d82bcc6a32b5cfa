# The packages as their users meet them: unpacked, built against, installed, upgraded, repaired, removed. Sourced by run.sh.
# make_test_packages WIDTH… makes them; machine_suite WIDTH… is their life on the machine of the Wine in use, in a prefix of
# its own with nothing registered. What fails is printed and counted, in `passed` and `failed`.

UPGRADE_CODES=('{F1E30AF2-4BE1-47FD-9A5E-97E9E2E0A5D9}' '{0B7B86F6-7E53-4F68-A1AE-3F0C8C1D90B7}')
OLDER=5.2.9
PLACE=Plant7  # a folder below C:\ that an administrator chose

host_of() { if [ "$1" = "$WINEARCH" ]; then echo 'C:\windows\system32\'; else echo 'C:\windows\syswow64\'; fi; }
script() { in_wine "$(host_of "$1")cscript.exe" //nologo "$(windows_path "tests/packaging/$2")" "${@:3}" | tr -d '\r'; }
client_works() { is "$(script "$1" client.vbs)" passed; }
msi() { in_wine msiexec "$1" "$(windows_path "$2")" "${@:3}" /qn; }
# register WIDTH FILE [OPTIONS…]: by regsvr32 of that width; FILE as Windows names it
register() { in_wine "$(host_of "$1")regsvr32.exe" /s "${@:3}" "$2"; }
product_name() { echo "V5Strings $version (${1#win} bit$(! has_development_values "$1" || echo ', development values'))"; }
installed() { script "$WINEARCH" installed.vbs "${UPGRADE_CODES[@]}"; }
folder_of() { if [ "$1" = "$WINEARCH" ]; then echo 'Program Files'; else echo 'Program Files (x86)'; fi; }

# The script hosts register themselves when they are first used.
first_scripts() {
  local width
  for width in "$@"; do script "$width" fileversion.vbs 'C:\windows\win.ini' || true; done
}
# fresh_prefix WIDTH…: one with nothing registered: the pristine one, whose files it shares.
fresh_prefix() {
  local pristine="$BUILD/wine-pristine.$WINEARCH.$#"
  if [ ! -e "$pristine/ready" ]; then
    rm -rf "$pristine"
    (export WINEPREFIX="$pristine"; in_wine wineboot --init && first_scripts "$@" && end_prefix && touch "$pristine/ready") \
      >"$pristine.log" 2>&1
  fi
  export WINEPREFIX="$BUILD/wine-package"
  [ ! -e "$WINEPREFIX" ] || end_prefix  # of a run that was interrupted
  rm -rf "$WINEPREFIX"
  cp -al "$pristine" "$WINEPREFIX"
  rm "$WINEPREFIX"/*.reg
  cp "$pristine"/*.reg "$WINEPREFIX"
}

# What the machine has: registered classes, installed products, files in the program folders. The registry is read from
# the file that the Wine server writes when it ends. Keys of the installer itself that became empty are the installer's.
machine_state() {
  end_prefix
  awk '/^\[/ { sub(/\] [0-9]+$/, "]"); key = $0 }
       /^#time/ || NF == 0 || !/^\[/ && key == "" { next }
       tolower(key) ~ /^\[software\\\\(wow6432node\\\\)?(nimbo|classes|microsoft\\\\windows\\\\currentversion\\\\(uninstall|installer))/ &&
         !(/^\[/ && tolower($0) ~ /\\\\installer/) { print key " " ($0 == key ? "" : $0) }' "$WINEPREFIX/system.reg" | sort
  (cd "$WINEPREFIX/drive_c" && find . -path './Program Files*' -o -path "./$PLACE/*" | sort)
}
end_prefix() { wine_command wineserver -k || true; wine_command wineserver -w || true; }

# The examples, built with nothing but the unpacked package.
build_example() {
  local width=$1 example=$2 toolchain=x86_64 build="$BUILD/package/test/$1-$2"
  [ "$width" = win64 ] || toolchain=i686
  cmake --fresh -S "$unpacked/$width/examples/$example" -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-$toolchain.cmake" \
    -DCMAKE_PREFIX_PATH="$unpacked/$width" -DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=BOTH -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
    -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror" && cmake --build "$build"
}
registration_free_works() { in_wine "$BUILD/package/test/$1-registration_free/every_class.exe"; }
example_works() {
  local log="$BUILD/package/test/footnotes-$1.log"
  rm -f "$log"
  is "$(in_wine "$BUILD/package/test/$1-cpp/footnotes.exe" "$(windows_path "$BUILD/package/test")\\footnotes-$1.log" | tr -d '\r')" \
    "112.4: mark 2020
 98.0: mark 2021
110.9: mark 2020
footnote: Calibration in progress
footnote: Substituted value
message 4: DB not available [STR-0099]
message 12292: Insufficient privileges [STR-0102]
entry 888: SITE1
entries: 0
error 9 from V5Strings.DahsIniEntries: Subscript out of range" && grep -q 'Marked 2 kinds of values' "$log"
}

# Every page of the zip that another one links to is in it.
links_lead_somewhere() {
  python3 - "$unpacked/$1" <<'CHECK'
import pathlib, re, sys
dead = [f"{page}: {link}" for page in pathlib.Path(sys.argv[1]).rglob("*.md")
        for link in re.findall(r"\]\(([\w./-]+\.\w+)[)#]", page.read_text()) if not (page.parent / link).exists()]
sys.exit("\n".join(dead) if dead else 0)
CHECK
}

all_versions_agree() {
  local version
  version=$(package_version)
  is "$(in_wine "$BUILD/$1/v5site.exe" --version | tr -d '\r')" "v5site $version" &&
    is "$(sed -n 's/^## \([0-9.]*\).*/\1/p' docs/changelog.md | head -n 1)" "$version" &&
    is "$(script "$1" fileversion.vbs "$(windows_path "$BUILD/$1/V5Strings.dll")")" "$version.0" &&
    is "$(script "$1" fileversion.vbs "$(windows_path "$BUILD/$1/v5site.exe")")" "$version.0"
}
product_code_documented() {
  grep -qF "$(msiinfo export "$(installer "$1" "$version")" Property | sed -n 's/^ProductCode\t\({.*}\).*/\1/p')" docs/deploying.md
}
# In the version resources, where the packages' own marks come from the same build.
development_values_told() {
  local program
  for program in "$BUILD/$1"/{V5Strings.dll,v5site.exe}; do
    is "$(has_development_values "$1" && echo 1 || echo 0)" "$(strings -el "$program" | grep -c '^PrivateBuild')" || return 1
  done
}
# The bill of materials, by the published schema; and it names what a C++ program of this compiler cannot be without.
bill_is_valid() {
  local bill="$unpacked/$1/docs/V5Strings.cdx.json"
  python3 - "$bill" "$DOWNLOADS/cyclonedx" <<'CHECK'
import json, pathlib, sys
import jsonschema
bill, folder = json.loads(pathlib.Path(sys.argv[1]).read_text()), pathlib.Path(sys.argv[2])
schemas = {name: json.loads((folder / f"{name}.SNAPSHOT.schema.json").read_text()) for name in ("bom-1.5", "spdx", "jsf-0.82")}
store = {schema["$id"]: schema for schema in schemas.values()}
resolver = jsonschema.RefResolver.from_schema(schemas["bom-1.5"], store=store)
jsonschema.Draft7Validator(schemas["bom-1.5"], resolver=resolver, format_checker=jsonschema.FormatChecker()).validate(bill)
linked = {entry["value"] for part in bill["components"] for entry in part["properties"]}
for library in ("libstdc++.a", "libgcc.a", "libmingwex.a", "libwinpthread.a"):
    assert f"{library} in V5Strings.dll" in linked, library
CHECK
  is "$(sed -n 's/.*"content": "\(.*\)".*/\1/p' "$bill")" "$(sha256sum "$unpacked/$1/bin"/{V5Strings.dll,v5site.exe} | cut -d' ' -f1)" &&
    grep -q 'GCC RUNTIME LIBRARY EXCEPTION' "$unpacked/$1/docs/licences"/gcc*
}
# The same a second time, later.
same_again() {
  make_zip "$1" "$BUILD/package/test/again.zip" && cmp "$BUILD/package/test/again.zip" "$BUILD/package/test/$1.zip" &&
    make_installer "$1" "$version" "$BUILD/package/test/again.msi" &&
    cmp "$BUILD/package/test/again.msi" "$(installer "$1" "$version")"
}

# Signing, with a certificate of its own authority made for the purpose.
make_certificate() {
  local folder="$BUILD/package/test"
  openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj '/CN=V5Strings test' -addext extendedKeyUsage=codeSigning \
    -keyout "$folder/key.pem" -out "$folder/authority.pem" &&
    openssl pkcs12 -export -inkey "$folder/key.pem" -in "$folder/authority.pem" -passout pass:'of a test' -out "$folder/test.pfx"
}
signature_holds() { osslsigncode verify -CAfile "$BUILD/package/test/authority.pem" -in "$1"; }
signing_works() {
  local folder="$BUILD/package/test/signed" file
  rm -rf "$folder"
  mkdir -p "$folder"
  cp "$BUILD/$1/V5Strings.dll" "$BUILD/$1/v5site.exe" "$folder"
  cp "$(installer "$1" "$version")" "$folder/setup.msi"
  (V5_SIGN_PASSWORD='another' && sign_with "$BUILD/package/test/test.pfx") && return 1
  (V5_SIGN_PASSWORD='of a test' && sign_with "$BUILD/package/test/test.pfx" && sign "$folder"/*) || return 1
  for file in "$folder"/*; do
    signature_holds "$file" || return 1
    printf '\x5a' | dd of="$file" bs=1 seek=5000 conv=notrunc status=none
    ! signature_holds "$file" >/dev/null || return 1
  done
}
signed_dll_works() {
  local folder="$BUILD/package/test/signed-$1"
  mkdir -p "$folder"
  cp "$BUILD/$1/V5Strings.dll" "$folder"
  (V5_SIGN_PASSWORD='of a test' && sign_with "$BUILD/package/test/test.pfx" && sign "$folder/V5Strings.dll") &&
    register "$1" "$(windows_path "$folder/V5Strings.dll")" && client_works "$1" &&
    register "$1" "$(windows_path "$folder/V5Strings.dll")" /u && fails client_works "$1"
}
# The DLL as a file: what it exports, that it needs Windows only, its size, that it is hardened, that no code can be written.
image_is_sound() {
  local dll="$BUILD/$1/V5Strings.dll" head
  head=$(objdump -p "$dll")
  is "$(grep -o 'Dll[A-Z][A-Za-z]*$' <<<"$head" | sort -u | paste -sd ' ')" \
    'DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer' &&
    is "$(sed -n 's/.*DLL Name: //p' <<<"$head" | tr a-z A-Z | sort | paste -sd ' ')" \
      'ADVAPI32.DLL GDI32.DLL KERNEL32.DLL MSVCRT.DLL OLE32.DLL OLEAUT32.DLL USER32.DLL' &&
    [ "$(stat -c %s "$dll")" -le 1048576 ] && grep -q DYNAMIC_BASE <<<"$head" && grep -q NX_COMPAT <<<"$head" &&
    { [ "$1" = win32 ] || grep -q HIGH_ENTROPY_VA <<<"$head"; } &&
    fails grep -vq READONLY <<<"$(objdump -h "$dll" | grep CODE)"
}
no_own_paths() { fails grep -rlF "$PWD" "$unpacked/$1" --include='*.h' --include='*.hpp' --include='*.cpp' --include='*.cmake' --include='*.manifest'; }

repair_works() {
  rm "$WINEPREFIX/drive_c/$PLACE/$1/V5Strings.dll"
  in_wine "$(host_of "$1")reg.exe" delete 'HKLM\Software\Classes\CLSID\{D8D40FB6-A60C-4CE8-B5F3-D55A6ACED141}' /f
  fails client_works "$1" && msi /i "$(installer "$1" "$(package_version)")" REINSTALL=ALL REINSTALLMODE=amus &&
    client_works "$1"
}
# The installer's rows are what registration writes: registering the installed file changes nothing.
registering_changes_nothing() {
  machine_state >"$BUILD/package/test/installed.txt"
  register "$1" "C:\\$PLACE\\$1\\V5Strings.dll" &&
    diff "$BUILD/package/test/installed.txt" <(machine_state)
}
installer() { echo "$BUILD/package/test/V5Strings-$2-$1.msi"; }

# The programs with an older version in their resources (the fixed part, which the installer goes by).
make_older_programs() {
  local folder="$BUILD/package/test/$1-older" fixed='\xBD\x04\xEF\xFE\x00\x00\x01\x00'
  mkdir -p "$folder"
  cp "$BUILD/$1/V5Strings.dll" "$BUILD/$1/v5site.exe" "$folder"
  perl -0777 -pi -e "s/($fixed).{8}/\$1\\x02\\x00\\x05\\x00\\x00\\x00\\x09\\x00/s" "$folder"/*
}

make_test_packages() {
  local width
  rm -rf "$unpacked"

  for width in "$@"; do
    make_zip "$width" "$BUILD/package/test/$width.zip"
    mkdir -p "$unpacked/$width"
    (cd "$unpacked/$width" && cmake -E tar xf "$BUILD/package/test/$width.zip" && mv V5Strings-*/* .)
    make_older_programs "$width"
    make_installer "$width" "$OLDER" "$(installer "$width" "$OLDER")" "$BUILD/package/test/$width-older"
    make_installer "$width" "$version" "$(installer "$width" "$version")"
    check "development values told $width" development_values_told "$width"
    check "product code documented $width" product_code_documented "$width"
    check "no paths of the build machine $width" no_own_paths "$width"
    check "the DLL as a file $width" image_is_sound "$width"
    check "bill of materials $width" bill_is_valid "$width"
    check "the same again $width" same_again "$width"
    check "signatures $width" signing_works "$width"
    check "no dead links $width" links_lead_somewhere "$width"
    for file in registration_free cpp; do check "build example $file $width" build_example "$width" "$file"; done
  done
}

machine_suite() {
  local width
  fresh_prefix "$@"
  for width in "$@"; do
    check "versions agree $width" all_versions_agree "$width"
    check "registration-free $width" registration_free_works "$width"
    rm "$BUILD/package/test/$width-registration_free/V5Strings.Component.manifest"
    check "not found without its manifest $width" fails registration_free_works "$width"
    cp "$unpacked/$width/bin/V5Strings.Component.manifest" "$BUILD/package/test/$width-registration_free"
  done
  for width in "$@"; do check "signed DLL $width" signed_dll_works "$width"; done
  registration_suite "$@"
  fresh_prefix "$@"
  machine_state >"$BUILD/package/test/before.txt"
  for width in "$@"; do installer_tests "$width"; done
  if [ $# = 2 ]; then
    for width in "$@"; do check "install beside the other $width" msi /i "$(installer "$width" "$version")"; done
    for width in "$@"; do check "folder $width" test -e "$WINEPREFIX/drive_c/$(folder_of "$width")/Vantor/V5Strings/V5Strings.dll"; done
    check "both are installed" is "$(installed)" "$(product_name win64)"$'\n'"$(product_name win32)"
    check "remove $1" msi /x "$(installer "$1" "$version")"
    check "$2 outlives the other width" client_works "$2"
    # What is left now is not looked at: Wine, other than Windows, has programmatic identifiers of each width.
  fi
  end_prefix
}

# environment: the machine's, as far as it is ours: the path's last entry and the system folder
environment() {
  local key='HKLM\System\CurrentControlSet\Control\Session Manager\Environment'
  { in_wine reg query "$key" /v PATH; in_wine reg query "$key" /v VANTOR5_SYSTEM_FOLDER; } | tr -d '\r' |
    sed -n 's/.*REG_[A-Z_]* *//p' | sed 's/.*;//'
}
install_location() { in_wine reg query "HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall" /s /reg:"${1#win}" | tr -d '\r' | sed -n 's/.*InstallLocation *REG_SZ *//p'; }

# A program has the library loaded while it is replaced: the program works on, and what starts then has the new one, with
# everything else of it; or the restart is asked for that brings it (3010, of which the shell sees the low byte).
upgrade_with_held_library() {
  local held="$BUILD/package/test/held" holder status=0
  rm -f "$held"
  script "$1" hold.vbs "$(windows_path "$BUILD/package/test")\\held" >"$held.out" &
  holder=$!
  for _ in {1..100}; do [ ! -e "$held" ] || break; sleep 0.1; done
  [ -e "$held" ] || return 1
  msi /i "$(installer "$1" "$version")" ADDLOCAL=ALL || status=$?  # Wine forgets what was chosen
  rm "$held"
  wait "$holder"
  is "$(cat "$held.out")" 1 || return 1
  if [ $status = $((3010 % 256)) ]; then
    end_prefix
    in_wine wineboot
    status=0
  fi
  [ $status = 0 ] && client_works "$1"
}

# The life of one width on the machine, in a folder of the administrator's choice with everything that can be chosen.
installer_tests() {
  local width=$1 folder="C:\\$PLACE\\$1\\"
  check "install $OLDER $width" msi /i "$(installer "$width" "$OLDER")" INSTALLDIR="$folder" ADDLOCAL=ALL 'VANTOR5_SYSTEM_FOLDER=D:\Vantor'
  check "upgrade while a program holds the library $width" upgrade_with_held_library "$width"
  check "the files are the new ones, in the same folder $width" is \
    "$(script "$width" fileversion.vbs "${folder}V5Strings.dll")" "$version.0"
  check "pages $width" test -s "$WINEPREFIX/drive_c/$PLACE/$width/docs/pictures/about.png"
  check "the folder is told $width" is "$(install_location "$width")" "$folder"
  check "path and system folder $width" is "$(environment)" "$folder"$'\n''D:\Vantor'
  check "one version is installed $width" is "$(installed)" "$(product_name "$width")"
  check "script client $width" client_works "$width"
  check "C++ client $width" example_works "$width"
  check "older refused $width" fails msi /i "$(installer "$width" "$OLDER")"
  check "still installed $width" client_works "$width"
  check "repair $width" repair_works "$width"
  check "installed as registered $width" registering_changes_nothing "$width"
  check "remove $width" msi /x "$(installer "$width" "$version")"
  check "registry and folders as before $width" diff "$BUILD/package/test/before.txt" <(machine_state)
  check "the system folder is the site's $width" is "$(environment | tail -n 1)" 'D:\Vantor'
}

# upgrade_from FOLDER WIDTH…: from the previous release as it was shipped, its zips and installers in FOLDER. What was built
# with it works unchanged: by vtable, by dispatch and through manifests.
upgrade_from() {
  local width file unpacked="$BUILD/package/previous"
  fresh_prefix "${@:2}"
  rm -rf "$unpacked"
  for width in "${@:2}"; do
    mkdir -p "$unpacked/$width"
    (cd "$unpacked/$width" && cmake -E tar xf "$1"/V5Strings-*-"$width.zip" && mv V5Strings-*/* .)
    rm -rf "$BUILD/package/test/$width-registration_free" "$BUILD/package/test/$width-cpp"
    for file in registration_free cpp; do check "previous: build $file $width" build_example "$width" "$file"; done
    check "previous: install $width" msi /i "$(echo "$1"/V5Strings-*-"$width.msi")"
    check "previous: dispatch $width" client_works "$width"
    check "previous: vtable $width" previous_client "$width"
    cp "$unpacked/answers" "$unpacked/answers-before"
    check "previous: manifests $width" registration_free_works "$width"
    check "previous: upgrade $width" msi /i "$(installer "$width" "$version")"
    check "previous: one version is installed $width" is "$(installed | grep "${width#win} bit")" "$(product_name "$width")"
    check "previous: dispatch, upgraded $width" client_works "$width"
    check "previous: vtable, upgraded $width" previous_client "$width"
    check "previous: the same answers $width" diff "$unpacked/answers-before" "$unpacked/answers"
    cp "$BUILD/$width/V5Strings.dll" "$BUILD/package/test/$width-registration_free"
    check "previous: manifests, new library $width" registration_free_works "$width"
    check "previous: no way back $width" fails msi /i "$(echo "$1"/V5Strings-*-"$width.msi")"
  done
  end_prefix
}
previous_client() {
  in_wine "$BUILD/package/test/$1-cpp/footnotes.exe" "$(windows_path "$BUILD/package")\\previous\\log-$1.log" >"$BUILD/package/previous/answers" &&
    grep -q 'mark 2020' "$BUILD/package/previous/answers"
}
