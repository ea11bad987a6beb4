#include "VemScratchGroup.h"

#include <algorithm>
#include <climits>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/HeapCounter.h"
#include "support/PrivateAccess.h"
#include "support/Support.h"

struct PrivateVemScratchGroupFeatures {
  using Type = std::vector<VemScratchFeature>* VemScratchGroup::*;
  friend Type PrivateOf(PrivateVemScratchGroupFeatures);
};
template struct PrivateAccess<PrivateVemScratchGroupFeatures, &VemScratchGroup::Features>;

struct PrivateVemScratchLayerGroups {
  using Type = std::vector<VemScratchGroup>* VemScratchLayer::*;
  friend Type PrivateOf(PrivateVemScratchLayerGroups);
};
template struct PrivateAccess<PrivateVemScratchLayerGroups, &VemScratchLayer::Groups>;

struct PrivateVemScratchLayerArrayLayers {
  using Type = std::vector<VemScratchLayer>* VemScratchLayerArray::*;
  friend Type PrivateOf(PrivateVemScratchLayerArrayLayers);
};
template struct PrivateAccess<PrivateVemScratchLayerArrayLayers, &VemScratchLayerArray::layers_>;

namespace {

using Feature = VemScratchFeature;
using Group = VemScratchGroup;
using Layer = VemScratchLayer;
using Layers = VemScratchLayerArray;
using Settings = VemScratchPrecessing;

static_assert(sizeof(Feature) == 24 && std::is_trivial_v<Feature>);
static_assert(offsetof(Feature, Head1) == 8 && offsetof(Feature, SortKey) == 16 &&
              offsetof(Feature, Tail) == 20);
static_assert(std::is_same_v<decltype(Feature::Head0), std::uint64_t> &&
              std::is_same_v<decltype(Feature::Head1), std::uint64_t> &&
              std::is_same_v<decltype(Feature::SortKey), int> &&
              std::is_same_v<decltype(Feature::Tail), std::uint32_t>);
static_assert(sizeof(Settings) == 24 && std::is_trivial_v<Settings>);
static_assert(std::is_same_v<decltype(Settings::Param0), int> &&
              std::is_same_v<decltype(Settings::Param1), float> &&
              std::is_same_v<decltype(Settings::Param2), int> &&
              std::is_same_v<decltype(Settings::Param3), int> &&
              std::is_same_v<decltype(Settings::Param4), int> &&
              std::is_same_v<decltype(Settings::Param5), int>);
static_assert(sizeof(Group) == 24 && sizeof(Layer) == 32 && sizeof(Layers) == 8);
static_assert(std::is_same_v<decltype(&SelfCompare), bool (*)(Feature&, Feature&)>);
static_assert(std::is_same_v<decltype(&Group::operator=), Group& (Group::*)(Group)>);
static_assert(std::is_same_v<decltype(&Group::Append), void (Group::*)(Feature)>);
static_assert(std::is_same_v<decltype(&Group::Insert), void (Group::*)(int, Feature)>);
static_assert(std::is_same_v<decltype(&Group::Remove), void (Group::*)(int)>);
static_assert(std::is_same_v<decltype(&Group::Clear), void (Group::*)()>);
static_assert(std::is_same_v<decltype(&Group::Sort), void (Group::*)()>);
static_assert(std::is_same_v<decltype(&Group::GetFeatureNum), int (Group::*)() const>);
static_assert(std::is_same_v<decltype(&Layer::operator=), Layer& (Layer::*)(const Layer&)>);
static_assert(std::is_same_v<decltype(&Layer::Append), void (Layer::*)(Group)>);
static_assert(std::is_same_v<decltype(&Layer::Insert), void (Layer::*)(int, Group)>);
static_assert(std::is_same_v<decltype(&Layer::Remove), void (Layer::*)(int)>);
static_assert(std::is_same_v<decltype(&Layer::Clear), void (Layer::*)()>);
static_assert(std::is_same_v<decltype(&Layer::GetGroupNum), int (Layer::*)() const>);
static_assert(std::is_same_v<decltype(&Layers::operator=), Layers& (Layers::*)(const Layers&)>);
static_assert(std::is_same_v<decltype(&Layers::Append), void (Layers::*)(Layer&)>);
static_assert(std::is_same_v<decltype(&Layers::Insert), void (Layers::*)(int, Layer&)>);
static_assert(std::is_same_v<decltype(&Layers::Remove), void (Layers::*)(int)>);
static_assert(std::is_same_v<decltype(&Layers::Clear), void (Layers::*)()>);
static_assert(std::is_same_v<decltype(&Layers::GetLayerNum), int (Layers::*)() const>);
static_assert(std::is_same_v<decltype(std::declval<Group&>()[0]), Feature&> &&
              std::is_same_v<decltype(std::declval<Layer&>()[0]), Group&> &&
              std::is_same_v<decltype(std::declval<Layers&>()[0]), Layer&>);
static_assert(std::is_same_v<decltype(std::declval<const Group&>()[0]), const Feature&> &&
              std::is_same_v<decltype(std::declval<const Layer&>()[0]), const Group&> &&
              std::is_same_v<decltype(std::declval<const Layers&>()[0]), const Layer&>);
// Growth copies the groups: they have no way to move.
static_assert(!std::is_nothrow_move_constructible_v<Group>);
static_assert(std::is_convertible_v<VemVar&, Group> && std::is_convertible_v<Settings, Layer>);

std::vector<Feature>* StoreOf(Group& group) {
  return group.*PrivateOf(PrivateVemScratchGroupFeatures());
}
std::vector<Group>* StoreOf(Layer& layer) {
  return layer.*PrivateOf(PrivateVemScratchLayerGroups());
}
std::vector<Layer>* StoreOf(Layers& layers) {
  return layers.*PrivateOf(PrivateVemScratchLayerArrayLayers());
}

// Elements by number: a feature; a group of up to three features under a text; a layer of up to
// three groups. Those of different numbers differ.

Feature MakeFeature(int number) {
  const auto word = static_cast<std::uint64_t>(number);
  return {word << 40, ~word, number, static_cast<std::uint32_t>(number) * 3};
}

Group MakeGroup(int number) {
  VemVar label(("label " + std::to_string(number)).c_str());
  Group group(label);
  for (int i = 0; i < number % 4; ++i) group.Append(MakeFeature(number + i));
  return group;
}

Layer MakeLayer(int number) {
  Layer layer(Settings{number, static_cast<float>(number) / 4, 3, 4, 5, -number});
  for (int i = 0; i < number % 4; ++i) layer.Append(MakeGroup(number + i));
  return layer;
}

bool Same(const Feature& a, const Feature& b) { return std::memcmp(&a, &b, sizeof(a)) == 0; }

bool Same(const Group& a, const Group& b) {
  if (a.GetFeatureNum() != b.GetFeatureNum() || !Same(a.Label, b.Label)) return false;
  for (int i = 0; i < a.GetFeatureNum(); ++i) {
    if (!Same(a[i], b[i])) return false;
  }
  return true;
}

bool Same(const Layer& a, const Layer& b) {
  if (a.GetGroupNum() != b.GetGroupNum()) return false;
  if (std::memcmp(&a.Settings, &b.Settings, sizeof(Settings)) != 0) return false;
  for (int i = 0; i < a.GetGroupNum(); ++i) {
    if (!Same(a[i], b[i])) return false;
  }
  return true;
}

// The three containers seen as one kind, for the tests that hold on each level.

struct GroupLevel {
  using Container = Group;
  using Element = Feature;
  static Element Make(int number) { return MakeFeature(number); }
  static int Length(const Group& group) { return group.GetFeatureNum(); }
};

struct LayerLevel {
  using Container = Layer;
  using Element = Group;
  static Element Make(int number) { return MakeGroup(number); }
  static int Length(const Layer& layer) { return layer.GetGroupNum(); }
};

struct ArrayLevel {
  using Container = Layers;
  using Element = Layer;
  static Element Make(int number) { return MakeLayer(number); }
  static int Length(const Layers& layers) { return layers.GetLayerNum(); }
};

using Numbers = std::vector<int>;

template <typename Level>
typename Level::Container ContainerOf(const Numbers& numbers) {
  typename Level::Container container;
  for (const int number : numbers) {
    typename Level::Element element = Level::Make(number);
    container.Append(element);
  }
  return container;
}

template <typename Level>
testing::AssertionResult Holds(typename Level::Container& container, const Numbers& numbers) {
  const typename Level::Container& constant = container;
  if (Level::Length(constant) != static_cast<int>(numbers.size())) {
    return testing::AssertionFailure() << Level::Length(constant) << " elements";
  }
  for (int i = 0; i < Level::Length(constant); ++i) {
    const auto expected = Level::Make(numbers[static_cast<std::size_t>(i)]);
    if (&container[i] != &constant[i] || !Same(constant[i], expected)) {
      return testing::AssertionFailure() << "element " << i;
    }
  }
  return testing::AssertionSuccess();
}

template <typename Level>
class VemScratchLevel : public testing::Test {};
using Levels = testing::Types<GroupLevel, LayerLevel, ArrayLevel>;
TYPED_TEST_SUITE(VemScratchLevel, Levels);

TYPED_TEST(VemScratchLevel, DefaultHasNoElements) {
  typename TypeParam::Container container;
  EXPECT_TRUE(Holds<TypeParam>(container, {}));
}

TYPED_TEST(VemScratchLevel, ElementsGoInAsCopies) {
  typename TypeParam::Container container;
  auto element = TypeParam::Make(1);
  container.Append(element);
  element = TypeParam::Make(2);
  container.Insert(0, element);
  element = TypeParam::Make(3);
  EXPECT_TRUE(Holds<TypeParam>(container, {2, 1}));
}

TYPED_TEST(VemScratchLevel, InsertAtTheNumberOfElementsAddsAtTheEnd) {
  typename TypeParam::Container container;
  Numbers expected;
  for (int number = 1; number <= 5; ++number) {
    auto element = TypeParam::Make(number);
    container.Insert(TypeParam::Length(container), element);
    expected.push_back(number);
    EXPECT_TRUE(Holds<TypeParam>(container, expected));
  }
}

TYPED_TEST(VemScratchLevel, InsertAndRemoveAtEveryPosition) {
  for (int position = 0; position <= 3; ++position) {
    auto container = ContainerOf<TypeParam>({1, 2, 3});
    Numbers expected = {1, 2, 3};
    auto element = TypeParam::Make(9);
    container.Insert(position, element);
    expected.insert(expected.begin() + position, 9);
    EXPECT_TRUE(Holds<TypeParam>(container, expected)) << position;
    container.Remove(position);
    EXPECT_TRUE(Holds<TypeParam>(container, {1, 2, 3})) << position;
  }
}

TYPED_TEST(VemScratchLevel, TakesElementsOfItsOwn) {
  auto container = ContainerOf<TypeParam>({1, 2, 3, 5});  // Fills the storage.
  container.Append(container[1]);
  container.Insert(0, container[4]);
  EXPECT_TRUE(Holds<TypeParam>(container, {2, 1, 2, 3, 5, 2}));
}

TYPED_TEST(VemScratchLevel, ReferencesReachTheElementInPlace) {
  auto container = ContainerOf<TypeParam>({1, 2, 3});
  container[1] = TypeParam::Make(7);
  EXPECT_TRUE(Holds<TypeParam>(container, {1, 7, 3}));
  EXPECT_EQ(&container[2], StoreOf(container)->data() + 2);
}

TYPED_TEST(VemScratchLevel, CopiesShareNothing) {
  for (const Numbers& numbers : {Numbers{}, Numbers{1}, Numbers{3, 2, 1, 7}}) {
    auto source = ContainerOf<TypeParam>(numbers);
    typename TypeParam::Container copy(source);
    auto target = ContainerOf<TypeParam>({8, 9, 11, 15, 19});
    auto& result = (target = source);
    EXPECT_EQ(&result, &target);
    EXPECT_TRUE(Holds<TypeParam>(source, numbers));
    for (int i = 0; i < TypeParam::Length(source); ++i) source[i] = TypeParam::Make(77);
    source.Clear();
    EXPECT_TRUE(Holds<TypeParam>(copy, numbers));
    EXPECT_TRUE(Holds<TypeParam>(target, numbers));
    target.Clear();
    EXPECT_TRUE(Holds<TypeParam>(copy, numbers));
  }
}

TYPED_TEST(VemScratchLevel, SelfAssignmentChangesNothing) {
  for (const Numbers& numbers : {Numbers{}, Numbers{1}, Numbers{3, 2, 1, 7}}) {
    auto container = ContainerOf<TypeParam>(numbers);
    const auto& alias = container;
    auto& result = (container = alias);
    EXPECT_EQ(&result, &container);
    EXPECT_TRUE(Holds<TypeParam>(container, numbers));
  }
}

TYPED_TEST(VemScratchLevel, ClearLeavesAContainerInUse) {
  auto container = ContainerOf<TypeParam>({1, 2, 3});
  for (int round = 0; round < 2; ++round) {
    container.Clear();
    EXPECT_TRUE(Holds<TypeParam>(container, {}));
  }
  auto element = TypeParam::Make(4);
  container.Append(element);
  EXPECT_TRUE(Holds<TypeParam>(container, {4}));
}

TYPED_TEST(VemScratchLevel, RandomOperationsAgreeWithAPlainList) {
  std::mt19937 random(20240611);
  const auto draw = [&random](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  typename TypeParam::Container container;
  Numbers numbers;
  for (int step = 0; step < 10000; ++step) {
    const int length = static_cast<int>(numbers.size());
    const int number = draw(1, 99);
    auto element = TypeParam::Make(number);
    switch (draw(0, 5)) {
      case 0:
        container.Append(element);
        numbers.push_back(number);
        break;
      case 1: {
        const int position = draw(0, length);
        container.Insert(position, element);
        numbers.insert(numbers.begin() + position, number);
        break;
      }
      case 2:
      case 3: {
        if (length == 0) break;
        const int position = draw(0, length - 1);
        container.Remove(position);
        numbers.erase(numbers.begin() + position);
        break;
      }
      case 4: {
        if (length == 0) break;
        const int position = draw(0, length - 1);
        container[position] = element;
        numbers[static_cast<std::size_t>(position)] = number;
        break;
      }
      default: {
        const typename TypeParam::Container copy(container);
        if (draw(0, 20) == 0) {
          container.Clear();
          numbers.clear();
        } else {
          container = copy;
        }
      }
    }
    ASSERT_TRUE(Holds<TypeParam>(container, numbers)) << "after step " << step;
  }
}

// --- What holds on one level only ---

TEST(VemScratchGroup, LabelIsNoneOrACopy) {
  const Group none;
  EXPECT_EQ(none.Label.ValType(), VemVarNone);
  VemVar text("scratch");
  const Group labelled(text);
  EXPECT_STREQ(labelled.Label.S(), "scratch");
  EXPECT_NE(labelled.Label.S(), text.S());
  EXPECT_EQ(labelled.GetFeatureNum(), 0);
}

TEST(VemScratchGroup, CopiesTakeTheLabelAlong) {
  Group source = MakeGroup(7);
  const Group copy(source);
  Group target = MakeGroup(2);
  target = source;
  source.Label = VemVar("changed");
  EXPECT_TRUE(Same(copy, MakeGroup(7)));
  EXPECT_TRUE(Same(target, MakeGroup(7)));
}

// The unlike ways to clear: only a group gives its storage back.
TEST(VemScratchGroup, ClearKeepsTheLabelAndGivesTheStorageBack) {
  Group group = MakeGroup(7);
  ASSERT_GT(StoreOf(group)->capacity(), 0u);
  group.Clear();
  EXPECT_STREQ(group.Label.S(), "label 7");
  EXPECT_EQ(StoreOf(group)->capacity(), 0u);
}

TEST(VemScratchLayer, ClearKeepsTheSettingsAndTheStorage) {
  Layer layer = MakeLayer(7);
  const std::size_t capacity = StoreOf(layer)->capacity();
  ASSERT_GE(capacity, 3u);
  layer.Clear();
  EXPECT_EQ(StoreOf(layer)->capacity(), capacity);
  EXPECT_EQ(layer.Settings.Param0, 7);
  EXPECT_EQ(layer.Settings.Param5, -7);
}

TEST(VemScratchLayerArray, ClearKeepsTheStorage) {
  Layers layers = ContainerOf<ArrayLevel>({1, 2, 3, 4, 5});
  const std::size_t capacity = StoreOf(layers)->capacity();
  ASSERT_GE(capacity, 5u);
  layers.Clear();
  EXPECT_EQ(StoreOf(layers)->capacity(), capacity);
}

TEST(VemScratchGroup, SelfCompareOrdersSignedKeysAlone) {
  const struct {
    int a, b;
    bool expected;
  } cases[] = {{1, 2, true},         {2, 1, false},       {2, 2, false},
               {-1, 0, true},        {0, -1, false},      {INT_MIN, INT_MAX, true},
               {-1, INT_MIN, false}, {INT_MAX, -1, false}};
  for (const auto& c : cases) {
    Feature a = {9, 9, c.a, 9};
    Feature b = {1, 1, c.b, 1};
    EXPECT_EQ(SelfCompare(a, b), c.expected) << c.a << ", " << c.b;
  }
}

Numbers KeysOf(const Group& group) {
  Numbers keys;
  for (int i = 0; i < group.GetFeatureNum(); ++i) keys.push_back(group[i].SortKey);
  return keys;
}

TEST(VemScratchGroup, SortPutsKeysInGrowingOrder) {
  for (const Numbers& keys :
       {Numbers{}, Numbers{5}, Numbers{3, 1, 2}, Numbers{2, 2, 1}, Numbers{0, -1, INT_MIN, INT_MAX},
        Numbers{1, 2, 3, 4}, Numbers{4, 3, 2, 1}}) {
    Group group = ContainerOf<GroupLevel>(keys);
    Numbers expected = keys;
    std::sort(expected.begin(), expected.end());
    group.Sort();
    EXPECT_EQ(KeysOf(group), expected);
    EXPECT_TRUE(Holds<GroupLevel>(group, expected));
  }
}

// Longer than any shortcut for short lists; each feature keeps its payload.
TEST(VemScratchGroup, SortKeepsEveryFeature) {
  std::mt19937 random(20240611);
  Group group;
  using Fields = std::tuple<int, std::uint64_t, std::uint64_t, std::uint32_t>;
  std::vector<Fields> expected;
  for (std::uint32_t i = 0; i < 5000; ++i) {
    const Feature feature = {random(), random(), static_cast<int>(random() % 1000) - 500, i};
    group.Append(feature);
    expected.emplace_back(feature.SortKey, feature.Head0, feature.Head1, feature.Tail);
  }
  group.Sort();
  const Numbers keys = KeysOf(group);
  EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
  std::vector<Fields> fields;
  for (int i = 0; i < group.GetFeatureNum(); ++i) {
    fields.emplace_back(group[i].SortKey, group[i].Head0, group[i].Head1, group[i].Tail);
  }
  std::sort(fields.begin(), fields.end());
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(fields, expected);
}

void ExpectSettings(const Settings& settings, const Settings& expected) {
  EXPECT_EQ(settings.Param0, expected.Param0);
  EXPECT_EQ(settings.Param1, expected.Param1);
  EXPECT_EQ(settings.Param2, expected.Param2);
  EXPECT_EQ(settings.Param3, expected.Param3);
  EXPECT_EQ(settings.Param4, expected.Param4);
  EXPECT_EQ(settings.Param5, expected.Param5);
}

TEST(VemScratchLayer, SettingsAreTheDefaultsOrThoseGiven) {
  ExpectSettings(Layer().Settings, {0, 9.0f, 0, 255, 0, 0});
  const Settings given = {1, 2.5f, 3, 4, 5, 6};
  const Layer layer(given);
  ExpectSettings(layer.Settings, given);
  EXPECT_EQ(layer.GetGroupNum(), 0);
  const Layer copy(layer);
  ExpectSettings(copy.Settings, given);
  Layer target;
  target = layer;
  ExpectSettings(target.Settings, given);
}

TEST(VemScratchLayer, PositionsAreClampedWhereGroupsMayChange) {
  Layer layer = ContainerOf<LayerLevel>({1, 2, 3});
  for (const int position : {-1, -2, INT_MIN}) EXPECT_EQ(&layer[position], &layer[0]) << position;
  for (const int position : {3, 4, INT_MAX}) EXPECT_EQ(&layer[position], &layer[2]) << position;
  Layer one = ContainerOf<LayerLevel>({1});
  for (const int position : {-1, 0, 1}) EXPECT_EQ(&one[position], StoreOf(one)->data());
}

// Nothing is read there: the place alone is told.
TEST(VemScratchLayer, PositionsAreNotClampedWhereGroupsMayNotChange) {
  Layer layer = ContainerOf<LayerLevel>({1, 2, 3});
  StoreOf(layer)->reserve(8);
  const Layer& constant = layer;
  for (const int position : {0, 2, 3, 6}) {
    EXPECT_EQ(&constant[position], StoreOf(layer)->data() + position) << position;
  }
}

TEST(VemScratchLayer, WithoutGroupsAReferenceFaultsWhenTouched) {
  Layer layer;
  for (const int position : {-1, 0, 1}) {
    [[maybe_unused]] volatile char* touched = reinterpret_cast<volatile char*>(&layer[position]);
    EXPECT_EQ(layer.GetGroupNum(), 0);
#ifndef VEM_SANITIZED
    EXPECT_EXIT(*touched = 1, testing::KilledBySignal(SIGSEGV), "");
#endif
  }
}

// The groups stay where they are; what they hold is assigned down.
TEST(VemScratchLayer, RemoveAssignsGroupsDown) {
  Layer layer = ContainerOf<LayerLevel>({1, 2, 3});
  const Group* const first = &layer[0];
  layer.Remove(0);
  EXPECT_EQ(&layer[0], first);
  EXPECT_TRUE(Holds<LayerLevel>(layer, {2, 3}));
}

// The elements go and others come, in the storage that there is.
template <typename Level>
void ExpectAssignmentToKeepTheStorage() {
  auto target = ContainerOf<Level>({1, 2, 3, 4, 5, 6, 7});
  const auto* const storage = StoreOf(target)->data();
  const std::size_t capacity = StoreOf(target)->capacity();
  for (const Numbers& numbers : {Numbers{8, 9, 10}, Numbers{}, Numbers{9, 8, 7, 6, 5, 4}}) {
    const auto source = ContainerOf<Level>(numbers);
    target = source;
    EXPECT_TRUE(Holds<Level>(target, numbers));
    EXPECT_EQ(StoreOf(target)->data(), storage);
    EXPECT_EQ(StoreOf(target)->capacity(), capacity);
  }
}

TEST(VemScratchLayer, AssignmentKeepsTheStorage) { ExpectAssignmentToKeepTheStorage<LayerLevel>(); }
TEST(VemScratchLayerArray, AssignmentKeepsTheStorage) {
  ExpectAssignmentToKeepTheStorage<ArrayLevel>();
}

TEST(VemScratchLayerArray, GivesAllItsBlocksBack) {
  const auto use = [] {
    VemScratchLayerArray layers;
    Layer layer = MakeLayer(3);
    layers.Append(layer);
    const VemScratchLayerArray copy(layers);
    layers = copy;
    layers.Remove(0);
    EXPECT_EQ(layers.GetLayerNum(), 0);
  };
  use();
  const HeapCounter heap;
  use();
  EXPECT_EQ(heap.Kept(), 0);
}

TEST(VemScratchLayerArray, CopiesAreDeepOnEveryLevel) {
  Layers source;
  Layer layer = MakeLayer(3);
  source.Append(layer);
  const Layers copy(source);
  Layers target;
  target = source;
  source[0][0][0].SortKey = -1;
  source[0][1].Label = VemVar("changed");
  source[0].Settings.Param1 = -1;
  EXPECT_TRUE(Same(copy[0], MakeLayer(3)));
  EXPECT_TRUE(Same(target[0], MakeLayer(3)));
}

}  // namespace
