"""Runs the Java tests of the cluster's client against a cluster of this machine."""
import os
import subprocess
import sys
import tempfile

from spark_cluster import Cluster


def main():
    with Cluster() as cluster, tempfile.TemporaryDirectory(prefix="hv_cluster_client_") as temp:
        # The options of the host's own virtual machine; java.lang is opened for the list of hooks alone.
        words = [os.environ["HV_JAVA"], "-Xrs", "-XX:+UseSerialGC", "-XX:TieredStopAtLevel=1", "-Xmx1g",
                 "-XX:-UsePerfData", "--add-opens=java.base/java.lang=ALL-UNNAMED",
                 f"-Djava.io.tmpdir={temp}", f"-Dcluster.url={cluster.url}",
                 f"-Dcluster.scratch={cluster.scratch}",
                 f"-Dcluster.server={cluster.server.process.pid}", *sys.argv[1:]]
        status = subprocess.run(words, check=False, timeout=400).returncode
        cluster.keeps_logs = status != 0
    return status


if __name__ == "__main__":
    sys.exit(main())
