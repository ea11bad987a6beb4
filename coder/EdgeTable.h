#ifndef CODER_EDGE_TABLE_H_
#define CODER_EDGE_TABLE_H_

#include <cstdint>

/// For each byte, the places of its set bits, from the lowest.
struct EdgeTable {
  std::uint8_t places[256][8];
  std::uint8_t counts[256];
};

constexpr EdgeTable MakeEdgeTable() {
  EdgeTable table = {};
  for (int byte = 0; byte < 256; ++byte) {
    int count = 0;
    for (int bit = 0; bit < 8; ++bit) {
      if ((byte >> bit & 1) != 0) table.places[byte][count++] = static_cast<std::uint8_t>(bit);
    }
    table.counts[byte] = static_cast<std::uint8_t>(count);
  }
  return table;
}

alignas(64) constexpr EdgeTable kEdgeTable = MakeEdgeTable();

#endif  // CODER_EDGE_TABLE_H_
