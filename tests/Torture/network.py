"""The network cuts, stalls, changes, lies, loops and never ends."""

import gzip
import itertools
import json
import re
import socket
import struct
import sys
import threading
import time
from dataclasses import dataclass
from pathlib import Path
from types import SimpleNamespace
from typing import Callable

from frame import Outcome
from life import Life, waiting_reports

# A life is stopped after a minute.
SECONDS_A_LIFE = 40
# For what takes no time without a fault.
PATIENCE = 20
# Of a life, whatever it is sent.
MOST_MEBIBYTES = 192
# After which no more is tried.
MOST_LOSSES = 10


def http(body, status="200 OK", headers=""):
    return f"HTTP/1.1 {status}\r\n{headers}Content-Length: {len(body)}\r\n\r\n".encode() + body


class BackEnd:
    """A server on loopback over raw connections, whose next answer goes through the hands of a fault: a function that
    gets the connection, the whole answer and this, and after which the connection ends."""

    def __init__(self):
        self.fault = None
        self.body = b"{}"
        # The reports that came with a request that was answered well.
        self.confirmed = set()
        self.is_stalled, self.may_go_on = threading.Event(), threading.Event()
        self.listener = socket.create_server(("127.0.0.1", 0), backlog=64)
        self.url = f"http://127.0.0.1:{self.listener.getsockname()[1]}"
        threading.Thread(target=self.accept, daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()

    def accept(self):
        try:
            while True:
                connection = self.listener.accept()[0]
                connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                threading.Thread(target=self.serve, args=[connection], daemon=True).start()
        except OSError:
            pass

    def serve(self, connection):
        try:
            with connection, connection.makefile("rb") as stream:
                while line := stream.readline():
                    path = line.split()[1].decode()
                    length = 0
                    while (header := stream.readline().strip()):
                        name, _, value = header.partition(b":")
                        length = int(value) if name.lower() == b"content-length" else length
                    if not self.answer(connection, path, stream.read(length)):
                        return
        except OSError:
            pass

    def answer(self, connection, path, body):
        """Whether the connection goes on."""
        fault = self.fault
        if fault and not path.startswith("/elsewhere"):
            fault(connection, http(self.body_for(path)), self)
            return False
        # It counts when the answer has been given, which the module may know a moment before.
        self.confirmed |= scopes_of(body)
        connection.sendall(http(self.body_for(path)))
        return True

    def body_for(self, path):
        return f"FAKE 40 30 {path} picture".encode() if path.startswith("/image") else self.body


def scopes_of(body):
    return {event["attributes"]["scope"] for event in json.loads(body or b"{}").get("events", [])}


class Sync:
    """Of triggers."""

    name = "sync"

    def begin(self, life, back_end, thing):
        push = {"cuid": "customer", "scope": thing, "trigger": '{"eventName":"x"}', "body": '{"type":"POPUP","ctas":[]}',
                "template": '{"ctas":[{}]}'}
        back_end.body = json.dumps({"status": "200", "triggers": [push]}).encode()
        life.order("sync " + thing)

    def outcome(self, life, trial, thing, mark):
        if thing in life.ask("list").split():
            return True
        return False if life.log[mark:] else None

    again = begin


class Picture:
    name = "image"

    def begin(self, life, back_end, thing):
        self.answer = None
        life.order("image /image/" + thing)

    def outcome(self, life, trial, thing, mark):
        answered = life.next()
        if answered is None:
            return False
        return answered[1] == "yes" if answered[0] == "image /image/" + thing else None

    again = begin


class Report:
    name = "report"

    def begin(self, life, back_end, thing):
        back_end.body = b"{}"
        life.ask("report " + thing)

    def again(self, life, back_end, thing):
        life.order("resend")

    def outcome(self, life, trial, thing, mark):
        life.ask("turn")
        if any("again" in line for line in life.log[mark:]):
            return False
        refused = any("dropped" in line for line in life.log[mark:])
        is_kept = thing in waiting_reports(trial.data)
        return False if refused else None if is_kept else True


@dataclass
class Case:
    """One answer to one of the three."""

    name: str
    fault: Callable
    # Whether it counts as a good one; None: it may or may not.
    expected: bool = False
    # Whether it waits until the time-outs are over.
    stalls: bool = False
    # Whether the module may pass over it without a line.
    is_quiet: bool = False


def await_outcome(life, trial, kind, thing, mark, patience=PATIENCE):
    """Whether it succeeded; None: nothing came of it."""
    end = time.monotonic() + patience
    while (outcome := kind.outcome(life, trial, thing, mark)) is None and time.monotonic() < end:
        time.sleep(0.0005)
    return outcome


def attempt(life, back_end, trial, kind, thing, case):
    mark = len(life.log)
    back_end.fault = case.fault
    kind.begin(life, back_end, thing)
    if case.stalls:
        back_end.is_stalled.wait(PATIENCE)
        life.ask("clock +61")
        back_end.may_go_on.set()
    outcome = await_outcome(life, trial, kind, thing, mark, 0.3 if case.is_quiet else PATIENCE)
    back_end.fault = None
    return outcome


def goes_on(life, back_end, trial, kind, thing):
    """Whether the same succeeds now: a report that waits, or else another of the kind."""
    next_thing = thing if kind.name == "report" else thing + "-next"
    kind.again(life, back_end, next_thing)
    # A line that comes late is of the one before.
    return await_outcome(life, trial, kind, next_thing, sys.maxsize)


def try_case(life, back_end, trial, kind, thing, case):
    """In words what is wrong with how the module took it, and with how it went on."""
    back_end.is_stalled.clear()
    back_end.may_go_on.clear()
    mark = len(life.log)
    outcome = attempt(life, back_end, trial, kind, thing, case)
    losses = []
    if outcome is None and not case.is_quiet:
        losses.append("nothing came of it")
    if case.expected is not None and outcome is not None and outcome != case.expected:
        losses.append("it was taken" if outcome else "it was refused")
    is_dropped = any("dropped" in line for line in life.log[mark:])
    if kind.name == "report" and (outcome or is_dropped):
        back_end.confirmed.add(thing)
    elif not goes_on(life, back_end, trial, kind, thing):
        losses.append("the next one did not succeed")
    if kind.name == "report" and thing not in back_end.confirmed:
        losses.append("the report was lost")
    return [loss + "".join("; " + line for line in life.log[mark:]) for loss in losses]


def inflict(trial, cases_of):
    """Each case on each of the three; in any order, since there may be no time for all."""
    outcome = Outcome()
    cases = [(kind, case) for kind in (Sync(), Picture(), Report()) for case in cases_of(kind)]
    trial.random.shuffle(cases)
    trial.fresh_folder()
    with BackEnd() as back_end:
        while cases and len(outcome.losses) < MOST_LOSSES and (trial.has_time() or not outcome.tried):
            with Life(trial, back_end) as life:
                end = time.monotonic() + SECONDS_A_LIFE
                while cases and time.monotonic() < end and len(outcome.losses) < MOST_LOSSES and (trial.has_time() or not outcome.tried):
                    kind, case = cases.pop()
                    losses = try_case(life, back_end, trial, kind, f"t{outcome.tried:05}", case)
                    losses += too_much_memory(life)
                    outcome.losses += [f"{kind.name}, {case.name}: {loss}" for loss in losses]
                    outcome.tried += 1
    return outcome


def too_much_memory(life):
    if life.process.poll() is not None:
        return ["the module ended: " + life.last_words()]
    peak = int(re.search(r"VmHWM:\s*(\d+)", Path(f"/proc/{life.process.pid}/status").read_text())[1]) >> 10
    return [f"the module has taken {peak} MiB"] if peak > MOST_MEBIBYTES else []


# At each byte in turn

def at_each_byte(kind, make):
    """The cases for an answer of the kind."""
    with BackEnd() as back_end:
        kind.begin(SimpleNamespace(order=str, ask=str), back_end, "t00000")
        answer = http(back_end.body_for(f"/{kind.name}/t00000"))
    return [case for at in range(len(answer) - 1) for case in make(at)]


def cut(trial):
    """The connection ends, or is reset."""
    def at(byte, option):
        def fault(connection, answer, back_end):
            connection.sendall(answer[:byte])
            connection.setsockopt(*option)
        return fault

    end, reset = (socket.IPPROTO_TCP, socket.TCP_NODELAY, 1), (socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    return inflict(trial, lambda kind: at_each_byte(kind, lambda byte: [
        Case(f"cut at byte {byte}", at(byte, end)), Case(f"reset at byte {byte}", at(byte, reset))]))


def stall(trial):
    """Beyond each time-out, of which a byte more does not make an answer."""
    def at(byte):
        def fault(connection, answer, back_end):
            connection.sendall(answer[:byte])
            back_end.is_stalled.set()
            back_end.may_go_on.wait(PATIENCE)
            connection.sendall(answer[byte:byte + 1])
            connection.recv(1)
        return fault

    return inflict(trial, lambda kind: at_each_byte(kind, lambda byte: [
        Case(f"stalled at byte {byte}", at(byte), stalls=True)]))


def change(trial):
    """A byte is another one, and the connection ends; a reader cannot always know."""
    def at(byte, other):
        def fault(connection, answer, back_end):
            connection.sendall(answer[:byte] + bytes([answer[byte] ^ other]) + answer[byte + 1:])
        return fault

    return inflict(trial, lambda kind: at_each_byte(kind, lambda byte: [
        Case(f"byte {byte} changed by {other}", at(byte, other), expected=None, is_quiet=True)
        for other in (1, 0x20, trial.random.randrange(1, 256))]))


# Answers as no good server gives them

def saying(head, body=None):
    """The head, with its blank line, and the answer's own body, or another."""
    def fault(connection, answer, back_end):
        own = answer.partition(b"\r\n\r\n")[2]
        connection.sendall(head.replace("LENGTH", str(len(own))).encode() + (own if body is None else body(own)))
    return fault


def trickle(connection, answer, back_end):
    for byte in answer:
        connection.sendall(bytes([byte]))


def endless(head, piece):
    """Until the module has had enough of it."""
    def fault(connection, answer, back_end):
        connection.sendall(head)
        for _ in itertools.repeat(None):
            connection.sendall(piece)
    return fault


def redirect(to, status="302 Found"):
    def fault(connection, answer, back_end):
        connection.sendall(f"HTTP/1.1 {status}\r\nLocation: {to}\r\nContent-Length: 0\r\n\r\n".encode())
    return fault


def redirect_on_and_on():
    number = itertools.count()

    def fault(connection, answer, back_end):
        redirect(f"/image/{next(number)}", "307 Temporary Redirect")(connection, answer, back_end)
    return fault


OK = "HTTP/1.1 200 OK\r\n"
MEBIBYTE = b" " * (1 << 20)


def chunked(text):
    return saying(OK + "Transfer-Encoding: chunked\r\n\r\n", lambda own: text.replace("OWN", own.decode()).encode())


def lies_for(kind):
    """A quiet one is an answer that HTTP allows."""
    length = OK + "Content-Length: {}\r\n\r\n"
    zipped = OK + "Content-Encoding: {}\r\nContent-Length: {}\r\n\r\n"
    bomb = gzip.compress(MEBIBYTE * 64)
    cases = [
        Case("byte by byte", trickle, expected=True),
        Case("a length too great", saying(length.format(100000))),
        Case("a length too small", saying(length.format(3)), expected=None, is_quiet=True),
        Case("a length of nothing", saying(length.format(0)), expected=None, is_quiet=True),
        Case("a negative length", saying(length.format(-1)), expected=None),
        Case("a length beyond all numbers", saying(length.format("9" * 40)), expected=None),
        Case("a length that is none", saying(length.format("many")), expected=None),
        Case("two lengths", saying(OK + "Content-Length: LENGTH\r\n" + length.format(10 ** 6)[len(OK):])),
        Case("not zipped", saying(zipped.format("gzip", "LENGTH"))),
        Case("zipped and cut", saying(zipped.format("gzip", 1000), lambda own: gzip.compress(own)[:-9] + b"?" * 400)),
        Case("zipped beyond all bounds", saying(zipped.format("gzip", len(bomb)), lambda own: bomb)),
        Case("an unknown encoding", saying(zipped.format("secret", "LENGTH")), expected=None),
        Case("a wrong type", saying(OK + "Content-Type: text/html\r\nContent-Length: LENGTH\r\n\r\n"), expected=True),
        Case("a chunk without a size", chunked("what?\r\nOWN\r\n0\r\n\r\n")),
        Case("a chunk too great", chunked("fffffff\r\nOWN\r\n0\r\n\r\n")),
        Case("a chunk beyond all numbers", chunked("f" * 40 + "\r\nOWN\r\n0\r\n\r\n")),
        Case("no last chunk", saying(OK + "Transfer-Encoding: chunked\r\n\r\n", lambda own: b"%x\r\n%s\r\n" % (len(own), own))),
        Case("no status line", saying("", lambda own: b"\0\1\2 not HTTP at all")),
        Case("another protocol", saying("RTSP/1.0 200 OK\r\n\r\n")),
        Case("a version to come", saying("HTTP/9.9 200 OK\r\nContent-Length: LENGTH\r\n\r\n")),
        Case("nothing at all", lambda connection, answer, back_end: None),
        Case("a status without meaning", saying("HTTP/1.1 999 ?\r\nContent-Length: LENGTH\r\n\r\n"), expected=None),
        Case("an error of the server", saying("HTTP/1.1 500 ?\r\nContent-Length: 0\r\n\r\n", lambda own: b""), is_quiet=True),
        Case("too busy", saying("HTTP/1.1 503 ?\r\nRetry-After: 99999999999\r\nContent-Length: 0\r\n\r\n", lambda own: b""), is_quiet=True),
        Case("a header without an end", endless(OK.encode() + b"A: ", b"a" * 4096)),
        Case("headers without an end", endless(OK.encode(), b"A: " + b"a" * 4000 + b"\r\n")),
        Case("a body without an end", endless(OK.encode() + b"\r\n", MEBIBYTE)),
        Case("chunks without an end", endless(OK.encode() + b"Transfer-Encoding: chunked\r\n\r\n", b"100000\r\n" + MEBIBYTE + b"\r\n")),
        Case("a redirect to itself", redirect("")),
        Case("a redirect to others on and on", redirect_on_and_on()),
        Case("a redirect to nobody", redirect("http://127.0.0.1:1/")),
    ]
    cases += [Case(f"a redirect to {to}", redirect(to)) for to in (
        "file:///etc/passwd", "ftp://127.0.0.1/", "javascript:alert(1)", "data:,FAKE 40 30", "http://", "http://[::bad", "//", "\x7f")]
    return cases


def lie(trial):
    return inflict(trial, lies_for)
