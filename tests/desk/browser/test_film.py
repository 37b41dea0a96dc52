"""Films, which play without a server."""

import pathlib
import subprocess
import tempfile
import unittest

from desk_browser import PROGRAM
from desk_test import APPLE_KEYS, STORY, page


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
