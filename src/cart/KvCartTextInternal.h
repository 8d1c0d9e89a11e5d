#pragma once

#include <cstring>
#include <utility>

// The rules the flat entries share.
namespace kvcart_c {

// Text: the size counts characters without the terminator, so a text
// exactly `size` long is copied together with its zero into size + 1 bytes;
// a longer text is not copied and the status is its length.  Comparing
// signed lengths and comparing unsigned 64-bit ones agree here, since a
// negative size has room for nothing either way.  A null buffer has room for
// nothing; a null status is not written.
inline void CopyText(const char* text, std::size_t length, char* buffer, int size, int* status) {
  if (!buffer || size < 0 || length > static_cast<std::size_t>(size)) {
    if (status) *status = static_cast<int>(length);
    return;
  }
  std::memcpy(buffer, text, length);
  buffer[length] = '\0';
  if (status) *status = 0;
}

inline void CopyText(const char* text, char* buffer, int size, int* status) {
  if (!text) text = "";
  CopyText(text, std::strlen(text), buffer, size, status);
}

inline void SetStatus(int* status, int value) {
  if (status) *status = value;
}

// No C++ exception may cross into a C caller, who could not catch it: every
// entry runs its body through one of these, which turn an exception into the
// entry's neutral result: `fallback`, status -1, or outputs left as they are.
template <class Result, class Body>
Result GuardValue(Result fallback, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return fallback;
  }
}

template <class Body>
void GuardStatus(int* status, Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {
    SetStatus(status, -1);
  }
}

template <class Body>
void GuardVoid(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {
  }
}

}  // namespace kvcart_c
