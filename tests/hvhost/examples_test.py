"""The commands in the README and in the help run as they are written, and show what they showed.

CHANGED_OUTPUT=1 replaces the stored output. Read the difference before it is committed.
"""
import math
import os
import pathlib
import re
import shutil
import subprocess
import unittest

from hvhost_case import DATA, HVHOST, Case, help_of

SHOWN = pathlib.Path(__file__).resolve().parent / "shown"
README = pathlib.Path(__file__).resolve().parent.parent.parent / "README.md"
TCM = ("tcm train shops.csv -o shops.tcm --time month --dims region --metrics sales,advertising,visits").split()

# Commands that show more of what hvhost can do than the examples in the help.
MORE = [
    "hvhost describe penguins.csv beak_length_mm sex --by species --percentiles 5,95 --outliers --pairs",
    "hvhost describe penguins.csv --missing-patterns --outliers --outlier-method sd --format json",
    "hvhost describe weather.csv temp_max wind weather --weight precipitation --pairs --target weather",
    "hvhost describe weather.csv date --date date --format json",
    "hvhost describe shops.csv --by region --format csv",
    "hvhost aggregate penguins.csv --by island,sex --stat count,mean:body_mass_g,median:flipper_length_mm --totals",
    "hvhost map info islands.shp --data-model",
    "hvhost tcm impact shops.tcm shops.csv --series north,sales --level 2 --format json",
]
NUMBER = re.compile(r"-?\d+(?:\.\d+)?(?:e[-+]?\d+)?")


def is_same(text, other):
    """Whether two outputs are the same but for the last digits of numbers."""
    if NUMBER.sub("", text) != NUMBER.sub("", other):
        return False
    return all(math.isclose(float(a), float(b), rel_tol=1e-9, abs_tol=1e-12)
               for a, b in zip(NUMBER.findall(text), NUMBER.findall(other)))


def commands_in(text, prompt):
    """The commands of a text, each with the lines that follow it up to the next command."""
    joined = re.sub(r" \\\n +", " ", text)
    parts = re.split(rf"(?m)^{re.escape(prompt)}(?=hvhost )", joined)[1:]
    return [part.split("\n", 1) for part in parts]


class Examples(Case):
    def setUp(self):
        super().setUp()
        self.work = self.folder / "work"
        shutil.copytree(DATA, self.work)
        (self.work / "umsatz.csv").write_bytes("Straße;Umsatz\nAhornweg;1.234,5\n".encode("windows-1252"))
        (self.work / "survey.txt").write_text("age,day\n31,01.02.2024\nNA,02.02.2024\n-99,03.02.2024\n", encoding="utf-8")
        programs = self.folder / "programs"
        programs.mkdir()
        (programs / "hvhost").symlink_to(HVHOST)
        self.shell = self.environment(PATH=f"{programs}:/usr/bin:/bin")

    def run_line(self, command):
        return subprocess.run(["bash", "-c", command], cwd=self.work, env=self.shell, text=True, timeout=120,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)

    def test_readme(self):
        text = README.read_text(encoding="utf-8")
        blocks = re.findall(r"(?ms)^```\n(\$ hvhost .*?)^```$", text)
        shown = [command for block in blocks for command in commands_in(block, "$ ")]
        self.assertGreater(len(shown), 6)
        for command, output in shown:
            done = self.run_line(command)
            self.assertEqual(done.stdout.strip(), output.strip(), command)
        # Those on a cluster need one.
        plain = [command for command, _ in commands_in(text, "    ") if "--engine" not in command]
        self.assertGreater(len(plain), 9)
        for command in plain:
            done = self.run_line(command)
            self.assertEqual(done.returncode, 0, f"{command}\n{done.stdout}")

    def check_shown(self, command, output):
        """What a command shows and the texts that it writes."""
        texts = [output] + [(self.work / name).read_text(encoding="utf-8") for name in command.split()
                            if name in ("out.csv", "o.csv", "some.csv", "keys.txt", "males.csv", "islands.geojson")]
        shown = "".join(texts)
        path = SHOWN / (re.sub(r"\W+", "-", command).strip("-") + ".txt")
        if os.environ.get("CHANGED_OUTPUT"):
            path.write_text(f"$ {command}\n{shown}", encoding="utf-8")
        expected = path.read_text(encoding="utf-8").split("\n", 1)[1]
        if not is_same(shown, expected):
            self.assertEqual(shown, expected, command)

    def test_more(self):
        self.run_hvhost(*TCM, cwd=self.work)
        for command in MORE:
            done = self.run_line(command)
            self.assertEqual(done.returncode, 0, f"{command}\n{done.stdout}")
            self.check_shown(command, done.stdout)

    def test_help(self):
        commands = [[name] for name in re.findall(r"(?m)^  ([a-z]+) ", help_of().partition("Commands:")[2])
                    if name not in ("completion", "version", "help")]
        for group in ("map", "tcm"):
            commands.remove([group])
            commands += [[group, name] for name in
                         re.findall(r"(?m)^  ([a-z]+) ", help_of(group).partition("Commands:")[2])]
        for command in commands:
            self.assertLessEqual(max(map(len, help_of(*command).splitlines())), 84, command)
            examples = help_of(*command).partition("Examples")[2].partition("\n\n")[0]
            lines = [line.strip() for line, _ in commands_in(examples + "\n", "  ")]
            self.assertTrue(lines, command)
            if command[0] == "tcm" and command[1] != "train":
                self.run_hvhost(*TCM, "--force", cwd=self.work)
            for line in lines:
                (self.work / "out.csv").unlink(missing_ok=True)
                done = self.run_line(line)
                self.assertEqual(done.returncode, 0, f"{line}\n{done.stdout}")
                if command != ["doctor"]:
                    self.check_shown(line, done.stdout)


if __name__ == "__main__":
    unittest.main()
