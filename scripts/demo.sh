#!/usr/bin/env bash
# Installs what is missing, configures, builds and runs the library's main job.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake --preset default >/dev/null
cmake --build --preset default --target zk_example
./build/default/examples/zk_example "$@"
