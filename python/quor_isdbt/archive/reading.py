"""How one recording is read, on whatever machine."""

from quor_isdbt._quor_isdbt import InspectionError
from quor_isdbt.archive.recordings import Recording, at_hand
from quor_isdbt.archive.rows import Reading, Rows
from quor_isdbt.inspecting import inspect


def read(recording: Recording, limits: str) -> Reading:
    """Whatever is wrong with a recording, or with reading it, is told in its place: others are not to suffer from it."""
    rows = Rows()
    failure = None
    lasts = True
    try:
        with at_hand(recording.path) as path, inspect(path, view="all", limits=limits) as lines:
            for line in lines:
                rows.take(line)
    except InspectionError as error:
        failure = str(error)
    except Exception as error:
        failure, lasts = str(error) or type(error).__name__, False
    return Reading(rows.end(), failure or rows.remark, lasts)
