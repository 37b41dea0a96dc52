#!/usr/bin/env python3
"""The desk in a real browser: each test does what a person does."""

import contextlib
import http.client
import os
import pathlib
import re
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from desk_browser import PATIENCE, PROGRAM, ROOT, SIMULATOR, Browser, Desk, Keys, free_port  # noqa: E402

AXE = pathlib.Path(os.environ.get("KEYROW_AXE", ROOT / "build/node_modules/axe-core/axe.min.js"))

FUNCTION_KEYS = [f"F{number}" for number in range(1, 13)]
APPLE_KEYS = ["brightness down", "brightness up", "Mission Control", "Spotlight", "Dictation",
              "Do Not Disturb", "previous", "play", "next", "mute", "volume down", "volume up"]
TRANSLATED_KEYS = ["brightness down", "brightness up", "Mission Control", "Spotlight Shortcut", "F5",
                   "F6", "previous", "play", "next", "mute", "volume down", "volume up"]
EXTERNAL_KEYS = "Apply Fn function to non-Apple vendor external F keys"
KEYROW = "[data-app='app.keyrow.Keyrow']"
SYSTEM_SETTINGS = "[data-app='com.apple.SystemSettings']"


def setUpModule():
    global desk, page
    desk = Desk()
    page = Browser()


def tearDownModule():
    page.end()
    desk.end()


def status_of(method, path, body="", **headers):
    """With which status the desk answers this."""
    connection = http.client.HTTPConnection("127.0.0.1", desk.port)
    with contextlib.closing(connection):
        connection.putrequest(method, path, skip_host=True, skip_accept_encoding=True)
        all_headers = {"Host": f"127.0.0.1:{desk.port}", "Content-Length": str(len(body)), **headers}
        for name, value in all_headers.items():
            connection.putheader(name, value)
        connection.endheaders(body.encode())
        with contextlib.closing(connection.getresponse()) as answer:
            return answer.status


class DeskTest(unittest.TestCase):
    address = None

    def setUp(self):
        page.resize(1280, 800)
        page.open(self.address or desk.address)
        page.messages()

    def tearDown(self):
        self.assertEqual(page.messages(), [])

    def status_label(self):
        return page.attribute("#status-item", "aria-label")


class FirstSight(DeskTest):
    def test_keyrow_runs_and_a_sentence_says_what_to_try(self):
        self.assertIn("Media and system controls", self.status_label())
        self.assertEqual(page.text(".story"), "Click Keyrow's symbol in the menu bar, and watch the top row of both keyboards.")
        self.assertEqual(page.count(".keyboard"), 2)
        for app in ("TextEdit", "Music", "Safari"):
            self.assertTrue(page.count(f"[data-app='com.apple.{app}']"))

    def test_everything_comes_from_this_machine(self):
        names = page.read("return performance.getEntries().map((one) => one.name).filter((name) => name.includes('://'))")
        self.assertTrue(names)
        for name in names:
            self.assertTrue(name.startswith(desk.address), name)

    def test_it_fits_on_a_small_screen(self):
        self.assertLessEqual(page.read("return document.documentElement.scrollWidth"), 1280)
        self.assertLessEqual(page.read("return document.documentElement.scrollHeight"), 800)

    def test_a_first_day_by_clicks_alone(self):
        page.click_at("#status-item")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        page.click_at("[data-app='com.apple.Music']")
        self.assertIn("Music", page.text(".front"))
        page.press("fn")
        page.press("`")
        page.press("fn")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        self.assertTrue(page.count(".dot.override"))
        self.assertEqual(page.attribute("#status-item", "title"), "Local F-Key Mode")
        page.click_at("[data-app='com.apple.TextEdit']")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        self.assertFalse(page.count(".dot.override"))
        page.click_at("[data-app='com.apple.Music']")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.click_at(KEYROW)
        page.click(EXTERNAL_KEYS)
        page.click("Close Keyrow's settings")
        page.click_at("[data-app='com.apple.Music']")
        self.assertEqual(page.top_row("usb"), TRANSLATED_KEYS)
        page.press("F8", "usb")
        self.assertIn('key "play down"', page.events())


IN_THE_MENU = "document.activeElement.getAttribute('role') === 'menuitem'"


