#ifndef TESTS_FAULTS_STAGE_H_
#define TESTS_FAULTS_STAGE_H_

#include <functional>
#include <new>
#include <string>
#include <vector>

#include <opencv2/core.hpp>

#include "faults/Heap.h"
#include "faults/States.h"
#include "faults/Use.h"

/// What must hold of an object when the operation fails. When it succeeds, the object must be as
/// without a fault.
enum class Rule {
  kAsBefore,    ///< It is as before.
  kEmpty,       ///< It is as a new one.
  kDoneOrNot,   ///< It is as before, or as if the operation had not failed.
  kSound,       ///< It can be used, as whatever fails.
  kSameAlways,  ///< It is as before, whether the operation fails or not.
  kOrEmpty,     ///< As kAsBefore, but an operation that swallows its failure leaves a new one.
};

/// An object of a scenario, and its rule.
template <typename T>
struct Watched {
  T& object;
  Rule rule;
};

template <typename T>
Watched<T> AsBefore(T& object) {
  return {object, Rule::kAsBefore};
}
template <typename T>
Watched<T> Empty(T& object) {
  return {object, Rule::kEmpty};
}
template <typename T>
Watched<T> DoneOrNot(T& object) {
  return {object, Rule::kDoneOrNot};
}
template <typename T>
Watched<T> Sound(T& object) {
  return {object, Rule::kSound};
}
template <typename T>
Watched<T> Same(T& object) {
  return {object, Rule::kSameAlways};
}
template <typename T>
Watched<T> OrEmpty(T& object) {
  return {object, Rule::kOrEmpty};
}

/// Where one scenario runs once: makes its operation fail, then looks at its objects.
class Stage {
 public:
  explicit Stage(const heap::Fault& fault, std::vector<std::string>* reference)
      : fault_(fault), reference_(reference) {}

  /// Runs the operation under the fault, checks each object by its rule, and uses it: it is read,
  /// copied, assigned and changed. A scenario calls this once.
  template <typename Operation, typename... T>
  void Try(Operation operation, Watched<T>... objects) {
    std::vector<std::string> before;
    {
      const heap::Pause pause;
      (before.push_back(StateOf(objects.object)), ...);
    }
    bool threw = false;
    heap::Arm(fault_);
    try {
      operation();
    } catch (const std::bad_alloc&) {
      threw = true;
    } catch (const cv::Exception&) {
      threw = true;
    }
    allocations_ = heap::Disarm();
    std::size_t i = 0;
    (Check(i, before[i], threw, objects), ...);
    (Use(objects.object), ...);
    const heap::Pause pause;
    std::vector<std::string>().swap(before);
  }

  long Allocations() const { return allocations_; }
  bool Threw() const { return threw_; }

 private:
  template <typename T>
  void Check(std::size_t& index, const std::string& before, bool threw, Watched<T>& watched) {
    const heap::Pause pause;
    threw_ = threw;
    T fresh = T();
    Judge(index++, watched.rule, threw, before, StateOf(watched.object), StateOf(fresh));
  }

  void Judge(std::size_t index, Rule rule, bool threw, const std::string& before,
             const std::string& state, const std::string& fresh);

  heap::Fault fault_;
  std::vector<std::string>* reference_;  ///< The objects' states after a run without fault.
  long allocations_ = 0;
  bool threw_ = false;
};

/// What a scenario leaves allocated on purpose.
enum class Leak {
  kNone,
  kHeaders,  ///< The header of a clone that failed.
  kElement,  ///< A replaced element, with its pixels.
};

struct Scenario {
  std::string name;
  std::function<void(Stage&)> run;
  Leak leak = Leak::kNone;
};

using Table = std::vector<Scenario>;

void AddValues(Table& table);
void AddArrays(Table& table);
void AddRasters(Table& table);
void AddShapes(Table& table);
void AddOverlays(Table& table);
void AddResults(Table& table);

#endif  // TESTS_FAULTS_STAGE_H_
