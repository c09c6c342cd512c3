"""Text files as other programs write them."""
import bz2
import concurrent.futures
import gzip
import json
import re
import subprocess
import unittest

from awkward_files import FILES, WARNINGS
from hvhost_case import HVHOST, Case

# a,b and 1,2, compressed
ZSTD = bytes.fromhex("28b52ffd0458410000612c620a312c320a35e7cace")


class Reading(Case):
    def read(self, content, *words, name="in.csv", status=0, command=("convert",)):
        source = self.write(name, content)
        done = self.run_hvhost(*command, source, "-", *words, status=status)
        return done.stdout if status == 0 else done.stderr

    def test_forms(self):
        numbers = "d,x\n2024-01-31,1234.5\n2024-02-01,2.5\n"
        for name, content, words, expected in (
                ("in.csv", "a,b\n1,x\nNA,y\n.,N/A\n", ("--missing", "NA,N/A,."), "a,b\n1,x\n,y\n,\n"),
                ("in.csv", "# from the office\nd;x\n31.01.2024;1.234,5\n01.02.2024;2,5\n",
                 ("--comment", "#", "--decimal-comma", "--thousands", "."), numbers),
                ("in.csv", "Report\n\nd;x\n31.01.2024;1234.5\n01.02.2024;2.5\n",
                 ("--skip", "2", "--separator", ";"), numbers),
                ("in.csv", "d\n01.02.2024\n02.03.2024\n", ("--date-format", "%m.%d.%Y"), "d\n2024-01-02\n2024-02-03\n"),
                ("in.csv", "id,n\n007,1\n008,2\n", ("--type", "n=real", "--type", "id=integer"), "id,n\n7,1.0\n8,2.0\n"),
                ("in.csv", "1,x\nNA,y\n", ("--no-header", "--missing", "NA"), "field1,field2\n1,x\n,y\n"),
                ("in.csv", "a,,a\n1,2,NA\n", ("--missing", "NA"), "a,column1,a_1\n1,2,\n"),
                ("in.csv", "t\n2024-05-06T07:08:09+02:00\n", ("--missing", "NA"), "t\n2024-05-06 05:08:09\n"),
                ("in.csv", 'a,b\n"x, ""y""",true\n', ("--missing", "NA"), 'a,b\n"x, ""y""",true\n'),
                ("in.csv", b"a;b\n1;\xe4\nNA;c\n", ("--missing", "NA", "--encoding", "windows-1252"), "a,b\n1,ä\n,c\n"),
                ("in.csv.zst", ZSTD, (), "a,b\n1,2\n"),
                ("in.csv.gz", gzip.compress(b"a;b\n1;2\n"), (), "a,b\n1,2\n"),
                ("odd*[1]?.csv", "a\n1\nNA\n", ("--missing", "NA"), "a\n1\n\n"),
                ("in.json", '[{"a": 1, "b": true, "c": {"d": [1]}}, {"a": 2, "e": "2024-01-01"}]', (),
                 'a,b,c,e\n1,true,"{""d"":[1]}",\n2,,,2024-01-01\n'),
                ("in.jsonl", '{"a": "x"}\n{"a": null}\n', (), "a\nx\n\n"),
                ("in.ndjson.gz", gzip.compress(b'{"a": 1}\n{"a": 2.5}\n'), (), "a\n1.0\n2.5\n")):
            with self.subTest(name=name, words=words):
                for road in ((), ("--served",)):
                    self.assertEqual(self.read(content, *words, *road, name=name).replace('""\n', "\n"), expected)

    def convert_awkward(self, name):
        content, words, types, _ = FILES[name]
        target = self.folder / (name + ".out.csv")
        model = self.folder / (name + ".xml")
        done = subprocess.run([HVHOST, "convert", self.write(name, content), target, "--out-data-model", model,
                               *words.split()], capture_output=True, text=True, env=self.environment(), check=False)
        if types is None or done.returncode:
            return done.returncode, "", done.stderr
        storages = re.findall('storage="(.*?)"', model.read_text(encoding="utf-8"))
        letters = "".join({"timestamp": "s", "string": "x"}.get(storage, storage[0]) for storage in storages)
        return letters, target.read_bytes().decode(), done.stderr

    def test_awkward_files(self):
        with concurrent.futures.ThreadPoolExecutor(2) as pool:
            for name, (got, records, said) in zip(FILES, pool.map(self.convert_awkward, FILES)):
                with self.subTest(name):
                    _, _, types, expected = FILES[name]
                    if types is None:
                        self.assertEqual(got, 3)
                        self.assertIn(expected, said)
                        continue
                    self.assertEqual((got, records), (types, expected), said)
                    self.assertIn(WARNINGS.get(name, ""), said)
                    self.assertEqual(said == "", name not in WARNINGS, said)

    def test_separators_are_judged_over_many_lines(self):
        for content, expected in (("Preis, netto;Menge\n1,5;2\n2,5;3\n", "semi"), ("a,b;c\nu,2;x\nv,4;y\n", "comma"),
                                  ("name;born, died\nx;1,2\ny;3,4\n", "semi"), ("a\tb\nx, y\tz\nu\tv\n", "tab"),
                                  ('"a;b",c\n1,2\n', "comma"), ("a,b\n1,2\nonly\n", "comma")):
            with self.subTest(content):
                source = self.write("in.csv", content)
                names = {"semi": "separator ;", "tab": "separator tab", "comma": ""}
                done = subprocess.run([HVHOST, "info", source], capture_output=True, text=True, check=False,
                                      env=self.environment())
                said = (done.stdout or done.stderr).splitlines()[0]
                self.assertEqual("separator" in said, expected != "comma", said)
                self.assertIn(names[expected], said)

    def test_standard_input_tells_its_kind(self):
        sheet = self.folder / "in.hvbf"
        self.run_hvhost("convert", self.write("in.csv", "a\n1\n"), sheet)
        for content in (b"a\n1\n", b' \n[{"a": 1}]', sheet.read_bytes(), gzip.compress(b"a\n1\n")):
            done = subprocess.run([HVHOST, "convert", "-", "-"], input=content, capture_output=True,
                                  check=True, env=self.environment())
            self.assertEqual(done.stdout, b"a\n1\n")

    def test_thousands_of_fields(self):
        fields = [f"c{i}" for i in range(3000)]
        texts = ",".join(fields) + "\n" + ",".join(["NA"] + ["x"] * 2999) + "\n"
        self.assertEqual(self.read(texts, "--missing", "NA"), texts.replace("NA", "", 1))
        # So many members of one kind are still fields, not one field with a map.
        records = "".join(json.dumps(dict.fromkeys(fields, value)) + "\n" for value in (1, 2))
        self.assertEqual(self.read(records, "--keep", "c2999", name="in.json"), "c2999\n1\n2\n")

    def test_faults_name_the_place_and_what_helps(self):
        for name, content, words, says in (
                ("in.csv", "a,b\n1,2\n3\n", ("--missing", "NA"), "in.csv:3: the record has 1 field, not 2\n"),
                ("in.csv", "a\n1\nx\n", ("--type", "a=real"), 'in.csv:3: field "a": "x" is not Real\n  hint: --missing TEXT'),
                ("in.csv", "alpha\n1\n", ("--type", "alpa=real"), 'there is no field "alpa"; did you mean "alpha"?'),
                ("in.csv", "a\n1\n", ("--type", "a=number"), "--type a=number: no NAME=TYPE"),
                ("in.csv", b"a\n\xe4\n", ("--missing", "NA"), "in.csv:2: the text is not UTF-8\n  hint: --encoding"),
                ("in.csv", "a\n1\n", ("--missing", "NA", "--max-errors", "3"), "--max-errors: only a plain csv file"),
                ("in.sav", "x", ("--missing", "NA"), "--missing: "),
                ("in.json", '{"a": 1}\n{"a": 2\n', (), "in.json:3: the file is not JSON: "),
                ("in.json", "[1, 2]", (), "the file has no records"),
                ("in.json", "[" * 100000, (), "in.json: values are nested more than 100 levels deep"),
                ("in.json", '{"a": 1}'.encode("utf-16"), (), "in.json: the file is UTF-16; JSON must be UTF-8"),
                ("in.json", '[{"a": 1}, {"a": {]', (), "the file is not JSON: "),
                ("in.csv", "a,b\n1,2\n", ("--comment", ",", "--missing", "-"), "--comment ,: this is the separator"),
                ("in.csv", "a,b\n1,2\n", ("--thousands", "."), "--thousands .: this is the decimal mark"),
                ("in.csv.bz2", bz2.compress(b"a\n1\n"), (), "the kind of file is not clear"),
                ("in.csv.zst", ZSTD[:-2], (), "in.csv.zst: the file is damaged"),
                ("in.csv.gz", gzip.compress(b"a\n1\n" * 99999)[:-100], (), "in.csv.gz: the file is damaged")):
            with self.subTest(name=name, words=words):
                said = self.read(content, *words, name=name,
                                 status=2 if "--" in says[:2] or "=NUMBER" in says or "kind" in says else 3)
                self.assertIn(says, said)

    def test_one_limit_for_a_record(self):
        for size, words in ((3 << 20, ()), (60 << 20, ()), (60 << 20, ("--missing", "NA"))):
            self.assertEqual(len(self.read("a,b\n" + "x" * size + ",1\n", *words)), size + len("a,b\n,1\n"))
        for words in ((), ("--served",), ("--missing", "NA")):
            self.assertIn("the record is longer than 64 MiB", self.read("a,b\n" + "x" * (65 << 20) + ",1\n", *words, status=3))

    def test_a_mean_of_texts_says_why(self):
        self.assertIn('mean needs a number: x is text because of "NA" on line 3\n  hint: if that is a missing value, '
                      "--missing", self.read("x\n1\nNA\n2\n3\n", "--stat", "mean:x", command=("aggregate",), status=2))

    def test_info_says_why_a_field_is_a_text(self):
        source = self.write("in.csv", 'a,b,c\n1,x,\n2,y,3\n"N\nA",z,4\n')
        self.assertIn('a is text because of "N', self.run_hvhost("info", source).stdout)
        variables = json.loads(self.run_hvhost("info", source, "--format", "json").stdout)["variables"]
        self.assertEqual([variable.get("textBecauseOf") for variable in variables],
                         [{"value": "N\nA", "line": 4}, None, None])


if __name__ == "__main__":
    unittest.main()
