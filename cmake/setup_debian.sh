#!/usr/bin/env bash
# setup_debian.sh [LIST]: installs those packages of the list (debian-packages.txt) that are missing, as root or through
# sudo. Where that can not be done it names them and goes on: the build tells whether it can do without.
set -euo pipefail

list=${1:-$(dirname "${BASH_SOURCE[0]}")/debian-packages.txt}

tell() {
  printf 'setup: %s\n' "$@" >&2
}

is_installed() {
  [ "$(dpkg-query -W -f '${Status}' "$1" 2>/dev/null)" = "install ok installed" ]
}

# The lines of the list of which no alternative is installed.
missing_lines() {
  local line name
  while IFS= read -r line; do
    for name in ${line//|/ }; do
      if is_installed "$name"; then continue 2; fi
    done
    printf '%s\n' "$line"
  done < <(sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$list")
}

first_available() {
  local name
  for name in ${1//|/ }; do
    if apt-cache show --no-all-versions "$name" >/dev/null 2>&1; then
      echo "$name"
      return
    fi
  done
  tell "no package of '$1' is known to this system"
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@" >&2; else sudo "$@" >&2; fi
}

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  tell "this is no Debian or Ubuntu; what is needed is listed in $list"
  exit 0
fi

mapfile -t lines < <(missing_lines)
if [ ${#lines[@]} -eq 0 ]; then exit 0; fi

if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
  tell "these packages are missing, and only an administrator can install them:" "${lines[@]}"
  exit 0
fi

tell "installing what is missing:" "${lines[@]}"
as_root apt-get update -q || tell "the lists of packages could not be brought up to date"
packages=()
for line in "${lines[@]}"; do
  name=$(first_available "$line")
  if [ -n "$name" ]; then packages+=("$name"); fi
done
if [ ${#packages[@]} -gt 0 ]; then
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${packages[@]}" ||
    tell "not all packages could be installed"
fi
