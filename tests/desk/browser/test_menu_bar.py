"""The menu bar, and Keyrow's item in it."""

from desk_browser import Keys
from desk_test import APPLE_KEYS, FUNCTION_KEYS, KEYROW, DeskTest, page

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
        self.assertEqual(page.texts("[role=menuitem] kbd"), ["fn ⇥", "⇧⇥", "⌘,", "⌘Q"])

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
