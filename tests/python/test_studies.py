"""Studies, each beside what solves of its own say."""

import pickle
import unittest

import corvanta
import numpy as np
from corvanta import Free, Reading, Target, Tolerance, Verdict, Wish
from support import PUSHROD, pushrod, run

STEER = "Steer Angle"
LEVEL = Target(STEER, [(-25, -0.01, 0.01), (25, -0.01, 0.01)])


def steer_of(corner, **values):
    """The steer angle along wheel travel of a corner with other values."""
    other = corner.copy()
    for name, value in values.items():
        other[name.replace("_", ".")] = value
    return other.solve().curve(STEER)


def gain(curve):
    """At static, the middle step."""
    middle = len(curve.travel) // 2
    return np.diff(curve.values[middle - 1 : middle + 2 : 2])[0] / np.diff(
        curve.travel[middle - 1 : middle + 2 : 2]
    )[0]


class StudiesTest(unittest.TestCase):
    def test_a_sweep_is_many_solves(self):
        corner = pushrod()
        heights = [195, 197.5, 1e9]
        answer = corvanta.sweep(corner, {"ptTRI.Z": heights}, f"{STEER}:range", [(STEER, "wheel")])
        for n, height in enumerate(heights[:2]):
            curve = steer_of(corner, ptTRI_Z=height)
            self.assertEqual(answer.number[n], np.ptp(curve.values))
            np.testing.assert_array_equal(answer.curves[n,][0].values, curve.values)
        self.assertEqual(answer.solved.tolist(), [True, True, False])
        self.assertTrue(np.isnan(answer.number[2]) and answer.failures[2,])
        two = corvanta.sweep(corner, {"ptTRI.Z": heights[:2], "KSpring": [1, 2, 3]}, LEVEL)
        self.assertEqual(two.number.shape, (2, 3))
        np.testing.assert_array_equal(two.number[:, 0], two.number[:, 2])

    def test_shards_are_the_whole_and_those_of_the_tool(self):
        corner = pushrod()
        axes = {"ptTRI.Z": [190, 197.5, 1e9], "trackrod": [-1, 0.1]}
        figures = [f"{STEER}:gain", "Camber Angle:at=10"]
        whole = corvanta.variants(corner, axes, figures)
        parts = [corvanta.variants(corner, axes, figures, (n, 4), threads=1) for n in range(1, 5)]
        for name in ("variant", "values", "figures", "failures"):
            joined = np.concatenate([getattr(part, name) for part in parts])
            np.testing.assert_array_equal(joined, getattr(whole, name))
        vary = [f"--vary={name}={','.join(map(str, values))}" for name, values in axes.items()]
        lines = run(
            "corvanta-tool", "sweep", PUSHROD, *vary, *(f"--figure={name}" for name in figures)
        ).splitlines()
        frame = whole.to_frame()
        self.assertEqual(len(lines), 1 + len(frame))
        for line, row in zip(lines[1:], frame.itertuples()):
            numbers = ["" if np.isnan(number) else number for number in row[:-1]]
            for cell, number in zip(line.split(",", 5), numbers):
                self.assertEqual(float(cell or 0), float(f"{number or 0:.15g}"))
            self.assertEqual(line.split(",", 5)[5].strip('"'), row.failure)

    def test_sensitivity_is_a_difference_of_two_corners(self):
        corner = pushrod()
        answer = corvanta.sensitivity(corner, f"{STEER}:gain")
        slopes = answer.to_frame()["per mm"]
        at = corner["ptTRI.Z"]
        ours = gain(steer_of(corner, ptTRI_Z=at + 0.1)) - gain(steer_of(corner, ptTRI_Z=at - 0.1))
        self.assertAlmostEqual(slopes["ptTRI.Z"], ours / 0.2, delta=1e-5 * abs(ours / 0.2))
        self.assertEqual(len(slopes), 3 * len(corner.points))

    def test_optimise_brings_a_curve_into_its_band(self):
        corner = pushrod()
        corner.ptTRI[2] += 5
        self.assertGreater(abs(corner.solve().curve(STEER).values).max(), 0.01)
        answer = corvanta.optimise(corner, [Free("ptTRI.Z", 185, 210)], [LEVEL], starts=2)
        self.assertTrue(answer.all_hold and answer.targets[0][1].holds)
        self.assertLessEqual(abs(answer.best.solve().curve(STEER).values).max(), 0.01)
        self.assertEqual(answer.best["ptTRI.Z"], answer.to_frame().loc["ptTRI.Z", "after"])
        self.assertEqual(answer.before, corner["ptTRI.Z"])

    def test_tolerances_have_the_statistics_of_their_samples(self):
        corner = pushrod()
        tolerances = [Tolerance("ptTRI.Z", 1), Tolerance("ptUWO.Y", 0.5, uniform=True)]
        answer = corvanta.tolerance(
            corner, tolerances, [(STEER, "wheel")], [f"{STEER}:gain"], [LEVEL], samples=200
        )
        spread, band = answer.spreads[0], answer.bands[0]
        self.assertEqual((answer.built, answer.not_built), (200, 0))
        self.assertAlmostEqual(spread.mean, spread.values.mean(), delta=1e-12)
        self.assertAlmostEqual(spread.standard_deviation, spread.values.std(ddof=1), delta=1e-12)
        self.assertAlmostEqual(spread.shares.sum() + spread.unexplained, 1, delta=1e-12)
        np.testing.assert_array_equal(band.nominal, corner.solve().curve(STEER).values)
        self.assertTrue((band.least <= band.low).all() and (band.high <= band.greatest).all())
        self.assertGreater(answer.targets[0].leave, 0)
        usual = {one.variable: one.half_width for one in corvanta.tolerances_of(corner)}
        self.assertEqual((usual["ptTRI.Z"], usual["ptTRO.Z"]), (0.5, 0.2))

    def test_a_region_holds_where_solves_do(self):
        corner = pushrod()
        answer = corvanta.region(
            corner, "ptTRI", [(-118, -118, 1), (160, 170, 3), (193.5, 201.5, 5)], [LEVEL]
        )
        self.assertEqual(answer.verdict.shape, (1, 3, 5))
        for y, z in np.ndindex(3, 5):
            place = {"ptTRI_Y": answer.places[1][y], "ptTRI_Z": answer.places[2][z]}
            holds = abs(steer_of(corner, **place).values).max() <= 0.01
            self.assertEqual(answer.held[0, y, z], holds, place)
        self.assertTrue(0 < answer.held.sum() < answer.held.size)
        self.assertIs(answer.present, Verdict.HELD)

    def test_a_fit_finds_the_pickup_that_was_built(self):
        corner, built = pushrod(), pushrod()
        built.ptTRI += (0, 0, 0.7)
        curve = built.solve().curve(STEER)
        readings = [
            Reading(travel, 0, STEER, value, 0.001)
            for travel, value in zip(curve.travel.round(6), curve.values)
        ]
        readings[3] = Reading(readings[3].wheel_travel, 0, STEER, 5, 0.001)
        free = [Tolerance("ptTRI.Z", 2), Tolerance("KSpring", 5)]
        answer = corvanta.fit(corner, free, readings)
        found = answer.to_frame()
        self.assertAlmostEqual(found.loc["ptTRI.Z", "after"], 198.2, delta=0.02)
        self.assertEqual(found["told"].tolist(), [True, False])
        self.assertEqual(np.flatnonzero(answer.readings.outlier).tolist(), [3])
        self.assertEqual(answer.fitted["ptTRI.Z"], answer.after[0])
        np.testing.assert_allclose(np.diag(answer.correlations), 1)

    def test_turns_of_a_trackrod_give_toe_and_nothing_else_gets_longer(self):
        corner = pushrod()
        rod = [one for one in corvanta.adjusters_of(corner) if one.link == "trackrod"]
        sheet = corvanta.setup_sheet(corner, rod, [STEER, "Ride Height"])
        self.assertEqual((sheet.more.shape, sheet.faults), ((1, 2), {}))
        wanted = 3 * sheet.more[0, 0]
        turns = corvanta.setup_turns(corner, {STEER: Wish(wanted, 0.02)}, rod)
        self.assertEqual((turns.counts.tolist(), turns.holds), ([3], True))
        self.assertAlmostEqual(turns.reached[0] - turns.base[0], wanted, delta=0.02)

        def length(one, link):
            return np.linalg.norm(one[link[0]] - one[link[1]])

        for link, longer in (
            (("ptTRI", "ptTRO"), 3 * rod[0].pitch * rod[0].part),
            (("ptLWIF", "ptLWO"), 0),
        ):
            grown = length(turns.corner, link) - length(corner, link)
            self.assertAlmostEqual(grown, longer, delta=1e-6)
        with self.assertRaisesRegex(ValueError, "spring rod"):
            corvanta.setup_sheet(corner, [corvanta.Adjuster("x", "link length", link="prop")])

    def test_progress_is_told_and_can_stop_or_raise(self):
        corner = pushrod()
        axes = {"ptTRI.Z": np.linspace(190, 200, 3000)}
        shares = []
        done = corvanta.variants(corner, {"ptTRI.Z": [190, 191]}, [STEER], progress=shares.append)
        self.assertEqual((done.stopped, shares[-1]), (False, 1))
        stopped = corvanta.variants(corner, axes, [STEER], progress=lambda share: False)
        self.assertTrue(stopped.stopped)
        self.assertLess(len(stopped.variant), 3000)

        def fail(share):
            raise RuntimeError(f"at {share}")

        with self.assertRaisesRegex(RuntimeError, "^at "):
            corvanta.variants(corner, axes, [STEER], progress=fail)

    def test_questions_without_a_sense_say_so(self):
        corner = pushrod()
        for question in (
            lambda: corvanta.sweep(corner, {}, STEER),
            lambda: corvanta.sweep(corner, {"ptTRI.Q": [1]}, STEER),
            lambda: corvanta.sweep(corner, {"KSpring": [float("nan")]}, STEER),
            lambda: corvanta.sensitivity(corner, "Chamber Angle"),
            lambda: corvanta.sensitivity(corner, f"{STEER}:at=24.9:rack:gain"),
            lambda: corvanta.sensitivity(corner, f"{STEER}:rack:gain:rack"),
            lambda: corvanta.sensitivity(corner, Target(STEER, [])),
            lambda: corvanta.optimise(corner, [Free("ptDSO.Z", 0, 1)], [LEVEL]),
            lambda: corvanta.region(corner, "ptXX", [(0, 1, 2)] * 3),
            lambda: corvanta.fit(corner, [Tolerance("ptTRI.Z", 1)], []),
            lambda: corvanta.variants(corner, {"KSpring": [1]}, [STEER], shard=(3, 2)),
            lambda: corvanta.tolerance(corner, [], curves=[(STEER, "sideways")]),
        ):
            with self.assertRaises(ValueError) as caught:
                question()
            self.assertGreater(len(str(caught.exception)), 10)

    def test_answers_pickle(self):
        corner = pushrod()
        answer = corvanta.optimise(corner, [Free("ptTRI.Z", 195, 200)], [LEVEL], starts=1)
        again = pickle.loads(pickle.dumps(answer))
        self.assertEqual(again.best, answer.best)
        results = pickle.loads(pickle.dumps(corner.solve()))
        np.testing.assert_array_equal(results[STEER], corner.solve()[STEER])


if __name__ == "__main__":
    unittest.main()
