#!/usr/bin/env python3
"""What the JSON Schema of a campaign, as the program prints it, takes and what it refuses: all campaigns of the tree, and
small changes to them (structures.json), of which `check` says the same.

usage: schema_test.py PROGRAM ROOT
"""

import copy
import json
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from jsonschema import Draft202012Validator

# The rules of which the schema refuses every mistake; and those of which it refuses some, or some by the way.
REFUSED = {"no-scope", "no-trigger", "unknown-type", "banner-image", "banner-empty", "unknown-action", "no-answer-button",
           "no-options", "image-address", "unknown-key", "wrong-kind", "empty-button", "selection-type", "color", "text-size",
           "gateway"}
PARTLY_REFUSED = {"json", "action-address", "equal-options"}

program, root = sys.argv[1], Path(sys.argv[2])
structures = json.loads((Path(__file__).parent / "structures.json").read_text())
problems = []


def run(*words):
    return subprocess.run([program, "check", *words], capture_output=True, text=True).stdout


def gallery():
    return {file.stem: json.loads(file.read_text()) for file in sorted(root.glob("docs/campaigns/*.json"))}


def campaigns_of_the_tree():
    """Every campaign that is kept anywhere as an example, with its name."""
    yield from gallery().items()
    for number, line in enumerate((root / "Examples/demonstration.jsonl").read_text().splitlines()):
        if line.startswith('{"campaign"'):
            yield f"demonstration.jsonl:{number + 1}", json.loads(line)["campaign"]
    for file in sorted(root.glob("Examples/sheet/*.json")):
        yield file.name, json.loads(file.read_text().replace("IMAGE", "https://shop.example/picture.png"))


def as_texts(campaign):
    """The campaign as it travels."""
    return {key: json.dumps(value) if isinstance(value, dict) else value for key, value in campaign.items()}


def as_objects(campaign):
    """The campaign as a validator sees it that looks into texts, too."""
    def read(value):
        try:
            return json.loads(value)
        except ValueError:
            return value
    return {key: read(value) if key in ("trigger", "body", "template") and isinstance(value, str) else value
            for key, value in campaign.items()}


def changed(change):
    """The campaign, as it is or changed already, with another value at the place, or without any."""
    campaign = changed(change["basis"]) if "basis" in change else copy.deepcopy(gallery()[change["of"]])
    *steps, last = change["at"].split("/")[1:]
    holder = campaign
    for step in steps:
        holder = holder[int(step) if isinstance(holder, list) else step]
    if isinstance(holder, list):
        last = int(last)
    if "write" in change:
        holder[last] = change["write"]
    else:
        del holder[last]
    return campaign


def values(value, place=""):
    """Whatever stands in a campaign, with its place, but for what is the author's own."""
    yield place, value
    inner = value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ()
    if place != "/trigger/attributes":
        for step, member in inner:
            yield from values(member, f"{place}/{step}")


def mistakes_of_kind():
    """Mistakes that can be made at each place of a campaign: another kind of value, a key that nothing reads, what is no
    color or size."""
    seen = set()
    for name, campaign in gallery().items():
        variations = [{"of": name, "at": "/scope", "write": name}] + [c for c in structures["correct"] if c["of"] == name]
        for basis in variations:
            for place, value in values(changed(basis)):
                kind = re.sub(r"/\d+", "/*", place)
                if kind in seen or not place or place.startswith("/$schema"):
                    continue
                seen.add(kind)
                wrong = [(place, 17), (place, {} if isinstance(value, list) else [17])]
                if isinstance(value, dict) and place != "/trigger/attributes":
                    wrong.append((place + "/another", "text"))
                if kind.lower().endswith("color"):
                    wrong += [(place, "red"), (place, "FFFFFF"), (place, "#12345")]
                if kind.endswith("textSize"):
                    wrong += [(place, "17px"), (place, "0"), (place, "17.5")]
                yield from ({"mistake": f"{write} at {at}", "of": name, "basis": basis, "at": at, "write": write} for at, write in wrong)


def complaints(error):
    """What a validator has against a value. Of an alternative, the one that the value is meant to be: an object or a text."""
    meant = 0 if isinstance(error.instance, dict) else 1
    for inner in error.context:
        if inner.schema_path[0] == meant:
            yield from complaints(inner)
    if not error.context:
        place = "".join(f"/{step}" for step in error.absolute_path)
        # Of a key that is missing or should not be there, the object around it is told.
        if error.validator == "required":
            yield from (f"{place}/{key}" for key in error.validator_value if key not in error.instance)
        elif error.validator == "additionalProperties":
            yield from (f"{place}/{key}" for key in error.instance if key not in error.schema["properties"])
        else:
            yield place


def objections(campaign):
    return sorted({place for error in validator.iter_errors(campaign) for place in complaints(error)})


def findings(campaigns):
    """What `check` finds in each of the campaigns."""
    with tempfile.TemporaryDirectory() as folder:
        for number, campaign in enumerate(campaigns):
            # Only one campaign of a run may have a scope.
            if isinstance(campaign.get("scope"), str) and campaign["scope"]:
                campaign = {**campaign, "scope": f"scope-{number}"}
            Path(folder, f"{number:03}.json").write_text(json.dumps(campaign))
        told = [json.loads(line) for line in run("--format", "json", folder).splitlines()]
    return [[finding for finding in told if int(Path(finding["file"]).stem) == number] for number in range(len(campaigns))]


schema = json.loads(run("--schema"))
Draft202012Validator.check_schema(schema)
validator = Draft202012Validator(schema)

if sorted(map(json.dumps, schema["examples"])) != sorted(map(json.dumps, gallery().values())):
    problems.append("the schema's examples are not the gallery")
for name, campaign in campaigns_of_the_tree():
    for form in (campaign, as_texts(campaign)):
        if places := objections(form):
            problems.append(f"{name}: refused for {places}")

rules = [line.split()[0] for line in run("--rules").splitlines()]
for file in sorted(root.glob("tests/campaigns/mistakes/**/*.json")):
    rule = max((rule for rule in rules if f"{file.stem}-".startswith(f"{rule}-")), key=len)
    if rule not in PARTLY_REFUSED:
        if bool(objections(as_objects(json.loads(file.read_text())))) != (rule in REFUSED):
            problems.append(f"{file.name}: {'taken' if rule in REFUSED else 'refused'}")
for file in sorted(root.glob("tests/campaigns/correct/**/*.json")):
    if places := objections(as_objects(json.loads(file.read_text()))):
        problems.append(f"{file.name}: refused for {places}")

mistakes = structures["mistakes"] + list(mistakes_of_kind())
correct = structures["correct"]
for change, told in zip(mistakes, findings([changed(change) for change in mistakes])):
    places = objections(changed(change))
    # A list may lack what one of its elements is no more.
    if change["at"] not in places or not all(change["at"].startswith(place) for place in places):
        problems.append(f"{change['mistake']}: refused for {places} instead of {change['at']}")
    if not any(finding["place"].startswith(change["at"]) or change["at"].startswith(finding["place"]) for finding in told):
        problems.append(f"{change['mistake']}: check finds nothing there, but {told}")
for change, told in zip(correct, findings([changed(change) for change in correct])):
    told = [finding for finding in told if finding["severity"] == "error" or finding["rule"] in REFUSED]
    if (places := objections(changed(change))) or told:
        problems.append(f"{change}: refused for {places}, {told}")

print("\n".join(problems) or f"{len(mistakes)} mistakes refused, {len(correct)} variations taken")
sys.exit(bool(problems) or len(mistakes) < 150)
