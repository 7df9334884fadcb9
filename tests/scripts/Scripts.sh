#!/usr/bin/env bash
# Scripts.sh SOURCE WORK CASE: one behaviour of ./run, ./test, .ci/run or one of
# the scripts, with stand-ins in WORK for the commands that would look at
# this machine or change it.
# shellcheck disable=SC2016  # the stand-ins have variables of their own
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

# A tree with the scripts and one target, whose program is a stand-in: it notes its
# options, and FUZZ_FINDS leaves an input where finds go.
make_fuzz_tree()
{
    mkdir -p "$work/tree/scripts" "$work/tree/fuzz/targets" "$work/tree/fuzz/corpus/some" \
        "$work/tree/build/fuzz/bin"
    cp "$source/scripts/common.sh" "$source/scripts/fuzz" "$work/tree/scripts"
    touch "$work/tree/fuzz/targets/fuzz_some.cpp" "$work/tree/fuzz/targets/fuzz_other.cpp"
    stand_in cmake "printf '%s\n' \"\$*\" >>'$work/cmake.log'"
    touch "$work/cmake.log"
    stand_in fuzz_some "printf '%s\n' \"\$*\" >>'$work/fuzz.log'
for option; do
    case \$option in
    -exact_artifact_path=*) echo s >\"\${option#*=}\"; exit 1 ;;
    -artifact_prefix=*) prefix=\${option#*=} ;;
    esac
done
[ -z \"\$FUZZ_FINDS\" ] || { echo large >\"\${prefix}crash-1\"; exit 77; }"
    mv "$work/fuzz_some" "$work/tree/build/fuzz/bin"
    export XDG_CACHE_HOME=$work/cache FUZZ_FINDS=''
}
fuzz()
{
    said=$("$work/tree/scripts/fuzz" "$@" 2>&1)
}
# A tree with what $1... names, in which cmake notes what it is told.
make_tree()
{
    mkdir -p "$work/tree"
    (cd "$source" && tar -cf - "$@") | tar -xf - -C "$work/tree"
    stand_in cmake "printf '%s\n' \"\$*\" >>'$work/cmake.log'"
    touch "$work/cmake.log"
}
# The same under git, with all that the hook takes from it, in a commit of its own;
# what is staged has a fault where it says "fault".
make_commits()
{
    make_tree scripts .clang-format .shellcheckrc
    stand_in clang-format 'shift 2; ! grep -H fault "$@"'
    stand_in shellcheck '! grep -H fault "$@"'
    mkdir -p "$work/tree/src"
    cd "$work/tree"
    # What the surroundings have git do is no matter here.
    unset GIT_DIR GIT_INDEX_FILE GIT_WORK_TREE
    export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null
    git init --quiet --initial-branch main
    git config user.name someone
    git config user.email someone@localhost
    git add .
    git commit --quiet -m start
    git config core.hooksPath scripts
}
# put FILE TEXT: writes and stages it.
put()
{
    mkdir -p "$(dirname "$1")"
    printf '%s\n' "$2" >"$1"
    git add "$1"
}
commit()
{
    said=$(git commit -m change 2>&1)
}
nothing_was_installed()
{
    [ ! -s "$work/apt.log" ] || wrong "apt-get was told: $(cat "$work/apt.log")"
    [ ! -s "$work/cmake.log" ] || wrong "cmake was told: $(cat "$work/cmake.log")"
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
fuzz_without_a_target_lists_them)
    make_fuzz_tree
    fuzz || wrong "it failed: $said"
    [[ $said == *$'other\nsome' ]] || wrong "it said: $said"
    nothing_was_installed
    ;;
fuzz_of_an_unknown_target_installs_nothing)
    make_fuzz_tree
    for target in none ../some fuzz_some; do
        ! fuzz "$target" || wrong "it took $target"
        [[ $said == *"there is no target $target"* ]] || wrong "it said: $said"
    done
    nothing_was_installed
    ;;
fuzz_for_no_number_of_seconds_installs_nothing)
    make_fuzz_tree
    for seconds in 0 -5 x 1.5 ''; do
        ! fuzz some "$seconds" || wrong "it took $seconds"
    done
    ! fuzz some 1 2 || wrong "it took a third argument"
    ! RUNS=x fuzz some || wrong "it took x runs"
    nothing_was_installed
    ;;
fuzz_installs_what_is_missing_and_builds_the_one_target)
    make_fuzz_tree
    MISSING='libclang-rt-dev'
    fuzz some 5 || wrong "it failed: $said"
    installs libclang-rt-dev || wrong "apt-get was told: $(cat "$work/apt.log")"
    grep -q -- '--build --preset fuzz --target fuzz_some ' "$work/cmake.log" ||
        wrong "cmake was told: $(cat "$work/cmake.log")"
    ;;
