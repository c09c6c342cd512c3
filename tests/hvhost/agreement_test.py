"""What the host serves and what the engine reads of the same file is the same.

Some differences are meant, since a case of the host has numbers of 53 bits and texts of a fixed width:
a date with a time of day that a file keeps as a number is a timestamp to the host and that number to the
engine, single microseconds of timestamps and integers beyond 2^53 may be rounded, with a warning, and
blanks at the end of a text count for nothing, so that an empty text in a file with gaps is missing. A text that is not there is blank where
its variable declares three other values missing, which is all that a variable can.
"""
import datetime
import json
import os
import re
import subprocess
import unittest

from hvhost_case import Case

RUN_SQL = os.environ["HV_RUN_SQL"]
KINDS = ("sav", "hvbf", "csv")
ROADS = {"host": ("--served",), "engine": ("--direct",)}
# The engine does not know that a split is in force.
IGNORES = re.compile(r"hvhost: warning: This procedure ignores the .*\n")

VALUES = f"""s1,s8,s9,s255,i,r,d,t,ts
a,abcdefgh,refusedxy,{"é" * 127}x,1,1.5,2020-01-01,12:30:00,2020-01-01 12:30:00
b,short,x,y,2,2.25,1999-12-31,23:59:59.5,1999-12-31 23:59:59.25
x,refused,refusedxx,z,9,99,1582-10-14,00:00:00,1969-12-31 23:59:59
,,,,,,,,
d," refused",q,w,-1,-1e300,2024-02-29,01:02:03,2262-01-01 00:00:00
"""
FIELDS = [
    {"name": "s1", "displayLabel": "Öne", "role": "target", "missingValues": {"Value": ["x"]},
     "valueLabels": [{"value": "a", "displayLabel": "A é"}, {"value": "x", "displayLabel": "no"}]},
    {"name": "s8", "measure": "ordinal", "role": "split", "missingValues": {"Value": ["refused", "b"]}},
    {"name": "s9", "measure": "flag", "role": "none", "missingValues": {"Value": ["refusedxx"]}},
    {"name": "s255", "measure": "typeless", "role": "recordId"},
    {"name": "i", "measure": "ordinal", "role": "both",
     "missingValues": {"minValue": 9, "maxValue": 99, "Value": ["-1"]},
     "valueLabels": [{"value": "1", "displayLabel": "one"}, {"value": "9", "displayLabel": "nine"}]},
    {"name": "r", "role": "freqWeight", "missingValues": {"minValue": 90},
     "valueLabels": [{"value": "1.5", "displayLabel": "half"}]},
    {"name": "d", "measure": "discrete", "role": "partition", "missingValues": {"Value": ["-141428"]},
     "valueLabels": [{"value": "0", "displayLabel": "epoch"}]},
    {"name": "t", "measure": "nominal", "missingValues": {"Value": ["0"]}},
    {"name": "ts", "missingValues": {"maxValue": 0}, "valueLabels": [{"value": "0.5", "displayLabel": "half"}]}]


