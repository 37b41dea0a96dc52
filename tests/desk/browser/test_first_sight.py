"""What one sees first, and a first day by clicks."""

from desk_test import (APPLE_KEYS, EXTERNAL_KEYS, FUNCTION_KEYS, KEYROW, TRANSLATED_KEYS,
                       DeskTest, desk, page)


class FirstSight(DeskTest):
    def test_keyrow_runs_and_a_sentence_says_what_to_try(self):
        self.assertIn("Media and system controls", self.status_label())
        self.assertEqual(page.text(".story"), "Click the globe in the menu bar, which is Keyrow, and watch the top row of the built-in keyboard.")
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
