"""Every view, held against axe-core."""

import pathlib
import subprocess
import tempfile
import unittest

from desk_browser import PROGRAM
from desk_test import AXE, STORY, DeskTest, desk, page
from views import VIEWS


@unittest.skipUnless(AXE.exists(), "axe-core is not installed; script/bootstrap --all does that")
class ForEverybody(DeskTest):
    def check(self, name):
        page.run(AXE.read_text())
        found = page.driver.execute_async_script("""
          const done = arguments[0];
          // What Tab does not stop at may be too small to be pressed as well; that is not sure to axe.
          axe.run(document, {resultTypes: ['violations', 'incomplete'], rules: {'target-size': {enabled: true}}})
            .then(({violations, incomplete}) => done([...violations, ...incomplete.filter((one) => one.id === 'target-size')].map((one) => one.id + ': ' + one.nodes.map((node) => node.html.slice(0, 160) + ' ' + (node.any[0]?.message ?? '')).slice(0, 3).join(' | '))))""")
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
