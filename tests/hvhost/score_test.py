"""hvhost score: its figures against those that Python computes from the same file."""
import csv
import datetime
import io
import json
import shlex
import shutil
import time
import unittest

from hvhost_case import DATA, Case

PENGUINS = DATA / "penguins.csv"
MODEL = DATA / "penguins.pmml"
PMML = """<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4">
<DataDictionary>%s</DataDictionary><TransformationDictionary>%s</TransformationDictionary></PMML>"""
# A ratio that not every row has, a date, and a number made from a date.
FIELDS = "".join(f'<DataField name="{name}" optype="continuous" dataType="{kind}"/>'
                 for name, kind in (("a", "double"), ("b", "double"), ("day", "date")))
STEPS = """<DerivedField name="ratio" dataType="double"><Apply function="/"><FieldRef field="a"/>
<FieldRef field="b"/></Apply></DerivedField>
<DerivedField name="same" dataType="date"><FieldRef field="day"/></DerivedField>
<DerivedField name="since" dataType="integer"><Apply function="dateDaysSinceYear">
<FieldRef field="day"/><Constant>2000</Constant></Apply></DerivedField>"""
ROWS = "id,A,b,day\n1,3,2,2012-03-04\n2,1,0,2012-03-05\n3,,4,\n4,1,8,1582-10-15\n"
SCORED = ["id,ratio,same,since", "1,1.5,2012-03-04,4446", "2,,2012-03-05,4447", "3,,,",
          f"4,0.125,1582-10-15,{(datetime.date(1582, 10, 15) - datetime.date(2000, 1, 1)).days}"]
TEXT = ('<DataField name="sex" dataType="string"/>',
        '<DerivedField name="t" dataType="string"><FieldRef field="sex"/></DerivedField>')
FAULTS = [
    ("penguins.pmml", 2, ["IN is required"]),
    ("none.pmml penguins.csv", 3, ["none.pmml: no such file"]),
    ("penguins.csv penguins.csv", 3, ["penguins.csv: the model is not XML"]),
    ("other.pmml penguins.csv", 3, ["other.pmml: this is a model of another kind"]),
    ("cycle.pmml penguins.csv", 3, ['cycle.pmml: derived field "r": it is made from itself']),
    ("text.pmml penguins.csv", 3, ['text.pmml: the result "t" is a text']),
    ("penguins.pmml weather.csv", 3, ['weather.csv: there is no variable "species"', "--derive"]),
    ("penguins.pmml weather.csv --direct", 3, ['weather.csv: there is no variable "species"']),
    ("wind.pmml weather.csv", 3, ['"weather" is a string, and wind.pmml needs a real']),
    ("penguins.pmml penguins.csv --target siz", 2, ["--target siz", "did you mean size?"]),
    ("penguins.pmml penguins.csv --keep specis", 2, ["--keep specis", "did you mean species?"]),
    ("penguins.pmml penguins.csv --derive size=1", 2, ["size: two columns", "--keep"]),
    ("penguins.pmml penguins.csv -o penguins.csv", 2, ["penguins.csv: the file exists"]),
    ("penguins.pmml penguins.csv --where 'x.sx > 1'", 2, ["--where"]),
]


def number(text):
    return float(text) if text else None


