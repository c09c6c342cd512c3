"""hvhost map: what it shows of maps, what it writes, and how it refuses."""
import http.server
import json
import os
import pathlib
import shutil
import subprocess
import sys
import threading
import unittest
import zipfile

from hvhost_case import DATA, Case

TESTS = pathlib.Path(__file__).resolve().parent.parent
ISLANDS = DATA / "islands.shp"
COLONIES = DATA / "colonies.csv"


class MapTest(Case):
    def features(self, text):
        return json.loads(text)["features"]

    def test_info_tells_fields_system_and_extent(self):
        text = self.run_hvhost("map", "info", ISLANDS).stdout
        self.assertRegex(text, r"MultiPolygon")
        self.assertRegex(text, r"4326")
        told = json.loads(self.run_hvhost("map", "info", ISLANDS, "--format", "json").stdout)
        self.assertEqual(told["shapes"]["system"]["wkid"], 4326)
        self.assertIn({"name": "KEY", "type": "string", "measure": "nominal"}, told["fields"])
        with zipfile.ZipFile(self.folder / "islands.zip", "w") as archive:
            for ending in ("shp", "shx", "dbf", "prj", "cpg"):
                archive.write(ISLANDS.with_suffix("." + ending), "islands." + ending)
        packed = json.loads(self.run_hvhost("map", "info", self.folder / "islands.zip",
                                            "--format", "json").stdout)
        self.assertEqual(packed["fields"], told["fields"])
        self.assertIn("<DataModel", self.run_hvhost("map", "info", ISLANDS, "--data-model").stdout)

    def test_info_as_a_page_shows_the_map(self):
        out = self.folder / "islands.html"
        self.run_hvhost("map", "info", ISLANDS, "-o", out)
        page = out.read_text(encoding="utf-8")
        self.assertEqual(page.count("<path d="), 4)
        self.assertIn("KEY: Torgersen", page)
        self.assertRegex(page, r"WGS 84 \(4326\), geographic")
        self.assertRegex(page, r"<th[^>]*>KEY</th><td[^>]*>string</td>")
        german = self.run_hvhost("map", "info", ISLANDS, environment={"LC_ALL": "de_DE.UTF-8"}).stdout
        for line in ("Formen: MultiPolygon im Feld shape", "Ausdehnung: -66,5343 bis"):
            self.assertIn(line, german)
        self.assertRegex(german, "KEY .* Text .* nominal")
        self.run_hvhost("map", "info", ISLANDS, "-o", out, status=2)
        self.run_hvhost("map", "info", "http://127.0.0.1:9/none", "--format", "html", status=2)

    def test_info_of_a_service_and_its_layers(self):
        server = subprocess.Popen([sys.executable, TESTS / "engine" / "map_server.py"], stdout=subprocess.PIPE)
        try:
            address = f"http://127.0.0.1:{int(server.stdout.readline())}/pages"
            told = json.loads(self.run_hvhost("map", "info", address, "--format", "json").stdout)
            self.assertEqual(told["layers"], [
                {"id": 0, "name": "all", "shapes": "", "keys": "", "description": "", "subLayers": [3]},
                {"id": 3, "name": "towns", "shapes": "Point", "keys": "town,kind", "description": "Towns",
                 "subLayers": []}])
            self.assertEqual(self.run_hvhost("map", "info", address, "--format", "csv").stdout,
                             'layer,name,shapes,keys\n0,all,,\n3,towns,Point,"town,kind"\n')
            self.assertIn("2 layers\n", self.run_hvhost("map", "info", address).stdout)
            self.assertRegex(self.run_hvhost("map", "info", address, environment={"LC_ALL": "de_DE.UTF-8"}).stdout,
                             r": 2 Ebenen\n[^\n]*\n│ Ebene +│ Name +│ Formen +│ Schlüssel +│\n")
            layer = self.run_hvhost("map", "info", address, "--layer", 3).stdout
            self.assertIn("shapes: Point in the field shape\n", layer)
            self.assertEqual(len(self.features(self.run_hvhost("map", "convert", address, "-", "--layer", 3).stdout)), 25)
        finally:
            server.kill()
            server.communicate()

    def test_convert_writes_a_map_in_another_system(self):
        out = self.folder / "out.geojson"
        self.run_hvhost("map", "convert", ISLANDS, out, "--out-data-model", self.folder / "out.xml")
        plain = self.features(out.read_text(encoding="utf-8"))
        self.assertEqual([feature["properties"]["KEY"] for feature in plain],
                         ["Biscoe", "Dream", "Torgersen", "Anvers"])
        for system in ("3031", "EPSG:3031", "WGS 84 / Antarctic Polar Stereographic"):
            moved = self.features(self.run_hvhost("map", "convert", ISLANDS, "-", "--to",
                                                  system).stdout)
            east, north = moved[0]["geometry"]["coordinates"][0][0][0]
            self.assertLess(east, -1e6, system)
            self.assertGreater(north, 1e6, system)
        self.run_hvhost("map", "convert", ISLANDS, out, status=2)
        self.run_hvhost("map", "convert", ISLANDS, out, "--force", "--to", 3031)
        self.assertNotEqual(self.features(out.read_text(encoding="utf-8")), plain)

    def test_points_of_a_dataset(self):
        words = ["map", "points", COLONIES, "--x", "east", "--y", "NORTH"]
        points = self.features(self.run_hvhost(*words, "-").stdout)
        self.assertEqual(points[1]["geometry"],
                         {"type": "Point", "coordinates": [-64.2333, -64.7333]})
        moved = self.features(self.run_hvhost(*words, "--from", 4326, "--to", 3031, "-").stdout)
        self.assertLess(moved[1]["geometry"]["coordinates"][0], -1e6)
        latin = self.write("latin.csv", "näme;x;y\nö;1.5;2\n".encode("latin-1"))
        self.assertEqual(self.features(self.run_hvhost(
            "map", "points", latin, "--x", "x", "--y", "y", "--encoding", "latin1",
            "-").stdout)[0]["properties"]["näme"], "ö")

    def test_match_counts_and_lists(self):
        words = ["map", "match", ISLANDS, COLONIES, "--keys", "KEY=island"]
        found = json.loads(self.run_hvhost(*words, "--format", "json").stdout)
        self.assertEqual(found, {
            "schema": 1, "matched": 3,
            "map": {"keys": ["KEY"], "count": 1, "unmatched": [["Anvers"]], "more": False},
            "data": {"keys": ["island"], "count": 1, "unmatched": [["Cormorant"]], "more": False}})
        self.assertEqual(self.run_hvhost(*words, "--format", "csv").stdout,
                         "side,KEY\nmap,Anvers\ndata,Cormorant\n")
        self.assertIn("in both: 3", self.run_hvhost(*words).stdout)
        cut = self.run_hvhost(*words, "--limit", 0).stdout
        self.assertIn("only in the map: 1, of which 0 are shown", cut)
        penguins = self.run_hvhost("map", "match", ISLANDS, DATA / "penguins.csv", "--keys",
                                   "KEY=island").stdout
        self.assertIn("only in the data: 0", penguins)
        self.assertIn("colonies.csv: the host serves the cases", self.run_hvhost(*words, "-v").stderr)

    def test_faults_name_the_thing(self):
        broken = self.write("broken.shp", "no shapes")
        alone = self.write("alone.shp", "no shapes")
        self.write("broken.dbf", "no table")
        with zipfile.ZipFile(self.folder / "empty.zip", "w") as archive:
            archive.writestr("readme", "x")
        self.write("text.zip", "no archive")
        with zipfile.ZipFile(self.folder / "away.zip", "w") as archive:
            for name in ("away.shp", "away.dbf", "../away.shx"):
                archive.writestr(name, "x")
        out = self.folder / "out.geojson"
        points = ["map", "points", COLONIES, out]
        match = ["map", "match", ISLANDS, COLONIES, "--keys"]
        for status, words, told in (
                (3, ["map", "info", self.folder / "missing.shp"], "missing.shp: no such file"),
                (3, ["map", "info", self.folder], "folder"),
                (2, ["map", "info", "a\\b.shp"], "a path with a backslash cannot be used"),
                (3, ["map", "info", alone], "alone.shp: .*dbf"),
                (3, ["map", "info", broken], "broken.shp"),
                (3, ["map", "info", self.folder / "empty.zip"], "does not contain a shape file"),
                (3, ["map", "info", self.folder / "text.zip"], "text.zip: this is not a zip archive"),
                (3, ["map", "info", self.folder / "away.zip"],
                 r"not unpacked, since its entry \"\.\.[\\\\/]away.shx\" is"),
                (2, ["map", "convert", ISLANDS, out, "--from", 4326], "--from 4326: without --to"),
                (2, ["map", "info", ISLANDS, "--layer", 1], "layer"),
                (3, ["map", "info", "http://127.0.0.1:9/none"], "127.0.0.1"),
                (2, ["map", "convert", "http://127.0.0.1:9/none", out], "layer"),
                (2, ["map", "convert", ISLANDS, out, "--to", "nowhere"], "--to nowhere"),
                (2, ["map", "convert", ISLANDS, out, "--to", 99999999], "--to 99999999"),
                (2, [*points, "--x", "east", "--y", "nroth"], "did you mean north"),
                (2, [*points, "--x", "east", "--y", "island"], "--y island"),
                (2, [*points, "--x", "east", "--y", "north", "--to", 3031], "--to 3031"),
                (2, [*match, "KEY=isle"], "isle"),
                (2, [*match, "=island"], "--keys =island"),
                (2, [*match, "KEI=island"], "--keys KEI=island: .*\n.*did you mean KEY"),
                (2, [*match, "ID=island"], "ID=island: it is a number in the map and a text in the data"),
                (2, ["map"], "map"),
                (2, ["map", "nothing"], "hvhost help map")):
            errors = self.run_hvhost(*words, status=status).stderr
            self.assertRegex(errors, told)
            self.assertFalse(out.exists(), words)

    def test_help_and_completion_know_the_commands_of_map(self):
        for words in (["map", "--help"], ["help", "map"]):
            text = self.run_hvhost(*words).stdout
            for name in ("info", "convert", "points", "match"):
                self.assertRegex(text, rf"(?m)^  {name} ")
        self.assertIn("--keys", self.run_hvhost("help", "map", "match").stdout)
        self.run_hvhost("help", "map", "nothing", status=2)
        script = self.run_hvhost("completion", "bash").stdout
        self.assertIn("info convert points match", script)


if __name__ == "__main__":
    unittest.main()
