"""What people read is in the language of the locale; what programs read is in English in every locale."""
import json
import os
import pathlib
import re
import subprocess
import unittest

from hvhost_case import DATA, HOME, Case

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
ISLANDS = DATA / "islands.shp"
GERMAN = {"LC_ALL": "de_DE.UTF-8"}
PLACE = re.compile(r"[\^%]\d")


def cells(text):
    """The rows of a table of text, without its lines."""
    return [[cell.strip() for cell in line.split("│")[1:-1]] for line in text.splitlines() if line.startswith("│")]


class Strings(unittest.TestCase):
    def setUp(self):
        self.tables = {language: json.loads((HOME / "strings" / f"{language}.json").read_text(encoding="utf-8"))
                       for language in ("de", "en")}

    def test_both_languages_have_the_same_texts_with_the_same_places(self):
        self.assertEqual(self.tables["de"].keys(), self.tables["en"].keys())
        for key, german in self.tables["de"].items():
            self.assertEqual(sorted(PLACE.findall(german)), sorted(PLACE.findall(key)), key)

    def test_the_texts_in_the_code_are_in_the_tables(self):
        text = r'"(?:[^"\\]|\\.)*"'
        call = re.compile(rf"\b(?:word|sentence|wording|translate|LookUp|counted)\((?:[\w.]+, )?\s*((?:{text}\s*)+)"
                          rf"(?:,\s*((?:{text}\s*)+))?")
        missing = set()
        for path in [*ROOT.glob("hvhost/*/*.cpp"), *ROOT.glob("report/*/*.cpp")]:
            for found in call.findall(path.read_text(encoding="utf-8")):
                keys = ["".join(map(json.loads, re.findall(text, part))) for part in found]
                # The unit of time completes these keys.
                missing |= {key for key in keys if key and not key.startswith("every ")} - self.tables["en"].keys()
        self.assertEqual(missing, set())


