#!/usr/bin/env bash
# Installs the engine into a folder of its own and builds a C program against it there, by pkg-config and by CMake; both
# must run and find a satellite where it is.
#
# Usage: build_against.sh BUILD SOURCE C-COMPILER
set -euo pipefail

build=$1 user=$2 compiler=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" --component library >"$work/log"
pc=$(find "$work/prefix" -name glintcore.pc)
lib=$(dirname "$(dirname "$pc")")

# Moved after it was installed: nothing in it may point to where it was built for.
read -ra flags <<<"$(PKG_CONFIG_PATH=$(dirname "$pc") pkg-config --define-variable=prefix="$work/prefix" --cflags --libs glintcore)"
"$compiler" -std=c99 -Wall -Wextra -Wpedantic -Werror "$user/engine_user.c" "${flags[@]}" -lm -o "$work/by_pkg_config"
LD_LIBRARY_PATH=$lib "$work/by_pkg_config"

cmake -S "$user" -B "$work/cmake" -DCMAKE_C_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$work/prefix" >>"$work/log"
cmake --build "$work/cmake" >>"$work/log"
"$work/cmake/engine_user"
