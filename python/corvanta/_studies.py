"""The studies: what is done with designs beside the corner in hand.

Words that all of them share:

- a variable is a coordinate "ptTRI.Z" or a value "KSpring"
- a channel is its title "Camber Angle", in capitals or not, or its number as a text
- a figure is a channel at static, or with ":gain", ":change", ":range" or ":at=10" behind it, and
  ":rack" for rack travel in place of wheel travel; what is asked for "of" is a figure or a Target
- `threads` is how many threads work, 0 for as many as the machine has; answers don't depend on it
- `progress` is called with the share done, 0 to 1; when it returns False the study stops, and the
  answer has `stopped`; what it raises is passed on

All raise ValueError that says what is wrong with a question. Other Python threads run meanwhile.
"""

from __future__ import annotations

import enum
from dataclasses import dataclass
from typing import Any, Callable, Dict, List, Mapping, Optional, Sequence, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _corvanta
from ._corner import Corner
from ._results import Curve, Floats, is_rack

Progress = Optional[Callable[[float], Optional[bool]]]
Flags = npt.NDArray[np.bool_]


@dataclass(frozen=True)
class Target:
    """What a curve shall be: a channel within a band, the other travel static.

    band    -- corners (travel in mm, low, high), travels growing; straight from one to the next
    along   -- "wheel" or "rack"
    weight  -- above 0; how much it counts beside other targets
    """

    channel: str
    band: Sequence[Tuple[float, float, float]]
    along: str = "wheel"
    weight: float = 1

    def _argument(self) -> Tuple[Any, ...]:
        return (self.channel, is_rack(self.along), list(self.band), self.weight)


Number = Union[str, Target]


@dataclass(frozen=True)
class TargetResult:
    """How a curve lies to a target: its greatest deviation, where, and how much is judged."""

    judged: bool
    holds: bool
    deviation: float  #: above 0 over the band, below 0 under it, 0 within
    travel: float  #: of the greatest deviation, mm
    share: float  #: of the band that the curve's travel covers, 0 to 1


def _number(number: Number) -> Any:
    if isinstance(number, Target):
        return number._argument()
    if not isinstance(number, str):
        raise TypeError(f"a number is a figure such as 'Camber Angle:gain' or a Target, not {number!r}")
    return number


def _targets(targets: Sequence[Target]) -> List[Any]:
    return [target._argument() for target in targets]


def _curves(curves: Sequence[Tuple[str, str]]) -> List[Tuple[str, bool]]:
    return [(channel, is_rack(along)) for channel, along in curves]


def _axes(axes: Mapping[str, Sequence[float]]) -> List[Tuple[str, List[float]]]:
    return [(name, [float(value) for value in values]) for name, values in axes.items()]


def _frame(columns: Mapping[str, Any], index: Any = None) -> Any:
    import pandas

    return pandas.DataFrame(dict(columns), index=index)


# --- Sweep ----------------------------------------------------------------------------------------


@dataclass(frozen=True, eq=False)
class Sweep:
    """One design for each value of the axis, or for each pair of values of two.

    axes      -- the values of each
    number    -- of each design, shape of the axes; NaN where there is none
    solved    -- the same shape
    failures  -- why designs are not solved, by index
    curves    -- of each design the curves asked for, None where it has none; index by index
    """

    axes: Dict[str, Floats]
    number: Floats
    solved: Flags
    failures: Dict[Tuple[int, ...], str]
    curves: Dict[Tuple[int, ...], List[Optional[Curve]]]
    stopped: bool


def sweep(
    corner: Corner,
    axes: Mapping[str, Sequence[float]],
    of: Optional[Number] = None,
    curves: Sequence[Tuple[str, str]] = (),
    threads: int = 0,
    progress: Progress = None,
) -> Sweep:
    """What if this runs from a to b? One or two axes, as {"ptTRI.Z": [195, 196], "trackrod": ...}.

    An axis is a variable or a link that gets longer, as study files name it; up to 10,000 designs.
    `curves` are (channel, "wheel" or "rack"), kept with one axis alone.
    """
    asked = _axes(axes)
    found = _corvanta.sweep(
        corner._design,
        asked,
        None if of is None else _number(of),
        _curves(curves),
        threads,
        progress,
    )
    shape = tuple(len(values) for _, values in asked)
    places = list(np.ndindex(*shape))
    drawn = [
        [None if curve is None else Curve(*curve) for curve in own] for own in found["curves"]
    ]
    return Sweep(
        {name: np.array(values) for name, values in asked},
        found["number"].reshape(shape),
        found["solved"].reshape(shape),
        {place: text for place, text in zip(places, found["failures"]) if text},
        dict(zip(places, drawn)),
        found["stopped"],
    )


