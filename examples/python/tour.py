"""A walk through the package, cell by cell as in a notebook: usage: tour.py FOLDER, where the pictures go."""

# %%
import pathlib
import sys

import numpy as np

import loopwise as lw

folder = pathlib.Path(sys.argv[1])
folder.mkdir(parents=True, exist_ok=True)

# %% A chain from a file; lw.read takes PDB, mmCIF and text, gzipped or not.
data = pathlib.Path(__file__).parents[1] / "data"
chain = lw.read(data / "trefoil.txt")
print(chain, lw.check(chain), f"radius {lw.radius(chain):.1f}", sep="\n")

# %% Is it knotted? Closed in 400 directions, every loop reduced and named.
result = lw.survey(chain)
print(result)
print(result.smallest)
result.plot().savefig(folder / "survey.png")

# %% Where is the knot? The knot of every stretch of the chain.
where = lw.fingerprint(chain)
print(where)
where.plot().savefig(folder / "fingerprint.png")

# %% One closure by hand. Positions are kept, so that other records follow.
loop = lw.close(chain, direction=7)
kept = lw.reduce(loop)
print([loop.labels[i] for i in kept], lw.knot(loop[kept]))

# %% Two chains together: reduced as obstacles to each other, and how they are linked.
angle = np.linspace(0, 2 * np.pi, 30, endpoint=False)
ring = 10 * np.stack([np.cos(angle), np.sin(angle), 0.01 * np.cos(3 * angle)], axis=1)
other = 10 * np.stack([1 + np.cos(angle), 0.01 * np.cos(2 * angle), np.sin(angle)], axis=1)
print(lw.knot([ring, other]), lw.linking_numbers([ring, other]))

# %% A trajectory: a trefoil that is pulled straight from one end, followed frame by frame.
start = lw.sample("trefoil").xyz
line = start[:1] + 3.8 * np.arange(len(start))[:, None] * [1.0, 0.2, 0.1]
frames = np.stack([np.vstack([line[:k] - line[k] + start[k], start[k:]]) for k in range(0, 60, 2)])
followed = lw.survey(frames, closures=50)
print(followed)
followed.plot().savefig(folder / "trajectory.png")
