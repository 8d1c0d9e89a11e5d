#!/bin/sh
# Measures the engines' accuracy as their headers state it: writes dense
# grids of independent reference values (tools/engine_references.py, mpmath
# at 40 digits) and runs the test driver over them in report mode, which
# prints, for each system, the largest difference of the projected outputs
# (metres, or degrees for the rotated grid) and of the geographic ones.
#   tools/measure_engine_accuracy.sh [build/test]
set -e
build=${1:-build/test}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
/usr/bin/python3 "$(dirname "$0")/engine_references.py" cases "$folder"
KVCART_ENGINE_CASES=$folder KVCART_ENGINE_CASES_REPORT=1 \
  "$build/tests/KvCartTests" --gtest_filter='DataFiles/EngineCases.*' | grep '\.cases:'
