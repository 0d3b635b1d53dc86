"""The compiled half: questions as plain values in, answers as dictionaries of arrays out."""

from typing import Any, Callable, Dict, List, Optional, Sequence, Tuple

import numpy as np
import numpy.typing as npt

_Progress = Optional[Callable[[float], Optional[bool]]]
_Axes = Sequence[Tuple[str, Sequence[float]]]
_Curves = Sequence[Tuple[str, bool]]
_Tolerance = Tuple[str, float, bool]
_Adjuster = Tuple[Any, ...]

__version__: str

class Design:
    def __init__(self, other: Design) -> None: ...
    def save(self, path: str) -> None: ...
    def get(self, name: str) -> Any: ...
    def set(self, name: str, value: Any) -> None: ...
    def words(self, name: str) -> Optional[str]: ...
    def points_in_play(self) -> Dict[str, str]: ...
    def check(self) -> List[Tuple[bool, str, Tuple[str, ...]]]: ...

def load(path: str) -> Tuple[Design, str]: ...
def field_names() -> List[str]: ...
def point_names() -> List[str]: ...
def point_view(design: Design, name: str) -> npt.NDArray[np.float64]: ...
def solve(
    design: Design, tolerant: bool
) -> Tuple[
    Optional[Dict[str, Any]],
    Optional[Tuple[str, str, Optional[float], Optional[float], Tuple[str, ...]]],
]: ...
def sweep(
    design: Design,
    axes: _Axes,
    number: Any,
    curves: _Curves,
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
def variants(
    design: Design,
    axes: _Axes,
    figures: Sequence[str],
    part: int,
    parts: int,
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
def sensitivity(
    design: Design, number: Any, threads: int, progress: _Progress
) -> Dict[str, Any]: ...
def optimise(
    design: Design,
    free: Sequence[Tuple[str, float, float]],
    targets: Sequence[Any],
    starts: int,
    seed: int,
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
def region(
    design: Design,
    point: str,
    box: Sequence[Tuple[float, float, int]],
    targets: Sequence[Any],
    whole_grid: bool,
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
def usual_tolerances(design: Design) -> List[_Tolerance]: ...
def tolerance(
    design: Design,
    tolerances: Sequence[_Tolerance],
    curves: _Curves,
    figures: Sequence[str],
    targets: Sequence[Any],
    samples: int,
    seed: int,
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
def fit(
    design: Design,
    free: Sequence[_Tolerance],
    readings: Sequence[Tuple[float, float, str, float, float]],
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
def usual_adjusters(design: Design) -> List[_Adjuster]: ...
def usual_figures(design: Design) -> List[str]: ...
def setup_sheet(
    design: Design,
    adjusters: Sequence[_Adjuster],
    figures: Sequence[str],
    ride_height: float,
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
def setup_turns(
    design: Design,
    adjusters: Sequence[_Adjuster],
    ranges: Sequence[Tuple[int, int]],
    figures: Sequence[str],
    wishes: Sequence[Tuple[float, float]],
    ride_height: float,
    threads: int,
    progress: _Progress,
) -> Dict[str, Any]: ...
