#include "wkt/KvProjTranslator.h"

#include <fstream>
#include <string>
#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "datum/KvDatumShift.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "platform/KvConstants.h"
#include "platform/String.h"
#include "wkt/KvPRJParser.h"

namespace {

typedef CKvMapProjData D;

// CString::Format writes in the C locale whatever the process locale is.
void Append(std::string& out, const char* format, double value) {
  CString piece;
  piece.Format(format, value);
  out += piece.GetString();
}

// One "+key=%.16g " entry; a key whose WKT value is missing is not written,
// so that the string never hands a reader the not-set marker as a value
// (the Mercator methods each lack one of +lat_ts and +k, and a reader that
// finds +lat_ts takes the scale from it).
struct SKey {
  const char* format;
  double value;
  bool set;
};

bool IsSet(double v) { return v != KvConst::kNotSet; }

SKey Key(const char* format, double raw, double factor = 1.0, double offset = 0.0) {
  return {format, raw * factor + offset, IsSet(raw)};
}

// The method keys of each type, in the order they are written.  The angles
// are WKT values times g (the angular unit in degrees), +lon_0 adds the
// prime meridian p, +x_0 is in metres (factor u); the scale factor is
// written as read.
std::vector<SKey> MethodKeys(const CKvPRJParser& P, double g, double p, double u) {
  const SKey lat0 = Key("+lat_0=%.16g ", P.GetLatitudeOfOrigin(), g);
  const SKey lon0 = Key("+lon_0=%.16g ", P.GetCentralMeridian(), g, p);
  const SKey lat1 = Key("+lat_1=%.16g ", P.GetStandardParallel1(), g);
  const SKey lat2 = Key("+lat_2=%.16g ", P.GetStandardParallel2(), g);
  const SKey k = Key("+k=%.16g ", P.GetScaleFactor());
  const SKey x0 = Key("+x_0=%.16g ", P.GetFalseEasting(), u);
  // The oblique methods are placed by their centre.
  const SKey latC = Key("+lat_0=%.16g ", P.GetLatitudeOfCenter(), g);
  const SKey lonC = Key("+lon_0=%.16g ", P.GetLongitudeOfCenter(), g, p);
  const SKey alpha = Key("+alpha=%.16g ", P.GetAzimuth(), g);
  const SKey latTs = Key("+lat_ts=%.16g ", P.GetStandardParallel1(), g);
  const SKey north = {"+lat_0=%.16g ", 90.0, true};
  const SKey south = {"+lat_0=%.16g ", -90.0, true};

  switch (P.GetProjectionType()) {
    case D::eTransverseMercator:
    case D::eNonProjected:  // computed by the transverse Mercator engine
      return {lat0, lon0, k, x0};
    case D::eLambert2SP:
      return {lat1, lat2, lat0, lon0, x0};
    case D::eLambert1SP:
      return {{"+lat_1=%.16g ", lat0.value, lat0.set}, lat0, lon0, k, x0};
    case D::eStereographic:
      return {lat0, lon0, k, x0};
    case D::eNewZealandMapGrid:
    case D::eLambertAzimuthalEqualArea:
    case D::eCassiniSoldner:
      return {lat0, lon0, x0};
    case D::eHotineObliqueMercator:
    case D::eObliqueMercator:
    case D::eKrovak:
      return {latC, lonC, alpha, k, x0};
    case D::eRectifiedSkewOrthomorphic:
      return {latC, lonC, alpha, Key("+gamma=%.16g ", P.GetXYPlaneRotation(), g), k, x0};
    case D::eMercator2SP:
    case D::eMercator1SP:
      return {latTs, lon0, k, x0};
    case D::eStereographicNorthPole:
      return {north, latTs, lon0, k, x0};
    case D::eStereographicSouthPole:
      return {south, latTs, lon0, k, x0};
    case D::eAlbersEqualArea:
    case D::eEquidistantConic:
      return {lat1, lat2, lat0, lon0, x0};
    case D::ePolarStereographic:
      // The pole follows the sign of the latitude of origin, which is the
      // latitude of true scale; zero counts as north.
      return {
          lat0.value < 0.0 ? south : north, {"+lat_ts=%.16g ", lat0.value, lat0.set}, lon0, k, x0};
    default:
      return {};
  }
}

const char* ProjName(const CKvPRJParser& parser) {
  switch (parser.GetProjectionType()) {
    case D::eTransverseMercator:
    case D::eNonProjected:
      return "tmerc";
    case D::eLambert2SP:
    case D::eLambert1SP:
      return "lcc";
    case D::eStereographic: {
      CString name = parser.GetProjectionTypeName();
      const bool oblique = name.CompareNoCase("Double_Stereographic") == 0 ||
                           name.CompareNoCase("Oblique_Stereographic") == 0;
      return oblique ? "sterea" : "stere";
    }
    case D::eNewZealandMapGrid:
      return "nzmg";
    case D::eHotineObliqueMercator:
    case D::eObliqueMercator:
    case D::eRectifiedSkewOrthomorphic:
      return "omerc";
    case D::eMercator2SP:
    case D::eMercator1SP:
      return "merc";
    case D::eStereographicNorthPole:
    case D::eStereographicSouthPole:
    case D::ePolarStereographic:
      return "stere";
    case D::eGeographical:
      return "longlat";
    case D::eKrovak:
      return "krovak";
    case D::eAlbersEqualArea:
      return "aea";
    case D::eLambertAzimuthalEqualArea:
      return "laea";
    case D::eCassiniSoldner:
      return "cass";
    case D::eEquidistantConic:
      return "eqdc";
    default:
      return "undef";
  }
}

void AppendShift(std::string& out, const double* values, int count) {
  Append(out, "+towgs84=%.16g", count >= 1 ? values[0] : 0.0);
  for (int i = 1; i < CKvDatumShift::kValueCount; ++i)
    Append(out, ",%.16g", count > i ? values[i] : 0.0);
  out += ' ';
}

}  // namespace

