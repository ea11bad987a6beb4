import copy
import gc
import hashlib
import io
import pickle
import sys
import weakref

import numpy as np
import pytest

import vemdata

TYPES = ["uint8", "int8", "uint16", "int16", "int32", "float32", "float64"]


@pytest.mark.parametrize("kind", TYPES)
@pytest.mark.parametrize("shape", [(4, 5), (4, 5, 3), (4, 5, 2), (1, 1), (3, 1, 4), (1, 7, 3)])
def test_images_share_both_ways(kind, shape, random):
    array = random.integers(0, 100, shape).astype(kind)
    image = vemdata.Image(array)
    assert (image.height, image.width) == shape[:2]
    assert image.channels == (shape[2] if len(shape) == 3 else 1)
    assert image.dtype == np.dtype(kind) and image.shape == shape
    view = np.asarray(image)
    assert view.dtype == array.dtype and view.shape == shape
    assert np.shares_memory(view, array) and np.array_equal(view, array)
    array[0, 0] = 101
    assert (view[0, 0] == 101).all()
    view[-1, -1] = 102
    assert (array[-1, -1] == 102).all()


def test_slices_are_shared_with_their_strides(random):
    whole = random.integers(0, 255, (40, 60, 3)).astype(np.uint8)
    for part in [whole[5:30], whole[:, 7:50], whole[3:9, 2:8], whole[::2], whole[4:5, 6:7]]:
        image = vemdata.Image(part)
        assert np.asarray(image).strides[0] == part.strides[0] or part.shape[0] == 1
        assert np.array_equal(np.asarray(image), part)
        np.asarray(image)[0, 0] = 7
        assert (part[0, 0] == 7).all()


def test_what_can_not_be_shared_raises_unless_it_is_copied(random):
    whole = random.integers(0, 255, (40, 60, 3)).astype(np.uint8)
    frozen = whole.copy()
    frozen.setflags(write=False)
    odd = np.frombuffer(bytearray(b"x" + bytes(48)), np.uint8)[1:].view(np.float32).reshape(3, 4)
    for part in [whole[:, ::2], whole[::-1], whole[:, :, ::-1], whole.transpose(1, 0, 2),
                 np.broadcast_to(whole[0], (9, 60, 3)), whole[:, :, :2], frozen, odd]:
        with pytest.raises(ValueError, match="copy=True"):
            vemdata.Image(part)
        copied = vemdata.Image(part, copy=True)
        assert np.array_equal(np.asarray(copied), part)
        assert not np.shares_memory(np.asarray(copied), part)
    for bad in [np.zeros(3), np.zeros((2, 2, 2, 2)), np.zeros((2, 2, 513))]:
        with pytest.raises(ValueError):
            vemdata.Image(bad)
    for bad in [np.zeros((2, 2), "int64"), np.zeros((2, 2), "uint32"), np.zeros((2, 2), "complex64"),
                np.zeros((2, 2), ">u2"), np.zeros((2, 2), "float16"), "image", None, [[1]]]:
        for how in [False, True]:
            with pytest.raises(TypeError):
                vemdata.Image(bad, copy=how)


class Tracked(np.ndarray):
    """An array that can be watched."""


def test_pixels_live_as_long_as_anything_shows_them():
    array = np.zeros((50, 60), np.uint8).view(Tracked)
    gone = weakref.ref(array)
    image = vemdata.Image(array)
    del array
    gc.collect()
    assert gone() is not None
    view = np.asarray(image)
    other = copy.copy(image)
    del image
    gc.collect()
    view[3, 4] = 9
    assert np.asarray(other)[3, 4] == 9
    del view
    gc.collect()
    assert gone() is not None
    del other
    gc.collect()
    assert gone() is None


def test_an_own_image_lives_as_long_as_its_view():
    view = np.asarray(vemdata.Image(np.full((20, 30), 5, np.uint8), copy=True))
    gc.collect()
    assert (view == 5).all() and view.flags.writeable


