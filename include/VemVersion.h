#ifndef VEM_VERSION_H_
#define VEM_VERSION_H_

/// @file
/// Which release of the library these headers are of; the build takes its version from here.

#define VEM_DATA_VERSION_MAJOR 3  ///< goes up when what was built before must be built anew
#define VEM_DATA_VERSION_MINOR 0  ///< goes up when something is added
#define VEM_DATA_VERSION_PATCH 0  ///< goes up when nothing but the inside changes

/// The release as a number: 30102 is 3.1.2.
#define VEM_DATA_VERSION \
  (VEM_DATA_VERSION_MAJOR * 10000 + VEM_DATA_VERSION_MINOR * 100 + VEM_DATA_VERSION_PATCH)

/// The release as a text.
#define VEM_DATA_VERSION_TEXT "3.0.0"

#endif  // VEM_VERSION_H_