class Agreement(Case):
    def sources(self):
        """The same records with all that a dictionary can say, in each form that can say it."""
        records = self.write("records.csv", VALUES)
        job = ('val told = {"fields": ' + json.dumps(FIELDS) + '}\nread({"dataSource": "in"}) -> '
               'updateDataModel(told) -> write({"dataSource": "out", "mode": "overwrite"})')
        for kind in KINDS:
            path = self.folder / f"source.{kind}"
            self.run_hvhost("run", "-", "--data", f"in={records}", "--save", f"out={path}", text=job)
            yield kind, path

    def parquet(self, name, select, **metadata):
        path = self.folder / name
        entries = ", ".join(f"'hvinteg.{key}': '{text}'" for key, text in metadata.items())
        options = "FORMAT PARQUET" + (", KV_METADATA {" + entries + "}" if entries else "")
        subprocess.run([RUN_SQL, f"COPY ({select}) TO '{path}' ({options})"], check=True)
        return path

    def on_both_roads(self, *words, **more):
        """What the two roads say, which must be the same but for what the host alone ignores."""
        done = [self.run_hvhost(*words, *road, **more) for road in ROADS.values()]
        self.assertEqual(*[(one.stdout, IGNORES.sub("", one.stderr)) for one in done])
        return done[0]

    def facts(self, path):
        facts = json.loads(self.run_hvhost("info", path, "--format", "json").stdout)
        del facts["file"]
        for variable in facts["variables"]:
            # The host alone declares what is not there.
            missing = variable.get("missing", {})
            missing["values"] = [value for value in missing.get("values", []) if value != ""]
            variable["missing"] = missing
        return facts

    def records(self, path):
        text = self.run_hvhost("convert", path, "-", "--to", "csv", "--direct", "--user-missing", "keep").stdout
        return text.splitlines()

    def test_a_conversion_is_the_same_on_both_roads(self):
        for kind, source in self.sources():
            for missing in ("exclude", "keep"):
                for target in KINDS:
                    results = []
                    for road, option in ROADS.items():
                        out = self.folder / f"{road}.{target}"
                        self.run_hvhost("convert", source, out, "--force", "--user-missing", missing, *option)
                        results.append((None if target == "csv" else self.facts(out), self.records(out)))
                    with self.subTest(kind=kind, missing=missing, target=target):
                        self.assertEqual(*results)
                        kept = missing == "keep" or kind == "csv"
                        self.assertEqual("x,refused,refusedxx,z,9" in results[0][1][3], kept)
                        if "csv" not in (kind, target):
                            self.assertEqual(results[0][0], self.facts(source))
                        elif target != "csv":
                            levels = [[variable["level"] for variable in facts["variables"]]
                                      for facts in (results[0][0], self.facts(source))]
                            self.assertEqual(*levels)

    def test_an_aggregate_is_the_same_on_both_roads(self):
        for kind, source in self.sources():
            for missing in ("exclude", "keep"):
                for by, of in (("s1,i", "r"), ("s9,d", "ts"), ("r,t", "i")):
                    with self.subTest(kind=kind, missing=missing, by=by):
                        self.on_both_roads("aggregate", source, "--by", by, "--stat",
                                           f"count,min:{of},max:{of},last:{of}", "--format", "json",
                                           "--unweighted", "--user-missing", missing)

    def test_what_is_no_number_is_missing_for_aggregate_and_describe(self):
        rows = "('a', 1.0, 2.5::DOUBLE, 9e18::BIGINT), ('a', 2.0, 'NaN', 9e18::BIGINT), ('b', 3.0, 'Infinity', 7)"
        path = self.parquet("numbers.hvbf", f"SELECT * FROM (VALUES {rows}) t(g, w, x, n)")
        stats = "--stat", "count:x,mean:x,min:x,max:x,mean:n", "--format", "json"
        plain = self.on_both_roads("aggregate", path, "--unweighted", *stats)
        weighted = self.run_hvhost("aggregate", path, "--weight", "w", *stats)
        for done in plain, weighted:
            self.assertEqual(list(json.loads(done.stdout)["rows"][0].values())[:4], [1, 2.5, 2.5, 2.5])
        # A product of weight and value is beyond an integer.
        self.assertAlmostEqual(json.loads(weighted.stdout)["rows"][0]["mean_n"] / 4.5e18, 1)
        told = self.run_hvhost("describe", path, "x", "--weight", "w", "--format", "csv").stdout
        self.assertIn("2.5", told)

    def test_a_dictionary_that_is_wrong_is_refused_on_both_roads(self):
        def of(variable):
            return '{"variables":[' + variable + ']}'
        for dictionary, says in (
                (of('{"name":"gone"}'), 'variable "gone" of the dictionary has no data'),
                (of('{"name":"N"}'), 'variable "N" of the dictionary has no data'),
                (of('{"name":"n","type":"text"}'), '"n" is a text in the dictionary, but not in the data'),
                (of('{"name":"d","type":"text"}'), '"d" is a text'),
                (of('{"name":"t"}'), '"t" is a number in the dictionary'),
                (of('{"name":"t","type":"text","width":3}'), '"t" has a value that is longer than the 3 bytes'),
                (of('{"name":"n","valueLabels":[{"value":"x","label":""}]}'), "a value of a number is not a num"),
                (of('{"name":"t","type":"text","missing":{"values":[1]}}'), "a value of a text is not a text"),
                (of('{"name":"n"},{"name":"n"}'), 'two variables are named "n"'),
                (of('{"name":"ä"},{"name":"Ä"}'), 'two variables are named "Ä"'),
                ('{"weight":"t","variables":[{"name":"t","type":"text"}]}', 'the weight variable "t" is a text'),
                ('{"weight":"w","variables":[{"name":"n"}]}', 'the weight variable "w" is not there'),
                ("{", "the dictionary cannot be used")):
            with self.subTest(dictionary):
                path = self.parquet("bad.sav", "SELECT 1 AS n, CASE WHEN i < 4000 THEN 'abc ' ELSE 'four' END AS t, "
                                    "DATE '2020-01-01' AS d FROM range(5000) AS rows(i)", dictionary=dictionary)
                done = self.on_both_roads("convert", path, self.folder / "out.csv", status=3)
                self.assertIn(f"{path}: ", done.stderr)
                self.assertIn(says, done.stderr)
                self.assertFalse((self.folder / "out.csv").exists())

    def test_what_a_data_model_contradicts_counts_for_nothing(self):
        field = '<Field name="{}" storage="{}" measure="{}"><ValueLabels><Value value="1" label="l"/></ValueLabels></Field>'
        model = "".join(field.format(*words) for words in (
            ("n", "real", "ordinal"), ("t", "integer", "ordinal"), ("d", "timestamp", "flag"),
            ("gone", "string", "flag")))
        for text, labels in ((f"<DataModel>{model}</DataModel>", 1), ("<DataModel>", 0)):
            path = self.parquet("other.hvbf", "SELECT 1 AS n, '1' AS t, DATE '2020-01-01' AS d", datamodel=text)
            results = []
            for road in ROADS.values():
                out = self.folder / "out.sav"
                self.run_hvhost("convert", path, out, "--force", *road)
                results.append((self.facts(out), self.records(out)))
            self.assertEqual(*results)
            self.assertEqual(results[0][1][1], "1,1,2020-01-01")
            self.assertEqual([len(variable.get("valueLabels", [])) for variable in results[0][0]["variables"]],
                             [labels, 0, 0])

    def test_names_that_differ_only_in_case_are_told_apart(self):
        names = self.write("names.csv", "ä,Ä,b,B,B_1\n1,2,3,4,5\n")
        self.assertEqual(self.on_both_roads("convert", names, "-").stdout, "ä,Ä_1,b,B_2,B_1\n1,2,3,4,5\n")
        path = self.parquet("names.parquet", 'SELECT 1 AS "ä", 2 AS "Ä"')
        self.assertEqual(self.on_both_roads("convert", path, "-", "--to", "csv").stdout, "ä,Ä_1\n1,2\n")

    def test_files_of_other_programs(self):
        columns = (
            ("255::UTINYINT", "integer", "255"), ("true", "integer", "1"), ("(-128)::TINYINT", "integer", "-128"),
            ("18446744073709551615::UBIGINT", "real", "1.8446744073709552e+19"),
            ("1.25::DECIMAL(9,2)", "real", "1.25"), ("1.5::FLOAT", "real", "1.5"), ("'NaN'::DOUBLE", "real", "nan"),
            ("TIMESTAMPTZ '2020-01-01 01:30:00+02'", "timestamp", "2019-12-31 23:30:00"),
            ("TIMESTAMP_NS '2020-01-01 12:00:00.25'", "timestamp", "2020-01-01 12:00:00.25"),
            ("NULL::INTEGER", "integer", ""), ("'\\xFFa'::BLOB", "text(5)", "\\xFFa"),
            ("'f81d4fae-7dec-11d0-a765-00a0c91e6bf6'::UUID", "text(36)", "f81d4fae-7dec-11d0-a765-00a0c91e6bf6"),
            ("[1, 2]", "text(6)", '"[1, 2]"'), ("{'a': {'b': 1}}", "text(15)", "{'a': {'b': 1}}"),
            ("INTERVAL 3 DAY", "text(6)", "3 days"))
        path = self.parquet("other.parquet", "SELECT " + ", ".join(
            f"{sql} AS v{place}" for place, (sql, _, _) in enumerate(columns)))
        done = self.on_both_roads("convert", path, "-", "--to", "csv", environment={"TZ": "Asia/Tokyo"})
        self.assertEqual(done.stdout.splitlines()[1], ",".join(text for _, _, text in columns))
        self.assertEqual([variable["type"] for variable in self.facts(path)["variables"]],
                         [kind for _, kind, _ in columns])

    def test_files_of_one_dataset(self):
        """A folder or a pattern of Parquet files; the fields of folders; files that do not fit."""
        for name, select in (("year=2024/b.parquet", "1 AS a, 'x' AS t"), ("year=2025/a.parquet", "'y' AS t, 2::BIGINT AS a"),
                             ("year=__HIVE_DEFAULT_PARTITION__/c.parquet", "3 AS a, 'z' AS t")):
            (self.folder / "sales" / name).parent.mkdir(parents=True)
            self.parquet("sales/" + name, "SELECT " + select)
        for name in ("_SUCCESS", ".b.crc", "_tmp"):
            self.write("sales/" + name, "x")
        both = "a,t,year\n1,x,2024\n2,y,2025\n"
        for path, expected in (("sales", both + "3,z,\n"), ("sales/year=20*/*.parquet", both), ("sales/year=20*", both),
                               ("sales/year=2024", "a,t\n1,x\n")):
            self.assertEqual(self.on_both_roads("convert", self.folder / path, "-").stdout, expected)
        self.assertEqual(self.run_hvhost("aggregate", self.folder / "sales", "--stat", "sum:year", "--format", "csv").stdout,
                         "sum_year\n4049\n")
        self.assertEqual(self.facts(self.folder / "sales")["cases"], 3)
        bad = self.folder / "sales/year=2025/bad.parquet"
        for select, says in (("1 AS a", ' lacks the field "t", which year=2024/b.parquet has'),
                             ("1 AS a, 't' AS t, 1 AS c", ' has the field "c", which year=2024/b.parquet lacks'),
                             ("1 AS a, 1 AS t", ': the field "t" is Integer, and String in year=2024/b.parquet'),
                             (b"x", " is not a Parquet file, or it is cut short"), (b"", ": the file is empty")):
            if isinstance(select, bytes):
                bad.write_bytes(select)
            else:
                self.parquet("sales/year=2025/bad.parquet", "SELECT " + select)
            said = self.on_both_roads("convert", self.folder / "sales", "-", status=3).stderr
            self.assertIn(f"{self.folder}/sales: year=2025/bad.parquet{says}", said)
        bad.rename(self.folder / "sales/d.parquet")
        self.assertIn('the folders of year=', self.run_hvhost("info", self.folder / "sales", status=3).stderr)
        for path, status, says in (("sales/no*", 3, "no file has a name of this form"), ("temp", 3, "no data files"),
                                   ("sales/*.csv", 3, "only Parquet files are read as a folder or by a pattern")):
            self.assertIn(says, self.run_hvhost("convert", self.folder / path, "-", status=status).stderr)

    def test_what_the_hosts_code_page_cannot_hold_is_told_and_counted(self):
        source = self.write("many.csv", "naïve\n" + "é表\n" * 12)
        done = self.run_hvhost("convert", source, "-", "--served", environment={"VEXA_CODEPAGE": "windows-1252"})
        self.assertEqual(done.stdout, "naïve\n" + "é?\n" * 12)
        told = done.stderr.splitlines()
        self.assertEqual(len(told), 11)
        self.assertIn('variable "naïve": the encoding windows-1252 cannot hold "é表"', told[0])
        self.assertIn("In all, 12 values", told[10])

    def test_what_a_case_cannot_hold_is_told_and_counted(self):
        for line, says in (("1," + "x" * 40000, r'variable "b": "x{60}\.\.\." is longer than'),
                           ("1,2024-05-06 07:08:09.000003", r'"b": 2024-05-06 07:08:09\.000003 has more digits'),
                           ("9007199254740993,y", r'variable "a": 9007199254740993 has more digits')):
            source = self.write("much.csv", f"a,b\n{line}\n")
            done = self.run_hvhost("convert", source, self.folder / "out.csv", "--force", "--strict", "--served",
                                   status=5)
            self.assertRegex(done.stderr, says)
            done = self.run_hvhost("convert", source, "-", "--strict")
            self.assertEqual(done.stdout, source.read_text())

    def test_the_host_serves_the_cases_only_where_it_is_needed(self):
        plain = self.write("plain.csv", "a,w\n1,2\n3,4\n")
        weighted = self.folder / "weighted.sav"
        self.run_hvhost("convert", plain, weighted, "--weight", "w")
        copy = self.folder / "copy.hvbf"
        self.run_hvhost("convert", plain, copy)
        for source, words, reason in (
                (plain, (), None), (copy, (), None), (plain, ("--where", "x.a > 1"), None),
                (plain, ("--served",), "--served is given"), (plain, ("--encoding", "utf-8"), "--encoding is given"),
                (self.write("semicolon.csv", "a;w\n1;2\n"), (), "; separates the fields"),
                (self.write("comma.csv", "a;w\n1,5;2\n"), ("--decimal-comma",), "--decimal-comma is given"),
                (weighted, (), "the file declares a weight")):
            with self.subTest(source=source.name, words=words):
                told = self.run_hvhost("aggregate", source, "--stat", "mean:a", "-v", *words).stderr
                says = "the engine reads the file" if reason is None else f"the host serves the cases, because {reason}"
                self.assertIn(f"hvhost: {source}: {says}\n", told)
        self.assertIn("--direct excludes --served",
                      self.run_hvhost("convert", plain, "-", "--direct", "--served", status=2).stderr)

    def test_fractions_of_a_second_are_the_same_on_both_roads(self):
        first = datetime.datetime(2024, 5, 6, 7, 8, 9)
        stamps = [str(first + datetime.timedelta(milliseconds=i)).rstrip("0") for i in range(1, 1000)]
        lines = [f"{first},{stamp}" for stamp in stamps]
        source = self.write("ms.csv", "\n".join(["first,t", *lines, ""]))
        self.assertEqual(self.on_both_roads("convert", source, "-").stdout, source.read_text())
        for line in lines[8::250]:
            seconds = "0." + line.rsplit(".")[1]
            done = self.on_both_roads("convert", source, "-", "--where", f"secondsBetween(x.first, x.t) == {seconds}")
            self.assertEqual(done.stdout, f"first,t\n{line}\n")
        done = self.on_both_roads("aggregate", source, "--by", "t", "--stat", "count", "--format", "csv")
        self.assertEqual(sorted(done.stdout.splitlines()[1:]), sorted(stamp + ",1" for stamp in stamps))
        interval, = json.loads(self.run_hvhost("describe", source, "first", "--date", "t", "--format", "json")
                               .stdout)["groups"][0]["timeIntervals"]
        self.assertEqual([interval[key] for key in ("unit", "increment", "missingPoints")], ["second", 0.001, 0])

    def test_moments_that_a_file_keeps_as_numbers(self):
        """Durations, and dates with a time of day, are served whole."""
        noon = 12219379200 + 18262 * 86400 + 43200  # 2020-01-01, in the host's seconds
        path = self.parquet("odd.sav", f"SELECT * FROM (VALUES (90000.5::DOUBLE, {noon}::DOUBLE, 2.0::DOUBLE), "
                            f"(-60, {noon + 86400}, 0), (99, {noon + 1800}, 1)) AS v(long, noon, w)",
                            dictionary=json.dumps({"weight": "w", "variables": [
                                {"name": "long", "print": {"type": 21, "width": 8}, "missing": {"values": [99]}},
                                {"name": "noon", "print": {"type": 20, "width": 11},
                                 "valueLabels": [{"value": noon, "label": "New Year"}],
                                 "missing": {"values": [noon + 1800]}}, {"name": "w"}]}))
        expected = ["long,noon,w", "90000.5,2020-01-01 12:00:00,2.0", "-60.0,2020-01-02 12:00:00,0.0", ",,1.0"]
        done = self.run_hvhost("convert", path, "-", "--to", "csv", "--user-missing", "exclude")
        self.assertEqual(done.stdout.splitlines(), expected)
        self.run_hvhost("convert", path, self.folder / "out.sav")
        self.assertEqual(self.records(self.folder / "out.sav")[1:3], expected[1:3])
        long, when, _ = self.facts(self.folder / "out.sav")["variables"]
        self.assertEqual((long["type"], long["format"]["type"], long["missing"]["values"]), ("time", 21, [99]))
        seconds = noon - 12219379200
        self.assertEqual((when["type"], when["valueLabels"], when["missing"]["values"]),
                         ("timestamp", [{"value": seconds, "label": "New Year"}], [seconds + 1800]))
        text = self.run_hvhost("describe", path, "long", "--date", "noon", "--by", "noon", "--format", "json").stdout
        group = json.loads(text)["groups"][0]
        self.assertEqual(group["by"][0]["value"], "2020-01-01 12:00:00")
        self.assertEqual((group["fields"][0]["maximum"], group["timeIntervals"][0]["start"]),
                         (90000.5, "2020-01-01 12:00:00"))

    def test_what_is_shown_is_what_is_written(self):
        source = self.write("big.csv", "k,n\na,9007199254740993\na,1\nb,5\n")
        words = ("aggregate", source, "--by", "k", "--stat", "sum:n", "--direct", "--strict")
        self.run_hvhost(*words, self.folder / "sums.csv", "--stat", "max:n")
        self.assertIn("a,9007199254740994,9007199254740993", (self.folder / "sums.csv").read_text())
        done = self.run_hvhost(*words, "--stat", "max:n", "--where", "x.n > 1", status=5)
        self.assertIn('whole numbers from 9007199254740992 on may be shown rounded: of "sum_n", "max_n"', done.stderr)
        self.run_hvhost(*words, "--where", "x.n < 10")

    def test_what_a_column_cannot_be_is_no_reason_to_stop(self):
        """A missing value with a fraction of whole numbers; a format that shows little of a text."""
        path = self.parquet("odd.sav", "SELECT 1 AS n, 'abcdef' AS t", dictionary=json.dumps({"variables": [
            {"name": "n", "missing": {"values": [1.5]}},
            {"name": "t", "type": "text", "width": 8, "print": {"type": 1, "width": 3},
             "valueLabels": [{"value": "abcdef", "label": "one"}, {"value": "abcxyz", "label": "two"}]}]}))
        for road in ROADS.values():
            self.run_hvhost("convert", path, self.folder / "out.sav", "--force", *road)
            labels = self.facts(self.folder / "out.sav")["variables"][1]["valueLabels"]
            self.assertEqual([label["value"] for label in labels], ["abcdef", "abcxyz"])

    def test_a_csv_file_is_read_by_one_rule(self):
        """What is read: its text, and the records; what is refused: the place, and the reason."""
        rows = ''.join(f"{row},x\n" for row in range(30000))  # more than the engine looks at ahead
        for text, result in (
                (b'"a\r\nx",b\n1,2\n', b'"a\r\nx",b\n1,2\n'), (b'"a\nx",b\r\n1,2\r\n', b'"a\nx",b\n1,2\n'),
                (b'"a\rx",b\n1,2', b'"a\rx",b\n1,2\n'), (b'a, "b"\r1, "x,y" \r', b'a,b\n1,"x,y"\n'),
                (b'\n\na\n1\n\n3\n\n', b'a\n1\n\n3\n\n'),
                (b'"Pedro "the" legend",b\n1,2\n', '1:9: text follows a closing quote'),
                ('é,b\n"é "the" x",2\n'.encode(), '2:5: text follows a closing quote'),
                (b'a,b\n1, "x" "y"\n', '2:8: text follows'), (b'a,b\n"x\ny"z,2\n', '3:3: text follows'),
                (b'a,b\n1,"2\n', '2:3: a quote is not closed'), (b'a,"b\n1,2\n', '1:3: a quote is not closed'),
                (b'a,b\n1,2\r\n3,4\n', '2: the line ends in CR LF, and the first one in LF'),
                (b'a,b\r\n1,2\n', '2: the line ends in LF, and the first one in CR LF'),
                (b'\r\na,b\n1,2\n', '2: the line ends in LF'), (b'a,b\n1,2,3\n"4"x,5\n', '2: the record has 3'),
                (b'a,b\n\xff,2\n3,"4"x\n', '2: the text is not UTF-8'),
                (f'a,b\n{rows}9,"x"y\n'.encode(), '30002:6: text follows'),
                (f'a,b\n{rows}9\n'.encode(), '30002: the record has 1 field'),
                (f'a,b\n{rows}9,8\r\n'.encode(), '30002: the line ends in CR LF')):
            source, out = self.write("form.csv", text), self.folder / "out.csv"
            with self.subTest(text[-60:]):
                if isinstance(result, str):
                    done = self.on_both_roads("convert", source, out, "--force", status=3)
                    self.assertIn(f"form.csv:{result}", done.stderr)
                    continue
                for road in ROADS.values():
                    self.run_hvhost("convert", source, out, "--force", *road)
                    self.assertEqual(out.read_bytes(), result)
                    records = json.loads(self.run_hvhost("info", source, "--format", "json").stdout)["cases"]
                    count = self.run_hvhost("aggregate", source, "--stat", "count", "--format", "csv", *road)
                    self.assertEqual(count.stdout.split()[1], str(records))

    def test_texts_that_are_not_there_and_zeros_in_texts(self):
        told = json.dumps({"variables": [{"name": "t", "type": "text", "width": 8}]})
        path = self.parquet("gaps.sav", "SELECT unnest(['x', NULL, 'a' || chr(0) || 'b']) AS t", dictionary=told)
        self.assertEqual(self.on_both_roads("aggregate", path, "--stat", "count:t", "--format", "csv").stdout,
                         "count_t\n2\n")
        field = json.loads(self.run_hvhost("describe", path, "--format", "json").stdout)["groups"][0]["fields"][0]
        self.assertEqual([value["value"] for value in field["values"]], ["a\ufffdb", "x"])

    def test_encodings(self):
        for encoding, text in (("Shift_JIS", "表示,ｶﾅ\n能,1\n"), ("GB18030", "中,𠀀\n€,1\n"),
                               ("windows-1252", "Größe,„x“\n€,1\n"), ("ISO-8859-15", "œ,é\n€,1\n")):
            with self.subTest(encoding):
                path = self.write("text.csv", text.encode(encoding))
                self.assertEqual(self.run_hvhost("convert", path, "-", "--encoding", encoding).stdout, text)
        bad = self.write("bad.csv", b"a,b\n1,x\n2,\x81\x20\n")
        for options in (("--encoding", "Shift_JIS"), (), ("--direct",)):
            with self.subTest(options):
                done = self.run_hvhost("convert", bad, "-", *options, status=3)
                self.assertRegex(done.stderr, r"bad\.csv:3: the (file is not text in Shift_JIS|text is not UTF-8)\n")


if __name__ == "__main__":
    unittest.main()
