"""The keyboards, pressed with the pointer and with one's own keys."""

from desk_browser import Keys
from desk_test import (APPLE_KEYS, EXTERNAL_KEYS, FUNCTION_KEYS, KEYROW, SYSTEM_SETTINGS,
                       TRANSLATED_KEYS, DeskTest, page)


class TheKeyboards(DeskTest):
    def test_system_settings_change_every_top_row(self):
        page.click_at(SYSTEM_SETTINGS)
        page.click("Use F1, F2, etc. keys as standard function keys")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        page.click("Use F1, F2, etc. keys as standard function keys")
        self.assertEqual(page.top_row(), APPLE_KEYS)

    def test_a_foreign_top_row_follows_where_that_is_set(self):
        self.assertEqual(page.top_row("usb"), FUNCTION_KEYS)
        page.click_at(KEYROW)
        page.click(EXTERNAL_KEYS)
        self.assertEqual(page.top_row("usb"), TRANSLATED_KEYS)
        page.click("Accessibility Permission")
        page.type_line("secure-input on")
        self.assertEqual(page.top_row("usb"), FUNCTION_KEYS)

    def test_a_short_press_is_one_line(self):
        page.press("A")
        self.assertEqual(page.lines()[-2:], ["press A on built-in", "wait 0.3s"])

    def test_a_key_that_is_held_repeats_before_ones_eyes(self):
        key = page.one(page.key("A"))
        with page.holding(key):
            page.until("[...document.querySelectorAll('.event code')].filter((one) => one.textContent.includes('A repeat')).length > 3")
        # At most ten times a second time passes; the last is the release, and the first the opening.
        played = page.read("""return performance.getEntriesByType('resource')
          .filter((one) => one.name.endsWith('/play')).map((one) => one.startTime)""")[1:-1]
        self.assertGreater(len(played), 3)
        for earlier, later in zip(played, played[1:]):
            self.assertGreater(later - earlier, 90)
        lines = page.lines()
        hold = lines.index("hold A on built-in")
        self.assertRegex(lines[hold + 1], r"^wait [0-9.]+m?s$")
        self.assertEqual(lines[hold + 2:], ["release A on built-in", "wait 0.3s"])
        self.assertIn('key "A up reaches com.apple.TextEdit"', page.events())

    def test_fn_is_held_on_the_page(self):
        page.press("fn")
        self.assertEqual(page.attribute(page.key("fn"), "aria-pressed"), "true")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        page.press("fn")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.choose(".holds", "fn")
        self.assertEqual(page.lines()[-2], "hold fn on built-in")
        page.choose(".holds", "F5")
        self.assertEqual(page.lines()[-2], "press F5 on built-in")

    def test_ones_own_keyboard_types_while_it_has_the_focus(self):
        page.focus_on("[data-keyboard='usb']")
        with page.unhurried():
            page.type("x")
            self.assertEqual(page.lines()[-2:], ["press X on usb", "wait 0.3s"])
            page.type(Keys.F8)
            self.assertEqual(page.lines()[-2:], ["press F8 on usb", "wait 0.3s"])
        before = page.lines()
        page.act(lambda actions: actions.key_down(Keys.CONTROL).send_keys("c").key_up(Keys.CONTROL))
        page.type(Keys.TAB)
        self.assertFalse(page.read("return document.activeElement.closest('.keys') !== null"))
        page.type("y")
        self.assertEqual(page.lines(), before)

    def test_the_browsers_own_shortcuts_stay_the_browsers(self):
        page.focus_on("[data-keyboard='usb']")
        page.run("""window.kept = []; window.passed = [];
          addEventListener('keydown', (event) => (event.defaultPrevented ? kept : passed).push(event.code))""")
        before = page.lines()
        for key in (Keys.F5, Keys.F6, Keys.F11, Keys.F12):
            page.type(key)
        for modifier, key in ((Keys.CONTROL, "l"), (Keys.ALT, "d"), (Keys.META, "r"), (Keys.CONTROL, Keys.F4)):
            page.act(lambda actions: actions.key_down(modifier).send_keys(key).key_up(modifier))
        page.act(lambda actions: actions.key_down(Keys.SHIFT).send_keys(Keys.F5).key_up(Keys.SHIFT))
        self.assertEqual(page.read("return kept"), ["ShiftLeft"])
        self.assertEqual(page.lines(), [*before, "press left-shift on usb", "wait 0.3s"])
        self.assertEqual(page.read("return passed"), [
            "F5", "F6", "F11", "F12", "ControlLeft", "KeyL", "AltLeft", "KeyD", "MetaLeft", "KeyR", "ControlLeft", "F4", "F5"])
        for code in ("F5", "F6", "F11", "F12", "Tab", "Control"):
            self.assertIn(code, page.attribute("[data-keyboard='usb']", "aria-description"))

    def test_a_key_that_is_down_when_the_browser_is_meant_comes_up(self):
        page.focus_on("[data-keyboard='usb']")
        with page.unhurried():
            page.act(lambda actions: actions.key_down("a").key_down(Keys.CONTROL).key_up("a").key_up(Keys.CONTROL))
        self.assertEqual(page.lines()[-2:], ["press A on usb", "wait 0.3s"])
        self.assertEqual(page.count(".key.held"), 0)

    def test_caps_lock_shows_its_dot(self):
        page.click_at(KEYROW)
        page.click("Show Caps Lock indicator")
        page.press("caps-lock")
        self.assertTrue(page.count(".dot.caps-lock"))
        self.assertEqual(page.attribute(page.key("caps-lock"), "aria-pressed"), "true")
        page.press("caps-lock")
        self.assertFalse(page.count(".dot.caps-lock"))
        self.assertIn("caps-lock off on built-in", page.lines())

    def test_keyboards_come_and_go(self):
        page.click("Unplug Foreign Keyboard")
        self.assertEqual(page.count(".keyboard"), 1)
        for name in ("apple", "keypad", "usb"):
            page.choose(".attach", name)
        self.assertEqual(page.count(".keyboard"), 4)
        self.assertEqual(page.top_row("apple"), APPLE_KEYS)
        page.press("7", "keypad")
        self.assertIn('key "7 down reaches com.apple.TextEdit"', page.events())

    def test_a_modifier_stands_in_for_fn(self):
        page.click_at(KEYROW)
        page.choose("#replacement", "Right Command")
        self.assertEqual(page.read("return document.querySelector('#replacement').value"), "Right Command")
        page.click_at("[data-app='com.apple.TextEdit']")
        page.press("right-command", "usb")
        page.press("`", "usb")
        page.press("right-command", "usb")
        self.assertTrue(page.count(".dot.override"))
