"""A scenario that is played from a file."""

import pathlib
import tempfile
import time
import unittest

from desk_browser import Desk
from desk_test import APPLE_KEYS, FUNCTION_KEYS, STORY, page


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
