#ifndef VALUES_WORD_KERNELS_H_
#define VALUES_WORD_KERNELS_H_

#include <cstddef>

#include "VemVar.h"

/// What is done with many control values at once as plain words, 16 bytes of kind and payload, in
/// one of the ways that processors offer. Values in blocks lie at multiples of 16 bytes.
struct WordKernels {
  const char* name;
  bool (*isOffered)();  ///< Whether this processor and its system can run it.

  /// Whether any of the values is a text.
  bool (*anyText)(const VemVar* values, std::size_t count);

  /// Copies values as they are, and tells whether any is a text.
  bool (*copy)(VemVar* target, const VemVar* source, std::size_t count);

  /// Copies values as they are, and tells whether all are integers. Then `largest` becomes the
  /// largest of their low halves, if that is larger; else it has no meaning.
  bool (*copyIntegers)(VemVar* target, const VemVar* source, std::size_t count, int& largest);

  /// Copies values as they are over others, up to the first of those that is a text, and tells how
  /// many.
  std::size_t (*copyOver)(VemVar* target, const VemVar* source, std::size_t count);

  /// Writes integers where no values stand.
  void (*write)(VemVar* target, const int* source, std::size_t count);

  /// Writes integers over values up to the first that is a text, and tells how many.
  std::size_t (*writeOver)(VemVar* target, const int* source, std::size_t count);
};

extern const WordKernels kSse2Words;
extern const WordKernels kAvx2Words;

/// The best that the processor offers.
const WordKernels& BestWordKernels();

#endif  // VALUES_WORD_KERNELS_H_
