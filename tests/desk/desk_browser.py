"""A browser without a window, and a desk for it: what the tests and the pictures have in common."""

import glob
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile
import time

from selenium import webdriver
from selenium.common.exceptions import JavascriptException, StaleElementReferenceException
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PROGRAM = os.environ.get("KEYROW_DESK", str(ROOT / "build/dev/keyrow-desk"))
SIMULATOR = os.environ.get("KEYROW_SIM", str(ROOT / "build/dev/keyrow-sim"))
PATIENCE = 10


def free_port():
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        return one.getsockname()[1]


class Desk:
    """A desk that serves, as script/desk starts it."""

    def __init__(self, *arguments, port=None):
        self.port = port or free_port()
        self.arguments = arguments
        self.start()

    @property
    def address(self):
        return f"http://127.0.0.1:{self.port}/"

    def start(self):
        command = [PROGRAM, *self.arguments, "--port", str(self.port)]
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        self.greeting = self.process.stdout.readline()

    def end(self):
        self.process.terminate()
        self.process.wait()
        self.process.stdout.close()


def find(*names):
    return next((path for path in map(shutil.which, names) if path), None)


CHROMIUM = find("chromium", "chromium-browser")
DRIVER = find("chromedriver")


class Browser:
    """Chromium without a window, and what a person does in it."""

    def __init__(self, width=1280, height=800):
        self.downloads = tempfile.mkdtemp(prefix="keyrow-desk-")
        options = Options()
        options.binary_location = CHROMIUM
        arguments = ["--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                     f"--window-size={width},{height}"]
        # As root chromium has no sandbox.
        if os.geteuid() == 0:
            arguments.append("--no-sandbox")
        for argument in arguments:
            options.add_argument(argument)
        options.add_experimental_option("prefs", {"download.default_directory": self.downloads})
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(service=Service(DRIVER), options=options)
        self.driver.set_script_timeout(120)
        self.resize(width, height)

    def end(self):
        self.driver.quit()
        shutil.rmtree(self.downloads, ignore_errors=True)

    def resize(self, width, height):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def prefer(self, **features):
        """Such as color_scheme="dark"."""
        media = [{"name": "prefers-" + name.replace("_", "-"), "value": value}
                 for name, value in features.items()]
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": media})

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def until(self, script, *arguments):
        """Waits until what the script returns is true, and gives it."""
        end = time.monotonic() + PATIENCE
        while True:
            try:
                value = self.run("return " + script, *arguments)
            except (JavascriptException, StaleElementReferenceException):
                value = None
            if value:
                return value
            if time.monotonic() > end:
                raise AssertionError(f"still not so after {PATIENCE} s: {script}")
            time.sleep(0.01)

    def rest(self):
        """Until everything that was asked for has been drawn."""
        self.until("document.documentElement.dataset.idle === 'yes'")

    def open(self, address, fresh=True):
        self.driver.get(address)
        if fresh:
            self.until("document.querySelector('main')")
            self.rest()
            self.run("sessionStorage.clear()")
            self.driver.refresh()
        self.until("document.querySelector('main')")
        self.rest()

    def one(self, selector):
        self.until("document.querySelector(arguments[0])", selector)
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def named(self, name, within="body"):
        """The control of this name, as a screen reader would say it."""
        script = """
          const [name, within] = arguments;
          const called = (one) => one.getAttribute('aria-label') ?? one.textContent.trim();
          return [...document.querySelectorAll(within + ' :is(button, summary, input, select, label)')]
            .find((one) => called(one) === name && one.getClientRects().length > 0) ?? null"""
        end = time.monotonic() + PATIENCE
        while True:
            found = self.run(script, name, within)
            if found:
                return found
            if time.monotonic() > end:
                raise AssertionError(f"nothing is called {name}")
            time.sleep(0.01)

    def click(self, name, within="body"):
        self.rest()
        found = self.named(name, within)
        self.run("arguments[0].scrollIntoView({block: 'nearest'})", found)
        found.click()
        self.rest()

    def click_at(self, selector):
        self.one(selector).click()
        self.rest()

    def choose(self, selector, value):
        self.run("""
          const [selector, value] = arguments;
          const field = document.querySelector(selector);
          field.value = value;
          field.dispatchEvent(new Event('change', {bubbles: true}))""", selector, value)
        self.rest()

    def open_drawer(self):
        self.run("document.querySelector('.troubles').open = true")

    def type_line(self, line):
        field = self.one(".typed input")
        field.clear()
        field.send_keys(line + Keys.ENTER)
        self.rest()

    def lines(self):
        return self.run("""return [...document.querySelectorAll('.frame:not(.later) > .line-button .words')]
          .map((one) => [...one.childNodes].filter((node) => node.nodeType === 3).map((node) => node.data).join(''))""")

    def events(self):
        return self.run("return [...document.querySelectorAll('.frame:not(.later) .event code')].map((one) => one.textContent)")

    def top_row(self, keyboard="built-in"):
        return self.run("""return [...document.querySelectorAll(
          '[data-keyboard="' + arguments[0] + '"] [data-does]')].map((one) => one.dataset.does)""", keyboard)

    def key(self, name, keyboard="built-in"):
        return self.one(f"[data-keyboard='{keyboard}'] [data-key='{name}']")

    def press(self, name, keyboard="built-in"):
        self.key(name, keyboard).click()
        self.rest()

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0])?.textContent ?? ''", selector)

    def actions(self):
        return ActionChains(self.driver, duration=0)

    def messages(self):
        """What went wrong in the page, by the console."""
        return [entry["message"] for entry in self.driver.get_log("browser")
                if entry["level"] in ("SEVERE", "WARNING")]

    def downloaded(self):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            done = [one for one in glob.glob(self.downloads + "/*.txt")]
            if done:
                return done[0]
            time.sleep(0.02)
        raise AssertionError("nothing was downloaded")
