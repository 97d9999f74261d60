"""The process is killed at any moment."""

import signal
import time

from frame import Outcome
from life import BackEnd, Ledger, Life, damages

ORDERS_A_LIFE = 24
LIVES_A_DIRECTORY = 20


def orders_of(life, ledger, trial):
    """Each about something of its own, but for the deletions."""
    stored = sorted(ledger.stored)
    trial.random.shuffle(stored)
    for number in range(ORDERS_A_LIFE):
        scope, path = f"{life}.{number}", f"/{trial.random.randrange(10)}"
        kind = trial.random.randrange(6)
        if kind == 0:
            yield f"report {scope}"
        elif kind == 1:
            yield f"image {path}"
        elif kind == 2 and stored:
            yield f"delete {stored.pop()}"
        elif kind == 3:
            yield f"insert {scope} 10 {path}"
        else:
            yield f"insert {scope} {trial.random.randrange(20000)}"


def lead_and_kill(life, ledger, number, trial):
    """Kills the life after some of its answers, or before the first; in words what it should not have done."""
    orders = list(orders_of(number, ledger, trial))
    for order in orders:
        ledger.ordered(order)
    life.order(*orders)
    losses = []
    for _ in range(trial.random.randrange(len(orders) + 1)):
        if not (answered := life.next()):
            break
        ledger.answered(*answered)
        losses += [f"no without a fault: {answered[0]}"] if answered[1] != "yes" else []
    time.sleep(trial.random.random() * 0.003)
    if (status := life.end(signal.SIGKILL)) != -signal.SIGKILL:
        losses.append("the module ended by itself: " + life.last_words())
    while answered := life.next():
        ledger.answered(*answered)
    return losses


def kill_at_any_moment(trial):
    outcome = Outcome()
    while not outcome.losses:
        trial.fresh_folder()
        ledger = Ledger()
        with BackEnd() as back_end:
            for number in range(LIVES_A_DIRECTORY + 1):
                with Life(trial, back_end) as life:
                    outcome.losses += ledger.missing(life, trial, back_end) + damages(trial.data) if number else []
                    if outcome.losses or number == LIVES_A_DIRECTORY:
                        break
                    outcome.losses += lead_and_kill(life, ledger, number, trial)
                outcome.tried += 1
        if not trial.has_time():
            break
    return outcome
