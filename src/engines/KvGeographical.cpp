#include "engines/KvGeographical.h"

CKvGeographical::CKvGeographical(CKvGeographicalProjection* set)
    : CKvGeographical(set->GetName(), set->GetPrimeMeridian(), _FindEllipsoid(*set)) {}

CKvGeographical::CKvGeographical(const std::string& name, double primeMeridian,
                                 const CKvEllipsoid& ellipsoid)
    : CKvGeographical(name, primeMeridian, &ellipsoid) {}

CKvGeographical::CKvGeographical(const std::string& name, double primeMeridian,
                                 const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dPrimeMeridian = primeMeridian;
}

void CKvGeographical::Geo2Proj(double lon, double lat, double* x, double* y) {
  *x = lon - m_dPrimeMeridian;
  *y = lat;
}

void CKvGeographical::Proj2Geo(double x, double y, double* lon, double* lat) {
  *lon = x + m_dPrimeMeridian;
  *lat = y;
}

void CKvGeographical::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  Geo2Proj(-180.0, -60.0, x0, y0);
  Geo2Proj(180.0, 81.0, x1, y1);
}

bool CKvGeographical::IsGeographical() { return true; }
