#include "KvCartProjString.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "KvCartText.h"
#include "platform/KvConstants.h"

namespace kvcart {
namespace {

// Reference ellipsoids by their proj names: semi-major axis and inverse
// flattening (0 for a sphere), as `cs2cs -le` lists them.
struct SEllipsoid {
  const char* proj;
  const char* name;
  double a;
  double rf;
};
constexpr SEllipsoid kEllipsoids[] = {
    {"WGS84", "WGS 84", 6378137.0, 298.257223563},
    {"GRS80", "GRS 1980", 6378137.0, 298.257222101},
    {"WGS72", "WGS 72", 6378135.0, 298.26},
    {"WGS66", "WGS 66", 6378145.0, 298.25},
    {"intl", "International 1924", 6378388.0, 297.0},
    {"hough", "Hough", 6378270.0, 297.0},
    {"krass", "Krassowsky 1940", 6378245.0, 298.3},
    {"helmert", "Helmert 1906", 6378200.0, 298.3},
    {"bessel", "Bessel 1841", 6377397.155, 299.1528128},
    {"bess_nam", "Bessel Namibia", 6377483.865, 299.1528128},
    {"airy", "Airy 1830", 6377563.396, 299.3249646},
    // Given by a = 6377340.189, b = 6356034.446.
    {"mod_airy", "Airy Modified 1849", 6377340.189, 299.32496127621273},
    // Given by a = 6378206.4, b = 6356583.8.
    {"clrk66", "Clarke 1866", 6378206.4, 294.97869821390583},
    {"clrk80", "Clarke 1880 (modified)", 6378249.145, 293.4663},
    {"clrk80ign", "Clarke 1880 (IGN)", 6378249.2, 293.4660212936269},
    {"aust_SA", "Australian National Spheroid", 6378160.0, 298.25},
    {"GRS67", "GRS 1967", 6378160.0, 298.247167427},
    {"evrst30", "Everest 1830", 6377276.345, 300.8017},
    {"evrst48", "Everest 1948", 6377304.063, 300.8017},
    {"evrst56", "Everest 1956", 6377301.243, 300.8017},
    {"evrstSS", "Everest (Sabah and Sarawak)", 6377298.556, 300.8017},
    {"fschr60", "Fischer 1960", 6378166.0, 298.3},
    {"fschr68", "Fischer 1968", 6378150.0, 298.3},
    {"sphere", "Sphere", 6370997.0, 0.0},
};

// Datums by their proj names: the two whose shift to WGS 84 is zero.  Other
// datums carry shifts that depend on the region and the tool's database, so
// a proj string must give them as +ellps and +towgs84.
struct SDatum {
  const char* proj;
  const char* name;
  const char* ellipsoid;
};
constexpr SDatum kDatums[] = {
    {"WGS84", "WGS_1984", "WGS84"},
    {"NAD83", "North_American_Datum_1983", "GRS80"},
};

// Linear units by their proj names, in metres.
constexpr std::pair<const char*, double> kUnits[] = {
    {"m", 1.0},           {"km", 1000.0},        {"cm", 0.01},
    {"mm", 0.001},        {"ft", 0.3048},        {"us-ft", KvConst::kUsSurveyFoot},
    {"yd", 0.9144},       {"us-yd", 0.914401828803658},
    {"mi", 1609.344},     {"us-mi", 1609.34721869444},
    {"in", 0.0254},       {"fath", 1.8288},      {"kmi", 1852.0},
    {"ch", 20.1168},      {"us-ch", 20.1168402336805},
    {"link", 0.201168},   {"ind-ft", 0.30479841}, {"ind-yd", 0.91439523},
    {"ind-ch", 20.11669506},
};

// Prime meridians by their proj names, degrees east of Greenwich.
constexpr std::pair<const char*, double> kPrimeMeridians[] = {
    {"greenwich", 0.0},          {"paris", 2.33722917},     {"lisbon", -9.131906111111},
    {"bogota", -74.08091666667}, {"madrid", -3.687938888889}, {"rome", 12.45233333333},
    {"bern", 7.439583333333},    {"jakarta", 106.8077194444}, {"ferro", -17.66666666667},
    {"brussels", 4.367975},      {"stockholm", 18.05827777778}, {"athens", 23.7163375},
    {"oslo", 10.72291666667},
};

// Keys a proj string may hold, and the ones that are understood but cannot be
// honoured, with the reason.
const std::set<std::string> kProjectionKeys = {"zone", "south", "lat_0", "lon_0", "lat_1",
                                               "lat_2", "lat_ts", "k", "k_0", "x_0", "y_0"};
const std::set<std::string> kSystemKeys = {"proj",    "ellps", "datum",   "a",      "b",
                                           "rf",      "f",     "R",       "towgs84", "units",
                                           "to_meter", "pm",   "no_defs", "type",   "wktext",
                                           "axis"};
const std::map<std::string, std::string> kRefused = {
    {"nadgrids", "grid shift files (+nadgrids) are not read; give +towgs84 instead"},
    {"geoidgrids", "geoid grids (+geoidgrids) are not read"},
    {"init", "+init files are not read; give the system's parameters"},
    {"vunits", "vertical units (+vunits) are not supported"},
    {"over", "+over (no longitude wrapping) is not supported"},
    {"lon_wrap", "+lon_wrap is not supported"},
};

class CProjString {
 public:
  bool Read(const std::string& text, std::string& error) {
    std::istringstream words(text);
    std::string word;
    while (words >> word) {
      if (word.size() < 2 || word[0] != '+') {
        error = "'" + word + "' is not a +key or +key=value entry";
        return false;
      }
      const size_t equals = word.find('=');
      const std::string key = word.substr(1, equals == std::string::npos ? std::string::npos
                                                                         : equals - 1);
      const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
      const auto refused = kRefused.find(key);
      if (refused != kRefused.end()) {
        error = refused->second;
        return false;
      }
      if (!kProjectionKeys.count(key) && !kSystemKeys.count(key)) {
        error = "unknown proj parameter +" + key;
        return false;
      }
      if (!m_Values.emplace(key, value).second) {
        error = "+" + key + " is given twice";
        return false;
      }
    }
    return true;
  }

