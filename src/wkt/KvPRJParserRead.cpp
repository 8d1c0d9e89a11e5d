#include "wkt/KvPRJParser.h"

#include <cmath>
#include <map>
#include <memory>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjectionList.h"
#include "engines/KvHotineConstants.h"
#include "engines/KvProjection.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParserMethods.h"

// The reader: the text searches, the bracket checks and Parse.

namespace {

typedef CKvMapProjData D;

// The three delimiter sets of the reader.
const char kBracketOrQuote[] = "[]\"";
const char kComma[] = ",";
const char kCloseOrComma[] = "],";
const char kCommaOrClose[] = ",]";

double ToDouble(const CString& text) { return KvWktToDouble(text); }

bool IsSet(double v) { return v != KvConst::kNotSet; }

struct SName {
  const char* wkt;
  D::EProjectionType type;
};

const SName kProjectionNames[] = {
    {"Transverse_Mercator", D::eTransverseMercator},
    {"Transverse_Mercator_Complex", D::eTransverseMercator},
    {"Transverse_Mercator_South_Orientated", D::eTransverseMercator},
    {"Gauss_Kruger", D::eTransverseMercator},
    {"Lambert_Conformal_Conic", D::eLambert2SP},
    {"Lambert_Conformal_Conic_2SP", D::eLambert2SP},
    {"Lambert_Conformal_Conic_1SP", D::eLambert1SP},
    {"Stereographic", D::eStereographic},
    {"Double_Stereographic", D::eStereographic},
    {"Oblique_Stereographic", D::eStereographic},
    {"Polar_Stereographic", D::ePolarStereographic},
    {"Stereographic_North_Pole", D::eStereographicNorthPole},
    {"Stereographic_South_Pole", D::eStereographicSouthPole},
    {"New_Zealand_Map_Grid", D::eNewZealandMapGrid},
    {"Hotine_Oblique_Mercator_Azimuth_Natural_Origin", D::eHotineObliqueMercator},
    {"Hotine_Oblique_Mercator", D::eHotineObliqueMercator},
    {"Hotine_Oblique_Mercator_Azimuth_Center", D::eObliqueMercator},
    {"Rectified_Skew_Orthomorphic_Center", D::eObliqueMercator},  // its grid angle is read too
    {"Rectified_Skew_Orthomorphic_Natural_Origin", D::eRectifiedSkewOrthomorphic},
    {"Rotated_Longitude_Latitude", D::eRotatedLongitudeLatitude},
    {"Mercator", D::eMercator2SP},  // without a suffix: the 2SP type, on purpose
    {"Mercator_2SP", D::eMercator2SP},
    {"Mercator_1SP", D::eMercator1SP},
    {"Geographical", D::eGeographical},
    {"Krovak", D::eKrovak},
    {"Albers", D::eAlbersEqualArea},
    {"Albers_Conic_Equal_Area", D::eAlbersEqualArea},
    {"Lambert_Azimuthal_Equal_Area", D::eLambertAzimuthalEqualArea},
    {"Cassini", D::eCassiniSoldner},
    {"Cassini_Soldner", D::eCassiniSoldner},
    {"Equidistant_Conic", D::eEquidistantConic},
    {"Non_Projected", D::eNonProjected},
};

// The method names above, lower-cased, built once for all parsers.
const std::map<std::string, D::EProjectionType>& ProjectionNames() {
  static const std::map<std::string, D::EProjectionType> names = [] {
    std::map<std::string, D::EProjectionType> map;
    for (const SName& entry : kProjectionNames) {
      CString key(entry.wkt);
      key.MakeLower();
      map.emplace(key.GetString(), entry.type);
    }
    return map;
  }();
  return names;
}

bool AllSet(std::initializer_list<double> values) {
  for (double v : values)
    if (!IsSet(v)) return false;
  return true;
}

// A Hotine text with its false origin at the projection centre (variant B)
// and a grid angle other than its azimuth becomes the rectified skew
// orthomorphic, whose false origin lies at the natural origin: the same
// projection once the false easting and northing are moved back by uc along
// the initial line (CKvHotineConstants).  The record then names the method
// it holds, so that its text reads back as the same system.  False when uc
// cannot be had (no ellipsoid, a centre at a pole, a zero unit): the text
// is refused rather than read without its angle.
bool MoveCentreToNaturalOrigin(CKvPRJParser& r) {
  CString name;
  double a = 0.0, invF = 0.0, angular = 0.0, unit = 0.0;
  r.GetEllipsoid(name, a, invF);
  r.GetAngularUnit(name, angular);
  r.GetProjUnit(name, unit);
  const double toDegrees = angular * KvConst::kRadToDeg;
  const CKvEllipsoid ellipsoid("", "", a, invF);
  const CKvHotineConstants hotine(a, ellipsoid.GetEccentricity(), r.GetScaleFactor(), 0.0,
                                  r.GetLatitudeOfCenter() * toDegrees, r.GetAzimuth() * toDegrees,
                                  r.GetXYPlaneRotation() * toDegrees, 0.0, 0.0,
                                  CKvHotineConstants::eProjectionCentre);
  // The move in the text's unit.
  const double east = hotine.NaturalFalseEasting() / unit;
  const double north = hotine.NaturalFalseNorthing() / unit;
  if (!(a > 0.0) || !std::isfinite(east) || !std::isfinite(north)) return false;
  r.SetFalseEasting(r.GetFalseEasting() + east);
  r.SetFalseNorthing(r.GetFalseNorthing() + north);
  r.SetProjectionType(D::eRectifiedSkewOrthomorphic);
  r.SetProjectionTypeName("Rectified_Skew_Orthomorphic_Natural_Origin");
  return true;
}

// A Krovak text with axes of its own and none of the three parameters by
// which the other dialect orients the method's southing and westing is read
// in its east-north form, so that the axes then say what its coordinates
// are: easting and northing for AXIS["X",EAST], AXIS["Y",NORTH], southing
// and westing for AXIS["X",SOUTH], AXIS["Y",WEST].  Without axes the
// method's own southing and westing stand.
void OrientKrovakByItsAxes(CKvPRJParser& r, const CString& tail) {
  if (tail.Find("AXIS") < 0) return;
  CString lower(tail);
  lower.MakeLower();
  for (const char* name : {"\"x_scale\"", "\"y_scale\"", "\"xy_plane_rotation\""})
    if (lower.Find(name) >= 0) return;
  CString unit;
  double angular = 0.0;
  r.GetAngularUnit(unit, angular);
  r.SetXScale(-1.0);
  r.SetYScale(1.0);
  r.SetXYPlaneRotation(90.0 / (angular * KvConst::kRadToDeg));  // in the text's angular unit
}

}  // namespace

