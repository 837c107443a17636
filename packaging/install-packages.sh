#!/bin/sh
# Installs what is missing of the packages that the project needs, with apt-get, as root or through sudo.
# On a machine without apt-get it only says what to install.
set -eu
list="$(dirname "$0")/debian-packages.txt"
wanted=$(grep -v '^#' "$list")

if ! command -v apt-get >/dev/null 2>&1; then
    echo "Install the counterparts of the packages in $list, then run this again." >&2
    exit 0
fi

missing=""
for package in $wanted; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=""
[ "$(id -u)" = 0 ] || as_root="sudo"
echo "Installing:$missing"
$as_root apt-get update -q
# shellcheck disable=SC2086
DEBIAN_FRONTEND=noninteractive $as_root apt-get install -y -q --no-install-recommends $missing
