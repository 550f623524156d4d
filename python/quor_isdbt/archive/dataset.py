"""A file of SQLite with what many recordings carry."""

import hashlib
import os
import sqlite3
from typing import Iterable, Union

from quor_isdbt.archive.recordings import Recording
from quor_isdbt.archive.rows import Line, Reading

VERSION = 1

SCHEMA = """
CREATE TABLE IF NOT EXISTS recordings (
    recording INTEGER PRIMARY KEY,  -- made of the source: the same in all datasets
    source TEXT NOT NULL UNIQUE,    -- path or URL
    size INTEGER, modified REAL,    -- when it was read, in bytes and seconds since 1970
    first_time TEXT, last_time TEXT,    -- of the first and of the last packet
    duration REAL, packets INTEGER, packet_spacing INTEGER, bit_rate INTEGER, sections INTEGER, crc_errors INTEGER,
    sections_cut_short INTEGER, malformed_packets INTEGER, bytes_skipped INTEGER, discontinuities INTEGER,
    packets_lost INTEGER, duplicates INTEGER, transport_errors INTEGER, scrambled INTEGER
) STRICT;
CREATE TABLE IF NOT EXISTS failures (
    source TEXT PRIMARY KEY, size INTEGER, modified REAL, message TEXT NOT NULL
) STRICT, WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS sections ( -- each when it was new
    recording INTEGER NOT NULL REFERENCES recordings ON DELETE CASCADE, number INTEGER NOT NULL,
    pid INTEGER, table_name TEXT, table_id INTEGER, table_id_extension INTEGER, version INTEGER, current INTEGER,
    section_number INTEGER, last_section_number INTEGER, packet INTEGER, offset INTEGER, seconds REAL, time TEXT,
    same_version INTEGER, damaged INTEGER, error TEXT, fields TEXT,
    PRIMARY KEY (recording, number)
) STRICT, WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS versions ( -- where one of a table began, or its content changed within one (same_version)
    recording INTEGER NOT NULL REFERENCES recordings ON DELETE CASCADE, number INTEGER NOT NULL,
    pid INTEGER, table_name TEXT, table_id INTEGER, table_id_extension INTEGER, version INTEGER, former_version INTEGER,
    same_version INTEGER, packet INTEGER, offset INTEGER, seconds REAL, time TEXT,
    PRIMARY KEY (recording, number)
) STRICT, WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS intervals ( -- in seconds, between the sections of a table, PCRs or PTSs
    recording INTEGER NOT NULL REFERENCES recordings ON DELETE CASCADE, number INTEGER NOT NULL,
    pid INTEGER, what TEXT NOT NULL, table_id INTEGER, count INTEGER, sum REAL, minimum REAL, maximum REAL,
    longest_packet INTEGER, longest_offset INTEGER, longest_seconds REAL, longest_time TEXT, buckets TEXT,
    open_at_begin REAL, open_at_end REAL,
    PRIMARY KEY (recording, number)
) STRICT, WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS faults (
    recording INTEGER NOT NULL REFERENCES recordings ON DELETE CASCADE, id TEXT NOT NULL,
    fault TEXT, severity TEXT, about TEXT, text TEXT, pid INTEGER, table_name TEXT, table_id INTEGER,
    table_id_extension INTEGER, packet INTEGER, offset INTEGER, seconds REAL, time TEXT,
    PRIMARY KEY (recording, id)
) STRICT, WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS alarms (
    recording INTEGER NOT NULL REFERENCES recordings ON DELETE CASCADE, id TEXT NOT NULL,
    check_name TEXT, indicator TEXT, severity TEXT, text TEXT, pid INTEGER, table_name TEXT, table_id INTEGER,
    table_id_extension INTEGER, packet INTEGER, offset INTEGER, seconds REAL, time TEXT, end_seconds REAL, end_time TEXT,
    duration REAL, limit_value REAL, limit_source TEXT, proposal INTEGER, count INTEGER, worst REAL,
    PRIMARY KEY (recording, id)
) STRICT, WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS applications (
    recording INTEGER NOT NULL REFERENCES recordings ON DELETE CASCADE, number INTEGER NOT NULL,
    service_id INTEGER, pid INTEGER, table_id_extension INTEGER, organization_id INTEGER, application_id INTEGER,
    name TEXT, verdict TEXT, text TEXT, starts_after REAL, steps TEXT,
    PRIMARY KEY (recording, number)
) STRICT, WITHOUT ROWID;
CREATE INDEX IF NOT EXISTS recordings_by_time ON recordings (first_time);
CREATE INDEX IF NOT EXISTS sections_by_table ON sections (table_name, table_id_extension, time);
CREATE INDEX IF NOT EXISTS versions_by_table ON versions (table_name, table_id_extension, time);
CREATE INDEX IF NOT EXISTS silent_changes ON versions (table_name, time) WHERE same_version;
CREATE INDEX IF NOT EXISTS intervals_by_what ON intervals (what, maximum);
CREATE INDEX IF NOT EXISTS faults_by_kind ON faults (fault, time);
CREATE INDEX IF NOT EXISTS alarms_by_check ON alarms (check_name, time);
CREATE INDEX IF NOT EXISTS applications_by_verdict ON applications (verdict);
"""


