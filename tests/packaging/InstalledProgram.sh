#!/usr/bin/env bash
# InstalledProgram.sh PREFIX: the installed program starts from any folder, in
# either language, keeps running, and ends when it is asked to.
set -euo pipefail
program=$1/bin/aelk
cd /

for language in -j -e; do
    "$program" $language &
    sleep 2
    kill -TERM $! || {
        echo "aelk $language has ended by itself"
        exit 1
    }
    status=0
    wait $! || status=$?
    # 128 and the number of the signal.
    [ "$status" -eq 143 ] || {
        echo "aelk $language: exit status $status"
        exit 1
    }
done
