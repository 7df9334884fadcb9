#!/usr/bin/env bash
# Scripts.sh SOURCE WORK CASE: one behaviour of ./run and of what it shares with
# the other scripts, with stand-ins in WORK for the commands that would look at
# this machine or change it.
set -euo pipefail
source=$1 work=$2 case=$3

rm -rf "$work"
mkdir -p "$work"
stand_in()
{
    printf '#!/bin/sh\n%s\n' "$2" >"$work/$1"
    chmod +x "$work/$1"
}
stand_in fc-list 'printf "%s" "$FONTS"'
stand_in dpkg-query 'for package; do :; done
case " $MISSING " in *" $package "*) exit 1 ;; esac
printf installed'
stand_in apt-get "printf '%s\n' \"\$*\" >>'$work/apt.log'
exit \"\$APT_STATUS\""
stand_in id 'echo 0'
export FONTS='' MISSING=fonts-vlgothic APT_STATUS=0 PATH=$work:$PATH
touch "$work/apt.log"

wrong()
{
    echo "$case: $*"
    exit 1
}
installs()
{
    grep -q " install .* $1\$" "$work/apt.log"
}
seek_font()
{
    said=$(bash -euo pipefail -c '. "$1/scripts/common.sh"; install_japanese_font; echo "went on"' \
        - "$source" 2>&1) || wrong "it ended: $said"
    [[ $said == *"went on" ]] || wrong "it ended: $said"
}

case $case in
font_is_installed_where_none_is_found)
    seek_font
    installs fonts-vlgothic || wrong "apt-get was told: $(cat "$work/apt.log")"
    ;;
font_that_is_there_stays_the_only_one)
    FONTS='/fonts/some.ttf: Some Font'
    seek_font
    [ ! -s "$work/apt.log" ] || wrong "apt-get was told: $(cat "$work/apt.log")"
    ;;
font_that_cannot_be_installed_is_a_remark)
    APT_STATUS=1
    seek_font
    [[ $said == *"-e asks for English"* ]] || wrong "it said: $said"
    ;;
what_finds_fonts_is_installed_first)
    MISSING='fontconfig fonts-vlgothic'
    seek_font
    installs fontconfig || wrong "apt-get was told: $(cat "$work/apt.log")"
    ;;
run_without_a_display_installs_nothing)
    said=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$source/run" 2>&1) &&
        wrong "it succeeded"
    [[ $said == *"./run sample works without one" ]] || wrong "it said: $said"
    [ ! -s "$work/apt.log" ] || wrong "apt-get was told: $(cat "$work/apt.log")"
    ;;
*)
    wrong "there is no such case"
    ;;
esac
