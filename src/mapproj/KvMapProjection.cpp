#include "mapproj/KvMapProjection.h"

#include <climits>
#include <cmath>
#include <exception>
#include <memory>
#include <stdexcept>

#include "cart/KvCartSetup.h"
#include "engines/KvProjection.h"
#include "mapproj/KvGeocentric.h"
#include "mapproj/KvVincenty.h"
#include "platform/KvConstants.h"
#include "platform/String.h"
#include "wkt/KvPRJParser.h"

namespace {

typedef CKvMapProjData D;

CString Trimmed(const char* s) {
  CString text(s);
  text.TrimLeft();
  text.TrimRight();
  return text;
}

bool TrimmedEquals(const char* s, const char* name) { return Trimmed(s).Compare(name) == 0; }

bool IsSpecialName(const CString& text) {
  return text.Compare("NON-UTM") == 0 || text.Compare("LONG/LAT") == 0;
}

// The record of a resolved system, read back from its WKT: the text the
// caller gave for WKT input, the engine's own WKT for a catalogue name.
// Null for a string that resolves to nothing (or to generic "UTM").
std::unique_ptr<CKvPRJParser> ReadBack(const char* s, bool orderParallels) {
  std::unique_ptr<CKvMapProjection> object;
  try {
    // The string form lets every exception reach the caller (the C entries
    // turn them into a status); the const char* form would end the process.
    object.reset(new CKvMapProjection(std::string(s)));
  } catch (const std::out_of_range&) {
    return nullptr;
  }
  CKvProjection* engine = object->GetProjection();
  if (!engine) return nullptr;
  std::unique_ptr<CKvPRJParser> parser;
  const CString text = Trimmed(object->GetProjectionString());
  if (CKvPRJParser::IsPRJ(text)) {
    parser.reset(new CKvPRJParser(text));
  } else {
    parser.reset(new CKvPRJParser(*engine));
  }
  parser->Parse(orderParallels);
  return parser;
}

D::EProjectionType TypeOf(const char* s) {
  std::unique_ptr<CKvPRJParser> parser = ReadBack(s, false);
  return parser ? parser->GetProjectionType() : D::eUndefined;
}

D::EProjectionType ParsedType(const char* s) {
  CKvPRJParser parser(Trimmed(s));
  parser.Parse(false);
  return parser.GetProjectionType();
}

CKvMapProjectionList& Catalogue() { return CKvCartSetup::Instance().m_MapProjectionList; }
CKvEllipsoidList& Ellipsoids() { return CKvCartSetup::Instance().m_EllipsoidList; }

// The ellipsoid for geodesics: the engine's own, or WGS 84 for a
// geographic engine that has none.
bool GeodesicEllipsoid(CKvProjection* engine, CKvEllipsoid& ellipsoid) {
  if (!engine) return false;
  if (engine->GetAnonymousEllipsoid(ellipsoid)) return true;
  if (!engine->IsGeographical()) return false;
  ellipsoid.SetParams(6378137.0, 298.257223563);
  return true;
}

}  // namespace

// ---------------------------------------------------------------------------
// Construction

CKvMapProjection::CKvMapProjection(const char* string) : m_pProjection(nullptr) {
  try {
    _Resolve(string);
  } catch (const std::out_of_range&) {
    throw;
  } catch (...) {
    std::terminate();
  }
}

CKvMapProjection::CKvMapProjection(const std::string& string) : m_pProjection(nullptr) {
  _Resolve(string.c_str());
}

// Copying an engineless object gives another engineless object.
CKvMapProjection::CKvMapProjection(const CKvMapProjection& other)
    : m_pProjection(other.m_pProjection ? other.m_pProjection->Clone() : nullptr),
      m_ProjectionInfo(other.m_ProjectionInfo),
      m_strProjectionString(other.m_strProjectionString) {}

CKvMapProjection& CKvMapProjection::operator=(const CKvMapProjection& other) {
  if (this == &other) return *this;
  delete m_pProjection;
  m_pProjection = other.m_pProjection ? other.m_pProjection->Clone() : nullptr;
  m_ProjectionInfo = other.m_ProjectionInfo;
  m_strProjectionString = other.m_strProjectionString;
  return *this;
}

