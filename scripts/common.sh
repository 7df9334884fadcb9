# shellcheck shell=bash
# Functions that ./run, ./test and the scripts in this folder share. Source this file in bash:
# it sets `root` to the folder of the project.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say()
{
    printf '%s\n' "aelk: $*"
}

fail()
{
    printf '%s\n' "aelk: $*" >&2
    exit 1
}

# duration START: prints the time since START, which is in seconds as in `date +%s`.
duration()
{
    local seconds=$(($(date +%s) - $1))
    echo "$((seconds / 60)) min $((seconds % 60)) s"
}

is_installed()
{
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# install_missing PACKAGE...: installs the missing packages with apt-get.
install_missing()
{
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    command -v apt-get >/dev/null ||
        fail "missing packages: ${missing[*]}; there is no apt-get to install them with"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            fail "missing packages: ${missing[*]}; installing them needs root or sudo"
        as_root=(sudo)
    fi
    say "installing ${missing[*]}; this may take some minutes"
    # The package lists can be old or missing. If the update fails, the existing lists can
    # still be sufficient.
    "${as_root[@]}" apt-get -qq update || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -o Dpkg::Use-Pty=0 install --yes --no-install-recommends "${missing[@]}" \
        >/dev/null ||
        fail "could not install ${missing[*]}"
}

# A Japanese font whose lines of text are no higher than lines of Latin text. With higher lines,
# the main window would need a larger screen.
japanese_font=fonts-vlgothic

# install_japanese_font: installs a Japanese font if the system has none. The program also runs
# without such a font, so a failure only prints a message.
install_japanese_font()
{
    (
        install_missing fontconfig
        if [ -z "$(fc-list :lang=ja)" ]; then
            install_missing "$japanese_font"
        fi
    ) || say "there may be no font for Japanese; -e asks for English"
}

# shellcheck disable=SC2034  # used by the scripts that source this
build_packages=(g++ cmake ninja-build qt6-base-dev qt6-l10n-tools)

# build PRESET TARGET [CMAKE-OPTION...]: configures the preset and builds the target.
build()
{
    local preset=$1 target=$2
    shift 2
    say "building $target ($preset)"
    # cmake reads the presets from the working directory.
    (
        cd "$root"
        cmake --preset "$preset" "$@" >/dev/null &&
            cmake --build --preset "$preset" --target "$target" --parallel "$(nproc)"
    ) || fail "the build failed"
}

# build_program TARGET: builds a program for a user with the release preset. Warnings are not
# errors, unless ./test has configured build/release: a change of this option would then cause
# everything to be compiled again.
build_program()
{
    local warnings=OFF
    if grep -qs '^AELK_WARNINGS_ARE_ERRORS:.*=ON$' "$root/build/release/CMakeCache.txt"; then
        warnings=ON
    fi
    build release "$1" -DAELK_BENCH=OFF -DAELK_WARNINGS_ARE_ERRORS=$warnings
}

# Prints the paths of all shell scripts of the project.
all_scripts()
{
    local file
    find "$root" \( -name .git -o -path "$root/build" -o -path "$root/out" \) -prune \
        -o -type f -print | LC_ALL=C sort | while read -r file; do
        if is_script "$file"; then
            echo "$file"
        fi
    done
}

# is_script FILE: whether FILE is a shell script, by its extension or its first line.
is_script()
{
    [[ $1 != *.sh ]] || return 0
    local first
    IFS= read -r -n 64 first 2>/dev/null <"$1" || true
    [[ $first =~ ^\#!.*[/\ ](ba)?sh( |$) ]]
}
