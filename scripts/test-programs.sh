#!/usr/bin/env bash
# Runs tolvan-show over good, broken and hostile input:
#   scripts/test-programs.sh TOLVAN-SHOW
# Whatever it is given, it ends within a time, with one line on standard error when it shows
# nothing, and with something to see otherwise.
set -euo pipefail
cd "$(dirname "$0")/.."
show=$(realpath "$1")
folder=$(mktemp -d)
trap 'chmod -R u+rwx "$folder"; rm -rf "$folder"' EXIT
passed=0

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# refuses STATUS FILE...: exit status, nothing on standard output, one line on standard error.
refuses() {
    local status=$1 got=0
    shift
    timeout 60 "$show" "$@" >"$folder/out" 2>"$folder/err" || got=$?
    [ "$got" = "$status" ] || fail "status $got, not $status: $*"
    [ ! -s "$folder/out" ] || fail "output: $*"
    [ "$(wc -l <"$folder/err")" = 1 ] || fail "not one line of error: $*"
    passed=$((passed + 1))
}

# shows FILE: exit status 0 and some output.
shows() {
    timeout 60 "$show" "$@" >"$folder/out" 2>"$folder/err" || fail "status $?: $*"
    [ -s "$folder/out" ] || fail "no output: $*"
    [ ! -s "$folder/err" ] || fail "errors: $*"
    passed=$((passed + 1))
}

for sample in samples/*.eml; do
    shows "$sample"
    shows --json "$sample"
    python3 -c 'import json, sys; json.load(open(sys.argv[1], encoding="utf-8"))' "$folder/out" ||
        fail "no JSON: $sample"
    shows --svg "$folder/out.svg" "$sample"
    python3 -c 'import sys, xml.dom.minidom as m; m.parse(sys.argv[1])' "$folder/out.svg" ||
        fail "no XML: $sample"
done

mkdir "$folder/closed"
: >"$folder/empty.eml"
head -c 100000000 /dev/zero >"$folder/zeros.eml"
python3 - "$folder" <<'PY'
import sys
folder = sys.argv[1]

def write(name, data):
    with open(f"{folder}/{name}", "wb") as f:
        f.write(data)

write("endless_header.eml", b"Subject: a\r\n" + b" folded folded folded\r\n" * 1_000_000)
write("many_fields.eml", b"X-Field: value\n" * 2_000_000)
write("nested.eml", b"".join(
    b"Content-Type: multipart/mixed; boundary=b%d\r\n\r\n--b%d\r\n" % (i, i) for i in range(10_000))
    + b"\r\ninnermost\r\n")
write("long_line.eml", b"Content-Type: text/plain; charset=Shift_JIS\n\n" + b"\x82\xa0" * 25_000_000)
write("cut_escape.eml", b"Content-Type: text/plain; charset=ISO-2022-JP\n\n\x1b$B$\"\x1b")
PY
chmod 000 "$folder/closed"

refuses 2
refuses 2 --no-such-option x
refuses 1 "$folder/missing.eml"
refuses 1 "$folder"
refuses 1 "$folder/empty.eml"
if [ "$(id -u)" != 0 ]; then
    refuses 1 "$folder/closed/mail.eml"
fi
refuses 1 "$folder/closed"
for mail in zeros endless_header many_fields nested long_line cut_escape; do
    shows "$folder/$mail.eml"
done
echo "tolvan-show: $passed cases passed."
