"""hvhost describe: its figures against those that Python computes from the same file."""
import csv
import io
import json
import os
import re
import shlex
import shutil
import signal
import statistics
import subprocess
import time
import unittest

from hvhost_case import DATA, Case
from page_reader import Page

WEATHER = DATA / "weather.csv"
PENGUINS = DATA / "penguins.csv"
# Makes a file of the host's own, which knows a split, missing values and labels.
FINDS = "site,grade\n2,2\n1,9\n2,3\n1,2\n,1\n"
KNOWN = """read({"dataSource": "finds"})
    -> updateDataModel({"fields": [
        {"name": "site", "role": "split", "measure": "nominal",
         "valueLabels": [{"value": "1", "displayLabel": "north"}]},
        {"name": "grade", "measure": "ordinal", "displayLabel": "Grade of the find",
         "valueLabels": [{"value": "2", "displayLabel": "good"}], "missingValues": {"Value": ["9"]}}]})
    -> write({"dataDestination": "file://%s", "type": "hvbf", "mode": "overwrite"})
"""
FAULTS = [
    ("weather.csv wnd", 2, ['weather.csv: there is no variable "wnd"', "did you mean wind?"]),
    ("weather.csv wind WIND", 2, ["WIND: it is named twice"]),
    ("weather.csv --by weather,Weather", 2, ["--by Weather: it is named twice"]),
    ("weather.csv --by sky", 2, ['--by sky: there is no variable "sky"']),
    ("weather.csv --weight kilos", 2, ["--weight kilos"]),
    ("weather.csv --weight weather", 2, ["--weight weather: a weight is a number", "string"]),
    ("weather.csv --weight date", 2, ["--weight date: a weight is a number", "date"]),
    ("weather.csv wind --weight wind", 2, ["wind: this variable weighs the cases"]),
    ("one.csv --weight a", 2, ["no variable to describe"]),
    ("weather.csv --date weather", 2, ["--date weather: this is a text"]),
    ("weather.csv --date date,wind", 2, ["--date wind: dates and numbers do not go together"]),
    ("weather.csv --distinct -2", 2, ["--distinct: -2"]),
    ("weather.csv --percentiles 5,101", 2, ["--percentiles", "101"]),
    ("weather.csv --outlier-method far", 2, ["--outlier-method", "far"]),
    ("weather.csv --target sky", 2, ['--target sky: there is no variable "sky"']),
    ("weather.csv -o one.csv", 2, ["one.csv: the file exists", "--force"]),
    ("weather.csv -o none/a.json", 1, ["none/a.json: the folder"]),
    ("weather.csv --direct", 2, ["--direct"]),
    ("none.csv", 3, ["none.csv: no such file"]),
    ("ragged.csv", 3, ["ragged.csv:3"]),
]


def moments(values, weights=None):
    """By the definitions, value by value."""
    weights = weights or [1] * len(values)
    total = sum(weights)
    mean = sum(w * x for x, w in zip(values, weights)) / total
    second, third, fourth = (sum(w * (x - mean) ** k for x, w in zip(values, weights)) for k in (2, 3, 4))
    sd = (second / (total - 1)) ** 0.5
    return {"mean": mean, "standardDeviation": sd, "variance": sd ** 2,
            "skewness": total * third / ((total - 1) * (total - 2) * sd ** 3),
            "kurtosis": (total * (total + 1) * fourth - 3 * (total - 1) * second ** 2)
            / ((total - 1) * (total - 2) * (total - 3) * sd ** 4)}