class TheMenuBar(DeskTest):
    def test_a_click_flips_the_mode_and_the_top_row_with_it(self):
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.click_at("#status-item")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        self.assertIn("Standard function keys", self.status_label())
        page.click_at("#status-item")
        self.assertEqual(page.top_row(), APPLE_KEYS)

    def test_a_right_click_opens_the_menu(self):
        page.open_menu()
        self.assertEqual(page.texts("[role=menuitem] span"), [
            "Use F1-F12 by Default", "Use F1-F12 in This App Only", "Settings…", "Quit"])
        self.assertEqual(page.texts("[role=menuitem] kbd"), ["fn ⇥", "⇧⇥", "⌘,", "⌘q"])

    def test_control_and_a_click_open_the_menu(self):
        item = page.one("#status-item")
        page.act(lambda actions: actions.key_down(Keys.CONTROL).click(item).key_up(Keys.CONTROL))
        page.one("[role=menu]")
        self.assertEqual(page.count("[role=menu]"), 1)
        self.assertIn("click control", page.lines())

    def test_the_menu_by_keyboard_only(self):
        for _ in range(20):
            page.type(Keys.TAB)
            if page.focus() == "status-item":
                break
        page.type(Keys.ARROW_DOWN)
        page.until(IN_THE_MENU)
        page.type(Keys.ARROW_DOWN)
        self.assertIn("This App Only", page.focus())
        page.type(Keys.ENTER)
        page.one(".dot.override")
        self.assertIn("in this app only", self.status_label())
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        self.assertEqual(page.focus(), "status-item")
        page.type(Keys.ARROW_DOWN)
        page.until(IN_THE_MENU)
        page.type(Keys.ESCAPE)
        self.assertIn("close menu", page.lines())

    def test_a_click_beside_the_menu_closes_it(self):
        page.open_menu()
        desktop = page.one(".desktop")
        page.act(lambda actions: actions.move_to_element_with_offset(desktop, -100, 100).click())
        self.assertEqual(page.count("[role=menu]"), 0)

    def test_an_item_without_an_application_is_disabled(self):
        page.type_line("front none")
        page.open_menu()
        self.assertIn("This App Only", page.text("[role=menuitem][aria-disabled=true]"))
        page.click_at("[role=menuitem][aria-disabled=true]")
        self.assertTrue(page.count("[role=menu]"))

    def test_the_settings_open_from_the_menu(self):
        page.open_menu()
        page.click_on(lambda: page.driver.find_elements("css selector", "[role=menuitem]")[2])
        page.one(".window.settings")

    def test_another_user_has_a_session_of_her_own(self):
        page.click("me is here: switch to anna")
        self.assertFalse(page.count("#status-item"))
        page.click_at(KEYROW)
        page.one("#status-item")
        page.click("anna is here: switch to me")
        self.assertIn("process 502 launched", page.events())

    def test_the_lid_closes_and_opens(self):
        page.click("Close the lid")
        self.assertIn("sleep", page.lines())
        page.click("Open the lid")
        self.assertIn("wake", page.lines())
        self.assertFalse(page.count(".asleep"))


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


