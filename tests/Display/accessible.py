"""What assistive technology is told by an application, through AT-SPI."""

import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from desktop import eventually  # noqa: E402


class Element:
    def __init__(self, node):
        self.node = node

    name = property(lambda self: self.node.get_name())
    role = property(lambda self: self.node.get_role_name())
    description = property(lambda self: self.node.get_description())
    value = property(lambda self: self.node.get_current_value())
    children = property(lambda self: [Element(self.node.get_child_at_index(index))
                                      for index in range(self.node.get_child_count())])

    @property
    def states(self):
        return {state.value_nick for state in self.node.get_state_set().get_states()}

    @property
    def actions(self):
        return [self.node.get_action_name(index) for index in range(self.node.get_n_actions())]

    def perform(self, action):
        self.node.do_action(self.actions.index(action))

    @property
    def frame(self):
        extents = self.node.get_extents(Atspi.CoordType.SCREEN)
        return extents.x, extents.y, extents.width, extents.height

    @property
    def center(self):
        x, y, width, height = self.frame
        return x + width / 2, y + height / 2

    def walk(self):
        yield self
        for child in self.children:
            yield from child.walk()


def tree(process_id):
    """Everything that the process shows, root first; nothing as long as it is not there."""
    while GLib.MainContext.default().iteration(False):
        pass  # What came and went since is told here.
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for index in range(desktop.get_child_count()):
        try:
            node = desktop.get_child_at_index(index)
            if node and node.get_process_id() == process_id:
                node.set_cache_mask(Atspi.Cache.NONE)
                return list(Element(node).walk())
        except GLib.Error:
            pass  # It changed while it was read.
    return []


def find(application, name=None, role=None):
    def look():
        try:
            return next((element for element in tree(application.process.pid)
                         if (name is None or element.name == name) and (role is None or element.role == role)), None)
        except (GLib.Error, AttributeError):
            return None

    return eventually(look, f"{role or 'element'} {name or ''}")


class Listener:
    """The events of these kinds, from now on."""

    def __init__(self, *kinds):
        self.heard = []
        self.listener = Atspi.EventListener.new(self._hear)
        for kind in kinds:
            self.listener.register(kind)
        time.sleep(0.5)  # Until applications know that somebody listens.

    def _hear(self, event):
        try:
            self.heard.append((event.type, event.source.get_role_name(), event.source.get_name(), event.detail1))
        except GLib.Error:
            pass  # It comes from an application that is gone.

    def hears(self, *wanted):
        def listen():
            while GLib.MainContext.default().iteration(False):
                pass
            return any(heard[:len(wanted)] == wanted for heard in self.heard)

        return eventually(listen, f"{wanted} among {self.heard}")
