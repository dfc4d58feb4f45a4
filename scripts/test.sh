#!/usr/bin/env bash
# Builds orv base and runs every test with ctest.
#   scripts/test.sh              RelWithDebInfo build in build/, all tests, then the package check
#   scripts/test.sh --sanitize   the same under -fsanitize=address,undefined, in build-asan/
#   scripts/test.sh --tsan       ThreadSanitizer build in build-tsan/, the threaded tests only
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

usage() { sed -n '2,5s/^# \{0,1\}//p' "$0"; }

mode=${1:-}
cmake_args=()
ctest_args=()
build_args=()
case "$mode" in
"") build=build ;;
--sanitize)
    build=build-asan
    cmake_args=(-DORV_SANITIZE=address,undefined -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_EXAMPLES=OFF)
    export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=0}
    export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
    ;;
--tsan)
    build=build-tsan
    cmake_args=(-DORV_SANITIZE=thread -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_EXAMPLES=OFF)
    # Threads, watchers, schedulers, timers, the logger and the kernel's hand-over to the
    # GUI thread (and the XML parse on a worker, the tree's hand-over) live in these test
    # folders; find searches one filter on two threads; the socket tests run servers and
    # clients on threads of their own; workers stay on their threads; a regression run has a
    # watch thread for hanging tests.
    tsan_areas=(tools_thread tools_time tools_log tools_kernel tools_kernelNoApp tools_xml find
        tools_io_xsock tools_xtree tools_thread_worker tools_testContext_regression)
    ctest_args=(-L "^($(IFS='|'; echo "${tsan_areas[*]}"))\$")
    # Only those test programs are built: the rest of the tree has no threads of its own.
    build_args=(--target $(printf 'orv_%s_test ' "${tsan_areas[@]}"))
    export TSAN_OPTIONS=${TSAN_OPTIONS:-suppressions=$root/scripts/tsan.supp:halt_on_error=1:second_deadlock_stack=1}
    ;;
-h | --help) usage; exit 0 ;;
*) echo "test.sh: unknown option '$mode'" >&2; usage >&2; exit 2 ;;
esac

"$root/scripts/bootstrap.sh"
jobs=$(nproc)
cmake -S "$root" -B "$root/$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${cmake_args[@]}" >/dev/null
cmake --build "$root/$build" -j "$jobs" "${build_args[@]}"
ctest --test-dir "$root/$build" --output-on-failure -j "$jobs" "${ctest_args[@]}"
