#include "platform/String.h"

#include <cstdio>
#include <cstring>

#include "platform/KvCLocale.h"

namespace {

const char kWhiteSpace[] = " \t\n\r\v\f";

const char* OrEmpty(const char* text) { return text ? text : ""; }

// ASCII-only folding: the <cctype> functions consult the process locale and
// are undefined for negative chars, and neither is acceptable for bytes that
// may be UTF-8.
unsigned char FoldAscii(unsigned char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

int Sign(int value) { return (value > 0) - (value < 0); }

// Compares the bytes of `a` with the NUL-terminated `b` the way strcmp would,
// except that a NUL stored inside `a` is an ordinary byte rather than the end.
template <typename Fold>
int CompareBytes(const std::string& a, const char* b, Fold fold) {
  const std::size_t bLength = std::strlen(b);
  const std::size_t common = a.size() < bLength ? a.size() : bLength;
  for (std::size_t i = 0; i < common; ++i) {
    const unsigned char x = fold(static_cast<unsigned char>(a[i]));
    const unsigned char y = fold(static_cast<unsigned char>(b[i]));
    if (x != y) return x < y ? -1 : 1;
  }
  if (a.size() == bLength) return 0;
  return a.size() < bLength ? -1 : 1;
}

}  // namespace

CString::CString(const char* text) : m_text(OrEmpty(text)) {}

CString::CString(const std::string& text) : m_text(text) {}

CString& CString::operator=(const char* text) {
  // std::string::assign copes with `text` pointing into m_text.
  m_text.assign(OrEmpty(text));
  return *this;
}

CString& CString::operator=(const std::string& text) {
  m_text = text;
  return *this;
}

CString& CString::operator+=(const CString& text) {
  m_text.append(text.m_text);
  return *this;
}

CString& CString::operator+=(const char* text) {
  m_text.append(OrEmpty(text));
  return *this;
}

CString& CString::operator+=(char ch) {
  m_text.push_back(ch);
  return *this;
}

int CString::GetLength() const { return static_cast<int>(m_text.size()); }

bool CString::IsEmpty() const { return m_text.empty(); }

const char* CString::GetString() const { return m_text.c_str(); }

char CString::operator[](int i) const {
  if (i < 0 || i >= GetLength()) return '\0';
  return m_text[static_cast<std::size_t>(i)];
}

int CString::Find(const char* text, int start) const {
  if (start < 0) start = 0;
  if (start > GetLength()) return -1;
  const std::size_t found = m_text.find(OrEmpty(text), static_cast<std::size_t>(start));
  return found == std::string::npos ? -1 : static_cast<int>(found);
}

int CString::Find(char ch, int start) const {
  if (start < 0) start = 0;
  if (start > GetLength()) return -1;
  const std::size_t found = m_text.find(ch, static_cast<std::size_t>(start));
  return found == std::string::npos ? -1 : static_cast<int>(found);
}

int CString::ReverseFind(char ch) const {
  const std::size_t found = m_text.rfind(ch);
  return found == std::string::npos ? -1 : static_cast<int>(found);
}

CString CString::Mid(int first) const {
  if (first < 0) first = 0;
  if (first >= GetLength()) return CString();
  return CString(m_text.substr(static_cast<std::size_t>(first)));
}

CString CString::Mid(int first, int count) const {
  if (first < 0) first = 0;
  if (count <= 0 || first >= GetLength()) return CString();
  // substr cuts an over-long count to what is there.
  return CString(m_text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(count)));
}

CString CString::Left(int count) const { return Mid(0, count); }

CString CString::Right(int count) const {
  if (count <= 0) return CString();
  if (count >= GetLength()) return *this;
  return Mid(GetLength() - count);
}

CString& CString::MakeLower() {
  for (char& c : m_text) c = static_cast<char>(FoldAscii(static_cast<unsigned char>(c)));
  return *this;
}

CString& CString::Trim() { return Trim(kWhiteSpace); }

CString& CString::TrimLeft() { return TrimLeft(kWhiteSpace); }

CString& CString::TrimRight() { return TrimRight(kWhiteSpace); }

CString& CString::Trim(const char* chars) {
  TrimRight(chars);
  return TrimLeft(chars);
}

CString& CString::TrimLeft(const char* chars) {
  const std::size_t keep = m_text.find_first_not_of(OrEmpty(chars));
  m_text.erase(0, keep == std::string::npos ? m_text.size() : keep);
  return *this;
}

CString& CString::TrimRight(const char* chars) {
  const std::size_t last = m_text.find_last_not_of(OrEmpty(chars));
  m_text.erase(last == std::string::npos ? 0 : last + 1);
  return *this;
}

int CString::Compare(const char* text) const {
  return Sign(CompareBytes(m_text, OrEmpty(text), [](unsigned char c) { return c; }));
}

int CString::CompareNoCase(const char* text) const {
  return Sign(CompareBytes(m_text, OrEmpty(text), FoldAscii));
}

CString CString::Tokenize(const char* delimiters, int& position) const {
  const int length = GetLength();
  if (position < 0 || position >= length) {
    position = -1;
    return CString();
  }
  const char* delims = OrEmpty(delimiters);
  const std::size_t begin = m_text.find_first_not_of(delims, static_cast<std::size_t>(position));
  if (begin == std::string::npos) {
    position = -1;
    return CString();
  }
  // With no delimiters find_first_of finds nothing, so the token runs to the
  // end, as documented.
  std::size_t end = m_text.find_first_of(delims, begin);
  if (end == std::string::npos) end = m_text.size();
  // Stepping past the end of the string as well as past a delimiter keeps the
  // rule "position is one past where the token stopped" uniform; the next
  // call then reports the end.
  position = static_cast<int>(end) + 1;
  return CString(m_text.substr(begin, end - begin));
}

void CString::Format(const char* format, ...) {
  va_list args;
  va_start(args, format);
  FormatV(format, args);
  va_end(args);
}

void CString::FormatV(const char* format, va_list args) {
  if (!format) {
    m_text.clear();
    return;
  }
  CKvCLocaleScope cLocale;

  va_list measureArgs;
  va_copy(measureArgs, args);
  const int needed = std::vsnprintf(nullptr, 0, format, measureArgs);
  va_end(measureArgs);
  if (needed < 0) {
    m_text.clear();
    return;
  }

  // Written into a separate buffer and swapped in only at the end, because
  // the arguments may point into m_text itself.
  std::string result(static_cast<std::size_t>(needed) + 1, '\0');
  va_list writeArgs;
  va_copy(writeArgs, args);
  const int written = std::vsnprintf(&result[0], result.size(), format, writeArgs);
  va_end(writeArgs);
  if (written < 0) {
    m_text.clear();
    return;
  }
  result.resize(static_cast<std::size_t>(written < needed ? written : needed));
  m_text.swap(result);
}
