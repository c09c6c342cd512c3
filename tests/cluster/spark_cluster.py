"""A Spark cluster on this machine's loopback: a master, two workers and a Connect server.

Each program is a process of its own with a folder of its own, and takes a port that is free. The
programs are ended by their process ids. Their logs are kept if a test fails.
"""
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time

# What Spark needs of a Java virtual machine from version 17 on.
OPENED = ["java.lang", "java.lang.invoke", "java.lang.reflect", "java.io", "java.net", "java.nio",
          "java.util", "java.util.concurrent", "java.util.concurrent.atomic", "jdk.internal.ref",
          "sun.nio.ch", "sun.nio.cs", "sun.security.action", "sun.util.calendar"]
MASTER = "org.apache.spark.deploy.master.Master"
WORKER = "org.apache.spark.deploy.worker.Worker"
SUBMIT = "org.apache.spark.deploy.SparkSubmit"
SERVER = "org.apache.spark.sql.connect.service.SparkConnectServer"
# The programs of a test run for a minute or two. The compiler that optimizes would take more time than it saves.
QUICK_COMPILER = ["-XX:TieredStopAtLevel=1"]
# At the level "info" each statement would log pages. The tests read what is logged of programs and tasks.
LOG4J = """rootLogger.level = warn
logger.programs.name = org.apache.spark.deploy
logger.programs.level = info
logger.tasks.name = org.apache.spark.scheduler.TaskSetManager
logger.tasks.level = info
logger.server.name = org.apache.spark.sql.connect.service
logger.server.level = info
rootLogger.appenderRef.console.ref = console
appender.console.type = Console
appender.console.name = console
appender.console.target = SYSTEM_ERR
appender.console.layout.type = PatternLayout
appender.console.layout.pattern = %d{HH:mm:ss} %p %c{1}: %m%n%ex
"""


class Program:
    """One process of the cluster, with its folder and its log."""

    def __init__(self, cluster, name, heap, words, main):
        self.name = name
        self.folder = cluster.folder / name
        self.folder.mkdir()
        self.log = self.folder / "log"
        command = [cluster.java, f"-Xmx{heap}m", *cluster.java_options,
                   *(f"--add-opens=java.base/{package}=ALL-UNNAMED" for package in OPENED),
                   f"-Djava.io.tmpdir={self.folder}", "-cp", f"{cluster.conf}:{cluster.home}/jars/*",
                   main, *words]
        environment = dict(os.environ, SPARK_HOME=str(cluster.home),
                           SPARK_SCALA_VERSION="2.13", SPARK_CONF_DIR=str(cluster.conf),
                           SPARK_LOCAL_IP="127.0.0.1", SPARK_LOCAL_DIRS=str(self.folder),
                           SPARK_USER="hvinteg", TZ="UTC", LC_ALL="C.UTF-8")
        with open(self.log, "wb") as log:
            # A group of its own, so that Ctrl-C in the terminal does not reach it.
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                            cwd=self.folder, env=environment, start_new_session=True)

    def wait_for(self, pattern, seconds):
        """The first group of the pattern, as soon as the log has it."""
        end = time.monotonic() + seconds
        while True:
            found = re.search(pattern, self.log.read_text(errors="replace"))
            if found:
                return found[1]
            if self.process.poll() is not None or time.monotonic() > end:
                lines = "\n".join(self.log.read_text(errors="replace").splitlines()[-30:])
                raise RuntimeError(f"{self.name} of the cluster does not start:\n{lines}")
            time.sleep(0.1)

    def kill(self):
        """Ends it at once, as a crash does. A worker's executors end when they miss their worker."""
        self.process.kill()
        self.process.wait()

    def stop(self):
        """Ends it, and what it has started: the executors of a worker are in its process group."""
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(timeout=15)
            except subprocess.TimeoutExpired:
                pass
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()


class Cluster:
    """Starts on entry to `with` and ends on exit. `url` is where a client connects."""

    def __init__(self, home=None, options=(), compiler=QUICK_COMPILER):
        self.home = pathlib.Path(home or os.environ["HV_CLUSTER_SERVER"])
        self.java = os.environ.get("HV_JAVA", shutil.which("java"))
        self.java_options = ["-XX:+UseSerialGC", "-XX:-UsePerfData", *compiler]
        self.options = list(options)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="hv_cluster_"))
        self.conf = self.folder / "conf"
        self.scratch = self.folder / "scratch"
        self.conf.mkdir()
        self.scratch.mkdir()
        (self.conf / "log4j2.properties").write_text(LOG4J, encoding="ascii")
        self.programs = []
        self.workers = []
        self.keeps_logs = False

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, kind, value, trace):
        self.keeps_logs = self.keeps_logs or (kind is not None and issubclass(kind, Exception))
        self.stop()

    def start(self):
        master = self.run("master", 384, ["--host", "127.0.0.1", "--port", "0", "--webui-port", "0"], MASTER)
        self.master_url = master.wait_for(r"(spark://127\.0\.0\.1:\d+)", 60)
        for number in (1, 2):
            self.workers.append(self.run(f"worker{number}", 384, [
                "--host", "127.0.0.1", "--port", "0", "--webui-port", "0", "--cores", "1",
                "--memory", "640m", "--work-dir", str(self.folder / f"worker{number}"),
                self.master_url], WORKER))
        # The server starts while the workers register.
        self.server = self.start_server("server")
        for worker in self.workers:
            worker.wait_for(r"(Successfully registered with master)", 60)
        self.url = self.url_of(self.server)

    def start_server(self, name):
        """A Connect server with a driver of its own."""
        settings = {
            "spark.connect.grpc.binding.address": "127.0.0.1", "spark.connect.grpc.binding.port": "0",
            "spark.driver.host": "127.0.0.1", "spark.ui.enabled": "false",
            "spark.executor.memory": "640m", "spark.executor.cores": "1",
            "spark.executor.extraJavaOptions": " ".join(self.java_options),
            "spark.sql.catalogImplementation": "in-memory", "spark.sql.shuffle.partitions": "4",
            "spark.sql.warehouse.dir": str(self.folder / f"{name}.warehouse"),
            "spark.sql.artifact.isolation.enabled": "false"}
        settings.update(dict(self.options))
        words = ["--master", self.master_url]
        for key, value in settings.items():
            words += ["--conf", f"{key}={value}"]
        return self.run(name, 1024, [*words, "--class", SERVER, "spark-internal"], SUBMIT)

    def url_of(self, server):
        port = server.wait_for(r"Spark Connect server started at: \S*?:(\d+)", 90)
        return f"sc://127.0.0.1:{port}"

    def run(self, name, heap, words, main):
        program = Program(self, name, heap, words, main)
        self.programs.append(program)
        return program

    def stop(self):
        for program in reversed(self.programs):
            program.stop()
        if self.keeps_logs:
            print(f"The logs of the cluster are in {self.folder}")
        else:
            shutil.rmtree(self.folder)
