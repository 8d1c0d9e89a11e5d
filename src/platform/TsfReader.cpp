// Reads the text of a parameter file into its tree, one line at a time.
// The reader never trusts its input: every byte sequence either loads or
// ends in a syntax error with its line number, and nothing recurses, so
// neither deep nesting nor long lines can exhaust the stack.

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "platform/KvCLocale.h"
#include "platform/TsfInternal.h"

namespace tsf {

namespace {

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsNameStart(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
bool IsNameChar(char c) { return IsNameStart(c) || IsDigit(c); }

// [+-]?digits
bool LooksInteger(const Text& s) {
  std::size_t i = (s[0] == '+' || s[0] == '-') ? 1 : 0;
  if (i == s.size()) return false;
  for (; i < s.size(); ++i)
    if (!IsDigit(s[i])) return false;
  return true;
}

// [+-]?(digits[.digits?] | .digits)([eE][+-]?digits)? or [+-]?(inf|nan)
bool LooksFloating(const Text& s) {
  std::size_t i = (s[0] == '+' || s[0] == '-') ? 1 : 0;
  const std::string_view rest = std::string_view(s).substr(i);
  if (rest == "inf" || rest == "nan") return true;
  std::size_t mantissa = 0;
  while (i < s.size() && IsDigit(s[i])) ++i, ++mantissa;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && IsDigit(s[i])) ++i, ++mantissa;
  }
  if (mantissa == 0) return false;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    ++i;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    std::size_t exponent = 0;
    while (i < s.size() && IsDigit(s[i])) ++i, ++exponent;
    if (exponent == 0) return false;
  }
  return i == s.size();
}

double ReadDouble(const Text& s) {
  const char* first = s.data() + (s[0] == '+' ? 1 : 0);
  double value = 0.0;
  auto [end, ec] = std::from_chars(first, s.data() + s.size(), value);
  if (ec == std::errc() && end == s.data() + s.size()) return value;
  // Overflow and underflow: strtod gives the conventional +-HUGE_VAL or 0.
  return strtod_l(s.c_str(), nullptr, KvCLocale());
}

// One line being read: a cursor over [pos, end).
struct Cursor {
  const char* pos;
  const char* end;
  void SkipSpace() {
    while (pos < end && IsSpace(*pos)) ++pos;
  }
  bool AtEndOrComment() const { return pos == end || (end - pos >= 2 && pos[0] == '/' && pos[1] == '/'); }
  std::string_view Name() {
    const char* start = pos;
    while (pos < end && IsNameChar(*pos)) ++pos;
    return std::string_view(start, static_cast<std::size_t>(pos - start));
  }
};

class Reader {
 public:
  Reader(File& file, std::string& message, bool recover)
      : m_file(file), m_message(message), m_recover(recover) {}

  int Run(const char* data, std::size_t size) {
    std::vector<Section*> stack{&m_file.root};
    const char* p = data;
    const char* const end = data + size;
    if (size >= 3 && std::memcmp(p, "\xEF\xBB\xBF", 3) == 0) p += 3;  // a UTF-8 byte-order mark
    while (p < end) {
      ++m_line;
      const char* eol = static_cast<const char*>(std::memchr(p, '\n', end - p));
      if (!eol) eol = end;
      const char* const line = p;
      p = eol < end ? eol + 1 : end;
      const int status = ReadLine(line, eol, stack);
      if (status == TSF_OK) continue;
      if (!m_recover) return status;
      // Recovering: the line is dropped and the section it belongs to can
      // no longer be trusted.
      stack.back()->damaged = true;
    }
    if (stack.size() > 1) {
      const Section* open = stack.back();
      const int status = Fail(TSF_ERR_SYNTAX, "section '" + Str(open->name) + "' opened on line " +
                                                  std::to_string(open->line) + " is not closed by EndSect");
      if (!m_recover) return status;
      for (std::size_t i = 1; i < stack.size(); ++i) stack[i]->damaged = true;
    }
    return m_status;
  }

 private:
  // Reads one line [line, eol) into the tree.
  int ReadLine(const char* line, const char* eol, std::vector<Section*>& stack) {
    if (std::memchr(line, '\0', eol - line)) return Fail(TSF_ERR_SYNTAX, "NUL byte in the text");
    Cursor c{line, eol};
    c.SkipSpace();
    if (c.AtEndOrComment()) return TSF_OK;
    if (*c.pos == '[') return OpenSection(c, stack);
    if (!IsNameStart(*c.pos)) return Fail(TSF_ERR_SYNTAX, std::string("unexpected character '") + *c.pos + "'");
    const std::string_view name = c.Name();
    if (name != "EndSect") return ReadKeyword(c, name, *stack.back());
    if (stack.size() == 1) return Fail(TSF_ERR_SYNTAX, "EndSect without an open section");
    stack.back()->endLine = m_line;
    stack.pop_back();  // the rest of the line is a comment
    return TSF_OK;
  }

  // Records the first problem of the file; returns `status`.
  int Fail(int status, const std::string& what) {
    if (m_status == TSF_OK) {
      m_status = status;
      m_message = Where(m_file.path, m_line) + what;
    }
    return status;
  }

