"""Pages of made-up output, read in a browser as a person reads, sorts and copies them."""
import os
import pathlib
import re
import resource
import subprocess
import tempfile
import unittest

from browser import Browser
from looks import difference, look_of

SAMPLES = os.environ["PAGE_SAMPLES"]
HOSTILE = "</script><img src=x onerror=alert(1)>\"' & \u2028\u2400\u241b \ufffd end"

# A table by its title, as rows of what each cell shows.
FUNCTIONS = r"""
const named = (title) => [...document.querySelectorAll("table")].find((table) =>
    table.offsetParent && table.caption.textContent.startsWith(title));
const text = (node) => page.text(node).trim();
const body = (title) => [...named(title).tBodies].flatMap((part) =>
    [...part.rows].map((row) => [...row.cells].map(text)));
const headers = (cell) => cell.headers.split(" ").map((id) => text(document.getElementById(id)));
const copied = () => {
  const event = new ClipboardEvent("copy", { clipboardData: new DataTransfer(), cancelable: true });
  document.dispatchEvent(event);
  return event.defaultPrevented ? event.clipboardData.getData("text/plain") : null;
};
const select = (first, last) => document.getSelection().setBaseAndExtent(first, 0, last, 0);
"""


def setUpModule():
    global browser, folder, pages
    folder = unittest.enterModuleContext(tempfile.TemporaryDirectory())
    browser = unittest.enterModuleContext(Browser())
    pages = {}


def file_of(kind):
    if kind not in pages:
        pages[kind] = os.path.join(folder, kind + ".html")
        subprocess.run([SAMPLES, kind, pages[kind]], check=True)
    return pages[kind]


def opened(kind, **settings):
    page = browser.open(file_of(kind), **settings)
    if settings.get("scripting", True):
        page.evaluate(FUNCTIONS)
        if kind in ("sample", "hostile"):
            page.evaluate("dispatchEvent(new Event('beforeprint'))")
            page.wait_until("document.documentElement.classList.contains('drawn')")
    return page


