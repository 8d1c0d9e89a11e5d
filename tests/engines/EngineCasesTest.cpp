// The engines' accuracy cases, read from the data files of
// tests/data/engines: every file there is one test.  A failing case is
// reported with its file and line.
//
// The format, one statement per line (a line ending in a backslash goes on
// in the next; '#' starts a comment line; blank lines are skipped):
//
//   system TEXT       the coordinate system of the cases that follow: a WKT
//                     text or a catalogue name, resolved as callers resolve
//                     it, so inputs and outputs are in the system's units
//                     and axis order.  Resets engine, tolerances and source.
//   engine NAME       build the named engine from the system's WKT values
//                     instead (CKvTransverseMercator: the Gauss-Krueger
//                     engine, which no string selects).
//   tolerance N UNIT  the allowed difference of the outputs that follow:
//                     UNIT deg for geographic outputs, or m, cm, mm, um or
//                     nm for projected ones, in the system's own linear
//                     unit (a system in feet reads "m" as one foot, a
//                     rotated grid as one degree).  Both may be set.
//   source TEXT       where the expected numbers that follow come from (a
//                     publication, or the exact command that computed
//                     them).  Every case needs one.
//   forward LON LAT X Y    Geo2Proj(LON, LAT) is (X, Y).
//   inverse X Y LON LAT    Proj2Geo(X, Y) is (LON, LAT).
//   both LON LAT X Y       forward and inverse of the same pair.
//   roundtrip LON LAT      Proj2Geo(Geo2Proj(LON, LAT)) is (LON, LAT).
//
// Numbers are read in the C locale; an angle may also be written as
// degrees:minutes:seconds, the sign of the degrees applying to the whole
// (-76:56:37.26).  Every forward case also checks that a clone of the
// engine gives bit-identical results.
//
// KVCART_ENGINE_CASES names another folder to read, and with
// KVCART_ENGINE_CASES_REPORT set the driver prints, for each system (and
// engine), the largest differences it found: how tools/
// measure_engine_accuracy.sh measures the accuracy the engines' headers
// state.
#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "engines/KvProjection.h"
#include "engines/KvTransverseMercator.h"
#include "mapproj/KvMapProjection.h"
#include "wkt/KvPRJParser.h"
#include "wkt/KvProjectionInfo.h"

namespace {

namespace fs = std::filesystem;

std::string CaseFolder() {
  const char* other = std::getenv("KVCART_ENGINE_CASES");
  return other && *other ? other : KVCART_TEST_DATA_DIR "engines";
}

std::vector<std::string> CaseFiles() {
  std::vector<std::string> files;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(CaseFolder(), error))
    if (entry.is_regular_file() && entry.path().extension() == ".cases")
      files.push_back(entry.path().string());
  std::sort(files.begin(), files.end());
  return files;
}

// A number, or degrees:minutes:seconds; false when the text is neither.
// from_chars reads the C locale's format whatever the process locale.
bool ReadNumber(const std::string& text, double* value) {
  const char* s = text.data();
  const char* const end = s + text.size();
  double parts[3] = {0, 0, 0};
  for (int count = 0; count < 3; ++count) {
    const std::from_chars_result read = std::from_chars(s, end, parts[count]);
    if (read.ec != std::errc() || read.ptr == s) return false;
    s = read.ptr;
    if (s == end) {
      const double sign = std::signbit(parts[0]) ? -1.0 : 1.0;
      *value = parts[0] + sign * (parts[1] / 60.0 + parts[2] / 3600.0);
      return true;
    }
    if (*s++ != ':') return false;
  }
  return false;
}

// The engine of the cases and the units and axes of their system.
struct SSystem {
  std::unique_ptr<CKvProjection> engine;
  CKvProjectionInfo info;
};

