#ifndef WATCHER_CHECKS_H_
#define WATCHER_CHECKS_H_

#include "watcher/CheckRasters.h"
#include "watcher/CheckRegions.h"
#include "watcher/CheckShapes.h"
#include "watcher/CheckValues.h"
#include "watcher/Report.h"

/// What is a misuse of an operation: the checks that the table names, in the order of the classes.
///
/// A check gets the call, the object unless there is none, and the arguments. It reads, tells at
/// most one misuse, and changes nothing. Arguments that it does not look at stand at its end.
namespace watcher {
namespace checks {

/// Nothing but what every operation is asked.
template <typename... Args>
void Arguments(const Call&, Args&...) {}

}  // namespace checks
}  // namespace watcher

#endif  // WATCHER_CHECKS_H_
