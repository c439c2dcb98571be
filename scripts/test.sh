#!/usr/bin/env bash
# Everything CI checks, in order, headless: the sources' layout, a build where a compiler warning
# is an error, every test, the statements against a T-SQL grammar, then every test again built
# with AddressSanitizer and UndefinedBehaviorSanitizer. The first failure stops the run.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup-debian.sh
bash scripts/check-format.sh
bash scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j"$(nproc)"

# The production dialect, parsed by a grammar that is not ours (sqlfluff's T-SQL): the statement
# corpus and the SQL Server schema.
bash scripts/check-sql.sh

# The suite once more under the sanitizers (build-asan); any report fails it.
bash scripts/sanitize.sh