def test_no_reference_is_left_behind():
    array = np.zeros((5, 6), np.uint8)
    before = sys.getrefcount(array)
    for _ in range(1000):
        image = vemdata.Image(array)
        np.asarray(image)
        copy.copy(image)
        vemdata.ImageArray([image])
    del image
    gc.collect()
    assert sys.getrefcount(array) == before


def test_an_empty_image_is_empty_everywhere():
    for image in [vemdata.Image(), vemdata.Image(np.zeros((0, 5), np.uint8))]:
        assert (image.width, image.height) == (0, 0)
        assert np.asarray(image).shape == (0, 0)
        assert image._repr_png_() is None
        with pytest.raises(ValueError, match="empty"):
            image.save("never.png")


def test_copies_do_not_share(random):
    image = vemdata.Image(random.integers(0, 9, (4, 5)).astype(np.uint8))
    for other in [image.copy(), copy.deepcopy(image), pickle.loads(pickle.dumps(image))]:
        assert other == image
        np.asarray(other)[0, 0] += 1
        assert other != image


def test_files_hold_what_was_saved(tmp_path, random):
    for channels in [(), (3,)]:
        array = random.integers(0, 255, (7, 9) + channels).astype(np.uint8)
        path = tmp_path / "Bild ä.png"
        vemdata.Image(array).save(path)
        assert np.array_equal(np.asarray(vemdata.Image.read(path)), array)
        vemdata.Image(array).save(str(path), compression=10)
        assert np.array_equal(np.asarray(vemdata.Image.read(str(path))), array)


def test_files_that_fail_raise(tmp_path, random):
    image = vemdata.Image(random.integers(0, 255, (7, 9)).astype(np.uint8))
    with pytest.raises(FileNotFoundError):
        vemdata.Image.read(tmp_path / "missing.png")
    (tmp_path / "broken.png").write_bytes(b"no picture")
    with pytest.raises(ValueError, match="no picture"):
        vemdata.Image.read(tmp_path / "broken.png")
    with pytest.raises(FileNotFoundError):
        image.save(tmp_path / "missing" / "a.png")
    for name in ["a", "abc", "picture", "picture.tiff", "picture.unknown", "x.zzz"]:
        with pytest.raises(ValueError):
            image.save(tmp_path / name)
    for bad in [-1, 11]:
        with pytest.raises(ValueError):
            image.save(tmp_path / "a.png", compression=bad)
    with pytest.raises(TypeError):
        image.save(5)
    with pytest.raises(ValueError):
        image.save("a\0b.png")
    with pytest.raises(ValueError):
        vemdata.Image(np.zeros((4, 4, 2), np.uint8)).save(tmp_path / "two.png")


@pytest.mark.parametrize("kind", TYPES)
def test_matrices_share_both_ways(kind):
    array = np.arange(12).reshape(3, 4).astype(kind)
    matrix = vemdata.Matrix(array)
    assert (matrix.rows, matrix.cols) == (3, 4) == matrix.shape
    matrix[1, -1] = 77
    assert array[1, 3] == 77 and matrix[1, 3] == 77
    assert type(matrix[0, 0]) is (float if kind.startswith("f") else int)
    np.asarray(matrix)[2, 0] = 5
    assert array[2, 0] == 5
    matrix.fill(6)
    assert (array == 6).all()


def test_elements_of_a_matrix_are_tested():
    matrix = vemdata.Matrix.zeros(2, 3, "uint8")
    for at in [(2, 0), (0, 3), (-3, 0), (0, -4), (2**63, 0)]:
        with pytest.raises(IndexError):
            matrix[at]
        with pytest.raises(IndexError):
            matrix[at] = 1
    for bad in [256, -1, 2**70]:
        with pytest.raises(ValueError):
            matrix[0, 0] = bad
        with pytest.raises(ValueError):
            matrix.fill(bad)
    for bad in [1.5, "1", None]:
        with pytest.raises(TypeError):
            matrix[0, 0] = bad
    with pytest.raises(TypeError):
        matrix[0]
    single = vemdata.Matrix.zeros(1, 1, np.float32)
    with pytest.raises(ValueError):
        single[0, 0] = 1e300
    single[0, 0] = float("inf")
    assert single[0, 0] == float("inf")
    assert np.asarray(matrix).max() == 0


