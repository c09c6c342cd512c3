"""The tests of an area: builds their programs, runs the fast ones first, stops at the first failure."""
import json
import os
import pathlib
import re
import resource
import signal
import subprocess
import time

# Bytes. A fault can write or allocate without end.
LARGEST_FILE = 2 << 30
MOST_MEMORY = 6 << 30


class Tests:
    """All tests of a build folder. A test that ran without faults gets limits from its times."""

    def __init__(self, build):
        self.build = pathlib.Path(build)
        self.tests = {}
        self.times = {}  # name -> (seconds, seconds of the processor)
        self.load()

    def load(self):
        """Reads the list of tests. A test has a command when its program exists."""
        listed = subprocess.run(["ctest", "--test-dir", self.build, "--show-only=json-v1"], check=True,
                                stdout=subprocess.PIPE)
        for test in json.loads(listed.stdout)["tests"]:
            test["properties"] = {item["name"]: item["value"] for item in test["properties"]}
            self.tests[test["name"]] = test

    def named(self, pattern):
        return [name for name in self.tests if re.search(pattern, name)]

    def targets(self, names):
        """The programs to build for these tests. Scripts start hvhost and load all libraries."""
        result = set()
        for name in names:
            test = self.tests[name]
            if "command" not in test:
                result.add(re.sub(r"_checked_jni$|_\d$", "", name))
                continue
            program = pathlib.Path(test["command"][0])
            words = [*test["command"], *test["properties"].get("ENVIRONMENT", [])]
            if program.is_relative_to(self.build):
                result.add(program.name)
            elif "page_samples" in " ".join(words):
                result.add("page_samples")
            elif name == "java_tests":
                result.add("java_tests")
            else:
                result |= {"hvhost", "run_sql"}
        return sorted(result)

    def failure(self, names, fault=0):
        """The name of the first test that fails with this fault, or None."""
        for name in sorted(names, key=lambda name: self.times.get(name, (0, 0))[0]):
            if not self.passes(name, fault):
                return name
        return None

    def passes(self, name, fault):
        test = self.tests[name]
        environment = dict(os.environ, GTEST_FAIL_FAST="1", HV_PLANTED_FAULT=str(fault))
        environment.update(item.split("=", 1) for item in test["properties"].get("ENVIRONMENT", []))
        seconds, processor = self.times.get(name, (60, 60))

        used = int(10 + 5 * processor)
        limited = ["prlimit", f"--cpu={used}:{used + 5}", f"--fsize={LARGEST_FILE}", f"--data={MOST_MEMORY}"]
        begin, before = time.monotonic(), resource.getrusage(resource.RUSAGE_CHILDREN)
        with subprocess.Popen([*limited, *test["command"]], cwd=test["properties"]["WORKING_DIRECTORY"],
                              env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, start_new_session=True) as process:
            try:
                status = process.wait(60 + 5 * seconds)
            except subprocess.TimeoutExpired:
                status = None
            try:  # also what it started
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        if status == 0 and name not in self.times:
            self.times[name] = (time.monotonic() - begin, after.ru_utime + after.ru_stime
                                - before.ru_utime - before.ru_stime)
        return status == 0
