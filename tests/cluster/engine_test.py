"""Runs the engine's own tests of jobs on a cluster of this machine instead of its database.

Usage: engine_test.py PROGRAM [--on-request]

Leaves out the tests of ON_REQUEST, or runs these alone."""
import os
import re
import subprocess
import sys
import threading

from spark_cluster import Cluster, QUICK_COMPILER

SECONDS = 1700
# The tests that a cluster cannot pass, with the reasons. ClusterTest has what it refuses.
LEFT_OUT = {
    "ReadWriteTest.FilesThatCannotBeReadAreNamed": "an HVBF output is a folder",
    "ReadWriteTest.SealedFilesOpenWithTheirPasswordOnly": "files are not sealed",
    "ReadWriteTest.ConfigurationsAreChecked": "maps are refused before their settings are read",
    "SavFields.ComeBackAsTheyWereAndSoDoTheRecords": "files are not sealed",
    "RowIteratorTest.RowsOfAWrittenFileComeBackInTheSameProtocol": "files are not sealed",
    "RowIteratorTest.AnIteratorThatKnowsItsNumberOfRecordsGivesProgress": "sending is half of the work",
    "RowIteratorTest.OnlyWhatAJobNeedsIsAskedFor": "all fields are sent",
    "JobLifeTest.AFullDiskIsToldAndLeavesNothing": "the workers have no limit for their files",
}
# The tests that take long, and one whose time limit needs a machine that does nothing else.
ON_REQUEST = [
    "ClusterTest.AThousandJobsLeaveNothingBehind", "ClusterTest.ACsvFileInPartsHasTheSameRecords",
    "Descriptives.GivesTheSameBitsOnEachRun", "JobLifeTest.JobsRunSideBySide",
    "JobLifeTest.ARunningJobIsCancelledAtOnceAndLeavesNothing",
    "ReadWriteTest.QuotedLineEndsThatOccurLateLoseNothing", "ReadWriteTest.ThreadsReadFilesWithQuotes",
]
# What the checks of -Xcheck:jni print.
COMPLAINT = re.compile("in native method|JNI local refs|JNI call made")


def run(words, environment):
    """Runs the program and shows its output. Returns its status, or 1 if the Java virtual machine complains."""
    complains = False
    with subprocess.Popen(words, env=environment, stdout=subprocess.PIPE, text=True, errors="replace") as program:
        timer = threading.Timer(SECONDS, program.kill)
        timer.start()
        for line in program.stdout:
            print(line, end="", flush=True)
            complains = complains or bool(COMPLAINT.search(line))
        timer.cancel()
    return program.returncode or int(complains)


def main():
    program, *options = sys.argv[1:]
    is_long = options == ["--on-request"]
    selection = ":".join(ON_REQUEST) if is_long else f"-{':'.join([*LEFT_OUT, *ON_REQUEST])}"
    with Cluster(compiler=() if is_long else QUICK_COMPILER) as cluster:
        environment = dict(os.environ, HV_TEST_ENGINE_URL=cluster.url,
                           HV_TEST_ENGINE_SCRATCH=f"file:{cluster.scratch}")
        status = run([program, f"--gtest_filter={selection}"], environment)
        left = sorted(path.name for path in cluster.scratch.iterdir())
        if left:
            print(f"left in the scratch folder: {left}")
        cluster.keeps_logs = status != 0
    return status or len(left)


if __name__ == "__main__":
    sys.exit(main())
