"""Studies of what follows from a change: sweeps, variants, sensitivity."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any, Dict, List, Mapping, Optional, Sequence, Tuple

import numpy as np
import numpy.typing as npt

from . import _corvanta
from ._corner import Corner
from ._questions import Flags, Number, Progress, axis_arguments, curve_arguments, frame_of, number_argument
from ._results import Curve, Floats


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
    asked = axis_arguments(axes)
    found = _corvanta.sweep(
        corner._design,
        asked,
        None if of is None else number_argument(of),
        curve_arguments(curves),
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
        frame = frame_of(columns, self.variant)
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
    asked = axis_arguments(axes)
    names = [figures] if isinstance(figures, str) else list(figures)
    found = _corvanta.variants(corner._design, asked, names, part, parts, threads, progress)
    return Variants([name for name, _ in asked], names, **found)


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
        return frame_of({"per mm": self.slopes}, self.coordinates)


def sensitivity(
    corner: Corner, of: Number, threads: int = 0, progress: Progress = None
) -> Sensitivity:
    """Which coordinate moves this number?"""
    return Sensitivity(
        **_corvanta.sensitivity(corner._design, number_argument(of), threads, progress)
    )
