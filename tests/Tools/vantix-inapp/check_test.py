#!/usr/bin/env python3
"""Holds what `check` says against what the module does.

Each campaign with a mistake (campaigns/mistakes/RULE.json, or RULE-what.json) gets findings of its rule alone, in the
words of campaigns/mistakes.expected; correct ones get none. And each is played: what its finding states must happen.

usage: check_test.py PROGRAM FOLDER
"""

import copy
import json
import re
import struct
import subprocess
import sys
import tempfile
import zlib
from collections import Counter, defaultdict
from pathlib import Path

program, folder = sys.argv[1], Path(sys.argv[2])
mistakes = folder / "mistakes"
customer = "c-2041"
problems = []

# What a mistake needs to be one.
OPTIONS = {"store-id": ["--store-id", ""], "cut": ["--device", "2000x12000@1"]}


def run(*words, stdin=None):
    ended = subprocess.run([program, *map(str, words)], input=stdin, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                           timeout=60)
    return ended.returncode, ended.stdout.decode(), ended.stderr.decode()


def expect(what, holds, *seen):
    if not holds:
        problems.append(f"{what}: {seen}")


# What is found


def known_rules():
    return {line.split()[0]: line.split()[1] for line in run("check", "--rules")[1].splitlines()}


def rule_of(file):
    return max((rule for rule in RULES if file == rule or file.startswith(rule + "-")), key=len)


def options_of(name):
    return ["--customer", customer, *OPTIONS.get(rule_of(name), [])]


def findings_of(*words):
    return [json.loads(line) for line in run("check", "--format", "json", *words)[1].splitlines()]


def each_mistake_has_its_rule_alone():
    named, told, groups = set(), [], defaultdict(list)
    for file in sorted(mistakes.glob("*.json")):
        groups[tuple(options_of(file.stem))].append(file)
    for options, files in groups.items():
        found = findings_of(*files, *options)
        for file in files:
            rules = {finding["rule"] for finding in found if finding["file"] == str(file)}
            named |= rules
            wanted = set() if file.stem == "same-scope-first" else {rule_of(file.stem)}
            expect(f"{file.stem} finds", rules == wanted, rules)
        told += [line.replace(str(mistakes) + "/", "") for line in
                 run("check", *files, *options)[1].splitlines()[:-1]]
    expect("rules without a campaign", set(RULES) - named == {"image-lost", "image-large", "image-small"},
           set(RULES) - named)
    expected = (folder / "mistakes.expected").read_text().splitlines()
    for line in sorted(set(told) ^ set(expected)):
        problems.append(("not expected: " if line in told else "not told: ") + line)


def correct_campaigns_have_none():
    for device in ("phone", "phone-small", "phone-large", "tablet", "tablet-landscape"):
        ended = run("check", folder / "correct", "--strict", "--device", device, "--customer", customer)
        expect("correct campaigns", ended[:2] == (0, f"{len(list(folder.glob('correct/*')))} campaigns: "
                                                     "0 errors, 0 warnings\n"), ended)


# What happens


def campaign(name):
    read = json.loads((mistakes / f"{name}.json").read_text())
    return read


def good(scope="good", **trigger):
    read = json.loads((folder / "correct/english-popup.json").read_text())
    return {**read, "scope": scope, "trigger": trigger or {"eventName": "INSTANT"}}


class Played:
    """What happened in a scenario."""

    def __init__(self, *steps, **configuration):
        configuration = {"customerId": customer, "logLevel": "error", **configuration}
        lines = [{"configure": configuration}, *steps]
        status, output, errors = run("play", "--check", "-", stdin="\n".join(map(json.dumps, lines)).encode())
        expect("play", status == 0, errors)
        self.lines = [json.loads(line) for line in output.splitlines()]

    def all(self, kind):
        return [line[kind] for line in self.lines if kind in line]

    def shown(self):
        return [shown["scope"] for shown in self.all("shown")]

    def stored(self):
        return [row["scope"] for row in self.all("store")[-1]]

    def elements(self, role):
        return [element for element in self.all("elements")[-1] if element["role"] == role]

    def reports(self):
        return [report["name"] for report in self.all("report")]

    def answers(self):
        return [report["attributes"] for report in self.all("report")
                if set(report.get("attributes", {})) & {"rating", "feedbackOptions"}]

    def logged(self, words):
        return any(words in line["message"] for line in self.all("log"))


def push(name):
    return {"campaign": campaign(name)}


