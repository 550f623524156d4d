"""What is raised when the library refuses bytes."""

from __future__ import annotations


class Refused(ValueError):
    """The library does not take these bytes: the name and the number of its error code, and the lines that it logged."""

    def __init__(self, code: int, name: str, log: tuple[str, ...]) -> None:
        super().__init__(code, name, log)
        self.code = code
        self.name = name
        self.log = log

    def __str__(self) -> str:
        return "\n".join([f"{self.name} (0x{self.code:04X})", *self.log])
