#!/usr/bin/env python3
"""Writes the journal's triggers into db/journal_sqlite.sql and db/journal_sqlserver.sql.

Each script keeps its hand-written head (tables, indexes, comments); everything from its first
CREATE TRIGGER on is generated here from the columns of db/schema_sqlite.sql, so that a column
added to a journaled table reaches both journals. Run it from the repository's root after such a
change, then review the diff:

    python3 scripts/journal_triggers.py
"""

import re
import textwrap
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
SCHEMA = (ROOT / "db" / "schema_sqlite.sql").read_text(encoding="utf-8")

# Per journaled table: its key, and how a journal row finds its company, type, node, subject,
# guid and change stamp ({R} is the row, NEW or OLD). "names" are the columns an update's
# before-image carries besides the changed ones: what names the row to a reader. A node's are its
# link (parent, subject, period), which the checks of an undo read whole; they are written only
# when the update changes one of them ("names_when_changed"), as a node's billing, priorities or
# description change far more often, and its subject is in the journal row's own columns. A
# node's update keeps no guid either: its rows are found by the node's id, and a changed guid is
# in its images.
TABLES = {
    "GD01_TIPODISTINTA": dict(
        short="GD01", key="GD01_ID", ditta="{R}.GD01_DITTA_CG18", tipo="{R}.GD01_ID", nodo="NULL",
        tipocf="NULL", clifor="NULL", guid="{R}.GD01_GUID", utente="{R}.GD01_UTENTEVAR",
        gruppo="{R}.GD01_GRUPPOVAR", names=["GD01_ID", "GD01_CODICE"]),
    "GD02_DISTINTA": dict(
        short="GD02", key="GD02_ID", ditta="{R}.GD02_DITTA_CG18", tipo="{R}.GD02_ID_GD01", nodo="{R}.GD02_ID",
        tipocf="{R}.GD02_TIPOCF_CG44", clifor="{R}.GD02_CLIFOR_CG44", guid="{R}.gd02_guid",
        utente="{R}.GD02_UTENTEVAR", gruppo="{R}.GD02_GRUPPOVAR", update_guid="NULL",
        names=["GD02_IDPARENT_GD02", "GD02_TIPOCF_CG44", "GD02_CLIFOR_CG44", "GD02_DATAINIZIOVAL",
               "GD02_DATAFINEVAL"],
        names_when_changed=True),
    "GD03_PARAMETRI": dict(
        short="GD03", key="GD03_DITTA_CG18", ditta="{R}.GD03_DITTA_CG18", tipo="NULL", nodo="NULL",
        tipocf="NULL", clifor="NULL", guid="NULL", utente="NULL", gruppo="NULL", names=["GD03_DITTA_CG18"]),
    "GD12_PROMO": dict(
        short="GD12", key="GD12_ID", ditta="{R}.GD12_DITTA_CG18",
        tipo="(SELECT GD02_ID_GD01 FROM GD02_DISTINTA WHERE GD02_ID = {R}.GD12_ID_GD02)", nodo="{R}.GD12_ID_GD02",
        tipocf="NULL", clifor="NULL", guid="NULL", utente="NULL", gruppo="NULL",
        names=["GD12_ID", "GD12_ID_GD02", "GD12_ID_MG94"]),
    "WF02_STATORIGA": dict(
        short="WF02", key="WF02_ID",
        ditta="(SELECT GD02_DITTA_CG18 FROM GD02_DISTINTA WHERE gd02_guid = {R}.WF02_GUID)",
        tipo="(SELECT GD02_ID_GD01 FROM GD02_DISTINTA WHERE gd02_guid = {R}.WF02_GUID)",
        nodo="(SELECT GD02_ID FROM GD02_DISTINTA WHERE gd02_guid = {R}.WF02_GUID)",
        tipocf="NULL", clifor="NULL", guid="{R}.WF02_GUID", utente="{R}.WF02_UTENTEVAR",
        gruppo="{R}.WF02_GRUPPOVAR", names=["WF02_ID", "WF02_GUID"]),
}

JOURNAL_COLUMNS = """    INSERT INTO GD91_RIGHESTORICO (GD91_ID_GD90, GD91_TABELLA, GD91_AZIONE, GD91_CHIAVE, GD91_DITTA_CG18,
                                   GD91_ID_GD01, GD91_ID_GD02, GD91_TIPOCF_CG44, GD91_CLIFOR_CG44, GD91_GUID,
                                   GD91_DATAORA, GD91_UTENTE, GD91_GRUPPO, GD91_PRIMA, GD91_DOPO)"""


