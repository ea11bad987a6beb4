// Fails the allocations of every operation, one after the other, alone and with all later ones:
// whatever fails, every object can be read, copied, assigned, changed and destroyed, is in the
// state that its class tells, and leaves nothing allocated.
//
//     VemFaults [--all] [--list] [part of a scenario's name]
//
// Without --all, a scenario of many allocations is tried at some of them.

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>

#include "faults/Stage.h"

namespace {

struct Totals {
  long scenarios = 0;
  long faults = 0;
  long thrown = 0;
  long inCodecs = 0;
  long complaints = 0;
  long leftByOpenCv = 0;
};

Totals totals;
char running[256];  // For the signal's handler.
bool complained = false;
bool repeats = false;  // A run that is done again to tell what it leaves.

const char* NameOf(heap::Fault::Kind kind) {
  return kind == heap::Fault::kNone ? "no fault" : kind == heap::Fault::kOnce ? "only" : "all from";
}

void Complain(const std::string& complaint) {
  const heap::Pause pause;
  if (repeats) return;
  complained = true;
  ++totals.complaints;
  if (totals.complaints <= 200) std::printf("%s:\n  %s\n", running, complaint.c_str());
}

void ReportSignal(int number) {
  const char text[] = ": killed by a signal\n";
  if (write(1, running, std::strlen(running)) < 0 || write(1, text, sizeof(text) - 1) < 0) _exit(3);
  _exit(128 + number);
}

class Runner {
 public:
  explicit Runner(const Scenario& scenario) : scenario_(scenario) {}

  void Run(bool all) {
    Once({heap::Fault::kNone, 0}, false);  // What is allocated once and for all.
    reference_.clear();
    const long count = Once({heap::Fault::kNone, 0}, false);
    ++totals.scenarios;
    for (long number = 1; number <= count; ++number) {
      if (!all && !IsInSpread(number, count)) continue;
      Fail({heap::Fault::kOnce, number});
      Fail({heap::Fault::kFromThere, number});
    }
  }

 private:
  // The first, the last, and some between.
  static bool IsInSpread(long number, long count) {
    constexpr long kEnds = 6;
    constexpr long kBetween = 8;
    if (number <= kEnds || number > count - kEnds) return true;
    return number % ((count + kBetween - 1) / kBetween) == 0;
  }

  void Fail(const heap::Fault& fault) {
    ++totals.faults;
    Once(fault, false);
  }

  long Once(const heap::Fault& fault, bool keepTraces) {
    std::snprintf(running, sizeof(running), "%s, %s %ld", scenario_.name.c_str(),
                  NameOf(fault.kind), fault.number);
    complained = false;
    repeats = keepTraces;
    heap::Watch(keepTraces);
    Stage stage(fault, &reference_);
    try {
      scenario_.run(stage);
    } catch (const std::exception& e) {
      heap::Disarm();
      Complain(std::string("an exception leaves the scenario: ") + e.what());
    }
    const std::vector<heap::Block> left = heap::EndWatch();
    repeats = false;
    if (fault.kind != heap::Fault::kNone) Count(stage, fault, left, keepTraces);
    return stage.Allocations();
  }

  // Where something is left, the same once more tells where it was taken.
  void Count(const Stage& stage, const heap::Fault& fault, const std::vector<heap::Block>& left,
             bool keepTraces) {
    if (!keepTraces) {
      totals.thrown += stage.Threw() ? 1 : 0;
      totals.inCodecs += heap::Failed() && heap::IsInCodec(heap::WhereFailed()) ? 1 : 0;
      if (complained && totals.complaints <= 200) {
        std::printf("    failed at\n%s", heap::ToString(heap::WhereFailed()).c_str());
      }
      if (!left.empty()) Once(fault, true);
      return;
    }
    bool openCvHasOne = false;
    for (const heap::Block& block : left) {
      // It lets go of the pixels where it can't make their record.
      if (!openCvHasOne && heap::AreInOneCall(block.trace, heap::WhereFailed())) {
        openCvHasOne = true;
        ++totals.leftByOpenCv;
      } else {
        Judge(block);
      }
    }
  }

  void Judge(const heap::Block& block) {
    if (scenario_.leak == Leak::kElement) return;
    if (scenario_.leak == Leak::kHeaders && block.size == sizeof(cv::Mat)) return;
    if (heap::IsInCodec(block.trace)) {
      ++totals.leftByOpenCv;
      return;
    }
    Complain(std::to_string(block.size) + " bytes are left, taken at\n" +
             heap::ToString(block.trace) + "    failed at\n" + heap::ToString(heap::WhereFailed()));
  }

  const Scenario& scenario_;
  std::vector<std::string> reference_;
};

int Silent(int, const char*, const char*, const char*, int, void*) { return 0; }

// What the C++ library, the loader and OpenCV allocate at their first failure stays for good.
void WarmUp() {
  cv::setNumThreads(1);
  cv::redirectError(Silent);
  if (std::freopen("/dev/null", "w", stderr) == nullptr) std::abort();  // The codecs' messages.
  heap::Trace trace;
  heap::Watch(true);
  heap::Arm({heap::Fault::kFromThere, 1});
  try {
    const std::string text(1000, 'x');
    trace.count = static_cast<int>(text.size());
  } catch (const std::bad_alloc&) {
    trace = heap::WhereFailed();
  }
  heap::Disarm();
  try {
    cv::Mat(-1, -1, CV_8UC1);
  } catch (const cv::Exception&) {
    heap::IsInCodec(trace);
  }
  heap::EndWatch();
}

}  // namespace

void Require(bool holds, const std::string& complaint) {
  if (!holds) Complain(complaint);
}

int main(int argc, char** argv) {
  bool all = false;
  bool lists = false;
  const char* part = "";
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--all") == 0) {
      all = true;
    } else if (std::strcmp(argv[i], "--list") == 0) {
      lists = true;
    } else {
      part = argv[i];
    }
  }

  for (const int number : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL}) {
    std::signal(number, ReportSignal);
  }
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  WarmUp();
  Table table;
  AddValues(table);
  AddArrays(table);
  AddRasters(table);
  AddShapes(table);
  AddOverlays(table);
  AddResults(table);

  for (const Scenario& scenario : table) {
    if (scenario.name.find(part) == std::string::npos) continue;
    if (lists) {
      std::puts(scenario.name.c_str());
    } else {
      Runner(scenario).Run(all);
    }
  }
  if (lists) return 0;
  std::printf(
      "%ld scenarios, %ld faults: %ld thrown, %ld in codecs, %ld spared there; %ld blocks left by "
      "OpenCV and its "
      "codecs; "
      "%ld complaints\n",
      totals.scenarios, totals.faults, totals.thrown, totals.inCodecs, heap::Spared(),
      totals.leftByOpenCv, totals.complaints);
  return totals.complaints == 0 && totals.scenarios > 0 ? 0 : 1;
}
