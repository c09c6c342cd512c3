"""The look of a page: its background, and how much ink is in each square of its screenshot.

A look is a text: the colour of the background, then a line of hexadecimal digits for each row of squares, 0 for
no ink and f for much. Two looks are compared with a tolerance, so that other versions of the browser pass, and a
lost chart, a wrong colour or a shifted column does not.
"""
import base64
import struct
import zlib

WIDTH, HEIGHT = 1280, 2000
SCALE = 0.1
SQUARE = 4  # pixels of the scaled image
MOST_AWAY = 0.03  # share of squares
AWAY = 4  # of 15 levels
INK = 4  # so that text is in the middle of the levels


def pixels_of(png):
    """The rows of an image with 8 bits for each channel, as lists of (red, green, blue)."""
    data, at = b"", 8
    while at < len(png):
        length, kind = struct.unpack_from(">I4s", png, at)
        part = png[at + 8:at + 8 + length]
        at += length + 12
        if kind == b"IHDR":
            width, height, depth, colours = struct.unpack_from(">IIBB", part)
            if depth != 8 or colours not in (2, 6):
                raise ValueError("an unexpected kind of png")
        elif kind == b"IDAT":
            data += part
    size = 3 if colours == 2 else 4
    raw, stride = zlib.decompress(data), width * size
    above, rows = bytearray(stride), []
    for line in range(height):
        begin = line * (stride + 1)
        row = unfiltered(raw[begin], bytearray(raw[begin + 1:begin + 1 + stride]), above, size)
        rows.append([tuple(row[x:x + 3]) for x in range(0, stride, size)])
        above = row
    return rows


def unfiltered(kind, row, above, size):
    for at in range(len(row) if kind else 0):
        left = row[at - size] if at >= size else 0
        up, corner = above[at], above[at - size] if at >= size else 0
        nearest = min((left, up, corner), key=lambda value: abs(left + up - corner - value))
        row[at] = (row[at] + (0, left, up, (left + up) // 2, nearest)[kind]) % 256
    return row


def look_of(page):
    """Takes the top of a page. Its text is in one font, because fonts differ between machines."""
    for domain in ("DOM", "CSS"):
        page.call(f"{domain}.enable")
    frame = page.call("Page.getFrameTree")["frameTree"]["frame"]["id"]
    sheet = page.call("CSS.createStyleSheet", frameId=frame)["styleSheetId"]
    page.call("CSS.setStyleSheetText", styleSheetId=sheet,
              text='* { font-family: "DejaVu Sans" !important; transition: none !important; }')
    shot = page.call("Page.captureScreenshot", format="png", captureBeyondViewport=True,
                     clip={"x": 0, "y": 0, "width": WIDTH, "height": HEIGHT, "scale": SCALE})
    rows = pixels_of(base64.b64decode(shot["data"]))
    paper = rows[0][0]
    lines = ["#%02x%02x%02x" % paper]
    for y in range(0, len(rows) - SQUARE + 1, SQUARE):
        lines.append("".join(f"{ink(rows, paper, x, y):x}" for x in range(0, len(rows[0]) - SQUARE + 1, SQUARE)))
    return "\n".join(lines) + "\n"


def ink(rows, paper, left, top):
    """The mean distance of a square from the background, in levels from 0 to 15."""
    away = [abs(channel - ground) for row in rows[top:top + SQUARE] for pixel in row[left:left + SQUARE]
            for channel, ground in zip(pixel, paper)]
    return min(15, round(sum(away) / len(away) / 255 * 15 * INK))


def difference(look, other):
    """What differs too much, as a text; empty if nothing does."""
    (paper, *rows), (other_paper, *other_rows) = look.split("\n"), other.split("\n")
    if paper != other_paper or [*map(len, rows)] != [*map(len, other_rows)]:
        return f"{paper}, {len(rows)} rows"
    pairs = [(int(a, 16), int(b, 16)) for row, other in zip(rows, other_rows) for a, b in zip(row, other)]
    away = sum(abs(a - b) >= AWAY for a, b in pairs)
    return f"{away} of {len(pairs)} squares:\n{look}" if away > MOST_AWAY * len(pairs) else ""
