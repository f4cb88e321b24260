#!/bin/bash
# Unpacks the libraries that both targets are built from into DEST; installs nothing.
#   DEST/sysroot/usr/include   header-only libraries, for the native and the cross compiler alike
#   DEST/src/SQLiteCpp-3.2.1   SQLiteCpp with SQLite's amalgamation, from Debian's source package
# Uses package lists of its own, so the machine's apt configuration stays as it is. Safe to run again.
set -euo pipefail
dest=$(mkdir -p "$1" && cd "$1" && pwd)
stamp=$dest/.complete-2
[ -e "$stamp" ] && exit 0

apt=$dest/apt
rm -rf "$apt" "$dest/sysroot" "$dest/src"
mkdir -p "$apt"/{parts,lists/partial,cache/archives/partial} "$dest"/{sysroot,src}
if [ -e /etc/apt/sources.list.d/debian.sources ]; then
  sed 's/^Types:.*/Types: deb deb-src/' /etc/apt/sources.list.d/debian.sources > "$apt/parts/debian.sources"
fi
if [ -e /etc/apt/sources.list ]; then
  sed -nE 's/^deb(-src)? (.*)/deb \2\ndeb-src \2/p' /etc/apt/sources.list | sort -u > "$apt/parts/machine.list"
fi
options=(-q -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$apt/parts"
         -o Dir::State::Lists="$apt/lists" -o Dir::Cache="$apt/cache" -o APT::Sandbox::User=root)

apt-get "${options[@]}" update
cd "$apt"
apt-get "${options[@]}" download \
  libasio-dev libspdlog-dev libfmt-dev nlohmann-json3-dev libcli11-dev libutfcpp-dev
for package in *.deb; do
  dpkg-deb -x "$package" "$dest/sysroot"
done
apt-get "${options[@]}" source --download-only sqlitecpp
tar xf sqlitecpp_3.2.1.orig.tar.gz -C "$dest/src"
cd "$dest"
rm -rf "$apt"
touch "$stamp"