  bool Has(const std::string& key) const { return m_Values.count(key) > 0; }

  // The text of `key`, marking it used.
  std::string Text(const std::string& key) {
    m_Used.insert(key);
    const auto it = m_Values.find(key);
    return it == m_Values.end() ? "" : it->second;
  }

  // The number of `key`, or `fallback` when it is absent; false with `error`
  // set when it is present but no number.
  bool Get(const std::string& key, double fallback, double& value, std::string& error) {
    if (!Has(key)) {
      m_Used.insert(key);
      value = fallback;
      return true;
    }
    const std::string text = Text(key);
    if (!ReadNumber(text, value)) {
      error = "+" + key + "=" + text + " is not a decimal number";
      return false;
    }
    return true;
  }

  // The first of two synonymous keys that is present.
  bool GetEither(const std::string& key1, const std::string& key2, double fallback, double& value,
                 std::string& error) {
    if (Has(key1) && Has(key2)) {
      error = "+" + key1 + " and +" + key2 + " are the same parameter; give one";
      return false;
    }
    m_Used.insert(key1);
    return Get(Has(key1) ? key1 : key2, fallback, value, error);
  }

  // A projection key that was given but that the method did not use.
  std::string Unused() const {
    for (const auto& entry : m_Values)
      if (kProjectionKeys.count(entry.first) && !m_Used.count(entry.first)) return entry.first;
    return "";
  }

  static bool ReadNumber(std::string text, double& value) {
    if (!text.empty() && text[0] == '+') text.erase(0, 1);
    const char* end = text.data() + text.size();
    const std::from_chars_result r = std::from_chars(text.data(), end, value);
    return r.ec == std::errc() && r.ptr == end && !text.empty() && std::isfinite(value);
  }

