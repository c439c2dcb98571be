#!/usr/bin/env bash
# Builds everything and runs every test headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j"$(nproc)"

# ---------------------------------------------------------------------------------------------
# The production dialect, parsed by a grammar that is not ours (sqlfluff's T-SQL): the statement
# corpus and the SQL Server schema.
bash scripts/check-sql.sh
