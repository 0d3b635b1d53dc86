"""What the studies share, which ask about designs beside the corner in hand.

Their words:

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

from dataclasses import dataclass
from typing import Any, Callable, List, Mapping, Optional, Sequence, Tuple, Union

import numpy as np
import numpy.typing as npt

from ._results import is_rack

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


def number_argument(number: Number) -> Any:
    if isinstance(number, Target):
        return number._argument()
    if not isinstance(number, str):
        raise TypeError(f"a number is a figure such as 'Camber Angle:gain' or a Target, not {number!r}")
    return number


def target_arguments(targets: Sequence[Target]) -> List[Any]:
    return [target._argument() for target in targets]


def curve_arguments(curves: Sequence[Tuple[str, str]]) -> List[Tuple[str, bool]]:
    return [(channel, is_rack(along)) for channel, along in curves]


def axis_arguments(axes: Mapping[str, Sequence[float]]) -> List[Tuple[str, List[float]]]:
    return [(name, [float(value) for value in values]) for name, values in axes.items()]


def frame_of(columns: Mapping[str, Any], index: Any = None) -> Any:
    import pandas

    return pandas.DataFrame(dict(columns), index=index)
