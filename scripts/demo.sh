#!/usr/bin/env bash
# Builds the orv program and runs a few of its commands on the sample data, with a
# file log in a temporary folder, and ends with the regression list of all commands.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/bootstrap.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$root/build" -j "$(nproc)" --target orv
orv="$root/build/tools/orv/orv"
data="$root/examples/data"
logDir=$(mktemp -d)
export LC_ALL=C.UTF-8

step() { printf '\n=== orv %s\n' "$*"; }
# Listing the commands exits with 1 on purpose, as does a failing command: show the
# status instead of stopping.
# Each run writes its own log file (a file appender starts its file anew).
n=0
run() {
    step "$*"
    local status=0
    n=$((n + 1))
    if [ $# -eq 0 ]; then
        # The first word is always the command: options alone would be taken for one.
        "$orv" || status=$?
    else
        "$orv" "$@" --logDir "$logDir" --logFile "demo-$n.log" --logTrailler false || status=$?
    fi
    printf '=== exit status %d\n' "$status"
}

run
run md5 --file "$data/fox.txt"
run md5 --file "$data/no-such-file.txt"
run cmdline --line "$(cat "$data/command.txt")"
run format --text 'copied $ files to $ in $ s' --args 12,backup,0.5
run loginfo --logLevel warn
printf '\nThe logs went to %s:\n' "$logDir"
wc -l "$logDir"/demo-*.log
# Last, the whole program at once: every command on the sample data, with the runs
# that must fail, and the summary (status 1, for those failures).
run regression --file "$data/regression.txt"
