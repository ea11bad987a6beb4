import io
import pickle

import numpy as np
import pytest

import vemdata

KINDS = [
    ("point", vemdata.Overlay.point((5, 6)), {"point": (5, 6)}),
    ("line", vemdata.Overlay.line((1, 2), (8, 9)), {"p1": (1, 2), "p2": (8, 9)}),
    ("arrow_line", vemdata.Overlay.arrow_line((1, 2), (8, 9)), {"p1": (1, 2), "p2": (8, 9)}),
    ("rect1", vemdata.Overlay.rect1((1, 2), (8, 9)), {"p1": (1, 2), "p2": (8, 9)}),
    ("rake_rect1", vemdata.Overlay.rake_rect1((1, 2), (18, 19), 1, 3),
     {"p1": (1, 2), "p2": (18, 19), "mode": 1, "count": 3}),
    ("rect2", vemdata.Overlay.rect2((20, 20), 9, 5, 30),
     {"center": (20, 20), "length1": 9, "length2": 5, "angle": 30}),
    ("rake_rect2", vemdata.Overlay.rake_rect2((20, 20), 9, 5, 30, 2, 4),
     {"center": (20, 20), "length1": 9, "length2": 5, "angle": 30, "mode": 2, "count": 4}),
    ("circle", vemdata.Overlay.circle((20, 20), 8), {"center": (20, 20), "radius": 8}),
    ("ellipse", vemdata.Overlay.ellipse((20, 20), 8, 4, 10),
     {"center": (20, 20), "radius1": 8, "radius2": 4, "angle": 10}),
    ("torus", vemdata.Overlay.torus((20, 20), 4, 8, 10, 100),
     {"center": (20, 20), "inner_radius": 4, "outer_radius": 8, "start_angle": 10,
      "sweep_angle": 100}),
    ("spoke_torus", vemdata.Overlay.spoke_torus((20, 20), 4, 8, 10, 100, 4, 5),
     {"center": (20, 20), "inner_radius": 4, "outer_radius": 8, "start_angle": 10,
      "sweep_angle": 100, "mode": 4, "count": 5}),
    ("arc", vemdata.Overlay.arc((20, 12), 8, 10, 100),
     {"center": (20, 12), "radius": 8, "start_angle": 10, "sweep_angle": 100}),
]


@pytest.mark.parametrize("kind, overlay, parameters", KINDS, ids=[k for k, _, _ in KINDS])
def test_overlays_tell_what_they_were_told(kind, overlay, parameters):
    assert overlay.type == kind and overlay.parameters == parameters
    again = pickle.loads(pickle.dumps(overlay))
    assert again == overlay and hash(again) == hash(overlay)
    assert repr(overlay).startswith("<vemdata.Overlay " + kind)
    drawn = np.zeros((40, 40, 3), np.uint8)
    vemdata.draw(drawn, overlay)
    assert drawn.any()


def test_chains_texts_images_and_regions_are_overlays():
    points = [(1, 2), (9, 3), (5, 8)]
    for make in [vemdata.Overlay.polygon, vemdata.Overlay.poly_line, vemdata.Overlay.irregular]:
        assert make(points).parameters["points"].tolist() == [list(p) for p in points]
    text = vemdata.Overlay.text((4, 30), "Größe", vemdata.font("Arial", 12, 700))
    assert text.parameters["text"] == "Größe" and text.parameters["point"] == (4, 30)
    assert text.parameters["font"].name == "Arial" and text.parameters["font"].weight == 700
    array = np.arange(12, dtype=np.uint8).reshape(3, 4)
    image = vemdata.Overlay.image(vemdata.Image(array), (2, 1))
    array[:] = 0
    assert np.asarray(image.parameters["image"]).tolist() == np.arange(12).reshape(3, 4).tolist()
    region = vemdata.Region(np.eye(5, dtype=int))
    assert vemdata.Overlay.of(region).parameters["region"] == region
    assert vemdata.Overlay.of(vemdata.mask(region)).parameters["region"] == region
    assert vemdata.Overlay.of(vemdata.arc((5, 9), 3, 0, 90)).parameters["center"] == (5, 9)
    assert vemdata.Overlay.of(vemdata.Contour(points)).type == "irregular"
    assert vemdata.Overlay().type == "none" and vemdata.Overlay().parameters == {}


@pytest.mark.parametrize("make", [
    lambda: vemdata.Overlay.rake_rect1((0, 0), (9, 9), 4, 3),
    lambda: vemdata.Overlay.rake_rect2((0, 0), 9, 9, 0, 0, 1),
    lambda: vemdata.Overlay.spoke_torus((0, 0), 1, 9, 0, 90, 3, 3),
    lambda: vemdata.Overlay.poly_line([(0, 0), (1, 1)]),
    lambda: vemdata.Overlay.text((0, 0), "a\0b"),
    lambda: vemdata.Overlay.of(vemdata.ROI()),
    lambda: vemdata.Overlay.of(vemdata.Contour([(0, 0)])),
    lambda: vemdata.Overlay().with_pen((1, 2)),
    lambda: vemdata.Overlay().with_pen((1, 2, 2**31)),
    lambda: vemdata.font("a\0", 3),
])
def test_refused_overlays_raise(make):
    with pytest.raises(ValueError):
        make()