CKvProjTranslator::CKvProjTranslator() = default;

CKvProjTranslator::~CKvProjTranslator() = default;

std::string CKvProjTranslator::Convert2Proj4(const std::string& coordinateSystem, double* towgs84,
                                             int count) const {
  const CKvMapProjection projection(coordinateSystem);
  CKvProjection* engine = projection.GetProjection();
  if (!engine) return std::string();

  CKvPRJParser parser(projection.GetProjectionString());
  parser.Parse(false);
  CKvEllipsoid ellipsoid;
  if (!engine->GetAnonymousEllipsoid(ellipsoid)) {
    // An engine without its own ellipsoid: the one the text names.
    CString name;
    double major = 0.0, invFlattening = 0.0;
    parser.GetEllipsoid(name, major, invFlattening);
    ellipsoid.SetParams(major, invFlattening);
  }
  return Format(parser, ellipsoid, towgs84, count);
}

std::string CKvProjTranslator::ConvertPRJFile2Proj4(const std::string& path, double* towgs84,
                                                    int count) const {
  // A folder opens as a stream but yields no line; neither does an empty
  // file.  Both count as unreadable.
  std::ifstream file(path);
  std::string line;
  if (!file || !std::getline(file, line)) return std::string();
  return Convert2Proj4(line, towgs84, count);
}

std::string CKvProjTranslator::Format(const CKvPRJParser& parser, const CKvEllipsoid& ellipsoid,
                                      const double* towgs84, int count) {
  const D::EProjectionType type = parser.GetProjectionType();
  std::string out = "+proj=";
  out += ProjName(parser);
  out += ' ';
  if (type == D::eRotatedLongitudeLatitude || type == D::eUndefined) return out;

  CString name;
  double u = 0.0, angular = 0.0, p = 0.0;
  parser.GetProjUnit(name, u);
  parser.GetAngularUnit(name, angular);
  parser.GetPrimeMeridian(name, p);
  const double g = angular * KvConst::kRadToDeg;

  for (const SKey& key : MethodKeys(parser, g, IsSet(p) ? p : 0.0, u))
    if (key.set) Append(out, key.format, key.value);
  if (type != D::eGeographical) Append(out, "+y_0=%.16g ", parser.GetFalseNorthing() * u);
  Append(out, "+a=%.16g ", ellipsoid.GetMajor());
  Append(out, "+b=%.16g ", ellipsoid.GetMinor());

  if (towgs84 && count >= 1) {
    AppendShift(out, towgs84, count);
  } else {
    CKvDatumShift shift;
    parser.GetDatumShift(shift);
    if (shift.GetType() != CKvCartDef::eNoShift)
      AppendShift(out, shift.GetParameters(), CKvDatumShift::kValueCount);
  }

  if (u != KvConst::kNotSet) {
    if (u == 1.0)
      out += "+units=m ";
    else
      Append(out, "+to_meter=%.16g ", u);
  }
  out += "+no_defs  no_defs <>";
  return out;
}
