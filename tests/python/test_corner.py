"""Documents, values, points, failures."""

import contextlib
import copy
import doctest
import pathlib
import pickle
import tempfile
import unittest

import corvanta
import numpy as np
from support import SAMPLES, SOURCE, pushrod


class CornerTest(unittest.TestCase):
    def test_the_package_shows_what_it_does(self):
        with contextlib.chdir(SOURCE):
            shown = doctest.testmod(corvanta)
        self.assertEqual((shown.failed, shown.attempted), (0, 5))

    def test_a_current_document_is_written_as_it_was_read(self):
        documents = sorted(SAMPLES.glob("*.WSP"))
        self.assertGreater(len(documents), 10)
        with tempfile.TemporaryDirectory() as folder:
            for document in documents:
                written = pathlib.Path(folder) / document.name
                corvanta.Corner.load(document).save(written)
                self.assertEqual(written.read_bytes(), document.read_bytes(), document.name)

    def test_names_stand_for_the_same_place_however_they_are_written(self):
        corner = pushrod()
        corner["ptTRI"][2] += 1  # 197.5 in the document
        corner.ptTRI[2] += 1
        corner["ptTRI.Z"] += 1
        self.assertEqual(corner.ptTRI.tolist(), [-118, 166.5, 200.5])
        corner.ptTRI = (-118, 166, 201)
        self.assertEqual(corner["ptTRI.Y"], 166)
        corner.KSpring = 140
        self.assertEqual((corner["KSpring"], corner.values["KSpring"]), (140, 140))
        corner["Description"] = "Öhlins"
        self.assertEqual(corner.Description, "Öhlins")
        self.assertIs(corner.DriveShaftExists, False)
        self.assertIn("pushrod to upright", corner.words("SpringMechanism"))
        self.assertIn("ptTRI", corner.points)
        self.assertIn("ptTRI", dir(corner))

    def test_a_point_outlives_its_corner_and_comes_into_play_with_its_mechanism(self):
        point = pushrod().ptTRI
        self.assertEqual(point.tolist(), [-118, 166.5, 197.5])
        corner = pushrod()
        self.assertNotIn("ptDSO", corner.points)
        with self.assertRaisesRegex(AttributeError, "ptDSO"):
            corner.ptDSO  # pylint: disable=pointless-statement
        corner.DriveShaftExists = True
        corner.ptDSO = (0, 600, 280)
        self.assertEqual(corner["ptDSO.Y"], 600)

    def test_what_makes_no_sense_is_refused_and_changes_nothing(self):
        corner = pushrod()
        for name, value, error in (
            ("ptTRY", (1, 2, 3), KeyError),
            ("ptTRI.W", 1, KeyError),
            ("KSprin", 1, KeyError),
            ("ptTRI", (1, 2), ValueError),
            ("ptTRI", (1, 2, float("nan")), ValueError),
            ("ptTRI.Z", float("inf"), ValueError),
            ("KSpring", "stiff", TypeError),
            ("SpringMechanism", 12, ValueError),
            ("ARBMechanism", -1, ValueError),
        ):
            with self.assertRaisesRegex(error, name, msg=name):
                corner[name] = value
        with self.assertRaises(AttributeError):
            corner.KSprin = 1
        self.assertEqual(corner, pushrod())

    def test_copies_and_pickles_are_the_same_corner_with_a_life_of_its_own(self):
        corner = pushrod()
        corner["ptTRI.Z"] = 197.1 + 1e-13  # lost in a document's 15 digits
        corner.SpringMechanism = 1  # takes points out of play that are kept
        for other in (copy.copy(corner), copy.deepcopy(corner), pickle.loads(pickle.dumps(corner))):
            self.assertEqual(other, corner)
            other.SpringMechanism = corner.SpringMechanism = 6
            self.assertEqual(other.ptR1O.tolist(), pushrod().ptR1O.tolist())
            other.ptTRI[0] += 1
            self.assertNotEqual(other, corner)
            corner.SpringMechanism = 1

    def test_a_description_comes_back_as_it_was_or_is_refused(self):
        corner = pushrod()
        path = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory())) / "x.WSP"
        for text in ("", " Öhlins ] ", "two\nlines\tand more"):
            corner.Description = text
            corner.save(path)
            self.assertEqual(corvanta.Corner.load(path), corner)
        kept = path.read_bytes()
        for text in ("前", "stiff [v2]", "[v2]", "\tstiff", "stiff\t", "stiff\r\n"):
            corner.Description = text
            with self.assertRaisesRegex(ValueError, "x.WSP.*description", msg=repr(text)):
                corner.save(path)
        self.assertEqual(path.read_bytes(), kept)

    def test_a_check_names_the_coordinates_that_are_no_numbers(self):
        corner = pushrod()
        corner.ptTRI[2] = np.nan
        corner.ptUWO[0] = 1e300
        found = [(finding.is_error, finding.points) for finding in corner.check()]
        self.assertEqual(found, [(True, ("ptUWO",)), (True, ("ptTRI",))])
        self.assertIn("Trackrod inboard pickup Z", corner.check()[1].text)

    def test_files_that_can_not_be_used_are_named(self):
        with tempfile.TemporaryDirectory() as folder:
            missing = pathlib.Path(folder) / "none.WSP"
            with self.assertRaisesRegex(FileNotFoundError, "none.WSP"):
                corvanta.Corner.load(missing)
            missing.write_text("no document")
            with self.assertRaisesRegex((ValueError, OSError), "none.WSP"):
                corvanta.Corner.load(missing)
            with self.assertRaises(OSError):
                pushrod().save(pathlib.Path(folder) / "no folder" / "x.WSP")

    def test_a_failure_tells_its_points_and_its_place(self):
        corner = pushrod()
        corner.Bump = 600  # the rocker does not follow so far
        with self.assertRaises(corvanta.CornerError) as caught:
            corner.solve()
        error = pickle.loads(pickle.dumps(caught.exception))
        self.assertIsInstance(error, ValueError)
        self.assertGreater(error.wheel_travel, 25)
        self.assertIn(error.rack_travel, np.arange(-28, 29, 7))
        self.assertIn("ptPRI", error.points)
        self.assertIn(error.reason, str(error))
        self.assertEqual([finding.is_error for finding in corner.check()][:1], [True])
        self.assertEqual(pushrod().check(), [])


if __name__ == "__main__":
    unittest.main()
