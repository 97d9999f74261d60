"""What every fault is made of."""

import random
import shutil
import time
from dataclasses import dataclass, field
from pathlib import Path
from typing import Callable


class Trial:
    """What one fault is inflicted with."""

    def __init__(self, build, folder, seconds, seed):
        self.build = Path(build).resolve()
        self.folder = Path(folder)
        self.end = time.monotonic() + seconds
        self.random = random.Random(seed)

    def has_time(self):
        """Every fault is tried once, whatever this says."""
        return time.monotonic() < self.end

    def time_left(self):
        """In seconds."""
        return max(0, self.end - time.monotonic())

    def fresh_folder(self):
        """The trial's folder, emptied."""
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        return self.folder

    @property
    def data(self):
        """The module's data directory."""
        return self.folder / "data"


@dataclass
class Outcome:
    """What one fault did to the module: how often it was tried, and in words what was lost, and what else is worth knowing."""

    tried: int = 0
    losses: list = field(default_factory=list)
    notes: list = field(default_factory=list)


@dataclass
class Fault:
    """One fault: its name in the closing table, and how it is inflicted until the trial's end."""

    name: str
    inflict: Callable[[Trial], Outcome]
