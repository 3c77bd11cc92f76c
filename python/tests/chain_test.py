"""Chains: what is taken for one, what is refused, files."""

import gzip
import pickle
import xml.etree.ElementTree

import numpy as np
import pytest

import loopwise as lw

square = [[0, 0, 0], [3.8, 0, 0], [3.8, 3.8, 0], [0, 3.8, 0]]


@pytest.mark.parametrize("dtype", [np.float32, np.float64, ">f8", np.int16, np.uint64, np.longdouble, object])
@pytest.mark.parametrize(
    "arrange",
    [
        np.ascontiguousarray,
        np.asfortranarray,
        lambda a: np.repeat(np.repeat(a, 2, axis=0), 3, axis=1)[::2, ::3],
        lambda a: np.ascontiguousarray(a[::-1, ::-1])[::-1, ::-1],
        lambda a: np.frombuffer(b"x" + a.tobytes(), dtype=np.uint8)[1:].view(a.dtype).reshape(a.shape)
        if a.dtype != object
        else a,
    ],
)
def test_arrays_of_any_type_and_order_mean_the_same(dtype, arrange):
    xyz = np.random.default_rng(1).integers(0, 30, size=(50, 3))
    given = arrange(xyz.astype(dtype))
    before = np.array(given)
    assert lw.to_text(given) == lw.to_text(xyz.astype(float))
    assert np.array_equal(lw.reduce(given), lw.reduce(xyz.astype(float)))
    assert np.array_equal(given, before)
    is_native_double = given.dtype == np.float64 and given.dtype.isnative
    assert np.shares_memory(lw.Chain(given).xyz, given) == is_native_double


@pytest.mark.parametrize(
    "xyz, ids, words",
    [
        ([[1, 2]], None, r"\(1, 2\)"),
        ([1, 2, 3], None, r"\(3,\)"),
        (np.zeros((2, 3, 4)), None, r"\(2, 3, 4\)"),
        ([[1j, 0, 0]], None, "complex"),
        ([["a", "b", "c"]], None, "real numbers"),
        (np.array([[None, "b", {}]], dtype=object), None, "real numbers"),
        (np.ma.masked_greater(np.ones((2, 3)), 0), None, "masked"),
        (square, [1, 2, 3], r"4 beads.*\(3,\)"),
        (square, [1, 2, 3, 2**31], "2147483648"),
        (square, [1.5, 2, 3, 4], "whole"),
    ],
)
def test_what_is_no_chain_is_refused_with_its_shape_or_value(xyz, ids, words):
    with pytest.raises(ValueError, match=words):
        lw.Chain(xyz, ids)


def test_chains_are_values(trefoil):
    chain = lw.Chain(square, [7, 8, 9, 9], labels=["7", "8", "9", "9A"], name="A")
    assert pickle.loads(pickle.dumps(chain)) == chain and chain != chain[:3] and chain[[0, 1, 2, 3]] == chain
    assert chain[[1, 3]].labels == ("8", "9A") and chain[chain.ids == 9].ids.tolist() == [9, 9]
    assert lw.close(chain, direction=0).labels == ("7", "8", "9", "9A", "+1", "+2")
    with pytest.raises(ValueError):
        chain.xyz[0, 0] = 1


def test_files_come_back_and_bad_ones_name_themselves(tmp_path, trefoil):
    for name, format in ("chain.txt", "plain"), ("chain.pdb", "pdb"):
        lw.write(trefoil.xyz, tmp_path / name, format)
        back = lw.read(tmp_path / name)
        assert np.allclose(back.xyz, trefoil.xyz, atol=1e-3) and np.array_equal(back.ids, trefoil.ids)
    text = (tmp_path / "chain.pdb").read_text()
    two = tmp_path / "two.pdb.gz"
    atoms = text[: text.index("CONECT")]
    two.write_bytes(gzip.compress((atoms + atoms.replace("UNK A", "UNK B")).encode()))
    assert [c.name for c in lw.read_all(two)] == ["A", "B"] and lw.read(two, "B").name == "B"
    with pytest.raises(ValueError, match="A, B"):
        lw.read(two)
    with pytest.raises(FileNotFoundError, match="no.txt"):
        lw.read(tmp_path / "no.txt")
    with pytest.raises(OSError, match=str(tmp_path)):
        lw.read(tmp_path)
    with pytest.raises(OSError, match="no_folder"):
        lw.write(trefoil, tmp_path / "no_folder" / "x")
    (tmp_path / "bad.txt").write_text("1 0 0 0\n2 x 0 0\n")
    with pytest.raises(ValueError, match="bad.txt.*line 2"):
        lw.read(tmp_path / "bad.txt")
    with pytest.raises(ValueError, match="line 2"):
        lw.from_text("1 0 0 0\n2 3.8")
    with pytest.raises(ValueError, match="same place"):
        lw.from_text("1 0 0 0\n2 0 0 0")


