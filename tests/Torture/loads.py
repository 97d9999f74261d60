"""Faults within the process that they befall: load, memory that runs out, and an end at any moment."""

import os
import subprocess

from frame import Outcome

SANITIZERS = {
    "ASAN_OPTIONS": "detect_leaks=1",
    "LSAN_OPTIONS": "print_suppressions=0",
    "TSAN_OPTIONS": "halt_on_error=1 suppressions='{root}/cmake/ThreadSanitizerSuppressions.txt'",
}


def family(name, preset="release"):
    """A family of vantix-loaded, as it is built by the preset."""
    def inflict(trial):
        build = trial.build.resolve().parent
        environment = {key: value.format(root=build.parent) for key, value in SANITIZERS.items()}
        run = subprocess.run(
            [build / preset / "tests/Torture/vantix-loaded", name, str(trial.time_left()),
             str(trial.random.randrange(1 << 30)), trial.fresh_folder()],
            env=os.environ | environment, text=True, capture_output=True)
        outcome = Outcome()
        for line in run.stdout.splitlines():
            kind, _, text = line.partition(": ")
            if kind == "tried":
                outcome.tried = int(text)
            elif kind == "lost":
                outcome.losses.append(text)
            elif kind == "note":
                outcome.notes.append(text)
        if run.returncode != 0:
            outcome.losses.append(f"it ended with status {run.returncode}: {run.stderr[:4000]}")
        return outcome
    return inflict