@dataclass(frozen=True, eq=False)
class Variants:
    """A row for each combination of the values of the axes, the last axis fastest.

    variant   -- number of each row among all combinations, from 0
    values    -- shape (rows, axes)
    figures   -- shape (rows, figures), NaN where there is none
    failures  -- why a row can't be solved, or ""
    """

    axis_names: List[str]
    figure_names: List[str]
    variant: npt.NDArray[np.uint64]
    values: Floats
    figures: Floats
    failures: List[str]
    stopped: bool

    def to_frame(self) -> Any:
        """As a pandas DataFrame, indexed by variant."""
        columns: Dict[str, Any] = dict(zip(self.axis_names, self.values.T))
        columns.update(zip(self.figure_names, self.figures.T))
        columns["failure"] = self.failures
        frame = _frame(columns, self.variant)
        frame.index.name = "variant"
        return frame


def variants(
    corner: Corner,
    axes: Mapping[str, Sequence[float]],
    figures: Sequence[str],
    shard: Tuple[int, int] = (1, 1),
    threads: int = 0,
    progress: Progress = None,
) -> Variants:
    """Any number of variants, or the part (i, n) of them, i from 1 to n.

    The parts are the same on every machine and those of `corvanta-tool sweep --shard i/n`.
    """
    part, parts = shard
    if not 1 <= part <= parts:
        raise ValueError(f"a shard is (i, n), i from 1 to n, not {shard}")
    asked = _axes(axes)
    names = [figures] if isinstance(figures, str) else list(figures)
    found = _corvanta.variants(corner._design, asked, names, part, parts, threads, progress)
    return Variants([name for name, _ in asked], names, **found)


# --- Sensitivity ----------------------------------------------------------------------------------


@dataclass(frozen=True, eq=False)
class Sensitivity:
    """By how much a number changes per mm of every coordinate in play.

    value        -- the number of the corner itself
    coordinates  -- "ptUWO.X" and so on
    slopes       -- for each coordinate; NaN where a design beside can't be solved
    reasons      -- why, by coordinate
    """

    value: float
    coordinates: List[str]
    slopes: Floats
    reasons: Dict[str, str]
    stopped: bool

    def to_frame(self) -> Any:
        """As a pandas DataFrame, indexed by coordinate."""
        return _frame({"per mm": self.slopes}, self.coordinates)


def sensitivity(
    corner: Corner, of: Number, threads: int = 0, progress: Progress = None
) -> Sensitivity:
    """Which coordinate moves this number?"""
    return Sensitivity(
        **_corvanta.sensitivity(corner._design, _number(of), threads, progress)
    )


# --- Optimise -------------------------------------------------------------------------------------


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
        return _frame(columns, self.variables)


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
        corner._design, boxes, _targets(targets), starts, seed, threads, progress
    )
    found["best"] = Corner._of(found["best"])
    found["targets"] = [
        (TargetResult(**before), TargetResult(**after)) for before, after in found["targets"]
    ]
    found["starts"] = [Start(**start) for start in found["starts"]]
    return Optimisation(variables=[one.variable for one in free], **found)


# --- Tolerance ------------------------------------------------------------------------------------


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
        _curves(curves),
        list(figures),
        _targets(targets),
        samples,
        seed,
        threads,
        progress,
    )
    found["bands"] = [Band(**band) for band in found["bands"]]
    found["spreads"] = [Spread(**spread) for spread in found["spreads"]]
    found["targets"] = [TargetCount(**count) for count in found["targets"]]
    return Tolerances(**found)


# --- Region ---------------------------------------------------------------------------------------


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
        corner._design, point, list(box), _targets(targets), whole_grid, threads, progress
    )
    shape = tuple(len(along) for along in reversed(found["places"]))
    nodes = {name: array.reshape(shape).T for name, array in found.pop("nodes").items()}
    found["present"] = Verdict(found["present"])
    return Region(**nodes, **found)


# --- Fit ------------------------------------------------------------------------------------------


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
        return _frame({name: getattr(self, name) for name in names}, self.variables)


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


# --- Setup ----------------------------------------------------------------------------------------