def test_text_of_chains_is_exact_and_pdb_keeps_names_or_is_refused(tmp_path):
    xyz = np.random.default_rng(3).normal(0, 50, (12_000, 3))
    xyz[0, 0] = 6.1e-16
    assert np.array_equal(lw.from_text(lw.to_text(xyz)).xyz, xyz)
    labels = [str(number) for number in range(1, 9_999)] + [f"9999{letter}" for letter in "ABC"]
    long = lw.Chain(xyz[: len(labels)], labels=labels, name="Q")
    lw.write(long, tmp_path / "long.pdb", "pdb", closed=True)
    again = lw.read(tmp_path / "long.pdb")
    assert again.name == "Q" and again.labels == long.labels and np.allclose(again.xyz, long.xyz, atol=6e-4)
    assert f"CONECT{len(long):5}{1:5}" in (tmp_path / "long.pdb").read_text()
    for chain in (xyz, lw.Chain(xyz[:5], name="AB"), xyz[:5] * 1e4, lw.Chain(xyz[:2], labels=["1AB", "2"])):
        with pytest.raises(ValueError, match="does not fit"):
            lw.to_text(chain, "pdb")


def test_chains_of_other_libraries_are_taken_by_their_arrays(tmp_path, trefoil):
    path = str(tmp_path / "chain.pdb")
    water = "HETATM  999  CA   CA A 999       1.000   1.000   1.000  1.00  0.00          CA\n"
    text = lw.to_text(lw.Chain(trefoil.xyz, trefoil.ids), "pdb")
    (tmp_path / "chain.pdb").write_text(text.replace("UNK", "GLY").replace("TER\n", "TER\n" + water))
    chains = []
    gemmi = pytest.importorskip("gemmi")
    chains.append(gemmi.read_structure(path)[0]["A"])
    pdb = pytest.importorskip("Bio.PDB")
    chains.append(pdb.PDBParser(QUIET=True).get_structure("x", path)[0]["A"])
    mda = pytest.importorskip("MDAnalysis")
    universe = mda.Universe(path)
    chains.append(universe.select_atoms("resname GLY and name CA"))
    for chain in chains:
        taken = lw.Chain(chain)
        assert np.array_equal(taken.ids, trefoil.ids) and np.allclose(taken.xyz, trefoil.xyz, atol=1e-3)
        assert lw.survey(chain, closures=20).knot == "-3_1" and len(lw.close([chain, trefoil])) == 2
    twice = universe.atoms + universe.atoms
    with pytest.raises(ValueError, match="select one"):
        lw.Chain(twice)


def crossings(chain, view, closed):
    edges = lw.project(chain, view, closed)[:, :, :2]
    pairs = ((i, j) for i in range(len(edges)) for j in range(i + 2, len(edges) - (closed and i == 0)))
    return sum(lw.segments_cross(*edges[i], *edges[j]) for i, j in pairs)


def test_a_chain_is_drawn_from_where_it_crosses_itself_least(trefoil):
    ring = lw.Chain(np.vstack([trefoil.xyz, trefoil.xyz[:1]]), name="a & b")
    for chain, beads, shown in ((trefoil, trefoil, "an open chain"), (ring, trefoil, "a ring")):
        counts = [crossings(beads, view, chain is ring) for view in range(60)]
        drawn = xml.etree.ElementTree.fromstring(chain._repr_svg_())
        words = [text for text in drawn.itertext() if text.strip()]
        assert f"{min(counts)} crossings" in words and f"{shown}, as it is, view {np.argmin(counts)}" in words
        assert f"{chain.name or 'chain'}: 60 beads" in words and ("last 60" in words) == (chain is trefoil)
        lines = drawn.find("{*}svg").findall("{*}line")
        bonds = 59 + (chain is ring)
        assert bonds <= len(lines) <= bonds + min(counts)  # each pass under another cuts a bond
    for xyz in (trefoil.xyz[:1], np.full((4, 3), np.nan)):
        assert lw.Chain(xyz)._repr_svg_() is None
        with pytest.raises(ValueError, match="cannot be drawn|finite"):
            lw.Chain(xyz).to_svg()
