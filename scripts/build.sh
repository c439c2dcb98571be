#!/usr/bin/env bash
# Installs what is missing, configures and builds into ./build. A compiler warning stops the
# build (DISTINTA_WERROR). Ninja and ccache are used when the machine has them.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-debian.sh
options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DDISTINTA_WERROR=ON)
# A folder configured earlier keeps its generator.
if [ ! -f build/CMakeCache.txt ] && command -v ninja >/dev/null; then
  options+=(-G Ninja)
fi
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B build "${options[@]}" >/dev/null
cmake --build build -j"$(nproc)"
