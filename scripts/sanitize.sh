#!/usr/bin/env bash
# Builds everything with AddressSanitizer and UndefinedBehaviorSanitizer into ./build-asan and runs
# every test headless there. Any sanitizer report (memory error, leak, undefined behaviour) fails
# the test that made it, and so the run. Quiet on success but for the tests' summary.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-debian.sh

build=build-asan
configure=(-DCMAKE_BUILD_TYPE=Debug -DDISTINTA_SANITIZE=ON)
# The generator of an existing build folder cannot change; a new one takes Ninja when there is one.
if [ ! -f "$build/CMakeCache.txt" ] && command -v ninja >/dev/null; then
  configure+=(-G Ninja)
fi
if command -v ccache >/dev/null; then
  configure+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

log="$build/sanitize.log"
mkdir -p "$build"
if ! { cmake -S . -B "$build" "${configure[@]}" && cmake --build "$build" -j"$(nproc)"; } >"$log" 2>&1; then
  cat "$log"
  echo "sanitize.sh: the sanitizer build failed" >&2
  exit 1
fi

# A sanitizer's first report ends the program with an error status, and ctest counts it as failed.
# Leaks are looked for at exit.
export ASAN_OPTIONS="detect_leaks=1:halt_on_error=1:abort_on_error=1:check_initialization_order=1:\
strict_init_order=1:detect_stack_use_after_return=1:strict_string_checks=1:detect_odr_violation=2"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export QT_QPA_PLATFORM=offscreen

if ! ctest --test-dir "$build" --output-on-failure -j"$(nproc)" >"$log" 2>&1; then
  cat "$log"
  echo "sanitize.sh: the suite failed under the sanitizers. A leak's allocation stack through Qt is" \
    "whole only when the test runs again with fast_unwind_on_malloc=0 added to ASAN_OPTIONS." >&2
  exit 1
fi
grep -E '^[0-9]+% tests passed|^Total Test time' "$log"
