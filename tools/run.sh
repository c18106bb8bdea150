#!/usr/bin/env bash
# Builds the service and runs its check (--self-test). On macOS the check runs against the real
# window server. Elsewhere there is no window server to make displays on, so the service's own code
# runs against the simulated one, in the development build screenweaverd-simulated; arguments given
# here go before --self-test, so `tools/run.sh --scenario late-display` picks one of its scenarios.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-dependencies.sh
cmake --preset default >/dev/null

if [[ "$(uname -s)" == "Darwin" ]]; then
    cmake --build --preset default --target screenweaverd
    exec build/default/Sources/screenweaverd/screenweaverd --self-test
fi

cmake --build --preset default --target screenweaverd screenweaverd-simulated
echo "This machine does not run macOS: the self-test runs against the simulated window server"
echo "(screenweaverd-simulated, a development build; one built-in 2560x1440 display, ID 1)."
exec build/default/Tests/SimulatedService/screenweaverd-simulated "$@" --self-test
