#!/usr/bin/env bash
# Checks the libraries the three ways other projects get them, building and running
# Examples/Consumer against each and comparing its whole output with expected-output.txt:
#   1. the default build (static libraries) installed by `cmake --install` into a temporary prefix,
#      found by CMake and, once more, by pkg-config alone;
#   2. the shared build (preset shared) installed the same way; its libraries export nothing but
#      the public API (cmake/public-symbols.txt);
#   3. the Debian package that `cpack -G DEB` makes from the default build: its control fields and
#      contents, then installed by dpkg into a throw-away root (as root; elsewhere this part is
#      skipped).
# The installed service prints its help each time. Expects build/default to be built (tools/test.sh
# builds it first); builds take turns with other builds on the machine through one lock. The checks
# read ELF files and Debian packages, so on macOS the script says so and does nothing.
set -euo pipefail

if [[ "$(uname -s)" == "Darwin" ]]; then
    echo "the package checks run on Linux only"
    exit 0
fi

root="$(cd "$(dirname "$0")/.." && pwd)"
lock=/tmp/screenweaver-build.lock
expected="$root/Examples/Consumer/expected-output.txt"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# consumer <name> <prefix>: builds and runs the consumer against the package under <prefix>.
consumer() {
    local build="$work/consumer-$1"
    flock "$lock" cmake -S "$root/Examples/Consumer" -B "$build" -G Ninja -DCMAKE_PREFIX_PATH="$2" >/dev/null
    flock "$lock" cmake --build "$build" >/dev/null
    "$build/screenweaver-consumer" >"$build/output.txt"
    diff -u "$expected" "$build/output.txt"
    echo "consumer, $1: output as expected"
}

# service <prefix>: the installed service runs and prints the same help as the one built.
service() {
    diff -u <("$root/build/default/Sources/screenweaverd/screenweaverd" --help) <("$1/sbin/screenweaverd" --help)
}

echo "-- static libraries, installed into a prefix"
flock "$lock" cmake --install "$root/build/default" --prefix "$work/static" >/dev/null
service "$work/static"
consumer static "$work/static"
flock "$lock" g++ -std=c++23 "$root/Examples/Consumer/main.cpp" -o "$work/consumer-pkg-config" \
    $(PKG_CONFIG_PATH="$work/static/lib/pkgconfig" pkg-config --cflags --libs \
        screenweaver-coretypes screenweaver-displaykit screenweaver-virtualdisplaykit)
"$work/consumer-pkg-config" | diff -u "$expected" -
echo "consumer, static, found by pkg-config: output as expected"

echo "-- shared libraries, installed into a prefix"
flock "$lock" cmake --preset shared -S "$root" >/dev/null
flock "$lock" cmake --build "$root/build/shared"
flock "$lock" cmake --install "$root/build/shared" --prefix "$work/shared" >/dev/null
# The patterns of public-symbols.txt as regular expressions.
public="$(sed -n 's/^\(_Z[^ ]*\).*/^\1$/p' "$root/cmake/public-symbols.txt" | sed 's/\*/.*/g; s/?/./g')"
for library in "$work"/shared/lib/libscreenweaver-*.so; do
    exported="$(nm -D --defined-only "$library" | awk '{print $3}')"
    [[ -n "$exported" ]] || { echo "FAIL: $library exports nothing"; exit 1; }
    if leaked="$(grep -v -e "$public" <<<"$exported")"; then
        echo "FAIL: $library exports names outside the public API:"
        c++filt <<<"$leaked" | head -n 20
        exit 1
    fi
done
echo "shared libraries: only the public API is exported"
service "$work/shared"
consumer shared "$work/shared"

echo "-- the Debian package"
(cd "$root/build/default" && flock "$lock" cpack -G DEB -B "$work/deb" >/dev/null)
package=("$work"/deb/screenweaver_*.deb)
echo "$(basename "${package[0]}"): $(du -k "${package[0]}" | cut -f1) KiB"
depends="$(dpkg-deb --field "${package[0]}" Depends)"
for needed in libc6 libfmt-dev libsimdjson-dev libboost1.81-dev uuid-dev libsystemd-dev pkg-config; do
    grep -Eq "(^|, )$needed( |,|$)" <<<"$depends" || { echo "FAIL: Depends lacks $needed: $depends"; exit 1; }
done
contents="$(dpkg-deb --contents "${package[0]}" | awk '{print $6}')"
for file in ./usr/sbin/screenweaverd ./usr/share/man/man8/screenweaverd.8 \
    ./usr/lib/libscreenweaver-virtualdisplaykit.a ./usr/lib/cmake/Screenweaver/ScreenweaverConfig.cmake \
    ./usr/lib/pkgconfig/screenweaver-coretypes.pc ./usr/include/screenweaver/CoreTypes/Coding/JSONCoding.hpp; do
    grep -qxF "$file" <<<"$contents" || { echo "FAIL: the package lacks $file"; exit 1; }
done
if grep -q "WindowServerSimulator" <<<"$contents"; then
    echo "FAIL: the package carries test support"
    exit 1
fi
if ((EUID == 0)); then
    # dpkg's own installation into an empty root whose package database lists what this machine
    # has installed (without their files), so the package's dependencies are checked against it.
    target="$work/root"
    mkdir -p "$target/var/lib/dpkg/info" "$target/var/lib/dpkg/updates"
    cp /var/lib/dpkg/status "$target/var/lib/dpkg/status"
    dpkg-query --show --showformat='${binary:Package}\n' | sed "s|.*|$target/var/lib/dpkg/info/&.list|" |
        xargs touch
    dpkg --root="$target" --log=/dev/null --install "${package[0]}" >/dev/null
    service "$target/usr"
    consumer deb "$target/usr"
else
    echo "not root: the package is not installed"
fi
