"""The base of every test of hvhost: a folder of its own, and a check of what is left there."""
import csv
import functools
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

HVHOST = os.environ["HVHOST"]
DATA = pathlib.Path(os.environ["HV_TEST_DATA"])
HOME = pathlib.Path(os.environ["HV_TEST_HOME"])


@functools.lru_cache(maxsize=None)
def help_of(*command):
    return subprocess.run([HVHOST, *command, "--help"], capture_output=True, text=True, check=True).stdout


class Case(unittest.TestCase):
    """After every case the temporary folder must be empty."""

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="hvhost_test_"))
        self.temp = self.folder / "temp"
        self.temp.mkdir()

    def tearDown(self):
        self.assertEqual(sorted(path.name for path in self.temp.iterdir()), [], "left behind")
        shutil.rmtree(self.folder)

    def environment(self, **changes):
        environment = dict(os.environ, TMPDIR=str(self.temp), LC_ALL="C.UTF-8")
        environment.update(changes)
        return environment

    def run_hvhost(self, *words, status=0, text=None, **more):
        environment = self.environment(**more.pop("environment", {}))
        done = subprocess.run([HVHOST, *map(str, words)], capture_output=True, text=True,
                              input=text,
                              env=environment, timeout=120, check=False, **more)
        self.assertEqual(done.returncode, status, f"{words}\n{done.stdout}\n{done.stderr}")
        # A fault is told in the one form that there is, and results alone go to standard output.
        if status not in (0, 5):
            self.assertRegex(done.stderr, r"(?m)^hvhost: error: \S")
            self.assertNotIn("hvhost: error", done.stdout)
            self.check_hint([str(word) for word in words], done.stderr)
        return done

    def check_hint(self, words, errors):
        """A hint names only options of the command at hand, or of one that it names itself."""
        hint = errors.partition("\n  hint: ")[2].partition("\n")[0].replace("hvhost --help", "")
        for part in hint.split("; "):
            for option in re.finditer(r"(?<!\S)--[a-z-]+", part):
                named = re.search(r"hvhost (?!help )((?:map |tcm )?[a-z]+)", part[:option.start()])
                command = named[1].split() if named else words[:2 if words[0] in ("map", "tcm") else 1]
                self.assertRegex(help_of(*command), rf"[ ,]{option[0]}[ ,\n]", hint)

    def start_hvhost(self, *words, **more):
        return subprocess.Popen([HVHOST, *map(str, words)], env=self.environment(), text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, **more)

    def wait_until(self, condition, what):
        end = time.monotonic() + 60
        while not condition():
            self.assertLess(time.monotonic(), end, what)
            time.sleep(0.01)

    def wait_until_stoppable(self, process):
        """A program that has only just begun to load dies of a signal as any other does."""
        def is_blocked():
            status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
            blocked = int(status.split("SigBlk:")[1].split()[0], 16)
            return blocked >> (signal.SIGINT - 1) & 1

        self.wait_until(is_blocked, "the program does not look after its signals")

    def stop(self, process, *signals, status=130):
        for number in signals or (signal.SIGINT,):
            process.send_signal(number)
        # Standard input stays open until the end: to close it is another way to end the program.
        process.wait(timeout=60)
        _, errors = process.communicate()
        self.assertEqual(process.returncode, status, errors)
        return errors

    def write(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def rows(self, path):
        with open(path, newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file))
