"""What goes wrong, and what hvhost says then: nothing half-written, one clear error."""
import os
import resource
import shlex
import shutil
import signal
import subprocess
import unittest

from hvhost_case import DATA, HVHOST, Case

# The command, as typed in a folder with the sample data; its exit status; words that it must say.
FAULTS = [
    ("", 2, ["no command is given", "hvhost --help"]),
    ("convrt", 2, ["convrt: no such command", "did you mean convert?"]),
    ("help convrt", 2, ["did you mean convert?"]),
    ("--verson", 2, ["--verson: no such option", "did you mean --version?"]),
    ("-q", 2, ["-q: no such option", "hvhost --help"]),
    ("convert weather.csv", 2, ["OUT is required", "hvhost help convert"]),
    ("convert weather.csv o.csv --wher 1", 2, ["--wher: no such option", "did you mean --where?"]),
    ("convert weather.csv o.csv p.csv", 2, ["p.csv: there is one argument too many", "hvhost help convert shows"]),
    ("tcm train weather.csv --metrics wind precipitation -o o", 2, ["commas separate the values of --metrics"]),
    ("convert weather.csv o.csv -o p.csv", 2, ["OUT: it is given 2 times"]),
    ("convert weather.csv o.csv --limit", 2, ["--limit: its value, N, is missing"]),
    ("convert weather.csv o.csv --keep ''", 2, ["--keep: nothing is given"]),
    ("convert weather.csv o.csv --log -", 2, ["--log: a file is needed"]),
    ("convert weather.csv - --out-data-model -", 2, ["--out-data-model -"]),
    ("convert weather.csv o.csv --limit -1", 2, ["--limit: -1 is not a whole number from 0 up"]),
    ("convert weather.csv o.csv --timeout nan", 2, ["--timeout: nan is not a number above 0"]),
    ("convert weather.csv o.csv --where ''", 2, ["--where: nothing is given"]),
    ("convert weather.csv o.csv --derive a==1", 2, ["--derive a==1: no NAME="]),
    ("convert weather.csv o.csv --from xls", 2, ["--from: xls is not one of csv, sav, "]),
    ("convert weather.csv o.csv --log none/log", 1, ["none/log"]),
    ("convert weather.csv o.csv --trace=/proc/none", 1, ["/proc/none"]),
    ("convert sealed.sav o.csv --no-header", 2, ["--no-header: sealed.sav is not a csv or xlsx file"]),
    ("convert sealed.sav o.csv --encoding latin1", 2, ["--encoding: sealed.sav"]),
    ("convert text.hvbf o.csv --max-errors 1", 2, ["--max-errors: text.hvbf"]),
    ("convert weather.csv o.xyz", 2, ["o.xyz", "--to"]),
    ("convert weather.csv a.csv --out-password x", 2, ["a.csv: only a sav file"]),
    ("convert weather.csv o.sav --out-password ''", 2, ["--out-password: nothing is given"]),
    ("convert weather.csv o.sav --out-password-file blank", 3, ["blank: the first line"]),
    ("convert weather.csv o.sav --out-password x --out-password-file blank", 2, ["excludes"]),
    ("aggregate weather.csv --stat mean", 2, ["--stat mean: a field is missing"]),
    ("aggregate weather.csv --stat p101:wind", 2, ["--stat p101:wind"]),
    ("aggregate weather.csv --stat count --out-password x", 2, ["need an output"]),
    ("aggregate weather.csv o.csv --stat count --format json", 2, ["--format"]),
    ("aggregate weather.csv --stat fist:wind", 2, ["--stat fist:wind", '"first"']),
    ("run spread.hvl --data weather", 2, ["--data weather: no NAME=FILE"]),
    ("run - --data weather=-", 2, ["standard input is read already"]),
    ("run spread.hvl --data weather=weather.csv --data weather=penguins.csv", 2, ["named twice"]),
    ("run spread.hvl --data weather=weather.csv --save a=o.csv --save b=./o.csv", 2, ["named twice"]),
    ("run spread.hvl --data weather=weather.csv --save none=-", 1, ["--save none=-", '"none"']),
    # Inputs
    ("convert none.csv o.csv", 3, ["none.csv: no such file"]),
    ("convert none o.csv", 3, ["none: no such file"]),
    ("convert folder.csv o.csv", 3, ["folder.csv: only Parquet files are read as a folder"]),
    ("convert blank.csv o.csv", 3, ["blank.csv: the file is empty"]),
    ("convert - -", 3, ["standard input is empty"]),
    ("convert cut.sav o.csv", 3, ["cut.sav: ", "--from"]),
    ("convert text.hvbf o.csv", 3, ["text.hvbf: "]),
    ("convert sealed.sav o.csv", 3, ["sealed.sav: ", "none is given", "--password-file"]),
    ("info weather.csv --encoding klingon", 2, ["--encoding: the encoding klingon is not known", "windows-1252"]),
    ("convert weather.csv o.csv --encoding iso-2022-jp", 2, ["files in the encoding iso-2022-jp cannot be read", "iconv"]),
    ("convert sealed.sav o.csv --password squid", 3, ["sealed.sav: the password is wrong"]),
    ("convert weather.csv o.csv --data-model spread.hvl", 3, ["spread.hvl"]),
    ("convert ragged.csv o.csv", 3, ["ragged.csv:3: ", "--max-errors N"]),
    ("run spread.hvl --data weather=ragged.csv", 3, ["ragged.csv:3: "]),
    (r"convert 'a\b.csv' o.csv", 2, ["backslash"]),
    ("convert open.csv -", 3, ["open.csv:2:3: a quote is not closed", "--max-errors"]),
    ("convert quotes.csv o.csv", 3, ["quotes.csv:2:5: text follows a closing quote"]),
    ("convert quotes.csv o.csv --max-errors 1", 3, ["quotes.csv:2:5: text follows a closing quote"]),
    ("convert behind.csv -", 3, ["behind.csv:2:4: text follows a closing quote"]),
    ("convert foreign.csv o.csv", 3, ["foreign.csv:1: ", "--encoding NAME"]),
    ("convert foreign.csv o.csv --direct", 3, ["foreign.csv:1: ", "--encoding NAME"]),
    ("info semicolons.csv", 3, ["semicolons.csv:3: the record has 1 field, not 2", "--separator"]),
    ("convert semicolons.csv o.csv --direct", 2, ["semicolons.csv: ; separates", "--direct"]),
    ("run spread.hvl --data weather=semicolons.csv", 2, ["semicolons.csv: ; separates"]),
    ("convert weather.csv o.csv --direct --decimal-comma", 2, ["--decimal-comma"]),
    ("convert weather.csv o.csv --separator ab", 2, ["--separator: ab"]),
    ("info text.hvbf --separator ,", 2, ["--separator: text.hvbf is not a csv file"]),
    # Outputs
    ("convert weather.csv existing.csv", 2, ["existing.csv: the file exists", "--force"]),
    ("convert weather.csv - --out-data-model existing.csv", 2, ["existing.csv", "--force"]),
    ("convert weather.csv protected.csv --force", 1, ["protected.csv: the file is protected against writing"]),
    ("map points weather.csv protected.csv --x wind --y wind --force", 1, ["error: protected.csv: the file is protected"]),
    ("convert weather.csv dangling.csv --force", 1, ["dangling.csv: this is a link that leads nowhere"]),
    ("convert weather.csv - --log weather.csv", 2, ["weather.csv: this file is not a log"]),
    ("run replace.hvl --data weather=weather.csv", 1, ["existing.csv: the file exists already", "--force"]),
    ("convert weather.csv pipe.csv --force", 2, ["pipe.csv: this is not a regular file"]),
    ("convert weather.csv folder.csv --force", 2, ["folder.csv: this is a folder"]),
    ("convert weather.csv none/o.csv", 1, ["none/o.csv: the folder"]),
    # Fields and expressions
    ("convert weather.csv o.csv --where 'x.temp_mx > 1'", 2, ["--where", "temp_max"]),
    ("convert weather.csv o.csv --derive 'a=flor(x.wind)'", 2, ["--derive", "floor"]),
    ("convert weather.csv o.csv --where \"x.weather == 'sun'\"", 2, ["double quotes"]),
    ("convert weather.csv o.csv --where 'wind > 2'", 2, ["x.wind"]),
    ("convert weather.csv o.csv --keep date,nothing", 2, ["--keep nothing: ", "hvhost info"]),
    ("convert weather.csv o.csv --direct --keep nothing", 2, ["--keep nothing: ", "hvhost info"]),
    ("convert weather.csv o.csv --derive wind=1", 2, ['--derive wind=1: there is a field "wind"']),
    ("convert weather.csv o.csv --derive 'é = x.wind + true'", 2, [": character 12: "]),
    ("convert weather.csv o.csv --where 'x.\"a b\" > 1'", 2, ["written x.`a b`"]),
    ("convert weather.csv o.csv --where 'x.date > \"2012\"'", 2, ["toDate("]),
    ("aggregate weather.csv --stat mean:none:wind", 2, ['--stat mean:none:wind: there is no variable "none"']),
    ("aggregate weather.csv --stat zzzz:wind", 2, ["hvhost help aggregate"]),
    ("convert weather.csv o.csv --where 'x.wind = 2'", 2, ["== compares"]),
    ("convert weather.csv o.csv --where 'x.wind > 2 AND x.wind < 3'", 2, ["the expression ends before", "&& means and"]),
    ("convert weather.csv o.csv --where 'x.wind IS NULL'", 2, ["isMissing(x.name)"]),
    ("convert weather.csv o.csv --where 'x.weather in (\"sun\")'", 2, ["== and ||"]),
    ("convert weather.csv o.csv --where 'temp max > 1'", 2, ["written x.`temp max`"]),
    ("convert weather.csv o.csv --where 'x.wind <> 2'", 2, ["!= means not equal"]),
    ("convert weather.csv o.csv --derive 'a=x.temp max + 1'", 2, ["written x.`temp max`"]),
    # Selections, totals and several files
    ("convert weather.csv o.csv --sample 101%", 2, ["--sample: 101% is neither"]),
    ("convert weather.csv o.csv --top 3", 2, ["--top requires --by"]),
    ("convert weather.csv o.csv --sort winds:desc", 2, ["--sort winds:desc: there is no", "did you mean wind?"]),
    ("aggregate weather.csv --totals --stat count", 2, ["--totals requires --by"]),
    ("aggregate weather.csv --by weather --totals --stat count::Total", 2, ['a result "total" already']),
    ("join weather.csv penguins.csv o.csv --on wind=species", 2,
     ["it is a number in weather.csv and a text in penguins.csv", "hvhost convert"]),
    ("join weather.csv penguins.csv o.csv --on wind=body_mass_g,wind=beak_length_mm", 2, ["is named twice"]),
    ("join weather.csv penguins.csv o.csv --on wnd", 2, ["--on wnd: weather.csv: there is no", "did you mean wind?"]),
    ("join weather.csv weather.csv o.csv --on date --password x", 2, ["none of the files is a sav file"]),
    ("join weather.csv ragged.csv o.csv --on date=a", 3, ["ragged.csv:3: "]),
    ("join weather.csv weather.csv - --on date --report -", 2, ["--report -: the records go to"]),
    ("append - - o.csv", 2, ["standard input is read already"]),
    ("append weather.csv o.csv", 2, ["append needs two files and OUT"]),
    ("append weather.csv penguins.csv o.csv --by-position", 2, ["has 7 fields, and weather.csv has 6"]),
]
# A job text, and what a fault of it says.
JOB_FAULTS = [
    ('val a = {"x": }', r"job\.hvl:1:15: "),
    ('reed({"dataSource": "a"})', r'job\.hvl:1:1: there is no step "reed"'),
    ('read({"dataSource": 5})', 'the setting "dataSource" must be a text'),
    ('read({"dataSource": "nobody"}) -> write({"dataSource": "b", "mode": "overwrite"})', "nobody"),
    ('val a = b -> filterFields({"fields": ["x"]})\nval b = a -> filterFields({"fields": ["x"]})\n'
     'a -> write({"dataSource": "c", "mode": "overwrite"})', "uses itself"),
]


