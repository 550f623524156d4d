"""What the lines of a recording become in a dataset."""

import json
from dataclasses import dataclass, field
from datetime import datetime, timedelta, timezone
from typing import Any, Optional

Line = dict[str, Any]

# SQL has other uses for these words.
COLUMNS = {"table": "table_name", "check": "check_name", "limit": "limit_value"}

ROOM = 512 << 20  # bytes, about, for the rows of a recording: one that says something new all the time has no end of them
OVERHEAD = 500  # of a row, beside its texts


@dataclass
class Reading:
    """What came of reading a recording."""

    rows: dict[str, list[Line]] = field(default_factory=dict)  # of each table
    failure: Optional[str] = None  # why it was not read to its end
    lasts: bool = True  # the failure is the recording's own: it would be the same another time


class Rows:
    """Takes the lines of one recording."""

    def __init__(self) -> None:
        self._stream: Optional[Line] = None
        self._tables: dict[str, list[Line]] = {
            name: [] for name in ("sections", "versions", "intervals", "faults", "applications")}
        self._alarms: dict[str, Line] = {}
        self._versions: dict[tuple[Any, ...], Any] = {}
        self._room = ROOM
        self._left_out = 0

    def take(self, line: Line) -> None:
        kind = line["type"]
        if kind == "section":
            self._take_section(line)
        elif kind == "alarm":
            self._take_alarm(line)
        elif kind == "pid_statistics":
            self._take_interval("PCR", line["pcr_intervals"], line)
            self._take_interval("PTS", line["pts_intervals"], line)
        elif kind == "table_statistics":
            self._take_interval(line["table"] or f"0x{line['table_id']:02X}", line["intervals"], line)
        elif kind in ("fault", "application"):
            self._add(kind + "s", line)
        elif kind == "stream":
            self._stream = row_of({**line, "last_time": line["time"]})

    @property
    def are_whole(self) -> bool:
        return self._stream is not None

    @property
    def remark(self) -> Optional[str]:
        """On what is not there."""
        return f"it has {self._left_out} rows more than there is room for" if self._left_out else None

    def end(self) -> dict[str, list[Line]]:
        """All rows; none when the lines are not those of a whole reading."""
        if self._stream is None:
            return {}
        tables = {"recordings": [self._stream], **self._tables, "alarms": list(self._alarms.values())}
        for rows in tables.values():
            for number, row in enumerate(rows):
                row["number"] = number
                for prefix in ("", "end_"):
                    row[prefix + "time"] = row.get(prefix + "time") or self._time_of(row.get(prefix + "seconds"))
        return tables

    def _add(self, table: str, line: Line) -> bool:
        row = row_of(line)
        if not self._has_room(row):
            return False
        self._tables[table].append(row)
        return True

    def _has_room(self, row: Line) -> bool:
        self._room -= OVERHEAD + sum(len(value) for value in row.values() if isinstance(value, str))
        self._left_out += self._room < 0
        return self._room >= 0

    def _take_section(self, line: Line) -> None:
        line["error"] = line.get("error", {}).get("name")
        self._add("sections", line)
        if line["version"] is None or not line["current"] or line["damaged"]:
            return
        place = (line["pid"], line["table_id"], line["table_id_extension"])
        former = self._versions.get(place)
        if line["version"] != former or line["same_version"]:
            if self._add("versions", {**line, "fields": None, "loops": None, "former_version": former}):
                self._versions[place] = line["version"]

    def _take_alarm(self, line: Line) -> None:
        """The lines of an alarm, from its begin to its end, are one row: where it began, and what became of it."""
        row = row_of(line)
        begin = self._alarms.get(line["id"])
        if begin is None:
            if self._has_room(row):
                self._alarms[line["id"]] = row
            return
        row.update({name: begin[name] for name in ("packet", "offset", "seconds", "time")})
        if line["event"] == "end":
            row.update(text=begin["text"], end_seconds=line["seconds"], end_time=line["time"])
        self._alarms[line["id"]] = row

    def _take_interval(self, what: str, intervals: Line, line: Line) -> None:
        if intervals["count"] != 0:
            longest = {"longest_" + name: value for name, value in intervals["longest"].items()}
            place = {name: line.get(name) for name in ("pid", "table_id", "open_at_begin", "open_at_end")}
            self._add("intervals", {**place, **intervals, **longest, "what": what})

    def _time_of(self, seconds: Optional[float]) -> Optional[str]:
        """What came before the time of the world was known has it in the end, too."""
        last = self._stream
        if seconds is None or last is None or last["time"] is None or last["seconds"] is None:
            return None
        time = datetime.strptime(last["time"], "%Y-%m-%dT%H:%M:%S.%fZ").replace(tzinfo=timezone.utc)
        time -= timedelta(seconds=last["seconds"] - seconds)
        return time.isoformat(timespec="milliseconds").replace("+00:00", "Z")


def row_of(line: Line) -> Line:
    return {COLUMNS.get(name, name): json.dumps(value, ensure_ascii=False, separators=(",", ":"))
            if isinstance(value, (dict, list)) else value for name, value in line.items()}
