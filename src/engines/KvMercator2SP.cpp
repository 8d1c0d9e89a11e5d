#include "engines/KvMercator2SP.h"

#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "catalogue/KvMercator2SPProjection.h"
#include "engines/KvEngineCatalogue.h"
#include "engines/KvMercator1SP.h"
#include "platform/KvConstants.h"

CKvMercator2SP::CKvMercator2SP(CKvMercator2SPProjection* set) {
  CKvEngineCatalogue::CopyName(m_szName, set->GetName());
  // Without an ellipsoid every number stays 0 (see the class comment).
  if (const CKvEllipsoid* ellipsoid = CKvEngineCatalogue::FindEllipsoid(set->GetEllipsoidID()))
    _Init(set->GetParallel1(), set->GetCentre(), set->GetFalseEasting(), set->GetFalseNorthing(),
          *ellipsoid);
}

CKvMercator2SP::CKvMercator2SP(const std::string& name, double standardParallel,
                               double originLongitude, double falseEasting, double falseNorthing,
                               const CKvEllipsoid& ellipsoid) {
  CKvEngineCatalogue::CopyName(m_szName, name);
  _Init(standardParallel, originLongitude, falseEasting, falseNorthing, ellipsoid);
}

void CKvMercator2SP::_Init(double standardParallel, double originLongitude, double falseEasting,
                           double falseNorthing, const CKvEllipsoid& ellipsoid) {
  m_dA = ellipsoid.GetMajor();
  m_dInvF = ellipsoid.GetInvFlatness();
  m_dE = ellipsoid.GetEccentricity();
  m_dE2 = m_dE * m_dE;
  m_dPhi1 = standardParallel * KvConst::kDegToRad;
  m_dLambda0 = originLongitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eMercator2SP, false, m_dE2, m_adC);
  // EPSG Guidance Note 7-2, Mercator (variant B): the scale on the equator
  // that makes the scale on phi1 unity.
  const double sinPhi1 = std::sin(m_dPhi1);
  m_dK0 = std::cos(m_dPhi1) / std::sqrt(1.0 - m_dE2 * sinPhi1 * sinPhi1);
}

const char* CKvMercator2SP::GetName() { return m_szName; }

void CKvMercator2SP::Geo2Proj(double lon, double lat, double* x, double* y) {
  CKvMercator1SP::_Forward(m_dA, m_dE, m_dK0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, lon,
                           lat, x, y);
}

void CKvMercator2SP::Proj2Geo(double x, double y, double* lon, double* lat) {
  CKvMercator1SP::_Inverse(m_dA, m_dK0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, m_adC, x, y,
                           lon, lat);
}

void CKvMercator2SP::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambda0 * KvConst::kRadToDeg;
  *lat = 0.0;
}

double CKvMercator2SP::GetConvergence(double lon, double lat) {
  return _NumericalConvergence(lon, lat);
}

void CKvMercator2SP::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  CKvMercator1SP::_DefaultArea(*this, x0, y0, x1, y1);
}

void CKvMercator2SP::GetDerivedParameters(double* value) { *value = m_dK0; }

bool CKvMercator2SP::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dA, m_dInvF);
  return true;
}

CKvProjection* CKvMercator2SP::Clone() { return new CKvMercator2SP(*this); }

void CKvMercator2SP::TransferParameters(CKvPRJParser& parser) {
  CKvMercator2SPProjection set;
  GetMapProjection(set);
  CKvEngineCatalogue::Transfer(m_szName, set, parser);
}

bool CKvMercator2SP::GetMapProjection(CKvMercator2SPProjection& set) {
  return CKvEngineCatalogue::GetMapProjection(m_szName, set);
}

bool CKvMercator2SP::GetEllipsoid(CKvEllipsoid& ellipsoid) {
  return CKvEngineCatalogue::GetEllipsoid(m_szName, ellipsoid);
}
