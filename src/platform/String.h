#pragma once

#include <cstdarg>
#include <string>

#include "platform/KvCartExport.h"

inline namespace KvCartPlatform {

// A byte string with the search, slicing and tokenising operations the WKT
// reader and the parameter-file code are written against.
//
// The text is held as bytes: UTF-8 passes through untouched, and only ASCII
// letters are ever case-folded.  Positions and lengths are ints; every
// operation accepts any int and clamps it rather than failing, and a null
// `const char*` argument always means the empty string.  Nothing here throws
// except std::bad_alloc.
//
// There are deliberately no implicit conversions to `const char*` and no
// comparison operators: callers say GetString(), Compare() or CompareNoCase()
// so that case sensitivity is always an explicit choice.
class KVCART_API CString {
 public:
  // Empty string.
  CString() = default;
  // Copies the NUL-terminated `text`; null gives the empty string.  The two
  // converting constructors are implicit so that literals and std::strings
  // can be passed wherever a CString is expected.
  CString(const char* text);
  // Copies `text` byte for byte.
  CString(const std::string& text);

  // Copy and move are the member-wise defaults.

  // Replace the contents; a null `text` empties the string.  Assigning a
  // string its own GetString() is safe.
  CString& operator=(const char* text);
  CString& operator=(const std::string& text);

  // Append.  A null `text` appends nothing; `s += s` and
  // `s += s.GetString()` double the string.  Appending '\0' stores a NUL byte.
  CString& operator+=(const CString& text);
  CString& operator+=(const char* text);
  CString& operator+=(char ch);

  // Number of bytes.
  int GetLength() const;
  // True when GetLength() == 0.
  bool IsEmpty() const;
  // The text, NUL-terminated.  The pointer stays valid until the string is
  // next modified or destroyed.
  const char* GetString() const;

  // Byte at `i`, or '\0' when `i` < 0 or `i` >= GetLength().
  char operator[](int i) const;

  // Index of the first occurrence of `text` (or `ch`) that begins at or after
  // `start`, or -1 when there is none.  A negative `start` counts as 0; a
  // `start` greater than GetLength() gives -1.  An empty (or null) `text` is
  // found at `start` itself whenever `start` <= GetLength().
  int Find(const char* text, int start = 0) const;
  int Find(char ch, int start = 0) const;
  // Index of the last occurrence of `ch`, or -1 when there is none.
  int ReverseFind(char ch) const;

  // Substrings.  A negative `first` or `count` counts as 0, a `first` past
  // the end gives the empty string, and a `count` reaching past the end is
  // cut to what is there.
  // Mid(first): from `first` to the end.
  CString Mid(int first) const;
  // Mid(first, count): at most `count` bytes starting at `first`.
  CString Mid(int first, int count) const;
  // The first `count` bytes.
  CString Left(int count) const;
  // The last `count` bytes.
  CString Right(int count) const;

  // Converts 'A'-'Z' to 'a'-'z' and leaves every other byte alone, whatever
  // the process locale.  Returns *this.
  CString& MakeLower();

  // Remove white space (space, \t, \n, \r, \v, \f) from both ends, the
  // start, or the end.  Return *this.
  CString& Trim();
  CString& TrimLeft();
  CString& TrimRight();
  // As above, but remove any byte that appears in `chars` instead of white
  // space.  A null or empty `chars` removes nothing.
  CString& Trim(const char* chars);
  CString& TrimLeft(const char* chars);
  CString& TrimRight(const char* chars);

  // Lexicographic comparison with `text` on unsigned bytes, as strcmp does:
  // returns -1, 0 or 1.  A string that is a prefix of the other sorts first.
  // A null `text` compares as "".
  int Compare(const char* text) const;
  // As Compare, after folding 'A'-'Z' to 'a'-'z' on both sides; other bytes,
  // including everything above 127, compare as they are.
  int CompareNoCase(const char* text) const;

  // Splits the string into tokens separated by any of the bytes in
  // `delimiters`.  Starting at `position`, delimiters are skipped, and the
  // token is the run of bytes up to the next delimiter or the end of the
  // string.  `position` is then set just past that delimiter, which is
  // GetLength() + 1 when the token ended at the end of the string.
  // When there is no token left -- `position` negative or >= GetLength(), or
  // only delimiters remain -- the result is empty and `position` becomes -1;
  // that -1 is the end-of-tokens signal.  Consecutive delimiters therefore
  // never produce empty tokens.  With null or empty `delimiters` the token is
  // everything from `position` to the end.
  CString Tokenize(const char* delimiters, int& position) const;

  // Replaces the contents with printf-style output.  Numbers always use the
  // C locale (a '.' decimal point), whatever locale the process has set; the
  // output is never truncated.  Arguments may point into this string itself.
  // A null `format`, or a formatting error, leaves the string empty.
  void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
  // Format with the arguments already collected.  `args` is only read
  // through copies, so the caller may still use it and must va_end it.
  void FormatV(const char* format, va_list args)
      __attribute__((format(printf, 2, 0)));

 private:
  std::string m_text;
};

}  // namespace KvCartPlatform
