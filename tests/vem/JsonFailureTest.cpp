// Reading that fails at any of its allocations, or at any field, leaves the target as it was.
// AddressSanitizer has an allocator of its own, with which no allocation fails.

#include "vem/json.h"

#include <cstdlib>
#include <new>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "vem/make.h"
#include "vem/range.h"

#if defined(__SANITIZE_ADDRESS__)
#define VEM_OWN_ALLOCATOR 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VEM_OWN_ALLOCATOR 0
#endif
#endif
#ifndef VEM_OWN_ALLOCATOR
#define VEM_OWN_ALLOCATOR 1
#endif

namespace {

using nlohmann::json;

// How many allocations may still succeed; negative while none is to fail.
thread_local long g_left = -1;

#if VEM_OWN_ALLOCATOR
void* Allocate(std::size_t size) {
  if (g_left == 0) throw std::bad_alloc();
  if (g_left > 0) --g_left;
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
#else
}  // namespace
#endif

namespace {

// Whether the document was read; else its target must be as before.
template <typename T>
bool ReadWith(long allocations, const json& document, T& target) {
  const std::string before = vem::to_json(target).dump();
  bool read = true;
  g_left = allocations;
  try {
    vem::from_json(document, target);
  } catch (const std::exception&) {
    read = false;
  }
  g_left = -1;
  if (!read) {
    EXPECT_EQ(vem::to_json(target).dump(), before);
  }
  return read;
}

template <typename T>
void TestAllocations(const T& from, T& target) {
  const json document = vem::to_json(from);
  SCOPED_TRACE(document["class"]);
  long allocations = 0;
  while (allocations < 1000 && !ReadWith(allocations, document, target)) ++allocations;
  EXPECT_GT(allocations, 0);
  EXPECT_LT(allocations, 1000);
  EXPECT_EQ(vem::to_json(target), document);
}

template <typename T>
void TestAllocations(const T& from) {
  T target;
  TestAllocations(from, target);
  TestAllocations(T(), target);
}

TEST(VemJsonFailure, OfAnAllocationLeavesTheTarget) {
  if (!VEM_OWN_ALLOCATOR) GTEST_SKIP() << "no allocation fails";
  const VemROI mask = vem::mask(vem::region_of(".##.\n####\n"));
  const VemRegion region = vem::region_of(".##.\n####\n");
  TestAllocations(vem::array(1, 2.5, "a text that is longer than a few letters"));
  TestAllocations(vem::to<Vem2DVarArray>({vem::array(1), vem::array("x")}));
  TestAllocations(vem::to<VemPointArray>({{1, 2}, {3, 4}}));
  TestAllocations(vem::to<VemContourArray>({vem::to<VemContour>({{1, 2}})}));
  TestAllocations(mask);
  TestAllocations(vem::to<VemROIArray>({mask, vem::circle({1, 2}, 3)}));
  TestAllocations(region);
  TestAllocations(vem::to<VemRegionArray>({region, region}));
  TestAllocations(vem::text({1, 2}, "label"));
  TestAllocations(vem::to<VemOverlayPath>({vem::text({1, 2}, "label"), vem::overlay_of(region)}));
  TestAllocations(vem::to<VemDMCodeArray>({VemDMCode()}));
}

TEST(VemJsonFailure, OfAnAllocationLeavesAText) {
  if (!VEM_OWN_ALLOCATOR) GTEST_SKIP() << "no allocation fails";
  VemVar text("the text that was there before");
  const json document = vem::to_json(VemVar("the text that takes its place, a longer one"));
  EXPECT_FALSE(ReadWith(0, document, text));
  EXPECT_TRUE(ReadWith(9, document, text));
  EXPECT_STREQ(text.S(), "the text that takes its place, a longer one");
}

// A structure has no faithful copy, so that it is read in place.
void MakeCustom(VemMorphStructure& structure) {
  int table[] = {1, 2, 3, 4, 5, 6};
  structure.CreateElement(2, 3, 1, 1, VemMorphStructureCustom, table);
}

TEST(VemJsonFailure, LeavesAStructureWithItsTable) {
  VemMorphStructure structure;
  MakeCustom(structure);
  const json good = vem::to_json(structure);
  const json changes[] = {
      json{{"rows", 0}},       json{{"cols", -1}},
      json{{"anchor_x", 3}},   json{{"anchor_y", 2}},
      json{{"type", -1}},      json{{"values", {1, 2}}},
      json{{"values", "x"}},   json{{"values", {1, 2, 3, 4, 5, "x"}}},
      json{{"unknown", true}}, json{{"version", 2}},
  };
  for (const json& change : changes) {
    json document = good;
    document.update(change);
    SCOPED_TRACE(document);
    EXPECT_THROW(vem::from_json(document, structure), vem::json_error);
    EXPECT_EQ(vem::to_json(structure), good);
  }
  for (long allocations = 0; !ReadWith(allocations, good, structure); ++allocations) {
  }
  EXPECT_EQ(vem::to_json(structure), good);
}

}  // namespace