def test_matrices_that_are_none_raise():
    whole = np.zeros((6, 8))
    with pytest.raises(ValueError, match="copy=True"):
        vemdata.Matrix(whole[:, 2:5])
    assert vemdata.Matrix(whole[:, 2:5], copy=True).shape == (6, 3)
    for bad in [np.zeros((2, 2, 2)), np.zeros(3)]:
        with pytest.raises(ValueError):
            vemdata.Matrix(bad)
    for rows, cols in [(0, 3), (3, -1), (2**31, 1)]:
        with pytest.raises(ValueError):
            vemdata.Matrix.zeros(rows, cols)


def test_descriptors_copy_their_numbers(random):
    array = random.random((5, 32)).astype(np.float32)
    descriptor = vemdata.FeatureDescriptor(array[:, ::2])
    assert (descriptor.rows, descriptor.cols) == (5, 16)
    assert np.array_equal(np.asarray(descriptor), array[:, ::2])
    assert pickle.loads(pickle.dumps(descriptor)) == descriptor


def test_structures_refuse_with_a_reason():
    custom = vemdata.MorphStructure(2, 3, type=3, values=[[1, 0, 1], [0, -5, 0]])
    assert custom.values.tolist() == [[1, 0, 1], [0, -5, 0]]
    again = pickle.loads(pickle.dumps(custom))
    assert again.values.tolist() == custom.values.tolist() and again == custom
    assert copy.deepcopy(custom) is custom
    plain = vemdata.MorphStructure(rows=3, cols=5, anchor_x=4, anchor_y=2, type=1)
    assert (plain.rows, plain.cols, plain.anchor_x, plain.anchor_y, plain.type) == (3, 5, 4, 2, 1)
    assert plain.values is None and vemdata.MorphStructure().type == 4
    for arguments in [dict(rows=0, cols=1), dict(rows=1, cols=0), dict(rows=2, cols=2, anchor_x=2),
                      dict(rows=2, cols=2, anchor_y=-2), dict(rows=2, cols=2, type=-1),
                      dict(rows=2, cols=2, type=3), dict(rows=2, cols=2, values=[[1, 2], [3, 4]]),
                      dict(rows=2, cols=2, type=3, values=[[1, 2]]),
                      dict(rows=1, cols=1, type=3, values=[[2**31]])]:
        with pytest.raises(ValueError):
            vemdata.MorphStructure(**arguments)
    with pytest.raises(TypeError):
        vemdata.MorphStructure(1, 1, type=3, values=[[1.5]])


@pytest.mark.parametrize("cls", [vemdata.Image, vemdata.Matrix])
def test_buffers_of_packed_rows_are_read_by_everything(cls, random):
    array = random.integers(0, 255, (4, 6)).astype(np.int16)
    held = cls(array)
    assert bytes(held) == array.tobytes() and memoryview(held).tolist() == array.tolist()
    assert np.array_equal(np.frombuffer(held, np.int16), array.ravel())
    assert io.BytesIO(held).getvalue() == array.tobytes()
    assert hashlib.sha1(held).digest() == hashlib.sha1(array.tobytes()).digest()


def test_rows_that_lie_apart_are_never_taken_for_packed_ones(random):
    part = random.integers(0, 255, (6, 9)).astype(np.uint8)[1:5, 2:7]
    image = vemdata.Image(part)
    assert bytes(image) == part.tobytes() and memoryview(image).tolist() == part.tolist()
    for read in [lambda: io.BytesIO().write(image), lambda: hashlib.sha1(image),
                 lambda: np.frombuffer(image, np.uint8)]:
        with pytest.raises(BufferError):
            read()


def test_a_buffer_outlives_its_image(random):
    array = random.integers(0, 255, (30, 40)).astype(np.uint8)
    view = memoryview(vemdata.Image(array, copy=True))
    gc.collect()
    assert view.tolist() == array.tolist()
    view.release()
