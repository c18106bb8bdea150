#!/usr/bin/env bash
# Fails when clang-format would change any of our C++ files.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files -co --exclude-standard -- '*.cpp' '*.hpp' | xargs clang-format --dry-run -Werror
echo "formatting: clean"
