// Runs any operations on an array of scratch layers, its layers and their groups, beside plain
// lists of the same. What must hold: after each operation all three levels have what the lists
// have; what was copied shares nothing with its source; settings and labels survive a Clear.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "ByteReader.h"
#include "Require.h"
#include "VemScratchGroup.h"
#include "support/Support.h"

namespace {

struct Group {
  int label = 0;          // 0 is none.
  std::vector<int> keys;  // Those of the features.
};
struct Layer {
  VemScratchPrecessing settings = {0, 9.0f, 0, 255, 0, 0};
  std::vector<Group> groups;
};

// --- A feature and a label are told by a number -------------------------------------------------

VemScratchFeature FeatureOf(int key) {
  const auto word = static_cast<std::uint64_t>(key) * 0x9e3779b97f4a7c15u;
  return {word, ~word, key, static_cast<std::uint32_t>(word >> 7)};
}
bool Is(const VemScratchFeature& feature, int key) {
  const VemScratchFeature expected = FeatureOf(key);
  return feature.Head0 == expected.Head0 && feature.Head1 == expected.Head1 &&
         feature.SortKey == expected.SortKey && feature.Tail == expected.Tail;
}

VemVar LabelOf(int label) {
  if (label == 0) return VemVar();
  if (label % 2 == 0) return VemVar(("label " + std::to_string(label)).c_str());
  return VemVar(label);
}

bool Is(const VemScratchPrecessing& a, const VemScratchPrecessing& b) {
  return a.Param0 == b.Param0 && a.Param1 == b.Param1 && a.Param2 == b.Param2 &&
         a.Param3 == b.Param3 && a.Param4 == b.Param4 && a.Param5 == b.Param5;
}

// --- What must hold -----------------------------------------------------------------------------

void RequireIs(const VemScratchGroup& group, const Group& expected) {
  Require(Same(group.Label, LabelOf(expected.label)), "a group has its label");
  Require(group.GetFeatureNum() == static_cast<int>(expected.keys.size()), "a group has ",
          group.GetFeatureNum(), " features, not ", expected.keys.size());
  for (int i = 0; i < group.GetFeatureNum(); ++i) {
    const int key = expected.keys[static_cast<std::size_t>(i)];
    Require(Is(group[i], key), "feature ", i, " is ", group[i].SortKey, ", not ", key);
  }
}

void RequireIs(const VemScratchLayer& layer, const Layer& expected) {
  Require(Is(layer.Settings, expected.settings), "a layer has its settings");
  Require(layer.GetGroupNum() == static_cast<int>(expected.groups.size()), "a layer has ",
          layer.GetGroupNum(), " groups, not ", expected.groups.size());
  for (int i = 0; i < layer.GetGroupNum(); ++i) {
    RequireIs(layer[i], expected.groups[static_cast<std::size_t>(i)]);
  }
}

void RequireIs(const VemScratchLayerArray& layers, const std::vector<Layer>& expected) {
  Require(layers.GetLayerNum() == static_cast<int>(expected.size()), "an array has ",
          layers.GetLayerNum(), " layers, not ", expected.size());
  for (int i = 0; i < layers.GetLayerNum(); ++i) {
    RequireIs(layers[i], expected[static_cast<std::size_t>(i)]);
  }
}

// --- The operations -----------------------------------------------------------------------------

/// One list of each level, beside its model.
class Scratches {
 public:
  explicit Scratches(ByteReader& in) : in_(in) {}

  void Perform() {
    for (int left = 80; left > 0 && !in_.IsEmpty(); --left) {
      switch (in_.Below(4)) {
        case 0:
          ChangeGroup();
          break;
        case 1:
          ChangeLayer();
          break;
        case 2:
          ChangeLayers();
          break;
        default:
          ChangeInPlace();
      }
      RequireIs(group_, plainGroup_);
      RequireIs(layer_, plainLayer_);
      RequireIs(layers_, plainLayers_);
    }
  }

 private:
  // A position to insert at, and one of an element; -1 where there is none.
  template <typename T>
  int Gap(const std::vector<T>& list) {
    return in_.Below(static_cast<int>(list.size()) + 1);
  }
  template <typename T>
  int Place(const std::vector<T>& list) {
    return list.empty() ? -1 : in_.Below(static_cast<int>(list.size()));
  }

