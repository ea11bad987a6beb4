#ifndef WATCHER_TESTS_MISUSES_H_
#define WATCHER_TESTS_MISUSES_H_

/// Every misuse that the watcher tells, each from a place of its own, in the order of misuses.txt.
/// Compiled without inlining, so that what has its body in a header is called as well.
extern "C" __attribute__((visibility("default"))) void MisuseEverything();

/// What is told although it is inlined.
void MisuseInlined();

#endif  // WATCHER_TESTS_MISUSES_H_