  int OpenSection(Cursor& c, std::vector<Section*>& stack) {
    ++c.pos;  // '['
    c.SkipSpace();
    if (c.pos == c.end || !IsNameStart(*c.pos)) return Fail(TSF_ERR_SYNTAX, "expected a section name after '['");
    const std::string name(c.Name());
    c.SkipSpace();
    if (c.pos == c.end || *c.pos != ']') return Fail(TSF_ERR_SYNTAX, "expected ']' after section name '" + name + "'");
    ++c.pos;
    c.SkipSpace();
    if (!c.AtEndOrComment()) return Fail(TSF_ERR_SYNTAX, "unexpected text after section header '" + name + "'");
    if (static_cast<int>(stack.size()) > kTsfMaxDepth)
      return Fail(TSF_ERR_TOO_DEEP, "sections nested deeper than " + std::to_string(kTsfMaxDepth) + " levels");
    stack.push_back(stack.back()->AddSection(name, m_line));
    return TSF_OK;
  }

  int ReadKeyword(Cursor& c, std::string_view name, Section& section) {
    if (section.depth == 0) return Fail(TSF_ERR_SYNTAX, "keyword '" + std::string(name) + "' outside any section");
    c.SkipSpace();
    if (c.pos == c.end || *c.pos != '=')
      return Fail(TSF_ERR_SYNTAX, "expected '=' after keyword '" + std::string(name) + "'");
    ++c.pos;
    Keyword* keyword = section.AddKeyword(name, m_line);
    c.SkipSpace();
    if (c.AtEndOrComment()) return TSF_OK;  // a keyword may have no parameters
    for (;;) {
      int status = ReadParam(c, *keyword);
      if (status != TSF_OK) return status;
      c.SkipSpace();
      if (c.AtEndOrComment()) return TSF_OK;
      if (*c.pos != ',') return Fail(TSF_ERR_SYNTAX, "expected ',' between parameters of '" + Str(keyword->name) + "'");
      ++c.pos;
      c.SkipSpace();
      if (c.AtEndOrComment()) return Fail(TSF_ERR_SYNTAX, "missing parameter after ',' in '" + Str(keyword->name) + "'");
    }
  }

  int ReadParam(Cursor& c, Keyword& keyword) {
    Param* param = m_file.Make<Param>(&m_file, m_line);
    if (*c.pos == '\'') {
      param->type = TSF_PARAM_TEXT;
      // Copied a run at a time: up to the next quote, which either closes
      // the text or, doubled, stands for one quote.
      for (++c.pos;;) {
        const char* quote = static_cast<const char*>(std::memchr(c.pos, '\'', static_cast<std::size_t>(c.end - c.pos)));
        if (!quote) return Fail(TSF_ERR_SYNTAX, "text of '" + Str(keyword.name) + "' not closed by a quote");
        param->text.append(c.pos, quote);
        c.pos = quote + 1;
        if (c.pos < c.end && *c.pos == '\'') {
          param->text += '\'';
          ++c.pos;
          continue;
        }
        break;
      }
    } else {
      const char* start = c.pos;
      while (c.pos < c.end && !IsSpace(*c.pos) && *c.pos != ',' && *c.pos != '\'' && !c.AtEndOrComment()) ++c.pos;
      if (c.pos == start)
        return Fail(TSF_ERR_SYNTAX, std::string("unexpected character '") + *c.pos + "' in '" + Str(keyword.name) + "'");
      param->text.assign(start, c.pos);
      ClassifyToken(*param);
    }
    keyword.params.push_back(param);
    return TSF_OK;
  }

  File& m_file;
  std::string& m_message;
  const bool m_recover;
  int m_status = TSF_OK;
  int m_line = 0;
};

}  // namespace

void ClassifyToken(Param& param) {
  const Text& s = param.text;
  if (s.empty()) {
    param.type = TSF_PARAM_WORD;
    return;
  }
  if (LooksInteger(s)) {
    const char* first = s.data() + (s[0] == '+' ? 1 : 0);
    long long value = 0;
    auto [end, ec] = std::from_chars(first, s.data() + s.size(), value);
    if (ec == std::errc() && end == s.data() + s.size()) {
      param.type = TSF_PARAM_INT;
      param.integer = value;
      param.real = static_cast<double>(value);
      return;
    }
    // Too long for 64 bits: still a number, kept as floating.
  }
  if (LooksFloating(s)) {
    param.type = TSF_PARAM_DOUBLE;
    param.real = ReadDouble(s);
    return;
  }
  param.type = TSF_PARAM_WORD;
}

int Parse(const char* data, std::size_t size, File& file, std::string& message, bool recover) {
  if (size > kTsfMaxFileSize) {
    message = Where(file.path, 0) + "file is larger than 100 MiB";
    return TSF_ERR_TOO_LARGE;
  }
  return Reader(file, message, recover).Run(data, size);
}

bool IsDamaged(const Section& section) {
  std::vector<const Section*> pending{&section};
  while (!pending.empty()) {
    const Section* s = pending.back();
    pending.pop_back();
    if (s->damaged) return true;
    pending.insert(pending.end(), s->sections.begin(), s->sections.end());
  }
  return false;
}

}  // namespace tsf
