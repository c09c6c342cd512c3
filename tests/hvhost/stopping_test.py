"""Commands that are stopped: by the user, by the time limit, at any moment."""
import json
import os
import pathlib
import signal
import socket
import tempfile
import time
import unittest

from hvhost_case import Case

# A job of a minute, in small steps: the database looks for a stop once in some thousand records.
SLOW = " + ".join(['length(replace(padLeft(toString(x.a), 4000, "0"), "0", "ab"))'] * 8)
RECORDS = 900000
# The program takes two signals as two only if so much time lies between them.
APART = 0.5


class StoppingMaps(Case):
    def test_a_service_that_does_not_answer_can_be_left(self):
        out = self.folder / "out.geojson"
        for command, *options in (["info"], ["info", "--layer", 0], ["convert", "--layer", 0, out]):
            with socket.create_server(("127.0.0.1", 0)) as server:
                address = f"http://127.0.0.1:{server.getsockname()[1]}/FeatureServer"
                words = list(map(str, [command, address, *options]))
                process = self.start_hvhost("map", *words)
                server.settimeout(60)
                with server.accept()[0]:
                    time.sleep(0.3)
                    begin = time.monotonic()
                    self.assertIn("interrupted", self.stop(process))
                    self.assertLess(time.monotonic() - begin, 1.5, words)
                self.run_hvhost("map", *words, "--timeout", 0.5, status=124)
        self.assertFalse(out.exists())


class StoppingBlockedOutput(Case):
    """Nobody reads what the program prints, so that it waits in the middle of it."""

    def stop_blocked(self, *words, done=None):
        """`done` is the file that the program has written if it is in time."""
        process = self.start_hvhost(*words)
        self.wait_until_stoppable(process)
        time.sleep(1.5)
        self.assertIsNone(process.poll(), words)
        begin = time.monotonic()
        self.stop(process, status=0 if done and done.exists() else 130)
        self.assertLess(time.monotonic() - begin, 2)

    def test_results_and_messages(self):
        fields = [f"a long name of the field {i}" for i in range(5000)]
        wide = self.write("wide.csv", ",".join(fields) + "\n" + ",".join("1" for _ in fields) + "\n")
        self.stop_blocked("info", wide)
        # Every series is the same, so that the training warns about each. The model usually exists by then.
        same = self.write("same.csv", ",".join(fields[:400]) + "\n" +
                          "".join(",".join([str(row * row % 17)] * 400) + "\n" for row in range(100)))
        self.stop_blocked("tcm", "train", same, "-o", self.folder / "same.tcm", "--case-count", "--metrics",
                          ",".join(fields[:400]), "-v", done=self.folder / "same.tcm")


class WithTarget(Case):
    """Cases with one large input for all and a folder of its own for the output of each."""

    @classmethod
    def setUpClass(cls):
        cls.inputs = tempfile.TemporaryDirectory(prefix="hvhost_test_")
        cls.addClassCleanup(cls.inputs.cleanup)
        cls.input = pathlib.Path(cls.inputs.name) / "input"
        cls.input.write_text(cls.content(), encoding="ascii")

    def setUp(self):
        super().setUp()
        self.target = self.folder / "target"
        self.target.mkdir()


