#!/usr/bin/env bash
# The tests of the packages (see packaging.sh), for CTest; ./dev test has built both widths.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. tools/setup/setup.sh
. tools/setup/wine.sh
use_wine win64
export WINEPREFIX="$BUILD/wine-build" WINE32=$WOW64  # apart from the tests that take stock of the registry
if [ "$WOW64" = 1 ]; then widths=(win64 win32); else widths=(win64); fi
. tests/packaging/packaging.sh
packages_suite "${widths[@]}"
echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
