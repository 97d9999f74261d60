"""The power is cut: what no sync has made lasting is dropped, kept or torn. The last changes may be gone, as they are
promised to survive the end of the process alone; but what is left is whole, and is what there once was."""

import re
import shutil

from frame import Outcome
from life import BackEnd, Life, damages

SECTOR = 512
RECORD = re.compile(rb"(.) (\d+) (\d+) (\d+)\n")
# Lines that say that a file was found damaged.
DAMAGE = re.compile("damaged|set aside|malformed|not a database", re.IGNORECASE)


class File:
    """What lasts of a file, and the writes since its last sync."""

    def __init__(self):
        self.lasting = bytearray()
        self.pending = []

    def sync(self):
        for write in self.pending:
            apply(write, self.lasting)
        self.pending.clear()

    def after_the_cut(self, random):
        """Of each write that was not synced, all, nothing, or some sectors."""
        content = bytearray(self.lasting)
        habit = random.choice(["all", "nothing", "each for itself"])
        for at, data in self.pending:
            fate = habit if habit != "each for itself" else random.choice(["all", "nothing", "torn"])
            if fate == "all" or (data is None and fate == "torn"):
                apply((at, data), content)
            elif fate == "torn":
                for sector in range(0, len(data), SECTOR):
                    if random.random() < 0.5:
                        apply((at + sector, data[sector:sector + SECTOR]), content)
        return content


def apply(write, content):
    """A write of data at a place, or, without data, a cut to a length."""
    at, data = write
    end = at if data is None else at + len(data)
    content.extend(bytes(max(0, end - len(content))))
    if data is None:
        del content[at:]
    else:
        content[at:end] = data


def read_changes(record):
    """The changes that Machine has recorded: kind, place, file, data."""
    content, at, changes = record.read_bytes(), 0, []
    while head := RECORD.match(content, at):
        kind, place, name, size = head[1].decode(), *map(int, head.groups()[1:])
        data = content[head.end() + name:head.end() + name + size]
        changes.append((kind, place, content[head.end():head.end() + name].decode(), data))
        at = head.end() + name + size
    return changes


def files_after_cut(changes, random):
    """Every file after the last of the changes. Names come, go and change in their order, and last with their folder's
    sync."""
    lasting, present, pending = {}, {}, []

    def rename(names, kind, file, data):
        if kind == "c":
            names[file] = data
        elif kind == "r" and file in names:
            names[data] = names.pop(file)
        elif kind == "u":
            names.pop(file, None)

    for kind, place, file, data in changes:
        if kind in "cru":
            change = (kind, file, File() if kind == "c" else data.decode())
            rename(present, *change)
            pending.append(change)
        elif kind == "s" and file in present:
            present[file].sync()
        elif kind == "s":
            for change in pending:
                rename(lasting, *change)
            pending.clear()
        elif file in present:
            present[file].pending.append((place, data if kind == "w" else None))
    for change in pending[:random.randint(0, len(pending))]:
        rename(lasting, *change)
    return {name: file.after_the_cut(random) for name, file in lasting.items()}


def orders_of(trial):
    """Messages so large that the log is written back into the file more than once."""
    scopes = []
    for number in range(120):
        kind = trial.random.randrange(8)
        if kind == 0 and scopes:
            yield f"delete {scopes.pop(trial.random.randrange(len(scopes)))}"
        elif kind == 1:
            yield f"image /{number % 10}"
        elif kind == 2:
            yield f"report {number}"
        else:
            scopes.append(str(number))
            yield f"insert {number} {trial.random.randrange(200_000)}"


def contents_of(orders):
    """What the store held, before the first order and after each."""
    stored = []
    contents = {()}
    for verb, scope, *_ in map(str.split, orders):
        stored += [scope] if verb == "insert" else []
        stored = [other for other in stored if verb != "delete" or other != scope]
        contents.add(tuple(stored))
    return contents


def record(trial, back_end, orders):
    """The changes that a module makes as it obeys."""
    file = trial.fresh_folder() / "record"
    with Life(trial, back_end, [f"record {file}"]) as life:
        life.order(*orders)
        for _ in orders:
            life.next()
        life.end()
    return read_changes(file)


def start_after_cut(trial, back_end, contents):
    """What the module lacks on what the cut has left."""
    with Life(trial, back_end) as life:
        listed = life.ask("list")
        if listed == "dead":
            return ["the module did not start: " + life.last_words()]
        losses = [] if tuple(listed.split()) in contents else [f"the store never was as it is: {listed}"]
        losses += [f"'{order}' is refused" for order in ("insert after 10", "report after", "image /1", "image /2")
                   if life.ask(order) != "yes"]
        losses += [line for line in life.log if DAMAGE.search(line)] + damages(trial.data)
        return losses


def moment(changes, trial):
    """How many changes come before the cut: as often amid those of small files as amid those of the databases."""
    small = [at for at, (_, _, file, _) in enumerate(changes) if ".sqlite" not in file]
    return trial.random.choice(trial.random.choice([small, range(len(changes))])) + 1


def cut(trial):
    outcome = Outcome()
    cuts_a_record = 40
    while not outcome.losses:
        orders = list(orders_of(trial))
        with BackEnd() as back_end:
            changes = record(trial, back_end, orders)
            for _ in range(cuts_a_record):
                at = moment(changes, trial)
                shutil.rmtree(trial.folder)
                (trial.data / "images").mkdir(parents=True)
                for name, content in files_after_cut(changes[:at], trial.random).items():
                    (trial.folder / name).write_bytes(content)
                losses = start_after_cut(trial, back_end, contents_of(orders))
                outcome.losses += [f"cut after {at} of {len(changes)} changes: {loss}" for loss in losses]
                outcome.tried += 1
                if not trial.has_time():
                    return outcome
    return outcome
