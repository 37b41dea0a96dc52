"""A session as a scenario: its lines, and that they are kept."""

import os
import subprocess
import time

from desk_browser import PATIENCE, SIMULATOR, Desk, Keys
from desk_test import APPLE_KEYS, FUNCTION_KEYS, KEYROW, DeskTest, desk, page, status_of


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