class WhatCanGoWrong(DeskTest):
    def test_a_failing_write_is_seen_and_repaired(self):
        page.open_drawer()
        page.choose("[name=call]", "set-hid-parameter")
        page.choose("[name=times]", " always")
        page.click("Fail")
        page.click_at("#status-item")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        self.assertIn("fault set-hid-parameter", page.events())
        self.assertIn("set-hid-parameter", page.text(".faults"))
        page.click("Repair all")
        page.click_at("#status-item")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)

    def test_an_alert_waits_for_its_answer(self):
        page.open_drawer()
        page.click("It quits")
        page.choose("[name=call]", "create-event-tap")
        page.choose("[name=times]", " always")
        page.click("Fail")
        page.open_drawer(False)
        page.click_at(KEYROW)
        page.click("a minute")
        self.assertTrue(page.read("return document.activeElement.closest('.alert') !== null"))
        page.click_at(".alert button")
        self.assertFalse(page.count(".alert"))

    def test_a_hanging_keyrow_answers_later(self):
        page.open_drawer()
        page.click("It hangs")
        page.click_at("#status-item")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.click("It answers again")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)

    def test_a_killed_keyrow_is_started_again(self):
        page.open_drawer()
        page.click("It is killed")
        self.assertFalse(page.count("#status-item"))
        page.click("It starts")
        page.one("#status-item")

    def test_a_second_keyrow_takes_over(self):
        page.open_drawer()
        page.click("A second one starts")
        self.assertIn("process 501 quit", page.events())
        self.assertIn("process 502 launched", page.events())

    def test_a_permission_is_taken_away_and_given(self):
        page.click_at(SYSTEM_SETTINGS)
        page.click("Accessibility: Keyrow")
        page.click("a moment")
        self.assertIn("tap working -> missing", page.events())
        page.click("Accessibility: Keyrow")
        page.click("a moment")
        self.assertIn("tap missing -> working", page.events())

    def test_a_tap_dies_without_a_word(self):
        page.open_drawer()
        page.click("dies silently")
        self.assertIn("tap working -> missing", page.events())

    def test_a_question_about_input_monitoring_is_answered(self):
        page.open_drawer()
        page.click("It quits")
        page.click("Input Monitoring is forgotten")
        page.open_drawer(False)
        page.click_at(KEYROW)
        page.click("Allow", ".alert")
        self.assertIn("allow input-monitoring", page.lines())

    def test_what_cannot_be_done_says_why_and_changes_nothing(self):
        before = page.lines()
        page.type_line('answer "Yes"')
        self.assertIn("no alert is open", page.text(".refused"))
        page.type_line("flip the table")
        self.assertIn("expected an action", page.text(".refused"))
        self.assertEqual(page.lines(), before)
        page.click_at("#status-item")
        self.assertFalse(page.count(".refused"))


