#!/usr/bin/env python3
"""Inflicts fault after fault on the module, says in a table what each has cost, and ends with status 1 when that was
anything.

usage: torture.py [--minutes N] [--only PART OF A NAME] [--seed NUMBER] [--list] BUILD_FOLDER
"""

import argparse
import sys
import tempfile
import time
import traceback
from pathlib import Path

import clocks
import disk_faults
import displays
import exhaustion
import flips
import kills
import loads
import network
import power_cuts
from frame import Fault, Outcome, Trial

FAULTS = [
    Fault("killed at any moment", kills.kill_at_any_moment),
    Fault("power cut at any moment", power_cuts.cut),
    Fault("bytes flipped in every page of every file", flips.flip_every_page),
    Fault("disk full from each call on", disk_faults.at_every_call("full")),
    Fault("disk read-only from each call on", disk_faults.at_every_call("read-only")),
    Fault("input/output error at each call", disk_faults.at_every_call("broken")),
    Fault("disk takes 100 ms a call", disk_faults.slow),
    Fault("databases locked by another process", disk_faults.locked),
    Fault("clocks that jump and stand still", clocks.change_clocks),
    Fault("no font, no display, no place for a window", displays.draw_with_nothing),
    Fault("answers cut at each byte", network.cut),
    Fault("answers stalled at each byte", network.stall),
    Fault("answers with a byte changed", network.change),
    Fault("answers that lie, loop or never end", network.lie),
    Fault("no descriptor left", exhaustion.take_descriptors),
    Fault("each allocation fails while decoding", loads.family("allocations")),
    Fault("each allocation fails while decoding, watched", loads.family("allocations", "asan")),
    Fault("10,000 pushes, 100,000 events, 10,000 at launch", loads.family("load")),
    Fault("1,000 messages shown and dismissed", loads.family("rounds")),
    Fault("2,000 restarts", loads.family("restarts")),
    Fault("a week with a message an hour", loads.family("week")),
    Fault("torn down at any moment", loads.family("teardown")),
    Fault("torn down at any moment, addresses watched", loads.family("teardown", "asan")),
    Fault("torn down at any moment, threads watched", loads.family("teardown", "tsan")),
    Fault("load, threads watched", loads.family("load", "tsan")),
]

# Of one fault, in words.
MOST_LOSSES = 20


def inflict(fault, trial):
    begin = time.monotonic()
    try:
        trial.fresh_folder()
        outcome = fault.inflict(trial)
    except Exception:
        outcome = Outcome(0, ["the trial itself failed: " + traceback.format_exc()])
    return outcome, time.monotonic() - begin


def print_row(name, tried, lost, seconds):
    print(f"{name:50} {tried:>9} {lost:>6} {seconds:>8}", flush=True)


def main():
    parser = argparse.ArgumentParser(prog="torture")
    parser.add_argument("build", metavar="BUILD_FOLDER")
    parser.add_argument("--minutes", type=float, default=30, help="for all faults together; 30 when not given")
    parser.add_argument("--only", default="", metavar="PART", help="only faults with this in their names")
    parser.add_argument("--seed", type=int, default=time.time_ns() % 1_000_000, help="of what is left to chance")
    parser.add_argument("--list", action="store_true", help="the names of the faults")
    options = parser.parse_args()
    faults = [fault for fault in FAULTS if options.only in fault.name]
    if options.list:
        print("\n".join(fault.name for fault in faults))
        return 0

    end = time.monotonic() + options.minutes * 60
    losses, notes = [], []
    print_row("fault", "tried", "lost", "seconds")
    with tempfile.TemporaryDirectory(prefix="vantix-") as folder:
        for at, fault in enumerate(faults):
            # What a fault leaves of its share of the time goes to those after it.
            share = (end - time.monotonic()) / (len(faults) - at)
            outcome, seconds = inflict(fault, Trial(options.build, Path(folder) / "trial", share, options.seed))
            print_row(fault.name, outcome.tried, len(outcome.losses), f"{seconds:.1f}")
            notes += [f"{fault.name}: {note}" for note in outcome.notes]
            losses += [f"{fault.name}: {loss}" for loss in outcome.losses[:MOST_LOSSES]]
            losses += [] if outcome.tried else [f"{fault.name}: was not tried"]
    print("".join(note + "\n" for note in notes), end="")
    print("\n".join(losses or ["Nothing was lost."]))
    print(f"Seed {options.seed}.")
    return 1 if losses or not faults else 0


sys.exit(main())
