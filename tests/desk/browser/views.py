"""Every view of the desk, and what leads there."""

from desk_test import KEYROW, SYSTEM_SETTINGS, page


def view(name, *steps):
    return name, steps


VIEWS = [
    view("desk"),
    view("menu", lambda: page.open_menu()),
    view("general", lambda: page.click_at(KEYROW), lambda: page.click("Help about the permissions")),
    view("about", lambda: page.click_at(KEYROW), lambda: page.click("About", ".tabs")),
    view("system-settings", lambda: page.click_at(SYSTEM_SETTINGS)),
    view("mail", lambda: page.click_at(KEYROW), lambda: page.click("About", ".tabs"), lambda: page.click("Report a Bug")),
    view("alert", lambda: page.type_line("quit keyrow"), lambda: page.type_line("fail create-event-tap always"), lambda: page.type_line("launch keyrow"), lambda: page.type_line("wait 1min")),
    view("question", lambda: page.type_line("reset input-monitoring"), lambda: page.type_line("quit keyrow"), lambda: page.type_line("launch keyrow")),
    view("notification", lambda: page.type_line("update found 9.9"), lambda: page.type_line("wait 1s")),
    view("drawer", lambda: page.open_drawer(), lambda: page.click("An update is found")),
    view("applications", lambda: page.click("Install and throw away applications")),
    view("asleep", lambda: page.click("Close the lid")),
    view("keyboards", lambda: [page.choose(".attach", name) for name in ("apple", "keypad")]),
    view("refused", lambda: page.type_line("flip the table")),
    view("expectation", lambda: page.click_at("#status-item"), lambda: page.click("Expect hardware special -> standard"), lambda: page.type_line("expect hardware special")),
]
