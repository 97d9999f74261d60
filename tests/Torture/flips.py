"""Bytes flip in every page of every file that a module has left."""

import shutil

from frame import Outcome
from life import DATABASES, BackEnd, Life, rows

PAGE = 4096
# What says of a page how to read it stands at its beginning.
HEAD = 40
SCOPES = [f"kept-{number}" for number in range(12)]
ORDERS = [f"insert {scope} 3000" for scope in SCOPES] + [f"image /{number}" for number in range(4)]
# Far more than a session takes to hand over its reports.
MOST_CALLS = 40


def leave_files(trial, ends_well):
    """The files of a module, which has ended in good order or by a signal, in a folder beside the trial's."""
    trial.fresh_folder()
    with BackEnd() as back_end, Life(trial, back_end) as life:
        for order in ORDERS:
            life.ask(order)
        if ends_well:
            life.end()
    with Life(trial) as life:
        for scope in SCOPES:
            life.ask(f"report {scope}")
        if ends_well:
            life.end()
    kept = trial.folder.with_name(f"kept-{ends_well}")
    shutil.rmtree(kept, ignore_errors=True)
    return trial.data.rename(kept)


def pages_of(folders, random):
    """Each page of each file, as the file and where it begins; at any time all files have had their share."""
    files = [(folder, file) for folder in folders for file in sorted(folder.rglob("*")) if file.is_file()]
    pages = [(random.random() * file.stat().st_size, folder, file.relative_to(folder), at) for folder, file in files
             for at in range(0, file.stat().st_size, PAGE)]
    return [page for _, *page in sorted(pages)]


def flip(file, at, trial):
    content = bytearray(file.read_bytes())
    end = min(at + trial.random.choice([HEAD, PAGE]), len(content))
    for _ in range(trial.random.choice([1, 1, 8, 200])):
        content[trial.random.randrange(at, end)] ^= trial.random.randrange(1, 256)
    file.write_bytes(content)


def is_smaller(trial, name):
    """Whether the store has fewer messages than it had, and one more. A log that breaks off looks to SQLite like one that
    was not written to its end, and a text that has changed looks like another."""
    return name.name == DATABASES[0] and rows(trial.data / name, "SELECT count(*) FROM InAppMessage")[0][0] <= len(SCOPES)


def start_on_damage(trial, back_end, name):
    """What the module lacks on the damaged file of that name."""
    with Life(trial, back_end) as life:
        listed = life.ask("list")
        # What proves damaged only as it is used may refuse once.
        orders = ["insert after 10", "report after", "delete after", "insert again 10", "image /9", "image /0", "image /1", "image /2", "image /3", "list"]
        refused = [order for order in orders if life.ask(order) == "no"]
        refused = [order for order in refused if life.ask(order) == "no"]
        again = life.ask("list")
        if again == "dead":
            return ["the module did not survive: " + life.last_words()]
        losses = [f"'{order}' is refused for good: {life.log[-1:]}" for order in refused]
        losses += [] if "again" in again.split() else [f"a new message is not kept: {again}"]
        losses += [] if life.log or not is_smaller(trial, name) else [f"messages went silently: {listed}"]
        if back_end.calls_with_reports > MOST_CALLS:
            losses.append("the same reports are sent again and again")
        if status := life.end():
            losses.append(f"the module ended badly: {status}")
    return losses


def flip_every_page(trial):
    outcome = Outcome()
    while True:
        for folder, name, at in pages_of([leave_files(trial, True), leave_files(trial, False)], trial.random):
            trial.fresh_folder()
            shutil.copytree(folder, trial.data)
            flip(trial.data / name, at, trial)
            with BackEnd() as back_end:
                outcome.losses += [f"{name} at {at}: {loss}" for loss in start_on_damage(trial, back_end, name)]
            outcome.tried += 1
            if not trial.has_time():
                return outcome
