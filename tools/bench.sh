#!/usr/bin/env bash
# Builds the JSON coding benchmark (the default preset builds the benchmarks) and runs it once:
# simdjson's DOM parse, Boost.JSON's parse and serialise, and our typed decode and encode, on the
# 1,000-group configuration document, a typical small one, and a control-protocol request and
# reply. It ends with the table of times and the ratios of this one run: typed decode / simdjson
# parse, typed encode / Boost.JSON serialise, and the allocations of one decode beside the blocks
# the decoded value owns. Further arguments go to the benchmark (--benchmark_filter=..., say).
set -euo pipefail
cd "$(dirname "$0")/.."

tools/install-dependencies.sh
cmake --preset default >/dev/null
flock /tmp/screenweaver-build.lock cmake --build build/default --target JSONCodingBenchmark
build/default/Tests/Benchmarks/JSONCodingBenchmark "$@"
