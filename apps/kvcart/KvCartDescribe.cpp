#include "KvCartDescribe.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "datum/KvDatumShift.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
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

struct SDescription {
  std::string name, kind, method, wktMethod;
  int code = 22;
  std::vector<SParameter> parameters;
  std::string ellipsoidName, ellipsoidId;
  double major = 0, invFlattening = 0;
  std::string datum, shiftType;
  double shift[7] = {};
  std::string linearUnit, angularUnit;
  double linearFactor = NAN, angularFactor = NAN;
  std::string axis1Name, axis1Direction, axis2Name, axis2Direction;
  double originLon = 0, originLat = 0;
  double area[4] = {};
  std::string wkt, readableWkt, proj4;
};

SDescription Collect(const std::string& cs) {
  SDescription d;
  CKvMapProjection object(cs);
  CKvProjection* engine = object.GetProjection();
  d.name = object.GetName();
  d.kind = object.IsLocal() ? "local" : object.IsGeographical() ? "geographic" : "projected";

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
  return d;
}

void PrintText(const SDescription& d) {
  auto line = [](const char* key, const std::string& value) {
    std::printf("%-16s %s\n", key, value.c_str());
  };
  line("Name:", d.name);
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
  field("datum_shift", "{\"type\": " + Quoted(d.shiftType) + ", \"values\": " + values + "]}");
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
