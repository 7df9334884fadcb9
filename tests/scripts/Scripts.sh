#!/usr/bin/env bash
# Scripts.sh SOURCE WORK CASE: tests one behaviour of ./run, ./test, .ci/run or one of the
# scripts. Mocks in WORK replace the commands that would query or change this machine.
# shellcheck disable=SC2016  # the mocks have their own variables
set -euo pipefail
source=$1 work=$2 case=$3

rm -rf "$work"
mkdir -p "$work"
mock_command()
{
    printf '#!/bin/sh\n%s\n' "$2" >"$work/$1"
    chmod +x "$work/$1"
}
mock_command fc-list 'printf "%s" "$FONTS"'
mock_command dpkg-query 'for package; do :; done
case " $MISSING " in *" $package "*) exit 1 ;; esac
printf installed'
mock_command apt-get "printf '%s\n' \"\$*\" >>'$work/apt.log'
exit \"\$APT_STATUS\""
mock_command id 'echo 0'
export FONTS='' MISSING=fonts-vlgothic APT_STATUS=0 PATH=$work:$PATH
touch "$work/apt.log"

fail()
{
    echo "$case: $*"
    exit 1
}
installs()
{
    grep -q " install .* $1\$" "$work/apt.log"
}
install_font()
{
    said=$(bash -euo pipefail -c '. "$1/scripts/common.sh"; install_japanese_font; echo "went on"' \
        - "$source" 2>&1) || fail "it ended early: $said"
    [[ $said == *"went on" ]] || fail "it ended early: $said"
}
# Creates a mock of the random user. The mock first sets `actions` to the numbers of the
# actions to play, with a comma before and after each number, and then runs the shell code $1.
random_user()
{
    mock_command random_user 'seed=$1 actions=,$(seq -s , 0 "$(($2 - 1))"), log=/dev/null
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

# Makes a tree with the scripts and the fuzz target "some", whose program is a mock: it logs
# its options. If FUZZ_FINDS is set, it also leaves a crashing input where libFuzzer would.
make_fuzz_tree()
{
    mkdir -p "$work/tree/scripts" "$work/tree/fuzz/targets" "$work/tree/fuzz/corpus/some" \
        "$work/tree/build/fuzz/bin"
    cp "$source/scripts/common.sh" "$source/scripts/fuzz" "$work/tree/scripts"
    touch "$work/tree/fuzz/targets/fuzz_some.cpp" "$work/tree/fuzz/targets/fuzz_other.cpp"
    mock_command cmake "printf '%s\n' \"\$*\" >>'$work/cmake.log'"
    touch "$work/cmake.log"
    mock_command fuzz_some "printf '%s\n' \"\$*\" >>'$work/fuzz.log'
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
# Makes a tree with copies of $1..., in which cmake is a mock that logs its arguments.
make_tree()
{
    mkdir -p "$work/tree"
    (cd "$source" && tar -cf - "$@") | tar -xf - -C "$work/tree"
    mock_command cmake "printf '%s\n' \"\$*\" >>'$work/cmake.log'"
    touch "$work/cmake.log"
}
# Makes a git repository with the files that the commit hook needs, in one commit. The
# mocked checkers reject every staged file that contains "fault".
make_commits()
{
    make_tree scripts .clang-format .shellcheckrc
    mock_command clang-format 'shift 2; ! grep -H fault "$@"'
    mock_command shellcheck '! grep -H fault "$@"'
    mkdir -p "$work/tree/src"
    cd "$work/tree"
    # Git's environment variables and the user's configuration must not affect this repository.
    unset GIT_DIR GIT_INDEX_FILE GIT_WORK_TREE
    export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null
    git init --quiet --initial-branch main
    git config user.name someone
    git config user.email someone@localhost
    git add .
    git commit --quiet -m start
    git config core.hooksPath scripts
}
# put FILE TEXT: writes FILE and stages it.
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
    [ ! -s "$work/apt.log" ] || fail "apt-get was called with: $(cat "$work/apt.log")"
    [ ! -s "$work/cmake.log" ] || fail "cmake was called with: $(cat "$work/cmake.log")"
}

case $case in
font_is_installed_if_none_is_found)
    install_font
    installs fonts-vlgothic || fail "apt-get was called with: $(cat "$work/apt.log")"
    ;;
no_font_is_installed_if_one_is_found)
    FONTS='/fonts/some.ttf: Some Font'
    install_font
    [ ! -s "$work/apt.log" ] || fail "apt-get was called with: $(cat "$work/apt.log")"
    ;;
failed_font_installation_is_only_a_warning)
    APT_STATUS=1
    install_font
    [[ $said == *"-e asks for English"* ]] || fail "it printed: $said"
    ;;
