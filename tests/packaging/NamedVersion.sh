#!/usr/bin/env bash
# NamedVersion.sh PACKAGING VERSION: checks that the newest release in the metainfo, the
# title lines of the man pages, a heading of the changelog and CITATION.cff all contain
# VERSION and the same release date.
set -euo pipefail
packaging=$1 version=$2

release=$(grep -o -m1 '<release [^>]*>' "$packaging/org.aelk.aelk.metainfo.xml")
[[ $release == *" version=\"$version\" "* ]] || {
    echo "the metainfo's newest release is $release, not $version"
    exit 1
}
date=$(sed -E 's/.* date="([0-9-]+)".*/\1/' <<<"$release")
for page in "$packaging/aelk.1" "$packaging/ja/aelk.1"; do
    grep -q "^\.TH AELK 1 $date \"aelk $version\" " "$page" || {
        echo "$page does not name aelk $version of $date"
        exit 1
    }
done
grep -qxF "## $version ($date)" "$packaging/../CHANGELOG.md" || {
    echo "CHANGELOG.md has no $version of $date"
    exit 1
}
citation=$packaging/../CITATION.cff
if ! grep -qxF "version: $version" "$citation" || ! grep -qxF "date-released: $date" "$citation"; then
    echo "CITATION.cff does not name $version of $date"
    exit 1
fi