// Builds `name` from the WKT's values, which must be in metres and degrees.
std::unique_ptr<CKvProjection> NamedEngine(const std::string& name, const std::string& wkt,
                                           std::string* error) {
  CKvPRJParser parser(wkt.c_str());
  if (!parser.Parse(false)) {
    *error = "the system is not a WKT text with a method";
    return nullptr;
  }
  if (name != "CKvTransverseMercator" ||
      parser.GetProjectionType() != CKvMapProjData::eTransverseMercator) {
    *error = "no engine " + name + " for this system";
    return nullptr;
  }
  CString ellipsoid, unit;
  double a = 0, invF = 0, factor = 0;
  parser.GetEllipsoid(ellipsoid, a, invF);
  parser.GetProjUnit(unit, factor);
  if (factor != 1.0) {
    *error = "an engine by name needs a system in metres";
    return nullptr;
  }
  return std::unique_ptr<CKvProjection>(new CKvTransverseMercator(
      parser.GetProjCSname().GetString(), parser.GetScaleFactor(), parser.GetCentralMeridian(),
      parser.GetLatitudeOfOrigin(), parser.GetFalseEasting(), parser.GetFalseNorthing(),
      CKvEllipsoid(ellipsoid.GetString(), "", a, invF)));
}

class CCaseFile {
 public:
  explicit CCaseFile(const std::string& path)
      : m_path(path), m_report(std::getenv("KVCART_ENGINE_CASES_REPORT") != nullptr) {}

  void Run() {
    std::ifstream in(m_path);
    if (!in) {
      ADD_FAILURE() << "cannot read " << m_path;
      return;
    }
    std::string line, statement;
    int lineNo = 0, firstLine = 0;
    while (std::getline(in, line)) {
      ++lineNo;
      if (statement.empty()) firstLine = lineNo;
      const bool continued = !line.empty() && line.back() == '\\';
      statement += continued ? line.substr(0, line.size() - 1) : line;
      if (continued) continue;
      m_line = firstLine;
      _Statement(statement);
      statement.clear();
    }
    _EndBlock();
    if (m_cases == 0) ADD_FAILURE_AT(m_path.c_str(), lineNo) << "the file holds no case";
  }

 private:
  // A failure on the current statement's line.
  void _Report(const std::string& message) {
    ADD_FAILURE_AT(m_path.c_str(), m_line) << message;
  }

  void _Statement(const std::string& text) {
    std::istringstream words(text);
    std::string keyword;
    if (!(words >> keyword) || keyword[0] == '#') return;
    std::string rest;
    std::getline(words, rest);
    rest.erase(0, rest.find_first_not_of(" \t"));
    if (keyword == "system") return _System(rest);
    if (keyword == "engine") return _Engine(rest);
    if (keyword == "source") {
      m_source = rest;
      return;
    }
    std::istringstream values(rest);
    std::string word, unit;
    std::vector<double> numbers;
    if (keyword == "tolerance") {
      double v;
      if (!(values >> word >> unit) || !ReadNumber(word, &v) || (values >> word))
        return _Report("tolerance takes a number and a unit");
      return _Tolerance(v, unit);
    }
    while (values >> word) {
      double v;
      if (!ReadNumber(word, &v)) return _Report("not a number: " + word);
      numbers.push_back(v);
    }
    if (keyword == "forward" || keyword == "inverse" || keyword == "both" ||
        keyword == "roundtrip")
      return _Case(keyword, numbers);
    _Report("unknown statement: " + keyword);
  }

  // Prints the largest differences of the cases since the last system or
  // engine statement, in report mode.
  void _EndBlock() {
    if (m_report && m_blockCases > 0)
      std::printf("%s:%d: %d cases; projected within %.3g, geographic within %.3g deg; %s\n",
                  m_path.c_str(), m_blockLine, m_blockCases, m_worstProjected, m_worstGeographic,
                  m_source.c_str());
    m_blockLine = m_line;
    m_blockCases = 0;
    m_worstProjected = m_worstGeographic = 0;
  }

  void _System(const std::string& text) {
    _EndBlock();
    m_text = text;
    // A WKT text brings its units and axes; a catalogue name is in metres.
    m_system.info = CKvProjectionInfo();
    m_system.engine.reset(CKvMapProjection::GetProjection(text.c_str(), &m_system.info));
    if (!m_system.engine) _Report("the system resolves to no engine");
    m_projected = m_geographic = -1;
    m_source.clear();
  }

  void _Engine(const std::string& name) {
    _EndBlock();
    std::string error;
    m_system.engine = NamedEngine(name, m_text, &error);
    if (!m_system.engine) _Report(error);
  }