class Describe(Case):
    def groups(self, *words):
        document = json.loads(self.run_hvhost("describe", *words, "--format", "json").stdout)
        self.assertEqual(document["schema"], 1)
        return document["groups"]

    def fields(self, *words):
        group, = self.groups(*words)
        return {field["name"]: field for field in group["fields"]}

    def check_numbers(self, field, cells):
        values = [float(cell) for cell in cells if cell]
        low, middle, high = statistics.quantiles(values, n=4, method="inclusive")
        expected = dict(moments(values), minimum=min(values), maximum=max(values), firstQuartile=low,
                        median=middle, thirdQuartile=high)
        for name, value in expected.items():
            self.assertAlmostEqual(field[name], value, msg=f"{field['name']} {name}", delta=1e-9 * abs(value))
        self.assertEqual((field["valid"], field["missing"]), (len(values), len(cells) - len(values)))
        self.assertEqual(field.get("distinct", ">"), len(set(values)) if len(set(values)) <= 100 else ">")

    def check_texts(self, field, cells):
        self.assertEqual([(entry["value"], entry["count"]) for entry in field["values"]],
                         [(value, cells.count(value)) for value in sorted(set(cells) - {""})])

    def test_all_variables(self):
        for path, texts in ((WEATHER, ("weather",)), (PENGUINS, ("species", "island", "sex"))):
            rows = self.rows(path)
            fields = self.fields(path)
            self.assertEqual(list(fields), list(rows[0]))
            for name, field in fields.items():
                cells = [row[name] for row in rows]
                if name == "date":
                    self.assertEqual((field["minimum"], field["maximum"]), (min(cells), max(cells)))
                elif name in texts:
                    self.check_texts(field, cells)
                else:
                    self.check_numbers(field, cells)

    def test_groups_of_cases_in_any_order(self):
        groups = self.groups(PENGUINS, "body_mass_g", "--by", "sex,species")
        cells = {}
        for row in self.rows(PENGUINS):
            cells.setdefault((row["sex"], row["species"]), []).append(row["body_mass_g"])
        self.assertEqual([tuple(part["value"] for part in group["by"]) for group in groups], sorted(cells))
        for group, key in zip(groups, sorted(cells)):
            self.assertEqual(group["cases"], len(cells[key]))
            values = [float(cell) for cell in cells[key] if cell]
            self.assertAlmostEqual(group["fields"][0]["mean"], statistics.mean(values))
        table = self.run_hvhost("describe", PENGUINS, "body_mass_g", "--by", "sex", "--format", "csv").stdout
        self.assertEqual([row["sex"] for row in csv.DictReader(io.StringIO(table))],
                         sorted({key[0] for key in cells}))

    def test_many_groups_share_jobs(self):
        """A group among hundreds is described as alone, also one whose cases have no weight, and named in messages."""
        lines = [f"{g},{'' if (g + n) % 9 == 0 else (g * 31 + n * n) % 17 / 4},{(g * n) % 4},{'ab'[n % 2]}"
                 for n in range(7) for g in range(1100)]
        path = self.write("many.csv", "g,v,w,t\n" + "\n".join(lines) + "\n")
        done = self.run_hvhost("describe", path, "v", "t", "--by", "g", "--weight", "w", "--date", "v", "--percentiles", "30",
                               "--format", "json", "--log", self.folder / "log")
        groups = json.loads(done.stdout)["groups"]
        self.assertEqual([group["by"][0]["value"] for group in groups], list(range(1100)))
        self.assertIn('warning: g = 0: descriptives:descriptives: the values of "v" make up', done.stderr)
        self.assertEqual((self.folder / "log").read_text(encoding="utf-8").count("job: "), 3)
        for number in (0, 1, 499, 500, 1099):
            alone = self.write("alone.csv", "g,v,w,t\n" + "\n".join(
                line for line in lines if line.startswith(f"{number},")) + "\n")
            known = ["--type", "v=real"]
            group, = self.groups(alone, "v", "t", "--by", "g", "--weight", "w", "--date", "v", "--percentiles", "30", *known)
            self.assertEqual(group, groups[number])

    def test_keys_that_are_numbers_and_dates(self):
        """A missing number is a group, the first one; the two zeros are one number."""
        path = self.write("keys.csv", "k,d,v\n2,2024-02-29,1\n-0.0,1582-10-15,2\n,,3\n0.0,2024-02-29,4\n-1.5,,5\n"
                                      "-0.0,2024-02-29,6\n")
        for key, expected in (("k", [(None, 3), (-1.5, 5), (0, 4), (2, 1)]),
                              ("d", [(None, 4), ("1582-10-15", 2), ("2024-02-29", 11 / 3)])):
            groups = self.groups(path, "v", "--by", key)
            self.assertEqual([(group["by"][0]["value"], group["fields"][0]["mean"]) for group in groups],
                             expected)

    def test_numbers_without_a_fraction_may_be_large(self):
        field = self.fields(self.write("large.csv", "v\n1e18\n1e19\n"))["v"]
        self.assertEqual((field["minimum"], field["maximum"], field["mean"]), (1e18, 1e19, 5.5e18))

    def test_many_variables_are_described_as_each_alone(self):
        """Also those beside the ends of the parts in which many are described."""
        rows = [",".join("" if (i + row) % 11 == 0 else "abc"[row % 3] if i % 50 == 0 else
                         f"{row * 7919 % (i + 130) / 8}" for i in range(220)) for row in range(150)]
        path = self.write("wide.csv", ",".join(f"v{i}" for i in range(220)) + "\n" + "\n".join(rows) + "\n")
        for weight in ((), ("--weight", "v7")):
            whole = self.fields(path, *weight)
            self.assertEqual(len(whole), 220 - len(weight) // 2)
            for name in ("v0", "v50", "v99", "v100", "v101", "v199", "v200", "v219"):
                self.assertEqual(self.fields(path, name, *weight)[name], whole[name])
        page = self.folder / "wide.html"
        self.run_hvhost("describe", path, "-o", page)
        text = page.read_text(encoding="utf-8")
        for anchor, count in (('<figure class="chart"', 220), ('"v219"', 1)):
            self.assertGreaterEqual(text.count(anchor), count)

    def test_weight(self):
        """Each case counts as often as its weight says; those without a positive weight are left out."""
        cases = [(4.5, 2), (1.0, 1), (7.25, 0.5), (3.0, 3), (9.0, 0), (8.0, -1), (6.0, None)]
        path = self.write("weighted.csv", "v,w\n" + "".join(f"{v},{'' if w is None else w}\n" for v, w in cases))
        kept = [(v, w) for v, w in cases if w and w > 0]
        group, = self.groups(path, "--weight", "w")
        self.assertEqual((group["cases"], group["casesLeftOut"], group["weight"]), (4, 3, 6.5))
        field, = group["fields"]
        for name, value in moments(*map(list, zip(*kept))).items():
            self.assertAlmostEqual(field[name], value, msg=name)
        self.assertEqual((field["minimum"], field["maximum"], field["validWeight"]), (1, 7.25, 6.5))
        text = self.run_hvhost("describe", path, "--weight", "W").stdout
        self.assertIn("Cases: 4\nWeighted by w\nSum of weights: 6.5\nCases left out, without a weight: 3\n", text)

        # The file's own weight, group by group and with an interval, gives the same.
        day = self.write("days.csv", "day,g,v,w\n" + "".join(
            f"2024-01-{n + 1:02},{n % 2},{v},{'' if w is None else w}\n" for n, (v, w) in enumerate(cases)))
        self.run_hvhost("convert", day, self.folder / "own.sav", "--weight", "w")
        groups = self.groups(self.folder / "own.sav", "v", "--by", "g", "--date", "day")
        for number, group in enumerate(groups):
            mine = [(v, w) for n, (v, w) in enumerate(cases) if n % 2 == number and (v, w) in kept]
            self.assertAlmostEqual(group["fields"][0]["mean"],
                                   sum(v * w for v, w in mine) / sum(w for _, w in mine))
            self.assertEqual(group["timeIntervals"][0]["increment"], 2)

    def test_what_the_file_knows(self):
        """Its split, labels and missing values, from a file of the host's own."""
        known = self.folder / "finds.hvbf"
        self.run_hvhost("run", "-", "--data", f"finds={self.write('finds.csv', FINDS)}", text=KNOWN % known)
        for words, counts in (([], [(1, 0), (1, 1), (2, 0)]), (["--user-missing", "keep"], [(1, 0), (2, 0), (2, 0)])):
            groups = self.groups(known, *words)
            self.assertEqual([group["by"][0]["value"] for group in groups], [None, 1, 2])
            self.assertEqual([group["by"][0].get("label") for group in groups], [None, "north", None])
            fields = [group["fields"][0] for group in groups]
            self.assertEqual([(field["valid"], field["missing"]) for field in fields], counts)
        self.assertEqual((fields[0]["name"], fields[0]["label"]), ("grade", "Grade of the find"))
        self.assertEqual(fields[2]["values"], [{"value": 2, "label": "good"}, {"value": 3}])
        text = self.run_hvhost("describe", known).stdout
        self.assertIn("finds.hvbf\n══════════\n\nsite = .\n", text)
        self.assertIn("\nsite = 1 (north)\n────────────────\n", text)
        self.assertRegex(text, r"\n│ Grade of the find +│[^\n]*\n(.*\n)*?│ Valid +│ good +│ +1 │")
        one, = self.groups(known, "grade", "--by", "grade")[1:2]
        self.assertEqual(one["by"][0], {"variable": "grade", "value": 2, "label": "good"})

    def test_declared_missing_values_are_told_apart(self):
        """Long texts too; a blank is no value, and a weight that is declared missing does not weigh."""
        told = {"fields": [
            {"name": "g", "measure": "nominal", "missingValues": {"Value": ["9", "8"]},
             "valueLabels": [{"value": "9", "displayLabel": "refused"}]},
            {"name": "t", "missingValues": {"Value": ["not reported"]},
             "valueLabels": [{"value": "not reported", "displayLabel": "nobody asked"}]},
            {"name": "w", "missingValues": {"Value": ["99"]}}]}
        known = self.folder / "asked.sav"
        data = self.write("asked.csv", "s,g,t,w\na,1,yes,2\na,9,not reported,2\na,8,,2\na,,yes,2\nb,9,not reportable,99\n")
        self.run_hvhost("run", "-", "--data", f"in={data}", "--save", f"out={known}",
                        text=f'read({{"dataSource": "in"}}) -> updateDataModel({json.dumps(told)}) -> '
                             'write({"dataSource": "out", "mode": "overwrite"})')
        refused, nobody = {"value": 9, "label": "refused"}, {"value": "not reported", "label": "nobody asked"}
        for words, weights in (([], {}), (["--by", "s"], {}), (["--weight", "w"], {"weight": 2})):
            with self.subTest(words):
                group = self.groups(known, "g", "t", *words)[0]
                of_g, of_t = group["fields"]
                one = {"count": 1, **weights}
                count = {"count": 1 if words else 2, **weights}
                self.assertEqual(of_g["missingValues"], [{"value": 8, **one}, refused | count, {"value": None, **one}])
                self.assertEqual(of_t["missingValues"], [nobody | one, {"value": None, **one}])
                self.assertEqual((of_t["valid"], group.get("casesLeftOut")), (2 if words else 3, 1 if weights else None))
        text = self.run_hvhost("describe", known, "g", "t").stdout
        self.assertRegex(text, r"│ Missing +│ 8 +│ +1 │[^\n]*\n│ +│ refused +│ +2 │[^\n]*\n│ +│ System +│ +1 │")
        self.assertRegex(text, r"│ Missing +│ nobody asked +│ +1 │[^\n]*\n│ +│ System +│ +1 │")
        page = self.run_hvhost("describe", known, "g", "--format", "html").stdout
        self.assertEqual(Page(page).row("g", "refused")[0], ("2", "2"))

    def test_equal_texts_lose_nothing(self):
        """Variables and values with one label, values shown without their decimals, a value named as the sum."""
        number = {"print": {"type": 5, "width": 8, "decimals": 0}, "level": "nominal"}
        labels = [{"value": value, "label": "same"} for value in (1, 2)]
        known = self.folder / "equal.sav"
        dictionary = {"schema": 1, "weight": "w", "variables": [
            {"name": "w"}, {"name": "rounded", **number, "label": "Statistics"},
            {"name": "coded", **number, "label": "Statistics", "valueLabels": labels},
            {"name": "Counts", "type": "text", "width": 8, "level": "nominal"}]}
        rows = "(VALUES (2::DOUBLE, 1.2::DOUBLE, 1::DOUBLE, 'Total'), (1, 1.4, 2, 'Valid'), (1, 1.4, 2, 'Total'))"
        subprocess.run([os.environ["HV_RUN_SQL"],
                        f"COPY (SELECT * FROM {rows} AS t(w, rounded, coded, \"Counts\")) TO '{known}' "
                        f"(FORMAT PARQUET, KV_METADATA {{'hvinteg.dictionary': '{json.dumps(dictionary)}'}})"], check=True)
        names = ["rounded", "coded", "Counts"]
        fields = self.fields(known)
        self.assertEqual({name: [entry["value"] for entry in field["values"]] for name, field in fields.items()},
                         {"rounded": [1.2, 1.4], "coded": [1, 2], "Counts": ["Total", "Valid"]})
        table = self.run_hvhost("describe", known, "--format", "csv").stdout
        self.assertEqual([row["variable"] for row in csv.DictReader(io.StringIO(table))], names)

        text = self.run_hvhost("describe", known, "--width", 400).stdout
        self.assertEqual(re.findall(r"│ (Statistics|Counts) +│ +4 │ +0 │ +3 │", text),
                         ["Statistics", "Statistics", "Counts"])
        # Value by value, weighted and then by records.
        for name, rows in (("rounded", "1 2,1 2,Total 4,1 1,1 2,Total 3"),
                           ("coded", "same 2,same 2,Total 4,same 1,same 2,Total 3"),
                           ("Counts", "Total 3,Valid 1,Total 4,Total 2,Valid 1,Total 3")):
            text = self.run_hvhost("describe", known, name).stdout
            shown = re.findall(r"│ [^│]+│ (\S+) +│ +(\d+) │ +[\d.]+% │", text)
            page = Page(self.run_hvhost("describe", known, name, "--format", "html").stdout)
            on_page = [(row[-5][0], row[-4][0]) for caption, table in page.tables.items() if "Counts: " in caption
                       for row in table[1:]]
            for found in (shown, on_page):
                self.assertEqual(",".join(map(" ".join, found)), rows)

    def test_missing_dates_open_ends_and_infinite_weights(self):
        told = {"fields": [{"name": "d", "measure": "nominal", "missingValues": {"Value": ["-141428"]}},
                           {"name": "e", "missingValues": {"minValue": 18262}}]}
        known = self.folder / "dates.sav"
        data = self.write("dates.csv", "d,e,w\n1582-10-14,2019-01-01,1\n2020-01-01,2019-01-01,inf\n2020-01-01,,2\n"
                                       ",2019-01-01,-1\n")
        self.run_hvhost("run", "-", "--data", f"in={data}", "--save", f"out={known}",
                        text=f'read({{"dataSource": "in"}}) -> updateDataModel({json.dumps(told)}) -> '
                             'write({"dataSource": "out", "mode": "overwrite"})')
        group, = self.groups(known, "d", "--weight", "w")
        self.assertEqual(group["fields"][0]["missingValues"], [{"value": "1582-10-14", "count": 1, "weight": 1}])
        self.assertEqual((group["cases"], group["casesLeftOut"]), (2, 2))
        info = self.run_hvhost("info", known).stdout
        self.assertRegex(info, r"│ d .*│ 1582-10-14 +│")
        self.assertRegex(info, r"│ e .*│ 2020-01-01 to highest │")

    def test_limit_of_distinct_values(self):
        text = self.run_hvhost("describe", WEATHER, "weather", "--distinct", 4).stdout
        self.assertIn("Comment: weather has too many different values", text)
        self.assertNotIn("drizzle", text)
        for limit, field in ((4, {}), (0, {}), (5, {"distinct": 5}), (-1, {"distinct": 5})):
            told = self.fields(WEATHER, "weather", "--distinct", limit)["weather"]
            self.assertEqual({key: told[key] for key in told if key == "distinct"}, field)
            self.assertEqual("values" in told, bool(field))

    def test_time_intervals(self):
        interval, = self.groups(WEATHER, "wind", "--date", "date")[0]["timeIntervals"]
        self.assertEqual([interval[key] for key in ("unit", "increment", "start", "end", "points", "missingPoints")],
                         ["day", 1, "2012-01-01", "2015-12-31", 1461, 0])
        quarters = self.write("quarters.csv", "year,quarter,v\n2020,1,5\n2020,3,6\n2021,1,7\n2021,1,8\n,2,9\n")
        text = self.run_hvhost("describe", quarters, "v", "--date", "year,quarter").stdout
        cells = [re.findall(r"[^│ ][^│]*[^│ ]|[^│ ]", line)[-1].strip() for line in
                 text.split("Time Intervals\n")[1].split("\n\n")[0].splitlines() if line.startswith("│") and "──" not in line]
        self.assertEqual(cells, ["Fields", "year, quarter", "quarter", "2", "year 2020, quarter 1",
                                 "year 2021, quarter 1", "3", "3", "0", "1", "1"])
        single = self.write("single.csv", "d,v\n2020-01-01,5\n")
        done = self.run_hvhost("describe", single, "v", "--date", "d", "--strict", status=5)
        self.assertIn("Warning: descriptives:descriptives: the values of \"d\" make up no time interval", done.stdout)
        self.assertIn("[a] The values make up no time interval.", done.stdout)
        self.assertRegex(done.stderr, r"^hvhost: warning: .*\"d\"")

    def test_names_texts_and_encoding(self):
        path = self.write("café.csv", 'größe m,"a,""b"\n1.5,x\x1b[2J\n2.5,é\n'.encode("windows-1252"))
        text = self.run_hvhost("describe", path, "Größe m", 'a,"b', "--encoding", "windows-1252").stdout
        self.assertIn("│ größe m", text)
        self.assertNotIn("\x1b", text)
        fields = self.fields(path, "--encoding", "windows-1252")
        self.assertEqual([entry["value"] for entry in fields['a,"b']["values"]], ["x\x1b[2J", "é"])

    def test_into_a_file(self):
        for name, start in (("a.json", "{"), ("a.csv", "variable,valid"), ("a.txt", "weather.csv\n═══"),
                            ("a.html", "<!DOCTYPE html>")):
            done = self.run_hvhost("describe", WEATHER, "-o", self.folder / name)
            self.assertEqual(done.stdout, "")
            self.assertTrue((self.folder / name).read_text(encoding="utf-8").startswith(start))
            self.run_hvhost("describe", WEATHER, "-o", self.folder / name, status=2)
            self.run_hvhost("describe", WEATHER, "wind", "-o", self.folder / name, "--format", "csv", "--force")
            self.assertEqual(len(self.rows(self.folder / name)), 1)

    def test_page_and_text_show_the_same(self):
        """Both the numbers that programs get."""
        pages = {}
        for form in ("html", "text"):
            self.run_hvhost("describe", WEATHER, "--date", "date", "--format", form, "-o", self.folder / form)
            pages[form] = (self.folder / form).read_text(encoding="utf-8")
        page = Page(pages["html"])
        numeric = ["precipitation", "temp_max", "temp_min", "wind"]
        self.assertEqual(page.headings[0], ("h1", "weather.csv"))
        self.assertEqual(page.outline, ["Descriptive Statistics", "Time Intervals", "Frequencies", "weather",
                                        "Bar Charts", "weather", "Histograms", "date", *numeric])
        self.assertEqual(page.charts, 6)
        fields = self.fields(WEATHER)
        names = ["valid", "missing", "mean", "standardDeviation", "variance", "skewness", "kurtosis", "minimum",
                 "maximum", "firstQuartile", "median", "thirdQuartile"]
        for name in numeric:
            for statistic, (_, value) in zip(names, page.row("Descriptive Statistics", name), strict=True):
                self.assertAlmostEqual(float(value), fields[name][statistic], msg=f"{name} {statistic}")
        for entry in fields["weather"]["values"]:
            self.assertEqual(page.row("weather", entry["value"])[0], (str(entry["count"]),) * 2)
        cells = {cell.strip() for cell in re.split("[│\n]", pages["text"])}
        self.assertEqual({cell for rows in page.tables.values() for row in rows for cell, _ in row} - cells, set())
        # The text of a chart includes its data, bar by bar.
        self.assertRegex(pages["text"], r"\n│ rain +│ +641 │ █{5,}")
        self.assertIn("Histogram of wind: 1461 values in ", pages["text"])

    def test_analyses(self):
        """Percentiles, outliers and pairs, in each form."""
        words = ("describe", PENGUINS, "--percentiles", "5,95", "--outlier-method", "sd", "--pairs")
        rows = self.rows(PENGUINS)
        both = [(float(row["beak_length_mm"]), float(row["body_mass_g"])) for row in rows
                if row["beak_length_mm"] and row["body_mass_g"]]
        lengths, masses = zip(*both)
        group, = json.loads(self.run_hvhost(*words, "--format", "json").stdout)["groups"]
        pairs = {(pair["first"], pair["second"]): pair for pair in group["pairs"]}
        pair = pairs["beak_length_mm", "body_mass_g"]
        self.assertEqual((pair["measure"], pair["records"]), ("correlation", len(both)))
        self.assertAlmostEqual(pair["strength"], statistics.correlation(lengths, masses), delta=1e-12)
        self.assertEqual(pairs["species", "body_mass_g"]["measure"], "eta")
        self.assertEqual(pairs["species", "island"]["df1"], 4)
        field = next(field for field in group["fields"] if field["name"] == "beak_length_mm")
        cuts = statistics.quantiles([float(row["beak_length_mm"]) for row in rows if row["beak_length_mm"]],
                                    n=20, method="inclusive")
        self.assertEqual([entry["percent"] for entry in field["percentiles"]], [5, 95])
        for entry, value in zip(field["percentiles"], (cuts[0], cuts[-1])):
            self.assertAlmostEqual(entry["value"], value, delta=1e-12 * value)
        self.assertAlmostEqual(field["outliers"]["upperBound"], field["mean"] + 3 * field["standardDeviation"])
        table = list(csv.DictReader(io.StringIO(self.run_hvhost(*words, "--format", "csv").stdout)))
        self.assertEqual(len(table), len(pairs))
        # The p value of this pair is too small for a double.
        text = self.run_hvhost("describe", DATA / "weather.csv", "temp_max", "temp_min", "--pairs").stdout
        self.assertIn("<0.001", text)
        table, = csv.DictReader(io.StringIO(self.run_hvhost(
            "describe", PENGUINS, "beak_length_mm", "--percentiles", "5,95", "--outlier-method", "sd", "--format",
            "csv").stdout))
        self.assertEqual(float(table["p95"]), field["percentiles"][1]["value"])
        self.assertEqual(int(table["outliers above"]), field["outliers"]["above"])
        # A group without a value has the same columns.
        groups = self.write("groups.csv", "g,x\na,1\na,2\nb,\n")
        table = list(csv.DictReader(io.StringIO(self.run_hvhost(
            "describe", groups, "--by", "g", "--percentiles", "50", "--outliers", "--format", "csv").stdout)))
        self.assertEqual([(row["g"], row["p50"], row["upper bound"]) for row in table],
                         [("a", "1.5", "2.5"), ("b", "", "")])
        missing = ("describe", self.write("missing.csv", "a,b\n1,\n2,\n,\n4,5\n"), "--missing-patterns")
        group, = json.loads(self.run_hvhost(*missing, "--format", "json").stdout)["groups"]
        self.assertEqual(group["missingPatterns"], [{"missing": ["b"], "records": 2}, {"missing": [], "records": 1},
                                                    {"missing": ["a", "b"], "records": 1}])
        self.assertEqual(self.run_hvhost(*missing, "--format", "csv").stdout,
                         'missing,records,weight\nb,2,\n,1,\n"a,b",1,\n')
        self.assertRegex(self.run_hvhost(*missing).stdout, "a, b +│ +1 │ +25.0%")
        self.run_hvhost(*missing, "--pairs", "--format", "csv", status=2)
        page = Page(self.run_hvhost(*words, "--format", "html").stdout)
        for title in ("Percentiles", "Outliers", "Pairs of Fields", "Strength of Pairs", "Box Plots"):
            self.assertIn(title, page.outline)
        group, = self.groups(PENGUINS, "beak_length_mm", "sex", "--target", "species")
        self.assertEqual([(pair["first"], pair["second"]) for pair in group["pairs"]],
                         [("species", "beak_length_mm"), ("species", "sex")])

    def test_page_of_groups_and_hostile_texts(self):
        """What looks like markup is text; a name with dots is one heading."""
        value = "</title><script>alert(1)</script>&amp; 1.5"
        path = self.write("a <b>&amp;.csv", f'g,"<i>x</i>"\n{value},1\n{value},2\nz,3\n')
        page = Page(self.run_hvhost("describe", path, "--by", "g", "--format", "html").stdout)
        self.assertEqual(page.headings[:3], [("h1", path.name), ("h2", "Groups Compared"), ("h2", "g = " + value)])
        self.assertEqual(page.row("Numbers", "g = " + value)[2:5], [("1.5",) * 2, ("0.7071", "0.7071067811865476"),
                                                                    ("1", "1")])
        self.assertEqual(page.row("Numbers", "g = z")[0], ("1", "1"))
        self.assertEqual(page.row("Descriptive Statistics g: z", "<i>x</i>")[2], ("3", "3"))

    def test_entries_of_a_comparison_say_what_they_are(self):
        words = ["describe", PENGUINS, "beak_length_mm", "sex", "--by", "species", "--format", "html"]
        self.assertEqual(Page(self.run_hvhost(*words).stdout).outline[:7],
                         ["Groups Compared", "Numbers", "beak_length_mm: box plots", "beak_length_mm: histograms",
                          "sex: percentages", "sex: bars", "species = Adelie"])
        german = Page(self.run_hvhost(*words, environment={"LC_ALL": "de_DE.UTF-8"}).stdout)
        self.assertEqual(german.outline[2:6], ["beak_length_mm: Boxplots", "beak_length_mm: Histogramme",
                                               "sex: Prozente", "sex: Balken"])

    def test_faults(self):
        place = self.folder / "place"
        shutil.copytree(DATA, place)
        (place / "one.csv").write_text("a\n1\n")
        (place / "ragged.csv").write_text("a,b\n1,2\n3\n")
        before = sorted(place.iterdir())
        for words, status, expected in FAULTS:
            with self.subTest(words):
                done = self.run_hvhost("describe", *shlex.split(words), status=status, cwd=place)
                for said in expected:
                    self.assertIn(said, done.stderr)
                self.assertEqual(sorted(place.iterdir()), before)
        self.run_hvhost("convert", WEATHER, place / "a.csv", "--weight", "wind", status=2)
        self.run_hvhost("convert", WEATHER, place / "a.sav", "--weight", "wind", "--keep", "date", status=2)
        self.run_hvhost("convert", WEATHER, place / "a.sav", "--weight", "wind", "--direct", status=2)

    def test_print_job(self):
        done = self.run_hvhost("describe", WEATHER, "wind", "--date", "date", "--print-job")
        settings = json.loads(re.match(r"val deConf = (.*)\n", done.stdout)[1])
        self.assertEqual((settings["inputFieldList"], settings["stdDateTimeFieldList"]), (["wind"], ["date"]))
        self.assertIn("-> descriptives:descriptives(", done.stdout)
        for form, result in (("text", True), ("html", True), ("json", False)):
            done = self.run_hvhost("describe", WEATHER, "wind", "--print-job", "--format", form)
            self.assertEqual('"Results"' in done.stdout, result)

    def test_ctrl_c_at_several_moments(self):
        """While the cases are sorted, while a group is copied, while it is described."""
        big = self.write("big.csv", "g,h,v\n" + "".join(f"{i % 7},{i % 5},{i * 7919 % 1009}\n" for i in range(400000)))
        for words in (["--by", "g,h"], ["--date", "v"]):
            for delay in (0, 0.3, 0.6, 1.0, 1.5, 2.5):
                with self.subTest(words=words, delay=delay):
                    process = self.start_hvhost("describe", big, *words, "-o", self.folder / "out.json")
                    self.wait_until_stoppable(process)
                    time.sleep(delay)
                    if process.poll() is None:
                        process.send_signal(signal.SIGINT)
                    errors = process.communicate(timeout=60)[1]
                    # The description takes far longer than the time until the first signal.
                    self.assertIn(process.returncode, (0, 130) if delay else (130,), errors)
                    self.assertEqual((self.folder / "out.json").exists(), process.returncode == 0)
                    self.assertEqual(list(self.temp.iterdir()), [])
                    (self.folder / "out.json").unlink(missing_ok=True)

    def test_output_is_in_one_language(self):
        german = self.run_hvhost("describe", DATA / "penguins.csv", "beak_length_mm", "sex", "--outliers", "--pairs",
                                 "--percentiles", "5", environment={"LC_ALL": "de_DE.UTF-8"}).stdout
        for word in ("Felder", "Mittelwert", "Fälle: 344", "Die Statistiken enthalten sie.", "Stärke",
                     "Datensätze mit einem Wert in beiden Feldern.", "Häufigkeit", "Histogramme: beak_length_mm"):
            self.assertIn(word, german)
        for word in ("Fields", "Mean", "Records", "Frequency", "Outliers", "Histogram of"):
            self.assertNotIn(word, german)


if __name__ == "__main__":
    unittest.main()
