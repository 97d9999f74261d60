"""There is nothing to draw with: no font, no display, no place for a window."""

import os
import subprocess
import time
from pathlib import Path

from frame import Outcome
from life import BackEnd, Ledger, Life

ROOT = Path(__file__).parents[2]
NO_FONTS = '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd"><fontconfig/>'


def run(trial, words, **surroundings):
    """A run of vantix-inapp without the variables that are None."""
    environment = {**os.environ, "TMPDIR": str(trial.folder), **surroundings}
    environment = {name: value for name, value in environment.items() if value is not None}
    return subprocess.run([trial.build / "Tools/vantix-inapp/vantix-inapp", *words], env=environment, timeout=120,
                          capture_output=True, text=True, cwd=trial.folder)


def play_without_fonts(trial):
    """The demonstration goes as it does with fonts, but for a line that says so."""
    (trial.folder / "fonts.conf").write_text(NO_FONTS)
    words = ["play", str(ROOT / "Examples/demonstration.jsonl"), "--out", str(trial.folder / "out")]
    with_fonts, without = run(trial, words), run(trial, words, FONTCONFIG_FILE=str(trial.folder / "fonts.conf"))
    losses = [] if without.returncode == 0 else [f"no font: status {without.returncode} {without.stderr[-300:]}"]
    losses += [] if without.stderr.count("font") == 1 else [f"no font: not one line says so, but: {without.stderr}"]
    shown = [[line for line in played.stdout.splitlines() if '"shown"' in line] for played in (with_fonts, without)]
    return losses + ([] if shown[0] and shown[0] == shown[1] else ["no font: other messages are shown"])


def simulate_without_display(trial):
    ended = run(trial, ["simulate", str(ROOT / "docs/campaigns/popup.json")], DISPLAY=None, WAYLAND_DISPLAY=None,
                QT_QPA_PLATFORM=None)
    is_said = ended.returncode == 2 and ended.stderr.count("\n") == 1 and "display" in ended.stderr
    return [] if is_said else [f"no display: status {ended.returncode} {ended.stderr[-300:]}"]


def wait_for_a_scene(trial):
    """A message that finds no place is kept, and is shown when there is one."""
    ledger, losses = Ledger(), []
    with BackEnd() as back_end, Life(trial, back_end) as life:
        for order in ["scene none", "insert a 10", "event buy"]:
            ledger.ask(life, order)
        losses += [] if life.ask("screen") == "" else ["no scene: shown all the same"]
        losses += [] if life.log else ["no scene: no line says so"]
        losses += ledger.missing(life, trial, back_end)
        life.ask("scene active")
        # After a failure the module lets a second pass.
        end = time.monotonic() + 10
        while life.ask("event buy") and life.ask("screen").split() != ["a"] and time.monotonic() < end:
            time.sleep(0.05)
        losses += [] if time.monotonic() < end else ["no scene: not shown when there is one"]
    return losses


def draw_with_nothing(trial):
    outcome = Outcome()
    while True:
        for attempt in (simulate_without_display, wait_for_a_scene, play_without_fonts):
            trial.fresh_folder()
            outcome.losses += attempt(trial)
            outcome.tried += 1
        if outcome.losses or not trial.has_time():
            return outcome
