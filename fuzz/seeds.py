#!/usr/bin/env python3
"""Writes the first inputs of the fuzzer's targets, made of the tree's own examples: campaigns, scenarios, pictures.

usage: seeds.py ROOT OUTPUT
"""

import hashlib
import json
import shutil
import subprocess
import sys
from pathlib import Path


def campaigns(root):
    """All campaigns of the documentation, the scenarios and the picture tests, as objects."""
    for file in sorted(root.glob("docs/campaigns/*.json")):
        yield json.loads(file.read_text())
    for file in sorted((root / "tests").rglob("*.jsonl")):
        for line in file.read_text().splitlines():
            try:
                step = json.loads(line)
            except ValueError:
                continue
            if isinstance(step, dict):
                yield from (step[key] for key in ("campaign", "push", "payload") if isinstance(step.get(key), dict))


def text_of(nested):
    return nested if isinstance(nested, str) else json.dumps(nested, ensure_ascii=False)


def nested_texts(campaign, *keys):
    return [text_of(campaign[key]) for key in keys if key in campaign]


def as_push(campaign):
    return {key: text_of(value) if key in ("trigger", "body", "template") else value for key, value in campaign.items()}


def encoded_pictures():
    """A small picture in the formats and kinds that no example has, as far as there is a program to make them."""
    kinds = {"jpg": [["-quality", "60"], ["-interlace", "JPEG"], ["-colorspace", "CMYK"], ["-colorspace", "Gray"]],
             "png": [["-interlace", "PNG"], ["-depth", "16"], ["-colors", "3"], ["-alpha", "set", "-define", "png:color-type=4"]],
             "gif": [[], ["-duplicate", "2"], ["-interlace", "GIF"]],
             "webp": [[], ["-define", "webp:lossless=true"]]}
    if not shutil.which("convert"):
        return
    for ending, variants in kinds.items():
        for options in variants:
            made = subprocess.run(["convert", "-size", "24x17", "gradient:red-blue", *options, f"{ending}:-"],
                                  capture_output=True)
            if made.returncode == 0:
                yield made.stdout


def random_bytes(kind, number):
    """The same ones each time; the first byte is the kind."""
    return bytes([kind]) + b"".join(hashlib.sha512(bytes((kind, number, part))).digest() for part in range(4 + 4 * number))


def seeds(root):
    """The inputs of each target."""
    every = list(campaigns(root))
    pushes = [as_push(campaign) for campaign in every]
    answers = [{"status": "200", "message": "ok", "triggers": pushes[at:at + 3]} for at in range(0, len(pushes), 3)]
    lines = [line for file in sorted((root / "tests").rglob("*.jsonl")) for line in file.read_text().splitlines()]
    pictures = [file.read_bytes() for folder in ("tests", "docs") for file in sorted((root / folder).rglob("*"))
                if file.suffix in (".png", ".jpg", ".jpeg", ".gif", ".webp")]
    return {
        "PushTarget": [json.dumps(push, ensure_ascii=False) for push in every + pushes],
        "NestedTextTarget": [text for campaign in every for text in nested_texts(campaign, "trigger", "body")],
        "StyleTarget": [text for campaign in every for text in nested_texts(campaign, "template")],
        "EventsAnswerTarget": [json.dumps(answer, ensure_ascii=False) for answer in answers],
        "ScenarioLineTarget": [line for line in lines if len(line) < 4096],
        "LayoutTarget": [random_bytes(kind, number) for kind in range(4) for number in range(8)],
        "ImageTarget": [*(picture for picture in pictures if len(picture) < 65536), *encoded_pictures()],
    }


def main():
    root, output = Path(sys.argv[1]), Path(sys.argv[2])
    shutil.rmtree(output, ignore_errors=True)
    for target, inputs in seeds(root).items():
        folder = output / target
        folder.mkdir(parents=True)
        unique = dict.fromkeys(seed if isinstance(seed, bytes) else seed.encode() for seed in inputs)
        assert unique, f"no seed for {target}"
        for number, seed in enumerate(unique):
            (folder / str(number)).write_bytes(seed)


main()
