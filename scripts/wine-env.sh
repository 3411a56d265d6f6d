# Sourced: the environment in which the project's Windows programs run under Wine.
# Needs $root, the top folder of the project.
export WINEPREFIX="${WINEPREFIX:-$root/build/wine}"
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES='mscoree,mshtml='
export LC_ALL="${TLVN_WINE_LOCALE:-ja_JP.UTF-8}"
mkdir -p "$(dirname "$WINEPREFIX")"