  void _Tolerance(double value, const std::string& unit) {
    if (unit == "deg") {
      m_geographic = value;
      return;
    }
    const struct {
      const char* name;
      double metres;
    } units[] = {{"m", 1}, {"cm", 1e-2}, {"mm", 1e-3}, {"um", 1e-6}, {"nm", 1e-9}};
    for (const auto& u : units) {
      if (unit != u.name) continue;
      m_projected = value * u.metres;
      return;
    }
    _Report("unknown unit " + unit + " (m, cm, mm, um, nm or deg)");
  }

  void _Case(const std::string& direction, const std::vector<double>& n) {
    ++m_cases;
    ++m_blockCases;
    const std::size_t wanted = direction == "roundtrip" ? 2 : 4;
    if (n.size() != wanted) return _Report(direction + " takes " + std::to_string(wanted) +
                                           " numbers, not " + std::to_string(n.size()));
    if (m_source.empty()) return _Report("no source line names where the numbers come from");
    if (!m_system.engine) return _Report("no engine to test");
    const bool forward = direction == "forward" || direction == "both";
    const bool inverse = direction == "inverse" || direction == "both";
    if ((forward && m_projected < 0) ||
        ((inverse || direction == "roundtrip") && m_geographic < 0))
      return _Report("no tolerance for the outputs of " + direction);
    if (direction == "inverse") return _Inverse(n[0], n[1], n[2], n[3]);
    if (direction == "roundtrip") {
      double x, y;
      _Geo2Proj(*m_system.engine, n[0], n[1], &x, &y);
      return _Inverse(x, y, n[0], n[1]);
    }
    _Forward(n[0], n[1], n[2], n[3]);
    if (inverse) _Inverse(n[2], n[3], n[0], n[1]);
  }

  void _Geo2Proj(CKvProjection& engine, double lon, double lat, double* x, double* y) const {
    engine.Geo2Proj(lon, lat, x, y);
    m_system.info.Convert(*x, *y);
  }

  void _Forward(double lon, double lat, double x, double y) {
    double gx, gy, cx, cy;
    _Geo2Proj(*m_system.engine, lon, lat, &gx, &gy);
    _Expect("x", gx, x, m_projected, &m_worstProjected);
    _Expect("y", gy, y, m_projected, &m_worstProjected);
    std::unique_ptr<CKvProjection> clone(m_system.engine->Clone());
    _Geo2Proj(*clone, lon, lat, &cx, &cy);
    if (std::memcmp(&cx, &gx, sizeof cx) != 0 || std::memcmp(&cy, &gy, sizeof cy) != 0)
      _Report("a clone projects differently");
  }

  void _Inverse(double x, double y, double lon, double lat) {
    double glon, glat;
    m_system.info.InvConvert(x, y);
    m_system.engine->Proj2Geo(x, y, &glon, &glat);
    _Expect("lon", glon, lon, m_geographic, &m_worstGeographic);
    _Expect("lat", glat, lat, m_geographic, &m_worstGeographic);
  }

  void _Expect(const char* what, double got, double expected, double tolerance, double* worst) {
    const double off = std::fabs(got - expected);
    if (!(off <= *worst)) *worst = off;
    if (off <= tolerance) return;
    std::ostringstream message;
    message.precision(17);
    message << what << " is " << got << ", expected " << expected << " within " << tolerance
            << " (off by " << got - expected << "); source: " << m_source;
    _Report(message.str());
  }

  std::string m_path;
  bool m_report;
  int m_line = 0;
  int m_cases = 0;
  int m_blockLine = 0;
  int m_blockCases = 0;
  double m_worstProjected = 0;
  double m_worstGeographic = 0;
  std::string m_text;
  SSystem m_system;
  double m_projected = -1;
  double m_geographic = -1;
  std::string m_source;
};

class EngineCases : public testing::TestWithParam<std::string> {};

TEST_P(EngineCases, MatchIndependentValues) {
  kvtest::EnsureCatalogue();
  CCaseFile(GetParam()).Run();
}

INSTANTIATE_TEST_SUITE_P(DataFiles, EngineCases, testing::ValuesIn(CaseFiles()),
                         [](const testing::TestParamInfo<std::string>& info) {
                           std::string name = fs::path(info.param).stem().string();
                           for (char& c : name)
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           return name;
                         });

TEST(EngineCases, FolderHoldsCaseFiles) {
  EXPECT_FALSE(CaseFiles().empty()) << "no .cases files in " << CaseFolder();
}

}  // namespace
