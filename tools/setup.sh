#!/usr/bin/env bash
# Installs what the build, the program and its tests need on a Debian 12 machine; silent when all is there.
set -euo pipefail

packages=(
  g++ cmake ninja-build ccache pkg-config git python3
  qt6-base-dev qt6-base-dev-tools qt6-translations-l10n qt6-svg-dev qt6-multimedia-dev libgl1-mesa-dev libxcb1-dev
  libsqlite3-dev sqlite3 libicu-dev libcrypto++-dev libsimpleini-dev libshp-dev mdbtools-dev
  libreoffice-calc libreoffice-impress libreoffice-draw libreoffice-dev
  libgtest-dev libgmock-dev python3-xlrd gnumeric clang-format-14
  xvfb xauth xdotool fonts-noto-core fonts-dejavu-core fonts-liberation
  poppler-utils locales
)

missing=()
for package in "${packages[@]}"; do
  [[ $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) == *'install ok installed'* ]] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "setup: these packages are missing, and neither root nor sudo is there: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
