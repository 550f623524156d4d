"""typed.py FILE: a program whose types mypy checks."""

from __future__ import annotations

import sys

from quor_isdbt import Application, Inspection, InspectionError, PMTTable, Refused, UsageError, inspect, parse_section


def stream(items: Inspection) -> int | None:
    for item in items:
        found = item["fields"]["transport_stream_id"]
        if isinstance(found, int):
            return found
    return None


def video(section: bytes) -> list[tuple[int, bytes]]:
    try:
        table = parse_section(section)
    except Refused as refused:
        sys.exit("\n".join([refused.name, *refused.log]))
    if not isinstance(table, PMTTable):
        return []
    tags = {stream.elementary_pid: stream.effective_stream_identifier_descriptor for stream in table.elementary_streams}
    return [(pid, b"" if tag is None else tag.data) for pid, tag in tags.items()]


def starts(application: Application) -> bool:
    return application.control_code == Application.CONTROLCODE_AUTOSTART


try:
    with inspect(sys.argv[1], table=["pat"], pid=[0x10, 0x11], bytes=True) as sections:
        print(stream(sections), len(list(inspect(sys.argv[1], table="pat", since=90.5))))
except (InspectionError, UsageError) as error:
    sys.exit(str(error))
