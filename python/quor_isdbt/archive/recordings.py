"""Which recordings there are."""

import os
import shutil
import tempfile
import urllib.parse
import urllib.request
from concurrent.futures import ThreadPoolExecutor
from contextlib import contextmanager
from dataclasses import dataclass
from email.utils import parsedate_to_datetime
from typing import IO, Iterable, Iterator, Optional, Union

Place = Union[str, "os.PathLike[str]"]

ENDINGS = (".ts", ".m2t", ".m2ts", ".mts", ".trp", ".bts", ".sec")
COMPRESSED = (".gz", ".xz", ".zst")


@dataclass(frozen=True)
class Recording:
    """A file, or an object that HTTP gives. When its size and the time of its last change are the same, so is its content;
    when they are not known, nobody knows."""

    path: str
    size: Optional[int] = None
    modified: Optional[float] = None

    @property
    def source(self) -> str:
        """As the dataset has it. Names of files need not be text."""
        return self.path.encode("utf-8", "surrogateescape").decode("utf-8", "backslashreplace")


def find(places: Iterable[Place]) -> Iterator[Recording]:
    """The recordings of folders, by their endings, with all folders below; files and URLs are taken as they are."""
    urls = []
    for place in (os.fspath(each) for each in places):
        if is_url(place):
            urls.append(place)
        elif os.path.isdir(place):
            for folder, folders, names in os.walk(os.path.abspath(place)):
                folders.sort()
                for name in sorted(names):
                    if is_recording(name):
                        yield of_file(os.path.join(folder, name))
        else:
            yield of_file(os.path.abspath(place))
    with ThreadPoolExecutor(16) as threads:
        yield from threads.map(of_url, urls)


def listed(lines: IO[str]) -> list[str]:
    """The places of a list, a line each."""
    return [line.rstrip("\n") for line in lines if line.strip()]


def is_url(place: str) -> bool:
    return urllib.parse.urlsplit(place).scheme in ("http", "https")


def is_recording(name: str) -> bool:
    stem, ending = os.path.splitext(name.lower())
    return (stem if ending in COMPRESSED else name.lower()).endswith(ENDINGS)


def of_file(path: str) -> Recording:
    try:
        found = os.stat(path)
    except OSError:
        return Recording(path)  # why, who reads it will say
    return Recording(path, found.st_size, found.st_mtime)


def of_url(url: str) -> Recording:
    try:
        with urllib.request.urlopen(urllib.request.Request(url, method="HEAD")) as answer:
            return Recording(url, int(answer.headers["Content-Length"]),
                             parsedate_to_datetime(answer.headers["Last-Modified"]).timestamp())
    except (OSError, TypeError, ValueError):
        return Recording(url)


@contextmanager
def at_hand(path: str) -> Iterator[str]:
    """A file with the recording's content."""
    if not is_url(path):
        yield path
        return
    name = os.path.basename(urllib.parse.urlsplit(path).path)
    with tempfile.TemporaryDirectory() as folder:
        copy = os.path.join(folder, name or "recording")
        with urllib.request.urlopen(path) as content, open(copy, "wb") as file:
            shutil.copyfileobj(content, file)
        yield copy
