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

# start_wine: makes the prefix when there is none, and keeps Wine's server and its services up
# until stop_wine. Started here, they do not hold on to the output of the first program.
start_wine() {
    "$root/scripts/wine-prefix.sh" </dev/null >/dev/null 2>&1
    wineserver -p
    run_wine cmd /c exit </dev/null >/dev/null 2>&1
}

stop_wine() {
    wineserver -k || true
}
