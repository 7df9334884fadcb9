#!/usr/bin/env bash
# ManPages.sh PAGE...: checks that groff formats the pages without a warning, for narrow and
# wide terminals.
set -euo pipefail

for page in "$@"; do
    for width in 60 80 132; do
        warnings=$(groff -Kutf8 -man -Tutf8 -ww -z -rLL="${width}n" "$page" 2>&1) ||
            warnings+=" (exit status $?)"
        if [ -n "$warnings" ]; then
            echo "$page has warnings at $width columns: $warnings"
            exit 1
        fi
    done
done
