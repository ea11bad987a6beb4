#ifndef PYTHON_SRC_TEXT_H_
#define PYTHON_SRC_TEXT_H_

#include <cstddef>
#include <string>

class VemFeatureDescriptor;
class VemImage;
class VemMatrix;

/// Objects as texts. The forms are made in one source, which alone includes what makes them.

/// The line that vem/print.h prints.
template <class T>
std::string Line(const T& value);

/// The document that vem/json.h writes.
template <class T>
std::string JsonOf(const T& value);

/// Reads a document into `value`, which stays as it was where anything is thrown.
template <class T>
void ReadJson(const std::string& document, T& value);

/// Whether two objects show the same, as vem/print.h compares them.
template <class T>
bool Same(const T& a, const T& b);

template <>
bool Same(const VemImage& a, const VemImage& b);
template <>
bool Same(const VemMatrix& a, const VemMatrix& b);
template <>
bool Same(const VemFeatureDescriptor& a, const VemFeatureDescriptor& b);

/// A number that is the same for objects that are.
template <class T>
std::size_t HashOf(const T& value);

#endif  // PYTHON_SRC_TEXT_H_