CKvMapProjection::~CKvMapProjection() { delete m_pProjection; }

// The engine is owned by a guard until the object is complete: an exception
// on the way (an allocation failure) must not leak it, since the destructor
// of an object under construction does not run.
void CKvMapProjection::_Resolve(const char* string) {
  std::unique_ptr<CKvProjection> engine(GetProjection(string, &m_ProjectionInfo));
  if (!engine) return;
  CString text(string);
  if (!CKvPRJParser::IsPRJ(text) && !IsType(12, string)) {
    // A catalogue name is kept as the WKT of its engine.
    CKvPRJParser parser(*engine);
    parser.Format(text);
    m_ProjectionInfo.SetProjectionInfo(parser);
  }
  m_strProjectionString = text.GetString();
  m_pProjection = engine.release();
}

CKvProjection* CKvMapProjection::GetProjection(const char* string, CKvProjectionInfo* info) {
  const std::string checked(string);  // a null string raises std::logic_error
  CString text(checked);
  text.TrimLeft();
  text.TrimRight();
  CKvPRJParser parser(text);
  parser.Parse(false);
  if (parser.GetProjectionType() != D::eUndefined) {
    if (std::unique_ptr<CKvProjection> engine{parser.CreateMapProjection()}) {
      if (info) info->SetProjectionInfo(parser);
      return engine.release();
    }
  }
  if (text.Compare("UTM") == 0) throw std::out_of_range("Can't use generic UTM");
  if (text.IsEmpty()) text = "NON-UTM";
  return _FindMapProjection(text.GetString());
}

CKvProjection* CKvMapProjection::_FindMapProjection(const char* name) {
  CKvCartSetup& setup = CKvCartSetup::Instance();
  CKvMapProjData* record = setup.m_MapProjectionList.GetMapProjection(name);
  if (!record) return nullptr;
  return record->CreateProjection();
}

const char* CKvMapProjection::IDtoProjectionString(EMapProjectionString id) {
  switch (id) {
    case eNonUtm:
      return CKvMapProjectionList::LocalName();
    case eLongLat:
      return "LONG/LAT";
    case eGoogleMercator:
      return "PROJCS[\"Google Maps - Mercator\",GEOGCS[\"GCS_Google_Maps\","
             "DATUM[\"D_Google_Maps\",SPHEROID[\"Google Maps (Sphere)\",6378137,0]],"
             "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
             "PROJECTION[\"Mercator\"],PARAMETER[\"False_Easting\",0],"
             "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",0],"
             "PARAMETER[\"Standard_Parallel_1\",0],UNIT[\"Meter\",1]]";
    case eWgs84Geographic:
      return "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137,"
             "298.257223563]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.017453292519943295]]";
  }
  return "";
}

// ---------------------------------------------------------------------------
// Queries on the object

CKvProjection* CKvMapProjection::GetProjection() const { return m_pProjection; }

const char* CKvMapProjection::GetName() const {
  return m_pProjection ? m_pProjection->GetName() : "";
}

const char* CKvMapProjection::GetProjectionString() const { return m_strProjectionString.c_str(); }

void CKvMapProjection::GetOrigin(double* lon, double* lat) const {
  if (m_pProjection) {
    m_pProjection->GetOrigin(lon, lat);
  } else {
    *lon = 0.0;
    *lat = 0.0;
  }
}

double CKvMapProjection::GetConvergence(double lon, double lat) const {
  return m_pProjection ? m_pProjection->GetConvergence(lon, lat) : 0.0;
}

void CKvMapProjection::GetDefaultArea(double* xmin, double* ymin, double* xmax,
                                      double* ymax) const {
  if (m_pProjection) m_pProjection->GetDefaultArea(xmin, ymin, xmax, ymax);
}

