#!/usr/bin/env bash
# ManPages.sh PAGE...: the pages are formatted without a warning, for narrow and
# for wide terminals.
set -euo pipefail

for page in "$@"; do
    for width in 60 80 132; do
        faults=$(groff -Kutf8 -man -Tutf8 -ww -z -rLL="${width}n" "$page" 2>&1) ||
            faults+=" (exit status $?)"
        if [ -n "$faults" ]; then
            echo "$page has faults at $width columns: $faults"
            exit 1
        fi
    done
done
