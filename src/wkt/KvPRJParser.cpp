#include "wkt/KvPRJParser.h"

#include <stdlib.h>

#include <charconv>
#include <cstring>
#include <map>
#include <memory>
#include <string>

#include "catalogue/KvMapProjectionList.h"
#include "catalogue/KvParameterSetFactory.h"
#include "engines/KvEngineTable.h"
#include "engines/KvProjection.h"
#include "platform/KvCLocale.h"
#include "platform/KvConstants.h"

namespace {

typedef CKvMapProjData D;

// The three delimiter sets of the reader.
const char kBracketOrQuote[] = "[]\"";
const char kComma[] = ",";
const char kCloseOrComma[] = "],";
const char kCommaOrClose[] = ",]";

// C-locale conversion; text that does not start a number reads as 0.
double ToDouble(const CString& text) { return strtod_l(text.GetString(), nullptr, KvCLocale()); }

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

const char kFE[] = "False_Easting";
const char kFN[] = "False_Northing";
const char kCM[] = "Central_Meridian";
const char kSF[] = "Scale_Factor";
const char kLO[] = "Latitude_Of_Origin";
const char kSP1[] = "Standard_Parallel_1";
const char kSP2[] = "Standard_Parallel_2";
const char kLonC[] = "Longitude_Of_Center";
const char kLatC[] = "Latitude_Of_Center";
const char kLonO[] = "Longitude_Of_Origin";
const char kAz[] = "Azimuth";
const char kXYRot[] = "XY_Plane_Rotation";
const char kGridAngle[] = "Rectified_Grid_Angle";

bool AllSet(std::initializer_list<double> values) {
  for (double v : values)
    if (!IsSet(v)) return false;
  return true;
}

}  // namespace

CKvPRJParser::CKvPRJParser(const CString& text) {
  _initialize();
  m_strSource = text;
}

CKvPRJParser::CKvPRJParser(const char* text) {
  _initialize();
  m_strSource = text;
}

CKvPRJParser::CKvPRJParser(CKvProjection& engine) {
  _initialize();
  engine.TransferParameters(*this);
}

CKvPRJParser::CKvPRJParser(CKvMapProjData& record) {
  _initialize();
  record.TransferParameters(*this);
}

CKvPRJParser::~CKvPRJParser() = default;

void CKvPRJParser::_initialize() {
  m_dPrimeMeridian = m_dAngularUnit = m_dMajor = m_dInvFlattening = KvConst::kNotSet;
  m_DatumShift.Reset();
  m_bHasDatumShift = false;
  m_eProjectionType = D::eUndefined;
  m_dFalseEasting = m_dFalseNorthing = m_dCentralMeridian = KvConst::kNotSet;
  m_dStandardParallel1 = m_dStandardParallel2 = m_dLatitudeOfOrigin = KvConst::kNotSet;
  m_dLongitudeOfCenter = m_dLatitudeOfCenter = m_dAzimuth = KvConst::kNotSet;
  m_dXYPlaneRotation = m_dScaleFactor = KvConst::kNotSet;
  m_dLongitudeOfSouthPole = m_dLatitudeOfSouthPole = m_dAngleOfRotation = KvConst::kNotSet;
  m_dPseudoParallel = m_dXScale = m_dYScale = KvConst::kNotSet;
  m_dProjUnit = KvConst::kNotSet;
  m_strAxis1Name = "Easting";
  m_strAxis1Direction = "EAST";
  m_strAxis2Name = "Northing";
  m_strAxis2Direction = "NORTH";
}

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

    const EProjectionType t = m_eProjectionType;
    if (orderParallels &&
        (t == D::eLambert2SP || t == D::eAlbersEqualArea || t == D::eEquidistantConic) &&
        m_dStandardParallel1 > m_dStandardParallel2)
      std::swap(m_dStandardParallel1, m_dStandardParallel2);

    GetNameParam(afterAngularUnit, "UNIT", m_strProjUnit, m_dProjUnit);
    if (!IsSet(m_dProjUnit)) {
      m_eProjectionType = D::eUndefined;
      return false;
    }
    const CString afterAxis1 = GetNameParam(tail, "AXIS", m_strAxis1Name, m_strAxis1Direction);
    GetNameParam(afterAxis1, "AXIS", m_strAxis2Name, m_strAxis2Direction);
  }

  if (m_eProjectionType != D::eUndefined) {
    // A trial construction, so that a record that cannot build its engine
    // fails here rather than later.
    std::unique_ptr<CKvProjection> trial(CreateMapProjection());
  }
  return m_eProjectionType != D::eUndefined;
}

