#!/usr/bin/env python3
"""Parses the statements the module sends (tests/corpus/statements.sql) and the SQL Server schema and
journal (db/schema_sqlserver.sql, db/journal_sqlserver.sql, batch by batch) with sqlfluff's T-SQL
grammar, a grammar written apart from ours, and fails naming every entry or batch it cannot parse.

The texts are handed to sqlfluff unchanged except for the four adjustments in for_sqlfluff(), each
for a construct SQL Server accepts and sqlfluff 1.4 does not.
"""

import json
import os
import re
import subprocess
import sys
import tempfile
import time
import unicodedata
from concurrent.futures import ThreadPoolExecutor

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), '..'))
CORPUS = 'tests/corpus/statements.sql'
SCHEMAS = ('db/schema_sqlserver.sql', 'db/journal_sqlserver.sql')

# The raw templater: statements hold '%' and braces that jinja would read. Without the byte
# limit sqlfluff would skip the long statements instead of parsing them.
CONFIG = """[sqlfluff]
dialect = tsql
templater = raw
large_file_skip_byte_limit = 0
"""


def corpus_entries(path):
    """(label, statement) for every entry, read as tests/corpus/statements.sql's header describes."""
    entries = []
    with open(path, encoding='utf-8') as f:
        lines = f.read().split('\n')
    name, body, number = None, [], 0
    for line in lines:
        if line.strip() == 'GO':
            if name is not None and ''.join(body).strip():
                number += 1
                entries.append(('%s entry %d "%s"' % (CORPUS, number, name), '\n'.join(body)))
            name, body = None, []
        elif not body and line.startswith('--'):
            comment = line[2:].strip()
            if not comment.startswith(('expect:', 'filled:')):
                name = comment   # the header's lines come before the first entry's name
        elif name is not None and (body or line.strip()):
            body.append(line)
    return entries


def schema_batches(path):
    """(label, batch) for every GO-separated batch of the schema script."""
    batches = []
    with open(path, encoding='utf-8') as f:
        lines = f.read().split('\n')
    start, body = 1, []
    for number, line in enumerate(lines, 1):
        if line.strip().upper() == 'GO':
            if ''.join(body).strip():
                batches.append(('%s batch at line %d' % (path, start), '\n'.join(body)))
            start, body = number + 1, []
        else:
            body.append(line)
    if ''.join(body).strip():
        batches.append(('%s batch at line %d' % (path, start), '\n'.join(body)))
    return batches


# Literals, quoted identifiers and comments, kept as they are; the code between them is adjusted.
LITERAL_OR_COMMENT = re.compile(r"'(?:[^']|'')*'|\[[^\]]*\]|\"[^\"]*\"|--[^\n]*|/\*.*?\*/", re.S)

# UPDATE(column), the trigger function that tells whether a column was set: sqlfluff 1.4 takes
# UPDATE only as the statement's keyword ("IF UPDATE(C1) SELECT 1;" and "SELECT UPDATE(C1);" are
# both unparsable for it). Written as the call of a function named [UPDATE], which parses.
TRIGGER_UPDATE = re.compile(r'\bUPDATE(?=\(\s*\w+\s*\))', re.I)


def ascii_letters(code):
    # sqlfluff 1.4 lexes only ASCII letters in names ("AS Priorità" is unparsable at the 'à'),
    # while SQL Server takes any Unicode letter: the accents are dropped for the parse.
    def plain(char):
        if ord(char) < 128:
            return char
        stripped = ''.join(c for c in unicodedata.normalize('NFKD', char) if not unicodedata.combining(c))
        return stripped if stripped.isascii() and stripped.isalnum() else char
    return ''.join(plain(c) for c in code)


# A parenthesised join, "JOIN (B JOIN C ON ...) ON ...": sqlfluff 1.4 has no rule for it. Without
# the parentheses ("JOIN B JOIN C ON ... ON ...") it is the same nesting, read from where the ON
# clauses stand, and sqlfluff parses that. The parentheses become blanks, so positions stay.
def unparenthesised_joins(text):
    blank = LITERAL_OR_COMMENT.sub(lambda m: ' ' * len(m.group(0)), text)
    dropped = set()
    for match in re.finditer(r'\bJOIN\s*\(', blank, re.I):
        opening = match.end() - 1
        if re.match(r'\s*SELECT\b', blank[opening + 1:], re.I):
            continue
        depth = 0
        for k in range(opening, len(blank)):
            depth += {'(': 1, ')': -1}.get(blank[k], 0)
            if depth == 0:
                dropped.update((opening, k))
                break
    return ''.join(' ' if i in dropped else c for i, c in enumerate(text))


