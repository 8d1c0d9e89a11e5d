#include "wkt/KvPRJParser.h"

#include <charconv>
#include <cstring>
#include <string>

#include "wkt/KvPRJParserMethods.h"

// The writer: one-line WKT with "%.16g" numbers, and its readable layout.

namespace {

typedef CKvMapProjData D;

// The number as "%.16g" writes it, after a comma unless `comma` is false:
// to_chars with precision 16 in the general format is that by definition,
// independent of the locale and many times faster than printf, which
// matters since every name resolved is written as WKT.
void AppendNumber(std::string& out, double value, bool comma = true) {
  char buffer[64];
  char* const start = buffer + (comma ? 1 : 0);
  buffer[0] = ',';
  const std::to_chars_result r =
      std::to_chars(start, buffer + sizeof buffer, value, std::chars_format::general, 16);
  out.append(buffer, r.ptr);
}

}  // namespace

bool CKvPRJParser::Format(CString& out) const {
  std::string text;
  text.reserve(512);
  auto open = [&text](const char* keyword, const CString& name) {
    text += keyword;
    text += "[\"";
    text += name.GetString();
    text += '"';
  };
  open("PROJCS", m_strProjCSName);
  text += ',';
  open("GEOGCS", m_strGeoCSName);
  text += ',';
  open("DATUM", m_strDatum);
  text += ',';
  open("SPHEROID", m_strEllipsoid);
  AppendNumber(text, m_dMajor);
  AppendNumber(text, m_dInvFlattening);
  text += ']';
  if (m_bHasDatumShift) {
    // All seven values, whatever the type, as .prj writers give them.
    const double* v = m_DatumShift.GetParameters();
    text += ",TOWGS84[";
    for (int i = 0; i < CKvDatumShift::kValueCount; ++i) AppendNumber(text, v[i], i > 0);
    text += ']';
  }
  text += "],";
  open("PRIMEM", m_strPrimeMeridian);
  AppendNumber(text, m_dPrimeMeridian);
  text += "],";
  open("UNIT", m_strAngularUnit);
  AppendNumber(text, m_dAngularUnit);
  text += "]],";
  open("PROJECTION", m_strProjectionTypeName);
  text += "],";
  const EProjectionType t = m_eProjectionType;
  const bool known = t >= D::eTransverseMercator && t <= D::eNonProjected;
  if (known) {
    const SKvWktMethod* method = KvWktMethod(t);
    for (int i = 0; method && i < method->count; ++i) {
      const SKvWktParameter& p = method->params[i];
      if (!p.written) continue;
      text += "PARAMETER[\"";
      text += p.name;
      text += '"';
      AppendNumber(text, (this->*p.get)());
      text += "],";
    }
    open("UNIT", m_strProjUnit);
    AppendNumber(text, m_dProjUnit);
    text += "]]";
  }
  out = text;
  return known;
}

bool CKvPRJParser::Format(char* buffer, int size) const {
  CString text;
  Format(text);
  if (!buffer || text.GetLength() >= size) return false;
  std::memcpy(buffer, text.GetString(), text.GetLength() + 1);
  return true;
}

void CKvPRJParser::FormatAsReadableWKT(const CString& in, CString& out) {
  CString result;
  int start = 0;
  bool first = true;
  while (start <= in.GetLength()) {
    int open = in.Find('[', start);
    const bool last = open < 0;
    const CString piece = in.Mid(start, last ? in.GetLength() - start : open - start);
    if (first) {
      result += piece;
      first = false;
    } else {
      const int comma = piece.ReverseFind(',');
      if (comma < 0) {
        result += piece;
      } else {
        result += piece.Left(comma + 1);
        result += "\r\n";
        const int level = _GetBracketLevel(result);
        for (int i = 0; i < level; ++i) result += "    ";
        result += piece.Mid(comma + 1);
      }
    }
    if (last) break;
    result += '[';
    start = open + 1;
  }
  out = result;
}
