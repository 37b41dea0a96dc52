"""A browser without a window, and a desk for it: what the tests and the pictures have in common."""

import contextlib
import glob
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import tempfile
import time

from selenium import webdriver
from selenium.common.exceptions import (ElementClickInterceptedException, JavascriptException,
                                        StaleElementReferenceException)
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

ROOT = pathlib.Path(__file__).resolve().parents[3]
PROGRAM = os.environ.get("KEYROW_DESK", str(ROOT / "build/dev/keyrow-desk"))
SIMULATOR = os.environ.get("KEYROW_SIM", str(ROOT / "build/dev/keyrow-sim"))
# Of what has to come about, in seconds; only what never does takes so long.
PATIENCE = 30
# In milliseconds: a key that is pressed for so long is held.
HOLD_AFTER = int(re.search(r"holdAfter = (\d+)", (ROOT / "desk/page/keyboards.js").read_text()).group(1))


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
        # Who runs the tests in the background may have Ctrl-C ignored, and that is inherited.
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True, preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
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
    """Chromium without a window, and what a person does in it.

    Whatever is done or read waits until the page has settled before, so that a reading behind
    an action tells what came of it. Nothing moves in it, where no test lets it: what fades in
    counts as invisible meanwhile, and what moves is not where one clicks."""

    def __init__(self, width=1280, height=800):
        self.downloads = tempfile.mkdtemp(prefix="keyrow-desk-")
        options = Options()
        options.binary_location = CHROMIUM
        arguments = ["--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                     "--force-prefers-reduced-motion", f"--window-size={width},{height}"]
        # As root chromium has no sandbox.
        if os.geteuid() == 0:
            arguments.append("--no-sandbox")
        for argument in arguments:
            options.add_argument(argument)
        options.add_experimental_option("prefs", {"download.default_directory": self.downloads})
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        # Chromium leaves something behind wherever temporary files go.
        service = Service(DRIVER, env={**os.environ, "TMPDIR": self.downloads})
        self.driver = webdriver.Chrome(service=service, options=options)
        self.driver.set_script_timeout(120)
        self.resize(width, height)

    def end(self):
        self.driver.quit()
        shutil.rmtree(self.downloads, ignore_errors=True)

    def resize(self, width, height):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})

    def prefer(self, **features):
        """Such as color_scheme="dark"; nothing for what is usual here."""
        media = [{"name": "prefers-" + name.replace("_", "-"), "value": value}
                 for name, value in features.items()]
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": media})

    # What the page holds.

    def run(self, script, *arguments):
        """At once, whatever is under way."""
        return self.driver.execute_script(script, *arguments)

    def until(self, script, *arguments, why=None):
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
                raise AssertionError(why or f"still not so after {PATIENCE} s: {script}")
            time.sleep(0.01)

    def rest(self):
        """Until everything that was asked for has come about, and was drawn."""
        self.until("document.documentElement.dataset.idle === 'yes'", why="the page does not come to rest")

    def read(self, script, *arguments):
        """What the script returns of the page at rest."""
        self.rest()
        return self.run(script, *arguments)

    def one(self, selector):
        self.rest()
        self.until("document.querySelector(arguments[0])", selector, why=f"there is no {selector}")
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def count(self, selector):
        return self.read("return document.querySelectorAll(arguments[0]).length", selector)

    def text(self, selector):
        return self.read("return document.querySelector(arguments[0])?.textContent ?? ''", selector)

    def texts(self, selector):
        return self.read("return [...document.querySelectorAll(arguments[0])].map((one) => one.textContent)", selector)

    def attribute(self, selector, name):
        return self.read("return document.querySelector(arguments[0])?.getAttribute(arguments[1]) ?? null", selector, name)

    def focus(self):
        """What has it: its own words."""
        return self.read("const one = document.activeElement; return one.id || one.getAttribute('aria-label') || one.textContent")

    def named(self, name, within="body"):
        """The control of this name, as a screen reader would say it."""
        self.rest()
        return self.until("""(([name, within]) => {
          const called = (one) => one.getAttribute('aria-label') ?? one.textContent.trim();
          return [...document.querySelectorAll(within + ' :is(button, summary, input, select, label)')]
            .find((one) => called(one) === name && one.getClientRects().length > 0) ?? null;
        })(arguments)""", name, within, why=f"nothing is called {name}")

    def lines(self):
        return self.read("""return [...document.querySelectorAll('.frame:not(.later) > .line-button .words')]
          .map((one) => [...one.childNodes].filter((node) => node.nodeType === 3).map((node) => node.data).join(''))""")

    def events(self):
        return self.texts(".frame:not(.later) .event code")

    def top_row(self, keyboard="built-in"):
        return self.read("""return [...document.querySelectorAll(
          '[data-keyboard="' + arguments[0] + '"] [data-does]')].map((one) => one.dataset.does)""", keyboard)

    # What a person does.

    def open(self, address, fresh=True):
        if fresh:
            script = self.driver.execute_cdp_cmd(
                "Page.addScriptToEvaluateOnNewDocument", {"source": "sessionStorage.clear()"})
        self.driver.get(address)
        if fresh:
            self.driver.execute_cdp_cmd("Page.removeScriptToEvaluateOnNewDocument", script)
        self.one("main")

    def click_on(self, find):
        """Clicks what is found, by the pointer."""
        end = time.monotonic() + PATIENCE
        while True:
            try:
                found = find()
                self.run("arguments[0].scrollIntoView({block: 'nearest'})", found)
                found.click()
                break
            except (StaleElementReferenceException, ElementClickInterceptedException):
                # It was not clicked, as the page had changed since it was found.
                if time.monotonic() > end:
                    raise
        self.rest()

    def click(self, name, within="body"):
        self.click_on(lambda: self.named(name, within))

    def click_at(self, selector):
        self.click_on(lambda: self.one(selector))

    def act(self, add):
        """What chained actions do: add(actions) adds them."""
        self.rest()
        actions = ActionChains(self.driver, duration=0)
        add(actions)
        actions.perform()
        self.rest()

    def focus_on(self, selector):
        self.read("document.querySelector(arguments[0]).focus()", selector)

    def type(self, *keys):
        self.act(lambda actions: actions.send_keys(*keys))

    def choose(self, selector, value):
        self.one(selector)
        self.run("""
          const [selector, value] = arguments;
          const field = document.querySelector(selector);
          field.value = value;
          field.dispatchEvent(new Event('change', {bubbles: true}))""", selector, value)
        self.rest()

    def write(self, selector, text):
        """What a field holds then."""
        field = self.one(selector)
        field.clear()
        field.send_keys(text)
        self.rest()

    def open_drawer(self, is_open=True):
        self.read("document.querySelector('.troubles').open = arguments[0]", is_open)

    def open_menu(self):
        self.act(lambda actions: actions.context_click(self.one("#status-item")))
        self.one("[role=menu]")

    def type_line(self, line):
        field = self.one(".typed input")
        field.clear()
        field.send_keys(line + Keys.ENTER)
        self.rest()

    def key(self, name, keyboard="built-in"):
        return f"[data-keyboard='{keyboard}'] [data-key='{name}']"

    @contextlib.contextmanager
    def unhurried(self):
        """However long the machine takes between a key's press and its release, it was not held."""
        self.run("window.keptTimeout = setTimeout; window.setTimeout = (work, time) => time === arguments[0] ? 0 : keptTimeout(work, time)", HOLD_AFTER)
        try:
            yield
        finally:
            self.run("window.setTimeout = keptTimeout")

    def press(self, name, keyboard="built-in"):
        with self.unhurried():
            self.click_at(self.key(name, keyboard))

    @contextlib.contextmanager
    def holding(self, element):
        """The pointer's button, down on it; meanwhile the page does not come to rest."""
        self.rest()
        ActionChains(self.driver, duration=0).click_and_hold(element).perform()
        try:
            yield
        finally:
            ActionChains(self.driver, duration=0).release().perform()
        self.rest()

    def messages(self):
        """What went wrong in the page, by the console."""
        return [entry["message"] for entry in self.driver.get_log("browser")
                if entry["level"] in ("SEVERE", "WARNING")]

    def downloaded(self):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            done = glob.glob(self.downloads + "/*.txt")
            if done:
                return done[0]
            time.sleep(0.02)
        raise AssertionError("nothing was downloaded")
