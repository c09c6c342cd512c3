"""Commands that are stopped: by the user, by the time limit, at any moment."""
import signal
import time
import unittest

from hvhost_case import Case

# Eight long texts for each record: a job of minutes.
SLOW = " + ".join(['length(replace(padLeft(toString(x.a), 20000, "0"), "0", "ab"))'] * 8)


class Stopping(Case):
    def start(self, *words):
        self.target = self.folder / "target"
        self.target.mkdir(exist_ok=True)
        big = self.folder / "big.csv"
        if not big.exists():
            lines = "".join(f"{number},{number % 97}\n" for number in range(300000))
            big.write_text("a,b\n" + lines, encoding="ascii")
        process = self.start_hvhost("convert", big, self.target / "out.csv", "--derive", f"slow={SLOW}", *words)
        self.wait_until_stoppable(process)
        return process

    def test_ctrl_c_at_several_moments(self):
        """While the machine starts, while the job begins, while it runs."""
        for delay in (0, 0.1, 0.3, 0.6, 1.0, 2.0):
            with self.subTest(delay):
                process = self.start()
                time.sleep(delay)
                self.assertIn("interrupted", self.stop(process))
                self.assertEqual(list(self.target.iterdir()), [])

    def test_end_of_the_session(self):
        for number in (signal.SIGTERM, signal.SIGHUP):
            with self.subTest(number):
                process = self.start()
                time.sleep(1.0)
                self.stop(process, number)
                self.assertEqual(list(self.target.iterdir()), [])

    def test_ctrl_c_while_input_is_awaited(self):
        process = self.start_hvhost("convert", "-", self.folder / "out.csv", stdin=-1)
        self.wait_until(lambda: [path.name[:5] for path in self.temp.iterdir()] == ["vexa-"],
                        "no copy of the standard input is begun")
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(timeout=10), 130)
        process.communicate()

    def test_time_limit(self):
        process = self.start("--timeout", "1")
        started = time.monotonic()
        _, errors = process.communicate(timeout=60)
        self.assertEqual(process.returncode, 124, errors)
        self.assertLess(time.monotonic() - started, 10)
        self.assertIn("--timeout", errors)
        self.assertEqual(list(self.target.iterdir()), [])

        process = self.start_hvhost("convert", "-", self.folder / "out.csv", "--timeout", "0.2", stdin=-1)
        self.assertEqual(process.wait(timeout=10), 124)
        process.communicate()


if __name__ == "__main__":
    unittest.main()
