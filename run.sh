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

# On a screen without a window manager, Wine's desktop draws the frames. The picture is taken when
# the screen has changed from the empty desktop and stays as it is for a second.
start_display 840x720
start_wine
desktop=(explorer /desktop=TolvanView,840x720)
run_wine "${desktop[@]}" >/dev/null 2>&1 &
sleep 2
empty=$(import -window root png:- | identify -format '%#' -)
run_wine "${desktop[@]}" build/windows/bin/TolvanView.exe "$mail" &
trap 'stop_wine; stop_display' EXIT
last=
same=0
for _ in $(seq 60); do
    sleep 0.5
    import -window root build/view.png
    now=$(identify -format '%#' build/view.png)
    same=$([ "$now" = "$last" ] && echo $((same + 1)) || echo 0)
    last=$now
    if [ "$now" != "$empty" ] && [ "$same" = 2 ]; then
        echo "The window is in build/view.png."
        exit 0
    fi
done
echo "run.sh: the window did not appear" >&2
exit 1
