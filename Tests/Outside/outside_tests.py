"""Drives the built program from outside, as a screen reader and a keyboard do: outside_tests.py PROGRAM FAMILY [TEST...]"""

import os
import pathlib
import shutil
import sys
import tempfile
import unittest

import desktop

if __name__ == "__main__":
    desktop.inside_own_desktop()

from person import Program, keys, point_at, type_text, until  # noqa: E402

EXECUTABLE, FAMILY = sys.argv[1:3]


class Outside(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.manager = desktop.start_window_manager()
        until(desktop.has_window_manager, "the window manager")

    @classmethod
    def tearDownClass(cls):
        cls.manager.terminate()
        cls.manager.wait()

    def open(self, *options, family=None):
        program = Program(EXECUTABLE, str(family or FAMILY), *options)
        self.addCleanup(self.quit, program)
        return program

    def quit(self, program):
        self.assertEqual(program.quit(), 0, "the program's status at its end")

    def assert_waited(self, wanted, look):
        until(lambda: look() == wanted, lambda: f"{wanted}; there is {look()}")

    def test_every_control_has_its_name_role_and_actions(self):
        program = self.open("--text", "a")
        sidebar = program.sidebar()
        tab = sidebar.wait_for("page tab", "Variation")
        self.assertTrue(tab.has("selected"))
        self.assertIn("Press", tab.actions())
        shown = [(each.role, each.name) for each in program.rows().children() if each.role != "filler"]
        self.assertEqual(shown, [("heading", "Font Axes"), ("list item", "Weight"), ("list item", "Width"),
                                 ("heading", "Glyph Axes"), ("list item", "Terminal"), ("list item", "Bowl"),
                                 ("list item", "Spur")])
        for axis in ("Weight", "Width", "Terminal", "Bowl"):
            slider, field = program.slider(axis), program.field(axis)
            self.assertLessEqual({"Increase", "Decrease", "SetFocus"}, set(slider.actions()))
            self.assertTrue(field.has("editable"))
            for button in ("Previous position", "Next position", "Edit axis"):
                self.assertIn("Press", program.row(axis).find("push button", button, showing=False).actions())
        spur = program.row("Spur")
        self.assertEqual((spur.find("slider"), spur.find("text")), (None, None), "hidden")
        self.assertIn("Press", spur.wait_for("push button", "Why is this range empty?").actions())
        self.assertIn("Press", sidebar.wait_for("push button", "Add Glyph Axis").actions())
        self.assertTrue(sidebar.wait_for("text", "Filter axes").has("editable"))
        self.assertEqual(program.location(), "Regular")
        self.assertEqual(self.contradictions(program.window), [])

    def contradictions(self, top):
        """Entries that another place of the tree does not confirm, and shown controls without a name."""
        found = []
        for each in top.all():
            for index, child in enumerate(each.children()):
                if child.parent != each or child.index != index:
                    found.append(f"{child} in {each} says it is child {child.index} of {child.parent}")
            if each.has("showing") and each.has("focusable") and not each.name:
                found.append(f"{each} in {each.parent} has no name")
        return found

    def test_an_axis_moves_by_keys_actions_buttons_and_typing(self):
        program = self.open("--text", "n")
        slider = program.slider("Weight")
        self.assertEqual((slider.value, slider.description), (80, "80, position 2 of 3"))
        slider.take_keyboard()
        keys("Right")
        program.wait_value("Weight", 81)
        program.wait_location("Interpolated")
        self.assertEqual(program.slider("Weight").description, "81, between 80 and 184")
        keys("shift+Right")
        program.wait_value("Weight", 91)
        keys("Page_Up")
        program.wait_value("Weight", 184)
        program.wait_location("Black")
        slider.do("Decrease")
        program.wait_value("Weight", 183)
        program.wait_location("Interpolated")
        slider.value = 24
        program.wait_value("Weight", 24)
        program.wait_location("Thin")
        self.assertTrue(slider.has("focused"), "what moved the axis left the keyboard where it was")
        keys("BackSpace")
        program.wait_value("Weight", 80)
        program.wait_location("Regular")

        row = program.row("Weight")
        row.find("push button", "Previous position", showing=False).do("Press")
        program.wait_value("Weight", 24)
        point_at(*program.field("Weight").centre())
        step = row.wait_for("push button", "Previous position")
        point_at(*step.centre(), "click", "1")
        program.wait_value("Weight", 184)
        program.wait_location("Black")

        field = program.field("Weight")
        field.take_keyboard()
        type_text("123")
        keys("Return")
        program.wait_value("Weight", 123)
        program.wait_location("Interpolated")
        type_text("wide")
        keys("Return")
        program.wait_value("Weight", 123)
        type_text("9")
        keys("Escape")
        program.wait_value("Weight", 123)
        self.assertTrue(field.has("focused"))
        keys("ctrl+z")
        program.wait_value("Weight", 123)

    def test_an_empty_range_is_explained(self):
        program = self.open("--text", "a")
        program.row("Spur").wait_for("push button", "Why is this range empty?").do("Press")
        wanted = ("There is no Intermediate layer for which this axis is different from its default value of 0. "
                  "Add an Intermediate layer in the Layers palette or edit an existing layer to use this axis.")
        program.application.wait_for("label", wanted)
        keys("Escape")
        program.application.wait_gone("label", wanted)
        self.assertEqual(program.location(), "Regular")

    def test_the_filter_shows_what_matches(self):
        program = self.open("--text", "a")
        search = program.sidebar().wait_for("text", "Filter axes")
        search.take_keyboard()
        type_text(" wi ")
        self.assert_waited(["Width"], program.row_names)
        keys("ctrl+a")
        type_text("zz")
        program.sidebar().wait_for("label", "No Matches")
        program.sidebar().wait_for("label", "No axis matches the filter. Clear the filter to show all axes.")
        self.assertEqual(program.row_names(), [])
        keys("ctrl+a", "BackSpace")
        self.assert_waited(["Weight", "Width", "Terminal", "Bowl", "Spur"], program.row_names)
        self.assertTrue(search.has("focused"))
        self.assertIsNone(program.sidebar().find("label", "No Matches"))

    def test_a_glyph_axis_is_added_named_changed_deleted_and_brought_back(self):
        program = self.open("--text", "a")
        program.sidebar().wait_for("push button", "Add Glyph Axis").do("Press")
        name = program.application.wait_for("text", "Axis name")
        default = program.application.wait_for("text", "Default")
        until(lambda: name.has("focused"), "the keyboard to be in the name")
        axes = ["Terminal", "Bowl", "Spur"]
        self.assert_waited(axes + ["Unnamed"], lambda: program.row_names()[2:])
        type_text("Swash")
        self.assert_waited(axes + ["Swash"], lambda: program.row_names()[2:])
        keys("Return")
        program.application.wait_gone("text", "Axis name")

        program.row("Swash").wait_for("push button", "Why is this range empty?").take_keyboard()
        keys("Menu")
        name = program.application.wait_for("text", "Axis name")
        until(lambda: name.has("focused") and name.text == "Swash", "the name in the editor")
        type_text("Bowl")  # Another axis is called so.
        keys("Return")
        self.assert_waited("Swash", lambda: name.text)
        keys("Tab")
        default = program.application.wait_for("text", "Default")
        until(lambda: default.has("focused"), "the keyboard to be in the default")
        type_text("20")
        keys("Return")
        program.application.wait_gone("text", "Axis name")
        self.assert_waited(axes + ["Swash"], lambda: program.row_names()[2:])
        program.row("Swash").wait_for("push button", "Why is this range empty?").do("Press")
        until(lambda: any(each.role == "label" and "default value of 20." in each.name
                          for each in program.application.all()), "the help to name the default")
        keys("Escape")

        program.row("Swash").find("push button", "Edit axis", showing=False).do("Press")
        program.application.wait_for("push button", "Delete Axis").do("Press")
        self.assert_waited(axes, lambda: program.row_names()[2:])
        program.application.wait_gone("push button", "Delete Axis")
        keys("ctrl+z")
        self.assert_waited(axes + ["Swash"], lambda: program.row_names()[2:])

    def test_the_keyboard_reaches_every_row_of_a_long_list(self):
        axes = [f"Axis {number:02}" for number in range(60)]
        program = self.open(family=self.family_of(axes))
        self.assertEqual(program.row_names(), ["Weight"] + axes)
        row = next(each for each in program.rows().children() if each.name == "Axis 40")
        self.assertFalse(row.has("showing"))
        row.do("SetFocus")
        until(lambda: row.has("showing"), "the row to be scrolled into sight")
        until(lambda: self.has_keyboard(row), "the keyboard to come to the row")
        rows = [each for each in program.rows().children() if each.role == "list item"]
        for key, wanted in [("Tab", rows[42:56])] + [("shift+Tab", list(reversed(rows[31:55])))]:
            for row in wanted:
                keys(key, key)
                until(lambda: self.has_keyboard(row) and row.has("showing"),
                      lambda: f"{key} to come to {row}; {[each for each in rows if self.has_keyboard(each)]} has the keyboard")
        program.slider("Axis 30").take_keyboard()
        keys("End")
        program.wait_value("Axis 30", 100)

    def has_keyboard(self, row):
        return any(each.has("focused") for each in row.all())

    def family_of(self, axes):
        """A copy of a small family with more axes, on each of which its two masters differ."""
        folder = pathlib.Path(tempfile.mkdtemp(prefix="family-", dir=os.environ[desktop.READY])) / "Family"
        shutil.copytree(pathlib.Path(FAMILY).parent.parent / "Cases" / "QuadraticCurves", folder)
        designspace = folder / "QuadraticCurves.designspace"
        text = designspace.read_text(encoding="utf-8")
        declared = "".join(f'<axis tag="x{i:03}" name="{name}" minimum="0" maximum="100" default="0"/>'
                           for i, name in enumerate(axes))
        text = text.replace("</axes>", declared + "</axes>")
        before, regular, black = text.split("</location>", 2)
        places = ["".join(f'<dimension name="{name}" xvalue="{value}"/>' for name in axes) for value in (0, 100)]
        text = before + places[0] + "</location>" + regular + places[1] + "</location>" + black
        designspace.write_text(text, encoding="utf-8")
        return designspace


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]], verbosity=2)
