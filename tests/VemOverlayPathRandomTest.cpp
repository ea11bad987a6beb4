#include "VemOverlayPath.h"

#include <cstddef>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "IVemOverlayPath.h"
#include "support/OverlayPaths.h"

namespace {

template <typename Path>
class OverlayPathRandom : public testing::Test {};

using Paths = testing::Types<VemOverlayPath, IVemOverlayPath>;
TYPED_TEST_SUITE(OverlayPathRandom, Paths);

// One operation on a path and on a list of numbers. An index may be the length.
template <typename Path>
void Change(Path& path, std::vector<int>& model, unsigned long operation, int position,
            int number) {
  const bool isElement = position < path.Length();
  VemOverlay overlay = Numbered(number);
  switch (operation) {
    case 0:
      path.AddOverlay(overlay);
      model.push_back(number);
      return;
    case 1:
      path.Insert(position, overlay);
      model.insert(model.begin() + position, number);
      return;
    case 2:
      path.Remove(position);
      if (isElement) model.erase(model.begin() + position);
      return;
    case 3:
      path.Replace(position, overlay);
      if (isElement) model[static_cast<std::size_t>(position)] = number;
      return;
    case 4:
      if (!isElement) return;
      path.AddOverlay(path[position]);
      model.push_back(model[static_cast<std::size_t>(position)]);
      return;
    default:
      path.Reserve(number);
  }
}

TYPED_TEST(OverlayPathRandom, BehavesAsAPlainList) {
  std::mt19937 random(61);
  TypeParam path;
  std::vector<int> model;
  for (int i = 0; i < 10000; ++i) {
    if (model.size() > 30) {
      path.Clear();
      model.clear();
    }
    const int position = static_cast<int>(random() % (model.size() + 1));
    Change(path, model, random() % 6, position, static_cast<int>(random() % 100));
    ASSERT_EQ(NumbersOf(path), model) << "after operation " << i;
  }
}

}  // namespace
