#!/usr/bin/env bash
# InstalledFiles.sh CMAKE BUILD SOURCE TREE: installs afresh into TREE, by a user
# who hides everything from others, and compares what is there with what Linux
# expects. Everyone has to be able to read it.
set -euo pipefail
cmake=$1 build=$2 source=$3 tree=$4

rm -rf "$tree"
(
    umask 077
    DESTDIR=$tree "$cmake" --install "$build" --prefix /usr >/dev/null
)

expected()
{
    cat <<'END'
bin/aelk
share/applications/aelk.desktop
share/doc/aelk/ARCHITECTURE.md
share/doc/aelk/CHANGELOG.md
share/doc/aelk/CITATION.cff
share/doc/aelk/CONTRIBUTING.md
share/doc/aelk/README.ja.md
share/doc/aelk/README.md
share/doc/aelk/copyright
share/doc/aelk/examples/nickel/README.md
share/icons/hicolor/scalable/apps/aelk.svg
share/man/ja/man1/aelk.1
share/man/man1/aelk.1
share/metainfo/org.aelk.aelk.metainfo.xml
END
    cd "$source"
    find docs \( -name '*.md' -o -name '*.png' \) -printf 'share/doc/aelk/%p\n'
    find examples/nickel/data -type f -printf 'share/doc/aelk/%p\n'
}

diff <(expected | LC_ALL=C sort) <(cd "$tree/usr" && find . -type f -printf '%P\n' | LC_ALL=C sort) || {
    echo "< is missing, > is too much"
    exit 1
}

hidden=$(find "$tree" \( -type d ! -perm 755 -o -type f ! -path '*/bin/*' ! -perm 644 \
    -o -path '*/bin/*' ! -perm 755 \) -printf '%m %p\n')
[ -z "$hidden" ] || {
    echo "wrong permissions: $hidden"
    exit 1
}

# What the menu entry names is there.
entry=$tree/usr/share/applications/aelk.desktop
while read -r program _; do
    [ -x "$tree/usr/bin/$program" ] || {
        echo "the menu entry starts $program"
        exit 1
    }
done < <(sed -n 's/^Exec=//p' "$entry")
icon=$(sed -n 's/^Icon=//p' "$entry")
[ -f "$tree/usr/share/icons/hicolor/scalable/apps/$icon.svg" ] || {
    echo "the menu entry shows $icon"
    exit 1
}

# A place can also be named from where one stands.
beside=$tree-beside
rm -rf "$beside"
(
    umask 077
    cd "$(dirname "$tree")"
    "$cmake" --install "$build" --prefix "$(basename "$beside")" >/dev/null
)
diff -r "$tree/usr" "$beside" || {
    echo "an installation to a relative place is another one"
    exit 1
}
hidden=$(find "$beside" -type d ! -perm 755)
[ -z "$hidden" ] || {
    echo "hidden folders: $hidden"
    exit 1
}
