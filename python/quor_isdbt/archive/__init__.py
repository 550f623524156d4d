"""A dataset of many recordings, of which each is read once: by this process, by some of this machine, or by all workers
of a Dask scheduler."""

from quor_isdbt.archive.dataset import Dataset
from quor_isdbt.archive.recordings import Recording, find
from quor_isdbt.archive.running import Progress, archive, take_lines

__all__ = ["Dataset", "Progress", "Recording", "archive", "find", "take_lines"]
