# What the commands of ./dev need before they can work: packages, sources, builds. Sourced in the project's folder; does
# nothing twice. Wine is set up by wine.sh.

PROJECT=$PWD
BUILD="$PROJECT/build"
DOWNLOADS="$BUILD/downloads"

say() { printf '\033[1m== %s\033[0m\n' "$*"; }
fail() { printf 'dev: %s\n' "$*" >&2; exit 1; }
# reason LOG: the last line of a tool's output that says something.
reason() { grep -v '^[[:space:]]*$' "$1" 2>/dev/null | tail -n 1; }

BUILD_PACKAGES=(
  cmake ninja-build ccache g++ googletest                              # native build and unit tests
  g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools  # the component itself
  libwine libwine-dev wixl                                             # its type library, packages to test with
)
WINE_PACKAGES=(wine wine64 xvfb)
LINT_PACKAGES=(clang-format clang-tidy cppcheck)
FUZZ_PACKAGES=(clang libclang-rt-dev)
PACKAGING_PACKAGES=(msitools python3)
PACKAGING_TEST_PACKAGES=("${PACKAGING_PACKAGES[@]}" osslsigncode openssl python3-jsonschema)

# need_packages NAME…: installs what is missing when run as root, and says what to install otherwise.
need_packages() {
  local missing=() name log
  for name in "$@"; do
    dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  [ "$(id -u)" = 0 ] || fail "these packages are missing: ${missing[*]}
Install them with: sudo apt-get install ${missing[*]}"
  say "Installing ${missing[*]}"
  # An index that cannot be refreshed is no reason to stop: the packages may be known already.
  apt-get update -qq >/dev/null 2>&1 || true
  for name in "${missing[@]}"; do
    apt-get install --simulate -qq --no-install-recommends "$name" >/dev/null 2>&1 ||
      fail "cannot install $name: the package sources of this machine do not have it"
  done
  log=$(mktemp)
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >"$log" 2>&1 ||
    fail "cannot install ${missing[*]}: $(reason "$log")"
  rm -f "$log"
}

. tools/setup/npm.sh

export CCACHE_SLOPPINESS=pch_defines,time_macros  # what ccache needs to keep files that use precompiled headers

# need_build PRESET [TARGET…]: configures once, builds what has changed, of everything or of these targets.
need_build() {
  local preset=$1
  shift
  need_sqlite
  mkdir -p "$BUILD"
  [ -e "$BUILD/$preset/build.ninja" ] || cmake --preset "$preset" >"$BUILD/$preset.log" 2>&1 ||
    fail "cannot configure $preset: $(tail -n 20 "$BUILD/$preset.log")"
  say "Building $preset"
  cmake --build --preset "$preset" ${1:+--target "$@"} -- --quiet 2>&1 |
    { grep -v "^ninja: no work to do" || true; } || fail "the $preset build has errors"
}
