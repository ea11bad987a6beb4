// A store of 10,000 regions: how many differ, which is the largest, how many pixels all have. The
// same as store_plain.cpp, with the companions.
#include <algorithm>
#include <iostream>
#include <numeric>
#include <unordered_set>
#include <vector>

#include "VemRegionArray.h"
#include "vem/vem.h"

int main() {
  VemRegionArray store;
  for (int i = 0; i < 10000; ++i) {
    const VemPoint center(20 + i % 17, 20 + i % 5);
    vem::append(store, vem::region_of(vem::circle(center, 4 + i % 7)));
  }

  const std::unordered_set<VemRegion> different(begin(store), end(store));
  std::vector<long> areas;
  for (const VemRegion& region : store) areas.push_back(vem::pixel_set(region).area());
  const auto largest = std::max_element(areas.begin(), areas.end());
  const VemRegion found = vem::at(store, static_cast<int>(largest - areas.begin()));
  std::cout << store.Length() << " regions, " << different.size() << " different, "
            << std::accumulate(areas.begin(), areas.end(), 0L) << " pixels\n"
            << "the largest is region " << largest - areas.begin() << ", of " << *largest
            << " pixels on " << found.Width() << 'x' << found.Height() << '\n';
}
