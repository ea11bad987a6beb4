import copy
import itertools
import pickle

import numpy as np
import pytest

import vemdata
from conftest import painted, scanned

TYPES = ["bool", "int8", "uint8", "int16", "uint16", "int32", "uint32", "int64", "uint64",
         ">i2", ">u4", ">i8"]


@pytest.mark.parametrize("kind", TYPES)
def test_a_mask_of_any_integers_gives_its_runs(kind, random):
    for shape in [(1, 1), (1, 70), (70, 1), (13, 200), (0, 5), (5, 0)]:
        mask = random.integers(0, 3, shape).astype(kind)
        region = vemdata.Region(mask)
        assert region.runs().dtype == np.int32
        assert [tuple(run) for run in region.runs().tolist()] == scanned(mask)
        assert region.canvas == (shape[1], shape[0])
        assert region.area == np.count_nonzero(mask)
        assert np.array_equal(region.mask(), np.where(mask != 0, 255, 0))


def test_high_bytes_and_negative_numbers_are_inside():
    for value, kind in [(256, "uint16"), (-1, "int8"), (1 << 31, "uint32"), (1 << 63, "uint64"),
                        (1 << 32, "int64"), (2, "bool")]:
        mask = np.zeros((2, 3), kind)
        mask[1, 1] = value
        assert vemdata.Region(mask).runs().tolist() == [[1, 1, 1]]


@pytest.mark.parametrize("kind", ["bool", "uint8", "uint16", "int32", "int64"])
def test_a_mask_of_any_strides_gives_its_runs(kind, random):
    whole = (random.random((40, 60)) < 0.4).astype(kind)
    views = [whole[::2], whole[:, ::3], whole[::-1], whole[:, ::-1], whole.T, whole[5:30, 7:50],
             whole[::-2, ::-3], whole[3:4], whole[:, 3:4], np.broadcast_to(whole[0], (9, 60)),
             np.broadcast_to(whole[:, :1], (40, 8)), np.asfortranarray(whole)]
    for view in views:
        assert [tuple(run) for run in vemdata.Region(view).runs().tolist()] == scanned(view)
        parts = vemdata.components(view)
        assert sum(part.area for part in parts) == np.count_nonzero(view)


def test_a_mask_is_read_where_it_lies_at_any_address(random):
    for kind in ["uint16", "int32", "int64"]:
        size = np.dtype(kind).itemsize
        pixels = (random.random(300) < 0.5).astype(kind)
        odd = np.frombuffer(b"x" + pixels.tobytes(), np.uint8)[1:].view(kind).reshape(15, 20)
        assert odd.ctypes.data % size != 0
        assert [tuple(run) for run in vemdata.Region(odd).runs().tolist()] == scanned(odd)


def test_what_is_no_mask_raises():
    for bad in [np.zeros((2, 2)), np.zeros((2, 2), "complex64"), np.zeros((2, 2), "U1"),
                np.zeros((2, 2), object)]:
        for make in [vemdata.Region, vemdata.components, vemdata.outlines]:
            with pytest.raises(TypeError):
                make(bad)
    for bad in [np.zeros(4, int), np.zeros((2, 2, 2), int), np.array(5)]:
        for make in [vemdata.Region, vemdata.components, vemdata.outlines]:
            with pytest.raises(ValueError):
                make(bad)
    for bad in [None, "mask", [[0, 1]], 5]:
        for make in [vemdata.Region, vemdata.components, vemdata.outlines]:
            with pytest.raises(TypeError):
                make(bad)


def test_runs_make_a_region_on_a_canvas_that_just_holds_them():
    runs = np.array([[3, 2, 5], [1, 0, 0], [3, 4, 9]])
    region = vemdata.Region.from_runs(runs)
    assert region.canvas == (10, 4)
    assert region.runs().tolist() == runs.tolist()
    assert region.area == 1 + 8
    assert np.array_equal(region.mask(), painted(runs, (4, 10)))
    assert vemdata.Region.from_runs(runs, shape=(2, 3)).canvas == (3, 2)
    assert np.array_equal(region.mask((2, 3)), painted(runs, (2, 3)))
    assert vemdata.Region.from_runs(np.zeros((0, 3), int), shape=(4, 5)).area == 0


