#!/usr/bin/env python3
"""What the program does where its surroundings fail it, or mean it ill: output that finds no room, a temporary folder that
is not there, clients of its back end that ask for too much, or never come to an end.

usage: adversity.py PROGRAM
"""

import json
import os
import signal
import socket
import subprocess
import sys
import tempfile
import time
from contextlib import ExitStack, contextmanager
from pathlib import Path

program = sys.argv[1]
problems = []


def expect(what, got, wanted):
    if got != wanted:
        problems.append(f"{what}: {got!r} instead of {wanted!r}")


def run(*words, stdout=subprocess.PIPE, stdin="", **environment):
    ended = subprocess.run([program, *words], input=stdin, stdout=stdout, stderr=subprocess.PIPE, text=True, timeout=60,
                           env={**os.environ, **environment})
    return ended.returncode, ended.stderr.splitlines()[-1:]


def output_without_room():
    nowhere = (2, ["standard output cannot be written: No space left on device"])
    with open("/dev/full", "w") as full:
        expect("play", run("play", "-", stdout=full, stdin='{"wait": 1}\n{"elements": true}\n{"wait": 1}\n'), nowhere)
        expect("backend", run("backend", stdout=full), nowhere)
        expect("--help", run("--help", stdout=full), nowhere)
    read_end, write_end = os.pipe()
    os.close(read_end)
    expect("a reader that left", run("play", "-", stdout=write_end, stdin='{"elements": true}\n'), (0, []))
    os.close(write_end)


def no_temporary_folder():
    expect("TMPDIR", run("play", "-", TMPDIR="/nowhere"),
           (2, ["there is no folder for temporary files (TMPDIR): No such file or directory"]))


@contextmanager
def backend(*options):
    with subprocess.Popen([program, "backend", *options], stdout=subprocess.PIPE, text=True) as process:
        url = json.loads(process.stdout.readline())["backend"]["baseURL"]
        try:
            yield process, int(url.rpartition(":")[2])
        finally:
            process.send_signal(signal.SIGTERM)


def connected(port):
    client = socket.create_connection(("127.0.0.1", port), timeout=30)
    client.settimeout(30)
    return client


def status(port, request):
    """What the back end answers to the bytes; empty when it hangs up."""
    with connected(port) as client:
        try:
            for piece in request:
                client.sendall(piece)
            return client.recv(12)[9:].decode()
        except ConnectionError:
            return ""


def get(path):
    return [f"GET {path} HTTP/1.1\r\nHost: a\r\n\r\n".encode()]


def images():
    with tempfile.TemporaryDirectory() as outside, tempfile.TemporaryDirectory() as folder:
        secret, shown = Path(outside) / "secret", Path(folder) / "a.png"
        for file in secret, shown:
            file.write_text("x")
        (Path(folder) / "inside").symlink_to(shown)
        (Path(folder) / "outside").symlink_to(secret)
        (Path(folder) / "folder").symlink_to(outside)
        os.mkfifo(Path(folder) / "fifo")
        with backend("--images", folder) as (_, port):
            for name, wanted in {"a.png": "200", "inside": "200", "outside": "404", "folder": "404", "fifo": "404",
                                 "a.png%00b": "404", "n" * 300: "404", "n" * 5000: "404", "folder%2Fsecret": "404"}.items():
                expect(f"image {name[:20]}", status(port, get("/images/" + name)), wanted)


def bodies():
    head = b"POST /mapp/reports HTTP/1.1\r\nHost: a\r\n"
    mebibyte = b" " * (1 << 20)
    batch = b'{"events": []}'
    with backend() as (process, port):
        expect("a body", status(port, [head + b"Content-Length: %d\r\n\r\n" % len(batch), batch]), "200")
        expect("a large body", status(port, [head + b"Content-Length: 999999999\r\n\r\n", mebibyte]), "413")
        chunk = b"100000\r\n" + mebibyte + b"\r\n"
        expect("an endless body", status(port, [head + b"Transfer-Encoding: chunked\r\n\r\n"] + 300 * [chunk]) in ("", "400"), True)
        expect("a packed body", status(port, [head + b"Content-Encoding: gzip\r\nContent-Length: 1\r\n\r\nx"]), "415")
        memory = Path(f"/proc/{process.pid}/status").read_text().split("VmHWM:")[1].split()[0]
        print("back end's memory in KiB:", memory)
        expect("memory", "small" if int(memory) < 150_000 else memory, "small")


def clients_that_never_end():
    with ExitStack() as clients, backend() as (process, port):
        for _ in range(16):
            clients.enter_context(connected(port)).sendall(b"GET / HT")
        begin = time.monotonic()
        expect("beside silent clients", status(port, get("/mapp/events")), "200")
        print(f"answered beside silent clients after {time.monotonic() - begin:.3f} s")
        begin = time.monotonic()
        process.send_signal(signal.SIGTERM)
        expect("the end", process.wait(30), 0)
        took = time.monotonic() - begin
        print(f"ended beside silent clients after {took:.3f} s")
        expect("the end waits for nobody", took < 4, True)
    with backend() as (process, port), connected(port) as client:
        begin = time.monotonic()
        client.settimeout(0.5)
        ended = False
        while not ended and time.monotonic() - begin < 20:
            try:
                client.sendall(b"X")
                ended = client.recv(100) is not None
            except TimeoutError:
                pass
            except ConnectionError:
                ended = True
        print(f"a trickling client was cut after {time.monotonic() - begin:.1f} s")
        expect("a trickling client is cut", ended, True)


for check in output_without_room, no_temporary_folder, images, bodies, clients_that_never_end:
    try:
        check()
    except Exception as problem:
        problems.append(f"{check.__name__}: {problem!r}")
print("\n".join(problems))
sys.exit(bool(problems))
