#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# usage: PackageTest.sh CPACK RUN, in the folder of a build for Windows. RUN runs programs for Windows.
set -euo pipefail
cpack=$1 run=$2
WINEPREFIX=$PWD/wine
export WINEPREFIX

fail() { echo "failed: $*" && exit 1; }

"$run" cmd /c exit || exit $?  # or there is nothing to test with
rm -rf package && mkdir package
"$cpack" -G ZIP -B package >package/log || fail "$(cat package/log)"
(cd package && "${CMAKE:-cmake}" -E tar x ./*.zip && mv larynth-*/ "a folder")
cd "package/a folder"
trap '"$run" cmd /c register.cmd /u' EXIT
"$run" cmd /c register.cmd /u  # should an earlier run have been ended
if "$run" ../../bin/create_from_registry.exe; then fail "classes were registered before"; fi
"$run" cmd /c register.cmd || fail "registers"
"$run" ../../bin/create_from_registry.exe || fail "creates by class identifiers alone"
"$run" bin/larynth.exe items | grep -q "fundamental frequency" || fail "the command runs"
"$run" cmd /c register.cmd /u || fail "takes out"
if "$run" ../../bin/create_from_registry.exe; then fail "classes stay registered"; fi
