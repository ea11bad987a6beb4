import copy
import json
import math
import pickle

import numpy as np
import pytest

import vemdata

RECORDS = [vemdata.Code1D, vemdata.DMCode, vemdata.QRCode, vemdata.PDF417Code, vemdata.VCode,
           vemdata.FeaturePoint, vemdata.ScratchFeature]


@pytest.mark.parametrize("cls", RECORDS, ids=[c.__name__ for c in RECORDS])
def test_numbers_that_nobody_told_are_zero(cls):
    for _ in range(20):
        np.full(100, 0x5A, np.uint8)  # Memory that was written to before.
        for value in cls()._asdict().values():
            assert value is None or isinstance(value, (str, np.ndarray)) or value == 0


def test_records_have_named_fields():
    code = vemdata.QRCode(number=3, value="ABC", count0=-1, real0=0.1, points0=[(1, 2), (3, 4)],
                          word6=2**64 - 1)
    assert code.number == 3 and code.value == "ABC" and code.count0 == -1 and code.real0 == 0.1
    assert code.symbol_type == "QR Mode 2" and code.polarity == "BlackOnWhite"
    assert code.value3 is None and code.word6 == 2**64 - 1 and code.word0 == 0
    assert code.points0.tolist() == [[1, 2], [3, 4]] and code.points1.shape == (0, 2)
    assert list(code._asdict()) == list(code._fields)
    assert vemdata.DMCode().symbol_type == "ECC-200 "
    assert repr(vemdata.Code1D(number=1, value="x")) == "Code1D(number=1, value='x')"


def test_records_never_change():
    code = vemdata.QRCode(value="ABC", points0=[(1, 2)])
    with pytest.raises(AttributeError):
        code.value = "x"
    with pytest.raises(ValueError):
        code.points0[0, 0] = 9
    other = code.replace(value=7, count3=2)
    assert (other.value, other.count3, code.value, code.count3) == (7, 2, "ABC", 0)
    assert other != code and code == vemdata.QRCode(value="ABC", points0=[(1, 2)])
    assert copy.deepcopy(code) is code


@pytest.mark.parametrize("fields, fault", [
    (dict(nothing=1), TypeError), (dict(number=2**31), ValueError), (dict(number=1.5), TypeError),
    (dict(number="1"), TypeError), (dict(word0=-1), ValueError), (dict(word0=2**64), ValueError),
    (dict(value=2**64), ValueError), (dict(value=b"x"), TypeError), (dict(real0="x"), TypeError),
    (dict(points0=[(1, 2, 3)]), TypeError), (dict(points0=np.zeros((2, 3))), ValueError),
])
def test_fields_that_do_not_fit_raise(fields, fault):
    with pytest.raises(fault):
        vemdata.QRCode(**fields)
    with pytest.raises(fault):
        vemdata.QRCode().replace(**fields)


def test_reals_of_32_bits_are_tested():
    assert vemdata.VCode(real0=0.1).real0 == np.float32(0.1)
    assert vemdata.FeaturePoint(x=math.inf).x == math.inf
    for make in [lambda: vemdata.VCode(real0=1e300), lambda: vemdata.FeaturePoint(x=-1e39)]:
        with pytest.raises(ValueError, match="32 bits"):
            make()


def test_fonts_take_fields_that_are_not_told_from_the_default():
    assert vemdata.Font()._asdict() == dict(name="Times", size=9, weight=1, flag0=0, flag1=1,
                                            flag2=0, flag3=0)
    assert vemdata.font("Arial", 12)._asdict() == dict(name="Arial", size=12, weight=500, flag0=0,
                                                       flag1=0, flag2=0, flag3=0)
    with pytest.raises(ValueError):
        vemdata.Font(flag1=256)


def test_scratches_are_nested_records():
    features = [vemdata.ScratchFeature(sort_key=key, head0=2**63) for key in (3, 1, 2)]
    group = vemdata.ScratchGroup("deep", features)
    assert group.label == "deep" and [f.sort_key for f in group] == [3, 1, 2]
    assert [f.sort_key for f in group.sorted()] == [1, 2, 3]
    assert [f.sort_key for f in group] == [3, 1, 2]
    layer = vemdata.ScratchLayer(vemdata.ScratchSettings(param1=2.5), [group, vemdata.ScratchGroup()])
    assert layer.settings.param1 == 2.5 and layer.settings.param3 == 255
    assert len(layer) == 2 and layer[0] == group and layer[-1] != group
    for index in [2, -3]:
        with pytest.raises(IndexError):
            layer[index]
    with pytest.raises(IndexError):
        vemdata.ScratchLayer()[0]
    with pytest.raises(TypeError):
        layer[0] = group
    assert vemdata.ScratchGroup("a", features) != vemdata.ScratchGroup("b", features)
    assert vemdata.ScratchLayer() != vemdata.ScratchLayer(vemdata.ScratchSettings(param0=1))
    for value in [group, layer, layer.settings, features[0]]:
        assert pickle.loads(pickle.dumps(value)) == value


