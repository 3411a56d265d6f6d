#!/usr/bin/env bash
# Shows a mail: its text in the terminal, then the window of TolvanView.
#   ./run.sh [FILE.eml|FOLDER]     (default: the first of samples/; of a folder its first mail)
# Installs what is missing, and says what, before it builds. The window opens on DISPLAY; where
# there is none, on a virtual screen, of which build/view.png is a picture. Without Wine the
# picture is drawn natively, as build/view.svg.
set -euo pipefail
cd "$(dirname "$0")"
root=$PWD
. scripts/install.sh
. scripts/display.sh

mail=${1:-samples}
if [ -d "$mail" ]; then
    first=$(find "$mail" -maxdepth 1 -name '*.eml' | LC_ALL=C sort | sed -n 1p)
    if [ -z "$first" ]; then
        echo "run.sh: $mail: there is no .eml file in this folder" >&2
        exit 1
    fi
    mail=$first
fi

install_packages native
configure_and_build linux tolvan-show
build/linux/viewer/tolvan-show "$mail"

if ! install_packages windows; then
    build/linux/viewer/tolvan-show --svg build/view.svg "$mail" >/dev/null
    echo "Wine and MinGW-w64 cannot be installed here: no window. The picture is build/view.svg."
    exit 0
fi
configure_and_build windows TolvanView
. scripts/wine-env.sh

if [ -n "${DISPLAY:-}" ]; then
    scripts/wine-prefix.sh >/dev/null 2>&1
    run_wine build/windows/bin/TolvanView.exe "$mail"
    exit
fi

# What is on the screen counts as drawn when it stays the same and shows more than a window frame.
start_display 840x720
start_wine
run_wine build/windows/bin/TolvanView.exe "$mail" &
window=$!
trap 'kill $window 2>/dev/null || true; stop_wine; stop_display' EXIT
last=
for _ in $(seq 60); do
    sleep 0.5
    kill -0 $window 2>/dev/null || break
    import -window root build/view.png
    now=$(identify -format '%#' build/view.png)
    if [ "$now" = "$last" ] && [ "$(identify -format '%k' build/view.png)" -gt 30 ]; then
        echo "The window is in build/view.png."
        exit 0
    fi
    last=$now
done
echo "run.sh: the window did not appear" >&2
exit 1
