import copy
import math
import pickle
import re

import numpy as np
import pytest

import vemdata
from conftest import painted


def test_rect1_covers_all_pixels_between_its_corners():
    roi = vemdata.rect1((2, 1), (5, 3))
    runs = roi.runs()
    assert runs.dtype == np.int32 and runs.shape == (3, 3)
    assert runs.tolist() == [[1, 2, 5], [2, 2, 5], [3, 2, 5]]
    assert roi.canvas == (6, 4)
    expected = np.zeros((4, 6), np.uint8)
    expected[1:4, 2:6] = 255
    assert roi.mask().dtype == np.uint8
    assert np.array_equal(roi.mask(), expected)
    assert [c.tolist() for c in roi.contours()] == [[[2, 1], [5, 1], [5, 3], [2, 3], [2, 1]]]


def test_a_circle_has_the_rows_that_the_library_tells():
    roi = vemdata.circle(center=(12, 8), radius=6)
    rows = np.unique(roi.runs()[:, 0]).tolist()
    assert rows == list(range(8 - 6 + 1, 8 + 6 - 2 + 1))
    assert roi.canvas == (12 + 6, 8 + 6)
    assert np.array_equal(roi.mask(), painted(roi.runs(), (14, 18)))


def test_an_upright_rect2_covers_one_pixel_more_than_its_lengths():
    roi = vemdata.rect2(center=(120, 80), length1=20, length2=8, angle=0)
    runs = roi.runs()
    assert len(runs) == 9 and (runs[:, 2] - runs[:, 1] == 20).all()


def test_shapes_take_positions_and_keywords():
    pairs = [
        (vemdata.point((1, 2)), vemdata.point(point=[1, 2])),
        (vemdata.rect1((1, 2), (3, 4)), vemdata.rect1(p1=(1, 2), p2=np.array([3, 4]))),
        (vemdata.circle((5, 5), 3), vemdata.circle(center=vemdata.Point(5, 5), radius=3)),
        (vemdata.torus((9, 9), 2, 4, 0, 360),
         vemdata.torus(center=(9, 9), inner_radius=2, outer_radius=4)),
        (vemdata.rect2((9, 9), 4, 3, 30),
         vemdata.rect2(center=(9, 9), length1=4, length2=3, angle=30)),
        (vemdata.line((0, 0), (3, 9)), vemdata.line(p1=(0, 0), p2=(3, 9))),
        (vemdata.ellipse((9, 9), 5, 3, 20),
         vemdata.ellipse(center=(9, 9), radius1=5, radius2=3, angle=20)),
        (vemdata.arc((9, 9), 5, 10, 80),
         vemdata.arc(center=(9, 9), radius=5, start_angle=10, sweep_angle=80)),
        (vemdata.polygon([(0, 0), (4, 0), (4, 3)]),
         vemdata.polygon(points=np.array([[0, 0], [4, 0], [4, 3]]))),
        (vemdata.irregular([(0, 0), (4, 0), (4, 3)]),
         vemdata.irregular(points=vemdata.PointArray([(0, 0), (4, 0), (4, 3)]))),
    ]
    for by_position, by_keyword in pairs:
        assert by_position == by_keyword
        assert hash(by_position) == hash(by_keyword)
    kinds = [roi.type for roi, _ in pairs]
    assert kinds == ["point", "rect1", "circle", "torus", "rect2", "line", "ellipse", "arc",
                     "polygon", "irregular"]


def test_parameters_are_the_numbers_as_they_were_told():
    roi = vemdata.torus((16777217.0, 0.1), 2.5, 4, 10, 90)
    assert roi.parameters == {"center": (16777217.0, 0.1), "inner_radius": 2.5,
                              "outer_radius": 4.0, "start_angle": 10.0, "sweep_angle": 90.0}
    assert vemdata.polygon([(0, 1), (4, 0), (4, 3)]).parameters["points"].tolist() == [
        [0, 1], [4, 0], [4, 3]]
    assert vemdata.ROI().parameters == {} and vemdata.ROI().type == "none"


