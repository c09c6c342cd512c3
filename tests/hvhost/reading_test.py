"""Text files as other programs write them."""
import bz2
import concurrent.futures
import gzip
import json
import os
import re
import subprocess
import unittest

from awkward_files import FILES, WARNINGS
from hvhost_case import HVHOST, Case
from workbook_files import sheet, workbook

# a,b and 1,2, compressed
# The first bytes of workbooks before xlsx
OLD = bytes.fromhex("d0cf11e0a1b11ae1")
ZSTD = bytes.fromhex("28b52ffd0458410000612c620a312c320a35e7cace")

SLOW_IF_SANITIZED = unittest.skipIf(os.environ.get("HV_SANITIZER"), "long texts take minutes with a sanitizer")


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
                ("in.xlsx", b"PK\3\4", (), "in.xlsx: this is not an xlsx workbook, or it is cut short"),
                ("in.xlsx", workbook([[1]])[:-30], (), "in.xlsx: this is not an xlsx workbook, or it is cut short"),
                ("in.xls", OLD, (), "in.xls: this is an old xls workbook; save it as xlsx"),
                ("in.xlsx", OLD + "EncryptedPackage".encode("utf-16-le"), (), "in.xlsx: the workbook is encrypted"),
                ("in.xlsx", workbook([[1]], [[2]]), ("--sheet", "3"),
                 'there is no sheet "3"; the sheets are "Sheet 1", "Sheet 2"'),
                ("in.xlsx", workbook([[]]), (), "in.xlsx: no records were found in the sheet"),
                ("in.xlsx", workbook([], **{"xl/sheets/1.xml": "<!DOCTYPE a [<!ENTITY e 'e'>]>" + sheet([["&e;"]])}), (),
                 "in.xlsx: the XML in the workbook has a document type"),
                ("in.xlsx", workbook([], **{"xl/sheets/1.xml": sheet([["x"]]) + " " * (80 << 20)}), (),
                 "in.xlsx: the part xl/sheets/1.xml of the workbook unpacks to more than is accepted"),
                ("in.xlsx", workbook([["a"], [('t="s"', "<v>7</v>")]]), (), "row 2: a cell refers to text number 7"),
                ("in.xlsx", workbook([["x"], [1], ["many"]]), ("--type", "x=real"),
                 'in.xlsx: record 2: field "x": "many" is not Real'),
                ("in.xlsx", workbook([[1]]), ("--separator", ";"), "--separator: "),
                ("in.csv", "a\n1\n", ("--sheet", "1"), "--sheet: "),
                ("in.csv.bz2", bz2.compress(b"a\n1\n"), (), "the kind of file is not clear"),
                ("in.csv.zst", ZSTD[:-2], (), "in.csv.zst: the file is damaged"),
                ("in.csv.gz", gzip.compress(b"a\n1\n" * 99999)[:-100], (), "in.csv.gz: the file is damaged")):
            with self.subTest(name=name, words=words):
                said = self.read(content, *words, name=name,
                                 status=2 if "--" in says[:2] or "=NUMBER" in says or "kind" in says else 3)
                self.assertIn(says, said)

    @SLOW_IF_SANITIZED
    def test_one_limit_for_a_record(self):
        for size, words in ((3 << 20, ()), (60 << 20, ()), (60 << 20, ("--missing", "NA"))):
            self.assertEqual(len(self.read("a,b\n" + "x" * size + ",1\n", *words)), size + len("a,b\n,1\n"))
        for words in ((), ("--served",), ("--missing", "NA")):
            self.assertIn("the record is longer than 64 MiB", self.read("a,b\n" + "x" * (65 << 20) + ",1\n", *words, status=3))
        for size, status in ((60, 0), (65, 3)):
            said = self.read('{"a": 1}\n{"a": "' + "x" * (size << 20) + '"}\n', name="in.json", status=status)
            self.assertEqual(len(said) if status == 0 else said.count("in.json:2: the record is longer than 64 MiB"),
                             (size << 20) + len("a\n1\n\n") if status == 0 else 1)

    @SLOW_IF_SANITIZED
    def test_a_long_record_far_down(self):
        """It is found while the database reads with its usual limits, which would refuse or lose it."""
        head = "a,b\n" + "1,x\n" * 30000
        for size, words in ((3 << 20, ()), (40 << 20, ()), (40 << 20, ("--max-errors", "1"))):
            with self.subTest(size=size, words=words):
                whole = head + "2," + "y" * size + "\n3,z\n"
                self.assertTrue(self.read(whole, *words) == whole)
        whole = head + "2," + "y" * (3 << 20) + "\n3,z\n"
        # The type changes behind the record.
        self.assertTrue(self.read(whole + "late,z\n") == whole + "late,z\n")
        self.assertIn("in.csv:30004: the record has 3 fields, not 2", self.read(whole + "4,5,6\n", status=3))
        # The host cuts the text, and reads on behind the record.
        self.assertEqual(self.read(whole, "--served").splitlines()[30002:], ["3,z"])

    def test_the_host_serves_quoted_line_ends(self):
        records = 1_000_000
        content = "nam\r\n" + '"\n"\r\n' * records  # several threads would lose records of it
        self.assertEqual(self.count(content, "--served"), records)

    @SLOW_IF_SANITIZED
    def test_threads_do_not_import_quotes(self):
        record = '"' + "a\nb,c\n" * 40 + '",7\n'
        records = 300_000  # more than one block of the database
        self.assertEqual(self.count("t,n\n" + record * records, "--comment", "#"), records)

    def count(self, content, *words):
        shown = self.read(content, "--stat", "count", "--format", "csv", *words, command=("aggregate",))
        return int(shown.split()[1])

    def test_workbooks(self):
        """A number is a date by its format, in two calendars; 29 February 1900 never was."""
        dates = [["d", "t", "s", "p", "e"],
                 *([("s='1'", f"<v>{day}</v>"), ("s='2'", "<v>0.25</v>"), ("s='3'", f"<v>{day}.5</v>"),
                    ("s='4'", "<v>0.12</v>"), ("s='5'", "<v>1.5</v>")] for day in (59, 60, 61))]
        codes = (14, "h:mm;@", "[$-407]d. mmm \\d&quot;h&quot; yyyy h:mm", 10, "[h]:mm")
        kinds = [["n", "x", "b", "s", "e", "mix"], [],
                 [1, 1.5, ('t="b"', "<v>1</v>"), ('t="s"', "<v>0</v>"), ('t="e"', "<v>#N/A</v>"), 1],
                 [("", "<v>2E0</v>"), 2, ('t="b"', "<v>0</v>"), 'x "y", z', None, "NA"], [None, None, None, ('t="str"', "<v>v</v>")]]
        for content, words, expected in (
                (workbook(dates, codes=codes), (), "d,t,s,p,e\n1900-02-28,06:00:00,1900-02-28 12:00:00,0.12,1.5\n"
                 ",06:00:00,,0.12,1.5\n1900-03-01,06:00:00,1900-03-01 12:00:00,0.12,1.5\n"),
                (workbook(dates[:2], codes=codes, properties='date1904="1"'), ("--keep", "d"), "d\n1904-02-29\n"),
                (workbook(kinds, texts=("<r><t>rich</t></r><r><t> text</t></r><rPh><t>no</t></rPh>",)), (),
                 'n,x,b,s,e,mix\n1,1.5,true,rich text,,1\n2,2.0,false,"x ""y"", z",,NA\n,,,v,,\n'),
                (workbook(kinds, texts=("<t>a_x000A_b</t>",)), ("--missing", "NA", "--type", "b=boolean", "--first", "1"),
                 'n,x,b,s,e,mix\n1,1.5,1,"a\nb",,1\n'),
                (workbook([["Title"], [None, "a"], [None, 5, 6]]), ("--skip", "1"), "field1,a,field3\n,5,6\n"),
                (workbook([[1]], [[7], [8]]), ("--sheet", "Sheet 2", "--no-header"), "field1\n7\n8\n"),
                (workbook([[1]], [[7], [8]]), ("--sheet", "2"), "7\n8\n")):
            with self.subTest(expected):
                self.assertEqual(self.read(content, *words, name="in.xlsx").replace('""\n', "\n"), expected)
        self.assertIn("2 numbers have a format of dates", self.run_hvhost(
            "info", self.write("in.xlsx", workbook(dates, codes=codes))).stderr)

    def test_faults_say_why_a_field_is_a_text(self):
        hint = "\n  hint: if that is a missing value, --missing"
        for name, content, words, says in (
                ("in.csv", "x\n1\nNA\n2\n3\n", (), '"NA" on line 3' + hint),
                ("in.csv", "x;y\n1;1\nNA;2\n2;3\n3;4\n", (), '"NA" in record 2' + hint),
                ("in.xlsx", workbook([["x"], [1], ["NA"], [2]]), (), '"NA" in record 2' + hint),
                ("in.json", '{"x": 1}\n{"x": "NA"}\n{"x": 2}\n', (), '"NA" in record 2\n'),
                ("in.csv", "x\n1 %\n2 %\n", (), 'the sign in "1 %" on line 2\n  hint: --type x=real')):
            said = self.read(content, "--stat", "mean:x", *words, command=("aggregate",), status=2, name=name)
            self.assertRegex(said, "mean needs a number: x is text because of " + re.escape(says))
        source = self.write("in.csv", "t,x,y\n2024-01-01,1,5\n2024-01-02,NA,6\n2024-01-03,2,7\n")
        self.assertIn('not a text: x is text because of "NA" on line 3\n  hint: if that is a missing value, --missing-texts',
                      self.run_hvhost("tcm", "train", source, "-o", self.folder / "out.tcm", "--time", "t", "--metrics", "x",
                                      status=2).stderr)
        self.assertIn('x is text because of "NA" on line 3, so its values are compared as categories; if',
                      self.run_hvhost("describe", source, "x", "y", "--pairs").stderr)
        self.assertIn('a coordinate is a number, not a text: x is text because of "NA" on line 3\n  hint: if',
                      self.run_hvhost("map", "points", source, self.folder / "out.json", "--x", "x", "--y", "y",
                                      status=2).stderr)

    def test_info_says_why_a_field_is_a_text(self):
        source = self.write("in.csv", 'a,b,c,p\n1,yes,,5 $\n2,FALSE,3,6\n"N\nA",yes,4,\n')
        said = self.run_hvhost("info", source).stdout
        for reason in ('a is text because of "N', 'all its values are words such as "yes" on line 2; --type b=boolean',
                       'p is text because of the sign in "5 $" on line 2; --type p=real'):
            self.assertIn(reason, said)
        variables = json.loads(self.run_hvhost("info", source, "--format", "json").stdout)["variables"]
        self.assertEqual([variable.get("textBecauseOf") for variable in variables],
                         [{"value": "N\nA", "line": 4}, {"value": "yes", "line": 2}, None, {"value": "5 $", "line": 2}])


if __name__ == "__main__":
    unittest.main()
