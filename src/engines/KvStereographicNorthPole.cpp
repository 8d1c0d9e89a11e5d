#include "engines/KvStereographicNorthPole.h"

#include <cmath>

#include "platform/KvConstants.h"

CKvStereographicNorthPole::CKvStereographicNorthPole(CKvStereographicNorthPoleProjection* set)
    : CKvStereographicNorthPole(set->GetName(), set->GetParallel1(), set->GetCentre(),
                                set->GetFalseEasting(), set->GetFalseNorthing(),
                                _FindEllipsoid(*set)) {}

CKvStereographicNorthPole::CKvStereographicNorthPole(const std::string& name,
                                                     double standardParallel,
                                                     double originLongitude, double falseEasting,
                                                     double falseNorthing,
                                                     const CKvEllipsoid& ellipsoid)
    : CKvStereographicNorthPole(name, standardParallel, originLongitude, falseEasting,
                                falseNorthing, &ellipsoid) {}

CKvStereographicNorthPole::CKvStereographicNorthPole(const std::string& name,
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
  const SPolar c = _Constants(m_dA, m_dE, m_dE2, standardParallel, 1.0);
  m_dTF = c.tF;
  m_dMF = c.mF;
  m_dK0 = c.k0;
  m_dRhoPerT = c.rhoPerT;
  m_Conformal = KvAux::CKvConformalLatitude(m_dE2 / (1.0 + std::sqrt(1.0 - m_dE2)));
}

// EPSG Guidance Note 7-2, method 9829: tF and mF at the latitude of true
// scale, k0 = mF sqrt((1 + e)^(1 + e) (1 - e)^(1 - e)) / (2 tF) and rho / t
// = a mF / tF.  About the south pole t is that of the mirrored latitude.  A
// true-scale parallel at the pole (tF = mF = 0) has the limit k0 = 1, rho /
// t = 2 a / sqrt((1 + e)^(1 + e) (1 - e)^(1 - e)), as in variant A.
CKvStereographicNorthPole::SPolar CKvStereographicNorthPole::_Constants(double a, double e,
                                                                        double e2,
                                                                        double standardParallel,
                                                                        double pole) {
  double sinPhiF, cosPhiF;
  KvAux::SinCosDeg(standardParallel, &sinPhiF, &cosPhiF);
  // sqrt((1 + e)^(1 + e) (1 - e)^(1 - e)), 1 for a sphere
  const double root = std::exp(0.5 * ((1.0 + e) * std::log1p(e) + (1.0 - e) * std::log1p(-e)));
  SPolar c;
  c.tF = KvAux::ConformalT(pole * standardParallel, e);
  c.mF = KvAux::ParallelRadius(sinPhiF, cosPhiF, e2);
  if (c.tF == 0.0) {
    c.k0 = 1.0;
    c.rhoPerT = 2.0 * a / root;
  } else {
    c.k0 = c.mF * root / (2.0 * c.tF);
    c.rhoPerT = a * c.mF / c.tF;
  }
  return c;
}

// EPSG Guidance Note 7-2, polar stereographic forward: rho = (rho / t) t;
// E = FE + rho sin(lambda - lambda0), N = FN -+ rho cos(lambda - lambda0)
// (minus about the north pole).
void CKvStereographicNorthPole::_Forward(double e, double rhoPerT, double lambda0, double FE,
                                         double FN, double pole, double lon, double lat, double* x,
                                         double* y) {
  const double rho = rhoPerT * KvAux::ConformalT(pole * lat, e);
  const double dLambda = KvAux::ReducedLongitude(lon * KvConst::kDegToRad - lambda0);
  *x = FE + rho * std::sin(dLambda);
  *y = FN - pole * rho * std::cos(dLambda);
}

// EPSG Guidance Note 7-2, polar stereographic reverse: t' = rho' / (rho /
// t), whose conformal latitude chi = pi/2 - 2 atan t' has sin chi = (1 -
// t'^2) / (1 + t'^2) and cos chi = 2 t' / (1 + t'^2) (with 1 / t' in place
// of t' beyond the equator, so that nothing overflows); lambda = lambda0 +
// atan2(E - FE, -+(N - FN)).
void CKvStereographicNorthPole::_Inverse(const KvAux::CKvConformalLatitude& conformal,
                                         double rhoPerT, double lambda0, double FE, double FN,
                                         double pole, double x, double y, double* lon,
                                         double* lat) {
  if (!(rhoPerT > 0.0)) {  // no ellipsoid: nothing to divide by
    *lon = KvConst::kNaN;
    *lat = KvConst::kNaN;
    return;
  }
  const double dx = x - FE, dy = y - FN;
  const double t = std::hypot(dx, dy) / rhoPerT;
  double sinChi, cosChi;
  if (t <= 1.0) {
    const double d = 1.0 + t * t;
    sinChi = (1.0 - t * t) / d;
    cosChi = 2.0 * t / d;
  } else {
    const double u = 1.0 / t;
    const double d = 1.0 + u * u;
    sinChi = (u * u - 1.0) / d;
    cosChi = 2.0 * u / d;
  }
  *lat = pole * conformal.Geodetic(sinChi, cosChi) * KvConst::kRadToDeg;
  // + 0.0: at the false origin -0 would make atan2 return pi
  *lon = KvAux::ReducedLongitude(lambda0 + std::atan2(dx, -pole * dy + 0.0)) * KvConst::kRadToDeg;
}

double CKvStereographicNorthPole::_Convergence(double lambda0, double pole, double lon) {
  return pole * KvAux::ReducedLongitude(lon * KvConst::kDegToRad - lambda0) * KvConst::kRadToDeg;
}

// The corners 3 degrees from the pole that lie lower left and upper right of
// it: 45 degrees west and 135 east of the central meridian about the north
// pole, 135 west and 45 east about the south pole.
void CKvStereographicNorthPole::_PolarDefaultArea(CKvProjection& engine, double lon0, double pole,
                                                  double* x0, double* y0, double* x1, double* y1) {
  engine.Geo2Proj(lon0 - 90.0 + 45.0 * pole, 87.0 * pole, x0, y0);
  engine.Geo2Proj(lon0 + 90.0 + 45.0 * pole, 87.0 * pole, x1, y1);
}

void CKvStereographicNorthPole::Geo2Proj(double lon, double lat, double* x, double* y) {
  _Forward(m_dE, m_dRhoPerT, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, 1.0, lon, lat, x, y);
}

void CKvStereographicNorthPole::Proj2Geo(double x, double y, double* lon, double* lat) {
  _Inverse(m_Conformal, m_dRhoPerT, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, 1.0, x, y, lon,
           lat);
}

void CKvStereographicNorthPole::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambda0 * KvConst::kRadToDeg;
  *lat = 90.0;
}

double CKvStereographicNorthPole::GetConvergence(double lon, double) {
  return _Convergence(m_dLambda0, 1.0, lon);
}

void CKvStereographicNorthPole::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  _PolarDefaultArea(*this, m_dLambda0 * KvConst::kRadToDeg, 1.0, x0, y0, x1, y1);
}

void CKvStereographicNorthPole::GetDerivedParameters(double* value) { *value = m_dK0; }