void CKvMapProjection::GetDefaultArea(int nx, int ny, ESizeParam which, double size, double* xmin,
                                      double* ymin, double* xmax, double* ymax) const {
  if (!m_pProjection) return;
  if (nx <= 0 || ny <= 0) {
    GetDefaultArea(xmin, ymin, xmax, ymax);
    return;
  }
  double lon = 0.0, lat = 0.0, cx = 0.0, cy = 0.0;
  m_pProjection->GetOrigin(&lon, &lat);
  m_pProjection->Geo2Proj(lon, lat, &cx, &cy);
  double w, h;
  if (which == eSizeIsX) {
    w = size * 0.5;
    h = ny * size * 0.5 / nx;
  } else if (which == eSizeIsY) {
    w = nx * size * 0.5 / ny;
    h = size * 0.5;
  } else {
    return;
  }
  *xmin = cx - w;
  *xmax = cx + w;
  *ymin = cy - h;
  *ymax = cy + h;
}

bool CKvMapProjection::IsLocal() const { return m_pProjection && m_pProjection->IsLocal(); }

bool CKvMapProjection::IsGeographical() const {
  return m_pProjection && m_pProjection->IsGeographical();
}

bool CKvMapProjection::GetUnit(EMapProjectionInfo which, double* factor, char* name) const {
  if (which == eProjectedUnit) return m_ProjectionInfo.GetProjUnit(factor, name);
  if (which == eAngularUnit) return m_ProjectionInfo.GetAngularUnit(factor, name);
  return false;
}

void CKvMapProjection::GetDatumShift(CKvDatumShift& shift) const {
  m_ProjectionInfo.GetDatumShift(shift);
}

int CKvMapProjection::GetCoordSysType() const {
  CKvProjectionInfo::CAxis::EType first, second;
  m_ProjectionInfo.GetAxisTypes(first, second);
  return 4 * first + second;
}

// ---------------------------------------------------------------------------
// Conversions

void CKvMapProjection::Geo2Proj(double lon, double lat, double* x, double* y) const {
  if (m_pProjection) m_pProjection->Geo2Proj(lon, lat, x, y);
  m_ProjectionInfo.Convert(*x, *y);
}

void CKvMapProjection::Proj2Geo(double x, double y, double* lon, double* lat) const {
  m_ProjectionInfo.InvConvert(x, y);
  if (m_pProjection) m_pProjection->Proj2Geo(x, y, lon, lat);
}

void CKvMapProjection::Geo2XYZ(double lon, double lat, double h, double* X, double* Y,
                               double* Z) const {
  if (!m_pProjection) return;
  CKvEllipsoid ellipsoid;
  m_pProjection->GetAnonymousEllipsoid(ellipsoid);
  CKvGeocentric::Geo2XYZ(ellipsoid, lon, lat, h, X, Y, Z);
}

// Bowring's step and a Newton step (CKvGeocentric): the single Bowring step
// alone is 1.4e-11 degrees off near the ground.
void CKvMapProjection::XYZ2Geo(double X, double Y, double Z, double* lon, double* lat,
                               double* h) const {
  if (!m_pProjection) return;
  CKvEllipsoid ellipsoid;
  m_pProjection->GetAnonymousEllipsoid(ellipsoid);
  CKvGeocentric::XYZ2Geo(ellipsoid, X, Y, Z, lon, lat, h);
}

bool CKvMapProjection::GetDistance(double lon1, double lat1, double lon2, double lat2,
                                   double& distance, double& azimuth12, double& azimuth21) const {
  if (lon1 == lon2 && lat1 == lat2) {
    distance = 0.0;
    return true;
  }
  CKvEllipsoid ellipsoid;
  if (!GeodesicEllipsoid(m_pProjection, ellipsoid)) return false;
  CKvVincenty(ellipsoid).GetDistance(lon1, lat1, lon2, lat2, distance, azimuth12, azimuth21);
  return true;
}

bool CKvMapProjection::GetDistance(double lon1, double lat1, double lon2, double lat2,
                                   double& distance) const {
  double azimuth12 = 0.0, azimuth21 = 0.0;
  return GetDistance(lon1, lat1, lon2, lat2, distance, azimuth12, azimuth21);
}

