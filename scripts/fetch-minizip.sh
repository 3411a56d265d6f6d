#!/usr/bin/env bash
# Brings the sources of minizip, as Debian packages them, for a system that has no package of it:
#   scripts/fetch-minizip.sh FOLDER
# Afterwards FOLDER holds unzip.c, ioapi.c and their headers. Does nothing when they are there.
# Needs apt, xz and the network, but no rights: its package lists are its own, inside FOLDER.
set -euo pipefail
folder=$(realpath -m "$1")
[ ! -f "$folder/unzip.c" ] || exit 0

mkdir -p "$folder/apt/sources" "$folder/apt/lists/partial" "$folder/apt/cache/archives/partial"
cd "$folder/apt"
# The system's own sources, for source packages.
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ ! -f "$list" ] || sed -E 's/^deb([[:space:]])/deb-src\1/' "$list" >"sources/$(basename "$list")"
done
for list in /etc/apt/sources.list.d/*.sources; do
    [ ! -f "$list" ] || sed -E 's/^Types:.*/Types: deb-src/' "$list" >"sources/$(basename "$list")"
done

apt=(apt-get -qq
    -o Dir::Etc::sourcelist=/dev/null
    -o Dir::Etc::sourceparts="$PWD/sources"
    -o Dir::State::lists="$PWD/lists"
    -o Dir::Cache="$PWD/cache"
    -o APT::Sandbox::User="$(id -un)")
"${apt[@]}" update
# Unpacked by tar and xz, as what unpacks source packages may not be there.
"${apt[@]}" source --download-only minizip
mkdir -p unpacked
tar -xf minizip_*.orig.tar.* -C unpacked
source=$(dirname "$(find unpacked -name unzip.c -print -quit)")
# unzip.c last: it is the sign that everything is there.
cp "$source"/{ioapi.c,ioapi.h,crypt.h,unzip.h} "$folder"
cp "$source/unzip.c" "$folder"
rm -rf "$folder/apt"
