"""hvhost tcm: models that are trained on data whose making is known, and what is said of them."""
import csv
import functools
import io
import json
import pathlib
import re
import resource
import sys
import time
import unittest

from hvhost_case import DATA, Case
from page_reader import Page

TESTS = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(TESTS / "engine"))
from validate_result import validator_of  # noqa: E402

SHOPS = DATA / "shops.csv"
REGIONS = ("north", "east", "south", "west")
TRAIN = ("--time", "month", "--dims", "region", "--metrics", "sales,advertising,visits")
FAULTS = [
    # Words behind "tcm", exit status, what the error says.
    ("train SHOPS -o OUT --metrics sales", 2, ["the time of the records is missing", "--time"]),
    ("train SHOPS -o OUT --time mnth --metrics sales", 2,
     ['--time mnth: there is no variable "mnth"', "did you mean month?"]),
    ("train SHOPS -o OUT --time month --metrics region", 2, ["a metric must be a number"]),
    ("train SHOPS -o OUT --time month --metrics sales,sales", 2, ["named twice"]),
    ("train SHOPS -o OUT --time month --metrics sales --interval fortnight", 2,
     ['"fortnight" is not a unit of time']),
    ("train SHOPS -o OUT --time month --metrics sales --interval day --working-days mon-noon", 2,
     ['"noon" is not a day of the week']),
    ("train SHOPS -o OUT --time month --metrics sales --interval day --working-days fri-mon", 2,
     ['"fri-mon" is not a range of days']),
    ("train SHOPS -o OUT --time month --metrics sales --interval hour --working-hours 18-8", 2,
     ["--working-hours 18-8: not a range of hours"]),
    ("train SHOPS -o OUT --time month --metrics sales --interval hour --working-hours 8-25", 2,
     ["--working-hours 8-25: not a range of hours"]),
    ('train SHOPS -o OUT --time month --metrics sales --both "north', 2, ["the quote has no end"]),
    ("train SHOPS -o OUT --time month --metrics sales --aggregate median", 2,
     ['"median" is not an aggregate function']),
    ("train SHOPS -o OUT --time month --metrics sales --force-edge sales", 2, ["missing colon"]),
    ("train SHOPS -o OUT --time month --metrics sales --target vists", 2,
     ['--target: names "vists", which is not a metric of the input']),
    ("train SHOPS -o OUT --time month --metrics sales --max-lag 4000", 2, ["--max-lag: is 4000"]),
    ("train SHOPS -o MODEL --time month --metrics sales", 2, ["model.tcm", "--force"]),
    ("info none.tcm", 3, ["none.tcm: no such file"]),
    ("info SHOPS", 3, ["shops.csv"]),
    ("forecast MODEL SHOPS --series nroth,sales --horizon 3", 2,
     ["has no such series", "did you mean north,sales?"]),
    ("forecast MODEL SHOPS --series sales --horizon 3", 2, ["has no such series"]),
    ("forecast MODEL SHOPS --series north,sales", 2, ["--horizon"]),
    ("forecast MODEL SHOPS --series north,sales --horizon -1", 2, ["--horizon"]),
    ("forecast MODEL SHOPS --series north,sales --horizon 9999999999", 2,
     ["--horizon: 9999999999 is not a number, or is out of range"]),
    ("forecast MODEL SHOPS --series north,sales --horizon 100000", 1,
     ["rtsdp:rtsdp: point of time 95821 is not in the years 1 to 9999"]),
    ("forecast MODEL WEATHER --series north,sales --horizon 3", 3,
     ["weather.csv: there is no variable", "which"]),
    ("forecast MODEL SHOPS --series north,sales --horizon 3 --set north,sales=1", 2,
     ["not of the form SERIES[TIME]=VALUE"]),
    ("forecast MODEL SHOPS --series north,sales --horizon 3 --set north,sales[*]=x", 2,
     ['"x" is not a number']),
    ("forecast MODEL SHOPS --series north,sales --horizon 3 --set north,sales[2025-01]=1", 2,
     ['has no point "2025-01"; its points are 2025-01-01, 2025-02-01, 2025-03-01']),
    ("impact MODEL --series north,sales --level 0", 2, ["--level"]),
    ("outliers MODEL", 2, ["DATA"]),
]


