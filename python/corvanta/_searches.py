"""Studies that look for a better corner: optimisation, and the region of a point."""

from __future__ import annotations

import enum
from dataclasses import dataclass
from typing import Any, List, Sequence, Tuple

import numpy as np
import numpy.typing as npt

from . import _corvanta
from ._corner import Corner
from ._questions import Flags, Progress, Target, TargetResult, frame_of, target_arguments
from ._results import Floats


@dataclass(frozen=True)
class Free:
    """A variable that may move between two ends."""

    variable: str
    low: float
    high: float


@dataclass(frozen=True)
class Start:
    """What one start of an optimisation came to."""

    number: int
    evaluated: bool
    converged: bool
    all_hold: bool
    same_place: bool  #: as the best one
    cost: float


@dataclass(frozen=True, eq=False)
class Optimisation:
    """The best corner that was found.

    before, after, at_bound  -- of each variable, in the order of the question
    targets                  -- (before, after) of each target
    all_hold                 -- every target holds with the best corner
    starts                   -- those that hold first, each by cost, failed ones last
    first_failure            -- why the first of them failed, or ""
    """

    best: Corner
    variables: List[str]
    before: Floats
    after: Floats
    at_bound: Flags
    targets: List[Tuple[TargetResult, TargetResult]]
    all_hold: bool
    starts: List[Start]
    first_failure: str
    stopped: bool

    def to_frame(self) -> Any:
        """The variables as a pandas DataFrame."""
        columns = {"before": self.before, "after": self.after, "at bound": self.at_bound}
        return frame_of(columns, self.variables)


def optimise(
    corner: Corner,
    free: Sequence[Free],
    targets: Sequence[Target],
    starts: int = 5,
    seed: int = 1,
    threads: int = 0,
    progress: Progress = None,
) -> Optimisation:
    """Which variables bring all curves into their bands?"""
    boxes = [(one.variable, one.low, one.high) for one in free]
    found = _corvanta.optimise(
        corner._design, boxes, target_arguments(targets), starts, seed, threads, progress
    )
    found["best"] = Corner._of(found["best"])
    found["targets"] = [
        (TargetResult(**before), TargetResult(**after)) for before, after in found["targets"]
    ]
    found["starts"] = [Start(**start) for start in found["starts"]]
    return Optimisation(variables=[one.variable for one in free], **found)


class Verdict(enum.IntEnum):
    """What becomes of the corner with a point at a place."""

    UNKNOWN = 0  #: stopped before
    HELD = 1
    OUT_OF_REACH = 2  #: the travel is not reached, or the point can't be there
    MISSES_TARGET = 3


@dataclass(frozen=True, eq=False)
class Region:
    """Where a point may go: arrays of shape (x, y, z) over the places along each axis.

    places     -- x, y and z, mm
    verdict    -- numbers of `Verdict`
    solved     -- False where the places around tell
    missed     -- the first target that is missed, from 0; -1 for none
    deviation  -- of that target; NaN where none was solved
    present    -- the verdict of the corner as it is, and why where it is out of reach
    """

    places: Tuple[Floats, Floats, Floats]
    verdict: npt.NDArray[np.uint8]
    solved: Flags
    missed: npt.NDArray[np.int32]
    deviation: Floats
    present: Verdict
    present_failure: str
    first_failure: str
    stopped: bool

    @property
    def held(self) -> Flags:
        """True where all targets hold over all travel."""
        found: Flags = self.verdict == Verdict.HELD
        return found


def region(
    corner: Corner,
    point: str,
    box: Sequence[Tuple[float, float, int]],
    targets: Sequence[Target] = (),
    whole_grid: bool = False,
    threads: int = 0,
    progress: Progress = None,
) -> Region:
    """Where may a point go? `box` is (low, high, nodes) along X, Y and Z; low == high for a plane.

    `whole_grid` asks for all wheel travel at every rack travel; else at the static one.
    """
    found = _corvanta.region(
        corner._design, point, list(box), target_arguments(targets), whole_grid, threads, progress
    )
    shape = tuple(len(along) for along in reversed(found["places"]))
    nodes = {name: array.reshape(shape).T for name, array in found.pop("nodes").items()}
    found["present"] = Verdict(found["present"])
    return Region(**nodes, **found)
