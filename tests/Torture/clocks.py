"""The time of day jumps both ways and stands still; the clock that only moves forward jumps, as after a sleep."""

import time

from frame import Outcome
from life import BackEnd, Ledger, Life

CHANGES = ["3600", "-7200", "still", "630720000", "-1261440000", "still", "1000", "+90", "+86400", "+31536000"]
# No retry waits longer after a failure at each of the last two changes.
RETRY_SECONDS = 25


def lead_through(trial, back_end, changes):
    """A module whose clocks change at each step; what it lacks."""
    ledger = Ledger()
    losses = []
    with Life(trial, back_end) as life:
        for number, change in enumerate(changes):
            back_end.refuses = number >= len(changes) - 2
            # Some of this is under way when the clock changes.
            life.order(f"insert m{number} 100 /{number}", f"image /{number}{number}", f"report r{number}")
            life.order(f"clock {change}")
            orders = [f"insert n{number} 10 /n{number}", f"report s{number}", f"image /{number}", f"delete n{number}"]
            losses += [f"'{order}' is refused after {change}: {life.log[-1:]}" for order in orders
                       if ledger.ask(life, order) != "yes"]
        back_end.refuses = False
        losses += ledger.missing(life, trial, back_end)
        begin = time.monotonic()
        while not losses and ledger.reported - back_end.reported and time.monotonic() - begin < RETRY_SECONDS:
            time.sleep(0.05)
        losses += [f"the report {scope} is never sent again" for scope in ledger.reported - back_end.reported]
        life.ask("event buy")
        losses += [] if life.ask("screen").split() else ["nothing is shown"]
        if not losses and (status := life.end()):
            losses.append(f"the module ended badly: {status}")
    with Life(trial, back_end) as life:
        return losses + ledger.missing(life, trial, back_end)


def change_clocks(trial):
    outcome = Outcome()
    while True:
        trial.fresh_folder()
        changes = trial.random.sample(CHANGES, len(CHANGES))
        with BackEnd() as back_end:
            outcome.losses += [f"{loss} ({' '.join(changes)})" for loss in lead_through(trial, back_end, changes)]
        outcome.tried += 1
        if outcome.losses or not trial.has_time():
            return outcome
