#!/usr/bin/env bash
# Builds the service and runs its check.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-dependencies.sh
cmake --preset default >/dev/null
cmake --build --preset default --target screenweaverd

# The service's check (--self-test) arrives with the virtual display service; until then the
# check is that the service starts and prints its help.
build/default/Sources/screenweaverd/screenweaverd --help
