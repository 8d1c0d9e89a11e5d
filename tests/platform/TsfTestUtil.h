#pragma once

// Helpers shared by the parameter-file tests.

#include <fstream>
#include <sstream>
#include <cstdlib>
#include <string>

#include "platform/tsf.h"

namespace tsftest {

// A canonical dump of everything reachable through the handles, with each
// parameter's type, so that two trees can be compared as strings.
inline void DumpSection(void* section, int level, std::ostringstream& out) {
  const std::string indent(static_cast<std::size_t>(level) * 2, ' ');
  for (int k = 1; k <= tsfGetNoKeywords(section); ++k) {
    void* keyword = tsfKeywordByNum(section, k);
    out << indent << tsfGetName(keyword) << ":";
    for (int p = 1; p <= tsfGetNoParams(keyword); ++p) {
      void* param = tsfParamByNum(keyword, p);
      out << " " << tsfGetParamType(param) << "<" << tsfGetText(param) << ">";
    }
    out << "\n";
  }
  for (int s = 1; s <= tsfGetNoSections(section); ++s) {
    void* child = tsfSectionByNum(section, s);
    out << indent << "[" << tsfGetName(child) << "] x" << tsfGetNoInstances(child) << "\n";
    DumpSection(child, level + 1, out);
  }
}

inline std::string Dump(void* file) {
  std::ostringstream out;
  for (int t = 1; t <= tsfGetNoTargets(file); ++t) {
    void* target = tsfTargetByNum(file, t);
    out << "[" << tsfGetName(target) << "] x" << tsfGetNoInstances(target) << "\n";
    DumpSection(target, 1, out);
  }
  return out.str();
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

inline void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

// A fresh folder for one test, ending with '/'.
inline std::string TempFolder() {
  char pattern[] = "/tmp/kvcart-test-XXXXXX";
  const char* dir = mkdtemp(pattern);
  return std::string(dir ? dir : "/tmp") + "/";
}

}  // namespace tsftest