class AsAScenario(DeskTest):
    def test_applications_are_installed_and_thrown_away(self):
        page.click("Install and throw away applications")
        page.click("Install game")
        page.click("Throw away Safari")
        self.assertTrue(page.count("[data-app='com.example.game']"))
        self.assertFalse(page.count("[data-app='com.apple.Safari']"))

    def test_waits_are_joined(self):
        page.click("a minute")
        page.click("an hour")
        page.click("a moment")
        self.assertEqual(page.lines()[-2:], ["launch keyrow", "wait 3663s"])
        self.assertIn("09:01:03", page.text(".clock"))

    def test_an_expectation_goes_in_after_its_line(self):
        page.click_at("#status-item")
        page.click("a minute")
        page.click("Expect hardware special -> standard")
        lines = page.lines()
        place = lines.index("click")
        self.assertEqual(lines[place + 1], "expect hardware special -> standard")
        self.assertEqual(lines[place + 2], "wait 60.3s")
        self.assertTrue(page.count(".frame.met"))

    def test_an_expectation_of_what_came_in_a_long_wait(self):
        page.open_drawer()
        page.click("is disabled by the user")
        page.type_line("revoke accessibility untold unannounced")
        page.press("A")
        page.click("an hour")
        event = page.texts(".frame:last-child .event code")[-1]
        page.click(f"Expect {event}", ".frame:last-child")
        self.assertEqual(page.lines()[-1], f"expect {event}")
        self.assertTrue(page.count(".frame.met"))
        self.assertFalse(page.count(".frame.unmet"))

    def test_an_expectation_by_keyboard_only(self):
        page.click_at("#status-item")
        page.focus_on(".timeline")
        page.type(Keys.ARROW_DOWN)
        self.assertEqual(page.focus(), "wait 0.3s")
        for _ in range(10):
            page.type(Keys.ARROW_UP)
            if page.focus().startswith("Expect "):
                break
        page.type(Keys.ENTER)
        page.one(".frame.met")
        self.assertTrue(page.lines()[-2].startswith("expect "))

    def test_what_was_done_is_taken_back(self):
        before = page.lines()
        page.click_at("#status-item")
        page.click("a minute")
        page.click("Take back")
        self.assertEqual(page.lines(), [*before, "click", "wait 0.3s"])
        page.click("Take back")
        self.assertEqual(page.lines(), before)
        self.assertEqual(page.top_row(), APPLE_KEYS)

    def test_it_starts_again(self):
        before = page.lines()
        page.click_at("#status-item")
        page.click("Start again")
        self.assertEqual(page.lines(), before)
        self.assertEqual(page.top_row(), APPLE_KEYS)

    def test_one_looks_back_and_goes_on_from_there(self):
        page.click_at("#status-item")
        page.click_at(".frame[data-index='8'] .line-button")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.press("B")
        self.assertNotIn("click", page.lines())

    def test_a_session_is_saved_and_its_file_plays(self):
        page.click_at("#status-item")
        page.click("Expect hardware special -> standard")
        page.press("F5", "usb")
        page.click('Expect key "F5 down reaches com.apple.TextEdit"')
        page.click("Download")
        saved = page.downloaded()
        played = subprocess.run([SIMULATOR, saved], capture_output=True, text=True)
        os.remove(saved)
        self.assertEqual(played.returncode, 0, played.stdout)
        self.assertIn("2 expectations held, 0 failed", played.stdout)

    def test_a_reload_stands_where_it_stood(self):
        page.click_at("#status-item")
        page.click_at(KEYROW)
        before = page.lines()
        page.open(desk.address, fresh=False)
        self.assertEqual(page.lines(), before)
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        page.one(".window.settings")
        page.click("Take back")
        self.assertFalse(page.count(".window.settings"))

    def test_two_pages_do_not_disturb_each_other(self):
        page.click_at("#status-item")
        first = page.driver.current_window_handle
        page.driver.switch_to.new_window("tab")
        try:
            page.driver.get(desk.address)
            page.one("main")
            self.assertEqual(page.top_row(), APPLE_KEYS)
            page.press("Z")
            page.driver.switch_to.window(first)
            page.driver.execute_cdp_cmd("Page.bringToFront", {})
            self.assertEqual(page.top_row(), FUNCTION_KEYS)
            page.press("Y")
            self.assertNotIn("press Z on built-in", page.lines())
            self.assertEqual(page.top_row(), FUNCTION_KEYS)
        finally:
            for handle in page.driver.window_handles:
                if handle != first:
                    page.driver.switch_to.window(handle)
                    page.driver.close()
            page.driver.switch_to.window(first)

    def test_a_page_that_is_closed_lets_go_of_its_stage(self):
        page.press("Z")
        path = page.until("performance.getEntriesByType('resource').map((one) => new URL(one.name).pathname).findLast((path) => path.endsWith('/play'))")
        page.driver.get("about:blank")
        end = time.monotonic() + PATIENCE
        while status_of("POST", path, '{"kept": 0, "lines": []}') != 404:
            self.assertLess(time.monotonic(), end, "the stage is still there")
            time.sleep(0.02)

    def test_a_page_whose_stage_is_gone_plays_again(self):
        page.click_at("#status-item")
        for _ in range(16):
            status_of("POST", "/stages", "{}")
        page.press("Q")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        self.assertEqual(page.lines()[-2:], ["press Q on built-in", "wait 0.3s"])
        page.messages()

    def test_a_desk_that_is_ended_and_started_again(self):
        other = Desk()
        try:
            page.open(other.address)
            page.click_at("#status-item")
            before = page.lines()
            other.end()
            key = page.one(page.key("Q"))
            with page.unhurried():
                key.click()
                page.until("document.querySelector('.ended')")
            other.start()
            page.until("!document.querySelector('.ended')")
            self.assertEqual(page.lines(), [*before, "press Q on built-in", "wait 0.3s"])
            self.assertEqual(page.top_row(), FUNCTION_KEYS)
            page.messages()
        finally:
            other.end()


STORY = """# A mode is set, and something is expected that is not so.
front com.apple.finder
keyboard internal built-in=true
launch keyrow
click
expect hardware standard
expect hardware special
click
"""


