"""A job on a Spark cluster beside the same query, in the same order, as plain Spark SQL through the same server,
and beside the embedded engine: bench/cluster.py BUILD_DIRECTORY [MILLIONS_OF_RECORDS]

Both are programs, measured from start to end: hvhost, and one that runs a statement by the client of the cluster
alone. Starts a cluster of two workers on this machine, makes the records there, and prints one line for each
figure. scripts/fetch-jars has fetched the jars of client and server. The folder for temporary files needs
24 bytes for each record. Ends with status 1 if a figure is over its limit."""
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "cluster"))
from spark_cluster import Cluster  # noqa: E402

REPETITIONS = 3
WORKERS = 2  # each has one core
SMALL = 1000
LIMITS = {"double": 1.1, "exact": 1.6}  # by the setting engine.sums, with 100 million records
MEMORY_LIMIT = 600  # MB
JARS = ROOT / "build" / "deps" / "cluster"
SOURCES = ROOT / "platform" / "engine" / "cluster" / "java" / "test" / "com" / "vexa" / "ae" / "cluster"
READ = 'read({"filesystem": {"locations": [{"path": "file://%s", "parser": {"name": "hvbf"}}]}})'
JOB = """val regions = %(regions)s
val sales = %(sales)s -> deriveField(_, ctx => x => ("amount", x.price * x.pieces))
join({"matchFields": [{"sales": "shop", "regions": "shop"}],
      "outputFields": {"sales": ["price", "amount"], "regions": ["region"]}}, sales, regions)
  -> aggregate({"output": [{"function": "key", "input": "region"}, {"function": "count", "outName": "records"},
     {"function": "sum", "input": "amount"}, {"function": "mean", "input": "price"}]})
  -> write({"dataDestination": "file://%(out)s", "type": "hvbf"})
"""
PLAIN = """command INSERT OVERWRITE DIRECTORY 'file:%(out)s' USING parquet
SELECT region, count(*) AS records, sum(price * pieces) AS amount, avg(price) AS price_mean
FROM parquet.`file:%(sales)s` JOIN parquet.`file:%(regions)s` USING (shop) GROUP BY region
ORDER BY region"""
RECORDS = """command INSERT OVERWRITE DIRECTORY 'file:%s' USING parquet
SELECT hash(id, 1) %% 5000 + 5000 AS shop, (hash(id, 2) %% 100000) / 64D + 2000 AS price,
pmod(hash(id, 3), 20) AS pieces FROM range(0, %d, 1, 8)"""
SHOPS = """command INSERT OVERWRITE DIRECTORY 'file:%s' USING parquet
SELECT CAST(id AS INT) AS shop, concat('region ', id %% 50) AS region FROM range(0, 10000, 1, 1)"""


# The constants of the model in docs/performance.md: pairs of queries that differ in one thing.
TASKS = 2000
EMPTY_TASKS = "query SELECT count(*) FROM range(0, %d, 1, %d)"
SUM = "query SELECT sum(price * pieces), count(shop) FROM parquet.`file:%s`"
SHUFFLED_SUM = ("query SELECT sum(price * pieces), count(shop) FROM "
                "(SELECT /*+ REPARTITION(8, shop) */ * FROM parquet.`file:%s`)")
RECORD_BYTES = 8 + 3 * 8  # a shuffled row is a word of flags and a word for each value


