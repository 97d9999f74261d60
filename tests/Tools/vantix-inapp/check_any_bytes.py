#!/usr/bin/env python3
"""`check` has an answer to whatever a file holds: cut, random, deep, huge, in another encoding.

usage: check_any_bytes.py PROGRAM FOLDER [SEED [COUNT [MEGABYTES]]]
"""

import json
import random
import subprocess
import sys
import tempfile
import time
from pathlib import Path

program, folder = sys.argv[1], Path(sys.argv[2])
seed, count, megabytes = (int(word) for word in sys.argv[3:] + ["1", "150", "0"][len(sys.argv) - 3:])
chance = random.Random(seed)
seeds = [file.read_bytes() for file in sorted(folder.rglob("*.json")) if file.stat().st_size < 8000]
pieces = [b'"', b"\\", b"{", b"}", b"[", b"]", b",", b":", b"\0", b"\n", b"\xff", b"\xed\xa0\x80", b"\\ud800", b"1e999",
          b"-0", b"null", b"true", b'"ctas":7', b"\xe2\x80\xae", b"\x1b[31m", b"#", b"{}", b'""', b"\xef\xbb\xbf", b"9" * 40]


def mutated(text):
    text = bytearray(text)
    for _ in range(chance.randrange(1, 6)):
        at = chance.randrange(len(text) + 1)
        end = at + chance.choice([0, 1, 1, 2, 8, 40])
        text[at:end] = chance.choice([chance.choice(pieces), chance.randbytes(3), bytes(text[at:end]) * 2])
    return bytes(text)


def odd_files():
    yield from (b"", b"\0", b" ", b"{", b"{}", b"[]", b"null", b'"', b"\xff\xfe{\0}\0", b"\xef\xbb\xbf{}", b'{"a":1}' * 2)
    text = chance.choice(seeds)
    yield from (text[:length] for length in range(1, len(text), 37))
    yield text.decode().encode("utf-16")
    for depth in (511, 513, 600, 100_000):
        yield b"[" * depth + b"]" * depth
        yield b'{"body":' * depth + b"1" + b"}" * depth
        yield json.dumps({"body": '{"a":' * depth + "1" + "}" * depth}).encode()
    yield b'{"scope":"a","scope":7,"body":{"type":"POPUP","type":"popup"},"body":[],"trigger":{"eventName":"INSTANT"}}'
    yield from (chance.randbytes(chance.randrange(2000)) for _ in range(count // 4))
    yield from (mutated(chance.choice(seeds)) for _ in range(count))
    size = megabytes << 20 or 100_000
    whole = json.loads(next(folder.rglob("correct/english-popup.json")).read_bytes())
    for key, value in (("title", "x" * size), ("message", "\\\"\n" * (size // 3)), ("type", "P" * size),
                       ("ctas", [{}] * (size // 8)), ("feedbackOptions", {"options": ["a"] * (size // 8)}),
                       ("image", "https://" + "a" * size)):
        yield json.dumps({**whole, "body": {**whole["body"], key: value}}).encode()
        yield json.dumps({**whole, "body": json.dumps({**whole["body"], key: value})}).encode()
    yield json.dumps({str(n): n for n in range(size // 16)}).encode()
    yield json.dumps({**whole, "template": {"ctas": [{str(n): 1} for n in range(size // 16)]}}).encode()
    yield b"[" + b"0," * (size // 2) + b"0]"
    yield b'"' + b"\\u0041" * (size // 6)


with tempfile.TemporaryDirectory() as temporary:
    for number, text in enumerate(odd_files()):
        Path(temporary, f"{number:06}.json").write_bytes(text)
    begin = time.monotonic()
    ended = subprocess.run([program, "check", temporary, "--format", "json"], capture_output=True, timeout=540)
    print(f"seed {seed}: {number + 1} files in {time.monotonic() - begin:.1f} s, {len(ended.stdout)} bytes of findings")
    assert (ended.returncode, ended.stderr) == (1, b""), (ended.returncode, ended.stderr[-2000:])
    found = [json.loads(line) for line in ended.stdout.decode().splitlines()]
    for finding in found:
        lines = Path(finding["file"]).read_bytes().split(b"\n")
        assert 1 <= finding["line"] <= len(lines), finding
        assert 1 <= finding["column"] <= len(lines[finding["line"] - 1]) + 1, finding
    unreadable = {finding["file"] for finding in found if (finding["rule"], finding["place"]) == ("json", "")}
    for file in Path(temporary).iterdir():
        try:
            is_object = isinstance(json.loads(file.read_bytes().decode()), dict)
        except (ValueError, RecursionError):
            is_object = False
        assert is_object or str(file) in unreadable, file.read_bytes()[:200]
