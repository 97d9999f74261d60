#!/usr/bin/env python3
"""Whatever stands where the program keeps its files, a run goes on, says what it found, follows no link, and leaves
files behind that the next run uses without a word.

usage: odd_files_test.py VANTIX-INAPP FILES-OF-1.0 [GROUP ODDITY]
"""

import json
import os
import shutil
import stat
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

PROGRAM, FILES = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
STORE, REPORTS, IMAGE = "InAppMessageModel.sqlite", "reports.sqlite", "images/c46059cd3a84cc7c"
NOBODY = 65534
# The machine's administrator may read everything, so the program is then run as somebody else.
USER = {"user": NOBODY, "group": NOBODY, "extra_groups": []} if os.geteuid() == 0 else {}

# What is odd at once, so that no oddity hides behind another.
GROUPS = {
    "files": ["settings.json", STORE, REPORTS, IMAGE + ".image"],
    "beside": [name + ending for name in (STORE, REPORTS) for ending in ("-wal", "-shm", "-journal")]
    + ["settings.json.new", IMAGE + ".image.new", IMAGE + ".identifiers"],
    "folder": ["images"],
}

ODDITIES = {
    "a folder": lambda path, elsewhere: path.mkdir(),
    "a full folder": lambda path, elsewhere: (path.mkdir(), (path / "file").write_text("kept")),
    "a pipe": lambda path, elsewhere: os.mkfifo(path),
    "a link to a device": lambda path, elsewhere: path.symlink_to("/dev/zero"),
    "a link to a file": lambda path, elsewhere: path.symlink_to(elsewhere / "file"),
    "a link to a folder": lambda path, elsewhere: path.symlink_to(elsewhere),
    "a locked folder": lambda path, elsewhere: path.mkdir(mode=0),
    "a link to nowhere": lambda path, elsewhere: path.symlink_to(elsewhere / "nothing"),
    "empty": lambda path, elsewhere: path.write_text(""),
    "huge": lambda path, elsewhere: (path.write_text(""), os.truncate(path, 1 << 30)),
    "unreadable": lambda path, elsewhere: (path.write_text("{}"), path.chmod(0)),
    "garbage": lambda path, elsewhere: path.write_bytes(b"\xfe\n{garbage" * 999),
}


def is_harmless(path, oddity):
    """Whether nothing need be said: of what is only cleared, made anew or read as it is."""
    if path.suffix == ".new":
        return True
    if path.suffix == ".identifiers":
        return oddity in ("empty", "garbage")
    if "-" in path.suffix:
        return oddity in ("empty", "huge", "unreadable", "garbage")
    if path.name == "images":
        return oddity in ("a folder", "a full folder", "a locked folder")
    return oddity == "empty" and path.suffix == ".sqlite"


CAMPAIGN = {"cuid": "someone", "trigger": '{"eventName": "home"}', "body": '{"type": "POPUP", "message": "Hello", "ctas": []}'}
STEPS = [
    {"configure": {"logLevel": "error", "customerId": "someone", "reportAttributes": False}},
    {"backend": {"images": str(Path(__file__).resolve().parents[2] / "scenarios" / "images")}},
    {"payload": {**CAMPAIGN, "scope": "stays", "trigger": '{"eventName": "later"}'}},
    {"payload": {**CAMPAIGN, "scope": "fresh"}},
    {"event": "home"},
    {"dismiss": True},
    {"wait": 30},
    {"campaign": {**CAMPAIGN, "scope": "pictured", "imageIdentifier": "picture", "trigger": {"eventName": "INSTANT"},
                  "body": {"type": "POPUP", "message": "Hello", "image": "$BACKEND/images/wide.png", "ctas": []}}},
    {"wait": 1},
    {"store": True},
]


def play(state):
    """The printed objects; everything that is said at error level; or why there is neither."""
    try:
        run = subprocess.run([PROGRAM, "play", "-", "--state", state], input="\n".join(map(json.dumps, STEPS)), text=True,
                             capture_output=True, timeout=30, cwd=state.parent, umask=0, **USER)
    except subprocess.TimeoutExpired:
        raise AssertionError("hangs")
    assert run.returncode == 0 and not run.stderr, f"ends with {run.returncode}: {run.stderr[-200:]}"
    lines = [json.loads(line) for line in run.stdout.splitlines()]
    logged = [line["log"]["message"][-200:] for line in lines if "log" in line]
    return lines, [message for message in logged if "primary CTA" not in message]