// ---------------------------------------------------------------------------
// Search primitives

CString CKvPRJParser::GetName(const CString& text, const char* keyword) {
  int pos = text.Find(keyword);
  if (pos < 0) return CString();
  text.Tokenize(kBracketOrQuote, pos);
  return text.Tokenize(kBracketOrQuote, pos);
}

// Finds `keyword`, reads its quoted name and the token after it, and returns
// the text that follows.
static CString NameAndToken(const CString& text, const char* keyword, CString& name, CString& token,
                            bool& found) {
  found = false;
  int pos = text.Find(keyword);
  if (pos < 0) return CString();
  text.Tokenize(kBracketOrQuote, pos);
  CString foundName = text.Tokenize(kBracketOrQuote, pos);
  CString foundToken = text.Tokenize(kCloseOrComma, pos);
  name = foundName;
  token = foundToken;
  found = true;
  return pos < 0 ? CString() : text.Mid(pos);
}

CString CKvPRJParser::GetNameParam(const CString& text, const char* keyword, CString& name,
                                   double& value) {
  CString token;
  bool found;
  CString rest = NameAndToken(text, keyword, name, token, found);
  if (found) value = ToDouble(token);
  return rest;
}

CString CKvPRJParser::GetNameParam(const CString& text, const char* keyword, CString& name,
                                   CString& value) {
  bool found;
  return NameAndToken(text, keyword, name, value, found);
}

// The search of GetParam in a text that is already lower-case; `found`
// says whether the name was there.
static double ParamInLowered(const CString& lowered, const char* name, double def, bool& found) {
  CString quoted("\"");
  quoted += name;
  quoted += "\"";
  quoted.MakeLower();
  int pos = lowered.Find(quoted.GetString());
  found = pos >= 0;
  if (!found) return def;
  lowered.Tokenize(kCloseOrComma, pos);
  return ToDouble(lowered.Tokenize(kCloseOrComma, pos));
}

