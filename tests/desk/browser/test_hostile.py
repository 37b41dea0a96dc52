"""Who wants more of the desk than it gives."""

import signal
import socket
import subprocess

from desk_browser import PATIENCE, PROGRAM, Desk
from desk_test import DeskTest, desk, page, status_of


class Hostile(DeskTest):
    def test_another_host_or_origin_is_refused(self):
        self.assertEqual(status_of("GET", "/"), 200)
        self.assertEqual(status_of("GET", "/", Host=f"evil.example:{desk.port}"), 403)
        self.assertEqual(status_of("POST", "/stages", Origin="https://evil.example"), 403)
        self.assertEqual(status_of("POST", "/stages", Origin="null"), 403)

    def test_a_foreign_page_gets_nothing(self):
        page.driver.get("about:blank")
        answer = page.driver.execute_async_script("""
          const [address, done] = arguments;
          fetch(address + 'stages', {method: 'POST', body: '{}', mode: 'no-cors'})
            .then((one) => done(one.type + ' ' + one.status), (error) => done('refused'))""", desk.address)
        self.assertIn(answer, ("refused", "opaque 0"))
        page.messages()

    def test_no_path_names_a_file(self):
        for path in ("/../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/etc/passwd", "/desk.js/../../README.md", "/\\..\\x"):
            self.assertEqual(status_of("GET", path), 404, path)

    def test_bodies_that_are_none(self):
        path = "/stages/" + "0" * 32 + "/play"
        for body in ("", "{", "null", '{"kept":"1","lines":[]}', "[" * 5000):
            self.assertEqual(status_of("POST", path, body), 400, body[:20])
        self.assertEqual(status_of("POST", path, '{"kept":0,"lines":[]}'), 404)

    def test_it_listens_to_this_machine_only(self):
        with socket.socket() as one:
            try:
                one.connect(("8.8.8.8", 53))
                own = one.getsockname()[0]
            except OSError:
                self.skipTest("this machine has no other address")
        with socket.socket() as other:
            self.assertNotEqual(other.connect_ex((own, desk.port)), 0)

    def test_a_taken_port_is_an_error_and_ctrl_c_ends(self):
        refused = subprocess.run([PROGRAM, "--port", str(desk.port)], capture_output=True, text=True, timeout=PATIENCE)
        self.assertEqual(refused.returncode, 2)
        self.assertIn("is taken", refused.stderr)
        other = Desk()
        other.process.send_signal(signal.SIGINT)
        self.assertNotEqual(other.process.wait(PATIENCE), None)
        other.process.stdout.close()
        again = Desk(port=other.port)
        self.assertIn(again.address, again.greeting)
        again.end()
