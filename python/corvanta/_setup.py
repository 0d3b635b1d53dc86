"""Studies of the mechanic's work: what adjusters do, and which turns are needed."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Dict, List, Mapping, Optional, Sequence, Tuple

import numpy as np
import numpy.typing as npt

from . import _corvanta
from ._corner import Corner
from ._questions import Progress, frame_of
from ._results import Floats


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
        return frame_of(dict(zip(self.figures, self.more.T)), self.adjusters)


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
