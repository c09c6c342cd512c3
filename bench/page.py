"""Opens the page that bench_page wrote and the same tables as bare HTML in a browser, in turns."""
import pathlib
import statistics
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "report"))
from browser import Browser  # noqa: E402

LIMIT = 0.5
REPETITIONS = 9
# From the navigation to the end of the first frame behind the load event, when scripts have run.
READY = """new Promise((done) => requestAnimationFrame(() => setTimeout(() =>
    done(performance.now()))))"""


def milliseconds(browser, path):
    page = browser.open(path)
    ready = page.evaluate(READY)
    page.call("Page.close")
    return ready


def main(folder):
    times = {"page": [], "bare": []}
    with Browser() as browser:
        for repetition in range(REPETITIONS + 1):
            for name, measured in times.items():
                time = milliseconds(browser, f"{folder}/{name}.html")
                if repetition > 0:
                    measured.append(time)
    ours, baseline = (statistics.median(measured) for measured in times.values())
    over = " OVER" if ours > LIMIT * baseline else ""
    print(f"open a page of 200 tables: ratio {ours / baseline:.2f} "
          f"(ours {ours:.4g} ms, baseline {baseline:.4g} ms; limit {LIMIT:.2f}){over}")
    return 1 if over else 0


sys.exit(main(sys.argv[1]))