def test_pens_and_brushes_make_another_overlay():
    overlay = vemdata.Overlay.circle((20, 20), 8)
    assert overlay.pen == (0, 0, 255, 1) and overlay.brush == (227, 224, 184, 0)
    other = overlay.with_pen((1, 2, 3), width=4).with_brush((5, 6, 7), mode=1)
    assert other.pen == (1, 2, 3, 4) and other.brush == (5, 6, 7, 1)
    assert overlay.pen == (0, 0, 255, 1) and other != overlay


@pytest.mark.parametrize("kind, full", [("uint8", 255), ("uint16", 65535), ("float32", 1.0),
                                        ("float64", 1.0)])
def test_a_filled_roi_tints_exactly_its_pixels(kind, full):
    roi = vemdata.ellipse((20, 15), 12, 7, 30)
    for channels in [(), (3,), (4,)]:
        picture = np.zeros((32, 40) + channels, kind)
        vemdata.draw(picture, roi, color=(255, 255, 255), width=0, filled=True)
        touched = picture if picture.ndim == 2 else picture[:, :, :3].any(axis=2)
        assert np.array_equal(touched > 0, roi.mask((32, 40)) > 0)
        assert 0 < picture[..., 0].max() <= full if channels else picture.max() <= full


def test_pictures_are_drawn_on_where_they_lie():
    square = vemdata.Overlay.rect1((2, 2), (10, 8)).with_pen((10, 20, 30), 1)
    expected = np.zeros((20, 30, 3), np.uint8)
    vemdata.draw(expected, square)
    whole = np.zeros((40, 60, 3), np.uint8)
    views = [whole[3:23, 5:35], whole[::2, ::2], whole[20:][::-1, :30],
             np.zeros((30, 20, 3), np.uint8).transpose(1, 0, 2)]
    for view in views:
        view[...] = 0
        vemdata.draw(view, square)
        assert np.array_equal(view, expected)
    whole[...] = 0
    vemdata.draw(whole[3:23, 5:35], square)
    assert whole[:3].sum() == whole[:, :5].sum() == whole[23:].sum() == whole[:, 35:].sum() == 0
    image = vemdata.Image(np.zeros((20, 30, 3), np.uint8))
    vemdata.draw(image, square)
    assert np.array_equal(np.asarray(image), expected)
    red_first = np.zeros((20, 30, 3), np.uint8)
    vemdata.draw(red_first, square, order="rgb")
    assert np.array_equal(red_first[:, :, ::-1], expected)


def test_everything_is_drawn():
    points = vemdata.PointArray([(5, 5), (20, 9), (9, 20)])
    for what in [vemdata.OverlayPath([vemdata.Overlay.circle((12, 12), 8)]),
                 vemdata.Overlay.circle((12, 12), 8), vemdata.circle((12, 12), 8),
                 vemdata.Region(np.ones((20, 20), int)), vemdata.Contour(points),
                 vemdata.ContourArray([points]), points]:
        picture = np.zeros((30, 30), np.uint8)
        assert vemdata.draw(picture, what) is None
        assert picture.any()


def test_pictures_that_nothing_can_be_drawn_on_raise():
    roi = vemdata.circle((5, 5), 3)
    frozen = np.zeros((9, 9), np.uint8)
    frozen.setflags(write=False)
    for bad in [np.zeros((9, 9), np.int8), np.zeros((9, 9, 2), np.uint8), np.zeros((0, 9), np.uint8),
                frozen, vemdata.Image(), np.zeros(9, np.uint8)]:
        with pytest.raises(ValueError):
            vemdata.draw(bad, roi)
    for bad in [np.zeros((9, 9), np.int64), None, [[0]]]:
        with pytest.raises(TypeError):
            vemdata.draw(bad, roi)
    picture = np.zeros((9, 9), np.uint8)
    for options in [dict(color=(0, 0, 256)), dict(color=(1, 2)), dict(width=-1),
                    dict(order="hsv")]:
        with pytest.raises(ValueError):
            vemdata.draw(picture, roi, **options)
    with pytest.raises(TypeError):
        vemdata.draw(picture, "circle")


def decoded(png):
    io_module = pytest.importorskip("cv2")
    return io_module.imdecode(np.frombuffer(png, np.uint8), io_module.IMREAD_UNCHANGED)


def test_objects_show_themselves_in_notebooks(random):
    shown = [vemdata.circle((30, 20), 15), vemdata.mask(vemdata.Region(np.eye(30, dtype=int))),
             vemdata.Region(random.random((20, 30)) < 0.5),
             vemdata.Overlay.circle((30, 20), 15),
             vemdata.OverlayPath([overlay for _, overlay, _ in KINDS]
                                 + [vemdata.Overlay.text((3, 30), "text")])]
    for thing in shown:
        picture = decoded(thing._repr_png_())
        assert picture.shape[2] == 3
        assert (picture != 255).any() and (picture == 255).all(axis=2).any()
    pixels = random.integers(0, 255, (5, 6, 3)).astype(np.uint8)
    assert np.array_equal(decoded(vemdata.Image(pixels)._repr_png_()), pixels)
    for large in [vemdata.circle((1e6, 20), 15), vemdata.rect1((0, 0), (9, 1e300)),
                  vemdata.Overlay.circle((5000, 2), 1),
                  vemdata.OverlayPath([vemdata.Overlay.point((2, 1e9))]),
                  vemdata.Image(np.zeros((3, 3)))]:
        assert large._repr_png_() is None
