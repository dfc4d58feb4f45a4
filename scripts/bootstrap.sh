#!/usr/bin/env bash
# Installs the Debian packages that building and testing orv base needs.
# Idempotent: when everything is present it does nothing and prints nothing.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config
  qtbase5-dev qtbase5-dev-tools
  libgtest-dev libgmock-dev libbenchmark-dev libspdlog-dev
  zlib1g-dev clang-format
  libeigen3-dev libgeos-dev
  libpugixml-dev shared-mime-info
  python3 ripgrep
  curl openssl wrk libhttp-parser-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
echo "bootstrap: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
