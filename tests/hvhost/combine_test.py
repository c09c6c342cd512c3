"""Several files into one: join and append, and what they report; selecting and sorting records."""
import json
import unittest

from hvhost_case import DATA, Case

PENGUINS = DATA / "penguins.csv"
LEFT = "id,v,b\n1,10,x\n2,20,y\n2,21,z\n4,40,w\n,50,u\n"
RIGHT = "id,B,c\n2,p,1.5\n2,q,2.5\n3,r,3.5\n1,s,\n,t,5\n"


class Join(Case):
    def setUp(self):
        super().setUp()
        self.left, self.right = self.write("left.csv", LEFT), self.write("right.csv", RIGHT)

    def join(self, *words, **more):
        return self.run_hvhost("join", *words, cwd=self.folder, **more)

    def test_each_kind_of_join_in_the_order_of_the_files(self):
        both = "1,10,x,s,\n2,20,y,p,1.5\n2,20,y,q,2.5\n2,21,z,p,1.5\n2,21,z,q,2.5\n"
        lone = "4,40,w,,\n,50,u,,\n"
        other = "3,,,r,3.5\n,,,t,5.0\n"
        for how, expected in (("inner", both), ("left", both + lone), ("right", both + other),
                              ("full", both + lone + other)):
            done = self.join("left.csv", "right.csv", "-", "--on", "ID", "--how", how, "-q")
            self.assertEqual((done.stdout, done.stderr), ("id,v,b,B_1,c\n" + expected, ""), how)
        done = self.join("left.csv", "right.csv", "-", "--on", "id", "--how", "anti", "-q", "--strict")
        self.assertEqual(done.stdout, "id,v,b\n4,40,w\n,50,u\n")

    def test_files_of_every_kind(self):
        expected = self.join("left.csv", "right.csv", "-", "--on", "id", "-q").stdout
        for kind in ("sav", "hvbf", "parquet"):
            self.run_hvhost("convert", self.right, self.folder / f"right.{kind}")
            self.join("left.csv", f"right.{kind}", f"out.{kind}", "--on", "id", "--encoding", "UTF-8", "-q")
            self.assertEqual(self.run_hvhost("convert", self.folder / f"out.{kind}", "-").stdout, expected)

    def test_the_report(self):
        told = ('hvhost: warning: join: the field "B" of the input "right" becomes "B_1", because an earlier input '
                "has a field of this name\n"
                "hvhost: in both files: 2 keys\n"
                "hvhost: right.csv repeats 1 key: 2 records of left.csv became 4\n"
                "hvhost: only in left.csv: 2 keys, 2 records: 4, (missing)\n"
                "hvhost: only in right.csv: 2 keys, 2 records: 3, (missing)\n")
        self.assertEqual(self.join("left.csv", "right.csv", "o.csv", "--on", "id").stderr, told)
        for name, start in (("r.csv", "side,id,records\nleft,4,1\nleft,,1\nright,3,1\nright,,1\n"),
                            ("r.txt", "┌")):
            self.join("left.csv", "right.csv", "o.csv", "--on", "id", "--force", "--report", name)
            self.assertTrue((self.folder / name).read_text(encoding="utf-8").startswith(start))
        done = self.join("left.csv", "right.csv", "o.csv", "--on", "id", "--force", "--report", "-")
        self.assertIn("│ left  │", done.stdout)
        many = self.write("many.csv", "id\n" + "".join(f"{n}\n" for n in range(100, 130)))
        done = self.join(many, "right.csv", "o.csv", "--on", "id", "--force")
        self.assertIn("30 keys, 30 records: 100, 101, 102, 103, 104, ...\n", done.stderr)

    def test_what_is_done_with_the_joined_records(self):
        done = self.join("left.csv", "right.csv", "-", "--on", "id", "-q", "--derive", "s=x.v + x.c", "--where",
                         "x.v > 15", "--sort", "s:desc", "--limit", 2, "--keep", "S,b_1")
        self.assertEqual(done.stdout, "s,B_1\n23.5,q\n22.5,q\n")
        done = self.join("left.csv", "right.csv", "-", "--on", "id", "--keep", "vv", status=2)
        self.assertIn("did you mean v?", done.stderr)

    def test_keys_of_several_fields_and_kinds(self):
        left = self.write("l.csv", "a,day\n1,2024-01-01\n1,2024-01-02\n2,2024-01-01\n")
        right = self.write("r.csv", "x,when,y\n1.0,2024-01-01 00:00:00,p\n2.5,2024-01-01 00:00:00,q\n")
        done = self.join(left, right, "-", "--on", "a=x,day=when", "--how", "full", "-q")
        self.assertEqual([line.split(",")[0::2] for line in done.stdout.splitlines()],
                         [["a", "y"], ["1.0", "p"], ["1.0", ""], ["2.0", ""], ["2.5", "q"]])
        # The host would round these to one key.
        ids = "id\n9007199254740993\n9007199254740992\n"
        done = self.join("-", self.write("big.csv", ids), "-", "--on", "id", text=ids)
        self.assertEqual((done.stdout, done.stderr), (ids, "hvhost: in both files: 2 keys\n"))

    def test_files_without_records_or_keys(self):
        blank = self.write("blank.csv", "id,z\n,1\n")
        self.assertEqual(self.join("left.csv", blank, "-", "--on", "id", "--how", "right", "-q").stdout,
                         "id,v,b,z\n,,,1\n")
        empty = self.write("empty.csv", "id,z\n")
        for words, rows in (([self.left, empty, "--how", "left"], 5), ([self.left, empty], 0),
                            ([empty, self.left, "--how", "full"], 5), ([empty, empty], 0)):
            done = self.join(*words, "-", "--on", "id", "-q")
            self.assertEqual(len(done.stdout.splitlines()), rows + 1, words)

    def test_a_weight_of_the_right_file_is_none_of_the_result(self):
        for name in ("left", "right"):
            self.run_hvhost("convert", self.folder / f"{name}.csv", self.folder / f"{name}.sav", "--weight",
                            "v" if name == "left" else "c")
        self.join("left.sav", "right.sav", "o.sav", "--on", "id", "-q")
        self.assertIn("weighted by v\n", self.run_hvhost("info", self.folder / "o.sav").stdout)


