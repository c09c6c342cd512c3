#!/usr/bin/env python3
"""Writes the binary seeds of fuzz targets: fuzz/make_seeds.py HVHOST. They are in the repository; this is
how they were made, for the day when a format changes."""
import pathlib
import struct
import subprocess
import sys
import tempfile

HVHOST = sys.argv[1]
ROOT = pathlib.Path(__file__).resolve().parent
DATA = ROOT.parent / "examples" / "data"
MARK = b"\n%%%\n"

PEOPLE = "name,born,height,seen\nAda,1815-12-10,1.65,2024-01-01 12:00:00\nÉmile,1840-04-02,,2024-01-02 00:00:00.5\n"
JOB = """val told = {"fields": [
    {"name": "height", "displayLabel": "Height in m", "measure": "ordinal", "missingValues": {"Value": ["9"]}},
    {"name": "name", "valueLabels": [{"value": "Ada", "displayLabel": "The first"}]}]}
read({"dataSource": "in"}) -> updateDataModel(told) -> write({"dataSource": "out", "mode": "overwrite"})
"""


def put(target, name, content):
    folder = ROOT / "seeds" / target
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(content)


def hvhost(*words, text=None):
    subprocess.run([HVHOST, *map(str, words)], input=text, text=True, check=True)


def data_files():
    """The digit before the file is its kind for the target."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        people = folder / "people.csv"
        people.write_text(PEOPLE, encoding="utf-8")
        hvhost("run", "-", "--data", f"in={people}", "--save", f"out={folder / 'told.sav'}", text=JOB)
        hvhost("convert", people, folder / "weighted.sav", "--weight", "height")
        hvhost("convert", people, folder / "plain.parquet")
        for name, digits in (("told.sav", "0"), ("weighted.sav", "2"), ("plain.parquet", "1")):
            content = (folder / name).read_bytes()
            for digit in digits:
                put("data_file", name, digit.encode() + content)


def sealed_files():
    """The last byte chooses: odd for an unchanged file, even for a content that is sealed, changed and opened."""
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "one.csv").write_text("a\n1\n", encoding="utf-8")
        hvhost("convert", folder / "one.csv", folder / "one.sav", "--out-password", "krill")
        put("sealed_file", "whole.sav", (folder / "one.sav").read_bytes() + b"\1")
    put("sealed_file", "unchanged", b"content" + bytes(8))
    put("sealed_file", "changed", b"content\\ and more" + bytes(range(40)) + b"\xff\xff\xff\xfe")


def shape_file(kind, shapes, box=(0.0, 0.0, 10.0, 10.0)):
    """A shape file and its index; each shape is the bytes behind its kind."""
    records = b""
    index = b""
    for number, shape in enumerate(shapes, 1):
        content = struct.pack("<i", kind if shape else 0) + shape
        index += struct.pack(">ii", 50 + len(records) // 2, len(content) // 2)
        records += struct.pack(">ii", number, len(content) // 2) + content
    head = struct.pack("<ii4d4d", 1000, kind, *box, 0.0, 0.0, 0.0, 0.0)

    def whole(body):
        return struct.pack(">i20xi", 9994, 50 + len(body) // 2) + head + body

    return whole(records), whole(index)


def attributes(fields, rows):
    """A table; each field is its name, its type and its width."""
    size = 1 + sum(width for _, _, width in fields)
    head = struct.pack("<4BIHH20x", 3, 124, 1, 1, len(rows), 33 + 32 * len(fields), size)
    for name, kind, width in fields:
        head += struct.pack("<11sc4xBB14x", name.encode(), kind.encode(), width, 2 if kind == "F" else 0)
    body = b"".join(b" " + b"".join(value.encode().ljust(width)[:width]
                                   for value, (_, _, width) in zip(row, fields)) for row in rows)
    return head + b"\r" + body + b"\x1a"


def ring(*points):
    return struct.pack("<4dii", 0.0, 0.0, 10.0, 10.0, 1, len(points)) + struct.pack("<i", 0) + b"".join(
        struct.pack("<2d", *point) for point in points)


def shape_files():
    islands = [(DATA / f"islands.{part}").read_bytes() for part in ("shp", "shx", "dbf")]
    put("shape_file", "islands", MARK.join([*islands, b"", b"UTF-8"]))
    table = attributes([("NAME", "C", 8), ("COUNT", "N", 9), ("SHARE", "F", 9), ("SEEN", "D", 8), ("OPEN", "L", 1)],
                       [("Ulm", "3", "0.25", "20240229", "T"), ("Bonn", "", "", "", "?")])
    projection = b'PROJCS["UTM 32",GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563]],' \
                 b'PRIMEM["Greenwich",0],UNIT["Degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],' \
                 b'PARAMETER["central_meridian",9],PARAMETER["scale_factor",0.9996],' \
                 b'PARAMETER["false_easting",500000],UNIT["Meter",1]]'
    square = ring((0.0, 0.0), (0.0, 1.0), (1.0, 1.0), (1.0, 0.0), (0.0, 0.0))
    points = struct.pack("<4di", 0.0, 0.0, 1.0, 1.0, 2) + struct.pack("<4d", 0.0, 0.0, 1.0, 1.0)
    for name, kind, shape in (("points", 1, struct.pack("<2d", 1.0, 2.0)),
                              ("points_z", 11, struct.pack("<4d", 1.0, 2.0, 3.0, 4.0)),
                              ("lines", 3, square), ("polygons", 5, square), ("multipoints", 8, points),
                              ("polygons_z", 15, square + struct.pack("<7d", 0.0, 1.0, *[0.5] * 5))):
        shapes, index = shape_file(kind, [shape, b""])
        # A coordinate system takes long to look up, so only one of them has one.
        system = projection if name == "lines" else b""
        put("shape_file", name, MARK.join([shapes, index, table, system, b"ISO-8859-1"]))


data_files()
sealed_files()
shape_files()