class PlainSql:
    """Runs statements on the server through the client of the engine, without the engine."""

    def __init__(self, build, url, folder):
        """Starts a program that runs several statements."""
        path = f"{build}/lib/hvinteg/hv/af/components/hvengine.jar:{JARS}/client/jars/*:" \
            f"{build}/lib/hvinteg/hv/af/components/cluster/*"
        subprocess.run(["javac", "--release", "17", "-encoding", "UTF-8", "-cp", path, "-d", folder,
                        SOURCES / "StatementRunner.java", SOURCES / "Columns.java"], check=True)
        self.words = ["java", "-XX:+UseSerialGC", "-XX:TieredStopAtLevel=1", "-Xmx512m",
                      "--add-opens=java.base/java.nio=ALL-UNNAMED", f"-Dcluster.url={url}", "-cp",
                      f"{path}:{folder}", "com.vexa.ae.cluster.StatementRunner"]
        self.process = subprocess.Popen(self.words, stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def program_seconds(self, statement):
        """The time of a program that runs one statement."""
        begin = time.monotonic()
        answer = subprocess.run(self.words, input=statement.encode() + b"\0", capture_output=True,
                                check=True).stdout.decode()
        if not answer.startswith("ok"):
            sys.exit(f"the statement fails: {answer}")
        return time.monotonic() - begin

    def run(self, statement):
        self.process.stdin.write(statement.encode() + b"\0")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().decode()
        if not answer.startswith("ok"):
            sys.exit(f"the statement fails: {answer}")
        return answer

    def seconds(self, statement):
        """The median time of a statement, without its first run."""
        times = []
        for _ in range(REPETITIONS + 1):
            begin = time.monotonic()
            self.run(statement)
            times.append(time.monotonic() - begin)
        return statistics.median(times[1:])

    def end(self):
        self.process.stdin.close()
        self.process.wait(timeout=60)


def program(words, environment):
    """Runs a program. Returns its time in seconds and its peak memory in MB."""
    begin = time.monotonic()
    process = subprocess.Popen(words, env=environment)
    _, status, used = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{words[0]} ends with status {os.waitstatus_to_exitcode(status)}")
    return time.monotonic() - begin, used.ru_maxrss / 1000


def report(name, ours, baseline, limit):
    over = " OVER" if ours > limit * baseline else ""
    print(f"{name}: ratio {ours / baseline:.2f} (ours {ours:.4g} s, baseline {baseline:.4g} s; "
          f"limit {limit:.2f}){over}", flush=True)
    return bool(over)


def job_file(folder, name):
    places = {"out": folder / name, "sales": READ % (folder / "sales"), "regions": READ % (folder / "shops")}
    path = folder / f"{name}.hvl"
    path.write_text(JOB % places, encoding="utf-8")
    return path


def empty_job(folder):
    """A job of few records: what it takes is the start of hvhost and the connection."""
    records = folder / "few.csv"
    records.write_text("x\n" + "1\n" * SMALL, encoding="utf-8")
    path = folder / "few.hvl"
    path.write_text('read({"filesystem": {"locations": [{"path": "file://%s", "parser": {"name": "csv", "config": '
                    '{"hasHeader": true}}}]}}) -> aggregate({"output": [{"function": "count", "outName": "n"}]})'
                    ' -> write({"dataDestination": "file://%s", "type": "text/csv"})'
                    % (records, folder / "counted.csv"), encoding="utf-8")
    return path


def print_constants(sql, sales, records):
    """What a task, a record and a shuffled byte cost the cluster's two cores."""
    few, many = (sql.seconds(EMPTY_TASKS % (tasks, tasks)) for tasks in (8, 8 + TASKS))
    read = sql.seconds(SUM % sales)
    shuffled = sql.seconds(SHUFFLED_SUM % sales)
    print(f"cluster: a query of no work: {few * 1000:.3g} ms")
    print(f"cluster: a task: {(many - few) / TASKS * WORKERS * 1000:.3g} ms of a core")
    print(f"cluster: a record read and summed: {(read - few) / records * WORKERS * 1e9:.3g} ns of a core")
    print(f"cluster: a shuffled byte: "
          f"{(shuffled - read) / records / RECORD_BYTES * WORKERS * 1e9:.3g} ns of a core", flush=True)


def main(build, millions):
    build = pathlib.Path(build).resolve()
    hvhost = build / "bin" / "hvhost"
    folder = pathlib.Path(tempfile.mkdtemp(prefix="hv_bench_cluster_"))
    over = False
    try:
        with Cluster(JARS / "server", compiler=()) as cluster:
            sql = PlainSql(build, cluster.url, folder / "classes")
            sql.run(RECORDS % (folder / "sales", millions * 1000000))
            sql.run(SHOPS % (folder / "shops"))
            places = {name: folder / name for name in ("sales", "regions", "out")} | {
                "regions": folder / "shops", "out": folder / "plain"}
            remote = dict(os.environ, HVHOST_ENGINE=cluster.url,
                          HVHOST_ENGINE_SCRATCH=f"file:{cluster.scratch}")
            job = job_file(folder, "ours")
            times, plain, memory = {sums: [] for sums in LIMITS}, [], []
            for repetition in range(REPETITIONS + 1):
                measured = {sums: program([hvhost, "run", "--force", "--engine-sums", sums, job], remote)
                            for sums in LIMITS}
                baseline = sql.program_seconds(PLAIN % places)
                if repetition == 0:
                    continue  # the server compiles
                plain.append(baseline)
                for sums, (seconds, peak) in measured.items():
                    times[sums].append(seconds)
                    memory.append(peak)
            print_constants(sql, folder / "sales", millions * 1000000)
            start = statistics.median(program([hvhost, "run", "--force", empty_job(folder)], remote)[0]
                                      for _ in range(REPETITIONS))
            sql.end()
        for sums, limit in LIMITS.items():
            over |= report(f"cluster: {millions} million records, {sums} sums",
                           statistics.median(times[sums]), statistics.median(plain), limit)
        large = max(memory) > MEMORY_LIMIT
        over |= large
        print(f"cluster: peak memory of hvhost: {max(memory):.4g} MB (limit {MEMORY_LIMIT} MB)"
              f"{' OVER' if large else ''}", flush=True)
        local = [program([hvhost, "run", "--force", job_file(folder, "local")], os.environ)[0]
                 for _ in range(REPETITIONS)]
        print(f"the embedded engine beside it: {statistics.median(local):.4g} s")
        start_here = program([hvhost, "run", "--force", empty_job(folder)], os.environ)[0]
        print(f"a job of {SMALL} records: {start:.3g} s on the cluster, {start_here:.3g} s here")
    finally:
        shutil.rmtree(folder)
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 100))
