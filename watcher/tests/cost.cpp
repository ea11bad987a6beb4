// What a call of a watched operation takes, in nanoseconds of processor time: run with the watcher
// and without. The last one is a misuse, of which the watcher tells few.

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

#include "VemPointArray.h"
#include "VemROI.h"

namespace {

double Now() {
  timespec time;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/// The median of some rounds.
template <typename Call>
void Measure(const char* name, Call call) {
  constexpr int kCalls = 200000;
  std::vector<double> rounds;
  for (int round = 0; round < 15; ++round) {
    const double begin = Now();
    for (int i = 0; i < kCalls; ++i) call(i);
    rounds.push_back((Now() - begin) / kCalls);
  }
  std::sort(rounds.begin(), rounds.end());
  std::printf("%-28s %7.1f ns\n", name, rounds[rounds.size() / 2]);
}

}  // namespace

int main() {
  VemPointArray points;
  VemPoint point(1, 2);
  for (int i = 0; i < 64; ++i) points.Append(point);
  Measure("VemPointArray::Length", [&](int) { points.Length(); });
  Measure("VemPointArray::operator[]", [&](int i) { points[i % 64].x = i; });
  Measure("VemPointArray::Replace", [&](int i) { points.Replace(i % 64, point); });
  Measure("VemPointArray::Swap", [&](int i) { points.Swap(i % 64, 5); });
  VemROI roi;
  VemPoint p1(0, 0);
  VemPoint p2(5, 6);
  Measure("VemROI::GenRect1", [&](int) { roi.GenRect1(p1, p2); });
  Measure("VemROI::GenRect1, refused", [&](int) { roi.GenRect1(p1, p1); });
  return 0;
}
