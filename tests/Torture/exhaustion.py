"""Descriptors run out."""

from frame import Outcome
from life import BackEnd, Ledger, Life, damages

# Of all descriptors that the module may have, 64 are more than enough.
ALL = 64


def orders(scope):
    return [f"insert {scope} 100 /{scope}", f"insert {scope}.gone 100", f"report {scope}", f"image /{scope}.image",
            f"delete {scope}.gone"]


def obey(life, ledger, scope, may_fail):
    """In words what was wrong with the answers."""
    losses = []
    for order in orders(scope):
        mark = len(life.log)
        answer = ledger.ask(life, order)
        if answer not in ("yes", "no") or answer == "no" and not may_fail:
            losses.append(f"{order}: {answer}" + "".join("; " + line for line in life.log[mark:]))
        if answer == "no" and len(life.log) == mark:
            losses.append(f"{order}: nothing was said of it")
    return losses


def live_with(trial, left, is_new):
    """One life that loses its descriptors but for so many, at its start or in its midst, and gets them back."""
    trial.fresh_folder()
    ledger = Ledger()
    with BackEnd() as back_end, Life(trial, back_end) as life:
        losses = [] if is_new else obey(life, ledger, "before", False)
        life.ask(f"descriptors {left}")
        losses += obey(life, ledger, "within", True)
        # The events of the life cycle and a sync have no answer.
        life.ask("sync within")
        life.ask("event sell")
        life.ask(f"descriptors {ALL}")
        losses += obey(life, ledger, "after", False)
        losses += ledger.missing(life, trial, back_end) + damages(trial.data)
        if (status := life.end()) != 0:
            losses.append(f"the module ended with status {status}: " + life.last_words())
    return [f"{left} left{' from the start' * is_new}: {loss}" for loss in losses]


def take_descriptors(trial):
    outcome = Outcome()
    for left in range(16):
        for is_new in (True, False):
            outcome.losses += live_with(trial, left, is_new)
            outcome.tried += 1
        if not trial.has_time():
            break
    return outcome
