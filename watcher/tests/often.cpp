// A misuse before main, many from one place on several threads, some from each of many places where
// several threads arrive at once, one while memory is out, one that passes an exception, some that
// take no memory, and one when the program ends.

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <thread>
#include <vector>

#include <opencv2/core.hpp>

#include "VemData.h"

extern "C" void* __libc_malloc(std::size_t size);

namespace {

thread_local bool t_starved = false;
std::atomic<int> g_taken{0};

struct AtBothEnds {
  AtBothEnds() { points.Remove(11); }
  ~AtBothEnds() { points.Remove(12); }

  VemPointArray points;
};

AtBothEnds g_both;

void RefuseOften() {
  VemROI roi;
  VemPoint p1(5, 5);
  VemPoint p2(5, 6);
  for (int i = 0; i < 2500; ++i) roi.GenRect1(p1, p2);
}

void OnFourThreads(void (*misuse)()) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) threads.emplace_back(misuse);
  for (std::thread& thread : threads) thread.join();
}

std::atomic<int> g_arrived{0};

// Waits until all four threads have come to a step.
void Arrive(int step) {
  g_arrived.fetch_add(1);
  while (g_arrived.load() < 4 * step) std::this_thread::yield();
}

template <int kPlace>
void RemoveTogether() {
  VemPointArray points;
  Arrive(kPlace);
  for (int i = 0; i < 250; ++i) points.Remove(100 + kPlace);
  if constexpr (kPlace < 20) RemoveTogether<kPlace + 1>();
}

bool Starve() {
  VemPointArray points;
  t_starved = true;
  points.Remove(13);
  t_starved = false;
  return points.Length() == 0;
}

__attribute__((noinline)) int RemoveHere(VemPointArray& points) {
  points.Remove(14);
  return points.Length();
}

// From the second time on, nothing takes from the heap, be it told or not.
bool TakesNothing() {
  VemPointArray points;
  int before = 0;
  for (int i = 0; i < 10; ++i) {
    if (i == 1) before = g_taken;
    RemoveHere(points);
  }
  return g_taken == before;
}

bool PassException() {
  VemImage image;
  unsigned char byte = 0;
  try {
    // A misuse is told, and then a step that is no multiple of a pixel's channel raises.
    image = VemImage(&byte, 1, 2, 1, 600, VemImageType16U);
  } catch (const cv::Exception&) {
    return true;
  }
  return false;
}

}  // namespace

void* malloc(std::size_t size) {
  ++g_taken;
  return t_starved ? nullptr : __libc_malloc(size);
}

int main() {
  OnFourThreads(&RefuseOften);
  OnFourThreads(&RemoveTogether<1>);
  if (!Starve()) return 1;
  if (!PassException()) return 2;
  if (!TakesNothing()) return 3;
  return 0;
}