void CKvPRJParser::_ReadParameters(const CString& tail) {
  const double NS = KvConst::kNotSet;
  // The tail is lower-cased once for all the searches below.
  const CString lower = Lowered(tail);
  auto get = [&](const char* name, double def = KvConst::kNotSet) {
    bool found;
    return ParamInLowered(lower, name, def, found);
  };
  auto getList = [&](std::initializer_list<const char*> names) {
    return FirstParamInLowered(lower, names.begin(), names.end(), NS);
  };

  EProjectionType t = m_eProjectionType;
  if (t == D::eGeographical || t < D::eTransverseMercator || t > D::eNonProjected) return;

  // Every method but the rotated grid has a false origin.
  if (t != D::eRotatedLongitudeLatitude) {
    m_dFalseEasting = get(kFE);
    m_dFalseNorthing = get(kFN);
  }
  const double FE = m_dFalseEasting, FN = m_dFalseNorthing;
  bool valid = false;
  switch (t) {
    case D::eTransverseMercator:
    case D::eNonProjected:
    case D::eLambert1SP:
    case D::ePolarStereographic:
      m_dCentralMeridian = get(kCM);
      m_dScaleFactor = get(kSF);
      m_dLatitudeOfOrigin = get(kLO);
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dScaleFactor, m_dLatitudeOfOrigin});
      break;
    case D::eLambert2SP:
      m_dCentralMeridian = get(kCM);
      m_dStandardParallel1 = get(kSP1);
      m_dStandardParallel2 = get(kSP2);
      m_dScaleFactor = get(kSF);
      m_dLatitudeOfOrigin = get(kLO);
      if (AllSet({FE, FN, m_dCentralMeridian, m_dStandardParallel1, m_dStandardParallel2,
                  m_dLatitudeOfOrigin})) {
        valid = true;
      } else if (AllSet({FE, FN, m_dCentralMeridian, m_dLatitudeOfOrigin, m_dScaleFactor})) {
        t = D::eLambert1SP;
        valid = true;
      }
      break;
    case D::eStereographic:
      m_dCentralMeridian = getList({kCM, kLonO});
      m_dScaleFactor = get(kSF);
      m_dLatitudeOfOrigin = get(kLO);
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dScaleFactor, m_dLatitudeOfOrigin});
      break;
    case D::eNewZealandMapGrid:
      m_dCentralMeridian = getList({kLonO, kCM});
      m_dLatitudeOfOrigin = get(kLO);
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dLatitudeOfOrigin});
      break;
    case D::eHotineObliqueMercator:
    case D::eObliqueMercator:
      m_dLongitudeOfCenter = get(kLonC);
      m_dLatitudeOfCenter = get(kLatC);
      m_dAzimuth = get(kAz);
      m_dXYPlaneRotation = get(kGridAngle, m_dAzimuth);
      m_dScaleFactor = get(kSF);
      valid = AllSet({FE, FN, m_dLongitudeOfCenter, m_dLatitudeOfCenter, m_dAzimuth,
                      m_dXYPlaneRotation, m_dScaleFactor});
      if (valid && !KvConst::IsClose(m_dXYPlaneRotation, m_dAzimuth))
        t = D::eRectifiedSkewOrthomorphic;
      break;
    case D::eRectifiedSkewOrthomorphic:
      m_dLongitudeOfCenter = get(kLonC);
      m_dLatitudeOfCenter = get(kLatC);
      m_dAzimuth = get(kAz);
      m_dXYPlaneRotation = get(kXYRot);
      m_dScaleFactor = get(kSF);
      valid = AllSet({FE, FN, m_dLongitudeOfCenter, m_dLatitudeOfCenter, m_dAzimuth,
                      m_dXYPlaneRotation, m_dScaleFactor});
      break;
    case D::eRotatedLongitudeLatitude:
      m_dLongitudeOfSouthPole = get("Longitude_Of_South_Pole");
      m_dLatitudeOfSouthPole = get("Latitude_Of_South_Pole");
      m_dAngleOfRotation = get("Angle_Of_Rotation");
      valid = AllSet({m_dLongitudeOfSouthPole, m_dLatitudeOfSouthPole, m_dAngleOfRotation});
      break;
    case D::eMercator2SP:
    case D::eStereographicNorthPole:
    case D::eStereographicSouthPole:
      m_dCentralMeridian = get(kCM);
      m_dStandardParallel1 = get(kSP1);
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dStandardParallel1});
      break;
    case D::eMercator1SP:
      m_dCentralMeridian = get(kCM);
      m_dScaleFactor = get(kSF);
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dScaleFactor});
      break;
    case D::eKrovak:
      m_dLongitudeOfCenter = get(kLonC);
      m_dLatitudeOfCenter = get(kLatC);
      m_dAzimuth = get(kAz);
      m_dXYPlaneRotation = get(kXYRot, 0.0);
      m_dScaleFactor = get(kSF);
      m_dPseudoParallel = get("Pseudo_Standard_Parallel_1");
      m_dXScale = get("X_Scale", 1.0);
      m_dYScale = get("Y_Scale", 1.0);
      valid = AllSet({FE, FN, m_dLongitudeOfCenter, m_dLatitudeOfCenter, m_dAzimuth,
                      m_dXYPlaneRotation, m_dScaleFactor, m_dPseudoParallel});
      break;
    case D::eAlbersEqualArea:
    case D::eEquidistantConic:
      m_dCentralMeridian = getList({kCM, kLonC});
      m_dStandardParallel1 = get(kSP1);
      m_dStandardParallel2 = get(kSP2);
      m_dLatitudeOfOrigin = getList({kLO, kLatC});
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dStandardParallel1, m_dStandardParallel2,
                      m_dLatitudeOfOrigin});
      break;
    case D::eLambertAzimuthalEqualArea:
      m_dCentralMeridian = getList({kCM, kLonC});
      m_dLatitudeOfOrigin = getList({kLO, kLatC});
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dLatitudeOfOrigin});
      break;
    case D::eCassiniSoldner:
      m_dCentralMeridian = get(kCM);
      m_dLatitudeOfOrigin = get(kLO);
      valid = AllSet({FE, FN, m_dCentralMeridian, m_dLatitudeOfOrigin});
      break;
    default:
      break;
  }
  m_eProjectionType = valid ? t : D::eUndefined;
}

