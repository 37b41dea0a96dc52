"""How fast a change is drawn, and that nothing moves needlessly."""

import os

from desk_test import KEYROW, DeskTest, desk, page


class HowItFeels(DeskTest):
    def test_a_click_is_drawn_at_once(self):
        # What else runs on the machine only adds to it, so the best of some measurements counts.
        measured = []
        while len(measured) < 4 and not (measured and min(measured)[0] < 50):
            times = self.times_of_500_clicks()
            measured.append((times[int(len(times) * 0.95)], times[len(times) // 2]))
        p95, p50 = min(measured)
        load, cores = os.getloadavg()[0], os.cpu_count()
        print(f"from click to drawn change: p50 {p50:.0f} ms, p95 {p95:.0f} ms, over 500 clicks; "
              f"the best of {len(measured)}, with {load:.1f} programs running on {cores} cores")
        if p95 >= 50 and load > 3 * cores:
            self.skipTest("something else keeps this machine too busy for it")
        self.assertLess(p95, 50, "a change is drawn too late")

    def times_of_500_clicks(self):
        return sorted(page.driver.execute_async_script("""
          const done = arguments[0];
          const measure = async () => {
            const times = [];
            for (let count = 0; count < 500; ++count) {
              const item = document.getElementById('status-item');
              const before = item.getAttribute('aria-label');
              const began = performance.now();
              item.click();
              await new Promise((resolve) => {
                const seen = new MutationObserver(() => {
                  if (item.getAttribute('aria-label') === before) return;
                  seen.disconnect();
                  resolve();
                });
                seen.observe(item, {attributes: true});
              });
              // When the frame that shows it has been handed on.
              await new Promise((resolve) => requestAnimationFrame(() => {
                const channel = new MessageChannel();
                channel.port1.onmessage = resolve;
                channel.port2.postMessage(null);
              }));
              times.push(performance.now() - began);
              while (document.documentElement.dataset.idle !== 'yes') await new Promise((r) => setTimeout(r, 1));
            }
            return times;
          };
          measure().then(done)"""))

    def test_what_appears_moves_unless_motion_is_to_be_reduced(self):
        self.addCleanup(page.prefer)
        for motion, names in (("no-preference", ["appear"]), ("reduce", [])):
            page.prefer(reduced_motion=motion)
            page.open(desk.address)
            page.run("window.moved = []; addEventListener('animationstart', (event) => moved.push(event.animationName))")
            page.click_at(KEYROW)
            page.run("window.frameCount = 0; const count = () => ++frameCount < 5 && requestAnimationFrame(count); count()")
            page.until("frameCount === 5")
            self.assertEqual(page.run("return moved"), names, motion)
