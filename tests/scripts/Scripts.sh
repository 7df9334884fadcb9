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
# A stand-in for the random user. Sets `actions` to the numbers that it plays, each
# between commas, then runs $1.
random_user()
{
    # shellcheck disable=SC2016  # the stand-in's own variables
    stand_in random_user 'seed=$1 actions=,$(seq -s , 0 "$(($2 - 1))"), log=/dev/null
shift 2
while [ $# -gt 0 ]; do
    case $1 in
    --only) actions=,$2, && shift ;;
    --log) log=$2 && shift ;;
    esac
    shift
done
'"$1"
    export RANDOM_USER=$work/random_user
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
random_takes_a_seed_and_a_number_of_actions)
    random_user 'echo "played $seed $actions"'
    said=$("$source/scripts/random" 5 3 2>&1) || wrong "it failed: $said"
    [[ $said == "played 5 ,0,1,2," ]] || wrong "it said: $said"
    for arguments in "" "5" "5 x" "5 3 1" "--hours" "--hours x" "--hours 1 x" "--quick 5" "--slow 1 2"; do
        # shellcheck disable=SC2086  # several words
        said=$("$source/scripts/random" $arguments 2>&1) && wrong "it took: $arguments"
        [[ $said == *"scripts/random SEED ACTIONS"* ]] || wrong "it said: $said"
    done
    [ ! -s "$work/apt.log" ] || wrong "apt-get was told: $(cat "$work/apt.log")"
    ;;
random_shortens_a_failure_to_the_actions_it_takes)
    random_user 'case $actions in
*,7,*,13,* | *,7,13,*) echo "seed $seed, action 13: a press: it is wrong" && exit 1 ;;
esac'
    said=$("$source/scripts/random" 5 60 2>&1) && wrong "it succeeded"
    [[ $said == *"--only 7,13" ]] || wrong "it said: $said"
    [[ $said == *"list of 14 actions"* ]] || wrong "it said: $said"
    ;;
random_shortens_a_crash_up_to_the_action_under_way)
    random_user 'case $actions in
*,21,*) echo "21 a press" >"$log" && kill -SEGV $$ ;;
esac'
    said=$("$source/scripts/random" 5 60 2>&1) && wrong "it succeeded"
    [[ $said == *"list of 22 actions"* ]] || wrong "it said: $said"
    [[ $said == *"--only 21" ]] || wrong "it said: $said"
    ;;
random_plays_seed_after_seed_for_the_hours)
    random_user 'sleep 0.3
echo "seed $seed: 1000 actions"'
    said=$("$source/scripts/random" --hours 0.0006 40 2>&1) || wrong "it failed: $said"
    [[ $said == *"seed 40: 1000 actions"*"seed 41: 1000 actions"*"actions, no failure" ]] ||
        wrong "it said: $said"
    ;;
random_stops_at_the_first_seed_that_fails)
    random_user '[ "$seed" -lt 42 ] || { echo "seed $seed, action 0: a press: wrong" && exit 1; }'
    said=$("$source/scripts/random" --hours 1 40 2>&1) && wrong "it succeeded"
    [[ $said == *"seed 42 failed"*"scripts/random 42 1000: --only 0" ]] || wrong "it said: $said"
    ;;
*)
    wrong "there is no such case"
    ;;
esac
