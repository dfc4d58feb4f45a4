#!/usr/bin/env bash
# Load test of `orv serve` on loopback with wrk, beside a minimal event-loop QTcpServer
# that gives the same reply (orv_bench_net_qt_peer), in the same run.
#   base/bench/net/wrk_serve.sh [BUILD_DIR] [SECONDS]   default build/ and 10
# wrk -t2 -c64 against each for a small file; prints requests/s, socket errors and
# non-2xx answers of both and the ratio. Skipped with a message when wrk is absent.
set -euo pipefail
root=$(cd "$(dirname "$0")/../../.." && pwd)

usage() { sed -n '2,6s/^# \{0,1\}//p' "$0"; }
case "${1:-}" in -h | --help) usage; exit 0 ;; esac
build=${1:-$root/build}
seconds=${2:-10}

if ! command -v wrk >/dev/null 2>&1; then
    echo "wrk_serve: wrk is not installed (scripts/bootstrap.sh installs it); skipped"
    exit 0
fi
cmake --build "$build" --target orv orv_bench_net_qt_peer >/dev/null

work=$(mktemp -d)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill -TERM "$pid" 2>/dev/null || true; done
    for pid in "${pids[@]}"; do wait "$pid" 2>/dev/null || true; done
    rm -rf "$work"
}
trap cleanup EXIT
head -c 1024 /dev/zero | tr '\0' 'x' >"$work/small.txt"

# A port free on loopback right now.
free_port() {
    python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

# Starts a server on $port and waits until it answers.
start() {
    local log=$1
    shift
    "$@" >"$log" 2>&1 &
    pids+=($!)
    for _ in $(seq 100); do
        curl -s -o /dev/null "http://127.0.0.1:$port/small.txt" && return 0
        sleep 0.1
    done
    echo "wrk_serve: server did not start: $*" >&2
    cat "$log" >&2
    exit 1
}

# wrk's summary as "requests/s socket-errors non-2xx".
load() {
    local out
    out=$(wrk -t2 -c64 -d"${seconds}s" "http://127.0.0.1:$1/small.txt")
    echo "$out" >&2
    local rps errors non2xx
    rps=$(echo "$out" | sed -n 's/^Requests\/sec: *\([0-9.]*\).*/\1/p')
    errors=$(echo "$out" | sed -n 's/.*Socket errors: connect \([0-9]*\), read \([0-9]*\), write \([0-9]*\), timeout \([0-9]*\).*/\1+\2+\3+\4/p')
    non2xx=$(echo "$out" | sed -n 's/.*Non-2xx or 3xx responses: *\([0-9]*\).*/\1/p')
    echo "$rps $((${errors:-0})) ${non2xx:-0}"
}

# The access log line of every request stays out of the measure: the peer has none.
port=$(free_port)
start "$work/serve.log" "$build/tools/orv/orv" serve --port "$port" --address 127.0.0.1 \
    --root "$work" --logLevel err
read -r orv_rps orv_errors orv_non2xx < <(load "$port")
port=$(free_port)
start "$work/peer.log" "$build/base/bench/orv_bench_net_qt_peer" "$work/small.txt" "$port"
read -r qt_rps qt_errors qt_non2xx < <(load "$port")

printf '%-22s %12s %14s %8s\n' server requests/s socket-errors non-2xx
printf '%-22s %12s %14s %8s\n' "orv serve" "$orv_rps" "$orv_errors" "$orv_non2xx"
printf '%-22s %12s %14s %8s\n' "QTcpServer event loop" "$qt_rps" "$qt_errors" "$qt_non2xx"
awk -v a="$orv_rps" -v b="$qt_rps" 'BEGIN { printf "orv serve / QTcpServer: %.2f\n", a / b }'
[ "$orv_errors" -eq 0 ] && [ "$orv_non2xx" -eq 0 ]
