#!/usr/bin/env bash
# Checks the production dialect with a grammar that is not ours: every statement of the corpus
# (tests/corpus/statements.sql) and every batch of db/schema_sqlserver.sql must parse with
# sqlfluff's T-SQL grammar. Fails naming each entry or batch that does not.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v sqlfluff >/dev/null || bash scripts/setup-debian.sh
exec python3 scripts/check_sql.py
