# SPDX-License-Identifier: GPL-3.0-or-later
"""The program as an assistive technology sees it: AT-SPI by raw calls, so that nothing is remembered on this side."""

import dbus
import dbus.bus

from harness.processes import wait_for

ACCESSIBLE = "org.a11y.atspi.Accessible"
ACTION = "org.a11y.atspi.Action"
VALUE = "org.a11y.atspi.Value"
REGISTRY = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
CALL_SECONDS = 10

# AtspiStateType, of the AT-SPI 2 documents: each is the number of its bit.
FOCUSABLE = 11
FOCUSED = 12
SHOWING = 25


class Element:
    """One object of the tree; every property is asked for anew."""

    def __init__(self, bus, address):
        self._bus = bus
        self._address = address

    def _call(self, interface, method, *arguments):
        target = self._bus.get_object(*self._address, introspect=False)
        return target.get_dbus_method(method, interface)(*arguments, timeout=CALL_SECONDS)

    def _get(self, interface, name):
        return self._call(dbus.PROPERTIES_IFACE, "Get", interface, name)

    @property
    def name(self):
        return str(self._get(ACCESSIBLE, "Name"))

    @property
    def description(self):
        return str(self._get(ACCESSIBLE, "Description"))

    @property
    def role(self):
        return str(self._call(ACCESSIBLE, "GetRoleName"))

    @property
    def interfaces(self):
        return {str(interface) for interface in self._call(ACCESSIBLE, "GetInterfaces")}

    def has_state(self, state):
        words = self._call(ACCESSIBLE, "GetState")
        return bool(int(words[state // 32]) >> (state % 32) & 1)

    def children(self):
        return [Element(self._bus, address) for address in self._call(ACCESSIBLE, "GetChildren")]

    def descendants(self):
        for child in self.children():
            yield child
            yield from child.descendants()

    def actions(self):
        if ACTION not in self.interfaces:
            return []
        return [str(name) for name, _, _ in self._call(ACTION, "GetActions")]

    def press(self):
        """By its accessible action, without the pointer."""
        self._call(ACTION, "DoAction", self.actions().index("Press"))

    @property
    def value(self):
        return float(self._get(VALUE, "CurrentValue"))

    @value.setter
    def value(self, value):
        self._call(dbus.PROPERTIES_IFACE, "Set", VALUE, "CurrentValue", dbus.Double(value, variant_level=1))

    def __repr__(self):
        return f'{self.role} "{self.name}"'


class Accessibility:
    """The tree of the one program on a desktop."""

    def __init__(self, desktop):
        service = desktop.bus("session").get_object("org.a11y.Bus", "/org/a11y/bus", introspect=False)
        self._bus = dbus.bus.BusConnection(str(service.GetAddress(dbus_interface="org.a11y.Bus")))

    def close(self):
        self._bus.close()

    def window(self):
        """The main window's element, once it is there."""
        def found():
            for program in Element(self._bus, REGISTRY).children():
                if program.name == "Velarin":
                    return next(iter(program.children()), None)
            return None

        return wait_for("the program in the accessible tree", lambda: _if_it_lasts(found))

    def elements(self, role=None, name=None):
        """Those that are shown with this role and name, in the order of the tree."""
        return [element for element in self.window().descendants()
                if (role is None or element.role == role) and (name is None or element.name == name)
                and element.has_state(SHOWING)]

    def find(self, role, name):
        """The first that is shown with this role and name, once it is there."""
        return wait_for(f'a {role} "{name}"',
                        lambda: next(iter(_if_it_lasts(lambda: self.elements(role, name)) or []), None))


def _if_it_lasts(look):
    """None if what was looked at went away meanwhile."""
    try:
        return look()
    except dbus.DBusException:
        return None
