# The packages, for ./dev package and for the tests of the packages. Source it in the project's folder; BUILD, say,
# in_wine and windows_path are those of ./dev.

package_version() { sed -n 's/^project(V5Strings VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt; }

# release_time: the time that the files in a zip carry, the commit's unless SOURCE_DATE_EPOCH says another (seconds).
release_time() { echo "${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}"; }

# describe WHAT WIDTH VERSION: what a package says about the component (see packaging/describe/Main.cpp).
describe() {
  in_wine "$BUILD/win64/v5describe.exe" "$1" "$(windows_path "$BUILD/win64/V5Strings.dll")" "$3" "${2#win}"
}

# has_development_values WIDTH: true when the build has the values of this tree instead of the maker's.
has_development_values() {
  [ "$(sed -n 's/^V5_PRODUCT_DIR:PATH=//p' "$BUILD/$1/CMakeCache.txt")" = "$PWD/product" ]
}

# make_installer WIDTH VERSION OUTPUT [FOLDER OF THE PROGRAMS]
make_installer() {
  local width=$1 version=$2 output=$3 programs=${4:-$BUILD/$1} folder="$BUILD/package/installer-$1-$2"
  rm -rf "$folder"
  mkdir -p "$folder"
  cp "$programs/V5Strings.dll" "$programs/v5site.exe" "$folder"
  describe own-rows "$width" "$version" >"$folder/own-rows.wxi"
  describe shared-rows "$width" "$version" >"$folder/shared-rows.wxi"
  cmake -DWIDTH="$width" -DVERSION="$version" -DFOLDER="$folder" -DOUTPUT="$output" -P packaging/Installer.cmake
}

# stage_files WIDTH FOLDER: all files of a zip
stage_files() {
  local width=$1 folder=$2 built="$BUILD/$1" name
  mkdir -p "$folder"/{bin,include,src,lib/cmake/V5Strings}
  cp "$built/V5Strings.dll" "$built/v5site.exe" "$built/V5Strings.tlb" "$folder/bin"
  describe manifest "$width" "$(package_version)" >"$folder/bin/V5Strings.manifest"
  # The interface compiler writes into its first line where the definitions lay.
  for name in V5Strings V5Msgs; do
    sed '1s# from [^ ]*/# from #' "$built/idl/$name.h" >"$folder/include/$name.h"
    sed '1s# from [^ ]*/# from #' "$built/idl/${name}_i.cpp" >"$folder/src/${name}_i.cpp"
  done
  describe classes "$width" "$(package_version)" >"$BUILD/package/classes"
  sed -e "/^\/\/ ---- The classes/r $BUILD/package/classes" "$built/packaging/V5Strings.hpp.in" >"$folder/include/V5Strings.hpp"
  cp "$built"/packaging/V5StringsConfig*.cmake "$folder/lib/cmake/V5Strings"
  cp -r examples docs "$folder"
  cp packaging/README.md.in "$folder/README.md"
  cp devkit/site/Vantor5.INI "$folder/examples"
  mkdir -p "$folder/idl"
  cp src/surface/V5Strings.idl src/surface/Identifiers.h neighbours/*.idl "$folder/idl"
  mkdir -p "$folder/share/man/man1"
  in_wine "$BUILD/win64/v5site.exe" --help >"$BUILD/package/help"
  python3 packaging/manual.py man "$(package_version)" <"$BUILD/package/help" >"$folder/share/man/man1/v5site.1"
  python3 packaging/manual.py html "$(package_version)" <"$BUILD/package/help" >"$folder/docs/v5site.html"
  rm -f "$folder/examples/CMakeLists.txt" "$folder/docs/architecture.md"
  if has_development_values "$width"; then
    printf '%s\r\n' 'This package was built with development values: the branding, the installer codes, the key of the' \
      'scrambler and the master passwords are published ones. It must not be used at a site. See docs/constants.md.' \
      >"$folder/DEVELOPMENT-BUILD.txt"
  fi
}

# make_zip WIDTH OUTPUT
make_zip() {
  local name="V5Strings-$(package_version)-$1"
  rm -rf "${BUILD:?}/package/$name"
  stage_files "$1" "$BUILD/package/$name"
  rm -f "$2"
  python3 packaging/make_zip.py "$2" "$BUILD/package/$name" "$(release_time)"
}

# make_packages WIDTH…: everything into dist/
make_packages() {
  local width version
  version=$(package_version)
  mkdir -p dist "$BUILD/package"
  for width in "$@"; do
    make_zip "$width" "$PWD/dist/V5Strings-$version-$width.zip"
    make_installer "$width" "$version" "$PWD/dist/V5Strings-$version-$width.msi"
  done
  (cd dist && sha256sum "V5Strings-$version"-*.{msi,zip} >SHA256SUMS)
}
