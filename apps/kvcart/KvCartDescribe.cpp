#include "KvCartDescribe.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>
#include <sstream>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "KvCartText.h"
#include "cart/KvCartSetup.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "catalogue/KvParameterSet.h"
#include "datum/KvDatumShift.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"
#include "wkt/KvProjTranslator.h"

namespace kvcart {
namespace {

using Json = nlohmann::ordered_json;

constexpr char kLibraryProj4End[] = "+no_defs  no_defs <>";

struct SParameter {
  std::string name;
  double value;
  std::string unit;
};

struct SIdentical {
  std::string name;
  int code;          // 0: none
  bool butTheShift;  // identical once the record's datum shift is set aside
};

struct SDescription {
  std::string name, kind, method, wktMethod;
  int code = 22;
  std::vector<SParameter> parameters;
  std::string ellipsoidName, ellipsoidId;
  double major = 0, invFlattening = 0;
  std::string datum, shiftType;
  bool shiftGiven = false;  // a TOWGS84, of zeros perhaps
  double shift[7] = {};
  int epsgCode = 0;                   // the EPSG code of a catalogue name
  bool isWkt = false;                 // the string is WKT text
  std::vector<SIdentical> identical;  // catalogue records identical to a WKT
  std::string linearUnit, angularUnit;
  double linearFactor = NAN, angularFactor = NAN;
  std::string axis1Name, axis1Direction, axis2Name, axis2Direction;
  double originLon = 0, originLat = 0;
  double area[4] = {};
  std::string wkt, readableWkt;
  std::string proj4Library;  // as the library writes it
  std::string proj4;         // as cs2cs reads it; empty when there is none
  std::string noProj4;       // why there is none
};

// "e", "w", "n" or "s" for a WKT axis direction, else "".
std::string AxisLetter(const std::string& direction) {
  const std::string lower = Lower(direction);
  if (lower == "east" || lower == "west" || lower == "north" || lower == "south")
    return lower.substr(0, 1);
  return "";
}

// `number` with 15 significant digits when it is one, else unchanged: the
// library writes angles through a 15-digit degree factor, so 9 becomes
// 9.000000000000002 and -90 becomes -90.00000000000001, which proj refuses
// as a latitude beyond the pole.
std::string Rounded(const std::string& number) {
  double value = 0;
  const char* end = number.data() + number.size();
  const std::from_chars_result r = std::from_chars(number.data(), end, value);
  if (r.ec != std::errc() || r.ptr != end) return number;
  char buffer[64];
  const std::to_chars_result w =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
  return std::string(buffer, w.ptr);
}

// Every number of a "+key=value" or "+key=v1,v2,..." entry, rounded.
std::string RoundedEntry(const std::string& entry) {
  const size_t equals = entry.find('=');
  if (equals == std::string::npos) return entry;
  std::string out = entry.substr(0, equals + 1);
  size_t start = equals + 1;
  for (;;) {
    const size_t comma = entry.find(',', start);
    out += Rounded(entry.substr(start, comma == std::string::npos ? comma : comma - start));
    if (comma == std::string::npos) return out;
    out += ',';
    start = comma + 1;
  }
}

// The library's proj4 text in the form cs2cs reads: numbers rounded to 15
// significant digits, the closing entries reduced to "+no_defs", the axis
// order added; a system it cannot write stays empty.
void Proj4ForTools(SDescription& d) {
  std::string text = d.proj4Library;
  if (d.kind == "local") {
    d.noProj4 = "a local system is not georeferenced";
    return;
  }
  if (text.empty() || text.rfind("+proj=undef", 0) == 0) {
    d.noProj4 = d.code == CKvMapProjData::eRotatedLongitudeLatitude
                    ? "the rotation is made on the ellipsoid, which proj4 has no method for"
                    : "the library writes none for this method";
    return;
  }
  const size_t end = text.rfind(kLibraryProj4End);
  if (end != std::string::npos) text = text.substr(0, end);
  // The library names the oblique stereographic "stere" unless its WKT says
  // "Double_Stereographic" or "Oblique_Stereographic"; its engine is the
  // double stereographic throughout, which proj calls "sterea" ("stere" is
  // another method there).
  const std::string stere = "+proj=stere ";
  if (d.code == CKvMapProjData::eStereographic && text.rfind(stere, 0) == 0)
    text = "+proj=sterea " + text.substr(stere.size());
  std::istringstream entries(text);
  std::string entry;
  text.clear();
  while (entries >> entry) text += (text.empty() ? "" : " ") + RoundedEntry(entry);
  // The library's text does not carry the axis order.
  const std::string axes = AxisLetter(d.axis1Direction) + AxisLetter(d.axis2Direction);
  if (d.kind == "projected" && axes.size() == 2 && axes != "en") text += " +axis=" + axes + "u";
  d.proj4 = text + " +no_defs";
}

// The EPSG code of the catalogue record a name resolves to; 0 for none.
int CodeOf(const std::string& name) {
  CString trimmed(name);
  trimmed.TrimLeft();
  trimmed.TrimRight();
  const CKvMapProjData* record =
      CKvCartSetup::Instance().m_MapProjectionList.GetMapProjection(trimmed.GetString());
  const CKvMapProjDetails* details = CKvParameterSetBase::DetailsOf(record);
  return details ? details->GetEpsgCode() : 0;
}

bool Near(double a, double b) {
  return std::fabs(a - b) <= 1e-9 * std::max({1.0, std::fabs(a), std::fabs(b)});
}

// The two standard parallels of a cone, in either order, are one system.
void OrderParallels(CKvMapProjData::EProjectionType type, std::vector<double>& values) {
  const bool cone = type == CKvMapProjData::eLambert2SP ||
                    type == CKvMapProjData::eAlbersEqualArea ||
                    type == CKvMapProjData::eEquidistantConic;
  if (cone && values.size() >= 2 && values[0] > values[1]) std::swap(values[0], values[1]);
}

// The WKT of a catalogue record without its TOWGS84.
std::string WithoutShift(CKvMapProjData& record) {
  CString text;
  CKvPRJParser(record).Format(text);
  std::string wkt = text.GetString();
  const std::size_t at = wkt.find(",TOWGS84[");
  if (at != std::string::npos) wkt.erase(at, wkt.find(']', at) + 1 - at);
  return wkt;
}

// The catalogue records that the library's AreIdentical finds identical to
// the WKT `cs` and that share its linear unit; when `cs` says no datum
// shift, also those that would be identical but for theirs (a .prj of the
// ESRI kind never says one).  AreIdentical builds and parses both systems,
// so the records are first narrowed down cheaply: same method, the
// parameters within 1e-9 once in degrees and metres, the same ellipsoid and
// unit.
std::vector<SIdentical> IdenticalRecords(const std::string& cs) {
  std::vector<SIdentical> found;
  CString text(cs);
  text.TrimLeft();
  text.TrimRight();
  CKvPRJParser parser(text);
  parser.Parse(true);
  const CKvMapProjData::EProjectionType type = parser.GetProjectionType();
  std::unique_ptr<CKvMapProjData> wanted(parser._CreateProjData());
  CKvEllipsoid ellipsoid;
  CKvMapProjection object(cs);
  if (!wanted || !object.GetProjection() ||
      !object.GetProjection()->GetAnonymousEllipsoid(ellipsoid))
    return found;
  CString unitName, angularName;
  double unit = 0, angular = 0;
  parser.GetProjUnit(unitName, unit);
  parser.GetAngularUnit(angularName, angular);
  const int count = wanted->GetNoOfParameters();
  std::vector<double> values(count);
  for (int i = 0; i < count; ++i) {
    std::string label;
    CKvMapProjData::EParamType kind;
    wanted->GetParameter(i, label, values[i], kind);
    if (kind == CKvMapProjData::eParamAngle) values[i] *= angular * KvConst::kRadToDeg;
    if (kind == CKvMapProjData::eParamLength && unit != KvConst::kNotSet) values[i] *= unit;
  }
  OrderParallels(type, values);
  const double systemUnit = unit == KvConst::kNotSet ? 1.0 : unit;
  const bool saysShift = parser.HasDatumShift();
  CKvMapProjectionList& list = CKvCartSetup::Instance().m_MapProjectionList;
  for (auto it = list.GetIteratorBegin(); it != list.GetIteratorEnd(); ++it) {
    CKvMapProjData* record = *it;
    if (record->GetProjectionType() != type || record->GetNoOfParameters() != count) continue;
    std::vector<double> own(count);
    for (int i = 0; i < count; ++i) {
      std::string label;
      CKvMapProjData::EParamType kind;
      record->GetParameter(i, label, own[i], kind);
    }
    OrderParallels(type, own);
    bool same = true;
    for (int i = 0; same && i < count; ++i) same = Near(own[i], values[i]);
    const CKvMapProjDetails* details = CKvParameterSetBase::DetailsOf(record);
    const double recordUnit = details ? details->GetLinearUnitFactor() : 1.0;
    const bool geographic =
        type == CKvMapProjData::eGeographical || type == CKvMapProjData::eRotatedLongitudeLatitude;
    if (!same || (!geographic && !Near(recordUnit, systemUnit))) continue;
    const CKvEllipsoid* known = CKvMapProjection::EllipsoidFromID(record->GetEllipsoidID().c_str());
    if (!known || !known->IsEquivalent(ellipsoid)) continue;
    const std::string name = record->GetName();
    const int code = details ? details->GetEpsgCode() : 0;
    if (CKvMapProjection::AreIdentical(cs.c_str(), name.c_str()))
      found.push_back({name, code, false});
    else if (!saysShift && details && details->HasDatumShift() &&
             CKvMapProjection::AreIdentical(cs.c_str(), WithoutShift(*record).c_str()))
      found.push_back({name, code, true});
  }
  return found;
}

SDescription Collect(const std::string& cs) {
  SDescription d;
  CKvMapProjection object(cs);
  CKvProjection* engine = object.GetProjection();
  d.name = object.GetName();
  d.kind = object.IsLocal() ? "local" : object.IsGeographical() ? "geographic" : "projected";
  d.isWkt = CKvPRJParser::IsPRJ(CString(cs));
  if (!d.isWkt) d.epsgCode = CodeOf(cs);

  // The special names keep their name as their string; their WKT is the
  // engine's.
  CString wkt(object.GetProjectionString());
  if (!CKvPRJParser::IsPRJ(wkt) && engine) CKvPRJParser(*engine).Format(wkt);
  d.wkt = wkt.GetString();
  CString readable;
  CKvPRJParser::FormatAsReadableWKT(wkt, readable);
  d.readableWkt = readable.GetString();

  CKvPRJParser parser(wkt);
  parser.Parse(false);
  d.code = parser.GetProjectionType();
  d.method = parser.GetProjectionTypeTitle();
  d.wktMethod = parser.GetProjectionTypeName().GetString();
  for (int i = 0; i < parser.GetNoOfParameters(); ++i) {
    CString name, unit;
    double value = 0, factor = 0;
    if (!parser.GetParameter(i, name, value, unit, factor)) continue;
    std::string label = name.GetString();
    if (!label.empty() && label.back() == ':')
      label.pop_back();  // the catalogue's labels end in ':'
    d.parameters.push_back({label, value, unit.GetString()});
  }
  CString ellipsoidName;
  parser.GetEllipsoid(ellipsoidName, d.major, d.invFlattening);
  d.ellipsoidName = ellipsoidName.GetString();
  CKvEllipsoid ellipsoid;
  if (engine && engine->GetAnonymousEllipsoid(ellipsoid)) {
    d.major = ellipsoid.GetMajor();
    d.invFlattening = ellipsoid.GetInvFlatness();
  }
  if (const CKvEllipsoid* known = CKvMapProjection::Ellipsoid(d.name.c_str())) {
    d.ellipsoidId = known->GetID();
    if (d.ellipsoidName.empty()) d.ellipsoidName = known->GetName();
  }
  d.datum = parser.GetDatum().GetString();
  CKvDatumShift shift;
  object.GetDatumShift(shift);
  d.shiftType = shift.GetTypeAsText();
  d.shiftGiven = parser.HasDatumShift();
  for (int i = 0; i < 7; ++i) d.shift[i] = shift.GetParameters()[i];

  // Units as the object collected them, else as its WKT declares them (the
  // special names collect none).
  char unitName[64] = "";
  CString name;
  if (object.GetUnit(CKvMapProjection::eProjectedUnit, &d.linearFactor, unitName)) {
    d.linearUnit = unitName;
  } else {
    parser.GetProjUnit(name, d.linearFactor);
    d.linearUnit = name.GetString();
  }
  unitName[0] = '\0';
  if (object.GetUnit(CKvMapProjection::eAngularUnit, &d.angularFactor, unitName)) {
    d.angularUnit = unitName;
  } else {
    parser.GetAngularUnit(name, d.angularFactor);
    d.angularUnit = name.GetString();
  }
  if (d.linearUnit.empty()) d.linearFactor = NAN;
  if (d.angularUnit.empty()) d.angularFactor = NAN;

  CString direction;
  parser.GetAxisInfo(CKvPRJParser::eAxis1, name, direction);
  d.axis1Name = name.GetString();
  d.axis1Direction = direction.GetString();
  parser.GetAxisInfo(CKvPRJParser::eAxis2, name, direction);
  d.axis2Name = name.GetString();
  d.axis2Direction = direction.GetString();
  if (d.kind == "geographic") {
    // Geographic coordinates cross every interface as longitude, latitude.
    d.axis1Name = "Longitude", d.axis1Direction = "EAST";
    d.axis2Name = "Latitude", d.axis2Direction = "NORTH";
  }

  object.GetOrigin(&d.originLon, &d.originLat);
  object.GetDefaultArea(&d.area[0], &d.area[1], &d.area[2], &d.area[3]);
  d.proj4Library = CKvProjTranslator().Convert2Proj4(cs, nullptr, 0);
  // A special name such as LONG/LAT translates through its engine's WKT.
  if (d.proj4Library.rfind("+proj=undef", 0) == 0 && engine && d.wkt != cs)
    d.proj4Library = CKvProjTranslator().Convert2Proj4(d.wkt, nullptr, 0);
  Proj4ForTools(d);
  if (d.isWkt) d.identical = IdenticalRecords(cs);
  return d;
}

std::string Unit(const std::string& name, double factor, const char* base) {
  if (name.empty()) return "-";
  return ToUtf8(name) + " (" + Number(factor) + " " + base + ")";
}

void PrintText(const SDescription& d, bool exactProj4) {
  auto line = [](const char* key, const std::string& value) {
    std::printf("%-16s %s\n", key, value.c_str());
  };
  line("Name:", ToUtf8(d.name));
  if (!d.isWkt) line("EPSG code:", d.epsgCode > 0 ? std::to_string(d.epsgCode) : "-");
  line("Kind:", d.kind);
  line("Method:", d.method + " (code " + std::to_string(d.code) + ", WKT \"" +
                      ToUtf8(d.wktMethod) + "\")");
  for (const SParameter& p : d.parameters)
    std::printf("  %-28s %s%s\n", ToUtf8(p.name).c_str(), Number(p.value).c_str(),
                p.unit.empty() ? "" : (" " + ToUtf8(p.unit)).c_str());
  line("Ellipsoid:", ToUtf8(d.ellipsoidName) +
                         (d.ellipsoidId.empty() ? "" : " [" + d.ellipsoidId + "]") + "  a = " +
                         Number(d.major) + " m, 1/f = " + Number(d.invFlattening));
  line("Datum:", ToUtf8(d.datum));
  std::string shift = d.shiftType;
  if (d.shiftType != "None") {
    shift += ":";
    for (double v : d.shift) shift += " " + Number(v);
  } else if (d.shiftGiven) {
    shift = "None (TOWGS84 of zeros: the datum is WGS 84's)";
  }
  line("Datum shift:", shift);
  line("Linear unit:", d.kind == "geographic" ? "- (coordinates in degrees)"
                                              : Unit(d.linearUnit, d.linearFactor, "m"));
  line("Angular unit:", Unit(d.angularUnit, d.angularFactor, "rad"));
  line("Axis order:", ToUtf8(d.axis1Name) + " (" + ToUtf8(d.axis1Direction) + "), " +
                          ToUtf8(d.axis2Name) + " (" + ToUtf8(d.axis2Direction) + ")");
  line("Origin:", Number(d.originLon) + " " + Number(d.originLat));
  line("Default area:", Number(d.area[0]) + " " + Number(d.area[1]) + " to " + Number(d.area[2]) +
                            " " + Number(d.area[3]));
  if (d.isWkt) {
    if (d.identical.empty()) line("Identical to:", "no catalogue system");
    for (std::size_t i = 0; i < d.identical.size(); ++i) {
      const SIdentical& r = d.identical[i];
      line(i == 0 ? "Identical to:" : "",
           ToUtf8(r.name) + (r.code > 0 ? " (EPSG:" + std::to_string(r.code) + ")" : "") +
               (r.butTheShift ? ", but for the datum shift to WGS 84 it knows and this text "
                                "does not say"
                              : ""));
    }
  }
  line("WKT:", ToUtf8(d.wkt));
  if (exactProj4)
    line("Proj4:", d.proj4Library);
  else
    line("Proj4:", d.proj4.empty() ? "- (" + d.noProj4 + ")" : d.proj4);
  std::printf("Readable WKT:\n%s\n", ToUtf8(d.readableWkt).c_str());
}

Json NumberOrNull(double value) { return std::isfinite(value) ? Json(value) : Json(nullptr); }

Json Unit(const std::string& name, double factor) {
  if (name.empty()) return nullptr;
  return Json{{"name", ToUtf8(name)}, {"factor", NumberOrNull(factor)}};
}

void PrintJson(const SDescription& d) {
  Json out;
  out["name"] = ToUtf8(d.name);
  if (!d.isWkt) out["epsg_code"] = d.epsgCode > 0 ? Json(d.epsgCode) : Json(nullptr);
  out["kind"] = d.kind;
  out["method"] = {{"title", d.method}, {"code", d.code}, {"wkt_name", ToUtf8(d.wktMethod)}};
  out["parameters"] = Json::array();
  for (const SParameter& p : d.parameters)
    out["parameters"].push_back(
        {{"name", ToUtf8(p.name)}, {"value", NumberOrNull(p.value)}, {"unit", ToUtf8(p.unit)}});
  out["ellipsoid"] = {{"name", ToUtf8(d.ellipsoidName)},
                      {"id", ToUtf8(d.ellipsoidId)},
                      {"semi_major_axis", NumberOrNull(d.major)},
                      {"inverse_flattening", NumberOrNull(d.invFlattening)}};
  out["datum"] = ToUtf8(d.datum);
  Json values = Json::array();
  for (double v : d.shift) values.push_back(NumberOrNull(v));
  out["datum_shift"] = {{"type", d.shiftType}, {"given", d.shiftGiven}, {"values", values}};
  out["linear_unit"] = d.kind == "geographic" ? Json(nullptr) : Unit(d.linearUnit, d.linearFactor);
  out["angular_unit"] = Unit(d.angularUnit, d.angularFactor);
  out["axes"] = {{{"name", ToUtf8(d.axis1Name)}, {"direction", ToUtf8(d.axis1Direction)}},
                 {{"name", ToUtf8(d.axis2Name)}, {"direction", ToUtf8(d.axis2Direction)}}};
  out["origin"] = {NumberOrNull(d.originLon), NumberOrNull(d.originLat)};
  out["default_area"] = Json::array();
  for (double v : d.area) out["default_area"].push_back(NumberOrNull(v));
  if (d.isWkt) {
    out["identical"] = Json::array();
    for (const SIdentical& r : d.identical)
      out["identical"].push_back({{"name", ToUtf8(r.name)},
                                  {"epsg_code", r.code > 0 ? Json(r.code) : Json(nullptr)},
                                  {"but_the_datum_shift", r.butTheShift}});
  }
  out["wkt"] = ToUtf8(d.wkt);
  out["readable_wkt"] = ToUtf8(d.readableWkt);
  out["proj4"] = d.proj4.empty() ? Json(nullptr) : Json(d.proj4);
  out["proj4_library"] = d.proj4Library;
  std::fputs((out.dump(2) + "\n").c_str(), stdout);
}

}  // namespace

void Describe(const std::string& cs, bool json, bool exactProj4) {
  const SDescription d = Collect(cs);
  if (json)
    PrintJson(d);
  else
    PrintText(d, exactProj4);
}

}  // namespace kvcart