def check_run(state):
    lines, errors = play(state)
    assert [line["completion"]["result"] for line in lines if "completion" in line] == [True, True], f"not stored: {errors}"
    shown = [line["shown"]["scope"] for line in lines if "shown" in line]
    assert shown == ["fresh", "pictured"], f"shown: {shown}"
    stored = [record["scope"] for record in lines[-1]["store"]]
    assert "stays" in stored, f"stored: {stored}"
    reports = [line for line in lines if line.get("request", {}).get("url", "").endswith("/reports")]
    assert "inAppMessageDismissed" in str(reports), "not reported"
    return errors


def check_rights(state):
    for path in [state, *state.rglob("*")]:
        if ".damaged-" in str(path) or path.name == "file" or path.suffix == ".identifiers":
            continue
        mode, wanted = stat.S_IMODE(path.lstat().st_mode), 0o700 if path.is_dir() else 0o600
        assert mode == wanted, f"{path.name} has the mode {mode:o}"
    assert not list(state.rglob("*.new")), "a draft is left"


def copied(folder):
    """The files of version 1.0, for the user as whom the program is run."""
    state = folder / "state"
    shutil.copytree(FILES, state)
    for path in [state, *state.rglob("*")]:
        path.chmod(0o700 if path.is_dir() else 0o600)
    give(folder, state, *state.rglob("*"))
    return state


def give(*paths):
    for path in paths if USER else []:
        os.chown(path, NOBODY, NOBODY, follow_symlinks=False)


def check_sound():
    with tempfile.TemporaryDirectory() as folder:
        state = copied(Path(folder))
        image = (state / (IMAGE + ".image")).read_bytes()
        lines, errors = play(state)
        assert not errors, errors
        assert "kept" in [record["scope"] for record in lines[-1]["store"]], "a stored message is lost"
        sent = next(line["request"]["body"] for line in lines if line.get("request", {}).get("url", "").endswith("/reports"))
        events = json.loads(sent)["events"]
        assert [event["name"] for event in events[:2]] == ["inAppMessageShown", "inAppMessageDismissed"], "reports are lost"
        assert (state / (IMAGE + ".image")).read_bytes() == image, "an image is lost"


def check(group, oddity):
    with tempfile.TemporaryDirectory() as folder:
        folder = Path(folder)
        state, elsewhere = copied(folder), folder / "elsewhere"
        elsewhere.mkdir()
        (elsewhere / "file").write_text("elsewhere")
        give(elsewhere, elsewhere / "file")
        odd = [state / name for name in GROUPS[group]]
        for path in odd:
            shutil.rmtree(path) if path.is_dir() else path.unlink(missing_ok=True)
            ODDITIES[oddity](path, elsewhere)
            give(path)
        before = (elsewhere / "file").stat()
        try:
            errors = check_run(state)
            for path in odd:
                said = [error for error in errors if path.name + " " in error]
                assert said or is_harmless(path, oddity), f"says nothing of {path.name}: {errors}"
            check_rights(state)
            assert not check_run(state), "says it again"
            after = (elsewhere / "file").stat()
            assert (before.st_mode, before.st_mtime) == (after.st_mode, after.st_mtime), "touches what a link leads to"
            assert [path.name for path in elsewhere.iterdir()] == ["file"], "writes where a link leads to"
        except AssertionError as problem:
            return f"{group} is {oddity}: {problem}"
        finally:
            for path in odd:
                if path.exists() and not path.is_symlink():
                    path.chmod(0o700)


def main():
    cases = [(group, oddity) for group in GROUPS for oddity in ODDITIES]
    if len(sys.argv) > 3:
        cases = [(sys.argv[3], sys.argv[4])]
    check_sound()
    with ThreadPoolExecutor(2) as pool:
        problems = [problem for problem in pool.map(lambda case: check(*case), cases) if problem]
    print("\n".join(problems))
    print(f"{len(cases)} cases, {len(problems)} problems")
    sys.exit(bool(problems))


main()