static CString Lowered(const CString& text) {
  CString lower(text);
  lower.MakeLower();
  return lower;
}

// The list variant: the first of the names found gives the value.
static double FirstParamInLowered(const CString& lowered, const char* const* first,
                                  const char* const* last, double def) {
  for (; first != last; ++first) {
    bool found;
    const double value = ParamInLowered(lowered, *first, def, found);
    if (found) return value;
  }
  return def;
}

double CKvPRJParser::GetParam(const CString& text, const char* name, double def) {
  bool found;
  return ParamInLowered(Lowered(text), name, def, found);
}

double CKvPRJParser::GetParam(const CString& text, const std::vector<const char*>& names,
                              double def) {
  return FirstParamInLowered(Lowered(text), names.data(), names.data() + names.size(), def);
}

// ---------------------------------------------------------------------------
// Bracket checks

int CKvPRJParser::_MatchBrackets(const CString& text) {
  if (text.IsEmpty()) return -1;
  const char* s = text.GetString();
  const int length = text.GetLength();
  int depth = 0;
  for (int i = 0; i < length; ++i) {
    if (s[i] == '[') {
      ++depth;
    } else if (s[i] == ']') {
      if (depth < 1) return i;
      --depth;
    }
  }
  return depth == 0 ? -1 : length;
}

bool CKvPRJParser::_MatchCommas(const CString& text) {
  const char* s = text.GetString();
  const int length = text.GetLength();
  int commas = 0, brackets = 0;
  for (int i = 0; i < length; ++i) {
    commas += s[i] == ',';
    brackets += s[i] == '[';
  }
  return commas > brackets;
}

int CKvPRJParser::_GetBracketLevel(const CString& text) {
  const char* s = text.GetString();
  const int length = text.GetLength();
  int level = 0;
  for (int i = 0; i < length; ++i) {
    if (s[i] == '[') {
      ++level;
    } else if (s[i] == ']') {
      if (level == 0) break;
      --level;
    }
  }
  return level;
}

bool CKvPRJParser::IsPRJ(const CString& text) {
  if (text.IsEmpty() || _MatchBrackets(text) != -1) return false;
  if (!_MatchCommas(text)) return false;
  return text.Find("PROJCS") >= 0 || text.Find("GEOGCS") >= 0;
}

CString CKvPRJParser::ShortName(const CString& text) {
  for (const char* keyword : {"COMPD_CS", "PROJCS", "GEOGCS"}) {
    CString name = GetName(text, keyword);
    if (!name.IsEmpty()) return name;
  }
  if (CKvMapProjectionList::IsLocalName(text.GetString())) return CString("Local Coordinates");
  return text;
}

CString CKvPRJParser::DatumName(const CString& text) { return GetName(text, "DATUM"); }

// ---------------------------------------------------------------------------
// Parse

