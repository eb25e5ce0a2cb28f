#!/usr/bin/env bash
# Installs the Debian packages the project needs, only those that are missing.
# Non-interactive; safe to run again.
# Usage: scripts/deps.sh [fuzz]
#   fuzz  also the fuzzing toolchain: clang and its sanitizer runtimes, which
#         hold libFuzzer (only a recommendation of clang, so named here)
# ZKUTILS_EXTRA_PACKAGES may name more packages, separated by blanks.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config
    qtbase5-dev libpng-dev zlib1g-dev libx11-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    libeigen3-dev libboost-dev
    xvfb xauth xdotool
)
if [ "${1:-}" = fuzz ]; then
    packages+=(clang libclang-rt-14-dev)
fi
if [ -n "${ZKUTILS_EXTRA_PACKAGES:-}" ]; then
    read -r -a extra <<<"$ZKUTILS_EXTRA_PACKAGES"
    packages+=("${extra[@]}")
fi

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing missing packages: ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
    sudo_cmd=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
