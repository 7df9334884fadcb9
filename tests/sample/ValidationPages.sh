#!/usr/bin/env bash
# ValidationPages.sh PROGRAM SOURCE WORK: runs the sample in the folder WORK and compares
# the tables of docs/validation.md with the printed results. The tables of the Japanese
# page must have the same numbers.
set -euo pipefail
program=$1 source=$2 work=$3

rm -rf "$work"
mkdir -p "$work"
cd "$work"
"$program" "$source/examples/nickel/data" -e >printed.txt 2>remarks.txt

# Prints "quantity|numbers" for each result. Skips the column "off by" of the targets, because
# the table contains the bound, but not the difference itself.
awk '
    / target  .*mixed/ { columns = 5; next }
    / map, errors / { columns = 4; next }
    /^  [^"\/]/ && NF > columns {
        name = $1
        for (i = 2; i <= NF - columns; ++i) name = name " " $i
        row = name
        for (i = NF - columns + 1; i <= NF; ++i) {
            if (columns == 5 && i == NF - 1) continue
            row = row "|" $i
        }
        print row
    }' printed.txt >results.txt

# Prints the table rows of a page as "quantity|numbers": all rows that end with four numbers.
rows_of()
{
    sed -nE 's/^\|[^|]*\| ([^|]*) \| ([0-9.]+) \| ([0-9.]+) \| ([0-9.]+) \| ([0-9.]+) \|$/\1|\2|\3|\4|\5/p' "$1"
}
rows_of "$source/docs/validation.md" >english.txt
rows_of "$source/docs/validation.ja.md" >japanese.txt

# Both tables list the methods in the order of the output. The output alternates between
# targets and maps, so each table must be a subsequence of the output.
for table in targets maps; do
    case $table in
    targets) pattern='^[^|]*\|[0-9]\.[0-9]{4}\|' ;;
    maps) pattern='^[^|]*\|[0-9]\.[0-9]{3}\|' ;;
    esac
    grep -E "$pattern" english.txt >"$table.txt"
    [ "$(wc -l <"$table.txt")" -eq 16 ] || {
        echo "docs/validation.md: the table of $table does not have 16 rows"
        exit 1
    }
    awk 'NR == FNR { wanted[++count] = $0; next }
         found < count && $0 == wanted[found + 1] { ++found }
         END {
             if (found < count) {
                 print "docs/validation.md: not printed, or not in this order: " wanted[found + 1]
                 exit 1
             }
         }' "$table.txt" results.txt
done

diff <(cut -d'|' -f2- english.txt) <(cut -d'|' -f2- japanese.txt) || {
    echo "docs/validation.ja.md and docs/validation.md have different numbers"
    exit 1
}