// ---------------------------------------------------------------------------
// Building

CKvProjection* CKvPRJParser::CreateMapProjection() const {
  if (m_eProjectionType == D::eUndefined) return nullptr;
  return CKvEngineTable::Create(*this);
}

CKvMapProjData* CKvPRJParser::_CreateProjData() const {
  const SKvParameterSetInfo* info = CKvParameterSetFactory::InfoOf(m_eProjectionType);
  if (!info) return nullptr;
  // The record takes the values as they stand in the WKT, in its field order.
  std::vector<double> values(info->count > 0 ? info->count : 1, m_dPrimeMeridian);
  for (int i = 0; i < info->count; ++i) values[i] = (this->*info->params[i].fetch)();
  return CKvParameterSetFactory::Create(m_eProjectionType, m_strProjCSName.GetString(),
                                        m_strDatum.GetString(), "", values.data(), true, true);
}

std::string CKvPRJParser::GetProjectionTypeTitle() const {
  std::unique_ptr<CKvMapProjData> record(_CreateProjData());
  return record ? record->GetProjectionTypeTitle() : std::string("Non projection");
}

int CKvPRJParser::GetNoOfParameters() const {
  std::unique_ptr<CKvMapProjData> record(_CreateProjData());
  return record ? record->GetNoOfParameters() : 0;
}

bool CKvPRJParser::GetParameter(int index, CString& name, double& value, CString& unitName,
                                double& unitFactor) const {
  std::unique_ptr<CKvMapProjData> record(_CreateProjData());
  if (!record) return false;
  std::string label;
  double v = 0.0;
  D::EParamType kind = D::eParamNumber;
  if (!record->GetParameter(index, label, v, kind)) return false;
  name = label;
  value = v;
  switch (kind) {
    case D::eParamLength:
      unitName = m_strProjUnit;
      unitFactor = m_dProjUnit;
      break;
    case D::eParamAngle:
      unitName = m_strAngularUnit;
      unitFactor = m_dAngularUnit;
      break;
    default:
      unitName = "";
      unitFactor = 1.0;
      break;
  }
  return true;
}

// ---------------------------------------------------------------------------
// Writing

