import ast
import contextlib
import os
import pathlib
import subprocess
import sys
import threading
import time

import numpy as np
import pytest

import vemdata

STUB = pathlib.Path(vemdata.__file__).with_name("__init__.pyi")


def stub_names():
    names = {}
    for node in ast.parse(STUB.read_text()).body:
        if isinstance(node, ast.ClassDef) and not node.name.startswith("_"):
            names[node.name] = {item.name for item in node.body if isinstance(item, ast.FunctionDef)}
            names[node.name] |= {item.target.id for item in node.body
                                 if isinstance(item, ast.AnnAssign)}
        elif isinstance(node, ast.FunctionDef):
            names[node.name] = None
    return names


def own_names(cls):
    hidden = {"__module__", "__doc__", "__init__", "__hash__", "__ne__", "__reduce__", "_fields",
              "__repr__", "__copy__", "__deepcopy__", "__eq__", "__array__", "_repr_png_",
              "_pybind11_conduit_v1_"}
    return {name for name in vars(cls) if name not in hidden}


def bases(tree):
    found = {}
    for node in tree.body:
        if isinstance(node, ast.ClassDef):
            found[node.name] = [b.value.id if isinstance(b, ast.Subscript) else b.id
                                for b in node.bases]
    return found


def test_stubs_tell_all_names_and_no_other():
    told = stub_names()
    there = {name for name in vemdata.__all__}
    assert set(told) == there
    tree = ast.parse(STUB.read_text())
    private = {node.name: {item.name for item in node.body if isinstance(item, ast.FunctionDef)}
               for node in tree.body if isinstance(node, ast.ClassDef) and node.name.startswith("_")}
    from_collections = {"__contains__", "__iter__", "__reversed__", "index", "count", "pop",
                        "remove", "reverse", "__iadd__"}
    for name, members in told.items():
        if members is None or name == "Bounds":
            continue
        todo = list(bases(tree)[name])
        while todo:
            base = todo.pop()
            members = members | private.get(base, set())
            todo += bases(tree).get(base, [])
        cls = getattr(vemdata, name)
        own = own_names(cls)
        assert own - from_collections - members == set(), name
        assert {m for m in members if not m.startswith("__")} - own - {"_fields"} - from_collections == set(), name


def test_everything_is_documented():
    for name in vemdata.__all__:
        thing = getattr(vemdata, name)
        assert thing.__doc__, name
        for member, value in vars(thing).items() if isinstance(thing, type) else ():
            if isinstance(value, property) and name not in (
                    "Code1D", "DMCode", "QRCode", "PDF417Code", "VCode", "FeaturePoint",
                    "ScratchFeature", "ScratchSettings", "Font", "Bounds"):
                assert value.__doc__, f"{name}.{member}"
    assert vemdata.__doc__ and vemdata.__version__.count(".") == 2


CLASSES = [thing for thing in map(vemdata.__dict__.get, vemdata.__all__)
           if isinstance(thing, type) and thing is not vemdata.Bounds]


@pytest.mark.parametrize("cls", CLASSES, ids=[cls.__name__ for cls in CLASSES])
def test_an_object_that_was_never_made_raises(cls):
    empty = cls.__new__(cls)
    for name in sorted(set(dir(cls)) & set(vars(cls))):
        if name in ("__init__", "from_json"):
            continue
        with contextlib.suppress(TypeError):
            thing = getattr(empty, name)
            if callable(thing):
                thing()
    with pytest.raises(TypeError, match=r"without __init__\(\)"):
        empty.to_json()
    with pytest.raises((TypeError, BufferError)):
        memoryview(empty)


@pytest.mark.parametrize("cls", CLASSES, ids=[cls.__name__ for cls in CLASSES])
def test_classes_are_not_derived_from(cls):
    with pytest.raises(TypeError, match="not an acceptable base type"):
        type("Derived", (cls,), {})


def let_go_in(work):
    """Whether another thread runs while `work` does: it counts, more than at rest it could."""
    counted = [0]
    stop = threading.Event()

    def count():
        while not stop.is_set():
            counted[0] += 1
            time.sleep(0)

    thread = threading.Thread(target=count)
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1000)  # Only who lets the lock go lets others run.
    try:
        thread.start()
        before = counted[0]
        work()
        return counted[0] - before
    finally:
        sys.setswitchinterval(interval)
        stop.set()
        thread.join()


