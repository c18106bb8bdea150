#!/usr/bin/env bash
# Installs what is missing, then builds and tests every preset, checks the installed and packaged
# libraries, fuzzes every decoder for a bounded time, checks formatting and runs the static checks.
# Stops at the first failure.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-dependencies.sh

for preset in default apple-like asan tsan; do
    echo "== ${preset}: configure, build, test"
    cmake --workflow --preset "${preset}"
done

echo "== the libraries installed, built shared and packaged, each used by the consumer"
tools/check-package.sh

echo "== fuzzing every decoder for a bounded time"
tools/fuzz.sh

echo "== formatting"
tools/check-format.sh

echo "== static checks"
tools/check-tidy.sh
