#!/usr/bin/env bash
# Installs the Debian packages the project needs. Idempotent: does nothing when all are present.
set -euo pipefail

packages=(
  build-essential cmake pkg-config ninja-build
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6sql6-odbc libgl-dev qt6-translations-l10n
  sqlite3 libsqlite3-dev
  unixodbc unixodbc-dev libsqliteodbc
  xvfb xauth
  fonts-dejavu-core poppler-utils
  libxlsxwriter-dev libminizip-dev unzip
  sqlfluff clang-format
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
  SUDO=sudo
else
  SUDO=
fi
echo "Installing: ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