@pytest.mark.parametrize("runs, shape, fault", [
    (np.zeros((0, 3), int), None, ValueError), (np.zeros((4, 2), int), None, ValueError),
    (np.zeros((4, 3)), None, TypeError), (np.array([[0, 0, 2**31]]), None, ValueError),
    (np.array([[0, 0, 2**31 - 1]]), None, ValueError), (np.array([[0, 0, 3]]), (0, 4), ValueError),
    (np.array([[-(2**31) - 1, 0, 0]]), None, ValueError), (5, None, TypeError),
])
def test_runs_that_make_no_region_raise(runs, shape, fault):
    with pytest.raises(fault):
        vemdata.Region.from_runs(runs, shape)


def test_points_and_contours_make_regions():
    region = vemdata.Region.from_points([(1.9, 2.2), (3, 2), (4, 2)])
    assert np.argwhere(region.mask()).tolist() == [[2, 1], [2, 3], [2, 4]]
    assert vemdata.Region.from_points(np.array([[9, 9], [1, 1]]), shape=(4, 4)).area == 1
    square = np.array([[1, 1], [4, 1], [4, 3], [1, 3]])
    region = vemdata.Region.from_contours([square], shape=(6, 7))
    expected = np.zeros((6, 7), bool)
    expected[1:4, 1:5] = True
    assert np.array_equal(region.mask() > 0, expected)
    for bad in [[], [(0, 0)], [(0, 1e10)], [(float("nan"), 1)], [(2147483647, 1)]]:
        with pytest.raises(ValueError):
            vemdata.Region.from_points(bad)
    with pytest.raises(ValueError):
        vemdata.Region.from_contours([square], shape=(1, 7))
    with pytest.raises(ValueError):
        vemdata.Region.from_contours([[(0, 1e10), (1, 1), (2, 2)]], shape=(9, 7))


def sums(picture):
    return {(x, y) for y, x in np.argwhere(picture).tolist()}


def test_regions_are_sets(random):
    for _ in range(50):
        first, second = (random.random((9, 12)) < 0.5 for _ in range(2))
        a, b = vemdata.Region(first), vemdata.Region(second)
        for got, expected in [(a | b, first | second), (a & b, first & second),
                              (a - b, first & ~second), (a ^ b, first ^ second), (~a, ~first)]:
            assert np.array_equal(got.mask() > 0, expected)
            assert got.area == np.count_nonzero(expected)
            assert bool(got) == bool(expected.any())
        rows, columns = np.nonzero(first)
        assert a.bounds == (columns.min(), rows.min(), columns.max(), rows.max())
        assert a.bounds.left == columns.min() and a.bounds.bottom == rows.max()
        assert a.center == pytest.approx((columns.mean(), rows.mean()), rel=1e-14)
        assert a.spread == pytest.approx(tuple(np.cov(columns, rows, bias=True)[[0, 0, 1], [0, 1, 1]]),
                                         rel=1e-9, abs=1e-12)
        assert all(((x, y) in a) == first[y, x] for x in range(12) for y in range(9))
        assert (-1, 3) not in a
        moved = a.shifted(2, -3)
        assert sums(moved.mask((20, 20))) == {(x + 2, y - 3) for x, y in sums(first) if y >= 3}
        assert moved.area == a.area
        assert a.same_pixels(a | a) and a.same_pixels(b) == np.array_equal(first, second)


def test_no_pixels_have_no_center():
    empty = vemdata.Region()
    assert empty.area == 0 and empty.bounds == (0, 0, -1, -1) and not empty
    assert empty.contours() == [] and empty.runs().shape == (0, 3) and empty.mask().shape == (0, 0)
    for read in (lambda: empty.center, lambda: empty.spread):
        with pytest.raises(ValueError, match="no pixels"):
            read()


def test_bad_arguments_of_sets_raise():
    region = vemdata.Region(np.ones((3, 3), bool))
    for bad in [lambda: region | 5, lambda: region & np.ones((3, 3)), lambda: region.shifted(1.5, 0),
                lambda: 5 in region]:
        with pytest.raises(TypeError):
            bad()
    with pytest.raises(ValueError):
        region.shifted(2**31, 0)
    with pytest.raises(OverflowError):
        region.shifted(2**31 - 1, 0)
    with pytest.raises(AttributeError):
        region.area = 3


