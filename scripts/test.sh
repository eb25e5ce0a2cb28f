#!/usr/bin/env bash
# Installs what is missing, configures, builds and runs every test.
# Usage: scripts/test.sh [preset]   (default: "default"; also "asan-ubsan", "tsan")
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-default}

scripts/deps.sh
cmake --preset "$preset"
cmake --build --preset "$preset"
ctest --preset "$preset"