bool CKvPRJParser::Parse(bool orderParallels) {
  const CString& src = m_strSource;
  if (!IsPRJ(src)) return false;

  m_strProjCSName = ShortName(src);
  m_strGeoCSName = GetName(src, "GEOGCS");
  m_strDatum = GetName(src, "DATUM");
  if (m_strProjCSName.IsEmpty()) m_strProjCSName = m_strGeoCSName;

  int pos = src.Find("SPHEROID");
  if (pos >= 0) {
    src.Tokenize(kBracketOrQuote, pos);
    m_strEllipsoid = src.Tokenize(kBracketOrQuote, pos);
    m_dMajor = ToDouble(src.Tokenize(kComma, pos));
    m_dInvFlattening = ToDouble(src.Tokenize(kCommaOrClose, pos));
  }

  pos = src.Find("TOWGS84");
  if (pos >= 0) {
    src.Tokenize(kBracketOrQuote, pos);
    double values[CKvDatumShift::kValueCount];
    for (double& v : values) v = ToDouble(src.Tokenize(kComma, pos));
    m_DatumShift.SetParameters(values);
    m_bHasDatumShift = true;
  }

  GetNameParam(src, "PRIMEM", m_strPrimeMeridian, m_dPrimeMeridian);
  const CString afterAngularUnit = GetNameParam(src, "UNIT", m_strAngularUnit, m_dAngularUnit);
  if (!IsSet(m_dAngularUnit)) {
    m_eProjectionType = D::eUndefined;
    return false;
  }

  pos = src.Find("PROJECTION");
  if (pos < 0) {
    m_eProjectionType = D::eGeographical;
    m_strProjectionTypeName = "Geographical";
    m_strAxis1Name = "Longitude";
    m_strAxis2Name = "Latitude";
  } else {
    const CString tail = src.Mid(pos);
    int tailPos = 0;
    tail.Tokenize(kBracketOrQuote, tailPos);
    const CString name = tail.Tokenize(kBracketOrQuote, tailPos);
    CString key(name);
    key.MakeLower();
    const auto found = ProjectionNames().find(key.GetString());
    if (found == ProjectionNames().end()) {
      m_eProjectionType = D::eUndefined;
      return false;
    }
    m_eProjectionType = found->second;
    m_strProjectionTypeName = name;

    _ReadParameters(tail);

    const SKvWktMethod* method = KvWktMethod(m_eProjectionType);
    if (orderParallels && method && method->twoParallels &&
        m_dStandardParallel1 > m_dStandardParallel2)
      std::swap(m_dStandardParallel1, m_dStandardParallel2);

    GetNameParam(afterAngularUnit, "UNIT", m_strProjUnit, m_dProjUnit);
    if (!IsSet(m_dProjUnit)) {
      m_eProjectionType = D::eUndefined;
      return false;
    }
    const CString afterAxis1 = GetNameParam(tail, "AXIS", m_strAxis1Name, m_strAxis1Direction);
    GetNameParam(afterAxis1, "AXIS", m_strAxis2Name, m_strAxis2Direction);

    if (m_eProjectionType == D::eKrovak) OrientKrovakByItsAxes(*this, tail);
    if (m_eProjectionType == D::eObliqueMercator &&
        !KvConst::IsClose(m_dXYPlaneRotation, m_dAzimuth) && !MoveCentreToNaturalOrigin(*this)) {
      m_eProjectionType = D::eUndefined;
      return false;
    }
  }

  if (m_eProjectionType != D::eUndefined) {
    // A trial construction, so that a record that cannot build its engine
    // fails here rather than later.
    std::unique_ptr<CKvProjection> trial(CreateMapProjection());
  }
  return m_eProjectionType != D::eUndefined;
}

// Every parameter of the method's row is looked for in the tail (lower-cased
// once for all the searches); the record names the method when the required
// ones are there.  Two methods are decided by what was found: a
// two-parallel cone without its parallels but with a scale is the
// one-parallel cone, and a Hotine text with its false origin at the natural
// origin whose grid angle is not its azimuth is the rectified skew
// orthomorphic (one with its false origin at the centre is moved once the
// linear unit is known, in Parse).
void CKvPRJParser::_ReadParameters(const CString& tail) {
  EProjectionType t = m_eProjectionType;
  const SKvWktMethod* method = KvWktMethod(t);
  if (!method) return;
  const CString lower = Lowered(tail);
  bool valid = true;
  for (int i = 0; i < method->count; ++i) {
    const SKvWktParameter& p = method->params[i];
    double missing = KvConst::kNotSet;
    if (p.missing == EKvWktMissing::eZero) missing = 0.0;
    if (p.missing == EKvWktMissing::eOne) missing = 1.0;
    if (p.missing == EKvWktMissing::eAzimuth) missing = m_dAzimuth;
    bool found = false;
    double value = ParamInLowered(lower, p.name, missing, found);
    if (!found && p.altName) value = ParamInLowered(lower, p.altName, missing, found);
    (this->*p.set)(value);
    if (p.required && !IsSet(value)) valid = false;
  }
  if (t == D::eLambert2SP && !valid &&
      AllSet({m_dFalseEasting, m_dFalseNorthing, m_dCentralMeridian, m_dLatitudeOfOrigin,
              m_dScaleFactor})) {
    t = D::eLambert1SP;
    valid = true;
  }
  if (t == D::eHotineObliqueMercator && valid && !KvConst::IsClose(m_dXYPlaneRotation, m_dAzimuth))
    t = D::eRectifiedSkewOrthomorphic;
  m_eProjectionType = valid ? t : D::eUndefined;
}
