"""What the tests in a browser share: a desk, a page, and names of what stands on it."""

import atexit
import contextlib
import http.client
import os
import pathlib
import unittest

from desk_browser import ROOT, Browser, Desk

AXE = pathlib.Path(os.environ.get("KEYROW_AXE", ROOT / "build/node_modules/axe-core/axe.min.js"))

FUNCTION_KEYS = [f"F{number}" for number in range(1, 13)]
APPLE_KEYS = ["brightness down", "brightness up", "Mission Control", "Spotlight", "Dictation",
              "Do Not Disturb", "previous", "play", "next", "mute", "volume down", "volume up"]
TRANSLATED_KEYS = [*APPLE_KEYS[:3], "Spotlight Shortcut", "F5", "F6", *APPLE_KEYS[6:]]
EXTERNAL_KEYS = "Apply Fn function to non-Apple vendor external F keys"
KEYROW = "[data-app='app.keyrow.Keyrow']"
SYSTEM_SETTINGS = "[data-app='com.apple.SystemSettings']"

desk = Desk()
atexit.register(desk.end)
page = Browser()
atexit.register(page.end)

STORY = """# A mode is set, and something is expected that is not so.
front com.apple.finder
keyboard internal built-in=true
launch keyrow
click
expect hardware standard
expect hardware special
click
"""


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
