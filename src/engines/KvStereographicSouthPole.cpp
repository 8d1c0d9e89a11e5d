#include "engines/KvStereographicSouthPole.h"

#include <cmath>

#include "engines/KvStereographicNorthPole.h"
#include "platform/KvConstants.h"

namespace {

typedef CKvStereographicNorthPole Polar;
constexpr double kSouth = -1.0;

}  // namespace

CKvStereographicSouthPole::CKvStereographicSouthPole(CKvStereographicSouthPoleProjection* set)
    : CKvStereographicSouthPole(set->GetName(), set->GetParallel1(), set->GetCentre(),
                                set->GetFalseEasting(), set->GetFalseNorthing(),
                                _FindEllipsoid(*set)) {}

CKvStereographicSouthPole::CKvStereographicSouthPole(const std::string& name,
                                                     double standardParallel,
                                                     double originLongitude, double falseEasting,
                                                     double falseNorthing,
                                                     const CKvEllipsoid& ellipsoid)
    : CKvStereographicSouthPole(name, standardParallel, originLongitude, falseEasting,
                                falseNorthing, &ellipsoid) {}

CKvStereographicSouthPole::CKvStereographicSouthPole(const std::string& name,
                                                     double standardParallel,
                                                     double originLongitude, double falseEasting,
                                                     double falseNorthing,
                                                     const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dLambda0 = originLongitude * KvConst::kDegToRad;
  m_dPhiF = standardParallel * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  const Polar::SPolar c = Polar::_Constants(m_dA, m_dE, m_dE2, standardParallel, kSouth);
  m_dTF = c.tF;
  m_dMF = c.mF;
  m_dK0 = c.k0;
  m_dRhoPerT = c.rhoPerT;
  m_Conformal = KvAux::CKvConformalLatitude(m_dE2 / (1.0 + std::sqrt(1.0 - m_dE2)));
}

void CKvStereographicSouthPole::Geo2Proj(double lon, double lat, double* x, double* y) {
  Polar::_Forward(m_dE, m_dRhoPerT, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, kSouth, lon, lat,
                  x, y);
}

void CKvStereographicSouthPole::Proj2Geo(double x, double y, double* lon, double* lat) {
  Polar::_Inverse(m_Conformal, m_dRhoPerT, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, kSouth, x,
                  y, lon, lat);
}

void CKvStereographicSouthPole::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambda0 * KvConst::kRadToDeg;
  *lat = -90.0;
}

double CKvStereographicSouthPole::GetConvergence(double lon, double) {
  return Polar::_Convergence(m_dLambda0, kSouth, lon);
}

void CKvStereographicSouthPole::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  Polar::_PolarDefaultArea(*this, m_dLambda0 * KvConst::kRadToDeg, kSouth, x0, y0, x1, y1);
}

void CKvStereographicSouthPole::GetDerivedParameters(double* value) { *value = m_dK0; }
