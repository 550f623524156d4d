"""Many recordings, read by one process or by many, and written by one."""

import importlib
import itertools
import json
import time
from contextlib import contextmanager
from dataclasses import dataclass
from typing import IO, Any, Callable, Iterable, Iterator, Optional

from quor_isdbt.archive.dataset import Dataset
from quor_isdbt.archive.reading import read
from quor_isdbt.archive.recordings import Place, Recording, find, is_url, of_file
from quor_isdbt.archive.rows import Reading, Rows

LIMITS = "isdbt"
IN_HAND = 2  # recordings for each thread of a worker, so that none waits; those of a lost worker are read again

Read = tuple[Recording, Reading]


@dataclass
class Progress:
    """What was done so far."""

    expected: int = 0  # recordings
    read: int = 0
    failed: int = 0  # of those that were read
    size: int = 0  # in bytes


Tell = Callable[[Progress], None]


def archive(dataset: Place, places: Iterable[Place], *, scheduler: Optional[str] = None, workers: int = 0,
            limits: str = LIMITS, tell: Tell = lambda progress: None) -> Progress:
    """Reads what is new or changed of the recordings in some places into a dataset: in this process, with a number of
    worker processes, or with those of a Dask scheduler.

    tell is called when a recording is written."""
    with Dataset(dataset) as written:
        recordings = [each for each in find(places) if not written.has(each)]
        if scheduler is None and workers == 0:
            return write(written, ((each, read(each, limits)) for each in recordings), tell, len(recordings))
        with connected(scheduler, workers) as client:
            return write(written, read_by(client, recordings, limits), tell, len(recordings))


def take_lines(dataset: Place, lines: IO[str], tell: Tell = lambda progress: None) -> Progress:
    """Writes what others have read into a dataset: lines of isdbt-inspect --json --view all, each with the path of the
    recording and a tabulator before it, as parallel --tag writes them."""
    with Dataset(dataset) as written:
        return write(written, read_elsewhere(lines), tell)


def write(dataset: Dataset, readings: Iterable[Read], tell: Tell, expected: int = 0) -> Progress:
    """The first one at once, then those of a second together: to write waits for the disk."""
    progress = Progress(expected)
    together: list[Read] = []
    due = 0.0

    def flush() -> None:
        dataset.write(together)
        for recording, reading in together:
            progress.read += 1
            progress.failed += reading.failure is not None
            progress.size += recording.size or 0
            tell(progress)
        together.clear()

    for each in readings:
        together.append(each)
        if time.monotonic() >= due:
            flush()
            due = time.monotonic() + 1
    flush()
    return progress


def distributed() -> Any:
    """One process alone does without it."""
    return importlib.import_module("distributed")


@contextmanager
def connected(scheduler: Optional[str], workers: int) -> Iterator[Any]:
    dask = distributed()
    if scheduler is not None:
        with dask.Client(scheduler) as client:
            yield client
        return
    with dask.LocalCluster(n_workers=workers, threads_per_worker=1, dashboard_address=None) as cluster:
        with dask.Client(cluster) as client:
            yield client


def read_by(client: Any, recordings: Iterable[Recording], limits: str) -> Iterator[Read]:
    """As they are done. What a lost worker had is read by another one. What was in hand of several that were lost is read
    alone at the end, and has failed when that takes workers with it again: it was not what lay beside it."""
    dask = distributed()
    waiting = iter(recordings)
    in_hand: dict[str, Recording] = {}
    suspects: list[Recording] = []
    done = dask.as_completed()

    def hand_out() -> None:
        room = max(1, IN_HAND * sum(client.nthreads().values())) - len(in_hand)
        for recording in itertools.islice(waiting, max(0, room)):
            future = client.submit(read, recording, limits, pure=False)
            in_hand[future.key] = recording
            done.add(future)

    hand_out()
    for future in done:
        recording = in_hand.pop(future.key, None)
        if recording is not None:
            try:
                yield recording, future.result()
            except dask.KilledWorker:
                suspects.append(recording)
        hand_out()
    for recording in suspects:
        try:
            yield recording, client.submit(read, recording, limits, pure=False).result()
        except dask.KilledWorker as error:
            yield recording, Reading(failure=str(error), lasts=False)


def read_elsewhere(lines: IO[str]) -> Iterator[Read]:
    tagged = (line.rstrip("\n").partition("\t") for line in lines)
    for path, group in itertools.groupby(tagged, key=lambda parts: parts[0]):
        rows = Rows()
        complaints = []
        for _, _, line in group:
            if line.startswith("{"):
                rows.take(json.loads(line))
            elif line:
                complaints.append(line.removeprefix("isdbt-inspect: "))
        recording = Recording(path) if is_url(path) else of_file(path)
        yield recording, Reading(rows.end(), "\n".join(complaints) or rows.remark) if complaints or rows.are_whole else \
            Reading(failure="it was not read to its end", lasts=False)