class Tables(unittest.TestCase):
    def test_cells_name_their_labels_from_the_outside_in(self):
        page = opened("sample")
        cells = "[...named('Weather by').tBodies[0].rows].map((row) => row.cells)"
        self.assertEqual(page.evaluate(f"headers({cells}[3].item(2))"),
                         ["Winter", "Wet", "Rain", "Year", "2012", "Percent"])
        self.assertEqual(page.evaluate(f"headers({cells}[5].item(4))"),
                         ["Winter", "Total", "Year", "2013", "Percent"])
        self.assertEqual(page.evaluate("named('Weather by').querySelector('.corner').innerText"),
                         "Days")

    def test_lays_out_every_shape(self):
        page = opened("shapes")
        grids = page.evaluate("""Object.fromEntries([...document.querySelectorAll("table")].map(
            (table) => [page.text(table.caption), [...page.grid([...table.tHead?.rows ?? []]),
                ["--"], ...page.grid([...table.tBodies].flatMap((part) => [...part.rows]))]
                .map((row) => row.join("|")).join(" / ")]))""")
        self.assertEqual(grids, {
            "rows alone": "Row| / -- / a|1 / b|1",
            "columns alone": "Column|Column / a|b / -- / 1|1",
            "hidden labels": "corner|| / Row|| / -- / a|1|1",
            "uneven groups": "|z|h|G|G / Row|z|h|1|2 / -- / r|4|3|1|2",
            "no category": "Row / -- / a",
            "no dimension": "-- / "})

        spans = page.evaluate("""[...document.querySelectorAll("table")].filter((table) =>
            table.querySelector("colgroup")).map((table) => [
                [...table.querySelectorAll("colgroup")].reduce((sum, group) => sum + group.span, 0),
                page.grid([...table.tBodies].flatMap((part) => [...part.rows]))[0].length])""")
        self.assertTrue(spans)
        for columns, cells in spans:
            self.assertEqual(columns, cells)

    def test_decimal_signs_stand_below_each_other(self):
        page = opened("sample")
        units = page.evaluate("""[...named("Descriptive").tBodies[0].rows].map((row) => {
            const digits = row.cells[2].firstChild;
            const range = document.createRange();
            range.setStart(digits, 0);
            range.setEnd(digits, (digits.data + ".").indexOf("."));
            return Math.round(range.getBoundingClientRect().right * 4); })""")
        self.assertEqual(units, units[:1] * 4)

    def test_footnotes_are_linked_both_ways(self):
        page = opened("sample")
        notes = page.evaluate("""[...document.querySelectorAll("figure sup a")].map((mark) => {
            const note = document.querySelector(mark.getAttribute("href"));
            const back = note.querySelector(".back").getAttribute("href");
            return [mark.textContent, note.innerText.split(/\s/)[0], "#" + mark.id === back]; })""")
        self.assertEqual(notes, [["a", "a", True], ["b", "b", True], ["a", "a", True]])

    def test_a_select_shows_one_layer_and_paper_all(self):
        page = opened("sample")
        shown = """[...document.querySelectorAll("[data-layer]")].filter((grid) =>
            grid.offsetParent).map((grid) => grid.querySelector(".detail").textContent)"""
        self.assertEqual(page.evaluate(shown), ["Sex: female"])
        page.evaluate("""{ const list = document.querySelector("select");
            list.value = "1"; list.dispatchEvent(new Event("change")); }""")
        self.assertEqual(page.evaluate(shown), ["Sex: male"])
        self.assertEqual(page.evaluate("body('Means').map((row) => row[0])"),
                         ["East", "North", "West"])
        page.media("print")
        self.assertEqual(page.evaluate(shown), ["Sex: female", "Sex: male"])
        self.assertFalse(page.evaluate("Boolean(document.querySelector('nav').offsetParent)"))

    def test_sorting_stays_in_groups_and_a_third_click_restores(self):
        page = opened("sample")
        table = "named('Weather by')"
        column = f"{table}.querySelector('[data-column=\"0\"]')"
        # To move rows inside the page costs a layout for each.
        page.evaluate("""window.inPage = 0;
            const append = DocumentFragment.prototype.append;
            DocumentFragment.prototype.append = function (...nodes) {
              inPage += nodes.filter((node) => node.isConnected).length;
              return append.apply(this, nodes);
            }; 0""")
        states, orders = [], []
        for _ in range(4):
            orders.append(page.evaluate("body('Weather by').map((row) => row.slice(0, -4))"))
            states.append(page.evaluate(f"{column}.getAttribute('aria-sort')"))
            page.evaluate(f"{column}.querySelector('button').click()")
        self.assertEqual(page.evaluate("inPage"), 0)
        self.assertEqual(states, ["none", "ascending", "descending", "none"])
        self.assertEqual(orders[0], orders[3])
        firsts = [[row[-1] for row in order[:6]] for order in orders]
        self.assertEqual(firsts[0], ["Sun", "Fog", "Drizzle", "Rain", "Snow", "Total"])
        self.assertEqual(firsts[1], ["Sun", "Fog", "Snow", "Rain", "Drizzle", "Total"])
        self.assertEqual(firsts[2], ["Fog", "Sun", "Drizzle", "Rain", "Snow", "Total"])
        # What labels a group stays in front of it, whichever row comes first.
        self.assertEqual(orders[2][0], ["Winter", "Dry", "Fog"])
        self.assertEqual(orders[1][2], ["Wet", "Snow"])

    def test_a_long_table_is_laid_out_in_sight_alone(self):
        page = opened("long")
        places = "[...%s.cells].map((cell) => Math.round(cell.getBoundingClientRect().left * 4))"
        rows = "[...named('Long').tBodies].flatMap((part) => [...part.rows])"
        shown = f"{rows}.filter((row) => row.cells[0].checkVisibility({{ contentVisibilityAuto: true }})).length"
        order = f"{rows}.map((row) => row.cells[0].textContent)"
        counts = f"{rows}.slice(0, -1).map((row) => Number(page.value(row.cells[1])))"
        first = page.evaluate(order)
        height = page.evaluate("named('Long').closest('.grid').scrollHeight")
        click = "named('Long').querySelector('[data-column=\"0\"] button').click()"
        for sign in (1, -1):
            page.evaluate(f"{click}; new Promise((done) => requestAnimationFrame(() => setTimeout(done)))")
            found = page.evaluate(counts)
            self.assertEqual(found, sorted(found, key=lambda count: sign * count))
            self.assertEqual((len(found), page.evaluate(f"{order}.at(-1)")), (20000, "Total"))
            self.assertLess(page.evaluate(shown), 1000)
            for row in (f"{rows}[0]", f"{rows}[50]"):
                self.assertEqual(page.evaluate(places % row), page.evaluate(places % "named('Long').tHead.rows[1]"))
        self.assertAlmostEqual(page.evaluate("named('Long').closest('.grid').scrollHeight") / height, 1, delta=0.01)
        # What is out of sight is copied too.
        page.evaluate("document.getSelection().selectAllChildren(named('Long'))")
        self.assertEqual(page.evaluate("copied()").count("\n"), 20003)
        # On paper and in another window it is a plain table.
        kind = "getComputedStyle(named('Long').tBodies[0]).display"
        page.media("print")
        self.assertEqual(page.evaluate(kind), "table-row-group")
        page.media("screen")
        self.assertEqual(page.evaluate(kind), "grid")
        page.evaluate("dispatchEvent(new Event('resize'))")
        self.assertEqual(page.evaluate(kind), "grid")
        page.call("Emulation.setDeviceMetricsOverride", width=900, height=900, deviceScaleFactor=1, mobile=False)
        page.evaluate("new Promise((done) => requestAnimationFrame(() => setTimeout(done)))")
        self.assertEqual(page.evaluate(kind), "table-row-group")
        page.evaluate(click)
        self.assertEqual(page.evaluate(order), first)
        self.assertEqual(page.complaints(), [])

    def test_each_block_of_a_long_table_has_the_labels_of_its_rows(self):
        page = opened("long")
        grid = "page.grid([...named('Values').tBodies].flatMap((part) => [...part.rows]))"
        orders = []
        for _ in range(4):
            orders.append(page.evaluate(grid))
            page.evaluate("named('Values').querySelector('[data-column] button').click()")
        self.assertTrue(page.evaluate("named('Values').matches('.blocks')"))
        self.assertEqual(orders[3], orders[0])
        self.assertEqual([row[0] for row in orders[1]], ["Valid"] * 1100 + ["Total"])
        self.assertEqual(orders[1], sorted(orders[0][:-1], key=lambda row: int(row[2])) + orders[0][-1:])
        left = page.evaluate("""[...named("Values").tBodies].map((block) =>
            Math.round(block.rows[0].cells[0].getBoundingClientRect().left * 4))""")
        self.assertEqual(left, left[:1] * 12)

    def test_copies_have_every_digit_and_every_label(self):
        page = opened("sample")
        page.evaluate("""document.addEventListener("copy", (event) => {
            window.pasted = event.clipboardData.getData("text/plain"); });
            named("Means").closest("figure").querySelector(".copy").click()""")
        lines = page.evaluate("window.pasted").split("\n")
        self.assertEqual(lines[:2], ["\tMeasure\tMeasure\tMeasure",
                                     "Region\tIncome\tSince\tRemark"])
        self.assertRegex(lines[2], r"^East\t34\d{3}\.\d{4,}\t2020-02-02\tfirst\\nsecond$")
        rows = "named('Weather by').tBodies[0].rows"
        page.evaluate(f"select({rows}[2].cells[1], {rows}[3].cells[1])")
        lines = page.evaluate("copied()").split("\n")
        self.assertEqual(lines[1:3], ["Days\tDays\tDays\t2012\t2012\t2013\t2013",
                                      "Season\tWeather\tWeather\tCount\tPercent\tCount\tPercent"])
        self.assertEqual([line.split("\t")[:3] for line in lines[3:5]],
                         [["Winter", "Wet", "Drizzle"], ["Winter", "Wet", "Rain"]])
        self.assertTrue(lines[3].endswith("\t63\t"), "a missing value is an empty cell")
        page.evaluate("select(document.querySelector('h1'), named('Weather by').tHead)")
        mixed = page.evaluate("copied()")
        self.assertTrue(mixed.startswith("Weather in Seattle\n"))
        self.assertIn("\t3.0294318959616704\n", mixed)
        self.assertNotIn("Means by Region", mixed)
        page.evaluate("select(named('Means').rows[2].cells[1], named('Means').rows[2].cells[2])")
        self.assertRegex(page.evaluate("copied()"),
                         r"^\tMeasure\nRegion\tIncome\nEast\t34\d{3}\.\d+\n$")


