# What the tests in bash share. Sourced by them; what fails is printed and counted, in `passed` and `failed`.

# check NAME COMMAND…: one test
check() {
  local name=$1 output
  shift
  if output=$("$@" 2>&1); then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    printf '[  FAILED  ] %s (%s)\n' "$name" "$WINEARCH"
    head -n 40 <<<"$output"
  fi
}
is() { [ "$1" = "$2" ] || { printf 'is:     %s\nwanted: %s\n' "$1" "$2"; return 1; }; }
fails() { ! "$@"; }
