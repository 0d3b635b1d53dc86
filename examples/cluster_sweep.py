"""A sweep of a corner over a Dask cluster: 100,000 variants as CSV by shard and as one Zarr store.

    python3 examples/cluster_sweep.py samples/formula-front-pushrod.WSP results
    python3 examples/cluster_sweep.py CORNER.WSP FOLDER --scheduler tcp://HOST:8786

Without a scheduler two workers of this machine do the work. Workers need the package corvanta and
the folder, which all of them write to: results/shard-0001.csv and so on, and results/variants.zarr.

Nothing is lost and nothing is there twice when a worker dies: a shard is a number, its rows are the
same whoever solves it, its file gets its name when it is whole, and its part of the store is a
chunk of its own. The scheduler gives the shards of a lost worker to the others. The same command
given again solves what is missing.
"""

import argparse
import os
import pathlib
import time

import corvanta
import numpy as np
import zarr
from distributed import Client, as_completed

AXES = {
    "ptTRI.Z": np.linspace(190, 205, 50),
    "ptUWIF.Z": np.linspace(346, 366, 50),
    "ptLWIF.Z": np.linspace(142, 162, 40),
}
FIGURES = ["Camber Angle:gain", "Steer Angle:range", "Roll Centre to Ground"]


def solve_shard(corner, axes, figures, part, parts, folder):
    """What a worker does: solves a shard and writes it. Gives the number of its rows."""
    rows = corvanta.variants(corner, axes, figures, (part, parts), threads=1)
    first, last = int(rows.variant[0]), int(rows.variant[-1]) + 1
    store = zarr.open(str(folder / "variants.zarr"), mode="r+")
    store["values"][first:last] = rows.values
    store["figures"][first:last] = rows.figures
    unfinished = folder / f".shard-{part:04d}-{os.getpid()}"
    rows.to_frame().to_csv(unfinished)
    unfinished.replace(shard_file(folder, part))
    return len(rows.variant)


def shard_file(folder, part):
    """The rows of a shard; not there before they all are."""
    return folder / f"shard-{part:04d}.csv"


def prepare(corner, axes, figures, parts, folder):
    """Makes the folder and its store, or sees that they are of the same sweep."""
    count = int(np.prod([len(values) for values in axes.values()]))
    if count % parts:
        raise ValueError(f"{count} variants can't be shared out evenly among {parts} shards")
    asked = {
        "corner": {**corner.values, **{name: corner[name].tolist() for name in corner.points}},
        "axes": {name: list(values) for name, values in axes.items()},
        "figures": list(figures),
        "shards": parts,
    }
    store = zarr.open_group(str(folder / "variants.zarr"), mode="a")
    if "sweep" in store.attrs:
        if store.attrs["sweep"] != asked:
            raise ValueError(f"{folder} holds another sweep")
        return
    size = count // parts
    for name, columns in (("values", len(axes)), ("figures", len(figures))):
        table = {"shape": (count, columns), "chunks": (size, columns), "dtype": float}
        store.create_dataset(name, **table, fill_value=np.nan, overwrite=True)
    store.attrs["sweep"] = asked  # last: the store is ready


def run(client, corner, axes, figures, parts, folder):
    """Solves all shards that are not there yet; yields the rows of each when it is."""
    folder = pathlib.Path(folder).resolve()
    folder.mkdir(parents=True, exist_ok=True)
    prepare(corner, axes, figures, parts, folder)
    missing = [part for part in range(1, parts + 1) if not shard_file(folder, part).exists()]
    shards = [
        client.submit(solve_shard, corner, axes, figures, part, parts, folder, pure=False)
        for part in missing
    ]
    for shard in as_completed(shards):
        yield shard.result()


def main():
    """The command line."""
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("corner")
    parser.add_argument("folder")
    parser.add_argument("--scheduler", help="address of a cluster; else workers of this machine")
    parser.add_argument("--workers", type=int, default=2, help="of this machine")
    parser.add_argument("--shards", type=int, default=200)
    parser.add_argument("--every", type=int, default=1, help="of each axis take every n-th value")
    options = parser.parse_args()
    axes = {name: values[:: options.every] for name, values in AXES.items()}
    own = {"n_workers": options.workers, "threads_per_worker": 1, "dashboard_address": ":0"}
    with Client(options.scheduler) if options.scheduler else Client(**own) as client:
        corner = corvanta.Corner.load(options.corner)
        began, rows = time.perf_counter(), 0
        for solved in run(client, corner, axes, FIGURES, options.shards, options.folder):
            rows += solved
        seconds = time.perf_counter() - began
    print(f"{rows} variants solved in {seconds:.1f} s, {rows / seconds:.0f} a second")


if __name__ == "__main__":
    main()
