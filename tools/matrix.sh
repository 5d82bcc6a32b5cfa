# ./dev matrix: the release check. A bare Debian 13 below the build folder gets a clone of the committed project and does
# what a newcomer does; then the DLLs of each system run under the Wine of the other. Sourced by ./dev.

DEBIAN13="$DOWNLOADS/debian13"
CLONE="$DEBIAN13$PROJECT"  # at the same path as here, so that builds can change places

in_debian13() { (cd / && in_system "$DEBIAN13" "$SYSTEM32" "$PROJECT/build/downloads/system32" env -C "$PROJECT" "$@"); }

make_matrix() {
  local rows="$BUILD/matrix.rows" here there
  need_system32 || return 1
  need_system "$DEBIAN13" amd64 trixie git ca-certificates || fail "cannot set up a Debian 13: $REASON"
  cp /etc/ssl/certs/ca-certificates.crt "$DEBIAN13/etc/ssl/certs/"  # what this machine trusts
  rm -rf --one-file-system "$CLONE"
  git clone --quiet "$PROJECT" "$CLONE"
  here=$(. /etc/os-release; echo "$PRETTY_NAME") there="Debian 13"
  : >"$rows"

  say "Here"
  cmd_test || true
  rows_of "$BUILD" "$here" "$(tools_of)" native win64 win32 all
  say "In the Debian 13: ./dev demo"
  in_debian13 ./dev demo || echo "FAILED: the demo" >>"$rows"
  say "In the Debian 13: ./dev test"
  in_debian13 ./dev test || true
  rows_of "$CLONE/build" "$there" "$(in_debian13 bash -c "$(declare -f tools_of); tools_of")" native win64 win32 all
  say "In the Debian 13: the DLL built here"
  exchange "$BUILD/win64" "$CLONE/build/win64" in_debian13 ./dev retest win64 || true
  rows_of "$CLONE/build" "built here, run in the other" "" win64
  say "Here: the DLL built in the Debian 13"
  end_wine  # one that runs already would not see the exchange
  exchange "$CLONE/build/win64" "$BUILD/win64" ./dev retest win64 || true
  rows_of "$BUILD" "built in the other, run here" "" win64
  printf '%-32s %-24s %-7s %s\n' System "Compiler, Wine" Part Cases | cat - "$rows"
  ! grep -q '[1-9][0-9]* failed\|^FAILED\| 0 passed' "$rows"
}
# exchange BUILD PLACE COMMAND…: runs it with one build where another stands.
exchange() {
  # The functions of this file are not known to the shell inside.
  export DEBIAN13 SYSTEM32 PROJECT
  unshare --mount bash -c "$(declare -f in_system in_debian13)"'; mount --bind "$1" "$2"; "${@:3}"' bash "$@"
}
tools_of() { echo "GCC $(x86_64-w64-mingw32-g++-posix -dumpversion | cut -d- -f1), $(wine --version)"; }
# rows_of BUILD SYSTEM TOOLS PART…: a row for each part of that build folder's last test run
rows_of() {
  local part
  for part in "${@:4}"; do
    printf '%-32s %-24s %-7s %s\n' "$2" "$3" "$part" "$(python3 tools/count_tests.py "$1/tests/results.xml" ${part/%all/} || true)" >>"$rows"
  done
}
