import collections.abc
import copy
import math
import pickle

import numpy as np
import pytest

import vemdata


def regions(count):
    return [vemdata.Region.from_runs(np.array([[i, 0, i]])) for i in range(count)]


def images(count):
    return [vemdata.Image(np.full((2, 3), i, np.uint8)) for i in range(count)]


LISTS = [
    (vemdata.VarArray, [1, 2.5, "x", None, "ä", -(2**63)]),
    (vemdata.VarTable, [(1, "a"), (), (None, 2.5), (3,), ("b",)]),
    (vemdata.PointArray, [vemdata.Point(i, -i / 2) for i in range(6)]),
    (vemdata.Point3DArray, [vemdata.Point3D(i, 2, 3) for i in range(6)]),
    (vemdata.ContourArray, [vemdata.Contour([(0, i), (i, 3)]) for i in range(6)]),
    (vemdata.ROIArray, [vemdata.circle((9, 9), i + 1) for i in range(4)]
     + [vemdata.mask(vemdata.Region(np.ones((3, 3), int)))]),
    (vemdata.RegionArray, regions(6)),
    (vemdata.ImageArray, images(6)),
    (vemdata.MatrixArray, [vemdata.Matrix(np.full((2, 2), float(i))) for i in range(6)]),
    (vemdata.OverlayPath, [vemdata.Overlay.circle((9, 9), i + 1) for i in range(6)]),
    (vemdata.Code1DArray, [vemdata.Code1D(number=i, value="x") for i in range(6)]),
    (vemdata.DMCodeArray, [vemdata.DMCode(number=i, value="x") for i in range(6)]),
    (vemdata.QRCodeArray, [vemdata.QRCode(number=i, value="x") for i in range(6)]),
    (vemdata.PDF417CodeArray, [vemdata.PDF417Code(number=i, value="x") for i in range(6)]),
    (vemdata.VCodeArray, [vemdata.VCode(count0=i, value0="x") for i in range(6)]),
    (vemdata.FeaturePointArray, [vemdata.FeaturePoint(x=i) for i in range(6)]),
    (vemdata.ScratchLayerArray,
     [vemdata.ScratchLayer(groups=[vemdata.ScratchGroup(i)]) for i in range(6)]),
]
IDS = [cls.__name__ for cls, _ in LISTS]
SLICES = [slice(None), slice(1, 4), slice(None, None, -1), slice(-3, None), slice(4, 1, -2),
          slice(9, 20), slice(None, None, 2)]


@pytest.mark.parametrize("cls, elements", LISTS, ids=IDS)
def test_reading_is_that_of_a_list(cls, elements):
    array = cls(elements)
    assert isinstance(array, collections.abc.MutableSequence)
    assert len(array) == len(elements)
    assert list(array) == elements
    assert list(reversed(array)) == elements[::-1]
    for index in range(-len(elements), len(elements)):
        assert array[index] == elements[index]
    for index in [len(elements), -len(elements) - 1, 2**40, 2**63, -2**63 - 1]:
        with pytest.raises(IndexError):
            array[index]
    for part in SLICES:
        assert type(array[part]) is cls
        assert list(array[part]) == elements[part]
    assert elements[2] in array and array.index(elements[2]) == 2 and array.count(elements[2]) == 1
    assert list(array + elements[:2]) == elements + elements[:2]
    assert array == cls(elements) and array != cls(elements[1:])
    assert array != elements
    assert len(cls()) == 0 and list(cls()) == []
    assert cls.__name__ in repr(array)