namespace {

struct SWktParam {
  const char* name;
  double (CKvPRJParser::*get)() const;
};

#define KV_WKT(Name, Field) \
  { Name, &CKvPRJParser::Get##Field }
const SWktParam kFE_ = KV_WKT(kFE, FalseEasting);
const SWktParam kFN_ = KV_WKT(kFN, FalseNorthing);
const SWktParam kCM_ = KV_WKT(kCM, CentralMeridian);
const SWktParam kSF_ = KV_WKT(kSF, ScaleFactor);
const SWktParam kLO_ = KV_WKT(kLO, LatitudeOfOrigin);
const SWktParam kSP1_ = KV_WKT(kSP1, StandardParallel1);
const SWktParam kSP2_ = KV_WKT(kSP2, StandardParallel2);
const SWktParam kAz_ = KV_WKT(kAz, Azimuth);
const SWktParam kLonC_ = KV_WKT(kLonC, LongitudeOfCenter);
const SWktParam kLatC_ = KV_WKT(kLatC, LatitudeOfCenter);
const SWktParam kXYRot_ = KV_WKT(kXYRot, XYPlaneRotation);
#undef KV_WKT

// The parameters written for each type, in order.
std::vector<SWktParam> WrittenParameters(D::EProjectionType type) {
  switch (type) {
    case D::eTransverseMercator:
    case D::eLambert1SP:
    case D::eStereographic:
    case D::ePolarStereographic:
    case D::eNonProjected:
      return {kFE_, kFN_, kCM_, kSF_, kLO_};
    case D::eLambert2SP:
    case D::eAlbersEqualArea:
    case D::eEquidistantConic:
      return {kFE_, kFN_, kCM_, kSP1_, kSP2_, kLO_};
    case D::eNewZealandMapGrid:
      return {kFE_, kFN_, {kLonO, &CKvPRJParser::GetCentralMeridian}, kLO_};
    case D::eHotineObliqueMercator:
    case D::eObliqueMercator:
      return {kFE_, kFN_, kSF_, kAz_, kLonC_, kLatC_};
    case D::eRectifiedSkewOrthomorphic:
      return {kFE_, kFN_, kSF_, kAz_, kLonC_, kLatC_, kXYRot_};
    case D::eRotatedLongitudeLatitude:
      return {{"Longitude_Of_South_Pole", &CKvPRJParser::GetLongitudeOfSouthPole},
              {"Latitude_Of_South_Pole", &CKvPRJParser::GetLatitudeOfSouthPole},
              {"Angle_Of_Rotation", &CKvPRJParser::GetAngleOfRotation}};
    case D::eMercator2SP:
    case D::eStereographicNorthPole:
    case D::eStereographicSouthPole:
      return {kFE_, kFN_, kCM_, kSP1_};
    case D::eMercator1SP:
      return {kFE_, kFN_, kCM_, kSF_};
    case D::eKrovak:
      return {kFE_,
              kFN_,
              {"Pseudo_Standard_Parallel_1", &CKvPRJParser::GetPseudoParallel},
              kSF_,
              kAz_,
              kLonC_,
              kLatC_,
              {"X_Scale", &CKvPRJParser::GetXScale},
              {"Y_Scale", &CKvPRJParser::GetYScale},
              kXYRot_};
    case D::eLambertAzimuthalEqualArea:
    case D::eCassiniSoldner:
      return {kFE_, kFN_, kCM_, kLO_};
    default:
      return {};
  }
}

// The number as "%.16g" writes it, after a comma unless `comma` is false:
// to_chars with precision 16 in the general format is that by definition,
// independent of the locale and many times faster than printf, which
// matters since every name resolved is written as WKT.
void AppendNumber(std::string& out, double value, bool comma = true) {
  char buffer[64];
  char* const start = buffer + (comma ? 1 : 0);
  buffer[0] = ',';
  const std::to_chars_result r =
      std::to_chars(start, buffer + sizeof buffer, value, std::chars_format::general, 16);
  out.append(buffer, r.ptr);
}

}  // namespace

bool CKvPRJParser::Format(CString& out) const {
  std::string text;
  text.reserve(512);
  auto open = [&text](const char* keyword, const CString& name) {
    text += keyword;
    text += "[\"";
    text += name.GetString();
    text += '"';
  };
  open("PROJCS", m_strProjCSName);
  text += ',';
  open("GEOGCS", m_strGeoCSName);
  text += ',';
  open("DATUM", m_strDatum);
  text += ',';
  open("SPHEROID", m_strEllipsoid);
  AppendNumber(text, m_dMajor);
  AppendNumber(text, m_dInvFlattening);
  text += ']';
  if (m_bHasDatumShift) {
    // All seven values, whatever the type, as .prj writers give them.
    const double* v = m_DatumShift.GetParameters();
    text += ",TOWGS84[";
    for (int i = 0; i < CKvDatumShift::kValueCount; ++i) AppendNumber(text, v[i], i > 0);
    text += ']';
  }
  text += "],";
  open("PRIMEM", m_strPrimeMeridian);
  AppendNumber(text, m_dPrimeMeridian);
  text += "],";
  open("UNIT", m_strAngularUnit);
  AppendNumber(text, m_dAngularUnit);
  text += "]],";
  open("PROJECTION", m_strProjectionTypeName);
  text += "],";
  const EProjectionType t = m_eProjectionType;
  const bool known = t >= D::eTransverseMercator && t <= D::eNonProjected;
  if (known) {
    for (const SWktParam& p : WrittenParameters(t)) {
      text += "PARAMETER[\"";
      text += p.name;
      text += '"';
      AppendNumber(text, (this->*p.get)());
      text += "],";
    }
    open("UNIT", m_strProjUnit);
    AppendNumber(text, m_dProjUnit);
    text += "]]";
  }
  out = text;
  return known;
}

bool CKvPRJParser::Format(char* buffer, int size) const {
  CString text;
  Format(text);
  if (!buffer || text.GetLength() >= size) return false;
  std::memcpy(buffer, text.GetString(), text.GetLength() + 1);
  return true;
}

void CKvPRJParser::FormatAsReadableWKT(const CString& in, CString& out) {
  CString result;
  int start = 0;
  bool first = true;
  while (start <= in.GetLength()) {
    int open = in.Find('[', start);
    const bool last = open < 0;
    const CString piece = in.Mid(start, last ? in.GetLength() - start : open - start);
    if (first) {
      result += piece;
      first = false;
    } else {
      const int comma = piece.ReverseFind(',');
      if (comma < 0) {
        result += piece;
      } else {
        result += piece.Left(comma + 1);
        result += "\r\n";
        const int level = _GetBracketLevel(result);
        for (int i = 0; i < level; ++i) result += "    ";
        result += piece.Mid(comma + 1);
      }
    }
    if (last) break;
    result += '[';
    start = open + 1;
  }
  out = result;
}

// ---------------------------------------------------------------------------
// Accessors

void CKvPRJParser::GetPrimeMeridian(CString& name, double& value) const {
  name = m_strPrimeMeridian;
  value = m_dPrimeMeridian;
}

void CKvPRJParser::SetPrimeMeridian(const CString& name, double value) {
  m_strPrimeMeridian = name;
  m_dPrimeMeridian = value;
}

void CKvPRJParser::GetAngularUnit(CString& name, double& value) const {
  name = m_strAngularUnit;
  value = m_dAngularUnit;
}

void CKvPRJParser::SetAngularUnit(const CString& name, double value) {
  m_strAngularUnit = name;
  m_dAngularUnit = value;
}

void CKvPRJParser::GetEllipsoid(CString& name, double& major, double& invFlattening) const {
  name = m_strEllipsoid;
  major = m_dMajor;
  invFlattening = m_dInvFlattening;
}

void CKvPRJParser::SetEllipsoid(const CString& name, double major, double invFlattening) {
  m_strEllipsoid = name;
  m_dMajor = major;
  m_dInvFlattening = invFlattening;
}

void CKvPRJParser::GetDatumShift(CKvDatumShift& shift) const {
  shift.SetParameters(const_cast<double*>(m_DatumShift.GetParameters()));
}

void CKvPRJParser::SetDatumShift(const CKvDatumShift& shift) {
  m_DatumShift.SetParameters(const_cast<double*>(shift.GetParameters()));
  m_bHasDatumShift = true;
}

void CKvPRJParser::GetProjUnit(CString& name, double& value) const {
  name = m_strProjUnit;
  value = m_dProjUnit;
}

void CKvPRJParser::SetProjUnit(const CString& name, double value) {
  m_strProjUnit = name;
  m_dProjUnit = value;
}

void CKvPRJParser::GetAxisInfo(EAxisType axis, CString& name, CString& direction) const {
  if (axis == eAxis1) {
    name = m_strAxis1Name;
    direction = m_strAxis1Direction;
  } else if (axis == eAxis2) {
    name = m_strAxis2Name;
    direction = m_strAxis2Direction;
  }
}

void CKvPRJParser::SetAxisInfo(EAxisType axis, const CString& name, const CString& direction) {
  if (axis == eAxis1) {
    m_strAxis1Name = name;
    m_strAxis1Direction = direction;
  } else if (axis == eAxis2) {
    m_strAxis2Name = name;
    m_strAxis2Direction = direction;
  }
}