def columns(table):
    body = re.search(r"CREATE TABLE " + table + r" \((.*?)\n\);", SCHEMA, re.S).group(1)
    return [line.split()[0] for line in (raw.strip() for raw in body.split("\n")) if line and not line.startswith("--")]


def wrapped(first, pieces, indent, width=100):
    lines, current = [], first
    for piece in pieces:
        if len(current) + len(piece) > width:
            lines.append(current.rstrip())
            current = indent + piece
        else:
            current += piece
    lines.append(current)
    return "\n".join(lines)


def whole_image(table, row):
    cols = columns(table)
    pieces = ["'%s', %s.%s" % (c, row, c) + (", " if i < len(cols) - 1 else ")") for i, c in enumerate(cols)]
    return wrapped("json_object(", pieces, " " * 23)


def is_stamp(column):
    # Who changed a row last and when: the journal row holds them (GD91_UTENTE, GD91_GRUPPO,
    # GD91_DATAORA). The before-image keeps the old stamp for an undo to put back; an update that
    # changes nothing else records nothing.
    return column.upper().endswith(("_DATAVAR", "_GRUPPOVAR", "_UTENTEVAR"))


def changed(column, row):
    return "CASE WHEN NEW.%s IS NOT OLD.%s THEN ',\"%s\":' || json_quote(%s.%s) ELSE '' END" % (
        column, column, column, row, column)


def formatted(template, args):
    pieces = ["'%s', " % template] + [a + (", " if i < len(args) - 1 else ")") for i, a in enumerate(args)]
    return wrapped("format(", pieces, " " * 18)


def before_image(table, names, names_when_changed=False):
    # The names, then each column the update changed, stamp included, as one JSON object built by
    # one format(): an unchanged column costs a comparison, and the text is assembled once.
    others = [c for c in columns(table) if c not in names]
    if not names_when_changed:
        template = "{" + ",".join('"%s":%%s' % c for c in names) + "%s" * len(others) + "}"
        return formatted(template, ["json_quote(OLD.%s)" % c for c in names] + [changed(c, "OLD") for c in others])
    # The names only when one of them changes: then they come whole, the unchanged ones too. Every
    # piece starts with a comma; the first one is dropped (the trigger's WHEN makes sure there is
    # one).
    tests = ["NEW.%s IS NOT OLD.%s" % (c, c) + (" OR " if i < len(names) - 1 else " THEN ")
             for i, c in enumerate(names)]
    named = "%s%s ELSE '' END" % (
        wrapped("CASE WHEN ", tests, " " * 28),
        formatted("".join(',"%s":%%s' % c for c in names), ["json_quote(OLD.%s)" % c for c in names]))
    return "'{' || substr(%s, 2)" % formatted("%s" * (len(others) + 1) + "}",
                                              [named] + [changed(c, "OLD") for c in others])


def after_image(table):
    # Only what the update changed, stamp aside: a reader takes the rest from the before-image.
    # Every piece starts with a comma; the first one is dropped (the trigger's WHEN makes sure
    # there is one).
    cols = [c for c in columns(table) if not is_stamp(c)]
    return "'{' || substr(%s, 2)" % formatted("%s" * len(cols) + "}", [changed(c, "NEW") for c in cols])