class Charts(unittest.TestCase):
    def test_a_chart_is_drawn_with_its_words_and_data(self):
        page = opened("sample")
        self.assertEqual(page.complaints(), [])
        self.assertEqual(page.evaluate("document.querySelectorAll('figure.chart svg').length"), 2)
        figure = "document.querySelector('figure.chart')"
        self.assertEqual(page.evaluate(f"{figure}.querySelectorAll('.mark-rect path').length"), 8)
        self.assertEqual(page.evaluate(f"{figure}.querySelector('svg > title').textContent"),
                         "Kinds of Weather Days of each kind of weather, by year.")
        self.assertEqual(page.evaluate(f"{figure}.querySelector('details').open"), False)
        self.assertEqual(page.evaluate(f"{figure}.querySelectorAll('details tbody tr').length"), 8)

    def test_a_chart_is_drawn_when_it_comes_into_sight(self):
        page = browser.open(file_of("sample"), height=50)
        last = "[...document.querySelectorAll('figure.chart')].at(-1)"
        page.evaluate("new Promise((done) => setTimeout(done, 500))")
        self.assertFalse(page.evaluate(f"Boolean({last}.querySelector('svg'))"))
        page.evaluate(f"{last}.scrollIntoView()")
        page.wait_until(f"{last}.querySelector('svg > title')")

    def test_what_cannot_be_drawn_becomes_a_note_and_data(self):
        page = opened("hostile")
        shown = page.evaluate("""[...document.querySelectorAll("figure.chart")].map((figure) =>
            [figure.querySelector(".message")?.innerText ?? "", figure.innerText])""")
        for (note, text), expected in zip(shown, [
                ("cannot be read", "<script>alert(1)"), ("of a kind", "<script>alert(2)"),
                ("cannot be drawn", "<b>kept</b>"), ("outside of this page", "fetching"),
                ("", "onerror=alert(4)"), ("", "onerror=alert(5)"), ("cannot be read", "[[[[")]):
            self.assertIn(expected[0], note)
            self.assertIn(expected[1], text)


