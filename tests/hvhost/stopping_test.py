"""Commands that are stopped: by the user, by the time limit, at any moment."""
import os
import signal
import time
import unittest

from hvhost_case import Case

# A job of a minute, in small steps: the database looks for a stop once in some thousand records.
SLOW = " + ".join(['length(replace(padLeft(toString(x.a), 4000, "0"), "0", "ab"))'] * 8)
RECORDS = 900000
# The program takes two signals as two only if so much time lies between them.
APART = 0.5


class Stopping(Case):
    def setUp(self):
        super().setUp()
        self.target = self.folder / "target"
        self.target.mkdir()
        self.big = self.write("big.csv", "a,b\n" + "".join(f"{i},{i % 97}\n" for i in range(RECORDS)))

    def tearDown(self):
        self.assertEqual(list(self.target.iterdir()), [], "an output is there")
        super().tearDown()

    def start(self, *words):
        process = self.start_hvhost("convert", self.big, self.target / "out.csv", "--derive",
                                    f"slow={SLOW}", *words)
        self.wait_until_stoppable(process)
        return process

    def test_ctrl_c_at_several_moments(self):
        """While the machine starts, while the job begins, while it runs."""
        for delay in (0, 0.1, 0.3, 0.6, 1.0, 2.0):
            with self.subTest(delay):
                process = self.start()
                time.sleep(delay)
                self.assertIn("interrupted", self.stop(process))

    def test_other_signals(self):
        """The end of the session; one Ctrl-C that a program in between passes on once more."""
        for numbers in ((signal.SIGTERM,), (signal.SIGHUP,), (signal.SIGINT, signal.SIGINT)):
            with self.subTest(numbers):
                process = self.start()
                time.sleep(1.0)
                self.assertIn("interrupted", self.stop(process, *numbers))

    def test_a_second_ctrl_c_leaves_at_once(self):
        """Nothing heeds the first one here: the log is a pipe that nobody reads."""
        log = self.folder / "log"
        os.mkfifo(log)
        process = self.start_hvhost("convert", "-", self.target / "out.csv", "--log", log, stdin=-1)
        process.stdin.write("a\n1\n")
        process.stdin.close()
        self.wait_until(lambda: any(path.stat().st_size == 4 for path in self.temp.glob("vexa-*/*")),
                        "the standard input is not copied")
        process.send_signal(signal.SIGINT)
        time.sleep(APART)
        self.assertIsNone(process.poll())
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(timeout=60), 130)
        process.stdout.close()
        process.stderr.close()

    def test_ctrl_c_while_input_is_awaited(self):
        process = self.start_hvhost("convert", "-", self.target / "out.csv", stdin=-1)
        self.wait_until(lambda: [path.name[:5] for path in self.temp.iterdir()] == ["vexa-"],
                        "no copy of the standard input is begun")
        self.assertIn("interrupted", self.stop(process))

    def test_time_limit(self):
        for words in ([self.big, "--derive", f"slow={SLOW}", "--timeout", "1"], ["-", "--timeout", "0.2"]):
            process = self.start_hvhost("convert", words[0], self.target / "out.csv", *words[1:], stdin=-1)
            process.wait(timeout=60)
            errors = process.communicate()[1]
            self.assertEqual(process.returncode, 124, errors)
            self.assertIn("--timeout", errors)


if __name__ == "__main__":
    unittest.main()
