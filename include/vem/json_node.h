#ifndef VEM_VEM_JSON_NODE_H_
#define VEM_VEM_JSON_NODE_H_

#include <cstddef>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

/// Places in a document, and errors that name them.

namespace vem {

/// A document that can't be read. what() is the place of the fault as a JSON pointer, then what was
/// expected there: "/overlays/3/font/size: expected an integer". A fault of the whole document has
/// no place: "expected an object".
class json_error : public std::invalid_argument {
 public:
  /// A fault at `path`, a JSON pointer or empty.
  json_error(const std::string& path, const std::string& reason)
      : std::invalid_argument(path.empty() ? reason : path + ": " + reason), length_(path.size()) {}

  /// The place as a JSON pointer; empty for the whole document.
  std::string path() const { return std::string(what(), length_); }

 private:
  std::size_t length_;
};

namespace json_detail {

using nlohmann::json;

/// A value in a document, and how it was reached. A node refers to the one above it, which must
/// live longer: never keep the last node of a chain of calls.
class node {
 public:
  explicit node(const json& document) : value_(document), above_(nullptr), key_(), index_(0) {}
  node(const json& value, const node& above, const char* key)
      : value_(value), above_(&above), key_(key), index_(0) {}
  node(const json& value, const node& above, std::size_t index)
      : value_(value), above_(&above), key_(nullptr), index_(index) {}

  const json& value() const { return value_; }
  bool is_document() const { return above_ == nullptr; }

  [[noreturn]] void fail(const std::string& reason) const { throw json_error(path(), reason); }
  /// Fails on a member of this object, which need not be there.
  [[noreturn]] void fail(const std::string& key, const std::string& reason) const {
    throw json_error(path() + '/' + escaped(key), reason);
  }

  /// The number of elements of a list.
  std::size_t size() const {
    if (!value_.is_array()) fail("expected a list");
    return value_.size();
  }
  /// An element of a list, below its size.
  node operator[](std::size_t index) const { return node(value_[index], *this, index); }

 private:
  std::string path() const {
    if (is_document()) return std::string();
    return above_->path() + '/' + (key_ != nullptr ? escaped(key_) : std::to_string(index_));
  }
  static std::string escaped(const std::string& key) {
    std::string result;
    for (char c : key) {
      if (c == '~') {
        result += "~0";
      } else if (c == '/') {
        result += "~1";
      } else {
        result += c;
      }
    }
    return result;
  }

  const json& value_;
  const node* above_;
  const char* key_;
  std::size_t index_;
};

/// An object whose members are asked for by name; those that nobody asks for are a fault.
class object_reader {
 public:
  explicit object_reader(const node& place) : place_(place) {
    if (!place.value().is_object()) place.fail("expected an object");
    if (!place.is_document()) return;
    asked_.push_back("version");
    asked_.push_back("class");
  }

  bool has(const char* key) {
    asked_.push_back(key);
    return place_.value().find(key) != place_.value().end();
  }
  node operator[](const char* key) {
    asked_.push_back(key);
    const json::const_iterator found = place_.value().find(key);
    if (found == place_.value().end()) place_.fail(key, "is missing");
    return node(*found, place_, key);
  }
  void finish() const {
    for (json::const_iterator i = place_.value().begin(); i != place_.value().end(); ++i) {
      if (!was_asked(i.key())) place_.fail(i.key(), "is no field of this object");
    }
  }

 private:
  bool was_asked(const std::string& key) const {
    for (const char* asked : asked_) {
      if (key == asked) return true;
    }
    return false;
  }

  const node& place_;
  std::vector<const char*> asked_;
};

// Compared as a text: json's own == with a literal ends the process where memory is short.
inline bool is_named(const json& value, const char* name) {
  return value.is_string() && value.get_ref<const json::string_t&>() == name;
}

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_NODE_H_