@functools.cache
def validator(command):
    return validator_of(TESTS.parent / "docs" / "schemas" / f"tcm-{command}.schema.json")


class Tcm(Case):
    """All cases share one model, which none of them changes."""

    model = None

    @classmethod
    def setUpClass(cls):
        cls.shared = Case()
        cls.shared.setUp()
        cls.model = cls.shared.folder / "model.tcm"
        cls.shared.run_hvhost("tcm", "train", SHOPS, "-o", cls.model, *TRAIN)

    @classmethod
    def tearDownClass(cls):
        cls.shared.tearDown()

    def tcm(self, *words, **more):
        return self.run_hvhost("tcm", *words, **more)

    def told(self, *words, **more):
        document = json.loads(self.tcm(*words, "--format", "json", **more).stdout)
        validator(words[0]).validate(document)
        return document

    def table(self, *words):
        return list(csv.DictReader(io.StringIO(self.tcm(*words, "--format", "csv").stdout)))

    def sales(self, region):
        return [float(row["sales"]) for row in self.rows(SHOPS) if row["region"] == region]

    def test_info_finds_what_the_data_hide(self):
        told = self.told("info", self.model)
        self.assertEqual(len(told["series"]), 12)
        self.assertEqual(told["time"]["points"], 120)
        predictors = {equation["target"]: {one["series"]: one for one in equation["predictors"]}
                      for equation in told["equations"]}
        for region in REGIONS:
            lead = predictors[f"{region},sales"][f"{region},advertising"]
            self.assertEqual(lead["lag"], 2, region)
            self.assertEqual(predictors[f"{region},visits"][f"{region},advertising"]["lag"], 1)
        self.assertAlmostEqual(predictors["north,sales"]["north,advertising"]["effect"], 2.4, delta=1)
        self.assertEqual(predictors["east,sales"]["north,advertising"]["lag"], 2)
        self.assertNotIn("south,advertising", predictors["north,sales"])
        rows = self.table("info", self.model)
        self.assertEqual(len(rows), sum(map(len, predictors.values())))
        text = self.tcm("info", self.model).stdout
        for words in ("month, 120 points, 2015-01-01 to 2024-12-01", "north,advertising", "R²"):
            self.assertIn(words, text)

    def test_forecast_continues_the_data_within_bounds(self):
        words = ("forecast", self.model, SHOPS, "--series", "north,sales", "--horizon", 6)
        out = self.folder / "out.csv"
        self.tcm(*words, "-o", out)
        rows = self.rows(out)
        self.assertEqual(list(rows[0]), ["month", "actual", "predicted", "lower", "upper"])
        self.assertEqual([float(row["actual"]) for row in rows[:120]], self.sales("north"))
        self.assertEqual([row["month"] for row in rows[120:]],
                         [f"2025-0{month}-01" for month in range(1, 7)])
        for row in rows[120:]:
            self.assertEqual(row["actual"], "")
            self.assertLess(float(row["lower"]), float(row["predicted"]))
            self.assertLess(float(row["predicted"]), float(row["upper"]))
        wider = self.table(*words, "--confidence", 99)
        self.assertLess(float(wider[-1]["lower"]), float(rows[-1]["lower"]))
        points = self.told(*words)["points"]
        self.assertEqual([point["future"] for point in points], [False] * 120 + [True] * 6)
        self.assertIn("2025-06-01", self.tcm(*words).stdout)
        self.tcm(*words, "-o", out, status=2)
        self.tcm(*words, "-o", out, "--force")

    def test_what_if_advertising_grows(self):
        words = ("forecast", self.model, SHOPS, "--series", "north,sales", "--horizon", 4)
        def predicted(*more):
            return [float(row["predicted"]) for row in self.table(*words, *more)[120:]]
        base = predicted()
        grown = predicted("--set", "north,advertising[*]=+10%")
        self.assertEqual(base[0], grown[0])
        self.assertAlmostEqual(base[1], grown[1], delta=3, msg="it takes two months")
        self.assertGreater(grown[2] - base[2], 10)
        for point in ("+1", "2025-01-01"):
            once = predicted("--set", f"north,advertising[{point}]=300")
            self.assertEqual(base[0], once[0])
            self.assertGreater(once[2] - base[2], 100, point)
        self.assertEqual(predicted("--set", "south,advertising[*]=+10%")[:1], base[:1])

    def test_impact_goes_level_by_level(self):
        rows = self.table("impact", self.model, "--series", "east,sales", "--level", 1)
        causes = {row["predictor"]: row for row in rows if row["direction"] == "causes"}
        self.assertEqual(causes["north,advertising"]["lag"], "2")
        self.assertEqual(causes["north,advertising"]["level"], "1")
        self.told("impact", self.model, SHOPS, "--series", "east,sales")
        deeper = self.table("impact", self.model, SHOPS, "--series", "north,advertising", "--level",
                            2)
        self.assertRegex(deeper[0]["contribution"], r"\d")
        effects = {row["target"] for row in deeper if row["direction"] == "effects"}
        self.assertLessEqual({"north,sales", "north,visits", "east,sales"}, effects)
        told = self.told("impact", self.model, "--series", "east,sales")
        self.assertEqual(told["causes"]["nodes"][0]["level"], 0)

    def test_outliers_find_the_strike(self):
        rows = self.table("outliers", self.model, SHOPS)
        self.assertIn(("north,sales", "2021-11-01"), [(row["series"], row["time"]) for row in rows])
        told = self.told("outliers", self.model, SHOPS, "--series", "north,sales")
        self.assertEqual({outlier["series"] for outlier in told["outliers"]}, {"north,sales"})
        self.assertEqual(len(told["causes"]), len(told["outliers"]))

    def test_pages_stand_on_their_own(self):
        kinds = {"info": ("info", self.model),
                 "forecast": ("forecast", self.model, SHOPS, "--series", "north,sales",
                              "--horizon", 3),
                 "impact": ("impact", self.model, "--series", "north,sales"),
                 "outliers": ("outliers", self.model, SHOPS)}
        for name, words in kinds.items():
            with self.subTest(name):
                out = self.folder / (name + ".html")
                self.tcm(*words, "-o", out)
                text = out.read_text(encoding="utf-8")
                page = Page(text)
                self.assertTrue(page.tables)
                if name in ("info", "impact"):
                    self.assertIn("class=\"network\"", text)
                    self.assertIn("north,advertising → north,sales", text)

    def test_output_is_in_one_language(self):
        shown = []
        for name, words in {"info": (), "impact": ("--series", "north,sales"),
                            "forecast": (SHOPS, "--series", "north,sales", "--horizon", "3")}.items():
            for output in ((), ("-o", self.folder / f"{name}.html")):
                done = self.tcm(name, self.model, *words, *output, "--strict", environment={"LC_ALL": "de_DE.UTF-8"})
                text = done.stdout or (self.folder / f"{name}.html").read_text(encoding="utf-8")
                shown.append(re.sub(r"(?s)<(style|script).*?</\1>", "", text))
        for text, german in zip(shown, (
                ("jeden Monat", "Gleichungen", "Prädiktor", " ja ", "0,268037"), ("Gleichungen", "&lt; 0,0001", "Stärke"),
                ("Wirkungen und Ursachen", "1,99484"), ("Ursache", "Verzögerung"),
                ("month", "untere Grenze", "Grenzen: 95 %"), ("Zeit", "vorhergesagt", "month"))):
            self.assertEqual([word for word in german if word not in text], [])
            self.assertEqual(re.findall(r"\b(?:every|[Pp]redictor|Lag|Equations|Forecast|Causes|< 0.0001)\b", text), [])

    def test_models_of_other_times_and_no_dimension(self):
        """Cyclic times, texts, and the order of the records give the same equations."""
        rows = [row for row in self.rows(SHOPS) if row["region"] == "north"]
        cyclic = "year,month,sales,advertising\n" + "".join(
            f"{row['month'][:4]},{int(row['month'][5:7])},{row['sales']},{row['advertising']}\n"
            for row in rows)
        data = self.write("north.csv", cyclic)
        lags = []
        for time_of in (("--cyclic", "year,month"), ("--case-count",)):
            out = self.folder / "north.tcm"
            self.tcm("train", data, "-o", out, "--force", "--metrics", "sales,advertising",
                     *time_of)
            told = self.told("info", out)
            lags.append([(one["target"], [(p["series"], p["lag"]) for p in one["predictors"]])
                         for one in told["equations"]])
            rows = self.table("forecast", out, data, "--series", "sales", "--horizon", 2)
            self.assertEqual([float(row["actual"]) for row in rows[:120]], self.sales("north"))
            self.assertEqual(len(rows), 122)
            fitted = self.table("forecast", out, data, "--series", "sales", "--horizon", 0)
            self.assertEqual(len(fitted), 120)
        self.assertEqual(lags[0], lags[1])
        self.assertIn(("advertising", 2), dict(lags[0])["sales"])

    def test_working_hours_are_points_without_a_gap(self):
        lines, last = ["t,a,b"], 0.0
        for hour in range(24 * 21):
            if hour // 24 % 7 < 5 and 8 <= hour % 24 < 18:
                value = hour * 7919 % 101 / 10
                lines.append(f"2024-01-{hour // 24 + 1:02} {hour % 24:02}:00:00,{value},{last + hour % 3 / 10}")
                last = value
        self.tcm("train", self.write("hours.csv", "\n".join(lines) + "\n"), "-o", self.folder / "hours.tcm", "--time",
                 "t", "--metrics", "a,b", "--interval", "hour", "--working-days", "mon-fri", "--working-hours", "8-18", "--max-lag", 2)
        text = self.tcm("info", self.folder / "hours.tcm").stdout
        self.assertIn("t, 150 points, 2024-01-01 08:00:00 to 2024-01-19 17:00:00, every hour of "
                      "mon,tue,wed,thu,fri, hours 8-18\n", text)
        self.assertRegex(text, "b +│ a +│ +1 │")

    def test_settings_reach_the_equations(self):
        out = self.folder / "some.tcm"
        self.tcm("train", SHOPS, "-o", out, *TRAIN, "--target", "north,sales", "--lags", 2,
                 "--forbid-edge", "north,sales:north,advertising", "--force-edge",
                 "north,sales:west,visits")
        (equation,) = self.told("info", out)["equations"]
        predictors = [one["series"] for one in equation["predictors"]]
        self.assertIn("west,visits", predictors)
        self.assertNotIn("north,advertising", predictors)

    def test_print_job_runs_nothing(self):
        out = self.folder / "none.tcm"
        job = self.tcm("train", SHOPS, "-o", out, *TRAIN, "--max-lag", 3, "--criterion", "aic",
                       "--print-job").stdout
        self.assertIn('val trainConf = {"maxLag":3,"criterion":"AIC"}', job)
        self.assertTrue(job.rstrip().endswith("->tcm:train(trainConf,trainInCon,trainOutCon)"))
        job = self.tcm("train", SHOPS, "-o", out, *TRAIN, "--interval", "2 days", "--working-days", "mon-wed,fri",
                       "--working-hours", "8-18", "--aggregate", "mean", "--aggregate", "sales=sum",
                       "--predictor", "north,sales", "--both", '"we""st, x",sales',
                       "--force-edge", '"a:b",sales:north,visits', "--max-predictors", 3,
                       "--outlier-level", 0.9, "--max-missing", 0.5, "--print-job").stdout
        for part in ('"timeInterval":{"unit":"day","increment":2,"workingDays":[1,2,3,5],'
                     '"workingHours":{"from":8,"to":18}}',
                     '"aggregation":{"default":"mean","fields":{"sales":"sum"}}',
                     '"candidates":[["north","sales"]],"both":[["we\\"st, x","sales"]]',
                     '["a:b","sales"]', '"maxPredictors":3,"outlierLevel":0.9'):
            self.assertIn(part, job)
        self.assertFalse(out.exists())

    def test_faults_name_what_is_wrong(self):
        places = {"SHOPS": SHOPS, "WEATHER": DATA / "weather.csv", "MODEL": self.model,
                  "OUT": self.folder / "out.tcm"}
        for line, status, texts in FAULTS:
            with self.subTest(line):
                words = [places.get(word, word) for word in line.split()]
                errors = self.tcm(*words, status=status).stderr
                for text in texts:
                    self.assertIn(text, errors)
                self.assertFalse(places["OUT"].exists())

    def test_damaged_models_are_refused(self):
        whole = self.model.read_bytes()
        for name, content in {"cut": whole[:len(whole) // 2], "text": b"no archive",
                              "altered": whole.replace(b"TCMGraph", b"TCMGraqh")}.items():
            with self.subTest(name):
                broken = self.write(name + ".tcm", content)
                self.assertIn(name + ".tcm", self.tcm("info", broken, status=3).stderr)

    @staticmethod
    def processor_seconds():
        used = resource.getrusage(resource.RUSAGE_CHILDREN)
        return used.ru_utime + used.ru_stime

    def test_stops_and_leaves_nothing(self):
        header = ",".join(f"m{i}" for i in range(400))
        lines = "\n".join(",".join(str((row * 7919 + i * 104729) % 1000) for i in range(400))
                          for row in range(400))
        wide = self.write("wide.csv", header + "\n" + lines + "\n")
        out = self.folder / "wide.tcm"
        words = ("tcm", "train", wide, "-o", out, "--case-count", "--metrics", header)
        process = self.start_hvhost(*words)
        self.wait_until_stoppable(process)
        time.sleep(0.5)
        self.assertIn("interrupted", self.stop(process))
        self.run_hvhost(*words, "--timeout", 0.5, status=124)
        self.assertFalse(out.exists())
        # Most series are linear in others: a warning for each would hide all else.
        errors = self.run_hvhost(*words).stderr
        for kind in ("lags of the series", "the equation of"):
            self.assertEqual(len(re.findall(f"warning: {kind}", errors)), 10, errors)
            self.assertRegex(errors, rf"warning: \d+ more warnings like this one: {kind}.*\n  --verbose shows them\n")
        self.assertGreater(self.run_hvhost(*words, "--force", "-v").stderr.count("\n"), 300)
        # The page of so many points takes many seconds to build.
        begin = self.processor_seconds()
        self.tcm("forecast", self.model, SHOPS, "--series", "north,sales", "--horizon", 90000, "-o",
                 self.folder / "long.html", "--timeout", 3, status=124)
        self.assertLess(self.processor_seconds() - begin, 8)
        self.assertEqual([path.name for path in self.folder.iterdir() if "unfinished" in path.name], [])

    def test_help_and_completion(self):
        self.assertIn("forecast", self.run_hvhost("tcm", "--help").stdout)
        for command in ("train", "info", "forecast", "impact", "outliers"):
            text = self.run_hvhost("help", "tcm", command).stdout
            self.assertIn("hvhost tcm " + command, text)
            self.assertIn("Exit status", text)
            self.assertIn("\nCommon:", text)
        self.assertIn("impact", self.run_hvhost("tcm", "impct", status=2).stderr)
        self.assertIn("outliers", self.run_hvhost("completion", "bash").stdout)


if __name__ == "__main__":
    unittest.main()