class Append(Case):
    def test_fields_match_by_name_and_the_rest_is_told(self):
        a = self.write("a.csv", "id,v\n1,2\n")
        b = self.write("b.csv", "V,w\n2.5,x\n")
        c = self.write("c.csv", "id,w\n,\n")
        done = self.run_hvhost("append", a, b, c, "-", cwd=self.folder)
        self.assertEqual(done.stdout, "id,v,w\n1,2.0,\n,2.5,x\n,,\n")
        self.assertEqual(done.stderr, f'hvhost: {a} has no field "w", missing in its records\n'
                                      f'hvhost: {b} has no field "id", missing in its records\n'
                                      f'hvhost: {c} has no field "v", missing in its records\n')
        sav = self.folder / "a.sav"
        self.run_hvhost("append", a, a, "-o", sav)
        done = self.run_hvhost("append", sav, b, "-", "--by-position", "--derive", "u=x.id * 2", status=2)
        self.assertIn(f'{b}: "w" is a text, and in {sav} it is a number', done.stderr)
        d = self.write("d.csv", "k,u\n7,8\n")
        done = self.run_hvhost("append", sav, "-", "-", "--by-position", "--sort", "ID:desc", text=d.read_text())
        self.assertEqual((done.stdout, done.stderr), ("id,v\n7,8\n1,2\n1,2\n", ""))


class Selection(Case):
    def convert(self, *words):
        return self.run_hvhost("convert", PENGUINS, "-", *words).stdout.splitlines()[1:]

    def test_limit_is_after_the_filter_and_first_before_it(self):
        where = ["--where", 'x.species == "Gentoo"', "--keep", "species"]
        self.assertEqual(self.convert(*where, "--limit", 3), ["Gentoo"] * 3)
        self.assertEqual(self.convert(*where, "--first", 3), [])
        for words in (["--first", 9, "--limit", 4], ["--first", 4, "--limit", 9]):
            self.assertEqual(len(self.convert(*words)), 4)
        count = ["aggregate", PENGUINS, "--stat", "count", "--format", "csv", *where[:2]]
        self.assertEqual(self.run_hvhost(*count, "--limit", 3).stdout, "count\n3\n")

    def test_sort_top_and_distinct(self):
        masses = self.rows(PENGUINS)
        heavy = sorted((int(row["body_mass_g"]) for row in masses if row["body_mass_g"]), reverse=True)
        self.assertEqual(self.convert("--top", 4, "--by", "body_mass_g", "--keep", "body_mass_g"),
                         [str(mass) for mass in heavy[:4]])
        found = self.convert("--sort", "species,body_mass_g:desc", "--keep", "species,body_mass_g")
        self.assertEqual(found, sorted(found, key=lambda line: (line.split(",")[0], -int(line.split(",")[1] or 0))))
        pairs = self.convert("--distinct", "--keep", "species,island", "--sort", "island,species:desc")
        self.assertEqual(pairs, ["Gentoo,Biscoe", "Adelie,Biscoe", "Chinstrap,Dream", "Adelie,Dream",
                                 "Adelie,Torgersen"])
        self.assertEqual(self.convert("--distinct-by", "sex", "--keep", "sex"), ["MALE", "FEMALE", "", "."])

    def test_samples(self):
        every = self.convert()
        some = self.convert("--sample", 50)
        self.assertEqual(len(some), 50)
        self.assertEqual(some, self.convert("--sample", 50, "--direct"))
        self.assertNotEqual(some, self.convert("--sample", 50, "--seed", 1))
        for line in some:
            self.assertIn(line, every)
        self.assertTrue(20 < len(self.convert("--sample", "20%")) < 110)

    def test_totals(self):
        data = self.write("data.csv", "a,b,v,w\n" + "x,p,1,1\nx,,2,1\n,p,3,2\n,,4,1\n,,5,1\n")
        words = ["aggregate", data, "--by", "a,b", "--stat", "sum:v:s", "--totals"]
        expected = [["x", "p", 0, 1], ["x", None, 0, 2], ["x", None, 1, 3], [None, "p", 0, 3],
                    [None, None, 0, 9], [None, None, 1, 12], [None, None, 2, 15]]
        rows = json.loads(self.run_hvhost(*words, "--format", "json").stdout)["rows"]
        self.assertEqual([list(row.values()) for row in rows], expected)
        self.assertEqual(list(rows[0]), ["a", "b", "total", "s"])
        rows = json.loads(self.run_hvhost(*words, "--format", "json", "--weight", "w").stdout)["rows"]
        self.assertEqual([row["s"] for row in rows], [1, 2, 3, 6, 9, 15, 18])
        lines = self.run_hvhost(*words).stdout.splitlines()[3:-1]
        self.assertEqual([[cell.strip() for cell in line.split("│")[1:-1]] for line in lines][2:],
                         [["x", "(all)", "3"], ["", "p", "3"], ["", "", "9"], ["", "(all)", "12"],
                          ["(all)", "(all)", "15"]])
        out = self.folder / "o.sav"
        self.run_hvhost(*words, out)
        self.assertEqual(len(self.run_hvhost("convert", out, "-").stdout.splitlines()), 8)


if __name__ == "__main__":
    unittest.main()
