from enum import IntEnum, IntFlag
from typing import Any, ClassVar, Mapping, overload


class ISDBTMemory:
    """An object of the library. It keeps alive what holds it. Two of them are equal when they are the same object."""

    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...


def parse_section(data: bytes | bytearray | memoryview) -> ISDBTTable:
    """Parses a section, from table_id to CRC_32, of any table that the library knows."""