def flooded(mask):
    """The 8-connected parts by plain loops, in the order of a scan."""
    left = {(int(y), int(x)) for y, x in np.argwhere(mask)}
    parts = []
    for start in sorted(left):
        if start not in left:
            continue
        left.discard(start)
        part, todo = set(), [start]
        while todo:
            y, x = todo.pop()
            part.add((y, x))
            for near in itertools.product((y - 1, y, y + 1), (x - 1, x, x + 1)):
                if near in left:
                    left.discard(near)
                    todo.append(near)
        parts.append(part)
    return parts


@pytest.mark.parametrize("kind", ["bool", "uint8", "int16", "int32", "uint64"])
def test_components_are_those_of_a_flood(kind, random):
    for density in [0.0, 0.05, 0.3, 0.5, 0.9, 1.0]:
        mask = (random.random((23, 31)) < density).astype(kind) * 3
        found = vemdata.components(mask)
        assert all(part.canvas == (31, 23) for part in found)
        got = [{(int(y), int(x)) for y, x in np.argwhere(part.mask())} for part in found]
        assert got == flooded(mask)


def test_outlines_paint_the_mask_again(random):
    cv2 = pytest.importorskip("cv2")
    for density in [0.0, 0.2, 0.5, 0.8, 1.0]:
        mask = (random.random((30, 40)) < density).astype(np.uint8)
        outlines, hierarchy = vemdata.outlines(mask)
        assert hierarchy.shape == (len(outlines), 4) and hierarchy.dtype == np.int32
        assert all(line.dtype == np.int32 and line.shape[1] == 2 for line in outlines)
        expected, tree = cv2.findContours(mask, cv2.RETR_CCOMP, cv2.CHAIN_APPROX_SIMPLE)
        key = lambda line: line.reshape(-1, 2).tolist()
        assert sorted(map(key, outlines)) == sorted(map(key, expected))
        for line, (_, _, hole, outer) in zip(outlines, hierarchy.tolist()):
            assert hole == -1 or hierarchy[hole, 3] >= 0
            assert outer == -1 or hierarchy[outer, 3] == -1
        again = vemdata.Region(mask).contours()
        assert len(again) == len(outlines)
        assert all(np.array_equal(a, b) for a, b in zip(again, outlines))


def test_outlines_of_a_region_off_its_canvas_move_with_it(random):
    region = vemdata.Region(random.random((12, 15)) < 0.6)
    moved = region.shifted(-1000, 70000)
    for a, b in zip(region.contours(), moved.contours()):
        assert np.array_equal(a + [-1000, 70000], b)


def test_regions_copy_compare_and_pickle(random):
    region = vemdata.Region(random.random((12, 15)) < 0.6)
    again = pickle.loads(pickle.dumps(region))
    assert again == region and hash(again) == hash(region)
    assert again.runs().tolist() == region.runs().tolist()
    assert region != vemdata.Region(np.ones((12, 15), bool)) and region != 3
    assert copy.deepcopy(region) is region
    assert repr(vemdata.Region(np.ones((2, 3), int))) == (
        "<vemdata.Region region 3x2: 0:0-2, 1:0-2>")


def test_arrays_of_regions_take_outlines_for_all_or_none():
    plain = vemdata.Region(np.ones((4, 4), int))
    outlined = vemdata.Region.from_json(
        '{"version": 1, "width": 4, "height": 4, "rows": [0], "first_columns": [0],'
        ' "last_columns": [3], "outlines": {"hierarchy": [[-1, -1, -1, -1]], "contours": [[[0, 0], [3, 0]]]}}')
    array = vemdata.RegionArray([outlined, outlined])
    with pytest.raises(ValueError, match="outlines"):
        array.append(plain)
    with pytest.raises(ValueError, match="outlines"):
        vemdata.RegionArray([plain, outlined])
    assert vemdata.RegionArray([plain, plain])[1] == plain
