"""hvhost on a cluster of this machine: the same results as without it, and faults told in one sentence."""
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

    def cut(self):
        self.listener.close()
        for each in self.sockets:
            try:
                each.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass


class HvhostTest(unittest.TestCase):
    cluster: Cluster

    def setUp(self):
        place = tempfile.TemporaryDirectory(prefix="hv_cluster_hvhost_")
        self.addCleanup(place.cleanup)
        self.folder = pathlib.Path(place.name)
        # More records than a second can number.
        self.slow = (f'read({{"filesystem": {{"locations": [{{"path": "file://{DATA}/weather.csv", "parser": '
                     '{"name": "csv", "config": {"hasHeader": true}}}]}}) -> balanceRecords(_, ctx => x => 1000000)'
                     ' -> aggregate({"output": [{"function": "count", "outName": "n"}, {"function": "sd", '
                     f'"input": "wind"}}]}}) -> write({{"dataDestination": "file://{self.folder}/slow.csv", '
                     '"type": "text/csv"})')

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

    def start_slow(self, url=None):
        job = self.folder / "slow.hvl"
        job.write_text(self.slow, encoding="utf-8")
        process = self.start("run", job, url=url)
        time.sleep(8)
        self.assertIsNone(process.poll(), "the job is over already")
        return process

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
        one = 'read({"filesystem": {"locations": [{"path": "file://%s/colonies.csv", "parser": {"name": "csv"}}]}})' \
            % DATA
        chain = f'val a = {one}\nunion({{}}, b: a, c: a) -> write({{"dataSource": "s"}})\n'
        job = self.folder / "many.hvl"
        job.write_text(chain + f'{one} -> write({{"dataSource": "t"}})\n' * 6, encoding="utf-8")
        self.run_hvhost("run", job)
        self.assertEqual(list(self.cluster.scratch.iterdir()), [])

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

    def test_3_a_job_is_cancelled_within_two_seconds(self):
        process = self.start_slow()
        process.send_signal(signal.SIGINT)
        begin = time.monotonic()
        self.expect_failure(process, (130,), "")
        self.assertLess(time.monotonic() - begin, 2 + 3)  # the process ends after the job

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
        self.assertRegex((self.folder / "slow.csv").read_text(encoding="utf-8"), r"n,sd_wind\n1461000000,1\.")

    def test_6_the_server_is_killed(self):
        process = self.start_slow()
        self.cluster.server.kill()
        self.expect_failure(process, (1,), "the connection to the cluster", "is lost")


if __name__ == "__main__":
    # Around the tests, so that Ctrl-C ends the programs of the cluster too.
    with Cluster() as HvhostTest.cluster:
        unittest.main()