bool CKvMapProjection::GetPoint(double lon1, double lat1, double azimuth, double distance,
                                double& lon2, double& lat2, double& azimuth21) const {
  CKvEllipsoid ellipsoid;
  if (!GeodesicEllipsoid(m_pProjection, ellipsoid)) return false;
  CKvVincenty(ellipsoid).GetPoint(lon1, lat1, azimuth, distance, lon2, lat2, azimuth21);
  return true;
}

// ---------------------------------------------------------------------------
// Queries on strings

bool CKvMapProjection::IsType(int mask, const char* s) {
  const CString text = Trimmed(s);
  if ((mask & 8) && text.Compare("NON-UTM") == 0) return true;
  if ((mask & 4) && text.Compare("LONG/LAT") == 0) return true;
  if (!(mask & 3)) return false;
  return CKvMapProjData::IsEquivalent(mask, TypeOf(s));
}

bool CKvMapProjection::IsLocal(const char* s) { return CKvMapProjectionList::IsLocalName(s); }

bool CKvMapProjection::IsLongLat(const char* s) { return TrimmedEquals(s, "LONG/LAT"); }

bool CKvMapProjection::IsGeographical(const char* s) {
  if (IsLongLat(s)) return true;
  const D::EProjectionType type = TypeOf(s);
  return type == D::eGeographical || type == D::eRotatedLongitudeLatitude;
}

bool CKvMapProjection::IsValid(const char* s) {
  const CString text = Trimmed(s);
  if (text.IsEmpty()) return false;
  if (ParsedType(s) != D::eUndefined) return true;
  if (text.Compare("UTM") == 0 || CKvPRJParser::IsPRJ(text)) return false;
  if (IsSpecialName(text)) return true;
  return _Exists(text.GetString(), 15);
}

bool CKvMapProjection::IsGeoreferenced(const char* s) { return !IsLocal(s) && IsValid(s); }

bool CKvMapProjection::HasDatum(const char* s) {
  if (ParsedType(s) != D::eUndefined) return true;
  const CString text = Trimmed(s);
  if (text.Compare("UTM") == 0 || IsSpecialName(text)) return false;
  return _Exists(text.GetString(), 3);
}

bool CKvMapProjection::IsProjectionOfType(const char* s, CKvMapProjData::EProjectionType type) {
  return ParsedType(s) == type;
}

bool CKvMapProjection::_Exists(const char* name, int mask) {
  return Catalogue().GetMapProjection(name) && IsType(mask, name);
}

int CKvMapProjection::GetCoordSysType(const char* s) {
  return CKvMapProjection(std::string(s)).GetCoordSysType();
}

bool CKvMapProjection::AreIdentical(const char* a, const char* b) {
  if (!IsValid(a) || !IsValid(b)) return false;
  std::unique_ptr<CKvPRJParser> pa = ReadBack(a, true), pb = ReadBack(b, true);
  if (!pa || !pb) return false;
  if (pa->GetProjectionType() != pb->GetProjectionType()) return false;
  const int count = pa->GetNoOfParameters();
  if (count != pb->GetNoOfParameters()) return false;
  for (int i = 0; i < count; ++i) {
    CString na, nb, ua, ub;
    double va = 0, vb = 0, fa = 0, fb = 0;
    pa->GetParameter(i, na, va, ua, fa);
    pb->GetParameter(i, nb, vb, ub, fb);
    if (na.Compare(nb.GetString()) != 0 || !KvConst::IsClose(va, vb)) return false;
  }
  CString ma, mb;
  double pma = 0, pmb = 0;
  pa->GetPrimeMeridian(ma, pma);
  pb->GetPrimeMeridian(mb, pmb);
  if (!KvConst::IsClose(pma, pmb)) return false;
  CKvEllipsoid ea, eb;
  const CKvMapProjection oa{std::string(a)}, ob{std::string(b)};
  oa.GetProjection()->GetAnonymousEllipsoid(ea);
  ob.GetProjection()->GetAnonymousEllipsoid(eb);
  if (!ea.IsEquivalent(eb)) return false;
  CKvDatumShift sa, sb;
  pa->GetDatumShift(sa);
  pb->GetDatumShift(sb);
  if (sa != sb) return false;
  for (CKvPRJParser::EAxisType axis : {CKvPRJParser::eAxis1, CKvPRJParser::eAxis2}) {
    CString nameA, dirA, nameB, dirB;
    pa->GetAxisInfo(axis, nameA, dirA);
    pb->GetAxisInfo(axis, nameB, dirB);
    if (nameA.Compare(nameB.GetString()) != 0 || dirA.Compare(dirB.GetString()) != 0) return false;
  }
  return true;
}

