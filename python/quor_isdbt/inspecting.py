"""What isdbt-inspect says of streams, item by item."""

from __future__ import annotations

import atexit
import json
import os
from collections.abc import Iterable, Iterator
from types import TracebackType
from typing import Any, Dict, Union
from weakref import WeakSet

from quor_isdbt._quor_isdbt import RunningInspection

Item = Dict[str, Any]
Value = Union[None, bool, int, float, str, bytes, "os.PathLike[str]", Iterable[Union[int, str]]]


def inspect(*inputs: str | os.PathLike[str], **options: Value) -> Inspection:
    """Iterate over what `isdbt-inspect --json` prints of the inputs, each line as a dictionary.

    Inputs are files and addresses, as that program takes them. Each keyword is an option of it, with _ for -: view="stats",
    table=["pat", "pmt"], until=90, bytes=True. Bytes are given in hexadecimal, which hex= takes. A _ behind the name keeps it
    from being a word of Python.

    Wrong options raise UsageError. Reading begins with the first item; what cannot be read to its end raises
    InspectionError there.
    """
    words = ["--json", *(word for name, value in options.items() for word in _words(name, value))]
    return Inspection([*map(os.fsencode, words), b"--", *map(os.fsencode, inputs)])


class Inspection(Iterator[Item]):
    """An inspection that goes on while its items are taken. It ends with them, by close(), and when it is forgotten."""

    def __init__(self, words: list[bytes]) -> None:
        self._lines = RunningInspection(words)
        _all.add(self)

    def __next__(self) -> Item:
        item: Item = json.loads(next(self._lines))
        return item

    def close(self) -> None:
        """End it at once; any thread may."""
        self._lines.close()

    @property
    def status(self) -> int | None:
        """The exit status that isdbt-inspect would have, when the last item was taken: 3 when something is wrong."""
        return self._lines.status

    def __enter__(self) -> Inspection:
        return self

    def __exit__(self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None) -> None:
        self.close()


def _words(name: str, value: Value) -> Iterator[str]:
    option = "--" + name.rstrip("_").replace("_", "-")
    if value is None or value is False:
        return
    if value is True:
        yield option
    elif isinstance(value, bytes):
        yield f"{option}={value.hex()}"
    elif isinstance(value, (int, float, str)):
        yield f"{option}={value}"
    elif isinstance(value, os.PathLike):
        yield f"{option}={os.fspath(value)}"
    else:
        for each in value:
            yield from _words(name, each)


_all: WeakSet[Inspection] = WeakSet()


@atexit.register
def _close_all() -> None:
    """No thread may go on while the interpreter goes."""
    for inspection in list(_all):
        inspection.close()
