#!/usr/bin/env python3
"""Takes pictures of the desk.

    tests/desk/pictures.py FOLDER     every view, in light and dark
    tests/desk/pictures.py --readme   the one in README, docs/desk.png
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import in_browser  # noqa: E402
from desk_browser import ROOT  # noqa: E402

SCHEMES = ("light", "dark")


def take(page, path):
    page.rest()
    page.driver.save_screenshot(str(path))
    print(path)


def every_view(page, desk, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for scheme in SCHEMES:
        page.prefer(color_scheme=scheme, reduced_motion="reduce")
        for name, steps in in_browser.VIEWS:
            page.open(desk.address)
            for step in steps:
                step()
            take(page, folder / f"{name}-{scheme}.png")


def readme(page, desk):
    page.prefer(color_scheme="light", reduced_motion="reduce")
    page.open(desk.address)
    page.click_at("#status-item")
    page.click_at(in_browser.KEYROW)
    page.click(in_browser.EXTERNAL_KEYS)
    page.click_at("[data-app='com.apple.Music']")
    page.press("fn")
    page.press("`")
    page.press("fn")
    take(page, ROOT / "docs/desk.png")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    in_browser.setUpModule()
    try:
        if sys.argv[1] == "--readme":
            readme(in_browser.page, in_browser.desk)
        else:
            every_view(in_browser.page, in_browser.desk, pathlib.Path(sys.argv[1]))
    finally:
        in_browser.tearDownModule()


if __name__ == "__main__":
    main()
