#!/bin/sh
# End-to-end test of tolvan-show: exit status, what goes to which output, and time, for good
# files, broken mails and what is no mail at all. TolvanView is tested for what it refuses.
#
#   tests/viewer/show_test.sh PATH/TO/tolvan-show [PATH/TO/TolvanView]
#
# TLVN_RUNNER, when set, is the program that runs them (scripts/wine-run.sh); the Windows build
# draws no pictures.
set -u
show=$(realpath "$1")
view=${2:+$(realpath "$2")}
program=$show
samples=$(cd "$(dirname "$0")/../../samples" && pwd)
work=$(mktemp -d)
trap 'chmod -R u+rwx "$work"; rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

# expect NAME STATUS ERROR_LINES ARGUMENT...: runs the program within twenty seconds. Without error
# lines there is output, with them there is none.
expect() {
    name=$1 status=$2 lines=$3
    shift 3
    timeout 60 ${TLVN_RUNNER:-} "$program" "$@" >out 2>err
    got=$?
    got_lines=$(wc -l <err)
    output=0
    [ -s out ] && output=1
    if [ "$got" -ne "$status" ] || [ "$got_lines" -ne "$lines" ] || [ "$output" -eq "$lines" ]; then
        echo "FAILED $name: status $got, wanted $status; $got_lines error lines, wanted $lines"
        head -c 500 err
        failures=$((failures + 1))
    fi
}

# check NAME COMMAND...: the command succeeds.
check() {
    name=$1
    shift
    if ! "$@"; then
        echo "FAILED $name"
        failures=$((failures + 1))
    fi
}

# python CODE: succeeds, too, where there is no Python.
python() {
    ! command -v python3 >/dev/null || python3 -c "$1"
}

# put_text MAIL FILE: writes the text in the mail's JSON.
put_text() {
    expect "$1 as JSON" 0 0 --json "$1"
    check "$1 as JSON" python 'import json; json.load(open("out", "rb"))'
    sed -n '/^  "text":/p' out >"$2"
}

repeat() { # TEXT BYTES
    yes -- "$1" | head -c "$2"
}

# The text encoded anew is a mail with the same text.
for mail in "$samples"/*.eml; do
    expect "$mail" 0 0 "$mail"
    expect "$mail as a source" 0 0 --source "$mail"
    mv out source.eml
    put_text "$mail" text
    put_text source.eml again
    check "$mail has a text" [ -s text ]
    check "$mail has its text in the source, too" cmp -s text again
done

if [ -z "${TLVN_RUNNER:-}" ]; then
    expect "picture" 0 0 --svg picture.svg "$samples/01-iso-2022-jp.eml"
    check "picture" python 'import xml.dom.minidom; xml.dom.minidom.parse("picture.svg")'
    # The mail is shown, but the picture is not made.
    timeout 60 "$show" --svg missing/picture.svg "$samples/01-iso-2022-jp.eml" >out 2>err
    check "picture in a missing folder" [ $? -eq 1 ]
    check "picture in a missing folder is told" [ "$(wc -l <err)" -eq 1 ]
fi

: >empty.eml
mkdir folder locked
cp "$samples/01-iso-2022-jp.eml" locked/a.eml
cp "$samples/01-iso-2022-jp.eml" unreadable.eml
chmod 0 locked unreadable.eml

# What both programs refuse.
refuse() {
    expect "two files" 2 1 a.eml b.eml
    expect "missing file" 1 1 missing.eml
    expect "missing folder" 1 1 missing/a.eml
    expect "empty file" 1 1 empty.eml
    # Root may read everything.
    if [ "$(id -u)" -ne 0 ]; then
        expect "unreadable file" 1 1 unreadable.eml
        expect "file in a locked folder" 1 1 locked/a.eml
    fi
}
refuse
expect "no argument" 2 1
expect "folder" 1 1 folder
if [ -n "$view" ]; then
    program=$view
    refuse
    program=$show
fi
expect "unknown option" 2 1 --none a.eml
expect "no picture file" 2 1 --svg
expect "JSON and source" 2 1 --json --source a.eml
expect "pattern" 0 0 --regexp '{a|b}*'
expect "pattern that does not compile" 1 1 --regexp '(a'
expect "pattern and file" 2 1 --regexp a a.eml
expect "help" 0 0 --help

cp "$samples/01-iso-2022-jp.eml" -- -dash.eml
expect "name with a dash" 0 0 -- -dash.eml

truncate -s 100000000 zeros.eml
expect "zeros" 0 0 zeros.eml
repeat "Subject: x" 50000000 >header.eml
expect "header without end" 0 0 --json header.eml
printf 'Subject: cut' >cut.eml
expect "header cut off" 0 0 cut.eml
head -c 20000000 /dev/urandom >random.eml
expect "random bytes" 0 0 --json random.eml
i=0
while [ $i -lt 10000 ]; do
    printf 'Content-Type: multipart/mixed; boundary=b%d\n\n--b%d\n' $i $i
    i=$((i + 1))
done >nested.eml
expect "nesting" 0 0 nested.eml
printf 'Subject: \033[31m\n\n\033]0;x\007\n' >escape.eml
expect "escape sequences" 0 0 escape.eml
check "escape sequences do not reach the terminal" [ "$(tr -dc '\033\007' <out | wc -c)" -eq 0 ]

[ $failures -eq 0 ] && echo "programs: all passed"
exit $((failures > 0))
