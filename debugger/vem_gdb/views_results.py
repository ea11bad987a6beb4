"""Records with their fields, and the arrays of such records; the scratch hierarchy."""

from . import text
from .memory import LAYOUTS, Block, stored
from .views import Part, Parts, View, objects, shows
from .views_values import written

CODES = ("Vem1DCode", "VemDMCode", "VemQRCode", "VemPDF417Code", "VemVCode")


def field(record: Block, name: str, kind: str) -> Part:
    """A field's value. A word is plain bits, and shown as such."""
    if kind == "VemVar":
        return written(record.part(name))
    if kind == "word64":
        return "0x%x" % record.integer(name)
    if kind == "float32":
        return text.single(record.number(name))
    if kind == "float64":
        return text.plain(record.number(name))
    if kind in LAYOUTS:
        return record.part(name)
    return str(record.integer(name))


@shows("VemFont", "VemFeaturePoint", "VemScratchFeature", "VemScratchPrecessing", *CODES)
def _record(record: Block) -> View:
    def parts() -> Parts:
        for name, (_, kind) in LAYOUTS[record.name].fields.items():
            yield name, field(record, name, kind)

    return View("", parts)


@shows("VemFeaturePointArray", *(name + "Array" for name in CODES))
def _record_array(array: Block) -> View:
    element = array.name[: -len("Array")]
    return objects(stored(array, LAYOUTS[element].size), element)


@shows("VemScratchGroup")
def _group(group: Block) -> View:
    features = stored(group, LAYOUTS["VemScratchFeature"].size, "Features")
    title = "label %s, %s" % (written(group.part("Label")), text.count(len(features), "feature"))
    return objects(features, "VemScratchFeature", title)


@shows("VemScratchLayer")
def _layer(layer: Block) -> View:
    groups = stored(layer, LAYOUTS["VemScratchGroup"].size, "Groups")
    settings = [("Settings", layer.part("Settings"))]
    return objects(groups, "VemScratchGroup", text.count(len(groups), "group"), settings)


@shows("VemScratchLayerArray")
def _layer_array(array: Block) -> View:
    layers = stored(array, LAYOUTS["VemScratchLayer"].size, "layers_")
    return objects(layers, "VemScratchLayer")
