#!/usr/bin/env bash
# Installs the built library into a temporary prefix, then configures, builds
# and runs an outside CMake project and an outside pkg-config build against it.
set -euo pipefail
build_dir=$1
consumer_src=$2
cmake_bin=${3:-cmake}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$cmake_bin" --install "$build_dir" --prefix "$work/prefix" >/dev/null
test -f "$work/prefix/include/ZKUtils/ZKUtils.h"

"$cmake_bin" -S "$consumer_src" -B "$work/build" -G Ninja \
    -DCMAKE_PREFIX_PATH="$work/prefix" -DCMAKE_BUILD_TYPE=Release >/dev/null
"$cmake_bin" --build "$work/build" >/dev/null
out=$("$work/build/zk_consumer")
echo "$out"
test "$out" = "consumer: ok"

# The same program built with nothing but pkg-config's flags.
libdir=$(find "$work/prefix" -name zkutils.pc -printf '%h\n' | head -n 1)
export PKG_CONFIG_PATH="$libdir"
g++ -std=c++17 -fPIC "$consumer_src/consumer.cpp" -o "$work/zk_consumer_pc" \
    $(pkg-config --cflags --libs zkutils) -Wl,-rpath,"$(pkg-config --variable=libdir zkutils)"
out=$("$work/zk_consumer_pc")
test "$out" = "consumer: ok"
echo "pkg-config consumer: ok"

# The installed tool finds the installed library and runs its demo.
"$work/prefix/bin/zkutil" --help >/dev/null
"$work/prefix/bin/zkutil" demo "$work/demo" >/dev/null
echo "installed zkutil demo: ok"
