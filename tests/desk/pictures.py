#!/usr/bin/env python3
"""Takes pictures of the desk.

    tests/desk/pictures.py FOLDER     every view, in light and dark
    tests/desk/pictures.py --readme   the one in README, docs/desk.png
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent / "browser"))
from desk_browser import ROOT  # noqa: E402
from desk_test import EXTERNAL_KEYS, KEYROW, desk, page  # noqa: E402
from views import VIEWS  # noqa: E402

SCHEMES = ("light", "dark")


def take(path):
    page.rest()
    page.driver.save_screenshot(str(path))
    print(path)


def every_view(folder):
    folder.mkdir(parents=True, exist_ok=True)
    for scheme in SCHEMES:
        page.prefer(color_scheme=scheme, reduced_motion="reduce")
        for name, steps in VIEWS:
            page.open(desk.address)
            for step in steps:
                step()
            take(folder / f"{name}-{scheme}.png")


def readme():
    page.prefer(color_scheme="light", reduced_motion="reduce")
    page.open(desk.address)
    page.click_at("#status-item")
    page.click_at(KEYROW)
    page.click(EXTERNAL_KEYS)
    page.click_at("[data-app='com.apple.Music']")
    page.press("fn")
    page.press("`")
    page.press("fn")
    take(ROOT / "docs/desk.png")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    if sys.argv[1] == "--readme":
        readme()
    else:
        every_view(pathlib.Path(sys.argv[1]))


if __name__ == "__main__":
    main()
