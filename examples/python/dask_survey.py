"""Surveys every file of a folder on a cluster; what a lost worker had in hand is done by another.

usage: dask_survey.py FOLDER OUTPUT.json [SCHEDULER-ADDRESS]

Without an address it starts two workers here. Files that cannot be read are named in the output with the
reason.
"""

import json
import pathlib
import sys
from typing import Any

from dask.distributed import Client, LocalCluster, as_completed

import loopwise as lw


def survey_file(path: str) -> list[dict[str, Any]]:
    """The surveys of all chains of a file. One thread: the cluster has one task for each processor."""
    try:
        chains = lw.read_all(path)
    except (OSError, ValueError) as reason:
        return [{"file": path, "error": str(reason)}]
    return [{"file": path, **lw.survey(chain, threads=1).to_dict()} for chain in chains]


def survey_folder(client: Client, folder: pathlib.Path) -> list[dict[str, Any]]:
    """In the order of the files' names."""
    paths = sorted(str(path.resolve()) for path in folder.iterdir() if path.is_file())
    # A file that takes workers down again and again is given up after so many of them.
    futures = client.map(survey_file, paths, pure=False, retries=3)
    found: dict[str, list[dict[str, Any]]] = {}
    for future in as_completed(futures):
        path = paths[futures.index(future)]
        try:
            found[path] = future.result()
        except Exception as reason:  # of whatever kind: it belongs to this file alone
            found[path] = [{"file": path, "error": repr(reason)}]
        print(f"\r{len(found)} of {len(paths)} files", end="", file=sys.stderr, flush=True)
    print(file=sys.stderr)
    return [one for path in paths for one in found[path]]


def main() -> None:
    folder, output = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    if len(sys.argv) > 3:
        with Client(sys.argv[3]) as client:
            results = survey_folder(client, folder)
    else:
        with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
            with Client(cluster) as client:
                results = survey_folder(client, folder)
    output.write_text(json.dumps(results, indent=1))


if __name__ == "__main__":
    main()
