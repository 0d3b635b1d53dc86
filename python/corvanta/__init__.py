"""Corvanta from Python: one corner of a vehicle suspension, calculated and studied.

    >>> import corvanta
    >>> corner = corvanta.Corner.load("samples/formula-front-pushrod.WSP")
    >>> corner["ptTRI.Z"] += 1.5
    >>> results = corner.solve()
    >>> results["Camber Angle"].shape       # rack steps x wheel steps
    (9, 21)

All numbers are in stored units, whatever a program shows: mm, N, kg, degrees, g, N/mm and, for the
rate of the anti-roll bar, N.mm/deg; percentages of results are fractions, 0.25 for 25 %. X is
positive to the back of the car, Y to the left, Z upwards; bump is positive. They are the very
doubles of the calculation: nothing is rounded.

A mistake in what is asked raises ValueError (KeyError for an unknown name), a corner that can't be
solved `CornerError`, which is a ValueError too, and a file that can't be read or written OSError.
"""

from ._corvanta import __version__
from ._corner import Corner, CornerError, Finding
from ._questions import Target, TargetResult
from ._results import Curve, Results
from ._searches import Free, Optimisation, Region, Start, Verdict, optimise, region
from ._setup import (
    Adjuster,
    SetupSheet,
    SetupTurns,
    Wish,
    adjusters_of,
    setup_sheet,
    setup_turns,
)
from ._spreads import (
    Band,
    Fit,
    FittedReadings,
    Reading,
    Spread,
    TargetCount,
    Tolerance,
    Tolerances,
    fit,
    tolerance,
    tolerances_of,
)
from ._sweeps import Sensitivity, Sweep, Variants, sensitivity, sweep, variants

__all__ = [
    "__version__",
    "Adjuster",
    "Band",
    "Corner",
    "CornerError",
    "Curve",
    "Finding",
    "Fit",
    "FittedReadings",
    "Free",
    "Optimisation",
    "Reading",
    "Region",
    "Results",
    "Sensitivity",
    "SetupSheet",
    "SetupTurns",
    "Spread",
    "Start",
    "Sweep",
    "Target",
    "TargetCount",
    "TargetResult",
    "Tolerance",
    "Tolerances",
    "Variants",
    "Verdict",
    "Wish",
    "adjusters_of",
    "fit",
    "optimise",
    "region",
    "sensitivity",
    "setup_sheet",
    "setup_turns",
    "sweep",
    "tolerance",
    "tolerances_of",
    "variants",
]
