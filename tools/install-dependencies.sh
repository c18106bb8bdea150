#!/usr/bin/env bash
# Installs what the build and the tests need and is not there yet: Debian packages through apt-get
# (run as root), Homebrew formulae on macOS. Safe to run again; it installs only what is missing.
set -euo pipefail

if [[ "$(uname -s)" == "Darwin" ]]; then
    # The Xcode command-line tools bring clang, libc++ and the SDK.
    xcode-select -p >/dev/null 2>&1 || { echo "install the Xcode command-line tools: xcode-select --install" >&2; exit 1; }
    formulae=(cmake ninja pkg-config fmt simdjson boost googletest google-benchmark clang-format)
    missing=()
    for formula in "${formulae[@]}"; do
        brew list --formula "$formula" >/dev/null 2>&1 || missing+=("$formula")
    done
    if ((${#missing[@]})); then
        brew install "${missing[@]}"
    fi
    exit 0
fi

packages=(
    g++ cmake ninja-build pkg-config                        # the default toolchain and build
    clang-16 libc++-16-dev libc++abi-16-dev                  # the apple-like toolchain
    libclang-rt-16-dev                                       # libFuzzer and clang's sanitizer runtimes
    clang-format clang-tidy-16                               # formatting and static checks
    libsimdjson-dev libfmt-dev uuid-dev libsystemd-dev       # libraries of the system
    libboost1.81-dev                                         # the model's sorted collections
    libboost-json1.81-dev                                    # benchmarks: the reference JSON library
    libgtest-dev libgmock-dev googletest libbenchmark-dev    # tests and benchmarks
    libxml2-utils                                            # xmllint, checks the launchd property list
    libxcb1-dev libxcb-randr0-dev libxcb-dpms0-dev           # the X backend: XCB with RandR and DPMS
    xserver-xorg-core xserver-xorg-video-dummy               # a headless X server for its tests and the check
    libxcb-res0-dev                                          # tests: the X server's count of its clients
    binutils dpkg-dev                                        # readelf, nm; dpkg-shlibdeps for the Debian package
)
missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
if ((${#missing[@]})); then
    echo "installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
