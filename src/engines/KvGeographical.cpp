#include "engines/KvGeographical.h"

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvGeographicalProjection.h"
#include "engines/KvEngineCatalogue.h"

CKvGeographical::CKvGeographical(CKvGeographicalProjection* set)
    : m_dMajor(0.0),
      m_dInvFlattening(0.0),
      m_dEccentricity(0.0),
      m_dEccentricitySq(0.0),
      m_dPrimeMeridian(0.0) {
  CKvEngineCatalogue::CopyName(m_szName, set->GetName());
  const CKvEllipsoid* ellipsoid = CKvEngineCatalogue::FindEllipsoid(set->GetEllipsoidID());
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dPrimeMeridian = set->GetPrimeMeridian();
}

CKvGeographical::CKvGeographical(const std::string& name, double primeMeridian,
                                 const CKvEllipsoid& ellipsoid)
    : m_dPrimeMeridian(primeMeridian) {
  CKvEngineCatalogue::CopyName(m_szName, name);
  _SetEllipsoid(ellipsoid);
}

void CKvGeographical::_SetEllipsoid(const CKvEllipsoid& ellipsoid) {
  m_dMajor = ellipsoid.GetMajor();
  m_dInvFlattening = ellipsoid.GetInvFlatness();
  m_dEccentricity = ellipsoid.GetEccentricity();
  m_dEccentricitySq = m_dEccentricity * m_dEccentricity;
}

const char* CKvGeographical::GetName() { return m_szName; }

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

bool CKvGeographical::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  if (!(m_dMajor > 0.0)) return false;
  ellipsoid.SetParams(m_dMajor, m_dInvFlattening);
  return true;
}

CKvProjection* CKvGeographical::Clone() { return new CKvGeographical(*this); }

void CKvGeographical::TransferParameters(CKvPRJParser& parser) {
  CKvGeographicalProjection set;
  GetMapProjection(set);
  CKvEngineCatalogue::Transfer(m_szName, set, parser);
}

// The set has no numeric parameters, so only the three strings are copied.
bool CKvGeographical::GetMapProjection(CKvGeographicalProjection& set) {
  return CKvEngineCatalogue::GetMapProjection(m_szName, set);
}

bool CKvGeographical::GetEllipsoid(CKvEllipsoid& ellipsoid) {
  return CKvEngineCatalogue::GetEllipsoid(m_szName, ellipsoid);
}
