#!/usr/bin/env python3
"""Meets messages in an application's windows as a person does: with pointer, keys and assistive technology.

The application is a shop like those of Examples/: a line edit, a list, the buttons "Buy" (captures the event
"purchase"), "Terms" (opens a modal dialog) and "Another window"; it prints what it learns and takes campaigns by
--campaign and its data folder by --data.

usage: messages_test.py [--only NAME] PROGRAM [ARGUMENT…]
"""

import sys
import time

from desktop import (Application, click, desktop, drag, eventually, in_session, keys, move, run, wheel, write)

in_session()

import accessible  # noqa: E402

CARD, BACKDROP, FOCUS_RING = "12abcd", "7a3311", "0a4fb8"
LONG = " ".join(f"Sentence {number} of a long story." for number in range(1, 160))
cases = []


def case(**options):
    def add(function):
        cases.append((function, options))
        return function

    return add


def campaign(kind, scope="s-1", event="INSTANT", buttons=(), template=(), **body):
    return {"cuid": "c", "scope": scope, "trigger": {"eventName": event},
            "body": {"type": kind, "title": "Hello", "message": "A message", **body,
                     "ctas": [{"type": type_, "action": action, "actionText": text} for text, type_, action in buttons]},
            "template": {"layoutBackgroundColor": "#" + CARD, **dict(template)}}


SALE = ("Sale", "DEEPLINK", "shop://sale")
POPUP = campaign("POPUP", buttons=[SALE])


def shown(app, screen, scope="s-1"):
    app.says(f"shown {scope}")
    return eventually(lambda: screen.box(CARD), "the card on the screen")


def gone(app, screen, scope="s-1"):
    app.says(f"gone {scope}")
    eventually(lambda: not screen.box(CARD), "the message off the screen")


def press(app, name):
    click(accessible.find(app, name, "push button").center)


@case(campaigns=[POPUP])
def a_popup_leads_into_the_application(app, screen):
    left, top, right, bottom = shown(app, screen)
    move(*accessible.find(app, "Sale", "push button").center)
    released = screen.picture()
    run("xdotool", "mousedown", "1")
    eventually(lambda: screen.picture() != released, "the button pressed")
    move(left + 20, top + 20)
    eventually(lambda: screen.picture() == released, "the button no longer pressed")
    run("xdotool", "mouseup", "1")
    app.settle()
    assert not app.has_said("link"), "a press that left the button"
    press(app, "Sale")
    app.says("link shop://sale")
    gone(app, screen)
    assert app.lines.count("reported inAppMessageShown") == 1
    press(app, "Buy")
    app.says("clicked Buy")


@case(campaigns=[POPUP])
def what_lies_behind_a_popup_is_out_of_reach(app, screen):
    buy = accessible.find(app, "Buy").center
    search = accessible.find(app, role="text")
    left, top, _, _ = accessible.find(app, role="list").frame
    shown(app, screen)
    first_row = screen.row(left + 4, top + 10, 60)
    write("abc")
    keys("Tab", "Tab", "Tab", "ctrl+b")
    move(*buy)
    run("xdotool", "click", "3")
    wheel((left + 20, top + 20), 5)
    search.perform("SetFocus")
    write("def")
    app.settle()
    assert not any(app.has_said(word) for word in ("typed", "clicked", "shortcut")), app.lines
    assert first_row == screen.row(left + 4, top + 10, 60), "the list scrolled"


@case(campaigns=[campaign("POPUP", event="purchase")])
def the_focus_returns_where_it_was(app, screen):
    search = accessible.find(app, role="text")
    click(search.center)
    press_buy = accessible.find(app, "Buy")
    press_buy.perform("Press")
    shown(app, screen)
    write("abc")
    keys("Escape")
    gone(app, screen)
    write("tea")
    app.says("typed tea")
    assert not any("abc" in line for line in app.lines)
    assert app.lines.count("reported inAppMessageDismissed") == 1


@case(campaigns=[campaign("HEADER")])
def a_banner_leaves_the_application_alone(app, screen):
    left, top, right, bottom = shown(app, screen)
    assert bottom - top < 300
    click(accessible.find(app, role="text").center if bottom < 100 else accessible.find(app, "Buy").center)
    press(app, "Buy")
    app.says("clicked Buy")
    keys("ctrl+b")
    app.says("shortcut")
    assert screen.box(CARD)
    press(app, "Close")
    gone(app, screen)


@case(campaigns=[campaign("RATING", buttons=[("Send", "RATING", ""), ("Later", "LATER", "")])])
def a_rating_is_given_with_keys_alone(app, screen):
    shown(app, screen)
    focus = accessible.Listener("object:state-changed:focused")
    changes = accessible.Listener("object:property-change:accessible-value")
    keys("Tab", "Right", "Right", "Right", "Right", "Left")
    eventually(lambda: screen.box(FOCUS_RING), "the focus")
    rating = accessible.find(app, "Rating", "slider")
    focus.hears("object:state-changed:focused", "slider", "Rating", 1)
    changes.hears("object:property-change:accessible-value", "slider")
    assert (rating.value, rating.description) == (3, "3 of 5"), (rating.value, rating.description)
    keys("Tab", "Return")
    app.says("reported inAppMessageRating")
    gone(app, screen)


@case(campaigns=[campaign("FULLSCREEN", message=LONG, buttons=[SALE], template={"phoneBackgroundColor": "#" + BACKDROP})])
def a_tap_that_becomes_a_scroll_presses_nothing(app, screen):
    _, _, _, bottom = shown(app, screen)
    sale = accessible.find(app, "Sale", "push button")
    keys("End")
    eventually(lambda: "offscreen" not in sale.states and sale.frame[1] < bottom, "the button in sight")
    app.settle()
    x, y = sale.center
    # The finger takes the button along, and lets go above it.
    drag((x, y), (x, y + 120))
    eventually(lambda: sale.center[1] > y + 50, "the button further down")
    app.settle()
    assert not app.has_said("link"), "a scroll pressed the button"
    wheel((x, y - 100), 30)
    eventually(lambda: abs(sale.center[1] - y) < 2, "the button back")
    click((x, y))
    app.says("link shop://sale")