  // The operations that all levels have.
  template <typename List, typename Element, typename T>
  void Change(int operation, List& list, Element& element, std::vector<T>& model, const T& value) {
    const int gap = Gap(model);
    const int place = Place(model);
    if (operation == 0 && model.size() < 12) {
      list.Append(element);
      model.push_back(value);
    } else if (operation == 1 && model.size() < 12) {
      list.Insert(gap, element);
      model.insert(model.begin() + gap, value);
    } else if (operation == 2 && place >= 0) {
      list.Remove(place);
      model.erase(model.begin() + place);
    } else if (operation == 3) {
      list.Clear();
      model.clear();
    } else if (operation == 4 && place >= 0 && model.size() < 12) {
      list.Append(list[place]);  // One of its own.
      model.push_back(T(model[static_cast<std::size_t>(place)]));
    } else if (operation == 5 && place >= 0) {
      list[place] = element;
      model[static_cast<std::size_t>(place)] = value;
    }
  }

  void ChangeGroup() {
    const int operation = in_.Below(10);
    const int key = in_.Between(-9, 20);
    VemScratchFeature feature = FeatureOf(key);
    Change(operation, group_, feature, plainGroup_.keys, key);
    if (operation == 6) {
      group_.Sort();
      std::sort(plainGroup_.keys.begin(), plainGroup_.keys.end());
    } else if (operation == 7) {
      plainGroup_.label = in_.Below(30);
      group_.Label = LabelOf(plainGroup_.label);
    } else if (operation == 8) {
      VemVar label = LabelOf(key + 9);
      group_ = VemScratchGroup(label);
      plainGroup_ = {key + 9, {}};
    } else if (operation == 9) {
      const VemScratchGroup copy(group_);
      group_ = copy;
      const VemScratchGroup& itself = group_;
      group_ = itself;
      RequireIs(copy, plainGroup_);
    }
  }

  void ChangeLayer() {
    const int operation = in_.Below(10);
    Change(operation, layer_, group_, plainLayer_.groups, plainGroup_);
    if (operation == 6) {
      const VemScratchPrecessing settings = {in_.Raw<int>(), 0.5f, in_.Byte(), 1, 2, in_.Byte()};
      layer_ = VemScratchLayer(settings);
      plainLayer_ = {settings, {}};
    } else if (operation == 7) {
      const VemScratchLayer copy(layer_);
      layer_ = copy;
      const VemScratchLayer& itself = layer_;
      layer_ = itself;
      RequireIs(copy, plainLayer_);
    } else if (operation >= 8 && !plainLayer_.groups.empty()) {
      const int position = operation == 8 ? in_.Raw<int>() : in_.Between(-2, 14);
      const int last = static_cast<int>(plainLayer_.groups.size()) - 1;
      const int nearest = std::clamp(position, 0, last);
      RequireIs(layer_[position], plainLayer_.groups[static_cast<std::size_t>(nearest)]);
    }
  }

  void ChangeLayers() {
    const int operation = in_.Below(8);
    Change(operation, layers_, layer_, plainLayers_, plainLayer_);
    if (operation < 6) return;
    const VemScratchLayerArray copy(layers_);
    layers_.Clear();
    RequireIs(layers_, {});
    layers_ = copy;
    const VemScratchLayerArray& itself = layers_;
    layers_ = itself;
    RequireIs(copy, plainLayers_);
  }

  // Takes parts out, and changes a group where it stands.
  void ChangeInPlace() {
    const int place = Place(plainLayers_);
    if (place < 0) return;
    Layer& plain = plainLayers_[static_cast<std::size_t>(place)];
    if (in_.Flag()) {
      layer_ = layers_[place];
      plainLayer_ = plain;
    }
    const int inner = Place(plain.groups);
    if (inner < 0) return;
    Group& plainGroup = plain.groups[static_cast<std::size_t>(inner)];
    const int key = in_.Below(30);
    layers_[place][inner].Append(FeatureOf(key));
    plainGroup.keys.push_back(key);
    if (plainGroup.keys.size() > 14) {
      layers_[place][inner].Clear();
      plainGroup.keys.clear();
    }
    if (in_.Flag()) {
      group_ = layers_[place][inner];
      plainGroup_ = plainGroup;
    }
  }

  ByteReader& in_;
  VemScratchGroup group_;
  VemScratchLayer layer_;
  VemScratchLayerArray layers_;
  Group plainGroup_;
  Layer plainLayer_;
  std::vector<Layer> plainLayers_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader in(data, size);
  Scratches(in).Perform();
  VemScratchFeature a = FeatureOf(in.Raw<int>());
  VemScratchFeature b = FeatureOf(in.Raw<int>());
  Require(SelfCompare(a, b) == (a.SortKey < b.SortKey), "features compare by their keys");
  return 0;
}
