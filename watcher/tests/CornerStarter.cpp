// A library whose constructor waits for a thread that misuses: the loader's lock is held meanwhile.

#include <thread>

#include "VemPointArray.h"

namespace {

struct Starter {
  Starter() {
    std::thread thread([] {
      VemPointArray points;
      points.Remove(3);
    });
    thread.join();
  }
};

Starter g_starter;

}  // namespace