OBJECTS = [
    ("VemVarArray", vemdata.VarArray([1, 2.5, "x", None])),
    ("Vem2DVarArray", vemdata.VarTable([(1,), ()])),
    ("VemPoint", vemdata.Point(1, 2)), ("Vem3DPoint", vemdata.Point3D(1, 2, 3)),
    ("VemPointArray", vemdata.PointArray([(1, 2)])), ("VemLine", vemdata.Line((1, 2), (3, 4))),
    ("VemCircle", vemdata.Circle((1, 2), 3)), ("VemContour", vemdata.Contour([(1, 2)])),
    ("VemContourArray", vemdata.ContourArray([[(1, 2)]])),
    ("VemImage", vemdata.Image(np.zeros((2, 3), np.uint8))),
    ("VemImageArray", vemdata.ImageArray([vemdata.Image(np.zeros((2, 3), np.uint8))])),
    ("VemMatrix", vemdata.Matrix.zeros(2, 2)), ("VemMatrixArray", vemdata.MatrixArray()),
    ("VemFeatureDescriptor", vemdata.FeatureDescriptor(np.zeros((2, 2)))),
    ("VemMorphStructure", vemdata.MorphStructure(1, 2, type=3, values=[[5, 6]])),
    ("VemROI", vemdata.circle((1, 2), 3)), ("VemROIArray", vemdata.ROIArray([vemdata.ROI()])),
    ("VemRegion", vemdata.Region(np.ones((2, 3), int))), ("VemRegionArray", vemdata.RegionArray()),
    ("VemFont", vemdata.Font()), ("VemOverlay", vemdata.Overlay.point((1, 2))),
    ("VemOverlayPath", vemdata.OverlayPath([vemdata.Overlay()])),
    ("Vem1DCode", vemdata.Code1D(value=1)), ("Vem1DCodeArray", vemdata.Code1DArray()),
    ("VemDMCode", vemdata.DMCode(value=1)), ("VemQRCode", vemdata.QRCode(value=1)),
    ("VemPDF417Code", vemdata.PDF417Code(value=1)), ("VemVCode", vemdata.VCode(value0=1)),
    ("VemFeaturePoint", vemdata.FeaturePoint(x=1)),
    ("VemScratchFeature", vemdata.ScratchFeature(tail=1)),
    ("VemScratchPrecessing", vemdata.ScratchSettings()),
    ("VemScratchGroup", vemdata.ScratchGroup("a")), ("VemScratchLayer", vemdata.ScratchLayer()),
    ("VemScratchLayerArray", vemdata.ScratchLayerArray([vemdata.ScratchLayer()])),
]


@pytest.mark.parametrize("name, value", OBJECTS, ids=[n for n, _ in OBJECTS])
def test_documents_are_those_of_cpp(name, value):
    document = json.loads(value.to_json())
    assert document["version"] == 1 and document["class"] == name
    for again in [vemdata.from_json(vemdata.to_json(value)), type(value).from_json(value.to_json()),
                  pickle.loads(pickle.dumps(value)), copy.copy(value), copy.deepcopy(value)]:
        assert type(again) is type(value)
        assert json.loads(again.to_json()) == document
    assert "vemdata" in repr(value) or repr(value).startswith(type(value).__name__ + "(")
    assert type(value).__module__ == "vemdata"
    for broken in ["{}", "[]", '{"version": 1, "class": "VemNothing"}',
                   value.to_json().replace('"version":1', '"version":2'), value.to_json()[:-1]]:
        with pytest.raises(ValueError):
            type(value).from_json(broken)


def test_a_document_is_told_word_for_word():
    assert json.loads(vemdata.circle((120, 80), 30.5).to_json()) == {
        "version": 1, "class": "VemROI", "type": "circle", "center": [120.0, 80.0], "radius": 30.5}
    for value in [3, 2.5, "x", None]:
        assert vemdata.from_json(vemdata.to_json(value)) == value
    for broken in ["", "{", '{"version": 1}', '{"version": 1, "class": "VemRLC"}',
                   '{"version": 1, "class": "draw"}', '{"version": 1, "class": "Vem"}']:
        with pytest.raises(ValueError):
            vemdata.from_json(broken)
    with pytest.raises(ValueError, match="/radius"):
        vemdata.ROI.from_json('{"version": 1, "type": "circle", "center": [1, 2], "radius": "x"}')
    with pytest.raises(TypeError):
        vemdata.to_json(object())
