"""Results: against the batch program, against rigid links, from several threads."""

import os
import pathlib
import pickle
import sys
import tempfile
import threading
import unittest
from concurrent.futures import ThreadPoolExecutor

import corvanta
import numpy as np
from support import SAMPLES, pushrod, run

#: Display units of the batch program's first start that are not stored ones.
FACTORS = {"%": 100.0, "lb/in": 5.708223, "lb.in/deg": 0.2247319 / 25.4}


def exported(document, folder):
    """Heads, units and rows of all channels along wheel travel from the batch program."""
    text = pathlib.Path(folder) / "all.txt"
    paths = [str(path).replace("/", "\\") for path in (document, text)]
    run("corvanta-batch", f"/input={paths[0]} /output={paths[1]} /type=1 /variable=2")
    lines = [line.split("\t") for line in text.read_text("cp1252").splitlines()]
    rows = [line for line in lines[4:] if len(line) == len(lines[2])]
    return lines[2], lines[3], rows


class ResultsTest(unittest.TestCase):
    def test_every_channel_rounds_to_what_the_batch_program_writes(self):
        os.environ["XDG_CONFIG_HOME"] = self.enterContext(tempfile.TemporaryDirectory())
        for document in sorted(SAMPLES.glob("*.WSP")):
            results = corvanta.Corner.load(document).solve()
            heads, units, rows = exported(document, os.environ["XDG_CONFIG_HOME"])
            self.assertEqual(len(rows), len(results.wheel_travel))
            self.assertEqual(len(heads), 50)  # all but the link loads
            for column, (head, unit) in enumerate(zip(heads, units)):
                ours = results.curve(head).values[::-1] * np.float32(FACTORS.get(unit, 1))
                for value, row in zip(ours, rows):
                    text = row[column].replace(",", "")
                    step = 10.0 ** -len(text.partition(".")[2])
                    written = float(text)
                    value = 0 if np.isnan(value) else value  # never written shows as 0
                    self.assertLessEqual(
                        abs(value - written),
                        step / 2 + 1e-9 * abs(value),
                        f"{document.name}, {head}: {value} beside {text}",
                    )

    def test_links_keep_their_lengths_and_the_rack_moves_its_pickup(self):
        corner = pushrod()
        results = corner.solve()
        shape = (len(results.rack_travel), len(results.wheel_travel))
        self.assertEqual(results["ptTRI"].shape, (*shape, 3))
        for one, other in (("ptTRI", "ptTRO"), ("ptLWIF", "ptLWO"), ("ptPRI", "ptPRO")):
            designed = np.linalg.norm(corner[one] - corner[other])
            lengths = np.linalg.norm(results[one] - results[other], axis=-1)
            np.testing.assert_allclose(lengths, designed, atol=2e-3)
        racked = results["ptTRI"][:, :, 1] - corner["ptTRI.Y"]
        np.testing.assert_allclose(abs(racked), abs(results.rack_travel[:, None] + 0 * racked))
        np.testing.assert_allclose(
            results["Wheel Travel"], np.broadcast_to(results.wheel_travel, shape), atol=1e-3
        )
        self.assertEqual(results["ptTRI"][results.static].tolist(), corner.ptTRI.tolist())
        self.assertTrue(np.isnan(results["Driveshaft Length"]).all())
        self.assertTrue(np.isfinite(results.link_loads).all())
        self.assertEqual(results.curve("camber angle", "rack").values.shape, shape[:1])
        for name in ("Chamber", 0, 52, "ptDSO"):
            with self.assertRaises(KeyError):
                results[name]  # pylint: disable=pointless-statement

    def test_no_array_of_results_can_be_changed(self):
        results = pushrod().solve()
        for own in (results, pickle.loads(pickle.dumps(results))):
            for array in (own["Camber Angle"], own["ptTRI"], own.curve(3).values, own.link_loads,
                          own.wheel_travel):
                with self.assertRaisesRegex(ValueError, "read-only"):
                    array += 1
        np.testing.assert_array_equal(results[np.int64(3)], results[3])
        frame = results.to_frame()
        frame.iloc[0, 0] = -1  # is the user's
        self.assertNotEqual(results[1][0, 0], -1)

    def test_a_frame_has_a_row_for_each_position_and_a_unit_in_each_head(self):
        results = pushrod().solve()
        frame = results.to_frame()
        self.assertEqual(frame.loc[(7.0, -25.0), "Half Track [mm]"], results["Half Track"][5, 0])
        self.assertEqual(frame.shape, (results.reached.size, 51))

    def test_a_tolerant_solve_has_what_it_reached(self):
        corner = pushrod()
        corner.WheelTravelStepSize = 5
        whole = corner.solve()
        corner.Bump = 200
        with self.assertRaises(corvanta.CornerError):
            corner.solve()
        part = corner.solve(tolerant=True)
        self.assertGreater(part.failure.wheel_travel, 25)
        reached = part.reached
        self.assertTrue(0 < reached.sum() < reached.size)
        camber = part["Camber Angle"]
        np.testing.assert_array_equal(np.isnan(camber), ~reached)
        np.testing.assert_array_equal(np.isnan(part["ptWC"]).any(axis=-1), ~reached)
        np.testing.assert_array_equal(
            camber[:, : len(whole.wheel_travel)], whole["Camber Angle"]
        )

    def test_threads_solve_at_the_same_time(self):
        corner = pushrod()
        seen, started = threading.Event(), threading.Event()

        def solve_until_seen():
            started.set()
            for _ in range(200):
                corner.solve()
                if seen.is_set():
                    return True
            return False

        interval = sys.getswitchinterval()
        sys.setswitchinterval(1000)  # no thread gives way unless a solve does
        try:
            with ThreadPoolExecutor() as pool:
                solving = pool.submit(solve_until_seen)
                started.wait()
                seen.set()
                self.assertTrue(solving.result())
        finally:
            sys.setswitchinterval(interval)
        corners = [pushrod() for _ in range(8)]
        for n, one in enumerate(corners):
            one.ptTRI[2] += n / 8
        alone = [one.solve()["Steer Angle"] for one in corners]
        with ThreadPoolExecutor(4) as pool:
            together = list(pool.map(lambda one: one.solve()["Steer Angle"], corners))
        np.testing.assert_array_equal(together, alone)


if __name__ == "__main__":
    unittest.main()
