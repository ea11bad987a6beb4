#include "coder/RowKernels.h"

#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "support/GuardedBytes.h"

namespace {

constexpr int kWidest = 300;
constexpr int kRows = 3;

using Mask = std::vector<std::vector<bool>>;   // By row, by column.
using Edges = std::vector<std::vector<Edge>>;  // By row.

std::vector<const RowKernels*> OfferedKernels() {
  std::vector<const RowKernels*> offered;
  for (const RowKernels* kernels : {&kSse2Kernels, &kAvx2Kernels}) {
    if (kernels->isOffered()) offered.push_back(kernels);
  }
  return offered;
}

/// How pixels of a kind are stored: as numbers of so many bytes, of which some are foreground and
/// the others background.
struct Storage {
  const char* name;
  PixelKind kind;
  std::size_t bytes;
  std::vector<std::uint64_t> foreground;
  std::vector<std::uint64_t> background;
};

const Storage kStorages[] = {
    {"byte", kByte, 1, {1, 2, 128, 255}, {0}},
    {"short", kShort, 2, {1, 256, 0x8000, 0xffff}, {0}},
    {"int", kInt, 4, {1, 0x10000, 0x80000000, 0xffffffff}, {0}},
    {"half", kHalf, 2, {1, 0x8001, 0x3c00, 0x7e00}, {0, 0x8000}},
    {"float", kFloat, 4, {1, 0x80000001, 0x3f800000, 0x7fc00000}, {0, 0x80000000}},
    {"double",
     kDouble,
     8,
     {1, 0x100000000, 0x8000000000000001, 0x80000001, 0x3ff0000000000000, 0x7ff8000000000000},
     {0, 0x8000000000000000}},
};

class RowKernelsTest : public testing::Test {
 protected:
  std::size_t Any(std::size_t limit) { return random_() % limit; }

  Mask Noise(int rows, int columns, int percent) {
    Mask mask(static_cast<std::size_t>(rows));
    for (std::vector<bool>& row : mask) {
      for (int i = 0; i < columns; ++i) row.push_back(Any(100) < static_cast<std::size_t>(percent));
    }
    return mask;
  }

  // Long runs whose ends lie anywhere.
  Mask Stretches(int rows, int columns) {
    Mask mask = Noise(rows, columns, 0);
    for (std::vector<bool>& row : mask) {
      bool on = Any(2) == 0;
      for (std::size_t i = 0; i < row.size(); ++i) {
        if (Any(60) == 0) on = !on;
        row[i] = on;
      }
    }
    return mask;
  }

  void Store(const Mask& mask, const Storage& storage, std::size_t step, unsigned char* pixels) {
    for (std::size_t row = 0; row < mask.size(); ++row) {
      for (std::size_t column = 0; column < mask[row].size(); ++column) {
        const auto& values = mask[row][column] ? storage.foreground : storage.background;
        std::memcpy(pixels + row * step + column * storage.bytes, &values[Any(values.size())],
                    storage.bytes);
      }
    }
  }

