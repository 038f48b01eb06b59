"""What assistive programs read of the running program: roles, names, states and places, over the bus of AT-SPI."""
import contextlib
import time

from gi.repository import Gio, GLib

ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"
TEXT = "org.a11y.atspi.Text"
ROOT = "/org/a11y/atspi/accessible/root"
LONGEST = 30  # seconds that anything may take to appear; only what never comes takes so long
STATES = {"checked": 4, "enabled": 8, "expanded": 10, "focused": 12, "selected": 23, "showing": 25}
ACTIVE = 1


class Missing(Exception):
    """Something that the task needs isn't there."""


def wait(what, condition):
    """The first true answer of condition. what names it in the failure."""
    end = time.monotonic() + LONGEST
    while True:
        try:
            answer = condition()
        except GLib.Error:  # what was there a moment ago is gone
            answer = None
        if answer:
            return answer
        if time.monotonic() > end:
            raise Missing(what)
        time.sleep(0.02)


class Node:
    """One object of the program."""

    def __init__(self, bus, program, path):
        self.bus, self.program, self.path = bus, program, path

    def call(self, interface, method, arguments=None):
        answer = self.bus.call_sync(self.program, self.path, interface, method, arguments, None,
                                    Gio.DBusCallFlags.NONE, LONGEST * 1000, None)
        return answer.unpack()

    def __eq__(self, other):
        return isinstance(other, Node) and self.path == other.path

    def __hash__(self):
        return hash(self.path)

    def read(self, name):
        arguments = GLib.Variant("(ss)", (ACCESSIBLE, name))
        return self.call("org.freedesktop.DBus.Properties", "Get", arguments)[0]

    @property
    def name(self):
        return self.read("Name")

    @property
    def role(self):
        return self.call(ACCESSIBLE, "GetRoleName")[0]

    def states(self):
        low = self.call(ACCESSIBLE, "GetState")[0][0]
        return {name for name, bit in STATES.items() if low & (1 << bit)} | ({"active"} if low & (1 << ACTIVE) else set())

    def children(self):
        return [Node(self.bus, *child) for child in self.call(ACCESSIBLE, "GetChildren")[0]]

    def shown_children(self, most=400):
        """The first of the children, without those that are hidden or gone meanwhile."""
        shown = []
        for child in self.children()[:most]:
            with contextlib.suppress(GLib.Error):
                if "showing" in child.states():
                    shown.append(child)
        return shown

    def place(self):
        """Left, top, width and height on the screen, in pixels."""
        return self.call(COMPONENT, "GetExtents", GLib.Variant("(u)", (0,)))[0]

    def still_place(self):
        """The place, once layouts have come to rest."""
        def look():
            first = self.place()
            time.sleep(0.1)
            return first if first == self.place() and first[2] > 0 else None
        return wait("it doesn't come to rest", look)

    def middle(self):
        left, top, width, height = self.still_place()
        return left + width // 2, top + height // 2

    def text(self):
        """What a field holds."""
        return self.call(TEXT, "GetText", GLib.Variant("(ii)", (0, -1)))[0]

    def below(self):
        """The object itself and all below it that is shown."""
        waiting = [self]
        while waiting:
            node = waiting.pop(0)
            yield node
            with contextlib.suppress(GLib.Error):
                waiting += node.shown_children()


class Tree:
    """The objects of the program with the given process id."""

    def __init__(self, pid):
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                    Gio.DBusCallFlags.NONE, -1, None).unpack()[0]
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        self.root = wait("the program on the bus", lambda: self.program(pid))

    def program(self, pid):
        for node in Node(self.bus, "org.a11y.atspi.Registry", ROOT).children():
            arguments = GLib.Variant("(s)", (node.program,))
            owner = self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                       "GetConnectionUnixProcessID", arguments, None, Gio.DBusCallFlags.NONE, -1, None)
            if owner.unpack()[0] == pid:
                return node
        return None

    def windows(self):
        """Those that are shown, the last opened last."""
        return self.root.shown_children()

    def all(self, role=None, name=None, state=None, within=None):
        """Those shown whose role is one of the words in role, whose name contains name and that have the state."""
        found = []
        tops = [within] if within else self.windows()
        for top in reversed(tops):
            for node in top.below():
                try:
                    if (role is None or node.role in role.split("|")) and (name is None or name in node.name) and (
                            state is None or state in node.states()):
                        found.append(node)
                except GLib.Error:
                    continue
        return found

    def find(self, role=None, name=None, state=None, within=None):
        """The first of these; one with exactly that name before one that only contains it. Waits for it."""
        def look():
            found = self.all(role, name, state, within)
            exact = [node for node in found if name is not None and node.name == name]
            return (exact or found or [None])[0]
        return wait(f"no {role or 'object'} {name or ''} {state or ''}".strip(), look)

    def beside(self, label, role):
        """The object of that role on the line of the label, to its right."""
        left, top, width, height = self.find("label", label).still_place()

        def look():
            for node in self.all(role):
                place = node.place()
                if place[0] > left and place[1] < top + height // 2 < place[1] + place[3]:
                    return node
            return None
        return wait(f"no {role} beside {label}", look)

    def gone(self, role=None, name=None):
        wait(f"{role} {name} doesn't go", lambda: not self.all(role, name))