class Maps(unittest.TestCase):
    def test_a_map_is_there_without_a_script(self):
        self.assertLess(os.path.getsize(file_of("map")), 60_000)
        page = opened("map", scripting=False)
        self.assertEqual(page.complaints(), [])
        areas = page.evaluate("""[...document.querySelectorAll(".map > svg > g")].map((area) => {
            const shape = area.querySelector("path, circle");
            const box = shape.getBoundingClientRect();
            return [area.querySelector("title").textContent, Math.round(box.width),
                    getComputedStyle(shape).fill]; })""")
        self.assertEqual([title for title, *_ in areas], [
            "A\nTrees: 12", "B\nTrees: 47", "C\nTrees: No data", "D\nTrees: 31", "E\nTrees: 8",
            "F\nTrees: 25", "north\nWell: dug\nDepth: 20", "south\nWell: drilled\nDepth: 5"])
        for _, width, fill in areas[:6]:
            self.assertAlmostEqual(width, 200, delta=8)
        self.assertIn("-hatch", areas[2][2])
        self.assertEqual(len({fill for _, _, fill in areas}), 8)
        legends = page.evaluate("[...document.querySelectorAll('.legend')].map((l) => l.innerText)")
        self.assertEqual([text.split() for text in legends], [
            ["Trees", "0", "–", "10", "10", "–", "20", "20", "–", "30", "30", "–", "40", "40", "–",
             "50", "No", "data"], ["Well", "drilled", "dug"], ["Depth", "5", "10", "20"]])
        self.assertIn("Without an area on the map: Z", page.evaluate("document.body.innerText"))
        page.evaluate("document.querySelector('summary').click()")
        self.assertEqual(page.evaluate("document.querySelectorAll('details tbody tr').length"), 8)

    def test_a_network_is_there_without_a_script(self):
        page = opened("network", scripting=False)
        self.assertEqual(page.complaints(), [])
        drawn = page.evaluate("""[...document.querySelectorAll(".network > svg")].map((svg) => {
            const box = svg.viewBox.baseVal;
            const nodes = [...svg.querySelectorAll(".node")].map((node) => {
                const circle = node.querySelector("circle");
                return [node.querySelector("title").textContent,
                        circle.cx.baseVal.value, circle.cy.baseVal.value]; });
            return {nodes, inside: nodes.every(([, x, y]) =>
                        x > 0 && y > 0 && x < box.width && y < box.height),
                    edges: [...svg.querySelectorAll(".edge title")].map((t) => t.textContent),
                    covered: [...svg.querySelectorAll(".edge")].filter((edge, at) => {
                        const target = edge.textContent.split(" → ")[1].split("\\nEffect")[0];
                        const node = [...svg.querySelectorAll(".node")].find((one) =>
                            one.querySelector("title").textContent === target);
                        const name = node.querySelector("text").getBBox();
                        const head = svg.querySelectorAll(".head")[at].getBBox();
                        return head.x + head.width / 2 > name.x && head.y + head.height / 2 > name.y
                            && head.x + head.width / 2 < name.x + name.width
                            && head.y + head.height / 2 < name.y + name.height; }).length,
                    onTop: [...svg.querySelectorAll(".node ~ .head")].length,
                    dashed: svg.querySelectorAll(".edge.negative").length}; })""")
        forces, levels, large = drawn
        self.assertTrue(all(one["inside"] for one in drawn))
        self.assertEqual([name for name, *_ in forces["nodes"]],
                         ["sales", "alone", "adverts", "price"])
        self.assertEqual(forces["edges"][-1], "adverts → sales\nEffect: 2", "strongest on top")
        self.assertEqual((len(forces["edges"]), forces["dashed"]), (3, 1))
        across = {name: x for name, x, _ in levels["nodes"]}
        self.assertEqual(sorted(across, key=across.get)[::3], ["cause", "far"])
        self.assertEqual(len(large["nodes"]), 300)
        self.assertEqual([forces["covered"], levels["covered"]], [0, 0], "names under heads")
        self.assertEqual([one["onTop"] for one in drawn], [len(one["edges"]) for one in drawn])
        for one in (forces, large):
            places = [(x, y) for _, x, y in one["nodes"]]
            self.assertGreater(min(abs(a - c) + abs(b - d) for at, (a, b) in enumerate(places)
                                   for c, d in places[:at]), 12, "nodes lie on each other")
        shown = page.evaluate("document.body.innerText")
        self.assertIn("Dashed arrows", shown)
        self.assertIn("Only the strongest arrows", shown)
        rows = "[...document.querySelectorAll('details tbody')].map((body) => body.rows.length)"
        self.assertEqual(page.evaluate(rows), [4, 3, 400])
        again = os.path.join(folder, "again.html")
        subprocess.run([SAMPLES, "network", again], check=True)
        with open(again, "rb") as one, open(file_of("network"), "rb") as other:
            self.assertEqual(one.read(), other.read())

    def test_a_slider_leaves_the_strongest_arrows(self):
        page = opened("network")
        self.assertEqual(page.complaints(), [])
        self.assertEqual(page.evaluate("document.querySelectorAll('input[type=range]').length"), 1)
        seen = """[...document.querySelectorAll(".network:has(input) .edge")].filter((edge) =>
            getComputedStyle(edge).display !== "none").map((edge) => edge.textContent.split("\\n")[0])"""
        everything = page.evaluate(seen)
        page.evaluate("""{ const range = document.querySelector("input[type=range]");
            range.value = "2"; range.dispatchEvent(new Event("input")); }""")
        self.assertEqual(page.evaluate(seen), everything[-2:])
        self.assertEqual(page.evaluate("""[...document.querySelectorAll(".network:has(input) .head")]
            .filter((head) => getComputedStyle(head).display !== "none").length"""), 2)
        page.media("print")
        self.assertEqual(page.evaluate(seen), everything)

    def test_looks_differ_by_night_and_are_printed_by_day(self):
        fills = """[...document.querySelectorAll(".map > svg > g")].map((area) =>
            getComputedStyle(area.querySelector("path, circle")).fill)"""
        day, night = (opened("map", dark=dark) for dark in (False, True))
        shown = day.evaluate(fills)
        self.assertNotEqual(night.evaluate(fills), shown)
        night.media("print", dark=True)
        self.assertEqual(night.evaluate(fills), shown)


