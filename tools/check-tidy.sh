#!/usr/bin/env bash
# Runs clang-tidy 16 over the sources of every module, with the apple-like preset's compile commands
# (libc++ like macOS). The Apple-only files are compiled against the real SDK elsewhere.
set -euo pipefail
cd "$(dirname "$0")/.."
[[ -f build/apple-like/compile_commands.json ]] || cmake --preset apple-like >/dev/null
git ls-files -co --exclude-standard -- 'Sources/*.cpp' | grep -v -e '_apple\.cpp$' -e 'UnifiedLogSink\.cpp$' |
    xargs -P 2 -n 4 clang-tidy-16 -p build/apple-like --quiet --warnings-as-errors='*' 2>&1 |
    sed '/warnings generated\.$/d'
echo "static checks: clean"
