#!/usr/bin/env bash
# Installs what building, running and testing Quillard needs on Debian 12,
# and only what is missing.
set -euo pipefail

packages=(
    build-essential cmake pkg-config g++-mingw-w64-x86-64-posix
    qtbase5-dev qtbase5-dev-tools libqt5sql5-sqlite libqt5svg5-dev
    libzip-dev libsqlite3-dev libx11-dev libxtst-dev libxkbcommon-dev
    python3 poppler-utils
    xvfb xauth xdotool fonts-dejavu-core
    dpkg-dev fakeroot file lintian desktop-file-utils appstream
)
# scripts/fuzz.sh alone needs Clang and its libFuzzer and sanitizer runtimes.
if [ "${QUILLARD_FUZZ_DEPS:-0}" = 1 ]; then
    packages+=(clang libclang-rt-14-dev)
fi

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