@dataclass(frozen=True)
class Adjuster:
    """What a mechanic can turn or put in.

    kind       -- "link length", "shim" or "spring platform"
    link       -- of a link length, as study files name it: "trackrod"
    place      -- of a shim: "ptTRO.Z"
    pitch      -- mm per turn, or per shim
    part       -- the smallest part of a turn that can be made; one count
    low, high  -- the counts that it may take
    """

    name: str
    kind: str
    link: str = ""
    place: str = ""
    pitch: float = 1
    part: float = 1
    low: int = -20
    high: int = 20

    def _argument(self) -> Tuple[Any, ...]:
        return (self.name, self.kind, self.link, self.place, self.pitch, self.part)


@dataclass(frozen=True)
class Wish:
    """A figure shall change by so much from the base, to within a tolerance; 0 holds it."""

    change: float
    tolerance: float


@dataclass(frozen=True, eq=False)
class SetupSheet:
    """What one count of each adjuster does to the corner on its wheels.

    base        -- the figures as it stands
    more, less  -- their changes by one count up and down, shape (adjusters, figures); NaN where
                   there is none
    faults      -- why a count can't be made, by (adjuster, +1 or -1)
    """

    adjusters: List[str]
    figures: List[str]
    base: Floats
    more: Floats
    less: Floats
    faults: Dict[Tuple[str, int], str]
    stopped: bool

    def to_frame(self) -> Any:
        """The changes by one count up as a pandas DataFrame."""
        return _frame(dict(zip(self.figures, self.more.T)), self.adjusters)


@dataclass(frozen=True, eq=False)
class SetupTurns:
    """The whole counts that come nearest to what is wanted.

    counts     -- of each adjuster
    holds      -- every wish is met within its tolerance
    base       -- the figures before
    reached    -- with these counts
    left_over  -- reached less wanted
    corner     -- as it stands then; `fault` tells why it can't
    """

    adjusters: List[str]
    figures: List[str]
    counts: npt.NDArray[np.int32]
    holds: bool
    base: Floats
    reached: Floats
    left_over: Floats
    corner: Corner
    fault: str
    stopped: bool


def adjusters_of(corner: Corner) -> List[Adjuster]:
    """The adjusters that such a corner usually has."""
    return [Adjuster(*one) for one in _corvanta.usual_adjusters(corner._design)]


def setup_sheet(
    corner: Corner,
    adjusters: Optional[Sequence[Adjuster]] = None,
    figures: Optional[Sequence[str]] = None,
    ride_height: float = 0,
    threads: int = 0,
    progress: Progress = None,
) -> SetupSheet:
    """What does a turn or a shim do? Without adjusters or figures those that it usually has.

    `ride_height` is where the corner stands, as wheel travel from the design, mm. A figure is
    written as everywhere, or "Ride Height".
    """
    turned = adjusters_of(corner) if adjusters is None else adjusters
    read = _corvanta.usual_figures(corner._design) if figures is None else list(figures)
    found = _corvanta.setup_sheet(
        corner._design, [one._argument() for one in turned], read, ride_height, threads, progress
    )
    names = [one.name for one in turned]
    faults: Dict[Tuple[str, int], str] = {}
    sides: List[List[Floats]] = [[], []]
    for name, row in zip(names, found["rows"]):
        for side, sign, (changes, fault) in zip(sides, (1, -1), row):
            side.append(changes if changes.size else np.full(len(read), np.nan))
            if fault:
                faults[name, sign] = fault
    more, less = (np.array(side).reshape(-1, len(read)) for side in sides)
    return SetupSheet(names, read, found["base"], more, less, faults, found["stopped"])


def setup_turns(
    corner: Corner,
    wishes: Mapping[str, Wish],
    adjusters: Optional[Sequence[Adjuster]] = None,
    ride_height: float = 0,
    threads: int = 0,
    progress: Progress = None,
) -> SetupTurns:
    """Which turns do what is wanted? `wishes` are by figure; all others go where they will."""
    turned = adjusters_of(corner) if adjusters is None else adjusters
    read = list(wishes)
    found = _corvanta.setup_turns(
        corner._design,
        [one._argument() for one in turned],
        [(one.low, one.high) for one in turned],
        read,
        [(wish.change, wish.tolerance) for wish in wishes.values()],
        ride_height,
        threads,
        progress,
    )
    found["corner"] = Corner._of(found["corner"])
    return SetupTurns([one.name for one in turned], read, **found)
