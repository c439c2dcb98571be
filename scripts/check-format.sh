#!/usr/bin/env bash
# The C++ sources must stand as .clang-format lays them out; names every file that does not.
# `clang-format -i <file>` puts one right.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v clang-format >/dev/null || bash scripts/setup-debian.sh
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
  mapfile -t sources < <(git ls-files '*.cpp' '*.h')
else
  mapfile -t sources < <(find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print)
fi
unformatted=()
for source in "${sources[@]}"; do
  clang-format --dry-run --Werror "$source" >/dev/null 2>&1 || unformatted+=("$source")
done
if [ ${#unformatted[@]} -gt 0 ]; then
  echo "check-format: ${#unformatted[@]} files differ from .clang-format:" >&2
  printf '  %s\n' "${unformatted[@]}" >&2
  exit 1
fi
echo "check-format: ${#sources[@]} files as .clang-format lays them out"
