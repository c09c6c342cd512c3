"""The commands of hvhost: files in, files and results out."""
import csv
import json
import re
import shlex
import shutil
import subprocess
import unittest

from hvhost_case import DATA, HVHOST, Case


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


    def test_names_that_are_no_plain_words(self):
        source = self.folder / "a b%20c#é'.CSV"
        shutil.copy(DATA / "penguins.csv", source)
        out = self.folder / "ö & 100%.csv"
        self.run_hvhost("convert", source, out, "--derive", "wide bill=x.`beak_length_mm` * 2",
                        "--where", "!isMissing(x.`wide bill`)", "--keep", "wide bill,species")
        self.assertEqual(self.rows(out)[0], {"wide bill": "78.2", "species": "Adelie"})

    def test_data_model_document(self):
        model = self.folder / "model.xml"
        self.run_hvhost("convert", DATA / "penguins.csv", self.folder / "a.csv", "--out-data-model", model)
        text = model.read_text(encoding="utf-8").replace('name="body_mass_g" storage="integer"',
                                                         'name="body_mass_g" storage="string"')
        self.assertIn("body_mass_g", text)
        model.write_text(text, encoding="utf-8")
        self.run_hvhost("convert", DATA / "penguins.csv", self.folder / "b.csv", "--data-model", model,
                        "--derive", 'mark=concat(x.body_mass_g, "!")', "--limit", 1)
        self.assertEqual(self.rows(self.folder / "b.csv")[0]["mark"], "3750!")


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

    def test_wide_tables_continue_in_further_ones(self):
        statistics = ",".join(f"{name}:beak_length_mm" for name in ("mean", "sd", "min", "max", "median"))
        lines = self.run_hvhost("aggregate", DATA / "penguins.csv", "--by", "island,species",
                                "--stat", statistics).stdout.splitlines()
        self.assertLessEqual(max(map(len, lines)), 80)
        headers = [line for line in lines if "island" in line]
        self.assertGreater(len(headers), 1)
        self.assertTrue(all("species" in header for header in headers))
        self.assertEqual(sum("Biscoe" in line and "Gentoo" in line for line in lines), len(headers))

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

    def test_job_from_standard_input_with_saved_data(self):
        saved = self.folder / "spread.csv"
        job = (DATA / "spread.hvl").read_text(encoding="utf-8")
        self.run_hvhost("run", "-", "--data", f"weather={DATA / 'weather.csv'}", "--save", f"spread={saved}",
                        text=job)
        days = {row["weather"]: int(row["days"]) for row in self.rows(saved)}
        self.assertEqual(sorted(days), ["drizzle", "fog", "rain", "snow", "sun"])
        self.assertEqual(sum(days.values()), 1461)


class Rest(Case):
    def test_doctor_version_help_and_completion(self):
        findings = json.loads(self.run_hvhost("doctor", "--format", "json").stdout)["findings"]
        self.assertEqual([finding["problem"] for finding in findings if finding["needed"]],
                         [""] * sum(finding["needed"] for finding in findings))
        self.assertRegex(self.run_hvhost("version").stdout, r"^hvhost \d+\.\d+\.\d+\n$")
        self.assertIn("Exit status:", self.run_hvhost("help", "convert").stdout)
        self.assertIn("-a aggregate", self.run_hvhost("completion", "fish").stdout)
        script = self.run_hvhost("completion", "bash").stdout
        self.assertTrue(self.run_hvhost("completion", "zsh").stdout.endswith(script))
        for words, expected in (("con", "convert"), ("convert --wh", "--where")):
            shell = (f'{script}\nCOMP_WORDS=(hvhost {words})\nCOMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))\n'
                     '_hvhost\necho "${COMPREPLY[@]}"')
            done = subprocess.run(["bash", "-c", shell], capture_output=True, text=True, check=True)
            self.assertEqual(done.stdout.strip(), expected)

    def test_examples_of_the_help_work_as_they_stand(self):
        place = self.folder / "data"
        shutil.copytree(DATA, place)
        for command, count in (("convert", 3), ("aggregate", 2), ("run", 2), ("doctor", 1)):
            text = self.run_hvhost(command, "--help").stdout
            examples = re.findall(r"(?m)^  hvhost (.*)$", text)
            self.assertEqual(len(examples), count, text)
            for example in examples:
                with self.subTest(example):
                    self.run_hvhost(*shlex.split(example), cwd=place)

    def test_print_job_and_trace(self):
        trace = self.folder / "trace"
        done = self.run_hvhost("convert", DATA / "weather.csv", self.folder / "out.csv", "--print-job",
                               "--trace", trace)
        self.assertIn("read(", done.stdout)
        self.assertFalse((self.folder / "out.csv").exists())
        self.assertEqual((trace / "hvtrace_0" / "HvlJobText_hvhost.hvl").read_text(), done.stdout.rstrip("\n"))

    def test_log_keeps_no_password(self):
        log = self.folder / "log"
        for _ in range(2):
            self.run_hvhost("convert", DATA / "penguins.csv", self.folder / "a.sav", "--force",
                            "--out-password", 'kr"ill', "--log", log)
        text = log.read_text(encoding="utf-8")
        self.assertEqual(text.count("job: "), 2)
        self.assertIn("dataPassword", text)
        self.assertNotIn("ill", text.replace("filesystem", ""))


if __name__ == "__main__":
    unittest.main()