class Dataset:
    """One process writes at a time. All of a recording is written at once, in the place of what was there of it."""

    def __init__(self, path: Union[str, "os.PathLike[str]"]) -> None:
        self.connection = sqlite3.connect(path)
        self.connection.execute("PRAGMA foreign_keys = ON")
        version, = self.connection.execute("PRAGMA user_version").fetchone()
        if version == 0:
            self.connection.executescript(f"BEGIN IMMEDIATE; {SCHEMA} PRAGMA user_version = {VERSION}; COMMIT;")
        elif version != VERSION:
            raise ValueError(f"{os.fspath(path)}: a dataset of version {version}, not {VERSION}")
        self._columns = {name: [column[1] for column in self.connection.execute(f"PRAGMA table_info({name})")]
                         for name, in self.connection.execute("SELECT name FROM sqlite_schema WHERE type = 'table'")}

    def __enter__(self) -> "Dataset":
        return self

    def __exit__(self, *_: object) -> None:
        self.connection.close()

    def has(self, recording: Recording) -> bool:
        """Whether it was read as it is."""
        return recording.size is not None and self.connection.execute(
            "SELECT 1 FROM recordings WHERE source = :source AND size = :size AND modified = :modified UNION ALL "
            "SELECT 1 FROM failures WHERE source = :source AND size = :size AND modified = :modified",
            of(recording)).fetchone() is not None

    def write(self, readings: Iterable[tuple[Recording, Reading]]) -> None:
        """All of them or, when it fails, none."""
        with self.connection:
            for recording, reading in readings:
                self._replace(recording, reading)

    def _replace(self, recording: Recording, reading: Reading) -> None:
        key = key_of(recording.source)
        for name in ("recordings", "failures"):
            self.connection.execute(f"DELETE FROM {name} WHERE source = ?", (recording.source,))
        for name, rows in reading.rows.items():
            whose = of(recording) if name == "recordings" else {}
            self._insert(name, [{**row, **whose, "recording": key} for row in rows])
        if reading.failure is not None:
            known = of(recording) if reading.lasts else {"source": recording.source}
            self._insert("failures", [{**known, "message": reading.failure}])

    def _insert(self, table: str, rows: list[Line]) -> None:
        columns = self._columns[table]
        places = ", ".join("?" * len(columns))
        self.connection.executemany(f"INSERT OR IGNORE INTO {table} VALUES ({places})",
                                    ([row.get(column) for column in columns] for row in rows))


def of(recording: Recording) -> Line:
    return {"source": recording.source, "size": recording.size, "modified": recording.modified}


def key_of(source: str) -> int:
    """63 bits of a digest: no two sources of an archive will have the same."""
    return int.from_bytes(hashlib.sha256(source.encode()).digest()[:8], "big") >> 1
