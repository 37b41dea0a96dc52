"""What can go wrong."""

from desk_test import APPLE_KEYS, EXTERNAL_KEYS, FUNCTION_KEYS, KEYROW, SYSTEM_SETTINGS, DeskTest, page


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

    def test_an_item_of_the_main_menu_is_chosen(self):
        page.open_drawer()
        page.choose("[name=title]", "About Keyrow")
        page.click("Choose in its main menu")
        self.assertIn('menu "About Keyrow"', page.lines())
        self.assertIn("Report a Bug", page.texts(".settings .push"))

    def test_keyboards_tell_of_their_keys_too_late(self):
        page.click_at(KEYROW)
        page.click(EXTERNAL_KEYS)
        page.press("F8", "usb")
        self.assertIn('key "play down"', page.events())
        page.click_at("[data-app='com.apple.TextEdit']")
        page.open_drawer()
        page.choose("[name=late]", " late 400ms")
        page.click("an hour")
        page.press("F9", "usb")
        self.assertEqual(page.lines()[-2], "press F9 on usb late 400ms")
        self.assertNotIn('key "next down"', page.events())
        page.press("fn")
        self.assertEqual(page.lines()[-2], "hold fn on built-in late 400ms")

    def test_key_events_tell_their_time_in_nanoseconds(self):
        page.open_drawer()
        page.click("They tell their time in nanoseconds")
        self.assertEqual(page.lines()[-2], "timestamps nanoseconds")
        page.click("They tell their time in ticks again")
        self.assertEqual(page.lines()[-2], "timestamps ticks")

    def test_the_hardware_changes_behind_keyrows_back(self):
        page.open_drawer()
        page.click("The hardware becomes standard")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        page.click("The hardware becomes special")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.write("[name=value]", "7")
        page.click("Put there")
        self.assertEqual(page.lines()[-2], "hardware HIDFKeyMode=7")
        self.assertIn("hardware special -> unreadable", page.events())
        page.choose("[name=place]", "preference ")
        page.write("[name=value]", "")
        page.click("Put there")
        self.assertEqual(page.lines()[-2], "preference none")

    def test_somebody_else_writes_and_manages_a_setting(self):
        page.open_drawer()
        page.choose("[name=setting]", "globalFnState")
        value = "[aria-label='The value of the setting']"
        page.write(value, "1")
        page.click("Write")
        self.assertEqual(page.lines()[-2], "defaults write globalFnState 1")
        self.assertEqual(page.top_row(), FUNCTION_KEYS)
        page.write(value, "0")
        page.click("Manage")
        self.assertEqual(page.lines()[-2], "managed globalFnState 0")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.click_at("#status-item")
        self.assertEqual(page.top_row(), APPLE_KEYS)
        page.click("Manage no longer")
        self.assertEqual(page.lines()[-2], "managed globalFnState none")
        page.click("Delete", ".troubles")
        self.assertEqual(page.lines()[-2], "defaults delete globalFnState")

    def test_what_cannot_be_done_says_why_and_changes_nothing(self):
        before = page.lines()
        page.type_line('answer "Yes"')
        self.assertIn("no alert is open", page.text(".refused"))
        page.type_line("flip the table")
        self.assertIn("expected an action", page.text(".refused"))
        self.assertEqual(page.lines(), before)
        page.click_at("#status-item")
        self.assertFalse(page.count(".refused"))
