"""Compares the values that a cluster gives with those of the embedded database.

Usage: dialect_test.py PROGRAM JAVA_WORDS...

PROGRAM is the test that writes the statements, with the values of the embedded database. JAVA_WORDS start
the program that runs them on the cluster."""
import json
import math
import os
import pathlib
import subprocess
import sys
import tempfile

from spark_cluster import Cluster

COLUMNS = 25  # of one statement
TOLERANCE = 1e-12
SCRATCH = "SCRATCH"


class Runner:
    """The program that runs statements, one at a time."""

    def __init__(self, words):
        self.process = subprocess.Popen(words, stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def run(self, statement):
        """The records, each a list of values, or the fault as a text."""
        self.process.stdin.write(statement.encode() + b"\0")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().decode().rstrip("\n")
        words = answer.split("\t")
        if words[0] != "ok":
            return ": ".join(words[1:]) or "the program has ended"
        return [record.split("|") for record in words[1:]]

    def end(self):
        self.process.stdin.close()
        self.process.wait(timeout=60)


def same(expected, found, kind):
    """Whether a value of the cluster is that of the embedded database."""
    if expected is None or found == "null":
        return expected is None and found == "null"
    if kind not in ("Real", "Date", "Time", "Timestamp"):
        return expected == found
    wanted, got = float(expected), float(found)
    if kind != "Real":
        return wanted == got
    return wanted == got or (math.isnan(wanted) and math.isnan(got)) or math.isclose(
        wanted, got, rel_tol=TOLERANCE)


def difference(case, values):
    """The first difference of a case; None if there is none."""
    wanted = case.get("values") or []
    if len(values) != len(wanted):
        return f"{len(values)} records, expected {len(wanted)}"
    for record, (expected, found) in enumerate(zip(wanted, values)):
        if not same(expected, found, case["type"]):
            return f"record {record}: {found}, expected {expected}"
    return None


def check(runner, rest, cases, report):
    """Runs the columns of one statement. If it fails, the halves tell which column does."""
    # Without an alias, ORDER BY would mean the text of a number.
    columns = ", ".join(f"{case['sql']} AS hv_{column}" for column, case in enumerate(cases))
    answer = runner.run(f"query SELECT {columns} {rest}")
    if isinstance(answer, list):
        for column, case in enumerate(cases):
            problem = difference(case, [record[column] for record in answer])
            if case.get("fails"):
                problem = "no fault"
            if problem:
                report(case, problem)
    elif len(cases) > 1:
        middle = len(cases) // 2
        check(runner, rest, cases[:middle], report)
        check(runner, rest, cases[middle:], report)
    elif not cases[0].get("fails"):
        report(cases[0], answer)


def read_cases(program, folder):
    path = pathlib.Path(folder, "cases")
    subprocess.run([program, "--gtest_brief=1"], check=True,
                   env=dict(os.environ, HV_DIALECT_CASES=str(path)))
    lines = [json.loads(line) for line in path.read_text(encoding="utf-8").split("\n") if line]
    prepared = list(dict.fromkeys(line["prepare"] for line in lines if "prepare" in line))
    return sorted(prepared, key=lambda statement: not statement.startswith("set ")), [
        line for line in lines if "sql" in line]


def run_all(runner, prepared, cases, scratch):
    """The number of differences."""
    for statement in prepared:
        answer = runner.run(statement.replace(SCRATCH, str(scratch)))
        if not isinstance(answer, list):
            print(f"{statement[:200]}: {answer}")
            return 1
    differences = []

    def report(case, problem):
        differences.append(case)
        print(f"{case['what'][:120]}: {problem[:300]}", flush=True)

    groups = {}
    for case in cases:
        groups.setdefault((case["rest"], case.get("fails", False)), []).append(case)
    for (rest, fails), members in groups.items():
        size = 1 if fails else COLUMNS
        for start in range(0, len(members), size):
            check(runner, rest.replace(SCRATCH, str(scratch)), members[start:start + size], report)
    print(f"{len(cases)} statements, {len(differences)} differences")
    return len(differences)


def main():
    program, *words = sys.argv[1:]
    with tempfile.TemporaryDirectory(prefix="hv_dialect_") as folder:
        prepared, cases = read_cases(program, folder)
        with Cluster() as cluster:
            runner = Runner([*words[:-1], f"-Dcluster.url={cluster.url}", words[-1]])
            differences = run_all(runner, prepared, cases, cluster.scratch)
            runner.end()
            cluster.keeps_logs = differences > 0
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())
