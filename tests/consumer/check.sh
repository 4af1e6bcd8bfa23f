#!/usr/bin/env bash
# Builds and runs tests/consumer against an installed lkit, once through its
# CMake package and once through pkg-config.
#
# usage: tests/consumer/check.sh PREFIX
set -euo pipefail

if [[ $# -ne 1 ]]; then
    echo "usage: $0 PREFIX" >&2
    exit 2
fi

prefix=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d /tmp/lkit_consumer.XXXXXX)
trap 'rm -rf "$work"' EXIT

echo "== consumer via CMake package (prefix $prefix)"
cmake -S "$here" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release
cmake --build "$work/cmake"
"$work/cmake/consumer"

echo "== consumer via pkg-config (prefix $prefix)"
pc_path="$prefix/lib/pkgconfig:$prefix/lib64/pkgconfig:$prefix/lib/x86_64-linux-gnu/pkgconfig"
flags=$(PKG_CONFIG_PATH="$pc_path" pkg-config --cflags --libs lkit)
libdir=$(PKG_CONFIG_PATH="$pc_path" pkg-config --variable=libdir lkit)
# shellcheck disable=SC2086 # flags must split into words
g++ -std=c++17 "$here/main.cpp" $flags -Wl,-rpath,"$libdir" -o "$work/consumer_pc"
"$work/consumer_pc"

echo "consumer check passed"
