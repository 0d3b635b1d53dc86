"""Camber against wheel travel, and what the upper front pickup does to it.

Run it as a program, or cell by cell in an editor that knows "# %%":

    python3 examples/camber_curve.py [CORNER.WSP] [PICTURE.png]
"""

# %% Read a corner and solve it
import sys

import corvanta
import matplotlib.pyplot as plt

document = sys.argv[1] if len(sys.argv) > 1 else "samples/formula-front-pushrod.WSP"
picture = sys.argv[2] if len(sys.argv) > 2 else "camber.png"
corner = corvanta.Corner.load(document)
designed = corner.solve().curve("Camber Angle")

# %% The same corner with its upper front pickup higher and lower
heights = [corner["ptUWIF.Z"] + shift for shift in (-10, -5, 5, 10)]
swept = corvanta.sweep(
    corner, {"ptUWIF.Z": heights}, of="Camber Angle:gain", curves=[("Camber Angle", "wheel")]
)

# %% Draw all of them
figure, axes = plt.subplots(figsize=(8, 5), layout="constrained")
for (n,), (curve,) in swept.curves.items():
    if curve is not None:
        gain = f"{1000 * swept.number[n]:.1f} deg/m"
        axes.plot(curve.travel, curve.values, lw=1, label=f"ptUWIF.Z {heights[n]:.0f} mm, {gain}")
axes.plot(designed.travel, designed.values, "k", lw=2, label="as designed")
axes.set(xlabel="Wheel travel [mm], bump positive", ylabel="Camber angle [deg]")
axes.set_title(corner.Description.split(",")[0])
axes.grid(alpha=0.3)
axes.legend()
figure.savefig(picture, dpi=120)
print(f"{picture}: camber from {designed.values.min():.2f} to {designed.values.max():.2f} deg")
