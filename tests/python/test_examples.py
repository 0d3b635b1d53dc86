"""The examples, as they are; the sweep over a cluster loses a worker."""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

import corvanta
import distributed
import numpy as np
import pandas
import zarr
from support import PUSHROD, SOURCE, pushrod, run

EXAMPLES = SOURCE / "examples"
sys.path.insert(0, str(EXAMPLES))
import cluster_sweep  # noqa: E402  pylint: disable=wrong-import-position


class ExamplesTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def test_the_picture_of_camber_is_drawn(self):
        picture = self.folder / "camber.png"
        subprocess.run(
            [sys.executable, EXAMPLES / "camber_curve.py", PUSHROD, picture], check=True,
            stdout=subprocess.DEVNULL,
        )
        self.assertEqual(picture.read_bytes()[1:4], b"PNG")

    def test_a_lost_worker_loses_no_row_and_doubles_none(self):
        axes = {"ptTRI.Z": np.linspace(190, 205, 30), "ptUWIF.Z": np.linspace(346, 366, 20)}
        whole = corvanta.variants(pushrod(), axes, cluster_sweep.FIGURES)
        sweep = (pushrod(), axes, cluster_sweep.FIGURES, 20, self.folder)
        with distributed.LocalCluster(
            n_workers=2, threads_per_worker=1, dashboard_address=":0"
        ) as cluster, distributed.Client(cluster) as client:
            lost = cluster.workers[0].pid
            for n, _ in enumerate(cluster_sweep.run(client, *sweep)):
                if n == 2:
                    os.kill(lost, signal.SIGKILL)
            self.assertEqual(n, 19)
            self.assertNotIn(lost, client.run(os.getpid).values())
            self.assertEqual(list(cluster_sweep.run(client, *sweep)), [])  # nothing is missing
            other = (sweep[0], {"ptTRI.Z": np.zeros(20)}, *sweep[2:])
            with self.assertRaisesRegex(ValueError, "another sweep"):
                list(cluster_sweep.run(client, *other))
        shards = sorted(self.folder.glob("shard-*.csv"))
        rows = pandas.concat(pandas.read_csv(path, float_precision="round_trip") for path in shards)
        self.assertEqual(rows["variant"].tolist(), list(range(600)))
        np.testing.assert_array_equal(rows[cluster_sweep.FIGURES], whole.figures)
        store = zarr.open(str(self.folder / "variants.zarr"), mode="r")
        np.testing.assert_array_equal(store["figures"], whole.figures)
        np.testing.assert_array_equal(store["values"], whole.values)

    def test_a_job_array_is_the_whole_sweep_and_goes_on_where_it_was_stopped(self):
        sweep = ["--vary=ptTRI.Z=190:205:7", "--figure=Camber Angle:gain"]
        path = f"{os.environ['CORVANTA_PROGRAMS']}:{os.environ['PATH']}"

        def run_task(task, tasks):
            subprocess.run(
                ["bash", EXAMPLES / "sweep.sbatch", "3", PUSHROD, self.folder, *sweep], check=True,
                env={**os.environ, "PATH": path, "SLURM_ARRAY_TASK_ID": str(task),
                     "SLURM_ARRAY_TASK_COUNT": str(tasks)},
            )

        for task in (3, 1, 2):
            run_task(task, 3)
        stopped = self.folder / "shard-0002.csv"
        stopped.write_bytes(stopped.read_bytes()[:-9])
        run_task(2, 1)  # on its own: --array=2
        shards = [path.read_text().splitlines() for path in sorted(self.folder.glob("*.csv"))]
        joined = [shards[0][0], *(line for shard in shards for line in shard[1:])]
        self.assertEqual(joined, run("corvanta-tool", "sweep", PUSHROD, *sweep).splitlines())


if __name__ == "__main__":
    unittest.main()
