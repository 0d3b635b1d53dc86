"""Studies of what is uncertain: build tolerances, and the fit to readings."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, List, Optional, Sequence, Tuple

from . import _corvanta
from ._corner import Corner
from ._questions import Flags, Progress, Target, curve_arguments, frame_of, target_arguments
from ._results import Floats


@dataclass(frozen=True)
class Tolerance:
    """A variable is built to within `half_width` of the design.

    Its spread is normal, the half width three standard deviations, or uniform between both ends.
    """

    variable: str
    half_width: float
    uniform: bool = False

    def _argument(self) -> Tuple[str, float, bool]:
        return (self.variable, self.half_width, self.uniform)


@dataclass(frozen=True, eq=False)
class Band:
    """How samples spread a curve: arrays over its travel, 5 % of them below `low`, 5 % above."""

    travel: Floats
    nominal: Floats
    low: Floats
    high: Floats
    least: Floats
    greatest: Floats


@dataclass(frozen=True, eq=False)
class Spread:
    """How samples spread a figure.

    values       -- one for each sample, NaN where it can't be built
    shares       -- of each tolerance in the variance; empty where that can't be told
    unexplained  -- the rest, which follows from no variable in a straight line
    """

    nominal: float
    values: Floats
    mean: float
    standard_deviation: float
    shares: Floats
    unexplained: float


@dataclass(frozen=True)
class TargetCount:
    """How many samples were judged by a target, and how many of them leave its band."""

    judged: int
    leave: int
    nominal_holds: bool


@dataclass(frozen=True, eq=False)
class Tolerances:
    """What build tolerances do: a band for each curve, a spread for each figure, a count for each
    target; `built` samples of the corner can be solved and `not_built` can't."""

    built: int
    not_built: int
    first_reason: str
    bands: List[Band]
    spreads: List[Spread]
    targets: List[TargetCount]
    stopped: bool


def tolerances_of(corner: Corner) -> List[Tolerance]:
    """Usual tolerances of all coordinates that a workshop decides."""
    return [Tolerance(*one) for one in _corvanta.usual_tolerances(corner._design)]


def tolerance(
    corner: Corner,
    tolerances: Optional[Sequence[Tolerance]] = None,
    curves: Sequence[Tuple[str, str]] = (),
    figures: Sequence[str] = (),
    targets: Sequence[Target] = (),
    samples: int = 500,
    seed: int = 1,
    threads: int = 0,
    progress: Progress = None,
) -> Tolerances:
    """How far do tolerances spread the curves? Without any the usual ones."""
    built_to = tolerances_of(corner) if tolerances is None else tolerances
    found = _corvanta.tolerance(
        corner._design,
        [one._argument() for one in built_to],
        curve_arguments(curves),
        list(figures),
        target_arguments(targets),
        samples,
        seed,
        threads,
        progress,
    )
    found["bands"] = [Band(**band) for band in found["bands"]]
    found["spreads"] = [Spread(**spread) for spread in found["spreads"]]
    found["targets"] = [TargetCount(**count) for count in found["targets"]]
    return Tolerances(**found)


@dataclass(frozen=True)
class Reading:
    """A value of a channel that was read on a car, at travels in mm from static, with its standard
    deviation."""

    wheel_travel: float
    rack_travel: float
    channel: str
    value: float
    uncertainty: float


@dataclass(frozen=True, eq=False)
class FittedReadings:
    """Of each reading the design's value before and after, and what is left of it."""

    before: Floats
    after: Floats
    residual: Floats
    in_uncertainties: Floats
    outlier: Flags


@dataclass(frozen=True, eq=False)
class Fit:
    """The corner that explains the readings best.

    before, after  -- of each variable, in the order of the question
    prior          -- its standard deviation before the readings
    deviation      -- the one after; NaN where the search could not tell
    told           -- the readings tell something of it
    correlations   -- of the variables, shape (variables, variables); empty without deviations
    exact          -- no reading lies between the steps of the grid it is calculated on
    words          -- how the search ended
    """

    fitted: Corner
    variables: List[str]
    before: Floats
    after: Floats
    prior: Floats
    deviation: Floats
    told: Flags
    correlations: Floats
    readings: FittedReadings
    chi_squared: float
    degrees_of_freedom: int
    exact: bool
    converged: bool
    words: str
    stopped: bool

    def to_frame(self) -> Any:
        """The variables as a pandas DataFrame."""
        names = ("before", "after", "prior", "deviation", "told")
        return frame_of({name: getattr(self, name) for name in names}, self.variables)


def fit(
    corner: Corner,
    free: Sequence[Tolerance],
    readings: Sequence[Reading],
    threads: int = 0,
    progress: Progress = None,
) -> Fit:
    """Which pickups were really built? `free` is what is known of them before any reading."""
    rows = [
        (one.wheel_travel, one.rack_travel, one.channel, one.value, one.uncertainty)
        for one in readings
    ]
    found = _corvanta.fit(
        corner._design, [one._argument() for one in free], rows, threads, progress
    )
    found["fitted"] = Corner._of(found["fitted"])
    found["readings"] = FittedReadings(**found["readings"])
    side = len(free) if found["correlations"].size else 0
    found["correlations"] = found["correlations"].reshape(side, side)
    return Fit(variables=[one.variable for one in free], **found)
