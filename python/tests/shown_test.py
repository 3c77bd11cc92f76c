"""What results show, whole, against what was reviewed. LOOPWISE_UPDATE=yes takes what is seen as reviewed."""

import json
import os
import pathlib
import re

import numpy as np
import pytest

import loopwise as lw

reviewed = pathlib.Path(__file__).parent / "data" / "shown.txt"


def shown(name, value):
    yield f"# {name}: {value!r}"
    if hasattr(value, "to_dict"):
        yield json.dumps(value.to_dict(), indent=1)
    if hasattr(value, "to_dataframe"):
        yield value.to_dataframe().to_csv(index=False)
    if hasattr(value, "_repr_html_"):
        yield re.sub("base64,[^\"]*", "...", value._repr_html_())


def plotted(figure):
    """What a figure says in words and numbers."""
    for axes in figure.axes:
        yield f"{axes.get_title()} | {axes.get_xlabel()} | {axes.get_ylabel()}"
        words = [text.get_text() for text in axes.texts]
        legend = axes.get_legend()
        words += [text.get_text() for text in legend.get_texts()] if legend else []
        numbers = [*axes.get_xlim(), *axes.get_ylim(), len(axes.lines), len(axes.collections)]
        for collection in axes.collections:
            segments = getattr(collection, "get_segments", list)()
            numbers += [len(segments), float(np.sum(np.abs(segments))), *np.unique(collection.get_linewidths())]
        for line in axes.lines:
            numbers += np.concatenate(line.get_data()).tolist()
        yield " ".join(words) + " | " + " ".join(f"{number:.4g}" for number in numbers)


def everything(trefoil):
    other = lw.sample("unknot")
    gapped = lw.Chain(np.delete(trefoil.xyz, slice(20, 25), axis=0))
    survey, structure = lw.survey(trefoil, closures=20), lw.survey([trefoil.xyz, other], closures=6, seed=2)
    frames = lw.survey(np.stack([trefoil.xyz, other.xyz]), closures=10)
    found = lw.fingerprint(trefoil, closures=4, step=10)
    for name, value in {
        "chain": trefoil, "gapped": gapped, "knot": lw.knot(lw.close(trefoil)), "survey": survey,
        "core": survey.smallest, "typical": survey.typical, "structure": structure,
        "component": structure.components[1], "frames": frames, "fingerprint": found, "place": found.places[0],
        "nothing": lw.survey(trefoil, closures=3, names=False),
    }.items():
        yield from shown(name, value)
    for name, value in {"survey": survey, "frames": frames, "fingerprint": found}.items():
        yield f"# plot of {name}"
        yield from plotted(value.plot())


def test_results_show_what_was_reviewed(trefoil):
    pytest.importorskip("pandas")
    pytest.importorskip("matplotlib")
    seen = "\n".join(everything(trefoil)) + "\n"
    if os.environ.get("LOOPWISE_UPDATE"):
        reviewed.parent.mkdir(exist_ok=True)
        reviewed.write_text(seen, encoding="utf-8")
    assert seen == reviewed.read_text(encoding="utf-8")
