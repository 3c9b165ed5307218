#!/bin/sh
# setup.sh -- installs the Debian packages that building, running and testing need. What is there is left alone, so that
# nothing is downloaded on a machine that has them all.
set -eu

packages="
  cmake ninja-build ccache g++ libfreetype-dev googletest libbenchmark-dev
  clang libclang-rt-dev llvm
  g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
  wine wine64 fonts-wine fonts-ipafont-gothic
  libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1 libxxf86vm1
  xvfb libx11-dev xdotool imagemagick
"

missing=
for package in $packages; do
  status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

echo "Installing$missing"
as_root=
[ "$(id -u)" = 0 ] || as_root=sudo
$as_root apt-get update -qq
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
