# Sourced: the environment in which the project's Windows programs run under Wine.
# Needs $root, the top folder of the project.
export WINEPREFIX="${WINEPREFIX:-$root/build/wine}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES='mscoree,mshtml='
mkdir -p "$(dirname "$WINEPREFIX")"

# run_wine PROGRAM.exe [ARGUMENT...]: on a Japanese Windows, or the one that TLVN_WINE_LOCALE
# names.
run_wine() {
    env LC_ALL="${TLVN_WINE_LOCALE:-ja_JP.UTF-8}" wine "$@"
}

# set_managed Y|N: whether a window manager looks after the windows. Where there is none, Wine would
# wait two seconds for it whenever one is hidden.
set_managed() {
    run_wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$1" /f </dev/null >/dev/null 2>&1
}

# start_wine: makes the prefix when there is none, and keeps Wine's server and its services up
# until stop_wine, for a screen without a window manager. Started here, they do not hold on to the
# output of the first program.
start_wine() {
    "$root/scripts/wine-prefix.sh" </dev/null >/dev/null 2>&1
    wineserver -p
    set_managed N
}

stop_wine() {
    wineserver -k || true
}
