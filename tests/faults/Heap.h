#ifndef TESTS_FAULTS_HEAP_H_
#define TESTS_FAULTS_HEAP_H_

#include <cstddef>
#include <string>
#include <vector>

/// The program's own malloc family, which every library it loads allocates from: it watches what
/// one thread takes and gives back, and fails at a chosen allocation.
namespace heap {

/// Which allocations fail while the heap is armed; the first is number 1.
struct Fault {
  enum Kind { kNone, kOnce, kFromThere };

  Kind kind;
  long number;
};

/// Where an allocation came from, innermost first.
struct Trace {
  static constexpr int kDepth = 40;

  void* frames[kDepth];
  int count;
};

/// A block that was taken while the heap was watched, and not given back.
struct Block {
  std::size_t size;
  Trace trace;  ///< Empty unless traces are kept.
};

/// Forgets all blocks and watches what this thread takes from now on.
void Watch(bool keepTraces);
/// Ends watching, and returns what is left.
std::vector<Block> EndWatch();

/// From now on allocations are numbered and fail as told.
void Arm(const Fault& fault);
/// Returns how many allocations were asked for since.
long Disarm();

/// Whether an allocation failed since the heap was last armed, and where the first one was asked
/// for.
bool Failed();
const Trace& WhereFailed();

/// How many allocations should have failed in all, but were asked for by a codec that can't stand
/// it.
long Spared();

/// While it lives, the heap neither watches nor counts.
class Pause {
 public:
  Pause();
  ~Pause();
  Pause(const Pause&) = delete;
  Pause& operator=(const Pause&) = delete;

 private:
  bool watched_;
};

/// Whether a codec stands between the allocation and the library: its failures are its own.
bool IsInCodec(const Trace& trace);
/// Whether both were asked for in one call of OpenCV by the library.
bool AreInOneCall(const Trace& a, const Trace& b);
/// The functions of a trace, one in each line.
std::string ToString(const Trace& trace);

}  // namespace heap

#endif  // TESTS_FAULTS_HEAP_H_