fontconfig_is_installed_before_searching_fonts)
    MISSING='fontconfig fonts-vlgothic'
    install_font
    installs fontconfig || fail "apt-get was called with: $(cat "$work/apt.log")"
    ;;
run_without_a_display_installs_nothing)
    said=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$source/run" 2>&1) &&
        fail "it succeeded"
    [[ $said == *"./run sample works without one" ]] || fail "it printed: $said"
    [ ! -s "$work/apt.log" ] || fail "apt-get was called with: $(cat "$work/apt.log")"
    ;;
fuzz_without_a_target_lists_all_targets)
    make_fuzz_tree
    fuzz || fail "it failed: $said"
    [[ $said == *$'other\nsome' ]] || fail "it printed: $said"
    nothing_was_installed
    ;;
fuzz_with_an_unknown_target_installs_nothing)
    make_fuzz_tree
    for target in none ../some fuzz_some; do
        ! fuzz "$target" || fail "it accepted $target"
        [[ $said == *"there is no target $target"* ]] || fail "it printed: $said"
    done
    nothing_was_installed
    ;;
fuzz_with_invalid_seconds_installs_nothing)
    make_fuzz_tree
    for seconds in 0 -5 x 1.5 ''; do
        ! fuzz some "$seconds" || fail "it accepted $seconds"
    done
    ! fuzz some 1 2 || fail "it accepted a third argument"
    ! RUNS=x fuzz some || fail "it accepted x runs"
    nothing_was_installed
    ;;
fuzz_installs_missing_packages_and_builds_only_its_target)
    make_fuzz_tree
    MISSING='libclang-rt-dev'
    fuzz some 5 || fail "it failed: $said"
    installs libclang-rt-dev || fail "apt-get was called with: $(cat "$work/apt.log")"
    grep -q -- '--build --preset fuzz --target fuzz_some ' "$work/cmake.log" ||
        fail "cmake was called with: $(cat "$work/cmake.log")"
    ;;
fuzz_keeps_its_corpus_outside_the_tree)
    make_fuzz_tree
    MISSING=''
    fuzz some 5 || fail "it failed: $said"
    grep -q -- "-max_total_time=5 $work/cache/aelk-fuzz/some $work/tree/fuzz/corpus/some\$" \
        "$work/fuzz.log" || fail "the program was called with: $(cat "$work/fuzz.log")"
    RUNS=70 fuzz some || fail "it failed: $said"
    grep -q -- '-runs=70 ' "$work/fuzz.log" ||
        fail "the program was called with: $(cat "$work/fuzz.log")"
    [ -d "$work/cache/aelk-fuzz/some" ] || fail "the corpus does not exist"
    ;;