def sqlite_triggers():
    out = []
    for table, d in TABLES.items():
        cols = columns(table)
        for event, row, action in (("INSERT", "NEW", "I"), ("UPDATE", "NEW", "U"), ("DELETE", "OLD", "D")):
            f = lambda s: s.format(R=row)  # noqa: E731
            when = ""
            if event == "UPDATE":
                compared = [c for c in cols if not is_stamp(c)]
                pieces = ["NEW.%s IS NOT OLD.%s" % (c, c) + (" OR " if i < len(compared) - 1 else "")
                          for i, c in enumerate(compared)]
                when = wrapped("WHEN ", pieces, " " * 5) + "\n"
            out.append("CREATE TRIGGER TR_%s_STORICO_%s AFTER %s ON %s\n%sBEGIN" % (d["short"], event, event, table, when))
            out.append(JOURNAL_COLUMNS)
            out.append("    SELECT (SELECT GD90_ID FROM GD90_OPERAZIONI WHERE GD90_INDAPERTA = 1), '%s', '%s', %s.%s,"
                       % (table, action, row, d["key"]))
            out.append("           %s, %s, %s," % (f(d["ditta"]), f(d["tipo"]), f(d["nodo"])))
            out.append("           %s, %s," % (f(d["tipocf"]), f(d["clifor"])))
            guid = d.get("update_guid", d["guid"]) if event == "UPDATE" else d["guid"]
            out.append("           %s, datetime('now', 'localtime'), %s, %s,"
                       % (f(guid), f(d["utente"]), f(d["gruppo"])))
            if event == "UPDATE":
                before = before_image(table, d["names"], d.get("names_when_changed", False))
                after = after_image(table)
            else:
                before = "NULL" if event == "INSERT" else whole_image(table, "OLD")
                after = "NULL" if event == "DELETE" else whole_image(table, "NEW")
            out.append("           %s," % before)
            out.append("           %s;" % after)
            out.append("END;\n")
    return "\n".join(out) + "\n"


def sqlserver_triggers():
    out = []
    for table, d in TABLES.items():
        cols = columns(table)
        key = d["key"]

        def pick(expr):
            if expr == "NULL":
                return "NULL"
            return "ISNULL(%s, %s)" % (expr.format(R="I"), expr.format(R="X")) if "{R}" in expr else expr

        out.append("CREATE TRIGGER TR_%s_STORICO ON %s AFTER INSERT, UPDATE, DELETE\nAS\nBEGIN" % (d["short"], table))
        out.append("    SET NOCOUNT ON;")
        out.append("    IF NOT EXISTS (SELECT 1 FROM inserted) AND NOT EXISTS (SELECT 1 FROM deleted) RETURN;")
        out.append("    DECLARE @OPERAZIONE INT = CAST(SESSION_CONTEXT(N'GD90_ID') AS INT);")
        out.append(JOURNAL_COLUMNS)
        out.append("    SELECT @OPERAZIONE, '%s'," % table)
        out.append("           CASE WHEN X.%s IS NULL THEN 'I' WHEN I.%s IS NULL THEN 'D' ELSE 'U' END," % (key, key))
        out.append("           ISNULL(I.%s, X.%s), %s," % (key, key, pick(d["ditta"])))
        out.append("           %s," % pick(d["tipo"]))
        out.append("           %s," % pick(d["nodo"]))
        out.append("           %s, %s," % (pick(d["tipocf"]), pick(d["clifor"])))
        out.append("           %s, GETDATE(), %s, %s," % (pick(d["guid"]), pick(d["utente"]), pick(d["gruppo"])))
        for row, end in (("X", ","), ("I", "")):
            image = ("(SELECT " + ", ".join("%s.%s" % (row, c) for c in cols)
                     + " FOR JSON PATH, WITHOUT_ARRAY_WRAPPER, INCLUDE_NULL_VALUES)")
            text = "CASE WHEN %s.%s IS NULL THEN NULL ELSE CAST(%s AS NVARCHAR(MAX)) END" % (row, key, image) + end
            out.append("\n".join(textwrap.wrap(text, 100, initial_indent=" " * 11, subsequent_indent=" " * 15)))
        out.append("      FROM inserted I")
        out.append("           FULL OUTER JOIN deleted X ON X.%s = I.%s" % (key, key))
        out.append("     WHERE I.%s IS NULL OR X.%s IS NULL" % (key, key))
        text = ("OR EXISTS (SELECT " + ", ".join("I.%s" % c for c in cols) + " EXCEPT SELECT "
                + ", ".join("X.%s" % c for c in cols) + ");")
        out.append("\n".join(textwrap.wrap(text, 100, initial_indent=" " * 8, subsequent_indent=" " * 12)))
        out.append("END;\nGO\n")
    return "\n".join(out) + "\n"


def rewrite(name, triggers):
    path = ROOT / "db" / name
    text = path.read_text(encoding="utf-8")
    head = text[: text.index("\nCREATE TRIGGER ") + 1]
    path.write_text(head + triggers.rstrip("\n") + "\n", encoding="utf-8")


if __name__ == "__main__":
    rewrite("journal_sqlite.sql", sqlite_triggers())
    rewrite("journal_sqlserver.sql", sqlserver_triggers())