class WholePages(unittest.TestCase):
    def test_reads_with_scripting_off(self):
        page = opened("sample", scripting=False)
        self.assertEqual(page.complaints(), [])
        self.assertEqual(page.evaluate("document.querySelectorAll('button, select').length"), 0)
        shown = page.evaluate("document.body.innerText")
        for text in ("Sex: female", "Sex: male", "Not computed", "12 cases", "118", "0.8127345612"):
            self.assertIn(text, shown)
        self.assertNotIn("in the log only", shown)
        links = page.evaluate("""[...document.querySelectorAll("nav a")].map((link) =>
            [link.textContent, Boolean(document.querySelector(link.getAttribute("href")))])""")
        self.assertEqual(links, [[title, True] for title in (
            "Descriptive Statistics", "Tables", "Weather by Season and Year", "Means by Region",
            "Charts", "Kinds of Weather", "Model Overview")])

    def test_data_stay_data(self):
        page = opened("hostile")
        page.evaluate("""document.querySelector(".mark-symbol path").dispatchEvent(
            new MouseEvent("click", { bubbles: true }))""")
        self.assertEqual(page.complaints(), [])
        self.assertEqual(page.evaluate("document.querySelector('h1').textContent"), HOSTILE)
        made = "document.querySelectorAll('img, iframe, [onerror]').length"
        self.assertEqual(page.evaluate(made), 0)
        cell = "document.querySelector('figure.table td.text bdi').textContent"
        self.assertEqual(page.evaluate(cell), HOSTILE)
        self.assertEqual(page.evaluate("getComputedStyle(document.querySelector('h3 bdi, h2 bdi'))"
                                       ".unicodeBidi"), "isolate")
        self.assertLessEqual(page.evaluate("document.documentElement.scrollWidth"), 1280)

    def test_carries_the_library_only_for_charts_and_stays_small(self):
        self.assertLess(os.path.getsize(file_of("sample")), 1_500_000)
        self.assertLess(os.path.getsize(file_of("plain")), 60_000)
        with open(file_of("sample"), encoding="utf-8") as file:
            text = file.read()
        # Once, with the licenses of all its parts.
        for part in ("vega 6", "d3-array 3", "semver 7"):
            self.assertEqual(text.count(part), 1, part)
        self.assertNotIn("unsafe", re.search("Content-Security-Policy.*", text)[0])

    def test_a_large_page_is_folded_and_found_in(self):
        self.assertLess(os.path.getsize(file_of("many")), 1_500_000)
        page = opened("many")
        stops = """[...document.querySelectorAll("a, button, select, input, summary, [tabindex]")].filter((one) =>
            one.tabIndex >= 0 && one.checkVisibility()).length"""
        self.assertLess(page.evaluate(stops), 300)
        folds = "[...document.querySelectorAll('main .fold')].filter((fold) => fold.open).length"
        self.assertEqual(page.evaluate(folds), 0)
        page.evaluate("""{ const field = document.querySelector("nav input"); field.value = "UP 77";
            field.dispatchEvent(new Event("input")); }""")
        shown = "[...document.querySelectorAll('nav > ol > li')].filter((entry) => !entry.hidden)"
        self.assertEqual(page.evaluate(f"{shown}.map((entry) => entry.textContent.trim())"), ["group 77"])
        page.evaluate(f"{shown}[0].querySelector('a').click()")
        page.wait_until("document.querySelector('.fold[open] svg > title')")
        self.assertEqual(page.evaluate(folds), 1)
        opened_fold = "document.querySelector('.fold[open]')"
        self.assertEqual(page.evaluate(f"{opened_fold}.querySelectorAll('.copy').length"), 1)
        # On paper all is unfolded.
        page.media("print")
        page.wait_until("!document.querySelector('main .fold:not([open])')")
        page.media("screen")
        page.wait_until(f"{folds} === 1")
        # The words and the data of a chart are in the page only once.
        figure = f"{opened_fold}.querySelector('figure.chart')"
        self.assertEqual(page.evaluate(f"{figure}.querySelector('.detail').textContent"), "The 3 most frequent")
        self.assertEqual(page.evaluate(f"""[...{figure}.querySelectorAll('.mark-rect path')].map((bar) =>
            bar.getAttribute('aria-label'))"""), ["n: 1; a: x", "n: 2; a: y"])
        self.assertEqual(page.complaints(), [])

    def test_numbers_are_grouped_but_copied_whole_and_texts_stay_texts(self):
        page = opened("many")
        column = "named('Totals').querySelector('[data-column] button')"
        self.assertEqual(page.evaluate(f"{column}.click(), body('Totals')"),
                         [["b", "20\u202f000.00"], ["=1+1", "1\u202f234\u202f567.25"], ["Total", "9.00"]])
        page.evaluate("select(named('Totals').tHead, named('Totals').tBodies[0])")
        page.evaluate("document.getSelection().selectAllChildren(named('Totals'))")
        self.assertEqual(page.evaluate("copied()").split("\n")[1:],
                         ["Row\tSum", "b\t20000", "'=1+1\t1234567.25", "Total\t9", ""])

    def test_numbers_are_copied_in_the_language_of_the_page(self):
        path = os.path.join(folder, "german.html")
        subprocess.run([SAMPLES, "many", path], check=True, env={**os.environ, "LC_ALL": "de_DE.UTF-8"})
        page = browser.open(path)
        page.evaluate(FUNCTIONS)
        page.evaluate("document.getSelection().selectAllChildren(named('Totals'))")
        self.assertEqual(page.evaluate("copied()").split("\n")[1:],
                         ["Row\tSum", "'=1+1\t1234567,25", "b\t20000", "Total\t9", ""])
        self.assertEqual(page.evaluate("body('Totals')[0][1]"), "1\u202f234\u202f567,25")

    def test_columns_are_one_stop_and_arrows_lead_on(self):
        page = opened("sample")
        page.evaluate("named('Means').querySelector('.sort').focus()")
        places = []
        for key in ("ArrowRight", "End", "ArrowRight", "Home"):
            page.evaluate(f"""document.activeElement.dispatchEvent(
                new KeyboardEvent("keydown", {{ key: "{key}", bubbles: true }}))""")
            places.append(page.evaluate("text(document.activeElement)"))
        self.assertEqual(places, ["Since", "Remark", "Remark", "Income"])
        self.assertEqual(page.evaluate("named('Means').querySelectorAll('.sort[tabindex=\"0\"]').length"), 1)

    def test_is_accessible_by_day_by_night_and_on_paper(self):
        with open(os.environ["AXE"], encoding="utf-8") as file:
            axe = file.read()
        for kind, look in ((kind, look) for kind in ("sample", "map", "network", "many")
                           for look in ("day", "night", "paper")):
            page = opened(kind, dark=look == "night")
            if look == "paper":
                page.media("print")
            page.evaluate(axe)
            found = page.evaluate("""axe.run().then((result) => result.violations
                .map((violation) => violation.id + " " + violation.nodes[0].html.slice(0, 200)))""")
            self.assertEqual(found, [])

    def test_looks_as_it_looked(self):
        """CHANGED_LOOKS=1 replaces the stored looks. Look at the pages before."""
        for kind in ("sample", "map", "network", "many"):
            for name, settings in {"day": {}, "night": {"dark": True}, "paper": {}, "plain": {"scripting": False},
                                   "narrow": {"width": 400}}.items():
                page = opened(kind, **settings)
                if name == "paper":
                    page.media("print")
                path = pathlib.Path(__file__).parent / "looks" / f"{kind}-{name}.txt"
                look = look_of(page)
                if os.environ.get("CHANGED_LOOKS"):
                    path.write_text(look, encoding="ascii")
                with self.subTest(path.name):
                    self.assertEqual(difference(look, path.read_text(encoding="ascii")), "")

    def test_a_large_table_is_not_kept_twice(self):
        size = os.path.getsize(file_of("large"))
        peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * 1024
        self.assertGreater(size, 80_000_000)
        self.assertLess(peak, size)


if __name__ == "__main__":
    unittest.main()
