"""Operations: what comes back, what is refused, and nothing that crashes."""

import numpy as np
import pytest
from hypothesis import given
from hypothesis import strategies as st
from hypothesis.extra import numpy as arrays

import loopwise as lw

everything = [getattr(lw, name) for name in lw.__all__ if callable(getattr(lw, name)) and name != "write"]
numbers = st.one_of(
    st.integers(-(2**70), 2**70), st.floats(), st.none(), st.booleans(), st.text(max_size=5),
    st.complex_numbers(),
)
odd_arrays = arrays.arrays(
    st.one_of(
        arrays.floating_dtypes(),
        arrays.integer_dtypes(),
        arrays.complex_number_dtypes(),
        arrays.byte_string_dtypes(),
    ),
    st.one_of(
        arrays.array_shapes(max_dims=3, max_side=8, min_side=0), st.tuples(st.integers(0, 12), st.just(3))
    ),
)
near = arrays.arrays(float, st.tuples(st.integers(0, 12), st.just(3)), elements=st.integers(-2, 2).map(float))
structures = st.lists(st.one_of(near, odd_arrays), max_size=4)
anything = st.one_of(near, odd_arrays, structures, numbers, st.lists(numbers, max_size=4))
keywords = st.dictionaries(
    st.sampled_from(
        "method direction seed closure scale closed closures threads names ids first last format".split()
    ),
    st.one_of(
        numbers, st.integers(0, 20), st.sampled_from("point two_points outside directions pdb".split())
    ),
    max_size=3,
)


@given(st.sampled_from(everything), st.lists(anything, max_size=4), keywords)
def test_nothing_that_is_passed_does_worse_than_raise(function, arguments, options):
    if function is lw.survey:
        options = {"closures": 3, **options}
    if isinstance(options.get("closures"), int) and options["closures"] > 50:
        options["closures"] = 50
    try:
        function(*arguments, **options)
    except (ValueError, TypeError, OverflowError, OSError, IndexError):
        pass


@given(near, st.booleans())
def test_what_is_kept_is_part_of_the_chain_in_order(xyz, closed):
    kept = lw.reduce(xyz, closed)
    assert np.array_equal(kept, np.unique(kept)) and set(kept) <= set(range(len(xyz)))
    (together,) = lw.reduce([xyz], closed)
    assert np.array_equal(together, kept)


def test_a_repeated_end_follows_the_first_bead(trefoil):
    xyz = np.vstack([trefoil.xyz, trefoil.xyz[:1] + 1e-6])
    ids = np.append(trefoil.ids, 1)
    kept = lw.reduce(lw.Chain(xyz, ids), closed=False)
    assert kept[0] == kept[-1] and np.array_equal(kept[:-1], lw.reduce(trefoil))
    far = lw.Chain(np.vstack([trefoil.xyz, [[99, 0, 0]]]), ids)
    assert lw.reduce(far, closed=False)[-1] == 60


@pytest.mark.parametrize("bad", [np.nan, np.inf])
@pytest.mark.parametrize(
    "function",
    [lw.reduce, lw.close, lw.survey, lw.knot, lw.check, lw.centre, lw.radius, lw.diameter, lw.project],
)
def test_coordinates_that_are_not_finite_are_refused_where_they_mean_nothing(function, bad):
    xyz = np.zeros((5, 3))
    xyz[3, 1] = bad
    with pytest.raises(ValueError, match=f"{bad}.* at position 3"):
        function(xyz)
    assert len(lw.cut(xyz, 2, 5)) == 4


@pytest.mark.parametrize(
    "call, words",
    [
        (lambda c: lw.close(c, "sideways"), "'sideways'.*two_points"),
        (lambda c: lw.close(c, direction=400), "399.*400"),
        (lambda c: lw.close(c, "outside", direction=1), "outside"),
        (lambda c: lw.close(c, "point", scale=0.5), "scale.*0.5"),
        (lambda c: lw.close(c, seed=-1), "seed.*-1"),
        (lambda c: lw.close([c, c[:0]]), "without beads"),
        (lambda c: lw.close([c] * 61, "point"), "too many"),
        (lambda c: lw.close(c[:2], "outside"), "no way"),
        (lambda c: lw.cut(c, 50, 70), "50 to 70"),
        (lambda c: lw.project(c, 60), "59.*60"),
        (lambda c: lw.to_text(c, "xml"), "'xml'"),
        (lambda c: lw.survey(c, closures=401), "400.*401"),
        (lambda c: lw.survey([c, c], method="directions"), "directions"),
        (lambda c: lw.survey(c, threads=0), "threads.*0"),
        (lambda c: lw.survey(c[:0]), "no bead"),
        (lambda c: lw.intersection(c.xyz[:2], c.xyz[:2]), r"\(3, 3\).*\(2, 3\)"),
    ],
)
def test_values_out_of_range_are_named(call, words, trefoil):
    with pytest.raises(ValueError, match=words):
        call(trefoil)
