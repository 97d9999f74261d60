"""The disk refuses, takes its time, or belongs to another process."""

import sqlite3
import time

from frame import Outcome
from life import DATABASES, BackEnd, Ledger, Life, damages

SESSION = ["insert a 100 /1", "report a", "image /2", "insert b 30000", "delete a", "report b", "insert c 100 /2", "list"]
WHILE_LOCKED = ["insert d 100", "report d", "image /4", "turn"]
AFTERWARDS = ["insert after 30000 /3", "report after", "image /3", "delete after", "insert again 10"]
# For the thread that draws, in seconds; a machine that is busy otherwise takes some of it.
LONGEST_TURN = 1
# Of a module whose disk is slow: two are granted, and what is under way then goes on.
LONGEST_END = 5


def tell_missing_line(refused, life):
    return [f"{refused} was refused without an error line"] if refused and not life.log else []


def lead(life, ledger):
    """In words what the session lacked, whatever the disk did."""
    losses, refused = [], []
    for order in SESSION:
        answer = ledger.ask(life, order)
        begin = time.monotonic()
        if answer == "dead" or life.ask("turn") == "dead":
            return [f"the module ended at '{order}': {life.last_words()}"]
        if time.monotonic() - begin > LONGEST_TURN:
            losses.append(f"the main thread waited at '{order}'")
        refused += [order] if answer == "no" else []
    return losses + tell_missing_line(refused, life)


def go_on(life, ledger, trial, back_end):
    """What the module lacks although the disk is sound again."""
    losses = [f"'{order}' is refused after the fault: {life.log[-1:]}" for order in AFTERWARDS
              if ledger.ask(life, order) != "yes"]
    return losses + ledger.missing(life, trial, back_end)


def survive(trial, fault, number):
    """One module that meets the fault at the call of that number, and its successor: what they lacked, and how many
    calls there were."""
    trial.fresh_folder()
    ledger = Ledger()
    with BackEnd() as back_end:
        with Life(trial, back_end, [f"machine {fault} {number}"]) as life:
            losses = lead(life, ledger)
            calls = life.ask("calls")
            life.order("machine none 0")
            losses += go_on(life, ledger, trial, back_end) if not losses else []
            if not losses and (status := life.end()):
                losses.append(f"the module ended badly: {status}")
        if not losses:
            with Life(trial, back_end) as life:
                losses = ledger.missing(life, trial, back_end) + damages(trial.data)
    return [f"{fault} at call {number}: {loss}" for loss in losses], int(calls) if calls.isdigit() else 0


def at_every_call(fault):
    """The fault at each call in turn; when time is short at some of them."""
    def inflict(trial):
        outcome = Outcome()
        outcome.losses, calls = survive(trial, "none", 0)
        numbers = list(range(calls))
        trial.random.shuffle(numbers)
        for number in numbers:
            outcome.losses += survive(trial, fault, number)[0]
            outcome.tried += 1
            if not trial.has_time():
                break
        return outcome
    return inflict


def end_slowly(trial):
    """What is lost of a module that ends amid work for a slow disk."""
    trial.fresh_folder()
    ledger, losses = Ledger(), []
    with BackEnd() as back_end:
        with Life(trial, back_end) as life:
            ledger.ask(life, "insert first 10")
            life.order("machine slow 0", *(f"insert {number} 10" for number in range(60)), "report last")
            ledger.answered(*life.next())
            begin = time.monotonic()
            if status := life.end():
                losses.append(f"the module ended badly: {status}")
            if time.monotonic() - begin > LONGEST_END:
                losses.append(f"the end took {time.monotonic() - begin:.1f} s")
            while answered := life.next():
                ledger.answered(*answered)
        with Life(trial, back_end) as life:
            return losses + ledger.missing(life, trial, back_end) + damages(trial.data)


def slow(trial):
    """From some call on, so late that the time suffices."""
    outcome = Outcome()
    calls = survive(trial, "none", 0)[1]
    outcome.losses += end_slowly(trial)
    while True:
        affordable = max(20, int(trial.time_left() / 0.1 / 2))
        outcome.losses += survive(trial, "slow", max(0, calls - trial.random.randint(10, affordable)))[0]
        outcome.tried += 1
        if not trial.has_time():
            return outcome


def locked(trial):
    """Another process holds the databases while the module works."""
    outcome = Outcome()
    while True:
        trial.fresh_folder()
        ledger = Ledger()
        with BackEnd() as back_end, Life(trial, back_end) as life:
            outcome.losses += lead(life, ledger)
            others = [sqlite3.connect(trial.data / name, isolation_level=None) for name in DATABASES]
            for other in others:
                other.execute("BEGIN IMMEDIATE")
            # All at once, since each that needs a database waits its seconds for it.
            life.order(*WHILE_LOCKED)
            answered = [life.next() for _ in WHILE_LOCKED]
            refused = [order for order, answer in filter(None, answered) if answer == "no"]
            outcome.losses += [] if len(refused) == 2 else [f"only {refused} of {WHILE_LOCKED} was refused"]
            outcome.losses += tell_missing_line(refused, life)
            for other in others:
                other.execute("COMMIT")
                other.close()
            outcome.losses += go_on(life, ledger, trial, back_end)
        outcome.tried += 1
        if outcome.losses or not trial.has_time():
            return outcome