def lets_go(work):
    """The same for a busy machine, which may not wake the other thread in time."""
    end = time.monotonic() + 60
    while time.monotonic() < end:
        if let_go_in(work) > 0:
            return True
        time.sleep(0.01)
    return False


def test_long_work_lets_other_threads_run(tmp_path):
    noise = (np.random.default_rng(1).random((2000, 2000)) < 0.5).astype(np.uint8)
    region = vemdata.Region(noise)
    other = vemdata.Region(noise[::-1].copy())
    image = vemdata.Image(noise * 200)
    circle = vemdata.circle((3000, 3000), 2900)
    path = vemdata.OverlayPath([vemdata.Overlay.of(region)])
    picture = np.zeros((2000, 2000), np.uint8)
    for work in [lambda: vemdata.components(noise), lambda: vemdata.outlines(noise),
                 lambda: vemdata.Region(noise), lambda: region | other, lambda: region.mask(),
                 lambda: circle.contours(), lambda: circle.mask(),
                 lambda: vemdata.draw(picture, path),
                 lambda: image.save(tmp_path / "noise.png"),
                 lambda: vemdata.Image.read(tmp_path / "noise.png")]:
        assert lets_go(work)


def test_threads_read_the_same_at_once():
    noise = np.random.default_rng(1).random((300, 300)) < 0.5
    region = vemdata.Region(noise)
    expected = region.mask()
    faults = []

    def work():
        for _ in range(20):
            parts = vemdata.components(noise)
            if sum(part.area for part in parts) != region.area:
                faults.append("components")
            if not np.array_equal((region | region).mask(), expected):
                faults.append("sets")

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert faults == []


LEAKS = """
import gc, os, pickle, sys
import numpy as np
import vemdata

mask = np.random.default_rng(1).random((12, 15)) < 0.5
roi = vemdata.circle((9, 9), 5)
path = vemdata.OverlayPath([vemdata.Overlay.circle((5, 5), 3)])
picture = np.zeros((12, 15), np.uint8)

def refused():
    try:
        vemdata.circle((1, 2), 0)
    except ValueError:
        pass

def changed():
    values = vemdata.VarArray([1, "text", None])
    values[1:] = ["other"]
    values.insert(0, 2.5)
    del values[0]

def shared():
    image = vemdata.Image(picture)
    np.asarray(image)
    images = vemdata.ImageArray([image])
    images[0] = image

calls = [
    lambda: vemdata.circle((9, 9), 5), lambda: roi.runs(), lambda: roi.contours(),
    lambda: roi.mask((12, 15)), lambda: roi.parameters, lambda: vemdata.Region(mask),
    lambda: vemdata.components(mask), lambda: vemdata.outlines(mask), refused, changed, shared,
    lambda: vemdata.Region(mask).contours(), lambda: vemdata.PointArray([(1, 2), (3, 4)])[::-1],
    lambda: np.asarray(vemdata.Contour([(1, 2), (3, 4)])), lambda: path[0].with_pen((1, 2, 3)),
    lambda: vemdata.draw(picture, path), lambda: vemdata.QRCode(value="x", points0=[(1, 2)]).points0,
    lambda: pickle.loads(pickle.dumps(roi)), lambda: repr(path),
]

def resident():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")

def rounds(count):
    for _ in range(count):
        for call in calls:
            call()

total = int(sys.argv[1])
rounds(500)
gc.collect()
before = resident()
rounds(total // len(calls))
gc.collect()
print(resident() - before)
"""


def test_a_million_calls_leave_memory_flat():
    calls = int(os.environ.get("VEMDATA_LEAK_CALLS", "1000000"))
    grown = int(subprocess.run([sys.executable, "-c", LEAKS, str(calls)], stdout=subprocess.PIPE,
                               check=True).stdout)
    print(f"{calls} calls, {grown} bytes more")
    # A byte lost in one call of twenty would be 50,000; an object would be megabytes.
    assert grown < 1 << 20
