#!/usr/bin/env bash
# Builds one libFuzzer target with clang under address and undefined sanitizers
# in build-fuzz/ and runs it for a while on its seed corpus.
#   scripts/fuzz.sh NAME SECONDS     e.g. scripts/fuzz.sh commandline_fuzz 600
# Seeds stay in fuzz/corpus/NAME (read only); what the run finds goes to
# build-fuzz/corpus/NAME, crashing inputs to build-fuzz/artifacts/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

usage() { sed -n '2,6s/^# \{0,1\}//p' "$0"; }
if [ $# -ne 2 ] || ! [[ $2 =~ ^[0-9]+$ ]]; then
    usage >&2
    exit 2
fi
name=$1
seconds=$2

if ! command -v clang++ >/dev/null 2>&1; then
    sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    echo "fuzz: installing clang"
    export DEBIAN_FRONTEND=noninteractive
    $sudo apt-get update -qq
    $sudo apt-get install -y -qq --no-install-recommends clang >/dev/null
fi

build=$root/build-fuzz
# The library carries the coverage hooks (fuzzer-no-link); only the target links libFuzzer's main.
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DORV_BUILD_FUZZERS=ON -DORV_SANITIZE=address,undefined \
    -DORV_BUILD_TESTS=OFF -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_EXAMPLES=OFF \
    -DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link >/dev/null
cmake --build "$build" -j "$(nproc)" --target "$name"

work=$build/corpus/$name
mkdir -p "$work" "$build/artifacts"
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
exec "$build/fuzz/$name" -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="$build/artifacts/$name-" "$work" "$root/fuzz/corpus/$name"
