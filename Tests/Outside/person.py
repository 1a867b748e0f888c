"""Somebody who uses the built program through the accessibility bus and the keyboard, and waits for what should come."""

import os
import subprocess
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# Longer than anything takes on a loaded machine under the sanitizers; only a failure waits for so long.
PATIENCE = float(os.environ.get("TYPLOOM_OUTSIDE_PATIENCE", "60"))


class TimeOut(AssertionError):
    pass


def until(condition, what, patience=PATIENCE):
    """The first true value of `condition`. What goes away while it is looked at counts as not there yet."""
    end = time.monotonic() + patience
    while True:
        try:
            value = condition()
            if value:
                return value
        except GLib.Error:
            pass
        if time.monotonic() > end:
            for program in Program.running if os.environ.get("TYPLOOM_OUTSIDE_TREE") else []:
                print_tree(program.application)
            raise TimeOut("Waited in vain for " + (what() if callable(what) else what))
        time.sleep(0.03)


class Control:
    """One entry of the accessibility tree. Every look asks the program anew."""

    def __init__(self, node):
        self.node = node

    name = property(lambda self: self.node.get_name())
    role = property(lambda self: self.node.get_role_name())
    description = property(lambda self: self.node.get_description())
    parent = property(lambda self: Control(self.node.get_parent()))
    index = property(lambda self: self.node.get_index_in_parent())

    def __eq__(self, other):
        return isinstance(other, Control) and self.node == other.node

    def __repr__(self):
        return f"{self.role} '{self.name}'"

    def children(self):
        nodes = (self.node.get_child_at_index(i) for i in range(self.node.get_child_count()))
        return [Control(node) for node in nodes if node]

    def all(self):
        yield self
        for child in self.children():
            yield from child.all()

    def has(self, state):
        return self.node.get_state_set().contains(getattr(Atspi.StateType, state.upper()))

    def actions(self):
        actions = self.node.get_action_iface()
        return [Atspi.Action.get_action_name(actions, i) for i in range(actions.get_n_actions())] if actions else []

    def do(self, action):
        actions = self.actions()
        assert action in actions, f"{self} has only the actions {actions}"
        Atspi.Action.do_action(self.node.get_action_iface(), actions.index(action))

    def take_keyboard(self):
        self.node.get_component_iface().grab_focus()
        until(lambda: self.has("focused"), lambda: f"the keyboard to come to {self}")

    @property
    def value(self):
        return self.node.get_value_iface().get_current_value()

    @value.setter
    def value(self, value):
        self.node.get_value_iface().set_current_value(value)

    @property
    def text(self):
        return Atspi.Text.get_text(self.node.get_text_iface(), 0, -1)

    def centre(self):
        box = self.node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return box.x + box.width // 2, box.y + box.height // 2

    def find(self, role, name=None, showing=True):
        """The first control of that role and name below, or None."""
        for each in self.all():
            if each.role == role and (name is None or each.name == name) and (not showing or each.has("showing")):
                return each
        return None

    def wait_for(self, role, name=None, showing=True):
        return until(lambda: self.find(role, name, showing), f"a {role} '{name}'")

    def wait_gone(self, role, name):
        until(lambda: not self.find(role, name), f"the {role} '{name}' to go")


def keys(*names):
    """Real key strokes, as xdotool calls them, to whatever has the keyboard."""
    subprocess.run(["xdotool", "key", "--delay", "12", *names], check=True)


def type_text(text):
    subprocess.run(["xdotool", "type", "--delay", "12", text], check=True)


def point_at(x, y, *then):
    subprocess.run(["xdotool", "mousemove", str(x), str(y), *then], check=True)


def print_tree(control, depth=0):
    """For whoever looks into a failure."""
    try:
        print("  " * depth + repr(control), "shown" if control.has("showing") else "hidden",
              "with the keyboard" if control.has("focused") else "", repr(control.description), control.actions())
        for child in control.children():
            print_tree(child, depth + 1)
    except GLib.Error as error:
        print("  " * depth + f"gone meanwhile: {error.message}")


class Program:
    """A running program with one family open."""

    running = []

    def __init__(self, executable, family, *options):
        point_at(0, 0)  # A row under the pointer has more controls.
        # Nothing of the window before it.
        state = tempfile.mkdtemp(prefix="state-", dir=os.environ["HOME"])
        environment = {**os.environ, "XDG_CONFIG_HOME": state, "XDG_STATE_HOME": state}
        self.process = subprocess.Popen([executable, family, *options], env=environment)
        try:
            self.application = until(self._on_the_bus, "the program on the accessibility bus")
            self.window = until(lambda: next(iter(self.application.children()), None), "its window")
            self.running.append(self)
            until(lambda: self.window.has("active"), "the window to have the keyboard")
        except BaseException:
            self.process.kill()
            self.process.wait()
            raise

    def _on_the_bus(self):
        assert self.process.poll() is None, f"The program ended with status {self.process.returncode}"
        desktop = Atspi.get_desktop(0)
        desktop.set_cache_mask(Atspi.Cache.NONE)
        for i in range(desktop.get_child_count()):
            node = desktop.get_child_at_index(i)
            if node and node.get_process_id() == self.process.pid:
                node.set_cache_mask(Atspi.Cache.NONE)
                return Control(node)
        return None

    def quit(self):
        """The exit status after the command Quit; what is not saved is thrown away when the program asks."""
        self.running.remove(self)
        if self.process.poll() is not None:
            return self.process.returncode
        try:
            self.window.find("menu item", "Quit", showing=False).do("Press")
            until(self._has_ended, "the program to end")
        except (AssertionError, GLib.Error, AttributeError):
            self.process.kill()
            raise
        finally:
            self.process.wait()
        return self.process.returncode

    def _has_ended(self):
        if self.process.poll() is not None:
            return True
        discard = self.application.find("push button", "Close without Saving") or self.application.find("push button", "Discard")
        if discard:
            discard.do("Press")
        return False

    # The sidebar.

    def sidebar(self):
        return self.window.wait_for("filler", "Sidebar")

    def rows(self):
        """The list "Axes"."""
        return self.window.wait_for("list", "Axes")

    def row(self, axis):
        return self.rows().wait_for("list item", axis)

    def row_names(self):
        return [each.name for each in self.rows().children() if each.role == "list item"]

    def slider(self, axis):
        return self.row(axis).wait_for("slider", axis)

    def field(self, axis):
        return self.row(axis).wait_for("text", axis)

    def location(self):
        return self.window.wait_for("label", "Location").text

    def wait_location(self, wanted):
        until(lambda: self.location() == wanted, lambda: f"the state line to say '{wanted}'; it says '{self.location()}'")

    def wait_value(self, axis, wanted):
        """Slider and field show the value."""
        def shown():
            return self.slider(axis).value, self.field(axis).text
        until(lambda: shown() == (wanted, f"{wanted:g}"), lambda: f"{axis} to be at {wanted}; it shows {shown()}")
