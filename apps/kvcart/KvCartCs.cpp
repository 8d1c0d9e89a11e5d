#include "KvCartCs.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "cart/KvCartSetup.h"
#include "mapproj/KvMapProjection.h"

namespace kvcart {
namespace {

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

size_t EditDistance(const std::string& a, const std::string& b) {
  std::vector<size_t> row(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::string Suggestions(const std::string& wanted) {
  const std::vector<std::string> names = ClosestNames(wanted, 5);
  if (names.empty()) return "";
  std::string text = "; closest catalogue names:";
  for (const std::string& name : names) text += "\n  " + name;
  return text;
}

}  // namespace

bool ResolveCs(const std::string& argument, std::string& cs, std::string& error) {
  cs = argument;
  if (!argument.empty() && argument[0] == '@') {
    const std::string path = argument.substr(1);
    std::ifstream file(path);
    if (!file) {
      error = "cannot read the coordinate-system file '" + path + "'";
      return false;
    }
    std::stringstream text;
    text << file.rdbuf();
    cs = text.str();
    // .prj files are one line, but some are wrapped; WKT needs none of the
    // line breaks.
    cs.erase(std::remove(cs.begin(), cs.end(), '\r'), cs.end());
    std::replace(cs.begin(), cs.end(), '\n', ' ');
  }
  try {
    if (CKvMapProjection::IsValid(cs.c_str()) && CKvMapProjection(cs).GetProjection()) return true;
  } catch (const std::exception&) {
    // "UTM" alone: no zone, so no system.
  }
  const std::string shown = argument.size() > 80 ? argument.substr(0, 77) + "..." : argument;
  error = "unknown coordinate system '" + shown + "'";
  if (argument.empty() || argument[0] != '@') error += Suggestions(argument);
  return false;
}

std::vector<std::string> ClosestNames(const std::string& wanted, size_t count) {
  const std::string key = Lower(wanted);
  struct SCandidate {
    bool contains;
    size_t distance;
    std::string name;
  };
  std::vector<SCandidate> candidates;
  CKvMapProjectionList& list = CKvCartSetup::Instance().m_MapProjectionList;
  for (auto it = list.GetIteratorBegin(); it != list.GetIteratorEnd(); ++it) {
    const std::string name = (*it)->GetName();
    const std::string lower = Lower(name);
    const bool contains = !key.empty() && lower.find(key) != std::string::npos;
    candidates.push_back({contains, EditDistance(key, lower), name});
  }
  std::stable_sort(candidates.begin(), candidates.end(),
                   [](const SCandidate& a, const SCandidate& b) {
                     if (a.contains != b.contains) return a.contains;
                     return a.distance < b.distance;
                   });
  std::vector<std::string> names;
  for (const SCandidate& c : candidates) {
    if (names.size() == count) break;
    // A name that shares too little with the argument is no suggestion.
    if (!c.contains && c.distance > std::max<size_t>(3, key.size() / 2)) break;
    if (std::find(names.begin(), names.end(), c.name) == names.end()) names.push_back(c.name);
  }
  return names;
}

}  // namespace kvcart