TAP = {"tap": {"role": "button"}}
STAR = {"tap": {"role": "star", "index": 3}}
OPTION = {"tap": {"role": "option", "index": 0}}
SHOW = {"elements": True}
STORE = {"store": True}
ACTIVE = {"state": "didBecomeActive"}
AGAIN = [{"restart": True}, ACTIVE]


def is_dropped(name, finding):
    seen = Played(push(name), STORE)
    return not seen.shown() and not seen.stored()


def blocks(name, finding):
    seen = Played(push(name), {"campaign": good()}, {"wait": 60}, *AGAIN)
    return not seen.shown()


def loses_file(name, finding):
    if not finding["place"]:
        return run("render", mistakes / f"{name}.json", "-o", "/dev/null")[0] == 2
    if finding["place"] == "/template":
        seen = Played(push(name), SHOW)
        return seen.shown() and "background" not in seen.elements("card")[0]
    return {"/trigger": is_dropped, "/body": blocks}[finding["place"]](name, finding)


def is_passed_over(name, finding):
    seen = Played(push(name), STORE, {"campaign": good()}, {"wait": 60}, STORE)
    return seen.shown() == ["good"] and name not in seen.stored()


def reports_a_close(name, finding):
    seen = Played(push(name), TAP)
    return "inAppMessageClose" in seen.reports() and seen.shown() and not seen.all("hidden")


def sends_no_answer(name, finding):
    seen = Played(push(name), STAR, OPTION, TAP, appStoreId="1")
    return seen.shown() and not seen.answers() and not any("apps.apple.com" in url for url in seen.all("opened"))


def offers_nothing(name, finding):
    seen = Played(push(name), SHOW)
    return seen.shown() and not seen.elements("option")


def has_no_image(name, finding):
    seen = Played(push(name), SHOW)
    return seen.elements("image") and not seen.all("request")


def leads_nowhere(name, finding):
    seen = Played(push(name), TAP)
    return seen.all("hidden") and not seen.all("opened") and (not campaign(name)["body"]["ctas"][0]["action"] or seen.logged("Refused to open"))


def is_gone_at_launch(name, finding):
    steps = [push(name), *AGAIN]
    there = Played({"campaign": good()}, *AGAIN, applicationState="inactive")
    return there.shown() == ["good"] and not Played(*steps, applicationState="inactive").shown()


def opens_no_store(name, finding):
    seen = Played(push(name), TAP)
    return seen.all("hidden") and not seen.all("opened")


def removes_the_older_one(name, finding):
    seen = Played(push("same-scope-first"), push("same-scope-second"), STORE)
    return seen.shown() and [row["trigger"] for row in seen.all("store")[-1]] == ['{"eventName":"INSTANT"}']


def is_deleted_by_a_launch_message(name, finding):
    launch = {"campaign": good("launch", eventName="APP_LAUNCH")}
    before = Played(push(name), STORE, applicationState="inactive")
    after = Played(push(name), launch, STORE, applicationState="inactive")
    return before.stored() == [name] and after.stored() == ["launch"]


def waits_for_its_event(name, finding):
    seen = Played(push(name), {"event": campaign(name)["trigger"]["eventName"]})
    return not Played(push(name)).shown() and seen.shown() == [name]


def is_shown_at_once_or_never(name, finding):
    return Played(push(name)).shown() == [name] and not Played(push(name), *AGAIN, applicationState="inactive").shown()


def draws_its_button_without_text(name, finding):
    seen = Played(push(name), SHOW)
    return [button.get("label", "") for button in seen.elements("button")] == ([""] if "is not drawn" not in finding["message"]
                                                                      else [])


def draws_one_button(name, finding):
    return len(Played(push(name), SHOW).elements("button")) == 1 < len(campaign(name)["body"]["ctas"])


def leaves_a_button_or_a_style(name, finding):
    if "style nothing" in finding["message"]:
        return draws_the_same_without_it(name, finding, "/template/ctas/1")
    return ["background" in button for button in Played(push(name), SHOW).elements("button")] == [True, False]


def answers_nobody(name, finding):
    return any("rating" in report.lower() for report in Played(push(name), TAP).reports())


def answers_both(name, finding):
    return Played(push(name), OPTION, TAP).answers()[0]["feedbackOptions"] == [0, 2]


def draws_the_color_it_says(name, finding):
    color, percent = re.search(r"draws #(......), (\d+) %", finding["message"]).groups()
    key = "textColor" if finding["place"].endswith("textColor") else "background"
    painted = [element.get(key, "") for element in Played(push(name), SHOW).all("elements")[-1]]
    return any(round(int(value[1:3], 16) / 2.55) == int(percent) for value in painted if value[3:] == color)


