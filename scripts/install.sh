# Sourced by the scripts at the root: installing what is missing, building a preset.
# Works on Debian 12, as root or with sudo; installs nothing when all is there.

# The packages of each set.
native_packages="g++ cmake ninja-build libicu-dev zlib1g-dev libminizip-dev googletest python3
    unzip zip p7zip-full"
bench_packages="libuchardet-dev manpages-ja libgmime-3.0-dev libglib2.0-dev libssl-dev
    pkg-config libonig-dev libpcre2-dev libre2-dev qtbase5-dev
    libqscintilla2-qt5-dev fonts-ipafont-gothic"
fuzz_packages="clang libclang-rt-14-dev"
windows_packages="g++-mingw-w64-x86-64-posix libz-mingw-w64-dev xz-utils wine64 wine xvfb xauth
    fonts-ipafont-gothic fonts-wine imagemagick"

# install_packages SET...: installs the packages of these sets that are not installed, telling
# which before it does. Fails when that cannot be done.
install_packages() {
    local missing=() set package packages
    for set in "$@"; do
        packages="${set}_packages"
        for package in ${!packages}; do
            dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
                missing+=("$package")
        done
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    echo "Installing: ${missing[*]}"
    local sudo=()
    if [ "$(id -u)" != 0 ]; then
        sudo=(sudo)
    fi
    export DEBIAN_FRONTEND=noninteractive
    "${sudo[@]}" apt-get update -qq &&
        "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" \
            </dev/null >/dev/null
}

# configure_and_build PRESET [TARGET...]
configure_and_build() {
    local preset=$1
    shift
    echo "Building preset $preset"
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null || return 1
    cmake --build "build/$preset" ${*:+--target "$@"} -- --quiet
}
