#!/usr/bin/env bash
# Builds the fuzz preset and runs every fuzz target for a bounded time, starting from the seed
# corpora in Tests/Fuzz/corpus/<target>/. Any crash, sanitizer report or escaping exception fails
# the run. SCREENWEAVER_FUZZ_SECONDS sets the time per target (default 30).
set -euo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
seconds="${SCREENWEAVER_FUZZ_SECONDS:-30}"
build="$root/build/fuzz"
targets=(ConfigFuzzer CLIRequestFuzzer CLIReplyFuzzer CatalogFuzzer DisplayRefKeyFuzzer)
if [[ "$(uname -s)" != "Darwin" ]]; then
    targets+=(EDIDIdentityFuzzer VirtualMonitorNameFuzzer)
fi

cmake --preset fuzz -S "$root" -B "$build" >/dev/null
# The machine is shared: builds take turns through one lock.
flock /tmp/screenweaver-build.lock cmake --build "$build" -j2 --target "${targets[@]}"

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
# Reproducers of a finding are kept where the build is, outside the repository's sources.
artifacts="$build/fuzz-artifacts"
mkdir -p "$artifacts"

for target in "${targets[@]}"; do
    echo "== $target (${seconds} s)"
    # New inputs go to a scratch corpus; the seeds in the repository stay as they are.
    mkdir -p "$work/$target"
    "$build/Tests/Fuzz/$target" -max_total_time="$seconds" -print_final_stats=0 \
        -artifact_prefix="$artifacts/$target-" "$work/$target" "$root/Tests/Fuzz/corpus/$target" \
        2>"$work/$target.log" || {
        tail -n 60 "$work/$target.log"
        echo "FAIL: $target (reproducers in $artifacts)"
        exit 1
    }
    tail -n 1 "$work/$target.log"
done
echo "PASS: every fuzz target ran ${seconds} s without a finding"