class Score(Case):
    def scored(self, *words, **more):
        return list(csv.DictReader(io.StringIO(self.run_hvhost("score", *words, **more).stdout)))

    def expected(self, row):
        length, depth, flipper, mass = (number(row[name]) for name in (
            "beak_length_mm", "beak_depth_mm", "flipper_length_mm", "body_mass_g"))
        return {"beak_ratio": None if length is None else length / depth,
                "flipper_z": None if flipper is None else (flipper - 200) / 14,
                "size": None if mass is None else 1 + (mass >= 3500) + (mass >= 5000),
                "is_gentoo": float(row["species"] == "Gentoo"),
                "is_female": {"MALE": 0.0, "FEMALE": 1.0, "": 0.5}.get(row["sex"])}

    def test_every_row_and_target(self):
        given = self.rows(PENGUINS)
        for direct in ((), ("--direct",)):
            rows = self.scored(MODEL, PENGUINS, *direct)
            self.assertEqual(len(rows), len(given))
            for row, source in zip(rows, given):
                for name, value in self.expected(source).items():
                    if value is None:
                        self.assertEqual(row[name], "", source)
                    else:
                        self.assertAlmostEqual(float(row[name]), value, places=12, msg=source)
                self.assertEqual(row["species"], source["species"])

    def test_what_is_kept_and_how_it_is_shown(self):
        words = (MODEL, PENGUINS, "--limit", 2, "--keep", "Species", "--target", "IS_female,size")
        self.assertEqual(self.run_hvhost("score", *words).stdout,
                         "species,is_female,size\nAdelie,0,2\nAdelie,1,2\n")
        document = json.loads(self.run_hvhost("score", *words, "--format", "json").stdout)
        self.assertEqual(document, {"schema": 1, "rows": [
            {"species": "Adelie", "is_female": 0, "size": 2},
            {"species": "Adelie", "is_female": 1, "size": 2}]})
        self.assertIn("│ is_female │", self.run_hvhost("score", *words, "--format", "text").stdout)
        target = self.folder / "scored.csv"
        self.assertEqual(self.run_hvhost("score", *words, "-o", target).stdout, "")
        self.assertEqual(len(self.rows(target)), 2)
        # The model from standard input; a variable that it needs is made on the way.
        weather = ('x.temp_max - x.temp_min', PMML % (
            '<DataField name="span" dataType="double"/>',
            '<DerivedField name="half" dataType="double"><NormContinuous field="span">'
            '<LinearNorm orig="0" norm="0"/><LinearNorm orig="2" norm="1"/></NormContinuous>'
            '</DerivedField>'))
        rows = self.scored("-", DATA / "weather.csv", "--derive", f"span={weather[0]}",
                           text=weather[1])
        self.assertAlmostEqual(float(rows[0]["half"]), (12.8 - 5.0) / 2)

    def test_rows_that_cannot_be_scored(self):
        model = self.write("m.pmml", PMML % (FIELDS, STEPS))
        data = self.write("d.csv", ROWS)
        for words, status in (((), 0), (("--strict",), 5)):
            done = self.run_hvhost("score", model, data, "--keep", "id", *words, status=status)
            self.assertEqual(done.stdout.splitlines(), SCORED)
            self.assertIn("warning: 1 of 4 rows have results that are not valid", done.stderr)

    def test_a_millisecond_equals_a_constant_of_the_model(self):
        """On both roads, whatever scales the timestamp has gone through."""
        stamps = [f"2024-02-29 12:34:56.{i:03}" for i in range(1, 1000)]
        field = '<DataField name="t" optype="continuous" dataType="dateTime"/>'
        listed = "".join(f"<Constant>{stamp}</Constant>" for stamp in stamps[::2])
        model = self.write("m.pmml", PMML % (field, '<DerivedField name="r" dataType="double"><Apply function="isIn">'
                                             f'<FieldRef field="t"/>{listed}</Apply></DerivedField>'))
        data = self.write("d.csv", "t\n" + "\n".join(stamps) + "\n")
        for direct in ((), ("--direct",)):
            rows = self.scored(model, data, "--target", "r", *direct)
            self.assertEqual([row["r"] for row in rows], [str((i + 1) % 2) for i in range(999)])

    def test_targets_by_their_exact_names(self):
        """A result that is not valid and not asked for is nobody's concern."""
        steps = STEPS.replace('"ratio"', '"r"').replace('"since"', '"R"')
        model, data = self.write("m.pmml", PMML % (FIELDS, steps)), self.write("d.csv", ROWS)
        done = self.run_hvhost("score", model, data, "--keep", "id", "--target", "R", "--strict")
        self.assertEqual(done.stdout.splitlines()[:3], ["id,R", "1,4446", "2,4447"])
        done = self.run_hvhost("score", model, data, "--keep", "id", "--target", "r", "--strict", status=5)
        self.assertEqual(done.stdout.splitlines()[:3], ["id,r", "1,1.5", "2,"])

    def test_each_fault_names_the_thing(self):
        place = self.folder / "place"
        shutil.copytree(DATA, place)
        (place / "other.pmml").write_text('<PMML version="4.2"><TreeModel/></PMML>')
        (place / "cycle.pmml").write_text(PMML % (
            "", '<DerivedField name="r" dataType="double"><FieldRef field="r"/></DerivedField>'))
        (place / "text.pmml").write_text(PMML % TEXT)
        (place / "wind.pmml").write_text(PMML % (
            '<DataField name="weather" dataType="double"/>',
            '<DerivedField name="t" dataType="double"><FieldRef field="weather"/></DerivedField>'))
        before = sorted(path.name for path in place.iterdir())
        for line, status, words in FAULTS:
            with self.subTest(line):
                done = self.run_hvhost("score", *shlex.split(line), status=status, cwd=place)
                for word in words:
                    self.assertIn(word, done.stderr)
                self.assertEqual(done.stdout, "")
        self.assertEqual(sorted(path.name for path in place.iterdir()), before)

    def test_ctrl_c_while_rows_are_scored(self):
        """The reader of the scored rows stops to read, so that the program is among them."""
        data = self.write("big.csv", "a,b,day\n" + "1,2,2012-03-04\n" * 300000)
        model = self.write("m.pmml", PMML % (FIELDS, STEPS))
        process = self.start_hvhost("score", model, data)
        self.assertEqual(process.stdout.readline(), "a,b,day,ratio,same,since\n")
        time.sleep(0.2)
        self.assertIn("interrupted", self.stop(process))


if __name__ == "__main__":
    unittest.main()
