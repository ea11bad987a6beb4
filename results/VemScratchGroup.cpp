#include "VemScratchGroup.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>

#include "values/TypedArray.h"

// Inspections write these fields in place.
static_assert(offsetof(VemScratchFeature, Head0) == 0);
static_assert(offsetof(VemScratchFeature, Head1) == 8);
static_assert(offsetof(VemScratchFeature, SortKey) == 16);
static_assert(offsetof(VemScratchFeature, Tail) == 20);
static_assert(sizeof(VemScratchFeature) == 24);
static_assert(offsetof(VemScratchPrecessing, Param0) == 0);
static_assert(offsetof(VemScratchPrecessing, Param1) == 4);
static_assert(offsetof(VemScratchPrecessing, Param2) == 8);
static_assert(offsetof(VemScratchPrecessing, Param3) == 12);
static_assert(offsetof(VemScratchPrecessing, Param4) == 16);
static_assert(offsetof(VemScratchPrecessing, Param5) == 20);
static_assert(sizeof(VemScratchPrecessing) == 24);
static_assert(std::is_trivial<VemScratchFeature>::value, "moved as memory");
static_assert(std::is_trivial<VemScratchPrecessing>::value, "moved as memory");

// The classes below mix public and private fields, for which C++ leaves it to the compiler whether
// offsets may be asked for. This one tells them.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace {

// No position is tested.
template <typename T>
void InsertAt(std::vector<T>& elements, int position, const T& element) {
  elements.insert(elements.begin() + position, element);
}

template <typename T>
void RemoveAt(std::vector<T>& elements, int position) {
  elements.erase(elements.begin() + position);
}

// Destroys the elements before it copies the others; the storage is kept.
template <typename T>
void CopyAfresh(std::vector<T>& elements, const std::vector<T>& others) {
  elements.clear();
  elements.insert(elements.end(), others.begin(), others.end());
}

}  // namespace

bool SelfCompare(VemScratchFeature& a, VemScratchFeature& b) { return a.SortKey < b.SortKey; }

VemScratchGroup::VemScratchGroup() : Features(new std::vector<VemScratchFeature>) {
  static_assert(offsetof(VemScratchGroup, Label) == 0);
  static_assert(offsetof(VemScratchGroup, Features) == 16);
  static_assert(sizeof(VemScratchGroup) == 24);
}
VemScratchGroup::VemScratchGroup(VemVar& label) : VemScratchGroup() { Label = label; }
VemScratchGroup::VemScratchGroup(const VemScratchGroup& other) : VemScratchGroup() {
  Label = other.Label;
  *Features = *other.Features;
}
VemScratchGroup& VemScratchGroup::operator=(VemScratchGroup other) {
  Label = other.Label;
  std::swap(Features, other.Features);
  return *this;
}
VemScratchGroup::~VemScratchGroup() { delete Features; }

void VemScratchGroup::Append(VemScratchFeature feature) { Features->push_back(feature); }
void VemScratchGroup::Insert(int position, VemScratchFeature feature) {
  InsertAt(*Features, position, feature);
}
void VemScratchGroup::Remove(int position) { RemoveAt(*Features, position); }
void VemScratchGroup::Clear() { typed_array::Clear(*Features); }
void VemScratchGroup::Sort() { std::sort(Features->begin(), Features->end(), SelfCompare); }

int VemScratchGroup::GetFeatureNum() const { return typed_array::Length(*Features); }

VemScratchFeature& VemScratchGroup::operator[](int position) {
  return typed_array::At(*Features, position);
}
const VemScratchFeature& VemScratchGroup::operator[](int position) const {
  return typed_array::At(*Features, position);
}

VemScratchLayer::VemScratchLayer() : VemScratchLayer(VemScratchPrecessing{0, 9.0f, 0, 255, 0, 0}) {}
VemScratchLayer::VemScratchLayer(VemScratchPrecessing settings)
    : Settings(settings), Groups(new std::vector<VemScratchGroup>) {
  static_assert(offsetof(VemScratchLayer, Settings) == 0);
  static_assert(offsetof(VemScratchLayer, Groups) == 24);
  static_assert(sizeof(VemScratchLayer) == 32);
}
VemScratchLayer::VemScratchLayer(const VemScratchLayer& other) : VemScratchLayer(other.Settings) {
  *Groups = *other.Groups;
}
VemScratchLayer& VemScratchLayer::operator=(const VemScratchLayer& other) {
  if (this == &other) return *this;
  Settings = other.Settings;
  CopyAfresh(*Groups, *other.Groups);
  return *this;
}
VemScratchLayer::~VemScratchLayer() { delete Groups; }

void VemScratchLayer::Append(VemScratchGroup group) { Groups->push_back(group); }
void VemScratchLayer::Insert(int position, VemScratchGroup group) {
  InsertAt(*Groups, position, group);
}
void VemScratchLayer::Remove(int position) { RemoveAt(*Groups, position); }
// Unlike a group, layers and their arrays keep the storage.
void VemScratchLayer::Clear() { Groups->clear(); }

int VemScratchLayer::GetGroupNum() const { return typed_array::Length(*Groups); }

VemScratchGroup& VemScratchLayer::operator[](int position) {
  if (Groups->empty()) return typed_array::InvalidReference<VemScratchGroup>();
  return typed_array::At(*Groups, std::clamp(position, 0, GetGroupNum() - 1));
}
const VemScratchGroup& VemScratchLayer::operator[](int position) const {
  return typed_array::At(*Groups, position);
}

VemScratchLayerArray::VemScratchLayerArray() : layers_(new std::vector<VemScratchLayer>) {
  static_assert(sizeof(VemScratchLayerArray) == 8);
}
VemScratchLayerArray::VemScratchLayerArray(const VemScratchLayerArray& other)
    : VemScratchLayerArray() {
  *layers_ = *other.layers_;
}
VemScratchLayerArray& VemScratchLayerArray::operator=(const VemScratchLayerArray& other) {
  if (this != &other) CopyAfresh(*layers_, *other.layers_);
  return *this;
}
VemScratchLayerArray::~VemScratchLayerArray() { delete layers_; }

void VemScratchLayerArray::Append(VemScratchLayer& layer) { layers_->push_back(layer); }
void VemScratchLayerArray::Insert(int position, VemScratchLayer& layer) {
  InsertAt(*layers_, position, layer);
}
void VemScratchLayerArray::Remove(int position) { RemoveAt(*layers_, position); }
void VemScratchLayerArray::Clear() { layers_->clear(); }

int VemScratchLayerArray::GetLayerNum() const { return typed_array::Length(*layers_); }

VemScratchLayer& VemScratchLayerArray::operator[](int position) {
  return typed_array::At(*layers_, position);
}
const VemScratchLayer& VemScratchLayerArray::operator[](int position) const {
  return typed_array::At(*layers_, position);
}
