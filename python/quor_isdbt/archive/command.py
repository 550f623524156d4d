"""python3 -m quor_isdbt.archive"""

import argparse
import sys
import time

from quor_isdbt.archive import Dataset, Progress, archive, find, take_lines
from quor_isdbt.archive.recordings import listed
from quor_isdbt.archive.running import LIMITS


class ProgressLine:
    """On a terminal, renewed as recordings are written; elsewhere what came of all."""

    def __init__(self) -> None:
        self._begin = time.monotonic()
        self._next = 0.0

    def tell(self, progress: Progress) -> None:
        now = time.monotonic()
        if sys.stderr.isatty() and now >= self._next:
            self._next = now + 0.2
            print(f"\r{self._text(progress)}\033[K", end="", file=sys.stderr, flush=True)

    def end(self, progress: Progress) -> None:
        print(("\r\033[K" if sys.stderr.isatty() else "") + self._text(progress), file=sys.stderr)

    def _text(self, progress: Progress) -> str:
        seconds = time.monotonic() - self._begin
        of_all = f" of {progress.expected}" if progress.expected else ""
        return (f"{progress.read}{of_all} recordings, {progress.failed} not read to the end, "
                f"{progress.size / 1e9:.2f} GB in {seconds:.1f} s")


def options() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="python3 -m quor_isdbt.archive",
        description="Reads what is new or changed of the recordings in some places into a dataset, a file of SQLite.",
        epilog="Exit status: 0 all well, 1 some recordings could not be read to their end, 2 wrong usage.")
    parser.add_argument("dataset", metavar="DATASET.sqlite")
    parser.add_argument("places", metavar="PATH", nargs="*", help="a recording, a folder of some, or a URL (http, https)")
    parser.add_argument("--list", metavar="FILE", type=argparse.FileType(), action="append", default=[],
                        help="more of them, a line each; - is standard input")
    parser.add_argument("--limits", metavar="PROFILE", default=LIMITS,
                        help=f"as isdbt-inspect takes it; {LIMITS} if not given")
    how = parser.add_mutually_exclusive_group()
    how.add_argument("--workers", metavar="N", type=int, default=0, help="read with N processes; they need Dask")
    how.add_argument("--scheduler", metavar="ADDRESS", help="read with the workers of this Dask scheduler")
    how.add_argument("--pending", action="store_true", help="read nothing, and print what is to be read")
    how.add_argument("--lines", metavar="FILE", type=argparse.FileType(encoding="utf-8", errors="surrogateescape"),
                     help="write what others have read, as parallel --tag gives it; - is standard input")
    return parser


def main() -> None:
    parser = options()
    chosen = parser.parse_args()
    places = chosen.places + [place for each in chosen.list for place in listed(each)]
    if bool(places) == bool(chosen.lines):
        parser.error("PATH, --list or --lines is required")
    if chosen.pending:
        with Dataset(chosen.dataset) as dataset:
            for recording in find(places):
                if not dataset.has(recording):
                    print(recording.path)
        return
    line = ProgressLine()
    if chosen.lines:
        progress = take_lines(chosen.dataset, chosen.lines, tell=line.tell)
    else:
        progress = archive(chosen.dataset, places, scheduler=chosen.scheduler, workers=chosen.workers, limits=chosen.limits,
                           tell=line.tell)
    line.end(progress)
    sys.exit(1 if progress.failed else 0)
