#!/usr/bin/env bash
# Builds the service and runs its check (--self-test) against a real display server: on macOS the
# window server; elsewhere an X server through RandR, the session's own when DISPLAY is set, else a
# headless Xorg with the dummy driver started here (Resources/X11/headless-xorg.conf) and stopped
# afterwards. `tools/run.sh --simulated [--scenario NAME]` runs the development build on the
# simulated window server instead (`--simulator-help` lists its scenarios).
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-dependencies.sh
cmake --preset default >/dev/null

if [[ "$(uname -s)" == "Darwin" ]]; then
    cmake --build --preset default --target screenweaverd
    exec build/default/Sources/screenweaverd/screenweaverd --self-test
fi

if [[ "${1:-}" == "--simulated" ]]; then
    shift
    cmake --build --preset default --target screenweaverd-simulated
    echo "The check runs against the simulated window server (screenweaverd-simulated, a development"
    echo "build; one built-in 2560x1440 display, ID 1)."
    exec build/default/Tests/SimulatedService/screenweaverd-simulated "$@" --self-test
fi

cmake --build --preset default --target screenweaverd
service=build/default/Sources/screenweaverd/screenweaverd

if [[ -n "${DISPLAY:-}" ]]; then
    echo "The check runs against this session's X server (DISPLAY=${DISPLAY})."
    exec "$service" --self-test
fi

# A headless Xorg on a display number it picks itself: it writes the number to descriptor 3 once
# it accepts connections.
work="$(mktemp -d)"
xorg=""
stop_server() {
    if [[ -n "$xorg" ]]; then
        kill "$xorg" 2>/dev/null || true
        wait "$xorg" 2>/dev/null || true
    fi
    rm -rf "$work"
}
trap stop_server EXIT
mkfifo "$work/display"
Xorg -displayfd 3 -config "$PWD/Resources/X11/headless-xorg.conf" -logfile "$work/Xorg.log" \
    -noreset -nolisten tcp -novtswitch 3>"$work/display" </dev/null >"$work/output" 2>&1 &
xorg=$!
if ! read -r -t 120 number <"$work/display"; then
    echo "The headless X server did not start; the end of its log:" >&2
    tail -n 15 "$work/Xorg.log" "$work/output" >&2 || true
    exit 1
fi
echo "The check runs against a headless X server started for it (Xorg, dummy driver, DISPLAY=:${number})."
set +e
DISPLAY=":${number}" "$service" --self-test
status=$?
set -e
exit "$status"
