#ifndef VEM_EXPORT_H_
#define VEM_EXPORT_H_

/// Marks what the shared libraries export; everything else in them is hidden.
#define VEM_EXPORT __attribute__((visibility("default")))

#endif  // VEM_EXPORT_H_
