#!/usr/bin/env bash
# The tests of the packages (see packaging.sh), for CTest; ./dev test has built both widths.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. tools/setup/setup.sh
. tools/setup/wine.sh
. packaging/package.sh
. packaging/sign.sh
. tests/checks.sh
. tests/packaging/packaging.sh
. tests/packaging/registration.sh
passed=0 failed=0 version=$(package_version) unpacked="$BUILD/package/unpacked"

use_wine win64
width32=(win32)
[ -e "$BUILD/win32/V5Strings.dll" ] || width32=()
mkdir -p "$BUILD/package/test"
make_certificate 2>/dev/null
make_test_packages win64 "${width32[@]}"
if [ "$WOW64" = 1 ]; then machine_suite win64 "${width32[@]}"; else machine_suite win64; fi
# 32-bit programs on a 32-bit system, on the same display.
if [ ${#width32[@]} = 1 ] && need_system32; then
  choose_wine win32
  machine_suite win32
fi
# The previous release's packages, where the machine has them.
if [ -n "${V5_PREVIOUS:-}" ]; then
  choose_wine win64
  upgrade_from "$(realpath "$V5_PREVIOUS")" win64 $([ "$WOW64" = 0 ] || echo "${width32[@]}")
fi
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