@pytest.mark.parametrize("make, reason", [
    (lambda: vemdata.rect2((1, 2), 5, -40, 0), "rect2: length2 is -40, not above 0"),
    (lambda: vemdata.rect1((4, 4), (1, 9)), "rect1: p2 (1, 9) is not greater than p1 (4, 4)"),
    (lambda: vemdata.circle((0, 0), 0), "circle: radius is 0, not above 0"),
    (lambda: vemdata.circle((0, 0), math.nan), "circle: radius is nan"),
    (lambda: vemdata.torus((0, 0), 4, 4), "outer_radius 4 is not greater than inner_radius 4"),
    (lambda: vemdata.torus((0, 0), 1, 4, 0, -1), "sweep_angle is -1"),
    (lambda: vemdata.line((1, 1), (1, 1)), "both points are (1, 1)"),
    (lambda: vemdata.ellipse((0, 0), 1, 0), "radius2 is 0"),
    (lambda: vemdata.arc((0, 0), -1, 0, 1), "radius is -1"),
    (lambda: vemdata.polygon([(0, 0), (1, 1)]), "there are 2 points"),
    (lambda: vemdata.irregular([]), "there are 0 points"),
    (lambda: vemdata.polygon(np.zeros((3, 4))), "shape (n, 2)"),
    (lambda: vemdata.mask(vemdata.Region(np.ones((1, 5), bool))), "5 by 1, not 2 by 2"),
])
def test_what_a_generator_refuses_raises_with_the_reason(make, reason):
    with pytest.raises(ValueError, match=re.escape(reason)):
        make()


@pytest.mark.parametrize("arguments", [
    ((1, 2, 3), 1), ("12", 1), (5, 1), (None, 1), ((1, "2"), 1), ((1, 2), "3"), ((1, 2j), 1),
])
def test_a_wrong_kind_raises_a_type_error(arguments):
    with pytest.raises(TypeError):
        vemdata.circle(*arguments)
    with pytest.raises(TypeError):
        vemdata.polygon("points")
    with pytest.raises(TypeError):
        vemdata.polygon(np.array([[0, 0], [1j, 0], [1, 1]]))


def test_what_has_no_pixels_raises_where_cpp_is_silent_or_ends():
    for roi, reason in [
        (vemdata.line((3.1, 0), (3.9, 8)), "the line is vertical"),
        (vemdata.point((3, 4)), "a point has no pixels"),
        (vemdata.ROI(), "no shape"),
        (vemdata.circle((1e12, 5), 3), "too large for pixels"),
        (vemdata.circle((math.nan, 5), 3), "too large for pixels"),
        (vemdata.rect1((0, 0), (math.inf, 9)), "too large for pixels"),
    ]:
        for read in (roi.runs, roi.mask, lambda: roi.canvas, lambda: vemdata.Region(roi)):
            with pytest.raises(ValueError, match=reason):
                read()
    # The outline of a vertical line is harmless.
    assert [c.tolist() for c in vemdata.line((3, 0), (3, 8)).contours()] == [[[3, 0], [3, 8]]]


def test_a_shape_left_of_the_origin_has_no_pixels_and_no_canvas():
    roi = vemdata.rect1((-9, 2), (-5, 4))
    assert roi.runs().shape == (0, 3)
    assert roi.canvas == (0, 0)
    assert roi.mask().shape == (0, 0)
    assert not roi.mask((5, 6)).any()
    with pytest.raises(ValueError, match="left of or above"):
        vemdata.Region(roi)


def test_a_mask_of_another_shape_loses_pixels_beyond_it():
    roi = vemdata.ellipse((10, 8), 9, 6, 25)
    for shape in [(5, 6), (30, 40), (1, 1), (0, 7), [12, 12]]:
        assert np.array_equal(roi.mask(shape=shape), painted(roi.runs(), shape))
    for bad in [(-1, 5), (2**31, 5)]:
        with pytest.raises(ValueError):
            roi.mask(bad)
    for bad in [(1, 2, 3), 7, "ab", (1.5, 2)]:
        with pytest.raises(TypeError):
            roi.mask(bad)


def test_a_mask_of_a_region_keeps_its_runs():
    picture = np.array([[1, 0, 1], [1, 1, 0]], bool)
    roi = vemdata.mask(vemdata.Region(picture))
    assert roi.type == "mask" and roi.canvas == (3, 2)
    assert np.array_equal(roi.mask() > 0, picture)
    assert roi.runs().tolist() == [[0, 0, 0], [0, 2, 2], [1, 0, 1]]


def test_shapes_copy_pickle_and_tell_themselves():
    for roi in [vemdata.ROI(), vemdata.circle((12, 8), 6), vemdata.circle((0.1, math.inf), 1e-300),
                vemdata.mask(vemdata.Region(np.eye(4, dtype=int)))]:
        again = pickle.loads(pickle.dumps(roi))
        assert again.to_json() == roi.to_json()
        assert again == roi
        assert copy.copy(roi) is roi and copy.deepcopy(roi) is roi
    assert repr(vemdata.circle((12, 8), 6)) == "<vemdata.ROI circle center (12, 8), radius 6>"
    assert vemdata.circle((0, 0), 1) != vemdata.circle((0, 0), 2)
    assert vemdata.circle((0, 0), 1) != "circle"
