#!/usr/bin/env bash
# InstalledLinks.sh FOLDER: checks the links in all Markdown files below FOLDER, except web
# addresses. Each link must lead to an existing file, and to an existing heading if it has
# an anchor.
set -euo pipefail
export LC_ALL=C.UTF-8

# anchors FILE: prints the anchors of FILE: its headings in lower case, without punctuation
# and with hyphens for spaces, and the ids of its <a> elements.
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
            echo "$document: $link is an absolute path"
            bad=$((bad + 1))
            continue
            ;;
        esac
        target=$document
        [ -z "$path" ] || target=$(dirname "$document")/$path
        if [ ! -e "$target" ]; then
            echo "$document: $link does not exist"
            bad=$((bad + 1))
        elif [ -n "$anchor" ] && ! anchors "$target" | grep -xF -e "$anchor" >/dev/null; then
            echo "$document: $link names a heading that does not exist"
            bad=$((bad + 1))
        fi
    done < <(grep -oP '\]\(\K[^)\s]+|(?:src|href)="\K[^"]+' "$document")
done < <(find "$1" -name '*.md')

if [ "$count" -eq 0 ] || [ "$bad" -gt 0 ]; then
    echo "$bad of $count links are broken"
    exit 1
fi
