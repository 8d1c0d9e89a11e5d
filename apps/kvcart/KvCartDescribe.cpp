#include "KvCartDescribe.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include "cart/KvCartSetup.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvParameterSet.h"
#include "datum/KvDatumShift.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"
#include "wkt/KvProjTranslator.h"

namespace kvcart {
namespace {

// The shortest text that reads back as `value`, without an exponent for
// the magnitudes coordinates and parameters have.
std::string Number(double value) {
  if (!std::isfinite(value)) return "null";
  char buffer[400];
  const double magnitude = std::fabs(value);
  const std::chars_format format = magnitude == 0.0 || (magnitude >= 1e-6 && magnitude < 1e15)
                                       ? std::chars_format::fixed
                                       : std::chars_format::general;
  const std::to_chars_result r = std::to_chars(buffer, buffer + sizeof buffer, value, format);
  return std::string(buffer, r.ptr);
}

std::string Quoted(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        if (static_cast<unsigned char>(c) < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          out += escaped;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

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
  std::string wkt, readableWkt, proj4;
};

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

  char unitName[64] = "";
  if (object.GetUnit(CKvMapProjection::eProjectedUnit, &d.linearFactor, unitName))
    d.linearUnit = unitName;
  else
    d.linearFactor = NAN;
  unitName[0] = '\0';
  if (object.GetUnit(CKvMapProjection::eAngularUnit, &d.angularFactor, unitName))
    d.angularUnit = unitName;
  else
    d.angularFactor = NAN;

  CString name, direction;
  parser.GetAxisInfo(CKvPRJParser::eAxis1, name, direction);
  d.axis1Name = name.GetString();
  d.axis1Direction = direction.GetString();
  parser.GetAxisInfo(CKvPRJParser::eAxis2, name, direction);
  d.axis2Name = name.GetString();
  d.axis2Direction = direction.GetString();

  object.GetOrigin(&d.originLon, &d.originLat);
  object.GetDefaultArea(&d.area[0], &d.area[1], &d.area[2], &d.area[3]);
  d.proj4 = CKvProjTranslator().Convert2Proj4(cs, nullptr, 0);
  if (d.isWkt) d.identical = IdenticalRecords(cs);
  return d;
}

void PrintText(const SDescription& d) {
  auto line = [](const char* key, const std::string& value) {
    std::printf("%-16s %s\n", key, value.c_str());
  };
  line("Name:", d.name);
  if (!d.isWkt) line("EPSG code:", d.epsgCode > 0 ? std::to_string(d.epsgCode) : "-");
  line("Kind:", d.kind);
  line("Method:", d.method + " (code " + std::to_string(d.code) + ", WKT \"" + d.wktMethod + "\")");
  for (const SParameter& p : d.parameters)
    std::printf("  %-28s %s %s\n", p.name.c_str(), Number(p.value).c_str(), p.unit.c_str());
  line("Ellipsoid:", d.ellipsoidName + (d.ellipsoidId.empty() ? "" : " [" + d.ellipsoidId + "]") +
                         "  a = " + Number(d.major) + " m, 1/f = " + Number(d.invFlattening));
  line("Datum:", d.datum);
  std::string shift = d.shiftType;
  if (d.shiftType != "None") {
    shift += ":";
    for (double v : d.shift) shift += " " + Number(v);
  } else if (d.shiftGiven) {
    shift = "None (TOWGS84 of zeros: the datum is WGS 84's)";
  }
  line("Datum shift:", shift);
  line("Linear unit:",
       d.linearUnit.empty() ? "-" : d.linearUnit + " (" + Number(d.linearFactor) + ")");
  line("Angular unit:",
       d.angularUnit.empty() ? "-" : d.angularUnit + " (" + Number(d.angularFactor) + ")");
  line("Axes:", d.axis1Name + " " + d.axis1Direction + ", " + d.axis2Name + " " + d.axis2Direction);
  line("Origin:", Number(d.originLon) + " " + Number(d.originLat));
  line("Default area:", Number(d.area[0]) + " " + Number(d.area[1]) + " to " + Number(d.area[2]) +
                            " " + Number(d.area[3]));
  if (d.isWkt) {
    if (d.identical.empty()) line("Identical to:", "no catalogue system");
    for (std::size_t i = 0; i < d.identical.size(); ++i) {
      const SIdentical& r = d.identical[i];
      line(i == 0 ? "Identical to:" : "",
           r.name + (r.code > 0 ? " (EPSG:" + std::to_string(r.code) + ")" : "") +
               (r.butTheShift ? ", but for the datum shift to WGS 84 it knows and this text "
                                "does not say"
                              : ""));
    }
  }
  line("WKT:", d.wkt);
  line("Proj4:", d.proj4);
  std::printf("Readable WKT:\n%s\n", d.readableWkt.c_str());
}

void PrintJson(const SDescription& d) {
  std::string out = "{";
  auto field = [&out](const char* key, const std::string& value) {
    if (out.size() > 1) out += ",";
    out += "\n  " + Quoted(key) + ": " + value;
  };
  field("name", Quoted(d.name));
  if (!d.isWkt) field("epsg_code", d.epsgCode > 0 ? std::to_string(d.epsgCode) : "null");
  field("kind", Quoted(d.kind));
  field("method", "{\"title\": " + Quoted(d.method) + ", \"code\": " + std::to_string(d.code) +
                      ", \"wkt_name\": " + Quoted(d.wktMethod) + "}");
  std::string params = "[";
  for (const SParameter& p : d.parameters) {
    if (params.size() > 1) params += ", ";
    params += "{\"name\": " + Quoted(p.name) + ", \"value\": " + Number(p.value) +
              ", \"unit\": " + Quoted(p.unit) + "}";
  }
  field("parameters", params + "]");
  field("ellipsoid", "{\"name\": " + Quoted(d.ellipsoidName) + ", \"id\": " +
                         Quoted(d.ellipsoidId) + ", \"semi_major_axis\": " + Number(d.major) +
                         ", \"inverse_flattening\": " + Number(d.invFlattening) + "}");
  field("datum", Quoted(d.datum));
  std::string values = "[";
  for (int i = 0; i < 7; ++i) values += (i ? ", " : "") + Number(d.shift[i]);
  field("datum_shift", "{\"type\": " + Quoted(d.shiftType) + ", \"given\": " +
                           (d.shiftGiven ? "true" : "false") + ", \"values\": " + values + "]}");
  field("linear_unit", d.linearUnit.empty() ? "null"
                                            : "{\"name\": " + Quoted(d.linearUnit) +
                                                  ", \"factor\": " + Number(d.linearFactor) + "}");
  field("angular_unit", d.angularUnit.empty()
                            ? "null"
                            : "{\"name\": " + Quoted(d.angularUnit) +
                                  ", \"factor\": " + Number(d.angularFactor) + "}");
  field("axes", "[{\"name\": " + Quoted(d.axis1Name) + ", \"direction\": " +
                    Quoted(d.axis1Direction) + "}, {\"name\": " + Quoted(d.axis2Name) +
                    ", \"direction\": " + Quoted(d.axis2Direction) + "}]");
  field("origin", "[" + Number(d.originLon) + ", " + Number(d.originLat) + "]");
  field("default_area", "[" + Number(d.area[0]) + ", " + Number(d.area[1]) + ", " +
                            Number(d.area[2]) + ", " + Number(d.area[3]) + "]");
  if (d.isWkt) {
    std::string list = "[";
    for (const SIdentical& r : d.identical) {
      if (list.size() > 1) list += ", ";
      list += "{\"name\": " + Quoted(r.name) +
              ", \"epsg_code\": " + (r.code > 0 ? std::to_string(r.code) : "null") +
              ", \"but_the_datum_shift\": " + (r.butTheShift ? "true" : "false") + "}";
    }
    field("identical", list + "]");
  }
  field("wkt", Quoted(d.wkt));
  field("readable_wkt", Quoted(d.readableWkt));
  field("proj4", Quoted(d.proj4));
  out += "\n}\n";
  std::fputs(out.c_str(), stdout);
}

}  // namespace

void Describe(const std::string& cs, bool json) {
  const SDescription d = Collect(cs);
  if (json)
    PrintJson(d);
  else
    PrintText(d);
}

}  // namespace kvcart
