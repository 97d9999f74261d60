"""One life of the module in a process of its own, what it promises, and what of that is kept."""

import json
import signal
import sqlite3
import subprocess
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

DATABASES = ["InAppMessageModel.sqlite", "reports.sqlite"]


class Life:
    """A run of vantix-tortured, which says how it is ordered about, on the trial's data directory."""

    def __init__(self, trial, back_end=None, first=()):
        self.log = []
        self.errors = trial.folder / "stderr"
        with open(self.errors, "w") as errors:
            self.process = subprocess.Popen(
                [trial.build / "tests/Torture/vantix-tortured", trial.data, back_end.url if back_end else "", *first],
                stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=errors, text=True, errors="replace",
                cwd=trial.folder)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end(signal.SIGKILL)
        self.process.stdout.close()

    def order(self, *orders):
        """Asks without waiting; the answers come by `next`."""
        try:
            self.process.stdin.write("".join(order + "\n" for order in orders))
            self.process.stdin.flush()
        except (BrokenPipeError, ValueError):
            # It is over, which its answers tell.
            pass

    def next(self):
        """The next order that is answered, and its answer; None when the life is over, where half a line is none."""
        while (line := self.process.stdout.readline()).endswith("\n"):
            order, _, answer = line[:-1].partition(": ")
            if order != "log":
                return order, answer
            self.log.append(answer)
        return None

    def ask(self, order):
        """The answer to this order; of what else is answered meanwhile nothing is kept. "dead" when the life is over."""
        self.order(order)
        while answered := self.next():
            if answered[0] == order:
                return answered[1]
        return "dead"

    def end(self, by=None):
        """Ends it by the signal, or else in good order: its status, or the negative number of the signal."""
        if by:
            self.process.send_signal(by)
        try:
            self.process.stdin.close()
        except BrokenPipeError:
            pass
        return self.process.wait()

    def last_words(self):
        """How a life that is over ended."""
        return f"status {self.end()} {self.errors.read_text()[-300:]}"


class BackEnd:
    """A server on loopback that has a picture under every path and takes reports."""

    def __init__(self):
        self.reported = set()
        self.calls_with_reports = 0
        # Reports, with a status that lets them be sent again.
        self.refuses = False
        back_end = self

        class Handler(BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"
            # Head and body leave together.
            wbufsize = -1

            def answer(self, body, status=200):
                self.send_response(status)
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def do_GET(self):
                # A sync has a body, too.
                self.rfile.read(int(self.headers["Content-Length"] or 0))
                self.answer(f"FAKE 40 30 {self.path} ".encode() + b"p" * 3000)

            def do_POST(self):
                body = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
                back_end.calls_with_reports += 1
                if back_end.refuses:
                    return self.answer(b"{}", 503)
                back_end.reported |= {event["attributes"].get("scope") for event in body.get("events", [])}
                self.answer(b"{}")

            def log_message(self, *_):
                pass

            def handle(self):
                try:
                    super().handle()
                except ConnectionError:
                    pass

        self.server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.server.daemon_threads = True
        self.url = f"http://127.0.0.1:{self.server.server_port}"
        threading.Thread(target=self.server.serve_forever, kwargs={"poll_interval": 0.02}, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.shutdown()
        self.server.server_close()


class Ledger:
    """What modules have promised in all their lives on one data directory."""

    def __init__(self):
        self.stored, self.deleted, self.reported = set(), set(), set()

    def ordered(self, order):
        """From now on it may happen, answered or not."""
        verb, *words = order.split()
        if verb == "delete":
            self.stored.discard(words[0])

    def answered(self, order, answer):
        verb, *words = order.split()
        kept = {"insert": self.stored, "delete": self.deleted, "report": self.reported}.get(verb)
        if answer == "yes" and kept is not None:
            kept.add(words[0])

    def ask(self, life, order):
        """Asks, and takes note of both."""
        self.ordered(order)
        answer = life.ask(order)
        self.answered(order, answer)
        return answer

    def missing(self, life, trial, back_end):
        """In words, what of the promises is broken where the life runs."""
        listed = life.ask("list").split()
        if "dead" in listed:
            return ["the module did not start: " + life.last_words()]
        # What leaves the outbox has come to the back end before.
        waiting = waiting_reports(trial.data)
        known = waiting | back_end.reported
        return (["the message " + scope for scope in self.stored - set(listed)]
                + ["the deletion of " + scope for scope in self.deleted & set(listed)]
                + ["the report " + scope for scope in self.reported - known])


def rows(file, statement):
    """Of a database that others may use."""
    connection = sqlite3.connect(f"file:{file}?mode=ro", uri=True, timeout=10)
    try:
        return connection.execute(statement).fetchall()
    finally:
        connection.close()


def waiting_reports(data):
    """The scopes of the reports in the outbox."""
    file = data / "reports.sqlite"
    if not file.exists() or not rows(file, "SELECT 1 FROM sqlite_master WHERE name = 'Report'"):
        return set()
    return {json.loads(event)["attributes"]["scope"] for event, in rows(file, "SELECT event FROM Report")}


def damages(data):
    """What SQLite's integrity check says of the databases, in words."""
    found = []
    for name in DATABASES:
        if (data / name).exists():
            try:
                found += [f"{name}: {text}" for text, in rows(data / name, "PRAGMA integrity_check") if text != "ok"]
            except sqlite3.DatabaseError as problem:
                found.append(f"{name}: {problem}")
    return found
