#!/usr/bin/env bash
# Builds the fuzz preset and runs every fuzz target for a bounded time, starting from the seed
# corpora in Tests/Fuzz/corpus/<target>/, two targets at a time (one a core). Any crash, sanitizer
# report or escaping exception fails the run. SCREENWEAVER_FUZZ_SECONDS sets the time per target
# (default 30).
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

# Runs one target; its log goes to $work/<target>.log. Inputs are at most 64 KiB: longer seeds
# (the 1,000-group document) are read cut short, which keeps a run fast enough to explore; the
# unit tests decode that document whole.
fuzz() {
    local target="$1"
    # New inputs go to a scratch corpus; the seeds in the repository stay as they are.
    mkdir -p "$work/$target"
    "$build/Tests/Fuzz/$target" -max_total_time="$seconds" -max_len=65536 -print_final_stats=0 \
        -artifact_prefix="$artifacts/$target-" "$work/$target" "$root/Tests/Fuzz/corpus/$target" \
        >"$work/$target.log" 2>&1
}

failed=()
for ((index = 0; index < ${#targets[@]}; index += 2)); do
    batch=("${targets[@]:index:2}")
    pids=()
    for target in "${batch[@]}"; do
        echo "== $target (${seconds} s)"
        fuzz "$target" &
        pids+=($!)
    done
    for position in "${!batch[@]}"; do
        target="${batch[$position]}"
        if wait "${pids[$position]}"; then
            tail -n 1 "$work/$target.log"
        else
            tail -n 60 "$work/$target.log"
            failed+=("$target")
        fi
    done
done
if ((${#failed[@]})); then
    echo "FAIL: ${failed[*]} (reproducers in $artifacts)"
    exit 1
fi
echo "PASS: every fuzz target ran ${seconds} s without a finding"