def for_sqlfluff(text):
    text = unparenthesised_joins(text)
    code_only = LITERAL_OR_COMMENT.sub(' ', text)
    trigger = re.match(r'\s*CREATE\s+(OR\s+ALTER\s+)?TRIGGER\b', code_only, re.I) is not None
    pieces, last = [], 0
    for match in LITERAL_OR_COMMENT.finditer(text):
        pieces.append(adjust(text[last:match.start()], trigger))
        pieces.append(match.group(0))
        last = match.end()
    pieces.append(adjust(text[last:], trigger))
    return ''.join(pieces)


# FOR JSON PATH with its options, which writes a query's rows as JSON text: sqlfluff 1.4 has no
# rule for the clause. Blanked for the parse; the SELECT it closes is parsed as written.
FOR_JSON = re.compile(r'\bFOR\s+JSON\s+(?:PATH|AUTO)(?:\s*,\s*(?:WITHOUT_ARRAY_WRAPPER|INCLUDE_NULL_VALUES))*', re.I)


def adjust(code, trigger):
    code = ascii_letters(code)
    code = FOR_JSON.sub(lambda m: ' ' * len(m.group(0)), code)
    return TRIGGER_UPDATE.sub('[UPDATE]', code) if trigger else code


def unparsable(tree):
    """True when the JSON parse tree holds an unparsable or unlexable segment."""
    if isinstance(tree, dict):
        return any(key in ('unparsable', 'unlexable') or unparsable(value) for key, value in tree.items())
    if isinstance(tree, list):
        return any(unparsable(item) for item in tree)
    return False


def parse(folder, config):
    """Parses every file of the folder in one sqlfluff run; the names of those it could not parse."""
    run = subprocess.run(['sqlfluff', 'parse', '--config', config, '--format', 'json', '--nocolor', folder],
                         capture_output=True, text=True)
    try:
        results = json.loads(run.stdout)
    except ValueError:
        sys.stderr.write(run.stderr)
        raise SystemExit('check-sql: sqlfluff gave no parse result (exit %d)' % run.returncode)
    parsed = {os.path.basename(r['filepath']): r.get('segments') for r in results}
    return [name for name in os.listdir(folder) if parsed.get(name) is None or unparsable(parsed[name])]


def messages(config, path):
    run = subprocess.run(['sqlfluff', 'parse', '--config', config, '--nocolor', path], capture_output=True, text=True)
    return [line.strip() for line in (run.stdout + run.stderr).splitlines() if re.search(r'\|\s*PRS\s*\|', line)]


def main():
    started = time.monotonic()
    os.chdir(ROOT)
    entries = corpus_entries(CORPUS)
    batches = [batch for schema in SCHEMAS for batch in schema_batches(schema)]
    if not entries or not batches:
        raise SystemExit('check-sql: no statements read from %s or %s' % (CORPUS, ', '.join(SCHEMAS)))

    # Each distinct text once: many entries repeat a statement with the same values.
    texts, labels = {}, {}
    for label, text in entries + batches:
        name = texts.setdefault(for_sqlfluff(text), '%03d.sql' % (len(texts) + 1))
        labels.setdefault(name, []).append(label)

    # sqlfluff parses one folder per run and takes seconds for a long statement: one run per core,
    # each with a folder of files dealt by size.
    workers = max(1, min(os.cpu_count() or 1, 4))
    weights = [0] * workers
    with tempfile.TemporaryDirectory(prefix='check-sql-') as folder:
        config = os.path.join(folder, 'sqlfluff.cfg')
        with open(config, 'w', encoding='utf-8') as f:
            f.write(CONFIG)
        shares = [os.path.join(folder, 'part%d' % i) for i in range(workers)]
        where = {}
        for share in shares:
            os.mkdir(share)
        for text, name in sorted(texts.items(), key=lambda item: -len(item[0])):
            lightest = weights.index(min(weights))
            weights[lightest] += len(text)
            where[name] = os.path.join(shares[lightest], name)
            with open(where[name], 'w', encoding='utf-8') as f:
                f.write(text + '\n')
        with ThreadPoolExecutor(workers) as pool:
            failed = sorted(name for found in pool.map(lambda share: parse(share, config), shares) for name in found)

        for name in failed:
            for label in labels[name]:
                print('check-sql: sqlfluff cannot parse %s' % label)
            for line in messages(config, where[name]):
                print('    ' + line)

    failures = sum(len(labels[name]) for name in failed)
    print('check-sql: %d corpus entries and %d schema batches (%d distinct texts) through sqlfluff in %.1f s'
          % (len(entries), len(batches), len(labels), time.monotonic() - started))
    print('check-sql: %d passed, %d failed' % (len(entries) + len(batches) - failures, failures))
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