class Stopping(WithTarget):
    @staticmethod
    def content():
        return "a,b\n" + "".join(f"{i},{i % 97}\n" for i in range(RECORDS))

    def tearDown(self):
        self.assertEqual(list(self.target.iterdir()), [], "an output is there")
        super().tearDown()

    def start(self, *words):
        process = self.start_hvhost("convert", self.input, self.target / "out.csv", "--from", "csv", "--derive",
                                    f"slow={SLOW}", *words)
        self.wait_until_stoppable(process)
        return process

    def test_ctrl_c_at_several_moments(self):
        """While the machine starts, while the job begins, while it runs."""
        for delay in (0, 0.2, 0.6, 1.5):
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
        """The log is a pipe that nobody reads. A command that waits for it does not heed the first one."""
        log = self.folder / "log"
        os.mkfifo(log)
        process = self.start_hvhost("convert", "-", self.target / "out.csv", "--log", log, stdin=-1)
        process.stdin.write("a\n1\n")
        process.stdin.close()
        self.wait_until(lambda: any(path.stat().st_size == 4 for path in self.temp.glob("vexa-*/*")),
                        "the standard input is not copied")
        process.send_signal(signal.SIGINT)
        time.sleep(APART)
        # The first one may come before the command waits.
        if process.poll() is None:
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
        """In a job; while nothing comes; while more comes than can ever be read."""
        for words in ([self.input, "--from", "csv", "--derive", f"slow={SLOW}", "--timeout", "1"], ["-", "--timeout", "0.2"],
                      ["/dev/zero", "--from", "csv", "--timeout", "0.05"]):
            process = self.start_hvhost("convert", words[0], self.target / "out.csv", *words[1:], stdin=-1)
            process.wait(timeout=60)
            errors = process.communicate()[1]
            self.assertEqual(process.returncode, 124, errors)
            self.assertIn("--timeout", errors)


class StoppingOutput(WithTarget):
    """A table of some million cells, which takes seconds to read, to build and to write."""

    SIZE = 2000
    # A stop is heeded within a second; a busy machine may need more.
    PATIENCE = 3

    @classmethod
    def content(cls):
        return cls.document(cls.SIZE)

    @classmethod
    def document(cls, size):
        def dimension(name, role):
            return {"text": cls.text(name), "role": role,
                    "children": [{"text": cls.text(f"{name} {number}")} for number in range(size)]}

        return json.dumps({"r": {"t": {
            "tableId": "t", "title": {}, "dimensions": [dimension("x", "row"), dimension("y", "column")],
            "cells": [{"cells": {"compactCells": {"value": [0.5] * size ** 2}}}]}}})

    @staticmethod
    def text(words):
        return {"text": {"stringText": {"value": words}}}

    def start(self, form, output, *words, document=None):
        process = self.start_hvhost("render", document or self.input, "--format", form, "-o", output,
                                    *words)
        self.wait_until_stoppable(process)
        return process

    def test_ctrl_c_at_several_moments(self):
        """While the document is parsed, while the table is built, while it is written."""
        for form, delays in (("html", (0, 0.4, 1, 1.8, 3)), ("text", (2,))):
            for delay in delays:
                with self.subTest(form=form, delay=delay):
                    process = self.start(form, self.target / "out")
                    time.sleep(delay)
                    self.assertIsNone(process.poll())
                    begin = time.monotonic()
                    self.assertIn("hvhost: error: interrupted\n", self.stop(process))
                    self.assertLess(time.monotonic() - begin, self.PATIENCE)
                    self.assertEqual(list(self.target.iterdir()), [])
                    self.assertEqual(list(self.temp.iterdir()), [])

    def test_time_limit(self):
        for form, limit in (("html", 0.1), ("text", 2)):
            with self.subTest(form=form, limit=limit):
                begin = time.monotonic()
                process = self.start(form, self.target / "out", "--timeout", str(limit))
                errors = process.communicate(timeout=60)[1]
                self.assertLess(time.monotonic() - begin, limit + self.PATIENCE)
                self.assertEqual(process.returncode, 124, errors)
                self.assertIn("hint: --timeout SECONDS sets a longer limit", errors)
                self.assertEqual(list(self.target.iterdir()), [])

    def test_ctrl_c_while_output_is_printed(self):
        """The reader takes a part of the page and no more."""
        process = self.start("html", "-", document=self.write("small.json", self.document(300)))
        self.assertTrue(process.stdout.read(100000).startswith("<!DOCTYPE html>"))
        self.assertIn("interrupted", self.stop(process))


if __name__ == "__main__":
    unittest.main()
