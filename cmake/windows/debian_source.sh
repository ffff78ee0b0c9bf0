#!/usr/bin/env bash
# debian_source.sh PACKAGE FOLDER: fetches the source package from the mirror that the system uses and unpacks it as FOLDER. Works without
# root and leaves the system's own package lists alone.
set -euo pipefail

package=$1
folder=$(realpath -m "$2")
apt_state=$(dirname "$folder")/apt
mkdir -p "$apt_state/lists/partial" "$apt_state/parts"
release=$(. /etc/os-release; echo "$VERSION_CODENAME")
mirror=$(apt-get indextargets --format '$(REPO_URI)|$(RELEASE)' 'Created-By: Packages' | grep -m1 "|$release\$" | cut -d'|' -f1)
echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $mirror $release main" \
  > "$apt_state/sources.list"
apt=(apt-get -q -o Dir::Etc::sourcelist="$apt_state/sources.list" -o Dir::Etc::sourceparts="$apt_state/parts"
  -o Dir::State::lists="$apt_state/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= -o APT::Sandbox::User=)
[ -n "$(find "$apt_state/lists" -maxdepth 1 -name '*_Sources*' -print -quit)" ] || "${apt[@]}" update >&2
cd "$(dirname "$folder")"
"${apt[@]}" source --download-only "$package" >&2
rm -rf "$folder"
dpkg-source --no-check -x "${package}"_*.dsc "$folder" > /dev/null