@pytest.mark.parametrize("cls, elements", LISTS, ids=IDS)
def test_changing_is_that_of_a_list(cls, elements):
    def same(change):
        array, expected = cls(elements), list(elements)
        results = change(array), change(expected)
        assert results[0] == results[1]
        assert list(array) == expected

    def put(at, value):
        def change(target):
            target[at] = value
        return change

    def drop(at):
        def change(target):
            del target[at]
        return change

    for index in [0, 2, -1, len(elements) - 1]:
        same(put(index, elements[1]))
        same(drop(index))
        same(lambda target, index=index: target.pop(index))
    for index in [0, 2, -1, len(elements), 99, -99]:
        same(lambda target, index=index: target.insert(index, elements[1]))
    for part in SLICES:
        same(drop(part))
    for part in [slice(1, 3), slice(0, 0), slice(None)]:
        same(put(part, elements[2:5]))
    same(lambda target: target.append(elements[0]))
    same(lambda target: target.extend(elements[:3]))
    same(lambda target: target.extend(target))
    same(lambda target: target.reverse())
    same(lambda target: target.clear())
    same(lambda target: target.remove(elements[2]))
    same(lambda target: target.__iadd__(elements[:2]) and None)


@pytest.mark.parametrize("cls, elements", LISTS, ids=IDS)
def test_what_is_wrong_raises_and_changes_nothing(cls, elements):
    array = cls(elements)
    wrong = object()
    for change in [lambda: array.append(wrong), lambda: array.insert(0, wrong),
                   lambda: array.extend([elements[0], wrong]), lambda: cls([wrong]),
                   lambda: array.__setitem__(0, wrong), lambda: cls(5), lambda: array["0"],
                   lambda: array.__setitem__(slice(0, 2), [wrong]), lambda: array[1.0],
                   lambda: array + [wrong]]:
        with pytest.raises(TypeError):
            change()
    for change in [lambda: array.__setitem__(len(elements), elements[0]),
                   lambda: array.__delitem__(-len(elements) - 1), lambda: cls().pop()]:
        with pytest.raises(IndexError):
            change()
    with pytest.raises(ValueError):
        array[::2] = elements[:1]
    with pytest.raises(ValueError):
        array.remove(elements[0]) or array.index(elements[0])
    with pytest.raises(TypeError):
        hash(array)
    assert list(array) == elements[1:]


@pytest.mark.parametrize("cls, elements", LISTS, ids=IDS)
def test_copies_stand_alone(cls, elements):
    array = cls(elements)
    for other in [copy.copy(array), copy.deepcopy(array), array.copy(), array[:],
                  pickle.loads(pickle.dumps(array)), vemdata.from_json(array.to_json())]:
        assert type(other) is cls and other == array
        del other[0]
        assert list(array) == elements


def test_points_come_from_arrays_and_go_to_them():
    array = np.array([[1, 2], [3.5, 4]])
    points = vemdata.PointArray(array)
    assert list(points) == [(1, 2), (3.5, 4)]
    assert np.asarray(points).dtype == np.float64
    assert np.array_equal(np.asarray(points), array)
    assert np.asarray(points, dtype=np.float32).dtype == np.float32
    assert np.asarray(vemdata.Point3DArray([(1, 2, 3)])).tolist() == [[1, 2, 3]]
    assert np.asarray(vemdata.Contour(array)).tolist() == array.tolist()
    assert len(vemdata.PointArray(np.zeros((0, 2)))) == 0
    for bad in [np.zeros((2, 3)), np.zeros(4), np.array([["a", "b"]])]:
        with pytest.raises((ValueError, TypeError)):
            vemdata.PointArray(bad)


def test_a_point_is_a_frozen_pair():
    point = vemdata.Point(1, 2.5)
    x, y = point
    assert (x, y) == (1, 2.5) == point and hash(point) == hash((1.0, 2.5))
    assert point + (1, 1) == (2, 3.5) and point - vemdata.Point(1, 1) == (0, 1.5)
    assert point[-1] == 2.5 and len(point) == 2 and repr(point) == "Point(1.0, 2.5)"
    with pytest.raises(IndexError):
        point[2]
    with pytest.raises(AttributeError):
        point.x = 3
    assert pickle.loads(pickle.dumps(point)) == point
    assert vemdata.Point(0.0, 1) == vemdata.Point(-0.0, 1) != vemdata.Point(0, 2)
    space = vemdata.Point3D(1, 2, 3)
    assert tuple(space) == (1, 2, 3) and pickle.loads(pickle.dumps(space)) == space


