#include "KvCartCs.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "KvCartProjString.h"
#include "KvCartText.h"
#include "cart/KvCartSetup.h"
#include "catalogue/KvMapProjData.h"
#include "mapproj/KvMapProjection.h"
#include "wkt/KvPRJParser.h"

namespace kvcart {
namespace {

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
  for (const std::string& name : names) text += "\n  " + ToUtf8(name);
  return text;
}

std::string Shown(const std::string& text) {
  return ToUtf8(text.size() > 80 ? text.substr(0, 77) + "..." : text);
}

CKvMapProjectionList& Catalogue() { return CKvCartSetup::Instance().m_MapProjectionList; }

// The catalogue names equal to `name` when letter case is ignored.
std::vector<std::string> NamesIgnoringCase(const std::string& name) {
  std::vector<std::string> names;
  const std::string key = Lower(name);
  for (auto it = Catalogue().GetIteratorBegin(); it != Catalogue().GetIteratorEnd(); ++it) {
    const std::string candidate = (*it)->GetName();
    if (Lower(candidate) == key &&
        std::find(names.begin(), names.end(), candidate) == names.end())
      names.push_back(candidate);
  }
  return names;
}

// Why a catalogue record gives no engine, as far as kvcart can tell.
std::string RecordReason(CKvMapProjData& record) {
  const std::string id = record.GetEllipsoidID();
  if (!id.empty() && !CKvCartSetup::Instance().m_EllipsoidList.GetEllipsoid(id))
    return "its ellipsoid '" + id + "' is not in the ellipsoid catalogue";
  return "its method, " + record.GetProjectionTypeTitle() +
         ", has no engine in this version of the library";
}

// Why a WKT text gives no engine, as far as kvcart can tell.
std::string WktReason(const std::string& text) {
  CKvPRJParser parser(text.c_str());
  parser.Parse(false);
  if (parser.GetProjectionType() != CKvMapProjData::eUndefined)
    return "its method, " + parser.GetProjectionTypeTitle() +
           ", has no engine in this version of the library";
  const std::string method = CKvPRJParser::GetName(text.c_str(), "PROJECTION").GetString();
  if (!method.empty() && parser.GetProjectionTypeName().IsEmpty())
    return "its PROJECTION[\"" + Shown(method) + "\"] is not a method the library knows";
  if (!method.empty())
    return "it lacks a parameter or the linear UNIT its method, " + Shown(method) + ", needs";
  return "it lacks the UNIT or the SPHEROID of a geographic system";
}

}  // namespace

bool ResolveCs(const std::string& argument, std::string& cs, std::string& error) {
  std::string text = argument;
  const bool fromFile = !argument.empty() && argument[0] == '@';
  if (fromFile) {
    const std::string path = argument.substr(1);
    std::ifstream file(path);
    if (!file) {
      error = "cannot read the coordinate-system file '" + path + "'";
      return false;
    }
    std::stringstream content;
    content << file.rdbuf();
    text = content.str();
    // .prj files are one line, but some are wrapped; WKT needs none of the
    // line breaks.
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    std::replace(text.begin(), text.end(), '\n', ' ');
  }
  const std::string what = fromFile ? "'" + Shown(argument.substr(1)) + "'" : "'" + Shown(argument) + "'";

  const bool isProj = IsProjString(text);
  if (isProj) {
    std::string wkt, why;
    if (!ProjStringToWkt(text, wkt, why)) {
      error = "cannot use the proj string " + what + ": " + why;
      return false;
    }
    text = wkt;
  }
  const bool isWkt = CKvPRJParser::IsPRJ(text.c_str());
  CKvMapProjData* record = isWkt ? nullptr : Catalogue().GetMapProjection(text);
  if (!isWkt && !record && !fromFile) {
    const std::vector<std::string> names = NamesIgnoringCase(text);
    if (names.size() == 1) {
      text = names[0];
      record = Catalogue().GetMapProjection(text);
    } else if (names.size() > 1) {
      error = "'" + Shown(argument) + "' matches several catalogue names when letter case is "
              "ignored; give one exactly:";
      for (const std::string& name : names) error += "\n  " + ToUtf8(name);
      return false;
    }
  }

  try {
    if (CKvMapProjection::IsValid(text.c_str()) && CKvMapProjection(text).GetProjection()) {
      cs = text;
      return true;
    }
  } catch (const std::exception&) {
    // "UTM" alone: no zone, so no system.
  }
  if (Lower(text) == "utm") {
    error = "'UTM' needs a zone: UTM-1 to UTM-60 (kvcart zone LON names the zone of a longitude)";
  } else if (record) {
    error = "'" + Shown(record->GetName()) + "' is in the catalogue but cannot be used: " +
            RecordReason(*record);
  } else if (isWkt) {
    error = (isProj ? "the proj string " : fromFile ? "the WKT of " : "the WKT ") + what +
            " cannot be used: " + WktReason(text);
  } else {
    error = "unknown coordinate system " + what;
    if (!fromFile) error += Suggestions(argument);
  }
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
