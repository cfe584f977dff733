"""Databases that somebody made to do harm. Each maker takes a good database's copy and a folder outside it whose files
must stay as they are."""

import contextlib
import os
import random
import sqlite3
import struct

MAKERS = []


def maker(function):
    MAKERS.append(function)
    return function


@contextlib.contextmanager
def _opened(path):
    """The file for writing, with no heed to what its schema forbids."""
    with contextlib.closing(sqlite3.connect(path)) as database, database:
        database.execute("PRAGMA ignore_check_constraints = ON")
        yield database


def _run(path, *statements):
    with _opened(path) as database:
        for statement in statements:
            database.execute(*statement) if isinstance(statement, tuple) else database.execute(statement)


def _texts(path, text, tables="Indicator_en Area_en Source_en Unit_en Subpop_en Footnote_en".split()):
    """Puts the text before every text of these tables."""
    with _opened(path) as database:
        for table in tables:
            for row in database.execute(f'PRAGMA table_info("{table}")').fetchall():
                name, kind = row[1], row[2].upper()
                if "TEXT" in kind and not name.lower().endswith(("gid", "nid", "id")):
                    database.execute(f'UPDATE "{table}" SET "{name}" = ? || "{name}"', (text,))


def _victim(outside):
    """A database of somebody else with two rows."""
    victim = os.path.join(outside, "victim.sqlite")
    if not os.path.exists(victim):
        _run(victim, "CREATE TABLE Data (NId INTEGER, Datavalue TEXT)", "INSERT INTO Data VALUES (1, 'a'), (2, 'b')")
    return victim


@maker
def link_to_another_file(path, outside):
    link = (_victim(outside),)
    _run(
        path,
        "CREATE TABLE MSysLinks (Name TEXT PRIMARY KEY COLLATE NOCASE, File TEXT, Password TEXT, SourceTable TEXT)",
        ("INSERT INTO MSysLinks VALUES ('Data', ?, '', 'Data')", link),
        ("INSERT INTO MSysLinks VALUES ('DataKept', ?, '', 'Data')", link),
    )


@maker
def link_instead_of_a_table(path, outside):
    link_to_another_file(path, outside)
    _run(path, "DROP TABLE Data")


