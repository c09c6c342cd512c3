"""hvhost on a cluster of this machine: the same results as without it, and faults in one sentence."""
import csv
import json
import os
import pathlib
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

from spark_cluster import Cluster

HVHOST = sys.argv.pop(1)
DATA = pathlib.Path(os.environ["HV_TEST_DATA"])
ENOUGH = 300  # seconds for any command on a busy machine
SLOW_STATEMENTS = 3  # of the slow job; the last one is slow


class Proxy:
    """A TCP proxy in front of a server, which can be cut."""

    def __init__(self, port):
        self.port_behind = port
        self.sockets = []
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.url = f"sc://127.0.0.1:{self.listener.getsockname()[1]}"
        threading.Thread(target=self.accept, daemon=True).start()

    def accept(self):
        while True:
            try:
                front = self.listener.accept()[0]
                back = socket.create_connection(("127.0.0.1", self.port_behind))
            except OSError:
                return
            self.sockets += [front, back]
            for source, target in ((front, back), (back, front)):
                threading.Thread(target=self.copy, args=(source, target), daemon=True).start()

    @staticmethod
    def copy(source, target):
        try:
            while data := source.recv(65536):
                target.sendall(data)
        except OSError:
            pass

    def interrupt(self):
        """Ends all connections. New ones are possible."""
        for each in self.sockets:
            try:
                each.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass

    def cut(self):
        self.listener.shutdown(socket.SHUT_RDWR)  # also ends the call that waits for a connection
        self.interrupt()