 private:
  std::map<std::string, std::string> m_Values;
  std::set<std::string> m_Used;
};

struct SParameter {
  const char* name;
  double value;
};

// What a method builder hands back: the WKT method name and its parameters,
// angles in degrees, false easting and northing still in metres.
struct SProjection {
  std::string method;
  std::vector<SParameter> parameters;
};

using FBuilder = std::function<bool(CProjString&, SProjection&, std::string&)>;

// Reads `key` (or its synonym) into a named WKT parameter.
struct SRead {
  const char* name;
  const char* key;
  const char* synonym;  // null: none
  double fallback;
};

bool ReadAll(CProjString& ps, const std::vector<SRead>& reads, SProjection& out,
             std::string& error) {
  for (const SRead& r : reads) {
    double value = 0;
    const bool ok = r.synonym ? ps.GetEither(r.key, r.synonym, r.fallback, value, error)
                              : ps.Get(r.key, r.fallback, value, error);
    if (!ok) return false;
    out.parameters.push_back({r.name, value});
  }
  return true;
}

// The methods whose keys map one to one onto WKT parameters.
FBuilder Plain(const char* method, std::vector<SRead> reads) {
  return [method, reads](CProjString& ps, SProjection& out, std::string& error) {
    out.method = method;
    return ReadAll(ps, reads, out, error);
  };
}

const SRead kFalseEasting{"False_Easting", "x_0", nullptr, 0};
const SRead kFalseNorthing{"False_Northing", "y_0", nullptr, 0};
const SRead kCentralMeridian{"Central_Meridian", "lon_0", nullptr, 0};
const SRead kLatitudeOfOrigin{"Latitude_Of_Origin", "lat_0", nullptr, 0};
const SRead kScale{"Scale_Factor", "k", "k_0", 1};

bool Utm(CProjString& ps, SProjection& out, std::string& error) {
  double zone = 0;
  if (!ps.Has("zone") || !ps.Get("zone", 0, zone, error) || zone != std::floor(zone) ||
      zone < 1 || zone > 60) {
    error = "+proj=utm needs +zone=1 to +zone=60";
    return false;
  }
  const bool south = ps.Has("south");
  if (south && !ps.Text("south").empty()) {
    error = "+south takes no value";
    return false;
  }
  ps.Text("south");
  out.method = "Transverse_Mercator";
  out.parameters = {{"Latitude_Of_Origin", 0.0},
                    {"Central_Meridian", -183.0 + 6.0 * zone},
                    {"Scale_Factor", 0.9996},
                    {"False_Easting", 500000.0},
                    {"False_Northing", south ? 10000000.0 : 0.0}};
  return true;
}

// One standard parallel with its scale factor when the origin lies on it
// (+lat_0 = +lat_1, no other +lat_2); otherwise two, the second defaulting to
// the first (a tangent cone whose origin lies elsewhere), and no scale.
bool Lambert(CProjString& ps, SProjection& out, std::string& error) {
  double lat1 = 0, lat2 = 0, lat0 = 0, k = 1;
  if (!ps.Has("lat_1")) {
    error = "+proj=lcc needs +lat_1";
    return false;
  }
  if (!ps.Get("lat_1", 0, lat1, error) || !ps.Get("lat_2", lat1, lat2, error) ||
      !ps.Get("lat_0", 0, lat0, error) || !ps.GetEither("k", "k_0", 1, k, error))
    return false;
  if (lat2 == lat1 && lat0 == lat1) {
    out.method = "Lambert_Conformal_Conic_1SP";
    out.parameters = {{"Latitude_Of_Origin", lat1}, {"Scale_Factor", k}};
  } else if (k != 1) {
    error = "+proj=lcc with a scale factor other than 1 needs +lat_0 equal to +lat_1 and no "
            "other +lat_2";
    return false;
  } else {
    out.method = "Lambert_Conformal_Conic_2SP";
    out.parameters = {{"Standard_Parallel_1", lat1},
                      {"Standard_Parallel_2", lat2},
                      {"Latitude_Of_Origin", lat0}};
  }
  return ReadAll(ps, {kCentralMeridian, kFalseEasting, kFalseNorthing}, out, error);
}

// With +lat_ts the two-parallel form, else the scale-factor form.
bool Mercator(CProjString& ps, SProjection& out, std::string& error) {
  double lat0 = 0;
  if (!ps.Get("lat_0", 0, lat0, error)) return false;
  if (lat0 != 0) {
    error = "+proj=merc takes no +lat_0 other than 0";
    return false;
  }
  if (ps.Has("lat_ts")) {
    if (ps.Has("k") || ps.Has("k_0")) {
      error = "+proj=merc takes either +lat_ts or +k, not both";
      return false;
    }
    out.method = "Mercator_2SP";
    if (!ReadAll(ps, {{"Standard_Parallel_1", "lat_ts", nullptr, 0}}, out, error)) return false;
  } else {
    out.method = "Mercator_1SP";
    if (!ReadAll(ps, {kScale}, out, error)) return false;
  }
  return ReadAll(ps, {kCentralMeridian, kFalseEasting, kFalseNorthing}, out, error);
}

// Only the polar forms: +lat_0 = 90 or -90, true scale at +lat_ts or scale +k.
bool PolarStereographic(CProjString& ps, SProjection& out, std::string& error) {
  double lat0 = 0;
  if (!ps.Get("lat_0", 0, lat0, error)) return false;
  if (std::fabs(lat0) != 90) {
    error = "+proj=stere is read only in its polar forms (+lat_0=90 or -90); use +proj=sterea";
    return false;
  }
  double latTs = 0, k = 1;
  if (!ps.Get("lat_ts", lat0, latTs, error) || !ps.GetEither("k", "k_0", 1, k, error))
    return false;
  if ((latTs < 0) != (lat0 < 0) && latTs != 0) {
    error = "+lat_ts must lie in the hemisphere of +lat_0";
    return false;
  }
  out.method = "Polar_Stereographic";
  out.parameters = {{"Latitude_Of_Origin", latTs}, {"Scale_Factor", k}};
  return ReadAll(ps, {kCentralMeridian, kFalseEasting, kFalseNorthing}, out, error);
}

const std::map<std::string, FBuilder>& Builders() {
  static const std::map<std::string, FBuilder> builders = {
      {"utm", Utm},
      {"tmerc", Plain("Transverse_Mercator", {kLatitudeOfOrigin, kCentralMeridian, kScale,
                                             kFalseEasting, kFalseNorthing})},
      {"lcc", Lambert},
      {"merc", Mercator},
      {"nzmg", Plain("New_Zealand_Map_Grid",
                     {kLatitudeOfOrigin, {"Longitude_Of_Origin", "lon_0", nullptr, 0},
                      kFalseEasting, kFalseNorthing})},
      {"aea", Plain("Albers_Conic_Equal_Area",
                    {{"Standard_Parallel_1", "lat_1", nullptr, 0},
                     {"Standard_Parallel_2", "lat_2", nullptr, 0}, kLatitudeOfOrigin,
                     kCentralMeridian, kFalseEasting, kFalseNorthing})},
      {"eqdc", Plain("Equidistant_Conic",
                     {{"Standard_Parallel_1", "lat_1", nullptr, 0},
                      {"Standard_Parallel_2", "lat_2", nullptr, 0}, kLatitudeOfOrigin,
                      kCentralMeridian, kFalseEasting, kFalseNorthing})},
      {"laea", Plain("Lambert_Azimuthal_Equal_Area",
                     {kLatitudeOfOrigin, kCentralMeridian, kFalseEasting, kFalseNorthing})},
      {"cass", Plain("Cassini_Soldner",
                     {kLatitudeOfOrigin, kCentralMeridian, kFalseEasting, kFalseNorthing})},
      {"sterea", Plain("Oblique_Stereographic", {kLatitudeOfOrigin, kCentralMeridian, kScale,
                                                 kFalseEasting, kFalseNorthing})},
      {"stere", PolarStereographic},
  };
  return builders;
}

bool IsGeographic(const std::string& proj) {
  return proj == "longlat" || proj == "latlong" || proj == "lonlat" || proj == "latlon";
}

struct SGeographic {
  std::string ellipsoidName = "GRS 1980";
  double a = 6378137.0;
  double rf = 298.257222101;
  std::string datumName = "unknown";
  int shiftCount = 0;
  double towgs84[7] = {};
};

const SEllipsoid* FindEllipsoid(const std::string& name) {
  for (const SEllipsoid& e : kEllipsoids)
    if (name == e.proj) return &e;
  return nullptr;
}

// Ellipsoid and datum shift, by the precedence of +R, then +a with +b, +rf
// or +f, then +ellps, then the ellipsoid of +datum, then GRS 1980; the shift
// of +towgs84, else that of +datum.
bool ReadGeographic(CProjString& ps, SGeographic& g, std::string& error) {
  if (ps.Has("datum")) {
    const std::string name = ps.Text("datum");
    const SDatum* datum = nullptr;
    for (const SDatum& d : kDatums)
      if (name == d.proj) datum = &d;
    if (!datum) {
      error = "+datum=" + name + " is not read (only WGS84 and NAD83 are): give its ellipsoid "
              "with +ellps and its shift to WGS 84 with +towgs84";
      return false;
    }
    const SEllipsoid* e = FindEllipsoid(datum->ellipsoid);
    g.ellipsoidName = e->name, g.a = e->a, g.rf = e->rf;
    g.datumName = datum->name;
    g.shiftCount = 3;  // zero
  }
  if (ps.Has("ellps")) {
    const std::string name = ps.Text("ellps");
    const SEllipsoid* e = FindEllipsoid(name);
    if (!e) {
      error = "unknown ellipsoid +ellps=" + name;
      return false;
    }
    g.ellipsoidName = e->name, g.a = e->a, g.rf = e->rf;
  }
  if (ps.Has("R")) {
    if (!ps.Get("R", 0, g.a, error)) return false;
    g.ellipsoidName = "Sphere", g.rf = 0;
  } else if (ps.Has("a")) {
    double b = 0, f = 0;
    if (!ps.Get("a", 0, g.a, error)) return false;
    g.ellipsoidName = "unnamed";
    if (ps.Has("rf")) {
      if (!ps.Get("rf", 0, g.rf, error)) return false;
    } else if (ps.Has("b")) {
      if (!ps.Get("b", 0, b, error)) return false;
      g.rf = b == g.a ? 0 : g.a / (g.a - b);
    } else if (ps.Has("f")) {
      if (!ps.Get("f", 0, f, error)) return false;
      g.rf = f == 0 ? 0 : 1 / f;
    } else {
      error = "+a needs +b, +rf or +f (or give +R for a sphere)";
      return false;
    }
  } else if (ps.Has("b") || ps.Has("rf") || ps.Has("f")) {
    error = "+b, +rf and +f need +a";
    return false;
  }
  if (g.a <= 0 || g.rf < 0 || (g.rf > 0 && g.rf <= 1)) {
    error = "the ellipsoid's axes are not those of an ellipsoid";
    return false;
  }
  if (ps.Has("towgs84")) {
    std::string list = ps.Text("towgs84");
    std::vector<double> values;
    std::istringstream items(list);
    std::string item;
    while (std::getline(items, item, ',')) {
      double v = 0;
      if (!CProjString::ReadNumber(item, v)) {
        error = "+towgs84=" + list + " is not a list of numbers";
        return false;
      }
      values.push_back(v);
    }
    if (values.size() != 3 && values.size() != 7) {
      error = "+towgs84 takes 3 or 7 values";
      return false;
    }
    g.shiftCount = static_cast<int>(values.size());
    for (int i = 0; i < 7; ++i) g.towgs84[i] = i < g.shiftCount ? values[i] : 0;
  }
  return true;
}

bool ReadUnit(CProjString& ps, std::string& name, double& factor, std::string& error) {
  name = "Meter", factor = 1;
  if (ps.Has("units") && ps.Has("to_meter")) {
    error = "+units and +to_meter both give the unit; give one";
    return false;
  }
  if (ps.Has("units")) {
    name = ps.Text("units");
    for (const auto& unit : kUnits)
      if (name == unit.first) {
        factor = unit.second;
        if (name == "m") name = "Meter";
        return true;
      }
    error = "unknown unit +units=" + name;
    return false;
  }
  if (ps.Has("to_meter")) {
    if (!ps.Get("to_meter", 1, factor, error)) return false;
    if (factor <= 0) {
      error = "+to_meter must be positive";
      return false;
    }
    name = "unit of " + Number(factor) + " m";
  }
  return true;
}

bool ReadPrimeMeridian(CProjString& ps, double& degrees, std::string& error) {
  degrees = 0;
  if (!ps.Has("pm")) return true;
  const std::string text = ps.Text("pm");
  for (const auto& pm : kPrimeMeridians)
    if (Lower(text) == pm.first) {
      degrees = pm.second;
      return true;
    }
  if (CProjString::ReadNumber(text, degrees)) return true;
  error = "unknown prime meridian +pm=" + text;
  return false;
}

// Characters that would end a WKT name.
std::string WktName(const std::string& text) {
  std::string name;
  for (const char c : text)
    if (c != '"' && c != '[' && c != ']') name += c;
  return name;
}

std::string Geogcs(const std::string& name, const SGeographic& g) {
  std::string wkt = "GEOGCS[\"" + WktName(name) + "\",DATUM[\"" + g.datumName + "\",SPHEROID[\"" +
                    g.ellipsoidName + "\"," + Number(g.a) + "," + Number(g.rf) + "]";
  if (g.shiftCount > 0) {
    wkt += ",TOWGS84[";
    for (int i = 0; i < 7; ++i) wkt += (i ? "," : "") + Number(g.towgs84[i]);
    wkt += "]";
  }
  return wkt + "],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\"," + Number(KvConst::kDegToRad) + "]]";
}

}  // namespace

bool IsProjString(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t\r\n");
  return first != std::string::npos && text[first] == '+';
}

bool ProjStringToWkt(const std::string& text, std::string& wkt, std::string& error) {
  CProjString ps;
  if (!ps.Read(text, error)) return false;
  if (!ps.Has("proj")) {
    error = "a proj string needs +proj=";
    return false;
  }
  const std::string proj = ps.Text("proj");
  if (ps.Has("type") && ps.Text("type") != "crs") {
    error = "+type=" + ps.Text("type") + " is not a coordinate system";
    return false;
  }
  const std::string axis = ps.Has("axis") ? ps.Text("axis") : "enu";
  if (axis != "enu" && !(axis == "neu" && !IsGeographic(proj))) {
    error = "+axis=" + axis + " is not read: give enu, or neu for a projected system";
    return false;
  }
  SGeographic g;
  if (!ReadGeographic(ps, g, error)) return false;
  std::ostringstream name;
  {
    std::istringstream words(text);
    std::string word;
    while (words >> word) name << (name.tellp() > 0 ? " " : "") << word;
  }

  if (IsGeographic(proj)) {
    double pm = 0;
    if (!ReadPrimeMeridian(ps, pm, error)) return false;
    if (pm != 0) {
      error = "a geographic system with a prime meridian other than Greenwich is not supported";
      return false;
    }
    // The unit of a geographic proj string does not apply to its degrees.
    std::string unitName;
    double factor = 1;
    if (!ReadUnit(ps, unitName, factor, error)) return false;
    if (!ps.Unused().empty()) {
      error = "+" + ps.Unused() + " does not apply to +proj=" + proj;
      return false;
    }
    wkt = Geogcs(name.str(), g);
    return true;
  }

  const auto builder = Builders().find(proj);
  if (builder == Builders().end()) {
    error = "+proj=" + proj + " is not a method kvcart can translate";
    return false;
  }
  SProjection projection;
  if (!builder->second(ps, projection, error)) return false;
  if (!ps.Unused().empty()) {
    error = "+" + ps.Unused() + " does not apply to +proj=" + proj;
    return false;
  }
  std::string unitName;
  double factor = 1;
  double pm = 0;
  if (!ReadUnit(ps, unitName, factor, error) || !ReadPrimeMeridian(ps, pm, error)) return false;

  wkt = "PROJCS[\"" + WktName(name.str()) + "\"," + Geogcs("unknown", g) + ",PROJECTION[\"" +
        projection.method + "\"]";
  for (const SParameter& p : projection.parameters) {
    double value = p.value;
    const std::string key = p.name;
    // proj gives false easting and northing in metres, WKT in the system's
    // unit; the prime meridian is folded into the central meridian.
    if (key == "False_Easting" || key == "False_Northing") value /= factor;
    if (key == "Central_Meridian" || key == "Longitude_Of_Origin") value += pm;
    wkt += ",PARAMETER[\"" + key + "\"," + Number(value) + "]";
  }
  wkt += ",UNIT[\"" + unitName + "\"," + Number(factor) + "]";
  if (axis == "neu") wkt += ",AXIS[\"Northing\",NORTH],AXIS[\"Easting\",EAST]";
  wkt += "]";
  return true;
}

}  // namespace kvcart
