#!/usr/bin/env bash
# debian_source.sh PACKAGE FOLDER: fetches the source package from Debian's mirror and unpacks it as FOLDER. Works without
# root and leaves the system's own package lists alone.
set -euo pipefail

package=$1
folder=$(realpath -m "$2")
lists=$(dirname "$folder")/source-lists
mkdir -p "$lists/partial" "$lists/no-parts"
release=$(. /etc/os-release; echo "$VERSION_CODENAME")
echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] http://deb.debian.org/debian $release main" \
  > "$lists/sources.list"
apt=(apt-get -q -o Dir::Etc::sourcelist="$lists/sources.list" -o Dir::Etc::sourceparts="$lists/no-parts" -o Dir::State::lists="$lists"
  -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= -o APT::Sandbox::User=)
[ -n "$(find "$lists" -maxdepth 1 -name '*_Sources*' -print -quit)" ] || "${apt[@]}" update >&2
cd "$(dirname "$folder")"
"${apt[@]}" source --download-only "$package" >&2
rm -rf "$folder"
dpkg-source --no-check -x "${package}"_*.dsc "$folder" > /dev/null
