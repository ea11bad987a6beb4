#include "faults/Stage.h"

namespace {

bool Holds(Rule rule, bool threw, const std::string& before, const std::string& state,
           const std::string& fresh, const std::string& done) {
  if (rule == Rule::kSameAlways) return state == before;
  if (!threw) return state == done || (rule == Rule::kOrEmpty && state == fresh);
  switch (rule) {
    case Rule::kEmpty:
      return state == fresh;
    case Rule::kDoneOrNot:
      return state == before || state == done;
    case Rule::kSound:
      return true;
    default:
      return state == before;
  }
}

}  // namespace

void Stage::Judge(std::size_t index, Rule rule, bool threw, const std::string& before,
                  const std::string& state, const std::string& fresh) {
  if (fault_.kind == heap::Fault::kNone) {
    reference_->push_back(state);
    Require(!threw, "the operation fails without a fault");
    return;
  }
  const std::string& done = reference_->at(index);
  if (heap::Failed() && heap::IsInCodec(heap::WhereFailed()) && rule != Rule::kSameAlways) return;
  if (Holds(rule, threw, before, state, fresh, done)) return;
  Require(false, "object " + std::to_string(index) + (threw ? " after a throw" : " after success") +
                     "\n    was   " + before + "\n    is    " + state + "\n    done  " + done);
}
