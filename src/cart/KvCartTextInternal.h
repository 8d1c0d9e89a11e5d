#pragma once

#include <cstring>

// The text rule the flat entries share: the size counts characters without
// the terminator, so a text exactly `size` long is copied together with its
// zero into size + 1 bytes; a longer text is not copied and the status is its
// length.  Comparing signed lengths and comparing unsigned 64-bit ones agree
// here, since a negative size has room for nothing either way.
namespace kvcart_c {

inline void CopyText(const char* text, std::size_t length, char* buffer, int size, int* status) {
  if (size < 0 || length > static_cast<std::size_t>(size)) {
    *status = static_cast<int>(length);
    return;
  }
  std::memcpy(buffer, text, length);
  buffer[length] = '\0';
  *status = 0;
}

inline void CopyText(const char* text, char* buffer, int size, int* status) {
  if (!text) text = "";
  CopyText(text, std::strlen(text), buffer, size, status);
}

}  // namespace kvcart_c
