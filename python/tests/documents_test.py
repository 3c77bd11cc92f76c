"""The examples of the documents run, and the table names every exported function."""

import os
import pathlib
import re
import subprocess
import sys

import pytest

import loopwise as lw

root = pathlib.Path(__file__).parents[2]


@pytest.mark.parametrize("document", ["README.md", "docs/python.md"])
def test_what_documents_show_runs(document, tmp_path, monkeypatch, capsys):
    chain = lw.read(root / "examples/data/trefoil.txt")
    lw.write(chain, tmp_path / "protein.pdb", "pdb")
    monkeypatch.chdir(tmp_path)
    programs = re.findall(r"^```python\n(.*?)^```", (root / document).read_text(), re.M | re.S)
    assert programs
    space = {}
    for program in programs:
        exec(program, space)
    assert "-3_1" in capsys.readouterr().out


def test_the_table_maps_every_exported_function():
    exported = re.findall(r"^LOOPWISE_API .*?(\w+)\(", (root / "include/libloopwise.h").read_text(), re.M)
    rows = dict(re.findall(r"^\| `(\w+)` \| (.*) \|$", (root / "docs/python.md").read_text(), re.M))
    assert len(exported) == 38 and set(rows) == set(exported)
    for where in rows.values():
        assert all(hasattr(lw, name) for name in re.findall(r"`(\w+)\(", where))


def test_the_tour_draws_its_pictures(tmp_path):
    pytest.importorskip("matplotlib")
    tour = [sys.executable, root / "examples/python/tour.py", tmp_path]
    subprocess.run(tour, check=True, stdout=subprocess.DEVNULL)
    pictures = {picture.name for picture in tmp_path.glob("*.png")}
    assert pictures == {"fingerprint.png", "survey.png", "trajectory.png"}


def test_a_cluster_that_loses_a_worker_loses_no_file(tmp_path, monkeypatch):
    distributed = pytest.importorskip("distributed")
    monkeypatch.syspath_prepend(str(root / "examples/python"))
    monkeypatch.setenv("PYTHONPATH", f"{root / 'examples/python'}:{os.environ.get('PYTHONPATH', '')}")
    import dask_survey

    for i in range(30):
        lw.write(lw.sample("trefoil", 300 + i), tmp_path / f"{i:02}.txt")
    (tmp_path / "99.txt").write_text("nothing of the kind")
    with distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        with distributed.Client(cluster) as client:
            pids = client.run(os.getpid)
            killed = []

            def kill_one(*_):
                if not killed:
                    killed.append(next(iter(pids.values())))
                    os.kill(killed[0], 9)

            as_completed = dask_survey.as_completed

            def after_three(futures):
                for done, future in enumerate(as_completed(futures)):
                    if done == 3:
                        kill_one()
                    yield future

            monkeypatch.setattr(dask_survey, "as_completed", after_three)
            results = dask_survey.survey_folder(client, tmp_path)
            assert killed and killed[0] not in client.run(os.getpid).values()
    files = [pathlib.Path(one["file"]).name for one in results]
    assert files == [f"{i:02}.txt" for i in range(30)] + ["99.txt"]
    assert all(one["chains"][0]["knots"] for one in results[:-1]) and "no bead" in results[-1]["error"]