class AFile(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.path = cls.folder.name + "/story.txt"
        pathlib.Path(cls.path).write_text(STORY)
        cls.desk = Desk(cls.path)

    @classmethod
    def tearDownClass(cls):
        cls.desk.end()
        cls.folder.cleanup()

    def setUp(self):
        page.resize(1280, 800)
        page.open(self.desk.address)

    def test_it_is_played_line_by_line(self):
        self.assertEqual(page.text(".count"), "0 of 8")
        for _ in range(5):
            page.click("One line on")
        self.assertEqual(page.text(".count"), "5 of 8")
        self.assertEqual(page.top_row("internal"), FUNCTION_KEYS)
        page.click("One line back")
        self.assertEqual(page.top_row("internal"), APPLE_KEYS)
        self.assertIn("A mode is set", page.text(".story"))

    def test_the_slider_goes_back_and_forth(self):
        for count, row in ((8, APPLE_KEYS), (5, FUNCTION_KEYS), (4, APPLE_KEYS), (7, FUNCTION_KEYS)):
            page.read("const one = document.querySelector('.player input'); one.value = arguments[0]; one.dispatchEvent(new Event('input', {bubbles: true}))", str(count))
            self.assertEqual(page.text(".count"), f"{count} of 8")
            self.assertEqual(page.top_row("internal"), row)

    def test_it_plays_and_pauses(self):
        page.click("Play", ".player")
        page.until("parseInt(document.querySelector('.count').textContent) >= 2")
        page.click("Pause", ".player")
        at = page.text(".count")
        time.sleep(0.8)
        self.assertEqual(page.text(".count"), at)

    def test_a_failed_expectation_is_shown_at_its_line(self):
        for _ in range(8):
            page.click("One line on")
        self.assertIn("expect hardware special", page.text(".frame.unmet .words"))
        self.assertEqual(page.text(".frame.unmet .failure"), "expected the hardware to be special, but it is standard")
        self.assertEqual(page.count(".frame.met"), 1)

    def test_one_leaves_the_file_and_comes_back(self):
        for _ in range(5):
            page.click("One line on")
        page.press("F1", "internal")
        self.assertEqual(page.lines()[-2:], ["press F1 on internal", "wait 0.3s"])
        page.open(self.desk.address, fresh=False)
        self.assertEqual(page.lines()[-2:], ["press F1 on internal", "wait 0.3s"])
        page.click("Start again")
        self.assertEqual(page.text(".count"), "0 of 8")

    def test_a_reload_stays_at_its_line(self):
        for _ in range(4):
            page.click("One line on")
        page.open(self.desk.address, fresh=False)
        self.assertEqual(page.text(".count"), "4 of 8")


class AFilm(unittest.TestCase):
    def setUp(self):
        page.resize(1280, 800)
        page.messages()

    def film(self, text, name="film.txt"):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        path = f"{folder.name}/{name}"
        pathlib.Path(path).write_text(text)
        subprocess.run([PROGRAM, "--film", path, "-o", folder.name + "/film.html"], check=True)
        return "file://" + folder.name + "/film.html"

    def open(self, address):
        page.driver.get(address)
        page.one(".player")
        self.assertEqual(page.messages(), [])

    def test_it_plays_without_a_server(self):
        self.open(self.film(STORY))
        for _ in range(8):
            page.click("One line on")
        self.assertEqual(page.text(".count"), "8 of 8")
        self.assertEqual(page.top_row("internal"), APPLE_KEYS)
        self.assertIn("but it is standard", page.text(".frame.unmet .failure"))
        self.assertEqual(page.messages(), [])

    def test_no_text_breaks_out_of_it(self):
        evil = "</script><script>document.title='broken'</script><img src=x onerror=\"document.title='broken'\">"
        text = f"# {evil}\nkeyboard usb product=\"{evil.replace(chr(34), chr(39))}\"\nlaunch keyrow\n"
        self.open(self.film(text))
        for _ in range(3):
            page.click("One line on")
        self.assertIn("</script>", page.text(".story"))
        self.assertNotEqual(page.driver.title, "broken")

    def test_a_long_one_opens_at_once(self):
        lines = ["front com.apple.finder", "keyboard usb built-in=false", "launch keyrow"]
        while len(lines) < 2000:
            lines += ["click", "wait 1s", "press F5 on usb", "expect no fault"]
        address = self.film("\n".join(lines) + "\n")
        times = []
        for _ in range(3):
            page.driver.get("about:blank")
            page.driver.get(address)
            page.one(".player")
            times.append(page.run("return document.documentElement.dataset.drawnAt"))
        milliseconds = min(float(one) for one in times)
        print(f"a film of {len(lines)} steps opens in {milliseconds:.0f} ms")
        self.assertLess(milliseconds, 1000)

    def test_what_is_far_away_is_drawn_when_it_is_wanted(self):
        lines = ["front com.apple.finder", *["wait 1s"] * 300]
        self.open(self.film("\n".join(lines) + "\n"))
        self.assertEqual(page.count(".frame"), 40)
        page.click("261 later lines")
        self.assertEqual(page.count(".frame"), 301)

    def test_it_fits_on_a_tablet(self):
        page.resize(820, 1180)
        self.open(self.film(STORY))
        self.assertLessEqual(page.read("return document.documentElement.scrollWidth"), 820)

    def test_a_gallery_has_them_all(self):
        with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as scenarios:
            for name in ("one-story.txt", "another-story.txt"):
                pathlib.Path(scenarios, name).write_text(STORY)
            subprocess.run([PROGRAM, "--gallery", folder, scenarios], check=True, capture_output=True)
            page.driver.get(f"file://{folder}/index.html")
            self.assertEqual(page.run("return [...document.links].map((one) => one.textContent)"), ["another story", "one story"])
            page.driver.find_element("css selector", "a").click()
            page.one(".player")
            self.assertEqual(page.messages(), [])


class Hostile(DeskTest):
    def test_another_host_or_origin_is_refused(self):
        self.assertEqual(status_of("GET", "/"), 200)
        self.assertEqual(status_of("GET", "/", Host=f"evil.example:{desk.port}"), 403)
        self.assertEqual(status_of("POST", "/stages", Origin="https://evil.example"), 403)
        self.assertEqual(status_of("POST", "/stages", Origin="null"), 403)

    def test_a_foreign_page_gets_nothing(self):
        page.driver.get("about:blank")
        answer = page.driver.execute_async_script("""
          const [address, done] = arguments;
          fetch(address + 'stages', {method: 'POST', body: '{}', mode: 'no-cors'})
            .then((one) => done(one.type + ' ' + one.status), (error) => done('refused'))""", desk.address)
        self.assertIn(answer, ("refused", "opaque 0"))
        page.messages()

    def test_no_path_names_a_file(self):
        for path in ("/../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/etc/passwd", "/desk.js/../../README.md", "/\\..\\x"):
            self.assertEqual(status_of("GET", path), 404, path)

    def test_bodies_that_are_none(self):
        path = "/stages/" + "0" * 32 + "/play"
        for body in ("", "{", "null", '{"kept":"1","lines":[]}', "[" * 5000):
            self.assertEqual(status_of("POST", path, body), 400, body[:20])
        self.assertEqual(status_of("POST", path, '{"kept":0,"lines":[]}'), 404)

    def test_it_listens_to_this_machine_only(self):
        with socket.socket() as one:
            try:
                one.connect(("8.8.8.8", 53))
                own = one.getsockname()[0]
            except OSError:
                self.skipTest("this machine has no other address")
        with socket.socket() as other:
            self.assertNotEqual(other.connect_ex((own, desk.port)), 0)

    def test_a_taken_port_is_an_error_and_ctrl_c_ends(self):
        refused = subprocess.run([PROGRAM, "--port", str(desk.port)], capture_output=True, text=True, timeout=PATIENCE)
        self.assertEqual(refused.returncode, 2)
        self.assertIn("is taken", refused.stderr)
        other = Desk()
        other.process.send_signal(signal.SIGINT)
        self.assertNotEqual(other.process.wait(PATIENCE), None)
        other.process.stdout.close()
        again = Desk(port=other.port)
        self.assertIn(again.address, again.greeting)
        again.end()


class HowItFeels(DeskTest):
    def test_a_click_is_drawn_at_once(self):
        # What else runs on the machine only adds to it, so the best of some measurements counts.
        measured = []
        while len(measured) < 4 and not (measured and min(measured)[0] < 50):
            times = self.times_of_500_clicks()
            measured.append((times[int(len(times) * 0.95)], times[len(times) // 2]))
        p95, p50 = min(measured)
        load, cores = os.getloadavg()[0], os.cpu_count()
        print(f"from click to drawn change: p50 {p50:.0f} ms, p95 {p95:.0f} ms, over 500 clicks; "
              f"the best of {len(measured)}, with {load:.1f} programs running on {cores} cores")
        if p95 >= 50 and load > 3 * cores:
            self.skipTest("something else keeps this machine too busy for it")
        self.assertLess(p95, 50, "a change is drawn too late")

    def times_of_500_clicks(self):
        return sorted(page.driver.execute_async_script("""
          const done = arguments[0];
          const measure = async () => {
            const times = [];
            for (let count = 0; count < 500; ++count) {
              const item = document.getElementById('status-item');
              const before = item.getAttribute('aria-label');
              const began = performance.now();
              item.click();
              await new Promise((resolve) => {
                const seen = new MutationObserver(() => {
                  if (item.getAttribute('aria-label') === before) return;
                  seen.disconnect();
                  resolve();
                });
                seen.observe(item, {attributes: true});
              });
              // When the frame that shows it has been handed on.
              await new Promise((resolve) => requestAnimationFrame(() => {
                const channel = new MessageChannel();
                channel.port1.onmessage = resolve;
                channel.port2.postMessage(null);
              }));
              times.push(performance.now() - began);
              while (document.documentElement.dataset.idle !== 'yes') await new Promise((r) => setTimeout(r, 1));
            }
            return times;
          };
          measure().then(done)"""))

    def test_nothing_moves_with_reduced_motion(self):
        page.prefer(reduced_motion="reduce")
        try:
            page.click_at(KEYROW)
            self.assertEqual(page.read("return document.getAnimations().length"), 0)
        finally:
            page.prefer()


def view(name, *steps):
    return name, steps


VIEWS = [
    view("desk"),
    view("menu", lambda: page.open_menu()),
    view("general", lambda: page.click_at(KEYROW), lambda: page.click("Help about the permissions")),
    view("about", lambda: page.click_at(KEYROW), lambda: page.click("About", ".tabs")),
    view("system-settings", lambda: page.click_at(SYSTEM_SETTINGS)),
    view("mail", lambda: page.click_at(KEYROW), lambda: page.click("About", ".tabs"), lambda: page.click("Report a Bug")),
    view("alert", lambda: page.type_line("reset input-monitoring"), lambda: page.type_line("quit keyrow"), lambda: page.type_line("launch keyrow")),
    view("notification", lambda: page.type_line("update found 9.9"), lambda: page.type_line("wait 1s")),
    view("drawer", lambda: page.open_drawer(), lambda: page.click("An update is found")),
    view("applications", lambda: page.click("Install and throw away applications")),
    view("asleep", lambda: page.click("Close the lid")),
    view("keyboards", lambda: [page.choose(".attach", name) for name in ("apple", "keypad")]),
    view("refused", lambda: page.type_line("flip the table")),
    view("expectation", lambda: page.click_at("#status-item"), lambda: page.click("Expect hardware special -> standard"), lambda: page.type_line("expect hardware special")),
]


@unittest.skipUnless(AXE.exists(), "axe-core is not installed; script/bootstrap --all does that")
class ForEverybody(DeskTest):
    def check(self, name):
        page.run(AXE.read_text())
        found = page.driver.execute_async_script("""
          const done = arguments[0];
          axe.run(document, {resultTypes: ['violations'], rules: {'target-size': {enabled: false}}})
            .then(({violations}) => done(violations.map((one) => one.id + ': ' + one.nodes.map((node) => node.html.slice(0, 160) + ' ' + (node.any[0]?.message ?? '')).slice(0, 3).join(' | '))))""")
        self.assertEqual(found, [], name)

    def test_every_view_is_accessible(self):
        for scheme in ("light", "dark"):
            page.prefer(color_scheme=scheme, reduced_motion="reduce")
            for name, steps in VIEWS:
                with self.subTest(view=name, scheme=scheme):
                    page.open(desk.address)
                    for step in steps:
                        step()
                    page.rest()
                    self.check(name)
        page.prefer()

    def test_a_film_is_accessible(self):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "story.txt").write_text(STORY)
            subprocess.run([PROGRAM, "--film", folder + "/story.txt", "-o", folder + "/film.html"], check=True)
            page.driver.get(f"file://{folder}/film.html")
            page.one(".player")
            for _ in range(8):
                page.click("One line on")
            # Its policy lets in no script of ours, so the check comes by the debugger.
            page.driver.execute_cdp_cmd("Page.setBypassCSP", {"enabled": True})
            page.driver.refresh()
            page.one(".player")
            self.check("film")
            page.driver.execute_cdp_cmd("Page.setBypassCSP", {"enabled": False})


if __name__ == "__main__":
    unittest.main()
