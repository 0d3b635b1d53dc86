"""What a corner is found to do."""

from __future__ import annotations

import operator
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, Dict, List, Optional, SupportsIndex, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _corvanta

if TYPE_CHECKING:
    from ._corner import CornerError

Floats = npt.NDArray[np.float64]
Channel = Union[str, SupportsIndex]


@dataclass(frozen=True, eq=False)
class Curve:
    """A channel along a travel: both arrays of one number for each step, travels growing, mm."""

    travel: Floats
    values: Floats


class Results:
    """A solved corner: arrays of rack steps x wheel steps, both travels growing (droop to bump).

    They are read-only: what shall be changed is copied.

        results["Camber Angle"]     channel by title or number, shape (rack, wheel)
        results["ptTRI"]            point in play, shape (rack, wheel, 3), mm
        results.unit("Half Track")  "mm"; "-" for a ratio, and for percentages: 0.25 is 25 %

    NaN stands where a channel has no value: the corner has no such part, or the position was not
    reached by a tolerant solve. A whole number that stands for "infinite" or "not defined" is a
    value like any other, as the documentation of the quantities tells.

    rack_travel   -- of the rows, mm from static
    wheel_travel  -- of the columns
    static        -- (row, column) of the static position
    reached       -- True where the position was solved, shape (rack, wheel)
    link_loads    -- shape (rack, wheel, 6, 4): of each link the load per unit force in X, Y and Z
                     and the combined load, N, tension positive; NaN without link loads
    points        -- names of the points, short to long
    failure       -- of a tolerant solve: why the first position could not be solved, else None
    """

    def __init__(
        self, found: Dict[str, Any], points: Dict[str, str], failure: Optional[CornerError]
    ) -> None:
        self.rack_travel: Floats = found["rack_travel"]
        self.wheel_travel: Floats = found["wheel_travel"]
        self.static: Tuple[int, int] = found["static"]
        self.reached: npt.NDArray[np.bool_] = found["reached"]
        self.link_loads: Floats = found["link_loads"]
        self.points = points
        self.failure = failure
        self.channels: List[str] = [title.strip() for title in found["titles"]]
        self._units: List[str] = found["units"]
        self._channels: Floats = found["channels"]
        self._points: Floats = found["points"]
        self._protect()

    def _protect(self) -> None:
        for value in vars(self).values():
            if isinstance(value, np.ndarray):
                value.flags.writeable = False

    def __setstate__(self, state: Dict[str, Any]) -> None:
        vars(self).update(state)
        self._protect()  # which a pickle does not keep

    def _channel(self, channel: Channel) -> int:
        if isinstance(channel, str):
            wanted = channel.strip().casefold()
            for n, title in enumerate(self.channels):
                if wanted == title.casefold():
                    return n
        else:
            number = operator.index(channel)
            if 1 <= number <= len(self.channels):
                return number - 1
        raise KeyError(f"there is no channel or point in play {channel!r}")

    def __getitem__(self, name: Channel) -> Floats:
        if isinstance(name, str) and name in self.points:
            found: Floats = self._points[_corvanta.point_names().index(name)]
        else:
            found = self._channels[self._channel(name)]
        return found

    def unit(self, channel: Channel) -> str:
        """The unit of a channel's numbers: "mm", "deg", "N/mm", "N.mm/deg", or "-" for ratios."""
        return self._units[self._channel(channel)]

    def curve(self, channel: Channel, along: str = "wheel") -> Curve:
        """A channel along "wheel" or "rack" travel, the other travel static."""
        rack, wheel = self.static
        if is_rack(along):
            return Curve(self.rack_travel, self[channel][:, wheel])
        return Curve(self.wheel_travel, self[channel][rack])

    def to_frame(self) -> Any:
        """All channels as a pandas DataFrame: a row for each position, indexed by both travels."""
        import pandas

        index = pandas.MultiIndex.from_product(
            [self.rack_travel, self.wheel_travel], names=["Rack travel [mm]", "Wheel travel [mm]"]
        )
        heads = [f"{title} [{unit}]" for title, unit in zip(self.channels, self._units)]
        rows = self._channels.reshape(len(self.channels), -1).T
        return pandas.DataFrame(rows, index=index, columns=heads, copy=True)

    def __repr__(self) -> str:
        rack, wheel = self.reached.shape
        return f"<Results of {rack} rack x {wheel} wheel steps>"


def is_rack(along: str) -> bool:
    """What a curve runs along."""
    if along not in ("wheel", "rack"):
        raise ValueError(f'a curve runs along "wheel" or "rack" travel, not {along!r}')
    return along == "rack"
