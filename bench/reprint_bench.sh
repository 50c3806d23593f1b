#!/usr/bin/env bash
# Local reprint of 100 letters beside "merge --jobs" of the same letters, whole programs, files and all: each three
# times, by turns, in milliseconds a letter, and their ratio (1.3 is the aim). Usage: bench/reprint_bench.sh [BIN]
set -euo pipefail
letters=100
programs=$(realpath "${1:-build/bench/bin}")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
data=$folder/data
"$programs/zemlo-letters" init --demo --data "$data" >/dev/null 2>&1
sql() { sqlite3 "$data/server/server.db" "$1"; }
chosen=$(sql "SELECT SEQ_NBR || ':' || CUST_ID FROM letter_history WHERE LTR_TYP_ID = '101'
  AND PRNT_STTS_CD IN ('P', 'S') AND DCMT_FILE_TXT = 'REG101_2401.docx' ORDER BY SEQ_NBR DESC")
count=0
options=()
for one in $chosen; do
  [ "$count" -lt "$letters" ] || break
  # Whom no letter can be sent to today has no context.
  "$programs/zemlo-letters" context --type 101 --customer "${one##*:}" --data "$data" --out "$folder/${one%%:*}.xml" >/dev/null 2>&1 || continue
  options+=(--letter "${one%%:*}")
  count=$((count + 1))
  printf '%s\t%s\t%s\n' "$data/templates/REG101_2401.docx" "$folder/${one%%:*}.xml" "$folder/out-${one%%:*}.pdf" >>"$folder/jobs"
done
[ -f "$data/templates/REG101_2401.docx" ] || sed -i "s#$data/templates#$PWD/data/templates#" "$folder/jobs"
milliseconds() { local start; start=$(date +%s%N); "$@" >/dev/null 2>"$folder/errors" || { cat "$folder/errors" >&2; exit 1; }; echo $(($(date +%s%N) - start)); }
reprint=0 merge=0
for _ in 1 2 3; do
  reprint=$((reprint + $(milliseconds "$programs/zemlo-letters" reprint "${options[@]}" --data "$data")))
  merge=$((merge + $(milliseconds "$programs/zemlo-letters" merge --jobs "$folder/jobs")))
done
awk -v r="$reprint" -v m="$merge" -v n=$((3 * count)) \
  'BEGIN { printf "%d letters: reprint %.1f ms each, merge --jobs %.1f ms each, ratio %.2f\n", n / 3, r / n / 1e6, m / n / 1e6, r / m }'
