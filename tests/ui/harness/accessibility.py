"""The accessibility tree of a program: what a screen reader would find.

The tree is asked over its bus, always anew: the library that clients usually take remembers what it has seen, and the
dialogs of a test come and go.
"""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402  (the version has to be asked for first)

CALL_MILLISECONDS = 5000
ROOT = "/org/a11y/atspi/accessible/root"
# Numbers of states in the protocol.
CHECKED = 4
FOCUSABLE = 11
FOCUSED = 12
SELECTED = 23
SENSITIVE = 24
SHOWING = 25
SCREEN_COORDINATES = 0
LABELLED_BY = 2

_bus = None


def bus():
    global _bus
    if _bus is None:
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                    Gio.DBusCallFlags.NONE, CALL_MILLISECONDS).unpack()[0]
        _bus = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    return _bus


class Node:
    """One widget of a program. A widget can vanish between two questions: what is gone has no name and no children."""

    def __init__(self, sender, path):
        self.sender, self.path = sender, path

    def ask(self, interface, method, arguments=None, otherwise=None):
        try:
            answer = bus().call_sync(self.sender, self.path, interface, method, arguments, None,
                                     Gio.DBusCallFlags.NONE, CALL_MILLISECONDS).unpack()
        except GLib.Error:
            return otherwise
        return answer[0] if len(answer) == 1 else answer

    def ask_accessible(self, method, otherwise=None):
        return self.ask("org.a11y.atspi.Accessible", method, None, otherwise)

    def ask_property(self, interface, name, otherwise):
        return self.ask("org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (interface, name)), otherwise)

    @property
    def children(self):
        return [Node(*child) for child in self.ask_accessible("GetChildren", [])]

    @property
    def parent(self):
        return Node(*self.ask_property("org.a11y.atspi.Accessible", "Parent", ("", ROOT)))

    @property
    def name(self):
        return self.ask_property("org.a11y.atspi.Accessible", "Name", "")

    @property
    def role(self):
        """In words, such as "menu item" and "push button"."""
        return self.ask_accessible("GetRoleName", "")

    def has_state(self, state):
        bits = self.ask_accessible("GetState", [0, 0])
        return bool(bits[state // 32] >> state % 32 & 1)

    @property
    def is_showing(self):
        return self.has_state(SHOWING)

    @property
    def is_sensitive(self):
        return self.has_state(SENSITIVE)

    @property
    def is_focused(self):
        return self.has_state(FOCUSED)

    @property
    def labels(self):
        """The texts of the labels that name this control."""
        return [Node(*label).text for kind, labels in self.ask_accessible("GetRelationSet", []) if kind == LABELLED_BY
                for label in labels]

    @property
    def text(self):
        """The text of an entry, a text view or a label."""
        return self.ask("org.a11y.atspi.Text", "GetText", GLib.Variant("(ii)", (0, -1)), "")

    @property
    def rectangle(self):
        """Place on the screen as (x, y, width, height)."""
        return self.ask("org.a11y.atspi.Component", "GetExtents", GLib.Variant("(u)", (SCREEN_COORDINATES,)),
                        (0, 0, 0, 0))

    def put_text(self, text):
        """Replaces the text of an entry or a text view at once, as one who dictates does."""
        return self.ask("org.a11y.atspi.EditableText", "SetTextContents", GLib.Variant("(s)", (text,)), False)

    def value(self, name):
        """A number of a spin button or a progress bar, such as CurrentValue and MinimumIncrement."""
        return self.ask_property("org.a11y.atspi.Value", name, None)

    def put_value(self, number):
        """Sets a spin button to a number without a key or a click."""
        arguments = GLib.Variant("(ssv)", ("org.a11y.atspi.Value", "CurrentValue", GLib.Variant("d", number)))
        return self.ask("org.freedesktop.DBus.Properties", "Set", arguments, False)

    def activate(self):
        """Does the first action. Not for what opens a modal dialog: the answer would come at the dialog's end."""
        return self.ask("org.a11y.atspi.Action", "DoAction", GLib.Variant("(i)", (0,)), False)

    def walk(self):
        """The nodes below this one with their roles, parents first. The many cells of file lists are left out."""
        for child in self.children:
            role = child.role
            yield child, role
            if role not in ("table", "tree table"):
                yield from child.walk()

    def find_each(self, role, name=None):
        return (node for node, found in self.walk() if found == role and name in (None, node.name))

    def find_all(self, role, name=None):
        return list(self.find_each(role, name))

    def find(self, role, name=None):
        return next(self.find_each(role, name), None)


def application(process_id):
    """The root of a running program's tree, None before it has one."""
    for root in Node("org.a11y.atspi.Registry", ROOT).children:
        owner = Node("org.freedesktop.DBus", "/org/freedesktop/DBus").ask(
            "org.freedesktop.DBus", "GetConnectionUnixProcessID", GLib.Variant("(s)", (root.sender,)))
        if owner == process_id:
            return root
    return None