const char* CKvMapProjection::ShortName(const char* s) {
  thread_local CString buffer;
  buffer = CKvPRJParser::ShortName(Trimmed(s));
  return buffer.GetString();
}

const char* CKvMapProjection::LongitudeToUTMZone(double longitude) {
  thread_local CString buffer;
  const double zone = std::floor(longitude * 0.16666666666666666) + 31.0;
  // A longitude that is not a finite number gives zone 0, a name the
  // catalogue does not hold.
  buffer.Format("UTM-%d", zone >= INT_MIN && zone <= INT_MAX ? static_cast<int>(zone) : 0);
  return buffer.GetString();
}

const char* CKvMapProjection::EnumMapProjections(int mask, long* count) {
  thread_local CString buffer;
  buffer = "";
  *count = 0;
  CKvMapProjectionList& list = Catalogue();
  for (auto it = list.GetIteratorBegin(); it != list.GetIteratorEnd(); ++it) {
    const std::string name = (*it)->GetName();
    if (!IsType(mask, name.c_str())) continue;
    CString text(name);
    if (!IsType(12, name.c_str())) CKvPRJParser(**it).Format(text);
    buffer += text;
    buffer += ";";
    ++*count;
  }
  return buffer.GetString();
}

const char* CKvMapProjection::EnumEllipsoids(CKvEllipsoidList::EEllipsoidTypes type,
                                             long* count) {
  thread_local CString buffer;
  buffer = "";
  *count = 0;
  CKvEllipsoidList& list = Ellipsoids();
  for (auto it = list.GetIteratorBegin(type); it != list.GetIteratorEnd(type); ++it) {
    CString entry;
    entry.Format("%s|%s|%.16g|%.16g;", (*it)->GetID().c_str(), (*it)->GetName().c_str(),
                 (*it)->GetMajor(), (*it)->GetInvFlatness());
    buffer += entry;
    ++*count;
  }
  return buffer.GetString();
}

// ---------------------------------------------------------------------------
// The catalogues

CKvEllipsoid* CKvMapProjection::Ellipsoid(const char* name) {
  return CKvCartSetup::Instance().Ellipsoid(Trimmed(name).GetString());
}

CKvEllipsoid* CKvMapProjection::EllipsoidFromID(const char* id) {
  return Ellipsoids().GetEllipsoid(id);
}

CKvEllipsoid* CKvMapProjection::EllipsoidFromName(const char* name) {
  return Ellipsoids().GetEllipsoidFromName(name);
}

CKvMapProjData* CKvMapProjection::MapProjection(const char* name) {
  return CKvCartSetup::Instance().MapProjection(Trimmed(name).GetString());
}

void CKvMapProjection::AddMapProjection(CKvMapProjData* record) {
  CKvCartSetup::Instance().SetMapProjectionListModified();
  Catalogue().AddMapProjection(record);
}

void CKvMapProjection::DeleteMapProjection(CKvMapProjData* record) {
  CKvCartSetup::Instance().SetMapProjectionListModified();
  Catalogue().DeleteMapProjection(record);
}

void CKvMapProjection::AddEllipsoid(CKvEllipsoid* ellipsoid) {
  CKvCartSetup::Instance().SetEllipsoidListModified();
  Ellipsoids().AddEllipsoid(ellipsoid);
}

void CKvMapProjection::DeleteEllipsoid(CKvEllipsoid* ellipsoid) {
  CKvCartSetup::Instance().SetEllipsoidListModified();
  Ellipsoids().DeleteEllipsoid(ellipsoid);
}

void CKvMapProjection::EditEllipsoid(CKvEllipsoid* ellipsoid) {
  CKvCartSetup::Instance().SetEllipsoidListModified();
  Ellipsoids().EditEllipsoid(ellipsoid);
}
