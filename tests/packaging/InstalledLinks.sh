#!/usr/bin/env bash
# InstalledLinks.sh FOLDER: every link in the Markdown files below FOLDER that
# is no web address leads to a file, and to a heading of it where it names one.
set -euo pipefail
export LC_ALL=C.UTF-8

# anchors FILE: the names of its headings in links: small letters, no
# punctuation, hyphens for blanks; and those that it gives itself.
anchors()
{
    grep -oP '<a id="\K[^"]+' "$1" || true
    sed -nE 's/^#+ +//p' "$1" | sed -E 's/.*/\L&/; s/[^[:alnum:] _-]//g; s/ /-/g'
}

count=0 bad=0
while IFS= read -r document; do
    while IFS= read -r link; do
        count=$((count + 1))
        path=${link%%#*} anchor=
        [[ $link != *'#'* ]] || anchor=${link#*#}
        case $link in
        http://* | https://* | mailto:*)
            continue
            ;;
        /*)
            echo "$document: $link is bound to one machine"
            bad=$((bad + 1))
            continue
            ;;
        esac
        target=$document
        [ -z "$path" ] || target=$(dirname "$document")/$path
        if [ ! -e "$target" ]; then
            echo "$document: $link is not there"
            bad=$((bad + 1))
        elif [ -n "$anchor" ] && ! anchors "$target" | grep -xF -e "$anchor" >/dev/null; then
            echo "$document: $link names no heading"
            bad=$((bad + 1))
        fi
    done < <(grep -oP '\]\(\K[^)\s]+|(?:src|href)="\K[^"]+' "$document")
done < <(find "$1" -name '*.md')

if [ "$count" -eq 0 ] || [ "$bad" -gt 0 ]; then
    echo "$bad of $count links lead nowhere"
    exit 1
fi
