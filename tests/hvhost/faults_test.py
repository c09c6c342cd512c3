"""What goes wrong, and what hvhost says then: no trace of a half-written output, one clear error."""
import os
import resource
import signal
import subprocess
import unittest

from hvhost_case import DATA, HVHOST, Case


class Faults(Case):
    def test_inputs_that_cannot_be_read(self):
        sav = self.folder / "whole.sav"
        self.run_hvhost("convert", DATA / "penguins.csv", sav)
        inputs = {
            "missing.csv": None,
            "empty.csv": b"",
            "truncated.sav": sav.read_bytes()[:200],
            "text.hvbf": b"no such thing\n" * 100,
        }
        (self.folder / "folder.csv").mkdir()
        for name, content in [*inputs.items(), ("folder.csv", None)]:
            with self.subTest(name):
                if content is not None:
                    self.write(name, content)
                out = self.folder / "out.csv"
                done = self.run_hvhost("convert", self.folder / name, out, status=3)
                self.assertIn(name, done.stderr)
                self.assertFalse(out.exists())

    def test_inputs_that_may_not_be_read(self):
        nobody = {"user": 65534} if os.geteuid() == 0 else {}
        self.folder.chmod(0o755)
        self.temp.chmod(0o777)
        try:
            subprocess.run([HVHOST, "version"], capture_output=True, check=True, **nobody)
        except (OSError, subprocess.CalledProcessError):
            self.skipTest("another user may not run hvhost here")
        locked = self.write("locked.csv", "a\n1\n")
        locked.chmod(0)
        done = self.run_hvhost("convert", locked, "-", status=3, **nobody)
        self.assertIn("locked.csv: the file may not be read", done.stderr)

    def test_standard_input_without_data(self):
        self.assertIn("standard input is empty", self.run_hvhost("convert", "-", "-", text="", status=3).stderr)

    def test_outputs_that_cannot_be_written(self):
        existing = self.write("existing.csv", "keep me\n")
        done = self.run_hvhost("convert", DATA / "weather.csv", existing, status=2)
        self.assertIn("--force", done.stderr)
        self.assertEqual(existing.read_text(), "keep me\n")
        done = self.run_hvhost("convert", DATA / "weather.csv", self.folder / "none" / "out.csv", status=1)
        self.assertIn("none", done.stderr)

    def test_a_reader_that_goes_away(self):
        process = self.start_hvhost("convert", DATA / "weather.csv", "-")
        process.stdout.close()
        self.assertEqual(process.wait(timeout=60), 1)
        self.assertIn("standard output cannot be written", process.stderr.read())
        process.stderr.close()

    def test_a_full_disk_leaves_nothing(self):
        target = self.folder / "target"
        target.mkdir()

        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))

        done = self.run_hvhost("convert", DATA / "weather.csv", target / "out.csv", status=1,
                               preexec_fn=limit)
        self.assertIn("out.csv", done.stderr)
        self.assertEqual(list(target.iterdir()), [])

    def test_fields_and_functions_that_are_not_there(self):
        for words, expected in [(["--where", "x.temp_mx > 1"], "temp_max"),
                                (["--derive", "a=flor(x.wind)"], "floor"),
                                (["--keep", "date,nothing"], "nothing"),
                                (["--derive", "wind=1"], "wind")]:
            with self.subTest(words):
                done = self.run_hvhost("convert", DATA / "weather.csv", self.folder / "o.csv", *words,
                                       status=1)
                self.assertIn(expected, done.stderr)

    def test_usage(self):
        for words, expected in [(["convrt"], "did you mean convert?"),
                                ([], "hvhost --help"),
                                (["convert", "a.csv"], "hvhost help convert"),
                                (["convert", DATA / "weather.csv", "o.csv", "--wher", "1"], "--wher"),
                                (["convert", DATA / "weather.csv", "o.csv", "--limit", "-1"], "--limit"),
                                (["convert", DATA / "weather.csv", "o.csv", "--derive", "a==1"], "NAME="),
                                (["convert", DATA / "weather.csv", "o.csv", "--out-password", "x"],
                                 "only a sav file"),
                                (["convert", DATA / "weather.csv", "o.csv", "--log", "/none/log"], "/none/log"),
                                (["convert", DATA / "weather.csv", "o.csv", "--trace=/proc/none"],
                                 "/proc/none"),
                                (["run", DATA / "spread.hvl", "--data", "weather"], "--data weather"),
                                (["convert", DATA / "weather.csv", "out.xyz"], "--to"),
                                (["aggregate", DATA / "weather.csv", "--stat", "mean"], "--stat mean")]:
            with self.subTest(words):
                self.assertIn(expected, self.run_hvhost(*words, status=2).stderr)

    def test_no_machine_and_no_jar(self):
        words = ["convert", DATA / "weather.csv", self.folder / "out.csv"]
        broken = self.folder / "home"
        jar = broken / "hv" / "af" / "components" / "hvengine.jar"
        done = self.run_hvhost(*words, status=4, environment={"VEXA_HOME": str(broken)})
        self.assertIn("hvengine.jar", done.stderr)
        jar.parent.mkdir(parents=True)
        jar.write_bytes(b"no jar")
        done = self.run_hvhost(*words, status=4, environment={"VEXA_HOME": str(broken)})
        self.assertIn("hvengine.jar", done.stderr)
        self.run_hvhost("doctor", status=4, environment={"VEXA_HOME": str(broken)})

    def test_no_machine(self):
        """Java hidden behind an empty folder, in a view of the file system of its own."""
        hide = ["unshare", "--mount", "--map-root-user", "sh", "-c",
                'mount -t tmpfs none /usr/lib/jvm && exec "$@"', "sh"]
        if subprocess.run([*hide, "true"], capture_output=True, check=False).returncode != 0:
            self.skipTest("no right to hide /usr/lib/jvm")
        words = ["env", "JAVA_HOME=", "PATH=/none", HVHOST, "convert", DATA / "weather.csv"]
        done = subprocess.run([*hide, *words, self.folder / "out.csv"], capture_output=True, text=True,
                              env=self.environment(), check=False)
        self.assertEqual(done.returncode, 4, done.stderr)
        self.assertIn("/usr/lib/jvm/default-java", done.stderr)
        self.assertIn("hint: ", done.stderr)

    def test_faults_of_the_text(self):
        """Each names the thing; a fault of syntax says where it is."""
        cases = [
            ('val a = {"x": }', r"job\.hvl:1:15: "),
            ('reed({"dataSource": "a"})', "reed"),
            ('read({"dataSource": 5})', "dataSource"),
            ('read({"dataSource": "nobody"}) -> write({"dataSource": "b", "mode": "overwrite"})', "nobody"),
            ('val a = b -> filterFields({"fields": ["x"]})\nval b = a -> filterFields({"fields": ["x"]})\n'
             'a -> write({"dataSource": "c", "mode": "overwrite"})', "a"),
        ]
        for text, expected in cases:
            with self.subTest(text):
                done = self.run_hvhost("run", self.write("job.hvl", text), status=1)
                self.assertRegex(done.stderr, r"^hvhost: error: .*job\.hvl")
                self.assertRegex(done.stderr, expected)


if __name__ == "__main__":
    unittest.main()