  std::mt19937 random_{1};
};

Edges PlainEdges(const Mask& mask) {
  Edges edges;
  for (const std::vector<bool>& row : mask) {
    edges.emplace_back();
    bool before = false;
    for (std::size_t column = 0; column <= row.size(); ++column) {
      const bool on = column < row.size() && row[column];
      if (on != before) edges.back().push_back(static_cast<Edge>(column));
      before = on;
    }
  }
  return edges;
}

PixelRows RowsOf(const Mask& mask, const Storage& storage, std::size_t step,
                 const unsigned char* pixels) {
  const std::size_t columns = mask[0].size();
  return {pixels, step, columns * storage.bytes, static_cast<int>(columns),
          static_cast<int>(mask.size())};
}

// Whether every row of what was found is closed.
testing::AssertionResult IsClosed(const EdgeRows& found) {
  for (int i = 0; i < found.count; ++i) {
    if (found.ends[i][0] != kNoEdge || found.ends[i][1] != kNoEdge) {
      return testing::AssertionFailure() << "row " << i << " is open";
    }
  }
  return testing::AssertionSuccess();
}

// The edges of all rows, found with room for so many at once.
Edges FoundEdges(const RowKernels& kernels, PixelKind kind, PixelRows rows, std::size_t room) {
  Edges edges;
  std::vector<Edge> buffer(room);
  while (rows.count > 0) {
    EdgeRows found;
    found.begin = buffer.data();
    found.end = buffer.data() + room;
    kernels.findEdges[kind](rows, found);
    EXPECT_TRUE(IsClosed(found));
    for (int i = 0; i < found.count; ++i) {
      const Edge* const begin = found.Row(i);
      edges.emplace_back(begin, static_cast<const Edge*>(found.ends[i]));
    }
    rows.above = rows.aboveEnd = nullptr;
  }
  return edges;
}

Edges FoundEdges(const RowKernels& kernels, PixelKind kind, const PixelRows& rows) {
  return FoundEdges(kernels, kind, rows,
                    static_cast<std::size_t>(rows.count) * EdgeRoom(rows.columns));
}

TEST_F(RowKernelsTest, EveryVariantFindsTheEdgesOfAPlainLoop) {
  for (const Storage& storage : kStorages) {
    for (int columns = 1; columns <= kWidest; ++columns) {
      const std::size_t step = (static_cast<std::size_t>(columns) + Any(40)) * storage.bytes;
      for (const int percent : {-1, 0, 3, 50, 97, 100}) {
        const Mask mask = percent < 0 ? Stretches(kRows, columns) : Noise(kRows, columns, percent);
        // What stands in the padding is nobody's.
        std::vector<unsigned char> pixels(kRows * step, 0xff);
        Store(mask, storage, step, pixels.data());
        const Edges expected = PlainEdges(mask);
        for (const RowKernels* kernels : OfferedKernels()) {
          ASSERT_EQ(FoundEdges(*kernels, storage.kind, RowsOf(mask, storage, step, pixels.data())),
                    expected)
              << kernels->name << ", " << storage.name << ", " << columns << " columns, " << percent
              << " percent";
        }
      }
    }
  }
}

TEST_F(RowKernelsTest, NothingOutsideTheRowsIsRead) {
  const GuardedBytes bytes((kWidest + 40) * sizeof(double) * kRows);
  for (const Storage& storage : kStorages) {
    for (int columns = 1; columns <= kWidest; ++columns) {
      const Mask mask = Noise(kRows, columns, 30);
      const Edges expected = PlainEdges(mask);
      const std::size_t row = static_cast<std::size_t>(columns) * storage.bytes;
      for (const std::size_t step : {row, row + Any(40) * storage.bytes}) {
        const std::size_t size = (kRows - 1) * step + row;
        for (unsigned char* const pixels : {bytes.Begin(), bytes.End() - size}) {
          Store(mask, storage, step, pixels);
          for (const RowKernels* kernels : OfferedKernels()) {
            ASSERT_EQ(FoundEdges(*kernels, storage.kind, RowsOf(mask, storage, step, pixels)),
                      expected)
                << kernels->name << ", " << storage.name << ", " << columns << " columns";
          }
        }
      }
    }
  }
}

// A row whose pixels alternate has the most edges that there can be; the last of them lie in a word
// that is told byte after byte, behind which most is written and counts for nothing.
TEST_F(RowKernelsTest, NothingBehindTheRoomOfARowIsTouched) {
  const GuardedBytes bytes(EdgeRoom(kWidest) * sizeof(Edge));
  const Storage& storage = kStorages[0];
  for (int columns = 1; columns <= kWidest; ++columns) {
    Mask mask = Noise(1, columns, 0);
    for (std::size_t column = 0; column < mask[0].size(); column += 2) mask[0][column] = true;
    std::vector<unsigned char> pixels(mask[0].size());
    Store(mask, storage, pixels.size(), pixels.data());
    for (const RowKernels* kernels : OfferedKernels()) {
      PixelRows rows = RowsOf(mask, storage, pixels.size(), pixels.data());
      EdgeRows found;
      found.end = reinterpret_cast<const Edge*>(bytes.End());
      found.begin = reinterpret_cast<Edge*>(bytes.End()) - EdgeRoom(columns);
      kernels->findEdges[storage.kind](rows, found);
      EXPECT_TRUE(IsClosed(found));
      EXPECT_EQ(Edges(1, {found.begin, found.ends[0]}), PlainEdges(mask)) << columns;
    }
  }
}

TEST_F(RowKernelsTest, RowsThatRepeatAreToldAndFoundAll) {
  const Storage& storage = kStorages[0];
  for (int round = 0; round < 300; ++round) {
    const int columns = 1 + static_cast<int>(Any(kWidest));
    Mask mask = Noise(40, columns, static_cast<int>(Any(101)));
    for (std::size_t row = 1; row < mask.size(); ++row) {
      if (Any(4) != 0) mask[row] = mask[row - 1];
    }
    const std::size_t step = static_cast<std::size_t>(columns);
    std::vector<unsigned char> pixels(mask.size() * step);
    Store(mask, storage, step, pixels.data());
    for (const RowKernels* kernels : OfferedKernels()) {
      PixelRows rows = RowsOf(mask, storage, step, pixels.data());
      ASSERT_EQ(FoundEdges(*kernels, storage.kind, rows), PlainEdges(mask));
      std::vector<Edge> buffer(mask.size() * EdgeRoom(columns));
      EdgeRows found;
      found.begin = buffer.data();
      found.end = buffer.data() + buffer.size();
      kernels->findEdges[storage.kind](rows, found);
      ASSERT_EQ(found.count, 40);
      EXPECT_FALSE(found.likeAbove[0]);
      for (int i = 1; i < found.count; ++i) {
        const std::size_t row = static_cast<std::size_t>(i);
        EXPECT_EQ(found.likeAbove[i], mask[row] == mask[row - 1]);
      }
    }
  }
}

TEST_F(RowKernelsTest, RowsAreFoundAsThereIsRoom) {
  const Storage& storage = kStorages[0];
  const int columns = 130;
  const Mask mask = Noise(200, columns, 50);
  std::vector<unsigned char> pixels(mask.size() * 130);
  Store(mask, storage, 130, pixels.data());
  for (const RowKernels* kernels : OfferedKernels()) {
    for (std::size_t room = EdgeRoom(columns); room < 40 * EdgeRoom(columns); room += 61) {
      const PixelRows rows = RowsOf(mask, storage, 130, pixels.data());
      ASSERT_EQ(FoundEdges(*kernels, storage.kind, rows, room), PlainEdges(mask)) << room;
    }
  }
}

TEST_F(RowKernelsTest, EdgesBecomeRuns) {
  for (const RowKernels* kernels : OfferedKernels()) {
    for (std::size_t count = 0; count <= 70; ++count) {
      std::vector<Edge> edges(2 * count + kSlack);
      Edge column = 0;
      for (std::size_t i = 0; i < 2 * count; ++i) {
        edges[i] = column += 1 + static_cast<Edge>(Any(9));
      }
      const ::Run untouched = {-1, -2, -3};
      std::vector<::Run> runs(count + kSlack + 1, untouched);
      kernels->storeRuns(edges.data(), count, 77, runs.data());
      for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(runs[i].Row, 77);
        EXPECT_EQ(runs[i].FirstColumn, static_cast<int>(edges[2 * i]));
        EXPECT_EQ(runs[i].LastColumn, static_cast<int>(edges[2 * i + 1]) - 1);
      }
      EXPECT_EQ(runs.back().Row, -1);
    }
  }
}

TEST_F(RowKernelsTest, TheBestVariantIsOfferedAndStays) {
  const RowKernels& best = BestRowKernels();
  EXPECT_TRUE(best.isOffered());
  EXPECT_EQ(&best, OfferedKernels().back());
  EXPECT_EQ(&best, &BestRowKernels());
}

}  // namespace
