#!/usr/bin/env bash
# Builds the editor and starts it on the embedded demo database (created on first run).
# Extra arguments go to the program; see `build/bin/distinta --help`.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
exec build/bin/distinta "$@"
