#ifndef VEM_VEM_JSON_TEXTS_H_
#define VEM_VEM_JSON_TEXTS_H_

#include <cstddef>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>

#include "vem/json_node.h"

/// Texts in a document, and bytes, which stand there in base64.

namespace vem {
namespace json_detail {

// --- Bytes as base64: the plain alphabet, padded, without line breaks ---

inline std::string encode(const unsigned char* bytes, std::size_t count) {
  static const char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.resize((count + 2) / 3 * 4, '=');
  std::size_t to = 0;
  for (std::size_t i = 0; i < count; i += 3) {
    const std::size_t left = count - i;
    const unsigned bits = unsigned{bytes[i]} << 16 | (left > 1 ? unsigned{bytes[i + 1]} << 8 : 0u) |
                          (left > 2 ? unsigned{bytes[i + 2]} : 0u);
    text[to] = kDigits[bits >> 18];
    text[to + 1] = kDigits[bits >> 12 & 63];
    if (left > 1) text[to + 2] = kDigits[bits >> 6 & 63];
    if (left > 2) text[to + 3] = kDigits[bits & 63];
    to += 4;
  }
  return text;
}

/// The value of a digit, or 64.
inline unsigned digit(char c) {
  if (c >= 'A' && c <= 'Z') return static_cast<unsigned>(c - 'A');
  if (c >= 'a' && c <= 'z') return static_cast<unsigned>(c - 'a') + 26;
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0') + 52;
  if (c == '+') return 62;
  return c == '/' ? 63 : 64;
}

/// Bytes in base64, not yet decoded.
class encoded_bytes {
 public:
  explicit encoded_bytes(const node& place) : place_(place) {
    if (!place.value().is_string()) place.fail("expected bytes in base64");
    text_ = place.value().get_ptr<const json::string_t*>();
    if (text_->size() % 4 != 0) place.fail("expected base64 with its padding");
    padding_ = 0;
    while (padding_ < 2 && padding_ < text_->size() && end(padding_) == '=') ++padding_;
  }

  std::size_t size() const { return text_->size() / 4 * 3 - padding_; }

  /// Writes size() bytes.
  void decode(unsigned char* bytes) const {
    for (std::size_t i = 0, left = size(); i < text_->size(); i += 4) {
      const std::size_t count = left < 3 ? left : 3;
      const unsigned bits = quantum(i, count);
      for (std::size_t k = 0; k < count; ++k) *bytes++ = (bits >> (16 - 8 * k)) & 255;
      left -= count;
    }
  }

 private:
  char end(std::size_t index) const { return (*text_)[text_->size() - 1 - index]; }

  unsigned quantum(std::size_t from, std::size_t count) const {
    unsigned bits = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      const unsigned value = k <= count ? digit((*text_)[from + k]) : 0u;
      if (value > 63) place_.fail("expected base64");
      bits = bits << 6 | value;
    }
    if ((bits & ((1u << (24 - 8 * count)) - 1)) != 0) place_.fail("expected base64");
    return bits;
  }

  const node& place_;
  const json::string_t* text_;
  std::size_t padding_;
};

// --- Texts ---

/// The length of the UTF-8 sequence at `text`, which is zero-terminated, or 0: no byte above 0xf4,
/// no overlong form, no surrogate.
inline std::size_t sequence_length(const unsigned char* text) {
  const unsigned first = text[0];
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xc2   ? 0
                             : first < 0xe0 ? 2
                             : first < 0xf0 ? 3
                             : first < 0xf5 ? 4
                                            : 0;
  if (length == 0) return 0;
  const unsigned low = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
  const unsigned high = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
  if (text[1] < low || text[1] > high) return 0;
  for (std::size_t i = 2; i < length; ++i) {
    if ((text[i] & 0xc0) != 0x80) return 0;
  }
  return length;
}

inline bool is_utf8(const char* text) {
  const unsigned char* at = reinterpret_cast<const unsigned char*>(text);
  while (*at != 0) {
    const std::size_t length = sequence_length(at);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

inline json write_text(const char* text) {
  if (is_utf8(text)) return json(text);
  json bytes = json::object();
  bytes["bytes"] = encode(reinterpret_cast<const unsigned char*>(text), std::strlen(text));
  return bytes;
}

inline std::string decoded_text(const node& place) {
  const encoded_bytes bytes(place);
  std::string text(bytes.size(), ' ');
  if (!text.empty()) bytes.decode(reinterpret_cast<unsigned char*>(&text[0]));
  return text;
}

inline std::string read_text(const node& place) {
  std::string text;
  if (place.value().is_string()) {
    text = place.value().get_ref<const json::string_t&>();
  } else if (place.value().is_object()) {
    object_reader object(place);
    text = decoded_text(object["bytes"]);
    object.finish();
  } else {
    place.fail("expected a text");
  }
  if (text.find('\0') != std::string::npos) place.fail("a text holds no zero byte");
  return text;
}

}  // namespace json_detail
}  // namespace vem

#endif  // VEM_VEM_JSON_TEXTS_H_