@case(campaigns=[campaign("POPUP", template={"phoneBackgroundColor": "#" + BACKDROP})])
def a_message_follows_its_window(app, screen):
    shown(app, screen)
    for size in (520, 420), (390, 640):
        run("xdotool", "windowsize", "--sync", app.main_window, *size)
        dialog = accessible.find(app, "Hello", "dialog")
        eventually(lambda: dialog.frame[2:] == size, "the message as large as the window")
        left, top, width, height = dialog.frame
        eventually(lambda: screen.box(BACKDROP) == (left, top, left + width - 1, top + height - 1), "no edge uncovered")
        card = screen.box(CARD)
        assert abs(card[0] - left - (left + width - 1 - card[2])) <= 1, "the card in the middle"
    app.activate()
    keys("alt+F10")
    run("wmctrl", "-i", "-r", app.main_window, "-b", "add,fullscreen")
    eventually(lambda: screen.box(BACKDROP) == (0, 0, screen.width - 1, screen.height - 1), "the whole screen")


@case(campaigns=[POPUP])
def a_message_survives_minimising(app, screen):
    shown(app, screen)
    run("xdotool", "windowminimize", "--sync", app.main_window)
    eventually(lambda: not screen.box(CARD), "the window off the screen")
    app.activate()
    eventually(lambda: screen.box(CARD), "the message again")
    assert not app.has_said("gone")
    press(app, "Sale")
    app.says("link shop://sale")


@case(campaigns=[campaign("POPUP", "s-1", "purchase"), campaign("POPUP", "s-2", buttons=[SALE], event="purchase")])
def a_message_shows_in_the_active_window_and_ends_with_it(app, screen):
    press(app, "Another window")
    second = eventually(lambda: [window for window in app.windows() if window != app.main_window], "a window")[0]
    app.activate(second)
    buys = [element for element in accessible.tree(app.process.pid) if element.name == "Buy"]
    buys[1].perform("Press")
    shown(app, screen)
    frame = accessible.find(app, "Second shop").frame
    assert accessible.find(app, "Hello", "dialog").frame == frame, "not in the active window"
    run("wmctrl", "-i", "-c", second)
    gone(app, screen)
    app.says("reported inAppMessageDismissed")
    time.sleep(10.5)  # The pause between two messages.
    press(app, "Buy")
    shown(app, screen, "s-2")
    press(app, "Sale")
    app.says("link shop://sale")


@case(campaigns=[campaign("POPUP", event="purchase")])
def a_message_waits_for_a_dialog(app, screen):
    press(app, "Terms")
    accessible.find(app, "OK", "push button")
    accessible.find(app, "Buy", "push button").perform("Press")
    app.says("clicked Buy")
    time.sleep(2.5)
    assert not app.has_said("shown") and not screen.box(CARD)
    assert not app.errors, "a line a second"
    press(app, "OK")
    shown(app, screen)


@case(campaigns=[POPUP], environment={"QT_SCALE_FACTOR": "2"})
def a_screen_of_twice_the_pixels(app, screen):
    shown(app, screen)
    left, top, right, bottom = eventually(lambda: (box := screen.box(CARD)) and box[2] - box[0] > 600 and box,
                                          "a card twice as wide")
    click(((left + right) / 2, bottom - 70))
    app.says("link shop://sale")


@case(campaigns=[campaign("FEEDBACK", event="purchase", buttons=[("Send", "FEEDBACK", "")],
                          feedbackOptions={"selectionType": "singleSelection", "options": ["Price", "Size"]})])
def assistive_technology_is_told(app, screen):
    events = accessible.Listener("object:state-changed:showing", "object:state-changed:focused",
                                 "object:state-changed:checked")
    accessible.find(app, "Buy").perform("Press")
    shown(app, screen)
    events.hears("object:state-changed:showing", "dialog", "Hello", 1)
    events.hears("object:state-changed:focused", "dialog", "Hello", 1)
    dialog = accessible.find(app, "Hello", "dialog")
    assert {"modal", "showing"} <= dialog.states
    told = [(element.role, element.name) for element in dialog.children]
    assert told == [("heading", "Hello"), ("label", "A message"), ("radio button", "Price"), ("radio button", "Size"),
                    ("push button", "Send"), ("push button", "Close")], told
    price, size = (accessible.find(app, name, "radio button") for name in ("Price", "Size"))
    size.perform("Press")
    events.hears("object:state-changed:checked", "radio button", "Size", 1)
    eventually(lambda: "checked" in size.states and "checked" not in price.states, "the choice")
    price.perform("SetFocus")
    eventually(lambda: "focused" in price.states, "the focus")
    accessible.find(app, "Send").perform("Press")
    app.says("reported inAppMessageFeedback")
    gone(app, screen)


def main():
    arguments = sys.argv[1:]
    only = arguments[1] if arguments[0] == "--only" else ""
    command = arguments[2:] if only else arguments
    failed = 0
    with desktop() as screen:
        for function, options in cases:
            if only not in function.__name__:
                continue
            try:
                with Application(command, options["campaigns"], options.get("environment", {})) as app:
                    function(app, screen)
                print("passed:", function.__name__, flush=True)
            except AssertionError as error:
                failed += 1
                print("failed:", function.__name__, error, flush=True)
    sys.exit(failed)


main()
