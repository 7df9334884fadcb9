#!/usr/bin/env bash
# Driver.sh PROGRAM WORK: tests how the driver reports an input that fails.
set -euo pipefail
program=$1 work=$2

rm -rf "$work"
mkdir -p "$work/corpus" "$work/failed"
printf 'good' >"$work/corpus/a-good-input"
printf '# words\n"b\\x61d"\n' >"$work/corpus.dict"
export TMPDIR=$work/failed

wrong()
{
    echo "$*"
    exit 1
}

"$program" "$work/corpus" 0 | grep -q '2 inputs in .* seed 1; the slowest took' ||
    wrong "no summary of the corpus alone"
said=$("$program" "$work/corpus" 1000 5 2>&1) && wrong "the failure was not seen"
[[ $said =~ "failed, seed 5: mutation "([0-9]+) ]] || wrong "it said: $said"
number=${BASH_REMATCH[1]}
input=$(ls "$work"/failed/*-seed-5-mutation-"$number")
[[ $said == *"The input: $input"* ]] || wrong "it said: $said"
"$program" "$input" 2>/dev/null && wrong "the input alone does not fail"

# A mutation depends only on its number and the seed, in every run.
cp "$input" "$work/first"
"$program" "$work/corpus" 1000 5 >/dev/null 2>&1 && wrong "the failure was not seen again"
cmp "$input" "$work/first" || wrong "another input the second time"
"$program" "$work/corpus" "$((number - 1))" 5 >/dev/null || wrong "an earlier one fails too"

cp "$input" "$work/corpus/a-bad-input"
said=$("$program" "$work/corpus" 0 2>&1) && wrong "the bad input was not seen"
[[ $said == *"seed 1: a-bad-input"* ]] || wrong "it said: $said"
"$program" "$work/none" 5 2>/dev/null && wrong "a missing folder was accepted"
"$program" "$work/corpus" x 2>/dev/null && wrong "x mutations were accepted"
exit 0
