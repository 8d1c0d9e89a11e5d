#include "mapproj/KvCartography.h"

#include <cmath>
#include <cstring>
#include <string>

#include "mapproj/KvMapProjection.h"
#include "platform/KvConstants.h"
#include "platform/String.h"

namespace {

// "UTM" alone (exactly) means the zone of the origin, numbered as the
// catalogue's "UTM-1" (from 180 W) to "UTM-60": trunc(lon0 / 6 + 30) + 1.
// From 180 E on, or west of 186 W, that is a zone the catalogue lacks.
CKvMapProjection* NewProjection(const char* projection, double lon0) {
  std::string name(projection);  // a null name raises std::logic_error
  if (std::strcmp(projection, "UTM") == 0) {
    const double zone = std::trunc(lon0 * 0.16666666666666666 + 30.0) + 1.0;
    CString zoneName;
    // Bounded first: converting NaN or a huge value to int is undefined.
    zoneName.Format("UTM-%d", std::fabs(zone) < 1e6 ? static_cast<int>(zone) : 0);
    name = zoneName.GetString();
  }
  return new CKvMapProjection(name);
}

}  // namespace

CKvCartography::CKvCartography(const char* projection, double lon0, double lat0, double orientation)
    : m_pProjection(NewProjection(projection, lon0)) {
  _init(lon0, lat0, orientation);
}

CKvCartography::CKvCartography(const CKvMapProjection& projection, double lon0, double lat0,
                               double orientation)
    : m_pProjection(new CKvMapProjection(projection)) {
  _init(lon0, lat0, orientation);
}

CKvCartography::CKvCartography(const CKvCartography& other) : m_pProjection(nullptr) {
  _copy(other);
}

CKvCartography& CKvCartography::operator=(const CKvCartography& other) {
  if (this != &other) _copy(other);
  return *this;
}

CKvCartography::~CKvCartography() { _dealloc(); }

void CKvCartography::_init(double lon0, double lat0, double orientation) {
  m_dLon0 = lon0;
  m_dLat0 = lat0;
  m_dOrientation = orientation;
  // An engineless object converts the values it is handed, so start at 0.
  m_dX0 = 0.0;
  m_dY0 = 0.0;
  m_pProjection->Geo2Proj(lon0, lat0, &m_dX0, &m_dY0);
  const double convergence = m_pProjection->GetConvergence(lon0, lat0);
  m_dAngle = orientation - convergence;
  m_dCos = std::cos(m_dAngle * KvConst::kDegToRad);
  m_dSin = std::sin(m_dAngle * KvConst::kDegToRad);
}

void CKvCartography::_copy(const CKvCartography& other) {
  // Cloned before anything is released, so a failed clone leaves this grid
  // as it was.
  CKvMapProjection* projection = new CKvMapProjection(*other.m_pProjection);
  _dealloc();
  m_pProjection = projection;
  m_dX0 = other.m_dX0;
  m_dY0 = other.m_dY0;
  m_dAngle = other.m_dAngle;
  m_dCos = other.m_dCos;
  m_dSin = other.m_dSin;
  m_dLon0 = other.m_dLon0;
  m_dLat0 = other.m_dLat0;
  m_dOrientation = other.m_dOrientation;
}

void CKvCartography::_dealloc() {
  delete m_pProjection;
  m_pProjection = nullptr;
}

const CKvMapProjection& CKvCartography::GetProjection() const { return *m_pProjection; }

const char* CKvCartography::GetProjectionName() const { return m_pProjection->GetName(); }

const char* CKvCartography::GetProjectionString() const {
  return m_pProjection->GetProjectionString();
}

void CKvCartography::Xy2Proj(double x, double y, double* east, double* north) const {
  *east = m_dCos * x + m_dSin * y + m_dX0;
  *north = m_dCos * y - m_dSin * x + m_dY0;
}

void CKvCartography::Proj2Xy(double east, double north, double* x, double* y) const {
  const double dx = east - m_dX0;
  const double dy = north - m_dY0;
  *x = m_dCos * dx - m_dSin * dy;
  *y = m_dSin * dx + m_dCos * dy;
}

void CKvCartography::Xy2Geo(double x, double y, double* lon, double* lat) const {
  double east = 0.0, north = 0.0;
  Xy2Proj(x, y, &east, &north);
  m_pProjection->Proj2Geo(east, north, lon, lat);
}

void CKvCartography::Geo2Xy(double lon, double lat, double* x, double* y) const {
  // Without an engine the map-projection object converts what it is handed.
  double east = 0.0, north = 0.0;
  m_pProjection->Geo2Proj(lon, lat, &east, &north);
  Proj2Xy(east, north, x, y);
}

void CKvCartography::Geo2Proj(double lon, double lat, double* east, double* north) const {
  m_pProjection->Geo2Proj(lon, lat, east, north);
}

void CKvCartography::Proj2Geo(double east, double north, double* lon, double* lat) const {
  m_pProjection->Proj2Geo(east, north, lon, lat);
}

double CKvCartography::GetTrueNorth(double x, double y) const {
  // Without an engine Proj2Geo writes nothing: the origin stands in.
  double lon = m_dLon0, lat = m_dLat0;
  Xy2Geo(x, y, &lon, &lat);
  return m_pProjection->GetConvergence(lon, lat) + m_dAngle;
}

double CKvCartography::GetProjectionNorth() const { return m_dAngle; }

void CKvCartography::ConvertFrom(const CKvCartography& from, double east, double north,
                                 double* eastOut, double* northOut) const {
  double lon = 0.0, lat = 0.0;
  from.m_pProjection->Proj2Geo(east, north, &lon, &lat);
  m_pProjection->Geo2Proj(lon, lat, eastOut, northOut);
}

void CKvCartography::_csysrot(double x, double y, double degrees, double* xOut, double* yOut) {
  const double c = std::cos(degrees * KvConst::kDegToRad);
  const double s = std::sin(degrees * KvConst::kDegToRad);
  *xOut = c * x + s * y;
  *yOut = c * y - s * x;
}