class HvhostTest(unittest.TestCase):
    cluster: Cluster

    def setUp(self):
        place = tempfile.TemporaryDirectory(prefix="hv_cluster_hvhost_")
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)
        # More records than a minute can count.
        self.slow = (self.read(DATA / "weather.csv") + ' -> balanceRecords(_, ctx => x => 1000000) -> aggregate('
                     '{"output": [{"function": "count", "outName": "n"}, {"function": "sd", "input": "wind"}]}) -> '
                     + self.write("slow.csv"))

    def start(self, *words, url=None):
        environment = dict(os.environ, HVHOST_ENGINE=url or self.cluster.url,
                           HVHOST_ENGINE_SCRATCH=f"file:{self.cluster.scratch}")
        return subprocess.Popen([HVHOST, *map(str, words)], env=environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def run_hvhost(self, *words, status=0, url=None):
        process = self.start(*words, url=url)
        out, err = process.communicate(timeout=ENOUGH)
        self.assertEqual(process.returncode, status, out + err)
        return out, err

    def job(self, name, text):
        path = self.folder / f"{name}.hvl"
        path.write_text(text, encoding="utf-8")
        return path

    def read(self, path):
        return (f'read({{"filesystem": {{"locations": [{{"path": "file://{path}", "parser": {{"name": "csv", '
                '"config": {"hasHeader": true}}}]}})')

    def write(self, name):
        return f'write({{"dataDestination": "file://{self.folder}/{name}", "type": "text/csv"}})'

    @staticmethod
    def has_begun(log):
        """Whether tasks begin after the last statement of the job. The server may still run the job of an earlier
        test. That job begins tasks, but no statements."""
        *statements, tasks = log.split(b") is created.")
        return len(statements) == SLOW_STATEMENTS and b"Starting task" in tasks

    def start_slow(self, url=None):
        """A job whose tasks have begun. They take a minute."""
        log = self.cluster.server.log
        before = log.stat().st_size
        process = self.start("run", self.job("slow", self.slow), url=url)
        end = time.monotonic() + ENOUGH
        while not self.has_begun(log.read_bytes()[before:]) and time.monotonic() < end:
            self.assertIsNone(process.poll(), "the job is over already")
            time.sleep(0.2)
        time.sleep(1)
        self.assertIsNone(process.poll(), "the job is over already")
        return process

    def check_slow(self):
        """The result of start_slow."""
        self.assertRegex((self.folder / "slow.csv").read_text(encoding="utf-8"), r"n,sd_wind\n1461000000,1\.")

    def expect_failure(self, process, statuses, *words):
        out, err = process.communicate(timeout=ENOUGH)
        self.assertIn(process.returncode, statuses, out + err)
        for word in words:
            self.assertIn(word, err)
        self.assertEqual(len([line for line in err.splitlines() if "error:" in line]), 1, err)
        self.assertEqual([path.name for path in self.folder.iterdir()], ["slow.hvl"])

    def test_1_doctor_and_many_jobs_leave_nothing(self):
        findings = {finding["name"]: finding["found"] for finding in
                    json.loads(self.run_hvhost("doctor", "--format", "json")[0])["findings"]}
        self.assertRegex(findings["cluster"], r"^Spark 4\.")
        one = self.read(DATA / "colonies.csv")
        chain = f'val a = {one}\nunion({{}}, b: a, c: a) -> write({{"dataSource": "s"}})\n'
        self.run_hvhost("run", self.job("many", chain + f'{one} -> write({{"dataSource": "t"}})\n' * 6))
        self.assertEqual(list(self.cluster.scratch.iterdir()), [])

    def test_1_two_hosts_use_the_same_names_at_once(self):
        text = (self.read(DATA / "weather.csv") + ' -> filterRecords(_, ctx => x => x.%s) -> write({"dataSource": "s"})\n'
                'read({"dataSource": "s"}) -> write({"dataDestination": "plain", "type": "hvbf"})\n'
                'read({"filesystem": {"locations": [{"path": "plain", "parser": {"name": "hvbf"}}]}}) -> aggregate('
                '{"output": [{"function": "count", "outName": "n"}, {"function": "sum", "input": "wind"}]}) -> ')
        conditions = {"calm": "wind < 3", "storm": "wind >= 3"}
        running = [self.start("run", self.job(name, text % condition + self.write(f"{name}.csv")))
                   for name, condition in conditions.items()]
        for process in running:
            out, err = process.communicate(timeout=ENOUGH)
            self.assertEqual(process.returncode, 0, out + err)
        with open(DATA / "weather.csv", encoding="utf-8") as file:
            winds = [float(row["wind"]) for row in csv.DictReader(file)]
        for name, kept in (("calm", [w for w in winds if w < 3]), ("storm", [w for w in winds if w >= 3])):
            count, total = (self.folder / f"{name}.csv").read_text(encoding="utf-8").split("\n")[1].split(",")
            self.assertEqual(int(count), len(kept))
            self.assertAlmostEqual(float(total), sum(kept), 6)
        self.assertEqual(list(self.cluster.scratch.iterdir()), [])

    def test_1_records_pass_through_without_being_held(self):
        """Ten times as many records take no more memory."""
        peaks = []
        for times in (300, 3000):
            text = self.read(DATA / "weather.csv") + f" -> balanceRecords(_, ctx => x => {times}) -> " \
                + self.write(f"{times}.csv")
            with self.start("run", self.job("many", text)) as process:
                _, status, used = os.wait4(process.pid, 0)
                process.returncode = os.waitstatus_to_exitcode(status)
                self.assertEqual(process.returncode, 0, process.stderr.read())
            peaks.append(used.ru_maxrss / 1000)
            with open(self.folder / f"{times}.csv", "rb") as file:
                self.assertEqual(sum(1 for _ in file), 1461 * times + 1)
        self.assertLess(peaks[1], peaks[0] + 100, peaks)

    def test_2_addresses_that_lead_nowhere(self):
        with socket.create_server(("127.0.0.1", 0)) as closed:
            port = closed.getsockname()[1]
        for url, status, words in (
                (f"sc://127.0.0.1:{port}", 1, ("does not answer", "start its Spark Connect server")),
                ("http://127.0.0.1", 4, ('"http://127.0.0.1", not the address', "sc://host:15002"))):
            with self.subTest(url):
                out = self.folder / "out.csv"
                err = self.run_hvhost("convert", DATA / "weather.csv", out, status=status, url=url)[1]
                for word in words:
                    self.assertIn(word, err)
                self.assertFalse(out.exists())
                self.assertIn(words[0], self.run_hvhost("doctor", url=url, status=4)[0])

    def test_2_a_server_that_does_not_answer_can_be_left(self):
        with socket.create_server(("127.0.0.1", 0)) as silent:
            process = self.start("run", self.job("slow", self.slow),
                                 url=f"sc://127.0.0.1:{silent.getsockname()[1]}")
            connection = silent.accept()[0]
            process.send_signal(signal.SIGINT)
            begin = time.monotonic()
            self.expect_failure(process, (130,), "")
            self.assertLess(time.monotonic() - begin, 5)
            connection.close()

    def test_3_a_job_is_cancelled_within_two_seconds(self):
        process = self.start_slow()
        process.send_signal(signal.SIGINT)
        begin = time.monotonic()
        self.expect_failure(process, (130,), "")
        self.assertLess(time.monotonic() - begin, 2 + 3)  # the process ends after the job

    def test_4_an_interrupted_connection_is_taken_up_again(self):
        proxy = Proxy(int(self.cluster.url.rsplit(":", 1)[1]))
        process = self.start_slow(proxy.url)
        proxy.interrupt()
        out, err = process.communicate(timeout=ENOUGH)
        self.assertEqual(process.returncode, 0, out + err)
        self.check_slow()

    def test_4_the_network_is_cut(self):
        proxy = Proxy(int(self.cluster.url.rsplit(":", 1)[1]))
        process = self.start_slow(proxy.url)
        proxy.cut()
        self.expect_failure(process, (1,), "the connection to the cluster", "is lost", "run the job again")

    def test_5_a_worker_is_killed(self):
        process = self.start_slow()
        self.cluster.workers[0].kill()
        out, err = process.communicate(timeout=ENOUGH)
        self.assertEqual(process.returncode, 0, out + err)
        self.check_slow()

    def test_6_the_server_is_killed(self):
        process = self.start_slow()
        self.cluster.server.kill()
        self.expect_failure(process, (1,), "the connection to the cluster", "is lost")


if __name__ == "__main__":
    # Around the tests, so that Ctrl-C ends the programs of the cluster too.
    with Cluster(compiler=()) as HvhostTest.cluster:
        unittest.main()
