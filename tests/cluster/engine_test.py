"""Runs the engine's own tests of jobs on a cluster of this machine instead of its database."""
import os
import subprocess
import sys

from spark_cluster import Cluster

# The cases that give the same result on a cluster as on the database.
CASES = ["DataModelStep.*", "StepTest.FractionsOfFactorsAreDrawnTheSameWayEachTime",
         "StepTest.SamplesAreDrawnBySeedAndStayInOrder", "StepTest.JoinsMatchByTag",
         "StepTest.UnionsMatchByNameOrByPosition"]


def main():
    program = sys.argv[1]
    with Cluster() as cluster:
        environment = dict(os.environ, HV_TEST_ENGINE_URL=cluster.url,
                           HV_TEST_ENGINE_SCRATCH=f"file:{cluster.scratch}")
        words = [program, f"--gtest_filter={':'.join(CASES)}"]
        status = subprocess.run(words, check=False, env=environment, timeout=1500).returncode
        left = sorted(path.name for path in cluster.scratch.iterdir())
        if left:
            print(f"left in the scratch folder: {left}")
        cluster.keeps_logs = status != 0
    return status or len(left)


if __name__ == "__main__":
    sys.exit(main())
