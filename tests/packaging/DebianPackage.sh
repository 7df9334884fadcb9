#!/usr/bin/env bash
# DebianPackage.sh CPACK BUILD VERSION TREE WORK: makes the package in WORK. Checks its
# dependencies, its permissions, and that it contains the files of the installation in TREE;
# Debian requires the manual pages and the changelog to be compressed.
set -euo pipefail
cpack=$1 build=$2 version=$3 tree=$4 work=$5

rm -rf "$work"
(
    umask 077
    "$cpack" --config "$build/CPackConfig.cmake" -G DEB -B "$work"
)
package=$work/aelk_${version}_$(dpkg --print-architecture).deb
[ -f "$package" ] || {
    echo "$package does not exist"
    exit 1
}

expect_words()
{
    local field=$1 word
    shift
    local value
    value=$(dpkg-deb -f "$package" "$field")
    for word in "$@"; do
        [[ " ${value//,/ } " == *" $word "* ]] || {
            echo "$field is \"$value\", without $word"
            exit 1
        }
    done
}
expect_words Package aelk
expect_words Version "$version"
expect_words Section science
expect_words Depends libc6 libqt6core6 libqt6gui6 libqt6widgets6
expect_words Recommends fonts-vlgothic
expect_words Suggests qt6-wayland

expected()
{
    echo share/doc/aelk/changelog.gz
    (cd "$tree/usr" && find . -type f -printf '%P\n') | sed -E 's:(^share/man/.*):\1.gz:'
}
listing=$(dpkg-deb -c "$package")
diff <(expected | LC_ALL=C sort) \
    <(grep -v '^d' <<<"$listing" | sed -E 's:.* \./usr/::' | LC_ALL=C sort) || {
    echo "< is missing, > is unexpected"
    exit 1
}

wrong=$(grep -vE '^(drwxr-xr-x root/root .*/|-rwxr-xr-x root/root .* \./usr/bin/aelk|-rw-r--r-- root/root .*)$' \
    <<<"$listing" || true)
[ -z "$wrong" ] || {
    echo "wrong owner or permissions: $wrong"
    exit 1
}

dpkg-deb -x "$package" "$work/contents"
program=$(file -b "$work/contents/usr/bin/aelk")
[[ $program == *", stripped" ]] || {
    echo "the program is $program"
    exit 1
}
gzip -t "$work"/contents/usr/share/man/{man1,ja/man1}/aelk.1.gz
