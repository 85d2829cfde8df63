#!/usr/bin/env bash
# Installs every Debian package the build, the tests, the benchmarks and the fuzzers need.
# Idempotent: asks dpkg first and only calls apt-get when something is missing, so a second run
# takes well under a second. Never interactive.
set -euo pipefail

packages=(
  build-essential g++ cmake ninja-build ccache pkg-config git
  qtbase5-dev qtbase5-dev-tools libqt5serialport5-dev libqt5serialbus5-dev
  qttools5-dev qttools5-dev-tools qttranslations5-l10n
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  clang libclang-rt-dev llvm
  xvfb xauth socat xdotool imagemagick
  lintian help2man appstream file
  # peers of the display benchmark only; it skips a peer that is missing
  libqcustomplot-dev libqwt-qt5-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "setup: installing ${missing[*]}" >&2
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then sudo_cmd=(sudo -n); fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