@maker
def journal_of_another_file(path, outside):
    """A rollback journal with no pages whose super-journal is a file outside."""
    name = _victim(outside).encode()
    sector, page = 512, 4096
    head = b"\xd9\xd5\x05\xf9\x20\xa1\x63\xd7" + struct.pack(">IIIII", 0, 0, os.path.getsize(path) // page, sector, page)
    tail = struct.pack(">I", 0x40000000 // page + 1) + name + struct.pack(">II", len(name), sum(name) & 0xFFFFFFFF) + head[:8]
    with open(path + "-journal", "wb") as journal:
        journal.write(head.ljust(sector, b"\0") + tail)


@maker
def journal_of_zeros(path, outside):
    """A journal that puts zeros over the whole file."""
    page = 4096
    pages = os.path.getsize(path) // page
    head = b"\xd9\xd5\x05\xf9\x20\xa1\x63\xd7" + struct.pack(">IIIII", pages, 0, pages, 512, page)
    with open(path + "-journal", "wb") as journal:
        journal.write(head.ljust(512, b"\0"))
        for number in range(1, pages + 1):
            journal.write(struct.pack(">I", number) + bytes(page) + struct.pack(">I", 0))


@maker
def write_ahead_log_of_noise(path, outside):
    with open(path, "r+b") as file:
        file.seek(18)
        file.write(b"\2\2")
    with open(path + "-wal", "wb") as log:
        log.write(struct.pack(">IIIIIIII", 0x377F0682, 3007000, 4096, 0, 1, 2, 3, 4) + random.Random(1).randbytes(20000))


@maker
def triggers_on_everything(path, outside):
    for table in ("Data", "Indicator_en", "Area_en", "Indicator_Unit_Subpop"):
        for event in ("INSERT", "UPDATE", "DELETE"):
            _run(path, f"CREATE TRIGGER t_{table}_{event} AFTER {event} ON \"{table}\" BEGIN DELETE FROM TimePeriod; END")


@maker
def trigger_that_fills_memory(path, outside):
    _run(path, "CREATE TRIGGER fill AFTER UPDATE ON Data BEGIN UPDATE Footnote_en SET FootNote = hex(zeroblob(300000000)); END")


@maker
def view_without_end(path, outside):
    _run(
        path,
        "DROP TABLE TimePeriod",
        "CREATE VIEW TimePeriod AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
        "SELECT i AS TimePeriodNId, hex(zeroblob(1000)) AS TimePeriod, -1 AS DataExists FROM n",
    )


@maker
def generated_column(path, outside):
    _run(path, 'ALTER TABLE Area_en ADD COLUMN "AreaBig" TEXT AS (hex(zeroblob(50000000)))')


@maker
def generated_name(path, outside):
    _run(path, "ALTER TABLE Indicator_en RENAME COLUMN Indicator TO Kept",
         "ALTER TABLE Indicator_en ADD COLUMN Indicator TEXT AS (hex(zeroblob(50000000)))")


@maker
def check_that_calls_functions(path, outside):
    _run(path, "PRAGMA writable_schema = ON",
         "UPDATE sqlite_master SET sql = replace(sql, ')', ', CHECK (length(hex(zeroblob(200000000))) > 0))') "
         "WHERE name = 'TimePeriod' AND sql LIKE '%)'")


@maker
def index_on_an_expression(path, outside):
    _run(path, "CREATE INDEX costly ON TimePeriod (length(hex(zeroblob(2000000))))")


@maker
def many_tables(path, outside):
    _run(path, *[f"CREATE TABLE more_{number} (a, b, c)" for number in range(5000)])


@maker
def columns_of_blobs(path, outside):
    _run(path, "UPDATE Data SET Datavalue = zeroblob(100000)", "UPDATE Area_en SET AreaName = zeroblob(1000)")


@maker
def values_that_are_none(path, outside):
    values = ["nan", "-nan", "inf", "1e400", "n/a", "=cmd|'/C calc'!A0", "0x1F", "1,5", "", " ", "\t5", "'", "--1", "1e-400"]
    with _opened(path) as database:
        keys = [row[0] for row in database.execute("SELECT rowid FROM Data")]
        database.executemany("UPDATE Data SET Datavalue = ? WHERE rowid = ?",
                             [(values[i % len(values)], key) for i, key in enumerate(keys)])


@maker
def markup_in_names(path, outside):
    pipe = os.path.join(outside, "pipe")
    if not os.path.exists(pipe):
        os.mkfifo(pipe)
    _texts(path, f"<b>x</b><img src='{pipe}'><img src='/dev/zero'><a href='file:///etc/passwd'>y</a>")


@maker
def quotes_in_names(path, outside):
    _texts(path, "'\"[]{}%*?#!|~ ~&;\\--/*\n\t")
    with _opened(path) as database:
        for key, text in database.execute("SELECT TimePeriodNId, TimePeriod FROM TimePeriod").fetchall():
            database.execute("UPDATE TimePeriod SET TimePeriod = ? WHERE TimePeriodNId = ?", (text + "'\"", key))


@maker
def long_names(path, outside):
    _texts(path, "long name " * 6000)


@maker
def names_of_a_megabyte(path, outside):
    _texts(path, "m" * 1_000_000, ["Area_en", "Indicator_en"])


@maker
def blank_names(path, outside):
    with _opened(path) as database:
        database.execute("UPDATE Indicator_en SET Indicator = ' '")
        database.execute("UPDATE Area_en SET AreaName = char(10) || char(8238)")


def _sheet(path, text):
    with _opened(path) as database:
        for table in ("Indicator_en", "Source_en"):
            names = [row[1] for row in database.execute(f'PRAGMA table_info("{table}")')]
            for name in names:
                if "info" in name.lower():
                    database.execute(f'UPDATE "{table}" SET "{name}" = ?', (text,))


@maker
def sheet_with_a_pipe(path, outside):
    pipe = os.path.join(outside, "pipe")
    if not os.path.exists(pipe):
        os.mkfifo(pipe)
    _sheet(path, f"<html><body><h1>Sheet</h1><img src='{pipe}'><img src='/dev/zero'></body></html>")


@maker
def sheet_of_nested_tables(path, outside):
    _sheet(path, "<html><body>" + "<table><tr><td>" * 3000 + "deep" + "</td></tr></table>" * 3000)


@maker
def sheet_of_divisions(path, outside):
    _sheet(path, "<div>" * 200_000 + "deep")


@maker
def area_of_a_long_id(path, outside):
    with _opened(path) as database:
        key = database.execute("SELECT min(AreaNId) FROM Area_en").fetchone()[0]
        database.execute("UPDATE Area_en SET AreaID = ? WHERE AreaNId = ?", ("ABC" * 40000, key))


@maker
def areas_of_one_id(path, outside):
    with _opened(path) as database:
        database.execute("UPDATE Area_en SET AreaID = 'AAA', AreaLevel = abs(random() % 9)")


@maker
def numbers_out_of_range(path, outside):
    _run(path, "UPDATE Area_en SET AreaLevel = 9223372036854775807", "UPDATE Data SET SourceNId = -9223372036854775808")


@maker
def empty_tables(path, outside):
    with _opened(path) as database:
        names = [row[0] for row in database.execute("SELECT name FROM sqlite_master WHERE type = 'table'")]
        for name in names:
            if not name.startswith("sqlite_") and name != "Language":
                database.execute(f'DELETE FROM "{name}"')


@maker
def a_pipe_by_the_name(path, outside):
    os.remove(path)
    os.mkfifo(path)


@maker
def a_device_by_the_name(path, outside):
    os.remove(path)
    os.symlink("/dev/zero", path)


@maker
def a_folder_by_the_name(path, outside):
    os.remove(path)
    os.mkdir(path)


@maker
def a_file_of_holes(path, outside):
    with open(path, "r+b") as file:
        file.truncate(1 << 36)


@maker
def an_empty_file(path, outside):
    open(path, "wb").close()
