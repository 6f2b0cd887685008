#!/bin/sh
# SPDX-License-Identifier: MIT
# Draws app/resources/splash.png anew from the simulator's scene.
# Usage: scripts/make_splash.sh <build folder>   (configured with the tests, such as build/dev)
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:?usage: scripts/make_splash.sh <build folder>}
cmake --build "$build" --target make_splash
"$build/bin/make_splash" "$root/app/resources/splash.png"