class Results(Case):
    def german(self, *words, **more):
        return self.run_hvhost(*words, environment=GERMAN, **more)

    def test_info(self):
        """A weight, a split, labels, missing values and levels; programs get the same as anywhere."""
        number = {"print": {"type": 5, "width": 8, "decimals": 1}, "level": "ordinal"}
        dictionary = {"schema": 1, "weight": "w", "split": ["t"], "variables": [
            {"name": "w"}, {"name": "t", "type": "text", "width": 5, "level": "nominal"},
            {"name": "n", **number, "label": "Note", "valueLabels": [{"value": 1.5, "label": "gut"}],
             "missing": {"range": {"from": 90.5, "to": None}, "values": [-1.5]}}]}
        known = self.folder / "known.sav"
        subprocess.run([os.environ["HV_RUN_SQL"],
                        f"COPY (SELECT * FROM (VALUES (2::DOUBLE, 'a', 1.5::DOUBLE)) AS t(w, t, n)) TO '{known}' "
                        f"(FORMAT PARQUET, KV_METADATA {{'hvinteg.dictionary': '{json.dumps(dictionary)}'}})"], check=True)
        shown = self.german("info", known, "--width", 200).stdout
        self.assertIn(": 1 Fall, 3 Variablen, Zeichencodierung UTF-8\ngewichtet mit w\naufgeteilt nach t\n", shown)
        head, *rows = cells(shown)
        self.assertEqual(head, ["Variable", "Typ", "Messniveau", "Rolle", "Beschriftung", "fehlende Werte",
                                "Beschriftung der Werte"])
        self.assertEqual(rows[0][:4], ["w", "Zahl", "metrisch", "Eingabe"])
        self.assertEqual(rows[1][:4], ["t", "Text(5)", "nominal", "Eingabe"])
        self.assertEqual(rows[2], ["n", "Zahl", "ordinal", "Eingabe", "Note", "-1,5, 90,5 bis höchster Wert", "1,5 = gut"])
        for form in ("csv", "json"):
            words = ("info", known, "--format", form)
            self.assertEqual(self.german(*words).stdout, self.run_hvhost(*words).stdout)

    def test_info_of_a_text_file(self):
        source = self.write("in.csv", 'a\tb\tp\n1\tyes\t5 $\n2\tno\t6\nNA\tyes\t\n')
        shown = self.german("info", source).stdout
        for line in ("in.csv: 3 Fälle, 3 Variablen, Zeichencodierung UTF-8, Trennzeichen Tabulator\n",
                     'a ist Text wegen "NA" in Datensatz 3; steht das für einen fehlenden Wert, so gibt man ihn mit --missing an\n',
                     'b ist Text, und alle Werte sind Wörter wie "yes" in Datensatz 1; --type b=boolean liest sie als 1 und 0\n',
                     'p ist Text wegen des Zeichens in "5 $" in Datensatz 1; --type p=real liest Zahlen mit solchen Zeichen\n'):
            self.assertIn(line, shown)
        source.write_text(source.read_text(encoding="utf-8").replace("\t", ","), encoding="utf-8")
        self.assertIn('a ist Text wegen "NA" in Zeile 4; ', self.german("info", source).stdout)
        # Messages on standard error are those that people search for.
        self.assertIn('a is text because of "NA" on line 4, so', self.german("describe", source, "a", "b", "--pairs").stderr)

    def test_map_match(self):
        words = ["map", "match", ISLANDS, DATA / "colonies.csv", "--keys", "KEY=island"]
        self.assertRegex(self.german(*words, "--limit", 0).stdout,
                         r"\Ain beiden: 3\nnur in der Karte: 1, davon 0 gezeigt\nnur in den Daten: 1, davon 0 gezeigt\n\Z")
        self.assertRegex(self.german(*words).stdout, r"nur in der Karte: 1\n[^\n]*\n│ KEY +│\n")
        for form in ("csv", "json"):
            self.assertEqual(self.german(*words, "--format", form).stdout, self.run_hvhost(*words, "--format", form).stdout)

    def test_join_and_append(self):
        left = self.write("left.csv", "id,records\n1,10\n2,20\n4,40\n,50\n")
        right = self.write("right.csv", "id,c\n2,p\n2,q\n3,r\n1,s\n")
        words = ["join", "left.csv", "right.csv", "-", "--on", "id", "--report"]
        done = self.german(*words, "keys.txt", cwd=self.folder)
        self.assertEqual(done.stderr, "hvhost: in beiden Dateien: 2 Schlüssel\n"
                                      "hvhost: right.csv wiederholt 1 Schlüssel: 1 Datensatz von left.csv, im Ergebnis 2\n"
                                      "hvhost: nur in left.csv: 2 Schlüssel, 2 Datensätze: 4, (fehlend)\n"
                                      "hvhost: nur in right.csv: 1 Schlüssel, 1 Datensatz: 3\n")
        self.assertEqual(cells((self.folder / "keys.txt").read_text(encoding="utf-8"))[:2],
                         [["Seite", "id", "Datensätze"], ["links", "4", "1"]])
        self.german(*words, "keys.csv", cwd=self.folder)
        self.assertEqual((self.folder / "keys.csv").read_text(encoding="utf-8"),
                         "side,id,records\nleft,4,1\nleft,,1\nright,3,1\n")
        # The name of a key is data, whatever it is.
        self.german("join", left, right, "-", "--on", "records=id", "--report", self.folder / "r.txt")
        self.assertEqual(cells((self.folder / "r.txt").read_text(encoding="utf-8"))[0], ["Seite", "records", "Datensätze"])
        many = self.write("many.csv", ",".join("adefghi") + "\n" + ",".join("1234567") + "\n")
        self.assertIn('hat kein Feld "a", "d", "e", "f", "g" und 2 weitere, es fehlt in den Datensätzen\n',
                      self.german("append", right, many, "-").stderr)

    def test_totals(self):
        words = ["aggregate", DATA / "penguins.csv", "--by", "species", "--stat", "count", "--totals"]
        self.assertEqual(cells(self.german(*words).stdout)[-1], ["(alle)", "344"])
        self.assertEqual(self.german(*words, "--format", "csv").stdout.splitlines()[-1], ",1,344")


if __name__ == "__main__":
    unittest.main()