def test_lines_and_circles_measure_themselves():
    line = vemdata.Line((0, 0), (3, 4))
    assert line.length == 5 and line.mid_point == (1.5, 2)
    assert line.horizontal_angle == pytest.approx(math.degrees(math.acos(3 / 5)), rel=1e-6)
    assert line.vertical_angle == pytest.approx(math.degrees(math.acos(4 / 5)), rel=1e-6)
    with pytest.raises(ValueError, match=r"both points are \(1, 1\)"):
        vemdata.Line((1, 1), (1, 1))
    short = vemdata.Line.from_json('{"version": 1, "start": [1, 1], "end": [1, 1]}')
    for read in [lambda: short.vertical_angle, lambda: short.horizontal_angle,
                 lambda: vemdata.Line((math.nan, 0), (0, math.nan)).vertical_angle]:
        with pytest.raises(ValueError, match="no direction"):
            read()
    circle = vemdata.Circle((1, 2), 3)
    assert circle.area == 3 * (3.1415926 * 3) and circle.perimeter == 6.2831852 * 3
    for value in [line, circle]:
        assert pickle.loads(pickle.dumps(value)) == value


def test_contours_measure_themselves():
    contour = vemdata.Contour([(0, 0), (40, 0), (40, 30)])
    assert contour.perimeter == 70 and contour.area == pytest.approx(600)
    assert contour[-1] == (40, 30) and list(contour[1:]) == [(40, 0), (40, 30)]
    assert (40, 0) in contour and contour.index((40, 30)) == 2
    with pytest.raises(IndexError):
        contour[3]


def test_values_are_those_of_python():
    array = vemdata.VarArray([True, np.int32(7), np.float32(0.5), np.float64(2), 2**63 - 1, ""])
    assert [type(v) for v in array] == [int, int, float, float, int, str]
    assert list(array) == [1, 7, 0.5, 2.0, 2**63 - 1, ""]
    for bad in [2**63, -(2**63) - 1, "a\0b"]:
        with pytest.raises(ValueError):
            array.append(bad)
    for bad in [1j, b"bytes", [1], object()]:
        with pytest.raises(TypeError):
            array.append(bad)
    stray = b"\xff\x80".decode("utf-8", "surrogateescape")
    array[0] = stray
    assert array[0] == stray and pickle.loads(pickle.dumps(array))[0] == stray
    assert len(array) == 6


def test_elements_outlive_their_array():
    path = vemdata.OverlayPath([vemdata.Overlay.circle((5, 5), 3)] * 3)
    first = path[0]
    iterator = iter(path)
    next(iterator)
    path.extend([first] * 1000)
    path.clear()
    assert first.parameters["radius"] == 3
    assert list(iterator) == []


class Clearing:
    """An index, and a point, that clears an array while it is asked."""

    def __init__(self, array, number):
        self.array, self.number = array, number

    def __index__(self):
        self.array.clear()
        return self.number

    def __len__(self):
        self.array.clear()
        return 2

    def __getitem__(self, index):
        return self.number


def test_an_array_may_change_while_an_argument_is_read():
    def filled():
        return vemdata.VarArray([1, 2, 3])

    array = filled()
    assert list(array[Clearing(array, 0):3]) == []
    array = filled()
    array.insert(2, Clearing(array, 7))
    assert list(array) == [7]
    points = vemdata.PointArray([(1, 2), (3, 4)])
    points.insert(2, Clearing(points, 5))
    assert list(points) == [(5, 5)]
    for read in [lambda: array.__getitem__(Clearing(array, 2)),
                 lambda: array.__setitem__(2, Clearing(array, 5)),
                 lambda: array.__delitem__(Clearing(array, 2))]:
        array[:] = [1, 2, 3]
        with pytest.raises(IndexError):
            read()
