#include "engines/KvMercator2SP.h"

#include <cmath>

#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvMercator1SP.h"
#include "platform/KvConstants.h"

CKvMercator2SP::CKvMercator2SP(CKvMercator2SPProjection* set)
    : CKvMercator2SP(set->GetName(), set->GetParallel1(), set->GetCentre(), set->GetFalseEasting(),
                     set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvMercator2SP::CKvMercator2SP(const std::string& name, double standardParallel,
                               double originLongitude, double falseEasting, double falseNorthing,
                               const CKvEllipsoid& ellipsoid)
    : CKvMercator2SP(name, standardParallel, originLongitude, falseEasting, falseNorthing,
                     &ellipsoid) {}

CKvMercator2SP::CKvMercator2SP(const std::string& name, double standardParallel,
                               double originLongitude, double falseEasting, double falseNorthing,
                               const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dPhi1 = standardParallel * KvConst::kDegToRad;
  m_dLambda0 = originLongitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eMercator2SP, false, m_dE2, m_adC);
  // EPSG Guidance Note 7-2, Mercator (variant B): the scale on the equator
  // that makes the scale on phi1 unity.
  double sinPhi1, cosPhi1;
  KvAux::SinCosDeg(standardParallel, &sinPhi1, &cosPhi1);
  m_dK0 = KvAux::ParallelRadius(sinPhi1, cosPhi1, m_dE2);
}

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
