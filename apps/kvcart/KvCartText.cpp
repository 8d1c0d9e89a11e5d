#include "KvCartText.h"

#include <charconv>
#include <cmath>

namespace kvcart {
namespace {

// Length of the valid UTF-8 sequence at p (at most `left` bytes), or 0 when
// the bytes there are not one: a stray continuation byte, a truncated or
// overlong sequence, a surrogate or a code point beyond U+10FFFF.
size_t Utf8Length(const unsigned char* p, size_t left) {
  const unsigned char c = p[0];
  size_t n;
  unsigned int minimum;
  unsigned int code;
  if (c < 0x80) return 1;
  if (c >= 0xC2 && c <= 0xDF) {
    n = 2, minimum = 0x80, code = c & 0x1F;
  } else if (c >= 0xE0 && c <= 0xEF) {
    n = 3, minimum = 0x800, code = c & 0x0F;
  } else if (c >= 0xF0 && c <= 0xF4) {
    n = 4, minimum = 0x10000, code = c & 0x07;
  } else {
    return 0;
  }
  if (left < n) return 0;
  for (size_t i = 1; i < n; ++i) {
    if ((p[i] & 0xC0) != 0x80) return 0;
    code = (code << 6) | (p[i] & 0x3F);
  }
  if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0;
  return n;
}

}  // namespace

std::string Number(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
  char buffer[400];
  const double magnitude = std::fabs(value);
  const std::chars_format format = magnitude == 0.0 || (magnitude >= 1e-6 && magnitude < 1e15)
                                       ? std::chars_format::fixed
                                       : std::chars_format::general;
  const std::to_chars_result r = std::to_chars(buffer, buffer + sizeof buffer, value, format);
  return std::string(buffer, r.ptr);
}

std::string ToUtf8(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  const unsigned char* p = reinterpret_cast<const unsigned char*>(text.data());
  const unsigned char* end = p + text.size();
  while (p < end) {
    const size_t n = Utf8Length(p, static_cast<size_t>(end - p));
    if (n) {
      out.append(reinterpret_cast<const char*>(p), n);
      p += n;
    } else {
      // Latin-1 byte c is code point c: two bytes in UTF-8.
      out += static_cast<char>(0xC0 | (*p >> 6));
      out += static_cast<char>(0x80 | (*p & 0x3F));
      ++p;
    }
  }
  return out;
}

std::string Lower(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

}  // namespace kvcart