def draws_the_size_it_says(name, finding):
    points = int(re.search(r"drawn at (\d+) point", finding["message"])[1])
    role = finding["place"].split("/")[2]
    return Played(push(name), SHOW).elements(role)[0]["font"]["size"] == points


def draws_boxes(name, finding):
    other = copy.deepcopy(campaign(name))
    other["body"]["title"] = other["body"]["title"].replace("\U0010FFFD", "\U0010FFFC")
    return picture(campaign(name)) == picture(other)


def shows_it_as_it_stands(name, finding):
    key = finding["place"].split("/")[-1]
    written = campaign(name)["body"][key]
    piece = re.match(r'"(.*?)" in the', finding["message"])
    shown = Played(push(name), SHOW).elements(key)[0]["label"]
    return shown == written and (not piece or piece[1] in shown)


def waits_for_a_text(name, finding):
    number, text = ({"event": "order_placed", "attributes": {"total": total}} for total in (49.90, "49.90"))
    return not Played(push(name), number).shown() and Played(push(name), text).shown() == [name]


def is_shown_all_the_same(name, finding):
    return Played(push(name)).shown() == [name]


def takes_fcm(name, finding):
    seen = Played(push(name), logLevel="info")
    return seen.shown() and seen.logged('"gateway":"fcm"')


def ends_early(name, finding):
    seen = Played(push(name), SHOW)
    if "options" in finding["place"]:
        return len(seen.elements("option")) == 200 < len(campaign(name)["body"]["feedbackOptions"]["options"])
    label = seen.elements("message")[0]["label"]
    return label.endswith("…") and len(label) < len(campaign(name)["body"]["message"])


def hides_its_button(name, finding):
    hidden = int(re.search(r"(\d+) points", finding["message"])[1])
    first = Played(push(name), SHOW).elements("button")[0]["frame"]
    last = Played(push(name), {"scroll": 1e6}, SHOW).elements("button")[0]["frame"]
    return first[1] > 844 and abs(first[1] - last[1] - hidden) <= 1


def without(read, place):
    """The campaign without what stands there, its nested texts as objects."""
    read = copy.deepcopy(read)
    for key in ("trigger", "body", "template"):
        if isinstance(read.get(key), str):
            read[key] = json.loads(read[key])
    at, steps = read, place.split("/")[1:]
    for step in steps[:-1]:
        at = at[int(step) if isinstance(at, list) else step]
    del at[int(steps[-1]) if isinstance(at, list) else steps[-1]]
    return read


def draws_the_same_without_it(name, finding, place=None):
    return picture(campaign(name)) == picture(without(campaign(name), place or finding["place"]))


# What is seen


def picture(read):
    """A campaign on a phone, as PNG."""
    with tempfile.TemporaryDirectory() as temporary:
        file, painted = Path(temporary, "campaign.json"), Path(temporary, "picture.png")
        file.write_text(json.dumps(read))
        run("render", file, "-o", painted, "--device", "phone-small", "--customer", customer)
        return painted.read_bytes()