class Faults(Case):
    def test_each_names_the_thing_and_writes_nothing(self):
        place = self.folder / "place"
        shutil.copytree(DATA, place)
        whole = place / "sealed.sav"
        self.run_hvhost("convert", DATA / "penguins.csv", place / "cut.sav")
        self.run_hvhost("convert", DATA / "penguins.csv", whole, "--out-password", "krill")
        (place / "cut.sav").write_bytes((place / "cut.sav").read_bytes()[:200])
        (place / "text.hvbf").write_text("no such thing\n" * 100)
        (place / "ragged.csv").write_text("a,b\n1,2\n3\n")
        (place / "open.csv").write_text('a,b\n1,"x\n2,y\n')
        (place / "quotes.csv").write_text('a,b\n"x" "y",1\n')
        (place / "behind.csv").write_text('a,b\n"x"y,1\n')
        (place / "foreign.csv").write_bytes("größe,b\n1,2\n".encode("cp1252"))
        (place / "semicolons.csv").write_text("a;b\n1;2\n3\n")
        (place / "blank").write_text("\nkrill\n")
        (place / "blank.csv").touch()
        (place / "existing.csv").write_text("keep me\n")
        (place / "protected.csv").write_text("keep me\n")
        (place / "protected.csv").chmod(0o444)
        (place / "dangling.csv").symlink_to("nowhere")
        (place / "replace.hvl").write_text('val data = read({"dataSource": "weather"})\n'
            'data -> write({"dataDestination": "./new.csv", "type": "text/csv"})\n'
            'data -> write({"dataDestination": "./existing.csv", "type": "text/csv"})')
        (place / r"a\b.csv").write_text("a\n1\n")
        (place / "folder.csv").mkdir()
        os.mkfifo(place / "pipe.csv")
        before = sorted(place.iterdir())
        for words, status, expected in FAULTS:
            with self.subTest(words):
                done = self.run_hvhost(*shlex.split(words), status=status, text="", cwd=place)
                for words_said in expected:
                    self.assertIn(words_said, done.stderr)
                self.assertEqual(sorted(place.iterdir()), before)
        self.assertEqual((place / "existing.csv").read_text(), "keep me\n")
        self.assertEqual((place / "protected.csv").read_text(), "keep me\n")
        self.run_hvhost("run", "replace.hvl", "--data", "weather=weather.csv", "--force", cwd=place)
        self.assertEqual((place / "existing.csv").read_text(), (place / "new.csv").read_text())

    def test_faults_of_a_job_text(self):
        for text, expected in JOB_FAULTS:
            with self.subTest(text):
                done = self.run_hvhost("run", self.write("job.hvl", text), status=1)
                self.assertRegex(done.stderr, r"^hvhost: error: .*job\.hvl")
                self.assertRegex(done.stderr, expected)

    def test_inputs_that_may_not_be_read(self):
        nobody = {"user": 65534} if os.geteuid() == 0 else {}
        self.folder.chmod(0o755)
        self.temp.chmod(0o777)
        try:
            subprocess.run([HVHOST, "version"], capture_output=True, check=True, **nobody)
        except (OSError, subprocess.CalledProcessError):
            self.skipTest("another user may not run hvhost here")
        self.write("locked.csv", "a\n1\n").chmod(0)
        (self.folder / "folder").mkdir(mode=0o700)
        for name in ("locked.csv", "folder/a.csv") if nobody else ("locked.csv",):
            done = self.run_hvhost("convert", self.folder / name, "-", status=3, **nobody)
            self.assertIn(name + ": the file may not be read", done.stderr)

    def test_standard_output_that_takes_nothing(self):
        for words in (["convert", DATA / "weather.csv", "-"], ["help"], ["completion", "bash"],
                      ["convert", DATA / "weather.csv", "-", "--print-job"],
                      ["aggregate", DATA / "weather.csv", "--stat", "count"]):
            with self.subTest(words):
                done = subprocess.run(["sh", "-c", '"$@" >/dev/full', "sh", HVHOST,
                                       *map(str, words)],
                                      stderr=subprocess.PIPE, text=True, check=False,
                                      env=self.environment())
                self.assertEqual(done.returncode, 1)
                self.assertIn("standard output cannot be written", done.stderr)

    def test_a_reader_that_goes_away(self):
        """As `head` does: no fault, whether or not Java is running, and nothing stays."""
        for words in (["convert", DATA / "weather.csv", "-"], ["describe", DATA / "weather.csv"],
                      ["convert", DATA / "weather.csv", "-", "--print-job"], ["info", "-"],
                      ["help"]):
            with self.subTest(words), open(DATA / "weather.csv", encoding="utf-8") as source:
                process = self.start_hvhost(*words, stdin=source)
                process.stdout.close()
                self.assertEqual(process.wait(timeout=60), 141)
                self.assertEqual(process.stderr.read(), "")
                process.stderr.close()

    def test_a_full_disk_leaves_nothing(self):
        target = self.folder / "target"
        target.mkdir()

        def limit():
            # The signal ends a program that does not look after it.
            signal.signal(signal.SIGXFSZ, signal.SIG_DFL)
            resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))

        text = (DATA / "weather.csv").read_text(encoding="utf-8")
        for source in (DATA / "weather.csv", "-"):
            done = self.run_hvhost("convert", source, "target/out.csv", status=1, text=text,
                                   preexec_fn=limit, cwd=self.folder)
            self.assertEqual(list(target.iterdir()), [])
            self.assertIn("error: " + ("a temporary file " if source == "-"
                                       else "target/out.csv: "), done.stderr)

    def test_no_engine(self):
        words = ["convert", DATA / "weather.csv", self.folder / "out.csv"]
        home = self.folder / "home"
        jar = home / "hv" / "af" / "components" / "hvengine.jar"
        for content in (None, b"no jar"):
            if content:
                jar.parent.mkdir(parents=True)
                jar.write_bytes(content)
            for command in (words, ["doctor"]):
                done = self.run_hvhost(*command, status=4, environment={"VEXA_HOME": str(home)})
                self.assertIn("hvengine.jar", done.stderr + done.stdout)

    def test_a_machine_that_gives_up(self):
        """It would end the process with status 0 or 1, and its reason would be lost."""
        for name, option, reason in (
                ("VEXA_JVM_OPTIONS", "-Xmx1m", "Too small maximum heap"),
                ("VEXA_JVM_OPTIONS", "-agentlib:none", "agent library none"),
                ("VEXA_JVM_OPTIONS", "-version", "Unrecognized option: -version"),
                ("VEXA_JVM_OPTIONS", "-agentlib:jdwp=x", "VEXA_JVM_OPTIONS=-agentlib:jdwp=x"),
                ("JAVA_TOOL_OPTIONS", "-XX:+PrintFlagsInitial", "in JAVA_TOOL_OPTIONS, which ends")):
            for words in (["convert", DATA / "weather.csv", self.folder / "out.csv"], ["doctor"]):
                done = self.run_hvhost(*words, status=4, environment={name: option})
                self.assertIn(reason, done.stderr + done.stdout)
                self.assertFalse((self.folder / "out.csv").exists())

    def test_no_machine(self):
        """Java hidden behind an empty folder, in a view of the file system of its own."""
        hide = ["unshare", "--mount", "--map-root-user", "sh", "-c",
                'mount -t tmpfs none /usr/lib/jvm && exec "$@"', "sh"]
        if subprocess.run([*hide, "true"], capture_output=True, check=False).returncode != 0:
            self.skipTest("no right to hide /usr/lib/jvm")
        for words in (["convert", DATA / "weather.csv", self.folder / "out.csv"], ["doctor"]):
            done = subprocess.run([*hide, "env", "JAVA_HOME=", "PATH=/none", HVHOST, *words],
                                  capture_output=True, text=True, env=self.environment(),
                                  check=False)
            self.assertEqual(done.returncode, 4, done.stderr)
            self.assertIn("/usr/lib/jvm/default-java", done.stderr)
            self.assertIn("hint: ", done.stderr)


if __name__ == "__main__":
    unittest.main()
