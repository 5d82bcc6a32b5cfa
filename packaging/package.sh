# The packages, for ./dev package and for the tests of the packages. Source it in the project's folder; BUILD, say,
# in_wine and windows_path are those of ./dev.

package_version() { sed -n 's/^project(V5Strings VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt; }

# release_time: the time that the files of a release carry, the commit's unless SOURCE_DATE_EPOCH says another (seconds).
release_time() { echo "${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}"; }

# describe WHAT WIDTH VERSION: what a package says about the component (see packaging/describe/Main.cpp).
describe() {
  in_wine "$BUILD/win64/v5describe.exe" "$1" "$(windows_path "$BUILD/win64/V5Strings.dll")" "$3" "${2#win}"
}

# has_development_values WIDTH: true when the build has the values of this tree instead of the maker's.
has_development_values() {
  [ "$(sed -n 's/^V5_PRODUCT_DIR:PATH=//p' "$BUILD/$1/CMakeCache.txt")" = "$PWD/product" ]
}

# stage_pages WIDTH PROGRAMS FOLDER: in FOLDER/docs the pages for those who use the component, the licences of what is
# linked into the programs, and their bill of materials
stage_pages() {
  cp -r docs "$3"
  rm "$3/docs/architecture.md"
  in_wine "$BUILD/win64/v5site.exe" --help >"$BUILD/package/help"
  python3 packaging/manual.py html "$(package_version)" <"$BUILD/package/help" >"$3/docs/v5site.html"
  python3 packaging/bill_of_materials.py "$(package_version)" "$1" "$(release_time)" "$BUILD/$1" "$3/docs" \
    "$2/V5Strings.dll" "$2/v5site.exe"
}

# make_installer WIDTH VERSION OUTPUT [PROGRAMS]: PROGRAMS is the folder of the DLL and of v5site.exe, the build's otherwise.
make_installer() {
  local width=$1 version=$2 output=$3 programs=${4:-$BUILD/$1} folder="$BUILD/package/installer-$1-$2" development=0 \
    statement statements
  rm -rf "$folder"
  mkdir -p "$folder"
  cp "$programs/V5Strings.dll" "$programs/v5site.exe" "$folder"
  stage_pages "$width" "$programs" "$folder"
  describe own-rows "$width" "$version" >"$folder/own-rows.wxi"
  describe shared-rows "$width" "$version" >"$folder/shared-rows.wxi"
  ! has_development_values "$width" || development=1
  find "$folder" -type f -exec touch --date="@$(release_time)" {} +
  TZ=UTC cmake -DWIDTH="$width" -DVERSION="$version" -DDEVELOPMENT=$development -DFOLDER="$folder" -DOUTPUT="$output" \
    -P packaging/Installer.cmake
  mapfile -t statements < <(grep '^[A-Z]' "$folder/Installer.sql")
  for statement in "${statements[@]}"; do
    # Newer releases of wixl make every table, also those that they leave empty.
    ! msiinfo tables "$output" | grep -qxF "$(sed -n 's/^CREATE TABLE `\([^`]*\)`.*/\1/p' <<<"$statement")" || continue
    msibuild "$output" -q "$statement" || fail "the installer does not take: $statement"
  done
  settle_summary "$output" "$folder"
}
# settle_summary MSI FOLDER: in its summary the release's time instead of the clock's, and a package code (9) that follows
# from all that is in it instead of one made by chance. Packages with different content must have different ones.
settle_summary() {
  local table="$2/_SummaryInformation.idt" now code
  now=$(date --utc --date="@$(release_time)" '+%Y/%m/%d %H:%M:%S')
  for code in '{00000000-0000-0000-0000-000000000000}' ''; do
    [ -n "$code" ] || code=$(python3 -c 'import sys, uuid, hashlib
print("{%s}" % str(uuid.uuid5(uuid.NAMESPACE_OID, hashlib.sha256(open(sys.argv[1], "rb").read()).hexdigest())).upper())' "$1")
    msiinfo export "$1" _SummaryInformation | sed "s#^9\t.*#9\t$code\r#; s#^1\([23]\)\t.*#1\1\t$now\r#" >"$table"
    TZ=UTC msibuild "$1" -i "$table"
  done
}

# stage_files WIDTH PROGRAMS FOLDER: all files of a zip
stage_files() {
  local width=$1 programs=$2 folder=$3 built="$BUILD/$1" name
  mkdir -p "$folder"/{bin,include,src,lib/cmake/V5Strings,idl,share/man/man1}
  cp "$programs/V5Strings.dll" "$programs/v5site.exe" "$built/V5Strings.tlb" "$folder/bin"
  describe manifest "$width" "$(package_version)" >"$folder/bin/V5Strings.Component.manifest"
  # The interface compiler writes into its first line where the definitions lay.
  for name in V5Strings V5Msgs; do
    sed '1s# from [^ ]*/# from #' "$built/idl/$name.h" >"$folder/include/$name.h"
    sed '1s# from [^ ]*/# from #' "$built/idl/${name}_i.cpp" >"$folder/src/${name}_i.cpp"
  done
  describe classes "$width" "$(package_version)" >"$BUILD/package/classes"
  sed -e "/^\/\/ ---- The classes/r $BUILD/package/classes" "$built/packaging/V5Strings.hpp.in" >"$folder/include/V5Strings.hpp"
  cp "$built"/packaging/V5StringsConfig*.cmake "$folder/lib/cmake/V5Strings"
  cp -r examples "$folder"
  rm "$folder/examples/CMakeLists.txt"
  cp devkit/site/Vantor5.INI "$folder/examples"
  stage_pages "$width" "$programs" "$folder"
  cp packaging/README.md.in "$folder/README.md"
  cp src/surface/V5Strings.idl src/surface/Identifiers.h neighbours/*.idl "$folder/idl"
  python3 packaging/manual.py man "$(package_version)" <"$BUILD/package/help" >"$folder/share/man/man1/v5site.1"
  if has_development_values "$width"; then
    printf '%s\r\n' 'This package was built with development values: the branding, the installer codes, the key of the' \
      'scrambler and the master passwords are published ones. It must not be used at a site. See docs/constants.md.' \
      >"$folder/DEVELOPMENT-BUILD.txt"
  fi
}

# make_zip WIDTH OUTPUT [PROGRAMS]
make_zip() {
  local name="V5Strings-$(package_version)-$1"
  rm -rf "${BUILD:?}/package/$name"
  stage_files "$1" "${3:-$BUILD/$1}" "$BUILD/package/$name"
  rm -f "$2"
  python3 packaging/make_zip.py "$2" "$BUILD/package/$name" "$(release_time)"
}

# build_identifier PROGRAM: the number by which a program and its symbols are matched
build_identifier() { x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/.*RSDS signature \([0-9a-f]*\).*/\1/p'; }

# keep_symbols PROGRAM: its symbols beside those of earlier releases, in a folder with the name of its build identifier
keep_symbols() {
  local folder
  folder="symbols/$(build_identifier "$1")"
  mkdir -p "dist/$folder"
  cp "$1.debug" "dist/$folder"
  made+=("$folder/${1##*/}.debug")
}

# make_packages WIDTH…: everything into dist/; signed when SIGN_CERTIFICATE is set (see sign.sh)
make_packages() {
  local width version programs made=()
  version=$(package_version)
  mkdir -p dist "$BUILD/package"
  for width in "$@"; do
    programs="$BUILD/package/programs-$width"
    rm -rf "$programs"
    mkdir -p "$programs"
    cp "$BUILD/$width/V5Strings.dll" "$BUILD/$width/v5site.exe" "$programs"
    sign "$programs"/*
    made+=("V5Strings-$version-$width".{msi,zip})
    make_zip "$width" "$PWD/dist/V5Strings-$version-$width.zip" "$programs"
    make_installer "$width" "$version" "$PWD/dist/V5Strings-$version-$width.msi" "$programs"
    sign "dist/V5Strings-$version-$width.msi"
    keep_symbols "$BUILD/$width/V5Strings.dll"
    keep_symbols "$BUILD/$width/v5site.exe"
  done
  (cd dist && sha256sum "${made[@]}" >SHA256SUMS)
}

# verify_packages: builds this commit a second time, in another folder and without the compiler's cache, and compares.
# Fails, and names what differs, when not everything is the same byte by byte. Signatures are made anew each time:
# what is compared is unsigned.
verify_packages() {
  local other file status=0
  [ -z "$(git status --porcelain)" ] || fail "package --verify compares builds of a commit, and there are changes that are not committed"
  other=$(mktemp -d)/V5Strings
  git clone --quiet . "$other"
  mkdir -p "$other/build/downloads"
  cp -r build/downloads/sqlite "$other/build/downloads"
  say "Building the same commit in $other"
  (cd "$other" && CCACHE_DISABLE=1 SOURCE_DATE_EPOCH=$(release_time) ./dev package) >"$BUILD/package/verify.log" 2>&1 ||
    fail "the second build fails: $(reason "$BUILD/package/verify.log")"
  for file in build/win{64,32}/{V5Strings.dll,v5site.exe,V5Strings.tlb} $(sed 's#.* #dist/#' dist/SHA256SUMS) dist/SHA256SUMS; do
    if cmp --silent "$file" "$other/$file"; then
      echo "same     $file"
    else
      status=1
      echo "DIFFERS  $file"
      python3 packaging/differences.py "$file" "$other/$file"
    fi
  done
  rm -rf "${other%/*}"
  return $status
}

# package_options OPTION…: those of ./dev package
package_options() {
  local certificate='' timestamp=''
  VERIFY='' DEVELOPMENT_VALUES=''
  while [ $# -gt 0 ]; do
    case $1 in
      --verify) VERIFY=1 ;;
      --development-values) DEVELOPMENT_VALUES=1 ;;
      --sign | --timestamp)
        [ $# -gt 1 ] || fail "package: $1 needs a value"
        if [ "$1" = --sign ]; then certificate=$2; else timestamp=$2; fi
        shift ;;
      *) fail "package: there is no option $1" ;;
    esac
    shift
  done
  [ -z "$certificate" ] || [ -z "$VERIFY" ] || fail "package: --verify compares unsigned packages; sign afterwards"
  [ -n "$certificate" ] || [ -z "$timestamp" ] || fail "package: --timestamp goes with --sign"
  [ -z "$certificate" ] || sign_with "$certificate" "$timestamp"
}

# make_release WIDTH…: the packages, and what is to be said of them
make_release() {
  local width development=''
  for width in "$@"; do ! has_development_values "$width" || development=1; done
  [ -z "$SIGN_CERTIFICATE" ] || [ -z "$development" ] || [ -n "$DEVELOPMENT_VALUES" ] ||
    fail "package --sign: this build has development values, published passwords among them; see docs/constants.md
(--development-values signs it all the same)"
  say "Packaging V5Strings $(package_version)"
  make_packages "$@"
  sed 's#.* #dist/#' dist/SHA256SUMS | xargs stat --printf '%10s  %n\n'
  [ -n "$SIGN_CERTIFICATE" ] && echo "Programs and installers are signed." || echo "Nothing is signed (see ./dev package --sign)."
  if [ -n "$development" ]; then
    printf '\033[1mWARNING: these packages carry development values (product/ProductConstants.h), published key and master
passwords among them. For release, configure with -DV5_PRODUCT_DIR=<folder of the real ones>; see docs/constants.md.\033[0m\n'
  fi
  [ -z "$VERIFY" ] || verify_packages
}
