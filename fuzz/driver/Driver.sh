#!/usr/bin/env bash
# Driver.sh PROGRAM WORK: tests the driver's summary, its reports about failing inputs and
# its checks of arguments. PROGRAM is the failing fuzz target. The folder WORK is replaced.
set -euo pipefail
program=$1 work=$2

rm -rf "$work"
mkdir -p "$work/corpus" "$work/failed"
printf 'good' >"$work/corpus/a-good-input"
printf '# words\n"b\\x61d"\n' >"$work/corpus.dict"
export TMPDIR=$work/failed

failed()
{
    echo "$*"
    exit 1
}

"$program" "$work/corpus" 0 | grep -q '2 inputs in .* seed 1; the slowest took' ||
    failed "no summary of the corpus alone"
output=$("$program" "$work/corpus" 1000 5 2>&1) && failed "the failure was not reported"
[[ $output =~ "failed, seed 5: mutation "([0-9]+) ]] || failed "unexpected output: $output"
number=${BASH_REMATCH[1]}
input=$(ls "$work"/failed/*-seed-5-mutation-"$number")
[[ $output == *"The input: $input"* ]] || failed "unexpected output: $output"
"$program" "$input" 2>/dev/null && failed "the input alone does not fail"

# A mutation must depend only on its number and the seed, so a second run must report the
# same input.
cp "$input" "$work/first"
"$program" "$work/corpus" 1000 5 >/dev/null 2>&1 && failed "the failure was not reported again"
cmp "$input" "$work/first" || failed "the second run reported a different input"
"$program" "$work/corpus" "$((number - 1))" 5 >/dev/null || failed "an earlier mutation fails too"

cp "$input" "$work/corpus/a-bad-input"
output=$("$program" "$work/corpus" 0 2>&1) && failed "the bad input was not reported"
[[ $output == *"seed 1: a-bad-input"* ]] || failed "unexpected output: $output"
"$program" "$work/none" 5 2>/dev/null && failed "a missing folder was accepted"
"$program" "$work/corpus" x 2>/dev/null && failed "x mutations were accepted"
exit 0
