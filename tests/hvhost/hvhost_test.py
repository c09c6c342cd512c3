"""hvhost as a person runs it: files in, files, messages and exit statuses out.

After every case the temporary folder must be as it was, and no output may be there under its final
name unless the command succeeded.
"""
import csv
import json
import os
import pathlib
import resource
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

HVHOST = os.environ["HVHOST"]
DATA = pathlib.Path(os.environ["HV_TEST_DATA"])
HOME = pathlib.Path(os.environ["HV_TEST_HOME"])


class Case(unittest.TestCase):
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
        done = subprocess.run([HVHOST, *map(str, words)], capture_output=True, text=True, input=text,
                              env=environment, timeout=120, check=False, **more)
        self.assertEqual(done.returncode, status, f"{words}\n{done.stdout}\n{done.stderr}")
        return done

    def write(self, name, content):
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def rows(self, path):
        with open(path, newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file))


class Convert(Case):
    def test_every_kind_gives_the_same_records(self):
        """csv to each form and back: values, missing ones and dates survive."""
        people = self.write("people.csv", "name,born,height,visits\n"
                                          "Ada,1815-12-10,1.65,3\n"
                                          '"Émile, père",1840-04-02,,12\n'
                                          ",1912-06-23,1.78,\n")
        expected = self.rows(people)
        for kind in ("csv", "sav", "hvbf", "parquet"):
            with self.subTest(kind):
                middle = self.folder / f"people_2.{kind}"
                back = self.folder / f"{kind}.csv"
                self.run_hvhost("convert", people, middle)
                self.run_hvhost("convert", middle, back)
                self.assertEqual(self.rows(back), expected)

    def test_derive_where_keep_and_limit(self):
        out = self.folder / "out.csv"
        self.run_hvhost("convert", DATA / "weather.csv", out, "--limit", 10,
                        "--derive", "spread=x.temp_max - x.temp_min",
                        "--where", "x.weather == \"sun\" && x.spread % 2 != 1", "--keep", "spread,date")
        rows = self.rows(out)
        self.assertEqual(list(rows[0]), ["spread", "date"])
        self.assertEqual([row["date"] for row in rows], ["2012-01-08"])
        self.assertAlmostEqual(float(rows[0]["spread"]), 7.2)

    def test_standard_streams(self):
        done = self.run_hvhost("convert", "-", "-", text="a,b\n1,x\n2,y\n")
        self.assertEqual(done.stdout, "a,b\n1,x\n2,y\n")
        self.assertEqual(done.stderr, "")

    def test_passwords(self):
        sealed = self.folder / "sealed.sav"
        out = self.folder / "out.csv"
        self.run_hvhost("convert", DATA / "penguins.csv", sealed, "--out-password", "krill")
        self.assertNotIn(b"Adelie", sealed.read_bytes())
        for words in ([], ["--password", "squid"]):
            done = self.run_hvhost("convert", sealed, out, *words, status=3)
            self.assertIn("password", done.stderr)
            self.assertIn("sealed.sav", done.stderr)
        self.assertFalse(out.exists())
        self.run_hvhost("convert", sealed, out, "--password-file", self.write("word", "krill\n"))
        self.assertEqual(len(self.rows(out)), 344)

    def test_bad_records_are_skipped_only_when_allowed(self):
        broken = self.write("broken.csv", "a,b\n1,2\n3\n4,5\n")
        out = self.folder / "out.csv"
        done = self.run_hvhost("convert", broken, out, status=3)
        self.assertRegex(done.stderr, r"broken\.csv:3")
        self.assertFalse(out.exists())
        done = self.run_hvhost("convert", broken, out, "--max-errors", 1)
        self.assertIn("hvhost: warning:", done.stderr)
        self.assertEqual(self.rows(out), [{"a": "1", "b": "2"}, {"a": "4", "b": "5"}])
        self.run_hvhost("convert", broken, out, "--force", "--max-errors", -1, "--strict", status=5)


