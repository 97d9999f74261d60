#!/usr/bin/env python3
"""Uses the simulator as a person does.

usage: programs_test.py VANTIX-INAPP
"""

import json
import os
import subprocess
import sys
from pathlib import Path

from desktop import Application, click, desktop, eventually, in_session

in_session()

import accessible  # noqa: E402

CARD, OTHER_CARD, BACKDROP, HOME_SCREEN = "12abcd", "ab12cd", "7a3311", "1b2a2f"


def campaign(scope, kind="POPUP", event="INSTANT", **attributes):
    return {"cuid": "c", "scope": scope, "trigger": {"eventName": event, "attributes": attributes},
            "body": {"type": kind, "title": "Hello", "message": "A message"},
            "template": {"layoutBackgroundColor": "#" + CARD, "phoneBackgroundColor": "#" + BACKDROP}}


class Simulator(Application):
    def arguments(self):
        return self.campaigns


def press(app, name):
    click(accessible.find(app, name).center)


def size(box):
    return box[2] - box[0] + 1, box[3] - box[1] + 1


def try_simulator(program):
    campaigns = [campaign("first"), campaign("second", "HEADER", "product_viewed", category="boots")]
    with desktop(1400, 1000) as screen, Simulator([program, "simulate"], campaigns) as app:
        press(app, "Send campaign-0")
        app.says('{"shown":"first"}')
        eventually(lambda: screen.box(BACKDROP) and size(screen.box(BACKDROP)) == (390, 844), "the phone alone covered")
        press(app, "turned")
        eventually(lambda: screen.box(BACKDROP) and screen.box(BACKDROP)[3] - screen.box(BACKDROP)[1] == 389, "it turned")
        press(app, "turned")

        customer = accessible.find(app, "Customer", "text")
        click(customer.center)
        app.settle()
        assert "focused" in customer.states, "the message took the focus of what it does not cover"

        app.campaigns[0].unlink()
        app.settle()
        app.campaigns[0].write_text(json.dumps(campaign("first")).replace(CARD, OTHER_CARD))
        app.says('{"gone":"first"}')
        eventually(lambda: screen.box(OTHER_CARD), "the edited campaign, after the pause")
        press(app, "Close")
        eventually(lambda: app.lines.count('{"gone":"first"}') == 2, "it closed")

        press(app, "Send campaign-1")
        press(app, "in the foreground")
        eventually(lambda: screen.box(HOME_SCREEN), "the application in the background")
        press(app, "in the foreground")
        press(app, "Lofoten boots")
        app.says('{"shown":"second"}')
        eventually(lambda: screen.box(CARD), "the banner")

        app.process.terminate()
        assert app.process.wait(10) == 0
        assert not list(Path(app.folder.name).glob("vantix-inapp-*")), "it left its files behind"


def try_without_display(program):
    run = subprocess.run([program, "simulate"], env={**os.environ, "DISPLAY": "nowhere:0"}, capture_output=True, text=True)
    assert run.returncode == 2 and "needs a display" in run.stderr.splitlines()[-1], (run.returncode, run.stderr)


try_without_display(sys.argv[1])
try_simulator(sys.argv[1])
