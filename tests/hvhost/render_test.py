"""hvhost render: result documents and order files in, text out."""
import fcntl
import json
import os
import pty
import re
import struct
import subprocess
import termios
import unittest

from hvhost_case import DATA, HVHOST, Case
from page_reader import Page

WEATHER = DATA / "weather.json"


def text(words):
    return {"text": {"stringText": {"value": words}}}


def table(rows, columns, values, **more):
    def dimension(name, role, labels):
        return {"text": text(name), "role": role, "children": [{"text": text(label)} for label in labels]}

    return {"tableId": "t", "title": {}, "cells": [{"cells": {"compactCells": {"value": values}}}],
            "dimensions": [dimension("Rows", "row", rows), dimension("Columns", "column", columns)], **more}


class Render(Case):
    def render(self, document, order=None, *words, **more):
        result = self.write("result.json", json.dumps(document, ensure_ascii=False))
        if order is not None:
            words += ("--order", self.write("order.json", json.dumps(order)))
        return self.run_hvhost("render", result, *words, **more)

    def test_everything_is_shown_in_order_without_an_order_file(self):
        document = {"zeta": {"notifications": [dict(text("careful"), severity="Warning")],
                             "deep": {"second": table(["r"], ["c"], [1.5]), "no": {"table": 1}},
                             "first": {"mark": "bar", "data": {"values": [{"n": 7}]}}},
                    "dataModel": {"looks": table(["r"], ["c"], [1])},
                    "alpha": table(["r"], ["c"], [2])}
        shown = self.render(document).stdout
        places = [shown.index(words) for words in
                  ("result\n══════", "Warning: careful", "zeta\n────", "› deep", "second\n┌", " 1.5 │",
                   "first\n┌", "│ 7 │", "alpha\n┌")]
        self.assertEqual(places, sorted(places))
        self.assertNotIn("looks", shown)

    def test_an_order_says_what_is_shown_and_how(self):
        document = {"one": {"a": {"t": table(["x", "y"], ["p", "q"], [1, 2, 3, 4])}, "k.k": {"n": [1]}},
                    "two": {"notifications": [text("unseen")], "t": table(["z"], ["p"], [5])}}
        document["one"]["map"] = {"mark": "geoshape", "parameters": [{"externalSource": "land"}]}
        self.write("land.geojson", json.dumps({"source": {"value": {"features": []}}}))
        order = [
            {"result": "one", "geoJson": {"land": "land.geojson"}, "objects": [
                {"heading": "Total.Deep", "location": "a.t", "title": "Mean", "translateTitle": True,
                 "subtype": "S", "caption": ["first", "second"], "showRows": "y", "showColumns": ["p", "q"],
                 "hideColumns": ["q"]},
                {"location": "map", "type": "mapChart", "title": "A map", "options": ["a", "b"]},
                {"locations": [["k.k"], "a"], "type": "interactive", "title": "A view", "pathId": "own",
                 "needsGeoJson": True}]},
            {"result": "two", "notifications": False, "objects": {"location": "t", "title": "Mean"}}]
        german = self.render(document, order, environment={"LC_ALL": "de_DE.UTF-8"}).stdout
        self.assertIn("› Deep\n\nMittelwert\n┌──────┬─────────┐\n│      │ Columns │\n│      ├─────────┤\n"
                      "│ Rows │       p │\n├──────┼─────────┤\n│ y    │       3 │\n└──────┴─────────┘\n"
                      "first\nsecond\n", german)
        self.assertIn("A map\nKarte: land\n", german)
        self.assertIn("A view\none, own\n1:\n  n: [1]\n2:\n  t:\n", german)
        self.assertIn("Mean\n┌", german)
        self.assertNotIn("unseen", german)

    def test_a_map_is_drawn_on_the_page(self):
        out = self.folder / "islands.html"
        self.run_hvhost("render", DATA / "islands.json", "--order", DATA / "islands-order.json", "-o", out)
        page = out.read_text(encoding="utf-8")
        for part in ("<title>Biscoe\nMean mass (g): 4716</title>", "<title>Anvers\nMean mass (g): No data</title>",
                     "<title>Torgersen\nPenguins: 52</title>", "url(#c1-hatch)"):
            self.assertIn(part, page)

    def test_faults_name_the_key_or_the_place(self):
        for order, fault in (
                ({"objects": [{"titel": "x"}]}, r"order\.json: objects\[0\]\.titel: .*\n  hint: did you mean title"),
                ({"objects": [{"location": 3}]}, r"order\.json: objects\[0\]\.location: a location is"),
                ({"objects": [{}, {"showRows": ["a", 1]}]}, r"objects\[1\]\.showRows\[1\]: a text is needed"),
                ([{}, {"notifications": "no"}], r"order\.json: \[1\]\.notifications: true or false"),
                ({"result": "none"}, r"order\.json: result: .*\n  hint: the document has weather"),
                ({"objects": [{"heading": "a." * 100}]}, r"objects\[0\]\.heading: headings go at most 100"),
                ({"objects": [{"type": "pie"}]}, r"objects\[0\]\.type: a type is pivot"),
                ({"geoJson": {"x": "missing.json"}}, r"missing\.json: no such file"),
                (3, r"order\.json: an object is needed")):
            with self.subTest(order):
                done = self.run_hvhost("render", WEATHER, "--order",
                                       self.write("order.json", json.dumps(order)), status=3)
                self.assertRegex(done.stderr, fault)
        for document, fault in (('{"a":\n  {"ö": tru}}', r"bad\.json:2:12: no JSON: "),
                                ('{"a":\n' + 40000 * '{"b":' + "1", r"bad\.json:2:2496: it is nested deeper"),
                                ("[1]", r"bad\.json: this is JSON, but no object"), ("", r"bad\.json: .*empty"),
                                ('{"name": "x", "scripts": {"t": {}}, "dataModel": {"fields": []}}',
                                 r"bad\.json: .*no result document\n  hint: .*tables, charts or notif"),
                                ('{"a": 1e999}', r"bad\.json: no JSON: number overflow parsing '1e999'")):
            with self.subTest(document):
                done = self.run_hvhost("render", self.write("bad.json", document), status=3)
                self.assertRegex(done.stderr, fault)
        done = self.render({"a": None, "b": {"notifications": []}}, {"result": "a"}, status=3)
        self.assertRegex(done.stderr, r'order\.json: result: the document has no result "a"')
        self.run_hvhost("render", WEATHER, "--width", 5, status=2)

    def test_what_leads_nowhere_is_a_warning(self):
        order = {"objects": [{"location": "no.such", "title": "x"}]}
        done = self.run_hvhost("render", WEATHER, "--strict", "--order",
                               self.write("order.json", json.dumps(order)), status=5)
        self.assertRegex(done.stderr, r"warning: .*order\.json: objects\[0\]: there is nothing to show")
        self.assertRegex(self.render({"x": {"notifications": []}}).stderr, r"result\.json: there is nothing to show")
        warned = {"x": {"notifications": [text("careful")]}}
        self.assertNotIn("careful", self.render(warned, None, "--strict", status=5).stderr)

    def test_output_goes_where_it_is_told_to(self):
        out = self.folder / "out.txt"
        self.run_hvhost("render", WEATHER, "-o", out)
        shown = self.run_hvhost("render", "-", text=WEATHER.read_text(encoding="utf-8")).stdout
        self.assertEqual(out.read_text(encoding="utf-8").split("\n")[3:], shown.split("\n")[3:])
        self.assertNotIn("\x1b", shown)
        self.assertLessEqual(max(map(len, shown.splitlines())), 80)
        self.run_hvhost("render", WEATHER, "-o", out, status=2)
        self.run_hvhost("render", WEATHER, "-o", out, "--force", "--width", 200)
        self.assertIn("│ Days[a] │ Mean │\n├", out.read_text(encoding="utf-8"))
        timed = self.render({"a": {"t": table(["r"], ["c"], [1])}, "b": {"t": table(["r"], ["c"], [2])}}, None, "--debug")
        self.assertRegex(timed.stdout, r"Debug\n┌[^┐]*┐\n│ Comment +│ Time")
        # One document is parsed once.
        self.assertEqual(re.findall(r"│ (read|shown: \w) +│", timed.stdout), ["read", "shown: a", "shown: b"])

    def test_a_page_by_its_name_or_by_the_form(self):
        out = self.folder / "out.html"
        self.run_hvhost("render", WEATHER, "-o", out)
        page = Page(out.read_text(encoding="utf-8"))
        self.assertEqual(page.headings[0], ("h1", "weather"))
        self.assertEqual(page.charts, 1)
        self.assertEqual(self.run_hvhost("render", WEATHER, "--format", "html").stdout,
                         out.read_text(encoding="utf-8"))
        self.run_hvhost("render", WEATHER, "-o", out, status=2)
        self.run_hvhost("render", WEATHER, "-o", out, "--force", "--format", "text")
        self.assertTrue(out.read_text(encoding="utf-8").startswith("weather\n═══"))
        self.run_hvhost("render", WEATHER, "--format", "pdf", status=2)

    def on_terminal(self, columns, **environment):
        own, other = pty.openpty()
        fcntl.ioctl(other, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        with subprocess.Popen([HVHOST, "render", WEATHER], stdout=other, env=self.environment(**environment)):
            os.close(other)
            shown = b""
            try:
                while chunk := os.read(own, 65536):
                    shown += chunk
            except OSError:  # the end of a terminal
                pass
        os.close(own)
        return shown.decode()

    def test_a_terminal_has_colours_and_a_width(self):
        self.assertIn("\x1b[1mweather\x1b[0m", self.on_terminal(200))
        plain = self.on_terminal(50, NO_COLOR="1")
        self.assertNotIn("\x1b", plain)
        self.assertLessEqual(max(map(len, plain.splitlines())), 50)

    def test_equal_names_lose_nothing(self):
        """Categories of one label, and one name on both axes."""
        same = table(["Total", "other", "Total"], ["c", "c"], [1, 2, 3, 4, 5, 6])
        for dimension in same["dimensions"]:
            dimension["text"] = text("Name")
        shown = self.render({"r": {"t": same}}).stdout
        self.assertEqual([line.split("│")[1:-1] for line in shown.splitlines() if re.search(r"│ +\d ", line)],
                         [[" Total ", " 1 ", " 2 "], [" other ", " 3 ", " 4 "], [" Total ", " 5 ", " 6 "]])
        page = Page(self.render({"r": {"t": same}}, None, "--format", "html").stdout)
        self.assertEqual([[cell for cell, _ in row] for row in page.tables["t"][-3:]],
                         [["Total", "1", "2"], ["other", "3", "4"], ["Total", "5", "6"]])

    def test_a_table_of_too_many_cells_is_named(self):
        """Patterns for all cells, at any number of dimensions, take no time and no room."""
        for dimensions, leaves in ((4, 80), (12, 80)):
            large = table([], [], [1], formats=[{"index": "*" * dimensions, "format": {"decimals": 1}}] * 3)
            large["dimensions"] = [{"text": text(f"D{number}"), "role": "row",
                                    "children": [{"text": text(str(leaf))} for leaf in range(leaves)]}
                                   for number in range(dimensions)]
            document = {"r": {"vast": large, "small": table(["a"], ["b"], [7])}}
            done = self.render(document, None, "--strict", "--timeout", 60, status=5)
            self.assertIn('Warning: The table "vast" is not shown: it has more than 10000000 cells.', done.stdout)
            self.assertIn("│       7 │", done.stdout)
            # A filter makes a table of one row of it.
            order = {"objects": {"location": "vast", "title": "V", "showRows": "3"}}
            document["r"]["vast"]["cells"][0]["cells"]["sparse"] = {"index": ["3" * dimensions], "value": [7.46]}
            self.assertIn(" 7.5 │", self.render(document, order).stdout)

    def test_a_large_table_is_shown_whole(self):
        count = 300
        labels = [f"v{i}" for i in range(count)]
        document = {"r": {"t": table(labels, labels, list(range(count * count)))}}
        shown = self.render(document).stdout
        rows = [line for line in shown.splitlines() if line.startswith("│ v7 ")]
        numbers = [int(cell) for row in rows for cell in row.split("│")[2:-1]]
        self.assertEqual(numbers, list(range(7 * count, 8 * count)))


if __name__ == "__main__":
    unittest.main()
