"""The settings window, and what it works with."""

import re

from desk_browser import ROOT
from desk_test import EXTERNAL_KEYS, FUNCTION_KEYS, KEYROW, SYSTEM_SETTINGS, DeskTest, page


class TheSettings(DeskTest):
    def test_the_panes_have_the_size_of_their_layout(self):
        header = (ROOT / "ui/SettingsWindowView.h").read_text()
        width = re.search(r"SettingsContentSize\{(\d+)", header).group(1)
        page.click_at(KEYROW)
        size = page.read("const one = document.querySelector('.settings .pane').getBoundingClientRect(); return [one.width, one.height]")
        self.assertEqual(size[0], float(width))

    def test_every_control_of_the_general_pane_works(self):
        page.click_at(KEYROW)
        for title, event in (("Launch at login", "login-item"), ("Show Caps Lock indicator", "caps-lock-indicator"),
                             (EXTERNAL_KEYS, "external-keys")):
            page.click(title)
            self.assertTrue(page.read("return document.querySelector(`[data-name='${arguments[0]}']`).checked", event), title)
        page.click("Help about the permissions")
        self.assertIn("Input Monitoring", page.text(".popover"))
        page.click("Help about the permissions")
        self.assertFalse(page.count(".popover"))
        page.click("Accessibility Permission")
        self.assertTrue(any("opens x-apple" in event for event in page.events()))
        page.click("Quit", ".settings")
        self.assertFalse(page.count("#status-item"))

    def test_the_shortcut_is_recorded_and_used(self):
        page.click_at(KEYROW)
        page.click("Frontmost App Override Shortcut: Fn + `")
        self.assertEqual(page.text(".shortcut.push"), "Press any key...")
        page.press("Escape")
        self.assertIn('screen "beep"', page.events())
        page.press("T")
        self.assertEqual(page.text(".shortcut.push"), "Fn + T")
        page.click("Close Keyrow's settings")
        page.click_at("[data-app='com.apple.Safari']")
        page.press("fn")
        page.press("T")
        page.press("fn")
        self.assertTrue(page.count(".dot.override"))
        self.assertEqual(page.top_row(), FUNCTION_KEYS)

    def test_a_bug_report_is_a_draft_with_its_log(self):
        page.click_at(KEYROW)
        page.click("About", ".tabs")
        page.click("Report a Bug")
        self.assertIn("To:", page.text(".mail"))
        self.assertIn("Attached:", page.text(".mail summary"))
        page.click("Put the draft away")
        self.assertFalse(page.count(".mail"))

    def test_without_mail_a_link_opens(self):
        page.open_drawer()
        page.click("Mail missing")
        page.open_drawer(False)
        page.click_at(KEYROW)
        page.click("About", ".tabs")
        page.click("Contact")
        self.assertIn("opens mailto:", page.text(".caption"))

    def test_an_update_is_announced(self):
        page.open_drawer()
        page.click("An update is found")
        self.assertIn("9.9", page.text(".notification"))
        page.click_at(".notification")
        self.assertIn("open notification", page.lines())

    def test_the_login_item_can_be_switched_in_system_settings(self):
        page.click_at(KEYROW)
        page.click("Launch at login")
        page.click_at(SYSTEM_SETTINGS)
        self.assertEqual(page.attribute("[aria-label='Login item: Keyrow']", "aria-checked"), "true")
        page.click("Login item: Keyrow")
        self.assertEqual(page.attribute("[aria-label='Login item: Keyrow']", "aria-checked"), "false")