def rows_of(png):
    """Of an 8-bit PNG with three or four channels, as lists of (red, green, blue)."""
    at, data = 8, b""
    while at < len(png):
        length, kind = struct.unpack(">I4s", png[at:at + 8])
        body = png[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, _, depth, kind_of_color = struct.unpack(">IIBB", body[:10])
            channels = {2: 3, 6: 4}[kind_of_color]
            assert depth == 8
        if kind == b"IDAT":
            data += body
        at += 12 + length
    data, stride, rows, above = zlib.decompress(data), width * channels, [], bytearray(width * channels)
    for start in range(0, len(data), stride + 1):
        row, method = bytearray(data[start + 1:start + 1 + stride]), data[start]
        for i in range(stride if method else 0):
            left, up = row[i - channels] if i >= channels else 0, above[i]
            corner = above[i - channels] if i >= channels else 0
            estimate = left + up - corner
            nearest = min((left, up, corner), key=lambda value: abs(estimate - value))
            row[i] = (row[i] + (0, left, up, (left + up) // 2, nearest)[method]) & 255
        rows.append([tuple(row[x:x + 3]) for x in range(0, stride, channels)])
        above = row
    return rows


def luminance(color):
    linear = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in (value / 255 for value in color)]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def ratio(one, other):
    dark, light = sorted((luminance(one), luminance(other)))
    return (light + 0.05) / (dark + 0.05)


def element_of(finding):
    part = finding["place"].split("/")[2]
    return {"ctas": "button", "rating": "star"}.get(part, part)


def is_as_weak_as_it_says(name, finding):
    said = float(re.search(r"by ([\d.]+) :", finding["message"])[1])
    color = tuple(bytes.fromhex(re.search(r"#(......) on", finding["message"])[1]))
    read = campaign(name)
    for device, scale in (("phone-small", 2), ("phone-small-landscape", 2)):
        before = [STAR] if "rating" in finding["place"] else []
        frame = Played({"campaign": read}, *before, SHOW, device=device).elements(element_of(finding))[0]["frame"]
        area = pixels_in(played_picture(read, before, device), frame, scale)
        background = area.most_common(1)[0][0]
        if area[color] < 20 or not said <= ratio(color, background) < said + 0.1:
            return False
    return True


def played_picture(read, steps, device):
    with tempfile.TemporaryDirectory() as temporary:
        lines = [{"configure": {"customerId": customer, "device": device, "logLevel": "error"}}, {"campaign": read},
                 *steps, {"screenshot": "a.png"}]
        run("play", "-", "--out", temporary, stdin="\n".join(map(json.dumps, lines)).encode())
        return rows_of(Path(temporary, "a.png").read_bytes())


def pixels_in(rows, frame, scale):
    left, top, width, height = (round(length * scale) for length in frame)
    return Counter(color for row in rows[top:top + height] for color in row[left:left + width])


def lets_the_application_through(name, finding):
    rows = rows_of(picture(campaign(name)))
    frame = Played(push(name), SHOW, device="phone-small").elements("title")[0]["frame"]
    return pixels_in(rows, frame, 2).most_common(1)[0][0] == rows[0][0]


CONSEQUENCES = {
    "json": loses_file,
    "no-scope": is_dropped,
    "no-trigger": is_dropped,
    "unknown-type": blocks,
    "banner-image": is_dropped,
    "banner-empty": is_passed_over,
    "unknown-action": reports_a_close,
    "no-answer-button": sends_no_answer,
    "no-options": offers_nothing,
    "image-address": has_no_image,
    "action-address": leads_nowhere,
    "other-customer": is_gone_at_launch,
    "store-id": opens_no_store,
    "same-scope": removes_the_older_one,
    "launch-word": is_deleted_by_a_launch_message,
    "trigger-case": waits_for_its_event,
    "no-customer": is_shown_at_once_or_never,
    "unknown-key": draws_the_same_without_it,
    "wrong-kind": draws_the_same_without_it,
    "empty-button": draws_its_button_without_text,
    "unused-button": draws_one_button,
    "unused-part": draws_the_same_without_it,
    "button-style-count": leaves_a_button_or_a_style,
    "wrong-action": answers_nobody,
    "selection-type": draws_the_same_without_it,
    "equal-options": answers_both,
    "color": draws_the_same_without_it,
    "color-order": draws_the_color_it_says,
    "no-layout-color": lets_the_application_through,
    "contrast": is_as_weak_as_it_says,
    "text-size": draws_the_size_it_says,
    "text-style": draws_the_same_without_it,
    "missing-characters": draws_boxes,
    "blank-text": shows_it_as_it_stands,
    "markup": shows_it_as_it_stands,
    "number-text": waits_for_a_text,
    "validity": is_shown_all_the_same,
    "gateway": takes_fcm,
    "cut": ends_early,
    "tall": hides_its_button,
}


def each_mistake_has_its_consequence():
    expect("rules without consequence", set(RULES) - set(CONSEQUENCES) == {"image-lost", "image-large", "image-small"})
    for file in sorted(mistakes.glob("*.json")):
        for finding in findings_of(*sorted(mistakes.glob("same-scope*") if "same-scope" in file.stem else [file]),
                                   *options_of(file.stem))[:1]:
            try:
                holds = CONSEQUENCES[finding["rule"]](file.stem, finding)
            except Exception as problem:  # A scenario that went another way than the finding says.
                holds = problem
            if holds is not True and (not holds or isinstance(holds, Exception)):
                problems.append(f"{file.stem} is not what it says: {finding['message']} ({holds!r})")


# The image, once it was fetched


def png(width, height, extra=0):
    """A picture of one colour; its bytes may be more than it needs."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(b"\0" + bytes(width * 3)) if height == 1 else
                  zlib.compress((b"\0" + bytes(width * 3)) * height)) +
            chunk(b"vpAg", bytes(extra)) + chunk(b"IEND", b""))


def images_are_looked_at_online():
    # A popup's image is 358 points wide on a phone at 3 pixels a point, a banner's 60.
    images = {"fits.png": png(1074, 600), "small.png": png(1000, 600), "large.png": png(2200, 10),
              "heavy.png": png(1074, 600, 2_000_000), "thumb.png": png(180, 180), "broken.png": b"no picture"}
    wanted = {("POPUP", "fits.png"): [], ("POPUP", "small.png"): ["image-small"], ("POPUP", "large.png"): ["image-large"],
              ("POPUP", "heavy.png"): ["image-large"], ("POPUP", "none.png"): ["image-lost"],
              ("POPUP", "broken.png"): ["image-lost"], ("FEEDBACK", "thumb.png"): ["image-small"]}
    with tempfile.TemporaryDirectory() as temporary:
        for name, data in images.items():
            Path(temporary, name).write_bytes(data)
        with subprocess.Popen([program, "backend", "--images", temporary], stdout=subprocess.PIPE) as backend:
            base = json.loads(backend.stdout.readline())["backend"]["baseURL"] + "/images/"
            for (kind, image), rules in wanted.items():
                read = campaign("tall" if kind == "POPUP" else "equal-options")
                read["body"].update({"image": base + image, "message": "Warm layers.", "title": "Autumn"})
                if kind == "FEEDBACK":
                    read["body"]["feedbackOptions"]["options"][2] = "Another colour"
                file = Path(temporary, "campaign.json")
                file.write_text(json.dumps(read))
                found = findings_of(file, "--online", "--customer", customer)
                expect(f"{kind} with {image}", [finding["rule"] for finding in found] == rules, found)
                lost = Played({"campaign": read}, SHOW)
                expect(f"{image} played", lost.shown() and lost.all("request"), lost.lines)
                expect("not online", not findings_of(file, "--customer", customer))
            backend.terminate()
        banner = good("banner")
        banner["body"].update(type="HEADER", image="https://127.0.0.1:1/a.png")
        del banner["template"]["phoneBackgroundColor"]
        file.write_text(json.dumps(banner))
        found = findings_of(file, "--online", "--customer", customer)
        expect("a banner's lost image", [(f["rule"], f["severity"]) for f in found] == [("image-lost", "error")], found)
        seen = Played({"campaign": banner}, STORE)
        expect("a banner's lost image played", not seen.shown() and not seen.stored(), seen.lines)


def play_tells_what_check_tells():
    name = "unknown-key-in-a-button-in-a-text"
    wanted = findings_of(mistakes / f"{name}.json", "--customer", customer)[0]
    lines = ["", '# A campaign', json.dumps({"configure": {"customerId": "nobody", "logLevel": "info"}}),
             json.dumps({"customer": customer}), '{"campaign": ' + json.dumps(campaign(name)) + "}"]
    scenario = "\n".join(lines).encode()
    checked, plain = (run("play", *words, "-", stdin=scenario)[1].splitlines() for words in (["--check"], []))
    found = json.loads(checked[0])["finding"]
    expect("play --check", {**wanted, **{key: found[key] for key in ("file", "line", "column")}} == found, found)
    expect("its place", (found["file"], found["line"]) == ("-", 5) and
           lines[4][found["column"] - 1:].startswith(r'\"text\"'), found)

    def without_chance(printed):
        return [re.sub(r"[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}", "UUID", line) for line in printed]
    expect("play without --check", without_chance(checked[1:]) == without_chance(plain), checked, plain)


def bad_calls_are_told():
    with tempfile.TemporaryDirectory() as temporary:
        calls = [["check"], ["check", "nowhere.json"], ["check", temporary], ["check", folder, "--format", "xml"]]
        for words in calls:
            status, output, errors = run(*words)
            expect(f"{words}", status == 2 and not output and errors, status, output, errors)
    correct = (folder / "correct/english-popup.json").read_bytes()
    expect("standard input", run("check", "-", stdin=correct)[:2] == (0, "1 campaign: 0 errors, 0 warnings\n"))
    expect("a warning", run("check", mistakes / "gateway.json")[0] == 0)
    expect("a warning, strict", run("check", mistakes / "gateway.json", "--strict")[0] == 1)
    expect("an error", run("check", mistakes / "no-scope.json")[0] == 1)


RULES = known_rules()
play_tells_what_check_tells()
bad_calls_are_told()
images_are_looked_at_online()
each_mistake_has_its_rule_alone()
correct_campaigns_have_none()
each_mistake_has_its_consequence()
print("\n".join(problems))
sys.exit(bool(problems))
