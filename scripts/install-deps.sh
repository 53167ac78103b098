#!/usr/bin/env bash
# Installs every build and test dependency from Debian's packages. Safe to run again:
# when everything is present it does nothing.
set -euo pipefail

packages=(
    build-essential cmake pkg-config ccache clang-format git
    libwxgtk3.2-dev liblua5.3-dev libglut-dev libglu1-mesa-dev libgl1-mesa-dri
    libegl-dev libepoxy-dev libfreetype-dev libfontconfig-dev
    libpng-dev zlib1g-dev libtiff-dev libjpeg-dev libdeflate-dev libfast-float-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth xdotool imagemagick gcovr
    libopenexr-dev parallel slurm-wlm munge ffmpeg
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "install-deps: installing ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null
