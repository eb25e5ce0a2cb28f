#!/usr/bin/env bash
# Installs what is missing, configures, builds and runs the library's main job:
# zkutil demo, the library's typical request end to end.
# Usage: scripts/demo.sh [DIR]   (default: a new folder in the temporary folder)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake --preset default >/dev/null
cmake --build --preset default --target zkutil
./build/default/tools/zkutil/zkutil demo "$@"
