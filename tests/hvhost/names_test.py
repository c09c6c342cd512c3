"""One rule finds the names of variables in all commands and options: an exact match, else the only
match that ignores letter case."""
import re
import shlex
import shutil
import unittest

from hvhost_case import DATA, Case

FILES = ("weather.csv", "penguins.csv", "penguins.pmml", "colonies.csv", "shops.csv",
         *("islands." + ending for ending in ("shp", "shx", "dbf", "prj", "cpg")))
# Commands with the names that they look up in brackets.
COMMANDS = [
    "convert weather.csv - --to csv --keep [wind],[date]",
    "convert weather.csv - --to csv --derive Gust=x.wind --keep [Gust]",
    "convert weather.csv out.hvbf --force --weight [wind] --keep [wind],date",
    "convert weather.csv - --to csv --direct --keep [wind],[date]",
    "convert weather.sav - --to csv --direct --keep [wind],[date]",
    "aggregate weather.csv --by [weather] --stat count",
    "aggregate weather.csv --direct --by [weather] --stat mean:[wind]",
    "aggregate weather.csv --stat mean:[wind] --stat p90:[temp_max]:high --unweighted",
    "aggregate weather.csv --stat mean:[temp_max] --weight [wind]",
    "describe weather.csv [wind] [date] --format json",
    "describe weather.csv wind --by [weather] --weight [temp_max] --date [date] --format json",
    "score penguins.pmml penguins.csv --keep [species] --target [size]",
    "map points colonies.csv - --x [east] --y [north] --z [east]",
    "map match islands.shp colonies.csv --keys [KEY]=[island] --format json",
    "tcm train shops.csv -o out.tcm --force --time [month] --dims [region]"
    " --metrics [sales],[visits] --aggregate [sales]=mean",
]
# Two results that differ only in letter case.
MODEL = """<PMML version="4.4" xmlns="http://www.dmg.org/PMML-4_4"><DataDictionary>
<DataField name="wind" optype="continuous" dataType="double"/></DataDictionary>
<TransformationDictionary>%s</TransformationDictionary></PMML>""" % "".join(
    f'<DerivedField name="{name}" dataType="double"><Apply function="*"><FieldRef field="wind"/>'
    f"<Constant>{factor}</Constant></Apply></DerivedField>"
    for name, factor in (("Gust", 2), ("gust", 3)))
NAME = re.compile(r"\[(\w+)\]")


class Names(Case):
    def setUp(self):
        super().setUp()
        for name in FILES:
            shutil.copy(DATA / name, self.folder)
        self.run_line("convert weather.csv weather.sav")

    def run_line(self, line, **more):
        return self.run_hvhost(*shlex.split(line), cwd=self.folder, **more)

    def test_letter_case_does_not_count(self):
        for line in COMMANDS:
            with self.subTest(line):
                exact = self.run_line(NAME.sub(r"\1", line)).stdout
                other = self.run_line(NAME.sub(lambda name: name[1].swapcase(), line)).stdout
                self.assertEqual(other, exact)

    def test_unknown_names_are_faults_with_the_nearest_name(self):
        for line in COMMANDS:
            for wrong in NAME.finditer(line):
                name = wrong[1]
                text = line[:wrong.start()] + name + "q" + line[wrong.end():]
                with self.subTest(text):
                    errors = self.run_line(NAME.sub(r"\1", text), status=2).stderr
                    self.assertRegex(errors, f'there is no (variable|field|result) "{name}q"')
                    self.assertIn(f"did you mean {name}?", errors)

    def test_names_that_differ_only_in_letter_case(self):
        self.write("gusts.pmml", MODEL)
        line = "score gusts.pmml weather.csv --keep wind --target "
        for name, factor in (("Gust", 2), ("gust", 3)):
            first = self.run_line(line + name).stdout.splitlines()[1].split(",")
            self.assertAlmostEqual(float(first[1]), factor * float(first[0]))
        errors = self.run_line(line + "GUST", status=2).stderr
        self.assertIn('--target GUST: the result "GUST" is ambiguous', errors)
        self.assertIn("Gust, gust", errors)


if __name__ == "__main__":
    unittest.main()