fuzz_keeps_its_corpus_outside_the_tree)
    make_fuzz_tree
    MISSING=''
    fuzz some 5 || wrong "it failed: $said"
    grep -q -- "-max_total_time=5 $work/cache/aelk-fuzz/some $work/tree/fuzz/corpus/some\$" \
        "$work/fuzz.log" || wrong "the program was told: $(cat "$work/fuzz.log")"
    RUNS=70 fuzz some || wrong "it failed: $said"
    grep -q -- '-runs=70 ' "$work/fuzz.log" ||
        wrong "the program was told: $(cat "$work/fuzz.log")"
    [ -d "$work/cache/aelk-fuzz/some" ] || wrong "there is no corpus"
    ;;
fuzz_makes_a_find_smaller_and_says_where_it_is)
    make_fuzz_tree
    MISSING='' FUZZ_FINDS=yes
    ! fuzz some 5 || wrong "it succeeded"
    find=$(ls "$work"/cache/aelk-fuzz/finds/some/*/crash-1)
    [ "$(cat "$find")" = s ] || wrong "it was not made smaller"
    [[ $said == *"fuzz_some $find"* ]] || wrong "it said: $said"
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
run_is_stopped_by_no_warning)
    make_tree run scripts
    mkdir -p "$work/tree/build/release/bin"
    stand_in aelk ''
    mv "$work/aelk" "$work/tree/build/release/bin"
    said=$(QT_QPA_PLATFORM=offscreen "$work/tree/run" 2>&1) || wrong "it failed: $said"
    grep -q -- '--preset release .*-DAELK_WARNINGS_ARE_ERRORS=OFF' "$work/cmake.log" ||
        wrong "cmake was told: $(cat "$work/cmake.log")"
    ;;
run_keeps_the_options_of_the_gate)
    make_tree run scripts
    mkdir -p "$work/tree/build/release/bin"
    stand_in aelk ''
    mv "$work/aelk" "$work/tree/build/release/bin"
    echo 'AELK_WARNINGS_ARE_ERRORS:BOOL=ON' >"$work/tree/build/release/CMakeCache.txt"
    said=$(QT_QPA_PLATFORM=offscreen "$work/tree/run" 2>&1) || wrong "it failed: $said"
    grep -q -- '--preset release .*-DAELK_WARNINGS_ARE_ERRORS=ON' "$work/cmake.log" ||
        wrong "cmake was told: $(cat "$work/cmake.log")"
    ;;
gate_runs_its_stages_in_order)
    make_tree .ci scripts
    stand_in test 'echo "stage ${1-dev}"'
    mv "$work/test" "$work/tree"
    said=$("$work/tree/.ci/run" 2>&1) || wrong "it failed: $said"
    stages=$(sed -n 's/^stage //p' <<<"$said" | tr '\n' ' ')
    [ "$stages" = "format shell release dev asan tidy packaging " ] || wrong "it ran: $stages"
    [[ $said == *"all took 0 min "* ]] || wrong "it said: $said"
    ;;
gate_ends_at_the_first_stage_that_fails)
    make_tree .ci scripts
    stand_in test 'echo "stage ${1-dev}"; [ "$1" != release ]'
    mv "$work/test" "$work/tree"
    said=$("$work/tree/.ci/run" 2>&1) && wrong "it succeeded"
    [[ $said == *"stage release" ]] || wrong "it said: $said"
    ;;
shell_stage_finds_scripts_by_ending_and_first_line)
    make_tree test scripts/common.sh
    stand_in shellcheck "printf '%s\n' \"\$@\" >'$work/shellcheck.log'"
    cd "$work/tree"
    mkdir -p a/b build out .git
    echo '#!/usr/bin/env bash' | tee 'a/b/some' build/made out/made .git/made >a/env
    echo '#!/bin/sh -e' >'a/plain one'
    echo 'true' >a/sourced.sh
    echo '#!/usr/bin/env python3' >a/other
    printf '\0\n#!/bin/sh\n' >a/bytes
    said=$(./test shell 2>&1) || wrong "it failed: $said"
    found=$(sed "s:^$work/tree/::" "$work/shellcheck.log" | tr '\n' ',')
    [ "$found" = "a/b/some,a/env,a/plain one,a/sourced.sh,scripts/common.sh,test," ] ||
        wrong "it found: $found"
    ;;
shell_stage_fails_where_shellcheck_does)
    make_tree test scripts/common.sh
    stand_in shellcheck 'exit 1'
    said=$("$work/tree/test" shell 2>&1) && wrong "it succeeded"
    [[ $said == *"shellcheck found the above" ]] || wrong "it said: $said"
    ;;
release_stage_runs_each_benchmark_once_and_small | release_stage_notices_a_benchmark_that_fails)
    make_tree test scripts/common.sh
    mkdir -p "$work/tree/build/release/bin" "$work/tree/bench"
    touch "$work/tree/bench/bench_some.cpp" "$work/tree/bench/bench_other.cpp"
    stand_in bench_some 'echo "some $AELK_BENCH_SHORTEST $BENCHMARK_MIN_TIME $*" >>"$0.log"
echo "$BENCH_SAYS"'
    cp "$work/bench_some" "$work/bench_other"
    mv "$work"/bench_* "$work/tree/build/release/bin"
    export BENCH_SAYS='5 ms'
    said=$("$work/tree/test" release 2>&1) || wrong "it failed: $said"
    for log in "$work"/tree/build/release/bin/bench_{some,other}.log; do
        [ "$(cat "$log")" = 'some 1 0 ' ] || wrong "it was told: $(cat "$log")"
    done
    if [ "$case" = release_stage_notices_a_benchmark_that_fails ]; then
        BENCH_SAYS="ERROR OCCURRED: 'no file'"
        said=$("$work/tree/test" release 2>&1) && wrong "it succeeded"
        [[ $said == *"bench_other failed"*"no file"* ]] || wrong "it said: $said"
    fi
    ;;
tidy_checks_what_has_changed_since_the_main_branch)
    make_commits
    stand_in clang-tidy "printf '%s\n' \"\$*\" >>'$work/tidy.log'"
    git config --unset core.hooksPath
    put src/old.cpp 'old'
    put src/pair.cpp 'old'
    put src/pair.h 'old'
    git commit --quiet -m old
    git checkout --quiet -b branch
    put src/new.cpp 'new'
    git commit --quiet -m new
    put src/pair.h 'new'
    echo 'new' >src/untracked.cpp
    said=$(scripts/tidy 2>&1) || wrong "it failed: $said"
    full=$(grep -v -- --checks "$work/tidy.log" | sed 's/.* //' | sort | tr '\n' ' ')
    [ "$full" = "src/new.cpp src/pair.cpp src/untracked.cpp " ] || wrong "all checks of: $full"
    quick=$(grep -c -- --checks "$work/tidy.log")
    [ "$quick" = 4 ] || wrong "quick checks of $quick"
    ;;
tidy_on_the_main_branch_checks_what_came_last)
    make_commits
    stand_in clang-tidy "printf '%s\n' \"\$*\" >>'$work/tidy.log'"
    git config --unset core.hooksPath
    put src/old.cpp 'old'
    git commit --quiet -m old
    put src/new.cpp 'new'
    git commit --quiet -m new
    said=$(scripts/tidy 2>&1) || wrong "it failed: $said"
    full=$(grep -v -- --checks "$work/tidy.log" | sed 's/.* //')
    [ "$full" = src/new.cpp ] || wrong "all checks of: $full"
    stand_in clang-tidy 'echo "it is wrong"; exit 1'
    said=$(scripts/tidy src/new.cpp 2>&1) && wrong "it succeeded"
    [[ $said == *"it is wrong"*"clang-tidy found the above" ]] || wrong "it said: $said"
    ;;
hook_refuses_a_staged_source_of_another_format)
    make_commits
    put src/one.cpp 'a fault'
    ! commit || wrong "it was committed"
    [[ $said == *src/one.cpp* ]] || wrong "it said: $said"
    ;;
hook_refuses_a_staged_script_with_faults)
    make_commits
    put 'some tool' $'#!/bin/sh\na fault'
    ! commit || wrong "it was committed"
    [[ $said == *"some tool"* ]] || wrong "it said: $said"
    ;;
hook_lets_what_is_right_pass)
    make_commits
    put src/one.cpp 'right'
    put tool.sh 'right'
    put words.txt 'a fault'
    commit || wrong "it was refused: $said"
    git rm --quiet src/one.cpp
    commit || wrong "it was refused: $said"
    ;;
hook_looks_at_what_is_staged_alone)
    make_commits
    put src/one.cpp 'right'
    echo 'a fault' >src/one.cpp
    echo 'a fault' >src/two.cpp
    commit || wrong "it was refused: $said"
    git add src
    echo 'right' >src/one.cpp
    ! commit || wrong "it was committed"
    [[ $said == *src/one.cpp*src/two.cpp* ]] || wrong "it said: $said"
    ;;
hook_installs_nothing)
    make_commits
    put src/one.cpp 'right'
    rm "$work/clang-format"
    mkdir "$work/few"
    for tool in bash basename cat dirname env git grep mktemp rm sort; do
        ln -s "$(command -v "$tool")" "$work/few"
    done
    said=$(PATH=$work/few git commit -m change 2>&1) && wrong "it was committed"
    [[ $said == *"clang-format is missing; ./test format installs it"* ]] || wrong "it said: $said"
    nothing_was_installed
    ;;
*)
    wrong "there is no such case"
    ;;
esac
