"""The corner: what a document holds."""

from __future__ import annotations

import os
import warnings
from dataclasses import dataclass
from typing import Any, Dict, List, Optional, Tuple, Union

import numpy as np
import numpy.typing as npt

from . import _corvanta
from ._results import Results

Value = Union[float, int, bool, str]


class CornerError(ValueError):
    """A corner that can't be solved, in words for the user.

    reason        -- the words alone
    wheel_travel  -- of the position that can't be solved, mm; None when it is about none
    rack_travel   -- the same
    points        -- names of the entered points that it is about, as "ptUWO"
    """

    def __init__(
        self,
        text: str,
        reason: str,
        wheel_travel: Optional[float],
        rack_travel: Optional[float],
        points: Tuple[str, ...],
    ) -> None:
        super().__init__(text, reason, wheel_travel, rack_travel, points)
        self.reason = reason
        self.wheel_travel = wheel_travel
        self.rack_travel = rack_travel
        self.points = points

    def __str__(self) -> str:
        return str(self.args[0])


@dataclass(frozen=True)
class Finding:
    """What is wrong with a corner (`is_error`: it has no results), or can hardly be meant."""

    is_error: bool
    text: str
    points: Tuple[str, ...]


class Corner:
    """One corner of a suspension: mechanisms, values and points, as a document holds them.

    Names are those of documents. A point is an array of X, Y and Z in mm, which can be written to;
    a coordinate a number; mechanisms are the numbers of documents:

        corner["ptTRI"], corner["ptTRI.Z"], corner["KSpring"], corner["SpringMechanism"]
        corner.ptTRI,    corner.ptTRI[2],   corner.KSpring,    corner.SpringMechanism

    Corners compare, copy and pickle; equal ones have the same values and points in play to the bit.
    """

    __slots__ = ("_design",)
    _design: _corvanta.Design

    def __init__(self, other: Corner) -> None:
        """A copy of another one. `Corner.load` reads a document."""
        object.__setattr__(self, "_design", _corvanta.Design(other._design))

    @classmethod
    def _of(cls, design: _corvanta.Design) -> Corner:
        corner = cls.__new__(cls)
        object.__setattr__(corner, "_design", design)
        return corner

    @classmethod
    def load(cls, path: Union[str, os.PathLike[str]]) -> Corner:
        """Reads a document of any version; what there is to say of it is warned of."""
        design, words = _corvanta.load(os.fspath(path))
        if words:
            warnings.warn(words.replace("\r", " "), stacklevel=2)
        return cls._of(design)

    def save(self, path: Union[str, os.PathLike[str]]) -> None:
        """Writes a document of the current version, whole or not at all.

        Raises ValueError for a description that would not come back as it is: one with a "[", with
        tabs or line ends around it, or with characters that are not in code page 1252.
        """
        self._design.save(os.fspath(path))

    def copy(self) -> Corner:
        """A corner of its own with the same contents."""
        return Corner(self)

    @property
    def points(self) -> Dict[str, str]:
        """Short names of the points in play with their long ones, in the order of documents."""
        return self._design.points_in_play()

    @property
    def values(self) -> Dict[str, Value]:
        """All values beside the points, by name."""
        return {name: self._design.get(name) for name in _corvanta.field_names()}

    def words(self, name: str) -> Optional[str]:
        """What the number of a mechanism means; None for another value."""
        return self._design.words(name)

    def check(self) -> List[Finding]:
        """All that is wrong or doubtful; errors come first."""
        return [Finding(*finding) for finding in self._design.check()]

    def solve(self, tolerant: bool = False) -> Results:
        """Solves the whole grid of rack and wheel travel.

        Raises CornerError where a position can't be solved. A tolerant solve goes on with the
        others (`Results.reached`, `Results.failure`), and raises when not even the static one can
        be solved. Other threads run meanwhile.
        """
        found, failed = _corvanta.solve(self._design, tolerant)
        failure = None if failed is None else CornerError(*failed)
        if found is None:
            assert failure is not None
            raise failure
        return Results(found, self.points, failure)

    def __getitem__(self, name: str) -> Any:
        if name.startswith("pt") and "." not in name:
            return _corvanta.point_view(self._design, name)
        return self._design.get(name)

    def __setitem__(self, name: str, value: Any) -> None:
        if name.startswith("pt") and "." not in name:
            place: npt.NDArray[np.float64] = np.asarray(value, dtype=np.float64)
            if place.shape != (3,) or not np.isfinite(place).all():
                raise ValueError(f"{name} must be three finite numbers")
            self[name][:] = place
        else:
            self._design.set(name, value)

    def __getattr__(self, name: str) -> Any:
        try:
            return self[name]
        except KeyError as error:
            raise AttributeError(error.args[0]) from None

    def __setattr__(self, name: str, value: Any) -> None:
        try:
            self[name] = value
        except KeyError as error:
            raise AttributeError(error.args[0]) from None

    def __dir__(self) -> List[str]:
        return [*super().__dir__(), *_corvanta.field_names(), *self.points]

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Corner) and self._design == other._design

    __hash__ = None  # type: ignore[assignment]

    def __reduce__(self) -> Tuple[Any, ...]:
        return (Corner._of, (self._design,))

    def __copy__(self) -> Corner:
        return self.copy()

    def __deepcopy__(self, memo: object) -> Corner:
        return self.copy()

    def __repr__(self) -> str:
        return f"<Corner {self['Description']!r}, {self.words('SpringMechanism')}>"
