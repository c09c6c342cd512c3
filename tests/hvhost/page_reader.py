"""Reads pages as a browser without scripting would, and refuses those that are not well formed."""
import html.parser

VOID = {"meta", "link", "br", "hr", "img", "input", "col"}


class Page(html.parser.HTMLParser):
    """The headings, the outline, and the tables by their captions: rows of (shown, raw value).

    The data of charts are not among the tables."""

    def __init__(self, text):
        super().__init__()
        self.open, self.ids, self.links = [], set(), set()
        self.headings, self.outline, self.tables = [], [], {}
        self.charts = 0
        self._rows, self._caption, self._text, self._value = [], None, "", None
        self.feed(text)
        self.close()
        assert not self.open, f"left open: {self.open}"
        assert self.links <= self.ids, f"links that lead nowhere: {self.links - self.ids}"

    def handle_starttag(self, tag, attrs):
        given = dict(attrs)
        if "id" in given:
            assert given["id"] not in self.ids, f"two of the id {given['id']}"
            self.ids.add(given["id"])
        if given.get("href", "").startswith("#"):
            self.links.add(given["href"][1:])
        assert not any(given.get(name, "").startswith("http") for name in ("src", "href")), given
        if tag in VOID:
            return
        self.open.append(tag)
        if tag in ("h1", "h2", "h3", "caption", "a", "td", "th"):
            self._text, self._value = "", given.get("data-value")
            self._isNumber = tag == "td" and "text" not in given.get("class", "").split()
        if tag == "table":
            self._rows, self._caption = [], None
        if tag == "tr":
            self._rows.append([])
        if tag == "figure":
            self.charts += "chart" in given.get("class", "").split()

    def handle_endtag(self, tag):
        assert self.open and self.open.pop() == tag, f"</{tag}> closes what is not open"
        if tag in ("h1", "h2", "h3"):
            self.headings.append((tag, self._text))
        elif tag == "a" and "nav" in self.open:
            self.outline.append(self._text)
        elif tag == "caption":
            self._caption = self._text
        elif tag in ("td", "th"):
            shown = self._text.strip()
            # A number without a value of its own is shown with all digits.
            whole = shown if self._isNumber and shown else None
            self._rows[-1].append((shown, whole if self._value is None else self._value))
        elif tag == "table" and "details" not in self.open[self.open.index("figure"):]:
            self.tables[self._caption] = self._rows

    def handle_data(self, data):
        self._text += data

    def row(self, caption, label):
        """The cells behind a label."""
        for row in self.tables[caption]:
            shown = [cell for cell, _ in row]
            if label in shown:
                return row[shown.index(label) + 1:]
        raise AssertionError(f"{caption} has no row {label}")
