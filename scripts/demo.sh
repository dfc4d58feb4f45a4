#!/usr/bin/env bash
# Builds orv base and runs its demonstration on built-in sample data.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/bootstrap.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$root/build" -j "$(nproc)" --target orv_hello
LC_ALL=C.UTF-8 "$root/build/examples/hello/orv_hello"
