#!/usr/bin/env bash
# InstalledFiles.sh CMAKE BUILD SOURCE TREE: installs into the emptied TREE and compares the
# installed files with the expected list. The test sets a strict umask: all users must be able
# to read an installation, even if the administrator's umask makes new files private.
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
    echo "< is missing, > is unexpected"
    exit 1
}

wrong=$(find "$tree" \( -type d ! -perm 755 -o -type f ! -path '*/bin/*' ! -perm 644 \
    -o -path '*/bin/*' ! -perm 755 \) -printf '%m %p\n')
[ -z "$wrong" ] || {
    echo "wrong permissions: $wrong"
    exit 1
}

# The menu entry's program and icon must be installed.
entry=$tree/usr/share/applications/aelk.desktop
while read -r program _; do
    [ -x "$tree/usr/bin/$program" ] || {
        echo "the menu entry starts $program, which is not installed"
        exit 1
    }
done < <(sed -n 's/^Exec=//p' "$entry")
icon=$(sed -n 's/^Icon=//p' "$entry")
[ -f "$tree/usr/share/icons/hicolor/scalable/apps/$icon.svg" ] || {
    echo "the menu entry shows $icon, which is not installed"
    exit 1
}

# An installation into a prefix that is relative to the working directory must also work.
relative=$tree-relative
rm -rf "$relative"
(
    umask 077
    cd "$(dirname "$tree")"
    "$cmake" --install "$build" --prefix "$(basename "$relative")" >/dev/null
)
diff -r "$tree/usr" "$relative" || {
    echo "the installation to a relative path differs"
    exit 1
}
wrong=$(find "$relative" -type d ! -perm 755)
[ -z "$wrong" ] || {
    echo "folders with wrong permissions: $wrong"
    exit 1
}
