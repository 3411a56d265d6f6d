#!/usr/bin/env bash
# Shows a mail, of a folder its first one, as text in the terminal; then opens TolvanView with it.
#   ./run.sh [FILE.eml|FOLDER]     (default: samples/)
# Installs what is missing, and says what, before it builds. The window opens on DISPLAY; where
# there is none, on a virtual screen, of which build/view.png is a picture. Without Wine the
# picture is drawn natively, as build/view.svg.
set -euo pipefail
opened=samples
if [ -n "${1:-}" ]; then
    opened=$(realpath -m --relative-to="$(dirname "$0")" -- "$1")
fi
cd "$(dirname "$0")"
root=$PWD
. scripts/install.sh
. scripts/display.sh

# Empty for a folder that has mbox files or other folders only.
mail=$opened
if [ -d "$opened" ]; then
    mail=$(find "$opened" -maxdepth 1 -name '*.eml' | LC_ALL=C sort | sed -n 1p)
fi

install_packages native
configure_and_build linux tolvan-show
if [ -n "$mail" ]; then
    build/linux/viewer/tolvan-show "$mail"
fi

if ! install_packages windows; then
    if [ -z "$mail" ]; then
        echo "run.sh: $opened: no .eml file in this folder, and no window without Wine" >&2
        exit 1
    fi
    build/linux/viewer/tolvan-show --svg build/view.svg "$mail" >/dev/null
    echo "Wine and MinGW-w64 cannot be installed here: no window. The picture is build/view.svg."
    exit 0
fi
configure_and_build windows TolvanView
. scripts/wine-env.sh

if [ -n "${DISPLAY:-}" ]; then
    scripts/wine-prefix.sh >/dev/null 2>&1
    set_managed Y
    run_wine build/windows/bin/TolvanView.exe "$opened"
    exit
fi

# On a screen without a window manager, Wine's desktop draws the frames. The picture is taken when
# the screen has changed from the empty desktop and stays as it is for a second.
start_display 1000x700
start_wine
desktop=(explorer /desktop=TolvanView,1000x700)
run_wine "${desktop[@]}" >/dev/null 2>&1 &
sleep 2
empty=$(import -window root png:- | identify -format '%#' -)
run_wine "${desktop[@]}" build/windows/bin/TolvanView.exe "$opened" &
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
