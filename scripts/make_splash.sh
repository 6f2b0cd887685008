#!/bin/sh
# SPDX-License-Identifier: MIT
# Draws app/resources/splash.png anew from the simulator's scene.
# Usage: scripts/make_splash.sh <build folder>   (with the target veldron_unit built in it)
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:?usage: scripts/make_splash.sh <build folder>}
unit=$(find "$build" -name libveldron_unit.a | head -n 1)
common=$(find "$build" -name libveldron_common.a | head -n 1)
if [ -z "$unit" ] || [ -z "$common" ]; then
    echo "make_splash.sh: build the target veldron_unit in $build first" >&2
    exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# shellcheck disable=SC2046
"${CXX:-g++}" -std=c++20 -O2 -fPIC -I"$root" "$root/scripts/make_splash.cpp" -o "$work/make_splash" \
    $(pkg-config --cflags Qt6Core) "$unit" "$common" $(pkg-config --libs Qt6Core)
"$work/make_splash" "$root/app/resources/splash.png"
