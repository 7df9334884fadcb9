#!/usr/bin/env bash
# InstalledProgram.sh PREFIX: checks that the program installed in PREFIX starts in both
# languages from a folder other than its own, keeps running, and ends on SIGTERM.
set -euo pipefail
program=$1/bin/aelk
cd /

for language in -j -e; do
    "$program" $language &
    sleep 2
    kill -TERM $! || {
        echo "aelk $language has ended before the signal"
        exit 1
    }
    status=0
    wait $! || status=$?
    # 143 = 128 + 15, the number of SIGTERM
    [ "$status" -eq 143 ] || {
        echo "aelk $language: exit status $status"
        exit 1
    }
done