fuzz_minimizes_a_crashing_input_and_prints_its_path)
    make_fuzz_tree
    MISSING='' FUZZ_FINDS=yes
    ! fuzz some 5 || fail "it succeeded"
    find=$(ls "$work"/cache/aelk-fuzz/finds/some/*/crash-1)
    [ "$(cat "$find")" = s ] || fail "it was not minimized"
    [[ $said == *"fuzz_some $find"* ]] || fail "it printed: $said"
    ;;
random_requires_a_seed_and_a_number_of_actions)
    random_user 'echo "played $seed $actions"'
    said=$("$source/scripts/random" 5 3 2>&1) || fail "it failed: $said"
    [[ $said == "played 5 ,0,1,2," ]] || fail "it printed: $said"
    for arguments in "" "5" "5 x" "5 3 1" "--hours" "--hours x" "--hours 1 x" "--quick 5" "--slow 1 2"; do
        # shellcheck disable=SC2086  # splitting into words is intended
        said=$("$source/scripts/random" $arguments 2>&1) && fail "it accepted: $arguments"
        [[ $said == *"scripts/random SEED ACTIONS"* ]] || fail "it printed: $said"
    done
    [ ! -s "$work/apt.log" ] || fail "apt-get was called with: $(cat "$work/apt.log")"
    ;;
random_reduces_a_failure_to_the_required_actions)
    random_user 'case $actions in
*,7,*,13,* | *,7,13,*) echo "seed $seed, action 13: a press: it is wrong" && exit 1 ;;
esac'
    said=$("$source/scripts/random" 5 60 2>&1) && fail "it succeeded"
    [[ $said == *"--only 7,13" ]] || fail "it printed: $said"
    [[ $said == *"list of 14 actions"* ]] || fail "it printed: $said"
    ;;
random_reduces_a_crash_to_the_required_actions)
    random_user 'case $actions in
*,21,*) echo "21 a press" >"$log" && kill -SEGV $$ ;;
esac'
    said=$("$source/scripts/random" 5 60 2>&1) && fail "it succeeded"
    [[ $said == *"list of 22 actions"* ]] || fail "it printed: $said"
    [[ $said == *"--only 21" ]] || fail "it printed: $said"
    ;;
random_plays_consecutive_seeds_until_the_time_is_up)
    random_user 'sleep 0.3
echo "seed $seed: 1000 actions"'
    said=$("$source/scripts/random" --hours 0.0006 40 2>&1) || fail "it failed: $said"
    [[ $said == *"seed 40: 1000 actions"*"seed 41: 1000 actions"*"actions, no failure" ]] ||
        fail "it printed: $said"
    ;;
random_stops_at_the_first_failing_seed)
    random_user '[ "$seed" -lt 42 ] || { echo "seed $seed, action 0: a press: wrong" && exit 1; }'
    said=$("$source/scripts/random" --hours 1 40 2>&1) && fail "it succeeded"
    [[ $said == *"seed 42 failed"*"scripts/random 42 1000: --only 0" ]] || fail "it printed: $said"
    ;;
run_does_not_treat_warnings_as_errors)
    make_tree run scripts
    mkdir -p "$work/tree/build/release/bin"
    mock_command aelk ''
    mv "$work/aelk" "$work/tree/build/release/bin"
    said=$(QT_QPA_PLATFORM=offscreen "$work/tree/run" 2>&1) || fail "it failed: $said"
    grep -q -- '--preset release .*-DAELK_WARNINGS_ARE_ERRORS=OFF' "$work/cmake.log" ||
        fail "cmake was called with: $(cat "$work/cmake.log")"
    ;;
run_keeps_the_warning_option_of_an_existing_build)
    make_tree run scripts
    mkdir -p "$work/tree/build/release/bin"
    mock_command aelk ''
    mv "$work/aelk" "$work/tree/build/release/bin"
    echo 'AELK_WARNINGS_ARE_ERRORS:BOOL=ON' >"$work/tree/build/release/CMakeCache.txt"
    said=$(QT_QPA_PLATFORM=offscreen "$work/tree/run" 2>&1) || fail "it failed: $said"
    grep -q -- '--preset release .*-DAELK_WARNINGS_ARE_ERRORS=ON' "$work/cmake.log" ||
        fail "cmake was called with: $(cat "$work/cmake.log")"
    ;;
ci_run_executes_its_stages_in_order)
    make_tree .ci scripts
    mock_command test 'echo "stage ${1-dev}"'
    mv "$work/test" "$work/tree"
    said=$("$work/tree/.ci/run" 2>&1) || fail "it failed: $said"
    stages=$(sed -n 's/^stage //p' <<<"$said" | tr '\n' ' ')
    [ "$stages" = "format shell release dev asan tidy packaging " ] || fail "it ran: $stages"
    [[ $said == *"all took 0 min "* ]] || fail "it printed: $said"
    ;;
ci_run_stops_at_the_first_failing_stage)
    make_tree .ci scripts
    mock_command test 'echo "stage ${1-dev}"; [ "$1" != release ]'
    mv "$work/test" "$work/tree"
    said=$("$work/tree/.ci/run" 2>&1) && fail "it succeeded"
    [[ $said == *"stage release" ]] || fail "it printed: $said"
    ;;
shell_stage_finds_scripts_by_suffix_and_first_line)
    make_tree test scripts/common.sh
    mock_command shellcheck "printf '%s\n' \"\$@\" >'$work/shellcheck.log'"
    cd "$work/tree"
    mkdir -p a/b build out .git
    echo '#!/usr/bin/env bash' | tee 'a/b/some' build/made out/made .git/made >a/env
    echo '#!/bin/sh -e' >'a/plain one'
    echo 'true' >a/sourced.sh
    echo '#!/usr/bin/env python3' >a/other
    printf '\0\n#!/bin/sh\n' >a/bytes
    said=$(./test shell 2>&1) || fail "it failed: $said"
    found=$(sed "s:^$work/tree/::" "$work/shellcheck.log" | tr '\n' ',')
    [ "$found" = "a/b/some,a/env,a/plain one,a/sourced.sh,scripts/common.sh,test," ] ||
        fail "it found: $found"
    ;;
shell_stage_fails_if_shellcheck_fails)
    make_tree test scripts/common.sh
    mock_command shellcheck 'exit 1'
    said=$("$work/tree/test" shell 2>&1) && fail "it succeeded"
    [[ $said == *"shellcheck found the above" ]] || fail "it printed: $said"
    ;;
release_stage_runs_each_benchmark_once_with_small_input | release_stage_reports_a_failing_benchmark)
    make_tree test scripts/common.sh
    mkdir -p "$work/tree/build/release/bin" "$work/tree/bench"
    touch "$work/tree/bench/bench_some.cpp" "$work/tree/bench/bench_other.cpp"
    mock_command bench_some 'echo "some $AELK_BENCH_SHORTEST $BENCHMARK_MIN_TIME $*" >>"$0.log"
echo "$BENCH_SAYS"'
    cp "$work/bench_some" "$work/bench_other"
    mv "$work"/bench_* "$work/tree/build/release/bin"
    export BENCH_SAYS='5 ms'
    said=$("$work/tree/test" release 2>&1) || fail "it failed: $said"
    for log in "$work"/tree/build/release/bin/bench_{some,other}.log; do
        [ "$(cat "$log")" = 'some 1 0 ' ] || fail "it was called with: $(cat "$log")"
    done
    if [ "$case" = release_stage_reports_a_failing_benchmark ]; then
        BENCH_SAYS="ERROR OCCURRED: 'no file'"
        said=$("$work/tree/test" release 2>&1) && fail "it succeeded"
        [[ $said == *"bench_other failed"*"no file"* ]] || fail "it printed: $said"
    fi
    ;;
tidy_checks_files_changed_since_the_main_branch)
    make_commits
    mock_command clang-tidy "printf '%s\n' \"\$*\" >>'$work/tidy.log'"
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
    said=$(scripts/tidy 2>&1) || fail "it failed: $said"
    full=$(grep -v -- --checks "$work/tidy.log" | sed 's/.* //' | sort | tr '\n' ' ')
    [ "$full" = "src/new.cpp src/pair.cpp src/untracked.cpp " ] || fail "all checks of: $full"
    quick=$(grep -c -- --checks "$work/tidy.log")
    [ "$quick" = 4 ] || fail "quick checks of $quick"
    ;;
tidy_on_the_main_branch_checks_the_last_commit)
    make_commits
    mock_command clang-tidy "printf '%s\n' \"\$*\" >>'$work/tidy.log'"
    git config --unset core.hooksPath
    put src/old.cpp 'old'
    git commit --quiet -m old
    put src/new.cpp 'new'
    git commit --quiet -m new
    said=$(scripts/tidy 2>&1) || fail "it failed: $said"
    full=$(grep -v -- --checks "$work/tidy.log" | sed 's/.* //')
    [ "$full" = src/new.cpp ] || fail "all checks of: $full"
    mock_command clang-tidy 'echo "it is wrong"; exit 1'
    said=$(scripts/tidy src/new.cpp 2>&1) && fail "it succeeded"
    [[ $said == *"it is wrong"*"clang-tidy found the above" ]] || fail "it printed: $said"
    ;;
hook_refuses_a_badly_formatted_staged_source)
    make_commits
    put src/one.cpp 'a fault'
    ! commit || fail "it was committed"
    [[ $said == *src/one.cpp* ]] || fail "it printed: $said"
    ;;
hook_refuses_a_staged_script_with_warnings)
    make_commits
    put 'some tool' $'#!/bin/sh\na fault'
    ! commit || fail "it was committed"
    [[ $said == *"some tool"* ]] || fail "it printed: $said"
    ;;
hook_accepts_correct_files)
    make_commits
    put src/one.cpp 'right'
    put tool.sh 'right'
    put words.txt 'a fault'
    commit || fail "it was refused: $said"
    git rm --quiet src/one.cpp
    commit || fail "it was refused: $said"
    ;;
hook_checks_only_staged_content)
    make_commits
    put src/one.cpp 'right'
    echo 'a fault' >src/one.cpp
    echo 'a fault' >src/two.cpp
    commit || fail "it was refused: $said"
    git add src
    echo 'right' >src/one.cpp
    ! commit || fail "it was committed"
    [[ $said == *src/one.cpp*src/two.cpp* ]] || fail "it printed: $said"
    ;;
hook_reports_a_missing_tool_and_installs_nothing)
    make_commits
    put src/one.cpp 'right'
    rm "$work/clang-format"
    mkdir "$work/few"
    for tool in bash basename cat dirname env git grep mktemp rm sort; do
        ln -s "$(command -v "$tool")" "$work/few"
    done
    said=$(PATH=$work/few git commit -m change 2>&1) && fail "it was committed"
    [[ $said == *"clang-format is missing; ./test format installs it"* ]] || fail "it printed: $said"
    nothing_was_installed
    ;;
*)
    fail "unknown case"
    ;;
esac