class Aggregate(Case):
    def test_result_in_each_format(self):
        words = ["aggregate", DATA / "penguins.csv", "--by", "species",
                 "--stat", "count,mean:body_mass_g:mass,p50:body_mass_g,median:body_mass_g:median"]
        rows = json.loads(self.run_hvhost(*words, "--format", "json").stdout)
        self.assertEqual(rows["schema"], 1)
        self.assertEqual([row["species"] for row in rows["rows"]], ["Adelie", "Chinstrap", "Gentoo"])
        self.assertEqual([row["count"] for row in rows["rows"]], [152, 68, 124])
        for row in rows["rows"]:
            self.assertEqual(row["p50_body_mass_g"], row["median"])
        with open(DATA / "penguins.csv", newline="", encoding="utf-8") as file:
            masses = [float(row["body_mass_g"]) for row in csv.DictReader(file)
                      if row["species"] == "Gentoo" and row["body_mass_g"]]
        self.assertAlmostEqual(rows["rows"][2]["mass"], sum(masses) / len(masses))
        self.assertTrue(self.run_hvhost(*words, "--format", "csv").stdout.startswith("species,count,mass"))
        self.assertIn("│ Gentoo", self.run_hvhost(*words).stdout)

    def test_into_a_file(self):
        out = self.folder / "out.csv"
        self.run_hvhost("aggregate", DATA / "weather.csv", out, "--stat", "min:date,max:date")
        self.assertEqual(list(self.rows(out)[0].values()), ["2012-01-01", "2015-12-31"])


class Run(Case):
    def test_job_with_named_data(self):
        out = self.folder / "out.csv"
        job = self.write("job.hvl", 'val old = ctx => x => x.age >= 40\n'
                         'read({"dataSource": "people"}) -> filterRecords(_, old)\n'
                         f'  -> write({{"dataDestination": "file:///{out}", "dataModelDestination": "",'
                         ' "type": "text/csv"})\n')
        people = self.write("people.csv", "name,age\nAda,36\nEmil,62\n")
        self.run_hvhost("run", job, "--data", f"people={people}")
        self.assertEqual(self.rows(out), [{"name": "Emil", "age": "62"}])

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

    def test_outputs_that_cannot_be_written(self):
        existing = self.write("existing.csv", "keep me\n")
        done = self.run_hvhost("convert", DATA / "weather.csv", existing, status=2)
        self.assertIn("--force", done.stderr)
        self.assertEqual(existing.read_text(), "keep me\n")
        done = self.run_hvhost("convert", DATA / "weather.csv", self.folder / "none" / "out.csv", status=1)
        self.assertIn("none", done.stderr)

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
                                (["convert", "a.csv"], "hvhost help convert"),
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


class Stopping(Case):
    """A job that takes minutes: every record is compared with every other one's place in a text."""

    def start(self, *words):
        self.big = self.folder / "big.csv"
        with open(self.big, "w", encoding="ascii") as file:
            file.write("a,b\n")
            for number in range(300000):
                file.write(f"{number},{number % 97}\n")
        slow = "slow=" + " + ".join(["length(replace(padLeft(toString(x.a), 20000, \"0\"), \"0\", \"ab\"))"] * 8)
        self.target = self.folder / "target"
        self.target.mkdir()
        return subprocess.Popen([HVHOST, "convert", str(self.big), str(self.target / "out.csv"),
                                 "--derive", slow, *words], env=self.environment(),
                                stderr=subprocess.PIPE, text=True)

    def test_ctrl_c_at_several_moments(self):
        for delay in (0.05, 0.3, 1.0, 2.0):
            with self.subTest(delay):
                process = self.start()
                time.sleep(delay)
                process.send_signal(signal.SIGINT)
                _, errors = process.communicate(timeout=60)
                self.assertIn(process.returncode, (130, -signal.SIGINT), errors)
                self.assertEqual(list(self.target.iterdir()), [])
                shutil.rmtree(self.target)

    def test_timeout(self):
        process = self.start("--timeout", "1")
        _, errors = process.communicate(timeout=60)
        self.assertEqual(process.returncode, 124, errors)
        self.assertEqual(list(self.target.iterdir()), [])


class Rest(Case):
    def test_doctor_version_help_and_completion(self):
        findings = json.loads(self.run_hvhost("doctor", "--format", "json").stdout)["findings"]
        self.assertEqual([finding["problem"] for finding in findings if finding["needed"]],
                         [""] * sum(finding["needed"] for finding in findings))
        self.assertRegex(self.run_hvhost("version").stdout, r"^hvhost \d+\.\d+\.\d+\n$")
        self.assertIn("Exit status:", self.run_hvhost("help", "convert").stdout)
        for shell in ("bash", "zsh", "fish"):
            self.assertIn("aggregate", self.run_hvhost("completion", shell).stdout)

    def test_print_job_and_trace(self):
        trace = self.folder / "trace"
        done = self.run_hvhost("convert", DATA / "weather.csv", self.folder / "out.csv", "--print-job",
                               "--trace", trace)
        self.assertIn("read(", done.stdout)
        self.assertFalse((self.folder / "out.csv").exists())
        self.assertEqual((trace / "hvtrace_0" / "HvlJobText_hvhost.hvl").read_text(), done.stdout.rstrip("\n"))


if __name__ == "__main__":
    unittest.main()
